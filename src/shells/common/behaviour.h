// behaviour.h: which material behaviour the element of the current call has.
#ifndef FINITES_BEHAVIOUR_H
#define FINITES_BEHAVIOUR_H

#include "operations.h"
#include "shared_records.h"

// Closed forms with four numbers a section matrix.
inline bool isotropic() { return PLATEELEM.MAT_BEHAV == BEHAV_ISOTROPIC; }

// Isotropic or general. Stiffness, forces and results have no kernels for the plastic behaviours yet: their stiffness is
// zero, their forces and records stay cleared. The other operations treat them as general.
inline bool elastic() { return PLATEELEM.MAT_BEHAV == BEHAV_ISOTROPIC || PLATEELEM.MAT_BEHAV == BEHAV_GENERAL; }

#endif
