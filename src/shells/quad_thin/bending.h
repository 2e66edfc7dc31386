// bending.h: discrete Kirchhoff quadrilateral.
#ifndef FINITES_QUAD_BENDING_H
#define FINITES_QUAD_BENDING_H

#include "element_calls/gauss_int_2d.h"
#include "finites/views.hpp"
#include "shells/common/isotropic_products.h"

// NS_XI and NS_ETA of the geometry store.
void DKQ_SHAPE_DERIVS(double xi, double eta);

// B (3, 12): curvatures kappa x, kappa y, 2 kappa xy per w, theta x, theta y of each node, at (xi, eta), with the
// inverse Jacobian of the caller and the side coefficients of the geometry store.
void DKQ_BMATRIX(double xi, double eta, double g11, double g12, double g21, double g22, MATRIX<3, 12>& B);

// The same with the inverse Jacobian of the geometry store.
void DKQ_BMATRIX_STORED(double xi, double eta, MATRIX<3, 12>& B);

// The rows of the stored form.
STRAIN_ROWS<12> dkq_rows(double xi, double eta);

// The rotation functions themselves: Hx of beta x = theta y, Hy of beta y = -theta x.
void DKQ_ROTATIONS(double xi, double eta, VECTOR<12>& Hx, VECTOR<12>& Hy);

// K(78): packed bending stiffness. _ISO from ISO and the table of points; _GENERAL with D_BENDING.
void QUAD_KB_ISO(int count, const SURFACE_STATION* rule, double* K);
void QUAD_KB_GENERAL(int count, double* K);

#endif
