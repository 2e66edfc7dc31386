// plate_preparation.cpp: reads MODEL_DATA and the records, and sets PLATEELEM, coordinates and modifiers for any
// operation.
#include "element_calls/plate_call.h"
#include "element_calls/plate_material_choice.h"
#include "finites/fields.h"
#include "finites/records.h"
#include "shells/engines/filled_plate.h"
#include "shells/engines/rigid_links.h"

namespace {

// first_pass: the first step of a nonlinear run, before any state has converged.
void read_switches(PLATE_CALL& call) {
  const MODEL_DATA& A = call.A;
  call.nonlin_material = A.INTEGER(NONLIN_MATERIAL) == 1;
  call.first_pass = A.INTEGER(ANALYSIS_STATE) == 1 && A.INTEGER(STEP_COUNTER) == 0;
  // On the very first pass of a nonlinear run no forces exist yet.
  call.geometric = A.INTEGER(SECOND_ORDER) == GEOMETRIC_ADDED && !call.first_pass ? 1 : 0;
  call.res_base = A.INTEGER(RES_BASE);
}

void read_element(PLATE_CALL& call) {
  const MODEL_DATA& A = call.A;
  call.ident = A.INTEGER(call.k + ELEM_ID);
  call.plate = plate_of(call.elem);
  call.record = &SOLANAELEM.PLATE_RECORDS(call.plate);
  call.node_list = call.record->NODE_PTR;
  call.nodes = call.record->NODE_COUNT == 3 ? 3 : 4;
  call.mass_factor = A(call.k + MASS_FACTOR);
  call.formulation = A.INTEGER(call.k + FORMULATION);
  call.plastic_switch = A.INTEGER(call.k + PLASTIC_SWITCH);
  call.offsets_on = A.INTEGER(call.k + OFFSET_SWITCH) > 0;
}

// Each node has its own offset where PLATE_OF_ELEM is allocated; otherwise all have the one of the element block.
void read_offsets(PLATE_CALL& call) {
  if (!call.offsets_on) return;
  const bool by_node = ALLOCATED(SOLANAELEM.PLATE_OF_ELEM);
  for (int m = 1; m <= 4; ++m) {
    VECTOR<3>& d = call.offset[m - 1];
    for (int i = 1; i <= 3; ++i) {
      d(i) = by_node ? call.record->NODE_OFFSETS(m, i) : call.A(call.k + COMMON_OFFSET + i - 1);
    }
  }
  set_rigid_links(call);
}

void read_modifiers(PLATE_CALL& call) {
  call.modifiers.membrane = call.A(call.k + MODIFIER_MEMBRANE);
  call.modifiers.bending = call.A(call.k + MODIFIER_BENDING);
  call.modifiers.shear = call.A(call.k + MODIFIER_SHEAR);
  call.ortho_angle = static_cast<float>(call.A(call.k + ORTHO_ANGLE_IN));
}

void read_section_and_material(PLATE_CALL& call) {
  const MODEL_DATA& A = call.A;
  const std::int64_t sec = call.record->SECTION_PTR;
  call.section_number = A.INTEGER(sec + SECTION_NUMBER);
  call.section_type = A.INTEGER(sec + SECTION_TYPE);
  call.EL.THICKNESS = A(sec + SECTION_THICKNESS);

  const std::int64_t mat = call.record->MATERIAL_PTR;
  call.material_number = A.INTEGER(mat + MATERIAL_NUMBER);
  call.EL.YIELD_STRESS = A(mat + MATERIAL_YIELD_STRESS);
  call.EL.E1 = A(mat + MATERIAL_YOUNG);
  call.EL.NU1 = A(mat + MATERIAL_POISSON);
  call.unit_weight = A(mat + MATERIAL_UNIT_WEIGHT);
  call.EL.ALPHA1 = A(mat + MATERIAL_EXPANSION);
  call.shear_modulus = A(mat + MATERIAL_SHEAR_MODULUS);
}

// Mass, loads without temperature, geometry and points need no material.
bool needs_material(std::int32_t op) {
  switch (op) {
    case OP_MASS:
    case OP_LOADS:
    case OP_BODY_LOAD:
    case OP_GEOMETRY:
    case OP_POINT_LOCATION:
    case OP_POINT_LOAD: return false;
    default: return true;
  }
}

// The fourth node is read only where the record has exactly four.
void read_coordinates(PLATE_CALL& call) {
  const int listed = call.record->NODE_COUNT == 4 ? 4 : 3;
  for (int m = 1; m <= 4; ++m) {
    double* x = call.xyz + 3 * (m - 1);
    if (m > listed) {
      x[0] = x[1] = x[2] = 0.0;
      continue;
    }
    const std::int64_t ptr = call.record->NODE_PTR(m);
    for (int i = 0; i < 3; ++i) x[i] = call.A(ptr + NODE_X + i);
    if (!call.offsets_on) continue;
    for (int i = 0; i < 3; ++i) x[i] -= call.offset[m - 1](i + 1);
  }
}

}  // namespace

void prepare_plate(PLATE_CALL& call) {
  call.EL = PLATEELEM_RECORD{};
  call.LOADS = ELEM_LOADS{};
  read_switches(call);
  read_element(call);
  read_offsets(call);
  read_modifiers(call);
  read_section_and_material(call);
  set_default_section(call.EL, call.modifiers);
  if (needs_material(call.op)) resolve_plate_material(call);
  read_coordinates(call);
  set_kind(call, call.formulation, call.modifiers);
}
