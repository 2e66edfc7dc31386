// check_link_spring.cpp: the property record of a link or spring, whose address stands in the bits of a word.
#include <cstring>

#include "finites/fields.h"
#include "plain_calls/checks/check_member.h"

namespace {

constexpr int KIND_WORD[6] = {SPRING_KIND_X,  SPRING_KIND_Y,  SPRING_KIND_Z,
                              SPRING_KIND_RX, SPRING_KIND_RY, SPRING_KIND_RZ};
constexpr int STIFFNESS_WORD[6] = {SPRING_STIFFNESS_X,  SPRING_STIFFNESS_Y,  SPRING_STIFFNESS_Z,
                                   SPRING_STIFFNESS_RX, SPRING_STIFFNESS_RY, SPRING_STIFFNESS_RZ};
constexpr const char* DIRECTION[6] = {"x", "y", "z", "rotation x", "rotation y", "rotation z"};

// Addresses of a process lie below 2^47 and, of words, at multiples of four. The bits of a number converted to a real
// do not.
constexpr std::uintptr_t ADDRESS_BITS = 47;

template <class T>
T word(const char* record, int at) {
  static_assert(sizeof(T) == 4, "a word of the record");
  T value{};
  std::memcpy(&value, record + 4 * static_cast<std::ptrdiff_t>(at), sizeof value);
  return value;
}

// The record; null, with the finding, where the word holds no address.
const char* property_record(CHECK& check, const CHECKED_MEMBER& m) {
  const SUBJECT at = check.field(m.entry, NAMED(PROPERTY_ADDRESS));
  const double* const cell = check.A.address(m.entry.start + PROPERTY_ADDRESS);
  std::uintptr_t bits = 0;
  std::memcpy(&bits, cell, sizeof bits);
  if (bits == 0) {
    check.find(WARNING, FINITES_FOUND_PROPERTY_ADDRESS,
               SENTENCE() << at.name.text()
                          << " has no address: matrices are zero, and ASSERTF is called; copy the bits "
                             "of the property record's address into it (memcpy)");
    return nullptr;
  }
  if (bits >> ADDRESS_BITS == 0 && bits % 4 == 0) return reinterpret_cast<const char*>(bits);
  check.find(
      ERROR, FINITES_FOUND_PROPERTY_ADDRESS,
      SENTENCE() << at.name.text() << " is " << at.value
                 << ", whose bits are no address: the process crashes; copy the bits of the address (memcpy), do "
                    "not convert it to a real");
  return nullptr;
}

struct COMPONENT {
  int direction;
  std::int32_t kind;
  double k;
};

// A translation of the state set: K_INITIAL is its stiffness, K_CURRENT / K_INITIAL the ratio of kind 8.
void check_nonlinear(CHECK& check, const CHECKED_MEMBER& m, COMPONENT& c) {
  const std::int32_t index = m.record->NL_SPRING_IDX(c.direction + 1);
  const SENTENCE name = SENTENCE() << "NL_SPRING_IDX(" << std::int64_t{c.direction} + 1 << ") of MEMBER_REC("
                                   << std::int64_t{m.pos} << ")";
  const SUBJECT subject{name, static_cast<double>(index)};
  if (index < 1) {
    if (c.kind == COMPONENT_NONLINEAR) {
      check.find(WARNING, FINITES_FOUND_NONLINEAR_SPRING, subject,
                 "a component of kind 8 has no nonlinear spring: ASSERTF is called, and it keeps the stiffness of its "
                 "word; set the index");
    }
    return;
  }
  const SPRING_NL_RECORD* const spring =
      optional_record(check, SOLANAELEM.SPRING_NL_REC, index, "SOLANAELEM.SPRING_NL_REC");
  if (spring == nullptr) {
    check.find(WARNING, FINITES_FOUND_NONLINEAR_SPRING, subject,
               "SOLANAELEM.SPRING_NL_REC has no such record, and the component keeps the stiffness of its word");
    return;
  }
  c.k = spring->K_INITIAL;
  const bool ratio = c.kind == COMPONENT_NONLINEAR;
  check.above_zero(
      record_field("K_INITIAL", "SPRING_NL_REC", index, spring->K_INITIAL), FINITES_FOUND_NONLINEAR_SPRING,
      ratio ? ERROR : WARNING,
      ratio ? "K_CURRENT is divided by it, and the matrix is NaN; set it" : "the component is free; set it");
  if (ratio) check.finite(record_field("K_CURRENT", "SPRING_NL_REC", index, spring->K_CURRENT));
}

bool check_component(CHECK& check, const CHECKED_MEMBER& m, const char* record, int shift, int direction) {
  COMPONENT c{direction, word<std::int32_t>(record, KIND_WORD[direction] + shift),
              static_cast<double>(word<float>(record, STIFFNESS_WORD[direction] + shift))};
  if (c.kind == COMPONENT_RIGID) {
    const bool translation = direction < 3;
    c.k = translation ? SOLANA.RIGID_K_TRANS : SOLANA.RIGID_K_ROT;
    const SUBJECT rigid{SENTENCE() << (translation ? "RIGID_K_TRANS" : "RIGID_K_ROT") << " of SOLANA", c.k};
    check.above_zero(rigid, FINITES_FOUND_RIGID_STIFFNESS, WARNING,
                     "a component of kind 9 has this stiffness, and is free; set it");
  }
  if (direction < 3) {
    check_nonlinear(check, m, c);
    check_removal(check, m, c.kind == COMPONENT_NONLINEAR ? 0 : m.record->REMOVE_STEP_SPR(direction + 1));
  }
  const SUBJECT k{SENTENCE() << "the stiffness of " << DIRECTION[direction], c.k};
  if (check.finite(k) && c.k < 0.0) check.find(WARNING, FINITES_FOUND_NO_STIFFNESS, k, "a negative stiffness");
  return c.k != 0.0;
}

}  // namespace

void check_link_or_spring(CHECK& check, const CHECKED_MEMBER& m) {
  const bool link = m.kind == FINITES_ELEMENT_LINK;
  if (!link) {
    check.has_block(check.field(m.entry, NAMED(MEMBER_NODE_1)), NODE_LOCAL_AXES, "node block of the first end");
  }
  const char* const record = property_record(check, m);
  if (record == nullptr) return;
  bool any = false;
  for (int d = 0; d < 6; ++d) any |= check_component(check, m, record, link ? LINK_SHIFT : 0, d);
  const bool floored = link && word<std::int32_t>(record, LINK_KIND) == FLOORED_LINK && SOLANA.MIN_K_ROT > 0.0 &&
                       word<std::int32_t>(record, LINK_COUNT) > 0;
  if (!any && !floored) {
    check.find(WARNING, FINITES_FOUND_NO_STIFFNESS,
               SENTENCE() << "all six stiffnesses of the property record are 0, and so is the matrix; fill its words "
                          << (link ? "(those of a spring, each LINK_SHIFT further on)" : "SPRING_STIFFNESS_X and on"));
  }
  if (!link || word<std::int32_t>(record, LINK_FORM) != 0) return;
  const SUBJECT length = record_field("LENGTH", "MEMBER_REC", m.pos, m.record->LENGTH);
  if (check.finite(length) && length.value < 0.0) {
    check.find(WARNING, FINITES_FOUND_LENGTH, length, "a negative length turns the levers of a link of form 0");
  }
}
