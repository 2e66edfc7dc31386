// flat_axes.h: nodes of a flat deck with axes of their own: those with a support along none of the global axes.
//
// At these nodes *BOUNDARY, *CLOAD and *EQUATION of the flat deck are in the axes of a *TRANSFORM; all other nodes that
// the deck turns are written in global components.
#ifndef FINITES_SOLVER_FLAT_AXES_H
#define FINITES_SOLVER_FLAT_AXES_H

#include <map>
#include <vector>

#include <fmt/format.h>

#include "model/model.h"

namespace solver {

class flat_axes {
 public:
  explicit flat_axes(const model& m);

  // *NSET and *TRANSFORM for all nodes with the same axes.
  void append_cards(fmt::memory_buffer& out) const;
  void append_boundaries(fmt::memory_buffer& out, const std::vector<boundary_condition>& list) const;
  // Throws deck_error for an equation with a value on its right side.
  void append_constraints(fmt::memory_buffer& out, const std::vector<linear_constraint>& list) const;
  void append_loads(fmt::memory_buffer& out, const std::vector<nodal_load>& list) const;

 private:
  struct component {
    int node = 0, dof = 1;
    double value = 0;
  };
  const node_axes* of(int node) const;
  component support(const linear_constraint& c) const;
  std::vector<component> own_components(const std::vector<component>& global) const;
  std::string free_name() const;

  const model& model_;
  std::map<int, const node_axes*> turned_;
};

}  // namespace solver

#endif
