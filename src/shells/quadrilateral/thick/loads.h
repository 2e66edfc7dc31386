// loads.h: equivalent nodal loads of the thick quadrilateral.
#ifndef FINITES_QUAD_THICK_LOADS_H
#define FINITES_QUAD_THICK_LOADS_H

#include "finites/records.h"
#include "shells/common/elem_loads.h"
#include "shells/quadrilateral/geometry.h"

// f(24) += the nodal loads of LOADS, global axes. Surface and body loads are those of the thin quadrilateral; a
// temperature takes the curvatures of the thick one. Where there is a temperature, the isotropic form computes its
// section and sides; the general form reads LOCAL_XYZ_QUAD of PLATEELEM and, with a temperature, its section matrices
// and sides.
void LOAD_QUAD_THICK_ISO(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ELEM_LOADS& LOADS,
                         double* f);
void LOAD_QUAD_THICK_GEN(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ELEM_LOADS& LOADS,
                         double* f);

#endif
