// results_json.h: gathers the results of all steps for one file in JSON (output/json_results.h).
#ifndef FINITES_SOLVER_RESULTS_JSON_H
#define FINITES_SOLVER_RESULTS_JSON_H

#include <memory>
#include <string>

#include "options.h"
#include "steps/step_listener.h"
#include "system/stopwatch.h"

namespace solver {

class results_json : public step_listener {
 public:
  results_json(const options& wanted, const model& m, const std::string& solver_name);
  ~results_json() override;

  void solved(const model& m, const step& s, const static_solution& solution, const step_results& results) override;
  void found_modes(const model& m, const step& s, const modal_solution& solution) override;
  void followed_hinges(const model& m, const step& s, const pushover_solution& path) override;
  void followed_plates(const model& m, const step& s, const elastoplastic_solution& path) override;

  // Puts the file in its place. `error`: why the run has ended before its last step; empty for one that has not.
  void commit(const stopwatch& watch, const std::string& error = "");

 private:
  struct parts;
  std::unique_ptr<parts> parts_;
};

// Null where none is wanted. A place that cannot be written is an error.
std::unique_ptr<results_json> open_results_json(const options& wanted, const model& m, const std::string& solver_name);

}  // namespace solver

#endif
