// filled_plate.cpp: kind and section of a filled plate.
#include "shells/engines/filled_plate.h"

#include "common/constants.h"
#include "finites/fields.h"
#include "finites/records.h"

std::int32_t element_kind(bool three_nodes, std::int32_t formulation) {
  switch (formulation) {
    case FORMULATION_THIN: return three_nodes ? KIND_TRI_THIN : KIND_QUAD_THIN;
    case FORMULATION_MEMBRANE:
    case FORMULATION_MEMBRANE_PLASTIC:
    case FORMULATION_MEMBRANE_REDUCED:
    case FORMULATION_MEMBRANE_OTHER: return three_nodes ? KIND_TRI_MEMBRANE : KIND_QUAD_MEMBRANE;
    default: return three_nodes ? KIND_TRI_THICK : KIND_QUAD_THICK;
  }
}

std::int32_t active_parts(std::int32_t kind, std::int32_t behav) {
  std::int32_t parts = PART_MEMBRANE;
  if (kind != KIND_TRI_MEMBRANE && kind != KIND_QUAD_MEMBRANE) parts += PART_BENDING;
  if (kind == KIND_TRI_THICK || kind == KIND_QUAD_THICK) parts += PART_SHEAR;
  if (behav == BEHAV_SECTION_PLASTIC) parts += PART_SECTION_PLASTIC;
  return parts;
}

void set_kind(FILLED_PLATE& plate, std::int32_t formulation, const PLATE_MODIFIERS& modifiers) {
  PLATEELEM_RECORD& EL = plate.EL;
  EL.ELEM_KIND = element_kind(plate.nodes == 3, formulation);
  EL.ACTIVE_PARTS = active_parts(EL.ELEM_KIND, EL.MAT_BEHAV);
  const bool reduced = formulation == FORMULATION_MEMBRANE_REDUCED;
  plate.LOADS(LOAD_MOD_AXIAL) = reduced ? modifiers.membrane * REDUCED_AXIAL : modifiers.membrane;
  plate.LOADS(LOAD_MOD_INPLANE) = modifiers.membrane;  // the shear is not reduced
  plate.LOADS(LOAD_MOD_BENDING) = modifiers.bending;
  plate.LOADS(LOAD_MOD_SHEAR) = modifiers.shear;
}

void set_default_section(PLATEELEM_RECORD& EL, const PLATE_MODIFIERS& modifiers) {
  EL.MAT_BEHAV = BEHAV_ISOTROPIC;
  EL.CLT_FACTOR_1 = EL.CLT_FACTOR_2 = 1.0;
  EL.MOD_MEMBRANE = {{modifiers.membrane, modifiers.membrane, modifiers.membrane}};
  EL.MOD_BENDING = {{modifiers.bending, modifiers.bending, modifiers.bending}};
  EL.MOD_SHEAR = {{modifiers.shear, modifiers.shear}};
}
