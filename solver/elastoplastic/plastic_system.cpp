// plastic_system.cpp: assembly and solution for plates that yield.
#include "elastoplastic/plastic_system.h"

#include <atomic>
#include <cmath>

#include "analyses/static_analysis.h"
#include "model/model_error.h"
#include "system/assembly.h"
#include "system/drilling_notes.h"
#include "system/element_loops.h"
#include "system/ranks.h"
#include "system/scaled_system.h"
#include "system/unresisted.h"

namespace solver {

namespace {

load_case held_loads(const model& m, const step& s, library_model& library, std::vector<std::string>& notes) {
  load_case loads = gather_load_case(m, s);
  library.plates().choose_ties(loads);
  notes = hold_meaningless_freedoms(m, s, loads);
  return loads;
}

}  // namespace

plastic_system::plastic_system(const model& m, library_model& library, linear_solver& solver, const step& s)
    : model_(m),
      library_(library),
      solver_(solver),
      loads_(held_loads(m, s, library, held_)),
      plates_(m, library),
      map_(make_scatter_map(m, loads_, K_)) {
  next_loads(s);
  assemble_tangents();
  elastic_ = K_.value;
  const std::vector<std::string> more =
      hold_free_directions(m, s, library_.plates().flat_parts(), loads_, load_, map_, K_);
  notes.insert(notes.end(), more.begin(), more.end());
  const std::vector<std::string> drilling = note_drilling(m, library_.plates().flat_parts(), loads_);
  notes.insert(notes.end(), drilling.begin(), drilling.end());
  hold_.resize(elastic_.size());
  for (std::size_t i = 0; i < hold_.size(); ++i) hold_[i] = K_.value[i] - elastic_[i];
  scale_ = scale_to_unit_diagonal(m, s, map_, K_);
  const bool factorised = solver_.factorise(K_);
  check_resistance(m, s, map_, K_, scale_, solver_, factorised);
}

void plastic_system::next_loads(const step& s) {
  loads_ = held_loads(model_, s, library_, held_);
  note_constraints(map_, held_);
  notes = held_;
  library_.plates().yielding(false);
  load_ = assemble_loads(model_, s, library_, loads_);
  library_.plates().yielding(true);
  library_.plates().count_increment(1);
  right_ = free_part(load_);
}

bool plastic_system::factorise(std::vector<double> values) {
  K_.value = std::move(values);
  for (std::size_t i = 0; i < hold_.size(); ++i) K_.value[i] += hold_[i];
  scale_matrix(scale_, K_);
  return solver_.factorise(K_);
}

bool plastic_system::factorise_elastic() { return factorise(elastic_); }

bool plastic_system::factorise_tangent(double elastic_share) {
  std::fill(K_.value.begin(), K_.value.end(), 0.0);
  assemble_tangents();
  std::vector<double> values = K_.value;
  for (std::size_t i = 0; i < values.size(); ++i) values[i] += elastic_share * elastic_[i];
  return factorise(std::move(values));
}

by_equation_vector plastic_system::solve(by_equation_vector right) const {
  for (std::size_t i = 0; i < right.size(); ++i) right[i] *= scale_[i];
  solver_.solve(right);
  for (std::size_t i = 0; i < right.size(); ++i) right[i] *= scale_[i];
  return right;
}

void plastic_system::assemble_tangents() {
  library_.plates().choose_first_model();
  assemble_matrix(
      model_, library_, question::PLASTIC, map_, [&](std::size_t e, element_matrix& K) { plates_.tangent(e, K); }, K_);
}

// After an element whose update has failed the rest has nothing to say: all of them get their accepted state again.
bool plastic_system::update(const std::vector<double>& increment) {
  const quiet_assertions trial;
  library_.plates().choose_first_model();
  std::atomic<bool> sound = true;
  const auto update_part = [&](std::size_t, std::size_t first, std::size_t last) {
    for (std::size_t e = first; e < last && sound; ++e) {
      if (is_own(model_, e) && !plates_.update(e, gather(model_.elements[e], increment))) sound = false;
    }
  };
  fail_together(
      [&] { library_.divide(0, model_.elements.size(), library_.threads_for(question::PLASTIC), update_part); });
  return true_for_all(sound);
}

template <class ASK>
std::vector<double> plastic_system::sum_of(const std::vector<double>& displacements, const ASK& ask) const {
  std::vector<double> sum(displacements.size(), 0.0);
  library_.plates().choose_first_model();
  const auto compute = [&](std::size_t e, element_vector& f) {
    f = element_vector{};
    ask(e, gather(model_.elements[e], displacements), f);
  };
  const auto take = [&](std::size_t e, const element_vector& f) {
    const element& elem = model_.elements[e];
    for (int i = 0; i < element_freedoms(elem); ++i) sum[element_freedom(elem, i)] += f(i + 1);
  };
  const int threads = library_.threads_for(question::PLASTIC);
  fail_together([&] { compute_and_take<element_vector>(model_, library_, threads, compute, take); });
  sum_over_ranks(sum);
  return sum;
}

std::vector<double> plastic_system::forces(const std::vector<double>& displacements) const {
  return sum_of(displacements,
                [&](std::size_t e, const element_vector& u, element_vector& f) { f = plates_.forces(e, u); });
}

std::vector<double> plastic_system::try_increment(const std::vector<double>& increment) {
  const quiet_assertions trial;
  return sum_of(increment,
                [&](std::size_t e, const element_vector& u, element_vector& f) { plates_.try_increment(e, u, f); });
}

std::vector<double> plastic_system::elastic_forces(const std::vector<double>& increment) const {
  symmetric_matrix K = K_;
  K.value = elastic_;
  const by_equation_vector force = product(K, independent_part(map_, increment));
  std::vector<double> result(map_.equation.size(), 0.0);
  for (std::size_t f = 0; f < result.size(); ++f) {
    if (map_.equation[f] != PRESCRIBED) result[f] = force[subscript(map_.equation[f])];
  }
  return result;
}

void plastic_system::accept(const std::vector<double>& displacements) {
  fail_together([&] {
    for (std::size_t e = 0; e < model_.elements.size(); ++e) {
      if (is_own(model_, e)) plates_.accept(e, gather(model_.elements[e], displacements));
    }
  });
}

void plastic_system::restore() {
  for (std::size_t e = 0; e < model_.elements.size(); ++e) {
    if (is_own(model_, e)) plates_.restore(e);
  }
}

int plastic_system::flowing_points() const {
  int count = 0;
  for (std::size_t e = 0; e < model_.elements.size(); ++e) {
    if (is_own(model_, e)) count += plates_.flowing_points(e);
  }
  return static_cast<int>(sum_over_ranks(static_cast<double>(count)));
}

std::vector<double> plastic_system::by_freedom(const by_equation_vector& x) const { return spread(map_, x); }

by_equation_vector plastic_system::free_part(const std::vector<double>& force) const {
  return by_equation(map_, force);
}

by_equation_vector plastic_system::free_displacements(const std::vector<double>& x) const {
  return independent_part(map_, x);
}

double plastic_system::scaled_norm(const by_equation_vector& force) const {
  double sum = 0;
  for (std::size_t i = 0; i < force.size(); ++i) sum += force[i] * force[i] * scale_[i] * scale_[i];
  return std::sqrt(sum);
}

}  // namespace solver
