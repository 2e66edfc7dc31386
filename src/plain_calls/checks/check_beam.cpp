// check_beam.cpp: bending, torsion, ends and second-order terms of a beam.
#include <cmath>
#include <initializer_list>

#include "finites/fields.h"
#include "finites/services.h"
#include "frame_elements/member_axes.h"
#include "plain_calls/checks/check_member.h"

namespace {

constexpr FIELD_NAME FIXITIES[4] = {NAMED(FIXITY_Y1), NAMED(FIXITY_Z1), NAMED(FIXITY_Y2), NAMED(FIXITY_Z2)};

// A pin may be meant at one end; four of them are a forgotten block, or a truss.
void check_fixities(CHECK& check, const CHECKED_MEMBER& m) {
  int pins = 0;
  for (const FIELD_NAME& name : FIXITIES) pins += check.A(m.entry.start + name.place) == 0.0 ? 1 : 0;
  if (pins == 4) {
    check.find(
        WARNING, FINITES_FOUND_FIXITY,
        SENTENCE() << "all four fixities, A(I + FIXITY_Y1) = A(" << m.entry.start + FIXITY_Y1
                   << ") and on, are 0: the beam has no bending stiffness at all; set them to 1 (rigid ends), or "
                      "take KSTIFT if it is a truss");
    return;
  }
  for (const FIELD_NAME& name : FIXITIES) {
    const SUBJECT fixity = check.field(m.entry, name);
    if (!check.finite(fixity)) continue;
    if (fixity.value == 0.0) {
      check.find(NOTE, FINITES_FOUND_FIXITY, fixity, "this end is pinned in that plane; a rigid end has 1");
    } else if (fixity.value < 0.0 || fixity.value > 1.0) {
      check.find(WARNING, FINITES_FOUND_FIXITY, fixity,
                 "a fixity lies between 0 (pin) and 1 (rigid); beyond, the stiffness is that of no spring");
    }
  }
}

void check_bending(CHECK& check, const CHECKED_MEMBER& m) {
  check_factor(check, m, NAMED(FACTOR_I1), "bending stiffness in the x-y plane");
  check_factor(check, m, NAMED(FACTOR_I2), "bending stiffness in the x-z plane");
  check_property(check, check.field(m.section, NAMED(SECTION_I1)), FINITES_FOUND_SECTION,
                 "bending stiffness in the x-y plane");
  check_property(check, check.field(m.section, NAMED(SECTION_I2)), FINITES_FOUND_SECTION,
                 "bending stiffness in the x-z plane");
  check_property(check, check.field(m.material, NAMED(MEMBER_E2)), FINITES_FOUND_MODULUS,
                 "bending stiffness in the x-z plane");
}

void check_torsion(CHECK& check, const CHECKED_MEMBER& m) {
  check_factor(check, m, NAMED(FACTOR_J), "torsional stiffness");
  check_factor(check, m, NAMED(FACTOR_TORSION), "torsional stiffness");
  check_property(check, check.field(m.section, NAMED(SECTION_J)), FINITES_FOUND_SECTION, "torsional stiffness");
  check_property(check, check.field(m.material, NAMED(MEMBER_G)), FINITES_FOUND_MODULUS, "torsional stiffness");
}

// Shear deformation takes the switch, both areas and G.
void check_shear(CHECK& check, const CHECKED_MEMBER& m) {
  const bool on = check.A.INTEGER(SHEAR_DEFORMATION) == 1;
  for (const FIELD_NAME& name : {NAMED(SECTION_SHEAR_AREA_Y), NAMED(SECTION_SHEAR_AREA_Z)}) {
    const SUBJECT area = check.field(m.section, name);
    if (on && !(area.value > 0.0)) {
      check.find(NOTE, FINITES_FOUND_SHEAR_AREA, area,
                 "no shear deformation in that plane, although A(SHEAR_DEFORMATION) is 1");
    } else if (!on && area.value > 0.0) {
      check.find(NOTE, FINITES_FOUND_SHEAR_AREA, area, "it is not read, since A(SHEAR_DEFORMATION) is not 1");
    }
  }
}

void check_releases(CHECK& check, const CHECKED_MEMBER& m) {
  for (const FIELD_NAME& name : {NAMED(RELEASE_AXIAL), NAMED(RELEASE_Y), NAMED(RELEASE_Z), NAMED(RELEASE_TORSION)}) {
    const SUBJECT release = check.field(m.entry, name);
    const std::int32_t code = TRUNCATED(release.value);
    const bool shear = name.place == RELEASE_Y || name.place == RELEASE_Z;
    if (!std::isfinite(release.value) || code < 0 || code > 2) {
      check.find(WARNING, FINITES_FOUND_RELEASE, release, "no release: 0 none, 1 first end, 2 second end");
    } else if (code != 0 && shear) {
      check.find(NOTE, FINITES_FOUND_RELEASE, release,
                 "it releases the shear force along that axis, not a moment; a hinge is a fixity of 0");
    }
  }
}

void check_reductions(CHECK& check, const CHECKED_MEMBER& m) {
  const SUBJECT tau = record_field("TAU_B", "MEMBER_REC", m.pos, m.record->TAU_B);
  if (check.finite(tau) && (tau.value < 0.0 || tau.value > 1.0)) {
    check.find(WARNING, FINITES_FOUND_REDUCTION, tau,
               tau.value < 0.0 ? "a reduction of the stiffness acts above 0 alone" : "it makes the member stiffer");
  }
  const SUBJECT index = check.field(m.entry, NAMED(REDUCTION_INDEX));
  if (TRUNCATED(index.value) <= 0) return;
  const float* const factor =
      optional_record(check, SOLANA.STIFF_REDUCTION, TRUNCATED(index.value), "SOLANA.STIFF_REDUCTION");
  if (factor == nullptr) {
    check.find(NOTE, FINITES_FOUND_REDUCTION, index,
               "SOLANA.STIFF_REDUCTION has no such entry, and nothing is reduced");
  } else if (!(*factor > 0.0F)) {
    check.find(WARNING, FINITES_FOUND_REDUCTION, index,
               "the entry of SOLANA.STIFF_REDUCTION is not above 0: no bending stiffness in the x-y plane");
  }
}

// The closed form of KSTIFB_GEOM depends on the units of the model.
void check_second_order(CHECK& check, const CHECKED_MEMBER& m) {
  check_axial_force(check, m);
  if ((m.order != GEOMETRIC_ADDED && m.order != GEOMETRIC_APART) || m.record->AXIAL_FORCE == 0.0) return;
  for (const FIELD_NAME& name : FIXITIES) {
    const SUBJECT fixity = check.field(m.entry, name);
    if (!semi_rigid(fixity.value)) continue;
    check.find(
        WARNING, FINITES_FOUND_SEMI_RIGID, fixity,
        "the geometric stiffness of a semi-rigid end depends on the units of the model; take a fixity of 1 and a "
        "rotational spring");
    return;
  }
}

}  // namespace

void check_beam(CHECK& check, const CHECKED_MEMBER& m) {
  check_fixities(check, m);
  check_bending(check, m);
  check_torsion(check, m);
  check_shear(check, m);
  check_releases(check, m);
  check_reductions(check, m);
  check_removal(check, m, m.record->REMOVE_STEP);
  check_second_order(check, m);
  check_hinge(check, m);
}
