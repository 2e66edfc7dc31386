// library_layout.h: where the reference solver puts things in MODEL_DATA.
//
//   1 .. 120         header
//   121 .. 888       exchange area of one element
//   889 ..           a material block and a section block for each shell section
//                    a node block for each node
//                    an element block for each element
//
// Positions are numbered from 1. The library knows none of this: it finds each block by the pointers of the header and
// of the plate records. An element block starts one before its first field, which is A(k+1).
#ifndef FINITES_SOLVER_LIBRARY_LAYOUT_H
#define FINITES_SOLVER_LIBRARY_LAYOUT_H

#include <cstddef>
#include <cstdint>
#include <limits>

#include "model.h"
#include "model_data.h"
#include "model_error.h"

namespace solver {

constexpr std::size_t HEADER_LENGTH = 120;
constexpr std::size_t EXCHANGE_START = HEADER_LENGTH + 1;
constexpr std::size_t EXCHANGE_LENGTH = 768;
constexpr std::size_t MATERIAL_LENGTH = 8;
constexpr std::size_t SECTION_LENGTH = 31;
constexpr std::size_t NODE_LENGTH = 8;
constexpr std::size_t ELEMENT_LENGTH = 63;

static_assert(PLATE_BLOCK_STRIDE <= HEADER_LENGTH && MATERIAL_SHEAR_MODULUS < MATERIAL_LENGTH);
static_assert(SECTION_THICKNESS < SECTION_LENGTH && NODE_X + 2 < NODE_LENGTH && PLASTIC_SWITCH < ELEMENT_LENGTH);
static_assert(EXCHANGE_POINTS + 360 == EXCHANGE_LENGTH);

struct library_layout {
  std::size_t sections, nodes, elements, end;  // position of the first block of each sort, and one past the last

  explicit library_layout(const model& m) {
    sections = EXCHANGE_START + EXCHANGE_LENGTH;
    nodes = sections + m.shell_sections.size() * (MATERIAL_LENGTH + SECTION_LENGTH);
    elements = nodes + m.nodes.size() * NODE_LENGTH;
    end = elements + m.elements.size() * ELEMENT_LENGTH + 1;
    if (end > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()))
      throw model_error(m, "the model needs more words than a 32-bit subscript reaches");
  }

  std::size_t material(std::size_t section) const { return sections + section * (MATERIAL_LENGTH + SECTION_LENGTH); }
  std::size_t section(std::size_t section) const { return material(section) + MATERIAL_LENGTH; }
  std::size_t node(std::size_t node) const { return nodes + node * NODE_LENGTH; }
  std::size_t element(std::size_t element) const { return elements + element * ELEMENT_LENGTH; }
};

}  // namespace solver

#endif
