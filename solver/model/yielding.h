// yielding.h: what yields in a model, and in which of its static steps.
#ifndef FINITES_SOLVER_YIELDING_H
#define FINITES_SOLVER_YIELDING_H

#include <algorithm>

#include "model/model.h"

namespace solver {

inline bool has_yield_stress(const model& m, const element& e) {
  const int material = material_of(m, e);
  return material >= 0 && m.materials[material].yield_stress > 0;
}

// A static step in which nothing is taken to be elastic that is not.
inline bool may_yield(const step& s) { return s.kind == step_kind::STATIC && !s.perturbation && !s.elastic; }

// A static step that follows the path of yielding shells, or of the hinges of members, to its full load.
inline bool follows_shells(const model& m, const step& s) {
  return may_yield(s) && std::any_of(m.elements.begin(), m.elements.end(),
                                     [&](const element& e) { return is_shell(e.type) && has_yield_stress(m, e); });
}
inline bool follows_hinges(const model& m, const step& s) { return may_yield(s) && !m.hinges.empty(); }

}  // namespace solver

#endif
