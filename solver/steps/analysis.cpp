// analysis.cpp: the kinds of steps.
#include "steps/analysis.h"

#include <algorithm>
#include <array>

#include "model/base_step.h"

namespace solver {

namespace {

struct kind_of_steps {
  step_kind kind;
  std::unique_ptr<analysis> (*make)(run_context&);
};

constexpr std::array<kind_of_steps, 7> KINDS = {{
    {step_kind::STATIC, make_static_steps},
    {step_kind::FREQUENCY, make_modal_steps},
    {step_kind::BUCKLE, make_modal_steps},
    {step_kind::PUSHOVER, make_pushover_steps},
    {step_kind::ELASTOPLASTIC, make_elastoplastic_steps},
    {step_kind::COMBINATION, make_combination_steps},
    {step_kind::ENVELOPE, make_envelope_steps},
}};

}  // namespace

std::unique_ptr<analysis> make_analysis(step_kind kind, run_context& context) {
  return std::find_if(KINDS.begin(), KINDS.end(), [&](const kind_of_steps& k) { return k.kind == kind; })
      ->make(context);
}

base_state run_context::base_of(const step& s) const {
  const step* const after = base_step(m, s);
  return after == nullptr ? base_state{} : base_state{after, &last.solution, last.yielded};
}

path_restart* run_context::restart_of(const step& s) const {
  return restart == nullptr ? nullptr : restart->of_step(number_of(m, s));
}

}  // namespace solver
