// hinge_stiffness.h: the change of a beam's stiffness by the plastic hinges at its ends.
#ifndef FINITES_HINGE_STIFFNESS_H
#define FINITES_HINGE_STIFFNESS_H

#include <cstdint>

// KP (12, 12): the change of K by the active hinges: K + KP has no stiffness along their flow directions.
void KSTIFB_PLAST(const std::int32_t* ELNO, const double* A, const std::int32_t* NDIM, const std::int32_t* IELEM,
                  double* K, double* KP);

#endif
