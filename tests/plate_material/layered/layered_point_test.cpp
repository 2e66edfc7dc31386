// layered_point_test.cpp: the stress update at a thickness point: elastic points and the return to the surface.
#include <cmath>

#include "assert_recorder.h"
#include "comparison.h"
#include "prepared_point.h"

using layered_reference::material;
using layered_reference::matrix3;
using layered_reference::matrix5;
using layered_reference::point_answer;
using layered_reference::real;
using layered_reference::THICK;
using layered_reference::THIN;
using layered_reference::vector5;
using support::seeded_random;

namespace {

constexpr int P = prepared_point::PLATE;
const material STEEL{2.1e5, 0.3, 235.0, 0.0};

vector5 five(double a, double b, double c = 0.0, double d = 0.0, double e = 0.0) {
  vector5 v;
  v << a, b, c, d, e;
  return rounded(vector_of<5>(v));
}

double yield_trial(const prepared_point&, const vector5& stress, int theory) {
  double f = NOT_A_NUMBER;
  PLATE_YIELD_TRIAL(PLATEELEM, vector_of<5>(stress), f, thickness_point(P, 1, 1), theory);
  return f;
}

vector5 stored_stress(prepared_point& p, int gp, int k) {
  return layered_reference::to_local(layered_reference::vector6_of(field_of(values_of(p.state(gp), k), "SIG")), p.axes);
}

}  // namespace

// ---- predictor

TEST(PlateTrialStress, HasTheShearsWhateverTheTheory) {
  prepared_point p(material{2.0, 0.0, 1.0, 0.0});
  VECTOR<5> sigma;
  PLATE_TRIAL_STRESS(PLATEELEM, sigma, {{0.0, 0.0, 0.0, 0.0, 0.0}}, {{1.0, 2.0, 3.0}}, {{4.0, 5.0}});
  EXPECT_EQ(listed(sigma),
            (std::vector<double>{2.0, 4.0, 3.0, 2 * 0.4166666567325592 * 4.0, 2 * 0.4166666567325592 * 5.0}));
  PLATE_TRIAL_STRESS(PLATEELEM, sigma, {{1.0, 1.0, 1.0, 4.0, 4.0}}, {{1.0, 2.0, 3.0}}, {{4.0, 5.0}});
  EXPECT_EQ(listed(sigma), (std::vector<double>{0.0, 2.0, 2.0, 0.0, 2 * 0.4166666567325592}));
}

TEST(PlateTrialStress, IsTheElasticMatrixTimesTheElasticStrain) {
  seeded_random random(731);
  for (int trial = 0; trial < 100; ++trial) {
    prepared_point p(random, 0.1);
    p.fill_random(random);
    const vector5 e = p.strain_at(random, 1, 1, THICK, 2.0), ep = layered_reference::to_local(p.start(1, 1).ep, p.axes);
    VECTOR<5> sigma;
    PLATE_TRIAL_STRESS(PLATEELEM, sigma, vector_of<5>(ep), vector_of<3>(e.head(3)), vector_of<2>(e.tail(2)));
    EXPECT_CLOSE(listed(sigma),
                 layered_reference::listed(layered_reference::elastic(p.m, THICK) * (e - rounded(vector_of<5>(ep)))),
                 10.0 * p.m.sy, 16);
  }
}

TEST(PlateYieldTrial, ByHand) {
  prepared_point p(material{3.0, 0.0, 3.0, 1.0});  // H = 1.5
  // 2/3 and 1/3 are those of single precision.
  EXPECT_EQ(yield_trial(p, five(1, 0), THIN), 0.5 * 0.6666666865348816 - 3.0);
  EXPECT_EQ(yield_trial(p, five(1, 1), THIN), 0.6666666865348816 - 0.3333333432674408 - 3.0);
  EXPECT_EQ(yield_trial(p, five(0, 0, 2), THIN), 4.0 - 3.0);
  EXPECT_EQ(yield_trial(p, five(0, 0, 0, 3, 4), THICK), 25.0 - 3.0);
  EXPECT_EQ(yield_trial(p, five(0, 0, 0, 3, 4), THIN), -3.0) << "a thin element leaves the shears out";
  p.state().EPBAR_START(1) = 2.0;
  EXPECT_EQ(yield_trial(p, five(0, 0, 2), THIN), 4.0 - 36.0 / 3.0);
}

TEST(PlateLayeredPoint, ZeroOfTheYieldFunctionIsElastic) {
  // Three unit shears against a yield stress of 3: 0.5 (2 + 2 + 2) - 9 / 3 is exactly 0. The trial stresses are the
  // products of the moduli that give 1 to the last bit.
  prepared_point p(material{2.0, 0.0, 3.0, 0.0});
  const double modulus = 0.4166666567325592 * 2.0;
  double shear = 1.0 / modulus;
  while (modulus * shear < 1.0) shear = std::nextafter(shear, 2.0);
  ASSERT_EQ(modulus * shear, 1.0);
  p.storage.fill(7.0);
  p.state().EPBAR_START(1) = 0.0;
  for (int i = 1; i <= 6; ++i) p.state().EP_START(i, 1) = 0.0;
  const vector5 strain = five(0.0, 0.0, 1.0, shear, shear);
  ASSERT_EQ(yield_trial(p, five(0, 0, 1, 1, 1), THICK), 0.0);
  p.update(strain, 1, 1, THICK, 3);
  EXPECT_EQ(p.state().SIG(4, 1), 1.0) << "an elastic point stores in operation 3";
  p.storage.fill(7.0);
  p.state().EPBAR_START(1) = 0.0;
  for (int i = 1; i <= 6; ++i) p.state().EP_START(i, 1) = 0.0;
  PLATEELEM.YIELD_STRESS = std::nextafter(3.0, 0.0);
  ASSERT_GT(yield_trial(p, five(0, 0, 1, 1, 1), THICK), 0.0);
  p.update(strain, 1, 1, THICK, 3);
  EXPECT_EQ(p.state().SIG(4, 1), 7.0) << "a plastic one does not";
}

// ---- against the reference

TEST(PlateLayeredPoint, UpdateIsThatOfTheReference) {
  seeded_random random(732);
  for (int trial = 0; trial < 600; ++trial) {
    const int theory = trial % 2 == 0 ? THIN : THICK;
    prepared_point p(random, trial % 3 == 0 ? 0.0 : 0.3, 3,
                     trial % 5 == 0 ? point_layout::scattered : point_layout::packed);
    p.fill_random(random);
    const bool plastic = trial % 4 != 3;
    const vector5 e =
        p.strain_at(random, 2, 3, theory, plastic ? random.uniform(1.001, 6.0) : random.uniform(0.1, 0.999));
    const point_answer a = p.expected(2, 3, theory, e);
    ASSERT_EQ(a.plastic, plastic);
    support::forget_assertions();
    p.update(e, 2, 3, theory, 33);
    EXPECT_EQ(support::recorded_assertions(), texts());
    const layered_values v = values_of(p.state(2), 3);
    const double size = static_cast<double>(a.trial.norm()), strain = size / p.m.E;
    EXPECT_CLOSE(field_of(v, "SIG"), layered_reference::listed(a.sig), size, 64);
    EXPECT_CLOSE(field_of(v, "EP_CUR"), layered_reference::listed(a.ep), strain, 64);
    EXPECT_CLOSE(field_of(v, "EPBAR_CUR")[0], static_cast<double>(a.ebar), strain, 64);
    EXPECT_CLOSE(field_of(v, "TANGENT"), layered_reference::listed(a.tangent), p.m.E / (1.0 - p.m.nu), 64);
    EXPECT_TRUE(p.storage.guards_hold());
  }
}

TEST(PlateLayeredPoint, StressesOfAThinElementHaveNoShearsAfterAReturn) {
  // Start values with transverse parts in element axes make a trial stress with shears; a return drops them, a strain
  // inside keeps them.
  seeded_random random(733);
  prepared_point p(random, 0.1);
  p.fill_random(random);
  p.update(p.strain_at(random, 1, 1, THIN, 2.0), 1, 1, THIN, 33);
  EXPECT_WITHIN(static_cast<double>(stored_stress(p, 1, 1).tail(2).norm()), 0.0, p.m.sy, 1e-14);
  vector5 inside = p.strain_at(random, 1, 1, THIN, 0.5);
  inside.tail(2).setZero();
  p.update(inside, 1, 1, THIN, 33);
  EXPECT_GT(static_cast<double>(stored_stress(p, 1, 1).tail(2).norm()), 1e-3 * p.m.sy);
}

TEST(PlateLayeredPoint, TransverseStressesOfAThinElementAreNotInItsYieldFunction) {
  // A start that has sheared across the element makes trial shears far beyond the yield stress: a thin point is elastic
  // and keeps them, a thick one yields.
  for (const int theory : {THIN, THICK}) {
    prepared_point p(STEEL);
    p.state().EP_START(5, 1) = 0.1;
    p.state().SIG(5, 1) = 7.0;
    support::forget_assertions();
    p.update(five(0.0, 0.0), 1, 1, theory, 3);
    EXPECT_EQ(support::recorded_assertions(), texts());
    const double trial = -0.4166666567325592 * 2.1e5 / 1.3 * 0.1;
    EXPECT_WITHIN(p.state().SIG(5, 1), theory == THIN ? trial : 7.0, 7000.0, 1e-15);
  }
}

// ---- hand numbers of the return

TEST(PlateLayeredPoint, ReturnOfEqualStresses) {
  // Perfect plasticity: both stresses come back to the yield stress; each plastic strain is the trial excess over
  // E / (1 - nu), the equivalent one their double.
  prepared_point p(STEEL);
  const double M = 2.1e5 / 0.7, e = 3.0 * 235.0 / M, excess = 2.0 * 235.0 / M;
  p.update(five(e, e), 1, 1, THIN, 33);
  const POINT_STATE_RECORD& s = p.state();
  EXPECT_WITHIN(s.SIG(1, 1), 235.0, 235.0, 2e-7);
  EXPECT_WITHIN(s.SIG(2, 1), 235.0, 235.0, 2e-7);
  EXPECT_WITHIN(s.EP_CUR(1, 1), excess, excess, 2e-7);
  EXPECT_WITHIN(s.EP_CUR(3, 1), -2.0 * excess, excess, 4e-7);
  EXPECT_WITHIN(s.EPBAR_CUR(1), 2.0 * excess, excess, 4e-7);
  // Nothing resists equal stretching any more; a difference is resisted as before.
  EXPECT_WITHIN(s.TANGENT(1, 1, 1) + s.TANGENT(1, 2, 1), 0.0, M, 1e-12);
  EXPECT_WITHIN(s.TANGENT(1, 1, 1) - s.TANGENT(1, 2, 1), 2.1e5 / 1.3, M, 1e-12);
}

TEST(PlateLayeredPoint, ReturnOfPureShearWithHardening) {
  // The plastic part of the engineering shear g is (t - ty) / (G + H / 3), t the trial stress, ty = sy / sqrt(3); the
  // equivalent strain is that over sqrt(3).
  const material m{2.1e5, 0.3, 235.0, 2.1e4};
  prepared_point p(m);
  const double G = 2.1e5 / 2.6, H = 2.1e4 / 0.9, root = std::sqrt(3.0), ty = 235.0 / root;
  const double g = 2.5 * ty / G, gp = (G * g - ty) / (G + H / 3.0);
  p.update(five(0.0, 0.0, g), 1, 1, THIN, 33);
  const POINT_STATE_RECORD& s = p.state();
  EXPECT_WITHIN(s.SIG(4, 1), G * (g - gp), ty, 2e-7);
  EXPECT_WITHIN(s.EP_CUR(4, 1), gp, gp, 2e-7);
  EXPECT_WITHIN(s.EPBAR_CUR(1), gp / root, gp, 2e-7);
  EXPECT_WITHIN(s.TANGENT(3, 3, 1), G * (H / 3.0) / (G + H / 3.0), G, 2e-7);
  EXPECT_WITHIN(s.TANGENT(1, 1, 1), 2.1e5 / 0.91, 2.1e5, 1e-14);
}

TEST(PlateLayeredPoint, UniaxialStressWithPoissonsRatioOfOneHalf) {
  // Elastic and plastic strains have the same direction, so that the stress stays uniaxial: a tension test with the
  // slopes E and Et.
  const material m{2.0e5, 0.5, 200.0, 2.0e4};
  prepared_point p(m);
  for (const double e : {0.0005, 0.0015, 0.004, 0.02}) {
    p.update(five(e, -0.5 * e), 1, 1, THIN, 33);
    const double expected = e < 0.001 ? 2.0e5 * e : 200.0 + 2.0e4 * (e - 0.001);
    EXPECT_WITHIN(p.state().SIG(1, 1), expected, expected, 4e-7) << e;
    EXPECT_WITHIN(p.state().SIG(2, 1), 0.0, expected, 4e-7) << e;
    const double plastic = e - expected / 2.0e5;
    EXPECT_WITHIN(p.state().EP_CUR(1, 1), plastic, e, 4e-7) << e;
    EXPECT_WITHIN(p.state().EPBAR_CUR(1), plastic, e, 4e-7) << e;
  }
}

TEST(PlateLayeredPoint, YieldConditionHoldsAfterTheReturn) {
  // Except for the fractions in single precision: 3e-8 in the metric and the eigenvectors, the square of each.
  seeded_random random(734);
  for (int trial = 0; trial < 300; ++trial) {
    const int theory = trial % 2 == 0 ? THIN : THICK;
    prepared_point p(random, trial % 3 == 0 ? 0.0 : 0.3);
    p.fill_random(random);
    p.update(p.strain_at(random, 1, 2, theory, random.uniform(1.001, 10.0)), 1, 2, theory, 33);
    const vector5 s = stored_stress(p, 1, 2);
    matrix5 exact = matrix5::Zero();
    exact.topLeftCorner(2, 2) << 2.0L / 3, -1.0L / 3, -1.0L / 3, 2.0L / 3;
    exact(2, 2) = 2;
    if (theory == THICK) exact(3, 3) = exact(4, 4) = 2;
    const real mises = std::sqrt(1.5L * s.dot(exact * s));
    const real kappa = p.m.sy + p.m.hardening() * real(p.state().EPBAR_CUR(2));
    EXPECT_WITHIN(static_cast<double>(mises / kappa), 1.0, 1.0, 3e-7);
  }
}

TEST(PlateLayeredPoint, PlasticStrainKeepsTheVolumeAndTheStressIsElastic) {
  seeded_random random(735);
  for (int trial = 0; trial < 100; ++trial) {
    prepared_point p(random, 0.2);
    p.storage.fill(0.0);
    const vector5 e = p.strain_at(random, 1, 2, THICK, random.uniform(1.5, 5.0));
    p.update(e, 1, 2, THICK, 33);
    const layered_reference::vector6 ep = layered_reference::vector6_of(field_of(values_of(p.state(), 2), "EP_CUR"));
    EXPECT_CLOSE(static_cast<double>(ep.head(3).sum()), 0.0, static_cast<double>(ep.norm()), 32);
    const vector5 elastic = layered_reference::elastic(p.m, THICK) * (e - layered_reference::to_local(ep, p.axes));
    EXPECT_WITHIN(layered_reference::listed(stored_stress(p, 1, 2)), layered_reference::listed(elastic),
                  static_cast<double>(elastic.norm()), 1e-6);
  }
}
