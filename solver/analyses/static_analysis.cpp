// static_analysis.cpp: loads, numbering, assembly, factorisation, solution, reactions.
//
// The unknowns are scaled to a unit diagonal first: membrane, bending and drilling stiffnesses of one shell lie many
// powers of ten apart, and pivots and residuals mean something only on one scale.
#include "analyses/static_analysis.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <fmt/format.h>

#include "analyses/balance.h"
#include "analyses/cable_equilibrium.h"
#include "analyses/finite_answers.h"
#include "model/long_vectors.h"
#include "model/model_error.h"
#include "system/assembly.h"
#include "system/drilling_notes.h"
#include "system/mechanism.h"
#include "system/ranks.h"
#include "system/scaled_system.h"
#include "system/unresisted.h"

namespace solver {

namespace {

constexpr double RESIDUAL_LIMIT = 1e-11;  // a backward error above it is no rounding
// Of the scaled matrix: eleven of sixteen digits are lost below it.
constexpr double DOUBTFUL_STIFFNESS = 1e-11;
constexpr double SETTLED = 1e-10;  // change of a translation from one iteration to the next, by the largest

// Solves for two right sides in one pass over the factors, which is what a solution takes its time for.
void solve_both(linear_solver& solver, std::vector<double>& first, std::vector<double>& second) {
  const auto order = signed_index(first.size());
  std::vector<double> both = first;
  both.insert(both.end(), second.begin(), second.end());
  solver.solve(both);
  std::copy(both.begin(), both.begin() + order, first.begin());
  std::copy(both.begin() + order, both.end(), second.begin());
}

struct refined {
  std::vector<double> x;
  double residual = 0;
  double smallest_stiffness = 0;
};

// Solves and corrects once with the residual, which brings it down to rounding. The two steps of the iteration for the
// smallest stiffness go along with both solutions.
refined solve_refined(const symmetric_matrix& K, const std::vector<double>& b, linear_solver& solver) {
  refined result;
  const ticking_clock clock("solution");
  result.x = b;
  std::vector<double> softest = start_of_iteration(K.order());
  solve_both(solver, result.x, softest);
  normalise(softest);
  std::vector<double> correction = residual(K, result.x, b);
  solve_both(solver, correction, softest);
  normalise(softest);
  add_scaled(result.x, 1, correction);
  result.residual = backward_error(K, result.x, b);
  result.smallest_stiffness = stiffness_along(K, softest);
  return result;
}

void factorise_and_solve(const model& m, const step& s, library_model& library, const scatter_map& map,
                         symmetric_matrix& K, std::vector<double> right, linear_solver& solver, stopwatch& watch,
                         const base_state& base, static_solution& result) {
  const std::vector<double> scale = scale_to_unit_diagonal(m, s, map, K, first_order_diagonal(m, library, map));
  for (std::size_t i = 0; i < right.size(); ++i) right[i] *= scale[i];
  if (solver.asks_for_rigid_motions()) solver.take_rigid_motions(rigid_body_motions(m, map, scale));
  const bool factorised = solver.factorise(K);
  watch.lap("factorise");
  if (s.p_delta && factorised && solver.negative_pivots() > 0) {
    throw model_error(m, s, "*STEP", "the loads are above a buckling load: there is no stable equilibrium near by");
  }
  if (is_loaded(base) && factorised && solver.negative_pivots() > 0) {
    throw model_error(m, s, "*STEP",
                      name_of(m, base) + " is above a buckling load: it is not stable, and nothing can stand on it");
  }
  const refined solved = factorised ? solve_refined(K, right, solver) : refined{};
  require_resistance(m, s, map, K, scale, solver, solved.smallest_stiffness);
  result.smallest_stiffness = solved.smallest_stiffness;
  result.residual = solved.residual;
  if (result.smallest_stiffness < DOUBTFUL_STIFFNESS) {
    result.notes.push_back("the stiffness is nearly singular: few digits of the result are sure");
  }
  std::vector<double> x = solved.x;
  if (!all_finite(x)) require_finite(m, s, std::numeric_limits<double>::quiet_NaN(), "the solution");
  require_finite(m, s, result.residual, "the sum of the forces at the nodes");
  if (!(result.residual < RESIDUAL_LIMIT)) {
    throw model_error(m, fmt::format("the equations were not solved: the residual is {:.1e}", result.residual));
  }
  for (std::size_t i = 0; i < x.size(); ++i) x[i] *= scale[i];
  expand(map, x, result.displacement);
  watch.lap("solve");
}

void append(std::vector<std::string>& notes, const std::vector<std::string>& more) {
  notes.insert(notes.end(), more.begin(), more.end());
}

// `state`: the step whose forces are in the stiffness; null: none. `arms`: those forces in rigid arms.
static_solution solve_once(const model& m, const step& s, library_model& library, linear_solver& solver,
                           stopwatch& watch, bool watched, const base_state& base, const step* state,
                           const std::vector<arm_stiffness>& arms) {
  static_solution result;
  result.loads = gather_load_case(m, s, base.after);
  library.plates().choose_ties(result.loads);
  append(result.notes, hold_meaningless_freedoms(m, s, result.loads));
  result.load = assemble_loads(m, s, library, result.loads);
  require_finite(m, s, result);
  watch.lap("element calls");

  symmetric_matrix K;
  scatter_map map = make_scatter_map(m, result.loads, K);
  note_constraints(map, result.notes);
  result.equations = map.equations;
  result.entries = entries_of(K);
  std::vector<double> right = by_equation(map, result.load);
  const progress report("element stiffnesses", watched);
  const double in_calls = assemble_stiffness(m, library, result.loads, map, K, right, report, state);
  add_arms(map, arms, K, right);
  map.position = {};  // some megabytes for the factors
  append(result.notes, hold_free_directions(m, s, library.plates().flat_parts(), result.loads, result.load, map, K));
  watch.lap("assembly");
  watch.move("assembly", "element calls", in_calls);

  result.displacement = result.loads.prescribed_value;
  if (map.equations > 0) {
    factorise_and_solve(m, s, library, map, K, std::move(right), solver, watch, base, result);
  } else {
    expand(map, {}, result.displacement);
  }

  std::vector<double> left = prescribed_forces(m, library, result.loads, result.displacement);
  add_moments_of_arms(arms, result.displacement, left);
  add_scaled(left, -1, result.load);
  take_forces(map.constraints, left, result);
  result.turned_arms = arms;
  require_finite(m, s, result);
  watch.lap("results");
  return result;
}

// The largest change of a translation, by the largest translation; rotations follow them.
double change(const std::vector<double>& before, const std::vector<double>& now) {
  double difference = 0, size = 0;
  for (std::size_t f = 0; f < now.size(); ++f) {
    if (f % DIRECTIONS >= 3) continue;
    difference = std::fmax(difference, std::fabs(now[f] - before[f]));
    size = std::fmax(size, std::fabs(now[f]));
  }
  return size > 0 ? difference / size : 0;
}

// Axial and membrane forces of one solution make the geometric stiffness of the next, until they settle.
static_solution iterate_p_delta(const model& m, const step& s, library_model& library, linear_solver& solver,
                                stopwatch& watch, bool watched) {
  constexpr int MOST_ITERATIONS = 60;
  static_solution result = solve_once(m, s, library, solver, watch, watched, {}, nullptr, {});
  for (int iteration = 1; iteration <= MOST_ITERATIONS; ++iteration) {
    keep_state(m, library, result);
    library.second_order(true);
    static_solution next = solve_once(m, s, library, solver, watch, watched, {}, &s, result.arms);
    const double moved = change(result.displacement, next.displacement);
    result = std::move(next);
    if (!(moved <= SETTLED)) continue;
    result.remarks.push_back(fmt::format("P-delta settled in {} iterations", iteration));
    return result;
  }
  throw model_error(m, s, "*STEP", fmt::format("P-delta did not settle in {} iterations", MOST_ITERATIONS));
}

}  // namespace

void take_forces(const resolved_constraints& constraints, const std::vector<double>& out_of_balance,
                 static_solution& result) {
  support_forces split = split_forces(constraints, result.loads, out_of_balance);
  result.multiplier = condition_multipliers(constraints, result.loads, out_of_balance);
  result.arms = stiffness_of_arms(result.loads.conditions, result.multiplier);
  result.reaction = std::move(split.reaction);
  result.constraint = std::move(split.constraint);
}

void note_constraints(const scatter_map& map, std::vector<std::string>& notes) {
  if (!map.constraints.note.empty()) notes.push_back(map.constraints.note);
}

void keep_state(const model& m, library_model& library, const static_solution& solution) {
  fail_together([&] {
    for (std::size_t e = 0; e < m.elements.size(); ++e) {
      if (!is_own(m, e)) continue;
      library.keep_state(e, gather(m.elements[e], solution.displacement), solution.loads.element[e]);
    }
  });
}

static static_solution solve_by_kind(const model& m, const step& s, library_model& library, linear_solver& solver,
                                     stopwatch& watch, bool watched, const base_state& base) {
  stand_on(m, s, library, base);
  if (is_loaded(base)) return solve_once(m, s, library, solver, watch, watched, base, base.after, base.at_end->arms);
  if (has_cables(m)) return solve_with_cables(m, s, library, solver, watch);
  if (!s.p_delta) return solve_once(m, s, library, solver, watch, watched, {}, nullptr, {});
  library.clear_state();
  return iterate_p_delta(m, s, library, solver, watch, watched);
}

static_solution solve_static(const model& m, const step& s, library_model& library, linear_solver& solver,
                             stopwatch& watch, bool watched, const base_state& base) {
  static_solution result = solve_by_kind(m, s, library, solver, watch, watched, base);
  append(result.notes, note_drilling(m, library.plates().flat_parts(), result.loads));
  const std::string imbalance = note_imbalance(m, s, base, result);
  if (!imbalance.empty()) result.notes.push_back(imbalance);
  return result;
}

}  // namespace solver
