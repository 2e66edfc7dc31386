// Loads on surfaces, by what holds for their sums: balance over closed surfaces, buoyancy, statics of a wall; and by
// the same loads given otherwise.
#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

#include "analyses/load_sums.h"
#include "elements/load_case.h"
#include "solids_support.h"

using namespace solids_test;
using solver::DIRECTIONS;

namespace {

struct resultant {
  point force{}, moment{};
};

resultant sum_of(const solver::model& m) {
  const solver::load_case loads = solver::gather_load_case(m, m.steps.at(0));
  resultant r;
  for (std::size_t n = 0; n < m.nodes.size(); ++n) {
    const double* const f = loads.nodal_load.data() + DIRECTIONS * n;
    const point& x = m.nodes[n].xyz;
    for (std::size_t i = 0; i < 3; ++i) {
      const std::size_t j = (i + 1) % 3, k = (i + 2) % 3;
      r.force[i] += f[i];
      r.moment[i] += f[3 + i] + x[j] * f[k] - x[k] * f[j];
    }
  }
  return r;
}

void expect_point(const point& a, const point& b, double size, double tolerance, const std::string& what) {
  for (std::size_t i = 0; i < 3; ++i) EXPECT_WITHIN(a[i], b[i], size, tolerance) << what << ", part " << i;
}

// A block with the surface AROUND of all its free faces under one load.
solver::model around(const block& b, const std::string& load) {
  std::string text = b.deck("ALL, 1, 3\n", "*STATIC\n*DSLOAD\nAROUND, " + load + "\n");
  text.insert(text.find("*MATERIAL"), "*SURFACE, NAME=AROUND\nBODY\n");
  return read(text);
}

// Turned about two axes and moved: no face is level. The volume stays 1, its middle goes to MIDDLE.
const point MIDDLE = {3, -2, 5};
point turned(double u, double v, double w) {
  const double x = u - 0.5, y = v - 0.5, z = w - 0.5, c = std::cos(0.7), s = std::sin(0.7), p = std::cos(0.4),
               q = std::sin(0.4);
  const double y1 = c * y - s * z, z1 = s * y + c * z;
  return {MIDDLE[0] + p * x + q * z1, MIDDLE[1] + y1, MIDDLE[2] - q * x + p * z1};
}

// Outer faces that are warped, too.
point warped(double u, double v, double w) {
  return {u + 0.2 * v * w, v + 0.15 * u * w - 0.1 * w, w + 0.1 * u * v + 0.05 * u};
}

block of(const std::string& kind, point (*place)(double, double, double)) {
  block b = distorted(kind, 2);
  const auto inner = b.place;
  b.place = [=](double u, double v, double w) {
    const point p = inner(u, v, w);
    return place(p[0], p[1], p[2]);
  };
  return b;
}

const std::vector<std::string> KINDS = {"C3D8", "C3D6", "C3D4"};

}  // namespace

TEST(AnalysisSurfaceLoads, APressureAllRoundIsInBalance) {
  for (const std::string& kind : KINDS) {
    const resultant r = sum_of(around(of(kind, warped), "P, 7"));
    expect_point(r.force, {0, 0, 0}, 7, 1e-14, kind);
    expect_point(r.moment, {0, 0, 0}, 7, 1e-14, kind);
  }
}

// Archimedes: the weight of the liquid, upwards through the middle of the volume.
TEST(AnalysisSurfaceLoads, Buoyancy) {
  const double gamma = 3;
  for (const std::string& kind : KINDS) {
    const resultant r = sum_of(around(of(kind, turned), "HP, " + std::to_string(gamma * 10) + ", 20, 10"));
    expect_point(r.force, {0, 0, gamma}, 30, 1e-13, kind);
    expect_point(r.moment, {MIDDLE[1] * gamma, -MIDDLE[0] * gamma, 0}, 150, 1e-13, kind);
  }
}

// The level of the liquid goes through the middle of the box: half of the volume is wet, whichever way it is turned.
TEST(AnalysisSurfaceLoads, LiquidUpToTheMiddle) {
  const double gamma = 3;
  for (const std::string& kind : KINDS) {
    const resultant r = sum_of(around(of(kind, turned), "HP, " + std::to_string(gamma) + ", 5, 4"));
    expect_point(r.force, {0, 0, gamma / 2}, gamma, 1e-13, kind);
  }
}

TEST(AnalysisSurfaceLoads, NothingAboveTheLiquid) {
  const resultant r = sum_of(around(of("C3D8", turned), "HP, 3, -5, -6"));
  expect_point(r.force, {0, 0, 0}, 1, 1e-300, "dry");
}

// A traction on all faces of a cube: magnitude times 6 in its direction; of a shear traction along x the four faces
// that hold x, and y instead of x never.
TEST(AnalysisSurfaceLoads, Tractions) {
  for (const std::string& kind : KINDS) {
    const block b = distorted(kind, 2);
    expect_point(sum_of(around(b, "TRVEC, 2, 3, 0, 4")).force, {7.2, 0, 9.6}, 12, 1e-14, kind);
    // Direction 1, 1, 1: in each face its diagonal; every part has 4 faces of 1 / sqrt(2).
    const double each = 2 * 4 / std::sqrt(2.0);
    expect_point(sum_of(around(b, "TRSHR, 2, 5, 5, 5")).force, {each, each, each}, 12, 1e-14, kind);
  }
}

// rho omega^2 times volume times the way from the axis to the middle: the force grows linearly in space.
TEST(AnalysisSurfaceLoads, RotationOfSolids) {
  for (const std::string& kind : KINDS) {
    block b = of(kind, turned);
    b.density = 2;
    std::string text = b.deck("ALL, 1, 3\n", "*STATIC\n*DLOAD\nBODY, CENTRIF, 5, 1, 1, 1, 0, 0, 3\n");
    const resultant r = sum_of(read(text));
    const point away = {10 * (MIDDLE[0] - 1), 10 * (MIDDLE[1] - 1), 0};
    expect_point(r.force, away, 30, 1e-13, kind);
    // Forces point away from the axis: no moment about it.
    EXPECT_WITHIN(r.moment[2] - (r.force[1] - r.force[0]), 0.0, 100, 1e-13) << kind;
  }
}

namespace {

// One shell of 2 by 1 at z = 2 whose mid surface lies half its thickness of 0.4 below the nodes.
solver::model shell(const std::string& type, const std::string& nodes, const std::string& load) {
  return read("*NODE, NSET=ALL\n1, 0, 0, 2\n2, 2, 0, 2\n3, 2, 1, 2\n4, 0, 1, 2\n*ELEMENT, TYPE=" + type +
              ", ELSET=E\n1, " + nodes +
              "\n*SURFACE, NAME=UP\nE, SPOS\n*SURFACE, NAME=DOWN\nE, SNEG\n*MATERIAL, NAME=M\n*ELASTIC\n1000, "
              "0.25\n*DENSITY\n3\n*SHELL SECTION, ELSET=E, MATERIAL=M, OFFSET=SPOS\n0.4\n*BOUNDARY\nALL, 1, "
              "6\n*STEP\n*STATIC\n" +
              load + "\n*END STEP\n");
}

}  // namespace

TEST(AnalysisSurfaceLoads, RotationOfAShellActsInItsMidSurface) {
  const double mass = 3 * 0.4, omega2 = 5, z = 2 - 0.2;
  for (const auto& [type, nodes, area, y] :
       {std::tuple{"S4", "1, 2, 3, 4", 2.0, 0.5}, std::tuple{"S3", "1, 2, 3", 1.0, 1.0 / 3}}) {
    const resultant r = sum_of(shell(type, nodes, "*DLOAD\nE, CENTRIF, 5, 9, 0, 0, 1, 0, 0"));
    expect_point(r.force, {0, mass * omega2 * area * y, mass * omega2 * area * z}, 20, 1e-14, type);
    EXPECT_WITHIN(r.moment[0], 0.0, 20, 1e-14) << type;  // about the axis
  }
}

// A positive pressure pushes against the normal on SPOS, along it on SNEG; the normal follows the order of the nodes.
TEST(AnalysisSurfaceLoads, SidesOfShells) {
  const auto lift = [](const std::string& nodes, const std::string& load) {
    const solved s = solve(shell("S4", nodes, load));
    return -(s.reaction(0, 'z') + s.reaction(1, 'z') + s.reaction(2, 'z') + s.reaction(3, 'z'));
  };
  EXPECT_WITHIN(lift("1, 2, 3, 4", "*DSLOAD\nUP, P, 3"), -6.0, 6.0, 1e-14);
  EXPECT_WITHIN(lift("1, 2, 3, 4", "*DSLOAD\nDOWN, P, 3"), 6.0, 6.0, 1e-14);
  EXPECT_WITHIN(lift("1, 4, 3, 2", "*DSLOAD\nUP, P, 3"), 6.0, 6.0, 1e-14);
  EXPECT_WITHIN(lift("1, 2, 3, 4", "*DLOAD\nUP, P, 3"), -6.0, 6.0, 1e-14);
  EXPECT_WITHIN(lift("1, 2, 3, 4", "*DSLOAD\nUP, HP, 3, 4, 2"), -6.0, 6.0, 1e-14);
  EXPECT_WITHIN(lift("1, 2, 3, 4", "*DSLOAD\nDOWN, HP, 3, 4, 2"), 6.0, 6.0, 1e-14);
  EXPECT_WITHIN(lift("1, 2, 3, 4", "*DLOAD\nE, HP, 3, 4, 2"), 6.0, 6.0, 1e-14);  // as P: along the normal
  EXPECT_WITHIN(lift("1, 2, 3, 4", "*DLOAD\nE, P, 3"), 6.0, 6.0, 1e-14);
}

// Edges go round the element: a normal force per length is in balance with itself, a shear has the moment 2 q A.
TEST(AnalysisSurfaceLoads, EdgesAllRound) {
  const auto all = [](const std::string& word, int edges) {
    std::string lines = "*DLOAD\n";
    for (int i = 1; i <= edges; ++i) lines += "E, " + word + std::to_string(i) + ", 3\n";
    return lines;
  };
  for (const auto& [type, nodes, area, edges, round] :
       {std::tuple{"S4", "1, 2, 3, 4", 2.0, 4, 6.0}, std::tuple{"S3", "1, 2, 3", 1.0, 3, 3 + std::sqrt(5.0)}}) {
    const resultant normal = sum_of(shell(type, nodes, all("EDNOR", edges)));
    expect_point(normal.force, {0, 0, 0}, 10, 1e-14, type);
    expect_point(normal.moment, {0, 0, 0}, 10, 1e-14, type);
    const resultant shear = sum_of(shell(type, nodes, all("EDSHR", edges)));
    expect_point(shear.force, {0, 0, 0}, 10, 1e-14, type);
    expect_point(shear.moment, {0, 0, 2 * 3 * area}, 20, 1e-14, type);
    expect_point(sum_of(shell(type, nodes, all("EDTRA", edges))).force, {0, 0, -3 * round}, 20, 1e-14, type);
    expect_point(sum_of(shell(type, nodes, all("EDMOM", edges))).moment, {0, 0, 0}, 20, 1e-14, type);
  }
  expect_point(sum_of(shell("S4", "1, 2, 3, 4", "*DLOAD\nE, EDNOR2, 3")).force, {-3, 0, 0}, 3, 1e-14, "inwards");
  expect_point(sum_of(shell("S4", "1, 2, 3, 4", "*DLOAD\nE, EDMOM2, 3")).moment, {0, 3, 0}, 3, 1e-14, "along");
  expect_point(sum_of(shell("S4", "1, 2, 3, 4", "*DLOAD\nE, EDLD1, 3, 0, 0, -2")).force, {0, 0, -6}, 6, 1e-14, "EDLD");
}

// On the edge of a membrane a pressure acts on length times thickness.
TEST(AnalysisSurfaceLoads, PressureOnTheEdgeOfAMembrane) {
  const auto membrane = [](const std::string& load) {
    return read(
        "*NODE, NSET=ALL\n1, 0, 0, 0\n2, 2, 0, 0\n3, 2, 1, 0\n4, 0, 1, 0\n*ELEMENT, TYPE=M3D4, ELSET=E\n1, 1, "
        "2, 3, 4\n*SURFACE, NAME=EDGE\nE, E3\n*MATERIAL, NAME=M\n*ELASTIC\n1000, 0\n*MEMBRANE SECTION, "
        "ELSET=E, MATERIAL=M\n0.5\n*BOUNDARY\nALL, 3\n1, 1, 2\n2, 2\n*STEP\n*STATIC\n" +
        load + "\n*END STEP\n");
  };
  for (const std::string load : {"*DLOAD\nE, P3, 4", "*DSLOAD\nEDGE, P, 4", "*DSLOAD\nEDGE, EDNOR, 2"}) {
    const solver::model m = membrane(load);
    expect_point(sum_of(m).force, {0, -4, 0}, 4, 1e-14, load);
    EXPECT_WITHIN(solve(m).u(2, 'y'), -4.0 / 1000, 0.004, 1e-12) << load;
  }
}

namespace {

// A strip of shells, 8 by 1, clamped at x = 0, with one load at its end.
std::string strip(const std::string& step) {
  std::string text = "*NODE, NSET=ALL\n";
  for (int i = 0; i <= 8; ++i) {
    text += std::to_string(2 * i + 1) + ", " + std::to_string(i) + ", 0, 0\n";
    text += std::to_string(2 * i + 2) + ", " + std::to_string(i) + ", 1, 0\n";
  }
  text += "*ELEMENT, TYPE=S4, ELSET=STRIP\n";
  for (int i = 0; i < 8; ++i) {
    const int n = 2 * i + 1;
    text += std::to_string(i + 1) + ", " + std::to_string(n) + ", " + std::to_string(n + 2) + ", " +
            std::to_string(n + 3) + ", " + std::to_string(n + 1) + "\n";
  }
  text += "*SURFACE, NAME=TIP\n8, E2\n*MATERIAL, NAME=M\n*ELASTIC\n12000, 0.3\n";
  return text + "*SHELL SECTION, ELSET=STRIP, MATERIAL=M\n0.5\n*BOUNDARY\n1, 1, 6\n2, 1, 6\n*STEP" + step +
         "\n*END STEP\n";
}

}  // namespace

// The same nodal forces by *CLOAD: in every analysis the same answer.
TEST(AnalysisSurfaceLoads, BucklingAndPDeltaSeeThem) {
  const std::string by_edge = "*DSLOAD\nTIP, EDNOR, 1", by_nodes = "*CLOAD\n17, 1, -0.5\n18, 1, -0.5";
  const std::vector<double> factors = modes(read(strip("\n*BUCKLE\n1\n" + by_edge)));
  EXPECT_WITHIN(factors.at(0), modes(read(strip("\n*BUCKLE\n1\n" + by_nodes))).at(0), factors[0], 1e-10);
  // Euler's column, E I = 125, between the strip without and with its sides held: 1 / (1 - nu^2).
  const double euler = std::pow(std::acos(-1.0) / 16, 2) * 125;
  EXPECT_GT(factors[0], 0.98 * euler);
  EXPECT_LT(factors[0], 1.12 * euler);
  const auto sway = [&](const std::string& push) {
    return solve(read(strip(", PDELTA\n*STATIC\n" + push + "\n*DSLOAD\nTIP, EDTRA, 0.1"))).u(16, 'z');
  };
  EXPECT_WITHIN(sway(by_edge), sway(by_nodes), sway(by_nodes), 1e-10);
  // A force at the end of a cantilever is enlarged by 1 / (1 - P / P_cr), to two per cent.
  EXPECT_NEAR(sway(by_edge) / sway("*CLOAD\n17, 1, 0"), 1 / (1 - 1 / factors[0]), 0.02);
}

// The sum of each line; of a keyword with many lines the sum of all.
TEST(AnalysisSurfaceLoads, SumsOfCards) {
  std::string lines;
  for (int i = 0; i < 9; ++i) lines += "\nE, EDLD1, 1, 0, 1, 0";
  const solver::model m = shell("S4", "1, 2, 3, 4", "*CLOAD\n3, 1, 5\n*DSLOAD\nUP, P, 3\n*DLOAD" + lines);
  solver::library_model library(m);
  const std::vector<solver::load_sum> sums = solver::sum_loads(m, m.steps.at(0), library);
  ASSERT_EQ(sums.size(), 3U);
  EXPECT_EQ(sums[0].name, "*CLOAD");
  EXPECT_EQ(sums[1].name, "*DLOAD");
  EXPECT_EQ(sums[2].name.substr(0, 14), "*DSLOAD, line ");
  const std::array<double, 6> by_hand[3] = {{5, 0, 0, 0, 10, -5}, {0, 18, 0, -36, 0, 18}, {0, 0, -6, -3, 6, 0}};
  for (std::size_t k = 0; k < 3; ++k) {
    for (std::size_t i = 0; i < 6; ++i) EXPECT_WITHIN(sums[k].total[i], by_hand[k][i], 36.0, 1e-14) << k << i;
  }
}
