// Trusses, springs, links, P-delta, and frames joined to shells.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "frame_decks.h"

using namespace frame_test;

namespace {

const char* const MATERIAL = "*MATERIAL, NAME=M\n*ELASTIC\n200000, 0.25\n*DENSITY\n8E-9\n*EXPANSION\n1E-5\n";

std::string step(const std::string& cards, const std::string& flags = "") {
  return "*STEP" + flags + "\n*STATIC\n" + cards + "*END STEP\n";
}

}  // namespace

TEST(AnalysisFrameParts, TrussOfTwoBars) {
  // Two bars from (+-3, 0, 0) to (0, 0, 4), a load downwards: 2 N 0.8 = P; each bar shortens by P L / (1.6 EA), the
  // joint goes down by that over 0.8.
  const std::string head = std::string(
                               "*NODE\n1, -3, 0, 0\n2, 3, 0, 0\n3, 0, 0, 4\n*ELEMENT, TYPE=T3D2, ELSET=B\n1, 1, 3\n"
                               "2, 2, 3\n") +
                           MATERIAL + "*BOUNDARY\n1, PINNED\n2, PINNED\n3, 2\n";
  const solved s = solve(read(head + "*SOLID SECTION, ELSET=B, MATERIAL=M\n10\n" + step("*CLOAD\n3, 3, -1600\n")));
  EXPECT_WITHIN(s.u(2, 'z'), -1000.0 * 5 / (200000 * 10) / 0.8, 1e-2, 1e-12);
  EXPECT_WITHIN(s.results.members[1][6], -1000.0, 1000.0, 1e-12);
  // Pretension pulls the joint down until the bars, stiffened by it as strings, balance.
  const double P0 = 10 * 40.0, EA = 200000 * 10, k = 2 * (EA / 5 * 0.64 + P0 / 5 * 0.36);
  const solved t = solve(read(head + "*SOLID SECTION, ELSET=B, MATERIAL=M, PRETENSION=40\n10\n" + step("")));
  EXPECT_WITHIN(t.u(2, 'z'), -2 * P0 * 0.8 / k, 1e-2, 1e-12);
  // Gravity: half of each bar on its nodes.
  const solved g =
      solve(read(head + "*SOLID SECTION, ELSET=B, MATERIAL=M\n10\n" + step("*DLOAD\nB, GRAV, 9810, 0, 0, -1\n")));
  const double W = 8e-9 * 10 * 5 * 9810;
  EXPECT_WITHIN(g.reaction(0, 'z'), W, W, 1e-11);
}

TEST(AnalysisFrameParts, SpringsOfThreeSorts) {
  // Node 2 hangs on a spring along (3, 4) / 5, on one in x to node 3, which is held, and on one in y to the ground.
  const solved s = solve(read(
      "*NODE\n1, 0, 0, 0\n2, 3, 4, 0\n3, 3, 4, 0\n*ELEMENT, TYPE=SPRINGA, ELSET=A\n1, 1, 2\n*SPRING, ELSET=A\n1024\n"
      "*ELEMENT, TYPE=SPRING2, ELSET=X\n2, 2, 3\n*SPRING, ELSET=X\n1, 1\n512\n*ELEMENT, TYPE=SPRING1, ELSET=Y\n3, 2\n"
      "*SPRING, ELSET=Y\n2\n256\n*BOUNDARY\n1, PINNED\n3, PINNED\n2, 3\n" +
      step("*CLOAD\n2, 1, 7\n2, 2, -3\n")));
  const double kxx = 1024 * 0.36 + 512, kxy = 1024 * 0.48, kyy = 1024 * 0.64 + 256;
  const double det = kxx * kyy - kxy * kxy, x = (7 * kyy + 3 * kxy) / det, y = (-3 * kxx - 7 * kxy) / det;
  EXPECT_WITHIN(s.u(1, 'x'), x, std::fabs(x), 1e-12);
  EXPECT_WITHIN(s.u(1, 'y'), y, std::fabs(y), 1e-12);
  EXPECT_WITHIN(s.results.members[0][6], 1024 * (0.6 * x + 0.8 * y), 7.0, 1e-12);
  EXPECT_WITHIN(s.results.members[2][1], 256 * y, 7.0, 1e-12);  // what the node exerts on the spring
}

TEST(AnalysisFrameParts, RotationalSpring) {
  straight_member b;
  const double k = 1048576, M = 5000;  // a pinned beam whose rotation a spring holds too
  const std::string spring = "*ELEMENT, TYPE=SPRING1, ELSET=R\n9, 2\n*SPRING, ELSET=R\n6\n1048576\n";
  const solved s = solve(read(b.deck(spring, "1, 1, 5\n2, 2, 3\n", "*STATIC\n*CLOAD\n2, 6, 5000\n")));
  const double turn = M / (3 * b.E * b.inertia_xy / b.length + k);
  EXPECT_WITHIN(s.u(1, 'Z'), turn, turn, 1e-10);
}

TEST(AnalysisFrameParts, LinkThatDeformsAtMidLength) {
  const char* const head =
      "*NODE\n1, 0, 0, 0\n2, 0, 8, 0\n*ELEMENT, TYPE=CONN3D2, ELSET=L\n1, 1, 2\n*BOUNDARY\n1, ENCASTRE\n";
  const char* const stiffness = "64, 128, 256, 512, 1024, 2048\n1, 0, 0\n";
  // Axes: x along global y, y along global x, z along minus global z. The arm from the point to node 2 is 4.
  const std::string loads = step("*CLOAD\n2, 1, 3\n2, 2, 5\n2, 3, 7\n2, 5, 11\n");
  const solved middle = solve(read(std::string(head) + "*LINK SECTION, ELSET=L, FORM=MIDDLE\n" + stiffness + loads));
  EXPECT_WITHIN(middle.u(1, 'x'), 3.0 / 128 + 3.0 * 16 / 2048, 1.0, 1e-13);
  EXPECT_WITHIN(middle.u(1, 'y'), 5.0 / 64, 1.0, 1e-13);
  EXPECT_WITHIN(middle.u(1, 'z'), 7.0 / 256 + 7.0 * 16 / 1024, 1.0, 1e-13);
  EXPECT_WITHIN(middle.u(1, 'X'), 7.0 * 4 / 1024, 1.0, 1e-13);
  EXPECT_WITHIN(middle.u(1, 'Y'), 11.0 / 512, 1.0, 1e-13);
  EXPECT_WITHIN(middle.u(1, 'Z'), -3.0 * 4 / 2048, 1.0, 1e-13);
  const solved nodes = solve(read(std::string(head) + "*LINK SECTION, ELSET=L\n" + stiffness + loads));
  EXPECT_WITHIN(nodes.u(1, 'x'), 3.0 / 128, 1.0, 1e-13);
  EXPECT_WITHIN(nodes.u(1, 'z'), 7.0 / 256, 1.0, 1e-13);
  EXPECT_WITHIN(nodes.u(1, 'Y'), 11.0 / 512, 1.0, 1e-13);
}

TEST(AnalysisFrameParts, PDeltaCantileverAgainstTheStabilityFunctions) {
  // Tip load H and axial force N: with u = L sqrt(|N| / EI) the tip moves by H L^3 / 3EI times 3 (tan u - u) / u^3
  // under pressure and 3 (u - tanh u) / u^3 under tension; the foot's moment is H L plus the force times that way.
  straight_member b;
  b.elements = 16;
  b.inertia_xz = 2 * b.inertia_xy;  // stands in the other plane
  const double EI = b.E * b.inertia_xy, L = b.length, H = 1000;
  for (const double part : {0.3, 0.8, -2.0}) {
    const double P = part * 2.4674011002723395 * EI / (L * L);  // of the buckling load pi^2 EI / 4 L^2
    const double u = L * std::sqrt(std::fabs(P) / EI);
    const double factor = P > 0 ? 3 * (std::tan(u) - u) / (u * u * u) : 3 * (u - std::tanh(u)) / (u * u * u);
    const double tip = H * L * L * L / (3 * EI) * factor;
    const solved s = solve(
        read(b.deck("", "1, ENCASTRE\n", "*STATIC\n*CLOAD\n17, 1, " + number(-P) + "\n17, 2, 1000\n", ", PDELTA")));
    EXPECT_WITHIN(s.u(16, 'y'), tip, tip, 2e-5) << part;
    EXPECT_WITHIN(s.reaction(0, 'Z'), -(H * L + P * tip), H * L + std::fabs(P) * tip, 2e-5) << part;
    EXPECT_WITHIN(s.results.members[0][5], -(H * L + P * tip), H * L + std::fabs(P) * tip, 2e-5) << part;
  }
}

TEST(AnalysisFrameParts, PDeltaAboveTheBucklingLoad) {
  straight_member b;
  b.elements = 4;
  const double P = 1.2 * 2.4674011002723395 * b.E * b.inertia_xz / (b.length * b.length);  // the weaker axis
  const std::string text = b.deck("", "1, ENCASTRE\n", "*STATIC\n*CLOAD\n5, 1, " + number(-P) + "\n", ", PDELTA");
  for (const solver::solver_kind kind : solvers()) {
    const std::string error = error_of(read(text), kind);
    EXPECT_NE(error.find("*STEP: the loads are above a buckling load"), std::string::npos) << error;
  }
}

TEST(AnalysisFrameParts, PDeltaStripAgainstTheStabilityFunction) {
  // The same cantilever as a strip of shells, nu = 0: bending stiffness E h^3 / 12 by width.
  const double E = 2e5, L = 10, B = 2, h = 0.1, EI = E * B * h * h * h / 12, H = 0.01;
  const double P = 0.5 * 2.4674011002723395 * EI / (L * L), u = L * std::sqrt(P / EI);
  grid g(
      24, 4, [&](double a, double v) { return rectangle(L, B, a, v); }, isotropic(E, 0), h);
  g.fix(g.along_y(0), "xyzXYZ");
  g.load_line(g.along_y(24), 'z', H);
  g.load_line(g.along_y(24), 'x', -P);
  g.step().p_delta = true;
  const double tip = H * L * L * L / (3 * EI) * 3 * (std::tan(u) - u) / (u * u * u);
  EXPECT_WITHIN(solve(g.m).u(g.node(24, 2), 'z'), tip, tip, 0.01);
}

TEST(AnalysisFrameParts, BarsStiffenAStrip) {
  // A strip in tension with a bar along each side: one strain, nu = 0.
  const double E = 2e5, L = 10, B = 2, h = 0.1, A = 0.05, P = 30;
  grid g(
      5, 2, [&](double u, double v) { return rectangle(L, B, u, v); }, isotropic(E, 0), h);
  solver::frame_section bar;
  bar.kind = solver::frame_section_kind::TRUSS;
  bar.material = 0;
  bar.area = A;
  g.m.frame_sections = {bar};
  for (const int j : {0, 2}) {
    for (int i = 0; i < 5; ++i) {
      solver::element e;
      e.id = 1000 + static_cast<int>(g.m.elements.size());
      e.type = solver::element_type::T3D2;
      e.nodes = {g.node(i, j), g.node(i + 1, j)};
      e.section = 0;
      g.m.elements.push_back(e);
    }
  }
  g.fix(g.along_y(0), "xyzXYZ");
  const double strain = P / (E * (B * h + 2 * A));
  g.load_line(g.along_y(5), 'x', E * B * h * strain);
  for (const int j : {0, 2}) g.load(g.node(5, j), 'x', E * A * strain);
  const solved s = solve(g.m);
  for (const int n : g.along_y(5)) EXPECT_WITHIN(s.u(n, 'x'), strain * L, strain * L, 1e-10);
  EXPECT_WITHIN(s.results.members.back()[6], E * A * strain, E * A * strain, 1e-10);
  EXPECT_WITHIN(s.results.elements.front().force[0], E * h * strain, E * h * strain, 1e-10);
}

TEST(AnalysisFrameParts, MechanismOfReleases) {
  straight_member b;
  b.elements = 2;
  const std::string text =
      b.deck("*RELEASE\n1, S2, M2\n2, S1, M2\n", "1, ENCASTRE\n3, ENCASTRE\n", "*STATIC\n*CLOAD\n2, 2, 1.\n");
  const auto step = std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(text.find("*STEP")), '\n') + 1;
  const std::string error = error_of(read(text));
  EXPECT_EQ(error, "frame.inp:" + std::to_string(step) +
                       ": *STEP: mechanism: node 2 has no stiffness in rotation z (degree of freedom 6)");
}

TEST(AnalysisFrameParts, LoadThatReleasesLeaveUncarried) {
  straight_member b;
  const std::string error = error_of(
      read(b.deck("*RELEASE\n1, S1, M2\n1, S2, M2\n1, S2, V1\n", "ALL, ENCASTRE\n", "*STATIC\n*DLOAD\n1, P1, 1.\n")));
  EXPECT_NE(
      error.find("*ELEMENT: element 1 carries a load in a direction in which its releases leave it no resistance"),
      std::string::npos)
      << error;
}

TEST(AnalysisFrameParts, DirectionAlongTheMember) {
  straight_member b;
  std::string text = b.deck("", "1, ENCASTRE\n", "*STATIC\n");
  text.replace(text.find("0, 1, 0\n*BOUND"), 7, "2, 0, 0");
  EXPECT_EQ(error_of(read(text)),
            "frame.inp:13: *BEAM GENERAL SECTION: n1 runs along element 1: give a direction across the member");
}
