// bending.h: discrete Kirchhoff quadrilateral.
#ifndef FINITES_QUAD_BENDING_H
#define FINITES_QUAD_BENDING_H

#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/constitutive.h"
#include "shells/common/isotropic_products.h"
#include "shells/common/point_pairs.h"
#include "shells/quadrilateral/geometry.h"

// Derivatives of the eight serendipity functions at a point.
template <class REAL>
struct DKQ_DERIVATIVES_OF {
  VECTOR<8, REAL> XI, ETA;
};
using DKQ_DERIVATIVES = DKQ_DERIVATIVES_OF<double>;
// The library calls the template (bending_formulas.h); tests call this name.
DKQ_DERIVATIVES DKQ_SHAPE_DERIVS(double xi, double eta);

// B (3, 12): curvatures kappa x, kappa y, 2 kappa xy per w, theta x, theta y of each node, at (xi, eta), with the
// inverse Jacobian of the caller and the side coefficients of the element.
void DKQ_BMATRIX(const QUADRILATERAL_GEOMETRY& QUAD, double xi, double eta, double g11, double g12, double g21,
                 double g22, MATRIX<3, 12>& B);

// The same with the Jacobian of the closed form.
void DKQ_BMATRIX_STORED(const QUADRILATERAL_GEOMETRY& QUAD, const QUAD_POINT& J, double xi, double eta,
                        MATRIX<3, 12>& B);

// Its rows.
STRAIN_ROWS<12> dkq_rows(const QUADRILATERAL_GEOMETRY& QUAD, const QUAD_POINT& J, double xi, double eta);

// K(78): packed bending stiffness. _ISO from ISO; _GENERAL with D_BENDING. The points are those of the form.
void QUAD_KB_ISO(const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO, const POINT_PAIRS& points,
                 double* K);
void QUAD_KB_GENERAL(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const POINT_PAIRS& points,
                     double* K);

#endif
