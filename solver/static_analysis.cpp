// static_analysis.cpp: loads, numbering, assembly, factorisation, solution, reactions.
//
// The unknowns are scaled to a unit diagonal first: membrane, bending and drilling stiffnesses of one shell lie many
// powers of ten apart, and pivots and residuals mean something only on one scale.
#include "static_analysis.h"

#include <cmath>

#include <fmt/format.h>

#include "assembly.h"
#include "mechanism.h"
#include "model_error.h"
#include "unresisted.h"

namespace solver {

namespace {

constexpr double RESIDUAL_LIMIT = 1e-11;  // a backward error above it is no rounding
constexpr double DOUBTFUL_STIFFNESS = 1e-11;

// The factors s that give S K S a unit diagonal, applied to K.
std::vector<double> scale_to_unit_diagonal(const model& m, const scatter_map& map, symmetric_matrix& K) {
  std::vector<double> scale(K.order());
  for (std::size_t f = 0; f < map.equation.size(); ++f) {
    if (map.equation[f] == PRESCRIBED) continue;
    const auto j = static_cast<std::size_t>(map.equation[f]);
    const double diagonal = K.value[static_cast<std::size_t>(K.column_start[j])];
    if (!(diagonal > 0))
      throw model_error(m, fmt::format("mechanism: node {} has no stiffness in {}", m.nodes[f / DIRECTIONS].id,
                                       direction_name(static_cast<int>(f % DIRECTIONS))));
    scale[j] = 1 / std::sqrt(diagonal);
  }
  for (std::size_t j = 0; j < K.order(); ++j)
    for (auto p = static_cast<std::size_t>(K.column_start[j]); p < static_cast<std::size_t>(K.column_start[j + 1]); ++p)
      K.value[p] *= scale[j] * scale[static_cast<std::size_t>(K.row[p])];
  return scale;
}

void check_resistance(const model& m, const scatter_map& map, const symmetric_matrix& K,
                      const std::vector<double>& scale, linear_solver& solver, bool factorised, double& stiffness) {
  if (factorised) stiffness = smallest_stiffness(K, solver);
  if (factorised && stiffness > FREE_STIFFNESS) return;
  const std::string text = describe_mechanism(m, map, K, scale, solver);
  throw model_error(m, text.empty() ? "the stiffness is too near to singular to be solved with" : text);
}

// Solves and corrects once with the residual, which costs little and brings it down to rounding.
std::vector<double> solve_refined(const symmetric_matrix& K, const std::vector<double>& b, linear_solver& solver,
                                  double& remaining) {
  std::vector<double> x = b;
  solver.solve(x);
  std::vector<double> correction = residual(K, x, b);
  solver.solve(correction);
  for (std::size_t i = 0; i < x.size(); ++i) x[i] += correction[i];
  remaining = backward_error(K, x, b);
  return x;
}

std::vector<double> by_equation(const scatter_map& map, const std::vector<double>& by_freedom) {
  std::vector<double> result(map.equations);
  for (std::size_t f = 0; f < by_freedom.size(); ++f)
    if (map.equation[f] != PRESCRIBED) result[static_cast<std::size_t>(map.equation[f])] = by_freedom[f];
  return result;
}

void factorise_and_solve(const model& m, const scatter_map& map, symmetric_matrix& K, std::vector<double> right,
                         linear_solver& solver, stopwatch& watch, bool watched, static_solution& result) {
  const std::vector<double> scale = scale_to_unit_diagonal(m, map, K);
  for (std::size_t i = 0; i < right.size(); ++i) right[i] *= scale[i];
  const progress report("factorisation", watched);
  report.begin(map.equations);
  const bool factorised = solver.factorise(K);
  watch.book("factorise");
  check_resistance(m, map, K, scale, solver, factorised, result.smallest_stiffness);
  if (result.smallest_stiffness < DOUBTFUL_STIFFNESS)
    result.notes.push_back("the stiffness is nearly singular: few digits of the result are sure");
  const std::vector<double> x = solve_refined(K, right, solver, result.residual);
  if (!(result.residual < RESIDUAL_LIMIT))
    throw model_error(m, fmt::format("the equations were not solved: the residual is {:.1e}", result.residual));
  for (std::size_t f = 0; f < map.equation.size(); ++f) {
    if (map.equation[f] == PRESCRIBED) continue;
    const auto i = static_cast<std::size_t>(map.equation[f]);
    result.displacement[f] = scale[i] * x[i];
  }
  watch.book("solve");
}

void append(std::vector<std::string>& notes, const std::vector<std::string>& more) {
  notes.insert(notes.end(), more.begin(), more.end());
}

}  // namespace

static_solution solve_static(const model& m, const step& s, library_model& library, linear_solver& solver,
                             stopwatch& watch, bool watched) {
  static_solution result;
  result.loads = gather_load_case(m, s);
  append(result.notes, hold_meaningless_freedoms(m, result.loads));
  result.load = assemble_loads(m, library, result.loads);
  watch.book("element calls");

  symmetric_matrix K;
  const scatter_map map = make_scatter_map(m, result.loads, K);
  result.equations = map.equations;
  result.entries = K.value.size();
  std::vector<double> right = by_equation(map, result.load);
  const progress report("element stiffnesses", watched);
  const double in_calls = assemble_stiffness(m, library, result.loads, map, K, right, report);
  append(result.notes, hold_free_directions(m, result.loads, result.load, map, K));
  watch.book("assembly");
  watch.move("assembly", "element calls", in_calls);

  result.displacement = result.loads.prescribed_value;
  if (map.equations > 0) factorise_and_solve(m, map, K, std::move(right), solver, watch, watched, result);

  result.reaction = prescribed_forces(m, library, result.loads, result.displacement);
  for (std::size_t f = 0; f < result.reaction.size(); ++f)
    if (result.loads.prescribed[f]) result.reaction[f] -= result.load[f];
  watch.book("results");
  return result;
}

}  // namespace solver
