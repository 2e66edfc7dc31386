// bending.h: discrete Kirchhoff triangle.
#ifndef FINITES_TRI_BENDING_H
#define FINITES_TRI_BENDING_H

#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/constitutive.h"
#include "shells/common/isotropic_products.h"
#include "shells/common/point_pairs.h"
#include "shells/triangle/geometry.h"

// The edge coefficients P4 to T5 of Batoz, Bathe and Ho (1980), of the sides 2-3 (4), 3-1 (5) and 1-2 (6).
template <class REAL>
struct DKT_EDGES_OF {
  REAL P4, P5, P6;
  REAL Q4, Q5;
  REAL R4, R5;
  REAL T4, T5;
};
using DKT_EDGES = DKT_EDGES_OF<double>;

DKT_EDGES DKT_EDGE_COEFFICIENTS(const TRIANGLE_GEOMETRY& TRI);

// B (3, 9): curvatures kappa x, kappa y, 2 kappa xy per w, theta x, theta y of each node, at (xi, eta), with the
// inverse Jacobian of the caller.
void DKT_BMATRIX(const TRIANGLE_GEOMETRY& TRI, double xi, double eta, double g11, double g12, double g21, double g22,
                 MATRIX<3, 9>& B);

// The same with the inverse Jacobian of the triangle.
void DKT_BMATRIX_STORED(const TRIANGLE_GEOMETRY& TRI, double xi, double eta, MATRIX<3, 9>& B);

// Its rows; the edge coefficients are the same at every point.
STRAIN_ROWS<9> dkt_rows(const TRIANGLE_GEOMETRY& TRI, const DKT_EDGES& EDGES, double xi, double eta);

// K(45): packed bending stiffness. _ISO from ISO; _GENERAL with D_BENDING. The points are those of the form.
void TRI_KB_ISO(const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO, const POINT_PAIRS& points, double* K);
void TRI_KB_GENERAL(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const POINT_PAIRS& points, double* K);

#endif
