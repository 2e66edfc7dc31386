// plane_fields.h: displacements and rotations of the quadrilateral as polynomials, at four stations at once.
//
// Coordinates, displacements (u, v) and the interpolated rotations are bilinear, beside which the rotations have the
// increments s_k X_k of the sides (common/side_increments.h):
//
//     v    = v_0 + xi v_1 + eta v_2 + xi eta v_3
//     beta = b_0 + xi b_1 + eta b_2 + xi eta b_3
//            + (1 - xi^2) ((1 - eta) X_1 s_1 + (1 + eta) X_3 s_3) / 2
//            + (1 - eta^2) ((1 + xi) X_2 s_2 + (1 - xi) X_4 s_4) / 2
//
// With the sums P = X_1 s_1 + X_3 s_3, Q = X_2 s_2 + X_4 s_4 and the differences M = X_1 s_1 - X_3 s_3,
// N = X_2 s_2 - X_4 s_4 the derivatives are
//
//     beta,xi  = b_1 + N (1 - eta^2) / 2 + eta b_3 - xi P + xi eta M
//     beta,eta = b_2 - M (1 - xi^2) / 2  + xi b_3 - eta Q - xi eta N
//
// At stations (-+ g, -+ g) they are sums and differences of four terms, and so are the forces on b, P, Q, M and N from
// those on the derivatives at the stations.
//
// Mirror: shells/triangle/plane_fields.h.
#ifndef FINITES_QUAD_PLANE_FIELDS_H
#define FINITES_QUAD_PLANE_FIELDS_H

#include "common/lanes.h"
#include "shells/common/node_vectors.h"
#include "shells/common/side_increments.h"

// The three terms that have derivatives.
struct BILINEAR {
  LANES XI, ETA, TWIST;

  BILINEAR() : XI(both(0.0)), ETA(both(0.0)), TWIST(both(0.0)) {}
  explicit BILINEAR(const LANES (&v)[4]) {
    const LANES d13 = v[2] - v[0];
    const LANES d24 = v[3] - v[1];
    XI = 0.25 * (d13 - d24);
    ETA = 0.25 * (d13 + d24);
    TWIST = 0.25 * ((v[0] - v[1]) + (v[2] - v[3]));
  }

  // The forces on the values of the nodes, when these terms are the forces on XI, ETA and TWIST.
  void spread(LANES (&f)[4]) const {
    const LANES d13 = 0.25 * (ETA + XI);
    const LANES d24 = 0.25 * (ETA - XI);
    const LANES twist = 0.25 * TWIST;
    f[0] = twist - d13;
    f[1] = -twist - d24;
    f[2] = twist + d13;
    f[3] = d24 - twist;
  }
};

// constant + xi a + eta b + xi eta c at (-, -), (+, -), (+, +), (-, +), with xi and eta = -+ 1
struct STATION_SUMS {
  LANES CONSTANT, XI, ETA, BOTH;

  void spread(LANES (&v)[4]) const {
    const LANES right = CONSTANT + XI;
    const LANES left = CONSTANT - XI;
    const LANES rise_right = ETA + BOTH;
    const LANES rise_left = ETA - BOTH;
    v[0] = left - rise_left;
    v[1] = right - rise_right;
    v[2] = right + rise_right;
    v[3] = left + rise_left;
  }

  // The forces on the four terms, of the forces on the values.
  static STATION_SUMS of(const LANES (&f)[4]) {
    const LANES right = f[1] + f[2];
    const LANES left = f[0] + f[3];
    const LANES rise_right = f[2] - f[1];
    const LANES rise_left = f[3] - f[0];
    return {right + left, right - left, rise_right + rise_left, rise_right - rise_left};
  }
};

// Derivatives by xi and eta at the four stations, or the forces on them.
struct STATION_DERIVATIVES {
  LANES XI[4], ETA[4];
};

// The stations (-+ g, -+ g): g = 1 for the nodes.
inline STATION_DERIVATIVES derivatives(const BILINEAR& v, double g) {
  STATION_DERIVATIVES d;
  const LANES twist = g * v.TWIST;
  d.XI[0] = d.XI[1] = v.XI - twist;
  d.XI[2] = d.XI[3] = v.XI + twist;
  d.ETA[0] = d.ETA[3] = v.ETA - twist;
  d.ETA[1] = d.ETA[2] = v.ETA + twist;
  return d;
}

// The forces on the bilinear terms of those on the derivatives.
inline BILINEAR forces_on_terms(const STATION_DERIVATIVES& f, double g) {
  const LANES below = f.XI[0] + f.XI[1];
  const LANES above = f.XI[2] + f.XI[3];
  const LANES left = f.ETA[0] + f.ETA[3];
  const LANES right = f.ETA[1] + f.ETA[2];
  BILINEAR v;
  v.XI = below + above;
  v.ETA = left + right;
  v.TWIST = g * ((above - below) + (right - left));
  return v;
}

// Normals of the lines of equal xi and eta: the gradient of f is (N1 f,xi + N2 f,eta) / DET.
struct STATION_NORMALS {
  LANES N1[4], N2[4];
  double R[4];  // 1 / DET
};

inline STATION_NORMALS normals(const BILINEAR& x, double g) {
  const STATION_DERIVATIVES d = derivatives(x, g);
  STATION_NORMALS n;
  for (int p = 0; p < 4; ++p) {
    n.N1[p] = turned(d.ETA[p]);
    n.N2[p] = -turned(d.XI[p]);
    n.R[p] = 1.0 / dot(n.N1[p], d.XI[p]);
  }
  return n;
}

struct ROTATION_FIELD {
  BILINEAR b;
  LANES P, Q, M, N;
  double s[4];  // increments of the sides

  ROTATION_FIELD(const NODE_VECTORS<4>& u, const SIDE_INCREMENTS<4>& sides) : b(u.beta) {
    for (int k = 0; k < 4; ++k) s[k] = sides.of(k, u);
    const LANES d1 = s[0] * sides.X[0];
    const LANES d2 = s[1] * sides.X[1];
    const LANES d3 = s[2] * sides.X[2];
    const LANES d4 = s[3] * sides.X[3];
    P = d1 + d3;
    M = d1 - d3;
    Q = d2 + d4;
    N = d2 - d4;
  }

  STATION_DERIVATIVES derivatives(double g) const {
    const double h = 0.5 * (1.0 - g * g);
    STATION_DERIVATIVES d;
    const LANES twist = g * b.TWIST;
    STATION_SUMS{b.XI + h * N, -g * P, twist, (g * g) * M}.spread(d.XI);
    STATION_SUMS{b.ETA - h * M, twist, -g * Q, -(g * g) * N}.spread(d.ETA);
    return d;
  }

  // The forces on the rotations of the nodes and on the increments of the sides, of those on the derivatives.
  void spread(const STATION_DERIVATIVES& f, double g, const SIDE_INCREMENTS<4>& sides, LANES (&f_beta)[4],
              double (&f_s)[4]) const {
    const double h = 0.5 * (1.0 - g * g);
    const STATION_SUMS xi = STATION_SUMS::of(f.XI);
    const STATION_SUMS eta = STATION_SUMS::of(f.ETA);
    BILINEAR f_b;
    f_b.XI = xi.CONSTANT;
    f_b.ETA = eta.CONSTANT;
    f_b.TWIST = g * (xi.ETA + eta.XI);
    f_b.spread(f_beta);
    const LANES f_P = -g * xi.XI;
    const LANES f_Q = -g * eta.ETA;
    const LANES f_M = (g * g) * xi.BOTH - h * eta.CONSTANT;
    const LANES f_N = h * xi.CONSTANT - (g * g) * eta.BOTH;
    f_s[0] = dot(sides.X[0], f_P + f_M);
    f_s[1] = dot(sides.X[1], f_Q + f_N);
    f_s[2] = dot(sides.X[2], f_P - f_M);
    f_s[3] = dot(sides.X[3], f_Q - f_N);
  }
};

#endif
