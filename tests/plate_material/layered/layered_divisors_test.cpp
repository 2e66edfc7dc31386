// layered_divisors_test.cpp: factors of the return that vanish, and values that stand exactly on a limit.
//
// Newton's method stops where a step is below 1e-6 of 1e-15 at its start: with moduli about 2^72 the first step from
// zero is the multiplier, so that it can be chosen by hand. Poisson's ratio is zero and there is no hardening.
#include <cmath>
#include <cstdlib>

#include "assert_recorder.h"
#include "comparison.h"
#include "prepared_point.h"

using layered_reference::material;
using layered_reference::THICK;
using layered_reference::THIN;

namespace {

constexpr int P = prepared_point::PLATE;
constexpr double STIFF = 0x1p72;
constexpr VECTOR<5> IN_PLANE{{0.0, 0.0, 1.0, 0.0, 0.0}}, ACROSS{{0.0, 0.0, 0.0, 0.6, 0.8}};

struct returned {
  std::int32_t ok = -5;
  texts said;
  bool stored;
};

returned radial_return(const VECTOR<5>& trial, int theory, int op) {
  const PLATE_STATE_RECORD& plate = SOLANAELEM.PLATE_STATE(P);
  const std::vector<std::uint64_t> before = bits_of(plate);
  support::forget_assertions();
  returned r;
  PLATE_RADIAL_RETURN(PLATEELEM, trial, thickness_point(P, 2, 3), theory, op, r.ok);
  r.said = support::recorded_assertions();
  r.stored = bits_of(plate) != before;
  return r;
}

void expect_failure(const VECTOR<5>& trial, int theory, const std::string& which) {
  for (const int op : {3, 33}) {
    const returned r = radial_return(trial, theory, op);
    EXPECT_EQ(r.ok, 0) << which;
    EXPECT_EQ(r.said, texts{NEGATIVE}) << which << ": the factor has no text of its own";
    EXPECT_FALSE(r.stored) << which;
  }
}

struct multiplied {
  double value = 7.0;
  std::int32_t ok = -5;
  texts said;
};

multiplied multiplier(const VECTOR<5>& trial) {
  support::forget_assertions();
  multiplied m;
  PLATE_PLAST_MULT(PLATEELEM, m.value, trial, m.ok, thickness_point(P, 1, 1), THIN);
  m.said = support::recorded_assertions();
  return m;
}

// E x for a shear of 1: f = 1 - sy^2 / 3 over f' = -2 E, and 1 + E x is the factor of the shear.
double yield_stress_of(int units) {
  double sy = 3.0;
  for (int i = 0; i < std::abs(units); ++i) sy = std::nextafter(sy, units > 0 ? 4.0 : 0.0);
  return sy;
}

}  // namespace

TEST(LayeredDivisors, FactorOfTheShearInThePlane) {
  // sy = 3 gives E x = -1 to the last bit; a unit in the last place of sy moves the factor by 4.4e-16 against it.
  for (const int theory : {THIN, THICK}) {
    for (const int units : {0, 1, -1}) {
      prepared_point p(material{STIFF, 0.0, yield_stress_of(units), 0.0});
      expect_failure(IN_PLANE, theory, "unit " + std::to_string(units));
    }
    for (const int units : {4, -4, 100, -100}) {
      prepared_point p(material{STIFF, 0.0, yield_stress_of(units), 0.0});
      const returned r = radial_return(IN_PLANE, theory, 33);
      EXPECT_EQ(r.ok, 1) << units << ": above 1e-15 on either side of zero";
      EXPECT_EQ(r.said, texts{NEGATIVE});
      EXPECT_TRUE(r.stored);
      EXPECT_EQ(p.state(2).SIG(4, 3) < 0.0, units > 0) << units;
    }
  }
}

TEST(LayeredDivisors, FactorOfTheTransverseShear) {
  // f' = -5/3 E, and the factor has 2 (5/12) E: again sy = 3, where those in the plane are 1 - 1.2 and 1 - 0.4.
  prepared_point p(material{STIFF, 0.0, 3.0, 0.0});
  expect_failure(ACROSS, THICK, "transverse");
  PLATEELEM.YIELD_STRESS = yield_stress_of(-100);
  EXPECT_EQ(radial_return(ACROSS, THICK, 33).ok, 1);
}

TEST(LayeredDivisors, FactorOfTheMeanStress) {
  // Equal stresses of 1: E x = 1.5 (1 - sy^2), and the factor is 1 + E x / 3 with 1/3 in single precision.
  const double third = 0.3333333432674408;
  prepared_point p(material{STIFF, 0.0, std::sqrt(1.0 + 1.0 / (1.5 * third)), 0.0});
  expect_failure({{1.0, 1.0, 0.0, 0.0, 0.0}}, THIN, "mean");
  PLATEELEM.YIELD_STRESS = std::sqrt(3.0);  // 1/3 to all digits leaves 3e-8
  EXPECT_EQ(radial_return({{1.0, 1.0, 0.0, 0.0, 0.0}}, THIN, 33).ok, 1);
}

TEST(LayeredDivisors, MultiplierOfZeroIsNotNegative) {
  // A trial stress on the surface: 3^2 / 3 - 3^2 / 3.
  prepared_point p(material{3.0, 0.0, 3.0, 0.0});
  for (const int op : {3, 33}) {
    const returned r = radial_return({{3.0, 3.0, 0.0, 0.0, 0.0}}, THIN, op);
    EXPECT_EQ(r.ok, 1);
    EXPECT_EQ(r.said, texts());
    EXPECT_EQ(r.stored, op == 33);
  }
  EXPECT_WITHIN(p.state(2).SIG(1, 3), 3.0, 3.0, 1e-7);
  EXPECT_EQ(p.state(2).EP_CUR(1, 3), 0.0);
  EXPECT_EQ(p.state(2).EPBAR_CUR(3), 0.0);
}

TEST(LayeredDivisors, TransverseShearsOfAThinElementAreNotInTheNorm) {
  // Nothing else is stressed: the norm is zero, and the derivative divides by it.
  prepared_point p(material{3.0, 0.0, 3.0, 1.0});
  const multiplied m = multiplier({{0.0, 0.0, 0.0, 3.0, 4.0}});
  EXPECT_EQ(m.ok, 0);
  EXPECT_EQ(m.said, texts{DIVISION});
  EXPECT_EQ(m.value, 7.0);
}

// ---- on the limit itself

TEST(LayeredLimits, NormOfTheSmallestIsADivisor) {
  prepared_point p(material{3.0, 0.0, 3.0, 0.0});
  double df = 7.0;
  std::int32_t ok = 1;
  support::forget_assertions();
  PLATE_DPHI(PLATEELEM, 1e-15, 0.0, 0.0, {{1.0, 0.0, 0.0, 0.0, 0.0}}, THIN, 0.0, thickness_point(P, 1, 1), df, ok);
  EXPECT_EQ(support::recorded_assertions(), texts());
  EXPECT_EQ(ok, 1);
  EXPECT_LT(df, 0.0);
}

TEST(LayeredLimits, DerivativeOfTheSmallestIsADivisor) {
  // Equal stresses of 1.5 on the surface: f = 0 and f' = -3^2 E / 18.
  const VECTOR<5> trial{{1.5, 1.5, 0.0, 0.0, 0.0}};
  prepared_point p(material{2e-15, 0.0, 1.5, 0.0});
  double df = 7.0;
  std::int32_t ok = 1;
  PLATE_DPHI(PLATEELEM, 1.5, 0.0, 0.0, trial, THIN, 0.0, thickness_point(P, 1, 1), df, ok);
  ASSERT_EQ(df, -1e-15);
  EXPECT_EQ(multiplier(trial).ok, 1);
  EXPECT_EQ(multiplier(trial).value, 0.0);
  PLATEELEM.E1 = 1.999e-15;
  EXPECT_EQ(multiplier(trial).ok, 0);
  EXPECT_EQ(multiplier(trial).value, 7.0);
}

TEST(LayeredLimits, StepOfAMillionthEndsNewtonsMethod) {
  // The first step is -1 / E; a second one would start where the factor of the shear is zero.
  const double E = std::nextafter(1e21, 0.0);
  prepared_point p(material{E, 0.0, 3.0, 0.0});
  ASSERT_EQ((1.0 / E) / 1e-15, 1e-6);
  const multiplied m = multiplier(IN_PLANE);
  EXPECT_EQ(m.ok, 1);
  EXPECT_EQ(m.value, -1.0 / E);
  EXPECT_EQ(m.said, texts());
  PLATEELEM.E1 = 0.9999995e21;  // the step is measured by where it starts
  const multiplied longer = multiplier(IN_PLANE);
  EXPECT_EQ(longer.ok, 0);
  EXPECT_EQ(longer.said, (texts{DIVISION, DIVISION}));
}
