// pushover_steps.cpp: pushovers of frames, each of which may go on where the one before has stopped.
#include "output/csv_writer.h"
#include "output/summary.h"
#include "pushover/pushover.h"
#include "steps/analysis.h"
#include "steps/report.h"

namespace solver {

namespace {

class pushover_steps : public analysis {
 public:
  explicit pushover_steps(run_context& context)
      : context_(context), frame_(context.m, context.library, context.solver) {}
  void run(const step& s) override;
  void write(const step& s, const places& to) override;

 private:
  run_context& context_;
  pushover frame_;
  pushover_solution solution_;
  step_results results_;
};

void pushover_steps::run(const step& s) {
  solution_ = frame_.solve(s, context_.watch, context_.path_states, context_.restart_of(s));
  if (solution_.span) solution_.frame.notes.push_back(span_note(context_.m, solution_));
  results_ = recover_pushover_results(context_.m, context_.library, solution_);
  context_.watch.lap("results");
}

void pushover_steps::write(const step& s, const places& to) {
  const model& m = context_.m;
  write_solution(context_, s, solution_.frame, results_, to, solution_.factor);
  write_file(to.curve, [&](std::ostream& out) { write_curve_csv(out, m, solution_); });
  write_file(to.events, [&](std::ostream& out) { write_events_csv(out, m, solution_); });
  for (step_listener* each : context_.listeners) each->followed_hinges(m, s, solution_);
  context_.watch.lap("write");
  print_solution(context_, s, {}, solution_.frame, results_);
  if (!context_.wanted.quiet) print(pushover_summary(m, s, solution_));
}

}  // namespace

std::unique_ptr<analysis> make_pushover_steps(run_context& context) {
  return std::make_unique<pushover_steps>(context);
}

}  // namespace solver
