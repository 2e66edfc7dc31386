// hinged_beam.cpp: the flow rule at the ends of one beam, in double precision. With the gradients n of the active yield
// equations, the columns of N, and the stiffness K of the beam:
//
//     rates       z = (N^T K N)^-1 N^T (K du + dq),    df = K du + dq - K N z       dq: fixed-end forces
//     stiffness   K - K N (N^T K N)^-1 N^T K
//     return      f := f - K N (N^T K N)^-1 (phi(f) - 1), until phi = 1 (cutting planes: Simo and Ortiz, 1985)
#include "pushover/hinged_beam.h"

#include <cmath>
#include <limits>

#include "finites/fields.h"
#include "system/full_matrices.h"

namespace solver {

namespace {

using gradient_matrix = Eigen::Matrix<double, 12, Eigen::Dynamic>;
using small_vector = Eigen::VectorXd;
using small_matrix = Eigen::MatrixXd;
using vector_12 = Eigen::Matrix<double, 12, 1>;

Eigen::Map<const Eigen::Matrix<double, 12, 12>> view(const MATRIX<12, 12>& K) {
  return Eigen::Map<const Eigen::Matrix<double, 12, 12>>(K.V);
}
Eigen::Map<vector_12> view(end_forces& f) { return Eigen::Map<vector_12>(f.data()); }
Eigen::Map<const vector_12> view(const end_forces& f) { return Eigen::Map<const vector_12>(f.data()); }

std::vector<flowing_equation> active_equations(const beam_state& state) {
  std::vector<flowing_equation> list;
  for (std::size_t end = 0; end < 2; ++end) {
    for (const int equation : state.active[end]) {
      if (equation > 0) list.push_back({end, equation, 0});
    }
  }
  return list;
}

gradient_matrix gradients(const hinge_model& h, const beam_state& state, const std::vector<flowing_equation>& list) {
  gradient_matrix N = gradient_matrix::Zero(12, signed_index(list.size()));
  for (std::size_t k = 0; k < list.size(); ++k) {
    const std::size_t end = list[k].end;
    const hinge_forces n = yield_gradient(h, list[k].equation, forces_of_end(state.forces, end));
    const auto column = signed_index(k);
    N(signed_index(HINGE_ROWS[end][0]), column) = n.P;
    N(signed_index(HINGE_ROWS[end][1]), column) = n.My;
    N(signed_index(HINGE_ROWS[end][2]), column) = n.Mz;
  }
  return N;
}

// A diagonal of 0 stays 0 on the unit diagonal, without a division by it. Pivots below DEPENDENT are rounding: two
// equations flow in one and the same motion.
constexpr double LEAST_DIAGONAL = 1e-300, DEPENDENT = 1e-10;

// B^-1 b on a unit diagonal; the shortest solution where equations flow in one and the same motion.
template <class RIGHT>
RIGHT multipliers(const small_matrix& B, const RIGHT& b) {
  const small_vector scale = B.diagonal().cwiseMax(LEAST_DIAGONAL).cwiseSqrt().cwiseInverse();
  const small_matrix scaled = scale.asDiagonal() * B * scale.asDiagonal();
  return scale.asDiagonal() * shortest_solution(scaled, scale.asDiagonal() * b, DEPENDENT);
}

}  // namespace

end_forces product(const MATRIX<12, 12>& K, const end_forces& u) {
  end_forces f{};
  view(f).noalias() = view(K) * view(u);
  return f;
}

bool activate(beam_state& state, std::size_t end, int equation) {
  for (int& place : state.active[end]) {
    if (place != 0) continue;
    place = equation;
    return true;
  }
  return false;
}

void deactivate(beam_state& state, std::size_t end, int equation) {
  std::array<int, MOST_ACTIVE>& list = state.active[end];
  if (list[0] == equation) {
    list[0] = list[1];
  } else if (list[1] != equation) {
    return;
  }
  list[1] = 0;
}

bool return_to_surface(const hinge_model& h, const MATRIX<12, 12>& K, beam_state& state) {
  constexpr int MOST_STEPS = 50;
  // Of the value less 1: zero except for the last digits; as near as rounding lets it; and near enough to count as on
  // the surface when the steps are used up.
  constexpr double HOME = 1e-14, NEAR_HOME = 1e-12, ON_SURFACE = 1e-10;
  const std::vector<flowing_equation> list = active_equations(state);
  if (list.empty()) return true;
  double before = std::numeric_limits<double>::infinity();
  for (int step = 0; step < MOST_STEPS; ++step) {
    small_vector excess(signed_index(list.size()));
    double largest = 0;
    for (std::size_t k = 0; k < list.size(); ++k) {
      const double value = yield_value(h, list[k].equation, forces_of_end(state.forces, list[k].end)) - 1;
      excess(signed_index(k)) = value;
      if (!std::isfinite(value)) return false;
      largest = std::fmax(largest, std::fabs(value));
    }
    // Rounding keeps the value from 1 by a few units; then the steps stop to shrink it.
    if (largest <= HOME || (largest < NEAR_HOME && largest >= before)) return true;
    before = largest;
    const gradient_matrix N = gradients(h, state, list);
    const gradient_matrix KN = view(K).lazyProduct(N);
    const vector_12 flow = N * multipliers<small_vector>(N.transpose().lazyProduct(KN), excess);
    view(state.flow) += flow;
    view(state.forces).noalias() -= view(K) * flow;
  }
  return before < ON_SURFACE;
}

MATRIX<12, 12> plastic_stiffness(const hinge_model* h, const MATRIX<12, 12>& K, const beam_state& state) {
  MATRIX<12, 12> plastic = K;
  const std::vector<flowing_equation> list = active_equations(state);
  if (h == nullptr || list.empty()) return plastic;
  const gradient_matrix N = gradients(*h, state, list);
  const gradient_matrix KN = view(K).lazyProduct(N);
  using row_matrix = Eigen::Matrix<double, Eigen::Dynamic, 12>;
  const row_matrix rates = multipliers<row_matrix>(N.transpose().lazyProduct(KN), KN.transpose());
  Eigen::Map<Eigen::Matrix<double, 12, 12>>(plastic.V).noalias() -= KN.lazyProduct(rates);
  return plastic;
}

beam_rates rates_of(const hinge_model* h, const MATRIX<12, 12>& K, const beam_state& state,
                    const end_forces& displacements, const end_forces& load) {
  beam_rates rates;
  view(rates.forces).noalias() = view(K) * view(displacements) + view(load);
  if (h == nullptr) return rates;
  rates.flow = active_equations(state);
  if (rates.flow.empty()) return rates;
  const gradient_matrix N = gradients(*h, state, rates.flow);
  const gradient_matrix KN = view(K).lazyProduct(N);
  const small_vector z = multipliers<small_vector>(N.transpose().lazyProduct(KN), N.transpose() * view(rates.forces));
  for (std::size_t k = 0; k < rates.flow.size(); ++k) rates.flow[k].rate = z(signed_index(k));
  view(rates.forces).noalias() -= KN * z;
  return rates;
}

namespace {

bool one_motion(const hinge_model& h, const MATRIX<12, 12>& K, const beam_state& state) {
  constexpr double APART = 1e-4;  // the library takes the inverse of two equations in single precision
  const std::vector<flowing_equation> list = active_equations(state);
  const gradient_matrix N = gradients(h, state, list);
  const gradient_matrix KN = view(K).lazyProduct(N);
  const small_matrix B = N.transpose().lazyProduct(KN);
  const small_vector scale = B.diagonal().cwiseMax(LEAST_DIAGONAL).cwiseSqrt().cwiseInverse();
  const small_matrix scaled = scale.asDiagonal() * B * scale.asDiagonal();
  return eigen_system_of(scaled).values(0) < APART;
}

}  // namespace

hinge_state library_state(const hinge_model* h, const MATRIX<12, 12>& K, const beam_state& state) {
  constexpr std::int32_t YIELDS = 1, NO_PART = 2;
  hinge_state passed;
  passed.forces = state.forces;
  passed.axial_force = state.axial_force;
  for (std::size_t end = 0; end < 2; ++end) {
    passed.state[end] = state.yields(end) ? YIELDS : 0;
    for (std::size_t k = 0; k < MOST_ACTIVE; ++k) passed.segment[end][k] = state.active[end][k];
  }
  if (state.yields(0) && state.yields(1) && one_motion(*h, K, state)) passed.state[1] = NO_PART;
  return passed;
}

}  // namespace solver
