// solid_records.cpp: fills the record of solids. Every section of solids has a material block of its own.
#include <algorithm>
#include <iterator>
#include <string>

#include "elements/solid_group.h"
#include "finites/fields.h"
#include "finites/services.h"
#include "model/model_error.h"

namespace solver {

solid_group::solid_group(library_data& data) : data_(data), position_(data.held(), 0), rank_(data.held(), 0) {
  make_room(1);
  fill_sections();
}

void solid_group::make_room(int threads) {
  records_.assign(subscript(threads), SOLID_RECORD{});
  states_.assign(subscript(threads), SOLID_NL_RECORD{});
  refer();
}

// Without stresses there is no state: the geometric stiffness is zero.
void solid_group::refer() {
  SOLANAELEM.SOLID_POS = REFER_TO(position_.data(), position_.size());
  SOLANAELEM.SOLID_REC = REFER_TO(records_.data(), records_.size());
  if (!stresses_.empty()) SOLANAELEM.SOLID_NL_REC = REFER_TO(states_.data(), states_.size());
}

void solid_group::fill_sections() {
  const model& m = data_.of();
  MODEL_DATA A = data_.A();
  for (int s = 0; s < count_of(m.solid_sections); ++s) {
    const material& mat = m.materials[m.solid_sections[s].material];
    const std::int32_t at = data_.layout().solid_material(s);
    A(at + MATERIAL_NUMBER) = s + 1;
    A(at + MATERIAL_YOUNG) = mat.E1;
    A(at + MATERIAL_POISSON) = mat.NU12;
    A(at + MATERIAL_UNIT_WEIGHT) = mat.density * GRAVITY;
  }
}

void solid_group::add(std::size_t e) {
  const element& elem = data_.at(e);
  if (elem.section < 0 || elem.section >= count_of(data_.of().solid_sections)) {
    throw model_error(data_.of(), elem, "*ELEMENT", "element " + std::to_string(elem.id) + " has no *SOLID SECTION");
  }
  position_[data_.place(e)] = 1;
  rank_[data_.place(e)] = count_++;
}

void solid_group::take(std::size_t e) {
  const element& elem = data_.at(e);
  const std::size_t thread = library_data::thread();
  SOLID_RECORD& record = records_[thread];
  position_[data_.place(e)] = static_cast<std::int32_t>(thread) + 1;
  record.ELEM_NO = elem.id;
  record.MAT_OFF = data_.layout().solid_material(elem.section);
  record.NNODE = count_of(elem.nodes);
  for (int n = 1; n <= record.NNODE; ++n) record.NODE_OFF(n) = data_.node(elem.nodes[n - 1]);
  record.STIFF_FACTOR = 1;
  if (stresses_.empty()) return;
  const MATRIX<6, 8>& stresses = stresses_[rank_[data_.place(e)]];
  std::copy(std::begin(stresses.V), std::end(stresses.V), states_[thread].GAUSS_STRESS.data());
}

void solid_group::clear_state() {
  stresses_.assign(count_, MATRIX<6, 8>{});
  refer();
}

}  // namespace solver
