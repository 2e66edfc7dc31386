// Steps with PERTURBATION: frequencies, buckling factors and linear responses about a loaded state, against closed
// forms.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <Eigen/Eigenvalues>

#include "finites/fields.h"
#include "frame_decks.h"
#include "run_support.h"
#include "shell_decks.h"
#include "solids_support.h"

using frame_test::number;
using frame_test::straight_member;
using run_test::a_step;
using run_test::ran;
using run_test::run;
using run_test::run_error;
using shell_test::cells;
using shell_test::sheet;

namespace {

constexpr double PI = 3.14159265358979323846;
const std::string SMALL = ", PERTURBATION";

// A beam between pins, in the x-y plane, cut into 20; its right end, node 21, is free along x.
straight_member slender() {
  straight_member b;
  b.length = 10000;
  b.area = 400;
  b.inertia_xy = b.inertia_xz = 1000;
  b.elements = 20;
  return b;
}
const std::string PINS = "ALL, 3, 5\n1, 1, 2\n21, 2\n";

double euler(const straight_member& b) { return PI * PI * b.E * b.inertia_xy / (b.length * b.length); }

// f_n = (n^2 pi / 2 L^2) sqrt(EI / rho A) sqrt(1 + T L^2 / (n^2 pi^2 EI)).
double tensioned(const straight_member& b, double tension, int n) {
  const double alone = n * n * PI / (2 * b.length * b.length) * std::sqrt(b.E * b.inertia_xy / (b.density * b.area));
  return alone * std::sqrt(1 + tension / (n * n * euler(b)));
}

std::string pulled(double tension) { return "*CLOAD\n21, 1, " + number(tension) + "\n"; }

std::string preloaded(double tension, const std::string& further) {
  return slender().deck("", PINS, "*STATIC\n" + pulled(tension)) + further;
}

bool says(const std::string& text, const std::string& words) { return text.find(words) != std::string::npos; }

// In-plane supports that hold a sheet without resisting its membrane forces, and its edges along z.
std::string simply_supported(const sheet& s) {
  const std::string middle = std::to_string(s.node(s.n / 2, s.n / 2) + 1), low = std::to_string(s.node(s.n / 2, 0) + 1);
  std::string text = "LEFT, 3\nRIGHT, 3\nLOWER, 3\nUPPER, 3\n" + middle + ", 1, 2\n" + low + ", 1\n";
  return text;
}

// Uniform membrane forces nx and ny, as loads on the edges of a unit square.
std::string membrane_forces(const sheet& s, double nx, double ny) {
  std::string text = "*CLOAD\n";
  if (nx != 0) text += line_load(s, 0, 1, -nx) + line_load(s, 1, 1, nx);
  if (ny != 0) text += line_load(s, 2, 2, -ny) + line_load(s, 3, 2, ny);
  return text;
}

sheet plate(cells kind, const std::string& formulation, int n = 12) {
  sheet s;
  s.n = n;
  s.kind = kind;
  s.formulation = formulation;
  return s;
}

}  // namespace

TEST(AnalysisPreload, FrequenciesOfABeamUnderAnAxialForce) {
  const straight_member b = slender();
  for (const double share : {5.0, 0.5, -0.5, -0.95}) {
    const double tension = share * euler(b);
    const ran r = run(preloaded(tension, a_step(SMALL, "*FREQUENCY\n3\n")));
    const std::vector<double> f = r.modes(2);
    ASSERT_EQ(f.size(), 3U) << share;
    for (int n = 1; n <= 3; ++n) {
      // Consistent masses and cubic shapes: (k h)^4 / 720 of the squares, which the preload of -0.95 magnifies by 20.
      const double kh = n * PI / 20, exact = tensioned(b, tension, n);
      EXPECT_WITHIN(f[static_cast<std::size_t>(n - 1)], exact, exact, 1e-5 + kh * kh * kh * kh / 720) << share << n;
    }
    EXPECT_TRUE(says(r.summary(2), "stands on the state at the end of step 1\n")) << r.text;
  }
}

TEST(AnalysisPreload, AboveTheBucklingLoadTheSquaresAreNegative) {
  const straight_member b = slender();
  const double tension = -1.5 * euler(b);
  const ran r = run(preloaded(tension, a_step(SMALL, "*FREQUENCY\n3\n")));
  const std::vector<double> f = r.modes(2);
  ASSERT_EQ(f.size(), 3U);
  const double alone = tensioned(b, 0, 1);
  EXPECT_WITHIN(f[0], -alone * std::sqrt(0.5), alone, 1e-4);
  for (int n = 2; n <= 3; ++n)
    EXPECT_WITHIN(f[static_cast<std::size_t>(n - 1)], tensioned(b, tension, n), tensioned(b, tension, n), 1e-4) << n;
  EXPECT_TRUE(
      says(r.text, "the state at the end of step 1 is above a buckling load: it is not stable. 1 of the modes grows"))
      << r.text;
  // Two of the modes grow, and nothing else can stand on such a state.
  const std::vector<double> two = run(preloaded(-5 * euler(b), a_step(SMALL, "*FREQUENCY\n3\n"))).modes(2);
  EXPECT_WITHIN(two[0], -4 * alone * std::sqrt(5.0 / 4 - 1), alone, 1e-3);
  EXPECT_WITHIN(two[1], -alone * std::sqrt(4.0), alone, 1e-3);
  EXPECT_GT(two[2], 0);
  for (const char* const cards : {"*STATIC\n*CLOAD\n11, 2, 1.\n", "*BUCKLE\n1\n*CLOAD\n21, 1, -1.\n"})
    EXPECT_TRUE(says(run_error(preloaded(tension, a_step(SMALL, cards))),
                     "the state at the end of step 1 is above a buckling load: it is not stable, and nothing can "
                     "stand on it"))
        << cards;
}

TEST(AnalysisPreload, CoarseElementsFarAboveTheBucklingLoad) {
  // Two elements under 39 times Euler's load: entries of the diagonal of K + KG are negative, and that is no mechanism.
  // Matrices of a slender beam by Przemieniecki (1968), with the inertia of rotation.
  const double E = 210e9, I = 1e-4, A = 0.01, rho = 7850, l = 5, P = -8e7;
  Eigen::Matrix4d k, g, m;
  k << 12, 6 * l, -12, 6 * l, 6 * l, 4 * l * l, -6 * l, 2 * l * l, -12, -6 * l, 12, -6 * l, 6 * l, 2 * l * l, -6 * l,
      4 * l * l;
  g << 36, 3 * l, -36, 3 * l, 3 * l, 4 * l * l, -3 * l, -l * l, -36, -3 * l, 36, -3 * l, 3 * l, -l * l, -3 * l,
      4 * l * l;
  m << 156, 22 * l, 54, -13 * l, 22 * l, 4 * l * l, 13 * l, -3 * l * l, 54, 13 * l, 156, -22 * l, -13 * l, -3 * l * l,
      -22 * l, 4 * l * l;
  const Eigen::Matrix4d part = E * I / (l * l * l) * k + P / (30 * l) * g,
                        mass = rho * A * l / 420 * m + rho * I / (30 * l) * g;
  Eigen::Matrix<double, 6, 6> K = Eigen::Matrix<double, 6, 6>::Zero(), M = K;
  for (const int at : {0, 2}) {
    K.block<4, 4>(at, at) += part;
    M.block<4, 4>(at, at) += mass;
  }
  EXPECT_LT(K(1, 1), 0);
  const Eigen::Index free[] = {1, 2, 3, 5};
  Eigen::Matrix4d Kf, Mf;
  for (int i = 0; i < 4; ++i)
    for (int j = 0; j < 4; ++j) Kf(i, j) = K(free[i], free[j]), Mf(i, j) = M(free[i], free[j]);
  const Eigen::GeneralizedSelfAdjointEigenSolver<Eigen::Matrix4d> pairs(Kf, Mf);

  const std::string head =
      "*NODE, NSET=ALL\n1, 0, 0, 0\n2, 5, 0, 0\n3, 10, 0, 0\n*ELEMENT, TYPE=B33, ELSET=B\n1, 1, 2\n2, 2, 3\n"
      "*MATERIAL, NAME=S\n*ELASTIC\n210e9, 0.3\n*DENSITY\n7850\n*BEAM SECTION, SECTION=GENERAL, ELSET=B, MATERIAL=S\n"
      "0.01, 1e-4, 0, 1e-4, 1e-4\n0, 1, 0\n*BOUNDARY\n1, 1, 5\n3, 2, 5\n2, 3, 5\n";
  const std::string push = "*STATIC\n*CLOAD\n3, 1, -8e7\n", across = "*STATIC\n*CLOAD\n2, 2, 1.\n";
  const std::string base = head + a_step("", push);
  const std::vector<double> f = run(base + a_step(SMALL, "*FREQUENCY\n3\n")).modes(2);
  ASSERT_EQ(f.size(), 3U);
  for (int i = 0; i < 3; ++i) {
    const double square = pairs.eigenvalues()(i);
    const double exact = std::copysign(std::sqrt(std::fabs(square)), square) / (2 * PI);
    EXPECT_WITHIN(f[static_cast<std::size_t>(i)], exact, std::fabs(exact), 1e-6) << i;
  }
  EXPECT_TRUE(says(run_error(base + a_step(SMALL, across)), "is above a buckling load: it is not stable, and nothing"));
  EXPECT_TRUE(says(run_error(head + a_step(", PDELTA", push)), "the loads are above a buckling load"));
}

TEST(AnalysisPreload, ACompressedMembraneDoesNotStand) {
  // Its only stiffness across its plane is the negative one of its forces: none of it is held in silence.
  const sheet s = plate(cells::QUADS, "THIN");
  std::string deck = s.deck(simply_supported(s), "*STATIC\n" + membrane_forces(s, -0.3, -0.3));
  const std::string shell = "*SHELL SECTION, ELSET=SKIN, MATERIAL=M, FORMULATION=THIN", type = "TYPE=S4";
  deck.replace(deck.find(shell), shell.size(), "*MEMBRANE SECTION, ELSET=SKIN, MATERIAL=M");
  deck.replace(deck.find(type), type.size(), "TYPE=M3D4");
  const std::string load = std::to_string(s.node(4, 4) + 1) + ", 3, 1.\n";
  EXPECT_TRUE(says(run_error(deck + a_step(SMALL, "*STATIC\n*CLOAD\n" + load)),
                   "is above a buckling load: it is not stable, and nothing can stand on it"));
}

TEST(AnalysisPreload, ATensionedBeamUnderATransverseForce) {
  // In the middle: F L / (4 T) (1 - tanh(a) / a), a = (L / 2) sqrt(T / EI) (Timoshenko and Gere, 1961).
  const straight_member b = slender();
  for (const double share : {40.0, 1.0}) {
    const double T = share * euler(b), F = 3;
    const ran r = run(
        preloaded(T, a_step(SMALL, "*STATIC\n*CLOAD\n11, 2, 3.\n") + a_step(SMALL, "*STATIC\n*CLOAD\n11, 2, 6.\n")));
    const double a = b.length / 2 * std::sqrt(T / (b.E * b.inertia_xy));
    const double exact = F * b.length / (4 * T) * (1 - std::tanh(a) / a);
    EXPECT_WITHIN(r.u(2, 11, 'y'), exact, exact, 2e-4) << share;
    EXPECT_WITHIN(r.u(3, 11, 'y'), 2 * exact, exact, 4e-4) << share;  // the response is linear
    EXPECT_EQ(r.u(2, 21, 'x'), 0) << "the answer is the increment alone";
    EXPECT_WITHIN(r.u(1, 21, 'x'), T * b.length / (b.E * b.area), 1.0, 1e-9);
    EXPECT_TRUE(says(r.summary(2), "stands on the state at the end of step 1\n"));
  }
}

TEST(AnalysisPreload, PrescribedDisplacementsOfTheBaseStateStayWhereTheyAre) {
  // The right end is drawn out by `draw`, before the first step or in it; the perturbation does not draw again.
  const straight_member b = slender();
  const double T = 2 * euler(b), draw = T * b.length / (b.E * b.area);
  const std::string held = "21, 1, 1, " + number(draw) + "\n";
  const std::string after = a_step(SMALL, "*FREQUENCY\n1\n") + a_step(SMALL, "*STATIC\n*CLOAD\n11, 2, 3.\n") +
                            a_step(SMALL, "*STATIC\n*BOUNDARY, OP=MOD\n21, 1, 1, 0.25\n");
  const std::string decks[] = {b.deck("", PINS + held, "*STATIC\n") + after,
                               b.deck("", PINS, "*STATIC\n*BOUNDARY\n" + held) + after};
  for (const std::string& deck : decks) {
    const ran r = run(deck);
    EXPECT_WITHIN(r.u(1, 21, 'x'), draw, draw, 1e-12);
    EXPECT_WITHIN(r.modes(2)[0], tensioned(b, T, 1), tensioned(b, T, 1), 1e-5);
    EXPECT_EQ(r.u(3, 21, 'x'), 0);
    EXPECT_GT(r.u(3, 11, 'y'), 0);
    EXPECT_WITHIN(r.u(4, 21, 'x'), 0.25, 0.25, 1e-12);  // an own value counts from there
    EXPECT_WITHIN(r.force(4, 1, 2, "force_x"), 0.25 * b.E * b.area / b.length, 1e3, 1e-9);
  }
}

TEST(AnalysisPreload, TemperatureOfTheBaseState) {
  // A beam between two walls, cooler by -t: T = E A alpha t.
  const straight_member b = slender();
  const double t = 5, T = b.E * b.area * 1.2e-5 * t;
  const ran r =
      run(b.deck("", PINS + "21, 1\n", "*STATIC\n*TEMPERATURE\nALL, -5.\n") + a_step(SMALL, "*FREQUENCY\n2\n"));
  for (int n = 1; n <= 2; ++n)
    EXPECT_WITHIN(r.modes(2)[static_cast<std::size_t>(n - 1)], tensioned(b, T, n), tensioned(b, T, n), 2e-5) << n;
}

TEST(AnalysisPreload, BucklingCountsTheLoadsOfItsOwnStepAlone) {
  const straight_member b = slender();
  for (const double dead : {-0.4, -0.9, 2.0}) {
    const ran r = run(preloaded(dead * euler(b), a_step(SMALL, "*BUCKLE\n1\n*CLOAD\n21, 1, -1.\n")));
    ASSERT_EQ(r.modes(2).size(), 1U);
    EXPECT_WITHIN(r.modes(2)[0], (1 + dead) * euler(b), euler(b), 3e-5) << dead;
    EXPECT_TRUE(says(r.summary(2), "stands on the state at the end of step 1\n"));
  }
  // Loads of another pattern: what has the factor f on a dead load q is, with both at once, at its buckling load.
  const std::string dead = "21, 1, " + number(-0.5 * euler(b)) + "\n", live = "11, 1, -1.\n";
  const double factor = run(preloaded(-0.5 * euler(b), a_step(SMALL, "*BUCKLE\n1\n*CLOAD\n" + live))).modes(2)[0];
  const std::string both = "*BUCKLE\n1\n*CLOAD\n" + dead + "11, 1, " + number(-factor) + "\n";
  EXPECT_WITHIN(run(b.deck("", PINS, both)).modes(1)[0], 1.0, 1.0, 1e-8);
  EXPECT_GT(factor, 0.6 * euler(b));  // the live load presses half of the column alone
}

TEST(AnalysisPreload, ATensionedPlate) {
  // omega^2 = (D k^4 + N k^2) / (rho h), k^2 = (m^2 + n^2) pi^2 / a^2.
  for (const cells kind : {cells::TRIANGLES, cells::QUADS, cells::MIXED}) {
    for (const char* const formulation : {"THIN", "THICK"}) {
      const sheet s = plate(kind, formulation);
      for (const double share : {8.0, -1.0}) {
        const double N = share * s.D() * PI * PI;
        const ran r =
            run(s.deck(simply_supported(s), "*STATIC\n" + membrane_forces(s, N, N)) + a_step(SMALL, "*FREQUENCY\n3\n"));
        const double squares[] = {2, 5, 5};
        for (std::size_t i = 0; i < 3; ++i) {
          const double k2 = squares[i] * PI * PI;
          const double exact = std::sqrt((s.D() * k2 * k2 + N * k2) / (s.density * s.thickness)) / (2 * PI);
          EXPECT_WITHIN(r.modes(2)[i], exact, exact, 0.03) << name_of(s) << share << i;
        }
      }
    }
  }
}

TEST(AnalysisPreload, PlateUnderADeadLoadInTheOtherDirection) {
  // The mode of one half wave each way buckles at Nx + Ny = 4 pi^2 D / a^2.
  for (const cells kind : {cells::TRIANGLES, cells::QUADS}) {
    const sheet s = plate(kind, "THIN");
    const double unit = PI * PI * s.D();
    for (const double dead : {1.0, -2.0}) {
      const ran r = run(s.deck(simply_supported(s), "*STATIC\n" + membrane_forces(s, -dead * unit, 0)) +
                        a_step(SMALL, "*BUCKLE\n1\n" + membrane_forces(s, 0, -1)));
      EXPECT_WITHIN(r.modes(2)[0], (4 - dead) * unit, 4 * unit, 0.02) << dead;
    }
  }
}

TEST(AnalysisPreload, AStretchedMembraneIsADrum) {
  // f = sqrt(N (m^2 + n^2) / (rho h)) / 2 a. Bilinear shapes with consistent masses: (k h)^2 / 24 above it.
  sheet s = plate(cells::QUADS, "THIN");
  std::string deck = s.deck(simply_supported(s), "*STATIC\n" + membrane_forces(s, 0.3, 0.3));
  const std::string shell = "*SHELL SECTION, ELSET=SKIN, MATERIAL=M, FORMULATION=THIN", type = "TYPE=S4";
  deck.replace(deck.find(shell), shell.size(), "*MEMBRANE SECTION, ELSET=SKIN, MATERIAL=M");
  deck.replace(deck.find(type), type.size(), "TYPE=M3D4");
  const ran r = run(deck + a_step(SMALL, "*FREQUENCY\n3\n"));
  const double squares[] = {2, 5, 5};
  for (std::size_t i = 0; i < 3; ++i) {
    const double exact = std::sqrt(0.3 * squares[i] / (s.density * s.thickness)) / 2;
    EXPECT_WITHIN(r.modes(2)[i], exact, exact, 0.025) << i;
    EXPECT_GT(r.modes(2)[i], exact) << i;
  }
}

TEST(AnalysisPreload, BricksUnderTension) {
  // A beam between hinges at half its height, 40 by 1 by 1.5, in bending across its height 1.
  solids_test::block b;
  b.count = {40, 2, 1};
  b.nu = 0;
  b.place = [](double u, double v, double w) { return solids_test::point{40 * u, v, 1.5 * w}; };
  straight_member beam;
  beam.E = b.E;
  beam.density = b.density;
  beam.length = 40;
  beam.area = 1.5;
  beam.inertia_xy = 1.5 / 12;
  const std::string left = std::to_string(b.node(0, 1, 0) + 1), other = std::to_string(b.node(0, 1, 1) + 1);
  const std::string supports = "ALL, 3\nX0, 2\nX1, 2\n" + left + ", 1\n" + other + ", 1\n";
  const double T = 170 * euler(beam);
  const ran r =
      run(b.deck(supports, "*STATIC\n*CLOAD\n" + face_load(b, 0, false, 1, -T) + face_load(b, 0, true, 1, T)) +
          a_step(SMALL, "*FREQUENCY\n3\n") + a_step("", "*FREQUENCY\n1\n"));
  // Between the first two of bending lies that of the bar along its axis.
  for (int n = 1; n <= 2; ++n) {
    const double exact = tensioned(beam, T, n);
    EXPECT_WITHIN(r.modes(2)[n == 1 ? 0 : 2], exact, exact, 0.01) << n;
  }
  // Without tension the bricks bend too stiffly: 1 + (l / h)^2 / 2 of a layer half as high as they are long.
  EXPECT_WITHIN(r.modes(3)[0], tensioned(beam, 0, 1), tensioned(beam, 0, 1), 0.25);
  EXPECT_GT(r.modes(2)[0], 10 * r.modes(3)[0]);
}

TEST(AnalysisPreload, AStringOfPretensionedTrusses) {
  // Two bars of 300 with N = 40 * 10, and twice that after cooling: a force across their joint meets 2 N / l. Of the
  // masses 2/3 rho A l move with the joint.
  const double l = 300, A = 10, E = 200000, N = 400, rho = 8e-9, cooler = N / (E * A * 1e-5);
  const std::string head =
      "*NODE, NSET=ALL\n1, 0, 0, 0\n2, 300, 0, 0\n3, 600, 0, 0\n*ELEMENT, TYPE=T3D2, ELSET=B\n1, 1, 2\n2, 2, 3\n"
      "*MATERIAL, NAME=M\n*ELASTIC\n200000, 0.3\n*DENSITY\n8E-9\n*EXPANSION\n1E-5\n*SOLID SECTION, ELSET=B, "
      "MATERIAL=M, PRETENSION=40\n10\n*BOUNDARY\n1, PINNED\n3, PINNED\n2, 3\n";
  const ran r =
      run(head + a_step("", "*STATIC\n") + a_step(SMALL, "*STATIC\n*CLOAD\n2, 2, 5.\n") +
          a_step(SMALL, "*FREQUENCY\n1\n") + a_step("", "*STATIC\n*TEMPERATURE\nALL, " + number(-cooler) + "\n") +
          a_step(SMALL, "*STATIC\n*CLOAD\n2, 2, 5.\n") + a_step(", PDELTA", "*STATIC\n*CLOAD\n2, 2, 5.\n"));
  EXPECT_WITHIN(r.force(1, 1, 2, "force_x"), N, N, 1e-12);
  EXPECT_WITHIN(r.u(2, 2, 'y'), 5 * l / (2 * N), 1.0, 1e-12);
  EXPECT_WITHIN(r.force(2, 1, 2, "force_x"), 0.0, N, 1e-12);  // the increment alone
  const double f = std::sqrt(2 * N / l / (2.0 / 3 * rho * A * l)) / (2 * PI);
  EXPECT_WITHIN(r.modes(3)[0], f, f, 1e-12);
  EXPECT_WITHIN(r.force(4, 1, 2, "force_x"), 2 * N, N, 1e-12);
  EXPECT_WITHIN(r.u(5, 2, 'y'), 5 * l / (4 * N), 1.0, 1e-12);
  EXPECT_WITHIN(r.u(6, 2, 'y'), 5 * l / (2 * N), 1.0, 1e-12);  // P-delta: the bars stay as long as they were
}

TEST(AnalysisPreload, TheLastStepWithoutPerturbationCounts) {
  const straight_member b = slender();
  const double P = euler(b);
  const std::string modes = "*FREQUENCY\n1\n";
  const ran r = run(b.deck("", PINS, modes, SMALL) +                      // 1: nothing before it
                    a_step("", "*STATIC\n" + pulled(8 * P)) +             // 2
                    a_step("", modes) +                                   // 3: an analysis of its own
                    a_step(SMALL, modes) +                                // 4: on 2
                    a_step("", "*STATIC\n" + pulled(3 * P)) +             // 5
                    a_step(SMALL, "*STATIC\n" + pulled(100 * P)) +        // 6: an increment, which nothing stands on
                    a_step(SMALL, "*BUCKLE\n1\n" + pulled(-P)) +          // 7: on 5
                    a_step("", "*BUCKLE\n1\n" + pulled(-P)) +             // 8: an analysis of its own
                    a_step(SMALL, modes) +                                // 9: on 5
                    a_step(", PDELTA", "*STATIC\n" + pulled(-0.5 * P)) +  // 10
                    a_step(SMALL, modes));                                // 11: on 10
  const double shares[] = {0, 0, 0, 8, 0, 0, 0, 0, 3, 0, -0.5};
  for (const int s : {1, 3, 4, 9, 11})
    EXPECT_WITHIN(r.modes(s)[0], tensioned(b, shares[s - 1] * P, 1), tensioned(b, 0, 1), 1e-4) << s;
  EXPECT_WITHIN(r.modes(7)[0], 4.0, 1.0, 1e-4);
  EXPECT_WITHIN(r.modes(8)[0], 1.0, 1.0, 1e-4);
  for (const int s : {1, 3, 8}) EXPECT_TRUE(says(r.summary(s), "stands on the unloaded state\n")) << r.summary(s);
  EXPECT_TRUE(says(r.summary(4), "stands on the state at the end of step 2\n")) << r.summary(4);
  for (const int s : {6, 7, 9}) EXPECT_TRUE(says(r.summary(s), "stands on the state at the end of step 5\n")) << s;
  EXPECT_TRUE(says(r.summary(11), "stands on the state at the end of step 10\n")) << r.summary(11);
}

TEST(AnalysisPreload, TensionedBeamDeck) {
  const straight_member b = slender();
  const double T = 103.631;
  const std::filesystem::path here(__FILE__);
  std::ifstream file(here.parent_path().parent_path().parent_path() / "decks" / "tensioned_beam.inp");
  std::ostringstream text;
  text << file.rdbuf();
  ASSERT_NE(text.str().find("21, 1, 103.631\n"), std::string::npos);
  const ran r = run(text.str());
  for (int n = 1; n <= 2; ++n)
    EXPECT_WITHIN(r.modes(2)[static_cast<std::size_t>(n - 1)], tensioned(b, T, n), tensioned(b, T, n), 1e-4) << n;
  const double a = b.length / 2 * std::sqrt(T / (b.E * b.inertia_xy));
  const double middle = 3 * b.length / (4 * T) * (1 - std::tanh(a) / a);
  EXPECT_WITHIN(r.u(3, 11, 'y'), middle, middle, 1e-4);
  EXPECT_WITHIN(r.modes(4)[0], euler(b) + T, euler(b) + T, 1e-4);
}

TEST(AnalysisPreload, ACooledPlateBetweenWalls) {
  // N = E alpha t h / (1 - nu) in both directions.
  for (const cells kind : {cells::TRIANGLES, cells::QUADS}) {
    const sheet s = plate(kind, "THIN");
    for (const double share : {8.0, -1.0}) {
      const double N = share * s.D() * PI * PI, t = N * (1 - s.nu) / (s.E * s.expansion * s.thickness);
      const ran r = run(s.deck("LEFT, 1, 3\nRIGHT, 1, 3\nLOWER, 1, 3\nUPPER, 1, 3\n",
                               "*STATIC\n*TEMPERATURE\nALL, " + number(-t) + "\n") +
                        a_step(SMALL, "*FREQUENCY\n1\n"));
      const double k2 = 2 * PI * PI;
      const double exact = std::sqrt((s.D() * k2 * k2 + N * k2) / (s.density * s.thickness)) / (2 * PI);
      EXPECT_WITHIN(r.modes(2)[0], exact, exact, 0.03) << share;
    }
  }
}
