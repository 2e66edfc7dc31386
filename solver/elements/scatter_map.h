// scatter_map.h: the equations of a model, the pattern of their symmetric matrix, and where each entry of each element
// matrix goes in it.
//
// All of it follows from which nodes an element joins and which degrees of freedom are prescribed; no value is looked
// at. With the map at hand, assembly is one pass of additions in place: no triplets, no sorting, no search.
//
// Where elements are divided over processes (model::process_of) the equations are those of the whole model, and the
// pattern is that of the elements of this process, whose matrices are added up here: the matrix of the model is the sum
// of those of all processes. A column without an own element is empty, unless the process leads its node.
//
// Degrees of freedom that linear conditions make dependent have no equation: u = T x + c, x by equation. An element
// that joins one of them adds T^T K T to the matrix, over the equations that move it (tied_element.cpp).
#ifndef FINITES_SOLVER_SCATTER_MAP_H
#define FINITES_SOLVER_SCATTER_MAP_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "elements/constraints.h"
#include "elements/load_case.h"
#include "model/model.h"

namespace solver {

// A symmetric matrix by its lower triangle, column by column, row numbers ascending; everything counted from 0. Of
// several processes: the part of this one.
struct symmetric_matrix {
  numbered<std::int32_t> column_start;  // one more than there are columns
  numbered<std::int32_t> row;
  numbered<double> value;

  std::size_t order() const { return column_start.empty() ? 0 : column_start.size() - 1; }
  // Where the entries of a column begin; those of the next begin where they end. The diagonal comes first.
  std::size_t begin_of(std::size_t column) const { return subscript(column_start[column]); }
  bool is_empty(std::size_t column) const { return column_start[column] == column_start[column + 1]; }
};

constexpr std::int32_t PRESCRIBED = -1;

// An element with dependent degrees of freedom: its displacements are those of the equations that move it, u = L x + c.
struct tied_element {
  struct term {
    int local = 0;  // degree of freedom of the element, from 0
    double factor = 0;
  };
  std::vector<std::int32_t> equations;     // ascending
  std::vector<std::vector<term>> columns;  // of L, in the same order
  std::vector<int> nodes;                  // of the equations, ascending
  std::array<double, 24> constant{};       // c, by local degree of freedom, with the prescribed values
};

// A body on rigid arms: its three rotations, as an element of which they are the degrees of freedom.
struct turning_body {
  int node = 0, first_rotation = 4;  // as in rigid_arm
  tied_element tied;
};

struct scatter_map {
  numbered<std::int32_t> equation;  // by degree of freedom; PRESCRIBED where it is, or depends on others
  std::size_t equations = 0;
  resolved_constraints constraints;
  std::vector<tied_element> tied;
  numbered<int> tied_of;             // by element: its index in `tied`, -1: none. Empty where nothing is tied
  std::vector<turning_body> bodies;  // by node and first rotation
  // Element by element: the position in symmetric_matrix::value of each lower entry, column by column; PRESCRIBED where
  // the row or the column is. Those of element e begin at start[e].
  numbered<std::int32_t> position;
  std::vector<std::size_t> start;
  // Of several processes: by node whether this one leads it, who adds what belongs to no element; empty: it leads all.
  // Each node has one, who has its own block in the matrix. The first process has all bodies.
  numbered<char> leads;
  bool has_bodies = true;
  bool leads_freedom(std::size_t f) const { return leads.empty() || leads[f / DIRECTIONS] != 0; }

  // Position of entry (row, column) of two degrees of freedom of one node, none of them prescribed.
  std::int32_t position_within_node(const symmetric_matrix& K, std::size_t first, std::size_t second) const;
};

// Resolves the conditions, numbers the equations, node by node, and lays out the pattern with all values 0. Throws
// model_error for conditions that contradict one another.
scatter_map make_scatter_map(const model& m, const load_case& loads, symmetric_matrix& K);

// Adds a value to each entry of the diagonal.
void add_to_diagonal(const scatter_map& map, double value, symmetric_matrix& K);

// The element's place in scatter_map::tied; null for one without dependent degrees of freedom.
inline const tied_element* tied_part(const scatter_map& map, std::size_t element) {
  return map.tied_of.empty() || map.tied_of[element] < 0 ? nullptr : &map.tied[subscript(map.tied_of[element])];
}

// Displacements by degree of freedom: u := T x + c, where u holds the prescribed values already.
void expand(const scatter_map& map, const std::vector<double>& x, std::vector<double>& u);
// The same without c, of a change of displacements or a mode: T x, 0 where it is prescribed.
std::vector<double> spread(const scatter_map& map, const std::vector<double>& x);
// T^T f: what forces by degree of freedom do on the equations.
std::vector<double> by_equation(const scatter_map& map, const std::vector<double>& force);
// |T|^T f, of sizes of forces, none of which is negative.
std::vector<double> sizes_by_equation(const scatter_map& map, const std::vector<double>& size);
// The displacements of the independent degrees of freedom alone.
std::vector<double> independent_part(const scatter_map& map, const std::vector<double>& displacement);

// How many degrees of freedom an element joins: six per node, of a solid the three translations.
inline int freedoms_per_node(const element& e) { return is_solid(e.type) ? 3 : DIRECTIONS; }
inline int element_freedoms(const element& e) { return freedoms_per_node(e) * count_of(e.nodes); }

// Degree of freedom of the model that a local degree of freedom of an element, from 0, is.
inline std::size_t element_freedom(const element& e, int local) {
  const int at_node = freedoms_per_node(e);
  return freedom(e.nodes[local / at_node], local % at_node);
}

}  // namespace solver

#endif
