// layered_multiplier_test.cpp: consistency function, its derivative and Newton's method for the multiplier.
#include <cmath>

#include "assert_recorder.h"
#include "comparison.h"
#include "prepared_point.h"

using layered_reference::material;
using layered_reference::real;
using layered_reference::THICK;
using layered_reference::THIN;
using layered_reference::vector5;
using support::seeded_random;

namespace {

constexpr int P = prepared_point::PLATE;

struct three {
  double a, b, c;
};

three invariants_of(const vector5& s, int theory) {
  const real mean = s(0) + s(1), difference = s(0) - s(1), shear = s(3) * s(3) + s(4) * s(4);
  return {static_cast<double>(mean * mean / 6), static_cast<double>(difference * difference / 2 + 2 * s(2) * s(2)),
          static_cast<double>(theory == THICK ? 2 * shear : 0)};
}

struct evaluated {
  double value = 7.0;
  std::int32_t ok = 1;
};

evaluated PHI(const three& i, double x, int theory) {
  evaluated e;
  PLATE_PHI(PLATEELEM, i.a, i.b, i.c, x, e.value, thickness_point(P, 1, 1), theory, e.ok);
  return e;
}

evaluated DPHI(const three& i, const vector5& s, double x, int theory) {
  evaluated e;
  PLATE_DPHI(PLATEELEM, i.a, i.b, i.c, vector_of<5>(s), theory, x, thickness_point(P, 1, 1), e.value, e.ok);
  return e;
}

evaluated multiplier(const vector5& s, int theory) {
  evaluated e;
  e.ok = -5;
  PLATE_PLAST_MULT(PLATEELEM, e.value, vector_of<5>(s), e.ok, thickness_point(P, 1, 1), theory);
  return e;
}

vector5 stress(double xx, double yy, double xy = 0.0, double xz = 0.0, double yz = 0.0) {
  vector5 s;
  s << xx, yy, xy, xz, yz;
  return s;
}

const material SIMPLE{3.0, 0.0, 3.0, 0.0};  // p = 1 + x, q = 1 + 3 x, r = 1 + 2.5 x

// What a call said.
template <class CALL>
texts said(const CALL& call) {
  support::forget_assertions();
  call();
  return support::recorded_assertions();
}

// A trial stress of random direction that reaches level times the yield surface.
vector5 random_trial(seeded_random& random, const material& m, int theory, double ebar, double level) {
  vector5 s;
  for (int i = 0; i < 5; ++i) s(i) = random.uniform(-1.0, 1.0);
  if (theory == THIN) s.tail(2).setZero();
  const real kappa = m.sy + m.hardening() * ebar;
  s *= level * kappa / std::sqrt(1.5L * s.dot(layered_reference::metric(theory) * s));
  return rounded(vector_of<5>(s));
}

}  // namespace

TEST(PlatePhi, ByHand) {
  prepared_point p(SIMPLE);
  // a / 4 + b / 16 + c / 12.25 over two, less 9 / 3.
  EXPECT_CLOSE(PHI({8.0, 32.0, 0.0}, 1.0, THIN).value, 2.0 / 2.0 + 2.0 / 2.0 - 3.0, 3.0, 4);
  EXPECT_CLOSE(PHI({8.0, 32.0, 24.5}, 1.0, THICK).value, 0.0, 1.0, 3e8);  // 5/3 in single precision
  EXPECT_EQ(PHI({8.0, 32.0, 24.5}, 0.0, THICK).value, 0.5 * 64.5 - 3.0);
  EXPECT_EQ(PHI({8.0, 32.0, 24.5}, 0.0, THIN).value, 0.5 * 40.0 - 3.0) << "a thin element leaves c out";
  p.state().EPBAR_START(1) = 0.25;
  PLATEELEM.TANGENT_MOD = 1.0;  // H = 1 / (1 - 1/3) = 1.5
  const double kappa = 3.0 + 1.5 * (0.25 + 0.8164966106414795 * 2.0);
  EXPECT_CLOSE(PHI({8.0, 32.0, 0.0}, 1.0, THIN).value, 2.0 - kappa * kappa / 3.0, 20.0, 4);
}

TEST(PlateDphi, ByHand) {
  prepared_point p(SIMPLE);
  // s = (6, 2, 4): sum 8, difference 4. dxi = -64 x 3 / 9 / 8 - (16 + 64) x 3 / 64.
  const vector5 s = stress(6.0, 2.0, 4.0);
  EXPECT_CLOSE(DPHI(invariants_of(s, THIN), s, 1.0, THIN).value, 0.5 * (-64.0 * 3.0 / 72.0 - 80.0 * 3.0 / 64.0), 4.0,
               8);
  EXPECT_CLOSE(DPHI(invariants_of(s, THIN), s, 0.0, THIN).value, 0.5 * (-64.0 / 3.0 - 240.0), 120.0, 8);
  // With shears 1 and 2: -4 x 5 x 2.5 more at x = 0.
  const vector5 sheared = stress(6.0, 2.0, 4.0, 1.0, 2.0);
  EXPECT_WITHIN(DPHI(invariants_of(sheared, THICK), sheared, 0.0, THICK).value, 0.5 * (-64.0 / 3.0 - 290.0), 150.0,
                1e-7);
}

TEST(PlateDphi, OfAThinElementTakesTheThirdInvariantIntoTheNormAlone) {
  // The norm has c in both theories, its derivative in the thick one alone. It shows with hardening.
  prepared_point p(SIMPLE);
  PLATEELEM.TANGENT_MOD = 1.0;
  const vector5 s = stress(6.0, 2.0, 4.0, 1.0, 2.0);
  const three with{64.0 / 6.0, 40.0, 10.0}, without{64.0 / 6.0, 40.0, 0.0};
  const double m = 0.8164966106414795, H = 1.5, dxi = -64.0 / 3.0 - 240.0;
  for (const three& i : {with, without}) {
    const double kappa = 3.0, norm = std::sqrt(i.a + i.b + i.c);
    EXPECT_CLOSE(DPHI(i, s, 0.0, THIN).value, 0.5 * dxi - 2.0 * kappa * H * m * norm / 3.0, 150.0, 8);
  }
  EXPECT_NE(DPHI(with, s, 0.0, THIN).value, DPHI(without, s, 0.0, THIN).value);
}

TEST(PlatePhiAndDphi, AreThoseOfTheReference) {
  seeded_random random(721);
  for (int trial = 0; trial < 400; ++trial) {
    const int theory = trial % 2 == 0 ? THIN : THICK;
    prepared_point p(random, trial % 3 == 0 ? 0.0 : 0.3);
    p.fill_random(random);
    const double ebar = p.state().EPBAR_START(1);
    const vector5 s = random_trial(random, p.m, theory, ebar, random.uniform(1.0, 5.0));
    const three i = invariants_of(s, theory);
    const double x = random.uniform(0.0, 4.0) / p.m.E, size = i.a + i.b + i.c + p.m.sy * p.m.sy;
    EXPECT_CLOSE(PHI(i, x, theory).value, static_cast<double>(layered_reference::phi(p.m, s, ebar, theory, x)), size,
                 32);
    EXPECT_CLOSE(DPHI(i, s, x, theory).value, static_cast<double>(layered_reference::dphi(p.m, s, ebar, theory, x)),
                 4.0 * size * p.m.E, 32);
  }
}

TEST(PlateDphi, IsTheDifferenceQuotientOfPhi) {
  seeded_random random(722);
  for (int trial = 0; trial < 200; ++trial) {
    const int theory = trial % 2 == 0 ? THIN : THICK;
    prepared_point p(random, trial % 3 == 0 ? 0.0 : 0.3);
    p.fill_random(random);
    const vector5 s = random_trial(random, p.m, theory, p.state().EPBAR_START(1), random.uniform(1.0, 5.0));
    const three i = invariants_of(s, theory);
    // Central differences of the fourth order.
    const double x = random.uniform(0.5, 3.0) / p.m.E, h = 1e-3 / p.m.E;
    const auto f = [&](double at) { return PHI(i, at, theory).value; };
    const double quotient = (8.0 * (f(x + h) - f(x - h)) - (f(x + 2.0 * h) - f(x - 2.0 * h))) / (12.0 * h);
    EXPECT_WITHIN(DPHI(i, s, x, theory).value, quotient, (i.a + i.b + i.c + p.m.sy * p.m.sy) * p.m.E, 1e-9);
  }
}

// ---- divisors of zero

TEST(PlatePhi, DivisorsBelowTheSmallestReportOnceAndLeaveTheValue) {
  prepared_point p(SIMPLE);
  const three i{1.0, 1.0, 1.0};
  const vector5 s = stress(1.0, 1.0, 1.0, 1.0, 1.0);
  // The square of p, q or r is just below and just above 1e-15.
  for (const double slope : {1.0, 3.0, 1.6666666269302368 * 1.5}) {
    for (const int theory : {THIN, THICK}) {
      for (const double sign : {-1.0, 1.0}) {
        const double below = (-1.0 + sign * 3.1e-8) / slope, above = (-1.0 + sign * 3.2e-8) / slope;
        evaluated e;
        EXPECT_EQ(said([&] { e = PHI(i, below, theory); }), texts{DIVISION}) << slope;
        EXPECT_EQ(e.ok, 0);
        EXPECT_EQ(e.value, 7.0);
        EXPECT_EQ(said([&] { e = PHI(i, above, theory); }), texts()) << slope;
        EXPECT_EQ(e.ok, 1);
        EXPECT_EQ(said([&] { e = DPHI(i, s, below, theory); }), texts{DIVISION}) << slope;
        EXPECT_EQ(e.ok, 0);
        EXPECT_EQ(e.value, 7.0);
      }
    }
  }
}

TEST(PlateDphi, CubeOfTheFirstFactorIsTestedAndTheOthersAreNot) {
  prepared_point p(SIMPLE);
  const three i{1.0, 1.0, 1.0};
  const vector5 s = stress(1.0, 1.0, 1.0, 1.0, 1.0);
  for (const double sign : {-1.0, 1.0}) {
    evaluated e;
    EXPECT_EQ(said([&] { e = DPHI(i, s, -1.0 + sign * 0.99e-5, THICK); }), texts{DIVISION});
    EXPECT_EQ(e.ok, 0);
    EXPECT_EQ(said([&] { e = PHI(i, -1.0 + sign * 0.99e-5, THICK); }), texts()) << "the function has no cube";
    EXPECT_EQ(said([&] { e = DPHI(i, s, -1.0 + sign * 1.01e-5, THICK); }), texts());
    EXPECT_EQ(e.ok, 1);
    for (const double slope : {3.0, 1.6666666269302368 * 1.5}) {
      EXPECT_EQ(said([&] { e = DPHI(i, s, (-1.0 + sign * 1e-6) / slope, THICK); }), texts()) << slope;
      EXPECT_EQ(e.ok, 1);
    }
  }
}

TEST(PlateDphi, NormBelowTheSmallestIsADivisorToo) {
  prepared_point p(SIMPLE);
  evaluated e;
  EXPECT_EQ(said([&] { e = DPHI({0.0, 0.0, 0.0}, stress(0.0, 0.0), 0.0, THIN); }), texts{DIVISION});
  EXPECT_EQ(e.ok, 0);
  EXPECT_EQ(e.value, 7.0);
  EXPECT_EQ(said([&] { e = DPHI({0.9e-15, 0.0, 0.0}, stress(1.0, 0.0), 0.0, THIN); }), texts{DIVISION});
  EXPECT_EQ(said([&] { e = DPHI({1.1e-15, 0.0, 0.0}, stress(1.0, 0.0), 0.0, THIN); }), texts());
  EXPECT_EQ(said([&] { e = DPHI({0.0, 0.0, 1.1e-15}, stress(1.0, 0.0), 0.0, THIN); }), texts()) << "c counts";
  EXPECT_EQ(said([&] { e = PHI({0.0, 0.0, 0.0}, 0.0, THIN); }), texts()) << "the function does not divide by it";
  EXPECT_EQ(e.value, -3.0);
}

// ---- Newton's method

TEST(PlatePlastMult, OfEqualStressesIsKnown) {
  // s / (1 + E x / (3 (1 - nu))) = sy without hardening.
  const material m{2.1e5, 0.3, 235.0, 0.0};
  prepared_point p(m);
  for (const double level : {1.0 + 1e-9, 1.001, 1.5, 3.0, 10.0}) {
    const double s = 235.0 * level;
    const evaluated e = multiplier(stress(s, s), THIN);
    EXPECT_EQ(e.ok, 1);
    EXPECT_WITHIN(e.value, (s / 235.0 - 1.0) * 3.0 * 0.7 / 2.1e5, 1e-5, 1e-9) << level;
  }
}

TEST(PlatePlastMult, OfPureShearIsKnown) {
  // sqrt(3) t / (1 + 2 G x) = sy, and (1 + 5/3 G x) for the transverse shear.
  const material m{2.1e5, 0.3, 235.0, 0.0};
  prepared_point p(m);
  const double G = 2.1e5 / 2.6, t = 2.0 * 235.0 / std::sqrt(3.0);
  EXPECT_WITHIN(multiplier(stress(0.0, 0.0, t), THIN).value, 1.0 / (2.0 * G), 1e-5, 1e-9);
  EXPECT_WITHIN(multiplier(stress(0.0, 0.0, 0.0, 0.6 * t, 0.8 * t), THICK).value, 0.6 / G, 1e-5, 1e-7);
}

TEST(PlatePlastMult, OfEqualStressesWithHardeningIsKnown) {
  // The norm of stress follows the hardened yield stress: s = k (1 + c x) + 2/3 H x s, k at the start of the step.
  const material m{2.1e5, 0.3, 235.0, 2.1e4};
  prepared_point p(m);
  p.state().EPBAR_START(1) = 0.002;
  const double H = 2.1e4 / 0.9, k = 235.0 + H * 0.002, c = 2.1e5 / 2.1;
  for (const double level : {1.01, 2.0, 6.0}) {
    const double s = k * level;
    EXPECT_WITHIN(multiplier(stress(s, s), THIN).value, (s - k) / (k * c + H * s * 2.0 / 3.0), 1e-5, 1e-7) << level;
  }
}

TEST(PlatePlastMult, IsTheRootOfTheConsistencyFunction) {
  seeded_random random(723);
  for (int trial = 0; trial < 300; ++trial) {
    const int theory = trial % 2 == 0 ? THIN : THICK;
    prepared_point p(random, trial % 3 == 0 ? 0.0 : 0.3);
    p.fill_random(random);
    const double ebar = p.state().EPBAR_START(1);
    const vector5 s = random_trial(random, p.m, theory, ebar, random.uniform(1.001, 10.0));
    const evaluated e = multiplier(s, theory);
    EXPECT_EQ(e.ok, 1);
    const real root = layered_reference::root(p.m, s, ebar, theory);
    EXPECT_WITHIN(e.value, static_cast<double>(root), static_cast<double>(root) + 1e-3 / p.m.E, 1e-10);
    const layered_reference::newton again = layered_reference::multiplier(p.m, s, ebar, theory);
    EXPECT_CLOSE(e.value, static_cast<double>(again.multiplier), 10.0 / p.m.E, 64);
  }
}

TEST(PlatePlastMult, OfASmallUniaxialExcessIsSmallAndPositive) {
  const material m{2.1e5, 0.3, 235.0, 0.0};
  prepared_point p(m);
  for (const double excess : {1e-10, 1e-7, 1e-4}) {
    const evaluated e = multiplier(stress(235.0 * (1.0 + excess), 0.0), THIN);
    EXPECT_EQ(e.ok, 1);
    // The first step: f / -df with f = 2/3 sy^2 excess, df = -s^2 / 2 (E / (9 (1 - nu)) + 2 G).
    const double slope = 0.5 * (2.1e5 / 6.3 + 2.1e5 / 1.3);
    EXPECT_WITHIN(e.value, 2.0 / 3.0 * excess / slope, excess / slope, 1e-3 * excess / 1e-4 + 1e-5) << excess;
  }
}

TEST(PlatePlastMult, FailsInItsPassFiveHundredAndOne) {
  // p grows by one half a pass until it comes near the root: the greater the trial stress over the yield stress, the
  // more passes. With 500 the multiplier is found, with 501 it is not, and nothing is said.
  constexpr double E = 1.0, trial = 1e152;
  int found_at_500 = 0, lost_at_501 = 0;
  for (double level = 1e87; level < 4e88; level *= 1.15) {
    const material m{E, 0.0, trial / level, 0.0};
    prepared_point p(m);
    const vector5 s = stress(trial, trial);
    const layered_reference::newton reference = layered_reference::multiplier(m, s, 0.0L, THIN);
    evaluated e;
    EXPECT_EQ(said([&] { e = multiplier(s, THIN); }), texts());
    EXPECT_EQ(e.ok, reference.ok ? 1 : 0) << level << " " << reference.passes;
    if (reference.ok) {
      EXPECT_WITHIN(e.value / 3.0, level, level, 1e-9);
    } else {
      EXPECT_EQ(e.value, 7.0) << "a failure leaves the multiplier";
    }
    found_at_500 += reference.passes == 500 && reference.ok ? 1 : 0;
    lost_at_501 += !reference.ok ? 1 : 0;
  }
  EXPECT_GT(found_at_500, 0);
  EXPECT_GT(lost_at_501, 0);
}

TEST(PlatePlastMult, EndsWithValuesThatAreNotANumber) {
  prepared_point p(SIMPLE);
  for (const double broken : {NOT_A_NUMBER, INFINITE, -INFINITE}) {
    for (int i = 0; i < 5; ++i) {
      vector5 s = stress(4.0, 5.0, 6.0, 7.0, 8.0);
      s(i) = broken;
      evaluated e;
      EXPECT_EQ(said([&] { e = multiplier(s, THICK); }), texts()) << i;
      EXPECT_EQ(e.ok, 0) << i << " " << broken;
      EXPECT_EQ(e.value, 7.0);
    }
  }
}

TEST(PlatePlastMult, DerivativeBelowTheSmallestFailsWithoutAText) {
  // -df = E s^2 / 3 x 2/3 at 0 for equal stresses.
  const auto value = [](double young) {
    prepared_point p(material{young, 0.0, 0.5, 0.0});
    evaluated e;
    EXPECT_EQ(said([&] { e = multiplier(stress(1.0, 1.0), THIN); }), texts());
    return e;
  };
  EXPECT_EQ(value(4.4e-15).ok, 0);
  EXPECT_EQ(value(4.4e-15).value, 7.0);
  EXPECT_EQ(value(1e-13).ok, 1) << "the derivative at the root is an eighth of that at zero";
}

TEST(PlatePlastMult, FailingFunctionRunsThePassToItsEnd) {
  // Inside the surface the first step goes to p = 0: f = a / 2 - sy^2 / 3 = -a with s = 1 and sy^2 = 3: function and
  // derivative report there.
  const material m{3.0, 0.0, std::sqrt(3.0), 0.0};
  prepared_point p(m);
  evaluated e;
  EXPECT_EQ(said([&] { e = multiplier(stress(1.0, 1.0), THIN); }), (texts{DIVISION, DIVISION}));
  EXPECT_EQ(e.ok, 0);
  EXPECT_EQ(e.value, 7.0);
  // A norm of zero fails in the derivative alone.
  EXPECT_EQ(said([&] { e = multiplier(stress(0.0, 0.0), THIN); }), texts{DIVISION});
  EXPECT_EQ(e.ok, 0);
}
