// pushover_equilibrium.cpp: where a frame with its present hinges goes, and the iteration to equilibrium.
#include <cmath>
#include <limits>

#include "pushover/pushover_frame.h"

namespace solver {

namespace {

// A structure whose compliance under its loads has grown by this factor counts as a mechanism. With flat faces a
// mechanism has none; along curved surfaces the stiffness fades away, and at this share the factor has come to its
// limit except for a few units of the fifth digit.
constexpr double SOFTEST = 1e4;

// Forces out of balance by the size of their terms: what rounding leaves of their sums, some hundred units in the last
// place; and what is accepted where the iterations do not come closer, because the equations are ill-conditioned.
constexpr double ROUNDING = 1e-14, SETTLED_FORCES = 1e-12, SETTLED_RATES = 1e-8;
constexpr double SETTLED_AXIAL = 1e-11;  // change of the axial forces of the geometric stiffness, by their size
constexpr double MOTION_SHARE = 1e-10;   // of the elastic diagonal, in the place of a stiffness that is missing

}  // namespace

// What is left of the loads of one factor when beams and other elements have taken their share.
std::vector<double> pushover_frame::rate_unbalance(const std::vector<double>& displacement,
                                                   std::vector<beam_rates>& rates) const {
  std::vector<double> taken(displacement.size(), 0.0);
  rates.resize(beams_.size());
  for (std::size_t i = 0; i < beams_.size(); ++i) {
    const beam& b = beams_[i];
    rates[i] = rates_of(b.hinges, b.K, now_.beams[i], local_displacements(b, displacement), b.load);
    add_beam_forces(b, rates[i].forces, taken);
  }
  add_other_forces(displacement, taken);
  for (std::size_t f = 0; f < taken.size(); ++f) taken[f] = applied_[f] - taken[f];
  return taken;
}

// The largest of the terms whose sums are the rates of a beam's end forces, as a moment.
double pushover_frame::size_of_terms(const beam& b, const std::vector<double>& displacement) const {
  const end_forces u = local_displacements(b, displacement);
  const double length = member_length(model_, model_.elements[b.element]);
  double largest = 0;
  for (std::size_t i = 0; i < u.size(); ++i) {
    double sum = std::fabs(b.load[i]);
    for (std::size_t j = 0; j < u.size(); ++j) sum += std::fabs(b.K(number_of(i) + 1, number_of(j) + 1) * u[j]);
    largest = std::fmax(largest, i % 6 < 3 ? sum * length : sum);
  }
  return largest;
}

// At an end that is pinned, or free of an axial force, the rate of the force is what rounding has left of its terms, or
// of the balance of its node. Taken for a rate it would let a hinge form there at some enormous load.
void pushover_frame::clear_rounding(frame_direction& direction, const std::vector<double>& left) const {
  constexpr double OF_TERMS = 1e-12;  // rounding of twelve products, with a margin of some thousand units
  constexpr double OF_BALANCE = 10;   // a margin on what the balance of the node has left
  const std::vector<double> missing_at = by_equation(map_, left);
  for (std::size_t i = 0; i < beams_.size(); ++i) {
    const beam& b = beams_[i];
    const double terms = OF_TERMS * size_of_terms(b, direction.displacement);
    const double length = member_length(model_, model_.elements[b.element]);
    for (int block = 0; block < 12; block += 3) {
      double missing = 0;
      for (int k = 0; k < 3; ++k) {
        const std::size_t f = element_freedom(model_.elements[b.element], block + k);
        if (map_.equation[f] != PRESCRIBED) {
          missing = std::fmax(missing, std::fabs(missing_at[subscript(map_.equation[f])]));
        }
      }
      const double rounding = (block % 6 == 0 ? terms / length : terms) + OF_BALANCE * missing;
      const auto first = subscript(block);
      for (std::size_t k = first; k < first + 3; ++k) {
        double& rate = direction.beams[i].forces[k];
        if (std::fabs(rate) <= rounding) rate = 0;
      }
    }
  }
}

// False where the exact matrix has no stiffness.
bool pushover_frame::try_direction(frame_direction& direction) {
  constexpr int MOST_CORRECTIONS = 8;
  if (!form_tangent()) return false;
  direction.displacement.assign(now_.displacement.size(), 0.0);
  std::vector<double> loads, left;
  double before = std::numeric_limits<double>::infinity(), whole = 0;
  for (int step = 0; step <= MOST_CORRECTIONS; ++step) {
    left = rate_unbalance(direction.displacement, direction.beams);
    const double size = scaled_norm(left);
    if (step == 0) {
      loads = left;
      whole = size;
    }
    if (size <= ROUNDING * whole) break;
    if (step > 0 && !(size < before / 2)) {
      if (size <= SETTLED_RATES * whole) break;
      return false;
    }
    before = size;
    std::vector<double> correction;
    if (!solve(left, 0, correction)) return false;
    for (std::size_t f = 0; f < correction.size(); ++f) direction.displacement[f] += correction[f];
  }
  clear_rounding(direction, left);
  direction.compliance = work(loads, direction.displacement);
  direction.resists = direction.compliance >= 0 && direction.compliance <= SOFTEST * elastic_compliance_;
  return true;
}

// The motion that the loads drive, and the flow that goes with it: the loads work on it.
void pushover_frame::find_motion(frame_direction& direction) {
  direction = frame_direction{};
  std::vector<beam_rates> ignored;
  const std::vector<double> loads = rate_unbalance(std::vector<double>(now_.displacement.size(), 0.0), ignored);
  direction.only_motion = true;
  if (!solve(loads, MOTION_SHARE, direction.displacement)) direction.displacement.clear();
  if (direction.displacement.empty()) return;
  if (work(loads, direction.displacement) < 0) {
    for (double& u : direction.displacement) u = -u;
  }
  for (std::size_t i = 0; i < beams_.size(); ++i) {
    direction.beams.push_back(rates_of(beams_[i].hinges, beams_[i].K, now_.beams[i],
                                       local_displacements(beams_[i], direction.displacement), end_forces{}));
  }
}

frame_direction pushover_frame::find_direction() {
  frame_direction direction;
  refresh_stiffness(now_);
  if (!try_direction(direction)) find_motion(direction);
  return direction;
}

// Forces of the beams at the displacements of a state, brought back to the active surfaces. The axial forces for the
// next stiffness follow; `axial_change` is how far they were from the ones that made this one.
bool pushover_frame::move_beams(const frame_state& start, frame_state& state, double& axial_change) {
  double change = 0, largest = 0;
  for (std::size_t i = 0; i < beams_.size(); ++i) {
    const beam& b = beams_[i];
    beam_state& s = state.beams[i];
    s.flow = start.beams[i].flow;
    end_forces elastic = local_displacements(b, state.displacement);
    for (std::size_t k = 0; k < elastic.size(); ++k) elastic[k] -= s.flow[k];
    s.forces = product(b.K, elastic);
    for (std::size_t k = 0; k < s.forces.size(); ++k) s.forces[k] += b.held[k] + state.factor * b.load[k];
    if (b.hinges != nullptr && !return_to_surface(*b.hinges, b.K, s)) return false;
    if (!second_order_) continue;  // axial forces 0: no geometric stiffness
    const double axial = (s.forces[6] - s.forces[0]) / 2;
    change = std::fmax(change, std::fabs(axial - s.axial_force));
    largest = std::fmax(largest, std::fabs(axial));
    s.axial_force = axial;
  }
  axial_change = largest > 0 ? change / largest : 0;
  return true;
}

// Loads less forces, by degree of freedom. `size`: what the forces would be if nothing in them cancelled, on which
// rounding rests.
std::vector<double> pushover_frame::unbalance(const frame_state& state, double& size) const {
  std::vector<double> left(state.displacement.size(), 0.0), whole(left.size(), 0.0);
  add_other_forces(state.displacement, left);
  for (std::size_t f = 0; f < left.size(); ++f) whole[f] = std::fabs(left[f]);
  for (std::size_t i = 0; i < beams_.size(); ++i) {
    const beam& b = beams_[i];
    add_beam_forces(b, state.beams[i].forces, left);
    const end_forces u = local_displacements(b, state.displacement);
    for (int j = 1; j <= 12; ++j) {
      double sum = 0;
      for (int k = 1; k <= 12; ++k) {
        sum +=
            std::fabs(b.K(j, k)) * (std::fabs(u[subscript(k - 1)]) + std::fabs(state.beams[i].flow[subscript(k - 1)]));
      }
      whole[element_freedom(model_.elements[b.element], j - 1)] += sum;
    }
  }
  for (std::size_t f = 0; f < left.size(); ++f) left[f] = held_[f] + state.factor * applied_[f] - left[f];
  size = scaled_norm(whole);
  return left;
}

bool pushover_frame::settle(const frame_state& start, frame_state& state) {
  constexpr int MOST_ITERATIONS = 100, MOST_STALLS = 4;
  double before = std::numeric_limits<double>::infinity();
  int stalls = 0;
  for (int iteration = 0; iteration < MOST_ITERATIONS; ++iteration) {
    double axial_change = 0, size = 0;
    refresh_stiffness(state);
    if (!move_beams(start, state, axial_change)) return false;
    const std::vector<double> left = unbalance(state, size);
    const double missing = scaled_norm(left);
    if (!std::isfinite(missing)) return false;
    const bool axial_settled = axial_change <= SETTLED_AXIAL;
    if (missing <= ROUNDING * size && axial_settled) return true;
    if (missing > before / 2) {
      if (missing <= SETTLED_FORCES * size && axial_settled) return true;
      if (++stalls > MOST_STALLS && missing > before) return false;
    }
    before = missing;
    std::vector<double> correction;
    if (!solve(left, 0, correction)) return false;
    for (std::size_t f = 0; f < correction.size(); ++f) state.displacement[f] += correction[f];
  }
  return false;
}

}  // namespace solver
