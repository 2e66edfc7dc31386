// modal_analysis.cpp: two matrices of one pattern, scaled alike, and the pairs of both.
#include "analyses/modal_analysis.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

#include <fmt/format.h>

#include "analyses/finite_answers.h"
#include "model/model_error.h"
#include "system/assembly.h"
#include "system/eigen_pairs.h"
#include "system/mechanism.h"
#include "system/scaled_system.h"
#include "system/unresisted.h"

namespace solver {

namespace {

constexpr double PI = 3.14159265358979323846;

// Where a structure moves freely the stiffness is made definite by this share of its masses, in relation to what one
// element alone would swing with: far below the square of any elastic frequency, far above rounding.
constexpr double FREE_SHIFT = 1e-9;

// What both analyses share: equations and scaled stiffness.
struct modal_system {
  load_case loads;
  scatter_map map;
  symmetric_matrix K, other;  // the other matrix: masses, or minus the geometric stiffness
  std::vector<double> scale;
};

using element_part = std::function<void(std::size_t element, element_matrix& matrix)>;

modal_system assemble(const model& m, const step& s, library_model& library, const element_part& other, double sign,
                      std::vector<std::string>& notes) {
  modal_system system;
  system.loads = gather_load_case(m, s);
  for (const std::string& note : hold_meaningless_freedoms(m, system.loads)) notes.push_back(note);
  system.map = make_scatter_map(m, system.loads, system.K);
  if (system.map.equations == 0) throw model_error(m, s, "*STEP", "every freedom is held: there is nothing to move");
  system.other = system.K;
  std::vector<double> right(system.map.equations);
  const progress silent("", false);
  assemble_stiffness(m, library, system.loads, system.map, system.K, right, silent);
  const std::vector<double> no_load(system.loads.prescribed.size(), 0.0);
  for (const std::string& note : hold_free_directions(m, system.loads, no_load, system.map, system.K))
    notes.push_back(note);
  assemble_matrix(m, system.map, other, system.other);
  for (double& value : system.other.value) value *= sign;
  system.scale = scale_to_unit_diagonal(m, system.map, system.K);
  scale_matrix(system.scale, system.other);
  if (!all_finite(system.K.value) || !all_finite(system.other.value))
    require_finite(m, s, std::numeric_limits<double>::quiet_NaN(), "a stiffness, mass or geometric stiffness");
  return system;
}

std::vector<double> to_freedoms(const modal_system& system, const std::vector<double>& x) {
  std::vector<double> u(system.map.equation.size(), 0.0);
  double size = 0;
  for (std::size_t f = 0; f < u.size(); ++f) {
    if (system.map.equation[f] == PRESCRIBED) continue;
    const auto i = static_cast<std::size_t>(system.map.equation[f]);
    u[f] = system.scale[i] * x[i];
    if (f % DIRECTIONS < 3 && std::fabs(u[f]) > std::fabs(size)) size = u[f];
  }
  if (size == 0) return u;
  for (double& value : u) value /= size;
  return u;
}

// B := K + shift M.
symmetric_matrix shifted(const symmetric_matrix& K, const symmetric_matrix& M, double shift) {
  symmetric_matrix B = K;
  for (std::size_t p = 0; p < B.value.size(); ++p) B.value[p] += shift * M.value[p];
  return B;
}

double mean_diagonal(const symmetric_matrix& M) {
  double sum = 0;
  for (std::size_t j = 0; j < M.order(); ++j) sum += M.value[static_cast<std::size_t>(M.column_start[j])];
  return sum / static_cast<double>(M.order());
}

// As many eigenvalues lie below a shift as K - shift M has negative pivots (Sylvester): none may be missing.
void count_below(const modal_system& system, const std::vector<double>& squares, linear_solver& solver,
                 std::vector<std::string>& notes) {
  if (squares.empty() || !(squares.back() > 0)) return;
  const double shift = squares.back() * (1 - 1e-6);
  const auto found = std::count_if(squares.begin(), squares.end(), [&](double square) { return square < shift; });
  if (!solver.factorise(shifted(system.K, system.other, -shift))) return;
  const auto below = static_cast<std::ptrdiff_t>(solver.negative_pivots());
  if (below > found) notes.push_back(fmt::format("{} modes below the last one were not found", below - found));
}

void check_mass(const model& m, const step& s, const symmetric_matrix& M) {
  if (!(mean_diagonal(M) > 0)) throw model_error(m, s, "*FREQUENCY", "the structure has no mass: give a *DENSITY");
}

}  // namespace

modal_solution solve_frequencies(const model& m, const step& s, library_model& library, linear_solver& solver,
                                 stopwatch& watch) {
  library.second_order(false);
  modal_solution result;
  const modal_system system = assemble(
      m, s, library, [&](std::size_t e, element_matrix& M) { library.mass(e, M); }, 1, result.notes);
  check_mass(m, s, system.other);
  result.equations = system.map.equations;
  watch.book("assembly");

  double shift = 0;
  symmetric_matrix B = system.K;
  if (!solver.factorise(B) || !(smallest_stiffness(B, solver) > FREE_STIFFNESS)) {
    shift = FREE_SHIFT / mean_diagonal(system.other);
    B = shifted(system.K, system.other, shift);
    if (!solver.factorise(B) || !(smallest_stiffness(B, solver) > FREE_STIFFNESS))
      throw model_error(m, s, "*FREQUENCY", "a motion meets neither stiffness nor mass");
    result.notes.push_back("the structure can move freely: its first modes have the frequency 0");
  }
  const eigen_pairs pairs = largest_pairs(system.other, B, solver, static_cast<std::size_t>(s.modes));
  watch.book("modes");
  std::vector<double> squares;
  for (std::size_t i = 0; i < pairs.value.size(); ++i) {
    if (!(pairs.value[i] > 1e-14 * pairs.value.front())) break;  // a motion without mass
    squares.push_back(1 / pairs.value[i] - shift);
    // What the shift leaves of a free motion is its rounding.
    const bool free = squares.back() < 1e-4 * shift;
    result.modes.push_back({free ? 0 : std::sqrt(squares.back()) / (2 * PI), to_freedoms(system, pairs.vector[i])});
  }
  if (result.modes.size() < static_cast<std::size_t>(s.modes))
    result.notes.push_back(fmt::format("the structure has {} modes with mass", result.modes.size()));
  require_finite(m, s, result);
  count_below(system, squares, solver, result.notes);
  watch.book("check");
  return result;
}

modal_solution solve_buckling(const model& m, const step& s, library_model& library, linear_solver& solver,
                              stopwatch& watch, static_solution& state) {
  library.second_order(false);
  library.clear_state();
  state = solve_static(m, s, library, solver, watch);
  keep_state(m, library, state);
  modal_solution result;
  const modal_system system = assemble(
      m, s, library, [&](std::size_t e, element_matrix& G) { library.geometric_stiffness(e, G); }, -1, result.notes);
  result.equations = system.map.equations;
  watch.book("assembly");
  check_resistance(m, system.map, system.K, system.scale, solver, solver.factorise(system.K));
  const eigen_pairs pairs = largest_pairs(system.other, system.K, solver, static_cast<std::size_t>(s.modes));
  watch.book("modes");
  double scale = 0;
  for (const double value : system.other.value) scale = std::fmax(scale, std::fabs(value));
  std::vector<double> factors;
  for (std::size_t i = 0; i < pairs.value.size() && pairs.value[i] > 1e-12 * scale; ++i) {
    factors.push_back(1 / pairs.value[i]);
    result.modes.push_back({factors.back(), to_freedoms(system, pairs.vector[i])});
  }
  if (scale == 0)
    result.notes.emplace_back("the loads give no axial forces, membrane forces or stresses: nothing can buckle");
  else if (result.modes.size() < static_cast<std::size_t>(s.modes))
    result.notes.push_back(fmt::format("the loads have {} positive buckling factors", result.modes.size()));
  require_finite(m, s, result);
  count_below(system, factors, solver, result.notes);
  watch.book("check");
  return result;
}

}  // namespace solver
