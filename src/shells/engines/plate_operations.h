// plate_operations.h: the operations on a filled plate: rigid offsets before and after its engine. FINITES and the
// plain calls stand on it.
#ifndef FINITES_PLATE_OPERATIONS_H
#define FINITES_PLATE_OPERATIONS_H

#include "finites/views.hpp"
#include "shells/engines/filled_plate.h"

// Displacements u and forces f below are those of the nodes, in global axes, node by node: 6 nodes values. Forces of
// the engine beyond them, on a triangle, stay 0.

// The matrix of operation 1, 2, 7 or 71.
//
//   u          in   operation 7; elsewhere it may be null
//   points     i/o  360 reals: the forces of operation 71, and of operation 1 with geometric 1; scratch otherwise
//   leading    in   leading dimension of the matrix: 24 or 6 nodes. Entries beyond 6 nodes are left alone
void matrix_of_plate(const FILLED_PLATE& plate, int geometric, const double* u, double* points, int leading,
                     double* matrix);

// F(24): the forces of operation 3, or of operation 33, which are those of the element in its axes. u_total(24) are
// the displacements from the start of the analysis, and those of the corners afterwards; null: as u.
void forces_of_plate(const FILLED_PLATE& plate, const double* u, double* u_total, double* F);

// F(24): nodal loads of operation 4 or 10.
void loads_of_plate(const FILLED_PLATE& plate, double* F);

// Operation 5: nodes, points: 360 reals each.
void results_of_plate(const FILLED_PLATE& plate, const double* u, double* nodes, double* points);

// Operation 8; weight = volume times LOADS(LOAD_DENSITY).
struct PLATE_SIZE {
  double area = 0.0, volume = 0.0, weight = 0.0;
  MATRIX<3, 3> AXES;  // row a: the element axis a
};
PLATE_SIZE size_of_plate(const FILLED_PLATE& plate);

// Operation 9: the flags of locate_point, and the distance.
struct PLATE_LOCATION {
  int point_flag1 = 0, point_flag2 = 0;
  double distance = 0.0;
};
PLATE_LOCATION location_of_plate(const FILLED_PLATE& plate);

#endif
