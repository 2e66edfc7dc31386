// check_member.cpp: finites_check_member: what all frame members read, trusses and cables.
#include "plain_calls/checks/check_member.h"

#include <cmath>
#include <initializer_list>

#include "finites/fields.h"
#include "finites/services.h"
#include "plain_calls/checks/check_vectors.h"

namespace {

// Of the distance of the nodes: lengths may be rounded to single precision.
constexpr double LENGTHS_AGREE = 1e-6;

bool is_cable(const CHECKED_MEMBER& m) { return m.kind == FINITES_ELEMENT_CABLE; }
bool has_section(const CHECKED_MEMBER& m) { return m.kind != FINITES_ELEMENT_LINK && m.kind != FINITES_ELEMENT_SPRING; }

bool find_blocks(CHECK& check, CHECKED_MEMBER& m) {
  if (!has_section(m)) return true;
  const SUBJECT section = check.field(m.entry, NAMED(MEMBER_SECTION));
  const SUBJECT material = check.field(m.entry, NAMED(MEMBER_MATERIAL));
  const bool both = check.has_block(section, is_cable(m) ? SECTION_AREA : SECTION_J, "section block");
  if (!check.has_block(material, is_cable(m) ? MEMBER_E1 : MEMBER_MATERIAL_KIND, "material block") || !both) {
    return false;
  }
  m.section = {"S", TRUNCATED(section.value)};
  m.material = {"M", TRUNCATED(material.value)};
  return true;
}

bool find_record(CHECK& check, CHECKED_MEMBER& m) {
  const std::int32_t* const pos = required_record(check, SOLANAELEM.ELEM_POS, check.elem(), "ELEM_POS");
  if (pos == nullptr) return false;
  m.pos = *pos;
  m.record = required_record(check, SOLANAELEM.MEMBER_REC, m.pos, "MEMBER_REC");
  return m.record != nullptr;
}

// The distance of the nodes of the entry; 0 where it does not lead to two places.
double distance_of_nodes(const CHECK& check, const CHECKED_MEMBER& m) {
  VECTOR3 x[2];
  for (int end = 0; end < 2; ++end) {
    const std::int64_t ptr = check.A.INTEGER(m.entry.start + (end == 0 ? MEMBER_NODE_1 : MEMBER_NODE_2));
    if (ptr < 1 || !check.A.has(ptr + NODE_X + 2)) return 0.0;
    x[end] = node_at(check.A, ptr);
    if (!finite(x[end])) return 0.0;
  }
  return size(x[1] - x[0]);
}

void check_length(CHECK& check, const CHECKED_MEMBER& m) {
  const SUBJECT length = record_field("LENGTH", "MEMBER_REC", m.pos, m.record->LENGTH);
  const bool weight = check.A(m.entry.start + MEMBER_WEIGHT) != 0.0;
  const char* const divides = "stiffness and mass divide by it and are NaN or infinite; set it to the length";
  if (is_cable(m)) {
    if (!weight || !check.above_zero(length, FINITES_FOUND_LENGTH, ERROR,
                                     "the weight of the cable per length, for load case 0, is infinite; set it")) {
      return;
    }
  } else if (!check.above_zero(length, FINITES_FOUND_LENGTH, ERROR, divides)) {
    return;
  }
  const double distance = distance_of_nodes(check, m);
  if (is_cable(m) || !(distance > 0.0) || std::fabs(distance - length.value) <= LENGTHS_AGREE * distance) return;
  check.find(WARNING, FINITES_FOUND_LENGTHS_DIFFER,
             SENTENCE() << length.name.text() << " is " << length.value << ", the nodes of the entry are " << distance
                        << " apart: the library takes LENGTH; set it again when nodes move, if that is not meant");
}

// Nothing but the mass reads it; 0 is a member without mass.
void check_weight(CHECK& check, const CHECKED_MEMBER& m) {
  const SUBJECT weight = check.field(m.entry, NAMED(MEMBER_WEIGHT));
  if (!check.finite(weight) || weight.value >= 0.0) return;
  check.find(WARNING, FINITES_FOUND_WEIGHT, weight,
             "a negative weight gives a negative mass; set it to the weight of the whole member");
}

void check_axial_stiffness(CHECK& check, const CHECKED_MEMBER& m) {
  check_factor(check, m, NAMED(FACTOR_AREA), "axial stiffness");
  check_property(check, check.field(m.section, NAMED(SECTION_AREA)), FINITES_FOUND_SECTION, "axial stiffness");
  check_property(check, check.field(m.material, NAMED(MEMBER_E1)), FINITES_FOUND_MODULUS, "axial stiffness");
}

void check_truss(CHECK& check, const CHECKED_MEMBER& m) {
  check_length(check, m);
  check_weight(check, m);
  check_axial_stiffness(check, m);
  check_removal(check, m, m.record->REMOVE_STEP);
  const SUBJECT stress = check.field(m.entry, NAMED(PRETENSION_STRESS));
  const SUBJECT type = check.field(m.section, NAMED(FRAME_SECTION_TYPE));
  const bool pretensioned = TRUNCATED(type.value) == PRETENSIONED_SECTION;
  if (pretensioned) check.finite(stress);
  if (!pretensioned && std::isfinite(stress.value) && stress.value != 0.0) {
    check.find(WARNING, FINITES_FOUND_PRETENSION, stress,
               "it acts with section type 14 (A(S + FRAME_SECTION_TYPE)) alone, and is not read here; set that");
  } else if (pretensioned && stress.value == 0.0) {
    check.find(NOTE, FINITES_FOUND_PRETENSION, stress, "a section of type 14 without pretension");
  }
  check_axial_force(check, m);
  check_hinge(check, m);
}

// The cable library refuses L0, E A that are not above 0, and a slack cable without load.
void check_cable(CHECK& check, const CHECKED_MEMBER& m) {
  const char* const refused = "the cable library refuses it: message 1264, and the matrix is zero; set it";
  check_length(check, m);
  const bool taut =
      check.above_zero(check.field(m.entry, NAMED(UNSTRESSED_LENGTH)), FINITES_FOUND_UNSTRESSED_LENGTH, ERROR, refused);
  check.above_zero(check.field(m.entry, NAMED(FACTOR_AREA)), FINITES_FOUND_FACTOR, ERROR, refused);
  check.above_zero(check.field(m.section, NAMED(SECTION_AREA)), FINITES_FOUND_SECTION, ERROR, refused);
  check.above_zero(check.field(m.material, NAMED(MEMBER_E1)), FINITES_FOUND_MODULUS, ERROR, refused);
  bool nodes = true;
  for (const FIELD_NAME& name : {NAMED(MEMBER_NODE_1), NAMED(MEMBER_NODE_2)}) {
    nodes &= check.has_block(check.field(m.entry, name), NODE_X + 2, "node block");
  }
  if (m.order == GEOMETRIC_ADDED && SOLANA.LOAD_FACTOR == 0.0) {
    check.find(WARNING, FINITES_FOUND_LOAD_FACTOR,
               SENTENCE() << "LOAD_FACTOR of SOLANA is 0: with A(SECOND_ORDER) 1 all loads of cables, their own weight "
                             "too, are multiplied by it; set it to 1");
  }
  const SUBJECT weight = check.field(m.entry, NAMED(MEMBER_WEIGHT));
  if (!nodes || !taut || !check.finite(weight)) return;
  const double L0 = check.A(m.entry.start + UNSTRESSED_LENGTH);
  if (weight.value != 0.0 || ALLOCATED(m.record->MEMBER_LOADS) || distance_of_nodes(check, m) > L0) return;
  check.find(NOTE, FINITES_FOUND_SLACK, weight,
             "the cable is slack and has no load yet: without one it has no shape, message 1264; give it a weight or a "
             "load case of MEMBER_LOADS");
}

void check_kind(CHECK& check, const CHECKED_MEMBER& m) {
  switch (m.kind) {
    case FINITES_ELEMENT_BEAM:
      check_length(check, m);
      check_weight(check, m);
      check_axial_stiffness(check, m);
      check_beam(check, m);
      break;
    case FINITES_ELEMENT_TRUSS: check_truss(check, m); break;
    case FINITES_ELEMENT_CABLE: check_cable(check, m); break;
    default: check_link_or_spring(check, m); break;
  }
}

}  // namespace

void check_factor(CHECK& check, const CHECKED_MEMBER& m, const FIELD_NAME& name, const char* part) {
  const SUBJECT factor = check.field(m.entry, name);
  if (factor.value == 0.0) {
    check.find(WARNING, FINITES_FOUND_FACTOR,
               SENTENCE() << factor.name.text() << " is 0: the member has no " << part << "; set it to 1");
  } else {
    check.above_zero(factor, FINITES_FOUND_FACTOR, WARNING, "");
  }
}

void check_property(CHECK& check, const SUBJECT& subject, std::int32_t code, const char* part) {
  if (subject.value == 0.0) {
    check.find(WARNING, code, SENTENCE() << subject.name.text() << " is 0: the member has no " << part << "; set it");
  } else {
    check.above_zero(subject, code, WARNING, "");
  }
}

void check_removal(CHECK& check, const CHECKED_MEMBER& m, std::int32_t step) {
  if (step >= 0) return;
  const SUBJECT least = check.field(m.entry, NAMED(REMOVE_MIN));
  check.above_zero(least, FINITES_FOUND_REMOVAL, WARNING,
                   "the member is failing (REMOVE_STEP below 0) and loses all its stiffness; set it to 1e-3 or so");
  SOLPARAM_RECORD parameters{};
  ZelkuSolParamGetRec(&parameters);
  if (parameters.REMOVE_RATIO > 1.0F) return;
  check.find(WARNING, FINITES_FOUND_REMOVAL,
             SENTENCE() << "REMOVE_RATIO of the solution parameters is " << static_cast<double>(parameters.REMOVE_RATIO)
                        << ": by it a failing member's stiffness is divided in each step; store one above 1");
}

void check_axial_force(CHECK& check, const CHECKED_MEMBER& m) {
  if (m.order != GEOMETRIC_ADDED && m.order != GEOMETRIC_APART) return;
  const SUBJECT force = record_field("AXIAL_FORCE", "MEMBER_REC", m.pos, m.record->AXIAL_FORCE);
  if (!check.finite(force) || force.value != 0.0) return;
  check.find(
      NOTE, FINITES_FOUND_NO_AXIAL_FORCE, force,
      "a second-order analysis without geometric stiffness of this member; set it to its force, tension positive");
}

std::int32_t finites_check_member(std::int32_t kind, std::int32_t elem, std::int32_t entry, const double* A,
                                  std::int64_t n, finites_finding* findings, std::int32_t capacity) {
  CHECK check(A, n, findings, capacity);
  check.begin(elem, 0);
  if (kind < FINITES_ELEMENT_BEAM || kind > FINITES_ELEMENT_SPRING) {
    check.find(ERROR, FINITES_FOUND_NO_KIND,
               SENTENCE() << std::int64_t{kind} << " is no kind of member: pass FINITES_ELEMENT_BEAM to _SPRING");
    return check.count();
  }
  if (check.A.length() < SHEAR_DEFORMATION) {
    check.find(
        ERROR, FINITES_FOUND_NO_MODEL_DATA,
        SENTENCE() << "MODEL_DATA is missing or shorter than its header: the library reads beyond it or crashes; "
                      "pass the array and its length");
    return check.count();
  }
  CHECKED_MEMBER m;
  m.kind = kind;
  m.entry = {"I", entry};
  m.order = check.A.INTEGER(SECOND_ORDER);
  const SUBJECT start{SENTENCE() << "I, the start of the entry,", static_cast<double>(entry)};
  if (!check.has_block(start, is_cable(m) ? UNSTRESSED_LENGTH : REDUCTION_INDEX, "entry")) return check.count();
  check.begin(elem, check.A.INTEGER(entry + std::int64_t{ELEM_ID}));
  const bool blocks = find_blocks(check, m);
  if (find_record(check, m) && blocks) check_kind(check, m);
  return check.count();
}
