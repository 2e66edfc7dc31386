// results.cpp: von Mises and principal stresses of solids, and the exported routines that update them in a record.
//
//     (a, b, c, d, e, f) = (xx, yy, zz, xy, xz, yz)
//
//     von Mises   sqrt(((a - b)^2 + (a - c)^2 + (b - c)^2) / 2 + 3 (d^2 + e^2 + f^2))
//
//     principal   m + R cos t,  m + R cos(t -+ 2 pi/3)      m = I1 / 3,  R = sqrt(2) r
//                 r = sqrt(2 (I1^2 / 3 - I2) / 3),          cos 3 t = sqrt(2) (I3 - I1 I2 / 3 + 2 I1^3 / 27) / r^3
//
// with the invariants I1, I2, I3 of the stress tensor: R = 2 sqrt(J2 / 3) and the bracket is J3 of the deviator.
//
// The three cosines are the root of 4 c^3 - 3 c = x, x = cos 3 t. The root of -x are those of x with the other sign:
// only x >= 0, 3 t <= pi / 2, is solved. There the largest root lies between sqrt(3)/2 and 1, far from the others, and
// Halley's iteration finds it to rounding; the other two are -c/2 +- sqrt(3)/2 sin t, sin t = sin 3 t / (4 c^2 - 1).
#include "solids/results.h"

#include <algorithm>

#include "finites/fields.h"
#include "finites/finites.h"
#include "solids/shapes.h"

namespace {

constexpr double ROOT_2_SINGLE = 1.4142135381698608;
constexpr double HALF_ROOT_3 = 0.8660254037844386;

// r at or below it counts as a state without a deviator, whose angle is not defined: all three principal stresses are
// then 0, not the mean stress. Absolute, in the stress unit of the model: part of the results (docs/decisions.md).
constexpr double NO_DEVIATOR = 1e-16;

// Trilinear extrapolation from the 2 by 2 by 2 points to a node, by the number n of natural coordinates in which node
// and point have opposite signs: ((1 + sqrt 3) / 2)^(3 - n) ((1 - sqrt 3) / 2)^n, single precision, widened.
constexpr double BRICK_SHARES[4] = {2.5490379333496094, -0.6830127239227295, 0.1830126941204071, -0.049038052558898926};

// Of one stress, or of two side by side.
template <class REAL>
REAL von_mises(const VECTOR<6, REAL>& s) {
  const REAL a = s(1) - s(2);
  const REAL b = s(1) - s(3);
  const REAL c = s(2) - s(3);
  return root((a * a + b * b + c * c) * 0.5 + (s(4) * s(4) + s(5) * s(5) + s(6) * s(6)) * 3.0);
}

// What the principal stresses are made of: the root are those of |x|, the largest first.
template <class REAL>
struct CLOSED_FORM {
  REAL m, r, x;
  REAL first, second, third;
};

// A polynomial that is the largest root within 6.8e-7, then a step of Halley's iteration, within 1e-18. For x > 1 there
// is no angle: y is NaN, and 0 y takes it to the first root as well.
template <class REAL>
void set_roots(REAL x, CLOSED_FORM<REAL>& p) {
  const REAL y = root((1.0 - x) * (1.0 + x));
  const REAL xx = x * x;
  const REAL c0 = 0.866026 + 0.166619 * x + xx * (0.0218996 * x - 0.047525 + xx * (0.0019473 * x - 0.00896645));
  const REAL f = c0 * (4.0 * c0 * c0 - 3.0) - x;
  const REAL slope = 12.0 * c0 * c0 - 3.0;
  const REAL c = c0 - f * slope / (slope * slope - 12.0 * c0 * f);
  const REAL h = HALF_ROOT_3 * y / (4.0 * c * c - 1.0);
  p.first = c + 0.0 * y;
  p.second = h - 0.5 * c;
  p.third = -0.5 * c - h;
}

template <class REAL>
CLOSED_FORM<REAL> closed_form(const VECTOR<6, REAL>& s) {
  const REAL a = s(1);
  const REAL b = s(2);
  const REAL c = s(3);
  const REAL d = s(4);
  const REAL e = s(5);
  const REAL f = s(6);
  const REAL I1 = a + b + c;
  const REAL I2 = a * b + a * c + b * c - d * d - e * e - f * f;
  const REAL I3 = a * b * c + 2.0 * d * e * f - a * (f * f) - b * (e * e) - c * (d * d);
  CLOSED_FORM<REAL> p;
  p.m = I1 / 3.0;
  p.r = root(2.0 * (I1 * I1 / 3.0 - I2) / 3.0);
  p.x = (I3 - I1 * I2 / 3.0 + 2.0 * (I1 * I1 * I1) / 27.0) * ROOT_2_SINGLE / (p.r * p.r * p.r);
  set_roots(magnitude(p.x), p);
  return p;
}

void set_principal(const CLOSED_FORM<double>& p, double* principal) {
  if (p.r <= NO_DEVIATOR) {
    principal[0] = principal[1] = principal[2] = 0.0;
    return;
  }
  const double R = p.r * ROOT_2_SINGLE;
  principal[0] = R * (p.x < 0.0 ? -p.third : p.first) + p.m;
  principal[1] = R * (p.x < 0.0 ? -p.second : p.second) + p.m;
  principal[2] = R * (p.x < 0.0 ? -p.first : p.third) + p.m;
}

VECTOR<6> stress_at(const double* stress) {
  return {{stress[0], stress[1], stress[2], stress[3], stress[4], stress[5]}};
}

}  // namespace

double VON_MISES_6(const double* stress) { return von_mises(stress_at(stress)); }

void PRINCIPAL_6(const double* stress, double* principal) { set_principal(closed_form(stress_at(stress)), principal); }

void fill_solid_record(const VECTOR<6>& strain, const VECTOR<6>& stress, double* record) {
  VECTOR<WORDS_WRITTEN> R{};
  for (int i = 1; i <= 6; ++i) {
    R(WORD_STRAIN + i - 1) = strain(i);
    R(WORD_STRESS + i - 1) = stress(i);
  }
  UPDATE_PRINCIPAUX_RES50_SOLID_DBL(R.data());
  std::copy_n(R.data(), WORDS_WRITTEN, record);
}

void fill_solid_records(const VECTOR<6, LANES>& strain, const VECTOR<6, LANES>& stress, double* first, double* second) {
  const LANES mises = von_mises(stress);
  const CLOSED_FORM<LANES> p = closed_form(stress);
  double* const record[2] = {first, second};
  for (int lane = 0; lane < 2; ++lane) {
    if (record[lane] == nullptr) continue;
    VECTOR<WORDS_WRITTEN> R{};
    for (int i = 1; i <= 6; ++i) {
      R(WORD_STRAIN + i - 1) = strain(i)[lane];
      R(WORD_STRESS + i - 1) = stress(i)[lane];
    }
    R(WORD_MISES) = mises[lane];
    set_principal({p.m[lane], p.r[lane], p.x[lane], p.first[lane], p.second[lane], p.third[lane]}, &R(WORD_PRINCIPAL));
    std::copy_n(R.data(), WORDS_WRITTEN, record[lane]);
  }
}

void UPDATE_PRINCIPAUX_RES50_SOLID_DBL(double* R) {
  R[WORD_MISES - 1] = VON_MISES_6(R + WORD_STRESS - 1);
  PRINCIPAL_6(R + WORD_STRESS - 1, R + WORD_PRINCIPAL - 1);
}

void UPDATE_PRINCIPAUX_RES50_SOLID(float* R) {
  double stress[6];
  double principal[3];
  for (int i = 0; i < 6; ++i) stress[i] = static_cast<double>(R[WORD_STRESS - 1 + i]);
  PRINCIPAL_6(stress, principal);
  R[WORD_MISES - 1] = static_cast<float>(VON_MISES_6(stress));
  for (int i = 0; i < 3; ++i) R[WORD_PRINCIPAL - 1 + i] = static_cast<float>(principal[i]);
}

//     SN(:, node) = sum_p  BRICK_SHARES(number of opposite signs) SP(:, p)
void SOLID_EXTRAPOLATE_BRICK(int NN, const double* SP, const double* EP, double* SN, double* EN) {
  SOLID_STATIONS c;
  SOLID_NODE_COORDS(BRICK_8, 8, c);
  const MATRIX_VIEW<6, const double> sp(SP);
  const MATRIX_VIEW<6, const double> ep(EP);
  const MATRIX_VIEW<6> sn(SN);
  const MATRIX_VIEW<6> en(EN);
  for (int node = 1; node <= 8; ++node) {
    for (int i = 1; i <= 6; ++i) sn(i, node) = en(i, node) = 0.0;
    if (NN != 8) continue;
    for (int p = 1; p <= 8; ++p) {
      int opposite = 0;
      for (int i = 1; i <= 3; ++i) opposite += c(i, node) * c(i, p) < 0.0 ? 1 : 0;
      for (int i = 1; i <= 6; ++i) {
        sn(i, node) += BRICK_SHARES[opposite] * sp(i, p);
        en(i, node) += BRICK_SHARES[opposite] * ep(i, p);
      }
    }
  }
}
