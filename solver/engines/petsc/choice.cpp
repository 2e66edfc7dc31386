// choice.cpp: what the engine of PETSc solves with.
#include <stdexcept>

#include "engines/petsc/direct_solver.h"
#include "engines/petsc/iterative_solver.h"

namespace solver {

const char* engine_name() { return "petsc"; }

const std::vector<solver_choice>& solver_choices() {
  static const std::vector<solver_choice> choices = {{"mumps", solver_kind::MUMPS}, {"cg", solver_kind::GRADIENTS}};
  return choices;
}

std::unique_ptr<linear_solver> make_linear_solver(solver_kind kind, double megabytes) {
  if (kind == solver_kind::MUMPS) return make_direct_solver(megabytes);
  if (kind == solver_kind::GRADIENTS) return make_iterative_solver();
  throw std::runtime_error("the engine petsc has no such solver: use --solver mumps or cg");
}

}  // namespace solver
