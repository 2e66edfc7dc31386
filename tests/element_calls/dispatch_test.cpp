// dispatch_test.cpp: PLATE_ELEMENT_DISPATCH: which kinds have an engine, the membrane-only flag and the axes it
// returns.
#include "shells/engines/plate_element_dispatch.h"

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
  PLATE_CALL call(PLATEELEM, model.raw(), op, 1, model.block(1));
  prepare_plate(call);
  call.LOADS(4) = 2.0;
  dispatched d;
  PLATE_ELEMENT_DISPATCH(PLATEELEM, call.ident, kind, op, call.xyz, call.LOADS, d.U.data(), d.F.data(),
                         call.record->NODE_PTR, 0, d.U.data(), d.matrix.data(), d.nodes.data(), d.points.data(), d.AXES,
                         d.area, d.volume, d.weight, d.flag1, d.flag2, d.distance, NO_PLATE_STATE, kind < 20 ? 18 : 24);
  return d;
}

// The kinds of three and of four nodes.
struct family {
  std::vector<support::point> nodes;
  std::vector<int> kinds;
};

std::vector<family> families() {
  return {{plate_calls::space_triangle(), {10, 11, 12}}, {plate_calls::space_quadrilateral(), {20, 21, 22}}};
}

// Rows: along the first side, in the plane of it and the last node, normal to it.
std::vector<double> axes_by_hand(const std::vector<support::point>& p) {
  support::point a{}, b{};
  for (std::size_t i = 0; i < 3; ++i) {
    a[i] = p[1][i] - p[0][i];
    b[i] = p.back()[i] - p[0][i];
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
  for (const family& f : families()) {
    for (const int kind : f.kinds) {
      for (const int op : {1, 2, 3, 33, 4, 5, 7, 71, 8, 6}) {
        const dispatched d = dispatch(f.nodes, kind, op);
        EXPECT_CLOSE(support::values(d.AXES.data(), 9), axes_by_hand(f.nodes), 1.0, 10.0) << kind << " " << op;
      }
    }
  }
}

TEST(Dispatch, EveryKindHasItsEngine) {
  // Places of the stiffness that an engine writes; transverse shear makes the thick kinds other than the thin ones.
  for (const family& f : families()) {
    const std::size_t entries = f.nodes.size() == 3 ? 324 : 576;
    std::vector<std::vector<double>> all;
    for (const int kind : f.kinds) {
      const dispatched d = dispatch(f.nodes, kind, 1);
      for (std::size_t i = 0; i < 576; ++i)
        EXPECT_EQ(d.matrix[i] == dispatched::MARK, i >= entries) << kind << " " << i;
      for (const std::vector<double>& other : all) EXPECT_NE(d.matrix, other) << kind;
      all.push_back(d.matrix);
    }
  }
}

TEST(Dispatch, MembraneKindsHaveNoBendingStiffness) {
  // In the plane z = 0 with the first side along x the element's axes are the global ones.
  const std::vector<support::point> square = {{0, 0, 0}, {2, 0, 0}, {2, 1, 0}, {0, 1, 0}};
  for (const family& f : {family{plate_calls::flat_triangle(), {10, 12}}, family{square, {20, 22}}}) {
    const dispatched shell = dispatch(f.nodes, f.kinds[0], 1), membrane = dispatch(f.nodes, f.kinds[1], 1);
    const std::size_t n = 6 * f.nodes.size();
    for (std::size_t j = 0; j < n; ++j) {
      for (std::size_t i = 0; i < n; ++i) {
        const bool bending = i % 6 >= 2 && i % 6 <= 4;
        const double of_shell = shell.matrix[n * j + i], of_membrane = membrane.matrix[n * j + i];
        EXPECT_EQ(of_membrane, bending ? 0.0 : of_shell) << f.kinds[1] << ": " << i + 1 << ", " << j + 1;
      }
    }
    EXPECT_GT(shell.matrix[n * 2 + 2], 0.0);
  }
}

TEST(Dispatch, GivesAreaVolumeAndWeight) {
  const dispatched d = dispatch(plate_calls::flat_triangle(), 10, 8);
  EXPECT_EQ(d.area, 1.5);
  EXPECT_EQ(d.volume, 1.5 * 0.12);
  EXPECT_EQ(d.weight, 1.5 * 0.12 * 2.0);
}
