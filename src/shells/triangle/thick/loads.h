// loads.h: equivalent nodal loads of the thick triangle.
#ifndef FINITES_TRI_THICK_LOADS_H
#define FINITES_TRI_THICK_LOADS_H

#include "finites/records.h"
#include "shells/common/elem_loads.h"
#include "shells/triangle/geometry.h"

// f(18) += the nodal loads of LOADS, global axes. Surface and body loads are those of the thin triangle; a temperature
// takes the curvatures of the thick one. Where there is a temperature, the isotropic form computes its section and
// sides; the general form reads LOCAL_XYZ of PLATEELEM and, with a temperature, its section matrices and sides.
void LOAD_TRI_THICK_ISO(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ELEM_LOADS& LOADS, double* f);
void LOAD_TRI_THICK_GEN(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ELEM_LOADS& LOADS, double* f);

#endif
