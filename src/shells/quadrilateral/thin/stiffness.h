// stiffness.h: the packed stiffness of the thin quadrilateral.
#ifndef FINITES_QUAD_THIN_STIFFNESS_H
#define FINITES_QUAD_THIN_STIFFNESS_H

#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/common/flat_parts.h"
#include "shells/common/surface_points.h"
#include "shells/quadrilateral/geometry.h"

// parts := membrane and bending in element axes, for MAT_BEHAV 0 and 1; the drilling part is left alone. The isotropic
// form takes the section from ISO and the geometry from QUAD, the general one both from PLATEELEM, with the side
// coefficients of QUAD.
//
//   split  in  1: the in-plane shear acts at the centre
void QUAD_STIFFNESS_ISO(const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO, int split,
                        const SURFACE_STATION (&rule)[4], FLAT_PARTS<4>& parts);
void QUAD_STIFFNESS_GENERAL(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, int split,
                            FLAT_PARTS<4>& parts);

#endif
