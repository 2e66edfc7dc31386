// loads.h: nodal loads of body forces and surface loads on a triangle, whatever its theory.
#ifndef FINITES_TRI_LOADS_H
#define FINITES_TRI_LOADS_H

#include "finites/records.h"
#include "shells/common/elem_loads.h"
#include "shells/common/surface_points.h"
#include "shells/triangle/geometry.h"

// How a transverse load is distributed to the nodes: 1 lumps it on the translations, 3 takes the cubic functions. Every
// engine passes 3; 1 is an argument of the routines that only tests pass, as a reference for the sum of the loads.
constexpr int LUMPED_LOADS = 1;
constexpr int TRI_LOAD_MODE = 3;

// f(18) += the nodal loads of LOADS, global axes: body force and surface loads.
//
//   mode  in  TRI_LOAD_MODE or LUMPED_LOADS
//
// The general form reads LOCAL_XYZ of PLATEELEM.
void TRI_SURFACE_LOADS_ISO(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ELEM_LOADS& LOADS, int count,
                           const SURFACE_STATION* rule, double* f, int mode);
void TRI_SURFACE_LOADS_GENERAL(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ELEM_LOADS& LOADS,
                               int count, double* f, int mode);

#endif
