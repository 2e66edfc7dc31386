// elastoplastic_steps.cpp: plates that yield up to their limit load, step after step.
#include "elastoplastic/elastoplastic.h"

#include "output/csv_writer.h"
#include "output/summary.h"
#include "steps/analysis.h"
#include "steps/report.h"

namespace solver {

namespace {

// An earlier P-delta step may have left the geometric stiffness on, which plates that yield do not have.
library_model& first_order(library_model& library) {
  library.second_order(false);
  return library;
}

class elastoplastic_steps : public analysis {
 public:
  explicit elastoplastic_steps(run_context& context)
      : context_(context), plates_(context.m, first_order(context.library), context.solver) {}
  void run(const step& s) override {
    solution_ = plates_.solve(s, context_.watch, context_.path_states, context_.restart_of(s));
  }
  void write(const step& s, const places& to) override;

 private:
  run_context& context_;
  elastoplastic plates_;
  elastoplastic_solution solution_;
};

void elastoplastic_steps::write(const step& s, const places& to) {
  const model& m = context_.m;
  write_solution(context_, s, solution_.plates, solution_.results, to, solution_.factor);
  write_file(to.curve, [&](std::ostream& out) { write_curve_csv(out, m, solution_); });
  for (step_listener* each : context_.listeners) each->followed_plates(m, s, solution_);
  context_.watch.lap("write");
  print_solution(context_, s, {}, solution_.plates, solution_.results);
  if (!context_.wanted.quiet) print(elastoplastic_summary(m, s, solution_));
}

}  // namespace

std::unique_ptr<analysis> make_elastoplastic_steps(run_context& context) {
  return std::make_unique<elastoplastic_steps>(context);
}

}  // namespace solver
