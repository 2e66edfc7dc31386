// solid_results.cpp: strains, stresses and measures of a solid as plain calls.
#include <algorithm>
#include <cmath>

#include "common/finiteness.h"
#include "finites/elements.h"
#include "plain_calls/input_numbers.h"
#include "plain_calls/principal_stresses.h"
#include "plain_calls/solid_faces.h"
#include "plain_calls/solid_input.h"
#include "solids/results.h"

namespace {

// Values of the nodes at the places of a table.
void fill_places(const SOLID_CALL& S, const EDGE_WEIGHTS& weights, int places, const EDGE_VECTORS& UE, double free,
                 finites_solid_point* point) {
  const ELASTIC_TERMS D = elastic_terms(S);
  const double held = (D.direct + D.cross + D.cross) * free;  // the stress that hinders the free expansion
  STATE_PAIR state;
  for (int p = 1; p <= places; p += 2) {
    state_at(D, weights, p, S.XE, UE, state);
    for (int lane = 0; lane < 2 && p + lane <= places; ++lane) {
      finites_solid_point& to = point[p + lane - 1];
      for (int i = 0; i < 6; ++i) {
        to.strain[i] = state.strain(i + 1)[lane];
        to.stress[i] = state.stress(i + 1)[lane];
        if (free != 0.0 && i < 3) to.stress[i] -= held;
      }
      to.von_mises = VON_MISES_6(to.stress);
      principal_stresses(to.stress, to.principal);
    }
  }
}

// The places of the nodes are given; those of the points are the functions' means of them.
void fill_coordinates(const finites_solid& solid, const SOLID_CALL& S, finites_solid_results& results) {
  for (int k = 0; k < S.NN; ++k) std::copy_n(solid.xyz[k], 3, results.node[k].xyz);
  for (int p = 0; p < S.points; ++p) {
    double* const x = results.point[p].xyz;
    for (int k = 0; k < S.NN; ++k) {
      for (int i = 0; i < 3; ++i) x[i] += S.linear->function(k + 1, p + 1) * solid.xyz[k][i];
    }
  }
}

bool finite(const finites_solid_point* point, int count) {
  for (int p = 0; p < count; ++p) {
    const bool all = all_finite(point[p].xyz, 3) && all_finite(point[p].strain, 6) && all_finite(point[p].stress, 6) &&
                     all_finite(point[p].principal, 3) && std::isfinite(point[p].von_mises);
    if (!all) return false;
  }
  return true;
}

//     V = 1/3  integral of  x . n  over the faces, places counted from the first node
double volume_of(const finites_solid& solid) {
  double volume = 0.0;
  FACE_POINT point[4];
  for (int face = 1; face <= solid_face_count(solid.nodes); ++face) {
    const int points = face_points(solid, solid_face(solid.nodes, face), solid.xyz[0], point);
    for (int p = 0; p < points; ++p) {
      for (int i = 0; i < 3; ++i) volume += point[p].x[i] * point[p].n[i];
    }
  }
  return volume / 3.0;
}

}  // namespace

finites_status finites_solid_measure(const finites_solid* solid, finites_solid_measures* measures) {
  if (solid == nullptr || measures == nullptr) return FINITES_NULL;
  SOLID_CALL S;
  const finites_status status = prepare_solid_input(*solid, S);
  if (status != FINITES_OK) return status;
  finites_solid_measures m{};
  m.volume = volume_of(*solid);
  m.mass = solid->density * m.volume;
  for (int k = 0; k < S.NN; ++k) {
    for (int i = 0; i < 3; ++i) m.center[i] += solid->xyz[k][i] / S.NN;
  }
  for (int a = 0; a < 3; ++a) {
    for (int i = 0; i < 3; ++i) m.axes[a][i] = S.AX(a + 1, i + 1);
  }
  if (!std::isfinite(m.mass) || !all_finite(m.center, 3)) return FINITES_RESULT;
  *measures = m;
  return FINITES_OK;
}

finites_status finites_solid_result(const finites_solid* solid, const double* u, double temperature,
                                    finites_solid_results* results) {
  if (solid == nullptr || u == nullptr || results == nullptr) return FINITES_NULL;
  SOLID_CALL S;
  const finites_status status = first_fault(prepare_solid_input(*solid, u, S), status_of_numbers(&temperature, 1));
  if (status != FINITES_OK) return status;
  SOLID_VECTORS local;
  EDGE_VECTORS UE;
  SOLID_VEC_TO_LOCAL(S.AX, S.NN, S.U, local);
  edge_differences(*S.linear, local, UE);
  finites_solid_results r{};
  r.nodes = S.NN;
  r.points = S.points;
  const double free = solid->expansion * temperature;
  fill_places(S, S.linear->at_nodes, S.NN, UE, free, r.node);
  fill_places(S, S.linear->at_points, S.points, UE, free, r.point);
  fill_coordinates(*solid, S, r);
  if (!finite(r.node, r.nodes) || !finite(r.point, r.points)) return FINITES_RESULT;
  *results = r;
  return FINITES_OK;
}
