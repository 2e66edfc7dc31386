// cable_group.h: hanging cables, whose forces depend on the position of their nodes.
//
// The displaced nodes have blocks of their own in MODEL_DATA, to which the entries of cables refer: everything else
// stays where the deck puts it.
#ifndef FINITES_SOLVER_CABLE_GROUP_H
#define FINITES_SOLVER_CABLE_GROUP_H

#include <array>
#include <cstddef>
#include <vector>

#include "elements/element_group.h"
#include "elements/frame_records.h"
#include "elements/library_data.h"

namespace solver {

class cable_group : public element_group {
 public:
  cable_group(library_data& data, frame_records& frames);

  void add(std::size_t element) override;
  // The tangent of the equilibrium at the displaced nodes.
  void stiffness(std::size_t element, element_matrix& K) override;
  void mass(std::size_t element, element_matrix& M) override;
  // The tangent holds the geometric stiffness, and the load is part of the equilibrium: nothing is asked for or kept
  // beside them.
  void geometric_stiffness(std::size_t element, element_matrix& G) override;
  void loads(std::size_t element, const distributed_load& load, element_vector& forces) override;
  void keep_state(std::size_t element, const element_vector& displacements, const distributed_load& load) override;
  void clear_state() override;

  // The displaced position of every node, and the load of every cable; then the forces that the nodes exert on a cable
  // in equilibrium, global axes or local ones. A failure of the cable library throws its message.
  void move_nodes(const std::vector<double>& displacements);
  void load(std::size_t element, const distributed_load& load);
  void forces(std::size_t element, element_vector& forces);
  end_forces local_forces(std::size_t element);

 private:
  library_data& data_;
  frame_records& frames_;
  std::vector<std::array<double, LOAD_ROW_STRAIN>> rows_;  // one load case each, by position among the frame elements
};

}  // namespace solver

#endif
