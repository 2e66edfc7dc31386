// yield_forces.h: the forces of a plastic hinge, normalised for the yield curves.
//
// A hinge yields under the axial force P and the moments My and Mz of its end, each divided by the capacity of the
// section in that force alone: p = P / CAP_P, my = My / CAP_MY, mz = Mz / CAP_MZ.
#ifndef FINITES_YIELD_FORCES_H
#define FINITES_YIELD_FORCES_H

#include <cstdint>

#include "finites/views.hpp"

// The active equations of an end: segment numbers, 0 in an empty place.
constexpr int SEGMENTS = 4;

// Forces, or derivatives with respect to them.
struct SECTION_FORCES {
  double P, MY, MZ;
};

// A section without capacity in any one force (zero, negative or NaN) never yields, whatever the curve.
inline bool has_capacity(double CP, double CMY, double CMZ) { return CP > 0.0 && CMY > 0.0 && CMZ > 0.0; }

inline std::int32_t positive_entries(const std::int32_t* SEG) {
  std::int32_t count = 0;
  for (int i = 0; i < SEGMENTS; ++i) count += SEG[i] > 0 ? 1 : 0;
  return count;
}

#endif
