// Beams and frames in statics against hand solutions: shear, semi-rigid ends, releases, loads along members.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "finites/fields.h"
#include "frame_decks.h"

using namespace frame_test;

namespace {

const char* const CLAMPED_AT_1 = "1, ENCASTRE\n";

std::string fixity(double r) {
  return "*FIXITY\nMEMBER, S1, " + number(r) + ", " + number(r) + "\nMEMBER, S2, " + number(r) + ", " + number(r) +
         "\n";
}

}  // namespace

TEST(AnalysisFrames, TimoshenkoCantileverIsExactWithOneElement) {
  straight_member b;
  b.shear_y = 3e7;
  b.shear_z = 2e7;
  const double Py = 700, Pz = -300, L = b.length;
  const solved s = solve(read(b.deck("", CLAMPED_AT_1, "*STATIC\n*CLOAD\n2, 2, 700.\n2, 3, -300.\n")));
  const double v = Py * L * L * L / (3 * b.E * b.inertia_xy) + Py * L / b.shear_y;
  const double w = Pz * L * L * L / (3 * b.E * b.inertia_xz) + Pz * L / b.shear_z;
  EXPECT_WITHIN(s.u(1, 'y'), v, std::fabs(v), 1e-11);
  EXPECT_WITHIN(s.u(1, 'z'), w, std::fabs(w), 1e-11);
  EXPECT_WITHIN(s.u(1, 'Z'), Py * L * L / (2 * b.E * b.inertia_xy), 1e-2, 1e-11);
  EXPECT_WITHIN(s.u(1, 'Y'), -Pz * L * L / (2 * b.E * b.inertia_xz), 1e-2, 1e-11);
  // What the nodes exert on the member, local axes, which are the global ones here.
  const solver::end_forces f = s.results.members[0];
  const std::vector<double> expected = {0, -Py, -Pz, 0, Pz * L, -Py * L, 0, Py, Pz, 0, 0, 0};
  EXPECT_WITHIN(std::vector<double>(f.begin(), f.end()), expected, Py * L, 1e-11);
}

TEST(AnalysisFrames, TensionAndTwist) {
  straight_member b;
  const solved s = solve(read(b.deck("", CLAMPED_AT_1, "*STATIC\n*CLOAD\n2, 1, 5000.\n2, 4, 9000.\n")));
  EXPECT_WITHIN(s.u(1, 'x'), 5000 * b.length / (b.E * b.area), 1e-2, 1e-11);
  EXPECT_WITHIN(s.u(1, 'X'), 9000 * b.length / (b.G() * b.torsion), 1e-3, 1e-11);
}

TEST(AnalysisFrames, SemiRigidBeamUnderUniformLoad) {
  // Monforton and Wu (1963): end moment w L^2 / 12 times 3 r / (2 + r); the deflection of the middle is that of the
  // simply supported beam, less what the end moments take from it.
  straight_member b;
  const double q = 12, L = b.length;
  for (const double r : {0.0, 0.25, 0.5, 0.75, 1.0}) {
    b.elements = 1;
    const solved one = solve(read(b.deck(fixity(r), "ALL, ENCASTRE\n", "*STATIC\n*DLOAD\nMEMBER, P1, -12.\n")));
    const double M = q * L * L / 12 * 3 * r / (2 + r);
    EXPECT_WITHIN(one.reaction(0, 'Z'), M, q * L * L / 12, 1e-12) << r;
    EXPECT_WITHIN(one.reaction(1, 'Z'), -M, q * L * L / 12, 1e-12) << r;
    EXPECT_WITHIN(one.reaction(0, 'y'), q * L / 2, q * L / 2, 1e-12) << r;

    b.elements = 2;  // the outer ends only are semi-rigid: their factor belongs to the half length
    const double k_L = 3 * r / (1 - r), half = r < 1 ? k_L / 2 / (3 + k_L / 2) : 1.0;
    const std::string ends = "*FIXITY\n1, S1, 1., " + number(half) + "\n2, S2, 1., " + number(half) + "\n";
    const solved two = solve(read(b.deck(ends, "1, ENCASTRE\n3, ENCASTRE\n", "*STATIC\n*DLOAD\nMEMBER, PY, -12.\n")));
    const double middle = 5 * q * L * L * L * L / 384 - M * L * L / 8;
    EXPECT_WITHIN(two.u(1, 'y'), -middle / (b.E * b.inertia_xy), middle / (b.E * b.inertia_xy), 1e-11) << r;
  }
}

TEST(AnalysisFrames, ProppedByAReleaseUnderUniformLoadWithShear) {
  // One end clamped, the other pinned by a release: the force method with the shear strain of the section gives the
  // reaction at the pin.
  straight_member b;
  b.shear_y = 2e7;
  b.shear_z = 2e7;
  const double q = 12, L = b.length, EI = b.E * b.inertia_xy, GA = b.shear_y;
  const double R = (q * L * L * L * L / (8 * EI) + q * L * L / (2 * GA)) / (L * L * L / (3 * EI) + L / GA);
  for (const int elements : {1, 3}) {
    b.elements = elements;
    const std::string last = std::to_string(elements), end = std::to_string(elements + 1);
    const solved s = solve(read(b.deck("*RELEASE\n" + last + ", S2, M2\n", "1, ENCASTRE\n" + end + ", ENCASTRE\n",
                                       "*STATIC\n*DLOAD\nMEMBER, P1, -12.\n")));
    EXPECT_WITHIN(s.reaction(elements, 'y'), R, R, 1e-11);
    EXPECT_WITHIN(s.reaction(elements, 'Z'), 0.0, q * L * L, 1e-12);
    EXPECT_WITHIN(s.reaction(0, 'Z'), q * L * L / 2 - R * L, q * L * L, 1e-11);
  }
}

TEST(AnalysisFrames, ForceReleasesUnderLoads) {
  straight_member b;
  b.inertia_xz = b.inertia_xy;
  const double q = 12, L = b.length;
  // A guided end: clamped rotation, no force along y. All of the load goes to the first end; the moments are
  // q L^2 / 3 there and q L^2 / 6 at the guide.
  const solved v = solve(read(b.deck("*RELEASE\n1, S2, V1\n", "ALL, ENCASTRE\n", "*STATIC\n*DLOAD\n1, P1, -12.\n")));
  EXPECT_WITHIN(v.reaction(0, 'y'), q * L, q * L, 1e-12);
  EXPECT_WITHIN(v.reaction(1, 'y'), 0.0, q * L, 1e-12);
  EXPECT_WITHIN(v.reaction(0, 'Z'), q * L * L / 3, q * L * L, 1e-12);
  EXPECT_WITHIN(v.reaction(1, 'Z'), q * L * L / 6, q * L * L, 1e-12);
  // The same about the other axis, at the other end.
  const solved w = solve(read(b.deck("*RELEASE\n1, S1, V2\n", "ALL, ENCASTRE\n", "*STATIC\n*DLOAD\n1, P2, -12.\n")));
  EXPECT_WITHIN(w.reaction(1, 'z'), q * L, q * L, 1e-12);
  EXPECT_WITHIN(w.reaction(0, 'z'), 0.0, q * L, 1e-12);
  EXPECT_WITHIN(w.reaction(1, 'Y'), q * L * L / 3, q * L * L, 1e-12);
  EXPECT_WITHIN(w.reaction(0, 'Y'), q * L * L / 6, q * L * L, 1e-12);
  // A sleeve along the member: the axial load hangs on the other end.
  const solved n = solve(read(b.deck("*RELEASE\n1, S1, N\n", "ALL, ENCASTRE\n", "*STATIC\n*DLOAD\n1, PX, 12.\n")));
  EXPECT_WITHIN(n.reaction(0, 'x'), 0.0, q * L, 1e-12);
  EXPECT_WITHIN(n.reaction(1, 'x'), -q * L, q * L, 1e-12);
}

TEST(AnalysisFrames, GravityAndTemperature) {
  straight_member b;
  b.elements = 4;
  const solved s = solve(read(b.deck("", CLAMPED_AT_1, "*STATIC\n*DLOAD\nMEMBER, GRAV, 9810., 0., 0., -1.\n")));
  const double q = b.density * b.area * 9810, L = b.length;
  EXPECT_WITHIN(s.u(4, 'z'), -q * L * L * L * L / (8 * b.E * b.inertia_xz), 1.0, 1e-11);
  EXPECT_WITHIN(s.reaction(0, 'z'), q * L, q * L, 1e-12);

  const solved held = solve(read(b.deck("", "1, ENCASTRE\n5, ENCASTRE\n", "*STATIC\n*TEMPERATURE\nALL, 50.\n")));
  const double push = b.E * b.area * 1.2e-5 * 50;
  EXPECT_WITHIN(held.reaction(0, 'x'), push, push, 1e-11);
  for (const solver::end_forces& f : held.results.members) EXPECT_WITHIN((f[6] - f[0]) / 2, -push, push, 1e-11);
  const solved free = solve(read(b.deck("", CLAMPED_AT_1, "*STATIC\n*TEMPERATURE\nALL, 50.\n")));
  EXPECT_WITHIN(free.u(4, 'x'), 1.2e-5 * 50 * L, 1e-2, 1e-11);
  for (const solver::end_forces& f : free.results.members) EXPECT_WITHIN(f[6], 0.0, push, 1e-11);
}

TEST(AnalysisFrames, SemiRigidPortal) {
  // Slope-deflection without axial strain: with j the joint stiffness by EI/L of the beam, the beam resists 6 EI/L
  // times 1 / (1 + 6/j) at each end; joint rotation and sway follow from two equations.
  const double H = 4000, EI = 210000 * 8.356e7, P = 20000;
  const double L = 6000;
  for (const double j : {1e9, 10.0, 1.0}) {
    const double beam = 6 * EI / L / (1 + 6 / j);  // moment by rotation of both joints
    // Column: M_top = 4EI/H t - 6EI/H^2 D, M_base = 2EI/H t - 6EI/H^2 D (rotation t and sway D in one sense).
    const double t_by_D = 6 * EI / (H * H) / (4 * EI / H + beam);
    const double shear = 12 * EI / (H * H * H) - 6 * EI / (H * H) * t_by_D;  // of one column, by D
    const double D = P / (2 * shear);
    solver::model m = deck("semi_rigid_portal.inp");
    const double r = j / (j + 3);
    for (solver::member_ends& ends : m.ends) ends.fixity[0][0] = ends.fixity[1][0] = r;
    const solved s = solve(m);
    EXPECT_WITHIN(s.u(1, 'x'), D, D, 1e-6) << j;  // the members do shorten by a millionth
    EXPECT_WITHIN(s.u(2, 'x'), D, D, 1e-6) << j;
    const double base = 6 * EI / (H * H) * D - 2 * EI / H * t_by_D * D;
    EXPECT_WITHIN(s.reaction(0, 'Z'), base, base, 1e-6) << j;
    EXPECT_WITHIN(std::fabs(s.results.members[2][4]), beam * t_by_D * D, base, 1e-6) << j;
  }
}

TEST(AnalysisFrames, TimoshenkoCantileverDeck) {
  const solved s = solve(deck("timoshenko_cantilever.inp"));
  EXPECT_WITHIN(s.u(1, 'y'), -0.377495591, 0.377495591, 1e-9);
  EXPECT_WITHIN(s.u(1, 'Z'), -1e5 * 1e6 / (2 * 210000.0 * 4.5e8), 1e-3, 1e-11);
}

TEST(AnalysisFrames, SemiRigidPortalDeck) {
  const solved s = solve(deck("semi_rigid_portal.inp"));
  EXPECT_WITHIN(s.u(1, 'x'), 5.6445, 5.6445, 1e-4);
  EXPECT_WITHIN(s.reaction(0, 'Z'), 25.714e6, 25.714e6, 1e-4);
  EXPECT_WITHIN(std::fabs(s.results.members[2][4]), 14.286e6, 14.286e6, 1e-4);
}

TEST(AnalysisFrames, UnequalSemiRigidEndsWithShearUnderUniformLoad) {
  // One element against two: the joint in the middle is solved for there, and each half knows only one of the springs
  // k = 3 E I r / (L (1 - r)).
  straight_member b;
  b.shear_y = b.shear_z = 1.5e7;
  const double r1 = 0.3, r2 = 0.8, q = 12, L = b.length;
  const auto half = [](double r) { return r / (1 - r) / (r / (1 - r) + 2); };
  const auto ends = [](int last, double first_factor, double last_factor) {
    return "*FIXITY\n1, S1, 1., " + number(first_factor) + "\n" + std::to_string(last) + ", S2, 1., " +
           number(last_factor) + "\n";
  };
  const std::string load = "*STATIC\n*DLOAD\nMEMBER, P1, -12.\n";
  const solved one = solve(read(b.deck(ends(1, r1, r2), "ALL, ENCASTRE\n", load)));
  b.elements = 2;
  const solved two = solve(read(b.deck(ends(2, half(r1), half(r2)), "1, ENCASTRE\n3, ENCASTRE\n", load)));
  for (const char direction : {'y', 'Z'}) {
    EXPECT_WITHIN(one.reaction(0, direction), two.reaction(0, direction), q * L * (direction == 'y' ? 1 : L), 1e-12);
    EXPECT_WITHIN(one.reaction(1, direction), two.reaction(2, direction), q * L * (direction == 'y' ? 1 : L), 1e-12);
  }
  EXPECT_GT(std::fabs(one.reaction(0, 'y') / one.reaction(1, 'y') - 1), 0.05);  // the ends do differ
}

namespace {

using rotation = std::array<std::array<double, 3>, 3>;

// A random rotation by the unit quaternion (a, b, c, d).
rotation random_rotation(std::mt19937& engine) {
  std::array<double, 4> q{};
  double length = 0;
  while (!(length > 0.1)) {
    for (double& part : q) part = static_cast<double>(engine()) / 2147483648.0 - 1;
    length = std::sqrt(q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3]);
  }
  const double a = q[0] / length, b = q[1] / length, c = q[2] / length, d = q[3] / length;
  return {{{1 - 2 * (c * c + d * d), 2 * (b * c - a * d), 2 * (b * d + a * c)},
           {2 * (b * c + a * d), 1 - 2 * (b * b + d * d), 2 * (c * d - a * b)},
           {2 * (b * d - a * c), 2 * (c * d + a * b), 1 - 2 * (b * b + c * c)}}};
}

std::array<double, 3> turned(const rotation& R, const std::array<double, 3>& v) {
  std::array<double, 3> result{};
  for (std::size_t i = 0; i < 3; ++i)
    for (std::size_t j = 0; j < 3; ++j) result[i] += R[i][j] * v[j];
  return result;
}

}  // namespace

TEST(AnalysisFrames, TurnedWithTheWholeModel) {
  // A cantilever of two elements with shear and a semi-rigid joint, under tip loads, a load along
  // the member and weight: when all of it turns, the displacements turn and the end forces in local axes stay.
  straight_member b;
  b.elements = 2;
  b.shear_y = 3e7;
  b.shear_z = 2e7;
  solver::model m = read(b.deck("*FIXITY\n2, S1, 0.4, 0.7\n", "1, ENCASTRE\n",
                                "*STATIC\n*DLOAD\nMEMBER, P1, 2.\nMEMBER, P2, -3.\nMEMBER, GRAV, 9810., 1., 2., 3.\n"));
  const std::array<double, 3> force{500, -300, 200}, moment{1e5, 2e5, -3e5};
  const auto load_tip = [&](solver::model& model, const rotation& R) {
    const std::array<double, 3> f = turned(R, force), t = turned(R, moment);
    for (int i = 0; i < 3; ++i) {
      const auto k = static_cast<std::size_t>(i);
      model.steps[0].nodal_loads.push_back({2, i + 1, f[k], 0, 0});
      model.steps[0].nodal_loads.push_back({2, i + 4, t[k], 0, 0});
    }
  };
  const auto vector_at = [](const solved& s, int node, int first) {
    std::array<double, 3> v{};
    for (int i = 0; i < 3; ++i)
      v[static_cast<std::size_t>(i)] = s.solution.displacement[solver::freedom(node, first + i)];
    return v;
  };
  solver::model straight = m;
  load_tip(straight, {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}});
  const solved reference = solve(straight);
  std::mt19937 engine(41);
  for (int trial = 0; trial < 50; ++trial) {
    const rotation R = random_rotation(engine);
    solver::model moved = m;
    for (solver::node& n : moved.nodes) n.xyz = turned(R, n.xyz);
    moved.frame_sections[0].n1 = turned(R, moved.frame_sections[0].n1);
    for (solver::element_load& card : moved.steps[0].element_loads)
      if (card.kind == solver::element_load_kind::GRAVITY) card.direction = turned(R, card.direction);
    load_tip(moved, R);
    const solved s = solve(moved);
    for (const int first : {0, 3}) {
      const std::array<double, 3> actual = vector_at(s, 2, first), expected = turned(R, vector_at(reference, 2, first));
      EXPECT_WITHIN(std::vector<double>(actual.begin(), actual.end()),
                    std::vector<double>(expected.begin(), expected.end()), max_norm({expected.begin(), expected.end()}),
                    1e-10)
          << trial;
    }
    for (std::size_t e = 0; e < 2; ++e) {
      const solver::end_forces &actual = s.results.members[e], &expected = reference.results.members[e];
      EXPECT_WITHIN(std::vector<double>(actual.begin(), actual.end()),
                    std::vector<double>(expected.begin(), expected.end()), max_norm({expected.begin(), expected.end()}),
                    1e-10)
          << trial;
    }
  }
}
