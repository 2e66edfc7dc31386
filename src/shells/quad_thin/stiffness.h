// stiffness.h: the packed stiffness of the thin quadrilateral.
#ifndef FINITES_QUAD_STIFFNESS_H
#define FINITES_QUAD_STIFFNESS_H

#include "element_calls/gauss_int_2d.h"
#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/quad_thin/geometry.h"

// K(300) := membrane and bending in element axes, for MAT_BEHAV 0 and 1. The isotropic form takes the section from ISO
// and the geometry from QUAD, the general one both from PLATEELEM, with the side coefficients of QUAD.
//
//   split  in  1: the in-plane shear acts at the centre
void QUAD_STIFFNESS_ISO(const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO, int split, int count,
                        const SURFACE_STATION* rule, double* K);
void QUAD_STIFFNESS_GENERAL(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, int split, int count,
                            double* K);

// K(300) := the packed parts at their places: membrane Kmem(36), plate Kb(78).
void QUAD_ASSEMBLE_PACKED(const double* Kmem, const double* Kb, double* K);

// K += the stiffness of an elastic foundation of coefficient k under w.
void QUAD_FOUNDATION(const QUADRILATERAL_GEOMETRY& QUAD, double k, int count, const SURFACE_STATION* rule, double* K);

// K := the same in global axes: K(300) packed, or K(24, 24) full, as the plastic tangents are.
void QUAD_TO_GLOBAL_PACKED(const QUADRILATERAL_GEOMETRY& QUAD, double* K);
void QUAD_TO_GLOBAL_FULL(const QUADRILATERAL_GEOMETRY& QUAD, double* K);

#endif
