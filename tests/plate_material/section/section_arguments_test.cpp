// section_arguments_test.cpp: where an update takes its numbers from: thickness and yield stress from its arguments,
// moduli of the first direction and the section from PLATEELEM.
#include <cmath>

#include "comparison.h"
#include "point_update.h"

using section_reference::column;
using section_reference::matrix;
using section_reference::point_answer;
using section_reference::point_start;
using support::seeded_random;

template <class WIDTH>
struct SectionArguments : ::testing::Test {};
TYPED_TEST_SUITE(SectionArguments, both_widths, width_names);

TYPED_TEST(SectionArguments, ThicknessAndYieldStressAreThoseOfTheCall) {
  // A little off the plate's own: the spectral form no longer fits the section, and nothing says so.
  constexpr int W = TypeParam::value;
  seeded_random random(671);
  int plastic = 0;
  for (int trial = 0; trial < 50; ++trial) {
    const prepared_section s(random, trial % 2 == 0 ? 0.0 : 0.2);
    section_reference::plate called = s.p;
    called.h *= 1.02;
    called.sy *= 0.97;
    const point_start start = random_start(random, s, random.uniform(-1.0, 1.0));
    const column eps = strain_beyond<W>(random, s, start, random.uniform(1.2, 2.0));
    const point_answer expected = section_reference::update(called, s.D, s.axes, eps, start);
    SECTION_ANSWER<W> a{};
    routines<W>::update(PLATEELEM, called.h, called.sy, vector_of<W>(eps), section_point(start), a);
    plastic += a.plastic;
    EXPECT_EQ(a.plastic, expected.plastic);
    EXPECT_CLOSE(section_reference::listed(without_units(s, column_of(a.sig))),
                 section_reference::listed(without_units(s, expected.sig)), 1.0, 4000);
    EXPECT_CLOSE(a.ebar, static_cast<double>(expected.ebar), 4.0 * s.p.sy / s.p.E, 4000);
    EXPECT_CLOSE(section_reference::listed(tangent_without_units(s, matrix_of(a.C))),
                 section_reference::listed(tangent_without_units(s, expected.C)), 1.0, 4000);
  }
  EXPECT_GT(plastic, 25);
}

TYPED_TEST(SectionArguments, ModuliAreThoseOfTheFirstDirection) {
  constexpr int W = TypeParam::value;
  seeded_random random(672);
  for (int trial = 0; trial < 20; ++trial) {
    const prepared_section s(random, 0.2);
    PLATEELEM.E2 = PLATEELEM.NU2 = PLATEELEM.G12 = PLATEELEM.G13 = PLATEELEM.G23 = NOT_A_NUMBER;
    const point_start start = random_start(random, s, 1.0);
    const column eps = strain_beyond<W>(random, s, start, 2.0);
    const point_answer expected = section_reference::update(s.p, s.D, s.axes, eps, start);
    const SECTION_ANSWER<W> a = updated<W>(s, eps, start);
    EXPECT_CLOSE(section_reference::listed(without_units(s, column_of(a.sig))),
                 section_reference::listed(without_units(s, expected.sig)), 1.0, 4000);
  }
}

TYPED_TEST(SectionArguments, ElasticTangentIsTheWholeOfTheSectionMatrix) {
  // Entries that no trial resultant sees are in it all the same, and those of the section matrices are not looked at.
  constexpr int W = TypeParam::value;
  seeded_random random(673);
  const prepared_section s(random, 0.2);
  for (double& v : PLATEELEM.D8.V) v = random.uniform(1.0, 2.0);
  const SECTION_ANSWER<W> a = updated<W>(s, s.strains_of(s.random_resultants(random, W, 0.5)), {});
  EXPECT_EQ(a.plastic, 0);
  for (int j = 1; j <= W; ++j) {
    for (int i = 1; i <= W; ++i) EXPECT_EQ(a.C(i, j), PLATEELEM.D8(i, j)) << i << " " << j;
  }
}

TYPED_TEST(SectionArguments, YieldingIsThatOfTheThicknessAndYieldStressOfTheCall) {
  // A pull of nine tenths of the plate's own limit, which lies beyond those of a thinner and of a weaker one.
  constexpr int W = TypeParam::value;
  const prepared_section s({0.02, 235.0, 2.1e5, 0.3, 0.0});
  column sig = column::Zero(W);
  sig(0) = 0.9L * s.p.N0();
  const auto plastic_with = [&s, &sig](double h, double sy) {
    SECTION_ANSWER<W> a{};
    routines<W>::update(PLATEELEM, h, sy, vector_of<W>(s.strains_of(sig)), section_point({}), a);
    return a.plastic;
  };
  EXPECT_EQ(plastic_with(s.p.h, s.p.sy), 0);
  EXPECT_EQ(plastic_with(0.88 * s.p.h, s.p.sy), 1);
  EXPECT_EQ(plastic_with(s.p.h, 0.88 * s.p.sy), 1);
}
