// results_json.cpp: a step is an item of "steps", its path follows it.
#include "steps/results_json.h"

#include <nlohmann/json.hpp>

#include "model/base_step.h"
#include "output/json_results.h"
#include "output/output_file.h"
#include "steps/places.h"

namespace solver {

struct results_json::parts {
  const options& wanted;
  output_file file;
  json all;

  void add(const model& m, const step& s, json one) {
    one["results"] = file_of_step(output_path(wanted), number_of(m, s) - 1, m.steps.size());
    all["steps"].push_back(std::move(one));
  }
};

results_json::results_json(const options& wanted, const model& m, const std::string& solver_name)
    : parts_(new parts{wanted, output_file(wanted.json), json_of_run(m, solver_name)}) {}

results_json::~results_json() = default;

void results_json::solved(const model& m, const step& s, const static_solution& solution, const step_results& results) {
  parts_->add(m, s, json_of_step(m, s, solution, results));
}

void results_json::found_modes(const model& m, const step& s, const modal_solution& solution) {
  parts_->add(m, s, json_of_step(m, s, solution));
}

void results_json::followed_hinges(const model& m, const step&, const pushover_solution& path) {
  parts_->all["steps"].back()["path"] = json_of_path(m, path);
}

void results_json::followed_plates(const model& m, const step&, const elastoplastic_solution& path) {
  parts_->all["steps"].back()["path"] = json_of_path(m, path);
}

void results_json::commit(const stopwatch& watch, const std::string& error) {
  parts_->all["finished"] = error.empty();
  if (!error.empty()) parts_->all["error"] = error;
  parts_->all["time"] = json_of_time(watch);
  write_json(parts_->file.stream(), parts_->all);
  parts_->file.commit();
}

std::unique_ptr<results_json> open_results_json(const options& wanted, const model& m, const std::string& solver_name) {
  if (wanted.json.empty()) return nullptr;
  return std::make_unique<results_json>(wanted, m, solver_name);
}

}  // namespace solver
