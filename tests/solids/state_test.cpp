// state_test.cpp: the routines that a solver calls around solids: GET_ELEM3D, TRFA_3DSOLID, RAMSR_SOLID and
// GET_NONLIN_UGLO_SOLIDELEM_RAM.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "comparison.h"
#include "finites/finites.h"
#include "guarded_buffer.h"
#include "reference_solid.h"
#include "solid_cases.h"
#include "solids/solid_data.h"

namespace {

using reference::body_of;
using solid_cases::random_solid;
using support::guarded_buffer;
using support::seeded_random;
using support::solid_answer;
using support::solid_description;
using support::solid_model;

constexpr int NODE_COUNTS[] = {4, 6, 8};

int points_of(int nodes) { return static_cast<int>(reference::rule(reference::kind_of(nodes)).size()); }

std::vector<double> column_of(const MATRIX<3, 27>& M, int nodes) { return std::vector<double>(M.V, M.V + 3 * nodes); }

void expect_zero_beyond(const MATRIX<3, 27>& M, int nodes) {
  for (int at = 3 * nodes; at < 81; ++at) EXPECT_EQ(M.V[at], 0.0) << at;
}

// What UG is read by: a number of its own at each place.
std::vector<double> numbered(int count) {
  std::vector<double> UG;
  for (int i = 1; i <= count; ++i) UG.push_back(1000.0 + i);
  return UG;
}

std::int32_t pick(solid_model& model, int elem, std::int32_t nodes_in, const std::vector<double>& UG) {
  const std::int32_t IELEM = elem, IOFF = model.entry(elem), n = model.extent();
  const std::int32_t NUG = static_cast<std::int32_t>(UG.size());
  std::int32_t NN = nodes_in;
  GET_NONLIN_UGLO_SOLIDELEM_RAM(&IELEM, &NN, &IOFF, model.raw(), &n, UG.data(), &NUG);
  return NN;
}

}  // namespace

TEST(SolidAnswer, ChainsForcesAndResults) {
  seeded_random random(6311);
  for (const int nodes : NODE_COUNTS) {
    const solid_description d = random_solid(random, nodes);
    solid_model model({random_solid(random, 8), d});
    const std::vector<double> u = random.vector(3 * nodes, 1e-3);
    const std::vector<double> F = model.forces(3, 2, u), local = model.forces(33, 2, u);
    ASSERT_EQ(model.results(2, u).ierr, 0);
    SOLID_RECORD alone = model.record(2);
    // Columns that operation 5 does not fill are handed on as they stand.
    for (int p = points_of(nodes) + 1; p <= 27; ++p) {
      for (int word = 1; word <= 50; ++word) alone.RES50_GAUSS(word, p) = 100.0 * p + word;
    }
    model.record(2) = alone;
    model.set_displacements(2, {});

    const solid_answer answer = model.answer(2, u);
    EXPECT_EQ(answer.status.ierr, 0);
    EXPECT_EQ(answer.status.msg, std::string(500, '~'));
    EXPECT_EQ(answer.FG, F) << nodes << " nodes";
    for (int k = 1; k <= nodes; ++k) {
      const double* RES = &answer.RES[50 * static_cast<std::size_t>(k - 1)];
      for (int word = 1; word <= 35; ++word) EXPECT_EQ(RES[word - 1], alone.RES50_NODE(word, k)) << word;
      for (int i = 0; i < 3; ++i) EXPECT_EQ(RES[35 + i], local[static_cast<std::size_t>(3 * (k - 1) + i)]);
      for (int word = 39; word <= 50; ++word) EXPECT_EQ(RES[word - 1], 0.0) << word;
      for (int j = 1; j <= 6; ++j) {
        EXPECT_EQ(answer.S[static_cast<std::size_t>(6 * (k - 1) + j - 1)], alone.RES50_GAUSS(9 + j, k)) << k;
      }
    }
    // The record: displacements, forces in element axes, and no nodal forces in its own results.
    EXPECT_EQ(column_of(model.record(2).U_ELEM, nodes), u);
    EXPECT_EQ(column_of(model.record(2).F_ELEM, nodes), local);
    expect_zero_beyond(model.record(2).U_ELEM, nodes);
    expect_zero_beyond(model.record(2).F_ELEM, nodes);
    for (int k = 1; k <= nodes; ++k) {
      for (int word = 36; word <= 38; ++word) EXPECT_EQ(model.record(2).RES50_NODE(word, k), 0.0);
    }
  }
}

// A tetrahedron has one point: the stresses of the others come from columns 2 to 4, whatever these hold.
TEST(SolidAnswer, StressesOfATetrahedronBeyondItsPointAreWhatTheRecordHolds) {
  solid_model model({solid_cases::corner_tetrahedron(2.0)});
  for (int j = 1; j <= 6; ++j) model.record().RES50_GAUSS(9 + j, 3) = 70.0 + j;
  const std::vector<double> u = solid_cases::linear_field(model.at(1), {}, {{{1e-3, 0, 0}, {0, 0, 0}, {0, 0, 0}}});
  const solid_answer answer = model.answer(1, u);
  EXPECT_NE(answer.S[0], 0.0);
  EXPECT_TRUE(std::isnan(answer.S[6]));
  for (int j = 1; j <= 6; ++j) EXPECT_EQ(answer.S[static_cast<std::size_t>(12 + j - 1)], 70.0 + j);
}

TEST(SolidAnswer, SetsTheNonlinearDisplacementsWhereTheyAreAllocated) {
  seeded_random random(6312);
  for (const int nodes : NODE_COUNTS) {
    solid_model model({random_solid(random, nodes), random_solid(random, 8)});
    model.allocate_nonlinear();
    for (double& value : model.nonlinear(1).U_NL.V) value = -55.0;
    for (double& value : model.nonlinear(1).GAUSS_STRESS.V) value = -66.0;
    const std::vector<double> u = random.vector(3 * nodes, 1e-3);
    EXPECT_EQ(model.answer(1, u).status.ierr, 0);
    for (int at = 0; at < 81; ++at) {
      const double expected = at < 3 * nodes ? u[static_cast<std::size_t>(at)] : -55.0;
      EXPECT_EQ(model.nonlinear(1).U_NL.V[at], expected) << at;
    }
    for (const double value : model.nonlinear(1).GAUSS_STRESS.V) EXPECT_EQ(value, -66.0);
    for (const double value : model.nonlinear(2).U_NL.V) EXPECT_EQ(value, 0.0);
  }
}

TEST(SolidAnswer, WritesItsOutputsAlone) {
  seeded_random random(6313);
  for (const int nodes : NODE_COUNTS) {
    solid_model model({random_solid(random, nodes)});
    for (double& value : model.record().RES50_GAUSS.V) value = 1.0;
    guarded_buffer RES(50 * nodes), S(6 * nodes), FG(3 * nodes), U(3 * nodes);
    U.set_input(random.vector(3 * nodes, 1e-3));
    const std::vector<double> before(model.storage().begin(), model.storage().end());
    const std::int32_t one = 1, off = model.entry(1), spare = 0, n = model.extent(), NN = nodes;
    std::int32_t ierr = -1;
    std::string msg(520, '~');
    GET_ELEM3D(&one, &off, &spare, model.raw(), &n, &NN, RES.data(), S.data(), U.data(), FG.data(), &ierr, msg.data());
    EXPECT_EQ(ierr, 0);
    EXPECT_EQ(RES.changed(), support::range(1, 50 * nodes));
    EXPECT_EQ(S.changed(), support::range(1, 6 * nodes));
    EXPECT_EQ(FG.changed(), support::range(1, 3 * nodes));
    EXPECT_EQ(U.changed(), std::vector<int>{});
    EXPECT_EQ(msg, std::string(520, '~'));
    EXPECT_EQ(std::memcmp(before.data(), model.storage().data(), before.size() * sizeof(double)), 0);
  }
}

TEST(SolidAxesOfElement, AreThoseOfItsNodes) {
  seeded_random random(6314);
  for (const int nodes : NODE_COUNTS) {
    const solid_description d = random_solid(random, nodes);
    solid_model model({random_solid(random, 4), d});
    const std::int32_t elem = 2, n = model.extent();
    std::int32_t NN = -7;
    guarded_buffer AXES(9);
    TRFA_3DSOLID(&elem, &NN, model.raw(), &n, AXES.data());
    EXPECT_EQ(NN, nodes);
    EXPECT_EQ(AXES.changed(), support::range(1, 9));
    EXPECT_CLOSE(support::values(AXES.data(), 9), reference::rounded(reference::axes(body_of(d))), 1.0, 30);
  }
}

TEST(SolidReactions, AddForcesToTheJointsOfALoadCase) {
  seeded_random random(6315);
  for (const int nodes : NODE_COUNTS) {
    solid_model model({random_solid(random, 8), random_solid(random, nodes)});
    const std::vector<double> F = random.vector(3 * nodes, 10.0);
    std::vector<std::int32_t> ID;
    for (int k = 1; k <= nodes; ++k) ID.push_back(k == 2 ? 0 : k == 3 ? -5 : model.joint(2, k));
    const std::int32_t load = 2, n = model.extent(), NN = nodes;
    for (int k = 1; k <= nodes; ++k) {
      for (int i = 0; i < 8; ++i) model.A()(model.joint_results(model.joint(2, k), load) + i) = 100.0 * k + i;
    }
    std::vector<double> expected = model.storage();
    for (int k = 1; k <= nodes; ++k) {
      if (k == 2 || k == 3) continue;  // 0 and less skip the node
      // The second, third and fourth of the eight places behind b = ((joint - 1) cases + load - 1) 8 + base.
      const int b = ((model.joint(2, k) - 1) * 3 + load - 1) * 8 + model.A().INTEGER(215);
      for (int i = 1; i <= 3; ++i) {
        expected[static_cast<std::size_t>(b + 1 + i - 1)] += F[static_cast<std::size_t>(3 * (k - 1) + i - 1)];
      }
    }
    RAMSR_SOLID(&load, &n, model.raw(), &NN, ID.data(), F.data());
    EXPECT_EQ(std::memcmp(expected.data(), model.storage().data(), expected.size() * sizeof(double)), 0) << nodes;
  }
}

TEST(SolidReactions, AJointThatComesTwiceGetsBoth) {
  solid_model model({solid_cases::box(1, 1, 1)});
  const std::int32_t load = 3, n = model.extent(), NN = 2, ID[2] = {4, 4};
  const double F[6] = {1, 2, 3, 10, 20, 30};
  RAMSR_SOLID(&load, &n, model.raw(), &NN, ID, F);
  const std::int32_t first = model.joint_results(4, 3);
  EXPECT_EQ(model.A()(first + 2), 11.0);
  EXPECT_EQ(model.A()(first + 3), 22.0);
  EXPECT_EQ(model.A()(first + 4), 33.0);
}

TEST(SolidReactions, OfNoNodesDoNothing) {
  solid_model model({solid_cases::box(1, 1, 1)});
  const std::vector<double> before = model.storage();
  const std::int32_t load = 1, n = model.extent(), ID[1] = {1};
  const double F[3] = {1, 2, 3};
  for (const std::int32_t NN : {0, -1, -2147483647 - 1}) RAMSR_SOLID(&load, &n, model.raw(), &NN, ID, F);
  EXPECT_EQ(std::memcmp(before.data(), model.storage().data(), before.size() * sizeof(double)), 0);
}

// The value of equation e lies three places further in the solution.
TEST(SolidPicking, OfEquations) {
  for (const int nodes : NODE_COUNTS) {
    solid_description d = nodes == 8 ? solid_cases::box(1, 1, 1) : solid_cases::corner_tetrahedron(1);
    d.nodes.resize(static_cast<std::size_t>(nodes));
    solid_model model({solid_cases::box(1, 1, 1), d});
    std::vector<double> expected(81, 0.0);
    for (int k = 1; k <= nodes; ++k) {
      // Every third degree of freedom is held, another way each time.
      std::array<double, 6> e{};
      for (int j = 0; j < 3; ++j) {
        const int equation = (k + j) % 3 == 0 ? -(k % 2) : 40 - 3 * k + j;
        e[static_cast<std::size_t>(j)] = equation;
        if (equation > 0) expected[static_cast<std::size_t>(3 * (k - 1) + j)] = 1000.0 + equation + 3;
      }
      model.set_equations(2, k, e);
    }
    EXPECT_EQ(pick(model, 2, -7, numbered(60)), nodes);
    const double* u = model.record(2).U_ELEM.V;
    EXPECT_EQ(std::vector<double>(u, u + 81), expected) << nodes << " nodes";
    EXPECT_TRUE(std::isnan(model.record(1).U_ELEM.V[0]));
  }
}

// Places 4 to 6 of a node lie on the first three of the next; what the next has itself comes later and stays.
TEST(SolidPicking, PlacesFourToSixLandInTheNextNode) {
  solid_model model({solid_cases::box(1, 1, 1)});
  model.set_equations(1, 1, {1, 2, 3, 11, 12, 13});
  model.set_equations(1, 2, {0, 5, -1, 0, 0, 0});
  model.set_equations(1, 8, {21, 22, 23, 24, 25, 26});  // the last node: there is room for one more
  EXPECT_EQ(pick(model, 1, 0, numbered(40)), 8);
  const double* u = model.record().U_ELEM.V;
  EXPECT_EQ(std::vector<double>(u, u + 6), (std::vector<double>{1004, 1005, 1006, 1014, 1008, 1016}));
  EXPECT_EQ(std::vector<double>(u + 21, u + 24), (std::vector<double>{1024, 1025, 1026}));
  for (int at = 24; at < 81; ++at) EXPECT_EQ(u[at], 0.0) << "a node beyond the last " << at;
}

TEST(SolidPicking, AnEquationBeyondTheSolutionIsSkipped) {
  solid_model model({solid_cases::box(1, 1, 1)});
  model.set_equations(1, 1, {7, 8, 10, 0, 0, 0});
  model.set_equations(1, 2, {1e9, 2147483647.0, 1e300, 0, 0, 0});
  pick(model, 1, 0, numbered(10));
  const double* u = model.record().U_ELEM.V;
  EXPECT_EQ(u[0], 1010.0);  // 7 + 3 is the last place
  for (int at = 1; at < 81; ++at) EXPECT_EQ(u[at], 0.0) << at;
}

TEST(SolidPicking, EquationNumbersAreTruncated) {
  solid_model model({solid_cases::box(1, 1, 1)});
  model.set_equations(1, 1, {2.9, 0.9, -0.5, 0, 0, 0});
  pick(model, 1, 0, numbered(10));
  EXPECT_EQ(model.record().U_ELEM.V[0], 1005.0);
  EXPECT_EQ(model.record().U_ELEM.V[1], 0.0);
  EXPECT_EQ(model.record().U_ELEM.V[2], 0.0);
}

TEST(SolidPicking, AnotherElementCodeClearsAlone) {
  for (const double code : {4599.0, 4601.0, 0.0, -4600.0}) {
    solid_model model({solid_cases::box(1, 1, 1)});
    model.set_equations(1, 1, {1, 2, 3, 0, 0, 0});
    model.A()(model.entry(1)) = code;
    EXPECT_EQ(pick(model, 1, 3, numbered(10)), 3) << code;
    for (const double u : model.record().U_ELEM.V) EXPECT_EQ(u, 0.0) << code;
  }
}

TEST(SolidPicking, LeavesTheRestOfTheRecord) {
  solid_model model({solid_cases::box(1, 1, 1)});
  model.set_equations(1, 1, {1, 2, 3, 0, 0, 0});
  SOLID_RECORD before = model.record();
  pick(model, 1, 0, numbered(10));
  before.U_ELEM = model.record().U_ELEM;
  EXPECT_EQ(std::memcmp(&before, &model.record(), sizeof before), 0);
}

// The list of a record has nine places, whatever its node count says.
TEST(SolidPicking, ANodeCountBeyondTheListReadsNineNodes) {
  solid_model model({solid_cases::box(1, 1, 1)});
  for (int k = 1; k <= 8; ++k) model.set_equations(1, k, {1.0 * k, 0, 0, 0, 0, 0});
  model.record().NODE_OFF(9) = model.node_block(1, 8);
  for (const std::int32_t count : {9, 20, 27, 100, 2147483647}) {
    model.record().NNODE = count;
    EXPECT_EQ(pick(model, 1, 0, numbered(20)), count);
    EXPECT_EQ(model.record().U_ELEM(1, 8), 1011.0);
    EXPECT_EQ(model.record().U_ELEM(1, 9), 1011.0);
    for (int k = 10; k <= 27; ++k) EXPECT_EQ(model.record().U_ELEM(1, k), 0.0) << count << " " << k;
  }
  for (const std::int32_t count : {0, -1, -2147483647 - 1}) {
    model.record().NNODE = count;
    EXPECT_EQ(pick(model, 1, 7, numbered(20)), count);
    for (const double u : model.record().U_ELEM.V) EXPECT_EQ(u, 0.0) << count;
  }
}
