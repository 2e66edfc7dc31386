// yield_surface.h: a yield surface of the plain calls, over the curves of the hinges, and in forces over capacities.
#ifndef FINITES_YIELD_SURFACE_H
#define FINITES_YIELD_SURFACE_H

#include <cstdint>

#include "finites/elements.h"
#include "hinges/yield_forces.h"

// A description that is not null.
finites_status check_yield(const finites_yield& yield);

// The active equations of forces P, My, Mz.
struct YIELD_EQUATIONS {
  std::int32_t count;
  std::int32_t segment[SEGMENTS];  // 0 of a smooth curve
  double value[SEGMENTS];
  double gradient[SEGMENTS][3];
};

void set_equations(const finites_yield& yield, const double* force, YIELD_EQUATIONS& equations);

double largest_value(const YIELD_EQUATIONS& equations);

// ---- in pure numbers x = (P, My, Mz) over the capacities: value 1 is the surface

// The planes of a curve that has no other: n.x = 1, sixteen at most. 0 for a smooth one.
constexpr int MOST_PLANES = 16;
int planes_of(const finites_yield& yield, double (*n)[3]);

// Value, gradient and second derivatives of the smooth surface. The second derivatives are of the function that
// yield_orbison.cpp gives, forces that are not in the set left out:
//
//     pp  2.3 + 7.34 mz^2 + 90 p^4 my^2     yy  12 my^2 + 6 p^6 + 9.3 mz^4     zz  2 + 7.34 p^2 + 55.8 mz^2 my^2
//     py  36 p^5 my                         pz  14.68 p mz                     yz  37.2 mz^3 my
struct SMOOTH_YIELD {
  double value, gradient[3], second[3][3];
};

// Is the force, 0 for P, 1 for My, 2 for Mz, one of the set?
bool in_force_set(std::int32_t set, int force);

double smooth_value(const finites_yield& yield, const double* x);
SMOOTH_YIELD smooth_yield(const finites_yield& yield, const double* x);

#endif
