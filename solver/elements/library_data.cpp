// library_data.cpp: fills the header of MODEL_DATA and the blocks of the nodes.
#include "elements/library_data.h"

#include <algorithm>
#include <utility>

#include "tarnix.h"

namespace solver {

library_data::held_parts library_data::find_held(const model& m) {
  held_parts parts;
  parts.element_count = m.elements.size();
  parts.node_count = m.nodes.size();
  const bool paths_of_hinges =
      std::any_of(m.steps.begin(), m.steps.end(), [](const step& s) { return s.kind == step_kind::PUSHOVER; });
  if (m.process_of.empty() || !m.hinges.empty() || paths_of_hinges) return parts;
  parts.elements.assign(m.elements.size(), -1);
  parts.nodes.assign(m.nodes.size(), -1);
  parts.element_count = parts.node_count = 0;
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    if (!is_own(m, e)) continue;
    parts.elements[e] = static_cast<std::int32_t>(parts.element_count++);
    for (const int n : m.elements[e].nodes) {
      if (parts.nodes[n] < 0) parts.nodes[n] = static_cast<std::int32_t>(parts.node_count++);
    }
  }
  return parts;
}

library_data::library_data(const model& m) : library_data(m, find_held(m)) {}

library_data::library_data(const model& m, held_parts parts)
    : model_(m),
      element_place_(std::move(parts.elements)),
      node_place_(std::move(parts.nodes)),
      held_(parts.element_count),
      layout_(m, parts.node_count, parts.element_count),
      values_(layout_.end, 0.0) {
  TARNIX_CLEAR();
  MODEL_DATA fields = A();
  fields(RES_BASE) = double{EXCHANGE_START};
  fields(ENTRY_START) = layout_.element(0);
  fields(ENTRY_STRIDE) = double{ELEMENT_LENGTH};
  fields(SHEAR_DEFORMATION) = 1;
  for (std::size_t n = 0; n < m.nodes.size(); ++n) {
    if (!holds_node(n)) continue;
    const std::int32_t block = node(number_of(n)) + NODE_X;
    for (int i = 0; i < 3; ++i) fields(block + i) = m.nodes[n].xyz[subscript(i)];
  }
}

thread_local std::size_t library_data::thread_ = 0;

library_thread::library_thread(library_data& data, std::size_t number) {
  library_data::thread_ = number;
  TARNIX_SET_EXCHANGE_AREA(number == 0 ? nullptr : data.exchange());
}

library_thread::~library_thread() {
  library_data::thread_ = 0;
  TARNIX_SET_EXCHANGE_AREA(nullptr);
}

library_data::~library_data() { TARNIX_CLEAR(); }

}  // namespace solver
