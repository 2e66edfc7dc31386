// plate_operations.cpp: the operations on a filled plate.
#include "shells/engines/plate_operations.h"

#include <algorithm>

#include "finites/fields.h"
#include "finites/records.h"
#include "shells/common/flat_parts.h"
#include "shells/engines/plate_element_dispatch.h"
#include "shells/engines/rigid_links.h"

namespace {

constexpr double NO_DISPLACEMENTS[PLATE_MAX_DOFS] = {};

// The arguments of an engine that FILLED_PLATE does not hold. An operation sets only those that it needs.
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

void call_engine(const FILLED_PLATE& plate, engine_data& e, int geometric, int leading = PLATE_MAX_DOFS) {
  PLATE_ELEMENT_DISPATCH(plate.EL, plate.ident, plate.EL.ELEM_KIND, plate.op, plate.xyz, plate.LOADS, e.U, e.F,
                         plate.node_list, geometric, e.U_TOTAL, e.matrix, e.nodes, e.points, e.AXES, e.area, e.volume,
                         e.weight, e.point_flag1, e.point_flag2, e.distance, plate.state, leading);
}

// U(24): the displacements of the corners from those of the nodes.
void displace_corners(const FILLED_PLATE& plate, const double* u, double* U) {
  std::fill_n(U, PLATE_MAX_DOFS, 0.0);
  std::copy_n(u, PLATE_NODE_DOFS * plate.nodes, U);
  displace_by_offsets(plate, U);
}

}  // namespace

namespace {

void call_for_matrix(const FILLED_PLATE& plate, engine_data& e, int geometric, int leading, double* matrix) {
  e.matrix = matrix;
  call_engine(plate, e, geometric, leading);
  move_matrix_by_offsets(plate, matrix);
}

}  // namespace

// The engine writes directly to the caller, a triangle's 18 by 18 to the top left corner, and the other entries stay
// unchanged. Offsets move a matrix of its own order, which is copied there.
void matrix_of_plate(const FILLED_PLATE& plate, int geometric, const double* u, double* points, int leading,
                     double* matrix) {
  engine_data e;
  double U[PLATE_MAX_DOFS];
  if (plate.op == OP_GEOMETRIC) {
    displace_corners(plate, u, U);
    e.U = U;
  }
  e.points = points;
  constexpr int order = 3 * PLATE_NODE_DOFS;
  if (plate.nodes == 4 || leading == order || !plate.offsets_on) {
    call_for_matrix(plate, e, geometric, leading, matrix);
    return;
  }
  double compact[order * order];
  call_for_matrix(plate, e, geometric, order, compact);
  spread_columns(compact, order, leading, matrix);
}

void forces_of_plate(const FILLED_PLATE& plate, const double* u, double* u_total, double* F) {
  engine_data e;
  double U[PLATE_MAX_DOFS];
  displace_corners(plate, u, U);
  e.U = e.U_TOTAL = U;
  if (u_total != nullptr) {
    displace_by_offsets(plate, u_total);
    e.U_TOTAL = u_total;
  }
  e.F = F;
  call_engine(plate, e, 0);
  if (plate.op == OP_FORCES) move_forces_by_offsets(plate, F);  // operation 33 returns forces in element axes
}

void loads_of_plate(const FILLED_PLATE& plate, double* F) {
  engine_data e;
  e.F = F;
  call_engine(plate, e, 0);
  move_forces_by_offsets(plate, F);
}

void results_of_plate(const FILLED_PLATE& plate, const double* u, double* nodes, double* points) {
  engine_data e;
  double U[PLATE_MAX_DOFS];
  displace_corners(plate, u, U);
  e.U = U;
  e.nodes = nodes;
  e.points = points;
  std::fill_n(nodes, RES_VALUES, 0.0);
  std::fill_n(points, RES_VALUES, 0.0);
  call_engine(plate, e, 0);
}

PLATE_SIZE size_of_plate(const FILLED_PLATE& plate) {
  engine_data e;
  call_engine(plate, e, 0);
  return {e.area, e.volume, e.weight, e.AXES};
}

PLATE_LOCATION location_of_plate(const FILLED_PLATE& plate) {
  engine_data e;
  call_engine(plate, e, 0);
  return {e.point_flag1, e.point_flag2, e.distance};
}
