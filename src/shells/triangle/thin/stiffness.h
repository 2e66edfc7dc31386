// stiffness.h: assembly of the packed stiffness of the thin triangle.
#ifndef FINITES_TRI_THIN_STIFFNESS_H
#define FINITES_TRI_THIN_STIFFNESS_H

#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/common/flat_parts.h"
#include "shells/triangle/geometry.h"

// parts := the element's stiffness in element axes, for MAT_BEHAV 0 and 1.
void TRI_STIFFNESS(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO,
                   FLAT_PARTS<3>& parts);

#endif
