// behaviour.h: which material behaviour the element of the current call has.
#ifndef FINITES_BEHAVIOUR_H
#define FINITES_BEHAVIOUR_H

#include "finites/fields.h"
#include "finites/records.h"

// Closed forms with four numbers a section matrix.
inline bool isotropic(const PLATEELEM_RECORD& EL) { return EL.MAT_BEHAV == BEHAV_ISOTROPIC; }

// Isotropic or general. The plastic behaviours have stiffness, forces and results of their own; the other operations
// treat them as general.
inline bool elastic(const PLATEELEM_RECORD& EL) {
  return EL.MAT_BEHAV == BEHAV_ISOTROPIC || EL.MAT_BEHAV == BEHAV_GENERAL;
}

// Whole-section plasticity.
inline bool section_plastic(const PLATEELEM_RECORD& EL) { return EL.MAT_BEHAV == BEHAV_SECTION_PLASTIC; }

#endif
