// solid_records.cpp: fills the record of solids. Every section of solids has a material block of its own.
#include <algorithm>
#include <iterator>
#include <string>

#include "elements/solid_group.h"
#include "finites/fields.h"
#include "finites/services.h"
#include "model/model_error.h"

namespace solver {

solid_group::solid_group(library_data& data) : data_(data), position_(data.of().elements.size(), 0) {
  const numbered<element>& elements = data_.of().elements;
  count_ = static_cast<std::int32_t>(
      std::count_if(elements.begin(), elements.end(), [](const element& e) { return is_solid(e.type); }));
  SOLANAELEM.SOLID_POS = REFER_TO(position_.data(), position_.size());
  SOLANAELEM.SOLID_REC = REFER_TO_SECTION(&record_, count_, 0);  // no stride: the same record at every position
  fill_sections();
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
  position_[e] = ++added_;
}

void solid_group::take(std::size_t e) {
  const element& elem = data_.at(e);
  record_.ELEM_NO = elem.id;
  record_.MAT_OFF = data_.layout().solid_material(elem.section);
  record_.NNODE = count_of(elem.nodes);
  for (int n = 1; n <= record_.NNODE; ++n) record_.NODE_OFF(n) = data_.layout().node(elem.nodes[n - 1]);
  record_.STIFF_FACTOR = 1;
  if (stresses_.empty()) return;
  const MATRIX<6, 8>& stresses = stresses_[subscript(position_[e] - 1)];
  std::copy(std::begin(stresses.V), std::end(stresses.V), state_.GAUSS_STRESS.data());
}

// Without stresses the geometric stiffness is zero.
void solid_group::clear_state() {
  stresses_.assign(subscript(count_), MATRIX<6, 8>{});
  SOLANAELEM.SOLID_NL_REC = REFER_TO_SECTION(&state_, count_, 0);
}

}  // namespace solver
