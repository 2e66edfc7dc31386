// run.cpp: reads the deck, opens the outputs, solves each step, writes and prints.
#include "run.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <set>
#include <unordered_map>

#include <fmt/format.h>

#include "analyses/finite_answers.h"
#include "deck/deck_reader.h"
#include "deck/fields.h"
#include "elastoplastic/elastoplastic.h"
#include "elastoplastic/plastic_static.h"
#include "model/base_step.h"
#include "model/yielding.h"
#include "output/csv_writer.h"
#include "output/output_file.h"
#include "output/vtu_writer.h"
#include "pushover/hinged_static.h"
#include "pushover/pushover.h"
#include "system/progress.h"

namespace solver {

namespace {

using files = std::vector<std::unique_ptr<output_file>>;

// "name.vtu" for the only step, "name.1.vtu" and so on for several.
std::string numbered(const std::string& path, std::size_t step, std::size_t steps) {
  if (steps == 1) return path;
  const std::filesystem::path whole(path);
  const std::string name = whole.stem().string() + "." + std::to_string(step + 1) + whole.extension().string();
  return (whole.parent_path() / name).string();
}

// A place that cannot be written is an error before anything is computed.
files open_outputs(const std::string& path, std::size_t steps) {
  files result;
  for (std::size_t s = 0; s < steps && !path.empty(); ++s)
    result.push_back(std::make_unique<output_file>(numbered(path, s, steps)));
  return result;
}

std::string output_path(const options& wanted) {
  if (!wanted.output.empty()) return wanted.output;
  return std::filesystem::path(wanted.deck).filename().replace_extension(".vtu").string();
}

// Results must not take the place of the deck, nor of each other.
void check_places(const options& wanted) {
  std::error_code ignored;
  std::set<std::filesystem::path> places;
  for (const std::string& path : {output_path(wanted), wanted.csv, wanted.members, wanted.stations, wanted.stresses,
                                  wanted.solids, wanted.curve, wanted.events}) {
    if (path.empty()) continue;
    if (std::filesystem::equivalent(path, wanted.deck, ignored)) throw usage_error(path + ": is the deck itself");
    if (!places.insert(std::filesystem::path(path).lexically_normal()).second)
      throw usage_error(path + ": is wanted for two results");
  }
}

// What the user named by number or set, as indices into the model.
struct wanted_values {
  std::vector<int> nodes;
  std::vector<int> reference_nodes;  // one a reference
};

wanted_values find_wanted(const model& m, const options& wanted) {
  std::unordered_map<int, int> index;
  for (std::size_t n = 0; n < m.nodes.size(); ++n) index[m.nodes[n].id] = static_cast<int>(n);
  const auto node = [&](int id) {
    const auto found = index.find(id);
    if (found == index.end()) throw usage_error(fmt::format("{} has no node {}", m.deck, id));
    return found->second;
  };
  wanted_values result;
  for (const int id : wanted.nodes) result.nodes.push_back(node(id));
  for (const reference_value& reference : wanted.references) result.reference_nodes.push_back(node(reference.node));
  for (const std::string& name : wanted.sets) {
    const auto found = std::find_if(m.nsets.begin(), m.nsets.end(),
                                    [&](const named_set& set) { return set.name == deck::upper(name); });
    if (found == m.nsets.end()) throw usage_error(fmt::format("{} has no *NSET {}", m.deck, name));
    result.nodes.insert(result.nodes.end(), found->members.begin(), found->members.end());
  }
  return result;
}

void print(const std::string& text) { std::fwrite(text.data(), 1, text.size(), stdout); }

// Warnings go to the standard error, whatever the standard output is to show; what was printed before them comes first.
void warn(const std::string& lines) {
  std::fflush(stdout);
  std::fwrite(lines.data(), 1, lines.size(), stderr);
}

// Where the results of one step go; null where none are wanted.
struct places {
  output_file* vtu;
  output_file* csv;
  output_file* members;
  output_file* stations;
  output_file* stresses;
  output_file* solids;
  output_file* curve;
  output_file* events;
};

void print_heading(const model& m, const step& s) {
  print(fmt::format("step {}{}{}\n", &s - m.steps.data() + 1, s.name.empty() ? "" : ", ", s.name));
}

// Where small motions count from another state than that of an ordinary step, or might.
void print_base(const model& m, const step& s, const base_state& base) {
  const bool small_motions = s.kind == step_kind::FREQUENCY || s.kind == step_kind::BUCKLE;
  if (s.perturbation || small_motions) print("  stands on " + name_of(m, base) + "\n");
}

void print_step(const model& m, const step& s, const base_state& base, const static_solution& solution,
                const step_results& results, const options& wanted, const wanted_values& values,
                const std::string& solver_name) {
  warn(step_warnings(m, s, solution.notes));
  if (!wanted.quiet) {
    print_heading(m, s);
    print_base(m, s, base);
    print(model_summary(m, solution, solver_name));
    print(displacement_summary(m, solution, results.fields));
    print(member_summary(m, results));
    print(equilibrium_summary(m, solution));
    print(remarks_summary(solution.remarks));
  }
  if (!values.nodes.empty()) print(node_table(m, solution, values.nodes));
  for (std::size_t r = 0; r < wanted.references.size(); ++r)
    print(reference_line(solution, values.reference_nodes[r], wanted.references[r]));
}

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

void write_step(const model& m, const step& s, const static_solution& solution, const step_results& results,
                const options& wanted, const places& to) {
  check_answer(m, s, solution, results);
  write_vtu(to.vtu->stream(), m, solution, results, wanted.station_count);
  to.vtu->commit();
  if (to.csv != nullptr) {
    write_csv(to.csv->stream(), m, solution);
    to.csv->commit();
  }
  if (to.members != nullptr) {
    write_members_csv(to.members->stream(), m, results);
    to.members->commit();
  }
  if (to.stations != nullptr) {
    write_stations_csv(to.stations->stream(), m, results, wanted.station_count);
    to.stations->commit();
  }
  if (to.stresses != nullptr) {
    write_stresses_csv(to.stresses->stream(), m, results);
    to.stresses->commit();
  }
  if (to.solids != nullptr) {
    write_solids_csv(to.solids->stream(), m, results);
    to.solids->commit();
  }
}

// A static step whose material or whose hinges have yielded under its loads.
void print_yielding(const model& m, const step& s, const std::optional<elastoplastic_solution>& shells,
                    const std::optional<hinged_static>& frame) {
  if (shells) print(plastic_static_summary(*shells));
  if (frame) print(hinged_static_summary(m, s, *frame));
}

template <class SOLUTION>
void write_curve(const model& m, const SOLUTION& solution, output_file* to) {
  if (to == nullptr) return;
  write_curve_csv(to->stream(), m, solution);
  to->commit();
}

void write_events(const model& m, const pushover_solution& solution, output_file* to) {
  if (to == nullptr) return;
  write_events_csv(to->stream(), m, solution);
  to->commit();
}

// What later steps may stand on.
struct end_state {
  static_solution solution;
  bool yielded = false;
};

end_state run_static(const model& m, const step& s, const base_state& base, library_model& library,
                     linear_solver& solver, const options& wanted, const wanted_values& values, const places& to,
                     stopwatch& watch) {
  end_state end;
  end.solution = solve_static(m, s, library, solver, watch, somebody_watches(), base);
  step_results results = recover_results(m, library, end.solution);
  watch.book("results");
  std::optional<elastoplastic_solution> shells;
  std::optional<hinged_static> frame;
  if (follows_shells(m, s)) shells = follow_shells(m, s, end.solution, library, solver, watch);
  if (follows_hinges(m, s)) frame = follow_hinges(m, s, end.solution, results, library, solver, watch);
  end.yielded = shells || frame;
  if (shells) end.solution = shells->plates, results = shells->results;
  if (frame) end.solution = frame->path.frame, results = frame->results;
  if (follows_shells(m, s)) {
    const std::string note = note_elastic_faces(m, results);
    if (!note.empty()) end.solution.notes.push_back(note);
  }
  write_step(m, s, end.solution, results, wanted, to);
  if (shells) write_curve(m, *shells, to.curve);
  if (frame) write_curve(m, frame->path, to.curve), write_events(m, frame->path, to.events);
  watch.book("write");
  print_step(m, s, base, end.solution, results, wanted, values, solver.name());
  if (!wanted.quiet) print_yielding(m, s, shells, frame);
  return end;
}

void run_modal(const model& m, const step& s, const base_state& base, library_model& library, linear_solver& solver,
               const options& wanted, const wanted_values& values, const places& to, stopwatch& watch) {
  static_solution state;
  const modal_solution solution = s.kind == step_kind::FREQUENCY
                                      ? solve_frequencies(m, s, library, solver, watch, base)
                                      : solve_buckling(m, s, library, solver, watch, state, base);
  write_modes_vtu(to.vtu->stream(), m, solution);
  to.vtu->commit();
  if (to.csv != nullptr) {
    write_modes_csv(to.csv->stream(), s, solution);
    to.csv->commit();
  }
  watch.book("write");
  warn(step_warnings(m, s, solution.notes));
  if (!values.nodes.empty() || !values.reference_nodes.empty())
    print(fmt::format("step {}: a step that looks for modes has no displacements to print\n", &s - m.steps.data() + 1));
  if (wanted.quiet) return;
  print_heading(m, s);
  print_base(m, s, base);
  print(fmt::format("  {} equations, solved by {}\n", solution.equations, solver.name()));
  print(modes_summary(s, solution));
}

void run_pushover(const model& m, const step& s, library_model& library, pushover& frame,
                  const std::string& solver_name, const options& wanted, const wanted_values& values, const places& to,
                  stopwatch& watch) {
  pushover_solution solution = frame.solve(s, watch);
  if (solution.span) solution.frame.notes.push_back(span_note(m, solution));
  const step_results results = recover_pushover_results(m, library, solution);
  watch.book("results");
  write_step(m, s, solution.frame, results, wanted, to);
  write_curve(m, solution, to.curve);
  write_events(m, solution, to.events);
  watch.book("write");
  print_step(m, s, {}, solution.frame, results, wanted, values, solver_name);
  if (!wanted.quiet) print(pushover_summary(m, s, solution));
}

void run_elastoplastic(const model& m, const step& s, elastoplastic& plates, const std::string& solver_name,
                       const options& wanted, const wanted_values& values, const places& to, stopwatch& watch) {
  const elastoplastic_solution solution = plates.solve(s, watch);
  write_step(m, s, solution.plates, solution.results, wanted, to);
  write_curve(m, solution, to.curve);
  watch.book("write");
  print_step(m, s, {}, solution.plates, solution.results, wanted, values, solver_name);
  if (!wanted.quiet) print(elastoplastic_summary(m, s, solution));
}

output_file* file_of(const files& all, std::size_t step) { return all.empty() ? nullptr : all[step].get(); }

}  // namespace

void run(const options& wanted) {
  stopwatch watch;
  const model m = read_deck(wanted.deck);
  const wanted_values values = find_wanted(m, wanted);
  check_places(wanted);
  files vtu = open_outputs(output_path(wanted), m.steps.size());
  files csv = open_outputs(wanted.csv, m.steps.size());
  files members = open_outputs(wanted.members, m.steps.size());
  files stations = open_outputs(wanted.stations, m.steps.size());
  files stresses = open_outputs(wanted.stresses, m.steps.size());
  files solids = open_outputs(wanted.solids, m.steps.size());
  files curves = open_outputs(wanted.curve, m.steps.size());
  files events = open_outputs(wanted.events, m.steps.size());
  watch.book("read");
  if (!wanted.quiet) print(fmt::format("{}{}{}\n", m.deck, m.title.empty() ? "" : ": ", m.title));
  warn(deck_warnings(m.notes));

  library_model library(m);
  watch.book("fill");
  const std::unique_ptr<linear_solver> solver = make_linear_solver(wanted.kind, wanted.memory);
  std::unique_ptr<pushover> frame;        // lives from one pushover to the next
  std::unique_ptr<elastoplastic> plates;  // likewise
  end_state last;                         // of the static step that ended in a state last
  const auto base_of = [&](const step& s) {
    const step* const after = base_step(m, s);
    return after == nullptr ? base_state{} : base_state{after, &last.solution, last.yielded};
  };
  for (std::size_t s = 0; s < m.steps.size(); ++s) {
    const places here{vtu[s].get(),         file_of(csv, s),    file_of(members, s), file_of(stations, s),
                      file_of(stresses, s), file_of(solids, s), file_of(curves, s),  file_of(events, s)};
    const bool to_collapse = m.steps[s].kind == step_kind::PUSHOVER;
    if (!to_collapse) frame.reset();
    const bool yields = m.steps[s].kind == step_kind::ELASTOPLASTIC;
    if (!yields) plates.reset();
    if (yields && plates == nullptr) library.second_order(false);  // a P-delta step before has left it on
    if (yields && plates == nullptr) plates = std::make_unique<elastoplastic>(m, library, *solver);
    if (to_collapse && frame == nullptr) frame = std::make_unique<pushover>(m, library, *solver);
    if (to_collapse)
      run_pushover(m, m.steps[s], library, *frame, solver->name(), wanted, values, here, watch);
    else if (yields)
      run_elastoplastic(m, m.steps[s], *plates, solver->name(), wanted, values, here, watch);
    else if (m.steps[s].kind != step_kind::STATIC)
      run_modal(m, m.steps[s], base_of(m.steps[s]), library, *solver, wanted, values, here, watch);
    else if (!ends_in_a_state(m.steps[s]))
      run_static(m, m.steps[s], base_of(m.steps[s]), library, *solver, wanted, values, here, watch);
    else
      last = run_static(m, m.steps[s], {}, library, *solver, wanted, values, here, watch);
    if (!wanted.quiet) print(fmt::format("  results in {}\n", vtu[s]->path()));
  }
  if (!wanted.quiet) print("time\n" + time_summary(watch));
}

}  // namespace solver
