// modal_steps.cpp: steps that look for modes, of vibration or of buckling.
#include <fmt/format.h>

#include "analyses/modal_analysis.h"
#include "output/csv_writer.h"
#include "output/modal_output.h"
#include "output/print_tables.h"
#include "output/summary.h"
#include "output/vtu_writer.h"
#include "steps/analysis.h"
#include "steps/grid_files.h"
#include "steps/report.h"

namespace solver {

namespace {

class modal_steps : public analysis {
 public:
  explicit modal_steps(run_context& context) : context_(context) {}
  void run(const step& s) override;
  void write(const step& s, const places& to) override;

 private:
  run_context& context_;
  base_state base_;
  modal_solution solution_;
};

void modal_steps::run(const step& s) {
  base_ = context_.base_of(s);
  static_solution state;
  solution_ = s.kind == step_kind::FREQUENCY
                  ? solve_frequencies(context_.m, s, context_.library, context_.solver, context_.watch, base_)
                  : solve_buckling(context_.m, s, context_.library, context_.solver, context_.watch, state, base_);
}

void modal_steps::write(const step& s, const places& to) {
  const model& m = context_.m;
  const wanted_values& values = context_.values;
  vtu_about about{&s};
  for (const mode& each : solution_.modes) about.modes.push_back(each.value);
  write_grid(to, [&](vtu_extent extent) { return modes_vtu(m, solution_, context_.wanted.form, about, extent); });
  write_file(to.csv, [&](std::ostream& out) { write_modes_csv(out, s, solution_); });
  write_file(to.modes, [&](std::ostream& out) { write_modal_masses_csv(out, s, solution_); });
  if (context_.prints != nullptr) write_prints(context_.prints->stream(), m, s, solution_);
  for (step_listener* each : context_.listeners) each->found_modes(m, s, solution_);
  context_.watch.lap("write");
  warn(step_warnings(m, s, solution_.notes));
  if (!values.nodes.empty() || !values.reference_nodes.empty()) {
    print(fmt::format("step {}: a step that looks for modes has no displacements to print\n", &s - m.steps.data() + 1));
  }
  if (context_.wanted.quiet) return;
  print_heading(m, s);
  print_base(m, s, base_);
  print(fmt::format("  {} equations, solved by {}\n", solution_.equations, context_.solver.name()));
  print(modes_summary(s, solution_));
  if (s.kind == step_kind::FREQUENCY) print(modal_masses_summary(solution_));
}

}  // namespace

std::unique_ptr<analysis> make_modal_steps(run_context& context) { return std::make_unique<modal_steps>(context); }

}  // namespace solver
