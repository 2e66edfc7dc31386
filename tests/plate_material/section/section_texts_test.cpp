// section_texts_test.cpp: each text that an update can report, and what follows it when the report returns.
#include <cmath>

#include "assert_recorder.h"
#include "comparison.h"
#include "point_update.h"

using section_reference::column;
using section_reference::matrix;
using section_reference::multiplier_problem;
using section_reference::point_start;
using section_reference::real;
using support::seeded_random;
using texts = std::vector<std::string>;

template <class WIDTH>
struct SectionTexts : ::testing::Test {
  void SetUp() override {
    PLATEELEM = PLATEELEM_RECORD{};
    PLATEELEM.E1 = 1.0;
    for (int i = 1; i <= 8; ++i) {
      PLATEELEM.P8(i, i) = PLATEELEM.Q8(i, i) = PLATEELEM.QINV8(i, i) = PLATEELEM.D8(i, i) = 1.0;
      PLATEELEM.LAM8(i, i) = 1.0;
    }
    support::forget_assertions();
  }
};
TYPED_TEST_SUITE(SectionTexts, both_widths, width_names);

namespace {

constexpr double HALF = 0.5;                     // 2 x LAM + 1 = LAM + 1 at this multiplier
const double LEAST = std::nextafter(-1.0, 0.0);  // LAM + 1 = 2^-53 = 1.1e-16

template <int W>
VECTOR<W> ones() {
  VECTOR<W> v{};
  for (double& x : v.V) x = 1.0;
  return v;
}

const char* const F1 = "Division by 0, F1";
const char* const DFONC = "Division by 0, DFONC_EVAL";

// What a routine said.
template <class CALL>
texts said(const CALL& call) {
  support::forget_assertions();
  call();
  return support::recorded_assertions();
}

}  // namespace

TYPED_TEST(SectionTexts, F1LeavesTheFunctionAndItsDerivativeUntouched) {
  constexpr int W = TypeParam::value;
  for (int i = 1; i <= W; ++i) {
    for (const double lambda : {-1.0, -2.0, -1e300}) {
      PLATEELEM.LAM8(i, i) = lambda;
      double f = 7.0, df = 8.0;
      EXPECT_EQ(said([&] { routines<W>::f1(PLATEELEM, 1.0, 1.0, 1.0, ones<W>(), 0.0, HALF, f); }), texts{F1}) << i;
      EXPECT_EQ(said([&] { routines<W>::df1(PLATEELEM, 1.0, 1.0, ones<W>(), 0.0, HALF, df); }), texts{F1}) << i;
      EXPECT_EQ(f, 7.0);
      EXPECT_EQ(df, 8.0);
    }
    PLATEELEM.LAM8(i, i) = LEAST;
    double f = 7.0;
    EXPECT_EQ(said([&] { routines<W>::f1(PLATEELEM, 1.0, 1.0, 1.0, ones<W>(), 0.0, HALF, f); }), texts()) << i;
    EXPECT_GT(f, 1e30);
    PLATEELEM.LAM8(i, i) = 1.0;
  }
}

TEST(SectionTextsNarrow, DoNotSeeTheEigenvaluesOfTransverseShear) {
  PLATEELEM = PLATEELEM_RECORD{};
  PLATEELEM.E1 = 1.0;
  PLATEELEM.LAM8(7, 7) = PLATEELEM.LAM8(8, 8) = -2.0;
  double f = 7.0;
  EXPECT_EQ(said([&] { SECTION_F1_6(PLATEELEM, 1.0, 1.0, 1.0, VECTOR<6>{}, 0.0, HALF, BY_ASSERTF, f); }), texts());
  EXPECT_EQ(f, -1.0);
  EXPECT_EQ(said([&] { SECTION_F1_8(PLATEELEM, 1.0, 1.0, 1.0, VECTOR<8>{}, 0.0, HALF, BY_ASSERTF, f); }), texts{F1});
}

TYPED_TEST(SectionTexts, DerivativeOfZeroLeavesTheMultiplierUntouched) {
  constexpr int W = TypeParam::value;
  PLATEELEM.LAM8 = MATRIX<8, 8>{};
  double x = 7.0;
  EXPECT_EQ(said([&] { routines<W>::mult(PLATEELEM, 1.0, 1.0, 1.0, ones<W>(), 0.0, x); }), texts{DFONC});
  EXPECT_EQ(x, 7.0);
}

TYPED_TEST(SectionTexts, FailingFunctionLeadsToTheTextOfTheDerivative) {
  // The first pass steps to a positive multiplier, where the eigenvalue of a resultant of zero has no inverse: function
  // and derivative report, both are zero.
  constexpr int W = TypeParam::value;
  PLATEELEM.LAM8(2, 2) = -1e6;
  VECTOR<W> trial{};
  trial(1) = 2.0;
  double x = 7.0;
  EXPECT_EQ(said([&] { routines<W>::mult(PLATEELEM, 1.0, 1.0, 1.0, trial, 0.0, x); }), (texts{F1, F1, DFONC}));
  EXPECT_EQ(x, 7.0);
}

TYPED_TEST(SectionTexts, ResultantsStayZero) {
  constexpr int W = TypeParam::value;
  for (const double lambda : {-1.0, -3.0}) {
    PLATEELEM.LAM8(W, W) = lambda;
    VECTOR<W> sig = ones<W>();
    EXPECT_EQ(said([&] { routines<W>::stress(PLATEELEM, HALF, ones<W>(), sig); }),
              texts{"Division by 0, vMAT_LAM_GAM"});
    EXPECT_EQ(listed(sig), std::vector<double>(W, 0.0));
  }
  PLATEELEM.LAM8(W, W) = LEAST;
  VECTOR<W> sig{};
  EXPECT_EQ(said([&] { routines<W>::stress(PLATEELEM, HALF, ones<W>(), sig); }), texts());
  EXPECT_EQ(sig(W), 0x1p53);
}

TYPED_TEST(SectionTexts, TangentStaysAsItWas) {
  constexpr int W = TypeParam::value;
  PLATEELEM.LAM8(1, 1) = -1.0;
  MATRIX<W, W> C{};
  for (double& v : C.V) v = 7.0;
  EXPECT_EQ(said([&] { routines<W>::tangent(PLATEELEM, 1.0, HALF, 1.0, 0.0, ones<W>(), C); }),
            texts{"Division by 0, COEFF"});
  EXPECT_EQ(listed(C), std::vector<double>(W * W, 7.0));
}

TYPED_TEST(SectionTexts, TangentOfZeroResultantsIsZero) {
  constexpr int W = TypeParam::value;
  for (const double tangent_modulus : {0.0, 0.5}) {
    PLATEELEM.TANGENT_MOD = tangent_modulus;
    MATRIX<W, W> C{};
    for (double& v : C.V) v = 7.0;
    EXPECT_EQ(said([&] { routines<W>::tangent(PLATEELEM, 1.0, HALF, 1.0, 0.0, VECTOR<W>{}, C); }),
              texts{"Division by 0, COEFF+xM"});
    EXPECT_EQ(listed(C), std::vector<double>(W * W, 0.0));
  }
}

TYPED_TEST(SectionTexts, TangentDivisorIsTakenByItsAbsoluteValue) {
  // A negative metric: v' X v is negative, and nothing is wrong with it.
  constexpr int W = TypeParam::value;
  for (int i = 1; i <= W; ++i) PLATEELEM.D8(i, i) = -1.0;
  MATRIX<W, W> C{};
  EXPECT_EQ(said([&] { routines<W>::tangent(PLATEELEM, 1.0, 0.0, 1.0, 0.0, ones<W>(), C); }), texts());
  EXPECT_CLOSE(C(1, 1), -1.0 + 1.0 / W, 1.0, 8);
}

// ---- through the whole update

TYPED_TEST(SectionTexts, NegativeMultiplierLeavesResultantsAndPlasticStrainZeroAndTheRestAsItWas) {
  // A modulus of the wrong sign turns the eigenvalues round, and with them the multiplier.
  constexpr int W = TypeParam::value;
  seeded_random random(681);
  for (int trial = 0; trial < 20; ++trial) {
    const prepared_section s(random, 0.0);
    const point_start start = random_start(random, s, random.uniform(-1.0, 1.0));
    const column eps = strain_beyond<W>(random, s, start, 1.5);
    PLATEELEM.E1 = -s.p.E;
    SECTION_ANSWER<W> a{};
    for (double& v : a.sig.V) v = 1.0;
    for (double& v : a.ep.V) v = 2.0;
    for (double& v : a.C.V) v = 3.0;
    a.ebar = 4.0;
    a.qtm = 5.0;
    a.dkap = 6.0;
    EXPECT_EQ(said([&] { routines<W>::update(PLATEELEM, s.p.h, s.p.sy, vector_of<W>(eps), section_point(start), a); }),
              texts{"Negative Plastic_Multip"});
    EXPECT_EQ(a.plastic, 1);
    EXPECT_EQ(listed(a.sig), std::vector<double>(W, 0.0));
    EXPECT_EQ(listed(a.ep), std::vector<double>(12, 0.0));
    EXPECT_EQ(listed(a.C), std::vector<double>(W * W, 3.0));
    EXPECT_EQ(a.ebar, 4.0);
    EXPECT_EQ(a.qtm, 5.0);
    EXPECT_EQ(a.dkap, 6.0);
  }
}

TYPED_TEST(SectionTexts, UpdateGoesOnAsAPlasticStepOfMultiplierZero) {
  // Softening that turns the derivative about: the first step goes below -1 / (2 LAM), and the texts of function and
  // derivative follow each other. Then resultants are the trial, nothing flows, and the tangent is that of x = 0.
  constexpr int W = TypeParam::value;
  seeded_random random(682);
  for (int trial = 0; trial < 20; ++trial) {
    prepared_section s(random, 0.0);
    const point_start start = random_start(random, s, 1.0);
    const column eps = strain_beyond<W>(random, s, start, 1.5);
    const column p0 = section_reference::to_local(start.ep0, s.axes, W),
                 trial_sig = s.D.topLeftCorner(W, W) * (eps - p0);
    const multiplier_problem ideal(s.p, section_reference::spectral_data_of(s.p, 1), trial_sig, 0);
    const real w = (ideal.T * 2 * ideal.P * trial_sig).norm(), root = std::sqrt(2.0L / 3.0L);
    const real wanted = ideal.f(0) * ideal.L(0, 0) / 2;  // the step is -2 / LAM
    const real H = (ideal.df(0) - wanted) * s.p.sy / (2 * root * w);
    s.p.Et = PLATEELEM.TANGENT_MOD = static_cast<double>(H / (1 + H / s.p.E));
    point_start fresh = start;
    fresh.ebar0 = 0;
    SECTION_ANSWER<W> a{};
    EXPECT_EQ(said([&] { routines<W>::update(PLATEELEM, s.p.h, s.p.sy, vector_of<W>(eps), section_point(fresh), a); }),
              (texts{F1, F1, DFONC}));
    EXPECT_EQ(a.plastic, 1);
    EXPECT_EQ(a.ebar, 0.0);
    EXPECT_EQ(a.dkap, 0.0);
    EXPECT_WITHIN(section_reference::listed(without_units(s, column_of(a.sig))),
                  section_reference::listed(without_units(s, trial_sig)), 1.5, 1e-6);
    EXPECT_CLOSE(section_reference::listed(strain_without_units(s, column_of(a.ep))),
                 section_reference::listed(strain_without_units(s, section_reference::to_global(p0, s.axes))), 4.0, 64);
    const multiplier_problem m(s.p, section_reference::spectral_data_of(s.p, 1), trial_sig, 0);
    const matrix C = section_reference::algorithmic_tangent(m, s.D, 0, m.resultants(0), 0);
    EXPECT_WITHIN(section_reference::listed(tangent_without_units(s, matrix_of(a.C))),
                  section_reference::listed(tangent_without_units(s, C)),
                  section_reference::largest(tangent_without_units(s, C)), 1e-10);
  }
}

TYPED_TEST(SectionTexts, UnitsBeyondTheDivisorsReportDerivativeAndTangent) {
  // E / (sy^2 h) of 1e-20 lies below what may divide.
  constexpr int W = TypeParam::value;
  seeded_random random(683);
  const prepared_section s({1.0, 1e10, 1.0, 0.3, 0.0});
  const column sig = s.random_resultants(random, W, 2.0);
  SECTION_ANSWER<W> a{};
  for (double& v : a.C.V) v = 3.0;
  EXPECT_EQ(said([&] {
              routines<W>::update(PLATEELEM, s.p.h, s.p.sy, vector_of<W>(s.strains_of(sig)), section_point({}), a);
            }),
            (texts{DFONC, "Division by 0, COEFF+xM"}));
  EXPECT_EQ(a.plastic, 1);
  EXPECT_EQ(listed(a.C), std::vector<double>(W * W, 0.0));
  EXPECT_EQ(listed(a.ep), std::vector<double>(12, 0.0));
  EXPECT_EQ(a.ebar, 0.0);
  EXPECT_WITHIN(section_reference::listed(without_units(s, column_of(a.sig))),
                section_reference::listed(without_units(s, sig)), 2.0, 1e-6);
}

TYPED_TEST(SectionTexts, NotANumberSaysNothing) {
  constexpr int W = TypeParam::value;
  seeded_random random(684);
  const prepared_section s(random, 0.2);
  for (int i = 0; i < W; ++i) {
    column eps = s.strains_of(s.random_resultants(random, W, 0.5));
    eps(i) = NOT_A_NUMBER;
    SECTION_ANSWER<W> a{};
    EXPECT_EQ(said([&] { a = updated<W>(s, eps, {}); }), texts());
    EXPECT_EQ(a.plastic, 1);
    EXPECT_TRUE(std::isnan(a.sig(i + 1)));
    EXPECT_TRUE(std::isnan(a.ebar));
    EXPECT_TRUE(std::isnan(a.C(1, 1)));
  }
}
