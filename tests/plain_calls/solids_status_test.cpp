// solids_status_test.cpp: what a solid as a plain call refuses; nothing is written then, and nothing is allocated ever.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <functional>
#include <limits>

#include "allocation_counter.h"
#include "solids_support.h"

namespace {

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr double ENDLESS = std::numeric_limits<double>::infinity();

// Room for every answer, of bits that no call writes.
union answer {
  double reals[600];
  finites_solid_measures measures;
  finites_solid_results results;
};

struct inputs {
  double u[24], load[3], stress[8][6], change, pressure;
};

inputs some_inputs() {
  inputs in{};
  for (int i = 0; i < 24; ++i) in.u[i] = 1e-3 * i * i;
  for (double(&s)[6] : in.stress) std::fill_n(s, 6, 2.0);
  in.load[1] = in.change = in.pressure = 3.0;
  return in;
}

struct routine {
  const char* name;
  std::function<finites_status(const finites_solid*, const inputs&, answer*)> call;
  // The first input besides the solid; null for none.
  std::function<double*(inputs&)> input;
};

double* reals(answer* to) { return to == nullptr ? nullptr : to->reals; }

const std::vector<routine>& routines() {
  using S = const finites_solid*;
  using I = const inputs&;
  using A = answer*;
  static const std::vector<routine> all = {
      {"stiffness", [](S s, I, A to) { return finites_solid_stiffness(s, reals(to)); }, nullptr},
      {"mass", [](S s, I, A to) { return finites_solid_mass(s, reals(to)); }, nullptr},
      {"geometric", [](S s, I in, A to) { return finites_solid_geometric(s, in.u, reals(to)); },
       [](inputs& in) { return &in.u[11]; }},
      {"geometric_of_stresses",
       [](S s, I in, A to) { return finites_solid_geometric_of_stresses(s, in.stress, reals(to)); },
       [](inputs& in) { return &in.stress[0][5]; }},
      {"forces", [](S s, I in, A to) { return finites_solid_forces(s, in.u, reals(to)); },
       [](inputs& in) { return &in.u[11]; }},
      {"body_load", [](S s, I in, A to) { return finites_solid_body_load(s, in.load, reals(to)); },
       [](inputs& in) { return &in.load[2]; }},
      {"temperature_load", [](S s, I in, A to) { return finites_solid_temperature_load(s, in.change, reals(to)); },
       [](inputs& in) { return &in.change; }},
      {"face_load of a traction",
       [](S s, I in, A to) { return finites_solid_face_load(s, 1, in.load, in.pressure, reals(to)); },
       [](inputs& in) { return &in.load[2]; }},
      {"face_load of a pressure",
       [](S s, I in, A to) { return finites_solid_face_load(s, 1, in.load, in.pressure, reals(to)); },
       [](inputs& in) { return &in.pressure; }},
      {"measure", [](S s, I, A to) { return finites_solid_measure(s, to == nullptr ? nullptr : &to->measures); },
       nullptr},
      {"result",
       [](S s, I in, A to) { return finites_solid_result(s, in.u, in.change, to == nullptr ? nullptr : &to->results); },
       [](inputs& in) { return &in.u[11]; }},
      {"result with a temperature",
       [](S s, I in, A to) { return finites_solid_result(s, in.u, in.change, to == nullptr ? nullptr : &to->results); },
       [](inputs& in) { return &in.change; }},
  };
  return all;
}

void expect_refused(const routine& r, const finites_solid* solid, const inputs& in, finites_status status) {
  answer to;
  std::memset(&to, 0x5a, sizeof to);
  answer before;
  std::memcpy(&before, &to, sizeof to);
  EXPECT_EQ(r.call(solid, in, &to), status) << r.name;
  EXPECT_EQ(std::memcmp(&before, &to, sizeof to), 0) << r.name << " wrote";
}

void expect_all_refuse(const finites_solid& solid, finites_status status) {
  for (const routine& r : routines()) expect_refused(r, &solid, some_inputs(), status);
}

finites_solid with(int nodes, const std::function<void(finites_solid&)>& change) {
  finites_solid solid = plain_solids::block(nodes, 2, 3, 5);
  change(solid);
  return solid;
}

}  // namespace

TEST(SolidsStatus, WhatIsRightIsAccepted) {
  for (const int nodes : plain_solids::NODE_COUNTS) {
    const finites_solid solid = plain_solids::block(nodes, 2, 3, 5);
    for (const routine& r : routines()) {
      answer to;
      EXPECT_EQ(r.call(&solid, some_inputs(), &to), FINITES_OK) << r.name;
    }
  }
}

TEST(SolidsStatus, InitialValues) {
  finites_solid solid;
  std::memset(&solid, 0x5a, sizeof solid);
  finites_solid_init(&solid);
  EXPECT_EQ(solid.nodes, 8);
  EXPECT_EQ(solid.stiffness_factor, 1.0);
  EXPECT_EQ(solid.E, 0.0);
  EXPECT_EQ(solid.density, 0.0);
  EXPECT_EQ(solid.xyz[7][2], 0.0);
  finites_solid_init(nullptr);
}

TEST(SolidsStatus, NullPointers) {
  const finites_solid solid = plain_solids::block(8, 2, 3, 5);
  for (const routine& r : routines()) {
    expect_refused(r, nullptr, some_inputs(), FINITES_NULL);
    EXPECT_EQ(r.call(&solid, some_inputs(), nullptr), FINITES_NULL) << r.name;
  }
  double F[24 * 24];
  finites_solid_results results;
  EXPECT_EQ(finites_solid_geometric(&solid, nullptr, F), FINITES_NULL);
  EXPECT_EQ(finites_solid_geometric_of_stresses(&solid, nullptr, F), FINITES_NULL);
  EXPECT_EQ(finites_solid_forces(&solid, nullptr, F), FINITES_NULL);
  EXPECT_EQ(finites_solid_body_load(&solid, nullptr, F), FINITES_NULL);
  EXPECT_EQ(finites_solid_result(&solid, nullptr, 0.0, &results), FINITES_NULL);
}

TEST(SolidsStatus, NodeCounts) {
  for (const int nodes : {-1, 0, 1, 3, 5, 7, 9, 10, 15, 20, 27, 2147483647}) {
    expect_all_refuse(with(8, [&](finites_solid& s) { s.nodes = nodes; }), FINITES_NODES);
  }
}

TEST(SolidsStatus, NumbersThatAreNone) {
  for (const double bad : {NOT_A_NUMBER, ENDLESS, -ENDLESS}) {
    for (const auto field : {&finites_solid::E, &finites_solid::nu, &finites_solid::density, &finites_solid::expansion,
                             &finites_solid::stiffness_factor}) {
      expect_all_refuse(with(6, [&](finites_solid& s) { s.*field = bad; }), FINITES_NAN);
    }
    for (const int nodes : plain_solids::NODE_COUNTS) {
      expect_all_refuse(with(nodes, [&](finites_solid& s) { s.xyz[nodes - 1][2] = bad; }), FINITES_NAN);
    }
    for (const routine& r : routines()) {
      inputs in = some_inputs();
      if (r.input == nullptr) continue;
      *r.input(in) = bad;
      const finites_solid solid = plain_solids::block(4, 2, 3, 5);
      expect_refused(r, &solid, in, FINITES_NAN);
    }
  }
}

TEST(SolidsStatus, NumbersTooLarge) {
  for (const double large : {1.1e30, -1.1e30, 1e300}) {
    for (const auto field : {&finites_solid::E, &finites_solid::nu, &finites_solid::density, &finites_solid::expansion,
                             &finites_solid::stiffness_factor}) {
      expect_all_refuse(with(6, [&](finites_solid& s) { s.*field = large; }), FINITES_RANGE);
    }
    expect_all_refuse(with(8, [&](finites_solid& s) { s.xyz[0][0] = large; }), FINITES_RANGE);
    for (const routine& r : routines()) {
      inputs in = some_inputs();
      if (r.input == nullptr) continue;
      *r.input(in) = large;
      const finites_solid solid = plain_solids::block(4, 2, 3, 5);
      expect_refused(r, &solid, in, FINITES_RANGE);
    }
  }
}

// Nodes and values beyond those of the kind are not read.
TEST(SolidsStatus, WhatIsNotReadMayBeAnything) {
  finites_solid solid = plain_solids::block(4, 2, 3, 5);
  inputs in = some_inputs();
  for (int k = 4; k < 8; ++k) solid.xyz[k][1] = NOT_A_NUMBER;
  for (int i = 12; i < 24; ++i) in.u[i] = NOT_A_NUMBER;
  for (int p = 1; p < 8; ++p) in.stress[p][0] = NOT_A_NUMBER;
  for (const routine& r : routines()) {
    answer to;
    EXPECT_EQ(r.call(&solid, in, &to), FINITES_OK) << r.name;
  }
}

TEST(SolidsStatus, Constants) {
  const auto refuse = [](double finites_solid::*field, double value, finites_status status) {
    expect_all_refuse(with(8, [&](finites_solid& s) { s.*field = value; }), status);
  };
  refuse(&finites_solid::E, 0.0, FINITES_MODULUS);
  refuse(&finites_solid::E, -1.0, FINITES_MODULUS);
  refuse(&finites_solid::nu, 0.5, FINITES_POISSON);
  refuse(&finites_solid::nu, -1.0, FINITES_POISSON);
  refuse(&finites_solid::nu, 0.7, FINITES_POISSON);
  refuse(&finites_solid::density, -1e-9, FINITES_DENSITY);
  refuse(&finites_solid::stiffness_factor, -0.1, FINITES_FACTOR);
  refuse(&finites_solid::stiffness_factor, 0.0, FINITES_FACTOR);  // as in a struct without finites_solid_init
}

TEST(SolidsStatus, Geometry) {
  for (const int nodes : plain_solids::NODE_COUNTS) {
    expect_all_refuse(with(nodes, [](finites_solid& s) { std::copy_n(s.xyz[0], 3, s.xyz[1]); }), FINITES_COINCIDENT);
    // In a plane.
    expect_all_refuse(with(nodes,
                           [&](finites_solid& s) {
                             for (int k = 0; k < nodes; ++k) {
                               s.xyz[k][0] = k;
                               s.xyz[k][1] = k * k;
                               s.xyz[k][2] = 3 * k + 2 * k * k;
                             }
                           }),
                      FINITES_DEGENERATE);
    // Mirrored: the nodes run the wrong way round.
    expect_all_refuse(with(nodes,
                           [&](finites_solid& s) {
                             for (int k = 0; k < nodes; ++k) s.xyz[k][0] = -s.xyz[k][0];
                           }),
                      FINITES_DEGENERATE);
  }
  // Two nodes of a face in each other's place.
  expect_all_refuse(with(8, [](finites_solid& s) { std::swap(s.xyz[4], s.xyz[5]); }), FINITES_DEGENERATE);
  // A corner pushed in beyond the diagonal: det J is above 0 at most places, not at that node.
  expect_all_refuse(with(8, [](finites_solid& s) { s.xyz[6][0] = 0.5, s.xyz[6][1] = 0.5, s.xyz[6][2] = 1.0; }),
                    FINITES_DEGENERATE);
}

// The library's limit on det J is absolute.
TEST(SolidsStatus, Sizes) {
  const auto edge = [](double size) {
    finites_solid solid = plain_solids::block(4, size, size, size);
    double K[144];
    return finites_solid_stiffness(&solid, K);
  };
  EXPECT_EQ(edge(3e-7), FINITES_OK);
  EXPECT_EQ(edge(2e-7), FINITES_DEGENERATE);
  EXPECT_EQ(edge(1e30), FINITES_OK);
  expect_all_refuse(plain_solids::block(8, 1e30, 1e30, 1e-31), FINITES_RANGE);
}

TEST(SolidsStatus, FacesThatAreNone) {
  for (const int nodes : plain_solids::NODE_COUNTS) {
    const finites_solid solid = plain_solids::block(nodes, 2, 3, 5);
    for (const int face : {0, -1, plain_solids::faces(solid) + 1, 2147483647}) {
      const routine r{"face_load",
                      [&](const finites_solid* s, const inputs& in, answer* to) {
                        return finites_solid_face_load(s, face, in.load, 1.0, to->reals);
                      },
                      nullptr};
      expect_refused(r, &solid, some_inputs(), FINITES_BAD_CODE);
    }
  }
}

// The thinnest and the largest element, its modulus and displacements at the limit, nu next to 0.5.
TEST(SolidsStatus, TheEdgesOfTheRangeHaveAnswers) {
  for (const int nodes : plain_solids::NODE_COUNTS) {
    finites_solid solid = plain_solids::block(nodes, 1e-30, 1e30, 1e30);
    solid.E = solid.density = solid.expansion = solid.stiffness_factor = 1e30;
    solid.nu = 0.49999999999999994;
    inputs in = some_inputs();
    for (int i = 0; i < 24; ++i) in.u[i] = i % 4 < 2 ? 1e30 : -1e30;
    for (double(&s)[6] : in.stress) std::fill_n(s, 6, 1e30);
    in.load[0] = in.pressure = in.change = 1e30;
    for (const routine& r : routines()) {
      answer to;
      EXPECT_EQ(r.call(&solid, in, &to), FINITES_OK) << r.name << ", " << nodes;
    }
  }
}

TEST(SolidsStatus, NothingIsAllocated) {
  if (!support::allocation_counter::available()) GTEST_SKIP() << "the sanitizer has the heap";
  const inputs in = some_inputs();
  for (const int nodes : plain_solids::NODE_COUNTS) {
    const finites_solid solid = plain_solids::block(nodes, 2, 3, 5);
    for (const routine& r : routines()) {
      answer to;
      const support::allocation_counter counter;
      const finites_status status = r.call(&solid, in, &to);
      EXPECT_EQ(counter.count(), 0) << r.name;
      EXPECT_EQ(status, FINITES_OK) << r.name;
    }
  }
}
