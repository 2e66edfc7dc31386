// solid_input.cpp: the checks of a solid, in the order of the statuses.
#include "plain_calls/solid_input.h"

#include <algorithm>
#include <cmath>

#include "common/finiteness.h"
#include "plain_calls/input_numbers.h"

namespace {

finites_status status_of_material(const finites_solid& solid) {
  const double numbers[] = {solid.E, solid.nu, solid.density, solid.expansion, solid.stiffness_factor};
  return status_of_numbers(numbers, 5);
}

finites_status status_of_constants(const finites_solid& solid) {
  if (!(solid.E > 0.0)) return FINITES_MODULUS;
  if (!(solid.nu > -1.0 && solid.nu < 0.5)) return FINITES_POISSON;
  if (!(solid.stiffness_factor > 0.0)) return FINITES_FACTOR;
  if (solid.density < 0.0) return FINITES_DENSITY;
  return FINITES_OK;
}

// The library takes the determinant without its sign; here its sign says whether the nodes are in order.
bool proper(const EDGE_WEIGHTS& weights, int places, const EDGE_VECTORS& XE) {
  for (int p = 1; p <= places; p += 2) {
    const LANES det = inverse_at(weights, p, XE).DET;
    if (!(det[0] >= SINGULAR_DETERMINANT && det[1] >= SINGULAR_DETERMINANT)) return false;
  }
  return true;
}

double largest_component(const finites_solid& solid, int a, int b) {
  double largest = 0.0;
  for (int i = 0; i < 3; ++i) largest = std::max(largest, std::fabs(solid.xyz[a][i] - solid.xyz[b][i]));
  return largest;
}

bool two_coincide(const finites_solid& solid) {
  for (int a = 1; a < solid.nodes; ++a) {
    for (int b = 0; b < a; ++b) {
      if (largest_component(solid, a, b) == 0.0) return true;
    }
  }
  return false;
}

// An element of positive determinants has no short lengths but edges.
bool has_short_edge(const SOLID_CALL& S) {
  for (int e = 1; e <= LINEAR_EDGES; ++e) {
    const LINEAR_EDGE edge = S.linear->edge[e - 1];
    if (edge.head == edge.tail) continue;
    const double x = S.XE(1, e);
    const double y = S.XE(2, e);
    const double z = S.XE(3, e);
    if (x * x + y * y + z * z < SMALLEST_LENGTH * SMALLEST_LENGTH) return true;
  }
  return false;
}

}  // namespace

finites_status prepare_solid_input(const finites_solid& solid, SOLID_CALL& S) {
  if (!set_solid_kind(S, solid.nodes)) return FINITES_NODES;
  const finites_status numbers =
      first_fault(status_of_numbers(&solid.xyz[0][0], 3 * solid.nodes), status_of_material(solid));
  if (numbers != FINITES_OK) return numbers;
  const finites_status constants = status_of_constants(solid);
  if (constants != FINITES_OK) return constants;

  S.factor = solid.stiffness_factor;
  S.E = solid.E;
  S.nu = solid.nu;
  S.unit_weight = solid.density * GRAVITY;
  S.U = nullptr;
  S.nonlinear = nullptr;
  S.record = nullptr;
  SOLID_VECTORS global;
  std::copy_n(&solid.xyz[0][0], 3 * solid.nodes, global.data());
  set_solid_geometry(S, global);
  if (!proper(S.linear->at_nodes, S.NN, S.XE) || !proper(S.linear->at_points, S.points, S.XE)) {
    return two_coincide(solid) ? FINITES_COINCIDENT : FINITES_DEGENERATE;
  }
  return has_short_edge(S) ? FINITES_RANGE : FINITES_OK;
}

finites_status prepare_solid_input(const finites_solid& solid, const double* u, SOLID_CALL& S) {
  const finites_status status = prepare_solid_input(solid, S);
  if (status == FINITES_NODES) return status;
  const finites_status numbers = status_of_numbers(u, 3 * solid.nodes);
  S.U = u;
  return numbers != FINITES_OK ? numbers : status;
}

finites_status hand_over(const SOLID_CALL& S, const SOLID_VECTORS& f, double* to) {
  if (!all_finite(f.data(), 3 * S.NN)) return FINITES_RESULT;
  for (int i = 0; i < 3 * S.NN; ++i) to[i] = true_share(S, f.data()[i]);
  return FINITES_OK;
}
