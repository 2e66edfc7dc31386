// behaviour.h: which material behaviour the element of the current call has.
#ifndef FINITES_BEHAVIOUR_H
#define FINITES_BEHAVIOUR_H

#include "operations.h"
#include "shared_records.h"

// Closed forms with four numbers a section matrix.
inline bool isotropic() { return PLATEELEM.MAT_BEHAV == BEHAV_ISOTROPIC; }

// Isotropic or general. Stiffness, forces and results of the layered behaviour have no kernels yet: zero stiffness,
// forces and records that stay cleared. The other operations treat the plastic behaviours as general.
inline bool elastic() { return PLATEELEM.MAT_BEHAV == BEHAV_ISOTROPIC || PLATEELEM.MAT_BEHAV == BEHAV_GENERAL; }

// Whole-section plasticity.
inline bool section_plastic() { return PLATEELEM.MAT_BEHAV == BEHAV_SECTION_PLASTIC; }

#endif
