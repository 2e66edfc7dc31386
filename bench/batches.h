// batches.h: batches of different elements, so that caches and branch prediction do not benefit from calling the same
// element again and again.
#ifndef FINITES_BENCH_BATCHES_H
#define FINITES_BENCH_BATCHES_H

#include <array>
#include <memory>
#include <vector>

#include "plate_model.h"

namespace bench {

constexpr int BATCH = 1000;

enum class offset_use { none, each_node };
enum class second_order_use { none, stored_forces };

// Which path of the library a batch takes.
struct batch_kind {
  int kind;   // 10, 11, 12, 20, 21 or 22
  int behav;  // 0 isotropic, 1 orthotropic
  offset_use offsets = offset_use::none;
  second_order_use second_order = second_order_use::none;
};

// A model of BATCH different elements and what a solver would pass to each call.
struct batch {
  std::unique_ptr<support::plate_model> model;
  std::vector<std::array<double, 24>> displacements;
  std::vector<std::array<double, 12>> loads;   // operations 4, 41, 401, 5: forces; temperatures
  std::vector<std::array<double, 12>> points;  // operations 9, 10: a point inside the element, then forces
};

batch make_batch(const batch_kind& kind);

}  // namespace bench

#endif
