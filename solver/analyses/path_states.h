// path_states.h: how a structure is deformed at some points along its path.
//
// A path may have thousands of points, and nobody knows beforehand how many: every point is offered, one of `stride` is
// kept, and when there are too many every second one goes and the stride doubles. What is left is evenly spread, with
// the first point and the last.
#ifndef FINITES_SOLVER_PATH_STATES_H
#define FINITES_SOLVER_PATH_STATES_H

#include <cstddef>
#include <utility>
#include <vector>

#include "elements/load_case.h"

namespace solver {

struct path_state {
  std::size_t point = 0;                  // index into the curve
  std::vector<float> displacement;        // three translations a node
  std::vector<float> equivalent_plastic;  // by element; empty where nothing yields within elements
};

class path_states {
 public:
  // No more than this many; 0: none.
  explicit path_states(std::size_t most = 0) : most_(most) {}

  // `make()` returns the path_state of this point; it is called for a point that is kept.
  template <class MAKE>
  void offer(std::size_t point, const MAKE& make) {
    if (most_ < 2 || point % stride_ != 0) return;
    keep(point, make());
    if (kept_.size() >= most_) thin_out();
  }
  // Likewise of the last point, which is always among them.
  template <class MAKE>
  void close(std::size_t point, const MAKE& make) {
    if (most_ >= 2 && (kept_.empty() || kept_.back().point != point)) keep(point, make());
  }
  std::vector<path_state> take() { return std::move(kept_); }

  template <class ARCHIVE>
  void serialize(ARCHIVE& archive) {
    archive(most_, stride_, kept_);
  }

 private:
  void keep(std::size_t point, path_state state) {
    state.point = point;
    kept_.push_back(std::move(state));
  }
  void thin_out() {
    stride_ *= 2;
    std::vector<path_state> fewer;
    for (path_state& state : kept_) {
      if (state.point % stride_ == 0) fewer.push_back(std::move(state));
    }
    kept_ = std::move(fewer);
  }

  std::size_t most_, stride_ = 1;
  std::vector<path_state> kept_;
};

// The translations out of displacements by degree of freedom.
inline std::vector<float> translations_of(const std::vector<double>& displacement) {
  std::vector<float> result;
  result.reserve(displacement.size() / 2);
  for (std::size_t f = 0; f < displacement.size(); ++f) {
    if (f % DIRECTIONS < 3) result.push_back(static_cast<float>(displacement[f]));
  }
  return result;
}

}  // namespace solver

#endif
