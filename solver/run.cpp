// run.cpp: reads the deck, opens the outputs, and carries out step after step.
#include "run.h"

#include <memory>
#include <vector>

#include <fmt/format.h>

#include "deck/deck_reader.h"
#include "output/summary.h"
#include "steps/analysis.h"
#include "steps/report.h"

namespace solver {

void run(const options& wanted) {
  stopwatch watch;
  const model m = read_deck(wanted.deck, {wanted.refine});
  const wanted_values values = find_wanted(m, wanted);
  const std::vector<places> outputs = open_places(wanted, m.steps.size());
  watch.lap("read");
  if (!wanted.quiet) print(fmt::format("{}{}{}\n", m.deck, m.title.empty() ? "" : ": ", m.title));
  warn(deck_warnings(m.notes));

  library_model library(m);
  watch.lap("fill");
  const std::unique_ptr<linear_solver> solver = make_linear_solver(wanted.kind, wanted.memory);
  run_context context{m, wanted, values, library, *solver, watch};
  std::unique_ptr<analysis> current;
  for (std::size_t s = 0; s < m.steps.size(); ++s) {
    const bool goes_on = s > 0 && m.steps[s].kind == m.steps[s - 1].kind;
    if (!goes_on) {
      current.reset();  // before the next one takes over what it holds in the library
      current = make_analysis(m.steps[s].kind, context);
    }
    current->run(m.steps[s]);
    current->write(m.steps[s], outputs[s]);
    if (!wanted.quiet) print(fmt::format("  results in {}\n", outputs[s].vtu->path()));
  }
  if (!wanted.quiet) print("time\n" + time_summary(watch));
}

}  // namespace solver
