// The shape and the tension of cables: the closed form against a numerical integral, and cables of a deck.
#include <gtest/gtest.h>

#include <cmath>

#include "elements/member_field.h"
#include "frame_decks.h"
#include "output/summary.h"

using namespace frame_test;
using solver::catenary;
using solver::station;

namespace {

// Simpson's rule on dx/ds = (stretch + T / EA) t / T.
point integrated(const catenary& c, double s) {
  constexpr int HALVES = 4000;
  point x = c.first;
  for (int i = 0; i <= HALVES; ++i) {
    const double at = s * i / HALVES, weight = (i == 0 || i == HALVES ? 1 : i % 2 == 1 ? 4 : 2) * s / (3 * HALVES);
    point t{};
    for (std::size_t d = 0; d < 3; ++d) t[d] = c.tension[d] - at * c.load[d];
    const double size = std::hypot(t[0], t[1], t[2]);
    for (std::size_t d = 0; d < 3; ++d) x[d] += weight * (c.stretch + size / c.EA) * t[d] / size;
  }
  return x;
}

}  // namespace

TEST(AnalysisCableField, ClosedFormAgainstAnIntegral) {
  catenary c;
  c.first = {1, -2, 3};
  c.length = 40;
  c.stretch = 1.01;
  c.EA = 500;
  // Tensions at the first end and loads: sagging, leaning, light, none, and straight down.
  const std::vector<std::pair<point, point>> cases = {{{30, 5, 60}, {0, 0, 3}},       {{30, 5, 60}, {0.4, -0.7, 0.2}},
                                                      {{-8, 60, 2}, {1e-9, 0, 1e-9}}, {{7, 7, 7}, {0, 0, 0}},
                                                      {{0, 0, 200}, {0, 0, 2}},       {{1e-3, 0, 50}, {0, 0, 1}}};
  for (const auto& [tension, load] : cases) {
    c.tension = tension;
    c.load = load;
    for (const double s : {0.0, 11.0, 26.0, 40.0}) {
      const point x = position_at(c, s), expected = integrated(c, s);
      for (std::size_t d = 0; d < 3; ++d) EXPECT_WITHIN(x[d], expected[d], 40, 1e-9) << s << " " << d;
    }
  }
}

TEST(AnalysisCableField, LevelCableOfOneElement) {
  // Inextensible, 105 long over a span of 100: H = w c with 105 = 2 c sinh(50 / c), sag c (cosh(50 / c) - 1).
  const double w = 10;
  double low = 50, high = 1000;
  for (int i = 0; i < 200; ++i) {
    const double c = (low + high) / 2;
    (2 * c * std::sinh(50 / c) > 105 ? low : high) = c;
  }
  const double sag = low * (std::cosh(50 / low) - 1);
  const solved s = solve(
      read("*NODE\n1, 0, 0, 0\n2, 100, 0, 0\n*ELEMENT, TYPE=T3D2, ELSET=C\n1, 1, 2\n*MATERIAL, NAME=M\n*ELASTIC\n1e13, "
           "0\n*CABLE SECTION, ELSET=C, MATERIAL=M\n1., 105\n*BOUNDARY\n1, PINNED\n2, PINNED\n*STEP\n*STATIC\n*DLOAD\n"
           "C, PY, -10\n*END STEP\n"));
  const solver::member_field& f = s.results.fields.at(0);
  ASSERT_TRUE(f.hanging.has_value());
  EXPECT_WITHIN(sag_of(*f.hanging).value, sag, sag, 1e-8);
  EXPECT_WITHIN(sag_of(*f.hanging).xi, 0.5, 1, 1e-8);
  const solver::value_range tension = range_of_force(f, 0);
  EXPECT_WITHIN(tension.least.value, w * low, w * low, 1e-8);
  EXPECT_WITHIN(tension.least.xi, 0.5, 1, 1e-8);
  EXPECT_WITHIN(tension.largest.value, std::hypot(w * low, w * 105 / 2), w * low, 1e-8);
  EXPECT_WITHIN(station_at(f, 0.5).displacement[1], -sag, sag, 1e-8);
  for (const double xi : {0.0, 1.0})
    for (const double u : station_at(f, xi).displacement) EXPECT_WITHIN(u, 0.0, 100, 1e-9);
  // A quarter of the length: x from the middle is c asinh(s / c).
  EXPECT_WITHIN(station_at(f, 0.25).place[0] + station_at(f, 0.25).displacement[0],
                50 - low * std::asinh(105.0 / 4 / low), 100, 1e-8);
}

TEST(AnalysisCableField, WeightAndWarmthOfACable) {
  // A cable that is 100 long when cold and 5 per cent longer, with its weight by volume: the tension is that of a cable
  // of 105 under the weight by its length then, and the shape does not know the weight.
  const auto level = [](const std::string& area, const std::string& length, const std::string& loads) {
    return solve(
        read("*NODE\n1, 0, 0, 0\n2, 98, 0, 0\n*ELEMENT, TYPE=T3D2, ELSET=C\n1, 1, 2\n*MATERIAL, "
             "NAME=M\n*ELASTIC\n1e13, 0\n*EXPANSION\n1e-3\n*DENSITY\n0.5\n*CABLE SECTION, ELSET=C, "
             "MATERIAL=M\n" +
             area + ", " + length + "\n*BOUNDARY\n1, PINNED\n2, PINNED\n*STEP\n*STATIC\n" + loads + "*END STEP\n"));
  };
  const solver::member_field line = level("2.", "105", "*DLOAD\nC, PY, -10\n").results.fields.at(0);
  const std::vector<std::pair<double, solved>> others = [&] {
    std::vector<std::pair<double, solved>> all;
    all.emplace_back(1.0, level("2.", "105", "*DLOAD\nC, BY, -5\n"));
    all.emplace_back(1.0, level("2.", "105", "*DLOAD\nC, GRAV, 10, 0, -1, 0\n"));
    all.emplace_back(1 / 1.05, level("2.", "100", "*DLOAD\nC, PY, -10\n*TEMPERATURE\n1, 50\n2, 50\n"));
    return all;
  }();
  const double T = tension_at(*line.hanging, 0);
  for (const auto& [weight, other] : others) {
    const solver::member_field& f = other.results.fields.at(0);
    ASSERT_TRUE(f.hanging.has_value());
    for (const double xi : {0.0, 0.3, 0.5, 1.0}) {
      const station a = station_at(f, xi), b = station_at(line, xi);
      EXPECT_WITHIN(a.force[0], weight * b.force[0], T, 1e-8) << weight << " " << xi;
      for (std::size_t d = 0; d < 3; ++d) EXPECT_WITHIN(a.displacement[d], b.displacement[d], 98, 1e-8) << weight;
    }
    EXPECT_WITHIN(sag_of(*f.hanging).value, sag_of(*line.hanging).value, 98, 1e-8);
  }
}

TEST(AnalysisCableField, TautSlopingCableIsLowestAtAnEnd) {
  // Steep and taut: the tension points the same way all along, so that the farthest point lies between the ends where
  // the tension runs along the chord, and the least tension is that of the lower end.
  catenary c;
  c.first = {0, 0, 0};
  c.length = 10;
  c.EA = 1e6;
  c.tension = {30, 0, -40};  // at the first, upper end
  c.load = {0, 0, -1};
  c.second = position_at(c, c.length);
  solver::member_field f;
  f.length = c.length;
  f.hanging = c;
  const solver::value_range range = range_of_force(f, 0);
  EXPECT_WITHIN(range.largest.value, 50.0, 50, 1e-12);
  EXPECT_EQ(range.largest.xi, 0);
  EXPECT_WITHIN(range.least.value, std::hypot(30, 30), 50, 1e-12);
  EXPECT_EQ(range.least.xi, 1);
}

TEST(AnalysisCableField, TheSummaryNamesTheDeepestCable) {
  // Spans of 60 and 100 of cables 5 per cent longer: the longer one hangs deeper, in proportion.
  const solver::model m = read(
      "*NODE\n1, 0, 0, 0\n2, 60, 0, 0\n3, 160, 0, 0\n4, 220, 0, 0\n*ELEMENT, TYPE=T3D2, ELSET=A\n1, 1, 2\n"
      "*ELEMENT, TYPE=T3D2, ELSET=B\n2, 2, 3\n*ELEMENT, TYPE=T3D2, ELSET=D\n3, 3, 4\n*MATERIAL, "
      "NAME=M\n*ELASTIC\n1e13, "
      "0\n*CABLE SECTION, ELSET=A, MATERIAL=M\n1., 63\n*CABLE SECTION, ELSET=B, MATERIAL=M\n1., 105\n*CABLE SECTION, "
      "ELSET=D, MATERIAL=M\n1., 63\n*BOUNDARY\n1, PINNED\n2, PINNED\n3, PINNED\n4, PINNED\n*STEP\n*STATIC\n*DLOAD\n"
      "A, PY, -10\nB, PY, -10\nD, PY, -10\n*END STEP\n");
  const solved s = solve(m);
  const auto sag = [&](std::size_t e) { return sag_of(*s.results.fields.at(e).hanging).value; };
  EXPECT_WITHIN(sag(0) / 60, sag(1) / 100, 0.1, 1e-8);
  const std::string text = displacement_summary(m, s.solution, s.results.fields);
  EXPECT_NE(text.find("in element 2 at s = 52.5, from its chord"), std::string::npos) << text;
}
