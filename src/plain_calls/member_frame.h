// member_frame.h: what the plain calls of members share: checks of numbers, length and local axes of a member, its
// rotation, and the answer that is written only where it is finite.
#ifndef FINITES_MEMBER_FRAME_H
#define FINITES_MEMBER_FRAME_H

#include "finites/elements.h"
#include "finites/views.hpp"

// FINITES_NAN where one of them is NaN or infinite, FINITES_RANGE where one is larger than 1e30 in size.
finites_status check_member_numbers(const double* values, int count);

// The first status that is not FINITES_OK.
template <class... STATUSES>
finites_status first_fault(STATUSES... statuses) {
  finites_status fault = FINITES_OK;
  (void)((fault = statuses, fault != FINITES_OK) || ...);
  return fault;
}

// A member between its ends. The rows of axes are the local x, y, z.
struct MEMBER_FRAME {
  double length;
  double center[3];
  MATRIX<3, 3> axes;
};

// offset and up may be null: none; the usual direction.
finites_status frame_of_member(const double xyz[2][3], const double (*offset)[3], const double* up,
                               MEMBER_FRAME& frame);

// T (12, 12) := the rotation of the degrees of freedom of both ends, u_local = T u_global.
void rotation_of_member(const MEMBER_FRAME& frame, double* T);

void measure_member(const MEMBER_FRAME& frame, double area, double density, finites_member_measures& measures);

// to := values, unless one of them is not finite.
finites_status hand_over(const double* values, int count, double* to);

#endif
