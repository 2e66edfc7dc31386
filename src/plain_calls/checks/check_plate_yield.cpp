// check_plate_yield.cpp: what a plate that yields reads besides: yield stress, hardening, shear modulus, state.
#include <cmath>
#include <initializer_list>

#include "finites/fields.h"
#include "finites/thickness_rule.h"
#include "plain_calls/checks/check_plate.h"

namespace {

constexpr int SURFACE_POINTS = 4;
constexpr double SPECTRAL_TENTH = 0.1;  // the decomposition of the section fits within it
constexpr double SAME_G = 1e-2;         // of the shear modulus and that of the isotropic material

// Whether an array has an address and reaches the extents that the library uses. What is not allocated the library
// leaves alone; an array that is too short it reads and writes beyond.
enum class ARRAY_STATE { complete, absent, broken };

template <int RANK>
ARRAY_STATE state_of(const ARRAY_REFERENCE<double, RANK>& array, const std::int64_t (&extents)[RANK]) {
  if (!ALLOCATED(array)) return ARRAY_STATE::absent;
  if (array.BASE == nullptr) return ARRAY_STATE::broken;
  for (int d = 0; d < RANK; ++d) {
    const ARRAY_DIMENSION& dimension = array.DIMENSION[d];
    if (dimension.LOWER > 1 || extents[d] - dimension.LOWER >= dimension.EXTENT) return ARRAY_STATE::broken;
  }
  return ARRAY_STATE::complete;
}

// Says what is wrong with a field of the state; false where the model cannot run.
bool complete(CHECK& check, ARRAY_STATE state, const char* name) {
  if (state == ARRAY_STATE::complete) return true;
  if (state == ARRAY_STATE::absent) {
    check.find(WARNING, FINITES_FOUND_STATE_FIELDS,
               SENTENCE() << name
                          << " of the plate's PLATE_STATE is not allocated: of the stiffness only that of the "
                             "drilling rotations remains, and forces are zero; allocate all fields of the model");
  } else {
    check.find(ERROR, FINITES_FOUND_STATE_FIELDS,
               SENTENCE() << name
                          << " of the plate's PLATE_STATE has no address or is shorter than records.h says: the "
                             "library reads and writes beyond it");
  }
  return false;
}

bool has_section_fields(CHECK& check, const PLATE_STATE_RECORD& s) {
  constexpr std::int64_t P = SURFACE_POINTS;
  bool all = complete(check, state_of(s.SEC_EP_START, {12, P}), "SEC_EP_START");
  all &= complete(check, state_of(s.SEC_EP_CUR, {12, P}), "SEC_EP_CUR");
  all &= complete(check, state_of(s.SEC_EPBAR_START, {P}), "SEC_EPBAR_START");
  all &= complete(check, state_of(s.SEC_EPBAR_CUR, {P}), "SEC_EPBAR_CUR");
  all &= complete(check, state_of(s.SEC_EP_INC, {12, P}), "SEC_EP_INC");
  all &= complete(check, state_of(s.SEC_TANGENT, {8, 8, P}), "SEC_TANGENT");
  all &= complete(check, state_of(s.SEC_CURV_INC, {P}), "SEC_CURV_INC");
  all &= complete(check, state_of(s.SEC_AUX, {P}), "SEC_AUX");
  all &= complete(check, state_of(s.SEC_SIGN_CUR, {P}), "SEC_SIGN_CUR");
  all &= complete(check, state_of(s.SEC_SIGN_START, {P}), "SEC_SIGN_START");
  return all;
}

bool has_layered_fields(CHECK& check, const PLATE_STATE_RECORD& s, std::int64_t n) {
  for (int gp = 1; gp <= SURFACE_POINTS; ++gp) {
    const POINT_STATE_RECORD* const at = optional_record(check, s.POINT_STATE, gp, "POINT_STATE");
    if (at == nullptr) return complete(check, ARRAY_STATE::absent, "POINT_STATE, four records,");
    bool all = complete(check, state_of(at->SIG, {6, n}), "SIG");
    all &= complete(check, state_of(at->EP_START, {6, n}), "EP_START");
    all &= complete(check, state_of(at->EP_CUR, {6, n}), "EP_CUR");
    all &= complete(check, state_of(at->EP_INC, {6, n}), "EP_INC");
    all &= complete(check, state_of(at->EPBAR_START, {n}), "EPBAR_START");
    all &= complete(check, state_of(at->EPBAR_CUR, {n}), "EPBAR_CUR");
    all &= complete(check, state_of(at->TANGENT, {5, 5, n}), "TANGENT");
    if (!all) return false;
  }
  return true;
}

// Whether the first entry of every stored tangent is 0: operation 1 would take them as they are.
bool has_tangents(const PLATE_STATE_RECORD& s, bool layered) {
  for (int gp = 1; gp <= SURFACE_POINTS; ++gp) {
    const double first = layered ? s.POINT_STATE(gp).TANGENT(1, 1, 1) : s.SEC_TANGENT(1, 1, gp);
    if (first != 0.0) return true;
  }
  return false;
}

void check_state(CHECK& check, const CHECKED_PLATE& p, bool layered) {
  const PLATE_STATE_RECORD* const s = optional_record(check, SOLANAELEM.PLATE_STATE, p.plate, "SOLANAELEM.PLATE_STATE");
  if (s == nullptr) {
    check.find(WARNING, FINITES_FOUND_NO_PLATE_STATE,
               SENTENCE() << "the plate yields, but SOLANAELEM.PLATE_STATE(" << std::int64_t{p.plate}
                          << ") is not there: of the stiffness only that of the drilling rotations remains, and forces "
                             "are zero; allocate it with the fields of the model");
    return;
  }
  const bool complete = layered ? has_layered_fields(check, *s, SOLANAELEM.NPT_THICK) : has_section_fields(check, *s);
  if (!complete) return;
  const bool first_pass = check.A.INTEGER(ANALYSIS_STATE) == 1 && check.A.INTEGER(STEP_COUNTER) == 0;
  if (first_pass || has_tangents(*s, layered)) return;
  check.find(
      WARNING, FINITES_FOUND_STATE_NOT_STARTED,
      SENTENCE() << "the stored tangents of the plate are zero: so is its stiffness; call an operation once with "
                    "A(ANALYSIS_STATE) 1 and A(STEP_COUNTER) 0, which starts the state");
}

// E / (2 (1 + nu)), of which the layered model makes its own.
void check_shear_modulus(CHECK& check, const CHECKED_PLATE& p, bool layered) {
  const SUBJECT G = check.field(p.material, NAMED(MATERIAL_SHEAR_MODULUS));
  const std::int32_t severity = p.thick ? ERROR : WARNING;
  if (layered && !p.thick) return;
  const bool positive =
      check.above_zero(G, FINITES_FOUND_SHEAR_MODULUS, severity,
                       p.thick ? "thick plates that yield divide by it, and the matrix is NaN; set it to E/(2 (1 + nu))"
                               : "no stiffness against shear in the plane and twist; set it to E / (2 (1 + nu))");
  const double E = check.A(p.material.start + MATERIAL_YOUNG);
  const double isotropic = E / (2.0 * (1.0 + check.A(p.material.start + MATERIAL_POISSON)));
  if (!positive || !(std::fabs(G.value - isotropic) > SAME_G * std::fabs(isotropic))) return;
  check.find(WARNING, FINITES_FOUND_SHEAR_MODULUS,
             SENTENCE() << G.name.text() << " is " << G.value << ", E / (2 (1 + nu)) is " << isotropic
                        << ": a plate that yields is isotropic; set it to that");
}

// The modulus of stress over plastic strain is Et / (1 - Et / E).
void check_hardening(CHECK& check, const CHECKED_PLATE& p, const MATERIAL_RECORD& m) {
  const std::int32_t number = check.A.INTEGER(p.material.start + MATERIAL_NUMBER);
  const SUBJECT Et{SENTENCE() << "HARDENING of material " << std::int64_t{number}, static_cast<double>(m.HARDENING)};
  const double E = check.A(p.material.start + MATERIAL_YOUNG);
  if (!check.finite(Et) || !(E > 0.0)) return;
  if (Et.value < 0.0) {
    check.find(WARNING, FINITES_FOUND_HARDENING, Et,
               "the material softens, and the return may fail; set it to 0 or above");
  } else if (Et.value >= E) {
    check.find(ERROR, FINITES_FOUND_HARDENING, Et,
               "it is the tangent modulus beyond yield and must be below E: the plastic modulus Et / (1 - Et / E) is "
               "infinite or negative");
  }
}

}  // namespace

void check_yielding_plate(CHECK& check, const CHECKED_PLATE& p, const MATERIAL_RECORD& m, std::int32_t code) {
  const bool layered = code == PLATE_MODEL_LAYERED;
  check.above_zero(check.field(p.material, NAMED(MATERIAL_YIELD_STRESS)), FINITES_FOUND_YIELD_STRESS, ERROR,
                   "the yield function divides by it or has no elastic range: NaN, or a return that fails; set it");
  check_hardening(check, p, m);
  check_shear_modulus(check, p, layered);
  if (layered) {
    double xi[MOST_THICKNESS_POINTS], w[MOST_THICKNESS_POINTS];
    if (THICKNESS_RULE(SOLANAELEM.NPT_THICK, xi, w) == 0) {
      check.find(WARNING, FINITES_FOUND_NPT_THICK,
                 SENTENCE() << "NPT_THICK of SOLANAELEM is " << std::int64_t{SOLANAELEM.NPT_THICK}
                            << ": there is no such rule, and the plate has no stiffness but that of the drilling "
                               "rotations; set it to 3, 5, 7, 9, 11, 13 or 15");
      return;
    }
  } else {
    for (const FIELD_NAME& name : {NAMED(MODIFIER_MEMBRANE), NAMED(MODIFIER_BENDING), NAMED(MODIFIER_SHEAR)}) {
      const SUBJECT modifier = check.field(p.entry, name);
      if (!p.thick && name.place == MODIFIER_SHEAR) continue;
      if (!(std::fabs(modifier.value - 1.0) > SPECTRAL_TENTH)) continue;
      check.find(WARNING, FINITES_FOUND_SPECTRAL, modifier,
                 "the constants of the whole-section model are those of 1, and ASSERTF says \"Décomposition spectrale, "
                 "KOK_DS\"; set it to 1");
    }
  }
  check_state(check, p, layered);
}
