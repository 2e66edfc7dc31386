// beam_state.cpp: the plain calls of beams with hinges.
//
// A beam without loads along it has the section forces s = (N, My1, Mz1, My2, Mz2), local axes. With the displacements
// d of its ends they belong to the deformations e = E^T d, end forces f = E s:
//
//     N: u2 - u1    Mz1: (v2 - v1)/L - rz1    Mz2: rz2 - (v2 - v1)/L
//                   My1: (w1 - w2)/L - ry1    My2: ry2 - (w1 - w2)/L
//
// and s = C (e - p), p the plastic deformations: of the ends together along the axis, of each end in rotation. Trial
// forces of the last accepted p return to the yield surfaces, K = K_elastic + E (C_ep - C) E^T.
#include <algorithm>
#include <cmath>
#include <new>

#include "common/member_order.h"
#include "finites/elements.h"
#include "plain_calls/hinge_return.h"
#include "plain_calls/plain_beam.h"
#include "plain_calls/yield_surface.h"

namespace {

constexpr int ENTRIES = MEMBER_DOFS * MEMBER_DOFS, S = SECTION_COMPONENTS;

// Plastic deformations, by ends: along the axis, about y, about z.
struct PLASTIC {
  double p[2][3];
};

// What displacements lead to.
struct TRIED {
  SECTION_VECTOR s;
  PLASTIC plastic;
  bool yields[2];
  double F[MEMBER_DOFS], K[ENTRIES];
};

}  // namespace

struct finites_beam_state {
  PLAIN_BEAM beam;
  finites_yield yield;
  int ends;
  PLANE_MATRIX elastic;  // local axes
  SECTION_MATRIX C;      // by the capacities on both sides
  PLASTIC accepted;
  TRIED committed;
};

namespace {

// E, transposed: the deformation of each section force by the displacements of the ends.
void set_deformations(double L, double (&Et)[S][MEMBER_DOFS]) {
  std::fill_n(&Et[0][0], S * MEMBER_DOFS, 0.0);
  Et[0][0] = -1.0;
  Et[0][6] = 1.0;
  for (int end = 0; end < 2; ++end) {
    const double sign = end == 0 ? -1.0 : 1.0;
    double* const about_y = Et[place_of(end, 1)];
    double* const about_z = Et[place_of(end, 2)];
    about_y[6 * end + 4] = sign;
    about_y[2] = -sign / L;
    about_y[8] = sign / L;
    about_z[6 * end + 5] = sign;
    about_z[1] = sign / L;
    about_z[7] = -sign / L;
  }
}

double capacity(const finites_yield& y, int component) {
  return y.capacity[component == 0 ? 0 : (component - 1) % 2 + 1];
}

// The stiffness of both end moments of a plane: first, second, and between them. Where the shear force is released, the
// moment is constant: 3 E I r1 r2 / (L (r1 + r2 + r1 r2)).
struct MOMENT_STIFFNESS {
  double first, second, between;
};

MOMENT_STIFFNESS sliding(double EI, double L, double r1, double r2) {
  const double sum = r1 + r2 + r1 * r2;
  const double k = sum > 0.0 ? 3.0 * EI * r1 * r2 / (L * sum) : 0.0;
  return {k, k, k};
}

// C over the capacities, from the stiffness before its releases.
void set_section_stiffness(finites_beam_state& state) {
  const BEAM_PROPERTIES& p = state.beam.properties;
  PLANE_MATRIX K;
  elastic_planes(p, K);
  MOMENT_STIFFNESS y{K(5, 5), K(11, 11), -K(11, 5)};
  MOMENT_STIFFNESS z{K(6, 6), K(12, 12), -K(12, 6)};
  if (p.release_z != 0) y = sliding(p.E2 * p.I2, p.L, p.a1, p.a2);
  if (p.release_y != 0) z = sliding(p.E1 * p.I1, p.L, p.b1, p.b2);
  state.C = {};
  double(&C)[S][S] = state.C.V;
  C[0][0] = axial_stiffness(p);
  C[1][1] = y.first;
  C[3][3] = y.second;
  C[1][3] = C[3][1] = y.between;
  C[2][2] = z.first;
  C[4][4] = z.second;
  C[2][4] = C[4][2] = z.between;
  for (int i = 0; i < S; ++i) {
    for (int j = 0; j < S; ++j) C[i][j] /= capacity(state.yield, i) * capacity(state.yield, j);
  }
}

SECTION_VECTOR deformations_of(const finites_beam_state& state, const VECTOR<MEMBER_DOFS>& d) {
  double Et[S][MEMBER_DOFS];
  set_deformations(state.beam.frame.length, Et);
  SECTION_VECTOR e{};
  for (int i = 0; i < S; ++i) {
    for (int k = 0; k < MEMBER_DOFS; ++k) e.V[i] += Et[i][k] * d.V[k];
  }
  return e;
}

// e - p over the inverse capacities, the measure that belongs to C.
SECTION_VECTOR elastic_part(const finites_beam_state& state, SECTION_VECTOR e) {
  const PLASTIC& a = state.accepted;
  e.V[0] -= a.p[0][0] + a.p[1][0];
  for (int end = 0; end < 2; ++end) {
    for (int c = 1; c < 3; ++c) e.V[place_of(end, c)] -= a.p[end][c];
  }
  for (int i = 0; i < S; ++i) e.V[i] *= capacity(state.yield, i);
  return e;
}

SECTION_VECTOR forces_by(const SECTION_MATRIX& C, const SECTION_VECTOR& e) {
  SECTION_VECTOR x{};
  for (int i = 0; i < S; ++i) {
    for (int k = 0; k < S; ++k) x.V[i] += C.V[i][k] * e.V[k];
  }
  return x;
}

void set_forces(const finites_beam_state& state, const VECTOR<MEMBER_DOFS>& d, const SECTION_VECTOR& s, double* F) {
  double Et[S][MEMBER_DOFS];
  set_deformations(state.beam.frame.length, Et);
  VECTOR<MEMBER_DOFS> f{};
  for (int i = 0; i < S; ++i) {
    for (int k = 0; k < MEMBER_DOFS; ++k) f.V[k] += Et[i][k] * s.V[i];
  }
  f(10) = torsional_stiffness(state.beam.properties) * (d(10) - d(4));
  f(4) = -f(10);
  std::copy_n(nodes_of_ends(state.beam, f).data(), MEMBER_DOFS, F);
}

void set_tangent(const finites_beam_state& state, const HINGE_RETURN& answer, double* K) {
  if (answer.elastic) {
    turn_to_nodes(state.beam, state.elastic, K);
    return;
  }
  double Et[S][MEMBER_DOFS];
  set_deformations(state.beam.frame.length, Et);
  write_planes(state.elastic, K);
  double D[S][MEMBER_DOFS] = {};
  for (int i = 0; i < S; ++i) {
    for (int j = 0; j < S; ++j) {
      const double lost = answer.tangent.V[i][j] - state.C.V[i][j];
      const double change = lost * capacity(state.yield, i) * capacity(state.yield, j);
      for (int k = 0; k < MEMBER_DOFS; ++k) D[i][k] += change * Et[j][k];
    }
  }
  const MATRIX_VIEW<MEMBER_DOFS> KV(K);
  for (int i = 0; i < S; ++i) {
    for (int c = 0; c < MEMBER_DOFS; ++c) {
      for (int r = 0; r < MEMBER_DOFS; ++r) KV(r + 1, c + 1) += Et[i][r] * D[i][c];
    }
  }
  turn_to_nodes(state.beam, K);
}

finites_status finite_answer(const TRIED& t) {
  double checked[ENTRIES];
  return first_fault(hand_over(t.F, MEMBER_DOFS, checked), hand_over(t.K, ENTRIES, checked));
}

finites_status follow(const finites_beam_state& state, const double* u, TRIED& t) {
  const finites_status status = check_member_numbers(u, MEMBER_DOFS);
  if (status != FINITES_OK) return status;
  const VECTOR<MEMBER_DOFS> d = ends_of_nodes(state.beam, u);
  const SECTION_VECTOR trial = forces_by(state.C, elastic_part(state, deformations_of(state, d)));
  double checked[S];
  if (hand_over(trial.V, S, checked) != FINITES_OK) return FINITES_RESULT;
  HINGE_RETURN answer;
  if (!return_to_surface(state.yield, state.ends, state.C, trial, answer)) return FINITES_RETURN;
  for (int i = 0; i < S; ++i) t.s.V[i] = answer.force.V[i] * capacity(state.yield, i);
  t.plastic = state.accepted;
  for (int end = 0; end < 2; ++end) {
    t.yields[end] = answer.yields[end];
    for (int c = 0; c < 3; ++c) t.plastic.p[end][c] += answer.flow[end][c] / state.yield.capacity[c];
  }
  set_forces(state, d, t.s, t.F);
  set_tangent(state, answer, t.K);
  return finite_answer(t);
}

finites_status prepare(const finites_beam& beam, const finites_yield& yield, int32_t ends, finites_beam_state& state) {
  finites_status status = first_fault(read_beam(beam, state.beam), check_yield(yield));
  if (status != FINITES_OK) return status;
  if (ends < 1 || ends > 3) return FINITES_BAD_CODE;
  status = local_stiffness(state.beam, state.elastic);
  if (status != FINITES_OK) return status;
  state.yield = yield;
  state.ends = ends;
  state.accepted = {};
  set_section_stiffness(state);
  const double rest[MEMBER_DOFS] = {};
  return follow(state, rest, state.committed);
}

}  // namespace

finites_status finites_beam_state_create(const finites_beam* beam, const finites_yield* yield, int32_t ends,
                                         finites_beam_state** state) {
  if (beam == nullptr || yield == nullptr || state == nullptr) return FINITES_NULL;
  finites_beam_state prepared;
  const finites_status status = prepare(*beam, *yield, ends, prepared);
  if (status != FINITES_OK) return status;
  return finites_beam_state_copy(&prepared, state);
}

finites_status finites_beam_state_copy(const finites_beam_state* state, finites_beam_state** copy) {
  if (state == nullptr || copy == nullptr) return FINITES_NULL;
  auto* const made = new (std::nothrow) finites_beam_state(*state);
  if (made == nullptr) return FINITES_MEMORY;
  *copy = made;
  return FINITES_OK;
}

void finites_beam_state_free(finites_beam_state* state) { delete state; }

finites_status finites_beam_state_try(const finites_beam_state* state, const double* u, double* F, double* K) {
  if (state == nullptr || u == nullptr) return FINITES_NULL;
  TRIED t;
  const finites_status status = follow(*state, u, t);
  if (status != FINITES_OK) return status;
  if (F != nullptr) std::copy_n(t.F, MEMBER_DOFS, F);
  if (K != nullptr) std::copy_n(t.K, ENTRIES, K);
  return FINITES_OK;
}

finites_status finites_beam_state_commit(finites_beam_state* state, const double* u) {
  if (state == nullptr || u == nullptr) return FINITES_NULL;
  TRIED t;
  const finites_status status = follow(*state, u, t);
  if (status == FINITES_OK) state->committed = t;
  return status;
}

finites_status finites_beam_state_accept(finites_beam_state* state) {
  if (state == nullptr) return FINITES_NULL;
  state->accepted = state->committed.plastic;
  return FINITES_OK;
}

finites_status finites_beam_state_forces(const finites_beam_state* state, double* F, double* K) {
  if (state == nullptr) return FINITES_NULL;
  if (F != nullptr) std::copy_n(state->committed.F, MEMBER_DOFS, F);
  if (K != nullptr) std::copy_n(state->committed.K, ENTRIES, K);
  return FINITES_OK;
}

finites_status finites_beam_state_hinges(const finites_beam_state* state, finites_hinge hinge[2]) {
  if (state == nullptr || hinge == nullptr) return FINITES_NULL;
  const TRIED& t = state->committed;
  for (int end = 0; end < 2; ++end) {
    finites_hinge& h = hinge[end];
    h = {};
    h.yields = t.yields[end] ? 1 : 0;
    for (int c = 0; c < 3; ++c) {
      h.force[c] = t.s.V[place_of(end, c)];
      h.plastic[c] = t.plastic.p[end][c];
    }
    YIELD_EQUATIONS equations;
    set_equations(state->yield, h.force, equations);
    h.value = largest_value(equations);
  }
  return FINITES_OK;
}
