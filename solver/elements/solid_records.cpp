// solid_records.cpp: fills the records of solids. Every section of solids has a material block of its own.
#include <algorithm>
#include <string>

#include "elements/solid_group.h"
#include "finites/fields.h"
#include "finites/services.h"
#include "model/model_error.h"

namespace solver {

solid_group::solid_group(library_data& data) : data_(data), position_(data.of().elements.size(), 0) {
  const numbered<element>& elements = data_.of().elements;
  records_.resize(
      subscript(std::count_if(elements.begin(), elements.end(), [](const element& e) { return is_solid(e.type); })));
  SOLANAELEM.SOLID_POS = REFER_TO(position_.data(), position_.size());
  SOLANAELEM.SOLID_REC = REFER_TO(records_.data(), records_.size());
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
  position_[e] = ++count_;
  SOLID_RECORD& record = records_[subscript(count_ - 1)];
  record.ELEM_NO = elem.id;
  record.MAT_OFF = data_.layout().solid_material(elem.section);
  record.NNODE = count_of(elem.nodes);
  for (int n = 1; n <= record.NNODE; ++n) record.NODE_OFF(n) = data_.layout().node(elem.nodes[n - 1]);
  record.STIFF_FACTOR = 1;
}

// Without stresses the geometric stiffness is zero.
void solid_group::clear_state() {
  states_.assign(records_.size(), SOLID_NL_RECORD{});
  SOLANAELEM.SOLID_NL_REC = REFER_TO(states_.data(), states_.size());
}

}  // namespace solver
