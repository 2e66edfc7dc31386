// behaviour.h: which material behaviour the element of the current call has.
#ifndef FINITES_BEHAVIOUR_H
#define FINITES_BEHAVIOUR_H

#include "finites/fields.h"
#include "finites/records.h"

// Closed forms with four numbers per section matrix (isotropic_products.h).
inline bool isotropic(const PLATEELEM_RECORD& EL) { return EL.MAT_BEHAV == BEHAV_ISOTROPIC; }

// Isotropic or general. The plastic behaviours have their own stiffness, forces and results; all other operations treat
// them as general.
inline bool elastic(const PLATEELEM_RECORD& EL) {
  return EL.MAT_BEHAV == BEHAV_ISOTROPIC || EL.MAT_BEHAV == BEHAV_GENERAL;
}

// Whole-section plasticity.
inline bool section_plastic(const PLATEELEM_RECORD& EL) { return EL.MAT_BEHAV == BEHAV_SECTION_PLASTIC; }

#endif
