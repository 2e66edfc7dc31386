// library_model.cpp: puts each element into its group.
#include "elements/library_model.h"

#include <initializer_list>

namespace solver {

// Each group fills its sections when it is made. Elements follow in the order of the model, so that of several faults
// the one that comes first in the deck is reported.
library_model::library_model(const model& m)
    : data_(m),
      frames_(data_),
      plates_(data_),
      members_(data_, frames_),
      cables_(data_, frames_),
      solids_(data_),
      masses_(m) {
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    group_.push_back(&group_of(m.elements[e]));
    data_.A()(data_.entry(e) + ELEM_ID) = m.elements[e].id;
    group_[e]->add(e);
  }
}

element_group& library_model::group_of(const element& e) {
  if (is_plate(e.type)) return plates_;
  if (is_solid(e.type)) return solids_;
  if (is_point(e.type)) return masses_;
  if (is_cable(data_.of(), e)) return cables_;
  return members_;
}

void library_model::keep_state(std::size_t element, const element_vector& displacements, const distributed_load& load) {
  if (!has_state_) clear_state();
  group_[element]->keep_state(element, displacements, load);
}

void library_model::clear_state() {
  for (element_group* const group : std::initializer_list<element_group*>{&plates_, &members_, &cables_, &solids_}) {
    group->clear_state();
  }
  has_state_ = true;
}

}  // namespace solver
