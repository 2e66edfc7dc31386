// json_results.h: a run in JSON, for other programs; docs/results.schema.json says what stands where.
#ifndef FINITES_SOLVER_JSON_RESULTS_H
#define FINITES_SOLVER_JSON_RESULTS_H

#include <ostream>
#include <string>

#include <nlohmann/json_fwd.hpp>

#include "analyses/modal_analysis.h"
#include "analyses/results.h"
#include "analyses/static_analysis.h"
#include "elastoplastic/elastoplastic.h"
#include "model/model.h"
#include "pushover/pushover.h"
#include "system/stopwatch.h"

namespace solver {

using json = nlohmann::ordered_json;

json json_of_run(const model& m, const std::string& solver_name);
// Of a step with displacements and forces; of one that looks for modes; a path, for "path" of its step.
json json_of_step(const model& m, const step& s, const static_solution& solution, const step_results& results);
json json_of_step(const model& m, const step& s, const modal_solution& solution);
json json_of_path(const model& m, const pushover_solution& path);
json json_of_path(const model& m, const elastoplastic_solution& path);
json json_of_time(const stopwatch& watch);

// Text that is no UTF-8, as a deck in another coding may have it, keeps what is.
void write_json(std::ostream& out, const json& all);

}  // namespace solver

#endif
