// What happens between the ends of members: closed forms of single beams, and beams against the same beam cut in four.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "elements/member_field.h"
#include "frame_decks.h"

using namespace frame_test;
using solver::extreme;
using solver::member_field;
using solver::station;

namespace {

enum { N, VY, VZ, T, MY, MZ };

// A free end, and simple supports: the first holds the torsion too.
const std::string SIMPLE = "1, 1, 4\n2, 2, 3\n";
const std::string CLAMPED = "1, ENCASTRE\n2, ENCASTRE\n";

std::string loaded(const std::string& direction, double q) {
  return "*STATIC\n*DLOAD\nMEMBER, " + direction + ", " + number(q) + "\n";
}

// The field of the first member.
member_field field(const std::string& deck) { return solve(read(deck)).results.fields.at(0); }

double force(const member_field& f, int which, double xi) {
  return station_at(f, xi).force[static_cast<std::size_t>(which)];
}
double moved(const member_field& f, int direction, double xi) {
  return station_at(f, xi).displacement[static_cast<std::size_t>(direction)];
}
double turned(const member_field& f, int direction, double xi) {
  return station_at(f, xi).rotation[static_cast<std::size_t>(direction)];
}

// The other plane must stay as it was.
void expect_nothing(const member_field& f, const std::vector<int>& forces, int direction, double size) {
  for (const double xi : {0.0, 0.3, 0.5, 1.0}) {
    for (const int which : forces) EXPECT_WITHIN(force(f, which, xi), 0.0, size, 1e-12) << which;
    EXPECT_WITHIN(moved(f, direction, xi), 0.0, size, 1e-12);
  }
}

}  // namespace

TEST(AnalysisMemberField, SimplySupportedInBothPlanes) {
  for (const bool flexible : {false, true}) {
    straight_member b;
    if (flexible) {
      b.shear_y = 2e6;
      b.shear_z = 5e6;
    }
    const double L = b.length, q = 3;
    const double bend_y = q * L * L * L * L / (b.E * b.inertia_xy), bend_z = q * L * L * L * L / (b.E * b.inertia_xz);
    const double slip_y = flexible ? q * L * L / (8 * b.shear_y) : 0,
                 slip_z = flexible ? q * L * L / (8 * b.shear_z) : 0;

    const member_field y = field(b.deck("", SIMPLE, loaded("P1", q)));       // axis 1 is y
    EXPECT_WITHIN(force(y, MZ, 0.5), -q * L * L / 8, q * L * L / 8, 1e-12);  // tension on the side of +y
    EXPECT_WITHIN(force(y, MZ, 0.25), -3 * q * L * L / 32, q * L * L / 8, 1e-12);
    EXPECT_WITHIN(force(y, VY, 0), q * L / 2, q * L, 1e-12);
    EXPECT_WITHIN(force(y, VY, 1), -q * L / 2, q * L, 1e-12);
    EXPECT_WITHIN(moved(y, 1, 0.5), 5 * bend_y / 384 + slip_y, bend_y, 1e-12);
    EXPECT_WITHIN(turned(y, 2, 0), bend_y / L / 24, bend_y / L, 1e-12);
    EXPECT_WITHIN(turned(y, 2, 0.5), 0, bend_y / L, 1e-12);
    EXPECT_WITHIN(moved(y, 1, 0), 0, bend_y, 1e-15);
    EXPECT_WITHIN(moved(y, 1, 1), 0, bend_y, 1e-15);
    expect_nothing(y, {N, VZ, T, MY}, 2, bend_y);

    const member_field z = field(b.deck("", SIMPLE, loaded("P2", q)));
    EXPECT_WITHIN(force(z, MY, 0.5), q * L * L / 8, q * L * L / 8, 1e-12);  // tension on the side of +z
    EXPECT_WITHIN(force(z, VZ, 0), q * L / 2, q * L, 1e-12);
    EXPECT_WITHIN(moved(z, 2, 0.5), 5 * bend_z / 384 + slip_z, bend_z, 1e-12);
    EXPECT_WITHIN(turned(z, 1, 0), -bend_z / L / 24, bend_z / L, 1e-12);
    expect_nothing(z, {N, VY, T, MZ}, 1, bend_z);
  }
}

TEST(AnalysisMemberField, ClampedAndPropped) {
  straight_member b;
  const double L = b.length, q = 3, M = q * L * L, w = q * L * L * L * L / (b.E * b.inertia_xy);
  const member_field clamped = field(b.deck("", CLAMPED, loaded("P1", -q)));
  EXPECT_WITHIN(force(clamped, MZ, 0), -M / 12, M, 1e-12);
  EXPECT_WITHIN(force(clamped, MZ, 1), -M / 12, M, 1e-12);
  EXPECT_WITHIN(force(clamped, MZ, 0.5), M / 24, M, 1e-12);
  EXPECT_WITHIN(moved(clamped, 1, 0.5), -w / 384, w, 1e-12);
  EXPECT_WITHIN(turned(clamped, 2, 1), 0, w / L, 1e-12);

  // Clamped at the first end. With x from there, EI v = q x^2 (3 L^2 - 5 L x + 2 x^2) / 48, downwards; its slope is 0
  // where 6 - 15 s + 8 s^2 is, s = x / L.
  const double s = (15 - std::sqrt(33.0)) / 16, v = s * s * (3 - 5 * s + 2 * s * s) / 48;
  EXPECT_WITHIN(1 - s, 0.4215, 1, 1e-4);
  EXPECT_WITHIN(1 / v, 184.6, 184.6, 1e-3);
  const member_field propped = field(b.deck("", "1, ENCASTRE\n2, 2, 3\n", loaded("P1", -q)));
  const solver::value_range range = range_of_force(propped, MZ);
  EXPECT_WITHIN(range.least.value, -M / 8, M, 1e-12);
  EXPECT_EQ(range.least.xi, 0);
  EXPECT_WITHIN(range.largest.value, 9 * M / 128, M, 1e-12);
  EXPECT_WITHIN(range.largest.xi, 5.0 / 8, 1, 1e-8);
  const extreme most = largest_displacement(propped);
  EXPECT_WITHIN(most.value, v * w, w, 1e-12);
  EXPECT_WITHIN(most.xi, s, 1, 1e-7);
  EXPECT_WITHIN(solver::range_of(solver::widened(propped.displacement[1])).least.xi, s, 1, 1e-12);
  EXPECT_WITHIN(largest_rotation(propped).value, w / L / 48, w / L, 1e-12);  // at the simple support
}

TEST(AnalysisMemberField, MemberEndsTurnWhereNodesDoNot) {
  straight_member b;
  const double L = b.length, q = 3, M = q * L * L, w = q * L * L * L * L / (b.E * b.inertia_xy);
  // Pins of the member between clamped nodes.
  const member_field pinned = field(b.deck("*RELEASE\nMEMBER, S1, M2\nMEMBER, S2, M2\n", CLAMPED, loaded("P1", q)));
  EXPECT_WITHIN(force(pinned, MZ, 0.5), -M / 8, M, 1e-12);
  EXPECT_WITHIN(moved(pinned, 1, 0.5), 5 * w / 384, w, 1e-12);
  EXPECT_WITHIN(turned(pinned, 2, 0), w / L / 24, w / L, 1e-12);
  EXPECT_WITHIN(turned(pinned, 2, 1), -w / L / 24, w / L, 1e-12);
  // Springs k = 3 EI r / (L (1 - r)) at both ends: q L^3 / 24 EI - m L / 2 EI = m / k gives the end moment.
  for (const double r : {0.1, 0.5, 0.9}) {
    const member_field f = field(b.deck("*FIXITY\nMEMBER, S1, 1, " + number(r) + "\nMEMBER, S2, 1, " + number(r) + "\n",
                                        CLAMPED, loaded("P1", q)));
    const double m = M * r / (4 * (2 + r));
    EXPECT_WITHIN(force(f, MZ, 0), m, M, 1e-12) << r;
    EXPECT_WITHIN(force(f, MZ, 0.5), m - M / 8, M, 1e-12) << r;
    EXPECT_WITHIN(turned(f, 2, 0), m * L * (1 - r) / (3 * b.E * b.inertia_xy * r), w / L, 1e-12) << r;
    EXPECT_WITHIN(moved(f, 1, 0.5), 5 * w / 384 - m * L * L / (8 * b.E * b.inertia_xy), w, 1e-12) << r;
  }
}

TEST(AnalysisMemberField, AxialLoadsAndTemperature) {
  // Hanging from its first end: N = g A (L - x), u = g (L x - x^2 / 2) / E, of beams as of trusses.
  const double g = 9810 * 7.85e-9, L = 4000, E = 210000, A = 5000;
  const std::string mesh = "*NODE\n1, 0, 0, 0\n2, 0, 0, -4000\n*ELEMENT, TYPE=";
  const std::string mat =
      ", ELSET=E\n1, 1, 2\n*MATERIAL, NAME=M\n*ELASTIC\n210000, 0.3\n*DENSITY\n7.85e-9\n*EXPANSION\n1.2E-5\n";
  const std::string rest = "*BOUNDARY\n1, ENCASTRE\n2, 1, 2\n*STEP\n*STATIC\n*DLOAD\nE, GRAV, 9810, 0, 0, -1\n";
  for (const bool truss : {false, true}) {
    const std::string section = truss ? "*SOLID SECTION, ELSET=E, MATERIAL=M\n5000\n"
                                      : "*BEAM GENERAL SECTION, ELSET=E, MATERIAL=M\n5000, 1e7, 0, 1e7, 1e6\n1, 0, 0\n";
    const std::string head = mesh + (truss ? "T3D2" : "B31") + mat + section + rest;
    const member_field cold = field(head + "*END STEP\n");
    const member_field hot = field(head + "*TEMPERATURE\n1, 10\n2, 30\n*END STEP\n");
    for (const double xi : {0.0, 0.25, 0.5, 1.0}) {
      const double x = xi * L, u = g * (L * x - x * x / 2) / E;
      EXPECT_WITHIN(force(cold, N, xi), g * A * (L - x), g * A * L, 1e-12);
      EXPECT_WITHIN(moved(cold, 2, xi), -u, g * L * L / E, 1e-12);
      EXPECT_WITHIN(force(hot, N, xi), g * A * (L - x), g * A * L, 1e-9);
      EXPECT_WITHIN(moved(hot, 2, xi), -u - 1.2e-5 * 20 * x, 1.2e-5 * 20 * L, 1e-12);
    }
  }
  // Held at both ends a hot beam is pressed and stays; with the force released at its second end it grows past the
  // node.
  straight_member b;
  const std::string hot = "*STATIC\n*TEMPERATURE\nALL, 50\n";
  const member_field held = field(b.deck("", CLAMPED, hot));
  EXPECT_WITHIN(force(held, N, 0.5), -b.E * b.area * 1.2e-5 * 50, b.E * b.area * 1.2e-5 * 50, 1e-12);
  EXPECT_WITHIN(moved(held, 0, 0.5), 0, 1, 1e-12);
  const member_field free = field(b.deck("*RELEASE\n1, S2, N\n", CLAMPED, hot));
  EXPECT_WITHIN(force(free, N, 0.5), 0, b.E * b.area * 1.2e-5 * 50, 1e-12);
  EXPECT_WITHIN(moved(free, 0, 1), 1.2e-5 * 50 * L, 1, 1e-12);
}

namespace {

// A member between clamped nodes that have moved, anywhere in space, under loads in all directions.
struct placed_member {
  point first, second, n1;
  double E = 2e5, nu = 0.25, A = 40, I11 = 900, I22 = 300, J = 150, K23 = 4e5, K13 = 3e5;
  bool flexible = true;  // B31; B33 takes no notice of the shear stiffnesses
  std::string loads;
  std::array<double, 12> ends{};
  // Springs at the ends, about axes 1 and 2, as fixity factors of the whole member.
  std::array<std::array<double, 2>, 2> fixity{{{1, 1}, {1, 1}}};
  std::string release;  // "S1, V1"; empty: none

  std::string deck(int elements, const std::string& step_flags = "") const {
    std::string text = "*NODE, NSET=ALL\n";
    for (int n = 0; n <= elements; ++n) {
      text += std::to_string(n + 1);
      for (std::size_t i = 0; i < 3; ++i) text += ", " + number(first[i] + (second[i] - first[i]) * n / elements);
      text += "\n";
    }
    text += std::string("*ELEMENT, TYPE=") + (flexible ? "B31" : "B33") + ", ELSET=MEMBER\n";
    for (int e = 1; e <= elements; ++e)
      text += std::to_string(e) + ", " + std::to_string(e) + ", " + std::to_string(e + 1) + "\n";
    text += "*MATERIAL, NAME=M\n*ELASTIC\n" + number(E) + ", " + number(nu) +
            "\n*DENSITY\n3e-4\n*EXPANSION\n1e-5\n*BEAM GENERAL SECTION, ELSET=MEMBER, MATERIAL=M\n" + number(A) + ", " +
            number(I11) + ", 0, " + number(I22) + ", " + number(J) + "\n" + number(n1[0]) + ", " + number(n1[1]) +
            ", " + number(n1[2]) + "\n";
    text += "*TRANSVERSE SHEAR STIFFNESS\n" + number(K23) + ", " + number(K13) + "\n";
    // The same spring at the end of a shorter element: k = 3 EI r / (l (1 - r)).
    const auto of_element = [&](double r) { return r / (r + (1 - r) * elements); };
    text += "*FIXITY\n1, S1, " + number(of_element(fixity[0][0])) + ", " + number(of_element(fixity[0][1])) + "\n" +
            std::to_string(elements) + ", S2, " + number(of_element(fixity[1][0])) + ", " +
            number(of_element(fixity[1][1])) + "\n";
    if (!release.empty())
      text += "*RELEASE\n" + (release[1] == '1' ? std::string("1") : std::to_string(elements)) + ", " + release + "\n";
    text += "*BOUNDARY\n";
    for (std::size_t d = 0; d < 6; ++d)
      text += "1, " + std::to_string(d + 1) + ", " + std::to_string(d + 1) + ", " + number(ends[d]) + "\n" +
              std::to_string(elements + 1) + ", " + std::to_string(d + 1) + ", " + std::to_string(d + 1) + ", " +
              number(ends[6 + d]) + "\n";
    return text + "*STEP" + step_flags + "\n*STATIC\n" + loads + "*END STEP\n";
  }
};

placed_member random_member(std::mt19937& random) {
  std::uniform_real_distribution<double> any(-1, 1);
  placed_member b;
  for (std::size_t i = 0; i < 3; ++i) {
    b.first[i] = 20 * any(random);
    b.second[i] = b.first[i] + 50 * any(random);
    b.n1[i] = any(random);
  }
  for (double& u : b.ends) u = 0.01 * any(random);
  b.loads = "*DLOAD\nMEMBER, P1, " + number(any(random)) + "\nMEMBER, P2, " + number(any(random)) + "\nMEMBER, PX, " +
            number(any(random)) + "\nMEMBER, GRAV, 30, " + number(any(random)) + ", " + number(any(random)) + ", " +
            number(any(random)) + "\n*TEMPERATURE\nALL, " + number(20 * any(random)) + "\n";
  return b;
}

// The field of one element against the nodes and the end forces of four, which know nothing of fields.
void compare_with_four(const placed_member& b, const std::string& name) {
  const member_field f = field(b.deck(1));
  const solved four = solve(read(b.deck(4)));
  double forces = 0, u = 0, turns = 0;
  for (const solver::end_forces& at : four.results.members)
    for (const double value : at) forces = std::fmax(forces, std::fabs(value));
  for (int n = 0; n < 5; ++n)
    for (int d = 0; d < 3; ++d) {
      u = std::fmax(u, std::fabs(four.u(n, "xyz"[d])));
      turns = std::fmax(turns, std::fabs(four.u(n, "XYZ"[d])));
    }
  for (int n = 1; n <= 3; ++n) {
    const station s = station_at(f, n / 4.0);
    for (std::size_t d = 0; d < 3; ++d) {
      EXPECT_WITHIN(s.displacement[d], four.u(n, "xyz"[d]), u, 1e-9) << name << " node " << n;
      EXPECT_WITHIN(s.rotation[d], four.u(n, "XYZ"[d]), turns, 1e-9) << name << " node " << n;
    }
    for (std::size_t i = 0; i < 6; ++i) {
      EXPECT_WITHIN(s.force[i], -four.results.members[static_cast<std::size_t>(n)][i], forces, 1e-9)
          << name << " " << i;
      EXPECT_WITHIN(s.force[i], four.results.members[static_cast<std::size_t>(n - 1)][6 + i], forces, 1e-9) << name;
    }
  }
  // The fields of the four are the same functions.
  for (const double xi : {0.1, 0.4, 0.6, 0.95}) {
    const auto e = static_cast<std::size_t>(4 * xi);
    const station one = station_at(f, xi), part = station_at(four.results.fields[e], 4 * xi - static_cast<double>(e));
    for (std::size_t d = 0; d < 3; ++d) {
      EXPECT_WITHIN(part.displacement[d], one.displacement[d], u, 1e-9) << name << " " << xi;
      EXPECT_WITHIN(part.rotation[d], one.rotation[d], turns, 1e-9) << name << " " << xi;
    }
    for (std::size_t i = 0; i < 6; ++i) EXPECT_WITHIN(part.force[i], one.force[i], forces, 1e-9) << name << " " << xi;
  }
}

}  // namespace

TEST(AnalysisMemberField, OneElementLikeFourAnywhereInSpace) {
  std::mt19937 random(7);
  for (int seed = 0; seed < 6; ++seed) {
    placed_member b = random_member(random);
    b.flexible = seed % 2 == 0;
    compare_with_four(b, "rigid " + std::to_string(seed));
    b.fixity = {{{0.7, 0.2}, {0.4, 0.9}}};
    compare_with_four(b, "springs " + std::to_string(seed));
    b.fixity = {{{0, 0.3}, {0.6, 0}}};
    compare_with_four(b, "pins " + std::to_string(seed));
  }
}

TEST(AnalysisMemberField, OneElementLikeFourWithReleases) {
  std::mt19937 random(11);
  for (const char* const release :
       {"S1, N", "S2, N", "S1, T", "S2, T", "S1, V1", "S2, V1", "S1, V2", "S2, V2", "S1, M1", "S2, M2", "S2, ALLM"}) {
    placed_member b = random_member(random);
    compare_with_four(b, release);
    b.release = release;
    compare_with_four(b, release);
    b.fixity = {{{0.7, 0.8}, {1, 0.5}}};
    compare_with_four(b, std::string(release) + " with springs");
    b.fixity = {{{0.5, 0.3}, {0.7, 0.9}}};
    compare_with_four(b, std::string(release) + " with the softer springs first");
    b.fixity = {{{0.7, 0.8}, {0.5, 0.9}}};
    compare_with_four(b, std::string(release) + " with unlike springs");
    b.fixity = {{{0, 0}, {0.6, 0.8}}};
    compare_with_four(b, std::string(release) + " with a pin first");
  }
}

TEST(AnalysisMemberField, SecondOrderMomentsHoldTheAxialForce) {
  // Between pins, P at 0.3 of the buckling load: M = -(q / k^2) (sec(k L / 2) - 1) in the middle, k^2 = P / EI, whose
  // deflection is (M - q L^2 / 8) / P by statics.
  straight_member b;
  const double pi = std::acos(-1.0), L = b.length, q = 2, EI = b.E * b.inertia_xy, P = 0.3 * pi * pi * EI / (L * L);
  const double k = std::sqrt(P / EI), M = q / (k * k) * (1 / std::cos(k * L / 2) - 1);
  const auto solve_with = [&](int elements) {
    b.elements = elements;
    const std::string last = std::to_string(elements + 1);
    return solve(read(b.deck("", "1, 1, 4\n" + last + ", 2, 3\n",
                             loaded("P1", -q) + "*CLOAD\n" + last + ", 1, " + number(-P) + "\n", ", PDELTA")));
  };
  // One element: its cubic is not the sine, yet end forces, loads and its own deflection are in balance.
  const member_field one = solve_with(1).results.fields[0];
  const double balance = q * L * L / 8 - P * moved(one, 1, 0.5);
  EXPECT_WITHIN(force(one, MZ, 0.5), balance, M, 1e-9);
  EXPECT_WITHIN(force(one, MZ, 0), 0, M, 1e-9);
  // With the cubic the ends turn by (q L^3 / 24 EI) / (1 - P L^2 / 12 EI), and 4 parts of 5 of the deflection with
  // them.
  const double w = q * L * L * L * L / (384 * EI);
  EXPECT_WITHIN(moved(one, 1, 0.5), -w * (1 + 4 / (1 - P * L * L / (12 * EI))), w, 1e-9);
  // Cut finer it comes to the secant formula, with one moment on both sides of every node.
  const solved eight = solve_with(8);
  EXPECT_WITHIN(force(eight.results.fields[3], MZ, 1), M, M, 1e-4);
  EXPECT_WITHIN(moved(eight.results.fields[4], 1, 0), -(M - q * L * L / 8) / P, L * L * M / EI, 1e-4);
  for (std::size_t e = 0; e < 7; ++e) {
    EXPECT_WITHIN(force(eight.results.fields[e], MZ, 1), force(eight.results.fields[e + 1], MZ, 0), M, 1e-9);
    EXPECT_WITHIN(turned(eight.results.fields[e], 2, 1), eight.u(static_cast<int>(e) + 1, 'Z'), k * M / P, 1e-9);
    EXPECT_WITHIN(turned(eight.results.fields[e + 1], 2, 0), eight.u(static_cast<int>(e) + 1, 'Z'), k * M / P, 1e-9);
  }
  // The other plane likewise.
  const double in_y = force(eight.results.fields[2], MZ, 0.5);
  std::swap(b.inertia_xy, b.inertia_xz);
  b.elements = 8;
  const member_field z =
      solve(read(b.deck("", "1, 1, 4\n9, 2, 3\n", loaded("P2", -q) + "*CLOAD\n9, 1, " + number(-P) + "\n", ", PDELTA")))
          .results.fields[2];
  EXPECT_WITHIN(force(z, MY, 0.5), -in_y, M, 1e-9);
}

TEST(AnalysisMemberField, RootsAndExtremesOfPolynomials) {
  // (x - 1/8) (x - 1/2) (x - 7/8), and the double root of (x - 1/2)^2, where no sign changes.
  const std::vector<double> roots = solver::inner_roots({-7.0 / 128, 39.0 / 64, -1.5, 1});
  ASSERT_EQ(roots.size(), 3U);
  EXPECT_WITHIN(roots, (std::vector<double>{0.125, 0.5, 0.875}), 1, 1e-14);
  EXPECT_TRUE(solver::inner_roots({1, -0.5, 2}).empty());
  EXPECT_TRUE(solver::inner_roots({0, 0, 0}).empty());
  // An end stands for an extreme that is rounding.
  const solver::value_range flat = solver::range_of({1, 1e-15, -1e-15});
  EXPECT_EQ(flat.largest.xi, 0);
  EXPECT_EQ(flat.least.xi, 0);
  const extreme longest = solver::largest_length({{{0, 3, -3, 0, 0}, {0, 4, -4, 0, 0}, {}}});
  EXPECT_WITHIN(longest.value, 1.25, 1.25, 1e-14);
  EXPECT_WITHIN(longest.xi, 0.5, 1, 1e-7);
}
