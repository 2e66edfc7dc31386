// plate_material_choice.cpp: kind and material behaviour of a plate. FINITES and INFO_FINITES choose by different
// rules on purpose.
#include "element_calls/plate_material_choice.h"

#include <vector>

#include "finites/fields.h"
#include "finites/records.h"
#include "finites/services.h"
#include "plate_material/section_decomposition.h"
#include "plate_material/through_thickness.h"
#include "shells/plastic/section_first_state.h"

namespace {

bool yielding_type(std::int32_t mtype) { return mtype == MATERIAL_YIELDING || mtype == MATERIAL_YIELDING_OTHER; }

// Code 3 (FORMULATION_MEMBRANE_PLASTIC) is the only membrane code that can become plastic.
bool yielding_formulation(std::int32_t formulation) {
  return formulation != FORMULATION_MEMBRANE && formulation != FORMULATION_MEMBRANE_REDUCED &&
         formulation != FORMULATION_MEMBRANE_OTHER;
}

bool orthotropic(const MATERIAL_RECORD& m) { return m.mtype == MATERIAL_ELASTIC && m.ortho == 1; }

bool can_yield(const MATERIAL_RECORD& m) { return yielding_type(m.mtype) && m.ortho == 0; }

std::int32_t plastic_behaviour(std::int32_t code) {
  return code == PLATE_MODEL_LAYERED ? BEHAV_LAYERED_PLASTIC : BEHAV_SECTION_PLASTIC;
}

MATERIAL_RECORD fetch_material(std::int32_t number) {
  MATERIAL_RECORD material{};
  std::int32_t status = 0;
  ZelkMaterialGetRec(&number, &material, &status);
  return material;
}

CLT_SECTION_RECORD fetch_composite(std::int32_t number) {
  CLT_SECTION_RECORD section{};
  std::int32_t status = 0;
  ZelkSectionCLTGetRec(&number, &section, &status);
  return section;
}

std::int32_t plate_material_code() {
  std::int32_t code = 0;
  ZELKU_SOLPARAM_GET_KNLMATERIAL_PLATE(&code);
  return code;
}

// Position of an element in the list of stiffness factors; 0 when it is not in the list. The search needs a contiguous
// list: an array section with a stride is copied first, the only allocation that a plate call can make.
std::int32_t find_stiffness_factors(std::int32_t ident) {
  const ARRAY_REFERENCE<std::int32_t, 1>& list = SOLANA.STIFF_LIST;
  if (SOLANA.STIFF_LIST_COUNT <= 0 || !ALLOCATED(list) || !ALLOCATED(SOLANA.STIFF_FACTORS)) return 0;
  const std::int64_t extent = list.DIMENSION[0].EXTENT;
  const std::int32_t count =
      extent < SOLANA.STIFF_LIST_COUNT ? static_cast<std::int32_t>(extent) : SOLANA.STIFF_LIST_COUNT;
  std::int32_t position = 0;
  if (CONTIGUOUS(list)) {
    QFIND_SORT_INTEGER(&count, &ident, list.BASE, &position);
    return position;
  }
  std::vector<std::int32_t> packed(static_cast<std::size_t>(count));
  const std::int64_t lower = list.DIMENSION[0].LOWER;
  for (std::int32_t i = 0; i < count; ++i) packed[static_cast<std::size_t>(i)] = list(lower + i);
  QFIND_SORT_INTEGER(&count, &ident, packed.data(), &position);
  return position;
}

// One isotropic material, scaled in two directions with the factors f1 and f2 of the list:
//
//     E1 = f1 E,  E2 = f2 E,    NU1 = f1 nu,  NU2 = f2 nu,    G12 = f1 f2 G,  G13 = f1 G,  G23 = f2 G
//
// The second modulus of the record is not read.
void take_factored_material(const PLATE_CALL& call, std::int32_t position) {
  PLATEELEM_RECORD& P = call.EL;
  const MATERIAL_RECORD m = fetch_material(call.material_number);
  const double f1 = static_cast<double>(SOLANA.STIFF_FACTORS(STIFF_FACTOR_1, position));
  const double f2 = static_cast<double>(SOLANA.STIFF_FACTORS(STIFF_FACTOR_2, position));
  const double E = static_cast<double>(m.E1);
  const double nu = static_cast<double>(m.NU1);
  const double G = static_cast<double>(m.G12);
  P.MAT_BEHAV = BEHAV_GENERAL;
  P.E1 = E * f1;
  P.E2 = E * f2;
  P.NU1 = nu * f1;
  P.NU2 = nu * f2;
  P.G12 = G * f1 * f2;
  P.G13 = G * f1;
  P.G23 = G * f2;
  P.ALPHA1 = P.ALPHA2 = static_cast<double>(m.ALPHA1);
  P.ORTHO_ANGLE = call.ortho_angle;
}

// The elastic constants of a material record or of a composite section record, whose fields have the same names.
template <class RECORD>
void take_general_constants(const PLATE_CALL& call, const RECORD& r) {
  PLATEELEM_RECORD& P = call.EL;
  P.MAT_BEHAV = BEHAV_GENERAL;
  P.E1 = static_cast<double>(r.E1);
  P.E2 = static_cast<double>(r.E2);
  P.NU1 = static_cast<double>(r.NU1);
  P.NU2 = static_cast<double>(r.NU2);
  P.G12 = static_cast<double>(r.G12);
  P.G13 = static_cast<double>(r.G13);
  P.G23 = static_cast<double>(r.G23);
  P.ALPHA1 = static_cast<double>(r.ALPHA1);
  P.ALPHA2 = static_cast<double>(r.ALPHA2);
  P.ORTHO_ANGLE = call.ortho_angle;
}

// Isotropic constants in both directions and the tangent modulus Et, HARDENING of the record. The first pass of a
// nonlinear run initialises the states of both plastic models, whichever the code names.
void take_plastic_material(const PLATE_CALL& call, const MATERIAL_RECORD& m, std::int32_t code) {
  PLATEELEM_RECORD& P = call.EL;
  P.MAT_BEHAV = plastic_behaviour(code);
  P.ELEM_INDEX = call.elem;
  P.E2 = P.E1;
  P.NU2 = P.NU1;
  P.G12 = P.G13 = P.G23 = call.shear_modulus;
  P.ALPHA2 = P.ALPHA1;
  P.TANGENT_MOD = static_cast<double>(m.HARDENING);
  if (!call.first_pass) return;
  SECTION_STATE_INIT(call.EL, call.op);
  LAYERED_STATE_INIT(call.EL);
}

void resolve_homogeneous(const PLATE_CALL& call, std::int32_t code) {
  const MATERIAL_RECORD m = fetch_material(call.material_number);
  if (orthotropic(m)) {
    take_general_constants(call, m);
  } else if (can_yield(m) && call.nonlin_material && code > 0 && call.plastic_switch == 1 &&
             yielding_formulation(call.formulation)) {
    take_plastic_material(call, m, code);
  }
}

// The correction factors CLT_FACTOR_1 and CLT_FACTOR_2 of the section act on bending twist and in-plane shear.
void resolve_composite(PLATE_CALL& call) {
  const CLT_SECTION_RECORD section = fetch_composite(call.section_number);
  take_general_constants(call, section);
  call.EL.CLT_FACTOR_1 = static_cast<double>(section.CLT_FACTOR_1);
  call.EL.CLT_FACTOR_2 = static_cast<double>(section.CLT_FACTOR_2);
  call.unit_weight = static_cast<double>(section.UNIT_WEIGHT);
}

}  // namespace

// The list of stiffness factors comes first: an element in it is elastic, whatever its material.
void resolve_plate_material(PLATE_CALL& call) {
  SOLPARAM_RECORD parameters{};
  ZelkuSolParamGetRec(&parameters);
  const std::int32_t code = plate_material_code();

  if (parameters.STIFF_REDUCTION_ON > 0) {
    const std::int32_t position = find_stiffness_factors(call.ident);
    if (position > 0) {
      take_factored_material(call, position);
      return;
    }
  }
  if (call.section_type == HOMOGENEOUS_SECTION) {
    resolve_homogeneous(call, code);
  } else if (call.section_type == COMPOSITE_SECTION) {
    resolve_composite(call);
  }
}

std::int32_t classify_plate_material(std::int32_t section_type, std::int32_t material_number, std::int32_t formulation,
                                     std::int32_t plastic_switch) {
  if (section_type == COMPOSITE_SECTION) return BEHAV_GENERAL;
  if (section_type != HOMOGENEOUS_SECTION) return BEHAV_ISOTROPIC;
  const MATERIAL_RECORD m = fetch_material(material_number);
  if (orthotropic(m)) return BEHAV_GENERAL;
  const std::int32_t code = plate_material_code();
  if (can_yield(m) && code > 0 && plastic_switch != 0 && yielding_formulation(formulation)) {
    return plastic_behaviour(code);
  }
  return BEHAV_ISOTROPIC;
}
