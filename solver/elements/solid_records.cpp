// solid_records.cpp: fills the records of solids. Every section of solids has a material block of its own.
#include "elements/library_model.h"
#include "finites/fields.h"
#include "finites/views.hpp"

namespace solver {

void library_model::fill_solid_sections() {
  MODEL_DATA A(model_data_.data());
  for (std::size_t s = 0; s < model_.solid_sections.size(); ++s) {
    const solid_section& section = model_.solid_sections[s];
    const material& mat = model_.materials[static_cast<std::size_t>(section.material)];
    const auto at = static_cast<std::int64_t>(layout_.solid_material(s));
    A(at + MATERIAL_NUMBER) = static_cast<double>(s) + 1;
    A(at + MATERIAL_YOUNG) = mat.E1;
    A(at + MATERIAL_POISSON) = mat.NU12;
    A(at + MATERIAL_UNIT_WEIGHT) = mat.density * GRAVITY;
  }
}

void library_model::fill_solid(std::size_t e) {
  const element& elem = at(e);
  if (elem.section < 0 || static_cast<std::size_t>(elem.section) >= model_.solid_sections.size())
    throw model_error(model_, elem, "*ELEMENT", "element " + std::to_string(elem.id) + " has no *SOLID SECTION");
  SOLID_RECORD record{};
  record.ELEM_NO = elem.id;
  record.MAT_OFF = static_cast<std::int32_t>(layout_.solid_material(static_cast<std::size_t>(elem.section)));
  record.NNODE = static_cast<std::int32_t>(elem.nodes.size());
  for (std::int32_t n = 1; n <= record.NNODE; ++n) {
    const int node = elem.nodes[static_cast<std::size_t>(n - 1)];
    record.NODE_OFF(n) = static_cast<std::int32_t>(layout_.node(static_cast<std::size_t>(node)));
  }
  record.STIFF_FACTOR = 1;
  solid_records_.push_back(record);
  solid_pos_[e] = static_cast<std::int32_t>(solid_records_.size());
}

// Without stresses the geometric stiffness is nil.
void library_model::clear_solid_state() {
  solid_states_.assign(solid_records_.size(), SOLID_NL_RECORD{});
  SOLANAELEM.SOLID_NL_REC = REFER_TO(solid_states_.data(), solid_states_.size());
}

}  // namespace solver
