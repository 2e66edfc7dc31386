// Cables: the level catenary, two cables with a load at their joint, and what is said when there is no equilibrium.
#include <gtest/gtest.h>

#include <cmath>

#include "frame_decks.h"

using namespace frame_test;

namespace {

// Two halves of one cable that hangs from (0, 0) and (span, 0); node 2 is the middle, which starts at `start`.
solver::model hanging(double span, double length, double EA, double w, double start) {
  return read("*NODE\n1, 0, 0, 0\n2, " + number(span / 2) + ", " + number(start) + ", 0\n3, " + number(span) +
              ", 0, 0\n*ELEMENT, TYPE=T3D2, ELSET=C\n1, 1, 2\n2, 2, 3\n*MATERIAL, NAME=M\n*ELASTIC\n" + number(EA) +
              ", 0\n*CABLE SECTION, ELSET=C, MATERIAL=M\n1., " + number(length / 2) +
              "\n*BOUNDARY\n1, PINNED\n3, PINNED\n*STEP\n*STATIC\n*DLOAD\nC, PY, " + number(-w) + "\n*END STEP\n");
}

struct catenary {
  double length, EA, H, tension, sag;
};

// Span 100, w 10 per unstressed length. The first two are inextensible. The values are good to half a unit of their
// last digit.
const catenary CATENARIES[] = {{101, 1e13, 2044.30, 2105.75, 6.1451},
                               {105, 1e13, 919.64, 1058.94, 13.9304},
                               {101, 1e6, 1870.11, 1937.09, 6.7112},
                               {100, 1e6, 3456.02, 3492.00, 3.6106}};

double tension(const solver::end_forces& f, std::size_t first) {
  return std::hypot(f[first], f[first + 1], f[first + 2]);
}

}  // namespace

TEST(AnalysisCables, LevelCatenary) {
  for (const catenary& c : CATENARIES) {
    for (const double start : {-1.0, -20.0}) {
      const solved s = solve(hanging(100, c.length, c.EA, 10, start));
      EXPECT_WITHIN(s.u(1, 'y') + start, -c.sag, 1.0, 5.01e-5) << c.length;
      EXPECT_WITHIN(s.u(1, 'x'), 0.0, c.sag, 1e-8) << c.length;
      EXPECT_WITHIN(s.reaction(0, 'x'), -c.H, 1.0, 5.01e-3) << c.length;
      EXPECT_WITHIN(s.reaction(2, 'x'), c.H, 1.0, 5.01e-3) << c.length;
      EXPECT_WITHIN(s.reaction(0, 'y'), 10 * c.length / 2, c.H, 1e-8) << c.length;
      EXPECT_WITHIN(tension(s.results.members[0], 0), c.tension, 1.0, 5.01e-3) << c.length;
      EXPECT_WITHIN(tension(s.results.members[1], 6), c.tension, 1.0, 5.01e-3) << c.length;
    }
  }
}

// The tangent is the slope of the forces of the same load and the same temperature, in each direction of both ends.
TEST(AnalysisCables, TheTangentIsTheSlopeOfTheForces) {
  const solver::model m = read(
      "*NODE\n1, 0, 0, 0\n2, 9, 2, 3\n*ELEMENT, TYPE=T3D2, ELSET=C\n1, 1, 2\n*MATERIAL, NAME=M\n*ELASTIC\n1000, 0\n"
      "*EXPANSION\n1e-3\n*CABLE SECTION, ELSET=C, MATERIAL=M\n2., 9.5\n*BOUNDARY\n1, PINNED\n2, "
      "PINNED\n*STEP\n*STATIC\n"
      "*DLOAD\nC, PY, -1\n*END STEP\n");
  solver::library_model library(m);
  solver::distributed_load load;
  load.line = {1, -3, 2};
  load.temperature_change = 20;
  library.cables().load(0, load);
  const auto forces_at = [&](std::size_t freedom, double step) {
    std::vector<double> moved(12, 0.0);
    moved[freedom] = step;
    library.cables().move_nodes(moved);
    solver::element_vector f;
    library.cables().forces(0, f);
    return f;
  };
  forces_at(0, 0);
  solver::element_matrix K;
  library.cables().stiffness(0, K);
  const double largest = K(1, 1), step = 1e-4;
  for (const int j : {1, 2, 3, 7, 8, 9}) {
    const auto freedom = static_cast<std::size_t>(j - 1);
    const solver::element_vector ahead = forces_at(freedom, step), behind = forces_at(freedom, -step);
    for (int i = 1; i <= 12; ++i) EXPECT_NEAR(K(i, j), (ahead(i) - behind(i)) / (2 * step), 1e-6 * largest) << i << j;
  }
}

TEST(AnalysisCables, TwoCablesWithALoad) {
  // O'Brien and Francis (1964): the way of the joint from dead load to dead load and force.
  solver::model m = deck("two_cables.inp");
  const solved dead = solve(m);
  m.steps.erase(m.steps.begin());
  const solved loaded = solve(m);
  EXPECT_WITHIN(loaded.u(1, 'x') - dead.u(1, 'x'), -2.8194, 18.4567, 1e-5);
  EXPECT_WITHIN(loaded.u(1, 'y') - dead.u(1, 'y'), -18.4567, 18.4567, 1e-5);
}

TEST(AnalysisCables, HangingCableDeck) {
  const solved s = solve(deck("hanging_cable.inp"));
  EXPECT_WITHIN(s.u(4, 'y') - 14, -13.9304, 1.0, 1e-4);
  EXPECT_WITHIN(s.reaction(0, 'x'), -919.64, 1.0, 1e-2);
  EXPECT_WITHIN(tension(s.results.members[0], 0), 1058.94, 1.0, 1e-2);
}

TEST(AnalysisCables, TautCableIsABar) {
  // Shorter than the chord by 1 in 1000 and without load: tension EA (l / L0 - 1).
  const solved s = solve(read(
      "*NODE\n1, 0, 0, 0\n2, 3, 4, 0\n*ELEMENT, TYPE=T3D2, ELSET=C\n7, 1, 2\n*MATERIAL, NAME=M\n*ELASTIC\n1E6, 0\n"
      "*CABLE SECTION, ELSET=C, MATERIAL=M, LENGTH RATIO=0.999\n2\n*BOUNDARY\n1, PINNED\n2, PINNED\n*STEP\n*STATIC\n"
      "*END STEP\n"));
  const double T = 2e6 * (1 / 0.999 - 1);
  EXPECT_WITHIN(s.reaction(1, 'x'), 0.6 * T, T, 1e-8);
  EXPECT_WITHIN(s.reaction(1, 'y'), 0.8 * T, T, 1e-8);
}

TEST(AnalysisCables, StayedMast) {
  // A vertical beam, clamped at its foot, pulled by a taut weightless cable that is 45 degrees steep: the horizontal
  // part of the tension bends the mast as far as the cable gives way.
  const double EA = 1e5, h = 10, EI = 2e5 * 5, L0 = h * std::sqrt(2.0) * 0.9999;
  const solved s =
      solve(read("*NODE\n1, 0, 0, 0\n2, 0, 10, 0\n3, 10, 0, 0\n*ELEMENT, TYPE=B33, ELSET=MAST\n1, 1, 2\n"
                 "*ELEMENT, TYPE=T3D2, ELSET=STAY\n2, 2, 3\n*MATERIAL, NAME=M\n*ELASTIC\n2E5, 0\n"
                 "*BEAM GENERAL SECTION, ELSET=MAST, MATERIAL=M\n1E6, 5, 0, 5, 1\n0, 0, 1\n*CABLE SECTION, ELSET=STAY, "
                 "MATERIAL=M\n"
                 "0.5, " +
                 number(L0) + "\n*BOUNDARY\n1, ENCASTRE\n3, PINNED\n*STEP\n*STATIC\n*END STEP\n"));
  // Bisection on the displacement x of the top, which the mast answers with 3 EI x / h^3.
  double low = 0, high = 0.01;
  for (int i = 0; i < 200; ++i) {
    const double x = (low + high) / 2, chord = std::hypot(h - x, h);
    const double pull = EA * (chord / L0 - 1) * (h - x) / chord;
    (pull > 3 * EI * x / (h * h * h) ? low : high) = x;
  }
  EXPECT_WITHIN(s.u(1, 'x'), low, low, 1e-6);
}

TEST(AnalysisCables, SlackWithoutLoad) {
  const std::string text = error_of(hanging(100, 101, 1e6, 0, -1));
  EXPECT_EQ(text.substr(0, 27), "frame.inp:6: *ELEMENT: cabl") << text;
}

TEST(AnalysisCables, OtherAnalysesAreRefused) {
  const std::string head =
      "*NODE\n1, 0, 0, 0\n2, 3, 4, 0\n*ELEMENT, TYPE=T3D2, ELSET=C\n7, 1, 2\n*MATERIAL, NAME=M\n*ELASTIC\n1E6, 0\n"
      "*DENSITY\n1\n*CABLE SECTION, ELSET=C, MATERIAL=M\n2, 5\n";
  for (const char* const step : {"*STEP\n*FREQUENCY\n1\n", "*STEP\n*BUCKLE\n1\n", "*STEP, PDELTA\n*STATIC\n"}) {
    try {
      read(head + step + "*END STEP\n");
      ADD_FAILURE() << step;
    } catch (const solver::deck_error& error) {
      EXPECT_EQ(std::string(error.what()),
                "frame.inp:13: *STEP: cables are supported in steps with *STATIC and without PDELTA");
    }
  }
}
