// every_plate.cpp: the plates, their states and their calls.
#include "every_plate.h"

#include <algorithm>

#include "finites/fields.h"
#include "finites/finites.h"

namespace every_call {

namespace {

using support::plate_description;
using support::seeded_random;

constexpr double YIELD_STRAIN = 1e-3;
constexpr int EXCHANGE_LENGTH = 768;

constexpr int OPERATIONS[] = {
    OP_STIFFNESS,        OP_MASS,    OP_FORCES,    OP_FORCES_COMMIT,    OP_LOADS,    OP_BODY_LOAD,
    OP_TEMPERATURE_LOAD, OP_RESULTS, OP_GEOMETRIC, OP_GEOMETRIC_STORED, OP_GEOMETRY, OP_POINT_LOCATION,
    OP_POINT_LOAD};

plate_description random_section(seeded_random& random, const std::vector<support::point>& nodes) {
  const support::orthotropy kind =
      random.integer(0, 1) == 0 ? support::orthotropy::reciprocal : support::orthotropy::arbitrary;
  switch (random.integer(0, 3)) {
    case 0: return support::random_orthotropic(random, nodes, kind);
    case 1: return support::random_composite(random, nodes, kind);
    default: return support::random_isotropic(random, nodes);
  }
}

void let_yield(seeded_random& random, plate_description& d) {
  d.yield_stress = d.young * YIELD_STRAIN;
  d.plastic_switch = 1;
  d.section_type = HOMOGENEOUS_SECTION;
  d.material.ortho = 0;
  d.material.mtype = random.integer(0, 1) == 0 ? 1 : 3;
  d.material.HARDENING = static_cast<float>(random.integer(0, 2) * 0.02 * d.young);
}

const std::vector<int>& formulations_of(const analysis& a) {
  static const std::vector<int> elastic = {1, 0, 2, 98, 1, 3, 4, 99, 1, 0, 5}, yielding = {1, 0, 3, 1, 4, 98, 0};
  return a.plate_code > 0 ? yielding : elastic;
}

// The kinds change from element to element, so that neighbours are never alike.
plate_description describe(const analysis& a, int elem) {
  seeded_random random = numbers_of(a, elem, PLATE);
  // Plates that yield are of the size to which their displacements belong.
  const double size = a.plate_code > 0 ? 1.0 : random.log_uniform(0.1, 100.0);
  const std::vector<support::point> nodes =
      elem % 2 == 0 ? support::random_quadrilateral(random, size) : support::random_triangle(random, size);
  plate_description d = random_section(random, nodes);
  const std::vector<int>& formulations = formulations_of(a);
  d.formulation = formulations[static_cast<std::size_t>(elem / 2) % formulations.size()];
  if (random.integer(0, 2) == 0) support::add_random_offsets(random, d, size);
  if (a.plate_code > 0 && random.integer(0, 5) > 0) let_yield(random, d);
  return d;
}

std::vector<plate_description> describe_all(const analysis& a, int elements) {
  std::vector<plate_description> all;
  for (int elem = 1; elem <= elements; ++elem) all.push_back(describe(a, elem));
  return all;
}

// A record of zeros for the material of a plate that has none: stiffness factors read moduli from the record.
void fill_material(seeded_random& random, plate_description& d) {
  if (d.material.E1 != 0.0F) return;
  d.material.E1 = static_cast<float>(d.young);
  d.material.NU1 = static_cast<float>(d.poisson);
  d.material.G12 = static_cast<float>(d.young * random.uniform(0.3, 0.5));
  d.material.ALPHA1 = static_cast<float>(d.expansion);
}

std::vector<plate_description> describe_reduced(const analysis& a, int elements) {
  std::vector<plate_description> all = describe_all(a, elements);
  if (!a.reduced) return all;
  for (int elem = 1; elem <= elements; ++elem) {
    seeded_random random = numbers_of(a, elem, PLATE_STATE);
    fill_material(random, all[static_cast<std::size_t>(elem - 1)]);
  }
  return all;
}

// A point on the plate, or a little beside and above it.
std::vector<double> point_of(seeded_random& random, const plate_description& d) {
  std::vector<double> at(3, 0.0);
  double left = 1.0;
  for (std::size_t n = 0; n < 3; ++n) {
    const double share = n < 2 ? left * random.uniform(0.1, 0.9) : left;
    left -= share;
    for (std::size_t i = 0; i < 3; ++i) at[i] += share * d.nodes[n][i];
  }
  if (random.integer(0, 1) == 0) {
    for (double& x : at) x += random.uniform(-0.2, 0.2);
  }
  return at;
}

std::vector<double> data_of(seeded_random& random, int op, const plate_description& d) {
  std::vector<double> data = random.vector(12, 1.0);
  if (op == OP_TEMPERATURE_LOAD || op == OP_RESULTS) data[0] *= 40.0;
  if (op == OP_POINT_LOCATION || op == OP_POINT_LOAD) {
    const std::vector<double> at = point_of(random, d);
    std::copy(at.begin(), at.end(), data.begin());
  }
  return data;
}

}  // namespace

// ------------------------------------------------------------------------------------------------ states

double* plate_fields::take(int count) {
  double* const first = values_.data() + used_;
  used_ += static_cast<std::size_t>(count);
  return first;
}

void plate_fields::give_section(PLATE_STATE_RECORD& r) {
  values_.assign(3 * 48 + 6 * 4 + 256, 0.0);
  for (ARRAY_REFERENCE<double, 2>* field : {&r.SEC_EP_START, &r.SEC_EP_CUR, &r.SEC_EP_INC}) {
    *field = REFER_TO(take(48), 12, 4);
  }
  for (ARRAY_REFERENCE<double, 1>* field :
       {&r.SEC_EPBAR_START, &r.SEC_EPBAR_CUR, &r.SEC_CURV_INC, &r.SEC_AUX, &r.SEC_SIGN_CUR, &r.SEC_SIGN_START}) {
    *field = REFER_TO(take(4), 4);
  }
  r.SEC_TANGENT = REFER_TO(take(256), 8, 8, 4);
}

void plate_fields::give_layers(PLATE_STATE_RECORD& record, int n) {
  values_.assign(static_cast<std::size_t>(4 * n * (4 * 6 + 2 + 25)), 0.0);
  for (POINT_STATE_RECORD& s : points_) {
    for (ARRAY_REFERENCE<double, 2>* field : {&s.SIG, &s.EP_START, &s.EP_CUR, &s.EP_INC}) {
      *field = REFER_TO(take(6 * n), 6, n);
    }
    s.EPBAR_START = REFER_TO(take(n), n);
    s.EPBAR_CUR = REFER_TO(take(n), n);
    s.TANGENT = REFER_TO(take(25 * n), 5, 5, n);
  }
  record.POINT_STATE = REFER_TO(points_.data(), 4);
}

// The stored forces are the solver's: the library only reads them.
void every_plate::give_state(int elem) {
  PLATE_STATE_RECORD& state = model_.state(elem);
  plate_fields& fields = fields_[static_cast<std::size_t>(elem - 1)];
  if (analysis_.plate_code == 1) fields.give_section(state);
  if (analysis_.plate_code == 2) fields.give_layers(state, analysis_.thickness_points);
  seeded_random random = numbers_of(analysis_, elem, PLATE_STATE);
  for (double& value : state.STORED_NODAL_FORCES.V) value = random.uniform(-10.0, 10.0);
  for (double& value : state.STORED_DISPLACEMENTS.V) value = random.uniform(-1e-3, 1e-3);
}

// Every third element, in a list with gaps.
void every_plate::set_factors() {
  std::vector<std::int32_t> ids;
  std::vector<float> factors;
  for (int elem = 3; elem <= model_.count(); elem += 3) {
    ids.push_back(10 * elem);
    factors.insert(factors.end(), {0.5F, 0.75F});
  }
  model_.set_stiffness_factors(ids, factors, 2);
}

every_plate::every_plate(const analysis& a, int elements)
    : analysis_(a), model_(describe_reduced(a, elements)), fields_(static_cast<std::size_t>(elements)) {
  model_.set_header(SECOND_ORDER, a.second_order);
  model_.set_plate_material_code(a.plate_code);
  SOLANAELEM.NPT_THICK = a.thickness_points;
  SOLANAELEM.EP_INC_FROM_CUR = a.force_mode;
  if (has_state()) {
    model_.allocate_state();
    for (int elem = 1; elem <= elements; ++elem) give_state(elem);
  }
  if (a.reduced) set_factors();
  if (a.plain_numbers) model_.deallocate_plate_of_elem();
}

int every_plate::period() const { return 2 * static_cast<int>(formulations_of(analysis_).size()); }

void every_plate::enter(int stage) {
  const bool nonlinear = analysis_.plate_code > 0;
  model_.set_header(NONLIN_MATERIAL, nonlinear ? 1.0 : 0.0);
  model_.set_header(ANALYSIS_STATE, nonlinear ? 1.0 : 0.0);
  model_.set_header(STEP_COUNTER, stage);
}

// ------------------------------------------------------------------------------------------------ calls

void every_plate::watch_state(int elem, observed& written) {
  if (!has_state()) return;
  const PLATE_STATE_RECORD& r = model_.state(elem);
  written.watch(r.STORED_NODAL_FORCES);
  written.watch(r.STORED_DISPLACEMENTS);
  for (const auto* field : {&r.SEC_EP_START, &r.SEC_EP_CUR, &r.SEC_EP_INC}) written.watch(*field);
  for (const auto* field :
       {&r.SEC_EPBAR_START, &r.SEC_EPBAR_CUR, &r.SEC_CURV_INC, &r.SEC_AUX, &r.SEC_SIGN_CUR, &r.SEC_SIGN_START}) {
    written.watch(*field);
  }
  written.watch(r.SEC_TANGENT);
  if (!ALLOCATED(r.POINT_STATE)) return;
  for (int point = 1; point <= 4; ++point) {
    const POINT_STATE_RECORD& s = r.POINT_STATE(point);
    for (const auto* field : {&s.SIG, &s.EP_START, &s.EP_CUR, &s.EP_INC}) written.watch(*field);
    written.watch(s.EPBAR_START);
    written.watch(s.EPBAR_CUR);
    written.watch(s.TANGENT);
  }
}

every_plate::kind every_plate::kind_of(int elem) {
  const std::int32_t element = elem, n = model_.extent();
  std::int32_t shape = 0, behav = 0, parts = 0;
  INFO_FINITES(&element, model_.raw(), &n, &shape, &behav, &parts);
  return {shape, behav};
}

std::string every_plate::label(const std::string& what, int elem) {
  const kind k = kind_of(elem);
  return what + " " + tag("kind", k.shape) + " " + tag("behaviour", k.behaviour);
}

void every_plate::call_info(int elem, listener& to) {
  const std::int32_t element = elem, n = model_.extent();
  std::int32_t answer[3] = {-1, -1, -1};
  observed written;
  written.watch(answer, 3);
  tell_repeated(to, "INFO_FINITES", "", written,
                [&] { INFO_FINITES(&element, model_.raw(), &n, &answer[0], &answer[1], &answer[2]); });
}

void every_plate::operate(int op, int elem, int purpose, const std::vector<double>& u, double* exchange, listener& to) {
  seeded_random random = numbers_of(analysis_, elem, purpose);
  std::vector<double> data = data_of(random, op, model_.at(elem)), forces = unwritten(24), matrix = unwritten(24 * 24);
  std::fill_n(exchange, EXCHANGE_LENGTH, 0.0);
  std::copy(u.begin(), u.end(), exchange);
  std::int32_t code = op;
  const std::int32_t element = elem, k = model_.block(elem), n = model_.extent();
  const PLATE_RECORD& plate = model_.plate(elem);
  observed written;
  written.watch(&code, 1);
  written.watch(data);
  written.watch(forces);
  written.watch(matrix);
  written.watch(exchange, EXCHANGE_LENGTH);
  for (const float* value : {&plate.AREA, &plate.WEIGHT, &plate.FACTORED_WEIGHT}) written.watch(value, 1);
  watch_state(elem, written);
  std::string what = label(tag("operation", op), elem);
  if (op == OP_GEOMETRIC_STORED && !has_state()) what += std::string(" ") + ZERO_BY_RULE;
  const auto call = [&] {
    code = op;
    FINITES(&code, &element, &k, model_.raw(), &n, data.data(), forces.data(), matrix.data());
  };
  // A plate that yields goes on from the state that the last call has left.
  if (kind_of(elem).behaviour >= BEHAV_SECTION_PLASTIC) {
    tell(to, "FINITES", what, written, call);
  } else {
    tell_repeated(to, "FINITES", what, written, call);
  }
}

// What a solver does at the end of a step: the current plastic state becomes the start of the next.
void every_plate::converge(int elem, const std::vector<double>& u) {
  if (!has_state()) return;
  PLATE_STATE_RECORD& r = model_.state(elem);
  for (std::size_t i = 0; i < u.size(); ++i) r.STORED_DISPLACEMENTS.V[i] += u[i];
  if (ALLOCATED(r.SEC_EP_CUR)) {
    std::copy_n(r.SEC_EP_CUR.BASE, 48, r.SEC_EP_START.BASE);
    std::copy_n(r.SEC_EPBAR_CUR.BASE, 4, r.SEC_EPBAR_START.BASE);
    std::copy_n(r.SEC_SIGN_CUR.BASE, 4, r.SEC_SIGN_START.BASE);
  }
  if (!ALLOCATED(r.POINT_STATE)) return;
  for (int point = 1; point <= 4; ++point) {
    const POINT_STATE_RECORD& s = r.POINT_STATE(point);
    std::copy_n(s.EP_CUR.BASE, 6 * analysis_.thickness_points, s.EP_START.BASE);
    std::copy_n(s.EPBAR_CUR.BASE, analysis_.thickness_points, s.EPBAR_START.BASE);
  }
}

// The strains themselves, so that a history that never yields is seen.
void every_plate::tell_plastic_strains(int elem, listener& to) {
  const PLATE_STATE_RECORD& r = model_.state(elem);
  std::vector<double> strains = unwritten(4);
  observed written;
  written.watch(strains);
  tell(to, "FINITES", label("plastic_strains", elem), written, [&] {
    for (int point = 1; point <= 4; ++point) {
      strains[static_cast<std::size_t>(point - 1)] =
          ALLOCATED(r.POINT_STATE) ? r.POINT_STATE(point).EPBAR_CUR(1) : r.SEC_EPBAR_CUR(point);
    }
  });
}

void every_plate::call_first_pass(int elem, double* exchange, listener& to) {
  const std::vector<double> u = numbers_of(analysis_, elem, PLATE_STEPS).vector(24, YIELD_STRAIN);
  int purpose = FIRST_OPERATION;
  for (const int op : {OP_STIFFNESS, OP_FORCES, OP_RESULTS}) operate(op, elem, purpose++, u, exchange, to);
}

// Four steps of a plate that yields: elastic, far beyond yielding, back, and on. Each is tried, stored and asked for
// everything that hangs on the state.
void every_plate::call_steps(int elem, double* exchange, listener& to) {
  const std::vector<double> direction = numbers_of(analysis_, elem, PLATE_STEPS).vector(24, 5.0 * YIELD_STRAIN);
  int purpose = FIRST_OPERATION + 4;
  for (const double share : {0.02, 0.8, -0.5, 1.2}) {
    std::vector<double> u = direction;
    for (double& value : u) value *= share;
    for (const int op : {OP_FORCES, OP_FORCES_COMMIT, OP_STIFFNESS, OP_RESULTS, OP_GEOMETRIC_STORED}) {
      operate(op, elem, purpose++, u, exchange, to);
    }
    converge(elem, u);
  }
  if (kind_of(elem).behaviour >= BEHAV_SECTION_PLASTIC) tell_plastic_strains(elem, to);
}

void every_plate::call(int stage, int elem, double* exchange, listener& to) {
  if (stage == 0) {
    call_first_pass(elem, exchange, to);
    return;
  }
  call_info(elem, to);
  if (analysis_.plate_code > 0) call_steps(elem, exchange, to);
  const double magnitude = analysis_.plate_code > 0 ? YIELD_STRAIN : 1e-3;
  const std::vector<double> u = numbers_of(analysis_, elem, PLATE_STATE).vector(24, magnitude);
  int purpose = FIRST_OPERATION + 24;
  for (const int op : OPERATIONS) operate(op, elem, purpose++, u, exchange, to);
}

}  // namespace every_call
