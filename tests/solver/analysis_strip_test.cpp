// Strips against the theory of bars and beams, exact for nu = 0 where the field is one of constant strain or curvature.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "analysis_support.h"

using namespace analysis_test;

namespace {

constexpr double E = 2e5, L = 10, B = 2, H = 0.1;
constexpr double A = B * H, I = B * H * H * H / 12;

grid strip(int nx, int ny, const solver::material& mat) {
  grid g(
      nx, ny, [](double u, double v) { return rectangle(L, B, u, v); }, mat, H);
  return g;
}

void clamp(grid& g) { g.fix(g.along_y(0), "xyzXYZ"); }

}  // namespace

TEST(AnalysisStrip, PrescribedElongation) {
  grid g = strip(6, 2, isotropic(E, 0));
  const double elongation = 1e-3;
  clamp(g);
  g.fix(g.along_y(6), "x", elongation);
  const solved s = solve(g.m);
  const double force = E * A * elongation / L;
  EXPECT_WITHIN(s.reaction(g.along_y(6), 'x'), force, force, 1e-10);
  EXPECT_WITHIN(s.reaction(g.along_y(0), 'x'), -force, force, 1e-10);
  EXPECT_WITHIN(s.u(g.node(3, 1), 'x'), elongation / 2, elongation, 1e-10);
}

TEST(AnalysisStrip, PrescribedValuesBesideAnAppliedLoad) {
  // A bar on two rigid ends, one of which settles, loaded in the middle: the forces of both cases add.
  grid g = strip(8, 1, isotropic(E, 0));
  const double settlement = 2e-3, load = 7;
  clamp(g);
  g.fix(g.along_y(8), "x", settlement);
  g.load_line(g.along_y(4), 'x', load);
  const solved s = solve(g.m);
  const double strain_force = E * A * settlement / L;
  EXPECT_WITHIN(s.reaction(g.along_y(0), 'x'), -strain_force - load / 2, load, 1e-10);
  EXPECT_WITHIN(s.reaction(g.along_y(8), 'x'), strain_force - load / 2, load, 1e-10);
}

TEST(AnalysisStrip, TipMomentIsExact) {
  grid g = strip(5, 2, isotropic(E, 0));
  const double moment = 0.03;
  clamp(g);
  g.load_line(g.along_y(5), 'Y', moment);  // about +y: the tip goes down
  const solved s = solve(g.m);
  for (const int n : g.along_y(5)) {
    EXPECT_WITHIN(s.u(n, 'z'), -moment * L * L / (2 * E * I), moment * L * L / (2 * E * I), 1e-9);
    EXPECT_WITHIN(s.u(n, 'Y'), moment * L / (E * I), moment * L / (E * I), 1e-9);
  }
}

TEST(AnalysisStrip, TipLoadConvergesToTheBeam) {
  const double P = 0.01, beam = P * L * L * L / (3 * E * I);
  double previous = 1;
  for (const int nx : {5, 10, 20, 40}) {
    grid g = strip(nx, std::max(1, nx / 5), isotropic(E, 0));
    clamp(g);
    g.load_line(g.along_y(nx), 'z', P);
    const double error = std::fabs(solve(g.m).u(g.node(nx, 0), 'z') / beam - 1);
    EXPECT_LT(error, 0.35 * previous) << nx << " elements a length";  // of second order: a quarter
    previous = std::fmax(error, 1e-12);
  }
  EXPECT_LT(previous, 1e-3);
}

TEST(AnalysisStrip, EccentricForceBendsTheStrip) {
  // The nodes lie d above the mid surface: a pull on them is a pull and a moment P d that strains the top.
  const double offset = 0.7, d = offset * H, P = 3;
  grid g = strip(5, 2, isotropic(E, 0));
  g.m.shell_sections[0].offset = offset;
  clamp(g);
  g.load_line(g.along_y(5), 'x', P);
  const solved s = solve(g.m);
  const double deflection = P * d * L * L / (2 * E * I), pull = P * L / (E * A) + P * d * d * L / (E * I);
  for (const int n : g.along_y(5)) {
    EXPECT_WITHIN(s.u(n, 'z'), -deflection, deflection, 1e-8);
    EXPECT_WITHIN(s.u(n, 'x'), pull, pull, 1e-8);
  }
  const double top = P / A + P * d * (H / 2) / I, bottom = P / A - P * d * (H / 2) / I;
  for (const solver::element_result& e : s.results.elements) {
    EXPECT_WITHIN(e.at[solver::TOP].stress[0], top, top, 1e-8);
    EXPECT_WITHIN(e.at[solver::BOTTOM].stress[0], bottom, top, 1e-8);
    EXPECT_WITHIN(e.force[0], P / B, P / B, 1e-8);
    EXPECT_WITHIN(e.moment[0], P * d / B, P * d / B, 1e-8);
  }
}

TEST(AnalysisStrip, NormalsTurnedDownTurnTheOffset) {
  // The same strip with every element's nodes in the other sense: the normal points down, so that the same eccentricity
  // has the other sign.
  grid g = strip(5, 2, isotropic(E, 0));
  g.m.shell_sections[0].offset = -0.7;
  for (solver::element& e : g.m.elements) std::swap(e.nodes[1], e.nodes[2]);
  clamp(g);
  g.load_line(g.along_y(5), 'x', 3);
  const solved s = solve(g.m);
  const double deflection = 3 * 0.7 * H * L * L / (2 * E * I);
  EXPECT_WITHIN(s.u(g.node(5, 1), 'z'), -deflection, deflection, 1e-8);
}

namespace {

// Moduli, ratios and their quotients are exact in single precision, in which the library keeps them.
solver::material orthotropic() {
  solver::material mat;
  mat.name = "BOARD";
  mat.elastic = mat.orthotropic = true;
  mat.E1 = 160000;
  mat.E2 = 40000;
  mat.NU12 = 0.25;  // NU21 = 0.0625
  mat.G12 = 20000;
  mat.G13 = mat.G23 = 16000;
  return mat;
}

// In single precision the cosine of a quarter turn is 4e-8 and the sine of half a turn 9e-8: the material lies askew by
// so much, its shear coupling is E1 / G = 8 times that, and a twist grows along the strip.
constexpr double TURNED = 1e-5, STRAIGHT = 1e-8;

struct orthotropic_case {
  double angle, modulus, ratio, tolerance;
};
const orthotropic_case CASES[] = {{0, 160000, 0.25, STRAIGHT},
                                  {90, 40000, 0.0625, TURNED},
                                  {-90, 40000, 0.0625, TURNED},
                                  {180, 160000, 0.25, TURNED}};

// Statically determinate: the section is free to become narrower, flat or bent.
void support_freely(grid& g) {
  g.fix(g.along_y(0), "xY");
  g.fix({g.node(0, 0)}, "yzX");
}

}  // namespace

TEST(AnalysisStrip, OrthotropicTension) {
  for (const orthotropic_case& c : CASES) {
    grid g = strip(4, 2, orthotropic());
    g.m.shell_sections[0].orientation_angle = c.angle;
    support_freely(g);
    const double P = 5;
    g.load_line(g.along_y(4), 'x', P);
    const solved s = solve(g.m);
    const double strain = P / (c.modulus * A);
    EXPECT_WITHIN(s.u(g.node(4, 1), 'x'), strain * L, strain * L, c.tolerance) << c.angle;
    const double narrowing = s.u(g.node(4, 2), 'y') - s.u(g.node(4, 0), 'y');
    EXPECT_WITHIN(narrowing, -c.ratio * strain * B, strain * B, c.tolerance) << c.angle;
  }
}

TEST(AnalysisStrip, OrthotropicBending) {
  for (const orthotropic_case& c : CASES) {
    grid g = strip(4, 2, orthotropic());
    g.m.shell_sections[0].orientation_angle = c.angle;
    support_freely(g);
    const double moment = 0.02;
    g.load_line(g.along_y(4), 'Y', moment);
    const solved s = solve(g.m);
    // w = -k (x^2 - nu (y^2 - y b)) / 2 + what the support of one corner without a rotation about x makes of it.
    const double k = moment / (c.modulus * I);
    EXPECT_WITHIN(s.u(g.node(4, 0), 'z'), -k * L * L / 2, k * L * L, c.tolerance) << c.angle;
    const double across = s.u(g.node(4, 2), 'z') - s.u(g.node(4, 0), 'z');
    EXPECT_WITHIN(across, c.ratio * k * B * B / 2, k * B * B, c.tolerance) << c.angle;
  }
}

TEST(AnalysisStrip, OrthotropicTensionBetweenTheAxes) {
  // 1 / E(t) = c^4 / E1 + s^4 / E2 + (1 / G12 - 2 nu12 / E1) s^2 c^2 (Jones 1975).
  const solver::material mat = orthotropic();
  const double t = std::acos(-1.0) / 6, c = std::cos(t), sn = std::sin(t);
  const double flexibility =
      std::pow(c, 4) / mat.E1 + std::pow(sn, 4) / mat.E2 + (1 / mat.G12 - 2 * mat.NU12 / mat.E1) * sn * sn * c * c;
  // A shear strain goes with the pull: the ends stay straight, but inclined, and nothing may hinder that.
  grid free = strip(4, 2, mat);
  free.m.shell_sections[0].orientation_angle = 30;
  free.fix({free.node(0, 0)}, "xyzXY");  // the rotation about the normal follows the sheet
  free.fix({free.node(0, 2)}, "x");
  free.load_line(free.along_y(4), 'x', 5);
  free.load_line(free.along_y(0), 'x', -5);
  const solved s = solve(free.m);
  const double stress = 5 / A;
  const double extension = s.u(free.node(4, 0), 'x') - s.u(free.node(0, 0), 'x');
  EXPECT_WITHIN(extension, stress * L * flexibility, stress * L * flexibility, TURNED);
  // The shear strain per stress tells the sense of the angle. The edge x = 0 stays upright: all of the shear is in v.
  const double S11 = 1 / mat.E1, S22 = 1 / mat.E2, S12 = -mat.NU12 / mat.E1, S66 = 1 / mat.G12;
  const double shear = (2 * S11 - 2 * S12 - S66) * sn * c * c * c - (2 * S22 - 2 * S12 - S66) * sn * sn * sn * c;
  EXPECT_WITHIN(s.u(free.node(4, 0), 'y'), stress * L * shear, stress * L * std::fabs(shear), TURNED);
}
