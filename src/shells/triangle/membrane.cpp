// membrane.cpp: constant strain triangle (Turner, Clough, Martin and Topp, 1956) and the small fictitious stiffness of
// the in-plane rotations.
//
//     (ex, ey, gxy) = B (u1, v1, u2, v2, u3, v3),    K = (TWO_AREA / 2) B^T DM B
//
// Membrane forces are positive in tension. The drilling stiffness of the rotations about the normal is
//
//     e [1 -1/2 -1/2; -1/2 1 -1/2; -1/2 -1/2 1],    e = DRILL_FACTOR E h TWO_AREA
//
// Equal rotations, as in a rigid rotation, have no moment.
//
// Mirror: shells/quadrilateral/membrane.cpp.
#include "shells/triangle/membrane.h"

#include <algorithm>

#include "common/finiteness.h"
#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/common/general_products.h"
#include "shells/common/point_pairs.h"
#include "shells/common/slope_integrals.h"
#include "shells/common/slopes.h"
#include "shells/triangle/geometry.h"
#include "shells/triangle/membrane_formulas.h"

void TRI_B_MEMBRANE(double g11, double g12, double g21, double g22, MATRIX<3, 6>& B) {
  const double n1x = -g11 - g12;
  const double n1y = -g21 - g22;
  // clang-format off
  B(1, 1) = n1x;  B(1, 2) = 0.0;  B(1, 3) = g11;  B(1, 4) = 0.0;  B(1, 5) = g12;  B(1, 6) = 0.0;
  B(2, 1) = 0.0;  B(2, 2) = n1y;  B(2, 3) = 0.0;  B(2, 4) = g21;  B(2, 5) = 0.0;  B(2, 6) = g22;
  B(3, 1) = n1y;  B(3, 2) = n1x;  B(3, 3) = g21;  B(3, 4) = g11;  B(3, 5) = g22;  B(3, 6) = g12;
  // clang-format on
}

void TRI_B_MEMBRANE_STORED(const TRIANGLE_GEOMETRY& TRI, MATRIX<3, 6>& B) {
  TRI_B_MEMBRANE(TRI.G11, TRI.G12, TRI.G21, TRI.G22, B);
}

STRAIN_ROWS<6> tri_membrane_rows(const TRIANGLE_GEOMETRY& TRI) {
  const double n1x = -TRI.G11 - TRI.G12;
  const double n1y = -TRI.G21 - TRI.G22;
  return {{{n1x, 0.0, TRI.G11, 0.0, TRI.G12, 0.0}},
          {{0.0, n1y, 0.0, TRI.G21, 0.0, TRI.G22}},
          {{n1y, n1x, TRI.G21, TRI.G11, TRI.G22, TRI.G12}}};
}

void TRI_KM_ISO(const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO, double* K) { tri_membrane(TRI, ISO, K); }

// The integrand is constant; the sum of the areas of the points has the rounding of the rule's weights. NaN and
// infinities go through the products of each point with the zeros of B too: the weights have both signs.
void TRI_KM_GENERAL(const PLATEELEM_RECORD& EL, const POINT_PAIRS& points, double* K) {
  const POINT_PAIR& p = points.first;
  const double c = sum_of(p.area + points.second.area);
  const SLOPES<3> n = linear_slopes(p.g11[0], p.g12[0], p.g21[0], p.g22[0]);
  const SLOPE_INTEGRALS<3> S = slope_integrals(n, c);
  const auto block = [&](int i, int j) { return full_block(S, EL.D_MEMBRANE_NORMAL, i, j); };
  place_packed_blocks<3>(block, K);
  if (all_finite(K, SYM(6, 6))) return;
  std::fill_n(K, SYM(6, 6), 0.0);
  MATRIX<3, 6> B;
  TRI_B_MEMBRANE(p.g11[0], p.g12[0], p.g21[0], p.g22[0], B);
  for (const LANES area : {p.area, points.second.area}) {
    add_packed_btdb(B, EL.D_MEMBRANE_NORMAL, area[0], K);
    add_packed_btdb(B, EL.D_MEMBRANE_NORMAL, area[1], K);
  }
}

void TRI_KDRILL(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, double* K) {
  tri_drilling(EL.E1, EL.THICKNESS, TRI, K);
}
