// layered_matrices.h: the matrices of von Mises plasticity in plane stress: yield metric, elastic matrix, their common
// eigenvectors and the tangents, for stresses in the order xx, yy, xy, xz, yz. The shears of a thin element are zero.
#ifndef FINITES_LAYERED_MATRICES_H
#define FINITES_LAYERED_MATRICES_H

#include "finites/records.h"
#include "finites/views.hpp"

using MATRIX5 = MATRIX<5, 5>;

// The yield metric P: sigma^T P sigma is two thirds of the square of the von Mises stress.
MATRIX5 yield_metric(int theory);

// The elastic matrix, with 5/6 of the shear modulus for the transverse shears: also the tangent of an elastic point.
MATRIX5 elastic_matrix(const PLATEELEM_RECORD& EL, int theory);

// The eigenvectors that metric and elastic matrix have in common, and the eigenvalues of each on the diagonal.
MATRIX5 eigenvectors(int theory);
MATRIX5 metric_eigenvalues(int theory);
MATRIX5 elastic_eigenvalues(const PLATEELEM_RECORD& EL, int theory);

// The continuum tangent at the returned stress.
MATRIX5 continuum_tangent(const PLATEELEM_RECORD& EL, const VECTOR<5>& sigma, const MATRIX5& P, int theory);

// The consistent tangent of the return mapping, at the returned stress. The protocol stores the continuum tangent.
void PLATE_TANGENT_ALGO(const PLATEELEM_RECORD& EL, double dlam, const VECTOR<5>& sigma, const MATRIX5& P,
                        const MATRIX5& Lp, const MATRIX5& Lc, const MATRIX5& Q, MATRIX5& C);

inline double shear_modulus(const PLATEELEM_RECORD& EL) { return EL.E1 / (2.0 * (1.0 + EL.NU1)); }

inline VECTOR<5> times(const MATRIX5& M, const VECTOR<5>& v) {
  VECTOR<5> out{};
  for (int j = 1; j <= 5; ++j) {
    for (int i = 1; i <= 5; ++i) out(i) += M(i, j) * v(j);
  }
  return out;
}

inline VECTOR<5> transposed_times(const MATRIX5& M, const VECTOR<5>& v) {
  VECTOR<5> out{};
  for (int i = 1; i <= 5; ++i) {
    for (int j = 1; j <= 5; ++j) out(i) += M(j, i) * v(j);
  }
  return out;
}

inline double dot(const VECTOR<5>& a, const VECTOR<5>& b) {
  double sum = 0.0;
  for (int i = 1; i <= 5; ++i) sum += a(i) * b(i);
  return sum;
}

// sigma^T P sigma.
inline double metric_norm(const MATRIX5& P, const VECTOR<5>& sigma) { return dot(sigma, times(P, sigma)); }

#endif
