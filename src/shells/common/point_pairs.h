// point_pairs.h: the four integration points of an elastic plate in two pairs, one point in each lane.
#ifndef FINITES_POINT_PAIRS_H
#define FINITES_POINT_PAIRS_H

#include "common/lanes.h"
#include "finites/views.hpp"
#include "shells/common/constitutive.h"
#include "shells/common/isotropic_products.h"
#include "shells/common/surface_points.h"

// Two points: natural coordinates, weight times determinant, inverse Jacobian.
struct POINT_PAIR {
  LANES xi, eta;
  LANES area;
  LANES g11, g12, g21, g22;
};

// Points 1 and 2, then 3 and 4.
struct POINT_PAIRS {
  POINT_PAIR first, second;
};

using STATION_PAIR = STATION_OF<LANES>;

inline STATION_PAIR station_pair(const SURFACE_STATION& a, const SURFACE_STATION& b) {
  return {LANES{a.xi, b.xi}, LANES{a.eta, b.eta}, LANES{a.weight, b.weight}};
}

// pair_of(stations) for the two pairs of a rule.
template <class PAIR_OF>
inline POINT_PAIRS pairs_of(const SURFACE_STATION (&rule)[4], PAIR_OF pair_of) {
  return {pair_of(station_pair(rule[0], rule[1])), pair_of(station_pair(rule[2], rule[3]))};
}

// A section times the areas of two points: the form of SECTION_TERMS, and full.
struct SECTION_PAIR {
  LANES D11, D12, D22, D33;
};

inline SECTION_PAIR section_pair(const SECTION_TERMS& D, LANES c) {
  return {D.D11 * c, D.D12 * c, D.D22 * c, D.D33 * c};
}

template <int N>
inline MATRIX<N, N, LANES> section_pair(const MATRIX<N, N>& D, LANES c) {
  MATRIX<N, N, LANES> P;
  for (int i = 0; i < N * N; ++i) P.V[i] = D.V[i] * c;
  return P;
}

// Column j of D B: resultants of the strains of one degree of freedom.
struct RESULTANT_COLUMN {
  LANES x, y, xy;
};

template <int N>
inline RESULTANT_COLUMN resultant_column(const SECTION_PAIR& D, const STRAIN_ROWS<N, LANES>& B, int j) {
  const LANES x = B.X(j);
  const LANES y = B.Y(j);
  return {D.D11 * x + D.D12 * y, D.D12 * x + D.D22 * y, D.D33 * B.XY(j)};
}

template <int N>
inline RESULTANT_COLUMN resultant_column(const MATRIX<3, 3, LANES>& D, const STRAIN_ROWS<N, LANES>& B, int j) {
  const LANES x = B.X(j);
  const LANES y = B.Y(j);
  const LANES xy = B.XY(j);
  return {D(1, 1) * x + D(1, 2) * y + D(1, 3) * xy, D(2, 1) * x + D(2, 2) * y + D(2, 3) * xy,
          D(3, 1) * x + D(3, 2) * y + D(3, 3) * xy};
}

struct SHEAR_COLUMN {
  LANES xz, yz;
};

// The section diag(S1, S2).
struct SHEAR_TERMS {
  double S1, S2;
};

struct SHEAR_PAIR {
  LANES S1, S2;
};

inline SHEAR_PAIR section_pair(const SHEAR_TERMS& H, LANES c) { return {H.S1 * c, H.S2 * c}; }

template <int N>
inline SHEAR_COLUMN shear_column(const SHEAR_PAIR& H, const SHEAR_ROWS<N, LANES>& B, int j) {
  return {H.S1 * B.XZ(j), H.S2 * B.YZ(j)};
}

template <int N>
inline SHEAR_COLUMN shear_column(const MATRIX<2, 2, LANES>& H, const SHEAR_ROWS<N, LANES>& B, int j) {
  const LANES xz = B.XZ(j);
  const LANES yz = B.YZ(j);
  return {H(1, 1) * xz + H(1, 2) * yz, H(2, 1) * xz + H(2, 2) * yz};
}

template <int N>
inline LANES work(const STRAIN_ROWS<N, LANES>& B, int i, const RESULTANT_COLUMN& m) {
  return B.X(i) * m.x + B.Y(i) * m.y + B.XY(i) * m.xy;
}

template <int N>
inline LANES work(const SHEAR_ROWS<N, LANES>& B, int i, const SHEAR_COLUMN& q) {
  return B.XZ(i) * q.xz + B.YZ(i) * q.yz;
}

//     K(i, j) := sum_p  (B^T D B)(i, j) area_p,      1 <= i <= j <= N,  packed
//
// Points 1 and 3 are added in one lane, 2 and 4 in the other, then the two lanes. Of a D that is not symmetric only the
// upper triangle of the product is formed.
//
//   B1, B2  in  strains at the first and at the second pair of points
//   D       in  SECTION_TERMS, or a full matrix
template <int N, class SECTION>
inline void integrate_packed(const POINT_PAIRS& points, const STRAIN_ROWS<N, LANES>& B1,
                             const STRAIN_ROWS<N, LANES>& B2, const SECTION& D, double* K) {
  const auto D1 = section_pair(D, points.first.area);
  const auto D2 = section_pair(D, points.second.area);
  for (int j = 1; j <= N; ++j) {
    const RESULTANT_COLUMN m1 = resultant_column(D1, B1, j);
    const RESULTANT_COLUMN m2 = resultant_column(D2, B2, j);
    for (int i = 1; i <= j; ++i) *K++ = sum_of(work(B1, i, m1) + work(B2, i, m2));
  }
}

//     K(i, j) := sum_p  c_p N(i) N(j)
//
//   N1, N2  in  functions at the first and at the second pair of points, c1 and c2 their factors
template <int N>
inline void integrate_packed(const VECTOR<N, LANES>& N1, LANES c1, const VECTOR<N, LANES>& N2, LANES c2, double* K) {
  for (int j = 1; j <= N; ++j) {
    const LANES n1 = N1(j) * c1;
    const LANES n2 = N2(j) * c2;
    for (int i = 1; i <= j; ++i) *K++ = sum_of(N1(i) * n1 + N2(i) * n2);
  }
}

//     K(i, j) := sum_p  c_p (B.XZ(i) B.XZ(j) + B.YZ(i) B.YZ(j))
template <int N>
inline void integrate_packed(const SHEAR_ROWS<N, LANES>& B1, LANES c1, const SHEAR_ROWS<N, LANES>& B2, LANES c2,
                             double* K) {
  for (int j = 1; j <= N; ++j) {
    const SHEAR_COLUMN q1{B1.XZ(j) * c1, B1.YZ(j) * c1};
    const SHEAR_COLUMN q2{B2.XZ(j) * c2, B2.YZ(j) * c2};
    for (int i = 1; i <= j; ++i) *K++ = sum_of(work(B1, i, q1) + work(B2, i, q2));
  }
}

// Strains of a thick plate: curvatures and transverse shears.
template <int N>
struct THICK_ROWS {
  STRAIN_ROWS<N, LANES> bending;
  SHEAR_ROWS<N, LANES> shear;
};

//     K(i, j) := sum_p  (B_b^T D B_b + B_s^T H B_s)(i, j) area_p
template <int N, class SECTION, class SHEAR_SECTION>
inline void integrate_packed(const POINT_PAIRS& points, const THICK_ROWS<N>& B1, const THICK_ROWS<N>& B2,
                             const SECTION& D, const SHEAR_SECTION& H, double* K) {
  const auto D1 = section_pair(D, points.first.area);
  const auto D2 = section_pair(D, points.second.area);
  const auto H1 = section_pair(H, points.first.area);
  const auto H2 = section_pair(H, points.second.area);
  for (int j = 1; j <= N; ++j) {
    const RESULTANT_COLUMN m1 = resultant_column(D1, B1.bending, j);
    const RESULTANT_COLUMN m2 = resultant_column(D2, B2.bending, j);
    const SHEAR_COLUMN q1 = shear_column(H1, B1.shear, j);
    const SHEAR_COLUMN q2 = shear_column(H2, B2.shear, j);
    for (int i = 1; i <= j; ++i) {
      const LANES first = work(B1.bending, i, m1) + work(B1.shear, i, q1);
      const LANES second = work(B2.bending, i, m2) + work(B2.shear, i, q2);
      *K++ = sum_of(first + second);
    }
  }
}

#endif
