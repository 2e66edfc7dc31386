// library_data.cpp: fills the header of MODEL_DATA and the blocks of the nodes.
#include "elements/library_data.h"

#include "tarnix.h"

namespace solver {

library_data::library_data(const model& m) : model_(m), layout_(m), values_(layout_.end, 0.0) {
  TARNIX_CLEAR();
  MODEL_DATA fields = A();
  fields(RES_BASE) = double{EXCHANGE_START};
  fields(ENTRY_START) = layout_.element(0);
  fields(ENTRY_STRIDE) = double{ELEMENT_LENGTH};
  fields(SHEAR_DEFORMATION) = 1;
  for (std::size_t n = 0; n < m.nodes.size(); ++n) {
    const std::int32_t block = layout_.node(n) + NODE_X;
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
