// plastic_path.cpp: increments, their iterations, first yield and the limit point.
#include "elastoplastic/plastic_path.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "analyses/finite_answers.h"
#include "elements/largest_translation.h"
#include "model/base_step.h"
#include "model/long_vectors.h"
#include "model/model_error.h"
#include "system/assembly.h"
#include "system/progress.h"
#include "system/ranks.h"

namespace solver {

namespace {

constexpr double BALANCED = 1e-7;  // forces out of balance, by the loads
constexpr int MOST_ITERATIONS = 30;
// A correction is shortened until the forces out of balance do no more work on it than this share of what they did at
// its start (Matthies and Strang, 1979).
constexpr double LINE_SEARCH = 0.8;
constexpr int LINE_TRIALS = 6;
// A part of the elastic matrix that every tangent holds: where all points of a region flow, nothing else says which of
// their motions is meant. It bends the directions of the iteration, not the equilibrium that it ends in. After an
// increment that failed it is larger.
constexpr double ELASTIC_SHARE = 1e-6, DAMPING_SHARE = 1e-2;
constexpr int EASY_ITERATIONS = 12;
constexpr double GROWTH = 1.5, SLOW_GROWTH = 1.2;
constexpr double FIRST_STEP = 0.1;      // by the displacement at first yield
constexpr double SMALLEST_STEP = 1e-4;  // by the first one
constexpr double LARGEST_LOSS = 0.25;   // of stiffness in an increment, by the elastic one
constexpr int CUTS_FOR_LOSS = 2;        // where a whole region starts to flow at once, no increment is small enough
constexpr double LONGEST = 0.05;        // increment, by the displacement that is reached, unless the deck has its own
constexpr int BISECTIONS = 32;
constexpr double STILL = 1e-3;    // a limit: the factor grows by no more than this
constexpr double FARTHER = 0.25;  // while the displacement grows by this share of its end
constexpr double UNBOUNDED = 1e12;
constexpr double EQUAL = 1e-9;       // translations that differ by no more are equal within rounding
constexpr double ENOUGH = 1 - 1e-6;  // of the largest factor: it counts as reached

std::vector<double> sum(const std::vector<double>& a, double factor, const std::vector<double>& b) {
  std::vector<double> result = a;
  for (std::size_t i = 0; i < b.size(); ++i) result[i] += factor * b[i];
  return result;
}

bool finite(const std::vector<double>& x) {
  return std::all_of(x.begin(), x.end(), [](double value) { return std::isfinite(value); });
}

}  // namespace

double plastic_path::work(const std::vector<double>& u) const {
  return dot(system_.load_by_equation(), system_.free_displacements(u));
}

std::vector<double> plastic_path::applied() const { return sum(base_, factor_, system_.load()); }

void plastic_path::begin(const step& s, elastoplastic_solution& result) {
  const std::size_t freedoms = system_.load().size();
  if (u_.empty()) u_.assign(freedoms, 0.0);
  if (base_.empty()) base_.assign(freedoms, 0.0);
  largest_ = s.elastoplastic.largest_factor;
  factor_ = work_ = 0;
  fresh_ = true;
  works_.assign(1, 0.0);
  factors_.assign(1, 0.0);
  if (!system_.factorise_elastic()) throw model_error(model_, s, "*STEP", "the elastic structure does not stand");
  const std::vector<double> elastic = system_.by_freedom(system_.solve(system_.load_by_equation()));
  elastic_work_ = work(elastic);
  require_finite(model_, s, elastic_work_, "the work of the loads");
  if (!(elastic_work_ > 0)) throw model_error(model_, s, "*STEP", "the loads of the step do no work");
  result.node = s.elastoplastic.node;
  result.direction = s.elastoplastic.dof - 1;
  if (result.node >= 0) return;
  const std::size_t most = largest_translation(model_, elastic, EQUAL);
  result.node = number_of(most / DIRECTIONS);
  result.direction = number_of(most % DIRECTIONS);
}

// The elastic displacements of the loads lie in the factors of the solver.
bool plastic_path::flows_at(double factor) {
  const std::vector<double> u =
      sum(std::vector<double>(u_.size(), 0.0), factor, system_.by_freedom(system_.solve(system_.load_by_equation())));
  return !system_.update(u) || system_.flowing_points() > 0;
}

// The elastic part of the path is straight: its end is found by bisection.
void plastic_path::find_first_yield(elastoplastic_solution& result) {
  double low = 0, high = std::min(1.0, largest_);
  if (flows_at(high)) {
    low = high / 2;
    while (low > high / UNBOUNDED && flows_at(low)) low /= 2;
    high = 2 * low;
  } else {
    while (high < largest_ && high < UNBOUNDED && !flows_at(high)) {
      low = high;
      high = std::min(2 * high, largest_);
    }
    if (!flows_at(high)) return;
  }
  for (int k = 0; k < BISECTIONS; ++k) (flows_at((low + high) / 2) ? high : low) = (low + high) / 2;
  result.first_yield = low;
}

void plastic_path::elastic_part(elastoplastic_solution& result) {
  find_first_yield(result);
  const bool yields = result.first_yield > 0;
  if (!yields && largest_ > UNBOUNDED) throw model_error(model_, "nothing yields at any load");
  const double factor = yields ? result.first_yield : largest_;
  scale_ = factor * elastic_work_;
  trial t;
  system_.restore();
  if (attempt(control::FACTOR, factor, t)) take(t, result);
  fresh_ = false;
}

void plastic_path::start(const step& s, bool virgin, elastoplastic_solution& result) {
  cuts_ = 0;
  increments_ = 1;
  record({std::vector<double>(u_.size(), 0.0), 0, 0, {}, 0}, result);
  states_.offer(0, [&] { return state_now(); });
  if (virgin) {
    elastic_part(result);
  } else {
    scale_ = largest_ * elastic_work_ / 4;
  }
  own_step_ = s.elastoplastic.own_increment;
  largest_step_ = s.elastoplastic.increment * scale_;
  step_ = first_step_ = std::min(FIRST_STEP * scale_, largest_step_);
}

void plastic_path::go_on(const step& s, elastoplastic_solution& result, path_restart* restart) {
  result.end = elastoplastic_end::INCREMENTS_REACHED;
  const progress report("path");
  for (; increments_ < s.elastoplastic.largest_increments; ++increments_) {
    keep(false, result, restart);
    report.at("increment " + std::to_string(increments_) + ", load factor " + std::to_string(factor_));
    if (factor_ >= largest_) break;
    if (factor_ >= ENOUGH * largest_) {
      finish(result);
      break;
    }
    if (!advance(result)) {
      result.end = elastoplastic_end::NO_EQUILIBRIUM;
      break;
    }
    if (at_limit()) {
      result.end = elastoplastic_end::LIMIT;
      break;
    }
  }
  if (factor_ >= ENOUGH * largest_) result.end = elastoplastic_end::FACTOR_REACHED;
  system_.restore();
  states_.close(result.curve.size() - 1, [&] { return state_now(); });
  keep(true, result, restart);
}

void plastic_path::follow(const step& s, elastoplastic_solution& result, std::size_t states, path_restart* restart) {
  states_ = path_states(states);
  const bool virgin = u_.empty();
  if (s.elastoplastic.goes_on && !virgin) base_ = next_base_;
  begin(s, result);
  const left_state* const left = restart == nullptr ? nullptr : restart->left();
  if (left != nullptr) {
    take_left(s, *left, result);
  } else {
    start(s, virgin, result);
  }
  if (left == nullptr || !left->finished) go_on(s, result, restart);
  result.kept = states_.take();
  result.factor = factor_;
  result.cuts = cuts_;
  next_base_ = applied();
}

// So near to the largest factor that a limit right above it, or below it by rounding, makes no difference: the last bit
// of the way if there is one, and no walk along the limit in search of it.
void plastic_path::finish(elastoplastic_solution& result) {
  trial t;
  share_ = ELASTIC_SHARE;
  if (attempt(control::FACTOR, largest_, t)) take(t, result);
}

bool plastic_path::advance(elastoplastic_solution& result) {
  share_ = ELASTIC_SHARE;
  while (step_ > SMALLEST_STEP * first_step_) {
    trial t;
    bool found = attempt(control::WORK, work_ + step_, t);
    if (found && t.factor > largest_) {
      system_.restore();
      found = attempt(control::FACTOR, largest_, t);
    }
    if (found) {
      take(t, result);
      const double longest = own_step_ ? largest_step_ : std::max(largest_step_, LONGEST * work_);
      step_ = std::min((t.iterations <= EASY_ITERATIONS ? GROWTH : SLOW_GROWTH) * step_, longest);
      return true;
    }
    system_.restore();
    share_ = t.iterations > 0 ? DAMPING_SHARE : share_;
    step_ /= 2;
    ++cuts_;
  }
  return false;
}

bool plastic_path::attempt(control what, double target, trial& t) {
  if (!predict(what, target, t)) return false;
  return correct(what, target, t);
}

bool plastic_path::predict(control what, double target, trial& t) {
  if (!(fresh_ ? system_.factorise_elastic() : system_.factorise_tangent(share_))) return false;
  by_equation_vector a = system_.solve(system_.load_by_equation());
  if (!(dot(a, system_.load_by_equation()) > 0)) {
    if (!system_.factorise_elastic()) return false;
    a = system_.solve(system_.load_by_equation());
  }
  const double along = dot(a, system_.load_by_equation());
  const double growth = what == control::WORK ? (target - work_) / along : target - factor_;
  for (double& value : a) value *= growth;
  t.increment = system_.by_freedom(a);
  t.factor = factor_ + growth;
  t.iterations = 0;
  return finite(t.increment) && !loses_stiffness(t, growth * work(t.increment));
}

// Operation 3 tries the increment: what its tangents at the end make of it, beside those at its start.
bool plastic_path::loses_stiffness(const trial& t, double predicted_work) {
  if (loss_cuts_ >= CUTS_FOR_LOSS) return false;
  const double tried = dot(t.increment, system_.try_increment(t.increment));
  const double elastic = dot(t.increment, system_.elastic_forces(t.increment));
  if (!(predicted_work - tried > LARGEST_LOSS * elastic)) return false;
  ++loss_cuts_;
  return true;
}

double plastic_path::reference(double factor) const {
  const double all = system_.scaled_norm(system_.free_part(sum(base_, factor, system_.load())));
  const double step = system_.scaled_norm(system_.load_by_equation());
  return std::max(all, FIRST_STEP * scale_ / elastic_work_ * step);
}

// Takes the trial's increment as the state. False where a point cannot follow, or a number is not finite.
bool plastic_path::evaluate(trial& t) {
  if (!system_.update(t.increment)) return false;
  const std::vector<double> forces = system_.forces(sum(u_, 1, t.increment));
  t.unbalance = system_.free_part(sum(sum(base_, t.factor, system_.load()), -1, forces));
  t.out_of_balance = system_.scaled_norm(t.unbalance) / reference(t.factor);
  return std::isfinite(t.out_of_balance);
}

// The correction of an iteration, and what it changes the load factor by.
bool plastic_path::find_correction(control what, double target, const trial& t, by_equation_vector& b, double& growth) {
  if (!system_.factorise_tangent(share_)) return false;
  const by_equation_vector& q = system_.load_by_equation();
  b = system_.solve(t.unbalance);
  growth = 0;
  if (what == control::WORK) {
    const by_equation_vector a = system_.solve(q);
    growth = (target - work_ - work(t.increment) - dot(q, b)) / dot(q, a);
    b = sum(b, growth, a);
  }
  return finite(b);
}

// The work of the forces out of balance on the correction falls from its start to equilibrium and changes its sign
// there: where it has grown instead, or the state cannot follow, the correction is too long.
bool plastic_path::go_along(const by_equation_vector& b, double growth, trial& t) {
  const trial start = t;
  const std::vector<double> direction = system_.by_freedom(b);
  const double before = dot(start.unbalance, b) + growth * dot(system_.load_by_equation(), b);
  double length = 1;
  for (int k = 0; k < LINE_TRIALS; ++k) {
    t.increment = sum(start.increment, length, direction);
    t.factor = start.factor + length * growth;
    double shorter = 0.5;
    if (evaluate(t)) {
      const double after = dot(t.unbalance, b) + (1 - length) * growth * dot(system_.load_by_equation(), b);
      const bool too_long = after * before < 0 && std::fabs(after) > LINE_SEARCH * std::fabs(before);
      if (!too_long || t.out_of_balance < start.out_of_balance / 2) return true;
      shorter = std::clamp(before / (before - after), 0.1, 0.5);
    } else if (k + 1 == LINE_TRIALS) {
      return false;
    }
    if (k + 1 < LINE_TRIALS) length *= shorter;
  }
  return true;
}

bool plastic_path::correct(control what, double target, trial& t) {
  t.iterations = 1;
  if (!evaluate(t)) return false;
  for (; t.out_of_balance > BALANCED; ++t.iterations) {
    if (t.iterations == MOST_ITERATIONS) return false;
    by_equation_vector b;
    double growth = 0;
    if (!find_correction(what, target, t, b, growth) || !go_along(b, growth, t)) return false;
  }
  return true;
}

void plastic_path::take(const trial& t, elastoplastic_solution& result) {
  u_ = sum(u_, 1, t.increment);
  factor_ = t.factor;
  work_ += work(t.increment);
  works_.push_back(work_);
  factors_.push_back(factor_);
  record(t, result);
  system_.accept(u_);
  states_.offer(result.curve.size() - 1, [&] { return state_now(); });
  fresh_ = false;
  loss_cuts_ = 0;
}

path_state plastic_path::state_now() const {
  path_state state;
  state.displacement = translations_of(u_);
  const plastic_plates& plates = system_.plates();
  std::vector<double> largest(model_.elements.size(), 0.0);
  for (std::size_t e = 0; e < model_.elements.size(); ++e) {
    if (!is_own(model_, e) || !plates.yields(e)) continue;
    const element_vector own = gather(model_.elements[e], u_);
    for (int q = 1; q <= SURFACE_POINTS; ++q) {
      largest[e] = std::max(largest[e], plates.values(e, q, own).equivalent);
    }
  }
  sum_over_ranks(largest);  // each has one part that is not 0
  for (const double value : largest) state.equivalent_plastic.push_back(static_cast<float>(value));
  return state;
}

void plastic_path::record(const trial& t, elastoplastic_solution& result) {
  const std::size_t f = freedom(result.node, result.direction);
  const int flowing = t.iterations > 0 ? system_.flowing_points() : 0;
  result.curve.push_back({factor_, u_[f], work_, flowing, t.iterations});
  result.largest_factor = std::max(result.largest_factor, factor_);
  result.out_of_balance = std::max(result.out_of_balance, t.out_of_balance);
}

bool plastic_path::at_limit() const {
  std::size_t before = works_.size();
  while (before > 0 && works_[before - 1] > (1 - FARTHER) * work_) --before;
  const std::size_t since = works_.size() - before;
  if (before == 0 || since < 4) return false;
  const double largest = *std::max_element(factors_.begin(), factors_.end());
  return factor_ - factors_[before - 1] < STILL * largest;
}

}  // namespace solver
