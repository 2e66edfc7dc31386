// run.cpp: reads the deck, opens the outputs, and carries out step after step.
#include "run.h"

#include <filesystem>
#include <memory>
#include <system_error>
#include <vector>

#include <fmt/format.h>

#include "deck/deck_reader.h"
#include "output/flat_deck.h"
#include "output/summary.h"
#include "steps/analysis.h"
#include "steps/print_file.h"
#include "steps/report.h"

namespace solver {

static void run_steps(run_context& context, const std::vector<places>& outputs) {
  const model& m = context.m;
  std::unique_ptr<analysis> current;
  for (std::size_t s = 0; s < m.steps.size(); ++s) {
    const bool goes_on = s > 0 && m.steps[s].kind == m.steps[s - 1].kind;
    if (!goes_on) {
      current.reset();  // before the next one takes over what it holds in the library
      current = make_analysis(m.steps[s].kind, context);
    }
    current->run(m.steps[s]);
    current->write(m.steps[s], outputs[s]);
    if (!context.wanted.quiet) print(fmt::format("  results in {}\n", outputs[s].vtu->path()));
  }
}

void run(const options& wanted) {
  stopwatch watch;
  const model m = read_deck(wanted.deck);
  const wanted_values values = find_wanted(m, wanted);
  const std::vector<places> outputs = open_places(wanted, m.steps.size());
  const std::unique_ptr<output_file> prints = open_print_file(wanted, m);
  watch.lap("read");
  if (!wanted.quiet) print(fmt::format("{}{}{}\n", m.deck, m.title.empty() ? "" : ": ", m.title));
  warn(deck_warnings(m.notes));

  library_model library(m);
  watch.lap("fill");
  const std::unique_ptr<linear_solver> solver = make_linear_solver(wanted.kind, wanted.memory);
  run_context context{m, wanted, values, library, *solver, watch};
  context.prints = prints.get();
  try {
    run_steps(context, outputs);
  } catch (...) {
    if (prints && prints->stream().tellp() > 0) prints->commit();  // the tables of the steps that were solved
    throw;
  }
  if (prints) prints->commit();
  if (prints && !wanted.quiet) print(fmt::format("printed tables in {}\n", prints->path()));
  if (!wanted.quiet) print("time\n" + time_summary(watch));
}

void write_deck(const options& wanted) {
  std::error_code ignored;
  if (std::filesystem::equivalent(wanted.write, wanted.deck, ignored)) {
    throw usage_error(wanted.write + ": is the deck itself");
  }
  const model m = read_deck(wanted.deck);
  warn(deck_warnings(m.notes));
  output_file file(wanted.write);
  file.stream() << flat_deck(m);
  file.commit();
}

}  // namespace solver
