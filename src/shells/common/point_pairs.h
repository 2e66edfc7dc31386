// point_pairs.h: the four integration points of an elastic plate in two pairs, one point in each lane.
//
// L is LANES for one element, and a LANE_PAIR of vectors for one element in every lane of a vector (lane_pair.h).
#ifndef FINITES_POINT_PAIRS_H
#define FINITES_POINT_PAIRS_H

#include "common/lane_pair.h"
#include "finites/views.hpp"
#include "shells/common/constitutive.h"
#include "shells/common/isotropic_products.h"
#include "shells/common/surface_points.h"

// Two points: natural coordinates, weight times determinant, inverse Jacobian.
template <class L>
struct POINT_PAIR_OF {
  L xi, eta;
  L area;
  L g11, g12, g21, g22;
};
using POINT_PAIR = POINT_PAIR_OF<LANES>;

// Points 1 and 2, then 3 and 4.
template <class L>
struct POINT_PAIRS_OF {
  POINT_PAIR_OF<L> first, second;
};
using POINT_PAIRS = POINT_PAIRS_OF<LANES>;

using STATION_PAIR = STATION_OF<LANES>;

template <class L = LANES>
inline STATION_OF<L> station_pair(const SURFACE_STATION& a, const SURFACE_STATION& b) {
  return {pair_of_all<L>(a.xi, b.xi), pair_of_all<L>(a.eta, b.eta), pair_of_all<L>(a.weight, b.weight)};
}

// pair_at(stations) for the two pairs of a rule.
template <class L = LANES, class PAIR_AT>
inline POINT_PAIRS_OF<L> pairs_of(const SURFACE_STATION (&rule)[4], PAIR_AT pair_at) {
  return {pair_at(station_pair<L>(rule[0], rule[1])), pair_at(station_pair<L>(rule[2], rule[3]))};
}

// A section times the areas of two points: the form of SECTION_TERMS, and full.
template <class L>
struct SECTION_PAIR {
  L D11, D12, D22, D33;
};

template <class REAL, class L>
inline SECTION_PAIR<L> section_pair(const SECTION_TERMS_OF<REAL>& D, const L& c) {
  return {D.D11 * c, D.D12 * c, D.D22 * c, D.D33 * c};
}

template <int N>
inline MATRIX<N, N, LANES> section_pair(const MATRIX<N, N>& D, LANES c) {
  MATRIX<N, N, LANES> P;
  for (int i = 0; i < N * N; ++i) P.V[i] = D.V[i] * c;
  return P;
}

// Column j of D B: resultants of the strains of one degree of freedom.
template <class L>
struct RESULTANT_COLUMN {
  L x, y, xy;
};

template <int N, class L>
inline RESULTANT_COLUMN<L> resultant_column(const SECTION_PAIR<L>& D, const STRAIN_ROWS<N, L>& B, int j) {
  const L x = B.X(j);
  const L y = B.Y(j);
  return {D.D11 * x + D.D12 * y, D.D12 * x + D.D22 * y, D.D33 * B.XY(j)};
}

template <int N>
inline RESULTANT_COLUMN<LANES> resultant_column(const MATRIX<3, 3, LANES>& D, const STRAIN_ROWS<N, LANES>& B, int j) {
  const LANES x = B.X(j);
  const LANES y = B.Y(j);
  const LANES xy = B.XY(j);
  return {D(1, 1) * x + D(1, 2) * y + D(1, 3) * xy, D(2, 1) * x + D(2, 2) * y + D(2, 3) * xy,
          D(3, 1) * x + D(3, 2) * y + D(3, 3) * xy};
}

template <class L>
struct SHEAR_COLUMN {
  L xz, yz;
};

// The section diag(S1, S2).
template <class REAL>
struct SHEAR_TERMS_OF {
  REAL S1, S2;
};
using SHEAR_TERMS = SHEAR_TERMS_OF<double>;

template <class L>
struct SHEAR_PAIR {
  L S1, S2;
};

template <class REAL, class L>
inline SHEAR_PAIR<L> section_pair(const SHEAR_TERMS_OF<REAL>& H, const L& c) {
  return {H.S1 * c, H.S2 * c};
}

template <int N, class L>
inline SHEAR_COLUMN<L> shear_column(const SHEAR_PAIR<L>& H, const SHEAR_ROWS<N, L>& B, int j) {
  return {H.S1 * B.XZ(j), H.S2 * B.YZ(j)};
}

template <int N>
inline SHEAR_COLUMN<LANES> shear_column(const MATRIX<2, 2, LANES>& H, const SHEAR_ROWS<N, LANES>& B, int j) {
  const LANES xz = B.XZ(j);
  const LANES yz = B.YZ(j);
  return {H(1, 1) * xz + H(1, 2) * yz, H(2, 1) * xz + H(2, 2) * yz};
}

template <int N, class L>
inline L work(const STRAIN_ROWS<N, L>& B, int i, const RESULTANT_COLUMN<L>& m) {
  return B.X(i) * m.x + B.Y(i) * m.y + B.XY(i) * m.xy;
}

template <int N, class L>
inline L work(const SHEAR_ROWS<N, L>& B, int i, const SHEAR_COLUMN<L>& q) {
  return B.XZ(i) * q.xz + B.YZ(i) * q.yz;
}

//     K(i, j) := sum_p  (B^T D B)(i, j) area_p,      1 <= i <= j <= N,  packed
//
// Points 1 and 3 are added in one lane, 2 and 4 in the other, then the two lanes. Of a D that is not symmetric only the
// upper triangle of the product is formed.
//
//   B1, B2  in  strains at the first and at the second pair of points
//   D       in  SECTION_TERMS, or a full matrix
template <int N, class L, class SECTION, class REAL>
inline void integrate_packed(const POINT_PAIRS_OF<L>& points, const STRAIN_ROWS<N, L>& B1, const STRAIN_ROWS<N, L>& B2,
                             const SECTION& D, REAL* K) {
  const auto D1 = section_pair(D, points.first.area);
  const auto D2 = section_pair(D, points.second.area);
  for (int j = 1; j <= N; ++j) {
    const RESULTANT_COLUMN<L> m1 = resultant_column(D1, B1, j);
    const RESULTANT_COLUMN<L> m2 = resultant_column(D2, B2, j);
    for (int i = 1; i <= j; ++i) *K++ = sum_of(work(B1, i, m1) + work(B2, i, m2));
  }
}

//     K(i, j) := sum_p  c_p N(i) N(j)
//
//   N1, N2  in  functions at the first and at the second pair of points, c1 and c2 their factors
template <int N, class L, class REAL>
inline void integrate_packed(const VECTOR<N, L>& N1, const L& c1, const VECTOR<N, L>& N2, const L& c2, REAL* K) {
  for (int j = 1; j <= N; ++j) {
    const L n1 = N1(j) * c1;
    const L n2 = N2(j) * c2;
    for (int i = 1; i <= j; ++i) *K++ = sum_of(N1(i) * n1 + N2(i) * n2);
  }
}

//     K(i, j) := sum_p  c_p (B.XZ(i) B.XZ(j) + B.YZ(i) B.YZ(j))
template <int N, class L, class REAL>
inline void integrate_packed(const SHEAR_ROWS<N, L>& B1, const L& c1, const SHEAR_ROWS<N, L>& B2, const L& c2,
                             REAL* K) {
  for (int j = 1; j <= N; ++j) {
    const SHEAR_COLUMN<L> q1{B1.XZ(j) * c1, B1.YZ(j) * c1};
    const SHEAR_COLUMN<L> q2{B2.XZ(j) * c2, B2.YZ(j) * c2};
    for (int i = 1; i <= j; ++i) *K++ = sum_of(work(B1, i, q1) + work(B2, i, q2));
  }
}

// Strains of a thick plate: curvatures and transverse shears.
template <int N, class L = LANES>
struct THICK_ROWS {
  STRAIN_ROWS<N, L> bending;
  SHEAR_ROWS<N, L> shear;
};

//     K(i, j) := sum_p  (B_b^T D B_b + B_s^T H B_s)(i, j) area_p
template <int N, class L, class SECTION, class SHEAR_SECTION, class REAL>
inline void integrate_packed(const POINT_PAIRS_OF<L>& points, const THICK_ROWS<N, L>& B1, const THICK_ROWS<N, L>& B2,
                             const SECTION& D, const SHEAR_SECTION& H, REAL* K) {
  const auto D1 = section_pair(D, points.first.area);
  const auto D2 = section_pair(D, points.second.area);
  const auto H1 = section_pair(H, points.first.area);
  const auto H2 = section_pair(H, points.second.area);
  for (int j = 1; j <= N; ++j) {
    const RESULTANT_COLUMN<L> m1 = resultant_column(D1, B1.bending, j);
    const RESULTANT_COLUMN<L> m2 = resultant_column(D2, B2.bending, j);
    const SHEAR_COLUMN<L> q1 = shear_column(H1, B1.shear, j);
    const SHEAR_COLUMN<L> q2 = shear_column(H2, B2.shear, j);
    for (int i = 1; i <= j; ++i) {
      const L first = work(B1.bending, i, m1) + work(B1.shear, i, q1);
      const L second = work(B2.bending, i, m2) + work(B2.shear, i, q2);
      *K++ = sum_of(first + second);
    }
  }
}

#endif
