// bending.h: curvatures of the discrete Kirchhoff-Mindlin triangle.
#ifndef FINITES_TRI_THICK_BENDING_H
#define FINITES_TRI_THICK_BENDING_H

#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/isotropic_products.h"
#include "shells/common/slopes.h"
#include "shells/triangle/geometry.h"
#include "shells/triangle/thick/side_constants.h"

// B (3, 9): curvatures chi x, chi y, chi xy per w, theta x, theta y of each node, at (xi, eta), with the inverse
// Jacobian and the determinant of the caller, and the sides and local coordinates of PLATEELEM.
void B_BEND_TRI(const PLATEELEM_RECORD& EL, double xi, double eta, double g11, double g12, double g21, double g22,
                double detj, MATRIX<3, 9>& B);

// The same from the geometry and TRI_SIDES, with the side matrix of the caller.
void B_BEND_TRI_ISO(const TRIANGLE_GEOMETRY& TRI, const TRIANGLE_SIDES& TRI_SIDES, double xi, double eta,
                    const MATRIX<3, 9>& A_DELTA, MATRIX<3, 9>& B);

// The rows of the isotropic form.
STRAIN_ROWS<9> tri_curvature_rows(const TRIANGLE_GEOMETRY& TRI, const TRIANGLE_SIDES& TRI_SIDES, double xi, double eta,
                                  const MATRIX<3, 9>& A_DELTA);

// The slopes n of the linear functions: of the general form, with the determinant of the caller, and of the closed
// form.
SLOPES<3> tri_slopes_general(const PLATEELEM_RECORD& EL, double detj);
SLOPES<3> tri_slopes_iso(const TRIANGLE_GEOMETRY& TRI);

#endif
