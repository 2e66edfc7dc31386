// cable_equilibrium.cpp: damped Newton iteration.
//
// The load of a cable acts inside it; half of it is reported as the load of each node, and the force that the node
// exerts grows by as much, so that applied loads and reactions can be summed.
#include "analyses/cable_equilibrium.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

#include "analyses/finite_answers.h"
#include "model/model_error.h"
#include "system/assembly.h"
#include "system/ranks.h"
#include "system/scaled_system.h"
#include "system/unresisted.h"

namespace solver {

namespace {

constexpr int MOST_HALVINGS = 40;
constexpr double BALANCED = 1e-11;  // forces out of balance by the forces that balance, both scaled

// The state of the iteration: displacements by degree of freedom, the forces that hold the elements there, and their
// sizes.
struct trial {
  std::vector<double> displacement, internal, size;
};

void add_forces(const model& m, library_model& library, std::size_t e, trial& t) {
  const element& elem = m.elements[e];
  element_vector f{};
  if (is_cable(m, elem)) {
    library.cables().forces(e, f);
  } else {
    element_matrix K;
    library.stiffness(e, K);
    const element_vector u = gather(elem, t.displacement);
    for (int i = 1; i <= element_freedoms(elem); ++i) {
      for (int j = 1; j <= element_freedoms(elem); ++j) f(i) += K(i, j) * u(j);
    }
  }
  for (int i = 0; i < element_freedoms(elem); ++i) {
    t.internal[element_freedom(elem, i)] += f(i + 1);
    t.size[element_freedom(elem, i)] += std::fabs(f(i + 1));
  }
}

trial evaluate(const model& m, library_model& library, std::vector<double> displacement) {
  trial t;
  t.internal.assign(displacement.size(), 0.0);
  t.size.assign(displacement.size(), 0.0);
  t.displacement = std::move(displacement);
  library.cables().move_nodes(t.displacement);
  fail_together([&] {
    for (std::size_t e = 0; e < m.elements.size(); ++e) {
      if (is_own(m, e)) add_forces(m, library, e, t);
    }
  });
  sum_over_ranks(t.internal);
  sum_over_ranks(t.size);
  return t;
}

// Scaled forces out of balance, by equation.
std::vector<double> unbalanced(const scatter_map& map, const std::vector<double>& load, const trial& t,
                               const std::vector<double>& scale) {
  std::vector<double> r = by_equation(map, load);
  const std::vector<double> internal = by_equation(map, t.internal);
  for (std::size_t i = 0; i < r.size(); ++i) r[i] = scale[i] * (r[i] - internal[i]);
  return r;
}

double force_scale(const scatter_map& map, const std::vector<double>& load, const trial& t,
                   const std::vector<double>& scale) {
  std::vector<double> whole = sizes_by_equation(map, t.size);
  const std::vector<double> applied = by_equation(map, load);
  for (std::size_t i = 0; i < whole.size(); ++i) whole[i] = scale[i] * (whole[i] + std::fabs(applied[i]));
  return norm(whole);
}

std::vector<double> moved(const scatter_map& map, const std::vector<double>& from, const std::vector<double>& scale,
                          const std::vector<double>& step, double share) {
  std::vector<double> change = step, u = from;
  for (std::size_t i = 0; i < change.size(); ++i) change[i] *= share * scale[i];
  add_scaled(u, 1, spread(map, change));
  return u;
}

// The decrease that a step must bring, by the one that its direction promises (Armijo 1966).
constexpr double SUFFICIENT = 1e-4;

// Shortens the step until the forces out of balance shrink. A trial in which a cable fails counts as one that does not.
bool search(const model& m, library_model& library, const scatter_map& map, const std::vector<double>& load,
            const std::vector<double>& scale, const std::vector<double>& step, trial& now) {
  const double before = norm(unbalanced(map, load, now, scale));
  double share = 1;
  for (int halving = 0; halving < MOST_HALVINGS; ++halving, share /= 2) {
    try {
      trial next = evaluate(m, library, moved(map, now.displacement, scale, step, share));
      if (!(norm(unbalanced(map, load, next, scale)) < (1 - SUFFICIENT * share) * before)) continue;
      now = std::move(next);
      return true;
    } catch (const deck_error&) {
      continue;
    }
  }
  library.cables().move_nodes(now.displacement);
  return false;
}

void iterate(const model& m, const step& s, library_model& library, linear_solver& solver, const scatter_map& map,
             const symmetric_matrix& pattern, static_solution& result, trial& now) {
  std::vector<double> ignored(map.equations);
  const progress silent("", false);  // one of many iterations
  const progress report("cables");
  constexpr int MOST_ITERATIONS = 200;
  for (int iteration = 1; iteration <= MOST_ITERATIONS; ++iteration) {
    symmetric_matrix K = pattern;
    assemble_stiffness(m, library, result.loads, map, K, ignored, silent);
    hold_free_directions(m, s, library.plates().flat_parts(), result.loads, result.load, map, K);
    const std::vector<double> scale = scale_to_unit_diagonal(m, s, map, K);
    const std::vector<double> r = unbalanced(map, result.load, now, scale);
    const double whole = force_scale(map, result.load, now, scale);
    require_finite(m, s, whole, "the sum of the forces at the nodes");
    result.residual = whole > 0 ? norm(r) / whole : 0;
    report.at(fmt::format("iteration {}, {:.1e} out of balance", iteration, result.residual));
    result.smallest_stiffness = check_resistance(m, s, map, K, scale, solver, solver.factorise(K));
    if (result.residual <= BALANCED) {
      result.remarks.push_back(fmt::format("cables: equilibrium in {} iterations", iteration - 1));
      return;
    }
    std::vector<double> step = r;
    solver.solve(step);
    // Near the end rounding alone may keep the forces from shrinking further.
    if (!search(m, library, map, result.load, scale, step, now)) {
      if (result.residual <= 1e3 * BALANCED) return;
      throw model_error(m, s, "*STEP", "cables: no step brings the forces nearer to balance");
    }
  }
  throw model_error(m, s, "*STEP", fmt::format("cables: no equilibrium in {} iterations", MOST_ITERATIONS));
}

void share_cable_loads(const model& m, static_solution& result) {
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    const element& elem = m.elements[e];
    if (!is_cable(m, elem)) continue;
    const distributed_load& load = result.loads.element[e];
    for (const int n : elem.nodes) {
      for (std::size_t i = 0; i < 3; ++i) {
        const double per_length = load.line[i] + load.body[i] * frame_section_of(m, elem).area;
        result.load[freedom(n, i)] += per_length * cable_length(m, elem) / 2;
      }
    }
  }
}

}  // namespace

bool has_cables(const model& m) {
  return std::any_of(m.elements.begin(), m.elements.end(), [&](const element& e) { return is_cable(m, e); });
}

static_solution solve_with_cables(const model& m, const step& s, library_model& library, linear_solver& solver,
                                  stopwatch& watch) {
  static_solution result;
  result.loads = gather_load_case(m, s);
  library.plates().choose_ties(result.loads);
  result.notes = hold_meaningless_freedoms(m, s, result.loads);
  result.load = assemble_loads(m, s, library, result.loads);
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    if (is_own(m, e) && is_cable(m, m.elements[e])) library.cables().load(e, result.loads.element[e]);
  }
  watch.lap("element calls");
  symmetric_matrix pattern;
  const scatter_map map = make_scatter_map(m, result.loads, pattern);
  result.equations = map.equations;
  result.entries = entries_of(pattern);

  note_constraints(map, result.notes);
  std::vector<double> start = result.loads.prescribed_value;
  expand(map, std::vector<double>(map.equations, 0.0), start);
  trial now = evaluate(m, library, std::move(start));
  if (map.equations > 0) iterate(m, s, library, solver, map, pattern, result, now);
  result.displacement = now.displacement;
  std::vector<double> left = now.internal;
  add_scaled(left, -1, result.load);
  take_forces(map.constraints, left, result);
  share_cable_loads(m, result);
  require_finite(m, s, result);
  result.remarks.emplace_back("cables: half of a cable's load is reported at each node, where the deck puts the node");
  watch.lap("solve");
  return result;
}

}  // namespace solver
