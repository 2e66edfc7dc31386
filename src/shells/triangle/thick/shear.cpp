// shear.cpp: transverse shears of the discrete Kirchhoff-Mindlin triangle (Katili, 1993): a linear field whose value at
// each corner comes from the tangential shears of the two sides that meet there.
//
//     g_k = -(2/3) phi_k dB_k                             along side k
//
//     corner 1: gxz = (g_1 S3 - g_3 S1) / D1,    gyz = (C1 g_3 - C3 g_1) / D1,    D1 = C1 S3 - C3 S1
//     corner 2: gxz = (g_2 S1 - g_1 S2) / D2,    gyz = (C2 g_1 - C1 g_2) / D2,    D2 = C2 S1 - C1 S2
//     corner 3: gxz = (g_3 S2 - g_2 S3) / D3,    gyz = (C3 g_2 - C2 g_3) / D3,    D3 = C3 S2 - C2 S3
//
// interpolated by lambda = 1 - xi - eta, xi and eta. GX and GY are the coefficients of dB_1, dB_2, dB_3.
//
// Mirror: shells/quadrilateral/thick/shear.cpp.
#include "shells/triangle/thick/shear.h"

#include "finites/records.h"
#include "shells/common/side_fields.h"
#include "shells/triangle/thick/side_constants.h"

namespace {

template <class OVER = ALL_SIDES, class REAL>
SHEAR_ROWS<9, REAL> shear_rows(REAL xi, REAL eta, const double* C, const double* S, const double* D, const double* phi,
                               const double* A_DELTA) {
  const REAL lambda = 1.0 - xi - eta;
  const double C1 = C[0], C2 = C[1], C3 = C[2];
  const double S1 = S[0], S2 = S[1], S3 = S[2];
  const double D1 = D[0], D2 = D[1], D3 = D[2];
  const VECTOR<3, REAL> GX{{phi[0] * (S2 / D2 * xi - S3 / D1 * lambda) / 1.5,
                            phi[1] * (S3 / D3 * eta - S1 / D2 * xi) / 1.5,
                            phi[2] * (S1 / D1 * lambda - S2 / D3 * eta) / 1.5}};
  const VECTOR<3, REAL> GY{{phi[0] * (C3 / D1 * lambda - C2 / D2 * xi) / 1.5,
                            phi[1] * (C1 / D2 * xi - C3 / D3 * eta) / 1.5,
                            phi[2] * (C2 / D3 * eta - C1 / D1 * lambda) / 1.5}};
  return thick_shears<OVER>(GX, GY, A_DELTA);
}

}  // namespace

void B_SHEAR_TRI(const PLATEELEM_RECORD& EL, double xi, double eta, MATRIX<2, 9>& B) {
  const PLATEELEM_RECORD& P = EL;
  set_rows(
      shear_rows(xi, eta, P.SIDE_C.data(), P.SIDE_S.data(), P.SIDE_DET.data(), P.SIDE_PHI.data(), P.A_DELTA.data()), B);
}

SHEAR_ROWS<9> tri_shear_rows(const TRIANGLE_SIDES& TRI_SIDES, double xi, double eta) {
  const TRIANGLE_SIDES& T = TRI_SIDES;
  return shear_rows(xi, eta, T.C.data(), T.S.data(), T.D.data(), T.PHI.data(), T.A_DELTA.data());
}

void B_SHEAR_TRI_ISO(const TRIANGLE_SIDES& TRI_SIDES, double xi, double eta, MATRIX<2, 9>& B) {
  set_rows(tri_shear_rows(TRI_SIDES, xi, eta), B);
}

template <class OVER>
SHEAR_ROWS<9, LANES> tri_shear_pair(const TRI_SIDE_VALUES& T, const POINT_PAIR& p) {
  return shear_rows<OVER>(p.xi, p.eta, T.C, T.S, T.D, T.PHI, T.A_DELTA);
}

template SHEAR_ROWS<9, LANES> tri_shear_pair<ALL_SIDES>(const TRI_SIDE_VALUES& T, const POINT_PAIR& p);
template SHEAR_ROWS<9, LANES> tri_shear_pair<MEETING_SIDES>(const TRI_SIDE_VALUES& T, const POINT_PAIR& p);
