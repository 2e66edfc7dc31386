// engines.h: the four engines of the plates. Each performs one operation on one element.
#ifndef FINITES_ENGINES_H
#define FINITES_ENGINES_H

#include <cstdint>

#include "finites/records.h"
#include "finites/views.hpp"
#include "plate_material/state_in_use.h"
#include "shells/common/elem_loads.h"

// One operation on the element in EL, of n = 6 degrees of freedom per node: 18 on a triangle, 24 on a quadrilateral.
//
//   EL             i/o  section and material; the general section adds its matrices and the frame
//   ident          in   element identifier; not read, it served the choice of the material before the engine
//   op             in   operation; 41 and 401 arrive as 4
//   xyz (3, nodes) in   node coordinates, global
//   LOADS          in   the call block
//   U(n)           in   displacements, global axes (3, 33, 5, 7)
//   F(24)          out  forces (3, 4, 10 in global axes, 33 in element axes); 4 and 10 write the first n
//   geometric      in   1: operation 1 adds the geometric stiffness of the forces in points
//   membrane_only  in   1 for a membrane (kinds 12 and 22); the thick engines have no such kind
//   U_TOTAL(n)     in   total displacements, global axes; not read
//   matrix (n, n)  out  global axes (1, 2, 7, 71); its columns are `leading` apart, n or 24
//   nodes, points  i/o  360 reals each: records out (5), stored forces in (1, 71); 7 clears the points of a triangle
//   AXES           out  row a: the local axis a
//   area, volume, weight                out  operation 8
//   point_flag1, point_flag2, distance  out  operation 9
//   state          i/o  of a plate that may yield (1, 3, 33, 5)
//
// Degenerate geometry gives infinite values or NaN, which reach the results. An unknown operation sets AXES to zero and
// does nothing else.

// Kinds 10 (thin shell) and 12 (membrane).
void SHELL_TRI_THIN(PLATEELEM_RECORD& EL, std::int32_t ident, std::int32_t op, const double* xyz,
                    const ELEM_LOADS& LOADS, const double* U, double* F, int geometric, int membrane_only,
                    const double* U_TOTAL, double* matrix, double* nodes, double* points, MATRIX<3, 3>& AXES,
                    double& area, double& volume, double& weight, int& point_flag1, int& point_flag2, double& distance,
                    const PLATE_STATE_IN_USE& state, int leading);

// Kind 11.
void SHELL_TRI_THICK(PLATEELEM_RECORD& EL, std::int32_t ident, std::int32_t op, const double* xyz,
                     const ELEM_LOADS& LOADS, const double* U, double* F, int geometric, const double* U_TOTAL,
                     double* matrix, double* nodes, double* points, MATRIX<3, 3>& AXES, double& area, double& volume,
                     double& weight, int& point_flag1, int& point_flag2, double& distance,
                     const PLATE_STATE_IN_USE& state, int leading);

// Kinds 20 (thin shell) and 22 (membrane).
void SHELL_QUAD_THIN(PLATEELEM_RECORD& EL, std::int32_t ident, std::int32_t op, const double* xyz,
                     const ELEM_LOADS& LOADS, const double* U, double* F, int geometric, int membrane_only,
                     const double* U_TOTAL, double* matrix, double* nodes, double* points, MATRIX<3, 3>& AXES,
                     double& area, double& volume, double& weight, int& point_flag1, int& point_flag2, double& distance,
                     const PLATE_STATE_IN_USE& state, int leading);

// Kind 21.
void SHELL_QUAD_THICK(PLATEELEM_RECORD& EL, std::int32_t ident, std::int32_t op, const double* xyz,
                      const ELEM_LOADS& LOADS, const double* U, double* F, int geometric, const double* U_TOTAL,
                      double* matrix, double* nodes, double* points, MATRIX<3, 3>& AXES, double& area, double& volume,
                      double& weight, int& point_flag1, int& point_flag2, double& distance,
                      const PLATE_STATE_IN_USE& state, int leading);

#endif
