// plate_checks.h: whether a description of a plate, and the vectors of its calls, can be computed with.
//
// The computing side (plate_calls.h) takes what these let through and checks nothing again.
#ifndef FINITES_PLATE_CHECKS_H
#define FINITES_PLATE_CHECKS_H

#include "finites/elements.h"

// FINITES_OK, FINITES_NAN or FINITES_RANGE; null: FINITES_NULL.
finites_status check_reals(const double* values, int count);

// The same; null stands for nothing.
finites_status check_optional_reals(const double* values, int count);

finites_status check_plate(const finites_plate& plate);

// The corners of the element: nodes plus offsets. Those of a missing fourth node are 0.
struct PLATE_CORNERS {
  double x[4][3];
  explicit PLATE_CORNERS(const finites_plate& plate);
};

#endif
