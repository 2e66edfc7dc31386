// library_layout.h: where the reference solver puts things in MODEL_DATA.
//
//   1 .. 120         header
//   121 .. 888       exchange area of one element
//   889 ..           a material block and a section block for each shell section
//                    a material block and a section block for each frame section
//                    a material block for each solid section
//                    a material block and a section block for each part of a laminate
//                    a node block for each node
//                    an element block for each element
//                    a node block for each node again, when there are cables: the displaced nodes, from which they hang
//
// Nodes and elements are those that the process holds (library_data), counted one after the other.
//
// Positions are numbered from 1. The library knows none of this: it finds each block by the pointers of the header and
// of the plate records and the member entries. An element block starts one before its first field, which is A(k+1).
#ifndef FINITES_SOLVER_LIBRARY_LAYOUT_H
#define FINITES_SOLVER_LIBRARY_LAYOUT_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "finites/fields.h"
#include "finites/views.hpp"
#include "model/index.h"
#include "model/model.h"
#include "model/model_error.h"

namespace solver {

constexpr std::size_t HEADER_LENGTH = 120;
constexpr std::size_t EXCHANGE_START = HEADER_LENGTH + 1;
constexpr std::size_t MATERIAL_LENGTH = 8;
constexpr std::size_t SECTION_LENGTH = 31;
constexpr std::size_t FRAME_MATERIAL_LENGTH = 10;
constexpr std::size_t FRAME_SECTION_LENGTH = 9;
constexpr std::size_t NODE_LENGTH = 29;
constexpr std::size_t ELEMENT_LENGTH = 84;

static_assert(ENTRY_STRIDE <= HEADER_LENGTH && MATERIAL_SHEAR_MODULUS < MATERIAL_LENGTH);
static_assert(SECTION_THICKNESS < SECTION_LENGTH && NODE_X + 2 < NODE_LENGTH && PLASTIC_SWITCH < ELEMENT_LENGTH);
static_assert(MEMBER_MATERIAL_KIND < FRAME_MATERIAL_LENGTH && SECTION_J < FRAME_SECTION_LENGTH);
static_assert(NODE_LOCAL_AXES < NODE_LENGTH && REDUCTION_INDEX < ELEMENT_LENGTH);
static_assert(EXCHANGE_POINTS + 360 == EXCHANGE_LENGTH);

struct library_layout {
  // Position of the first block of each sort, and one past the last.
  std::size_t sections, frame_sections, solid_sections, laminate_parts, nodes, elements, displaced_nodes, end;

  library_layout(const model& m, std::size_t node_count, std::size_t element_count) {
    const bool cables = std::any_of(m.frame_sections.begin(), m.frame_sections.end(), [](const frame_section& section) {
      return section.kind == frame_section_kind::CABLE;
    });
    sections = EXCHANGE_START + EXCHANGE_LENGTH;
    frame_sections = sections + m.shell_sections.size() * (MATERIAL_LENGTH + SECTION_LENGTH);
    solid_sections = frame_sections + m.frame_sections.size() * (FRAME_MATERIAL_LENGTH + FRAME_SECTION_LENGTH);
    laminate_parts = solid_sections + m.solid_sections.size() * MATERIAL_LENGTH;
    nodes = laminate_parts + m.laminate_parts.size() * (MATERIAL_LENGTH + SECTION_LENGTH);
    elements = nodes + node_count * NODE_LENGTH;
    displaced_nodes = elements + element_count * ELEMENT_LENGTH + 1;
    end = displaced_nodes + (cables ? node_count * NODE_LENGTH : 0);
    if (end > subscript(std::numeric_limits<std::int32_t>::max())) {
      throw model_error(m, "the model needs more words than a 32-bit subscript reaches");
    }
  }

  // The library counts its subscripts with 32 bits, which reach them all.
  template <class INTEGER>
  std::int32_t material(INTEGER number) const {
    return whole(sections, number, MATERIAL_LENGTH + SECTION_LENGTH);
  }
  template <class INTEGER>
  std::int32_t section(INTEGER number) const {
    return material(number) + std::int32_t{MATERIAL_LENGTH};
  }
  template <class INTEGER>
  std::int32_t frame_material(INTEGER number) const {
    return whole(frame_sections, number, FRAME_MATERIAL_LENGTH + FRAME_SECTION_LENGTH);
  }
  template <class INTEGER>
  std::int32_t frame_section_block(INTEGER number) const {
    return frame_material(number) + std::int32_t{FRAME_MATERIAL_LENGTH};
  }
  template <class INTEGER>
  std::int32_t solid_material(INTEGER number) const {
    return whole(solid_sections, number, MATERIAL_LENGTH);
  }
  template <class INTEGER>
  std::int32_t part_material(INTEGER number) const {
    return whole(laminate_parts, number, MATERIAL_LENGTH + SECTION_LENGTH);
  }
  template <class INTEGER>
  std::int32_t part_section(INTEGER number) const {
    return part_material(number) + std::int32_t{MATERIAL_LENGTH};
  }
  template <class INTEGER>
  std::int32_t node(INTEGER number) const {
    return whole(nodes, number, NODE_LENGTH);
  }
  template <class INTEGER>
  std::int32_t displaced_node(INTEGER number) const {
    return whole(displaced_nodes, number, NODE_LENGTH);
  }
  template <class INTEGER>
  std::int32_t element(INTEGER number) const {
    return whole(elements, number, ELEMENT_LENGTH);
  }

 private:
  template <class INTEGER>
  static std::int32_t whole(std::size_t first, INTEGER number, std::size_t length) {
    return static_cast<std::int32_t>(first + subscript(number) * length);
  }
};

}  // namespace solver

#endif
