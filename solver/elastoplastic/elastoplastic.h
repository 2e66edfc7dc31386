// elastoplastic.h: a step in which plates yield under growing loads, up to a limit of load if there is one.
//
// The step goes increment by increment: operation 3 tries an increment, operation 33 stores the state of each
// iteration, and when forces and loads are in equilibrium the state is accepted.
#ifndef FINITES_SOLVER_ELASTOPLASTIC_H
#define FINITES_SOLVER_ELASTOPLASTIC_H

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "analyses/path_restart.h"
#include "analyses/path_states.h"
#include "analyses/results.h"
#include "analyses/static_analysis.h"
#include "elements/library_model.h"
#include "model/model.h"
#include "system/linear_solver.h"
#include "system/stopwatch.h"

namespace solver {

struct yielding_point {
  double factor = 0;
  double displacement = 0;  // of the degree of freedom of the curve
  double work = 0;          // the displacement that the loads work on
  int flowing = 0;          // points that flow in the increment
  int iterations = 0;
};

enum class elastoplastic_end {
  LIMIT,              // the load factor no longer grows while the displacements do
  NO_EQUILIBRIUM,     // none was found above, however small the increment
  FACTOR_REACHED,     // the largest factor of the deck
  INCREMENTS_REACHED  // the largest number of increments of the deck
};

struct elastoplastic_solution {
  static_solution plates;  // at the end; a reaction is that of all loads so far
  step_results results;
  std::vector<yielding_point> curve;
  std::vector<path_state> kept;  // along the curve, as many as were asked for
  int node = 0, direction = 0;   // of the curve
  double first_yield = 0;        // load factor; 0: not looked for, or never
  double largest_factor = 0;     // on the path
  double factor = 0;             // at its end
  double out_of_balance = 0;     // the largest of all increments, by the loads
  int cuts = 0;                  // increments that were halved
  elastoplastic_end end = elastoplastic_end::INCREMENTS_REACHED;
};

class plastic_system;
class plastic_path;

// The steps of one model in order: a step with CONTINUE starts from the state that the step before has reached. The
// library holds the state of the plates while this lives.
class elastoplastic {
 public:
  elastoplastic(const model& m, library_model& library, linear_solver& solver);
  ~elastoplastic();
  elastoplastic(const elastoplastic&) = delete;
  elastoplastic& operator=(const elastoplastic&) = delete;

  // `states`: how many deformed states along the path are kept, at most. `restart`: see plastic_path.
  elastoplastic_solution solve(const step& s, stopwatch& watch, std::size_t states = 0,
                               path_restart* restart = nullptr);

 private:
  const model& model_;
  library_model& library_;
  linear_solver& solver_;
  std::unique_ptr<plastic_system> system_;
  std::unique_ptr<plastic_path> path_;
};

// Results of elements and nodes from the stored section forces and plastic strains.
step_results recover_plastic_results(const model& m, library_model& library, plastic_system& system,
                                     const static_solution& solution);

std::string how_it_ended(const elastoplastic_solution& solution);
std::string elastoplastic_summary(const model& m, const step& s, const elastoplastic_solution& solution);
void write_curve_csv(std::ostream& out, const model& m, const elastoplastic_solution& solution);

}  // namespace solver

#endif
