// state_in_use.h: the plastic state that a call works on, and where it reports what failed.
//
// The elements take it as an argument. The protocol refers to the record of the plate in SOLANAELEM; a plain call
// refers to the state of its caller.
#ifndef FINITES_STATE_IN_USE_H
#define FINITES_STATE_IN_USE_H

#include <cstdint>

#include "finites/records.h"

// Failures of the return to the yield surface. By the protocol each goes to ASSERTF where it happens, and the call goes
// on when that returns. A plain call has no texts: it only learns whether there was one.
struct FAILURES {
  bool* noted;                                      // null: ASSERTF
  std::int32_t elem = 0, operation = 0, point = 0;  // the place that is reported with a text; 0: not known

  bool by_protocol() const { return noted == nullptr; }
  FAILURES at(std::int32_t p) const { return {noted, elem, operation, p}; }

  // The answer is not a return to the yield surface.
  void failed(const char* text) const;
  // The answer is used as it is.
  void remarked(const char* text) const;
};

constexpr FAILURES BY_ASSERTF{nullptr};

// The tangent that a plastic thickness point stores: that of the rate equations, as the protocol has it, or that of the
// return mapping (Simo and Taylor, 1986), with which Newton's method converges in steps of any size.
enum class TANGENT { CONTINUUM, CONSISTENT };

struct PLATE_STATE_IN_USE {
  PLATE_STATE_RECORD* record;     // null: none
  std::int32_t thickness_points;  // NPT_THICK
  bool increments_from_current;   // EP_INC_FROM_CUR
  FAILURES failures;
  TANGENT tangent;
};

constexpr PLATE_STATE_IN_USE NO_PLATE_STATE{nullptr, 0, false, BY_ASSERTF, TANGENT::CONTINUUM};

// By the protocol: the record of an element, by its sequential index, if it has one. The operation is for reports
// alone.
PLATE_STATE_IN_USE state_of_element(std::int32_t elem, std::int32_t operation = 0);

#endif
