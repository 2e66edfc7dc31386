// plane_fields.h: displacements and rotations of the triangle as polynomials.
//
// Coordinates, displacements (u, v) and the interpolated rotations are linear, beside which the rotations have the
// increments s_k X_k of the sides (common/side_increments.h):
//
//     v    = v_0 + xi v_1 + eta v_2
//     beta = b_0 + xi b_1 + eta b_2 + 4 lambda xi X_1 s_1 + 4 xi eta X_2 s_2 + 4 eta lambda X_3 s_3
//
// With lambda = 1 - xi - eta and T = 4 (X_2 s_2 - X_1 s_1 - X_3 s_3) the derivatives are linear:
//
//     beta,xi  = (b_1 + 4 X_1 s_1) - 8 xi X_1 s_1 + eta T
//     beta,eta = (b_2 + 4 X_3 s_3) + xi T - 8 eta X_3 s_3
//
// Mirror: shells/quadrilateral/plane_fields.h.
#ifndef FINITES_TRI_PLANE_FIELDS_H
#define FINITES_TRI_PLANE_FIELDS_H

#include "common/lanes.h"
#include "shells/common/node_vectors.h"
#include "shells/common/side_increments.h"

// The two terms that have derivatives.
struct LINEAR {
  LANES XI, ETA;

  explicit LINEAR(const LANES (&v)[3]) : XI(v[1] - v[0]), ETA(v[2] - v[0]) {}
};

// Normals of the lines of equal xi and eta: the gradient of f is (N1 f,xi + N2 f,eta) / TWO_AREA.
struct TRIANGLE_NORMALS {
  LANES N1, N2;
  double TWO_AREA;

  explicit TRIANGLE_NORMALS(const LINEAR& x) : N1(turned(x.ETA)), N2(-turned(x.XI)), TWO_AREA(dot(N1, x.XI)) {}
};

// Derivatives of the rotations by xi and eta, or the forces on them: the constant term, then those of xi and eta.
struct ROTATION_DERIVATIVES {
  LANES XI[3], ETA[3];
};

struct TRIANGLE_ROTATIONS {
  LINEAR b;
  double s[3];  // increments of the sides

  TRIANGLE_ROTATIONS(const NODE_VECTORS<3>& u, const SIDE_INCREMENTS<3>& sides) : b(u.beta) {
    for (int k = 0; k < 3; ++k) s[k] = sides.of(k, u);
  }

  ROTATION_DERIVATIVES derivatives(const SIDE_INCREMENTS<3>& sides) const {
    const LANES d1 = 4.0 * s[0] * sides.X[0];
    const LANES d2 = 4.0 * s[1] * sides.X[1];
    const LANES d3 = 4.0 * s[2] * sides.X[2];
    const LANES T = d2 - (d1 + d3);
    return {{b.XI + d1, -2.0 * d1, T}, {b.ETA + d3, T, -2.0 * d3}};
  }
};

// The forces on the rotations of the nodes and on the increments of the sides, of those on the derivatives.
inline void spread(const ROTATION_DERIVATIVES& f, const SIDE_INCREMENTS<3>& sides, LANES (&f_beta)[3],
                   double (&f_s)[3]) {
  f_beta[0] = -f.XI[0] - f.ETA[0];
  f_beta[1] = f.XI[0];
  f_beta[2] = f.ETA[0];
  const LANES f_T = f.XI[2] + f.ETA[1];
  f_s[0] = 4.0 * dot(sides.X[0], f.XI[0] - 2.0 * f.XI[1] - f_T);
  f_s[1] = 4.0 * dot(sides.X[1], f_T);
  f_s[2] = 4.0 * dot(sides.X[2], f.ETA[0] - 2.0 * f.ETA[2] - f_T);
}

#endif
