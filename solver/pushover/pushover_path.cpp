// pushover_path.cpp: the steps between events, and what is recorded on the way.
#include "pushover/pushover_path.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "elements/largest_translation.h"
#include "finites/fields.h"
#include "model/base_step.h"
#include "system/progress.h"

namespace solver {

namespace {

constexpr double MET = 1e-13;    // an event is met when its value is so near to 1: some hundred units in the last place
constexpr double DRIFT = 0.005;  // of a value along the tangent of a curved surface in one step
constexpr int MOST_STEPS = 20000;
// An end so little before its surface is one that the step was to bring there.
constexpr double JUST_BEFORE = 1e-6;
constexpr double NO_BRACKET = 1e-15;  // between two factors, by the larger: neighbouring doubles
constexpr double EQUAL = 1e-9;     // displacements that differ by no more are equal within rounding: the first counts
constexpr double SHORTEST = 1e-9;  // step, by the load factor
constexpr double LONGEST = std::numeric_limits<double>::max();

}  // namespace

void pushover_path::for_inactive(const frame_state& state,
                                 const std::function<void(const place& at, const hinge_model& h)>& action) const {
  for (std::size_t i = 0; i < state.beams.size(); ++i) {
    const hinge_model* const h = frame_.beams()[i].hinges;
    if (h == nullptr) continue;
    for (std::size_t end = 0; end < 2; ++end) {
      for (int equation = 1; equation <= equation_count(*h); ++equation) {
        if (!state.beams[i].is_active(end, equation)) action(place{i, end, equation}, *h);
      }
    }
  }
}

double pushover_path::distance_to_event(const frame_direction& direction) const {
  const frame_state& now = frame_.now();
  double distance = std::numeric_limits<double>::infinity();
  const double nothing = NOT_AT_ALL * fastest_rate(direction);
  for_inactive(now, [&](const place& at, const hinge_model& h) {
    const hinge_forces f = forces_of_end(now.beams[at.beam].forces, at.end);
    if (h.curve != yield_curve::ORBISON && yield_value(h, at.equation, f) >= 1 - ON_SURFACE) return;  // judged before
    const hinge_forces rate = forces_of_end(direction.beams[at.beam].forces, at.end);
    if (!(size_of(h, rate) > nothing)) return;
    distance = std::fmin(distance, distance_to_yield(h, at.equation, f, rate));
  });
  return distance;
}

// How far the ends that follow a curved surface leave it along their tangents.
double pushover_path::drift(const frame_direction& direction, double length) const {
  const frame_state& now = frame_.now();
  double largest = 0;
  for (std::size_t i = 0; i < now.beams.size(); ++i) {
    const hinge_model* const h = frame_.beams()[i].hinges;
    if (h == nullptr || h->curve != yield_curve::ORBISON) continue;
    for (std::size_t end = 0; end < 2; ++end) {
      if (!now.beams[i].yields(end)) continue;
      end_forces f = now.beams[i].forces;
      for (std::size_t k = 0; k < f.size(); ++k) f[k] += length * direction.beams[i].forces[k];
      largest = std::fmax(largest, std::fabs(yield_value(*h, 1, forces_of_end(f, end)) - 1));
    }
  }
  return largest;
}

// Infinite when neither an event nor the deck ends it.
double pushover_path::step_length(const frame_direction& direction) const {
  double length = std::fmin(distance_to_event(direction), step_.pushover.largest_factor - frame_.now().factor);
  if (!(length < LONGEST)) length = drift(direction, 1) > 0 ? 1 : length;
  for (int halvings = 0; halvings < 200 && length < LONGEST && drift(direction, length) > DRIFT; ++halvings) {
    length /= 2;
  }
  return length;
}

// The largest value beyond its surface of an end that is not held on it.
double pushover_path::outside(const frame_state& state) const {
  double largest = -1;
  for_inactive(state, [&](const place& at, const hinge_model& h) {
    for (const place& p : skipped_) {
      if (p.beam == at.beam && p.end == at.end && p.equation == at.equation) return;
    }
    largest = std::fmax(largest, yield_value(h, at.equation, forces_of_end(state.beams[at.beam].forces, at.end)) - 1);
  });
  return largest;
}

bool pushover_path::try_advance(const frame_direction& direction, double length, frame_state& reached) {
  reached = frame_.now();
  reached.factor += length;
  for (std::size_t f = 0; f < reached.displacement.size(); ++f) {
    reached.displacement[f] += length * direction.displacement[f];
  }
  return frame_.settle(frame_.now(), reached) && frame_.stands(reached);
}

// A step has led `reached` to an end that is outside, or a little before it: the factor is corrected until the end is
// on its surface (regula falsi, with the halving of Illinois: Dowell and Jarratt, 1971).
void pushover_path::meet_event(const frame_direction& direction, double length, frame_state& reached) {
  constexpr int MOST_TRIALS = 60;
  double low = 0, below = outside(frame_.now()), high = length, above = outside(reached);
  if (!(above > MET) || !(below < 0)) return;
  int side = 0;
  for (int trial = 0; trial < MOST_TRIALS && high - low > NO_BRACKET * high; ++trial) {
    const double middle = low + (high - low) * below / (below - above);
    frame_state there;
    if (!try_advance(direction, middle, there)) return;
    const double value = outside(there);
    if (std::fabs(value) <= MET || (value > 0 && value < above)) reached = there;
    if (std::fabs(value) <= MET) return;
    if (value > 0) {
      high = middle;
      above = value;
      if (side > 0) below /= 2;
      side = 1;
    } else {
      low = middle;
      below = value;
      if (side < 0) above /= 2;
      side = -1;
    }
  }
}

// False when no equilibrium is found however short the step. A step that fails is halved; the next ones grow from
// there.
bool pushover_path::advance(const frame_direction& direction, double length) {
  const double now = frame_.now().factor;
  bool careful = length > 2 * last_length_;
  if (careful) length = 2 * last_length_;
  // Two events may lie close together: the first trial is made in any case.
  const double shortest = SHORTEST * std::fmax(now, std::fmin(length, 1));
  for (int trial = 0; trial == 0 || length > shortest; ++trial, length /= 2) {
    frame_state reached;
    if (!try_advance(direction, length, reached)) {
      careful = true;
      continue;
    }
    last_length_ = careful ? length : std::numeric_limits<double>::infinity();
    const double value = outside(reached);
    // The prediction of an event falls short by rounding, or by what a curved surface bends: one more look beyond it.
    frame_state beyond;
    if (value < -MET && value > -JUST_BEFORE && try_advance(direction, length * (1 - 4 * value), beyond) &&
        outside(beyond) > 0 && now + length < step_.pushover.largest_factor) {
      reached = beyond;
      length *= 1 - 4 * value;
    }
    meet_event(direction, length, reached);
    frame_.now() = reached;
    return true;
  }
  return false;
}

// Without a wish of the deck: the translation that the loads move most.
void pushover_path::choose_curve(const frame_direction& direction) {
  result_->node = step_.pushover.node;
  result_->direction = step_.pushover.dof - 1;
  if (result_->node >= 0) return;
  const std::size_t most = largest_translation(model_, direction.displacement, EQUAL);
  result_->node = number_of(most / DIRECTIONS);
  result_->direction = number_of(most % DIRECTIONS);
}

void pushover_path::record() {
  const frame_state& now = frame_.now();
  curve_point point;
  point.factor = now.factor;
  point.displacement = now.displacement[freedom(result_->node, result_->direction)];
  for (const beam_state& b : now.beams) point.open_hinges += (b.yields(0) ? 1 : 0) + (b.yields(1) ? 1 : 0);
  states_.offer(result_->curve.size(), [&] { return state_now(); });
  result_->curve.push_back(point);
}

path_state pushover_path::state_now() const { return {0, translations_of(frame_.now().displacement), {}}; }

// Scaled to a largest translation of 1.
static std::vector<double> unit_motion(std::vector<double> motion) {
  double largest = 0;
  for (std::size_t f = 0; f < motion.size(); ++f) {
    if (f % DIRECTIONS < 3) largest = std::fmax(largest, std::fabs(motion[f]));
  }
  for (double& u : motion) u = largest > 0 ? u / largest : 0;
  return motion;
}

void pushover_path::follow(pushover_solution& result, path_restart* restart) {
  result_ = &result;
  const left_state* const left = restart == nullptr ? nullptr : restart->left();
  if (left != nullptr) take_left(*left);
  if (left == nullptr || !left->finished) go_on(result, restart);
  result.kept = states_.take();
  result.factor = frame_.now().factor;
}

void pushover_path::go_on(pushover_solution& result, path_restart* restart) {
  const double largest_factor = step_.pushover.largest_factor;
  result.end = pushover_end::UNDECIDED;
  const progress report("path");
  for (; count_ < MOST_STEPS; ++count_) {
    keep(false, restart);
    report.at(std::to_string(result.events.size()) + " events, load factor " + std::to_string(frame_.now().factor));
    frame_direction direction;
    const verdict judged = choose_equations(direction);
    if (count_ == 0) choose_curve(direction);
    record();
    watch_spans();
    if (judged == verdict::MECHANISM) {
      result.end = direction.displacement.empty() ? pushover_end::LIMIT : pushover_end::MECHANISM;
      result.motion = unit_motion(direction.displacement);
    }
    if (judged == verdict::VERTEX) result.end = pushover_end::VERTEX;
    if (judged != verdict::GOES_ON) break;
    result.end = pushover_end::FACTOR_REACHED;
    if (!(frame_.now().factor < largest_factor)) break;
    result.end = pushover_end::EVENTS_REACHED;
    if (count_of(result.events) >= step_.pushover.largest_events) break;
    const double length = step_length(direction);
    result.end = pushover_end::NO_EVENT;
    if (!(length < LONGEST)) {
      look_beyond(direction);
      break;
    }
    result.end = pushover_end::LIMIT;
    if (!advance(direction, length)) break;
    result.end = pushover_end::UNDECIDED;
  }
  states_.close(result.curve.size() - 1, [&] { return state_now(); });
  keep(true, restart);
}

}  // namespace solver
