// stiffness.h: the stiffness of the thick quadrilateral.
#ifndef FINITES_QUAD_THICK_STIFFNESS_H
#define FINITES_QUAD_THICK_STIFFNESS_H

#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/common/elem_loads.h"
#include "shells/common/flat_parts.h"
#include "shells/quadrilateral/geometry.h"

// parts := membrane, bending and transverse shear in element axes, for MAT_BEHAV 0 and 1; the drilling part is left
// alone. The isotropic form takes ISO, the geometry and the modifiers of LOADS; the general one the section and sides
// of PLATEELEM.
//
//   split  in  1: the in-plane shear acts at the centre
void KSTIF_QUAD_THICK_ISO(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO,
                          const ELEM_LOADS& LOADS, int split, FLAT_PARTS<4>& parts);
void KSTIF_QUAD_THICK_GEN(const PLATEELEM_RECORD& EL, int split, FLAT_PARTS<4>& parts);

#endif
