// scaled_system.cpp: scaling by the diagonal, and the check of the factorised matrix.
#include "system/scaled_system.h"

#include <array>
#include <cmath>

#include <fmt/format.h>

#include "model/model_error.h"
#include "system/mechanism.h"

namespace solver {

std::vector<double> scale_to_unit_diagonal(const model& m, const step& s, const scatter_map& map, symmetric_matrix& K,
                                           const std::vector<double>& first_order) {
  std::vector<double> scale(K.order());
  const std::vector<double> of_matrix = diagonal_of(K);
  for (std::size_t f = 0; f < map.equation.size(); ++f) {
    if (map.equation[f] == PRESCRIBED) continue;
    const auto j = subscript(map.equation[f]);
    double diagonal = of_matrix[j];
    if (!first_order.empty()) diagonal = std::fmax(std::fabs(diagonal), first_order[j]);
    if (!(diagonal > 0)) {
      throw model_error(m, s, "*STEP",
                        fmt::format("mechanism: {} has no stiffness in {}", node_name(m, number_of(f / DIRECTIONS)),
                                    direction_with_number(number_of(f % DIRECTIONS))));
    }
    scale[j] = 1 / std::sqrt(diagonal);
  }
  scale_matrix(scale, K);
  return scale;
}

std::vector<std::vector<double>> rigid_body_motions(const model& m, const scatter_map& map,
                                                    const std::vector<double>& scale) {
  std::array<double, 3> middle{};
  for (const node& n : m.nodes) {
    for (std::size_t i = 0; i < 3; ++i) middle[i] += n.xyz[i] / static_cast<double>(m.nodes.size());
  }
  std::vector<std::vector<double>> motions(DIRECTIONS, std::vector<double>(map.equations, 0.0));
  for (std::size_t f = 0; f < map.equation.size(); ++f) {
    if (map.equation[f] == PRESCRIBED) continue;
    const auto j = subscript(map.equation[f]);
    const std::size_t direction = f % DIRECTIONS;
    motions[direction][j] = 1 / scale[j];
    if (direction >= 3) continue;
    // u = omega x r, of which u_x = omega_y z - omega_z y, and so round.
    const std::array<double, 3>& at = m.nodes[f / DIRECTIONS].xyz;
    const std::size_t next = (direction + 1) % 3, after = (direction + 2) % 3;
    motions[3 + next][j] = (at[after] - middle[after]) / scale[j];
    motions[3 + after][j] = -(at[next] - middle[next]) / scale[j];
  }
  return motions;
}

void scale_matrix(const std::vector<double>& scale, symmetric_matrix& A) {
  for (std::size_t j = 0; j < A.order(); ++j) {
    for (std::size_t p = A.begin_of(j); p < A.begin_of(j + 1); ++p) A.value[p] *= scale[j] * scale[subscript(A.row[p])];
  }
}

void require_resistance(const model& m, const step& s, const scatter_map& map, const symmetric_matrix& K,
                        const std::vector<double>& scale, linear_solver& solver, double smallest) {
  if (smallest > FREE_STIFFNESS) return;
  const std::string text = describe_mechanism(m, map, K, scale, solver);
  throw model_error(m, s, "*STEP", text.empty() ? "the stiffness is too near to singular to be solved with" : text);
}

double check_resistance(const model& m, const step& s, const scatter_map& map, const symmetric_matrix& K,
                        const std::vector<double>& scale, linear_solver& solver, bool factorised) {
  const double smallest = factorised ? smallest_stiffness(K, solver) : 0;
  require_resistance(m, s, map, K, scale, solver, smallest);
  return smallest;
}

}  // namespace solver
