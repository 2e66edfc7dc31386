// choice.cpp: what the embedded engine factorises with.
#include <stdexcept>

#include "engines/embedded/eigen_solver.h"
#include "system/linear_solver.h"
#ifdef FINITES_SOLVER_HAS_MUMPS
#include "engines/embedded/mumps_solver.h"
#endif

namespace solver {

const char* engine_name() { return "embedded"; }

const std::vector<solver_choice>& solver_choices() {
#ifdef FINITES_SOLVER_HAS_MUMPS
  static const std::vector<solver_choice> choices = {{"mumps", solver_kind::MUMPS}, {"eigen", solver_kind::EIGEN}};
#else
  static const std::vector<solver_choice> choices = {{"eigen", solver_kind::EIGEN}};
#endif
  return choices;
}

std::unique_ptr<linear_solver> make_linear_solver(solver_kind kind, double megabytes) {
  if (kind == solver_kind::EIGEN) return make_eigen_solver(megabytes);
#ifdef FINITES_SOLVER_HAS_MUMPS
  if (kind == solver_kind::MUMPS) return make_mumps_solver(megabytes);
#endif
  throw std::runtime_error("this build has no such solver: use --solver eigen");
}

}  // namespace solver
