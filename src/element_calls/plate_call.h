// plate_call.h: the data of one call of FINITES, filled by the preparation and read by the operation.
#ifndef FINITES_PLATE_CALL_H
#define FINITES_PLATE_CALL_H

#include <cstdint>

#include "common/plate_index.h"
#include "finites/fields.h"
#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/engines/filled_plate.h"

struct PLATE_CALL : FILLED_PLATE {  // EL is the scratch record of this thread
  MODEL_DATA A;
  std::int32_t elem;
  std::int64_t k;      // place of the element block in A
  std::int32_t plate;  // index into PLATE_RECORDS and PLATE_STATE
  PLATE_RECORD* record;
  std::int32_t formulation;
  std::int32_t plastic_switch;
  bool nonlin_material;
  bool first_pass;  // the very first pass of a nonlinear run
  int geometric;    // 1: the geometric stiffness belongs to the stiffness
  std::int64_t res_base;
  double mass_factor;
  PLATE_MODIFIERS modifiers;  // of the stiffness

  std::int32_t section_number, section_type, material_number;
  double unit_weight, shear_modulus;
  float ortho_angle;

  PLATE_CALL(PLATEELEM_RECORD& scratch, double* a, std::int32_t operation, std::int32_t element, std::int32_t block)
      : FILLED_PLATE(scratch, operation), A(a), elem(element), k(block) {}
};

// Sets everything that the operations read: EL, the node coordinates minus the offsets, the modifiers in LOADS.
void prepare_plate(PLATE_CALL& call);

#endif
