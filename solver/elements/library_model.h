// library_model.h: the model as the element library sees it: four kinds of elements over the same arrays, and
// point masses, in which it has no part.
//
// What every element answers is asked here and goes to the group that holds the element; what one kind alone answers
// is asked of its group. The shared records of the library are process-wide, so that one library_model lives at a time,
// and it is entered by one thread at a time.
#ifndef FINITES_SOLVER_LIBRARY_MODEL_H
#define FINITES_SOLVER_LIBRARY_MODEL_H

#include <vector>

#include "elements/cable_group.h"
#include "elements/element_group.h"
#include "elements/frame_records.h"
#include "elements/library_data.h"
#include "elements/mass_group.h"
#include "elements/member_axes.h"
#include "elements/member_group.h"
#include "elements/plate_axes.h"
#include "elements/plate_group.h"
#include "elements/solid_group.h"
#include "finites/checks.h"
#include "model/model.h"

namespace solver {

class library_model {
 public:
  explicit library_model(const model& m);  // which must outlive it
  library_model(const library_model&) = delete;
  library_model& operator=(const library_model&) = delete;

  plate_group& plates() { return plates_; }
  member_group& members() { return members_; }
  cable_group& cables() { return cables_; }
  solid_group& solids() { return solids_; }
  mass_group& masses() { return masses_; }

  // What every element answers: element_group.h.
  void stiffness(std::size_t element, element_matrix& K) { group_[element]->stiffness(element, K); }
  void mass(std::size_t element, element_matrix& M) { group_[element]->mass(element, M); }
  void geometric_stiffness(std::size_t element, element_matrix& G) { group_[element]->geometric_stiffness(element, G); }
  void loads(std::size_t element, const distributed_load& load, element_vector& forces) {
    group_[element]->loads(element, load, forces);
  }

  // The state on which geometric stiffness rests, and whether stiffnesses hold it.
  void keep_state(std::size_t element, const element_vector& displacements, const distributed_load& load);
  void clear_state();
  void second_order(bool on) { data_.second_order(on); }
  bool is_second_order() { return data_.is_second_order(); }

  // What the checker of the library (finites/checks.h) says of the header, the records and each element, in this order.
  std::vector<finites_finding> findings();

 private:
  element_group& group_of(const element& e);

  library_data data_;
  frame_records frames_;
  plate_group plates_;
  member_group members_;
  cable_group cables_;
  solid_group solids_;
  mass_group masses_;
  std::vector<element_group*> group_;  // by element
  bool has_state_ = false;
};

}  // namespace solver

#endif
