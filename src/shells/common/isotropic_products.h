// isotropic_products.h: the products of the isotropic kernels, where the section matrix has few entries.
//
// The rows of B are stored one by one, so that the compiler can vectorise the loops over the degrees of freedom.
#ifndef FINITES_ISOTROPIC_PRODUCTS_H
#define FINITES_ISOTROPIC_PRODUCTS_H

#include "finites/views.hpp"
#include "shells/common/constitutive.h"

// B (3, N) by its rows: membrane strains ex, ey, gxy or curvatures.
template <int N, class REAL = double>
struct STRAIN_ROWS {
  VECTOR<N, REAL> X, Y, XY;
};

// B (2, N) by its rows: transverse shear strains gxz, gyz.
template <int N, class REAL = double>
struct SHEAR_ROWS {
  VECTOR<N, REAL> XZ, YZ;
};

// The entries of an isotropic section matrix that are not zero: D = [D11 D12 0; D12 D22 0; 0 0 D33].
template <class REAL>
struct SECTION_TERMS_OF {
  REAL D11, D12, D22, D33;
};
using SECTION_TERMS = SECTION_TERMS_OF<double>;

template <class REAL>
inline SECTION_TERMS_OF<REAL> membrane_terms(const ISOTROPIC_SECTION_OF<REAL>& ISO) {
  return {ISO.DM11, ISO.DM12, ISO.DM22, ISO.DM33};
}
template <class REAL>
inline SECTION_TERMS_OF<REAL> bending_terms(const ISOTROPIC_SECTION_OF<REAL>& ISO) {
  return {ISO.DB11, ISO.DB12, ISO.DB22, ISO.DB33};
}

// D e: membrane forces Nx, Ny, Nxy or moments Mx, My, Mxy.
inline VECTOR<3> resultants(const SECTION_TERMS& D, const VECTOR<3>& e) {
  return {{D.D11 * e(1) + D.D12 * e(2), D.D12 * e(1) + D.D22 * e(2), D.D33 * e(3)}};
}

inline VECTOR<2> shear_forces(const ISOTROPIC_SECTION& ISO, const VECTOR<2>& g) {
  return {{ISO.DS1 * g(1), ISO.DS2 * g(2)}};
}

//     K(i, j) += c (B^T D B)(i, j),      1 <= i <= j <= N,  packed
//
// (m1, m2, m3) is column j of c D B; five products per column are all that the zeros of D leave.
template <int N>
inline void add_packed_product(const STRAIN_ROWS<N>& B, const SECTION_TERMS& D, double c, double* K) {
  for (int j = 1; j <= N; ++j) {
    const double m1 = (D.D11 * B.X(j) + D.D12 * B.Y(j)) * c;
    const double m2 = (D.D12 * B.X(j) + D.D22 * B.Y(j)) * c;
    const double m3 = D.D33 * B.XY(j) * c;
    for (int i = 1; i <= j; ++i) K[i - 1] += B.X(i) * m1 + B.Y(i) * m2 + B.XY(i) * m3;
    K += j;
  }
}

// The same for transverse shear with the section diag(S1, S2).
template <int N>
inline void add_packed_product(const SHEAR_ROWS<N>& B, double S1, double S2, double c, double* K) {
  for (int j = 1; j <= N; ++j) {
    const double q1 = S1 * B.XZ(j) * c;
    const double q2 = S2 * B.YZ(j) * c;
    for (int i = 1; i <= j; ++i) K[i - 1] += B.XZ(i) * q1 + B.YZ(i) * q2;
    K += j;
  }
}

// One row times u: the odd and the even terms are summed apart, so that the processor can add them at the same time.
// The order is part of the results (docs/decisions.md).
template <int N>
inline double row_times(const VECTOR<N>& row, const VECTOR<N>& u) {
  double odd = 0.0;
  double even = 0.0;
  for (int i = 1; i < N; i += 2) {
    odd += row(i) * u(i);
    even += row(i + 1) * u(i + 1);
  }
  if constexpr (N % 2 == 1) odd += row(N) * u(N);
  return odd + even;
}

// e = B u.
template <int N>
inline VECTOR<3> strains_of(const STRAIN_ROWS<N>& B, const VECTOR<N>& u) {
  return {{row_times(B.X, u), row_times(B.Y, u), row_times(B.XY, u)}};
}

template <int N>
inline VECTOR<2> strains_of(const SHEAR_ROWS<N>& B, const VECTOR<N>& u) {
  return {{row_times(B.XZ, u), row_times(B.YZ, u)}};
}

// f += c B^T resultants for one part of an element; place_part adds the sum to the degrees of freedom of the part.
template <int N>
inline void add_forces(const STRAIN_ROWS<N>& B, const VECTOR<3>& resultants, double c, VECTOR<N>& f) {
  const double r1 = c * resultants(1);
  const double r2 = c * resultants(2);
  const double r3 = c * resultants(3);
  for (int i = 1; i <= N; ++i) f(i) += B.X(i) * r1 + B.Y(i) * r2 + B.XY(i) * r3;
}

template <int N>
inline void add_forces(const SHEAR_ROWS<N>& B, const VECTOR<2>& resultants, double c, VECTOR<N>& f) {
  const double r1 = c * resultants(1);
  const double r2 = c * resultants(2);
  for (int i = 1; i <= N; ++i) f(i) += B.XZ(i) * r1 + B.YZ(i) * r2;
}

template <int N>
inline void place_part(const VECTOR<N>& part, const int (&freedoms)[N], double* f) {
  for (int i = 1; i <= N; ++i) f[freedoms[i - 1] - 1] += part(i);
}

// The rows as a matrix.
template <int N>
inline void set_rows(const STRAIN_ROWS<N>& rows, MATRIX<3, N>& B) {
  for (int i = 1; i <= N; ++i) {
    B(1, i) = rows.X(i);
    B(2, i) = rows.Y(i);
    B(3, i) = rows.XY(i);
  }
}

template <int N>
inline void set_rows(const SHEAR_ROWS<N>& rows, MATRIX<2, N>& B) {
  for (int i = 1; i <= N; ++i) {
    B(1, i) = rows.XZ(i);
    B(2, i) = rows.YZ(i);
  }
}

#endif
