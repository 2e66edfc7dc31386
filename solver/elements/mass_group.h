// mass_group.h: masses and rotary inertias at single nodes. They have no stiffness; their weight is a nodal load.
#ifndef FINITES_SOLVER_MASS_GROUP_H
#define FINITES_SOLVER_MASS_GROUP_H

#include <cstddef>

#include "elements/element_group.h"
#include "model/model.h"

namespace solver {

class mass_group : public element_group {
 public:
  explicit mass_group(const model& m) : model_(m) {}  // which must outlive it

  void add(std::size_t element) override;
  void stiffness(std::size_t element, element_matrix& K) override;
  void mass(std::size_t element, element_matrix& M) override;
  void geometric_stiffness(std::size_t element, element_matrix& G) override;
  void loads(std::size_t element, const distributed_load& load, element_vector& forces) override;
  void keep_state(std::size_t element, const element_vector& displacements, const distributed_load& load) override;
  void clear_state() override {}

 private:
  const model& model_;
};

}  // namespace solver

#endif
