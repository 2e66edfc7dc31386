// lane_conditions.h: whether conditions hold for all elements of a vector.
#ifndef FINITES_LANE_CONDITIONS_H
#define FINITES_LANE_CONDITIONS_H

#include <cstring>

#include "common/lane_pair.h"
#include "plain_calls/lanes/gather.h"

// Conditions of W elements: a sum of marks, each 0 where a condition holds.
template <class V>
class LANE_CONDITIONS {
 public:
  template <class BITS>
  void expect(const BITS& holds) {
    marks_ = marks_ + where(BITS(~holds), V(1.0 - V{}));
  }
  bool all() const {
    double marks[LANE_COUNT<V>];
    std::memcpy(marks, &marks_, sizeof marks);
    double any = 0.0;
    for (const double mark : marks) any += mark;
    return any == 0.0;
  }

 private:
  V marks_{};
};

#endif
