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

#include "library_layout.h"
#include "load_case.h"
#include "model.h"
#include "shared_records.h"
#include "views.h"

namespace solver {

constexpr int ELEMENT_NODES = 3;  // of a plate
constexpr int ELEMENT_FREEDOMS = DIRECTIONS * ELEMENT_NODES;
constexpr int RESULT_LENGTH = 90;      // reals of one result record
constexpr int RESULT_POINT_COUNT = 4;  // records of one block, at the nodes or at the integration points

using element_matrix = MATRIX<24, 24>;  // the library's leading dimension, also for a triangle
using element_vector = VECTOR<24>;

// What operation 5 answers: records at the nodes, then at the integration points.
struct element_results {
  const double* nodes;
  const double* points;
};

// The forces that the nodes exert on a member, local axes: three forces and three moments at the first end, then at the
// second.
using end_forces = std::array<double, 12>;

class library_model {
 public:
  explicit library_model(const model& m);  // which must outlive it
  ~library_model();
  library_model(const library_model&) = delete;
  library_model& operator=(const library_model&) = delete;

  // The three matrices: global axes, six rows and columns a node in the corner of the matrix. The geometric stiffness
  // is that of the state that keep_state() has stored: tension stiffens.
  void stiffness(std::size_t element, element_matrix& K);
  void mass(std::size_t element, element_matrix& M);
  void geometric_stiffness(std::size_t element, element_matrix& G);

  // Adds the nodal forces of pressure, body force, line load and temperature to `forces`, which the caller has cleared.
  void loads(std::size_t element, const distributed_load& load, element_vector& forces);

  // Forces in equilibrium with the displacements; global axes. Plates only.
  void internal_forces(std::size_t element, const element_vector& displacements, element_vector& forces);

  // Strains, stresses and stress resultants; the records stay until the next call. Plates only.
  element_results results(std::size_t element, const element_vector& displacements, const distributed_load& load);

  // The end forces of a member (B31, T3D2, springs, links) under displacements and its own loads.
  end_forces member_forces(std::size_t element, const element_vector& displacements, const distributed_load& load);

  // From now on the stiffness holds the geometric stiffness of the stored state, or no longer does.
  void second_order(bool on);

  // Stores axial forces and membrane forces as the state on which geometric stiffness rests.
  void keep_state(std::size_t element, const element_vector& displacements, const distributed_load& load);
  double axial_force(std::size_t element) const;
  void clear_state();

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
  void fill_nodes();
  void fill_elements();
  void fill_plate(std::size_t element);
  void fill_plate_record(std::size_t element);
  void fill_member(std::size_t element);
  void fill_member_ends(std::size_t element);
  void fill_property(std::size_t element);
  void refer_to_records();

  const element& at(std::size_t element) const { return model_.elements[element]; }
  bool plate(std::size_t element) const { return is_plate(at(element).type); }
  std::size_t position(std::size_t element) const { return static_cast<std::size_t>(elem_pos_[element] - 1); }
  member& member_of(std::size_t element) { return members_[position(element)]; }

  void operation(std::int32_t code, std::size_t element, double* data, double* forces, double* matrix);
  void plate_loads(std::size_t element, const distributed_load& load, element_vector& forces);
  void member_stiffness(std::size_t element, std::int32_t mode, const MATRIX<12, 12>& T, MATRIX<12, 12>& K,
                        MATRIX<12, 12>& KG);
  void member_mass(std::size_t element, MATRIX<12, 12>& M);
  end_forces fixed_end_forces(std::size_t element, const distributed_load& load);
  void release_end_forces(std::size_t element, end_forces& f);
  end_forces local_cable_forces(std::size_t element);
  void member_loads(std::size_t element, const distributed_load& load, element_vector& forces);

  const model& model_;
  const library_layout layout_;
  std::vector<double> model_data_;
  std::vector<PLATE_RECORD> plate_records_;
  std::vector<PLATE_STATE_RECORD> plate_states_;
  std::vector<std::int32_t> plate_of_elem_;
  std::vector<std::int32_t> elem_pos_;  // 0 for a plate
  std::vector<member> members_;
  std::vector<MEMBER_RECORD> member_records_;
  std::vector<HINGE_RECORD> hinge_records_;
};

// Local axes of a triangle: row 1 along the side from node 1 to node 2, row 3 the normal, right-handed round the nodes.
MATRIX<3, 3> triangle_axes(const model& m, const element& e);

// Length and local axes of a frame element: row 1 along it, row 2 towards n1 of its section. A spring of global
// directions, and a link without length, have the global axes.
double member_length(const model& m, const element& e);
MATRIX<3, 3> member_axes(const model& m, const element& e);

// The unstressed length of a cable.
double cable_length(const model& m, const element& e);

}  // namespace solver

#endif
