// operations.cpp: loads, forces and results of a solid, integrated over its rule in element axes (Zienkiewicz, 1977).
// With the gradients g of the shape functions N and dV = w |det J| of a point
//
//     K  = sum_p  B^T D B dV              D: elastic.h
//     M  = sum_p  rho N_i N_j dV          rho = unit weight / GRAVITY
//     KG = sum_p  (g_i^T S g_j) dV        the same for u, v, w; S: the stress tensor, positive in tension
//     f  = sum_p  B^T (D B u) dV,         sum_p  N b dV for a load b per volume
//
// The determinant counts without its sign. Matrices: linear_matrices.cpp. The linear kinds take their sums from tables,
// two places at a time (linear_vectors.cpp); the other kinds, which no record has room for, node by node.
#include "solids/operations.h"

#include <algorithm>
#include <cmath>

#include "common/small_products.h"
#include "finites/fields.h"
#include "solids/linear_vectors.h"
#include "solids/results.h"

namespace {

constexpr std::int32_t FORCES_IN_ELEMENT_AXES = OP_FORCES_COMMIT;

// Calls visit(p, gradients, dV) at the points of the rule; stops where a Jacobian is singular.
template <class VISIT>
void for_points(const SOLID_CALL& S, std::int32_t& OK, VISIT visit) {
  SOLID_GRADIENTS g;
  for (int p = 1; p <= S.points; ++p) {
    double detj = 0.0;
    solid_gradients(S.KIND, S.station(1, p), S.station(2, p), S.station(3, p), S.NN, S.XYZ, g, detj, OK);
    if (OK != 1) return;
    visit(p, g, S.weight(p) * std::fabs(detj));
  }
}

// Calls visit(N, dV) at the points of the rule, for integrals without gradients.
template <class VISIT>
void for_functions(const SOLID_CALL& S, std::int32_t& OK, VISIT visit) {
  SOLID_FUNCTIONS N{};
  MATRIX<3, 3> J;
  for (int p = 1; p <= S.points; ++p) {
    double detj = 0.0;
    SOLID_JACOBIAN(S.station(1, p), S.station(2, p), S.station(3, p), S.KIND, S.NN, S.XYZ, J, detj, OK);
    if (OK != 1) return;
    SOLID_SHAPE(S.KIND, S.station(1, p), S.station(2, p), S.station(3, p), S.NN, N);
    visit(N, S.weight(p) * std::fabs(detj));
  }
}

// sum_p  N_k dV
void function_integrals(const SOLID_CALL& S, VECTOR<SOLID_ROOM>& n, std::int32_t& OK) {
  std::fill_n(n.data(), S.NN, 0.0);
  for_functions(S, OK, [&](const SOLID_FUNCTIONS& N, double volume) {
    for (int k = 1; k <= S.NN; ++k) n(k) += N(k) * volume;
  });
}

// sum_p  B^T (D B u) dV
void force_integrals(const SOLID_CALL& S, SOLID_VECTORS& f, std::int32_t& OK) {
  SOLID_VECTORS u;
  SOLID_VEC_TO_LOCAL(S.AX, S.NN, S.U, u);
  const ELASTIC_TERMS D = elastic_terms(S);
  std::fill_n(f.data(), 3 * S.NN, 0.0);
  for_points(S, OK, [&](int /*p*/, const SOLID_GRADIENTS& g, double volume) {
    const VECTOR<6> s = stress_of(D, solid_strain(g, S.NN, u));
    for (int k = 1; k <= S.NN; ++k) {
      f(1, k) += (g(1, k) * s(1) + g(2, k) * s(4) + g(3, k) * s(5)) * volume;
      f(2, k) += (g(2, k) * s(2) + g(1, k) * s(4) + g(3, k) * s(6)) * volume;
      f(3, k) += (g(3, k) * s(3) + g(1, k) * s(5) + g(2, k) * s(6)) * volume;
    }
  });
}

// Strains and stresses at nodes are computed there, not extrapolated.
void results_at_all(const SOLID_CALL& S, std::int32_t& OK) {
  SOLID_VECTORS u;
  SOLID_VEC_TO_LOCAL(S.AX, S.NN, S.U, u);
  const ELASTIC_TERMS D = elastic_terms(S);
  SOLID_STATIONS node;
  SOLID_NODE_COORDS(S.KIND, S.NN, node);
  SOLID_GRADIENTS g;
  double detj = 0.0;
  for (int k = 1; k <= S.NN; ++k) {
    solid_gradients(S.KIND, node(1, k), node(2, k), node(3, k), S.NN, S.XYZ, g, detj, OK);
    if (OK != 1) return;
    const VECTOR<6> e = solid_strain(g, S.NN, u);
    fill_solid_record(e, stress_of(D, e), &S.record->RES50_NODE(1, k));
  }
  for_points(S, OK, [&](int p, const SOLID_GRADIENTS& at_point, double /*volume*/) {
    const VECTOR<6> e = solid_strain(at_point, S.NN, u);
    fill_solid_record(e, stress_of(D, e), &S.record->RES50_GAUSS(1, p));
  });
}

}  // namespace

void forces_to_global(const MATRIX<3, 3>& AX, std::int32_t NN, SOLID_VECTORS& f) {
  const MATRIX<3, 3> back = transposed(AX);
  for (std::int32_t k = 1; k <= NN; ++k) turn_vector(back, f(1, k), f(2, k), f(3, k), &f(1, k));
}

void SOLID_D_MATRIX(const SOLID_CALL& S, MATRIX<6, 6>& D) {
  const ELASTIC_TERMS t = elastic_terms(S);
  D = MATRIX<6, 6>{};
  for (int j = 1; j <= 3; ++j) {
    for (int i = 1; i <= 3; ++i) D(i, j) = i == j ? t.direct : t.cross;
    D(3 + j, 3 + j) = t.shear;
  }
}

void SOLID_BODY_LOAD(const SOLID_CALL& S, const double* G, SOLID_VECTORS& f, std::int32_t& OK) {
  VECTOR<3> gl;
  turn_vector(S.AX, G[0], G[1], G[2], gl.data());
  VECTOR<SOLID_ROOM> n;
  if (S.linear != nullptr) {
    linear_integrals(S, n, OK);
  } else {
    function_integrals(S, n, OK);
  }
  if (OK != 1) return;
  for (int k = 1; k <= S.NN; ++k) {
    for (int i = 1; i <= 3; ++i) f(i, k) = gl(i) * n(k);
  }
  forces_to_global(S.AX, S.NN, f);
}

void SOLID_INTERNAL_FORCE(const SOLID_CALL& S, std::int32_t OP, SOLID_VECTORS& f, std::int32_t& OK) {
  if (S.linear != nullptr) {
    POINT_STATES state;
    point_states(S, state, OK);
    if (OK == 1) linear_forces(S, state, f);
  } else {
    force_integrals(S, f, OK);
  }
  if (OK == 1 && OP != FORCES_IN_ELEMENT_AXES) forces_to_global(S.AX, S.NN, f);
}

void SOLID_RESULTS(const SOLID_CALL& S, std::int32_t& OK) {
  if (S.linear != nullptr) {
    linear_results(S, OK);
  } else {
    results_at_all(S, OK);
  }
}
