// point_operations.h: whether a point lies on the triangle, and the nodal loads of a force there.
#ifndef FINITES_TRI_POINT_OPERATIONS_H
#define FINITES_TRI_POINT_OPERATIONS_H

#include "shells/common/elem_loads.h"
#include "shells/triangle/geometry.h"

// Whether LOADS(LOAD_POINT) lies on the element, xyz (3, 3) being the global coordinates of the nodes.
//
//   point_flag1  out  0 inside or on a side, 1 outside by more than INSIDE_LIMIT
//   point_flag2  out  0 near the plane, 1 above it by more than OUT_OF_PLANE_LIMIT times the longest side. The distance
//                     is compared with its sign: a point below the plane is always near. NaN gives 1.
//   distance     out  from the plane, positive on the side of the normal
void TRI_POINT_LOCATION(TRIANGLE_GEOMETRY& TRI, const ELEM_LOADS& LOADS, const double* xyz, int& point_flag1,
                        int& point_flag2, double& distance);

// f(18), global axes: the nodal loads of the force LOADS(LOAD_FORCE) + LOADS(LOAD_FORCE_LOCAL) at LOADS(LOAD_POINT).
// For a point outside, the functions are extrapolated.
//
//   mode           in  TRI_LOAD_MODE, or LUMPED_LOADS: linear weights on the translations only
//   membrane_only  in  1: no moments
void TRI_POINT_LOAD(TRIANGLE_GEOMETRY& TRI, const ELEM_LOADS& LOADS, const double* xyz, int mode, int membrane_only,
                    double* f);

#endif
