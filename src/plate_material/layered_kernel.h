// layered_kernel.h: the arithmetic of a thickness point (layered_point.cpp, layered_return.cpp), for one point or for
// two side by side.
//
// REAL is double, or LANES with a point in each lane: the same expressions in the same order, the same bits. The
// products leave out the zeros of metric, elastic matrix and eigenvectors, which is right for finite values.
#ifndef FINITES_LAYERED_KERNEL_H
#define FINITES_LAYERED_KERNEL_H

#include <cmath>

#include "common/lanes.h"
#include "finites/records.h"
#include "finites/views.hpp"
#include "plate_material/layered_law.h"
#include "plate_material/layered_limits.h"
#include "plate_material/plastic_material.h"
#include "plate_material/through_thickness.h"

// ---- what differs between one point and two

inline double root_of(double v) { return std::sqrt(v); }
inline LANES root_of(LANES v) { return LANES{std::sqrt(v[0]), std::sqrt(v[1])}; }
inline double size_of(double v) { return std::fabs(v); }
inline LANES size_of(LANES v) { return LANES{std::fabs(v[0]), std::fabs(v[1])}; }
inline bool at_least(double v, double limit) { return v >= limit; }
inline bool at_least(LANES v, double limit) { return v[0] >= limit && v[1] >= limit; }
inline bool at_most(double v, double limit) { return v <= limit; }
inline bool at_most(LANES v, double limit) { return v[0] <= limit && v[1] <= limit; }

// old where v is at most limit, otherwise fresh.
inline double kept_or(double v, double limit, double old, double fresh) { return v <= limit ? old : fresh; }
inline LANES kept_or(LANES v, double limit, LANES old, LANES fresh) {
  return LANES{v[0] <= limit ? old[0] : fresh[0], v[1] <= limit ? old[1] : fresh[1]};
}

// ---- stresses

// D (strain - ep).
template <class REAL>
VECTOR<5, REAL> elastic_stress(const MATRIX5& D, const VECTOR<5, REAL>& ep, const VECTOR<5, REAL>& strain) {
  const REAL e1 = strain(1) - ep(1);
  const REAL e2 = strain(2) - ep(2);
  return {{0.0 + D(1, 1) * e1 + D(1, 2) * e2, 0.0 + D(2, 1) * e1 + D(2, 2) * e2, 0.0 + D(3, 3) * (strain(3) - ep(3)),
           0.0 + D(4, 4) * (strain(4) - ep(4)), 0.0 + D(5, 5) * (strain(5) - ep(5))}};
}

// P s.
template <class REAL>
VECTOR<5, REAL> flow_of(const MATRIX5& P, const VECTOR<5, REAL>& s) {
  return {{0.0 + P(1, 1) * s(1) + P(1, 2) * s(2), 0.0 + P(2, 1) * s(1) + P(2, 2) * s(2), 0.0 + P(3, 3) * s(3),
           0.0 + P(4, 4) * s(4), 0.0 + P(5, 5) * s(5)}};
}

template <class REAL>
REAL dot(const VECTOR<5, REAL>& a, const VECTOR<5, REAL>& b) {
  return 0.0 + a(1) * b(1) + a(2) * b(2) + a(3) * b(3) + a(4) * b(4) + a(5) * b(5);
}

// 1/2 sigma' P sigma - kappa^2 / 3, kappa being the yield stress of the hardened point.
template <class REAL>
REAL yield_function(const MATRIX5& P, double yield_stress, double hardening, const VECTOR<5, REAL>& s, REAL ebar) {
  const REAL kappa = yield_stress + hardening * ebar;
  return 0.5 * dot(s, flow_of(P, s)) - kappa * kappa / 3.0;
}

// R^T S R of the tensor with the local components v and zz, as xx, yy, zz, xy, xz, yz.
template <class REAL>
VECTOR<6, REAL> turned_to_global(const MATRIX<3, 3, REAL>& R, const VECTOR<5, REAL>& v, REAL zz) {
  REAL A[3][3];  // R^T S by rows
  for (int i = 1; i <= 3; ++i) {
    A[i - 1][0] = 0.0 + R(1, i) * v(1) + R(2, i) * v(3) + R(3, i) * v(4);
    A[i - 1][1] = 0.0 + R(1, i) * v(3) + R(2, i) * v(2) + R(3, i) * v(5);
    A[i - 1][2] = 0.0 + R(1, i) * v(4) + R(2, i) * v(5) + R(3, i) * zz;
  }
  const auto entry = [&](int i, int j) -> REAL {
    return 0.0 + A[i - 1][0] * R(1, j) + A[i - 1][1] * R(2, j) + A[i - 1][2] * R(3, j);
  };
  return {{entry(1, 1), entry(2, 2), entry(3, 3), entry(1, 2), entry(1, 3), entry(2, 3)}};
}

// ---- the multiplier

// What the consistency function needs of the trial stress, with the letters of layered_return.cpp.
template <class REAL>
struct TRIAL_INVARIANTS {
  REAL a, b, c;
  REAL a_slope, b_slope, c_slope;  // factors of the derivative

  TRIAL_INVARIANTS(const LAYERED_LAW& law, const VECTOR<5, REAL>& s) {
    const REAL sum = s(1) + s(2);
    const REAL difference = s(1) - s(2);
    a = sum * sum / 6.0;
    b = difference * difference / 2.0 + 2.0 * (s(3) * s(3));
    a_slope = -(sum * sum) * law.constants.E / law.constants.mean_slope_divisor;
    b_slope = difference * difference + 4.0 * (s(3) * s(3));
    c = c_slope = REAL{};
    if (law.theory != THICK_THEORY) return;
    const REAL squares = s(4) * s(4) + s(5) * s(5);
    c = 2.0 * squares;
    c_slope = 4.0 * squares;
  }
};

// Newton's method of PLATE_PLAST_MULT, function and derivative in one. A lane that has settled stays where it is until
// the other one has. False where the general routine would report a failure, where the multiplier becomes negative,
// where a value is NaN and where more passes are needed than usual.
template <class REAL>
bool find_multiplier(const LAYERED_LAW& law, const TRIAL_INVARIANTS<REAL>& t, REAL ebar0, REAL& dlam) {
  const LAYERED_RETURN_CONSTANTS& k = law.constants;
  const double H = law.hardening;
  if (!k.growing) return false;
  REAL x{};
  for (int pass = 0; pass < USUAL_LAYERED_PASSES; ++pass) {
    const REAL p = 1.0 + k.E * x / k.mean_divisor;
    const REAL q = 1.0 + k.shear * x;
    const REAL r = 1.0 + k.across * x;
    const REAL p2 = p * p;
    const REAL q2 = q * q;
    const REAL r2 = r * r;
    const REAL xi = t.a / p2 + t.b / q2 + t.c / r2;
    const REAL dxi = t.a_slope / (p2 * p) + t.b_slope * (-k.shear / (q2 * q)) + t.c_slope * (0.0 - k.across / (r2 * r));
    const REAL root = root_of(xi);
    const REAL kappa = law.yield_stress + H * (ebar0 + x * ROOT_2_3_SINGLE * root);
    const REAL f = 0.5 * xi - kappa * kappa / 3.0;
    const REAL df = 0.5 * dxi - 2.0 * kappa * H * ROOT_2_3_SINGLE * (root + 0.5 * x * dxi / root) / 3.0;
    if (!at_least(xi, SMALLEST_LAYERED_DIVISOR) || !at_least(size_of(df), SMALLEST_LAYERED_DIVISOR)) return false;
    const REAL y = x - f / df;
    if (!at_least(y, 0.0)) return false;
    const REAL change = size_of(y - x) / (size_of(x) + SMALLEST_LAYERED_DIVISOR);
    if (at_most(change, LAYERED_CONVERGED)) {
      dlam = y;
      return true;
    }
    x = kept_or(change, LAYERED_CONVERGED, x, y);
  }
  return false;
}

// ---- the return

// Q^T D Q sigma (PLATE_RADIAL_RETURN).
template <class REAL>
VECTOR<5, REAL> returned_stress(const LAYERED_LAW& law, REAL dlam, const VECTOR<5, REAL>& s) {
  const LAYERED_RETURN_CONSTANTS& k = law.constants;
  VECTOR<5, REAL> turned{{0.0 + ROOT_1_2_SINGLE * s(1) + ROOT_1_2_SINGLE * s(2),
                          0.0 + -ROOT_1_2_SINGLE * s(1) + ROOT_1_2_SINGLE * s(2), 0.0 + s(3), 0.0 + s(4), 0.0 + s(5)}};
  const int components = law.theory == THICK_THEORY ? 5 : 3;
  for (int i = 1; i <= components; ++i) turned(i) = turned(i) * (1.0 / (dlam * k.Lc(i) * k.Lp(i) + 1.0));
  for (int i = components + 1; i <= 5; ++i) turned(i) = REAL{};
  return {{0.0 + ROOT_1_2_SINGLE * turned(1) + -ROOT_1_2_SINGLE * turned(2),
           0.0 + ROOT_1_2_SINGLE * turned(1) + ROOT_1_2_SINGLE * turned(2), 0.0 + turned(3), 0.0 + turned(4),
           0.0 + turned(5)}};
}

// The continuum tangent (layered_matrices.cpp). Both products n(i) n(j) are one.
template <class REAL>
MATRIX<5, 5, REAL> tangent_of(const LAYERED_LAW& law, const VECTOR<5, REAL>& s, const VECTOR<5, REAL>& flow,
                              REAL beta) {
  const VECTOR<5, REAL> n = flow_of(law.constants.flow_stress, s);
  const REAL divisor = dot(flow, n) + TWO_THIRDS_SINGLE * beta * law.hardening;
  MATRIX<5, 5, REAL> C;
  for (int j = 1; j <= 5; ++j) {
    for (int i = 1; i <= j; ++i) {
      const REAL less = n(i) * n(j) / divisor;
      C(i, j) = law.tangent(i, j) - less;
      C(j, i) = law.tangent(j, i) - less;
    }
  }
  return C;
}

#endif
