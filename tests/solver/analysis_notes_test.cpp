// The notes of an analysis, and the limits by which it decides: tolerances, notes, scales of modes.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "analyses/modal_analysis.h"
#include "elastoplastic/plastic_plates.h"
#include "frame_decks.h"
#include "plastic_support.h"
#include "pushover_support.h"
#include "run_support.h"

using frame_test::number;
using frame_test::straight_member;
using run_test::a_step;
using run_test::ran;
using run_test::run;

namespace {

bool says(const std::string& text, const std::string& words) { return text.find(words) != std::string::npos; }

std::vector<std::string> lines_of(const std::string& text) {
  std::vector<std::string> lines;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find('\n', at), text.size());
    lines.push_back(text.substr(at, end - at));
    at = end + 1;
  }
  return lines;
}

// A beam between pins in the x-y plane; its right end is free along x.
straight_member slender() {
  straight_member b;
  b.length = 10000;
  b.area = 400;
  b.inertia_xy = b.inertia_xz = 1000;
  b.elements = 20;
  return b;
}
const char* const PINS = "ALL, 3, 5\n1, 1, 2\n21, 2\n";

// A solver that reports more negative pivots than there are.
class miscounting : public solver::linear_solver {
 public:
  explicit miscounting(std::size_t more) : inner_(solver::make_linear_solver(solver::default_solver())), more_(more) {}
  std::string name() const override { return inner_->name(); }
  bool factorise(const solver::symmetric_matrix& K) override { return inner_->factorise(K); }
  std::size_t negative_pivots() const override { return inner_->negative_pivots() + more_; }
  double megabytes_of_factors(const solver::symmetric_matrix& K) override { return inner_->megabytes_of_factors(K); }
  void solve(std::vector<double>& x) override { inner_->solve(x); }

 private:
  std::unique_ptr<solver::linear_solver> inner_;
  std::size_t more_;
};

solver::modal_solution frequencies(const solver::model& m, solver::linear_solver& equations) {
  solver::library_model library(m);
  solver::stopwatch watch;
  return solver::solve_frequencies(m, m.steps.front(), library, equations, watch);
}

solver::modal_solution frequencies(const solver::model& m) {
  miscounting exact(0);
  return frequencies(m, exact);
}

}  // namespace

// A bar that stands and one that leans on its head: the force of each hangs on the displacements, and so does the
// other's share. With N of the solution before, K u = f has the geometric stiffness N / L across each bar; the fixed
// point is found here with the two by two matrix itself. A step takes off some nine tenths of the error, so that a
// looser stop shows.
TEST(AnalysisNotes, PDeltaGoesOnUntilTheForcesSettle) {
  const double EA = 1e6, P = 3e4, H = 2e3, upright[2] = {0, 1}, leaning[2] = {0.6, 0.8}, length[2] = {1, 5};
  double u[2] = {0, 0};
  for (int pass = 0; pass < 500; ++pass) {
    double K[2][2] = {};
    for (int bar = 0; bar < 2; ++bar) {
      const double* const n = bar == 0 ? upright : leaning;
      const double N = pass == 0 ? 0 : EA / length[bar] * (n[0] * u[0] + n[1] * u[1]);
      for (int i = 0; i < 2; ++i)
        for (int j = 0; j < 2; ++j)
          K[i][j] += EA / length[bar] * n[i] * n[j] + N / length[bar] * ((i == j ? 1 : 0) - n[i] * n[j]);
    }
    const double det = K[0][0] * K[1][1] - K[0][1] * K[1][0];
    u[0] = (K[1][1] * H + K[0][1] * P) / det;
    u[1] = (-K[0][0] * P - K[1][0] * H) / det;
  }
  const std::string bars =
      "*NODE\n1, 0, 0, 0\n2, 0, 1, 0\n3, -3, -3, 0\n*ELEMENT, TYPE=T3D2, ELSET=E\n1, 1, 2\n2, 3, 2\n*MATERIAL, NAME=M\n"
      "*ELASTIC\n1e6, 0.3\n*SOLID SECTION, ELSET=E, MATERIAL=M\n1\n*BOUNDARY\n1, 1, 3\n3, 1, 3\n2, 3\n";
  const ran r = run(bars + a_step(", PDELTA", "*STATIC\n*CLOAD\n2, 1, " + number(H) + "\n2, 2, " + number(-P) + "\n"));
  EXPECT_WITHIN(r.u(1, 2, 'x'), u[0], std::fabs(u[0]), 1e-9);
  EXPECT_WITHIN(r.u(1, 2, 'y'), u[1], std::fabs(u[1]), 1e-9);
}

// Where it is said at which load hinges form, the table of them follows, and not the load at which the path ends.
TEST(AnalysisNotes, HingesOfAStaticStepAreListed) {
  // First hinge in the clamped end at 16/3 Mp/L, under 5.8 Mp/L.
  straight_member b;
  b.elements = 2;
  const ran r = run(b.deck(pushover_test::hinges("LINEAR", 1e12, 1e12, 1e8), "1, ENCASTRE\n3, 2, 3\nALL, 3, 5\n",
                           "*STATIC\n*CLOAD\n2, 2, " + number(-5.8e8 / b.length) + "\n"));
  const std::vector<std::string> lines = lines_of(r.text);
  const auto first = std::find(lines.begin(), lines.end(), "  hinges form from 0.91954 of the loads on");
  ASSERT_GT(lines.end() - first, 3) << r.text;
  EXPECT_EQ(first[1].find("  hinges: 1 formed, 0 closed; curve of node 2 uy: "), 0U) << first[1];
  EXPECT_EQ(first[2], "   event    load factor   element  end  hinge                P             My             Mz");
  EXPECT_EQ(first[3].find("       1    0.919540230         1    1  formed"), 0U) << first[3];
  EXPECT_FALSE(says(r.text, "the frame stands")) << r.text;
}

// Two springs one behind the other, k and 1: on a unit diagonal the smallest stiffness is k / 2, to first order.
TEST(AnalysisNotes, ANearlySingularStiffness) {
  const auto text_with = [](const std::string& k) {
    return run("*NODE\n1, 0, 0, 0\n2, 1, 0, 0\n*ELEMENT, TYPE=SPRING1, ELSET=G\n1, 1\n*ELEMENT, TYPE=SPRING2, "
               "ELSET=S\n2, "
               "1, 2\n*SPRING, ELSET=G\n1\n" +
               k + "\n*SPRING, ELSET=S\n1, 1\n1.\n*BOUNDARY\n1, 2, 3\n2, 2, 3\n" +
               a_step("", "*STATIC\n*CLOAD\n2, 1, 1e-12\n"))
        .text;
  };
  const std::string note = "*STEP: the stiffness is nearly singular: few digits of the result are sure";
  EXPECT_TRUE(says(text_with("1e-11"), note));
  EXPECT_TRUE(says(text_with("1e-12"), note));
  EXPECT_FALSE(says(text_with("4e-11"), note));
}

// Sylvester's count says that modes are missing.
TEST(AnalysisNotes, ModesThatWereNotFound) {
  const solver::model m = frame_test::read(slender().deck("", PINS, "*FREQUENCY\n3\n"));
  for (const std::size_t more : {0U, 1U, 2U}) {
    miscounting equations(more);
    const solver::modal_solution found = frequencies(m, equations);
    const std::vector<std::string> expected[] = {
        {}, {"1 mode below the last one was not found"}, {"2 modes below the last one were not found"}};
    EXPECT_EQ(found.notes, expected[more]);
  }
}

// Two bars between three nodes that move along x alone have two free masses.
TEST(AnalysisNotes, AllModesThatThereAre) {
  const ran r = run(
      "*NODE\n1, 0, 0, 0\n2, 1, 0, 0\n3, 2, 0, 0\n*ELEMENT, TYPE=T3D2, ELSET=E\n1, 1, 2\n2, 2, 3\n*MATERIAL, NAME=M\n"
      "*ELASTIC\n1e6, 0.3\n*DENSITY\n1.\n*SOLID SECTION, ELSET=E, MATERIAL=M\n1\n*BOUNDARY\n1, 1, 3\n2, 2, 3\n3, 2, "
      "3\n" +
      a_step("", "*FREQUENCY\n500\n"));
  EXPECT_EQ(r.modes(1).size(), 2U);
  EXPECT_TRUE(says(r.text, "*STEP: 500 frequencies are asked for: the model has 2, all of them are given\n")) << r.text;
}

// Just below its second buckling load the beam has grown in its first mode, and the second one is slow: a millionth of
// its square is left. Small beside the first mode's, it is a frequency all the same.
TEST(AnalysisNotes, ASlowModeOfAnUnstableStateIsNotZero) {
  const straight_member b = slender();
  const ran critical = run(b.deck("", PINS, "*BUCKLE\n2\n*CLOAD\n21, 1, -1.\n"));
  const double second = critical.modes(1)[1], alone = run(b.deck("", PINS, "*FREQUENCY\n2\n")).modes(1)[1];
  const ran r = run(b.deck("", PINS, "*STATIC\n*CLOAD\n21, 1, " + number(-second * (1 - 1e-6)) + "\n") +
                    a_step(", PERTURBATION", "*FREQUENCY\n3\n"));
  const std::vector<double> f = r.modes(2);
  ASSERT_EQ(f.size(), 3U);
  EXPECT_LT(f[0], 0);
  EXPECT_WITHIN(f[1], 1e-3 * alone, 1e-3 * alone, 0.02);
}

// cosh x - cos x - s (sinh x - sin x) with 1 at the tip: there the slope is 1.3765 / L, more than the translation when
// L is short.
TEST(AnalysisNotes, ModesHaveTheLargestTranslationOne) {
  straight_member b = slender();
  b.length = 0.5;
  b.area = 1e-6;
  b.inertia_xy = b.inertia_xz = 1e-12;
  b.torsion = 1e-12;
  const solver::modal_solution found =
      frequencies(frame_test::read(b.deck("", "ALL, 3, 5\n1, ENCASTRE\n", "*FREQUENCY\n1\n")));
  ASSERT_EQ(found.modes.size(), 1U);
  const double x = 1.8751040687119611;
  const double s = (std::cosh(x) + std::cos(x)) / (std::sinh(x) + std::sin(x));
  const double tip = std::cosh(x) - std::cos(x) - s * (std::sinh(x) - std::sin(x));
  const double slope = (std::sinh(x) + std::sin(x) - s * (std::cosh(x) - std::cos(x))) * x / b.length / tip;
  const std::vector<double>& u = found.modes[0].displacement;
  EXPECT_GT(slope, 2);
  EXPECT_NEAR(u[solver::freedom(20, 1)], 1, 1e-12);
  EXPECT_NEAR(u[solver::freedom(20, 5)] / slope, 1, 1e-4);
}

// The whole-section model is elastic up to the plastic moment, where a face has 1.5 times the yield stress.
TEST(AnalysisNotes, FacesBeyondTheYieldStressOfAnElasticSection) {
  const double moment = plastic_test::YIELD * 4 * 4 / 4.0 * 20;
  const plastic_test::strip s = plastic_test::a_strip(shell_test::sheet{});
  const std::string words = "a face is stressed beyond the yield stress, up to ";
  const ran beyond = run(s.deck(5, 0.8 * moment, "*STATIC\n"));
  EXPECT_TRUE(says(beyond.text, "*STEP: " + words + "1.2 times, in ")) << beyond.text;
  EXPECT_EQ(beyond.text.find(words), beyond.text.rfind(words)) << beyond.text;
  EXPECT_FALSE(says(run(s.deck(5, 0.6 * moment, "*STATIC\n")).text, words));
  EXPECT_FALSE(says(run(s.deck(5, 0.8 * moment, "*STATIC, ELASTIC\n")).text, words));
  plastic_test::strip layered = s;
  layered.of.model = "MODEL=LAYERED, POINTS=7";
  EXPECT_FALSE(says(run(layered.deck(5, 0.8 * moment, "*STATIC\n")).text, words));
}

// Transverse shear beyond yield: the stress at a point is the stiffness of the section, 5/6 G, times what the plastic
// strain leaves of the strain; elastic displacements give the stress per strain.
TEST(AnalysisNotes, PlasticShearOfALayeredPoint) {
  shell_test::sheet form;
  form.kind = shell_test::cells::QUADS;
  form.formulation = "THICK";
  form.n = 1;
  form.E = plastic_test::YOUNG;
  form.thickness = 300;  // so thick that it is sheared rather than bent
  form.place = [](double u, double v) { return shell_test::point{30 * u, 30 * v, 0}; };
  const solver::model m = shell_test::read(plastic_test::yielding(form, {0, "MODEL=LAYERED, POINTS=5"}, "LEFT, 1, 6\n",
                                                                  "*ELASTOPLASTIC\n*CLOAD\n4, 3, 1.\n"));
  solver::library_model library(m);
  solver::plastic_plates plates(m, library);
  // Rotations about x and y without displacements.
  const auto turned = [](double size) {
    solver::element_vector u{};
    for (int n = 0; n < 4; ++n) {
      u(6 * n + 4) = 0.4 * size;
      u(6 * n + 5) = size;
    }
    return u;
  };
  const double small = 1e-6, large = 0.01, modulus = 5.0 / 6 * plastic_test::YOUNG / 2.6;
  ASSERT_TRUE(plates.update(0, turned(small)));
  const solver::point_values elastic = plates.values(0, 1, turned(small));
  ASSERT_EQ(plates.flowing_points(0), 0);
  ASSERT_TRUE(plates.update(0, turned(large)));
  ASSERT_EQ(plates.flowing_points(0), 4);
  const solver::point_values v = plates.values(0, 1, turned(large));
  for (std::size_t i = 0; i < 2; ++i) {
    const double strain = elastic.shear_stress[i] / modulus * large / small;
    EXPECT_NEAR(std::fabs(strain), i == 0 ? 0.01 : 0.004, 1e-4) << i;
    EXPECT_GT(std::fabs(v.plastic_shear[i]), 0.5 * std::fabs(strain)) << i;
    EXPECT_NEAR(v.plastic_shear[i], strain - v.shear_stress[i] / modulus, 1e-9) << i;
  }
  // Below yield the stored stress is the same at every point: Q = h times that of the middle.
  for (int i = 0; i < 2; ++i)
    EXPECT_NEAR(elastic.force(7 + i) / (form.thickness * elastic.shear_stress[static_cast<std::size_t>(i)]), 1, 1e-9)
        << i;
}
