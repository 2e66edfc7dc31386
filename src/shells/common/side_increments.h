// side_increments.h: the increments of the rotations along the sides of a plate, from the displacements of its nodes.
//
// On side k from node i to the next node j, X = (x_j - x_i, y_j - y_i), the rotations beta of both theories have the
// quadratic increment P_k X s_k beside the interpolated values of the nodes (side_fields.h has s_k = dB_k / L_k):
//
//     s_k = 1.5 (w_i - w_j - X . (beta_i + beta_j) / 2) / (L_k^2 + c_k),      c_k = L_k^2 phi_k
//
// c = 0 is the Kirchhoff constraint of the thin theory (Batoz, Bathe and Ho, 1980; Batoz and Ben Tahar, 1982). For an
// isotropic section c is the same for every side (Katili, 1993), so that no length and no direction is needed.
#ifndef FINITES_SIDE_INCREMENTS_H
#define FINITES_SIDE_INCREMENTS_H

#include "common/lanes.h"
#include "finites/records.h"
#include "shells/common/node_vectors.h"

template <int SIDES>
struct SIDE_INCREMENTS {
  LANES X[SIDES];
  double c[SIDES];
  double r[SIDES];  // 1.5 / (L_k^2 + c_k)
  bool proper;      // no side without length, and no ratio phi that overflows

  // From the plane coordinates of the nodes; factor(k, L_k^2) gives c_k.
  template <class FACTOR>
  SIDE_INCREMENTS(const LANES (&x)[SIDES], FACTOR factor) : proper(true) {
    for (int k = 0; k < SIDES; ++k) {
      X[k] = x[(k + 1) % SIDES] - x[k];
      const double square = dot(X[k], X[k]);
      c[k] = factor(k, square);
      proper = proper && square > SMALLEST_SQUARE && square > SMALLEST_SQUARE * c[k];
      r[k] = 1.5 / (square + c[k]);
    }
  }

  double of(int k, const NODE_VECTORS<SIDES>& u) const {
    const int j = (k + 1) % SIDES;
    return (u.w[k] - u.w[j] - 0.5 * dot(X[k], u.beta[k] + u.beta[j])) * r[k];
  }

  // f.w := and f.beta += the forces on the nodes of the forces on s.
  void spread(const double (&f_s)[SIDES], NODE_VECTORS<SIDES>& f) const {
    double w[SIDES];
    for (int k = 0; k < SIDES; ++k) {
      const int j = (k + 1) % SIDES;
      w[k] = f_s[k] * r[k];
      const LANES beta = (0.5 * w[k]) * X[k];
      f.beta[k] -= beta;
      f.beta[j] -= beta;
    }
    for (int k = 0; k < SIDES; ++k) f.w[k] = w[k] - w[(k + SIDES - 1) % SIDES];
  }

 private:
  // Far enough above the smallest normal real, 2e-308, for the quotients by it to stay finite.
  static constexpr double SMALLEST_SQUARE = 1e-290;
};

// The factors c_k: c for every side; those of the ratios in PLATEELEM.
inline auto equal_side_factors(double c) {
  return [c](int /*k*/, double /*square*/) { return c; };
}
inline auto side_factors_of(const PLATEELEM_RECORD& EL) {
  return [&EL](int k, double square) { return EL.SIDE_PHI(k + 1) * square; };
}

#endif
