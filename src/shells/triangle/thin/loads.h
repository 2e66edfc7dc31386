// loads.h: equivalent nodal loads of the thin triangle.
#ifndef FINITES_TRI_THIN_LOADS_H
#define FINITES_TRI_THIN_LOADS_H

#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/common/elem_loads.h"
#include "shells/common/surface_points.h"
#include "shells/triangle/geometry.h"

// f(18) += the nodal loads of LOADS, global axes: body force, surface loads, temperature.
//
//   mode           in  TRI_LOAD_MODE or LUMPED_LOADS
//   membrane_only  in  1: the rotations are cleared at the end
//
// Where there is a temperature, the isotropic form computes its section; the general form reads LOCAL_XYZ of PLATEELEM
// and, with a temperature, its section matrices.
void TRI_LOADS_ISO(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ELEM_LOADS& LOADS, int count,
                   const SURFACE_STATION* rule, double* f, int mode, int membrane_only);
void TRI_LOADS_GENERAL(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ELEM_LOADS& LOADS, int count,
                       double* f, int mode, int membrane_only);

// f(18) += the nodal loads, global axes, of the free thermal strains.
//
//   tm, tb  in  free thermal strain of the mid surface, and its difference through the thickness
void TRI_THERMAL_ISO(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO, double tm,
                     double tb, int count, const SURFACE_STATION* rule, double* f);
void TRI_THERMAL_GENERAL(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, int count, double* f);

#endif
