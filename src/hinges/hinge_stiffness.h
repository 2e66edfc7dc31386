// hinge_stiffness.h: the change of a beam's stiffness by the plastic hinges at its ends.
#ifndef FINITES_HINGE_STIFFNESS_H
#define FINITES_HINGE_STIFFNESS_H

#include <cstdint>

// KP (12, 12): what K + KP lacks of K along the flow directions of the active hinges.
void KSTIFB_PLAST(const std::int32_t* ELNO, const double* A, const std::int32_t* NDIM, const std::int32_t* IELEM,
                  double* K, double* KP);

#endif
