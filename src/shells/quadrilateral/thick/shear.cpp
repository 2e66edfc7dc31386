// shear.cpp: transverse shears of the discrete Kirchhoff-Mindlin quadrilateral (Katili, 1993): covariant components,
// tied at the mid-sides (Bathe and Dvorkin, 1985) to the tangential shears of the sides.
//
//     g_k = -(2/3) phi_k dB_k                             along side k; covariant at its middle: g_k L_k / 2
//
//     g_xi  = (1 - eta) / 2 (g_1 L_1 / 2) - (1 + eta) / 2 (g_3 L_3 / 2)        side 3 runs against xi
//     g_eta = (1 + xi) / 2 (g_2 L_2 / 2)  - (1 - xi) / 2 (g_4 L_4 / 2)         side 4 runs against eta
//     gxz   = g11 g_xi + g12 g_eta,    gyz = g21 g_xi + g22 g_eta
//
// GX and GY are the coefficients of dB_1 to dB_4; LPHI(k) = L_k phi_k, so that g_k L_k / 2 = -(LPHI(k) / 3) dB_k.
//
// Mirror: shells/triangle/thick/shear.cpp.
#include "shells/quadrilateral/thick/shear.h"

#include "finites/records.h"
#include "shells/common/side_fields.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/quadrilateral/thick/side_constants.h"

namespace {

// side_k: the coefficient of dB_k in g_xi (sides 1, 3) or g_eta (sides 2, 4).
template <class OVER = ALL_SIDES, class REAL>
SHEAR_ROWS<12, REAL> shear_rows(REAL xi, REAL eta, REAL g11, REAL g12, REAL g21, REAL g22, const double* LPHI,
                                const double* A_DELTA) {
  const REAL side1 = -(1.0 - eta) * LPHI[0] / 6.0;
  const REAL side2 = -(1.0 + xi) * LPHI[1] / 6.0;
  const REAL side3 = (1.0 + eta) * LPHI[2] / 6.0;
  const REAL side4 = (1.0 - xi) * LPHI[3] / 6.0;
  const VECTOR<4, REAL> GX{{g11 * side1, g12 * side2, g11 * side3, g12 * side4}};
  const VECTOR<4, REAL> GY{{g21 * side1, g22 * side2, g21 * side3, g22 * side4}};
  return thick_shears<OVER>(GX, GY, A_DELTA);
}

}  // namespace

void B_SHEAR_QUAD(const PLATEELEM_RECORD& EL, double xi, double eta, double g11, double g12, double g21, double g22,
                  MATRIX<2, 12>& B) {
  const PLATEELEM_RECORD& P = EL;
  set_rows(shear_rows(xi, eta, g11, g12, g21, g22, P.SIDE_LPHI.data(), P.A_DELTA.data()), B);
}

SHEAR_ROWS<12> quad_shear_rows(const QUADRILATERAL_SIDES& QUAD_SIDES, const QUAD_POINT& J, double xi, double eta) {
  return shear_rows(xi, eta, J.G11, J.G12, J.G21, J.G22, QUAD_SIDES.LPHI.data(), QUAD_SIDES.A_DELTA.data());
}

void B_SHEAR_QUAD_ISO(const QUADRILATERAL_SIDES& QUAD_SIDES, const QUAD_POINT& J, double xi, double eta,
                      MATRIX<2, 12>& B) {
  set_rows(quad_shear_rows(QUAD_SIDES, J, xi, eta), B);
}

template <class OVER>
SHEAR_ROWS<12, LANES> quad_shear_pair(const QUAD_SIDE_VALUES& sides, const POINT_PAIR& p) {
  return shear_rows<OVER>(p.xi, p.eta, p.g11, p.g12, p.g21, p.g22, sides.LPHI, sides.A_DELTA);
}

template SHEAR_ROWS<12, LANES> quad_shear_pair<ALL_SIDES>(const QUAD_SIDE_VALUES& sides, const POINT_PAIR& p);
template SHEAR_ROWS<12, LANES> quad_shear_pair<MEETING_SIDES>(const QUAD_SIDE_VALUES& sides, const POINT_PAIR& p);
