// equilibrium_test.cpp: the forces at the ends against the law of the cable integrated, against the closed planar
// catenary and its published numbers, and against the scales of length and force.
#include <gtest/gtest.h>

#include <cmath>

#include "cable_case.h"

namespace {

// The span that the returned forces make by integration, against the chord, as a part of the larger of chord and L0.
void expect_span(const cable_case& c, const cable_forces& f) {
  const integrated_span found = integrate(c, {-f.F[0], -f.F[1], -f.F[2]});
  const double scale = std::max(chord(c), c.L0);
  for (std::size_t i = 0; i < 3; ++i) {
    const double span = static_cast<double>(found.span[i]);
    const double ratio = std::fabs(span - (c.X2[i] - c.X1[i])) / scale;
    EXPECT_LE(ratio, 1e-12) << "span " << i + 1 << " " << span << " for " << c.X2[i] - c.X1[i] << "\n" << describe(c);
  }
}

void expect_balance(const cable_case& c, const cable_forces& f) {
  const double scale = force_scale(c, f);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_LE(std::fabs(f.F[i] + f.F[i + 3] + c.w[i] * c.L0) / scale, 1e-15) << "force " << i + 1 << "\n"
                                                                             << describe(c);
  }
  EXPECT_LE(std::fabs(f.tension1 - norm({f.F[0], f.F[1], f.F[2]})) / scale, 1e-15) << describe(c);
  EXPECT_LE(std::fabs(f.tension2 - norm({f.F[3], f.F[4], f.F[5]})) / scale, 1e-15) << describe(c);
}

struct level_cable {
  double L0, EA, H, largest, sag;
};

// Span 100 under 10 a unit length between level supports.
cable_case make_level(const level_cable& reference) {
  cable_case c;
  c.X2 = {100.0, 0.0, 0.0};
  c.w = {0.0, -10.0, 0.0};
  c.E = reference.EA;
  c.L0 = reference.L0;
  return c;
}

}  // namespace

TEST(Equilibrium, TheIntegratedSpanIsTheChord) {
  std::mt19937_64 source(401);
  for (int i = 0; i < 1500; ++i) {
    const cable_case c = random_cable(source, uniform(source, 0.01, 1.2));
    const cable_forces f = solve(c);
    ASSERT_EQ(f.status, 0) << describe(c);
    expect_span(c, f);
    expect_balance(c, f);
  }
}

TEST(Equilibrium, TheIntegratedSpanIsTheChordAroundTheUnstressedLength) {
  std::mt19937_64 source(402);
  for (int i = 0; i < 500; ++i) {
    const cable_case c =
        random_cable(source, 1.0 + std::pow(10.0, uniform(source, -14.0, -2.0)) * (i % 2 == 0 ? 1 : -1));
    const cable_forces f = solve(c);
    ASSERT_EQ(f.status, 0) << describe(c);
    expect_span(c, f);
    expect_balance(c, f);
  }
}

TEST(Equilibrium, TheIntegratedSpanIsTheChordNearlyAlongTheLoad) {
  std::mt19937_64 source(403);
  for (int i = 0; i < 500; ++i) {
    cable_case c = random_cable(source, 1.0);
    c.w = {0.0, (i % 2 == 0 ? -1.0 : 1.0) * norm(c.w), 0.0};
    c.X2 = {std::pow(10.0, uniform(source, -12.0, -1.0)) * c.L0, uniform(source, -1.2, 1.2) * c.L0, 0.0};
    const cable_forces f = solve(c);
    ASSERT_EQ(f.status, 0) << describe(c);
    expect_span(c, f);
    expect_balance(c, f);
  }
}

// The references have the digits that are given: half a unit of the last one.
TEST(Equilibrium, LevelCatenaryOfTheTables) {
  constexpr double INEXTENSIBLE = 1e16;
  const level_cable references[] = {
      {101.0, INEXTENSIBLE, 2044.30, 2105.75, 6.1451},
      {105.0, INEXTENSIBLE, 919.64, 1058.94, 13.9304},
      {101.0, 1e6, 1870.11, 1937.09, 6.7112},
      {100.0, 1e6, 3456.02, 3492.00, 3.6106},
  };
  for (const level_cable& reference : references) {
    const cable_case c = make_level(reference);
    const cable_forces f = solve(c);
    ASSERT_EQ(f.status, 0);
    // y(s) integrated to the middle, where the tension is H.
    const double V = 0.5 * 10.0 * reference.L0;
    const double sag = (f.tension1 - f.F[3]) / 10.0 + V * V / (2.0 * reference.EA * 10.0);
    EXPECT_NEAR(f.F[3], reference.H, 0.0051) << "L0 " << reference.L0 << " EA " << reference.EA;
    EXPECT_NEAR(f.tension1, reference.largest, 0.0051) << "L0 " << reference.L0 << " EA " << reference.EA;
    EXPECT_NEAR(f.tension2, reference.largest, 0.0051) << "L0 " << reference.L0 << " EA " << reference.EA;
    EXPECT_NEAR(sag, reference.sag, 0.000051) << "L0 " << reference.L0 << " EA " << reference.EA;
  }
}

// y = a cosh((x - x0)/a) with H = w a, chosen first; length and end point follow.
TEST(Equilibrium, ThePlanarCatenaryOfAnInextensibleCable) {
  std::mt19937_64 source(404);
  for (int i = 0; i < 300; ++i) {
    const double a = std::pow(10.0, uniform(source, -1.5, 1.0));
    const double x1 = uniform(source, -2.0, 1.0);
    const double x2 = x1 + uniform(source, 0.2, 2.0);
    cable_case c;
    c.X1 = {3.0, -1.0, 2.0};
    c.X2 = {3.0, -1.0 + a * (std::cosh(x2 / a) - std::cosh(x1 / a)), 2.0 + x2 - x1};
    c.L0 = a * (std::sinh(x2 / a) - std::sinh(x1 / a));
    c.w = {0.0, -5.0, 0.0};
    c.E = 1e18 * 5.0 * c.L0 * std::cosh((x2 - x1) / a);
    const cable_forces f = solve(c);
    ASSERT_EQ(f.status, 0) << describe(c);
    const double scale = force_scale(c, f);
    // The end point has the rounding of two cosh of it; what that does to the forces grows with the slack as 1/slack.
    const double slack = 1.0 - chord(c) / c.L0;
    const double rounding = 1e-14 * (a / c.L0) * std::cosh(std::max(std::fabs(x1), std::fabs(x2)) / a) / slack;
    EXPECT_LE(std::fabs(f.F[5] - 5.0 * a) / scale, rounding) << describe(c);
    EXPECT_LE(std::fabs(f.F[4] - 5.0 * a * std::sinh(x2 / a)) / scale, rounding) << describe(c);
    EXPECT_LE(std::fabs(f.F[1] + 5.0 * a * std::sinh(x1 / a)) / scale, rounding) << describe(c);
    EXPECT_LE(std::fabs(f.tension2 - 5.0 * a * std::cosh(x2 / a)) / scale, rounding) << describe(c);
    EXPECT_EQ(f.F[0], 0.0);
  }
}

// Powers of two scale without rounding: every digit stays.
TEST(Equilibrium, UnitsOfLengthAndForceDoNotMatter) {
  std::mt19937_64 source(405);
  for (int i = 0; i < 200; ++i) {
    const cable_case c = random_cable(source, uniform(source, 0.01, 1.2));
    const cable_forces f = solve(c);
    for (const int length : {-100, -30, 40, 100}) {
      for (const int force : {-200, 25, 200}) {
        cable_case scaled = c;
        scaled.E = std::ldexp(c.E, force - 2 * length);
        scaled.area = std::ldexp(c.area, 2 * length);
        scaled.L0 = std::ldexp(c.L0, length);
        for (std::size_t k = 0; k < 3; ++k) {
          scaled.X2[k] = std::ldexp(c.X2[k], length);
          scaled.w[k] = std::ldexp(c.w[k], force - length);
        }
        const cable_forces g = solve(scaled);
        ASSERT_EQ(g.status, 0) << describe(scaled);
        for (std::size_t k = 0; k < 6; ++k) {
          EXPECT_LE(std::fabs(std::ldexp(g.F[k], -force) - f.F[k]) / force_scale(c, f), 1e-14) << describe(scaled);
        }
      }
    }
  }
}

TEST(Equilibrium, NodesThatChangePlacesMirrorTheForces) {
  std::mt19937_64 source(406);
  for (int i = 0; i < 200; ++i) {
    const cable_case c = random_cable(source, uniform(source, 0.01, 1.2));
    cable_case turned = c;
    std::swap(turned.X1, turned.X2);
    const cable_forces f = solve(c);
    const cable_forces g = solve(turned);
    for (std::size_t k = 0; k < 6; ++k) {
      EXPECT_LE(std::fabs(f.F[k] - g.F[(k + 3) % 6]) / force_scale(c, f), 1e-12) << describe(c);
    }
  }
}
