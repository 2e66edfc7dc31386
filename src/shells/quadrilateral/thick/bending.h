// bending.h: curvatures of the discrete Kirchhoff-Mindlin quadrilateral.
#ifndef FINITES_QUAD_THICK_BENDING_H
#define FINITES_QUAD_THICK_BENDING_H

#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/isotropic_products.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/quadrilateral/thick/side_constants.h"

// B (3, 12): curvatures chi x, chi y, chi xy per w, theta x, theta y of each node, at (xi, eta), with the inverse
// Jacobian of the caller and the sides of PLATEELEM.
void B_BEND_QUAD(const PLATEELEM_RECORD& EL, double xi, double eta, double g11, double g12, double g21, double g22,
                 MATRIX<3, 12>& B);

// The same with the Jacobian of the closed form and QUAD_SIDES.
void B_BEND_QUAD_ISO(const QUADRILATERAL_SIDES& QUAD_SIDES, const QUAD_POINT& J, double xi, double eta,
                     MATRIX<3, 12>& B);

// The rows of the isotropic form.
STRAIN_ROWS<12> quad_curvature_rows(const QUADRILATERAL_SIDES& QUAD_SIDES, const QUAD_POINT& J, double xi, double eta);

#endif
