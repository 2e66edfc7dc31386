// static_steps.cpp: static steps, also with P-delta, and those in which shells or hinges yield.
#include <optional>

#include "analyses/load_sums.h"
#include "analyses/results.h"
#include "elastoplastic/plastic_static.h"
#include "model/base_step.h"
#include "model/yielding.h"
#include "output/csv_writer.h"
#include "output/load_summary.h"
#include "output/summary.h"
#include "pushover/hinged_static.h"
#include "steps/analysis.h"
#include "steps/report.h"
#include "system/progress.h"

namespace solver {

namespace {

class static_steps : public analysis {
 public:
  explicit static_steps(run_context& context) : context_(context) {}
  void run(const step& s) override;
  void write(const step& s, const places& to) override;

 private:
  run_context& context_;
  base_state base_;
  static_solution solution_;
  step_results results_;
  std::vector<load_sum> load_sums_;
  std::optional<elastoplastic_solution> shells_;  // set where shells follow their path
  std::optional<hinged_static> frame_;            // set where hinges do
};

step_results results_of(const model& m, library_model& library, const static_solution& solution) {
  const ticking_clock clock("results");
  return recover_results(m, library, solution);
}

void static_steps::run(const step& s) {
  const model& m = context_.m;
  library_model& library = context_.library;
  stopwatch& watch = context_.watch;
  base_ = ends_in_a_state(s) ? base_state{} : context_.base_of(s);
  load_sums_ = context_.wanted.quiet ? std::vector<load_sum>{} : sum_loads(m, s, library);
  solution_ = solve_static(m, s, library, context_.solver, watch, progress_is_shown(), base_);
  results_ = results_of(m, library, solution_);
  watch.lap("results");
  shells_.reset();
  frame_.reset();
  if (follows_shells(m, s)) {
    shells_ =
        follow_shells(m, s, solution_, library, context_.solver, watch, context_.path_states, context_.restart_of(s));
  }
  if (follows_hinges(m, s)) {
    frame_ = follow_hinges(m, s, solution_, results_, library, context_.solver, watch, context_.path_states,
                           context_.restart_of(s));
  }
  if (shells_) {
    solution_ = shells_->plates;
    results_ = shells_->results;
  }
  if (frame_) {
    solution_ = frame_->path.frame;
    results_ = frame_->results;
  }
  if (follows_shells(m, s)) {
    const std::string note = note_elastic_faces(m, results_);
    if (!note.empty()) solution_.notes.push_back(note);
  }
}

void static_steps::write(const step& s, const places& to) {
  const model& m = context_.m;
  std::optional<double> factor;
  if (shells_) factor = shells_->factor;
  if (frame_) factor = frame_->path.factor;
  write_solution(context_, s, solution_, results_, to, factor);
  if (shells_) write_file(to.curve, [&](std::ostream& out) { write_curve_csv(out, m, *shells_); });
  if (frame_) {
    write_file(to.curve, [&](std::ostream& out) { write_curve_csv(out, m, frame_->path); });
    write_file(to.events, [&](std::ostream& out) { write_events_csv(out, m, frame_->path); });
  }
  for (step_listener* each : context_.listeners) {
    if (shells_) each->followed_plates(m, s, *shells_);
    if (frame_) each->followed_hinges(m, s, frame_->path);
  }
  context_.watch.lap("write");
  print_solution(context_, s, base_, solution_, results_);
  if (!context_.wanted.quiet) print(load_summary(load_sums_));
  if (!context_.wanted.quiet && shells_) print(plastic_static_summary(*shells_));
  if (!context_.wanted.quiet && frame_) print(hinged_static_summary(m, s, *frame_));
  if (ends_in_a_state(s)) context_.last = {solution_, shells_ || frame_};
}

}  // namespace

std::unique_ptr<analysis> make_static_steps(run_context& context) { return std::make_unique<static_steps>(context); }

}  // namespace solver
