// member_group.h: beams, trusses, springs and links, and the calls of the frame routines for them.
#ifndef FINITES_SOLVER_MEMBER_GROUP_H
#define FINITES_SOLVER_MEMBER_GROUP_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "elements/element_group.h"
#include "elements/frame_records.h"
#include "elements/library_data.h"
#include "elements/section_place.h"

namespace solver {

// What acts at the two ends of a beam with hinges.
struct hinge_state {
  end_forces forces{};
  std::array<std::int32_t, 2> state{};                   // 0: no hinge, 1: yields, 2: takes no part in the matrix
  std::array<std::array<std::int32_t, 4>, 2> segment{};  // the active equations of each end; 0: an empty place
  double axial_force = 0;                                // tension, for the geometric stiffness
};

class member_group : public element_group {
 public:
  member_group(library_data& data, frame_records& frames);

  void add(std::size_t element) override;
  void stiffness(std::size_t element, element_matrix& K) override;
  void mass(std::size_t element, element_matrix& M) override;
  void geometric_stiffness(std::size_t element, element_matrix& G) override;
  void loads(std::size_t element, const distributed_load& load, element_vector& forces) override;
  void keep_state(std::size_t element, const element_vector& displacements, const distributed_load& load) override;
  void clear_state() override;

  // The end forces of a member under displacements and its own loads.
  end_forces forces(std::size_t element, const element_vector& displacements, const distributed_load& load);
  // What holds a loaded member whose nodes do not move, local axes.
  end_forces fixed_end_forces(std::size_t element, const distributed_load& load);
  // Loads per length of a member, local axes; of springs and links 0.
  std::array<double, 3> local_load(std::size_t element, const distributed_load& load) const;
  std::array<double, 3> local_rise(std::size_t element, const distributed_load& load) const;  // line_rise
  // Displacements of the ends of a beam that is_placed(), along local x and axes 1, 2; with releases not those of its
  // nodes.
  end_forces end_displacements(std::size_t element, const element_vector& displacements, const distributed_load& load);
  // Loads on such a beam, and what holds it at rest without its releases, in its principal axes.
  section_load load_on_placed(std::size_t element, const distributed_load& load) const;
  end_forces placed_elastic_forces(std::size_t element, const end_forces& displacements, const distributed_load& load);
  // Half of the mass of such a beam in the centroid of each end.
  void lumped_mass(std::size_t element, element_matrix& M);
  // The end forces of a beam without its hinges and without the geometric stiffness; displacements in local axes.
  end_forces elastic_forces(std::size_t element, const end_forces& displacements, const distributed_load& load);
  // Rows: the local axes, for each of the four vectors at the ends.
  const MATRIX<12, 12>& axes(std::size_t element) const { return frames_.axes(element); }
  // The axial force whose geometric stiffness the stiffness of a member holds at present.
  double geometric_force(std::size_t element);

  // Hinges (hinge_operations.cpp). From now on the stiffness of beams may hold hinges, or no longer does. Hinges see
  // their forces through the nonlinear library; without it they would never act.
  void plastic(bool on);
  static bool hinges_see_forces();
  // The state of a beam for its next stiffness: the forces at its ends, which equations are active there, and the axial
  // force of the geometric stiffness.
  void set_hinges(std::size_t element, const hinge_state& state);
  // The fixed-end forces of one load factor, as the library keeps them beside the forces of hinges, and the factor.
  void keep_loads(std::size_t element, const end_forces& load);
  static void set_load_factor(double factor);
  // Of a beam in its present state but without its hinges, local axes.
  const MATRIX<12, 12>& elastic_stiffness(std::size_t element);

 private:
  struct stiffness_pair {
    MATRIX<12, 12> K, KG;
  };

  // Beams whose section lies off their nodes (placed_operations.cpp).
  const section_placement* placement(std::size_t element) const;  // null for all others
  // Along local x and axes 1, 2 at the nodes: without releases, with the geometric stiffness in K where the step has
  // it; and what releases make of it.
  stiffness_pair placed_stiffness(std::size_t element, bool with_geometric);
  released_beam released(std::size_t element, const MATRIX<12, 12>& K, const end_forces& f) const;
  end_forces placed_fixed_forces(std::size_t element, const distributed_load& load);
  end_forces placed_fixed_in_section(std::size_t element, const distributed_load& load);
  end_forces placed_forces(std::size_t element, const element_vector& displacements, const distributed_load& load);
  void put_released(std::size_t element, const MATRIX<12, 12>& K, const MATRIX<12, 12>& A, element_matrix& to);
  // What holds the ends of a loaded member in its principal axes; `push`: by heat, less the pull of a pretension.
  static end_forces hold(const frame_section& section, const material& mat, double length, const member_ends& ends,
                         const std::array<double, 3>& q, const std::array<double, 3>& rise, double push);

  void fill_property(std::size_t element);
  stiffness_pair step_stiffness(std::size_t element, std::int32_t mode, const MATRIX<12, 12>& T);
  void release_end_forces(std::size_t element, end_forces& f);

  library_data& data_;
  frame_records& frames_;
  std::vector<std::array<std::int32_t, 45>> properties_;  // of springs and links, by position among the frame elements
  std::vector<end_forces> loads_;                         // of beams, likewise
};

}  // namespace solver

#endif
