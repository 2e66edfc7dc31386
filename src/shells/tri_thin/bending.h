// bending.h: discrete Kirchhoff triangle.
#ifndef FINITES_TRI_BENDING_H
#define FINITES_TRI_BENDING_H

#include "element_calls/gauss_int_2d.h"
#include "finites/views.hpp"
#include "shells/common/isotropic_products.h"

// The nine edge coefficients DKT_P4 to DKT_T5 of the geometry store, from its side differences.
void DKT_EDGE_COEFFICIENTS();

// B (3, 9): curvatures kappa x, kappa y, 2 kappa xy per w, theta x, theta y of each node, at (xi, eta), with the
// inverse Jacobian of the caller. Both forms compute the edge coefficients first.
void DKT_BMATRIX(double xi, double eta, double g11, double g12, double g21, double g22, MATRIX<3, 9>& B);

// The same with the inverse Jacobian of the geometry store.
void DKT_BMATRIX_STORED(double xi, double eta, MATRIX<3, 9>& B);

// The rows of the stored form, from the edge coefficients as they stand.
STRAIN_ROWS<9> dkt_rows(double xi, double eta);

// K(45): packed bending stiffness. _ISO from ISO and the table of points; _GENERAL with D_BENDING.
void TRI_KB_ISO(int count, const SURFACE_STATION* rule, double* K);
void TRI_KB_GENERAL(int count, double* K);

#endif
