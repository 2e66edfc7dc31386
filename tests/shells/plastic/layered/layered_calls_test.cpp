// layered_calls_test.cpp: the element routines called by themselves, after a call of FINITES has left the geometry:
// what they take as arguments and what they find in the store of the element.
#include <cstring>
#include <type_traits>

#include "comparison.h"
#include "guarded_buffer.h"
#include "layered_element_reference.h"
#include "shells/plastic/layered_plates.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/triangle/geometry.h"

#include "element_stores.h"

using shell_reference::column;
using shell_reference::column_of;
using shell_reference::largest;
using shell_reference::listed;
using shell_reference::matrix;
using support::guarded_buffer;
using support::plate_description;
using support::seeded_random;

namespace {

constexpr int POINTS = 4, LAYERED = 3;

std::vector<double> with_drilling(const layered_element_reference& r, const std::vector<double>& turns) {
  column u = column::Zero(r.s.order());
  for (int n = 0; n < r.s.nodes; ++n) u(r.e.drill(n)) = turns[static_cast<std::size_t>(n)];
  return listed(u);
}

// Local displacements with a state of strain inside the surface.
std::vector<double> elastic_displacements(const layered_element_reference& r, seeded_random& random) {
  const double strain = 1e-3 * r.d.yield_stress / r.d.young * r.d.thickness;
  return listed(r.e.to_local(column_of(random_displacements(random, r.d, strain))));
}

std::vector<double> written(guarded_buffer& buffer, int count) {
  EXPECT_EQ(buffer.changed(), support::range(1, count));
  return std::vector<double>(buffer.data(), buffer.data() + count);
}

}  // namespace

TEST(LayeredCalls, QuadrilateralsTakeThePackedDrillingStiffnessOfTheCaller) {
  seeded_random random(811);
  const std::vector<double> turns{1.0, 10.0, 100.0, 1000.0}, stored{3.0, 5.0, 7.0, 11.0};
  const double kd[] = {1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0, 8.0, 9.0, 10.0};
  // Rows (1, 2, 4, 7), (2, 3, 5, 8), (4, 5, 6, 9), (7, 8, 9, 10).
  const std::vector<double> moments{7421.0, 8532.0, 9654.0, 10987.0};
  for (const layered_subject& s : SUBJECTS) {
    if (s.nodes != 4) continue;
    const plate_description d = random_layered(random, s, 0.2);
    layered_model model(d, 5);
    take_element_of_last_call(s.nodes);
    const layered_element_reference r(s, d);
    const std::vector<double> u = with_drilling(r, turns), us = with_drilling(r, stored);
    guarded_buffer F(24);
    QUAD_LAYERED_FORCES(PLATEELEM, state_of_element(1), QUAD, QUAD_U, LAYERED, POINTS, u.data(), us.data(), F.data(),
                        kd, 33, s.theory);
    EXPECT_EQ(written(F, 24), with_drilling(r, moments)) << s.name << ": the stored turns have no share";
    for (const int op : {3, 5}) {  // all but 33 answer in global axes
      guarded_buffer turned(24);
      QUAD_LAYERED_FORCES(PLATEELEM, state_of_element(1), QUAD, QUAD_U, LAYERED, POINTS, u.data(), us.data(),
                          turned.data(), kd, op, s.theory);
      EXPECT_CLOSE(written(turned, 24), listed(r.e.to_global(column_of(with_drilling(r, moments)))), 1e4, 16) << s.name;
    }
  }
}

TEST(LayeredCalls, TrianglesFillTheDrillingStiffnessAndTurnWithTheirStore) {
  seeded_random random(812);
  const std::vector<double> turns{1.0, 10.0, 100.0}, others{3e6, 5e6, 7e6};
  for (const layered_subject& s : SUBJECTS) {
    if (s.nodes != 3) continue;
    const plate_description d = random_layered(random, s, 0.2);
    layered_model model(d, 5);
    take_element_of_last_call(s.nodes);
    const layered_element_reference r(s, d);
    const matrix K = r.drilling();
    std::copy(turns.begin(), turns.end(), TRI_U.DRILL.V);
    const std::vector<double> u = with_drilling(r, others);
    const column expected = K * column_of(with_drilling(r, turns));
    for (const int op : {33, 3, 5}) {
      guarded_buffer F(18), kd(6);
      TRI_LAYERED_FORCES(PLATEELEM, state_of_element(1), TRI, TRI_U, LAYERED, POINTS, u.data(), u.data(), F.data(),
                         kd.data(), op, s.theory);
      const std::vector<double> f = listed(op == 33 ? expected : r.e.to_global(expected));
      EXPECT_CLOSE(written(F, 18), f, 100.0 * largest(K), 16) << s.name << op;
      std::vector<double> packed;
      for (int j = 0; j < 3; ++j) {
        for (int i = 0; i <= j; ++i) packed.push_back(static_cast<double>(K(r.e.drill(i), r.e.drill(j))));
      }
      EXPECT_CLOSE(written(kd, 6), packed, largest(K), 8) << s.name;
    }
  }
}

TEST(LayeredCalls, ForcesStartFromZeroWhateverStandsThere) {
  seeded_random random(813);
  for (const layered_subject& s : SUBJECTS) {
    const plate_description d = random_layered(random, s, 0.2);
    layered_model model(d, 5);
    take_element_of_last_call(s.nodes);
    const layered_element_reference r(s, d);
    const std::vector<double> u = elastic_displacements(r, random), none(u.size(), 0.0);
    const column expected = (r.elastic_stiffness() - r.drilling()) * column_of(u);
    guarded_buffer F(s.order()), kd(6);
    const double no_drilling[10] = {};
    TRI_U.DRILL = {};
    if (s.nodes == 4) {
      QUAD_LAYERED_FORCES(PLATEELEM, state_of_element(1), QUAD, QUAD_U, LAYERED, POINTS, u.data(), none.data(),
                          F.data(), no_drilling, 33, s.theory);
    } else {
      TRI_LAYERED_FORCES(PLATEELEM, state_of_element(1), TRI, TRI_U, LAYERED, POINTS, u.data(), none.data(), F.data(),
                         kd.data(), 33, s.theory);
    }
    EXPECT_CLOSE(written(F, s.order()), listed(expected), largest(r.elastic_stiffness()) * support::max_norm(u), 200)
        << s.name;
  }
}

TEST(LayeredCalls, StiffnessStartsFromZeroAndHasNoDrilling) {
  seeded_random random(814);
  for (const layered_subject& s : SUBJECTS) {
    const plate_description d = random_layered(random, s, 0.2);
    layered_model model(d, 5);
    take_element_of_last_call(s.nodes);
    const layered_element_reference r(s, d);
    const matrix expected = r.elastic_stiffness() - r.drilling();
    const int count = s.order() * s.order();
    guarded_buffer K(count);
    if (s.nodes == 4) {
      QUAD_LAYERED_STIFF(PLATEELEM, state_of_element(1), QUAD, QUAD_U, LAYERED, POINTS, s.theory, K.data());
    } else {
      TRI_LAYERED_STIFF(PLATEELEM, state_of_element(1), TRI, TRI_U, LAYERED, POINTS, s.theory, K.data());
    }
    EXPECT_CLOSE(written(K, count), listed(expected), largest(expected), 200) << s.name;
    for (int n = 0; n < s.nodes; ++n) {
      for (int i = 0; i < s.order(); ++i) {
        EXPECT_EQ(K(1 + r.e.drill(n) + s.order() * i), 0.0) << s.name;
        EXPECT_EQ(K(1 + i + s.order() * r.e.drill(n)), 0.0) << s.name;
      }
    }
  }
}

TEST(LayeredCalls, EveryOperationBuildsTheGeometryOfItsElement) {
  // What an earlier call has left in the scratch record is overwritten before the second of two equal calls.
  seeded_random random(815);
  for (const layered_subject& s : SUBJECTS) {
    for (const int op : {1, 3, 33, 5, 7}) {
      const plate_description d = random_layered(random, s, 0.2);
      layered_model model(d, 5);
      const std::vector<double> u = random_displacements(random, d, 6.0 * d.yield_stress / d.young);
      const auto answer = [&] {
        if (op == 3 || op == 33) return model.internal_forces(1, u, op);
        if (op == 5) {
          const support::plate_results R = model.results(1, u);
          return sum(R.nodes, R.points, 3.0);
        }
        model.set_displacements(u);
        return model.matrix(op, 1);
      };
      const std::vector<double> first = answer();
      EXPECT_GT(support::max_norm(first), 0.0);
      PLATEELEM.AXES = MATRIX<3, 3>{};
      std::memset(&PLATEELEM.LOCAL_XYZ, 0xff, sizeof PLATEELEM.LOCAL_XYZ);
      std::memset(&PLATEELEM.LOCAL_XYZ_QUAD, 0xff, sizeof PLATEELEM.LOCAL_XYZ_QUAD);
      EXPECT_EQ(answer(), first) << s.name << " " << op;
    }
  }
}
