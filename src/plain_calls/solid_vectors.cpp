// solid_vectors.cpp: nodal forces and consistent loads of a solid as plain calls.
#include <cmath>

#include "finites/elements.h"
#include "plain_calls/input_numbers.h"
#include "plain_calls/solid_faces.h"
#include "plain_calls/solid_input.h"
#include "solids/linear_vectors.h"
#include "solids/operations.h"

finites_status finites_solid_forces(const finites_solid* solid, const double* u, double* F) {
  if (solid == nullptr || u == nullptr || F == nullptr) return FINITES_NULL;
  SOLID_CALL S;
  const finites_status status = prepare_solid_input(*solid, u, S);
  if (status != FINITES_OK) return status;
  SOLID_VECTORS f;
  std::int32_t OK = 1;
  SOLID_INTERNAL_FORCE(S, OP_FORCES, f, OK);
  return OK == 1 ? hand_over(S, f, F) : FINITES_DEGENERATE;
}

finites_status finites_solid_body_load(const finites_solid* solid, const double load[3], double* F) {
  if (solid == nullptr || load == nullptr || F == nullptr) return FINITES_NULL;
  SOLID_CALL S;
  const finites_status status = first_fault(prepare_solid_input(*solid, S), status_of_numbers(load, 3));
  if (status != FINITES_OK) return status;
  SOLID_VECTORS f;
  std::int32_t OK = 1;
  SOLID_BODY_LOAD(S, load, f, OK);
  return OK == 1 ? hand_over(S, f, F) : FINITES_DEGENERATE;
}

// The forces of the stress that hinders the free expansion e = expansion times change: D (e, e, e, 0, 0, 0) at all
// points. They are K times the displacements of the free expansion, without the rounding of these.
finites_status finites_solid_temperature_load(const finites_solid* solid, double change, double* F) {
  if (solid == nullptr || F == nullptr) return FINITES_NULL;
  SOLID_CALL S;
  const finites_status status = first_fault(prepare_solid_input(*solid, S), status_of_numbers(&change, 1));
  if (status != FINITES_OK) return status;
  constexpr double AT_REST[3 * LINEAR_NODES] = {};
  S.U = AT_REST;
  POINT_STATES state;
  std::int32_t OK = 1;
  point_states(S, state, OK);
  if (OK != 1) return FINITES_DEGENERATE;
  const double e = solid->expansion * change;
  const VECTOR<6, LANES> free = {{both(e), both(e), both(e), both(0.0), both(0.0), both(0.0)}};
  const VECTOR<6, LANES> stress = stress_of(elastic_terms(S), free);
  for (int p = 1; p <= S.points; p += 2) state.pair[p / 2].stress = stress;
  SOLID_VECTORS f;
  linear_forces(S, state, f);
  forces_to_global(S.AX, S.NN, f);
  return hand_over(S, f, F);
}

//     F_k = integral of  N_k (traction |n| - pressure n)
finites_status finites_solid_face_load(const finites_solid* solid, int32_t face, const double traction[3],
                                       double pressure, double* F) {
  if (solid == nullptr || F == nullptr) return FINITES_NULL;
  SOLID_CALL S;
  const double t[3] = {traction != nullptr ? traction[0] : 0.0, traction != nullptr ? traction[1] : 0.0,
                       traction != nullptr ? traction[2] : 0.0};
  const finites_status numbers = first_fault(status_of_numbers(t, 3), status_of_numbers(&pressure, 1));
  const finites_status status = first_fault(prepare_solid_input(*solid, S), numbers);
  if (status != FINITES_OK) return status;
  if (face < 1 || face > solid_face_count(solid->nodes)) return FINITES_BAD_CODE;
  const SOLID_FACE& nodes = solid_face(solid->nodes, face);
  FACE_POINT point[4];
  const int points = face_points(*solid, nodes, solid->xyz[nodes.node[0]], point);
  double f[3 * LINEAR_NODES] = {};
  for (int p = 0; p < points; ++p) {
    const double* const n = point[p].n;
    const double area = std::sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2]);
    for (int k = 0; k < nodes.count; ++k) {
      for (int i = 0; i < 3; ++i) f[3 * nodes.node[k] + i] += point[p].N[k] * (t[i] * area - pressure * n[i]);
    }
  }
  return copy_finite(f, 3 * solid->nodes, F);
}
