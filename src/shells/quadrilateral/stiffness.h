// stiffness.h: what is added to the packed stiffness of a quadrilateral, whatever its theory.
#ifndef FINITES_QUAD_STIFFNESS_H
#define FINITES_QUAD_STIFFNESS_H

#include "finites/views.hpp"
#include "shells/common/surface_points.h"
#include "shells/quadrilateral/geometry.h"

// K += the stiffness of an elastic foundation of coefficient k under w.
void QUAD_FOUNDATION(const QUADRILATERAL_GEOMETRY& QUAD, double k, int count, const SURFACE_STATION* rule, double* K);

// K := K in global axes: K(300) packed, or K(24, 24) full, as the plastic tangents are. The engines call
// packed_to_global and full_to_global directly; these two, named by shape as the triangle's are, serve tests only.
void QUAD_TO_GLOBAL_PACKED(const QUADRILATERAL_GEOMETRY& QUAD, double* K);
void QUAD_TO_GLOBAL_FULL(const QUADRILATERAL_GEOMETRY& QUAD, double* K);

#endif
