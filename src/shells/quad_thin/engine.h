// engine.h: SHELL_QUAD_THIN, the engine of kinds 20 (thin shell) and 22 (membrane).
#ifndef FINITES_QUAD_THIN_ENGINE_H
#define FINITES_QUAD_THIN_ENGINE_H

#include <cstdint>

#include "element_calls/elem_loads.h"
#include "finites/records.h"

// One operation on the element in PLATEELEM: four nodes, six degrees of freedom per node.
//
//   ident          in   element identifier
//   op             in   operation; 41 and 401 arrive as 4
//   xyz (3, 4)     in   node coordinates, global
//   LOADS          in   the call block
//   U(24)          in   displacements, global axes (3, 33, 5, 7)
//   F(24)          out  forces (3, 4, 10 in global axes, 33 in element axes)
//   geometric      in   1: operation 1 adds the geometric stiffness of the forces in points
//   membrane_only  in   1 for kind 22
//   U_TOTAL(24)    in   total displacements, global axes; the plastic paths read them
//   matrix         out  24 by 24, global axes (1, 2, 7, 71)
//   nodes, points  i/o  360 reals each: records out (5), stored forces in (1, 71)
//   area, volume, weight                out  operation 8
//   point_flag1, point_flag2, distance  out  operation 9
void SHELL_QUAD_THIN(PLATEELEM_RECORD& EL, std::int32_t ident, std::int32_t op, const double* xyz,
                     const ELEM_LOADS& LOADS, const double* U, double* F, int geometric, int membrane_only,
                     const double* U_TOTAL, double* matrix, double* nodes, double* points, MATRIX<3, 3>& AXES,
                     double& area, double& volume, double& weight, int& point_flag1, int& point_flag2,
                     double& distance);

#endif
