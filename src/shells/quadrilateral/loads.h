// loads.h: nodal loads of body forces and surface loads on a quadrilateral, whatever its theory.
#ifndef FINITES_QUAD_LOADS_H
#define FINITES_QUAD_LOADS_H

#include "finites/records.h"
#include "shells/common/elem_loads.h"
#include "shells/common/surface_points.h"
#include "shells/quadrilateral/geometry.h"

// f(24) += the nodal loads of LOADS, global axes: body force and surface loads.
//
// The general form reads LOCAL_XYZ_QUAD of PLATEELEM.
void QUAD_SURFACE_LOADS_ISO(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ELEM_LOADS& LOADS,
                            int count, const SURFACE_STATION* rule, double* f);
void QUAD_SURFACE_LOADS_GENERAL(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ELEM_LOADS& LOADS,
                                int count, double* f);

#endif
