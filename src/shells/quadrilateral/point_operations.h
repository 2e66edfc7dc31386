// point_operations.h: whether a point lies on the quadrilateral, and the nodal loads of a force there.
#ifndef FINITES_QUAD_POINT_OPERATIONS_H
#define FINITES_QUAD_POINT_OPERATIONS_H

#include "finites/views.hpp"
#include "shells/common/elem_loads.h"
#include "shells/quadrilateral/geometry.h"

// Whether LOADS(LOAD_POINT) lies on the element, xyz (3, 4) being the global coordinates of the nodes: the flags of
// locate_point, with the distance from the plane of nodes 1, 2, 3.
void QUAD_POINT_LOCATION(QUADRILATERAL_GEOMETRY& QUAD, const ELEM_LOADS& LOADS, const double* xyz, int& point_flag1,
                         int& point_flag2, double& distance);

// Natural coordinates of the point (x, y) by Newton's method on the bilinear map.
//
//   local    in   (3, 4), of which x and y are read
//   xi, eta  i/o  start and answer. After 50 iterations the last values are kept, without a message; for a point
//                 outside, the map is extrapolated.
void QUAD_NATURAL_POINT(double x, double y, const MATRIX<3, 4>& local, double& xi, double& eta);

// f(24), global axes: the nodal loads of the force LOADS(LOAD_FORCE) + LOADS(LOAD_FORCE_LOCAL) at LOADS(LOAD_POINT).
// For a point outside, the functions are extrapolated.
//
//   membrane_only  in  1: no moments
void QUAD_POINT_LOAD(QUADRILATERAL_GEOMETRY& QUAD, const ELEM_LOADS& LOADS, const double* xyz, int membrane_only,
                     double* f);

#endif
