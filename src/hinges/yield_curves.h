// yield_curves.h: which yield equations are active at the hinges of a member, and their gradients.
#ifndef FINITES_YIELD_CURVES_H
#define FINITES_YIELD_CURVES_H

#include "finites/records.h"
#include "hinges/yield_forces.h"

// Equations of both ends at most.
constexpr int MOST_EQUATIONS = 2 * SEGMENTS;

// The forces at both ends of a member.
struct HINGE_FORCES {
  SECTION_FORCES END1, END2;
};

// The equations of a member: NTOT in all, N1 and N2 of its ends, and their segments.
struct ACTIVE_EQUATIONS {
  std::int32_t NTOT, N1, N2;
  VECTOR<SEGMENTS, std::int32_t> SEG1, SEG2;
};

// GET_HINGE_FORCES of the current state, for the yielding ends of a curve whose equations depend on forces; zero
// otherwise: the gradients of linear segments are constant.
HINGE_FORCES hinge_forces(const HINGE_RECORD& hinge, const std::int32_t* IELEM, const double* A,
                          const std::int32_t* NDIM, const std::int32_t* POS, const std::int32_t* FMODE);

// Counts the equations. An end that does not yield counts one, so that the columns of the other end keep their places.
// The segments of an end that does not yield stay unchanged.
void count_equations(const HINGE_RECORD& hinge, const HINGE_FORCES& forces, ACTIVE_EQUATIONS& equations);

// The column of an equation in N: its gradient in the forces of an end, 1 or 2; a column of zeros where the end is 0.
struct FLOW_COLUMN {
  std::int32_t end;
  SECTION_FORCES n;
};

// Sets the columns that have an equation, among the first NTOT. The caller has cleared all of them.
void set_flow_columns(const HINGE_RECORD& hinge, const HINGE_FORCES& forces, const ACTIVE_EQUATIONS& equations,
                      FLOW_COLUMN* columns);

// Writes columns into N (12, count), which the caller has cleared: rows 1, 5, 6 for the first end and 7, 11, 12 for the
// second, P, My, Mz.
void write_columns(const FLOW_COLUMN* columns, int count, double* N);

#endif
