// check_plate_material.cpp: thickness, elastic constants and stiffness modifiers of a plate, from where its operations
// take them: the material block, the material record, the composite section, the list of stiffness factors.
#include <cmath>
#include <initializer_list>

#include "finites/fields.h"
#include "finites/services.h"
#include "plain_calls/checks/check_plate.h"

namespace {

constexpr double SAME = 1e-3;      // of two constants that are one
constexpr double SLOWEST = 3.0e5;  // waves along a rod of a building material, mm/s
constexpr double FASTEST = 3.0e7;

// Where the constants come from.
enum class SOURCE { block, record, composite, factored };

struct CONSTANTS {
  SOURCE from = SOURCE::block;
  const char* array = "";  // of the record
  std::int32_t number = 0;
  double E1 = 0.0, E2 = 0.0, NU1 = 0.0, NU2 = 0.0, G12 = 0.0, G13 = 0.0, G23 = 0.0;
};

template <class RECORD>
CONSTANTS constants_of(SOURCE from, const char* array, std::int32_t number, const RECORD& r) {
  const auto wide = [](float value) { return static_cast<double>(value); };
  return {from, array, number, wide(r.E1), wide(r.E2), wide(r.NU1), wide(r.NU2), wide(r.G12), wide(r.G13), wide(r.G23)};
}

SUBJECT constant(const CONSTANTS& c, const char* name, double value) {
  return {SENTENCE() << name << " of " << c.array << " " << std::int64_t{c.number}, value};
}

// The position of the element in STIFF_LIST, as the library searches it; 0 where it has none.
std::int32_t listed(CHECK& check, std::int32_t ident) {
  SOLPARAM_RECORD parameters{};
  ZelkuSolParamGetRec(&parameters);
  const auto& list = SOLANA.STIFF_LIST;
  if (parameters.STIFF_REDUCTION_ON <= 0 || SOLANA.STIFF_LIST_COUNT <= 0) return 0;
  if (!ALLOCATED(list) || !ALLOCATED(SOLANA.STIFF_FACTORS) || list.BASE == nullptr) return 0;
  for (std::int32_t i = 0; i < SOLANA.STIFF_LIST_COUNT && i < list.DIMENSION[0].EXTENT; ++i) {
    if (list(list.DIMENSION[0].LOWER + i) != ident) continue;
    const ARRAY_DIMENSION& columns = SOLANA.STIFF_FACTORS.DIMENSION[1];
    if (SOLANA.STIFF_FACTORS.BASE != nullptr && i + 1 - columns.LOWER < columns.EXTENT) return i + 1;
    check.find(
        ERROR, FINITES_FOUND_STIFF_LIST,
        SENTENCE() << "STIFF_LIST has the element at " << std::int64_t{i} + 1
                   << ", where STIFF_FACTORS has no column: the library reads beyond it; give it as many columns "
                      "as the list has entries");
    return 0;
  }
  return 0;
}

// Both factors of the element, and the constants that they scale: those of the material record, not of the block.
CONSTANTS factored(CHECK& check, std::int32_t position, std::int32_t number) {
  MATERIAL_RECORD m{};
  std::int32_t status = 0;
  ZelkMaterialGetRec(&number, &m, &status);
  const double f1 = static_cast<double>(SOLANA.STIFF_FACTORS(STIFF_FACTOR_1, position));
  const double f2 = static_cast<double>(SOLANA.STIFF_FACTORS(STIFF_FACTOR_2, position));
  for (const double f : {f1, f2}) {
    const SUBJECT factor{SENTENCE() << "a factor of STIFF_FACTORS, column " << std::int64_t{position}, f};
    check.above_zero(factor, FINITES_FOUND_STIFF_LIST, WARNING, "the plate has no stiffness in that direction");
  }
  CONSTANTS c = constants_of(SOURCE::factored, "material", number, m);
  c.E2 = c.E1 * f2;
  c.NU2 = c.NU1 * f2;
  c.G13 = c.G12 * f1;
  c.G23 = c.G12 * f2;
  c.G12 *= f1 * f2;
  c.E1 *= f1;
  c.NU1 *= f1;
  return c;
}

void check_block_constants(CHECK& check, const CHECKED_PLATE& p) {
  const SUBJECT E = check.field(p.material, NAMED(MATERIAL_YOUNG));
  check.above_zero(E, FINITES_FOUND_YOUNG, WARNING, "all stiffness is zero; set it to the modulus");
  const SUBJECT nu = check.field(p.material, NAMED(MATERIAL_POISSON));
  if (!check.finite(nu)) return;
  if (std::fabs(nu.value) == 1.0) {
    check.find(ERROR, FINITES_FOUND_POISSON, nu, "1 - nu^2 is 0, and the matrix is NaN or infinite");
  } else if (nu.value < -1.0 || nu.value > 0.5) {
    check.find(WARNING, FINITES_FOUND_POISSON, nu, "no material has it: it lies between -1 and 0.5");
  }
}

void check_shear_moduli(CHECK& check, const CHECKED_PLATE& p, const CONSTANTS& c) {
  check.above_zero(constant(c, "G12", c.G12), FINITES_FOUND_SHEAR_MODULUS, WARNING,
                   "no stiffness against shear in the plane and twist; set it");
  if (!p.thick) return;
  for (const bool first : {true, false}) {
    check.above_zero(constant(c, first ? "G13" : "G23", first ? c.G13 : c.G23), FINITES_FOUND_SHEAR_MODULUS, ERROR,
                     "thick plates divide by it, and the matrix is NaN; set it");
  }
}

// q = 1 - NU1 NU2 divides; E1 NU2 and E2 NU1 are the same coupling.
void check_general_constants(CHECK& check, const CHECKED_PLATE& p, const CONSTANTS& c) {
  for (const bool first : {true, false}) {
    check.above_zero(constant(c, first ? "E1" : "E2", first ? c.E1 : c.E2), FINITES_FOUND_YOUNG, WARNING,
                     "no stiffness in that direction; set it (the constants of the material block are not read)");
  }
  const double q = 1.0 - c.NU1 * c.NU2;
  if (check.finite(constant(c, "NU1", c.NU1)) && check.finite(constant(c, "NU2", c.NU2)) && !(q > 0.0)) {
    check.find(q < 0.0 ? WARNING : ERROR, FINITES_FOUND_POISSON, constant(c, "1 - NU1 NU2", q),
               q < 0.0 ? "it must be above 0: the stiffness is not positive" : "the matrix is NaN or infinite");
  }
  if (c.from != SOURCE::factored && std::fabs(c.E1 * c.NU2 - c.E2 * c.NU1) > SAME * std::fabs(c.E1 * c.NU2)) {
    check.find(WARNING, FINITES_FOUND_ORTHOTROPY,
               SENTENCE() << "E1 NU2 of " << c.array << " " << std::int64_t{c.number} << " is " << c.E1 * c.NU2
                          << ", E2 NU1 is " << c.E2 * c.NU1
                          << ": the section matrix is not symmetric; NU2 is NU1 E2 / E1");
  }
  check_shear_moduli(check, p, c);
}

void check_modifiers(CHECK& check, const CHECKED_PLATE& p, SOURCE from, bool yields) {
  const bool general = from != SOURCE::block || yields;
  check.above_zero(check.field(p.entry, NAMED(MODIFIER_MEMBRANE)), FINITES_FOUND_MODIFIER, WARNING,
                   "the element has no membrane stiffness; set it to 1");
  if (p.membrane) return;
  const bool divides = p.thick && !general;
  check.above_zero(check.field(p.entry, NAMED(MODIFIER_BENDING)), FINITES_FOUND_MODIFIER, WARNING,
                   "the element has no bending stiffness; set it to 1");
  if (!p.thick) return;
  check.above_zero(check.field(p.entry, NAMED(MODIFIER_SHEAR)), FINITES_FOUND_MODIFIER, general ? ERROR : WARNING,
                   divides ? "the element has no transverse shear forces, its stiffness is about that of 1; set it to 1"
                           : "thick plates of a general section divide by it, and the matrix is NaN; set it to 1");
}

void check_thickness(CHECK& check, const CHECKED_PLATE& p, SOURCE from, bool yields) {
  const bool nan = yields || (p.thick && from != SOURCE::block);
  check.above_zero(check.field(p.section, NAMED(SECTION_THICKNESS)), FINITES_FOUND_THICKNESS, nan ? ERROR : WARNING,
                   nan ? "the matrix is NaN; set it" : "the matrix is zero; set it");
}

// Masses divide weights by GRAVITY, mm/s^2: with E and unit weight in other units waves would run at an odd speed.
void check_units(CHECK& check, const CHECKED_PLATE& p) {
  const double E = check.A(p.material.start + MATERIAL_YOUNG);
  const SUBJECT weight = check.field(p.material, NAMED(MATERIAL_UNIT_WEIGHT));
  if (!check.finite(weight)) return;
  if (weight.value < 0.0) {
    check.find(WARNING, FINITES_FOUND_UNITS, weight, "a negative weight gives a negative mass");
  }
  if (!(weight.value > 0.0) || !(E > 0.0)) return;
  const double speed = std::sqrt(E * GRAVITY / weight.value);
  if (speed > SLOWEST && speed < FASTEST) return;
  check.find(NOTE, FINITES_FOUND_UNITS,
             SENTENCE() << weight.name.text() << " is " << weight.value << " and E " << E
                        << ": operation 2 divides it by 9810 mm/s^2, which gives waves of " << speed
                        << " mm/s (steel: 5e6); in other units than mm scale the mass by 9810 / g");
}

// The material record, and whether the plate yields. The record is not read for other types of sections.
void check_homogeneous(CHECK& check, const CHECKED_PLATE& p, std::int32_t number) {
  MATERIAL_RECORD m{};
  std::int32_t status = 0;
  ZelkMaterialGetRec(&number, &m, &status);
  std::int32_t code = 0;
  ZELKU_SOLPARAM_GET_KNLMATERIAL_PLATE(&code);
  if (m.ortho == 1) {
    check_thickness(check, p, SOURCE::record, false);
    check_modifiers(check, p, SOURCE::record, false);
    check_general_constants(check, p, constants_of(SOURCE::record, "material", number, m));
    return;
  }
  const bool can_yield = m.mtype == MATERIAL_YIELDING || m.mtype == MATERIAL_YIELDING_OTHER;
  const bool nonlinear = check.A.INTEGER(NONLIN_MATERIAL) == 1;
  const bool switched = check.A.INTEGER(p.entry.start + PLASTIC_SWITCH) == 1;
  const bool formulated = !p.membrane || p.formulation == FORMULATION_MEMBRANE_PLASTIC;
  const bool yields = can_yield && nonlinear && switched && formulated && code > 0;
  check_thickness(check, p, SOURCE::block, yields);
  check_modifiers(check, p, SOURCE::block, yields);
  check_block_constants(check, p);
  if (yields) {
    check_yielding_plate(check, p, m, code);
  } else if (can_yield) {
    check.find(NOTE, FINITES_FOUND_NOT_YIELDING,
               SENTENCE() << "material " << std::int64_t{number} << " could yield, but the plate is elastic: "
                          << (!formulated  ? "FORMULATION is that of an elastic membrane"
                              : !switched  ? "A(k + PLASTIC_SWITCH) is not 1"
                              : !nonlinear ? "A(NONLIN_MATERIAL) is not 1"
                                           : "TARNIX_STORE_KNLMATERIAL_PLATE has stored no plate model"));
  } else if (switched && nonlinear) {
    check.find(NOTE, FINITES_FOUND_NOT_YIELDING,
               SENTENCE() << "A(k + PLASTIC_SWITCH) is 1, but the plate is elastic: material " << std::int64_t{number}
                          << " has no record of type 1 or 3, which TARNIX_STORE_MATERIAL stores");
  }
}

void check_composite(CHECK& check, const CHECKED_PLATE& p) {
  const std::int32_t number = check.A.INTEGER(p.section.start + SECTION_NUMBER);
  CLT_SECTION_RECORD section{};
  std::int32_t status = 0;
  ZelkSectionCLTGetRec(&number, &section, &status);
  check_thickness(check, p, SOURCE::composite, false);
  check_modifiers(check, p, SOURCE::composite, false);
  if (status != 0) {
    check.find(p.thick ? ERROR : WARNING, FINITES_FOUND_COMPOSITE,
               SENTENCE() << "there is no composite section record " << std::int64_t{number}
                          << ", A(sec + SECTION_NUMBER): its moduli count as 0, and the matrix is "
                          << (p.thick ? "NaN" : "zero") << "; store it by TARNIX_STORE_SECTION_CLT");
    return;
  }
  for (const bool twist : {true, false}) {
    if (twist && p.membrane) continue;
    const SUBJECT factor{
        SENTENCE() << (twist ? "CLT_FACTOR_1" : "CLT_FACTOR_2") << " of composite section " << std::int64_t{number},
        static_cast<double>(twist ? section.CLT_FACTOR_1 : section.CLT_FACTOR_2)};
    check.above_zero(
        factor, FINITES_FOUND_COMPOSITE, WARNING,
        twist ? "no stiffness against twist; set it to 1" : "no stiffness against shear in the plane; set it to 1");
  }
  check_general_constants(check, p, constants_of(SOURCE::composite, "composite section", number, section));
}

}  // namespace

// In the order in which the library chooses.
void check_plate_material(CHECK& check, const CHECKED_PLATE& p) {
  const std::int32_t number = check.A.INTEGER(p.material.start + MATERIAL_NUMBER);
  check_units(check, p);
  const std::int32_t position = listed(check, check.A.INTEGER(p.entry.start + ELEM_ID));
  if (position > 0) {
    check_thickness(check, p, SOURCE::factored, false);
    check_modifiers(check, p, SOURCE::factored, false);
    check_general_constants(check, p, factored(check, position, number));
    return;
  }
  const SUBJECT type = check.field(p.section, NAMED(SECTION_TYPE));
  switch (TRUNCATED(type.value)) {
    case HOMOGENEOUS_SECTION: check_homogeneous(check, p, number); return;
    case COMPOSITE_SECTION: check_composite(check, p); return;
    default: break;
  }
  MATERIAL_RECORD m{};
  std::int32_t status = 0;
  ZelkMaterialGetRec(&number, &m, &status);
  if (m.ortho == 1 || m.mtype == MATERIAL_YIELDING || m.mtype == MATERIAL_YIELDING_OTHER) {
    check.find(WARNING, FINITES_FOUND_SECTION_TYPE, type,
               "the material record, which is orthotropic or yields, is not read; set it to 1");
  }
  check_thickness(check, p, SOURCE::block, false);
  check_modifiers(check, p, SOURCE::block, false);
  check_block_constants(check, p);
}
