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
  std::array<double, 3> line{};       // per length of a member, global axes
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
};

// `base`: the step in whose end state the loads of `s` find the structure. All that it has prescribed is held where it
// is, and prescribed values of `s` count from there. Null: the unloaded state.
load_case gather_load_case(const model& m, const step& s, const step* base = nullptr);

}  // namespace solver

#endif
