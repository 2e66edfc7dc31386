// layered_axes.h: stresses and strains of a thickness point between element axes (xx, yy, xy, xz, yz) and global axes
// (xx, yy, zz, xy, xz, yz), with AXES of PLATEELEM.
#ifndef FINITES_LAYERED_AXES_H
#define FINITES_LAYERED_AXES_H

#include "finites/records.h"
#include "finites/views.hpp"

// The symmetric tensor takes the shears of the vector as they are, also engineering shear strains. VEC5 puts zero for
// the local zz (a plane stress), EP5 the negative sum of xx and yy (plastic strain without change of volume).
void VEC6_TO_LOCAL5(const PLATEELEM_RECORD& EL, const VECTOR<6>& in, VECTOR<5>& out);
void VEC5_TO_GLOBAL6(const PLATEELEM_RECORD& EL, const VECTOR<5>& in, VECTOR<6>& out);
void EP5_TO_GLOBAL6(const PLATEELEM_RECORD& EL, const VECTOR<5>& in, VECTOR<6>& out);

#endif
