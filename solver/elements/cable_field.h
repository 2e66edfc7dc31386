// cable_field.h: the shape and the tension of a cable that hangs in equilibrium.
#ifndef FINITES_SOLVER_CABLE_FIELD_H
#define FINITES_SOLVER_CABLE_FIELD_H

#include <array>

#include "elements/polynomial.h"

namespace solver {

// The tension vector falls by the load w from the first node on, t(s) = t(0) - w s, and the cable follows it:
//
//     dx/ds = (stretch + T / EA) t / T,      T = |t|,
//
// s being the unstressed coordinate (Irvine 1981).
struct catenary {
  std::array<double, 3> first{}, second{};  // the displaced nodes
  std::array<double, 3> tension{}, load{};  // t(0); w per unstressed length
  double length = 0;                        // unstressed
  double stretch = 1;                       // 1 and the strain without tension
  double EA = 0;
};

double tension_at(const catenary& c, double s);
std::array<double, 3> position_at(const catenary& c, double s);

// The largest distance from the straight line between the displaced nodes, and the place s / length.
extreme sag_of(const catenary& c);

}  // namespace solver

#endif
