// span_use.h: what the hinges of a member would say to its forces between its ends.
//
// Hinges form at ends alone. Along a member under loads, or under an axial force in second order, the forces may leave
// the yield surface where no hinge can follow them: the frame then stands under loads that its capacities do not allow.
// A straight way between two ends inside a convex surface stays inside, so other members need no look.
#ifndef FINITES_SOLVER_SPAN_USE_H
#define FINITES_SOLVER_SPAN_USE_H

#include <optional>
#include <string>
#include <vector>

#include "elements/member_field.h"
#include "model/model.h"
#include "pushover/yield_surface.h"

namespace solver {

// The forces of a hinge as functions of xi.
struct span_forces {
  quintic P{}, My{}, Mz{};
};

span_forces span_of(const member_field& f);
// a + share (b - a)
span_forces between(const span_forces& a, const span_forces& b, double share);

// The largest value of the yield condition between the ends, and where; 0 where no place lies beyond both ends.
struct span_value {
  double value = 0, xi = 0;
};
span_value largest_between_ends(const hinge_model& h, const span_forces& f);

// Forces by the capacity of the surface along their ray.
double capacity_ratio(const hinge_model& h, const hinge_forces& f);

// A place of a member and its forces there by their capacity.
struct use_of_capacity {
  std::size_t element = 0;
  double distance = 0;  // from the first end
  double ratio = 0;
};

use_of_capacity most_used_end(const model& m, const std::vector<end_forces>& members);
use_of_capacity most_used_span(const model& m, const std::vector<member_field>& fields);

constexpr double SPAN_ABOVE = 1 + 1e-6;  // what is above its capacity

// "element 2 at 4 from its first end"
std::string name_of(const model& m, const use_of_capacity& use);

}  // namespace solver

#endif
