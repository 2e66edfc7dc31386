// slope_integrals.h: the membrane stiffness of an elastic plate from the integrals of the products of slopes.
//
// The strains of node i are B(u_i) = (n.X, 0, n.Y), B(v_i) = (0, n.Y, n.X), so that every entry of B^T D B is a sum of
//
//     XX(i, j) = sum_p  n.X(i) n.X(j) area_p,     YY(i, j) likewise,     XY(i, j) = sum_p  n.X(i) n.Y(j) area_p
#ifndef FINITES_SLOPE_INTEGRALS_H
#define FINITES_SLOPE_INTEGRALS_H

#include "common/lane_pair.h"
#include "finites/views.hpp"
#include "shells/common/constitutive.h"
#include "shells/common/isotropic_products.h"
#include "shells/common/slopes.h"

template <int NODES, class REAL = double>
struct SLOPE_INTEGRALS {
  MATRIX<NODES, NODES, REAL> XX, YY;  // i <= j only
  MATRIX<NODES, NODES, REAL> XY;
};

// Over two pairs of points, slopes n1 and n2, areas c1 and c2.
template <int NODES, class L>
inline SLOPE_INTEGRALS<NODES, REAL_OF<L>> slope_integrals(const SLOPES<NODES, L>& n1, const L& c1,
                                                          const SLOPES<NODES, L>& n2, const L& c2) {
  SLOPE_INTEGRALS<NODES, REAL_OF<L>> S;
  for (int j = 1; j <= NODES; ++j) {
    const L X1 = n1.X(j) * c1;
    const L X2 = n2.X(j) * c2;
    const L Y1 = n1.Y(j) * c1;
    const L Y2 = n2.Y(j) * c2;
    for (int i = 1; i <= j; ++i) {
      S.XX(i, j) = sum_of(n1.X(i) * X1 + n2.X(i) * X2);
      S.YY(i, j) = sum_of(n1.Y(i) * Y1 + n2.Y(i) * Y2);
    }
    for (int i = 1; i <= NODES; ++i) S.XY(i, j) = sum_of(n1.X(i) * Y1 + n2.X(i) * Y2);
  }
  return S;
}

// At one point of area c.
template <int NODES>
inline SLOPE_INTEGRALS<NODES> slope_integrals(const SLOPES<NODES>& n, double c) {
  SLOPE_INTEGRALS<NODES> S;
  for (int j = 1; j <= NODES; ++j) {
    const double X = n.X(j) * c;
    const double Y = n.Y(j) * c;
    for (int i = 1; i <= j; ++i) {
      S.XX(i, j) = n.X(i) * X;
      S.YY(i, j) = n.Y(i) * Y;
    }
    for (int i = 1; i <= NODES; ++i) S.XY(i, j) = n.X(i) * Y;
  }
  return S;
}

// The 2 by 2 block of the nodes i <= j: rows u_i, v_i by columns u_j, v_j.
template <int NODES, class REAL>
inline MATRIX<2, 2, REAL> normal_block(const SLOPE_INTEGRALS<NODES, REAL>& S, const SECTION_TERMS_OF<REAL>& D, int i,
                                       int j) {
  return {{D.D11 * S.XX(i, j), D.D12 * S.XY(j, i), D.D12 * S.XY(i, j), D.D22 * S.YY(i, j)}};
}

// That of the shear at one point: n are the slopes there and s = D33 n area.
template <int NODES, class REAL>
inline MATRIX<2, 2, REAL> shear_block(const SLOPES<NODES, REAL>& n, const SLOPES<NODES, REAL>& s, int i, int j) {
  return {{n.Y(i) * s.Y(j), n.X(i) * s.Y(j), n.Y(i) * s.X(j), n.X(i) * s.X(j)}};
}

template <int NODES, class REAL>
inline SLOPES<NODES, REAL> scaled(const SLOPES<NODES, REAL>& n, const REAL& factor) {
  SLOPES<NODES, REAL> s;
  for (int i = 1; i <= NODES; ++i) {
    s.X(i) = n.X(i) * factor;
    s.Y(i) = n.Y(i) * factor;
  }
  return s;
}

// Of a full D: entry (a, b) of D by the products of its rows of B.
template <int NODES>
inline MATRIX<2, 2> full_block(const SLOPE_INTEGRALS<NODES>& S, const MATRIX<3, 3>& D, int i, int j) {
  const double XX = S.XX(i, j);
  const double YY = S.YY(i, j);
  const double XY = S.XY(i, j);
  const double YX = S.XY(j, i);
  return {{D(1, 1) * XX + D(1, 3) * XY + D(3, 1) * YX + D(3, 3) * YY,
           D(2, 1) * YX + D(2, 3) * YY + D(3, 1) * XX + D(3, 3) * XY,
           D(1, 2) * XY + D(1, 3) * XX + D(3, 2) * YY + D(3, 3) * YX,
           D(2, 2) * YY + D(2, 3) * YX + D(3, 2) * XY + D(3, 3) * XX}};
}

template <class REAL>
inline MATRIX<2, 2, REAL> operator+(const MATRIX<2, 2, REAL>& a, const MATRIX<2, 2, REAL>& b) {
  return {{a(1, 1) + b(1, 1), a(2, 1) + b(2, 1), a(1, 2) + b(1, 2), a(2, 2) + b(2, 2)}};
}

// K := block(i, j) for the nodes i <= j, packed; of the blocks on the diagonal the upper triangle.
template <int NODES, class BLOCK, class REAL>
inline void place_packed_blocks(BLOCK block, REAL* K) {
  for (int j = 1; j <= NODES; ++j) {
    for (int i = 1; i <= j; ++i) {
      const MATRIX<2, 2, REAL> b = block(i, j);
      K[SYM(2 * i - 1, 2 * j - 1) - 1] = b(1, 1);
      K[SYM(2 * i - 1, 2 * j) - 1] = b(1, 2);
      K[SYM(2 * i, 2 * j) - 1] = b(2, 2);
      if (i < j) K[SYM(2 * i, 2 * j - 1) - 1] = b(2, 1);
    }
  }
}

#endif
