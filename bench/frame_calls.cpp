// frame_calls.cpp: batches of different members, each called as a solver calls it.
#include "frame_calls.h"

#include <benchmark/benchmark.h>

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "batches.h"
#include "finites/fields.h"
#include "finites/finites.h"
#include "frame_model.h"
#include "random_shapes.h"

namespace bench {

namespace {

using support::frame_model;
using support::member_description;
using support::member_family;

constexpr unsigned SEED = 30;
constexpr std::array<int, 6> ELASTIC_KINDS{};
constexpr std::array<float, 6> STIFFNESSES{10.0F, 20.0F, 30.0F, 4.0F, 5.0F, 6.0F};

// Hinges: the surface of Orbison in all three forces.
constexpr std::int32_t SMOOTH_SURFACE = 2, ALL_FORCES = 7;

// What a path sets on every member of its batch.
using member_setting = std::function<void(support::seeded_random&, member_description&)>;

std::vector<member_description> describe(member_family family, const member_setting& set) {
  support::seeded_random random(SEED);
  std::vector<member_description> members;
  for (int i = 0; i < BATCH; ++i) {
    member_description member;
    member.family = family;
    member.length = random.uniform(2.0, 6.0);
    member.area *= random.uniform(0.5, 2.0);
    member.i1 *= random.uniform(0.5, 2.0);
    member.i2 *= random.uniform(0.5, 2.0);
    member.axial_force = random.uniform(-10.0, 10.0);
    member.node2 = {random.uniform(2.0, 3.0), random.uniform(-0.5, 0.5), random.uniform(-0.5, 0.5)};
    if (family == member_family::spring) member.property = support::spring_property(ELASTIC_KINDS, STIFFNESSES);
    if (family == member_family::link) member.property = support::link_property(ELASTIC_KINDS, STIFFNESSES, 0, 0, 0);
    set(random, member);
    members.push_back(member);
  }
  return members;
}

// A rotation for each group of three degrees of freedom, as a solver builds it.
std::vector<double> member_rotation() {
  support::seeded_random random(SEED);
  const support::rotation R = support::random_rotation(random);
  std::vector<double> T(144, 0.0);
  for (std::size_t group = 0; group < 4; ++group) {
    for (std::size_t i = 0; i < 3; ++i) {
      for (std::size_t j = 0; j < 3; ++j) T[12 * (3 * group + j) + 3 * group + i] = R.at(i).at(j);
    }
  }
  return T;
}

void no_setting(support::seeded_random& /*random*/, member_description& /*member*/) {}

void semi_rigid(support::seeded_random& random, member_description& member) {
  member.fixity_y = {random.uniform(0.2, 0.9), random.uniform(0.2, 0.9)};
  member.fixity_z = {random.uniform(0.2, 0.9), random.uniform(0.2, 0.9)};
}

void released(support::seeded_random& /*random*/, member_description& member) {
  member.fixity_z = {0.0, 1.0};
  member.release = {0, 2, 0, 1};
}

// Forces below the capacities, another mixture at each end of each member.
void yielding(support::seeded_random& random, member_description& member, int end2_state) {
  HINGE_RECORD& h = member.hinge;
  h.HINGE_MODEL = h.END1_STATE = 1;
  h.END2_STATE = end2_state;
  h.CURVE_KIND = SMOOTH_SURFACE;
  h.FORCE_SET = ALL_FORCES;
  h.CAP_P = random.uniform(90.0, 110.0);
  h.CAP_MY = random.uniform(18.0, 22.0);
  h.CAP_MZ = random.uniform(27.0, 33.0);
}

void one_hinge(support::seeded_random& random, member_description& member) { yielding(random, member, 0); }
void two_hinges(support::seeded_random& random, member_description& member) { yielding(random, member, 1); }

struct path {
  const char* name;
  member_family family;
  double kind;  // of analysis
  member_setting set;
  std::function<void(const frame_model&, int elem, double* K, double* KG)> call;
};

void beam_of_the_step(const frame_model& m, int elem, double* K, double* KG) { m.beam_call(0, elem, K, KG); }

void hanging_cable(const frame_model& m, int elem, double* K, double* KG) {
  std::int32_t status = 0;
  char text[MESSAGE_LENGTH];
  m.cable_call(2, elem, 0, K, KG, &status, text);
}

const std::vector<path>& paths() {
  static const std::vector<path> all = {
      {"kstifb_rotated", member_family::beam, 0, no_setting,
       [](const frame_model& m, int elem, double* K, double* KG) { m.beam_call(2, elem, K, KG); }},
      {"kstifb_local", member_family::beam, 0, no_setting,
       [](const frame_model& m, int elem, double* K, double* KG) { m.beam_call(1, elem, K, KG); }},
      {"kstifb_step_geometric", member_family::beam, 1, no_setting, beam_of_the_step},
      {"kstifb_step_semi_rigid", member_family::beam, 1, semi_rigid, beam_of_the_step},
      {"kstifb_released", member_family::beam, 0, released, beam_of_the_step},
      {"kstifb_one_hinge", member_family::beam, 1, one_hinge, beam_of_the_step},
      {"kstifb_two_hinges", member_family::beam, 1, two_hinges, beam_of_the_step},
      {"kstifb_mass", member_family::beam, 0, no_setting,
       [](const frame_model& m, int elem, double* K, double* /*KG*/) { m.beam_mass_call(elem, K); }},
      {"kstift", member_family::truss, 0, no_setting,
       [](const frame_model& m, int elem, double* K, double* KG) { m.truss_call(2, elem, K, KG); }},
      {"kstift_step_geometric", member_family::truss, 1, no_setting,
       [](const frame_model& m, int elem, double* K, double* KG) { m.truss_call(0, elem, K, KG); }},
      {"kstift_mass", member_family::truss, 0, no_setting,
       [](const frame_model& m, int elem, double* K, double* /*KG*/) { m.truss_mass_call(elem, K); }},
      {"kstift_catenary", member_family::cable, 0, no_setting, hanging_cable},
      {"kstif_link", member_family::link, 0, no_setting,
       [](const frame_model& m, int elem, double* K, double* KG) { m.link_call(2, elem, K, KG); }},
      {"kstif_spr", member_family::spring, 0,
       [](support::seeded_random& /*random*/, member_description& member) { member.local_axes = 1.0; },
       [](const frame_model& m, int elem, double* K, double* KG) { m.spring_call(2, elem, K, KG); }},
  };
  return all;
}

// End forces by position, and the places of the entries of the members: read by hinges beside the records of a member.
std::vector<MEMBER_FORCES_RECORD> give_forces(frame_model& model) {
  support::seeded_random random(SEED);
  std::vector<MEMBER_FORCES_RECORD> forces(static_cast<std::size_t>(2 * BATCH + 1));
  for (MEMBER_FORCES_RECORD& record : forces) {
    for (double& force : record.F_END.V) force = random.uniform(-15.0, 15.0);
  }
  SOLANAELEM.MEMBER_FORCES = REFER_TO(forces.data(), forces.size());
  model.A()(ENTRY_START) = model.entry(1);
  model.A()(ENTRY_STRIDE) = model.entry(2) - model.entry(1);
  for (int elem = 1; elem <= BATCH; ++elem) model.A()(model.entry(elem)) = 1.0;
  return forces;
}

void member_calls(benchmark::State& state, const path& p) {
  frame_model model(describe(p.family, p.set));
  const std::vector<MEMBER_FORCES_RECORD> forces = give_forces(model);
  model.set_members_yield(model.hinge(1).HINGE_MODEL);
  model.set_kind(p.kind);
  model.set_remove_ratio(2.0F);
  model.set_rotation(member_rotation());
  double K[144];
  double KG[144];
  for (auto _ : state) {
    for (int elem = 1; elem <= BATCH; ++elem) {
      p.call(model, elem, K, KG);
      benchmark::DoNotOptimize(K);
      benchmark::ClobberMemory();
    }
  }
  state.counters["calls"] = BATCH;
}

// The small routines that a solver calls too: `i` counts the calls of a batch.
struct small_routine {
  const char* name;
  std::function<void(std::int32_t i, double* K)> call;
};

// A release changes the matrix: each call starts from a full one.
void condense(std::int32_t i, double* K) {
  for (int at = 0; at < 144; ++at) K[at] = at % 13 == 0 ? 4.0 : 0.25;
  const std::int32_t freedom = 1 + i % 12, order = 12;
  RELEASE_DOF(&freedom, K, &order);
}

void drop_mass(std::int32_t i, double* M) {
  for (int d = 0; d < 12; ++d) M[13 * d] = 1.0;
  const std::int32_t freedom = 1 + i % 12;
  RELEASE_DOF_MAS(&freedom, M);
}

void geometric_matrix(std::int32_t i, double* KG, double fixity) {
  const double P = 1.0 + i, L = 4.0, E = 2.1e5, I = 3e-4;
  const std::int32_t semi = fixity < 1.0 ? 1 : 0, none = 0;
  KSTIFB_GEOM(&P, &L, &E, &E, &I, &I, &semi, &semi, &none, &none, &fixity, &fixity, &fixity, &fixity, KG);
}

void soften(std::int32_t /*i*/, double* K) {
  const std::int32_t elem = 1;
  KSTIFT_PLAST(&elem, K);
}

void count_steps(std::int32_t i, double* K) {
  const double least = 1.0 / (2.0 + i);
  std::int32_t steps = 0;
  GET_N_CONVERG_TOM(&least, K, &steps);
}

void coefficient(std::int32_t i, double* K) {
  const std::int32_t step = -1 - i % 12;
  const double least = 1e-3;
  GET_COEF_REMOVE(&step, &least, K);
}

void spring_coefficient(std::int32_t i, double* K) {
  const std::int32_t step = -1 - i % 12, spring = 1, kind = 8;
  const double least = 1e-3;
  GET_COEF_REMOVE_SPRING(&step, &least, &spring, &kind, K);
}

const std::vector<small_routine>& small_routines() {
  static const std::vector<small_routine> all = {
      {"release_dof", condense},
      {"release_dof_mas", drop_mass},
      {"kstifb_geom", [](std::int32_t i, double* KG) { geometric_matrix(i, KG, 1.0); }},
      {"kstifb_geom_semi_rigid", [](std::int32_t i, double* KG) { geometric_matrix(i, KG, 0.5); }},
      {"kstift_plast", soften},
      {"get_n_converg_tom", count_steps},
      {"get_coef_remove", coefficient},
      {"get_coef_remove_spring", spring_coefficient},
  };
  return all;
}

void small_calls(benchmark::State& state, const small_routine& routine) {
  double K[144] = {};
  member_description truss;
  truss.hinge.HINGE_MODEL = truss.hinge.END1_STATE = truss.hinge.AXIAL_RELEASE = 1;
  frame_model model({truss});
  model.set_remove_ratio(2.0F);
  model.set_nonlinear_springs({{3.0, 4.0}});
  for (auto _ : state) {
    for (std::int32_t i = 0; i < BATCH; ++i) {
      routine.call(i, K);
      benchmark::DoNotOptimize(K);
      benchmark::ClobberMemory();
    }
  }
  state.counters["calls"] = BATCH;
}

}  // namespace

void register_frames() {
  for (const path& p : paths()) {
    benchmark::RegisterBenchmark(p.name, [&p](benchmark::State& state) { member_calls(state, p); });
  }
  for (const small_routine& routine : small_routines()) {
    benchmark::RegisterBenchmark(routine.name, [&routine](benchmark::State& state) { small_calls(state, routine); });
  }
}

}  // namespace bench
