// base_state.cpp: the forces of a base state, stored in the library.
#include "analyses/base_state.h"

#include "analyses/static_analysis.h"
#include "model/base_step.h"
#include "model/model_error.h"

namespace solver {

void stand_on(const model& m, const step& s, library_model& library, const base_state& base) {
  library.second_order(false);
  if (!is_loaded(base)) return;
  if (base.yielded) {
    throw model_error(m, s, "*STEP",
                      "PERTURBATION: the material has yielded in step " + std::to_string(number_of(m, *base.after)) +
                          ", and small motions about a yielded state are not supported; ELASTIC on its *STATIC keeps "
                          "it elastic");
  }
  library.clear_state();
  keep_state(m, library, *base.at_end);
  library.second_order(true);
}

std::string name_of(const model& m, const base_state& base) {
  if (!is_loaded(base)) return "the unloaded state";
  return "the state at the end of step " + std::to_string(number_of(m, *base.after));
}

}  // namespace solver
