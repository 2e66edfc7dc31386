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

// With Poisson's ratio 1/2, that of plastic flow, the state through the thickness stays uniaxial: hand answers are
// exact.
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
  // The whole strip starts to flow at once: operation 3 sees it, and after two halvings the increment is taken as it
  // is.
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
  // M / Me = 1.5 - 0.5 (ke / k)^2 for a uniaxial state. The fifteen points miss the border of the elastic core by up to
  // a fiftieth of the height; the moment feels it squared.
  const strip s = uniaxial(15);
  const elastoplastic_solution found = load(s.bending("0.96, 200\n")).front();
  const double ke = found.curve[1].displacement;  // the deflection of the end is in proportion to the curvature
  for (const double times : {1.5, 2.0, 3.0}) {
    const double factor = (1.5 - 0.5 / (times * times)) * 2.0 / 3;
    EXPECT_WITHIN(displacement_at(found, factor), times * ke, std::fabs(times * ke), 0.02);
  }
}

TEST(PlasticStrip, HardeningOfTheWholeSectionByItsOwnMeasure) {
  // The equivalent plastic strain of the model is the root of 2/3 times the norm of the strains e, -e/2 at the upper
  // face: e root(5/6), where the line of the deck means e.
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

TEST(PlasticStrip, FirstYieldWhereverItLies) {
  // Loads of a thousandth and of a thousand times the plastic force: the factor is the inverse.
  for (const double share : {1e-3, 0.3, 30.0, 1000.0}) {
    const strip s = a_strip(sheet{});
    const elastoplastic_solution found =
        load(s.deck(1, share * N_PLASTIC * 20, "*ELASTOPLASTIC\n" + number(0.99 / share) + "\n")).front();
    EXPECT_EQ(found.first_yield, 0) << share;
    const elastoplastic_solution yields = load(s.deck(1, share * N_PLASTIC * 20, "*ELASTOPLASTIC\n")).front();
    EXPECT_WITHIN(yields.first_yield, 1 / share, 1 / share, 1e-7);
    EXPECT_WITHIN(yields.largest_factor, 1 / share, 1 / share, SEVEN_DIGITS);
  }
}

TEST(PlasticStrip, TheLargestFactorMayBeReachedByTheLastIncrement) {
  const elastoplastic_solution found = load(a_strip(sheet{}).tension("0.5, 1\n")).front();
  EXPECT_EQ(found.end, elastoplastic_end::FACTOR_REACHED);
  EXPECT_WITHIN(found.factor, 0.5, 0.5, 1e-12);
}

TEST(PlasticStrip, NoIncrementIsLargerThanTheDeckSays) {
  // By the work of the loads of factor 1, which in a strip under tension is the displacement of its end.
  for (const double largest : {0.03, 0.125}) {
    strip s = a_strip(sheet{});
    s.of = {YOUNG / 50, layered(3)};
    const elastoplastic_solution found = load(s.tension("1.1, 400, " + number(largest) + "\n")).front();
    EXPECT_EQ(found.end, elastoplastic_end::FACTOR_REACHED);
    const double elastic = YIELD / YOUNG * 100;
    double most = 0;
    for (std::size_t k = 2; k < found.curve.size(); ++k)
      most = std::fmax(most, found.curve[k].displacement - found.curve[k - 1].displacement);
    EXPECT_WITHIN(most, largest * elastic, largest * elastic, 1e-6);
  }
}

TEST(PlasticStrip, TheDisplacementShownIsNoRotation) {
  // Of a short strip under a moment at its end the rotation is the larger number: 2 / L times the deflection.
  strip s = a_strip(sheet{});
  s.mesh.place = [](double u, double v) { return point{0.1 * u, 0.02 * (v - 0.5), 0}; };
  s.mesh.thickness = 0.004;
  const double moment = YIELD * 0.004 * 0.004 / 4 * 0.02;
  const elastoplastic_solution found = load(s.deck(5, moment, "*ELASTOPLASTIC\n0.5\n")).front();
  EXPECT_EQ(found.direction, 2);
}

TEST(PlasticStrip, EitherFaceOfTheLayersMayYieldAlone) {
  // N + M and N - M mirror each other: the largest equivalent strain is that of the face that yields, top or bottom.
  double strain[2];
  for (const int side : {0, 1}) {
    const strip s = uniaxial(5);
    const std::string both = line_load(s.mesh, 1, 1, 0.5 * N_PLASTIC * 20) +
                             line_load(s.mesh, 1, 5, (side == 0 ? 0.4 : -0.4) * M_PLASTIC * 20);
    // 0.5 fy and 0.6 fy at the faces while all is elastic.
    std::string text = s.tension("1.\n");
    text = text.substr(0, text.find("*CLOAD\n")) + "*CLOAD\n" + both + "*END STEP\n";
    const elastoplastic_solution found = load(text).front();
    ASSERT_EQ(found.end, elastoplastic_end::FACTOR_REACHED);
    EXPECT_WITHIN(found.first_yield, 1 / 1.1, 1.0, 1e-6);
    strain[side] = found.results.elements[0].equivalent_plastic;
    EXPECT_GT(strain[side], 0.01 * YIELD / YOUNG);
  }
  EXPECT_WITHIN(strain[1], strain[0], strain[0], 1e-5);
}

TEST(PlasticStrip, BelowYieldResultsAreThoseOfAStaticStep) {
  // Forces and stresses, the transverse shear of a thick plate among them.
  for (const sheet& form : all_forms()) {
    if (form.formulation != "THICK" || form.kind != cells::TRIANGLES) continue;
    for (const std::string& model : {std::string("MODEL=SECTION"), layered(7)}) {
      strip s = a_strip(form);
      s.of.model = model;
      const std::string loads = "*CLOAD\n" + line_load(s.mesh, 1, 3, 30);
      const auto path = load(yielding(s.mesh, s.of, "LEFT, ENCASTRE\n", "*ELASTOPLASTIC\n1.\n" + loads));
      const solved elastic = solve(read(s.mesh.deck("LEFT, ENCASTRE\n", "*STATIC\n" + loads)));
      ASSERT_EQ(path.front().first_yield, 0);
      for (std::size_t e = 0; e < elastic.results.elements.size(); ++e) {
        const solver::element_result &a = path.front().results.elements[e], &b = elastic.results.elements[e];
        const double Q = std::hypot(b.shear_force[0], b.shear_force[1]);
        EXPECT_WITHIN(a.shear_force[0], b.shear_force[0], Q, 1e-5) << model;
        EXPECT_WITHIN(a.shear_force[1], b.shear_force[1], Q, 1e-5) << model;
        for (const std::size_t height : {solver::TOP, solver::MIDDLE, solver::BOTTOM}) {
          // Layers have the mean shear stress, with which they yield; elsewhere it is that of the shear area, 5/6 h.
          if (height == solver::MIDDLE && model != "MODEL=SECTION") continue;
          EXPECT_WITHIN(a.at[height].equivalent, b.at[height].equivalent, b.at[height].equivalent, 1e-5)
              << name_of(form) << model << height;
        }
      }
    }
  }
}
