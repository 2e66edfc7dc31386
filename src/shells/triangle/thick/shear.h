// shear.h: transverse shears of the discrete Kirchhoff-Mindlin triangle.
#ifndef FINITES_TRI_THICK_SHEAR_H
#define FINITES_TRI_THICK_SHEAR_H

#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/isotropic_products.h"
#include "shells/triangle/thick/side_constants.h"

// B (2, 9): transverse shears gxz, gyz per w, theta x, theta y of each node, at (xi, eta), from the sides of PLATEELEM.
void B_SHEAR_TRI(const PLATEELEM_RECORD& EL, double xi, double eta, MATRIX<2, 9>& B);

// The same from TRI_SIDES.
void B_SHEAR_TRI_ISO(const TRIANGLE_SIDES& TRI_SIDES, double xi, double eta, MATRIX<2, 9>& B);

// The rows of the isotropic form.
SHEAR_ROWS<9> tri_shear_rows(const TRIANGLE_SIDES& TRI_SIDES, double xi, double eta);

#endif
