// linear_matrices.cpp: stiffness, mass and geometric stiffness of the linear kinds, in global axes.
//
// With J = Jacobian in element axes, A = its adjugate, J^-1 = A / det J, and dV = w |det J|, the gradients of a point
// turned to global axes and scaled by the root of its volume are
//
//     h_k = sqrt(dV) AX^T J^-1 DN_k = AX^T A DN_k sqrt(w / |det J|)            one division and one root per point.
//
// The elastic matrix is isotropic: it has the same form in all axes, and the block of two nodes is made of their dyad
//
//     C = sum_p h_i h_j^T       K(r,s) = cross C(r,s) + shear C(s,r),    r != s
//                               K(r,r) = direct C(r,r) + shear (C(s,s) + C(t,t))
//
// Mass and geometric stiffness have one number k for two nodes: the block k I of element axes is k AX^T AX.
//
// The rows of a dyad are those of two neighbouring nodes, one in each lane.
#include "solids/linear_matrices.h"

#include "common/constants.h"
#include "common/lanes.h"
#include "common/small_products.h"
#include "finites/fields.h"
#include "solids/linear_blocks.h"
#include "solids/linear_vectors.h"

namespace {

// (k, 3 (p - 1) + c): component c of the gradient of node k at point p, times the root of the point's volume.
using SCALED_GRADIENTS = MATRIX<LINEAR_NODES, 3 * LINEAR_NODES>;

// Blocks of two neighbouring nodes with a third node.
using PAIR_BLOCK = MATRIX<3, 3, LANES>;

// The gradients of point p, T DN_k with T of one lane.
void set_gradients(const LINEAR_KIND& kind, int p, const LANE_MATRIX& T, int lane, SCALED_GRADIENTS& H) {
  const int q = 3 * (p - 1);
  for (int k = 1; k < kind.nodes; k += 2) {
    const LANES by_xi = lanes_at(&kind.derivative(k, q + 1));
    const LANES by_eta = lanes_at(&kind.derivative(k, q + 2));
    const LANES by_zeta = lanes_at(&kind.derivative(k, q + 3));
    for (int c = 1; c <= 3; ++c) {
      store_lanes(&H(k, q + c), T(c, 1)[lane] * by_xi + T(c, 2)[lane] * by_eta + T(c, 3)[lane] * by_zeta);
    }
  }
}

// The gradients of all points, turned to global axes where asked for. OK := 0 where a Jacobian is singular.
void scaled_gradients(const SOLID_CALL& S, bool global, SCALED_GRADIENTS& H, std::int32_t& OK) {
  const LINEAR_KIND& kind = *S.linear;
  for (int p = 1; p <= kind.points; p += 2) {
    const INVERSE_PAIR I = inverse_at(kind.at_points, p, S.XE);
    if (singular(I.DET[0]) || singular(I.DET[1])) {
      OK = 0;
      return;
    }
    LANE_MATRIX T = global ? turned_rows(S.AX, I.ADJ) : I.ADJ;
    const LANES scale = root(lanes_at(&kind.weight(p)) / magnitude(I.DET));
    for (LANES& t : T.V) t *= scale;
    set_gradients(kind, p, T, 0, H);
    if (p < kind.points) set_gradients(kind, p + 1, T, 1, H);
  }
}

// C(r, s) of the nodes i, i + 1 with node j.
PAIR_BLOCK dyads(const SCALED_GRADIENTS& H, int points, int i, int j) {
  PAIR_BLOCK C{};
  for (int q = 0; q < 3 * points; q += 3) {
    const LANES a = lanes_at(&H(i, q + 1));
    const LANES b = lanes_at(&H(i, q + 2));
    const LANES c = lanes_at(&H(i, q + 3));
    for (int s = 1; s <= 3; ++s) {
      const double x = H(j, q + s);
      C(1, s) += a * x;
      C(2, s) += b * x;
      C(3, s) += c * x;
    }
  }
  return C;
}

// The blocks (i, j) and (i + 1, j) and their transposes.
void store_blocks(const PAIR_BLOCK& B, int i, int j, double* K) {
  const MATRIX_VIEW<SOLID_MATRIX_ROWS> k(K);
  const int row = 3 * i - 2;
  const int column = 3 * j - 2;
  for (int s = 1; s <= 3; ++s) {
    double* const to = &k(row, column + s - 1);
    store_lanes(to, LANES{B(1, s)[0], B(2, s)[0]});
    store_lanes(to + 2, LANES{B(3, s)[0], B(1, s)[1]});
    store_lanes(to + 4, LANES{B(2, s)[1], B(3, s)[1]});
  }
  for (int lane = 0; lane < 2; ++lane) {
    for (int r = 1; r <= 3; ++r) {
      double* const to = &k(column, row + 3 * lane + r - 1);
      store_lanes(to, LANES{B(r, 1)[lane], B(r, 2)[lane]});
      to[2] = B(r, 3)[lane];
    }
  }
}

// k(i, j) = sum_q  a(i, q) b(j, q), which is the same for (j, i).
template <int N>
void sum_of_products(const MATRIX<LINEAR_NODES, N>& a, const MATRIX<LINEAR_NODES, N>& b, int nodes, int count,
                     NODE_PAIRS& k) {
  for (int i = 1; i < nodes; i += 2) {
    for (int j = i; j <= nodes; ++j) {
      LANES sum{};
      for (int q = 1; q <= count; ++q) sum += lanes_at(&a(i, q)) * b(j, q);
      store_lanes(&k(i, j), sum);
      k(j, i) = sum[0];
      k(j, i + 1) = sum[1];
    }
  }
}

// The stresses of the points (6, points): of U_ELEM in operation 7, otherwise those that the solver stores.
void SOLID_STRESS_MATRIX(const SOLID_CALL& S, std::int32_t OP, MATRIX<6, LINEAR_NODES>& stress, std::int32_t& OK) {
  if (OP == OP_GEOMETRIC) {
    POINT_STATES state;
    point_states(S, state, OK);
    if (OK != 1) return;
    for (int p = 0; p < S.points; ++p) {
      for (int i = 1; i <= 6; ++i) stress(i, p + 1) = state.pair[p / 2].stress(i)[p % 2];
    }
    return;
  }
  for (int p = 1; p <= S.points; ++p) {
    for (int i = 1; i <= 6; ++i) stress(i, p) = S.nonlinear != nullptr ? S.nonlinear->GAUSS_STRESS(i, p) : 0.0;
  }
}

// Calls put(value, to) for all entries of the blocks AX^T k AX, two of a column at a time.
template <class PUT>
void for_blocks(const MATRIX<3, 3>& AX, std::int32_t NN, const NODE_PAIRS& k, double* K, PUT put) {
  const MATRIX_VIEW<SOLID_MATRIX_ROWS> view(K);
  const MATRIX<3, 3> M = product(transposed(AX), AX);
  for (int j = 1; j <= NN; ++j) {
    for (int s = 1; s <= 3; ++s) {
      const LANES m12 = {M(1, s), M(2, s)};
      const LANES m31 = {M(3, s), M(1, s)};
      const LANES m23 = {M(2, s), M(3, s)};
      for (int i = 1; i < NN; i += 2) {
        double* const to = &view(3 * i - 2, 3 * (j - 1) + s);
        put(k(i, j) * m12, to);
        put(lanes_at(&k(i, j)) * m31, to + 2);
        put(k(i + 1, j) * m23, to + 4);
      }
    }
  }
}

}  // namespace

void SOLID_K_LINEAR(const SOLID_CALL& S, double* K, std::int32_t& OK) {
  SCALED_GRADIENTS H;
  scaled_gradients(S, true, H, OK);
  if (OK != 1) return;
  const ELASTIC_TERMS D = elastic_terms(S);
  for (int i = 1; i < S.NN; i += 2) {
    for (int j = i; j <= S.NN; ++j) store_blocks(elastic_block(D, dyads(H, S.points, i, j)), i, j, K);
  }
}

//     m(i, j) = sum_p  N_i (rho N_j dV),      rho = unit weight / GRAVITY
void SOLID_MASS(const SOLID_CALL& S, NODE_PAIRS& m, std::int32_t& OK) {
  const LINEAR_KIND& kind = *S.linear;
  const double density = S.unit_weight / GRAVITY;
  NODE_PAIRS weighted;
  for (int p = 1; p <= kind.points; p += 2) {
    const LANES det = inverse_at(kind.at_points, p, S.XE).DET;
    if (singular(det[0]) || singular(det[1])) {
      OK = 0;
      return;
    }
    const LANES mass = density * (lanes_at(&kind.weight(p)) * magnitude(det));
    for (int k = 1; k <= kind.nodes; ++k) {
      weighted(k, p) = mass[0] * kind.function(k, p);
      if (p < kind.points) weighted(k, p + 1) = mass[1] * kind.function(k, p + 1);
    }
  }
  sum_of_products(kind.function, weighted, kind.nodes, kind.points, m);
}

//     k(i, j) = sum_p  h_i^T S h_j,      in element axes, as the stress S is
void SOLID_K_GEOM(const SOLID_CALL& S, std::int32_t OP, NODE_PAIRS& k, std::int32_t& OK) {
  SCALED_GRADIENTS h;
  SCALED_GRADIENTS t;  // S h
  MATRIX<6, LINEAR_NODES> stress;
  scaled_gradients(S, false, h, OK);
  if (OK == 1) SOLID_STRESS_MATRIX(S, OP, stress, OK);
  if (OK != 1) return;
  for (int p = 1; p <= S.points; ++p) {
    const double* const s = &stress(1, p);
    const int q = 3 * p - 2;
    for (int i = 1; i < S.NN; i += 2) {
      const LANES x = lanes_at(&h(i, q));
      const LANES y = lanes_at(&h(i, q + 1));
      const LANES z = lanes_at(&h(i, q + 2));
      store_lanes(&t(i, q), s[0] * x + s[3] * y + s[4] * z);
      store_lanes(&t(i, q + 1), s[3] * x + s[1] * y + s[5] * z);
      store_lanes(&t(i, q + 2), s[4] * x + s[5] * y + s[2] * z);
    }
  }
  sum_of_products(h, t, S.NN, 3 * S.points, k);
}

void SOLID_K_TO_GLOBAL(const MATRIX<3, 3>& AX, std::int32_t NN, const NODE_PAIRS& k, double* K) {
  for_blocks(AX, NN, k, K, [](LANES value, double* to) { store_lanes(to, value); });
}

void SOLID_K_TO_GLOBAL_ADDED(const MATRIX<3, 3>& AX, std::int32_t NN, const NODE_PAIRS& k, double* K) {
  for_blocks(AX, NN, k, K, [](LANES value, double* to) { store_lanes(to, lanes_at(to) + value); });
}
