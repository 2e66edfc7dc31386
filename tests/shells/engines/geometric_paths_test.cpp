// geometric_paths_test.cpp: the geometric stiffness of operations 7 and 71 is not turned where all is finite. Compared
// with the products AXES^T b AXES of the blocks, place by place, also for NaN and infinities.
#include <algorithm>

#include "broken_values.h"
#include "element_call.h"
#include "element_subject.h"
#include "finites/records.h"
#include "shells/common/translations.h"
#include "shells/engines/plate_engine.h"
#include "shells/engines/quad_thick.h"
#include "shells/engines/quad_thin.h"
#include "shells/engines/tri_thick.h"
#include "shells/engines/tri_thin.h"

using support::seeded_random;

namespace {

// The kernel in element axes, turned by the products of the blocks.
template <class ELEMENT>
std::vector<double> turned_kernel(const element_call& call, int op, const double* points) {
  double xyz[12] = {};
  double* at = xyz;
  for (const support::point& node : call.element.nodes) at = std::copy(node.begin(), node.end(), at);
  ELEMENT e(PLATEELEM, call.LOADS, call.kind == 12 || call.kind == 22 ? 1 : 0);
  e.set_geometry(xyz, SIDE_COEFFICIENTS::LEFT_OUT);
  set_section(e, NO_PLATE_STATE);
  std::vector<double> ul(24), KG(ELEMENT::PACKED), K(ELEMENT::PACKED);
  groups_to_local(e.axes(), ELEMENT::GROUPS, call.U.data(), ul.data());
  e.geometric_stiffness(op, ul.data(), points, -1.0, KG.data());
  add_translations<ELEMENT::NODES>(KG.data(), K.data());
  return support::turned_by_blocks(e.axes().data(), K, ELEMENT::DOFS);
}

std::vector<double> turned_kernel(const element_call& call, int op, const double* points) {
  const bool thick = call.kind == 11 || call.kind == 21;
  if (call.element.nodes.size() == 3) {
    return thick ? turned_kernel<TRI_THICK>(call, op, points) : turned_kernel<TRI_THIN>(call, op, points);
  }
  return thick ? turned_kernel<QUAD_THICK>(call, op, points) : turned_kernel<QUAD_THIN>(call, op, points);
}

// One element with displacements, stored forces and a temperature.
struct geometric_case {
  support::plate_description d;
  std::vector<double> U, points;

  geometric_case(seeded_random& random, const element_subject& s)
      : d(random_element(random, s)), U(random.vector(24, 1.0)), points(random.vector(360, 10.0)) {}

  void expect_turned(const element_subject& s) const {
    for (const int op : {OP_GEOMETRIC, OP_GEOMETRIC_STORED}) {
      SCOPED_TRACE(::testing::Message() << s.name << ", operation " << op);
      element_call call(d);
      call.U = U;
      call.points.set_input(points);
      call.run(op);
      support::expect_same_places(call.matrix_values(), turned_kernel(call, op, points.data()));
    }
  }
};

}  // namespace

TEST(GeometricPaths, OfAnOrdinaryElementAreTheTurnedBlocks) {
  seeded_random random(631);
  for (const element_subject& s : subjects()) {
    for (int trial = 0; trial < 10; ++trial) geometric_case(random, s).expect_turned(s);
  }
}

TEST(GeometricPaths, CarryBrokenDisplacementsForcesAndNodes) {
  seeded_random random(632);
  for (const element_subject& s : subjects()) {
    for (const double broken : support::BROKEN) {
      for (std::size_t i = 0; i < static_cast<std::size_t>(6 * s.nodes); ++i) {
        SCOPED_TRACE(::testing::Message() << "displacement " << i << " is " << broken);
        geometric_case c(random, s);
        c.U[i] = broken;
        c.expect_turned(s);
      }
      for (std::size_t i = 0; i < 3; ++i) {
        SCOPED_TRACE(::testing::Message() << "force " << i << " is " << broken);
        geometric_case c(random, s);
        c.points[36 + i] = broken;
        c.expect_turned(s);
      }
      for (std::size_t node = 0; node < 3; ++node) {
        SCOPED_TRACE(::testing::Message() << "node " << node << " is " << broken);
        geometric_case c(random, s);
        c.d.nodes[node][node] = broken;
        c.expect_turned(s);
      }
    }
  }
}

// Nodes 1, 2 and the last one on a line have no normal; a sliver has axes that are not quite at right angles.
TEST(GeometricPaths, OfPoorAxesAreTheTurnedBlocks) {
  seeded_random random(633);
  for (const element_subject& s : subjects()) {
    for (const double height : {0.0, 1e-6, 1e-3}) {
      SCOPED_TRACE(::testing::Message() << "height " << height);
      geometric_case c(random, s);
      c.d.nodes[0] = {0.3, 0.4, 0.7};
      c.d.nodes[1] = {1.4, 1.1, -0.2};
      c.d.nodes.back() = {0.3 + 0.55, 0.4 + 0.35, 0.7 - 0.45 + height};
      c.expect_turned(s);
    }
  }
}
