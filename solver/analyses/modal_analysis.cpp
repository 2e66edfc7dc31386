// modal_analysis.cpp: two matrices of one pattern, scaled alike, and the pairs of both.
#include "analyses/modal_analysis.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

#include <fmt/format.h>

#include "analyses/finite_answers.h"
#include "elements/largest_translation.h"
#include "model/model_error.h"
#include "model/vectors.h"
#include "system/assembly.h"
#include "system/drilling_notes.h"
#include "system/eigen_pairs.h"
#include "system/mechanism.h"
#include "system/ranks.h"
#include "system/scaled_system.h"
#include "system/unresisted.h"

namespace solver {

namespace {

// Where a structure moves freely the stiffness is made definite by this share of its masses, in relation to what one
// element alone would swing with: far below the square of any elastic frequency, far above rounding.
constexpr double FREE_SHIFT = 1e-9;
constexpr double NO_MASS = 1e-14;  // an eigenvalue by the largest one: rounding, of a motion without mass
// A reciprocal factor of buckling by the largest entry of the geometric stiffness, both matrices being scaled:
// rounding.
constexpr double NO_BUCKLING = 1e-12;
constexpr double EQUAL = 1e-6;       // of a mode: translations that differ by no more are equal
constexpr double SHIFT_GROWTH = 10;  // until an unstable structure is definite
constexpr int MOST_SHIFTS = 30;

// What both analyses share: equations and scaled stiffness.
struct modal_system {
  load_case loads;
  scatter_map map;
  symmetric_matrix K, other;  // the other matrix: masses, or minus the geometric stiffness
  std::vector<double> scale;
};

void require_finite_matrix(const model& m, const step& s, const symmetric_matrix& A) {
  if (true_for_all(all_finite(A.value))) return;
  require_finite(m, s, std::numeric_limits<double>::quiet_NaN(), "a stiffness, mass or geometric stiffness");
}

modal_system assemble(const model& m, const step& s, library_model& library, const base_state& base,
                      std::vector<std::string>& notes) {
  modal_system system;
  system.loads = gather_load_case(m, s, base.after);
  library.plates().choose_ties(system.loads);
  for (const std::string& note : hold_meaningless_freedoms(m, s, system.loads)) notes.push_back(note);
  system.map = make_scatter_map(m, system.loads, system.K);
  note_constraints(system.map, notes);
  if (system.map.equations == 0) {
    throw model_error(m, s, "*STEP", "every degree of freedom is held: there is nothing to move");
  }
  system.other = system.K;
  std::vector<double> right(system.map.equations);
  const progress report("element stiffnesses");
  assemble_stiffness(m, library, system.loads, system.map, system.K, right, report, base.after);
  if (is_loaded(base)) add_arms(system.map, base.at_end->arms, system.K);
  const std::vector<double> no_load(system.loads.prescribed.size(), 0.0);
  for (const std::string& note :
       hold_free_directions(m, s, library.plates().flat_parts(), system.loads, no_load, system.map, system.K)) {
    notes.push_back(note);
  }
  system.scale = scale_to_unit_diagonal(m, s, system.map, system.K, first_order_diagonal(m, library, system.map));
  require_finite_matrix(m, s, system.K);
  return system;
}

using element_part = std::function<void(std::size_t element, element_matrix& matrix)>;

void assemble_other(const model& m, const step& s, library_model& library, question what, const element_part& part,
                    const std::vector<arm_stiffness>& arms, double sign, modal_system& system) {
  assemble_matrix(m, library, what, system.map, part, system.other, &s);
  add_arms(system.map, arms, system.other);
  for (double& value : system.other.value) value *= sign;
  scale_matrix(system.scale, system.other);
  require_finite_matrix(m, s, system.other);
}

std::vector<double> to_freedoms(const model& m, const modal_system& system, const std::vector<double>& x) {
  std::vector<double> scaled = x;
  for (std::size_t i = 0; i < scaled.size(); ++i) scaled[i] *= system.scale[i];
  std::vector<double> u = spread(system.map, scaled);
  double size = 0;
  for (std::size_t f = 0; f < u.size(); ++f) {
    if (f % DIRECTIONS < 3) size = std::fmax(size, std::fabs(u[f]));
  }
  if (size == 0) return u;
  const double first = u[largest_translation(m, u, EQUAL)];
  for (double& value : u) value /= std::copysign(size, first);
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
  for (const double value : diagonal_of(M)) sum += value;
  return sum / number_of(M.order());
}

// As many eigenvalues lie below a shift as K - shift M has negative pivots (Sylvester): none may be missing.
void count_below(const modal_system& system, const std::vector<double>& squares, linear_solver& solver,
                 std::vector<std::string>& notes) {
  if (squares.empty() || !(squares.back() > 0)) return;
  constexpr double BELOW = 1e-6;  // the largest square found is itself not below the shift, whatever its rounding
  const double shift = squares.back() * (1 - BELOW);
  const auto found = std::count_if(squares.begin(), squares.end(), [&](double square) { return square < shift; });
  if (!solver.factorise(shifted(system.K, system.other, -shift))) return;
  const auto below = signed_index(solver.negative_pivots());
  if (below > found) {
    notes.push_back(below - found == 1 ? std::string("1 mode below the last one was not found")
                                       : fmt::format("{} modes below the last one were not found", below - found));
  }
}

void check_mass(const model& m, const step& s, const symmetric_matrix& M) {
  if (!(mean_diagonal(M) > 0)) {
    throw model_error(m, s, "*FREQUENCY", "the structure has no mass: give a *DENSITY or a *MASS");
  }
}

bool stands(const symmetric_matrix& B, linear_solver& solver) {
  return solver.factorise(B) && smallest_stiffness(B, solver) > FREE_STIFFNESS;
}

// The smallest shift of a sequence that makes K + shift M definite; what is factorised last is that sum. Where the
// structure moves freely the first one does, where the base state is unstable it takes one above the largest -omega^2.
double definite_shift(const model& m, const step& s, const modal_system& system, const base_state& base,
                      linear_solver& solver, symmetric_matrix& B) {
  double shift = FREE_SHIFT / mean_diagonal(system.other);
  for (int k = 0; k < MOST_SHIFTS; ++k, shift *= SHIFT_GROWTH) {
    B = shifted(system.K, system.other, shift);
    if (!stands(B, solver)) {
      if (k == 0 && !is_loaded(base)) break;
      continue;
    }
    if (!is_loaded(base) || solver.negative_pivots() == 0) return shift;
  }
  throw model_error(m, s, "*FREQUENCY", "a motion meets neither stiffness nor mass");
}

// omega / 2 pi; with the sign of omega^2.
double frequency(double square) { return std::copysign(std::sqrt(std::fabs(square)), square) / (2 * PI); }

// So many that as many as the step asks for lie above its lowest frequency.
std::size_t modes_to_find(const modal_system& system, const step& s, linear_solver& solver) {
  const std::size_t wanted = subscript(s.modes);
  if (!(s.lowest_frequency > 0)) return wanted;
  const double omega = 2 * PI * s.lowest_frequency;
  if (!solver.factorise(shifted(system.K, system.other, -omega * omega))) return wanted;
  return std::min(wanted + subscript(solver.negative_pivots()), system.K.order());
}

void keep_within_bounds(const step& s, modal_solution& found) {
  const std::size_t all = found.modes.size();
  const auto outside = [&](const mode& one) {
    return one.value < s.lowest_frequency || one.value > s.highest_frequency;
  };
  found.modes.erase(std::remove_if(found.modes.begin(), found.modes.end(), outside), found.modes.end());
  const std::size_t dropped = all - found.modes.size();
  if (found.modes.size() > subscript(s.modes)) found.modes.resize(subscript(s.modes));
  if (dropped == 0) return;
  found.notes.push_back(found.modes.empty()
                            ? std::string("no frequency that was found lies within the bounds of the *FREQUENCY")
                            : fmt::format("{} of the frequencies found {} outside of the bounds of the *FREQUENCY and "
                                          "{} not given",
                                          dropped, dropped == 1 ? "lies" : "lie", dropped == 1 ? "is" : "are"));
}

void tell_what_is_unstable(const model& m, const base_state& base, const modal_solution& found,
                           std::vector<std::string>& notes) {
  const auto growing =
      std::count_if(found.modes.begin(), found.modes.end(), [](const mode& one) { return one.value < 0; });
  if (growing == 0) return;
  notes.push_back(
      fmt::format("{} is above a buckling load: it is not stable. {} of the modes {}; for them "
                  "-sqrt(-omega^2) / 2 pi is shown as a negative frequency",
                  name_of(m, base), growing, growing == 1 ? "grows" : "grow"));
}

}  // namespace

modal_solution solve_frequencies(const model& m, const step& s, library_model& library, linear_solver& solver,
                                 stopwatch& watch, const base_state& base) {
  stand_on(m, s, library, base);
  modal_solution result;
  modal_system system = assemble(m, s, library, base, result.notes);
  for (const std::string& note : note_drilling(m, library.plates().flat_parts(), system.loads)) {
    result.notes.push_back(note);
  }
  assemble_other(
      m, s, library, question::MASS, [&](std::size_t e, element_matrix& M) { element_mass(m, s, library, e, M); }, {},
      1, system);
  check_mass(m, s, system.other);
  result.equations = system.map.equations;
  watch.lap("assembly");

  const std::size_t sought = modes_to_find(system, s, solver);
  double shift = 0;
  symmetric_matrix B = system.K;
  const bool held = stands(B, solver);
  const bool unstable = is_loaded(base) && solver.negative_pivots() > 0;
  if (!held || unstable) shift = definite_shift(m, s, system, base, solver, B);
  if (!held) result.notes.emplace_back("the structure can move freely: its first modes have the frequency 0");
  const eigen_pairs pairs = largest_pairs(system.other, B, solver, sought);
  watch.lap("modes");
  // What the shift leaves of a free motion is its rounding; a shift that had to grow is no longer far below the
  // squares.
  const bool grown = shift > FREE_SHIFT / mean_diagonal(system.other);
  constexpr double OF_SHIFT = 1e-4, OF_GROWN_SHIFT = 1e-9;
  const double nothing = (grown ? OF_GROWN_SHIFT : OF_SHIFT) * shift;
  std::vector<double> squares;
  for (std::size_t i = 0; i < pairs.value.size(); ++i) {
    if (!(pairs.value[i] > NO_MASS * pairs.value.front())) break;
    squares.push_back(1 / pairs.value[i] - shift);
    const bool free = grown ? std::fabs(squares.back()) < nothing : squares.back() < nothing;
    result.modes.push_back({free ? 0 : frequency(squares.back()), to_freedoms(m, system, pairs.vector[i])});
  }
  if (result.modes.size() < subscript(s.modes)) {
    result.notes.push_back(fmt::format("{} frequencies are asked for: the model has {}, all of them are given", s.modes,
                                       result.modes.size()));
  }
  tell_what_is_unstable(m, base, result, result.notes);
  count_below(system, squares, solver, result.notes);
  keep_within_bounds(s, result);
  std::vector<const std::vector<double>*> shapes;  // of the modes that are given
  for (const mode& one : result.modes) shapes.push_back(&one.displacement);
  result.masses = find_modal_masses(m, s, library, system.loads, shapes);
  require_finite(m, s, result);
  watch.lap("check");
  return result;
}

modal_solution solve_buckling(const model& m, const step& s, library_model& library, linear_solver& solver,
                              stopwatch& watch, static_solution& state, const base_state& base) {
  state = solve_static(m, s, library, solver, watch, false, base);
  modal_solution result;
  result.notes = state.notes;
  std::vector<std::string> repeated;  // notes that the static analysis has given already
  modal_system system = assemble(m, s, library, base, repeated);
  // The forces of the loads take the place of those of the base state, which are in the stiffness now.
  library.second_order(false);
  library.clear_state();
  keep_state(m, library, state);
  assemble_other(
      m, s, library, question::GEOMETRIC_STIFFNESS,
      [&](std::size_t e, element_matrix& G) { library.geometric_stiffness(e, G); }, state.arms, -1, system);
  result.equations = system.map.equations;
  watch.lap("assembly");
  check_resistance(m, s, system.map, system.K, system.scale, solver, solver.factorise(system.K));
  const eigen_pairs pairs = largest_pairs(system.other, system.K, solver, subscript(s.modes));
  watch.lap("modes");
  double scale = 0;
  for (const double value : system.other.value) scale = std::fmax(scale, std::fabs(value));
  scale = largest_over_ranks(scale);
  std::vector<double> factors;
  for (std::size_t i = 0; i < pairs.value.size() && pairs.value[i] > NO_BUCKLING * scale; ++i) {
    factors.push_back(1 / pairs.value[i]);
    result.modes.push_back({factors.back(), to_freedoms(m, system, pairs.vector[i])});
  }
  if (scale == 0) {
    result.notes.emplace_back("the loads give no axial forces, membrane forces or stresses: nothing can buckle");
  } else if (result.modes.empty()) {
    result.notes.emplace_back("the loads have no buckling factor above 0");
  } else if (result.modes.size() < subscript(s.modes)) {
    result.notes.push_back(
        fmt::format("{} buckling factors are asked for: the loads have {} above 0, all of them are given", s.modes,
                    result.modes.size()));
  }
  require_finite(m, s, result);
  count_below(system, factors, solver, result.notes);
  watch.lap("check");
  return result;
}

}  // namespace solver
