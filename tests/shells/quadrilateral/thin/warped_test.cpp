// warped_test.cpp: four nodes that are not in one plane: the operations that no displacement enters, or that answer in
// element axes, give what the projection on the plane of nodes 1, 2, 4 gives.
#include <cmath>

#include "comparison.h"
#include "element_call.h"
#include "element_subject.h"

using support::seeded_random;

namespace {

// The element with node 3 out of its plane by a tenth of the size.
support::plate_description lifted(const support::plate_description& d) {
  const shell_reference::matrix3 axes = shell_reference::axes_of(d.nodes);
  support::plate_description out = d;
  for (std::size_t i = 0; i < 3; ++i) out.nodes[2][i] += 0.1 * static_cast<double>(axes(2, static_cast<int>(i)));
  return out;
}

// The same call on both: prepare sets it up, and its answer is F or the matrix.
template <class PREPARE>
void expect_the_same(const support::plate_description& d, int op, double scale, const PREPARE& prepare) {
  std::vector<double> answer[2];
  for (const int warped : {0, 1}) {
    element_call call(warped == 0 ? d : lifted(d));
    prepare(call);
    call.run(op);
    answer[warped] = op == 71 ? call.matrix_values() : call.force_values();
  }
  EXPECT_GT(support::max_norm(answer[0]), 1e-3 * scale) << op;
  EXPECT_CLOSE(answer[1], answer[0], scale, 400) << op;
}

}  // namespace

TEST(WarpedQuadrilateral, TakesForcesOfPointsAndOfStatesAsItsProjectionDoes) {
  seeded_random random(462);
  for (const element_subject& s : subjects()) {
    if (s.nodes != 4) continue;
    const support::plate_description d = random_element(random, s);
    const shell_reference::reference_element e(d);
    const std::vector<double> stored = random.vector(360, 1.0), u = random.vector(24, 1.0);
    // Off the plane by another amount: the height of a point plays no part. The origin of the local coordinates, the
    // centroid, moves with the node, and both frames with it.
    const support::point P = e.in_space(0.0, 0.0, 0.07);
    expect_the_same(d, 10, 3.0, [&P](element_call& call) {
      call.set(LOAD_POINT, P);
      call.set(LOAD_FORCE, {1.0, -2.0, 3.0});
    });
    expect_the_same(d, 71, 1.0, [&stored](element_call& call) { call.points.set_input(stored); });
    expect_the_same(d, 33, shell_reference::largest(e.stiffness()), [&u](element_call& call) { call.U = u; });
  }
}
