// plate_entry.cpp: FINITES, the routine through which a solver calls every operation of a plate or shell element.
//
// Preparation reads the element; then each operation sets what its engine reads, calls the engine and copies the answer
// to the caller. Rigid offsets d between node and element are applied before and after the engine:
//
//     u_element = J u_node,    f_node = J^T f_element,    K_node = P^T K P,    P = diag(J_1, ..., J_nodes)
#include <algorithm>

#include "common/constants.h"
#include "common/finiteness.h"
#include "common/lanes.h"
#include "element_calls/plate_call.h"
#include "element_calls/plate_element_dispatch.h"
#include "finites/fields.h"
#include "finites/finites.h"
#include "finites/records.h"
#include "finites/services.h"
#include "plate_results/res_record.h"
#include "shells/common/behaviour.h"

// A common library that serves one thread only need not define these two: PLATEELEM itself and the exchange area at
// A(RES_BASE) are used then.
#pragma weak TARNIX_PLATEELEM
#pragma weak TARNIX_EXCHANGE_AREA

namespace {

constexpr int NODE_DOFS = 6;
constexpr int MAX_DOFS = 24;
constexpr std::int32_t SIX = NODE_DOFS;

constexpr double NO_DISPLACEMENTS[MAX_DOFS] = {};

// The arguments of an engine that PLATE_CALL does not hold. An operation sets only those that it needs.
struct engine_data {
  const double* U = NO_DISPLACEMENTS;
  const double* U_TOTAL = NO_DISPLACEMENTS;
  double* F = nullptr;
  double* matrix = nullptr;
  double* nodes = nullptr;
  double* points = nullptr;
  MATRIX<3, 3> AXES;
  double area = 0.0, volume = 0.0, weight = 0.0;
  int point_flag1 = 0, point_flag2 = 0;
  double distance = 0.0;
};

PLATEELEM_RECORD& scratch_record() { return TARNIX_PLATEELEM != nullptr ? *TARNIX_PLATEELEM() : PLATEELEM; }

// A part of the exchange area, by its place there: in the area of this thread, or at A(RES_BASE).
double* swapped(const PLATE_CALL& call, std::int32_t place) {
  double* const area = TARNIX_EXCHANGE_AREA != nullptr ? TARNIX_EXCHANGE_AREA() : nullptr;
  return area != nullptr ? area + place : &call.A(call.res_base + place);
}

void call_engine(const PLATE_CALL& call, engine_data& e, int geometric) {
  PLATE_ELEMENT_DISPATCH(call.EL, call.ident, call.EL.ELEM_KIND, call.op, call.xyz, call.LOADS, e.U, e.F,
                         call.record->NODE_PTR, geometric, e.U_TOTAL, e.matrix, e.nodes, e.points, e.AXES, e.area,
                         e.volume, e.weight, e.point_flag1, e.point_flag2, e.distance);
}

void copy_to_loads(PLATE_CALL& call, int place, const double* data, int count) {
  for (int i = 0; i < count; ++i) call.LOADS(place + i) = data[i];
}

// ------------------------------------------------------------------------------------------------ vectors

void read_displacements(const PLATE_CALL& call, double* U) {
  std::copy_n(swapped(call, EXCHANGE_DISPLACEMENTS), NODE_DOFS * call.nodes, U);
}

// Node by node: u := J u with MATMUL_R_V_DBL, f := J^T f with MATMUL_RT_V_DBL.
void carry_over_offsets(const PLATE_CALL& call, decltype(&MATMUL_R_V_DBL) product, double* values) {
  if (!call.offsets_on) return;
  for (int m = 0; m < call.nodes; ++m) {
    double* at = values + NODE_DOFS * m;
    double carried[NODE_DOFS];
    product(call.J[m].data(), at, carried, &SIX, &SIX);
    std::copy_n(carried, NODE_DOFS, at);
  }
}

void displace_by_offsets(const PLATE_CALL& call, double* U) { carry_over_offsets(call, MATMUL_R_V_DBL, U); }

void move_forces_by_offsets(const PLATE_CALL& call, double* F) { carry_over_offsets(call, MATMUL_RT_V_DBL, F); }

// ------------------------------------------------------------------------------------------------ matrices

// K := P^T K P by the full product, which carries infinities and NaN into all that they touch.
void multiply_by_offsets(const PLATE_CALL& call, double* matrix) {
  double P[MAX_DOFS * MAX_DOFS];
  const VECTOR<3>* d = call.offset;
  const std::int32_t nodes = call.nodes;
  const std::int32_t order = NODE_DOFS * call.nodes;
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
void link_matrix(const PLATE_CALL& call, bool symmetric, double* matrix) {
  constexpr int ORDER = NODE_DOFS * NODES;
  if (!all_finite(matrix, ORDER * ORDER)) {
    multiply_by_offsets(call, matrix);
    return;
  }
  for (int m = 0; m < NODES; ++m) {
    const int rows = symmetric ? NODE_DOFS * (m + 1) : ORDER;
    link_columns<ORDER>(call.J[m], rows, matrix + NODE_DOFS * m * ORDER);
  }
  for (int m = 0; m < NODES; ++m) {
    const int first = symmetric ? NODE_DOFS * m : 0;
    link_rows<ORDER>(call.J[m], matrix + first * ORDER + NODE_DOFS * m, matrix + ORDER * ORDER);
  }
  if (symmetric) mirror_upper<ORDER>(matrix);
}

// The tangents of the plastic models need not be symmetric, all other matrices are.
bool symmetric_matrix(const PLATE_CALL& call) { return call.op != OP_STIFFNESS || elastic(call.EL); }

void move_matrix_by_offsets(const PLATE_CALL& call, double* matrix) {
  if (!call.offsets_on) return;
  if (call.nodes == 4) {
    link_matrix<4>(call, symmetric_matrix(call), matrix);
  } else {
    link_matrix<3>(call, symmetric_matrix(call), matrix);
  }
}

// Calls the engine for a matrix. A four-node engine writes directly into the caller's matrix of 24 by 24; the 18 by 18
// matrix of a triangle is copied to its top left corner, and the other entries of the caller stay unchanged.
void call_for_matrix(const PLATE_CALL& call, engine_data& e, int geometric, double* matrix) {
  if (call.nodes == 4) {
    e.matrix = matrix;
    call_engine(call, e, geometric);
    move_matrix_by_offsets(call, matrix);
    return;
  }
  constexpr int order = 3 * NODE_DOFS;
  double compact[order * order];
  e.matrix = compact;
  call_engine(call, e, geometric);
  move_matrix_by_offsets(call, compact);
  for (int j = 0; j < order; ++j) std::copy_n(compact + j * order, order, matrix + j * MAX_DOFS);
}

// Copies the forces of the last converged state to columns 37 to 42 of the blocks of the points; zero without a state.
void copy_stored_forces(const PLATE_CALL& call, double* points) {
  std::fill_n(points, RES_VALUES, 0.0);
  if (!HAS_ELEMENT(SOLANAELEM.PLATE_STATE, call.plate)) return;
  const MATRIX<6, 4>& stored = SOLANAELEM.PLATE_STATE(call.plate).STORED_NODAL_FORCES;
  for (int p = 1; p <= RES_POINTS; ++p) {
    const RES_BLOCK R = BLOCK_OF(points, p);
    for (int i = 1; i <= 6; ++i) R(COL_FORCES + i - 1) = stored(i, p);
  }
}

// ------------------------------------------------------------------------------------------------ operations

void operate_stiffness(const PLATE_CALL& call, double* matrix) {
  engine_data e;
  double points[RES_VALUES];
  if (call.geometric == 1) copy_stored_forces(call, points);
  e.points = points;
  call_for_matrix(call, e, call.geometric, matrix);
}

// rho = unit weight / GRAVITY times the mass factor of the element.
void operate_mass(PLATE_CALL& call, double* matrix) {
  engine_data e;
  call.LOADS(LOAD_DENSITY) = call.unit_weight / GRAVITY * call.mass_factor;
  call_for_matrix(call, e, 0, matrix);
}

// U_TOTAL = stored displacements + displacements of the call. 24 forces are returned, on a triangle too.
void operate_forces(const PLATE_CALL& call) {
  engine_data e;
  double U[MAX_DOFS] = {};
  double U_TOTAL[MAX_DOFS] = {};
  double F[MAX_DOFS] = {};
  e.U = U;
  e.U_TOTAL = U_TOTAL;
  e.F = F;
  read_displacements(call, U);
  if (HAS_ELEMENT(SOLANAELEM.PLATE_STATE, call.plate)) {
    const MATRIX<6, 4>& stored = SOLANAELEM.PLATE_STATE(call.plate).STORED_DISPLACEMENTS;
    std::copy_n(stored.data(), NODE_DOFS * call.nodes, U_TOTAL);
  }
  for (int i = 0; i < NODE_DOFS * call.nodes; ++i) U_TOTAL[i] += U[i];
  displace_by_offsets(call, U);
  displace_by_offsets(call, U_TOTAL);
  call_engine(call, e, 0);
  if (call.op == OP_FORCES) move_forces_by_offsets(call, F);  // operation 33 returns forces in element axes
  std::copy_n(F, MAX_DOFS, swapped(call, EXCHANGE_FORCES));
}

void operate_nodal_loads(const PLATE_CALL& call, double* forces) {
  engine_data e;
  double F[MAX_DOFS] = {};
  e.F = F;
  call_engine(call, e, 0);
  move_forces_by_offsets(call, F);
  std::copy_n(F, MAX_DOFS, forces);
}

void operate_results(PLATE_CALL& call, const double* data) {
  engine_data e;
  double U[MAX_DOFS] = {};
  e.U = U;
  copy_to_loads(call, LOAD_TEMPERATURE, data, 2);
  read_displacements(call, U);
  displace_by_offsets(call, U);
  e.nodes = swapped(call, EXCHANGE_NODES);
  e.points = swapped(call, EXCHANGE_POINTS);
  std::fill_n(e.nodes, RES_VALUES, 0.0);
  std::fill_n(e.points, RES_VALUES, 0.0);
  call_engine(call, e, 0);
}

// Operation 7 takes the displacements of the exchange area, operation 71 the stored forces.
void operate_geometric(const PLATE_CALL& call, double* matrix) {
  engine_data e;
  double U[MAX_DOFS] = {};
  double points[RES_VALUES];
  e.U = U;
  e.points = points;
  if (call.op == OP_GEOMETRIC) {
    read_displacements(call, U);
    displace_by_offsets(call, U);
  } else {
    copy_stored_forces(call, points);
  }
  call_for_matrix(call, e, 0, matrix);
}

// Area and weights are kept in single precision, as the record has them; the unit weight takes the place of a density.
void operate_geometry(PLATE_CALL& call) {
  engine_data e;
  call.LOADS(LOAD_DENSITY) = call.unit_weight;
  call_engine(call, e, 0);
  call.record->AREA = static_cast<float>(e.area);
  call.record->WEIGHT = static_cast<float>(e.weight);
  call.record->FACTORED_WEIGHT = static_cast<float>(e.weight * call.mass_factor);
}

void operate_point_location(PLATE_CALL& call, double* data) {
  engine_data e;
  copy_to_loads(call, LOAD_POINT, data, 3);
  call_engine(call, e, 0);
  data[9] = static_cast<double>(e.point_flag1);
  data[10] = static_cast<double>(e.point_flag2);
  data[11] = e.distance;
}

}  // namespace

void FINITES(int32_t* op, const int32_t* elem, const int32_t* k, double* A, const int32_t* /*n*/, double* data,
             double* forces, double* matrix) {
  PLATE_CALL call(scratch_record(), A, *op, *elem, *k);
  prepare_plate(call);

  switch (call.op) {
    case OP_STIFFNESS: operate_stiffness(call, matrix); break;
    case OP_MASS: operate_mass(call, matrix); break;
    case OP_FORCES:
    case OP_FORCES_COMMIT: operate_forces(call); break;
    case OP_LOADS:
      copy_to_loads(call, LOAD_SURFACE, data, 6);
      operate_nodal_loads(call, forces);
      break;
    case OP_BODY_LOAD:
      copy_to_loads(call, LOAD_BODY, data, 3);
      *op = call.op = OP_LOADS;
      operate_nodal_loads(call, forces);
      break;
    case OP_TEMPERATURE_LOAD:
      copy_to_loads(call, LOAD_TEMPERATURE, data, 2);
      *op = call.op = OP_LOADS;
      operate_nodal_loads(call, forces);
      break;
    case OP_POINT_LOAD:
      copy_to_loads(call, LOAD_POINT, data, 9);
      operate_nodal_loads(call, forces);
      break;
    case OP_RESULTS: operate_results(call, data); break;
    case OP_GEOMETRIC:
    case OP_GEOMETRIC_STORED: operate_geometric(call, matrix); break;
    case OP_GEOMETRY: operate_geometry(call); break;
    case OP_POINT_LOCATION: operate_point_location(call, data); break;
    default: break;
  }
}
