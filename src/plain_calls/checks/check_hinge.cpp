// check_hinge.cpp: the plastic hinges of a beam, and the axial yield of a truss.
#include <initializer_list>

#include "finites/fields.h"
#include "finites/services.h"
#include "plain_calls/checks/check_member.h"

namespace {

bool members_yield() {
  std::int32_t on = 0;
  ZELKU_SOLPARAM_GET_KNLMATERIAL_MEMBER(&on);
  return on == 1;
}

// The rotation routine of the nonlinear library, by the names with which GET_HINGE_FORCES asks for it.
bool nonlinear_library_is_there() {
  constexpr char library[] = "Vornekal.DLL", routine[] = "NL_RotationMatrix_Beam";
  const std::int32_t library_length = sizeof library, routine_length = sizeof routine;
  void* slot = nullptr;
  LOAD_DLL_SUBROUTINE(library, &library_length, routine, &routine_length, &slot);
  return slot != nullptr;
}

struct CHECKED_HINGE {
  const HINGE_RECORD& record;
  std::int32_t pos;

  SUBJECT field(const char* name, double value) const { return record_field(name, "HINGE_REC", pos, value); }
};

// Without all three capacities the yield surface has no values; a set or a curve of another number none either.
void check_curve(CHECK& check, const CHECKED_HINGE& h) {
  const HINGE_RECORD& r = h.record;
  if (r.CURVE_KIND < SINGLE_FORCES || r.CURVE_KIND > LINEAR_SEGMENTS) {
    check.find(WARNING, FINITES_FOUND_HINGE_CURVE, h.field("CURVE_KIND", r.CURVE_KIND),
               "no yield curve, and the hinge never yields; set it to 1, 2 or 3");
  }
  if (r.FORCE_SET < ONLY_P || r.FORCE_SET > ALL_FORCES) {
    check.find(WARNING, FINITES_FOUND_HINGE_CURVE, h.field("FORCE_SET", r.FORCE_SET),
               "no set of forces, and the yield surface has no gradient; set it to 1 to 7");
  } else if (r.CURVE_KIND == SINGLE_FORCES && r.FORCE_SET > ONLY_MZ) {
    check.find(WARNING, FINITES_FOUND_HINGE_CURVE, h.field("FORCE_SET", r.FORCE_SET),
               "more than one force, which CURVE_KIND 1 does not have: the hinge never yields");
  } else if (r.CURVE_KIND == ORBISON && r.FORCE_SET == ONLY_P) {
    check.find(WARNING, FINITES_FOUND_HINGE_CURVE, h.field("FORCE_SET", r.FORCE_SET),
               "the axial force alone has no gradient on the surface of CURVE_KIND 2; take CURVE_KIND 1");
  }
  const char* const none = "the yield surface has no values unless all three capacities are above 0; set it";
  check.above_zero(h.field("CAP_P", r.CAP_P), FINITES_FOUND_HINGE_CAPACITY, WARNING, none);
  check.above_zero(h.field("CAP_MY", r.CAP_MY), FINITES_FOUND_HINGE_CAPACITY, WARNING, none);
  check.above_zero(h.field("CAP_MZ", r.CAP_MZ), FINITES_FOUND_HINGE_CAPACITY, WARNING, none);
}

bool has_segment(const VECTOR<4, std::int32_t>& segments) {
  for (const std::int32_t s : segments.V) {
    if (s > 0) return true;
  }
  return false;
}

void check_states(CHECK& check, const CHECKED_HINGE& h) {
  for (const bool first : {true, false}) {
    const std::int32_t state = first ? h.record.END1_STATE : h.record.END2_STATE;
    const SUBJECT subject = h.field(first ? "END1_STATE" : "END2_STATE", state);
    if (state < NO_HINGE || state > NO_PART) {
      check.find(WARNING, FINITES_FOUND_HINGE_STATE, subject,
                 "no state of an end: 0 elastic, 1 yields, 2 takes no part");
    } else if (state == YIELDING && h.record.CURVE_KIND == LINEAR_SEGMENTS &&
               !has_segment(first ? h.record.END1_SEG : h.record.END2_SEG)) {
      check.find(WARNING, FINITES_FOUND_HINGE_STATE, subject,
                 "the end yields, but its segments (END1_SEG, END2_SEG) are all 0, and the member stays elastic; fill "
                 "them by LINEAR_SEGMENT_EQUATION");
    }
  }
}

// Linear segments have constant gradients; the other curves need the forces of the ends.
void check_forces(CHECK& check, const CHECKED_MEMBER& m) {
  if (optional_record(check, SOLANAELEM.MEMBER_FORCES, m.pos, "SOLANAELEM.MEMBER_FORCES") == nullptr) {
    check.find(WARNING, FINITES_FOUND_HINGE_FORCES,
               SENTENCE() << "the beam has a hinge, but SOLANAELEM.MEMBER_FORCES(" << std::int64_t{m.pos}
                          << ") is not there: every hinge force is zero, and so is the gradient; allocate it");
  }
  if (nonlinear_library_is_there()) return;
  check.find(WARNING, FINITES_FOUND_NO_NONLINEAR_LIBRARY,
             SENTENCE() << "libVornekal.so is not found: every hinge force is zero, and yield curves have no gradient; "
                           "put it into the directory of libTarnix.so");
}

void check_beam_hinge(CHECK& check, const CHECKED_MEMBER& m, const HINGE_RECORD& record) {
  const CHECKED_HINGE h{record, m.pos};
  check_states(check, h);
  if (record.AXIAL_RELEASE == 1) return;  // the axial stiffness goes, the surface is not asked
  check_curve(check, h);
  check_forces(check, m);
}

}  // namespace

void check_hinge(CHECK& check, const CHECKED_MEMBER& m) {
  const HINGE_RECORD* const record = optional_record(check, SOLANAELEM.HINGE_REC, m.pos, "SOLANAELEM.HINGE_REC");
  const bool truss = m.kind == FINITES_ELEMENT_TRUSS;
  const bool acts = members_yield() && m.order == GEOMETRIC_ADDED;
  const bool wanted = record != nullptr && record->HINGE_MODEL == HINGE_MODEL_ON;
  if (acts && record == nullptr && !truss) {
    check.find(NOTE, FINITES_FOUND_NO_HINGE,
               SENTENCE() << "members yield, but SOLANAELEM.HINGE_REC(" << std::int64_t{m.pos}
                          << ") is not there: this one has no hinge");
  }
  if (!wanted) return;
  if (!acts) {
    check.find(NOTE, FINITES_FOUND_NO_HINGE,
               SENTENCE() << "HINGE_MODEL of HINGE_REC(" << std::int64_t{m.pos} << ") is 1, but hinges act only with "
                          << "A(SECOND_ORDER) 1 and TARNIX_STORE_KNLMATERIAL_MEMBER 1: the member is elastic");
    return;
  }
  if (!truss) {
    check_beam_hinge(check, m, *record);
  } else if (check.A.INTEGER(m.section.start + FRAME_SECTION_TYPE) != YIELDING_TRUSS_SECTION ||
             record->AXIAL_RELEASE != 1) {
    check.find(NOTE, FINITES_FOUND_NO_HINGE,
               SENTENCE() << "HINGE_MODEL of HINGE_REC(" << std::int64_t{m.pos}
                          << ") is 1, but a truss yields only with section type 10 and AXIAL_RELEASE 1: it is elastic");
  }
}
