// driven.h: whether anything drives a step.
#ifndef FINITES_SOLVER_DRIVEN_H
#define FINITES_SOLVER_DRIVEN_H

#include <algorithm>

#include "model/model.h"

namespace solver {

// A load, a temperature or a prescribed displacement other than 0, or a pretension. Cables hang under their own terms.
inline bool is_driven(const model& m, const step& s) {
  const auto moves = [](const boundary_condition& c) { return c.value != 0; };
  const auto shifts = [](const linear_constraint& c) { return c.value != 0; };
  const auto heats = [](const nodal_temperature& t) { return t.change != 0 || t.gradient != 0; };
  return std::any_of(s.nodal_loads.begin(), s.nodal_loads.end(), [](const nodal_load& l) { return l.value != 0; }) ||
         std::any_of(s.element_loads.begin(), s.element_loads.end(),
                     [](const element_load& l) { return l.magnitude != 0; }) ||
         std::any_of(s.temperatures.begin(), s.temperatures.end(), heats) ||
         std::any_of(s.boundaries.begin(), s.boundaries.end(), moves) ||
         std::any_of(m.boundaries.begin(), m.boundaries.end(), moves) ||
         std::any_of(s.constraints.begin(), s.constraints.end(), shifts) ||
         std::any_of(m.constraints.begin(), m.constraints.end(), shifts) ||
         std::any_of(m.frame_sections.begin(), m.frame_sections.end(),
                     [](const frame_section& f) { return f.pretension != 0 || f.kind == frame_section_kind::CABLE; });
}

}  // namespace solver

#endif
