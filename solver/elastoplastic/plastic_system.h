// plastic_system.h: the equations of a model whose plates yield: forces of a state, tangents, solutions.
#ifndef FINITES_SOLVER_PLASTIC_SYSTEM_H
#define FINITES_SOLVER_PLASTIC_SYSTEM_H

#include <string>
#include <vector>

#include "elastoplastic/plastic_plates.h"
#include "elements/load_case.h"
#include "elements/scatter_map.h"
#include "system/linear_solver.h"

namespace solver {

using by_equation_vector = std::vector<double>;

class plastic_system {
 public:
  // Throws model_error for a structure that does not stand while it is elastic.
  plastic_system(const model& m, library_model& library, linear_solver& solver, const step& s);

  // Loads of a further step on the same structure.
  void next_loads(const step& s);

  std::size_t equations() const { return map_.equations; }
  std::size_t entries() const { return entries_of(K_); }
  const load_case& loads() const { return loads_; }
  const std::vector<double>& load() const { return load_; }  // of the step, by degree of freedom
  const by_equation_vector& load_by_equation() const { return right_; }
  std::vector<std::string> notes;

  // Factorises the tangent of the stored state with a share of the elastic one, or the elastic one. False for a matrix
  // that has no factors.
  bool factorise_tangent(double elastic_share);
  bool factorise_elastic();
  by_equation_vector solve(by_equation_vector right) const;

  // The state at the end of an increment, by degree of freedom, from the accepted one. False when an assertion of the
  // material failed or a number is not finite.
  bool update(const std::vector<double>& increment);
  std::vector<double> forces(const std::vector<double>& displacements) const;  // of the state, by degree of freedom
  // Operation 3 for all elements: what the tangents at the end of an increment make of it.
  std::vector<double> try_increment(const std::vector<double>& increment);
  // Their sum of products with an increment is what counts: they act on independent degrees of freedom alone.
  std::vector<double> elastic_forces(const std::vector<double>& increment) const;
  void accept(const std::vector<double>& displacements);
  // The accepted state again, after a trial that was dropped.
  void restore();
  int flowing_points() const;

  std::vector<double> by_freedom(const by_equation_vector& x) const;
  by_equation_vector free_part(const std::vector<double>& force) const;
  by_equation_vector free_displacements(const std::vector<double>& x) const;
  const resolved_constraints& constraints() const { return map_.constraints; }
  // The norm on one scale: each force by the root of its own elastic stiffness.
  double scaled_norm(const by_equation_vector& force) const;

  plastic_plates& plates() { return plates_; }

 private:
  void assemble_tangents();
  // What all elements answer under displacements, summed by degree of freedom.
  template <class ASK>
  std::vector<double> sum_of(const std::vector<double>& displacements, const ASK& ask) const;
  bool factorise(std::vector<double> values);

  const model& model_;
  library_model& library_;
  linear_solver& solver_;
  std::vector<std::string> held_;
  load_case loads_;
  plastic_plates plates_;
  symmetric_matrix K_;
  scatter_map map_;
  std::vector<double> elastic_, hold_;  // values of the elastic matrix; what holds directions that nothing resists
  std::vector<double> scale_;
  std::vector<double> load_;
  by_equation_vector right_;
};

}  // namespace solver

#endif
