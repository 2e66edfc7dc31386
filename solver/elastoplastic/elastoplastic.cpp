// elastoplastic.cpp: a step with yielding plates from its loads to its results.
#include "elastoplastic/elastoplastic.h"

#include "elastoplastic/plastic_path.h"
#include "elastoplastic/plastic_system.h"
#include "model/long_vectors.h"

namespace solver {

elastoplastic::elastoplastic(const model& m, library_model& library, linear_solver& solver)
    : model_(m), library_(library), solver_(solver) {}

elastoplastic::~elastoplastic() = default;

elastoplastic_solution elastoplastic::solve(const step& s, stopwatch& watch, std::size_t states,
                                            path_restart* restart) {
  elastoplastic_solution result;
  if (s.elastoplastic.goes_on && path_ != nullptr) {
    system_->next_loads(s);
  } else {
    path_.reset();
    system_.reset();
    system_ = std::make_unique<plastic_system>(model_, library_, solver_, s);
    path_ = std::make_unique<plastic_path>(model_, *system_);
  }
  watch.lap("assembly");
  path_->follow(s, result, states, restart);
  watch.lap("increments");

  static_solution& at = result.plates;
  at.loads = system_->loads();
  at.displacement = path_->displacements();
  at.load = path_->applied();
  std::vector<double> left = system_->forces(at.displacement);
  add_scaled(left, -1, at.load);
  take_forces(system_->constraints(), left, at);
  at.equations = system_->equations();
  at.entries = system_->entries();
  at.residual = result.out_of_balance;
  at.notes = system_->notes;
  result.results = recover_plastic_results(model_, library_, *system_, at);
  watch.lap("results");
  return result;
}

}  // namespace solver
