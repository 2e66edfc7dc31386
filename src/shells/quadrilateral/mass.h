// mass.h: consistent mass of the four-node elements.
#ifndef FINITES_QUAD_MASS_H
#define FINITES_QUAD_MASS_H

#include "finites/records.h"
#include "shells/common/elem_loads.h"
#include "shells/common/flat_parts.h"
#include "shells/common/surface_points.h"
#include "shells/quadrilateral/geometry.h"

// parts := the element's mass in element axes, from the density LOADS(LOAD_DENSITY) and THICKNESS: the bilinear
// translations, and the rotary inertia of the discrete Kirchhoff rotations, which needs the side coefficients. The
// drilling rotations have none.
void QUAD_MASS(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ELEM_LOADS& LOADS,
               const SURFACE_STATION (&rule)[4], FLAT_PARTS<4>& parts);

#endif
