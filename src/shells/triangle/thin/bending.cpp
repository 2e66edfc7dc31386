// bending.cpp: discrete Kirchhoff triangle, after Batoz, Bathe and Ho (1980).
//
// The rotations are quadratic on each side and follow the slope of w at the nodes and the mid-sides; w is defined on
// the sides only. With U = (w, theta x, theta y) of each node
//
//     beta x = Hx U,  beta y = Hy U,      theta x = dw/dy = -beta y,  theta y = -dw/dx = beta x
//
// and for corner i, side k after it, side m before it (sides 4: 2-3, 5: 3-1, 6: 1-2), with the quadratic functions N of
// six nodes and the edge coefficients P, Q, R, T of DKT_EDGE_COEFFICIENTS:
//
//     Hx(w)       = (P_k N_k - P_m N_m) / 4
//     Hx(theta x) = (Q_k N_k + Q_m N_m) / 4
//     Hx(theta y) = N_i - ((1 - R_k) N_k + (1 - R_m) N_m) / 4
//     Hy(w)       = (T_k N_k - T_m N_m) / 4
//     Hy(theta x) = -N_i - ((2 - R_k) N_k + (2 - R_m) N_m) / 4
//     Hy(theta y) = -(Q_k N_k + Q_m N_m) / 4
//
//     N_1 = s (2 s - 1)   N_2 = xi (2 xi - 1)   N_3 = eta (2 eta - 1)   N_4 = 4 xi eta   N_5 = 4 eta s   N_6 = 4 xi s
//
// with s = 1 - xi - eta. The coefficients of the paper are a = P/6, b = Q/4, c = (1 - R)/4, d = T/6, e = (R - 2)/4.
//
//     kappa x    = beta x,x              B.X  = g11 Hx,xi + g12 Hx,eta
//     kappa y    = beta y,y              B.Y  = g21 Hy,xi + g22 Hy,eta
//     2 kappa xy = beta x,y + beta y,x   B.XY = g11 Hy,xi + g12 Hy,eta + g21 Hx,xi + g22 Hx,eta
//
//     K(i, j) = sum_p  (B^T DB B)(i, j) w TWO_AREA,      1 <= i <= j <= 9
//
// In these signs w = x^2/2 has the curvatures (-1, 0, 0).
//
// Mirror: shells/quadrilateral/thin/bending.cpp.
#include "shells/triangle/thin/bending.h"

#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/common/isotropic_products.h"
#include "shells/common/point_pairs.h"
#include "shells/triangle/geometry.h"

// Of a side with the differences X, Y and r = 1 / (X^2 + Y^2):
//
//     P = 6 r X,    Q = 3 r X Y,    R = 3 r Y^2,    T = 6 r Y;      side 6 has Y = 0: Q6 = R6 = T6 = 0
DKT_EDGES DKT_EDGE_COEFFICIENTS(const TRIANGLE_GEOMETRY& TRI) {
  const double r32 = 1.0 / (TRI.X32 * TRI.X32 + TRI.Y32 * TRI.Y32);
  const double r13 = 1.0 / (TRI.X13 * TRI.X13 + TRI.Y13 * TRI.Y13);
  DKT_EDGES EDGES;
  EDGES.P4 = r32 * 6.0 * TRI.X32;
  EDGES.P5 = r13 * 6.0 * TRI.X13;
  EDGES.P6 = 1.0 / (TRI.X21 * TRI.X21) * 6.0 * TRI.X21;  // not 6 / X21: rounded as the others are
  EDGES.Q4 = r32 * 3.0 * TRI.X32 * TRI.Y32;
  EDGES.Q5 = r13 * 3.0 * TRI.X13 * TRI.Y13;
  EDGES.R4 = r32 * 3.0 * TRI.Y32 * TRI.Y32;
  EDGES.R5 = r13 * 3.0 * TRI.Y13 * TRI.Y13;
  EDGES.T4 = r32 * 6.0 * TRI.Y32;
  EDGES.T5 = r13 * 6.0 * TRI.Y13;
  return EDGES;
}

namespace {

// Derivatives of the rotation functions Hx and Hy by xi and eta.
template <class REAL>
struct rotation_derivatives {
  VECTOR<9, REAL> HX_XI, HY_XI, HX_ETA, HY_ETA;
};

template <class REAL>
inline rotation_derivatives<REAL> derive_rotations(const DKT_EDGES& EDGES, REAL xi, REAL eta) {
  const double P4 = EDGES.P4;
  const double P5 = EDGES.P5;
  const double P6 = EDGES.P6;
  const double Q4 = EDGES.Q4;
  const double Q5 = EDGES.Q5;
  const double R4 = EDGES.R4;
  const double R5 = EDGES.R5;
  const double T4 = EDGES.T4;
  const double T5 = EDGES.T5;
  const REAL a = 1.0 - 2.0 * xi;
  const REAL b = 1.0 - 2.0 * eta;
  const REAL c = R5 * b;
  // clang-format off
  return {
      // HX_XI
      {{P6 * a + eta * (P5 - P6),
        -eta * Q5,
        6.0 * (xi + eta) - 4.0 - eta * R5,
        -P6 * a + eta * (P4 + P6),
        eta * Q4,
        6.0 * xi - 2.0 + eta * R4,
        -eta * (P5 + P4),
        eta * (Q4 - Q5),
        -eta * (R5 - R4)}},
      // HY_XI
      {{eta * T5,
        1.0 - eta * R5,
        eta * Q5,
        eta * T4,
        eta * R4 - 1.0,
        -eta * Q4,
        -eta * (T5 + T4),
        -eta * (R5 - R4),
        -eta * (Q4 - Q5)}},
      // HX_ETA
      {{-P5 * b - xi * (P6 - P5),
        Q5 * b - xi * Q5,
        6.0 * (xi + eta) - 4.0 + c - xi * R5,
        xi * (P4 + P6),
        xi * Q4,
        xi * R4,
        P5 * b - xi * (P4 + P5),
        Q5 * b + xi * (Q4 - Q5),
        6.0 * eta - 2.0 + c + xi * (R4 - R5)}},
      // HY_ETA
      {{-T5 * b + xi * T5,
        c + 1.0 - xi * R5,
        -(Q5 * b - xi * Q5),
        xi * T4,
        xi * R4,
        -xi * Q4,
        T5 * b - xi * (T4 + T5),
        c - 1.0 + xi * (R4 - R5),
        -(Q5 * b + xi * (Q4 - Q5))}},
  };
  // clang-format on
}

template <class REAL>
inline STRAIN_ROWS<9, REAL> curvatures_at(const DKT_EDGES& EDGES, REAL xi, REAL eta, REAL g11, REAL g12, REAL g21,
                                          REAL g22) {
  const rotation_derivatives<REAL> H = derive_rotations(EDGES, xi, eta);
  STRAIN_ROWS<9, REAL> B;
  for (int i = 1; i <= 9; ++i) {
    B.X(i) = g11 * H.HX_XI(i) + g12 * H.HX_ETA(i);
    B.Y(i) = g21 * H.HY_XI(i) + g22 * H.HY_ETA(i);
    B.XY(i) = g11 * H.HY_XI(i) + g12 * H.HY_ETA(i) + g21 * H.HX_XI(i) + g22 * H.HX_ETA(i);
  }
  return B;
}

STRAIN_ROWS<9, LANES> curvatures_at(const DKT_EDGES& EDGES, const POINT_PAIR& p) {
  return curvatures_at(EDGES, p.xi, p.eta, p.g11, p.g12, p.g21, p.g22);
}

// The edge coefficients are the same at every point.
template <class SECTION>
void bending_stiffness(const TRIANGLE_GEOMETRY& TRI, const SECTION& D, const POINT_PAIRS& points, double* K) {
  const DKT_EDGES EDGES = DKT_EDGE_COEFFICIENTS(TRI);
  const STRAIN_ROWS<9, LANES> B1 = curvatures_at(EDGES, points.first);
  const STRAIN_ROWS<9, LANES> B2 = curvatures_at(EDGES, points.second);
  integrate_packed(points, B1, B2, D, K);
}

}  // namespace

void DKT_BMATRIX(const TRIANGLE_GEOMETRY& TRI, double xi, double eta, double g11, double g12, double g21, double g22,
                 MATRIX<3, 9>& B) {
  set_rows(curvatures_at(DKT_EDGE_COEFFICIENTS(TRI), xi, eta, g11, g12, g21, g22), B);
}

void DKT_BMATRIX_STORED(const TRIANGLE_GEOMETRY& TRI, double xi, double eta, MATRIX<3, 9>& B) {
  DKT_BMATRIX(TRI, xi, eta, TRI.G11, TRI.G12, TRI.G21, TRI.G22, B);
}

STRAIN_ROWS<9> dkt_rows(const TRIANGLE_GEOMETRY& TRI, const DKT_EDGES& EDGES, double xi, double eta) {
  return curvatures_at(EDGES, xi, eta, TRI.G11, TRI.G12, TRI.G21, TRI.G22);
}

void TRI_KB_ISO(const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO, const POINT_PAIRS& points, double* K) {
  bending_stiffness(TRI, bending_terms(ISO), points, K);
}

void TRI_KB_GENERAL(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const POINT_PAIRS& points, double* K) {
  bending_stiffness(TRI, EL.D_BENDING, points, K);
}
