// library_model.h: the model as the element library sees it, and the questions that a solver asks of an element.
//
// The constructor fills MODEL_DATA, the plate records and the material store of the common library from a model; from
// then on each call here is one call of FINITES. The shared records are process-wide, so that one library_model lives
// at a time, and it is entered by one thread at a time.
#ifndef FINITES_SOLVER_LIBRARY_MODEL_H
#define FINITES_SOLVER_LIBRARY_MODEL_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "elements/flat_parts.h"
#include "elements/library_layout.h"
#include "elements/load_case.h"
#include "finites/fields.h"
#include "finites/records.h"
#include "finites/views.hpp"
#include "model/model.h"

namespace solver {

using element_matrix = MATRIX<24, 24>;  // the library's leading dimension, also for a triangle
using element_vector = VECTOR<24>;

// What operation 5 answers: records at the nodes, then at the integration points.
struct element_results {
  const double* nodes;
  const double* points;
};

// Results of a solid in element axes: records at its nodes (result_columns.h), and the stresses xx, yy, zz, xy, xz, yz of
// its integration points.
struct solid_records {
  MATRIX<RES50_LENGTH, 8> nodes;
  MATRIX<6, 8> points;
  int point_count;
};

// The forces that the nodes exert on a member, local axes: three forces and three moments at the first end, then at the
// second.
using end_forces = std::array<double, 12>;

// What acts at the two ends of a beam with hinges.
struct hinge_state {
  end_forces forces{};
  std::array<std::int32_t, 2> state{};                   // 0: no hinge, 1: yields, 2: takes no part in the matrix
  std::array<std::array<std::int32_t, 4>, 2> segment{};  // the active equations of each end; 0: an empty place
  double axial_force = 0;                                // tension, for the geometric stiffness
};

class library_model {
 public:
  explicit library_model(const model& m);  // which must outlive it
  ~library_model();
  library_model(const library_model&) = delete;
  library_model& operator=(const library_model&) = delete;

  // From now on the rotation about the normal is tied to the sheet (drilling_tie.cpp) in the elements where these loads
  // leave it free to follow. Each step chooses; before, every element is tied whose section says so.
  void choose_ties(const load_case& loads);

  // The flat parts of the model.
  const std::vector<flat_part>& flat_parts() const { return flat_parts_; }

  // The three matrices: global axes, six rows and columns a node, of solids three, in the corner of the matrix. The
  // geometric stiffness is that of the state that keep_state() has stored: tension stiffens.
  void stiffness(std::size_t element, element_matrix& K);
  void mass(std::size_t element, element_matrix& M);
  void geometric_stiffness(std::size_t element, element_matrix& G);

  // Adds the nodal forces of pressure, body force, line load and temperature to `forces`, which the caller has cleared.
  void loads(std::size_t element, const distributed_load& load, element_vector& forces);

  // Forces in equilibrium with the displacements; global axes. Plates only.
  void internal_forces(std::size_t element, const element_vector& displacements, element_vector& forces);

  // Strains, stresses and stress resultants, in element axes; the records stay until the next call. Plates only.
  element_results results(std::size_t element, const element_vector& displacements, const distributed_load& load);

  solid_records solid_results(std::size_t element, const element_vector& displacements);
  MATRIX<3, 3> solid_axes(std::size_t element);

  // The end forces of a member (B31, B33, T3D2, springs, links) under displacements and its own loads.
  end_forces member_forces(std::size_t element, const element_vector& displacements, const distributed_load& load);

  // From now on the stiffness holds the geometric stiffness of the stored state, or no longer does.
  void second_order(bool on);
  bool is_second_order() const { return second_order_; }

  // Stores axial forces, membrane forces and stresses of solids as the state on which geometric stiffness rests.
  void keep_state(std::size_t element, const element_vector& displacements, const distributed_load& load);
  double axial_force(std::size_t element) const;
  void clear_state();

  // Hinges: from now on the stiffness of beams holds their hinges and the geometric stiffness of their axial forces, or
  // no longer does. Hinges see their forces through the nonlinear library; without it they would never act.
  void plastic(bool on);
  static bool hinges_see_forces();
  // The state of a beam for its next stiffness: the forces at its ends, which equations are active there, and the axial
  // force of the geometric stiffness.
  void set_hinges(std::size_t element, const hinge_state& state);
  // The fixed-end forces of one load factor, as the library keeps them beside the forces of hinges, and the factor.
  void keep_member_loads(std::size_t element, const end_forces& load);
  static void set_load_factor(double factor);
  // Of a beam in its present state but without its hinges, local axes.
  const MATRIX<12, 12>& elastic_stiffness(std::size_t element);
  const MATRIX<12, 12>& axes(std::size_t element) { return member_of(element).T; }
  // What holds a loaded member whose nodes do not move, local axes.
  end_forces fixed_end_forces(std::size_t element, const distributed_load& load);
  // Loads per length of a member, local axes; of springs and links 0.
  std::array<double, 3> local_load(std::size_t element, const distributed_load& load);
  // The end forces of a beam without its hinges and without the geometric stiffness; displacements in local axes.
  end_forces elastic_forces(std::size_t element, const end_forces& displacements, const distributed_load& load);
  // The axial force whose geometric stiffness the stiffness of a member holds at present.
  double geometric_force(std::size_t element);

  // Plates that yield (plastic_operations.cpp). From now on they follow their plastic model, or no longer do; increment
  // 0 is the first pass, on which every call gives the state its first values.
  void yielding(bool on);
  void count_increment(int number);
  plate_model model_of(std::size_t element) const;
  // Before a call for an element: the model that it follows, which the library knows once for all elements.
  void choose_model(std::size_t element);
  // internal_forces, and the state of the element is stored; element axes.
  void commit_forces(std::size_t element, const element_vector& displacements, element_vector& forces);
  PLATE_STATE_RECORD& state(std::size_t element) { return plate_states_[element]; }
  void store_displacements(std::size_t element, const element_vector& displacements);

  // Cables: the displaced position of every node, and the load of every cable; then the forces that the nodes exert on
  // a cable in equilibrium, global axes, and its tangent. A failure of the cable library throws its message.
  void move_nodes(const std::vector<double>& displacements);
  void load_cable(std::size_t element, const distributed_load& load);
  void cable_forces(std::size_t element, element_vector& forces);
  void cable_tangent(std::size_t element, element_matrix& K);

  // Element kind and material behaviour, as the library classifies a plate.
  void classify(std::size_t element, int& kind, int& behaviour);

 private:
  // One frame element: what its routines take beside MODEL_DATA.
  struct member {
    MATRIX<12, 12> T;  // rows: the local axes
    double length;
    std::array<std::int32_t, 45> property;  // record of a spring or link
    std::array<double, 13> cable_load;      // one load case
  };

  void fill_sections();
  void fill_frame_sections();
  void fill_solid_sections();
  void fill_nodes();
  void fill_elements();
  void fill_plate(std::size_t element);
  void fill_plate_record(std::size_t element);
  void fill_member(std::size_t element);
  void fill_solid(std::size_t element);
  void fill_member_ends(std::size_t element);
  void fill_property(std::size_t element);
  HINGE_RECORD hinge_record(std::size_t element) const;
  void refer_to_records();

  const element& at(std::size_t element) const { return model_.elements[element]; }
  bool plate(std::size_t element) const { return is_plate(at(element).type); }
  bool general(std::size_t element) const;  // a plate whose temperature the solver itself treats (thermal_strains.h)
  bool solid(std::size_t element) const { return is_solid(at(element).type); }
  std::size_t position(std::size_t element) const { return static_cast<std::size_t>(elem_pos_[element] - 1); }
  member& member_of(std::size_t element) { return members_[position(element)]; }

  void operation(std::int32_t code, std::size_t element, double* data, double* forces, double* matrix);
  void solid_operation(std::int32_t code, std::size_t element, const double* load, double* forces, double* matrix);
  void solid_loads(std::size_t element, const distributed_load& load, element_vector& forces);
  void keep_solid_stresses(std::size_t element, const element_vector& displacements);
  void clear_solid_state();
  void add_drilling_tie(std::size_t element, element_matrix& K);
  void plate_loads(std::size_t element, const distributed_load& load, element_vector& forces);
  void member_stiffness(std::size_t element, std::int32_t mode, const MATRIX<12, 12>& T, MATRIX<12, 12>& K,
                        MATRIX<12, 12>& KG);
  void member_mass(std::size_t element, MATRIX<12, 12>& M);
  void release_end_forces(std::size_t element, end_forces& f);
  end_forces local_cable_forces(std::size_t element);
  void member_loads(std::size_t element, const distributed_load& load, element_vector& forces);

  const model& model_;
  const library_layout layout_;
  std::vector<double> model_data_;
  std::vector<flat_part> flat_parts_;
  bool second_order_ = false;
  std::vector<PLATE_RECORD> plate_records_;
  std::vector<PLATE_STATE_RECORD> plate_states_;
  std::vector<std::int32_t> plate_of_elem_;
  std::vector<char> tied_;              // by element: is its rotation about the normal tied to the sheet?
  std::vector<char> on_flat_part_;      // by element
  std::vector<std::int32_t> elem_pos_;  // 0 for a plate
  std::vector<member> members_;
  std::vector<MEMBER_RECORD> member_records_;
  std::vector<HINGE_RECORD> hinge_records_;
  std::vector<MEMBER_FORCES_RECORD> force_records_;  // by position, as the two before
  std::vector<end_forces> member_loads_;
  std::vector<std::int32_t> solid_pos_;  // 0 for other elements
  std::vector<SOLID_RECORD> solid_records_;
  std::vector<SOLID_NL_RECORD> solid_states_;  // by position, as the records
};

// Local axes of a plate: row 1 along the side from node 1 to node 2, row 3 the normal, right-handed round the nodes.
MATRIX<3, 3> plate_axes(const model& m, const element& e);

// How far four nodes lie above the plane of the element, and the largest distance by the longer diagonal; 0 for a
// triangle. Below FLAT the distance is rounding of the coordinates.
constexpr double FLAT = 1e-6;
std::array<double, 4> warp_heights(const model& m, const element& e);
double plate_warp(const model& m, const element& e);

// Length and local axes of a frame element: row 1 along it, row 2 towards n1 of its section. A spring of global
// directions, and a link without length, have the global axes.
double member_length(const model& m, const element& e);
MATRIX<3, 3> member_axes(const model& m, const element& e);

// The unstressed length of a cable.
double cable_length(const model& m, const element& e);

}  // namespace solver

#endif
