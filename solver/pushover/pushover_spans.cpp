// pushover_spans.cpp: members that leave their yield surface between their ends on the way.
#include <cmath>

#include "pushover/pushover_path.h"

namespace solver {

std::vector<span_forces> pushover_path::spans(const frame_state& state) const {
  std::vector<span_forces> all(state.beams.size());
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (frame_.beams()[i].hinges != nullptr) all[i] = span_of(frame_.field(i, state));
  }
  return all;
}

// The member that is outside first on the straight way between two states, and at which share of it.
bool pushover_path::find_span(const std::vector<span_forces>& before, const std::vector<span_forces>& after,
                              double& share) {
  constexpr int BISECTIONS = 60;
  bool found = false;
  for (std::size_t i = 0; i < after.size(); ++i) {
    const hinge_model* const h = frame_.beams()[i].hinges;
    if (h == nullptr) continue;
    double low = 0, high = found ? share : 1;
    span_value reached = largest_between_ends(*h, between(before[i], after[i], high));
    if (!(reached.value > SPAN_ABOVE)) continue;
    for (int k = 0; k < BISECTIONS; ++k) {
      const double middle = (low + high) / 2;
      const span_value there = largest_between_ends(*h, between(before[i], after[i], middle));
      if (there.value > 1) {
        high = middle;
        reached = there;
      } else {
        low = middle;
      }
    }
    found = true;
    share = high;
    const std::size_t e = frame_.beams()[i].element;
    result_->span = span_at_capacity{};
    result_->span->first = {e, reached.xi * member_length(model_, model_.elements[e]), 1};
  }
  return found;
}

// Forces change in a straight way in a step of the path, or nearly so.
void pushover_path::watch_spans() {
  if (result_->span) return;
  const std::vector<span_forces> present = spans(frame_.now());
  const bool first = spans_.empty();
  double share = 1;
  if (find_span(first ? present : spans_, present, share)) {
    result_->span->factor = first ? frame_.now().factor : last_factor_ + share * (frame_.now().factor - last_factor_);
  }
  spans_ = present;
  last_factor_ = frame_.now().factor;
}

// Without a further event the forces grow for ever.
void pushover_path::look_beyond(const frame_direction& direction) {
  constexpr double FARTHEST = 1e12;
  frame_state reached;
  if (result_->span || !try_advance(direction, 1, reached)) return;
  const std::vector<span_forces> now = spans_, rate = spans(reached);
  for (double length = 1; length < FARTHEST; length *= 2) {
    std::vector<span_forces> there = now;
    for (std::size_t i = 0; i < there.size(); ++i) there[i] = between(now[i], rate[i], length);
    double share = 1;
    if (!find_span(now, there, share)) continue;
    result_->span->factor = frame_.now().factor + share * length;
    return;
  }
}

}  // namespace solver
