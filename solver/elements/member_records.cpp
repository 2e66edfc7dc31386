// member_records.cpp: members, and the property records of springs and links.
#include <cstring>

#include "elements/member_axes.h"
#include "elements/member_group.h"
#include "finites/fields.h"
#include "model/model_error.h"

namespace solver {

namespace {

// Words of a property record, from 0, in the order of the degrees of freedom. The record of a link has five words in
// front.
constexpr std::array<std::size_t, 6> STIFFNESS_WORD = {4, 15, 26, 12, 23, 34};
constexpr std::size_t LINK_SHIFT = 5;
constexpr std::size_t LINK_FORM_WORD = 5;  // 0: the deformable point lies at mid-length

}  // namespace

member_group::member_group(library_data& data, frame_records& frames)
    : data_(data), frames_(frames), properties_(frames.members().size()), loads_(frames.members().size()) {}

void member_group::add(std::size_t e) {
  const model& m = data_.of();
  const element& elem = data_.at(e);
  if (elem.section < 0 || elem.section >= count_of(m.frame_sections)) {
    throw model_error(m, elem, "*ELEMENT", "element " + std::to_string(elem.id) + " has no section");
  }
  frames_.add(e, member_length(m, elem), node_blocks::AT_REST);
  const frame_section_kind kind = frame_section_of(m, elem).kind;
  if (kind == frame_section_kind::SPRING || kind == frame_section_kind::LINK) fill_property(e);
}

// Stiffnesses travel in single precision. A spring along its own line is a link with one stiffness, because a spring of
// the library has global directions. The entry holds the address of the record.
void member_group::fill_property(std::size_t e) {
  const element& elem = data_.at(e);
  const frame_section& section = frame_section_of(data_.of(), elem);
  const bool link = elem.type == element_type::SPRINGA || elem.type == element_type::CONN3D2;
  std::array<std::int32_t, 45>& record = properties_[frames_.position(e)];
  for (std::size_t i = 0; i < 6; ++i) {
    const auto stiffness = single(section.stiffness[i]);
    std::memcpy(&record[STIFFNESS_WORD[i] + (link ? LINK_SHIFT : 0)], &stiffness, sizeof stiffness);
  }
  if (link) record[LINK_FORM_WORD] = section.deforms_at_mid_length ? 0 : 1;

  const std::int32_t* const address = record.data();
  double word = 0;
  static_assert(sizeof address == sizeof word);
  std::memcpy(&word, &address, sizeof word);
  data_.A()(data_.entry(e) + PROPERTY_ADDRESS) = word;
}

}  // namespace solver
