// extremes.h: the least and the largest value of each quantity of a step, and where they are.
#ifndef FINITES_SOLVER_EXTREMES_H
#define FINITES_SOLVER_EXTREMES_H

#include <string>
#include <vector>

#include "analyses/results.h"
#include "analyses/static_analysis.h"
#include "model/model.h"

namespace solver {

// A node, an element, or a place along a member.
struct value_place {
  int node = -1;         // index into model::nodes
  int element = -1;      // index into model::elements
  double distance = -1;  // from the first end of the member of the deck; negative: the whole element
};

struct placed_value {
  double value = 0;
  value_place at;
};

struct quantity_range {
  std::string name;
  placed_value least, largest;
};

// By name, as far as the model has the quantity and it is not 0 everywhere:
//   ux uy uz rx ry rz                   at nodes
//   displacement                        its length, at nodes and within members
//   reaction_ux ... reaction_rz         at nodes with a reaction
//   N Vy Vz T My Mz                     section forces of members, exact along them; of springs and links at their ends
//   first_top second_top von_mises_top  of plates at nodes, likewise _middle and _bottom (nodal_parts.h)
//   N1 N2 N12 M1 M2 M12 Q1 Q2           of plates, the mean of the element, in the axes of its material
//   solid_sxx ... solid_sxz             of solids at nodes (solid_results.h)
//   solid_first solid_third solid_von_mises
// Of values that are equal up to rounding the first is taken.
std::vector<quantity_range> ranges_of(const model& m, const static_solution& solution, const step_results& results);

// "node 12", "element 7", "element 7 at 1.25".
std::string place_name(const model& m, const value_place& at);

}  // namespace solver

#endif
