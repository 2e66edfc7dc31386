// element_group.h: what every element of a model answers, whatever its kind.
//
// A group holds the elements of one kind: plates, members, cables, solids or point masses. Elements are named by their
// index in the model; a group is only asked for its own.
#ifndef FINITES_SOLVER_ELEMENT_GROUP_H
#define FINITES_SOLVER_ELEMENT_GROUP_H

#include <cstddef>

#include "elements/load_case.h"
#include "finites/views.hpp"

namespace solver {

using element_matrix = MATRIX<24, 24>;  // the library's leading dimension, also for a triangle
using element_vector = VECTOR<24>;

class element_group {
 public:
  virtual ~element_group() = default;
  element_group() = default;
  element_group(const element_group&) = delete;
  element_group& operator=(const element_group&) = delete;

  // Fills the block and the records of an element.
  virtual void add(std::size_t element) = 0;

  // The three matrices: global axes, six rows and columns per node, of solids three, in the corner of the matrix. The
  // geometric stiffness is that of the state that keep_state() has stored: tension stiffens.
  virtual void stiffness(std::size_t element, element_matrix& K) = 0;
  virtual void mass(std::size_t element, element_matrix& M) = 0;
  virtual void geometric_stiffness(std::size_t element, element_matrix& G) = 0;

  // Adds the nodal forces of pressure, body force, line load and temperature to `forces`, which the caller has cleared.
  virtual void loads(std::size_t element, const distributed_load& load, element_vector& forces) = 0;

  // Stores the forces or stresses under these displacements as the state on which geometric stiffness rests.
  virtual void keep_state(std::size_t element, const element_vector& displacements, const distributed_load& load) = 0;
  virtual void clear_state() = 0;
};

}  // namespace solver

#endif
