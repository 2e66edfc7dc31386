// section_update_test.cpp: the update of a surface point against the reference and against what must hold for any.
#include <cmath>

#include "assert_recorder.h"
#include "comparison.h"
#include "point_update.h"

using section_reference::column;
using section_reference::matrix;
using section_reference::point_answer;
using section_reference::point_start;
using section_reference::real;
using support::seeded_random;
using texts = std::vector<std::string>;

template <class WIDTH>
struct SectionUpdate : ::testing::Test {};
TYPED_TEST_SUITE(SectionUpdate, both_widths, width_names);

namespace {

// All that an update answers, without units.
template <int W>
void expect_answer(const prepared_section& s, const SECTION_ANSWER<W>& actual, const point_answer& expected,
                   double limit) {
  EXPECT_EQ(actual.plastic, expected.plastic);
  const auto values = [](const matrix& m) { return section_reference::listed(m); };
  EXPECT_CLOSE(values(without_units(s, column_of(actual.sig))), values(without_units(s, expected.sig)), 1.0, limit);
  EXPECT_CLOSE(values(strain_without_units(s, column_of(actual.ep))), values(strain_without_units(s, expected.ep)), 4.0,
               limit);
  EXPECT_CLOSE(values(tangent_without_units(s, matrix_of(actual.C))), values(tangent_without_units(s, expected.C)), 1.0,
               limit);
  const double yield_strain = s.p.sy / s.p.E;
  EXPECT_CLOSE(actual.ebar, static_cast<double>(expected.ebar), 4.0 * yield_strain, limit);
  EXPECT_CLOSE(actual.dkap, static_cast<double>(expected.dkap), 4.0 * yield_strain / s.p.h, limit);
  EXPECT_CLOSE(actual.qtm, static_cast<double>(expected.qtm), static_cast<double>(s.p.N0() * s.p.M0()), limit);
}

// The yield function of an answer.
template <int W>
double yield_of(const prepared_section& s, const SECTION_ANSWER<W>& a) {
  return static_cast<double>(section_reference::yield_function(s.p, column_of(a.sig), a.ebar));
}

}  // namespace

TYPED_TEST(SectionUpdate, IsTheReferenceOnEitherBranch) {
  constexpr int W = TypeParam::value;
  seeded_random random(651);
  support::forget_assertions();
  int plastic = 0;
  for (int trial = 0; trial < 400; ++trial) {
    const prepared_section s(random, trial % 2 == 0 ? 0.0 : 0.2);
    const point_start start = random_start(random, s, random.uniform(-1.0, 1.0));
    const column eps = strain_beyond<W>(random, s, start, random.uniform(0.7, 3.0));
    const point_answer expected = section_reference::update(s.p, s.D, s.axes, eps, start);
    plastic += expected.plastic;
    const SECTION_ANSWER<W> actual = updated<W>(s, eps, start);
    expect_answer(s, actual, expected, 4000);
  }
  EXPECT_GT(plastic, 250);
  EXPECT_LT(plastic, 390);
  EXPECT_EQ(support::recorded_assertions(), texts());
}

TYPED_TEST(SectionUpdate, OfAnElasticPointLeavesItsPlasticVariablesAndGivesTheSection) {
  constexpr int W = TypeParam::value;
  seeded_random random(652);
  for (int trial = 0; trial < 50; ++trial) {
    const prepared_section s(random, 0.2);
    const point_start start = random_start(random, s, -1.0);
    const column eps = strain_beyond<W>(random, s, start, random.uniform(0.1, 0.95));
    const SECTION_ANSWER<W> a = updated<W>(s, eps, start);
    const column local = section_reference::to_local(start.ep0, s.axes, W);
    EXPECT_EQ(a.plastic, 0);
    EXPECT_EQ(a.ebar, static_cast<double>(start.ebar0));
    EXPECT_EQ(a.dkap, 0.0);
    EXPECT_EQ(matrix_of(a.C), matrix(s.D.topLeftCorner(W, W)));
    EXPECT_CLOSE(section_reference::listed(strain_without_units(s, column_of(a.ep))),
                 section_reference::listed(strain_without_units(s, section_reference::to_global(local, s.axes))), 4.0,
                 64);
    const column sig = s.D.topLeftCorner(W, W) * (eps - local);
    EXPECT_CLOSE(section_reference::listed(without_units(s, column_of(a.sig))),
                 section_reference::listed(without_units(s, sig)), 1.0, 64);
  }
}

TYPED_TEST(SectionUpdate, ExactlyOnTheSurfaceIsElasticAndItsTangentTheSection) {
  // E = 100, nu = 0, h = 1, sy = 2: a strain of 0.02 is N = 2 to the last bit.
  constexpr int W = TypeParam::value;
  const prepared_section s({1.0, 2.0, 100.0, 0.0, 0.0});
  column eps = column::Zero(W);
  eps(0) = 0.02;
  const SECTION_ANSWER<W> a = updated<W>(s, eps, {});
  ASSERT_EQ(a.sig(1), 2.0);
  EXPECT_EQ(a.plastic, 0);
  EXPECT_EQ(matrix_of(a.C), matrix(s.D.topLeftCorner(W, W)));
}

TYPED_TEST(SectionUpdate, ReturnsToTheYieldSurface) {
  // The last Newton step is below 1e-4 of the multiplier: its square is what remains, on the branch of the point's own
  // mixed term.
  constexpr int W = TypeParam::value;
  seeded_random random(653);
  for (int trial = 0; trial < 300; ++trial) {
    const prepared_section s(random, trial % 2 == 0 ? 0.0 : 0.2);
    const returning_point<W> q(random, s, random.uniform(1.01, 3.0));
    const SECTION_ANSWER<W> a = updated<W>(s, q.eps, q.start);
    ASSERT_EQ(a.plastic, 1);
    if (!q.keeps_branch(a)) continue;
    EXPECT_WITHIN(yield_of(s, a), 0.0, 1.0, 1e-7 * q.level * q.level) << q.level;
  }
}

TYPED_TEST(SectionUpdate, IsTheReturnWithoutSpectralForm) {
  // A linear solve and a bisection in the place of the closed form and Newton's method, to seven digits of the trial.
  constexpr int W = TypeParam::value;
  seeded_random random(654);
  int compared = 0;
  for (int trial = 0; trial < 200; ++trial) {
    const prepared_section s(random, trial % 2 == 0 ? 0.0 : 0.2);
    const returning_point<W> q(random, s, random.uniform(1.01, 3.0));
    const SECTION_ANSWER<W> a = updated<W>(s, q.eps, q.start);
    if (!q.keeps_branch(a)) continue;
    ++compared;
    const auto exact =
        section_reference::return_exactly(s.p, s.D, section_reference::branch_of(q.start.ref), q.trial, q.start.ebar0);
    EXPECT_WITHIN(section_reference::listed(without_units(s, column_of(a.sig))),
                  section_reference::listed(without_units(s, exact.sig)), q.level, 1e-6);
    EXPECT_WITHIN(a.ebar, static_cast<double>(exact.ebar), q.level * s.p.sy / s.p.E, 1e-6);
  }
  EXPECT_GT(compared, 120);
}

TYPED_TEST(SectionUpdate, SplitsTheStrainIntoElasticAndPlasticParts) {
  // sig = D (eps - p), whatever the multiplier, to the seven digits of the spectral form.
  constexpr int W = TypeParam::value;
  seeded_random random(655);
  for (int trial = 0; trial < 200; ++trial) {
    const prepared_section s(random, 0.2);
    const double level = random.uniform(1.01, 3.0);
    const point_start start = random_start(random, s, random.uniform(-1.0, 1.0));
    const column eps = strain_beyond<W>(random, s, start, level);
    const SECTION_ANSWER<W> a = updated<W>(s, eps, start);
    const column p = section_reference::to_local(column_of(a.ep), s.axes, W);
    const column sig = s.D.topLeftCorner(W, W) * (eps - p);
    EXPECT_WITHIN(section_reference::listed(without_units(s, column_of(a.sig))),
                  section_reference::listed(without_units(s, sig)), level, 2e-6);
  }
}

TYPED_TEST(SectionUpdate, TangentIsTheDerivativeWithoutHardening) {
  // Central differences with a step far above what the loosely stopped multiplier leaves in the resultants.
  constexpr int W = TypeParam::value;
  seeded_random random(656);
  int compared = 0;
  for (int trial = 0; trial < 100; ++trial) {
    const prepared_section s(random, 0.0);
    const returning_point<W> q(random, s, random.uniform(1.1, 2.5));
    const SECTION_ANSWER<W> a = updated<W>(s, q.eps, q.start);
    if (!q.keeps_branch(a)) continue;
    matrix quotient(W, W);
    bool keeps = true;
    for (int j = 0; j < W; ++j) {
      const double step = 5e-4 * s.p.sy / s.p.E / (j >= 3 && j < 6 ? s.p.h : 1.0);
      column forward = q.eps, backward = q.eps;
      forward(j) += step;
      backward(j) -= step;
      const SECTION_ANSWER<W> f = updated<W>(s, forward, q.start), b = updated<W>(s, backward, q.start);
      keeps = keeps && q.keeps_branch(f) && q.keeps_branch(b);
      quotient.col(j) = (column_of(f.sig) - column_of(b.sig)) / (2.0L * step);
    }
    if (!keeps) continue;
    ++compared;
    EXPECT_WITHIN(section_reference::listed(tangent_without_units(s, matrix_of(a.C))),
                  section_reference::listed(tangent_without_units(s, quotient)), 1.0, 1e-4);
  }
  EXPECT_GT(compared, 50);
}

TYPED_TEST(SectionUpdate, TangentWithoutHardeningHasTheFlowInItsNullSpace) {
  // v C = 0 and C v = 0: resultants stay on the surface.
  constexpr int W = TypeParam::value;
  seeded_random random(657);
  for (int trial = 0; trial < 50; ++trial) {
    const prepared_section s(random, 0.0);
    const returning_point<W> q(random, s, random.uniform(1.1, 3.0));
    const SECTION_ANSWER<W> a = updated<W>(s, q.eps, q.start);
    const column v = matrix_of(PLATEELEM.P8).topLeftCorner(W, W) * column_of(a.sig);
    const column unit = strain_without_units(s, v) / strain_without_units(s, v).norm();
    const matrix C = tangent_without_units(s, matrix_of(a.C));
    EXPECT_WITHIN(section_reference::listed(C * unit), std::vector<double>(W, 0.0), 1.0, 1e-12);
    EXPECT_WITHIN(section_reference::listed(C.transpose() * unit), std::vector<double>(W, 0.0), 1.0, 1e-12);
  }
}

TYPED_TEST(SectionUpdate, TangentIsSymmetricToSevenDigits) {
  constexpr int W = TypeParam::value;
  seeded_random random(658);
  for (int trial = 0; trial < 50; ++trial) {
    const prepared_section s(random, 0.2);
    const returning_point<W> q(random, s, random.uniform(1.1, 3.0));
    const matrix C = tangent_without_units(s, matrix_of(updated<W>(s, q.eps, q.start).C));
    EXPECT_WITHIN(section_reference::listed(C), section_reference::listed(C.transpose()), 1.0, 1e-6);
  }
}

TYPED_TEST(SectionUpdate, OfTheOtherBranchIsNotCorrectedWithinTheCall) {
  // The mixed product of the answer may have the sign that the reference value has not; the metric stays that of ref.
  constexpr int W = TypeParam::value;
  seeded_random random(659);
  for (int trial = 0; trial < 50; ++trial) {
    const prepared_section s(random, 0.0);
    returning_point<W> q(random, s, 1.5);
    const SECTION_ANSWER<W> own = updated<W>(s, q.eps, q.start);
    q.start.ref = -q.start.ref;
    const SECTION_ANSWER<W> other = updated<W>(s, q.eps, q.start);
    const matrix P = section_reference::spectral_data_of(s.p, section_reference::branch_of(q.start.ref)).P;
    EXPECT_CLOSE(listed(PLATEELEM.P8), section_reference::listed(P), section_reference::largest(P), 8);
    EXPECT_NE(listed(own.sig), listed(other.sig));
  }
}

TEST(SectionUpdateWidths, AgreeToTheLastBitWithoutTransverseShear) {
  seeded_random random(660);
  for (int trial = 0; trial < 200; ++trial) {
    const prepared_section s(random, trial % 2 == 0 ? 0.0 : 0.2, section_reference::matrix3::Identity());
    point_start start = random_start(random, s, random.uniform(-1.0, 1.0));
    start.ep0.segment(4, 2).setZero();
    const column eps = strain_beyond<6>(random, s, start, random.uniform(0.7, 3.0));
    column wide = column::Zero(8);
    wide.head(6) = eps;
    const SECTION_ANSWER<6> six = updated<6>(s, eps, start);
    const SECTION_ANSWER<8> eight = updated<8>(s, wide, start);
    EXPECT_EQ(eight.plastic, six.plastic);
    EXPECT_EQ(column_of(eight.sig).head(6), column_of(six.sig));
    EXPECT_EQ(listed(eight.ep), listed(six.ep));
    EXPECT_EQ(eight.ebar, six.ebar);
    EXPECT_EQ(eight.qtm, six.qtm);
    EXPECT_EQ(eight.dkap, six.dkap);
    EXPECT_EQ(matrix_of(eight.C).topLeftCorner(6, 6), matrix_of(six.C));
    EXPECT_EQ(eight.sig(7), 0.0);
    EXPECT_EQ(eight.sig(8), 0.0);
  }
}
