// membrane.h: constant strain triangle and drilling term.
#ifndef FINITES_TRI_MEMBRANE_H
#define FINITES_TRI_MEMBRANE_H

#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/constitutive.h"
#include "shells/common/isotropic_products.h"
#include "shells/common/point_pairs.h"
#include "shells/triangle/geometry.h"

// B (3, 6): strains ex, ey, gxy per u1, v1, u2, v2, u3, v3, with the inverse Jacobian of the caller.
void TRI_B_MEMBRANE(double g11, double g12, double g21, double g22, MATRIX<3, 6>& B);

// The same with the inverse Jacobian of the triangle.
void TRI_B_MEMBRANE_STORED(const TRIANGLE_GEOMETRY& TRI, MATRIX<3, 6>& B);

// Its rows.
STRAIN_ROWS<6> tri_membrane_rows(const TRIANGLE_GEOMETRY& TRI);

// K(21): packed membrane stiffness. _ISO in closed form from ISO; _GENERAL with D_MEMBRANE_NORMAL and the
// areas of the points.
void TRI_KM_ISO(const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO, double* K);
void TRI_KM_GENERAL(const PLATEELEM_RECORD& EL, const POINT_PAIRS& points, double* K);

// K(6): packed 3 by 3 stiffness of the drilling rotations. The stiffness modifiers do not enter.
void TRI_KDRILL(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, double* K);

#endif
