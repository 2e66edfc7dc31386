// bending.cpp: discrete Kirchhoff triangle (bending_formulas.h).
//
// Mirror: shells/quadrilateral/thin/bending.cpp.
#include "shells/triangle/thin/bending.h"

#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/common/isotropic_products.h"
#include "shells/common/point_pairs.h"
#include "shells/triangle/geometry.h"
#include "shells/triangle/thin/bending_formulas.h"

DKT_EDGES DKT_EDGE_COEFFICIENTS(const TRIANGLE_GEOMETRY& TRI) { return dkt_edges(TRI); }

void DKT_BMATRIX(const TRIANGLE_GEOMETRY& TRI, double xi, double eta, double g11, double g12, double g21, double g22,
                 MATRIX<3, 9>& B) {
  set_rows(dkt_curvatures_at(DKT_EDGE_COEFFICIENTS(TRI), xi, eta, g11, g12, g21, g22), B);
}

void DKT_BMATRIX_STORED(const TRIANGLE_GEOMETRY& TRI, double xi, double eta, MATRIX<3, 9>& B) {
  DKT_BMATRIX(TRI, xi, eta, TRI.G11, TRI.G12, TRI.G21, TRI.G22, B);
}

STRAIN_ROWS<9> dkt_rows(const TRIANGLE_GEOMETRY& TRI, const DKT_EDGES& EDGES, double xi, double eta) {
  return dkt_curvatures_at(EDGES, xi, eta, TRI.G11, TRI.G12, TRI.G21, TRI.G22);
}

void TRI_KB_ISO(const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO, const POINT_PAIRS& points, double* K) {
  dkt_stiffness(TRI, bending_terms(ISO), points, K);
}

void TRI_KB_GENERAL(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const POINT_PAIRS& points, double* K) {
  dkt_stiffness(TRI, EL.D_BENDING, points, K);
}
