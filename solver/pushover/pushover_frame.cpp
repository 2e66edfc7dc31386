// pushover_frame.cpp: loads, the tangent through the library, residual forces, and the iterations on them.
#include "pushover/pushover_frame.h"

#include <algorithm>
#include <cmath>

#include "analyses/finite_answers.h"
#include "model/long_vectors.h"
#include "model/model_error.h"
#include "system/assembly.h"
#include "system/scaled_system.h"
#include "system/unresisted.h"

namespace solver {

namespace {

void add_scaled(end_forces& sum, double factor, const end_forces& part) {
  for (std::size_t i = 0; i < sum.size(); ++i) sum[i] += factor * part[i];
}

void add_scaled(distributed_load& sum, double factor, const distributed_load& part) {
  sum.pressure += factor * part.pressure;
  sum.temperature_change += factor * part.temperature_change;
  sum.temperature_difference += factor * part.temperature_difference;
  for (std::size_t i = 0; i < 3; ++i) {
    sum.body[i] += factor * part.body[i];
    sum.line[i] += factor * part.line[i];
    sum.line_rise[i] += factor * part.line_rise[i];
  }
}

// Of the natural compliance: loads that move the frame by less have moved it by the rounding of their sums.
constexpr double UNMOVED = 1e-24;

}  // namespace

// The hinges of the library belong to the kind of analysis that adds the geometric stiffness: that of first order has
// axial forces 0.
void follow_hinges(library_model& library, bool on) {
  library.members().plastic(on);
  library.second_order(on);
  library.clear_state();
}

pushover_frame::pushover_frame(const model& m, library_model& library, linear_solver& solver, const step& s)
    : model_(m), library_(library), solver_(solver), step_(&s), second_order_(s.p_delta) {
  follow_hinges(library_, true);
  const std::size_t freedoms = DIRECTIONS * m.nodes.size();
  held_.assign(freedoms, 0);
  all_held_.assign(freedoms, 0);
  held_element_loads_.resize(m.elements.size());
  now_.displacement.assign(freedoms, 0);
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    const int hinges = m.elements[e].hinges;
    if (is_beam(m.elements[e].type)) {
      beams_.push_back({e, hinges < 0 ? nullptr : &m.hinges[hinges], {}, {}, {}});
    } else {
      others_.push_back(e);
    }
  }
  now_.beams.resize(beams_.size());
  other_stiffness_.resize(others_.size());
  loads_ = gather_load_case(m, s);
  library_.plates().choose_ties(loads_);
  notes_ = hold_meaningless_freedoms(m, *step_, loads_);
  map_ = make_scatter_map(m, loads_, K_);
  note_constraints(map_, notes_);
  if (map_.equations == 0) throw model_error(m, s, "*STEP", "nothing can move: every degree of freedom is prescribed");
  take_loads(s);
}

void pushover_frame::next_step(const step& s) {
  add_scaled(held_, now_.factor, applied_);
  add_scaled(all_held_, now_.factor, all_applied_);
  for (std::size_t e = 0; e < held_element_loads_.size(); ++e) {
    add_scaled(held_element_loads_[e], now_.factor, loads_.element[e]);
  }
  for (beam& b : beams_) add_scaled(b.held, now_.factor, b.load);
  now_.factor = 0;
  step_ = &s;
  loads_ = gather_load_case(model_, s);
  hold_meaningless_freedoms(model_, *step_, loads_);
  take_loads(s);
}

// Loads along beams are part of the forces of the beams; everything else acts on the nodes. The frame without hinges
// must stand, and its answer to the loads is the measure of later ones.
void pushover_frame::take_loads(const step& s) {
  all_applied_ = assemble_loads(model_, s, library_, loads_);
  applied_ = all_applied_;
  for (std::size_t i = 0; i < beams_.size(); ++i) {
    beam& b = beams_[i];
    b.load = library_.members().fixed_end_forces(b.element, loads_.element[b.element]);
    library_.members().keep_loads(b.element, b.load);
    add_beam_forces(b, b.load, applied_);
  }
  require_finite(model_, s, work(all_applied_, all_applied_), "the work of the loads");
  const frame_state kept = now_;
  for (beam_state& b : now_.beams) b.active = {};
  refresh_stiffness(now_);
  if (scale_.empty()) {
    const bool stands = factorise_library_matrix();
    check_resistance(model_, *step_, map_, K_, scale_, solver_, stands);
  }
  std::vector<double> displacement;
  if (form_tangent() && solve(all_applied_, 0, displacement)) elastic_compliance_ = work(all_applied_, displacement);
  now_ = kept;
  require_finite(model_, s, elastic_compliance_, "the work of the loads");
  if (!(elastic_compliance_ > UNMOVED * natural_compliance())) {
    throw model_error(model_, s, "*STEP",
                      "the loads of the step move no node, and hinges have no path between nodes that stay: put nodes "
                      "between the ends of the members");
  }
}

// What the loads would do if every degree of freedom moved alone, and no load were taken back by another one.
double pushover_frame::natural_compliance() const {
  std::vector<double> whole(applied_.size());
  for (std::size_t f = 0; f < whole.size(); ++f) whole[f] = std::fabs(applied_[f]);
  for (const beam& b : beams_) {
    std::vector<double> part(whole.size(), 0.0);
    add_beam_forces(b, b.load, part);
    for (int i = 0; i < 12; ++i) {
      const std::size_t f = element_freedom(model_.elements[b.element], i);
      whole[f] += std::fabs(part[f]);
    }
  }
  const std::vector<double> sizes = sizes_by_equation(map_, whole);
  double sum = 0;
  for (std::size_t i = 0; i < sizes.size(); ++i) sum += scale_[i] * sizes[i] * (scale_[i] * sizes[i]);
  const double size = std::sqrt(sum);
  return size * size;
}

end_forces pushover_frame::local_displacements(const beam& b, const std::vector<double>& displacement) const {
  const element_vector u = gather(model_.elements[b.element], displacement);
  end_forces local{};
  for (int block = 0; block < 12; block += 3) {
    for (int i = 1; i <= 3; ++i) {
      for (int j = 1; j <= 3; ++j) {
        local[subscript(block + i - 1)] += library_.members().axes(b.element)(i, j) * u(block + j);
      }
    }
  }
  return local;
}

void pushover_frame::add_beam_forces(const beam& b, const end_forces& f, std::vector<double>& sum) const {
  for (int block = 0; block < 12; block += 3) {
    for (int j = 1; j <= 3; ++j) {
      double force = 0;
      for (int i = 1; i <= 3; ++i) force += library_.members().axes(b.element)(i, j) * f[subscript(block + i - 1)];
      sum[element_freedom(model_.elements[b.element], block + j - 1)] += force;
    }
  }
}

void pushover_frame::add_other_forces(const std::vector<double>& displacement, std::vector<double>& sum) const {
  for (std::size_t k = 0; k < others_.size(); ++k) {
    const element& e = model_.elements[others_[k]];
    const element_vector u = gather(e, displacement);
    for (int i = 0; i < element_freedoms(e); ++i) {
      double force = 0;
      for (int j = 0; j < element_freedoms(e); ++j) force += other_stiffness_[k](i + 1, j + 1) * u(j + 1);
      sum[element_freedom(e, i)] += force;
    }
  }
}

// Elastic stiffnesses: once in first order, with the axial and membrane forces of the state in second order.
void pushover_frame::refresh_stiffness(const frame_state& state) {
  if (!second_order_ && !scale_.empty()) return;
  for (std::size_t i = 0; i < beams_.size(); ++i) {
    hinge_state elastic;
    elastic.axial_force = second_order_ ? state.beams[i].axial_force : 0;
    library_.members().set_hinges(beams_[i].element, elastic);
    beams_[i].K = library_.members().elastic_stiffness(beams_[i].element);
  }
  for (std::size_t k = 0; k < others_.size(); ++k) {
    const std::size_t e = others_[k];
    if (second_order_) {
      library_.keep_state(e, gather(model_.elements[e], state.displacement), element_load(e, state.factor));
    }
    library_.stiffness(e, other_stiffness_[k]);
  }
}

distributed_load pushover_frame::element_load(std::size_t e, double factor) const {
  distributed_load load = held_element_loads_[e];
  add_scaled(load, factor, loads_.element[e]);
  return load;
}

double pushover_frame::scaled_norm(const std::vector<double>& by_freedom) const {
  const std::vector<double> force = by_equation(map_, by_freedom);
  double sum = 0;
  for (std::size_t i = 0; i < force.size(); ++i) {
    const double value = scale_[i] * force[i];
    sum += value * value;
  }
  return std::sqrt(sum);
}

double pushover_frame::work(const std::vector<double>& force, const std::vector<double>& displacement) const {
  double sum = 0;
  for (std::size_t f = 0; f < force.size(); ++f) {
    if (!loads_.prescribed[f]) sum += force[f] * displacement[f];
  }
  return sum;
}

static_solution pushover_frame::solution() const {
  static_solution result;
  result.loads = loads_;
  for (std::size_t e = 0; e < model_.elements.size(); ++e) result.loads.element[e] = element_load(e, now_.factor);
  result.displacement = now_.displacement;
  result.load = all_held_;
  add_scaled(result.load, now_.factor, all_applied_);
  double size = 0;
  const std::vector<double> missing = unbalance(now_, size);
  std::vector<double> left = missing;
  for (double& force : left) force = -force;
  take_forces(map_.constraints, left, result);
  result.equations = map_.equations;
  result.entries = entries_of(K_);
  result.residual = size > 0 ? scaled_norm(missing) / size : 0;
  result.notes = notes_;
  return result;
}

std::vector<end_forces> pushover_frame::member_forces() const {
  std::vector<end_forces> all(model_.elements.size());
  for (std::size_t i = 0; i < beams_.size(); ++i) all[beams_[i].element] = now_.beams[i].forces;
  return all;
}

std::vector<member_state> pushover_frame::member_states() const {
  std::vector<member_state> all(model_.elements.size());
  for (std::size_t i = 0; i < beams_.size(); ++i) {
    const beam_state& b = now_.beams[i];
    all[beams_[i].element] = {b.forces, b.flow, second_order_ ? b.axial_force : 0};
  }
  return all;
}

member_field pushover_frame::field(std::size_t place, const frame_state& state) const {
  const std::size_t e = beams_[place].element;
  const beam_state& b = state.beams[place];
  return field_of(model_, library_, e, gather(model_.elements[e], state.displacement), element_load(e, state.factor),
                  {b.forces, b.flow, second_order_ ? b.axial_force : 0});
}

}  // namespace solver
