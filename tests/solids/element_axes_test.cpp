// element_axes_test.cpp: places and displacements in the axes of an element, and the routines of the solver on elements
// that have no record.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>
#include <vector>

#include "comparison.h"
#include "finites/fields.h"
#include "finites/finites.h"
#include "guarded_buffer.h"
#include "reference_solid.h"
#include "solid_cases.h"
#include "solids/solid_data.h"

namespace {

using support::guarded_buffer;
using support::seeded_random;
using support::solid_description;
using support::solid_model;

MATRIX<3, 3> random_axes(seeded_random& random) {
  const support::rotation R = support::random_rotation(random);
  MATRIX<3, 3> AX;
  for (int a = 1; a <= 3; ++a) {
    for (int i = 1; i <= 3; ++i) AX(a, i) = R[static_cast<std::size_t>(a - 1)][static_cast<std::size_t>(i - 1)];
  }
  return AX;
}

std::vector<double> axes_of(solid_model& model, std::int32_t elem, std::int32_t& NN) {
  const std::int32_t n = model.extent();
  guarded_buffer AXES(9);
  TRFA_3DSOLID(&elem, &NN, model.raw(), &n, AXES.data());
  EXPECT_EQ(AXES.changed(), support::range(1, 9));
  return support::values(AXES.data(), 9);
}

}  // namespace

TEST(SolidElementAxes, TheFirstNodeIsTheOrigin) {
  seeded_random random(6361);
  for (const int nodes : {4, 6, 8, 9}) {
    const MATRIX<3, 3> AX = random_axes(random);
    SOLID_VECTORS XYZ, local;
    for (double& x : XYZ.V) x = random.uniform(-5, 5);
    std::fill_n(local.data(), 81, -55.0);
    SOLID_XYZ_TO_LOCAL(AX, nodes, XYZ, local);
    for (int i = 1; i <= 3; ++i) EXPECT_EQ(local(i, 1), 0.0) << i;
    for (int k = 1; k <= 27; ++k) {
      for (int a = 1; a <= 3; ++a) {
        reference::real expected = 0;
        for (int i = 1; i <= 3; ++i) expected += reference::real(AX(a, i)) * (XYZ(i, k) - XYZ(i, 1));
        EXPECT_CLOSE(local(a, k), k <= nodes ? static_cast<double>(expected) : -55.0, k <= nodes ? 10.0 : 0.0, 10);
      }
    }
  }
}

TEST(SolidElementAxes, DisplacementsTurnWithoutAShift) {
  seeded_random random(6362);
  const MATRIX<3, 3> AX = random_axes(random);
  SOLID_VECTORS u, local;
  for (double& value : u.V) value = random.uniform(-5, 5);
  std::fill_n(local.data(), 81, -55.0);
  SOLID_VEC_TO_LOCAL(AX, 6, u.data(), local);
  for (int k = 1; k <= 27; ++k) {
    for (int a = 1; a <= 3; ++a) {
      reference::real expected = 0;
      for (int i = 1; i <= 3; ++i) expected += reference::real(AX(a, i)) * u(i, k);
      EXPECT_CLOSE(local(a, k), k <= 6 ? static_cast<double>(expected) : -55.0, k <= 6 ? 10.0 : 0.0, 10);
    }
  }
}

// x along the edge from node 1, z normal to the face: the corners of a quadratic element lie at every second node,
// those of a linear one do not.
TEST(SolidElementAxes, FollowTheNodeCountOfTheRecord) {
  solid_description d;
  d.nodes = {{0, 0, 0}, {0, 2, 0}, {3, 0, 0}, {0, 0, 4}, {0, 5, 0}, {1, 1, 1}, {0, 0, 6}, {7, 7, 7}, {8, 8, 8}};
  solid_model model({d});
  using axes = std::vector<double>;                               // x, y, z by rows, packed by columns
  const axes first_second_third = {0, 1, 0, 1, 0, 0, 0, 0, -1};   // x = Y, y = X, z = -Z
  const axes first_second_fourth = {0, 0, 1, 1, 0, 0, 0, 1, 0};   // x = Y, y = Z, z = X
  const axes first_third_fifth = {1, 0, 0, 0, 1, 0, 0, 0, 1};     // x = X, y = Y, z = Z
  const axes first_third_seventh = {1, 0, 0, 0, 0, -1, 0, 1, 0};  // x = X, y = Z, z = -Y
  const auto expect = [&](std::int32_t count, const axes& expected) {
    model.record().NNODE = count;
    std::int32_t NN = -7;
    EXPECT_EQ(axes_of(model, 1, NN), expected) << count << " nodes";
    EXPECT_EQ(NN, count);
  };
  for (const std::int32_t count : {4, 6}) expect(count, first_second_third);
  expect(8, first_second_fourth);
  for (const std::int32_t count : {10, 15, 18}) expect(count, first_third_fifth);
  for (const std::int32_t count : {20, 27}) expect(count, first_third_seventh);
  for (const std::int32_t count : {0, 2, -8}) expect(count, axes(9, 0.0));
}

TEST(SolidElementAxes, OfAnElementWithoutARecordAreZero) {
  solid_model model({solid_cases::box(1, 1, 1)});
  for (const std::int32_t elem : {0, -1, 2, 2147483647, -2147483647 - 1}) {
    std::int32_t NN = -7;
    EXPECT_EQ(axes_of(model, elem, NN), std::vector<double>(9, 0.0)) << elem;
    EXPECT_EQ(NN, -7) << elem;
  }
}

// A position that no record has: below the first, behind the last.
TEST(SolidElementAxes, OfAPositionWithoutARecordAreZero) {
  solid_model model({solid_cases::box(1, 1, 1)});
  for (const std::int32_t position : {0, -1, 4, 1000000000, -2147483647 - 1}) {
    std::vector<std::int32_t> positions = {position};
    SOLANAELEM.SOLID_POS = REFER_TO(positions.data(), positions.size());
    std::int32_t NN = -7;
    EXPECT_EQ(axes_of(model, 1, NN), std::vector<double>(9, 0.0)) << position;
    EXPECT_EQ(NN, -7) << position;
    guarded_buffer F(27), K(576);
    const double G[3] = {1, 2, 3};
    EXPECT_EQ(model.call(1, 1, 8, G, F.data(), K.data()).ierr, 1228) << position;
    EXPECT_EQ(K.changed(), std::vector<int>{}) << position;
  }
}

TEST(SolidAnswer, OfAnElementWithoutARecordIsClearedAndReported) {
  solid_model model({solid_cases::box(1, 1, 1)});
  const SOLID_RECORD before = model.record();
  guarded_buffer RES(400), S(48), FG(24);
  const std::vector<double> U(24, 1e-3);
  const std::int32_t elem = 5, off = model.entry(1), spare = 0, n = model.extent(), NN = 8;
  std::int32_t ierr = -1;
  std::string msg(500, '~');
  GET_ELEM3D(&elem, &off, &spare, model.raw(), &n, &NN, RES.data(), S.data(), U.data(), FG.data(), &ierr, msg.data());
  EXPECT_EQ(ierr, 1228);
  EXPECT_NE(msg.find(" 5:"), std::string::npos) << msg;
  EXPECT_EQ(support::values(RES.data(), 400), std::vector<double>(400, 0.0));
  EXPECT_EQ(support::values(S.data(), 48), std::vector<double>(48, 0.0));
  EXPECT_EQ(FG.changed(), std::vector<int>{});
  EXPECT_EQ(std::memcmp(&before, &model.record(), sizeof before), 0);
}

TEST(SolidPicking, ForAnElementWithoutARecordDoesNothing) {
  solid_model model({solid_cases::box(1, 1, 1)});
  const SOLID_RECORD before = model.record();
  const std::vector<double> UG(40, 2.5);
  for (const std::int32_t elem : {0, -1, 2, 2147483647}) {
    const std::int32_t off = model.entry(1), n = model.extent(), NUG = 40;
    std::int32_t NN = -7;
    GET_NONLIN_UGLO_SOLIDELEM_RAM(&elem, &NN, &off, model.raw(), &n, UG.data(), &NUG);
    EXPECT_EQ(NN, -7) << elem;
    EXPECT_EQ(std::memcmp(&before, &model.record(), sizeof before), 0) << elem;
  }
}

// The joint results and what lies before them start as zeros, so that a share of a joint that there is not would show.
TEST(SolidReactions, OfNegativeJointsGoNowhere) {
  solid_model model({solid_cases::box(1, 1, 1), solid_cases::box(1, 1, 1)});
  std::fill_n(model.raw(), model.entry(1) - 1, 0.0);
  model.set_header(LOAD_CASES, 1.0);
  model.set_header(JOINT_RESULTS, 200.0);
  const std::vector<double> before = model.storage();
  const std::int32_t load = 1, n = model.extent(), NN = 6, ID[6] = {0, -1, -2, -3, -7, -20};
  const std::vector<double> F(18, 3.0);
  RAMSR_SOLID(&load, &n, model.raw(), &NN, ID, F.data());
  EXPECT_EQ(std::memcmp(before.data(), model.storage().data(), before.size() * sizeof(double)), 0);
}
