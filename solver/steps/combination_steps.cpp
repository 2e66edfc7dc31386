// combination_steps.cpp: combinations of static steps, solved by adding their answers.
#include <fmt/format.h>

#include "analyses/combination.h"
#include "analyses/results.h"
#include "model/base_step.h"
#include "steps/analysis.h"
#include "steps/report.h"

namespace solver {

namespace {

class combination_steps : public analysis {
 public:
  explicit combination_steps(run_context& context) : context_(context) {}
  void run(const step& s) override;
  void write(const step& s, const places& to) override;

 private:
  run_context& context_;
  base_state base_;
  static_solution solution_;
  step_results results_;
};

// The library stands where it stood for the steps: on the state at the end of an earlier one, or on none.
void combination_steps::run(const step& s) {
  const model& m = context_.m;
  std::vector<solution_term> terms;
  for (const combined_step& term : s.combined) {
    terms.push_back({&context_.kept->solution_of(subscript(term.step)), term.factor});
  }
  solution_ = combine(terms);
  const step* const after = base_step(m, s);
  base_ =
      after == nullptr ? base_state{} : base_state{after, &context_.kept->solution_of(number_of(m, *after) - 1), false};
  stand_on(m, s, context_.library, base_);
  context_.library.plates().choose_ties(solution_.loads);
  results_ = recover_results(m, context_.library, solution_);
  context_.watch.lap("results");
}

void combination_steps::write(const step& s, const places& to) {
  write_solution(context_, s, solution_, results_, to);
  context_.watch.lap("write");
  print_solution(context_, s, base_, solution_, results_);
  context_.kept->release(context_.m, s);
}

}  // namespace

std::unique_ptr<analysis> make_combination_steps(run_context& context) {
  return std::make_unique<combination_steps>(context);
}

}  // namespace solver
