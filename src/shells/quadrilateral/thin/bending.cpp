// bending.cpp: discrete Kirchhoff quadrilateral (bending_formulas.h).
//
// Mirror: shells/triangle/thin/bending.cpp.
#include "shells/quadrilateral/thin/bending.h"

#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/common/isotropic_products.h"
#include "shells/common/point_pairs.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/quadrilateral/thin/bending_formulas.h"

DKQ_DERIVATIVES DKQ_SHAPE_DERIVS(double xi, double eta) { return dkq_shape_derivatives(xi, eta); }

void DKQ_BMATRIX(const QUADRILATERAL_GEOMETRY& QUAD, double xi, double eta, double g11, double g12, double g21,
                 double g22, MATRIX<3, 12>& B) {
  set_rows(dkq_curvatures_at(QUAD, xi, eta, g11, g12, g21, g22), B);
}

void DKQ_BMATRIX_STORED(const QUADRILATERAL_GEOMETRY& QUAD, const QUAD_POINT& J, double xi, double eta,
                        MATRIX<3, 12>& B) {
  DKQ_BMATRIX(QUAD, xi, eta, J.G11, J.G12, J.G21, J.G22, B);
}

STRAIN_ROWS<12> dkq_rows(const QUADRILATERAL_GEOMETRY& QUAD, const QUAD_POINT& J, double xi, double eta) {
  return dkq_curvatures_at(QUAD, xi, eta, J.G11, J.G12, J.G21, J.G22);
}

void QUAD_KB_ISO(const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO, const POINT_PAIRS& points,
                 double* K) {
  dkq_stiffness(QUAD, bending_terms(ISO), points, K);
}

void QUAD_KB_GENERAL(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const POINT_PAIRS& points,
                     double* K) {
  dkq_stiffness(QUAD, EL.D_BENDING, points, K);
}
