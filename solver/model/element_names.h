// element_names.h: the types of elements as a deck writes them.
#ifndef FINITES_SOLVER_ELEMENT_NAMES_H
#define FINITES_SOLVER_ELEMENT_NAMES_H

#include <iterator>

#include "model/model.h"

namespace solver {

// Null for a type without a name.
inline const char* type_name(element_type type) {
  constexpr const char* NAMES[] = {"S3",      "S4",      "M3D3",    "M3D4", "B31",  "B33",  "T3D2", "SPRING1",
                                   "SPRING2", "SPRINGA", "CONN3D2", "C3D4", "C3D6", "C3D8", "MASS", "ROTARYI"};
  const auto i = static_cast<std::size_t>(type);
  return i < std::size(NAMES) ? NAMES[i] : nullptr;
}

}  // namespace solver

#endif
