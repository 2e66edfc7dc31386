// load_case.h: the loads and prescribed degrees of freedom of one step, gathered by degree of freedom and by element.
//
// A deck may load an element or a degree of freedom several times: loads add up, and of several prescribed values of a
// degree of freedom the last one holds. Number 6 n + d is direction d (0 to 5: translations x, y, z, rotations x, y,
// z) of node n.
#ifndef FINITES_SOLVER_LOAD_CASE_H
#define FINITES_SOLVER_LOAD_CASE_H

#include <array>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "model/index.h"
#include "model/model.h"

namespace solver {

constexpr int DIRECTIONS = 6;

template <class NODE, class DIRECTION>
constexpr std::size_t freedom(NODE node, DIRECTION direction) {
  return DIRECTIONS * subscript(node) + subscript(direction);
}

// "translation x" to "rotation z", and the short forms "ux" to "rz" of tables.
const char* direction_name(int direction);
const char* direction_short_name(int direction);
std::string direction_with_number(int direction);  // "translation z (degree of freedom 3)"

struct distributed_load {
  double pressure = 0;                // per area, along the positive normal
  std::array<double, 3> body{};       // per volume, global axes
  std::array<double, 3> line{};       // per length of a member, global axes; of a linear one the mean
  std::array<double, 3> line_rise{};  // of a linear one: from the first end of the member to the second
  double temperature_change = 0;      // mean of the element's nodes: the thermal strain over alpha1 of its material
  double temperature_difference = 0;  // likewise; top minus bottom
  bool increment = false;             // to a state that has the pretension of trusses already

  bool is_body() const { return body[0] != 0 || body[1] != 0 || body[2] != 0; }
  bool is_thermal() const { return temperature_change != 0 || temperature_difference != 0; }
};

struct load_case {
  numbered<char> prescribed;           // by degree of freedom
  numbered<double> prescribed_value;   // by degree of freedom
  numbered<double> nodal_load;         // by degree of freedom
  numbered<distributed_load> element;  // by element
  // The linear conditions that hold in the step; of those that a base state has met already the value is 0.
  std::vector<linear_constraint> conditions;
  numbered<char> in_condition;                  // by degree of freedom; empty without conditions
  numbered<std::pair<int, int>> prescribed_by;  // file and line of the *BOUNDARY; empty without conditions

  bool has_condition(std::size_t f) const { return !in_condition.empty() && in_condition[f] != 0; }
};

// `base`: the step in whose end state the loads of `s` find the structure. All that it has prescribed is held where it
// is, and prescribed values of `s` count from there. Null: the unloaded state.
load_case gather_load_case(const model& m, const step& s, const step* base = nullptr);

// Adds to the loads by degree of freedom: a force (first: 0) or a moment (first: 3) at a node.
inline void add_nodal_force(std::vector<double>& nodal_load, int node, int first, double factor,
                            const std::array<double, 3>& force) {
  for (int i = 0; i < 3; ++i) nodal_load[freedom(node, first + i)] += factor * force[subscript(i)];
}

}  // namespace solver

#endif
