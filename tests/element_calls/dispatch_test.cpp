// dispatch_test.cpp: PLATE_ELEMENT_DISPATCH: which kinds have an engine, the membrane-only flag and the axes it
// returns.
#include "element_calls/plate_element_dispatch.h"

#include <gtest/gtest.h>

#include <climits>
#include <vector>

#include "comparison.h"
#include "element_calls/plate_call.h"
#include "plate_calls.h"

namespace {

using plate_calls::plate_model;

// Every output of one dispatch; all are set to a mark first.
struct dispatched {
  static constexpr double MARK = -77.0;
  std::vector<double> U = std::vector<double>(24, 0.0), F = std::vector<double>(24, MARK),
                      matrix = std::vector<double>(576, MARK), nodes = std::vector<double>(360, MARK),
                      points = std::vector<double>(360, 0.0);
  MATRIX<3, 3> AXES;
  double area = MARK, volume = MARK, weight = MARK, distance = MARK;
  int flag1 = -7, flag2 = -7;

  dispatched() {
    for (double& a : AXES.V) a = MARK;
  }
};

dispatched dispatch(const std::vector<support::point>& nodes, int kind, int op) {
  plate_model model({plate_calls::isotropic(nodes)});
  PLATE_CALL call(model.raw(), op, 1, model.block(1));
  prepare_plate(call);
  call.LOADS(4) = 2.0;
  dispatched d;
  PLATE_ELEMENT_DISPATCH(call.ident, kind, op, call.xyz, call.LOADS, d.U.data(), d.F.data(), call.record->NODE_PTR, 0,
                         d.U.data(), d.matrix.data(), d.nodes.data(), d.points.data(), d.AXES, d.area, d.volume,
                         d.weight, d.flag1, d.flag2, d.distance);
  return d;
}

// Rows: along the first side, in the plane, normal to it.
std::vector<double> axes_by_hand(const std::vector<support::point>& p) {
  support::point a{}, b{};
  for (std::size_t i = 0; i < 3; ++i) {
    a[i] = p[1][i] - p[0][i];
    b[i] = p[2][i] - p[0][i];
  }
  const auto unit = [](support::point v) {
    const double length = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
    for (double& c : v) c /= length;
    return v;
  };
  const auto cross = [](const support::point& s, const support::point& t) {
    return support::point{s[1] * t[2] - s[2] * t[1], s[2] * t[0] - s[0] * t[2], s[0] * t[1] - s[1] * t[0]};
  };
  const support::point e1 = unit(a), e3 = unit(cross(a, b)), e2 = cross(e3, e1);
  std::vector<double> AXES;
  for (std::size_t i = 0; i < 3; ++i) AXES.insert(AXES.end(), {e1[i], e2[i], e3[i]});
  return AXES;
}

}  // namespace

TEST(Dispatch, AnotherKindDoesNothing) {
  for (const int kind : {0, 1, 9, 13, 14, 19, 23, 30, 100, -10, -1, INT_MAX, INT_MIN}) {
    for (const int op : {1, 3, 8}) {
      const dispatched d = dispatch(plate_calls::space_triangle(), kind, op);
      const std::vector<double> F(24, dispatched::MARK), matrix(576, dispatched::MARK);
      EXPECT_EQ(d.F, F) << kind;
      EXPECT_EQ(d.matrix, matrix) << kind;
      EXPECT_EQ(d.area, dispatched::MARK) << kind;
      for (const double a : d.AXES.V) EXPECT_EQ(a, dispatched::MARK) << kind;
    }
  }
}

TEST(Dispatch, ReturnsTheAxesOfTheElement) {
  const std::vector<support::point> nodes = plate_calls::space_triangle();
  for (const int kind : {10, 12}) {
    for (const int op : {1, 2, 3, 33, 4, 5, 7, 71, 8, 6}) {
      const dispatched d = dispatch(nodes, kind, op);
      EXPECT_CLOSE(support::values(d.AXES.data(), 9), axes_by_hand(nodes), 1.0, 10.0) << "operation " << op;
    }
  }
}

TEST(Dispatch, MembraneKindsHaveNoBendingStiffness) {
  const std::vector<support::point> nodes = plate_calls::flat_triangle();
  const dispatched shell = dispatch(nodes, 10, 1), membrane = dispatch(nodes, 12, 1);
  for (std::size_t j = 0; j < 18; ++j) {
    for (std::size_t i = 0; i < 18; ++i) {
      const bool bending = i % 6 >= 2 && i % 6 <= 4;
      const double of_shell = shell.matrix[18 * j + i], of_membrane = membrane.matrix[18 * j + i];
      EXPECT_EQ(of_membrane, bending ? 0.0 : of_shell) << i + 1 << ", " << j + 1;
    }
  }
  EXPECT_GT(shell.matrix[18 * 2 + 2], 0.0);
}

TEST(Dispatch, GivesAreaVolumeAndWeight) {
  const dispatched d = dispatch(plate_calls::flat_triangle(), 10, 8);
  EXPECT_EQ(d.area, 1.5);
  EXPECT_EQ(d.volume, 1.5 * 0.12);
  EXPECT_EQ(d.weight, 1.5 * 0.12 * 2.0);
}
