// plastic_path.h: follows the equilibrium of yielding plates from increment to increment.
//
// All loads q of a step grow with one factor. What an increment prescribes is the displacement that the loads work on,
// w = q u: it grows while the factor comes to rest at a limit point, where a prescribed load would find no equilibrium.
#ifndef FINITES_SOLVER_PLASTIC_PATH_H
#define FINITES_SOLVER_PLASTIC_PATH_H

#include <vector>

#include "analyses/path_restart.h"
#include "elastoplastic/elastoplastic.h"
#include "elastoplastic/plastic_system.h"

namespace solver {

class plastic_path {
 public:
  plastic_path(const model& m, plastic_system& system) : model_(m), system_(system) {}

  // One step; the state that it ends in is where the next one starts, with its loads as a base. `restart`: where the
  // path leaves its states, and goes on from one that an earlier run has left; null: nowhere.
  void follow(const step& s, elastoplastic_solution& result, std::size_t states = 0, path_restart* restart = nullptr);

  const std::vector<double>& displacements() const { return u_; }
  std::vector<double> applied() const;  // all loads so far, by degree of freedom

 private:
  // What the iteration of an increment holds fixed.
  enum class control { WORK, FACTOR };
  struct trial {
    std::vector<double> increment;  // by degree of freedom
    double factor = 0;
    int iterations = 0;
    by_equation_vector unbalance;  // loads less forces
    double out_of_balance = 0;     // their norm by that of the loads
  };

  void begin(const step& s, elastoplastic_solution& result);
  void start(const step& s, bool virgin, elastoplastic_solution& result);
  void go_on(const step& s, elastoplastic_solution& result, path_restart* restart);
  template <class ARCHIVE>
  void archive_all(ARCHIVE& archive, elastoplastic_solution& result, std::vector<std::vector<double>>& plates);
  void keep(bool finished, elastoplastic_solution& result, path_restart* restart);
  void take_left(const step& s, const left_state& left, elastoplastic_solution& result);
  void find_first_yield(elastoplastic_solution& result);
  bool flows_at(double factor);
  void elastic_part(elastoplastic_solution& result);
  void finish(elastoplastic_solution& result);
  bool advance(elastoplastic_solution& result);
  bool attempt(control what, double target, trial& t);
  bool predict(control what, double target, trial& t);
  bool correct(control what, double target, trial& t);
  bool loses_stiffness(const trial& t, double predicted_work);
  bool evaluate(trial& t);
  bool find_correction(control what, double target, const trial& t, by_equation_vector& b, double& growth);
  bool go_along(const by_equation_vector& b, double growth, trial& t);
  double reference(double factor) const;
  void take(const trial& t, elastoplastic_solution& result);
  void record(const trial& t, elastoplastic_solution& result);
  path_state state_now() const;
  bool at_limit() const;
  double work(const std::vector<double>& u) const;

  const model& model_;
  plastic_system& system_;
  std::vector<double> u_;     // accepted, by degree of freedom
  std::vector<double> base_;  // loads of the steps before
  std::vector<double> next_base_;
  double factor_ = 0, work_ = 0;
  double largest_ = 0;  // load factor of the deck
  double scale_ = 0;    // w at first yield, by which increments are measured
  double step_ = 0, first_step_ = 0, largest_step_ = 0;
  bool own_step_ = false;    // the deck has a largest increment of its own
  double elastic_work_ = 0;  // w under the elastic displacements of the loads
  double share_ = 0;         // of the elastic stiffness in the tangent
  bool fresh_ = true;        // the next increment starts with the elastic stiffness
  int cuts_ = 0, loss_cuts_ = 0;
  std::vector<double> works_, factors_;  // the accepted points
  path_states states_;
  int increments_ = 0;  // of the step
};

}  // namespace solver

#endif
