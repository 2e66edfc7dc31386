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
#include "solids/results.h"

#include <cmath>

#include "finites/fields.h"
#include "finites/finites.h"
#include "solids/shapes.h"

namespace {

constexpr double ROOT_2_SINGLE = 1.4142135381698608;
constexpr double THIRD_OF_CIRCLE = 2.0943951023931953;  // 2 pi / 3

// r at or below it counts as a state without a deviator, whose angle is not defined: all three principal stresses are
// then 0, not the mean stress. Absolute, in the stress unit of the model: part of the results (docs/decisions.md).
constexpr double NO_DEVIATOR = 1e-16;

// Trilinear extrapolation from the 2 by 2 by 2 points to a node, by the number n of natural coordinates in which node
// and point have opposite signs: ((1 + sqrt 3) / 2)^(3 - n) ((1 - sqrt 3) / 2)^n, single precision, widened.
constexpr double BRICK_SHARES[4] = {2.5490379333496094, -0.6830127239227295, 0.1830126941204071, -0.049038052558898926};

}  // namespace

double VON_MISES_6(const double* stress) {
  const double a = stress[0];
  const double b = stress[1];
  const double c = stress[2];
  const double d = stress[3];
  const double e = stress[4];
  const double f = stress[5];
  return std::sqrt(((a - b) * (a - b) + (a - c) * (a - c) + (b - c) * (b - c)) * 0.5 + (d * d + e * e + f * f) * 3.0);
}

void PRINCIPAL_6(const double* stress, double* principal) {
  const double a = stress[0];
  const double b = stress[1];
  const double c = stress[2];
  const double d = stress[3];
  const double e = stress[4];
  const double f = stress[5];
  principal[0] = principal[1] = principal[2] = 0.0;
  const double m = (a + b + c) / 3.0;
  const double I1 = a + b + c;
  const double I2 = a * b + a * c + b * c - d * d - e * e - f * f;
  const double r = std::sqrt(2.0 * (I1 * I1 / 3.0 - I2) / 3.0);
  if (r <= NO_DEVIATOR) return;
  const double I3 = a * b * c + 2.0 * d * e * f - a * (f * f) - b * (e * e) - c * (d * d);
  const double cosine = (I3 - I1 * I2 / 3.0 + 2.0 * (I1 * I1 * I1) / 27.0) * ROOT_2_SINGLE / (r * r * r);
  const double t = std::acos(cosine) / 3.0;
  const double R = r * ROOT_2_SINGLE;
  double p1 = R * std::cos(t - THIRD_OF_CIRCLE);
  double p2 = R * std::cos(t + THIRD_OF_CIRCLE);
  const double p3 = R * std::cos(t);
  if (p2 < p1) {
    const double smaller = p2;
    p2 = p1;
    p1 = smaller;
  }
  principal[0] = p3 + m;
  principal[1] = p2 + m;
  principal[2] = p1 + m;
}

void fill_solid_record(const VECTOR<6>& strain, const VECTOR<6>& stress, double* record) {
  const VECTOR_VIEW<> R(record);
  for (int word = 1; word <= WORDS_WRITTEN; ++word) R(word) = 0.0;
  for (int i = 1; i <= 6; ++i) {
    R(WORD_STRAIN + i - 1) = strain(i);
    R(WORD_STRESS + i - 1) = stress(i);
  }
  UPDATE_PRINCIPAUX_RES50_SOLID_DBL(record);
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
