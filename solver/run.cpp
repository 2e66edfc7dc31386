// run.cpp: reads the deck, opens the outputs, and carries out step after step.
#include "run.h"

#include <algorithm>
#include <cstddef>
#include <exception>
#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "elements/parts.h"
#include "model/model_error.h"
#include "model/temperatures.h"
#include "output/flat_deck.h"
#include "output/summary.h"
#include "output/vtu_model.h"
#include "report_page/report_listener.h"
#include "steps/analysis.h"
#include "steps/collections.h"
#include "steps/print_file.h"
#include "steps/report.h"
#include "steps/restart_file.h"
#include "steps/results_json.h"
#include "steps/shared_deck.h"
#include "steps/step_listener.h"
#include "steps/unused_options.h"
#include "system/progress.h"
#include "system/ranks.h"
#include "system/threads.h"

namespace solver {

namespace {

// What does not depend on the constants of materials.
struct shared_by_steps {
  const options& wanted;
  const wanted_values& values;
  const std::vector<places>& outputs;
  linear_solver& solver;
  stopwatch& watch;
  output_file* prints;
  collections& files;
  kept_results& kept;
  std::vector<step_listener*> listeners{};
  std::size_t path_states = 0;
  restart_file* restart = nullptr;
};

// Of the loops over elements. Processes that share a machine share its processors already.
int element_threads(const options& wanted) {
  if (wanted.threads > 0) return wanted.threads;
  return rank_count() > 1 ? 1 : static_cast<int>(std::thread::hardware_concurrency());
}

// Steps in which materials have the same constants. `last` goes from one stretch to the next.
void run_stretch(const model& m, std::size_t first, std::size_t end, const shared_by_steps& shared, end_state& last) {
  auto clock = std::make_unique<ticking_clock>("element records");
  std::optional<library_model> records;
  fail_together([&] { records.emplace(m); });
  library_model& library = *records;
  library.use_threads(element_threads(shared.wanted));
  clock.reset();
  shared.watch.lap("fill");
  run_context context{m, shared.wanted, shared.values, library, shared.solver, shared.watch, std::move(last)};
  context.prints = shared.prints;
  context.kept = &shared.kept;
  context.listeners = shared.listeners;
  context.path_states = shared.path_states;
  context.restart = shared.restart;
  std::unique_ptr<analysis> current;
  for (std::size_t s = first; s < end; ++s) {
    const bool goes_on = s > first && m.steps[s].kind == m.steps[s - 1].kind;
    if (!goes_on) {
      current.reset();  // before the next one takes over what it holds in the library
      current = make_analysis(m.steps[s].kind, context);
    }
    current->run(m.steps[s]);
    current->write(m.steps[s], shared.outputs[s]);
    if (!shared.wanted.quiet) print(fmt::format("  results in {}\n", shared.outputs[s].vtu->path()));
    if (!shared.wanted.quiet) print(shared.files.take_report());
  }
  last = std::move(context.last);
}

// A path goes on from what the library holds.
void check_stretch(const model& m, std::size_t first) {
  const step& s = m.steps[first];
  if (first == 0 || !(s.pushover.goes_on || s.elastoplastic.goes_on)) return;
  throw model_error(m, s, "*STEP",
                    "CONTINUE goes on with the same structure, and the temperatures of this step give it other "
                    "constants than the step before");
}

void run_steps(const model& m, const shared_by_steps& shared) {
  end_state last{};
  for (std::size_t first = 0, end = 0; first < m.steps.size(); first = end) {
    end = end_of_same_constants(m, first);
    check_stretch(m, first);
    if (depends_on_temperature(m)) {
      const model at_temperature = with_constants_of(m, m.steps[first]);
      run_stretch(at_temperature, first, end, shared, last);
    } else {
      run_stretch(m, first, end, shared, last);
    }
  }
}

// Several linear steps are likely to differ in their loads alone.
bool solves_alike(const model& m) {
  return std::count_if(m.steps.begin(), m.steps.end(),
                       [](const step& s) { return s.kind == step_kind::STATIC && !s.p_delta; }) > 1;
}

model read_with_clock(const options& wanted) {
  const ticking_clock clock("deck");
  return read_shared_deck(wanted);
}

// Gives each of several processes its elements; says how.
std::string divide(model& m, const options& wanted) {
  element_division division = divide_elements(m);
  if (division.process_of.empty()) return "";
  m.process = rank();
  m.pieces = in_pieces(wanted);
  m.process_of = std::move(division.process_of);
  std::vector<std::size_t> counts(subscript(rank_count()), 0);
  for (const int process : m.process_of) ++counts[subscript(process)];
  const auto [least, most] = std::minmax_element(counts.begin(), counts.end());
  return fmt::format("{} elements, {} to {} on each of {} processes, divided {}\n", m.elements.size(), *least, *most,
                     rank_count(), division.how);
}

void use_threads(const options& wanted) {
  const auto processors = static_cast<int>(std::thread::hardware_concurrency());
  if (processors > 0 && wanted.threads > processors) {
    warn(fmt::format("warning: --threads {}: this machine has {} processors\n", wanted.threads, processors));
  }
  if (wanted.threads == 0 || set_threads(wanted.threads)) return;
  warn("warning: --threads: this build has no OpenBLAS that takes a number of threads\n");
}

}  // namespace

void run(const options& wanted) {
  stopwatch watch;
  if (!wanted.report.empty() && !has_report_page()) {
    throw usage_error("--report: this build has no report page (FINITES_REPORT=OFF)");
  }
  allow_progress(!wanted.quiet && is_first_rank());
  use_threads(wanted);
  model read = read_with_clock(wanted);
  const std::string division = divide(read, wanted);
  const model m = std::move(read);
  const wanted_values values = find_wanted(m, wanted);
  const std::vector<places> outputs = open_places(wanted, m.steps.size());
  const std::unique_ptr<output_file> prints = open_print_file(wanted, m);
  const std::unique_ptr<output_file> page = open_report(wanted);
  watch.lap("read");
  if (!wanted.quiet) print(fmt::format("{}{}{}\n", m.deck, m.title.empty() ? "" : ": ", m.title));
  if (!wanted.quiet) print(division);
  warn(deck_warnings(m.notes));
  warn(unused_options(m, wanted));

  const std::unique_ptr<linear_solver> solver = make_linear_solver(wanted.kind, wanted.memory_limit);
  if (solves_alike(m)) solver->expect_repeats();
  collections files(wanted, m);
  kept_results kept(m, {wanted.station_count, !wanted.points.empty()});
  shared_by_steps shared{wanted, values, outputs, *solver, watch, prints.get(), files, kept, {&files, &kept}, 0};
  shared.path_states = subscript(wanted.increments);
  const std::unique_ptr<results_json> results = open_results_json(wanted, m, solver->name());
  if (results && is_first_rank()) shared.listeners.push_back(results.get());
  const std::unique_ptr<report_listener> report =
      page == nullptr ? nullptr : std::make_unique<report_listener>(m, wanted.station_count);
  if (report) {
    if (is_first_rank()) shared.listeners.push_back(report.get());
    shared.path_states = std::max(shared.path_states, report->path_states());
    watch.lap("report");
  }
  const std::unique_ptr<restart_file> restart = open_restart(wanted.restart, m, shared.path_states);
  shared.restart = restart.get();
  if (restart && restart->last_step() > 0 && !wanted.quiet) {
    print(fmt::format("goes on in step {} from the state in {}\n", restart->last_step(), wanted.restart));
  }
  // What tells of several steps holds those that were solved, also where a later one is not.
  const auto finish = [&](const std::string& error) {
    if (prints && (error.empty() || prints->stream().tellp() > 0)) prints->commit();
    files.commit();
    if (results) results->commit(watch, error);
  };
  try {
    run_steps(m, shared);
  } catch (const std::exception& error) {
    finish(error.what());
    throw;
  }
  finish("");
  if (restart) restart->remove();
  if (report) {
    write_file(page, [&](std::ostream& out) { report->write(out, watch); });
    watch.lap("report");
  }
  if (report && !wanted.quiet) print(fmt::format("report in {}\n", page->path()));
  if (prints && !wanted.quiet) print(fmt::format("printed tables in {}\n", prints->path()));
  if (!wanted.quiet) print(left_out_summary(m));
  if (!wanted.quiet && !files.path().empty()) print(fmt::format("all steps in {}\n", files.path()));
  if (!wanted.quiet) print("time\n" + time_summary(watch));
}

void write_deck(const options& wanted) {
  std::error_code ignored;
  if (std::filesystem::equivalent(wanted.write, wanted.deck, ignored)) {
    throw usage_error(wanted.write + ": is the deck itself");
  }
  const model m = with_own_numbers(read_shared_deck(wanted));
  warn(deck_warnings(m.notes));
  output_file file(wanted.write);
  file.stream() << flat_deck(m);
  file.commit();
}

}  // namespace solver
