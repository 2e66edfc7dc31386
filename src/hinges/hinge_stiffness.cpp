// hinge_stiffness.cpp: KSTIFB_PLAST. No hinge acts yet: KP is zero, and a beam stays elastic.
#include "hinges/hinge_stiffness.h"

#include <algorithm>

void KSTIFB_PLAST(const std::int32_t* /*ELNO*/, const double* /*A*/, const std::int32_t* /*NDIM*/,
                  const std::int32_t* /*IELEM*/, double* /*K*/, double* KP) {
  std::fill_n(KP, 12 * 12, 0.0);
}
