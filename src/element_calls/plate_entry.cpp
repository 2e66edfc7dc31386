// plate_entry.cpp: FINITES, the routine through which a solver calls every operation of a plate or shell element.
//
// Preparation reads the element; then each operation sets what its engine reads, runs it (shells/engines) and copies
// the answer to the caller.
#include <algorithm>

#include "element_calls/plate_call.h"
#include "finites/fields.h"
#include "finites/finites.h"
#include "finites/records.h"
#include "finites/services.h"
#include "plate_material/state_in_use.h"
#include "plate_results/res_record.h"
#include "shells/common/behaviour.h"
#include "shells/engines/plate_operations.h"

// A common library that serves one thread only need not define these two: PLATEELEM itself and the exchange area at
// A(RES_BASE) are used then.
#pragma weak TARNIX_PLATEELEM
#pragma weak TARNIX_EXCHANGE_AREA

namespace {

PLATEELEM_RECORD& scratch_record() { return TARNIX_PLATEELEM != nullptr ? *TARNIX_PLATEELEM() : PLATEELEM; }

// A part of the exchange area, by its place there: in the area of this thread, or at A(RES_BASE).
double* swapped(const PLATE_CALL& call, std::int32_t place) {
  double* const area = TARNIX_EXCHANGE_AREA != nullptr ? TARNIX_EXCHANGE_AREA() : nullptr;
  return area != nullptr ? area + place : &call.A(call.res_base + place);
}

// The engines know loads of every kind by one operation.
std::int32_t reported_operation(std::int32_t op) { return op == OP_TEMPERATURE_LOAD ? OP_LOADS : op; }

void copy_to_loads(PLATE_CALL& call, int place, const double* data, int count) {
  for (int i = 0; i < count; ++i) call.LOADS(place + i) = data[i];
}

double* displacements(const PLATE_CALL& call) { return swapped(call, EXCHANGE_DISPLACEMENTS); }

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
  double points[RES_VALUES];
  if (call.geometric == 1) copy_stored_forces(call, points);
  matrix_of_plate(call, call.geometric, nullptr, points, PLATE_MAX_DOFS, matrix);
}

// rho = unit weight / GRAVITY times the mass factor of the element.
void operate_mass(PLATE_CALL& call, double* matrix) {
  call.LOADS(LOAD_DENSITY) = call.unit_weight / GRAVITY * call.mass_factor;
  matrix_of_plate(call, 0, nullptr, nullptr, PLATE_MAX_DOFS, matrix);
}

// U_TOTAL = stored displacements + displacements of the call. 24 forces are returned, on a triangle too.
void operate_forces(const PLATE_CALL& call) {
  double U_TOTAL[PLATE_MAX_DOFS] = {};
  double F[PLATE_MAX_DOFS] = {};
  const double* const U = displacements(call);
  const int count = PLATE_NODE_DOFS * call.nodes;
  if (HAS_ELEMENT(SOLANAELEM.PLATE_STATE, call.plate)) {
    const MATRIX<6, 4>& stored = SOLANAELEM.PLATE_STATE(call.plate).STORED_DISPLACEMENTS;
    std::copy_n(stored.data(), count, U_TOTAL);
  }
  for (int i = 0; i < count; ++i) U_TOTAL[i] += U[i];
  forces_of_plate(call, U, U_TOTAL, F);
  std::copy_n(F, PLATE_MAX_DOFS, swapped(call, EXCHANGE_FORCES));
}

void operate_nodal_loads(const PLATE_CALL& call, double* forces) {
  double F[PLATE_MAX_DOFS] = {};
  loads_of_plate(call, F);
  std::copy_n(F, PLATE_MAX_DOFS, forces);
}

void operate_results(PLATE_CALL& call, const double* data) {
  copy_to_loads(call, LOAD_TEMPERATURE, data, 2);
  results_of_plate(call, displacements(call), swapped(call, EXCHANGE_NODES), swapped(call, EXCHANGE_POINTS));
}

// Operation 7 takes the displacements of the exchange area, operation 71 the stored forces.
void operate_geometric(const PLATE_CALL& call, double* matrix) {
  double points[RES_VALUES];
  if (call.op == OP_GEOMETRIC_STORED) copy_stored_forces(call, points);
  matrix_of_plate(call, 0, displacements(call), points, PLATE_MAX_DOFS, matrix);
}

// Area and weights are kept in single precision, as the record has them; the unit weight takes the place of a density.
void operate_geometry(PLATE_CALL& call) {
  call.LOADS(LOAD_DENSITY) = call.unit_weight;
  const PLATE_SIZE size = size_of_plate(call);
  call.record->AREA = static_cast<float>(size.area);
  call.record->WEIGHT = static_cast<float>(size.weight);
  call.record->FACTORED_WEIGHT = static_cast<float>(size.weight * call.mass_factor);
}

void operate_point_location(PLATE_CALL& call, double* data) {
  copy_to_loads(call, LOAD_POINT, data, 3);
  const PLATE_LOCATION at = location_of_plate(call);
  data[9] = static_cast<double>(at.point_flag1);
  data[10] = static_cast<double>(at.point_flag2);
  data[11] = at.distance;
}

}  // namespace

void FINITES(int32_t* op, const int32_t* elem, const int32_t* k, double* A, const int32_t* /*n*/, double* data,
             double* forces, double* matrix) {
  PLATE_CALL call(scratch_record(), A, *op, *elem, *k);
  prepare_plate(call);
  if (!elastic(call.EL)) call.state = state_of_element(call.EL.ELEM_INDEX, reported_operation(call.op));

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
