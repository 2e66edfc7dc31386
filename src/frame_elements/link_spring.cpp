// link_spring.cpp: KSTIF_LINK and KSTIF_SPR: the six stiffnesses of a link or spring from its property record and state
// (matrices: link_planes.cpp).
#include <cstring>
#include <optional>

#include "common/clear.h"
#include "common/diagnostics.h"
#include "common/member_order.h"
#include "finites/fields.h"
#include "finites/finites.h"
#include "finites/services.h"
#include "finites/views.hpp"
#include "frame_elements/link_planes.h"

namespace {

// Words of the record of a spring, in the order of the degrees of freedom.
constexpr int KIND_WORD[6] = {SPRING_KIND_X,  SPRING_KIND_Y,  SPRING_KIND_Z,
                              SPRING_KIND_RX, SPRING_KIND_RY, SPRING_KIND_RZ};
constexpr int STIFFNESS_WORD[6] = {SPRING_STIFFNESS_X,  SPRING_STIFFNESS_Y,  SPRING_STIFFNESS_Z,
                                   SPRING_STIFFNESS_RX, SPRING_STIFFNESS_RY, SPRING_STIFFNESS_RZ};

// A property record is a sequence of words of four bytes, integers and single-precision reals.
std::int32_t word(const void* record, int at) {
  std::int32_t value = 0;
  std::memcpy(&value, static_cast<const char*>(record) + 4 * static_cast<std::size_t>(at), sizeof value);
  return value;
}

double real_word(const void* record, int at) {
  float value = 0.0F;
  std::memcpy(&value, static_cast<const char*>(record) + 4 * static_cast<std::size_t>(at), sizeof value);
  return static_cast<double>(value);
}

struct COMPONENTS {
  VECTOR<6, std::int32_t> kind;
  VECTOR<6> k;
};

// A rigid component has the stiffness that the solver sets for rigid translations or rotations.
COMPONENTS read_components(const void* record, int shift) {
  COMPONENTS c;
  for (int i = 0; i < 6; ++i) {
    c.kind(i + 1) = word(record, KIND_WORD[i] + shift);
    c.k(i + 1) = real_word(record, STIFFNESS_WORD[i] + shift);
    if (c.kind(i + 1) == COMPONENT_RIGID) c.k(i + 1) = i < 3 ? SOLANA.RIGID_K_TRANS : SOLANA.RIGID_K_ROT;
  }
  return c;
}

// Links of kind FLOORED_LINK keep a least stiffness on the rotations without a property of their own.
void raise_rotations(const void* record, COMPONENTS& c) {
  if (word(record, LINK_KIND) != FLOORED_LINK || word(record, LINK_COUNT) <= 0) return;
  for (int i = 4; i <= 6; ++i) {
    if (c.kind(i) == COMPONENT_FREE && c.k(i) < SOLANA.MIN_K_ROT) c.k(i) = SOLANA.MIN_K_ROT;
  }
}

// A nonlinear translation has its initial stiffness; a failing translation is multiplied by its removal coefficient.
void apply_state(const MEMBER_RECORD& member, std::int32_t elem, double least, std::int32_t mode, COMPONENTS& c) {
  for (int t = 1; t <= 3; ++t) {
    const std::int32_t spring = member.NL_SPRING_IDX(t);
    if (spring > 0 && HAS_ELEMENT(SOLANAELEM.SPRING_NL_REC, spring)) {
      c.k(t) = SOLANAELEM.SPRING_NL_REC(spring).K_INITIAL;
    }
    const bool sheds = mode == MODE_STEP || (mode == MODE_LOCAL && c.kind(t) == COMPONENT_NONLINEAR);
    if (!sheds) continue;
    std::optional<FAILURE_PLACE> place;
    if (c.kind(t) == COMPONENT_NONLINEAR && spring < 1) place.emplace(elem, 0, 0);
    double coefficient = 1.0;
    GET_COEF_REMOVE_SPRING(&member.REMOVE_STEP_SPR(t), &least, &spring, &c.kind(t), &coefficient);
    c.k(t) *= coefficient;
  }
}

// Without a property record both matrices are zero.
void report_missing(const char* text, std::int32_t elem, double* K) {
  clear(K, MEMBER_DOFS * MEMBER_DOFS);
  report_failure(text, elem, 0, 0);
}

}  // namespace

void KSTIF_LINK(const int32_t* MODE, const int32_t* IELEM, const int32_t* IOFF, const double* A,
                const int32_t* /*NDIM*/, const double* T, double* K, double* KG) {
  const MODEL_DATA_READER D(A);
  const std::int64_t I = *IOFF;
  clear(KG, MEMBER_DOFS * MEMBER_DOFS);
  void* record = nullptr;
  INT_EQUIV_KPT(&D(I + PROPERTY_ADDRESS), &record);
  if (record == nullptr) {
    report_missing("kStif_LINK", *IELEM, K);
    return;
  }
  const MEMBER_RECORD& member = SOLANAELEM.MEMBER_REC(SOLANAELEM.ELEM_POS(*IELEM));
  COMPONENTS c = read_components(record, LINK_SHIFT);
  raise_rotations(record, c);
  apply_state(member, *IELEM, D(I + REMOVE_MIN), *MODE, c);
  PLANE_MATRIX planes;
  if (word(record, LINK_FORM) != 0) {
    set_link_blocks(c.k, planes);
  } else {
    set_link_mid_length(c.k, member.LENGTH, planes);
  }
  write_or_turn_link(planes, *MODE != MODE_LOCAL, T, K);
}

void KSTIF_SPR(const int32_t* MODE, const int32_t* IELEM, const int32_t* IOFF, const double* A, const int32_t* /*NDIM*/,
               const double* T, double* K, double* KG) {
  const MODEL_DATA_READER D(A);
  const std::int64_t I = *IOFF;
  clear(KG, MEMBER_DOFS * MEMBER_DOFS);
  void* record = nullptr;
  INT_EQUIV_KPT(&D(I + PROPERTY_ADDRESS), &record);
  if (record == nullptr) {
    report_missing("kStif_SPR", *IELEM, K);
    return;
  }
  const MEMBER_RECORD& member = SOLANAELEM.MEMBER_REC(SOLANAELEM.ELEM_POS(*IELEM));
  COMPONENTS c = read_components(record, 0);
  apply_state(member, *IELEM, D(I + REMOVE_MIN), *MODE, c);
  PLANE_MATRIX planes;
  set_link_blocks(c.k, planes);
  const std::int64_t J = D.INTEGER(I + MEMBER_NODE_1);
  write_or_turn_link(planes, *MODE != MODE_LOCAL && D.INTEGER(J + NODE_LOCAL_AXES) > 0, T, K);
}
