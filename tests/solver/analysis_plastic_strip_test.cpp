// Strips in pure tension and in pure bending: first yield, full plastic force and moment, hardening, unloading with
// residual stress. The states are uniform, so that the answers are those of one cross-section.
#include <gtest/gtest.h>

#include <cmath>

#include "frame_decks.h"
#include "plastic_support.h"

using namespace plastic_test;
using frame_test::number;
using solver::elastoplastic_end;
using solver::elastoplastic_solution;

namespace {

constexpr double H = 4, N_PLASTIC = YIELD * H, M_PLASTIC = YIELD * H * H / 4;

// The constants of the whole-section model have seven digits, and an iteration ends at 1e-6 of the loads.
constexpr double SEVEN_DIGITS = 2e-6;

// With Poisson's ratio 1/2, that of plastic flow, the state through the thickness stays uniaxial: hand answers are exact.
strip uniaxial(int points) {
  strip s = a_strip(sheet{});
  s.mesh.nu = 0.5;
  s.of.model = "MODEL=LAYERED, POINTS=" + std::to_string(points);
  return s;
}

std::string layered(int points) { return "MODEL=LAYERED, POINTS=" + std::to_string(points); }

// The displacement of the curve at a load factor, on the straight lines between its points.
double displacement_at(const elastoplastic_solution& s, double factor) {
  for (std::size_t k = 1; k < s.curve.size(); ++k) {
    const auto &a = s.curve[k - 1], &b = s.curve[k];
    if (b.factor >= factor)
      return a.displacement + (factor - a.factor) / (b.factor - a.factor) * (b.displacement - a.displacement);
  }
  return s.curve.back().displacement;
}

}  // namespace

TEST(PlasticStrip, TensionOfTheWholeSection) {
  for (const sheet& form : all_forms()) {
    SCOPED_TRACE(name_of(form));
    const elastoplastic_solution s = load(a_strip(form).tension()).front();
    EXPECT_EQ(s.end, elastoplastic_end::LIMIT);
    EXPECT_WITHIN(s.first_yield, 1.0, 1.0, 1e-7);
    EXPECT_WITHIN(s.largest_factor, 1.0, 1.0, SEVEN_DIGITS);
    for (const solver::element_result& e : s.results.elements) {
      EXPECT_WITHIN((std::vector<double>{e.force[0], e.force[1], e.force[2]}), (std::vector<double>{N_PLASTIC, 0, 0}),
                    N_PLASTIC, SEVEN_DIGITS);
      EXPECT_GT(e.equivalent_plastic, 0);
    }
    // The elastic line, fy L / E.
    EXPECT_WITHIN(s.curve[1].displacement, YIELD / YOUNG * 100, 0.1, 1e-7);
  }
}

TEST(PlasticStrip, BendingOfTheWholeSection) {
  for (const sheet& form : all_forms()) {
    SCOPED_TRACE(name_of(form));
    const elastoplastic_solution s = load(a_strip(form).bending()).front();
    EXPECT_EQ(s.end, elastoplastic_end::LIMIT);
    EXPECT_WITHIN(s.first_yield, 1.0, 1.0, 1e-7);
    EXPECT_WITHIN(s.largest_factor, 1.0, 1.0, SEVEN_DIGITS);
    for (const solver::element_result& e : s.results.elements) {
      const double mx = e.moment[0], my = e.moment[1], mxy = e.moment[2];
      EXPECT_WITHIN(std::fabs(mx + my), M_PLASTIC, M_PLASTIC, SEVEN_DIGITS);
      EXPECT_LT(std::fabs(mx * my - mxy * mxy), 1e-5 * M_PLASTIC * M_PLASTIC);
    }
  }
}

TEST(PlasticStrip, BothSolversAgree) {
  std::vector<double> reached;
  for (const solver::solver_kind kind : solvers())
    reached.push_back(load(read(a_strip(sheet{}).bending()), kind).front().largest_factor);
  for (const double factor : reached) EXPECT_WITHIN(factor, reached.front(), 1.0, SEVEN_DIGITS);
}

TEST(PlasticStrip, AnIncrementThatLosesItsStiffnessIsHalved) {
  // The whole strip starts to flow at once: operation 3 sees it, and after two halvings the increment is taken as it is.
  const elastoplastic_solution s = load(a_strip(sheet{}).tension()).front();
  EXPECT_EQ(s.cuts, 2);
  const double first = s.curve[2].work - s.curve[1].work;
  EXPECT_WITHIN(first, 0.025 * s.curve[1].work, s.curve[1].work, 1e-6);
}

TEST(PlasticStrip, OneElement) {
  sheet form;
  form.n = 1;
  strip s = a_strip(form, 1);
  s.mesh.place = [](double u, double v) { return point{100 * u, 20 * v, 0}; };
  const std::string held = "LEFT, 1\nLEFT, 5\nALL, 3\nALL, 4, 6\n1, 2\n";
  const elastoplastic_solution found =
      load(yielding(s.mesh, {}, held, "*ELASTOPLASTIC\n*CLOAD\n" + line_load(s.mesh, 1, 1, N_PLASTIC * 20))).front();
  EXPECT_EQ(found.end, elastoplastic_end::LIMIT);
  EXPECT_WITHIN(found.largest_factor, 1.0, 1.0, SEVEN_DIGITS);
}

TEST(PlasticStrip, HardeningInTension) {
  // fy + Hp ep at every point of the thickness: the exact line.
  for (const sheet& form : all_forms()) {
    SCOPED_TRACE(name_of(form));
    strip s = a_strip(form);
    s.of = {YOUNG / 50, layered(3)};
    const elastoplastic_solution found = load(s.tension("1.2, 60\n")).front();
    EXPECT_EQ(found.end, elastoplastic_end::FACTOR_REACHED);
    const double strain = 1.2 * YIELD / YOUNG + 0.2 * YIELD / (YOUNG / 50);
    // The hardening modulus travels in single precision.
    EXPECT_WITHIN(found.curve.back().displacement, 100 * strain, 100 * strain, SEVEN_DIGITS);
    EXPECT_WITHIN(found.results.elements[0].equivalent_plastic, 0.2 * YIELD / (YOUNG / 50), 0.01, 1e-5);
  }
}

TEST(PlasticStrip, PlasticMomentOfTheLayers) {
  // The rule of Lobatto gives the plastic moment as the sum of w |xi|; weights and stations from Abramowitz and Stegun.
  const std::vector<std::pair<int, double>> rules = {
      {3, 2.0 / 3},
      {5, 2 * (1.0 / 10 + 49.0 / 90 * std::sqrt(3.0 / 7))},
      {7, 2 * (1.0 / 21 + 0.276826047361566 * 0.830223896278567 + 0.431745381209863 * 0.468848793470714)}};
  for (const auto& [points, share] : rules) {
    SCOPED_TRACE(points);
    const elastoplastic_solution found = load(uniaxial(points).bending()).front();
    EXPECT_EQ(found.end, elastoplastic_end::LIMIT);
    EXPECT_WITHIN(found.first_yield, 2.0 / 3, 1.0, 1e-7);
    EXPECT_WITHIN(found.largest_factor, share, 1.0, 1e-5);
  }
}

TEST(PlasticStrip, UnloadingOfTheWholeSectionIsElastic) {
  for (const sheet& form : all_forms()) {
    SCOPED_TRACE(name_of(form));
    strip s = a_strip(form);
    s.of.plastic_modulus = YOUNG / 50;
    const std::string back = "*STEP\n*ELASTOPLASTIC, CONTINUE\n1., 40\n*CLOAD\n" +
                             line_load(s.mesh, 1, 5, -1.1 * M_PLASTIC * 20) + "*END STEP\n";
    const std::vector<elastoplastic_solution> both = load(s.bending("1.1, 80\n") + back);
    ASSERT_EQ(both.size(), 2U);
    EXPECT_EQ(both[0].end, elastoplastic_end::FACTOR_REACHED);
    EXPECT_EQ(both[1].end, elastoplastic_end::FACTOR_REACHED);
    const double there = both[0].curve.back().displacement, rest = both[1].curve.back().displacement;
    const double elastic = 1.1 * both[0].curve[1].displacement / both[0].curve[1].factor;
    EXPECT_WITHIN(rest, there - elastic, std::fabs(there), 1e-5);
    for (const auto& point : both[1].curve) EXPECT_EQ(point.flowing, 0);
    for (const solver::element_result& e : both[1].results.elements)
      EXPECT_LT(std::fabs(e.moment[0]) + std::fabs(e.moment[1]), 1e-5 * M_PLASTIC);
  }
}

TEST(PlasticStrip, ResidualStressOfTheLayers) {
  // 0.8 of the plastic moment and back: the face, which stood at fy, is unloaded by 0.8 * 1.5 fy.
  const strip s = uniaxial(15);
  const std::string back = "*STEP\n*ELASTOPLASTIC, CONTINUE\n1., 40\n*CLOAD\n" +
                           line_load(s.mesh, 1, 5, -0.8 * M_PLASTIC * 20) + "*END STEP\n";
  const std::vector<elastoplastic_solution> both = load(s.bending("0.8, 80\n") + back);
  ASSERT_EQ(both.size(), 2U);
  EXPECT_EQ(both[1].end, elastoplastic_end::FACTOR_REACHED);
  for (const solver::element_result& e : both[1].results.elements) {
    const auto& top = e.at[solver::TOP].stress;
    EXPECT_WITHIN(std::fabs(top[0] + top[1]), 0.2 * YIELD, YIELD, 1e-4);
    EXPECT_LT(std::fabs(e.moment[0] + e.moment[1]), 1e-5 * M_PLASTIC);
  }
}

TEST(PlasticStrip, ElastoPlasticMomentCurvatureOfTheLayers) {
  // M / Me = 1.5 - 0.5 (ke / k)^2 for a uniaxial state. The fifteen points miss the border of the elastic core by up to a
  // fiftieth of the height; the moment feels it squared.
  const strip s = uniaxial(15);
  const elastoplastic_solution found = load(s.bending("0.96, 200\n")).front();
  const double ke = found.curve[1].displacement;  // the deflection of the end is in proportion to the curvature
  for (const double times : {1.5, 2.0, 3.0}) {
    const double factor = (1.5 - 0.5 / (times * times)) * 2.0 / 3;
    EXPECT_WITHIN(displacement_at(found, factor), times * ke, std::fabs(times * ke), 0.02);
  }
}

TEST(PlasticStrip, HardeningOfTheWholeSectionByItsOwnMeasure) {
  // The equivalent plastic strain of the model is the root of 2/3 times the norm of the strains e, -e/2 at the upper face:
  // e root(5/6), where the line of the deck means e.
  for (const sheet& form : all_forms()) {
    if (form.kind != cells::QUADS) continue;  // sides along the pull
    SCOPED_TRACE(name_of(form));
    strip s = a_strip(form);
    s.of = {YOUNG / 50, ""};
    const elastoplastic_solution found = load(s.tension("1.05, 60\n")).front();
    EXPECT_EQ(found.end, elastoplastic_end::FACTOR_REACHED);
    const double strain = 1.05 * YIELD / YOUNG + 0.05 * YIELD / (YOUNG / 50) * std::sqrt(6.0 / 5);
    EXPECT_WITHIN(found.curve.back().displacement, 100 * strain, 100 * strain, SEVEN_DIGITS);
  }
}
