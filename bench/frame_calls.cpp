// frame_calls.cpp: batches of different members, each called as a solver calls it.
#include "frame_calls.h"

#include <benchmark/benchmark.h>

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "batches.h"
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

// A rotation for each group of three freedoms, as a solver builds it.
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
  char text[500];
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

void member_calls(benchmark::State& state, const path& p) {
  frame_model model(describe(p.family, p.set));
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

// The small routines that a solver calls too.
void removal_coefficients(benchmark::State& state) {
  support::seeded_random random(SEED);
  frame_model model({member_description{}});
  model.set_remove_ratio(2.0F);
  const double least = 1e-3;
  double coefficient = 0.0;
  for (auto _ : state) {
    for (std::int32_t i = 0; i < BATCH; ++i) {
      const std::int32_t step = -1 - i % 12;
      GET_COEF_REMOVE(&step, &least, &coefficient);
      benchmark::DoNotOptimize(coefficient);
    }
  }
  state.counters["calls"] = BATCH;
}

}  // namespace

void register_frames() {
  for (const path& p : paths()) {
    benchmark::RegisterBenchmark(p.name, [&p](benchmark::State& state) { member_calls(state, p); });
  }
  benchmark::RegisterBenchmark("get_coef_remove", removal_coefficients);
}

}  // namespace bench
