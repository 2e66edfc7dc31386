// step_kinds.h: the kind of a step as text, in files for other programs.
#ifndef FINITES_SOLVER_STEP_KINDS_H
#define FINITES_SOLVER_STEP_KINDS_H

#include "model/model.h"

namespace solver {

// "static", "P-delta", "perturbation" (a static step about a base state), "frequency", "buckle", "pushover" or
// "elastoplastic".
inline const char* kind_name(const step& s) {
  switch (s.kind) {
    case step_kind::FREQUENCY: return "frequency";
    case step_kind::BUCKLE: return "buckle";
    case step_kind::PUSHOVER: return "pushover";
    case step_kind::ELASTOPLASTIC: return "elastoplastic";
    case step_kind::STATIC: break;
  }
  if (s.perturbation) return "perturbation";
  return s.p_delta ? "P-delta" : "static";
}

}  // namespace solver

#endif
