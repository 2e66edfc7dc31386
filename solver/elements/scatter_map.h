// scatter_map.h: the equations of a model, the pattern of their symmetric matrix, and where each entry of each element
// matrix goes in it.
//
// All of it follows from which nodes an element joins and which degrees of freedom are prescribed; no value is looked
// at. With the map at hand, assembly is one pass of additions in place: no triplets, no sorting, no search.
#ifndef FINITES_SOLVER_SCATTER_MAP_H
#define FINITES_SOLVER_SCATTER_MAP_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "elements/load_case.h"
#include "model/model.h"

namespace solver {

// A symmetric matrix by its lower triangle, column by column, row numbers ascending; everything counted from 0.
struct symmetric_matrix {
  numbered<std::int32_t> column_start;  // one more than there are columns
  numbered<std::int32_t> row;
  numbered<double> value;

  std::size_t order() const { return column_start.empty() ? 0 : column_start.size() - 1; }
  // Where the entries of a column begin; those of the next begin where they end. The diagonal comes first.
  std::size_t begin_of(std::size_t column) const { return subscript(column_start[column]); }
};

constexpr std::int32_t PRESCRIBED = -1;

struct scatter_map {
  numbered<std::int32_t> equation;  // by degree of freedom; PRESCRIBED where it is
  std::size_t equations = 0;
  // Element by element: the position in symmetric_matrix::value of each lower entry, column by column; PRESCRIBED where
  // the row or the column is. Those of element e begin at start[e].
  numbered<std::int32_t> position;
  std::vector<std::size_t> start;

  // Position of entry (row, column) of two degrees of freedom of one node, none of them prescribed.
  std::int32_t position_within_node(const symmetric_matrix& K, std::size_t first, std::size_t second) const;
};

// Numbers the equations, node by node, and lays out the pattern with all values 0.
scatter_map make_scatter_map(const model& m, const load_case& loads, symmetric_matrix& K);

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
