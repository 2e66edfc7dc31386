// section_return_test.cpp: the return without the zeros of the spectral form against the general routines, bit by bit.
#include <cmath>

#include "assert_recorder.h"
#include "plate_material/section_return.h"
#include "point_update.h"

using section_reference::column;
using section_reference::point_start;
using support::seeded_random;
using texts = std::vector<std::string>;

template <class WIDTH>
struct SectionReturn : ::testing::Test {};
TYPED_TEST_SUITE(SectionReturn, both_widths, width_names);

namespace {

template <int W>
struct plastic_point {
  VECTOR<W> trial{}, p0{};
  double ebar0;

  plastic_point(seeded_random& random, const prepared_section& s, double level, double ref) {
    const point_start start = random_start(random, s, ref);
    const column eps = strain_beyond<W>(random, s, start, level);
    ebar0 = 0.01 * static_cast<double>(start.ebar0);
    SECTION_EP_TO_LOCAL(PLATEELEM, vector_of<12>(start.ep0), p0);
    SECTION_SPECTRAL_SIGN(PLATEELEM, ref, s.p.h, s.p.sy);
    SECTION_TRIAL(PLATEELEM, vector_of<W>(eps), p0, trial);
  }
};

// What the general routines answer.
template <int W>
void general_return(const prepared_section& s, const plastic_point<W>& q, SECTION_ANSWER<W>& to, VECTOR<W>& p) {
  double x = 0.0;
  routines<W>::mult(PLATEELEM, 1.0, s.p.h, s.p.sy, q.trial, q.ebar0, x);
  routines<W>::stress(PLATEELEM, x, q.trial, to.sig);
  SECTION_EP(PLATEELEM, x, to.sig, q.p0, p);
  SECTION_EPBAR(PLATEELEM, x, s.p.h, to.sig, q.ebar0, to.ebar);
  routines<W>::tangent(PLATEELEM, s.p.sy, x, s.p.h, to.ebar, to.sig, to.C);
}

template <int W>
bool closed_return(const prepared_section& s, const plastic_point<W>& q, SECTION_ANSWER<W>& to, VECTOR<W>& p) {
  return closed_form_return(PLATEELEM, 1.0, s.p.h, s.p.sy, q.trial, q.p0, q.ebar0, to, p);
}

// That the closed form stands back and says nothing.
template <int W>
void expect_left_to_the_general_way(const prepared_section& s, const plastic_point<W>& q, const std::string& why) {
  SECTION_ANSWER<W> to{};
  VECTOR<W> p{};
  support::forget_assertions();
  EXPECT_FALSE(closed_return(s, q, to, p)) << why;
  EXPECT_EQ(support::recorded_assertions(), texts()) << why;
}

}  // namespace

TYPED_TEST(SectionReturn, HasTheBitsOfTheGeneralRoutinesOnEitherBranch) {
  constexpr int W = TypeParam::value;
  seeded_random random(691);
  int taken = 0;
  for (int trial = 0; trial < 300; ++trial) {
    const prepared_section s(random, trial % 2 == 0 ? 0.0 : 0.2);
    const plastic_point<W> q(random, s, random.uniform(1.05, 4.0), trial % 3 == 0 ? -1.0 : 1.0);
    SECTION_ANSWER<W> closed{}, general{};
    VECTOR<W> p_closed{}, p_general{};
    if (!closed_return(s, q, closed, p_closed)) continue;
    ++taken;
    general_return(s, q, general, p_general);
    EXPECT_EQ(listed(closed.sig), listed(general.sig));
    EXPECT_EQ(closed.ebar, general.ebar);
    EXPECT_EQ(listed(closed.C), listed(general.C));
    EXPECT_EQ(listed(p_closed), listed(p_general));
  }
  EXPECT_GT(taken, 290);
}

// Every divisor 2 x LAM + 1 is looked at on the way: eigenvalues that are negative make one vanish or change its sign
// at some multiplier, and then the closed form stands back wherever the general routines report.
TYPED_TEST(SectionReturn, StandsBackWhereverADivisorIsReported) {
  constexpr int W = TypeParam::value;
  seeded_random random(698);
  std::vector<int> reported(W, 0);
  int taken = 0;
  for (int trial = 0; trial < 60; ++trial) {
    const prepared_section s(random, 0.2);
    const plastic_point<W> q(random, s, random.uniform(1.05, 4.0), 1.0);
    const PLATEELEM_RECORD record = PLATEELEM;
    for (int i = 1; i <= W; ++i) {
      PLATEELEM.LAM8(i, i) *= -std::pow(10.0, random.uniform(-2.0, 2.0));
      SECTION_ANSWER<W> closed{}, general{};
      VECTOR<W> p_closed{}, p_general{};
      const bool back = !closed_return(s, q, closed, p_closed);
      support::forget_assertions();
      general_return(s, q, general, p_general);
      if (!support::recorded_assertions().empty()) {
        EXPECT_TRUE(back) << i;
        ++reported[static_cast<std::size_t>(i - 1)];
      } else if (!back) {
        EXPECT_EQ(listed(closed.sig), listed(general.sig));
        EXPECT_EQ(listed(closed.C), listed(general.C));
        ++taken;
      }
      PLATEELEM = record;
    }
  }
  for (const int times : reported) EXPECT_GT(times, 5);
  EXPECT_GT(taken, 50);
}

TYPED_TEST(SectionReturn, TakesAnySectionMatrixForTheTangent) {
  constexpr int W = TypeParam::value;
  seeded_random random(692);
  for (int trial = 0; trial < 50; ++trial) {
    const prepared_section s(random, 0.2);
    const plastic_point<W> q(random, s, 2.0, 1.0);
    for (double& v : PLATEELEM.D8.V) v += random.uniform(-0.1, 0.1) * s.p.E * s.p.h;
    SECTION_ANSWER<W> closed{}, general{};
    VECTOR<W> p{};
    ASSERT_TRUE(closed_return(s, q, closed, p));
    general_return(s, q, general, p);
    EXPECT_EQ(listed(closed.C), listed(general.C));
  }
}

TYPED_TEST(SectionReturn, LeavesValuesThatAreNotFiniteToTheGeneralWay) {
  constexpr int W = TypeParam::value;
  constexpr double INFINITE = std::numeric_limits<double>::infinity();
  seeded_random random(693);
  const prepared_section s(random, 0.2);
  const plastic_point<W> whole(random, s, 2.0, 1.0);
  const PLATEELEM_RECORD record = PLATEELEM;
  for (const double broken : {NOT_A_NUMBER, INFINITE, -INFINITE}) {
    for (int i = 1; i <= W; ++i) {
      plastic_point<W> q = whole;
      q.trial(i) = broken;
      expect_left_to_the_general_way(s, q, "trial " + std::to_string(i));
    }
    for (MATRIX<8, 8>* M : {&PLATEELEM.P8, &PLATEELEM.Q8, &PLATEELEM.QINV8, &PLATEELEM.D8}) {
      for (const int i : {1, 3, 4, 6}) {
        for (const int j : {1, 3, 4, 6}) {
          if ((*M)(i, j) == 0.0) continue;
          (*M)(i, j) = broken;
          expect_left_to_the_general_way(s, whole, "matrix " + std::to_string(i) + std::to_string(j));
          PLATEELEM = record;
        }
      }
    }
    plastic_point<W> q = whole;
    q.ebar0 = broken;
    expect_left_to_the_general_way(s, q, "equivalent strain");
    PLATEELEM.TANGENT_MOD = broken;
    expect_left_to_the_general_way(s, whole, "tangent modulus");
    PLATEELEM = record;
  }
}

TYPED_TEST(SectionReturn, LeavesWhatIsReportedToTheGeneralWay) {
  // A negative multiplier, a derivative of zero, a divisor below zero, a tangent without a divisor.
  constexpr int W = TypeParam::value;
  seeded_random random(694);
  const prepared_section s(random, 0.0);
  const plastic_point<W> q(random, s, 2.0, 1.0);
  const PLATEELEM_RECORD record = PLATEELEM;
  for (double& v : PLATEELEM.LAM8.V) v = -v;
  expect_left_to_the_general_way(s, q, "negative");
  PLATEELEM.LAM8 = MATRIX<8, 8>{};
  expect_left_to_the_general_way(s, q, "derivative");
  PLATEELEM = record;
  for (double& v : PLATEELEM.LAM8.V) v *= 1e-25;
  expect_left_to_the_general_way(s, q, "small derivative");
  PLATEELEM = record;
  for (int i = 1; i <= W; ++i) {
    PLATEELEM.LAM8(i, i) *= -1e6;
    expect_left_to_the_general_way(s, q, "divisor " + std::to_string(i));
    PLATEELEM = record;
  }
  PLATEELEM.D8 = MATRIX<8, 8>{};
  expect_left_to_the_general_way(s, q, "tangent");
}

// ---- the check of the spectral form, which settles most sections by the blocks of the form

namespace {

// SECTION_SPECTRAL reports what SPECTRAL_CHECK finds.
void expect_report_of_the_check() {
  support::forget_assertions();
  SECTION_SPECTRAL(PLATEELEM, BY_ASSERTF);
  const PLATEELEM_RECORD& P = PLATEELEM;
  std::int32_t ok = 7;
  SPECTRAL_CHECK(P.D8, P.P8, P.Q8, P.LAM8, P.QINV8, ok);
  EXPECT_EQ(support::recorded_assertions().size(), ok == 1 ? 0U : 1U);
}

}  // namespace

TEST(SectionSpectralCheck, IsThatOfTheFullMatrices) {
  seeded_random random(695);
  constexpr double INFINITE = std::numeric_limits<double>::infinity();
  constexpr double SPECIAL[] = {NOT_A_NUMBER, INFINITE, -INFINITE, 0.0, 1e300, 1e-300};
  for (int trial = 0; trial < 3000; ++trial) {
    const prepared_section s(random, 0.0);
    double* const blocks[] = {PLATEELEM.D_MEMBRANE_NORMAL.V, PLATEELEM.D_BENDING.V, PLATEELEM.D_SHEAR.V};
    const int block = static_cast<int>(random.uniform(0.0, 3.0)), entry = static_cast<int>(random.uniform(0.0, 9.0));
    double& value = blocks[block][block == 2 ? entry % 4 : entry];
    switch (trial % 4) {
      case 0: value *= random.uniform(0.8, 1.25); break;
      case 1: value += random.uniform(-1.0, 1.0) * std::pow(10.0, random.uniform(-12.0, 0.0)) * s.p.E; break;
      case 2: value = SPECIAL[trial / 4 % 6]; break;
      default: (trial % 8 == 3 ? PLATEELEM.THICKNESS : PLATEELEM.YIELD_STRESS) = SPECIAL[trial / 8 % 6]; break;
    }
    expect_report_of_the_check();
  }
}

// ---- plastic strains of zero are not turned

TEST(SectionAxes, ZeroStaysZeroInFiniteAxesAlone) {
  seeded_random random(696);
  const prepared_section s(random, 0.0);
  VECTOR<8> local;
  VECTOR<12> global;
  SECTION_EP_TO_LOCAL(PLATEELEM, VECTOR<12>{}, local);
  SECTION_EP_TO_GLOBAL(PLATEELEM, VECTOR<8>{}, global);
  EXPECT_EQ(listed(local), std::vector<double>(8, 0.0));
  EXPECT_EQ(listed(global), std::vector<double>(12, 0.0));
  PLATEELEM.AXES(2, 1) = NOT_A_NUMBER;
  SECTION_EP_TO_LOCAL(PLATEELEM, VECTOR<12>{}, local);
  SECTION_EP_TO_GLOBAL(PLATEELEM, VECTOR<8>{}, global);
  EXPECT_TRUE(std::isnan(local(2)) && std::isnan(local(8)));
  EXPECT_TRUE(std::isnan(global(1)) && std::isnan(global(7)));
}

TEST(SectionAxes, OneStrainAloneIsTurned) {
  seeded_random random(697);
  const prepared_section s(random, 0.0);
  for (int i = 1; i <= 12; ++i) {
    VECTOR<12> ep{};
    ep(i) = 1e-3;
    VECTOR<8> local;
    SECTION_EP_TO_LOCAL(PLATEELEM, ep, local);
    double largest = 0.0;
    for (const double v : local.V) largest = std::max(largest, std::fabs(v));
    EXPECT_GT(largest, 1e-6) << i;
  }
}
