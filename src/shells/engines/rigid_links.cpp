// rigid_links.cpp: rigid links between the nodes and the corners of a plate.
#include "shells/engines/rigid_links.h"

#include <algorithm>
#include <cstdint>

#include "common/finiteness.h"
#include "common/lanes.h"
#include "finites/fields.h"
#include "finites/services.h"
#include "shells/common/behaviour.h"

namespace {

constexpr std::int32_t SIX = PLATE_NODE_DOFS;

// Node by node: u := J u with MATMUL_R_V_DBL, f := J^T f with MATMUL_RT_V_DBL.
void carry_over_offsets(const FILLED_PLATE& plate, decltype(&MATMUL_R_V_DBL) product, double* values) {
  if (!plate.offsets_on) return;
  for (int m = 0; m < plate.nodes; ++m) {
    double* at = values + PLATE_NODE_DOFS * m;
    double carried[PLATE_NODE_DOFS];
    product(plate.J[m].data(), at, carried, &SIX, &SIX);
    std::copy_n(carried, PLATE_NODE_DOFS, at);
  }
}

// K := P^T K P by the full product, which carries infinities and NaN into all that they touch.
void multiply_by_offsets(const FILLED_PLATE& plate, double* matrix) {
  double P[PLATE_MAX_DOFS * PLATE_MAX_DOFS];
  const VECTOR<3>* d = plate.offset;
  const std::int32_t nodes = plate.nodes;
  const std::int32_t order = PLATE_NODE_DOFS * plate.nodes;
  GET_PLATE_OFFSET_P_DBL(&nodes, &d[0](1), &d[0](2), &d[0](3), &d[1](1), &d[1](2), &d[1](3), &d[2](1), &d[2](2),
                         &d[2](3), &d[3](1), &d[3](2), &d[3](3), P);
  MATMUL_RT_M_R_DBL(P, matrix, &order, &order, &order);
}

// K := P^T K P node by node. P is the identity and, for each node, S: the upper right block of its rigid link J.
//
//     K(:, theta) := K(:, u) S + K(:, theta),    K(theta, :) := S^T K(u, :) + K(theta, :)
//
// S is skew, since a rotation displaces the end of a link across its own axis: the zeros on its diagonal are left out.
// Of a symmetric K the upper triangle is linked and then mirrored.
inline void link_column(const double* a, const double* b, double s_a, double s_b, int rows, double* theta) {
  for (int i = 0; i < rows; i += 2) {
    store_lanes(theta + i, lanes_at(a + i) * s_a + lanes_at(b + i) * s_b + lanes_at(theta + i));
  }
}

template <int ORDER>
void link_columns(const MATRIX<6, 6>& J, int rows, double* u) {
  double* const v = u + ORDER;
  double* const w = v + ORDER;
  double* const theta = w + ORDER;
  link_column(v, w, J(2, 4), J(3, 4), rows, theta);
  link_column(u, w, J(1, 5), J(3, 5), rows, theta + ORDER);
  link_column(u, v, J(1, 6), J(2, 6), rows, theta + 2 * ORDER);
}

// The rows of one node in the columns from u to end. Rows theta x and theta y go in the two lanes.
template <int ORDER>
void link_rows(const MATRIX<6, 6>& J, double* u, const double* end) {
  const LANES s_vu = LANES{J(2, 4), J(1, 5)};
  const LANES s_w = LANES{J(3, 4), J(3, 5)};
  const double s_u = J(1, 6);
  const double s_v = J(2, 6);
  for (double* column = u; column < end; column += ORDER) {
    store_lanes(column + 3, LANES{column[1], column[0]} * s_vu + column[2] * s_w + lanes_at(column + 3));
    column[5] = column[0] * s_u + column[1] * s_v + column[5];
  }
}

template <int ORDER>
void mirror_upper(double* matrix) {
  for (int j = 0; j < ORDER; j += 2) {
    const double* const column = matrix + j * ORDER;
    for (int i = 0; i < j; i += 2) {
      const LANES a = lanes_at(column + i);
      const LANES b = lanes_at(column + ORDER + i);
      store_lanes(matrix + i * ORDER + j, LANES{a[0], b[0]});
      store_lanes(matrix + (i + 1) * ORDER + j, LANES{a[1], b[1]});
    }
    matrix[j * ORDER + j + 1] = matrix[(j + 1) * ORDER + j];
  }
}

template <int NODES>
void link_matrix(const FILLED_PLATE& plate, bool symmetric, double* matrix) {
  constexpr int ORDER = PLATE_NODE_DOFS * NODES;
  if (!all_finite(matrix, ORDER * ORDER)) {
    multiply_by_offsets(plate, matrix);
    return;
  }
  for (int m = 0; m < NODES; ++m) {
    const int rows = symmetric ? PLATE_NODE_DOFS * (m + 1) : ORDER;
    link_columns<ORDER>(plate.J[m], rows, matrix + PLATE_NODE_DOFS * m * ORDER);
  }
  for (int m = 0; m < NODES; ++m) {
    const int first = symmetric ? PLATE_NODE_DOFS * m : 0;
    link_rows<ORDER>(plate.J[m], matrix + first * ORDER + PLATE_NODE_DOFS * m, matrix + ORDER * ORDER);
  }
  if (symmetric) mirror_upper<ORDER>(matrix);
}

// The tangents of the plastic models need not be symmetric, all other matrices are.
bool symmetric_matrix(const FILLED_PLATE& plate) { return plate.op != OP_STIFFNESS || elastic(plate.EL); }

}  // namespace

void set_rigid_links(FILLED_PLATE& plate) {
  for (int m = 0; m < 4; ++m) {
    const VECTOR<3>& d = plate.offset[m];
    GET_JOINT_OFFSET_J6D(&d(1), &d(2), &d(3), plate.J[m].data());
  }
}

void displace_by_offsets(const FILLED_PLATE& plate, double* U) { carry_over_offsets(plate, MATMUL_R_V_DBL, U); }

void move_forces_by_offsets(const FILLED_PLATE& plate, double* F) { carry_over_offsets(plate, MATMUL_RT_V_DBL, F); }

void move_matrix_by_offsets(const FILLED_PLATE& plate, double* matrix) {
  if (!plate.offsets_on) return;
  if (plate.nodes == 4) {
    link_matrix<4>(plate, symmetric_matrix(plate), matrix);
  } else {
    link_matrix<3>(plate, symmetric_matrix(plate), matrix);
  }
}
