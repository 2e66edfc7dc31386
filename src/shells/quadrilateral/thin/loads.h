// loads.h: equivalent nodal loads of the thin quadrilateral.
#ifndef FINITES_QUAD_THIN_LOADS_H
#define FINITES_QUAD_THIN_LOADS_H

#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/constitutive.h"
#include "shells/common/elem_loads.h"
#include "shells/common/surface_points.h"
#include "shells/quadrilateral/geometry.h"

// f(24) += the nodal loads of LOADS, global axes: body force, surface loads, temperature.
//
//   local          in  local coordinates: a temperature needs the side coefficients, which are computed for it
//   membrane_only  in  1: the rotations are cleared at the end
//
// Where there is a temperature, the isotropic form computes its section; the general form reads LOCAL_XYZ_QUAD of
// PLATEELEM and, with a temperature, its section matrices.
void QUAD_LOADS_ISO(const PLATEELEM_RECORD& EL, QUADRILATERAL_GEOMETRY& QUAD, const ELEM_LOADS& LOADS,
                    const MATRIX<3, 4>& local, int count, const SURFACE_STATION* rule, double* f, int membrane_only);
void QUAD_LOADS_GENERAL(const PLATEELEM_RECORD& EL, QUADRILATERAL_GEOMETRY& QUAD, const ELEM_LOADS& LOADS,
                        const MATRIX<3, 4>& local, int count, double* f, int membrane_only);

// f(24) += the nodal loads, global axes, of the free thermal strains.
//
//   tm, tb  in  free thermal strain of the mid surface, and its difference through the thickness
void QUAD_THERMAL_ISO(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO,
                      double tm, double tb, int count, const SURFACE_STATION* rule, double* f);
void QUAD_THERMAL_GENERAL(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, int count, double* f);

#endif
