// plate_call.h: the data of one call of FINITES, filled by the preparation and read by the operation.
#ifndef FINITES_PLATE_CALL_H
#define FINITES_PLATE_CALL_H

#include <cstdint>

#include "common/plate_index.h"
#include "finites/fields.h"
#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/elem_loads.h"

struct PLATE_CALL {
  PLATEELEM_RECORD& EL;  // the scratch record of this thread
  MODEL_DATA A;
  std::int32_t op;
  std::int32_t elem;
  std::int64_t k;  // place of the element block in A
  std::int32_t ident;
  std::int32_t plate;  // index into PLATE_RECORDS and PLATE_STATE
  PLATE_RECORD* record;
  int nodes;  // 3 or 4
  std::int32_t formulation;
  std::int32_t plastic_switch;
  bool nonlin_material;
  bool first_pass;  // the very first pass of a nonlinear run
  int geometric;    // 1: the geometric stiffness belongs to the stiffness
  std::int64_t res_base;
  double mass_factor;
  double mod_membrane, mod_bending, mod_shear;  // stiffness modifiers

  std::int32_t section_number, section_type, material_number;
  double unit_weight, shear_modulus;
  float ortho_angle;

  bool offsets_on;
  VECTOR<3> offset[4];  // by node
  MATRIX<6, 6> J[4];    // rigid links, set when the offsets are on
  double xyz[12];       // coordinates by node; those of a missing fourth node are 0
  ELEM_LOADS LOADS;

  PLATE_CALL(PLATEELEM_RECORD& scratch, double* a, std::int32_t operation, std::int32_t element, std::int32_t block)
      : EL(scratch), A(a), op(operation), elem(element), k(block) {}
};

// Sets everything that the operations read: EL, the node coordinates minus the offsets, the modifiers in LOADS.
void prepare_plate(PLATE_CALL& call);

#endif
