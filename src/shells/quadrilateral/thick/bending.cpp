// bending.cpp: curvatures of the discrete Kirchhoff-Mindlin quadrilateral, after Katili (1993): bilinear rotations and
// a quadratic increment along each side.
//
//     beta = sum_i N_i beta_i + sum_k P_k (C_k, S_k) dB_k
//
//     N_i      = (1 + xi_i xi)(1 + eta_i eta) / 4
//     P_1, P_3 = (1 - xi^2)(1 - eta) / 2, (1 - xi^2)(1 + eta) / 2
//     P_2, P_4 = (1 + xi)(1 - eta^2) / 2, (1 - xi)(1 - eta^2) / 2
//
// The curvatures (chi x, chi y, chi xy) = B (w, theta x, theta y of each node) are built in
// shells/common/side_fields.h; theta x = -beta y, theta y = beta x.
//
// Mirror: shells/triangle/thick/bending.cpp.
#include "shells/quadrilateral/thick/bending.h"

#include "finites/records.h"
#include "shells/common/side_fields.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/quadrilateral/thick/side_constants.h"

namespace {

// p_xi, p_eta: the derivatives of P_1 to P_4.
template <class OVER = ALL_SIDES, class REAL>
STRAIN_ROWS<12, REAL> curvatures_at(REAL xi, REAL eta, REAL g11, REAL g12, REAL g21, REAL g22, const double* C,
                                    const double* S, const double* A_DELTA) {
  const REAL p_xi[4] = {-xi * (1.0 - eta), (1.0 - eta * eta) / 2.0, -xi * (eta + 1.0), (eta * eta - 1.0) / 2.0};
  const REAL p_eta[4] = {(xi * xi - 1.0) / 2.0, -eta * (xi + 1.0), (1.0 - xi * xi) / 2.0, -eta * (1.0 - xi)};
  const SLOPES<4, REAL> n = bilinear_slopes(xi, eta, g11, g12, g21, g22);
  const SLOPES<4, REAL> p = slopes_of(p_xi, p_eta, g11, g12, g21, g22);
  return thick_curvatures<OVER>(n, p, C, S, A_DELTA);
}

}  // namespace

void B_BEND_QUAD(const PLATEELEM_RECORD& EL, double xi, double eta, double g11, double g12, double g21, double g22,
                 MATRIX<3, 12>& B) {
  const PLATEELEM_RECORD& P = EL;
  set_rows(curvatures_at(xi, eta, g11, g12, g21, g22, P.SIDE_C.data(), P.SIDE_S.data(), P.A_DELTA.data()), B);
}

STRAIN_ROWS<12> quad_curvature_rows(const QUADRILATERAL_SIDES& QUAD_SIDES, const QUAD_POINT& J, double xi, double eta) {
  return curvatures_at(xi, eta, J.G11, J.G12, J.G21, J.G22, QUAD_SIDES.C.data(), QUAD_SIDES.S.data(),
                       QUAD_SIDES.A_DELTA.data());
}

void B_BEND_QUAD_ISO(const QUADRILATERAL_SIDES& QUAD_SIDES, const QUAD_POINT& J, double xi, double eta,
                     MATRIX<3, 12>& B) {
  set_rows(quad_curvature_rows(QUAD_SIDES, J, xi, eta), B);
}

template <class OVER>
STRAIN_ROWS<12, LANES> quad_curvature_pair(const QUAD_SIDE_VALUES& sides, const POINT_PAIR& p) {
  return curvatures_at<OVER>(p.xi, p.eta, p.g11, p.g12, p.g21, p.g22, sides.C, sides.S, sides.A_DELTA);
}

template STRAIN_ROWS<12, LANES> quad_curvature_pair<ALL_SIDES>(const QUAD_SIDE_VALUES& sides, const POINT_PAIR& p);
template STRAIN_ROWS<12, LANES> quad_curvature_pair<MEETING_SIDES>(const QUAD_SIDE_VALUES& sides, const POINT_PAIR& p);
