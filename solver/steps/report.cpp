// report.cpp: the files and the summary of a step that ends in displacements and forces.
#include "steps/report.h"

#include <cstdio>

#include <fmt/format.h>

#include "analyses/finite_answers.h"
#include "output/conditions_csv.h"
#include "output/csv_writer.h"
#include "output/envelope_summary.h"
#include "output/layers_csv.h"
#include "output/print_tables.h"
#include "output/reactions_csv.h"
#include "output/section_points_writer.h"
#include "output/section_tables.h"
#include "output/summary.h"
#include "output/vtu_writer.h"
#include "steps/grid_files.h"
#include "system/ranks.h"
#include "system/terminal.h"

namespace solver {

namespace {

// An answer that is not finite is an error before anything is written.
void check_answer(const model& m, const step& s, const static_solution& solution, const step_results& results) {
  require_finite(m, s, solution);
  require_finite(m, s, results);
  const equilibrium sums = sum_forces(m, solution);
  for (std::size_t i = 0; i < DIRECTIONS; ++i) {
    require_finite(m, s, sums.applied[i], "the sum of the loads or of their moments");
    require_finite(m, s, sums.reaction[i], "the sum of the reactions or of their moments");
  }
}

}  // namespace

void print(const std::string& text) {
  if (is_first_rank()) std::fwrite(text.data(), 1, text.size(), stdout);
}

void warn(const std::string& lines) {
  if (!is_first_rank()) return;
  std::fflush(stdout);
  const std::string shown = colored(lines);
  std::fwrite(shown.data(), 1, shown.size(), stderr);
}

void print_heading(const model& m, const step& s) {
  print(fmt::format("step {}{}{}\n", &s - m.steps.data() + 1, s.name.empty() ? "" : ", ", s.name));
}

void print_base(const model& m, const step& s, const base_state& base) {
  const bool small_motions = s.kind == step_kind::FREQUENCY || s.kind == step_kind::BUCKLE;
  if (s.perturbation || small_motions || is_loaded(base)) print("  stands on " + name_of(m, base) + "\n");
}

void print_solution(const run_context& context, const step& s, const base_state& base, const static_solution& solution,
                    const step_results& results) {
  const model& m = context.m;
  const options& wanted = context.wanted;
  const wanted_values& values = context.values;
  warn(step_warnings(m, s, solution.notes));
  if (!wanted.quiet) {
    print_heading(m, s);
    print_base(m, s, base);
    print(s.kind == step_kind::COMBINATION ? combination_summary(m, s)
                                           : model_summary(m, solution, context.solver.name()));
    print(displacement_summary(m, solution, results.fields));
    print(member_summary(m, results));
    print(equilibrium_summary(m, solution));
    print(remarks_summary(solution.remarks));
  }
  if (!values.nodes.empty()) print(node_table(m, solution, values.nodes));
  for (std::size_t r = 0; r < wanted.references.size(); ++r) {
    print(reference_line(solution, values.reference_nodes[r], wanted.references[r]));
  }
}

void write_solution(const run_context& context, const step& s, const static_solution& solution,
                    const step_results& results, const places& to, std::optional<double> factor) {
  const model& m = context.m;
  const int stations = context.wanted.station_count;
  fail_together([&] { check_answer(m, s, solution, results); });
  write_grid(to, [&](vtu_extent extent) {
    return vtu_of(m, solution, results, stations, context.wanted.form, {&s, factor}, extent);
  });
  write_file(to.csv, [&](std::ostream& out) { write_csv(out, m, solution); });
  write_file(to.reactions, [&](std::ostream& out) { write_reactions_csv(out, m, solution); });
  write_file(to.conditions, [&](std::ostream& out) { write_conditions_csv(out, m, solution); });
  write_file(to.members, [&](std::ostream& out) { write_members_csv(out, m, results); });
  write_file(to.stations, [&](std::ostream& out) { write_stations_csv(out, m, results, stations); });
  write_file(to.points, [&](std::ostream& out) { write_section_points_csv(out, m, results, stations); });
  write_file(to.stresses, [&](std::ostream& out) { write_stresses_csv(out, m, results); });
  write_file(to.layers, [&](std::ostream& out) { write_layers_csv(out, m, solution, results); });
  write_file(to.solids, [&](std::ostream& out) { write_solids_csv(out, m, results); });
  if (context.prints != nullptr) {
    if (is_first_rank()) write_prints(context.prints->stream(), m, s, solution, results);
    write_section_prints(context.prints->stream(), m, s, context.library, solution);
  }
  fail_together([&] {
    for (step_listener* each : context.listeners) each->solved(m, s, solution, results);
  });
}

}  // namespace solver
