// every_solid.cpp: the solids and their calls.
#include "every_solid.h"

#include <string>

#include "finites/fields.h"
#include "finites/finites.h"

namespace every_call {

namespace {

using support::point;
using support::seeded_random;
using support::solid_description;

const std::vector<point>& corners(int nodes) {
  static const std::vector<point> tetrahedron = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  static const std::vector<point> wedge = {{0, 0, -1}, {1, 0, -1}, {0, 1, -1}, {0, 0, 1}, {1, 0, 1}, {0, 1, 1}};
  static const std::vector<point> brick = {{-1, -1, -1}, {1, -1, -1}, {1, 1, -1}, {-1, 1, -1},
                                           {-1, -1, 1},  {1, -1, 1},  {1, 1, 1},  {-1, 1, 1}};
  return nodes == 4 ? tetrahedron : nodes == 6 ? wedge : brick;
}

solid_description describe(const analysis& a, int elem) {
  seeded_random random = numbers_of(a, elem, SOLID);
  constexpr int counts[] = {8, 4, 6};
  solid_description d;
  d.nodes = corners(counts[elem % every_solid::PERIOD]);
  const double size = random.log_uniform(0.25, 8.0);
  const support::rotation R = support::random_rotation(random);
  const point shift{random.uniform(-3.0, 3.0), random.uniform(-3.0, 3.0), random.uniform(-3.0, 3.0)};
  for (point& node : d.nodes) {
    for (double& x : node) x = size * (x + random.uniform(-0.12, 0.12));
    node = support::rotate(R, node);
    for (std::size_t i = 0; i < 3; ++i) node[i] += shift[i];
  }
  d.young = random.log_uniform(1e3, 1e6);
  d.poisson = random.uniform(0.0, 0.4);
  d.unit_weight = random.log_uniform(1e-5, 1e-1);
  d.stiff_factor = static_cast<float>(random.uniform(0.3, 1.7));
  return d;
}

std::vector<solid_description> describe_all(const analysis& a, int elements) {
  std::vector<solid_description> all;
  for (int elem = 1; elem <= elements; ++elem) all.push_back(describe(a, elem));
  return all;
}

}  // namespace

void every_solid::set_up_element(int elem) {
  seeded_random random = numbers_of(analysis_, elem, SOLID_STATE);
  if (has_state()) {
    SOLID_NL_RECORD& state = model_.nonlinear(elem);
    for (double& stress : state.GAUSS_STRESS.V) stress = random.uniform(-50.0, 50.0);
  }
  for (int node = 1; node <= model_.nodes(elem); ++node) {
    std::array<double, 6> equations{};
    for (std::size_t j = 0; j < 3; ++j) equations[j] = random.integer(0, 40);
    model_.set_equations(elem, node, equations);
  }
}

every_solid::every_solid(const analysis& a, int elements)
    : analysis_(a), model_(describe_all(a, elements), support::company::joins) {
  model_.set_header(SECOND_ORDER, a.second_order);
  if (has_state()) model_.allocate_nonlinear();
  for (int elem = 1; elem <= elements; ++elem) set_up_element(elem);
}

void every_solid::enter(int stage) {
  model_.set_header(ANALYSIS_STATE, analysis_.plate_code > 0 ? 1.0 : 0.0);
  model_.set_header(STEP_COUNTER, stage);
}

void every_solid::watch_record(int elem, observed& written) {
  const SOLID_RECORD& r = model_.record(elem);
  written.watch(r.U_ELEM);
  written.watch(r.F_ELEM);
  written.watch(r.RES50_NODE);
  written.watch(r.RES50_GAUSS);
  if (has_state()) written.watch(model_.nonlinear(elem).U_NL);
}

// A node count that is not the element's is a failure: kinds with more nodes than a record lists are refused.
void every_solid::operate(int op, int elem, std::int32_t node_count, listener& to) {
  seeded_random random = numbers_of(analysis_, elem, SOLID_CALL_NUMBERS);
  model_.set_displacements(elem, random.vector(model_.order(elem), 1e-3));
  const std::vector<double> G = random.vector(3, 10.0);
  std::vector<double> F = unwritten(24), K = unwritten(24 * 24);
  std::string msg(500, '#');
  const std::int32_t I = model_.entry(elem), n = model_.extent();
  std::int32_t ierr = -1;
  observed written;
  written.watch(F);
  written.watch(K);
  written.watch(&ierr, 1);
  written.watch(msg.data(), 500);
  watch_record(elem, written);
  std::string what = tag("operation", op) + " " + tag("nodes", node_count);
  if (op == 71 && !has_state()) what += std::string(" ") + ZERO_BY_RULE;
  tell_repeated(to, "FINITES_SOLID_3D", what, written, [&] {
    FINITES_SOLID_3D(&op, &elem, &I, model_.raw(), &n, G.data(), F.data(), &node_count, K.data(), &ierr, msg.data());
  });
}

void every_solid::call_results(int elem, listener& to) {
  const std::int32_t nodes = model_.nodes(elem), I = model_.entry(elem), spare = 0, n = model_.extent();
  const std::vector<double> U = numbers_of(analysis_, elem, SOLID_DISPLACEMENTS).vector(3 * nodes, 1e-3);
  std::vector<double> RES = unwritten(50 * nodes), S = unwritten(6 * nodes), FG = unwritten(3 * nodes);
  std::string msg(500, '#');
  std::int32_t ierr = -1;
  observed written;
  for (const std::vector<double>* values : {&RES, &S, &FG}) written.watch(*values);
  written.watch(&ierr, 1);
  written.watch(msg.data(), 500);
  watch_record(elem, written);
  tell_repeated(to, "GET_ELEM3D", tag("nodes", nodes), written, [&] {
    GET_ELEM3D(&elem, &I, &spare, model_.raw(), &n, &nodes, RES.data(), S.data(), U.data(), FG.data(), &ierr,
               msg.data());
  });
}

void every_solid::call_axes(int elem, listener& to) {
  std::vector<double> axes = unwritten(9);
  std::int32_t nodes = -1;
  const std::int32_t n = model_.extent();
  observed written;
  written.watch(axes);
  written.watch(&nodes, 1);
  tell_repeated(to, "TRFA_3DSOLID", tag("nodes", model_.nodes(elem)), written,
                [&] { TRFA_3DSOLID(&elem, &nodes, model_.raw(), &n, axes.data()); });
}

// Forces to the element's own joints, and displacements from a solution.
void every_solid::call_joints(int elem, listener& to) {
  seeded_random random = numbers_of(analysis_, elem, SOLID_JOINTS);
  const std::int32_t n = model_.extent(), load = 1 + elem % support::solid_model::LOAD_CASE_COUNT;
  const std::int32_t I = model_.entry(elem), equations = 36;
  std::int32_t nodes = model_.nodes(elem);
  const std::vector<double> F = random.vector(3 * nodes, 10.0), UG = random.vector(equations, 1e-2);
  std::vector<std::int32_t> joints;
  observed added, picked;
  for (int node = 1; node <= nodes; ++node) {
    joints.push_back(node == 2 ? 0 : model_.joint(elem, node));
    if (node != 2) added.watch(model_.raw() + model_.joint_results(joints.back(), load) - 1, 8);
  }
  tell(to, "RAMSR_SOLID", tag("nodes", nodes), added,
       [&] { RAMSR_SOLID(&load, &n, model_.raw(), &nodes, joints.data(), F.data()); });
  picked.watch(&nodes, 1);
  watch_record(elem, picked);
  tell_repeated(to, "GET_NONLIN_UGLO_SOLIDELEM_RAM", tag("nodes", nodes), picked,
                [&] { GET_NONLIN_UGLO_SOLIDELEM_RAM(&elem, &nodes, &I, model_.raw(), &n, UG.data(), &equations); });
}

void every_solid::call(int elem, listener& to) {
  for (const int op : {1, 2, 3, 33, 5, 7, 71, 41}) operate(op, elem, model_.nodes(elem), to);
  constexpr std::int32_t refused[] = {10, 15, 18, 20, 27, 5};
  if (elem % 5 == 0) operate(1, elem, refused[elem / 5 % 6], to);
  call_results(elem, to);
  call_axes(elem, to);
  call_joints(elem, to);
}

}  // namespace every_call
