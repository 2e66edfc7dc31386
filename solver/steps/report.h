// report.h: what the steps of all kinds write and print.
#ifndef FINITES_SOLVER_REPORT_H
#define FINITES_SOLVER_REPORT_H

#include <optional>
#include <string>
#include <vector>

#include "analyses/results.h"
#include "steps/analysis.h"

namespace solver {

void print(const std::string& text);
// Warnings go to the standard error, whatever the standard output is to show; what was printed before them comes first.
void warn(const std::string& lines);

void print_heading(const model& m, const step& s);
// Where small motions count from another state than that of an ordinary step, or might.
void print_base(const model& m, const step& s, const base_state& base);

// A solution with displacements and forces: its files, after an answer that is not finite has been refused; and its
// summary. `factor`: the load factor of a path that has led to it.
void write_solution(const run_context& context, const step& s, const static_solution& solution,
                    const step_results& results, const places& to, std::optional<double> factor = {});
void print_solution(const run_context& context, const step& s, const base_state& base, const static_solution& solution,
                    const step_results& results);

}  // namespace solver

#endif
