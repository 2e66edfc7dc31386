// pushover_choice.cpp: which hinges act at an event.
//
// Of the ends on their surfaces some flow and some do not: no active equation may flow backwards, and no other one may
// go outside. With the rate z of the multiplier and the rate n^T df of the value of each equation on its surface
//
//     z >= 0,      n^T df <= 0,      z n^T df = 0
//
// These conditions complement each other (Maier, 1970); one equation changes sides at a time, the worst first: the
// active one with the most negative z, by the largest |z|, becomes inactive; then the inactive one with the largest
// n^T df becomes active.
#include <algorithm>
#include <cmath>

#include "pushover/pushover_path.h"

namespace solver {

namespace {

// Ends that face one another at a node, or lie alike in a symmetric frame, have the same rates but for rounding: of
// such the first one is taken, on every processor.
constexpr double ALIKE = 1e-6;

double dot(const hinge_forces& a, const hinge_forces& b) { return a.P * b.P + a.My * b.My + a.Mz * b.Mz; }

}  // namespace

double pushover_path::fastest_rate(const frame_direction& direction) const {
  double fastest = 0;
  for (std::size_t i = 0; i < direction.beams.size(); ++i) {
    for (std::size_t end = 0; end < 2 && frame_.beams()[i].hinges != nullptr; ++end) {
      fastest = std::fmax(fastest, size_of(*frame_.beams()[i].hinges, forces_of_end(direction.beams[i].forces, end)));
    }
  }
  return fastest;
}

// Plastic multipliers count as work: their gradients are those of pure numbers. False when none flows backwards.
bool pushover_path::close_one(const frame_direction& direction) {
  double fastest = 0, worst = 0;
  place which{};
  for (std::size_t i = 0; i < direction.beams.size(); ++i) {
    for (const flowing_equation& flow : direction.beams[i].flow) {
      fastest = std::fmax(fastest, std::fabs(flow.rate));
      if (flow.rate >= (1 + ALIKE) * worst) continue;
      worst = flow.rate;
      which = {i, flow.end, flow.equation};
    }
  }
  // A motion is found by inverse iteration, which leaves some thousandths of its rates.
  constexpr double OF_A_MOTION = 1e-3;
  const double nothing = direction.only_motion ? OF_A_MOTION : NOT_AT_ALL;
  if (!(worst < -nothing * fastest)) return false;
  deactivate(frame_.now().beams[which.beam], which.end, which.equation);
  return true;
}

pushover_path::verdict pushover_path::open_one(const frame_direction& direction, bool& opened) {
  const frame_state& now = frame_.now();
  double worst = NOT_AT_ALL * fastest_rate(direction);
  place which{};
  opened = false;
  skipped_.clear();
  for_inactive(now, [&](const place& at, const hinge_model& h) {
    const hinge_forces f = forces_of_end(now.beams[at.beam].forces, at.end);
    if (yield_value(h, at.equation, f) < 1 - ON_SURFACE) return;
    skipped_.push_back(at);
    const hinge_forces rate = forces_of_end(direction.beams[at.beam].forces, at.end);
    const double growth = dot(yield_gradient(h, at.equation, f), rate);
    if (!(growth > (1 + ALIKE) * worst)) return;
    worst = growth;
    which = at;
    opened = true;
  });
  if (!opened) return verdict::GOES_ON;
  if (activate(frame_.now().beams[which.beam], which.end, which.equation)) return verdict::GOES_ON;
  result_->vertex = frame_.beams()[which.beam].element;
  return verdict::VERTEX;
}

pushover_path::verdict pushover_path::choose_equations(frame_direction& direction) {
  const std::vector<beam_state> before = frame_.now().beams;
  constexpr int MOST_CHANGES = 400;
  verdict judged = verdict::UNDECIDED;
  for (int change = 0; change < MOST_CHANGES; ++change) {
    direction = frame_.find_direction();
    if (close_one(direction)) continue;
    bool opened = false;
    const verdict found = direction.only_motion ? verdict::GOES_ON : open_one(direction, opened);
    if (opened && found == verdict::GOES_ON) continue;
    judged = direction.resists || found != verdict::GOES_ON ? found : verdict::MECHANISM;
    break;
  }
  book_events(before);
  return judged;
}

void pushover_path::book_events(const std::vector<beam_state>& before) {
  const frame_state& now = frame_.now();
  for (std::size_t i = 0; i < now.beams.size(); ++i) {
    for (std::size_t end = 0; end < 2; ++end) {
      const bool was = before[i].yields(end), is = now.beams[i].yields(end);
      std::array<int, MOST_ACTIVE> then = before[i].active[end], these = now.beams[i].active[end];
      std::sort(then.begin(), then.end());
      std::sort(these.begin(), these.end());
      if (then == these) continue;
      hinge_event event;
      event.factor = now.factor;
      event.element = frame_.beams()[i].element;
      event.end = end;
      event.kind = !was ? event_kind::FORMED : is ? event_kind::TURNED : event_kind::CLOSED;
      event.forces = forces_of_end(now.beams[i].forces, end);
      result_->events.push_back(event);
    }
  }
}

}  // namespace solver
