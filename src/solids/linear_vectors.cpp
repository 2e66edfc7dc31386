// linear_vectors.cpp: forces, loads and results of the linear kinds (formulas: operations.cpp), two places at a time.
//
// The forces are the products of the gradients with the stress T of a point, f_k = sum_p T g_k dV. With
// g_k = J^-1 DN_k, and DN_k made of the weights of the edges that meet in the node,
//
//     f(head of e) += r_e,  f(tail of e) -= r_e,      r_e = sum_p  w_e T (J^-1)(:, d) dV      d: the direction of e
#include "solids/linear_vectors.h"

#include <algorithm>

#include "finites/fields.h"
#include "solids/results.h"

namespace {

// T A (w sign det), with the stress tensor T and the adjugate A: T J^-1 dV.
LANE_MATRIX flux(const STATE_PAIR& state, LANES weight) {
  const VECTOR<6, LANES>& s = state.stress;
  const LANE_MATRIX& A = state.inverse.ADJ;
  const LANES det = state.inverse.DET;
  const LANES w = weight * (magnitude(det) / det);
  LANE_MATRIX F;
  for (int d = 1; d <= 3; ++d) {
    F(1, d) = (s(1) * A(1, d) + s(4) * A(2, d) + s(5) * A(3, d)) * w;
    F(2, d) = (s(4) * A(1, d) + s(2) * A(2, d) + s(6) * A(3, d)) * w;
    F(3, d) = (s(5) * A(1, d) + s(6) * A(2, d) + s(3) * A(3, d)) * w;
  }
  return F;
}

// Asks for the memory of records that will be written: a solver has 23 kilobytes for a solid, which are seldom near.
template <class WORDS>
void expect_writes(const WORDS& records, int first, int last) {
  constexpr int words_of_a_line = 8;
  for (const double* word = &records(1, first); word <= &records(WORDS_WRITTEN, last); word += words_of_a_line) {
    __builtin_prefetch(word, 1);
  }
}

// Records of the places of a table, up to the first whose Jacobian is singular.
template <class WORDS>
void results_at(const SOLID_CALL& S, const EDGE_WEIGHTS& w, int places, const EDGE_VECTORS& UE, WORDS& records,
                std::int32_t& OK) {
  const ELASTIC_TERMS D = elastic_terms(S);
  STATE_PAIR state;
  for (int p = 1; p <= places && OK == 1; p += 2) {
    expect_writes(records, p, p + 1);
    state_at(D, w, p, S.XE, UE, state);
    const bool first = !singular(state.inverse.DET[0]);
    const bool second = first && !singular(state.inverse.DET[1]);
    fill_solid_records(state.strain, state.stress, first ? &records(1, p) : nullptr,
                       second && p < places ? &records(1, p + 1) : nullptr);
    if (!second) OK = 0;
  }
}

// UE := U in element axes, along the edges.
void displacements_along_edges(const SOLID_CALL& S, EDGE_VECTORS& UE) {
  SOLID_VECTORS u;
  SOLID_VEC_TO_LOCAL(S.AX, S.NN, S.U, u);
  edge_differences(*S.linear, u, UE);
}

}  // namespace

void point_states(const SOLID_CALL& S, POINT_STATES& state, std::int32_t& OK) {
  const ELASTIC_TERMS D = elastic_terms(S);
  displacements_along_edges(S, state.UE);
  STATE_PAIR* at = state.pair;
  for (int p = 1; p <= S.points; p += 2, ++at) {
    state_at(D, S.linear->at_points, p, S.XE, state.UE, *at);
    if (singular(at->inverse.DET[0]) || singular(at->inverse.DET[1])) {
      OK = 0;
      return;
    }
  }
}

void linear_forces(const SOLID_CALL& S, const POINT_STATES& state, SOLID_VECTORS& f) {
  const LINEAR_KIND& kind = *S.linear;
  LANE_MATRIX F[LINEAR_PAIRS];
  const int pairs = (kind.points + 1) / 2;
  for (int pair = 0; pair < pairs; ++pair) F[pair] = flux(state.pair[pair], lanes_at(&kind.weight(2 * pair + 1)));
  std::fill_n(f.data(), 3 * S.NN, 0.0);
  for (int e = 1; e <= LINEAR_EDGES; ++e) {
    const int d = (e - 1) / 4 + 1;
    LANES r[3] = {};
    for (int pair = 0; pair < pairs; ++pair) {
      const LANES w = lanes_at(&kind.at_points(2 * pair + 1, e));
      for (int i = 0; i < 3; ++i) r[i] += w * F[pair](i + 1, d);
    }
    for (int i = 0; i < 3; ++i) {
      const double sum = r[i][0] + r[i][1];
      f(i + 1, kind.edge[e - 1].head) += sum;
      f(i + 1, kind.edge[e - 1].tail) -= sum;
    }
  }
}

void linear_integrals(const SOLID_CALL& S, VECTOR<SOLID_ROOM>& n, std::int32_t& OK) {
  const LINEAR_KIND& kind = *S.linear;
  std::fill_n(n.data(), kind.nodes, 0.0);
  for (int p = 1; p <= kind.points; p += 2) {
    const LANES det = inverse_at(kind.at_points, p, S.XE).DET;
    if (singular(det[0]) || singular(det[1])) {
      OK = 0;
      return;
    }
    const LANES volume = lanes_at(&kind.weight(p)) * magnitude(det);
    for (int k = 1; k <= kind.nodes; ++k) {
      n(k) += kind.function(k, p) * volume[0];
      if (p < kind.points) n(k) += kind.function(k, p + 1) * volume[1];
    }
  }
}

void linear_results(const SOLID_CALL& S, std::int32_t& OK) {
  EDGE_VECTORS UE;
  displacements_along_edges(S, UE);
  results_at(S, S.linear->at_nodes, S.NN, UE, S.record->RES50_NODE, OK);
  if (OK == 1) results_at(S, S.linear->at_points, S.points, UE, S.record->RES50_GAUSS, OK);
}

void linear_results(const SOLID_CALL& S, const POINT_STATES& state, std::int32_t& OK) {
  results_at(S, S.linear->at_nodes, S.NN, state.UE, S.record->RES50_NODE, OK);
  if (OK != 1) return;
  for (int p = 1; p <= S.points; p += 2) {
    const STATE_PAIR& pair = state.pair[p / 2];
    double* const second = p < S.points ? &S.record->RES50_GAUSS(1, p + 1) : nullptr;
    fill_solid_records(pair.strain, pair.stress, &S.record->RES50_GAUSS(1, p), second);
  }
}
