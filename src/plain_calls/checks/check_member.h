// check_member.h: a frame member as its checks see it.
#ifndef FINITES_CHECK_MEMBER_H
#define FINITES_CHECK_MEMBER_H

#include <cstdint>

#include "finites/records.h"
#include "plain_calls/checks/findings.h"

struct CHECKED_MEMBER {
  std::int32_t kind = 0;  // FINITES_ELEMENT_BEAM to FINITES_ELEMENT_SPRING
  BLOCK entry, section, material;
  std::int32_t pos = 0;  // of its records
  const MEMBER_RECORD* record = nullptr;
  std::int32_t order = 0;  // A(SECOND_ORDER)
};

void check_beam(CHECK& check, const CHECKED_MEMBER& m);
void check_link_or_spring(CHECK& check, const CHECKED_MEMBER& m);

// Hinges of a beam, axial yield of a truss.
void check_hinge(CHECK& check, const CHECKED_MEMBER& m);

// The coefficient by which a failing member loses its stiffness; `step` is negative while it fails.
void check_removal(CHECK& check, const CHECKED_MEMBER& m, std::int32_t step);

// Whether this is a second-order analysis, and a note where the member has no force for it.
void check_axial_force(CHECK& check, const CHECKED_MEMBER& m);

// A factor of the element on a part of its stiffness, and a number of its section or material.
void check_factor(CHECK& check, const CHECKED_MEMBER& m, const FIELD_NAME& name, const char* part);
void check_property(CHECK& check, const SUBJECT& subject, std::int32_t code, const char* part);

#endif
