// Sections at the corner of their yield condition: the principle of maximum dissipation (Hill, 1948), the distance of
// two returns, the tangent by differences, and the same laws of whole elements, whose other points the library returns.
#include "elastoplastic/section_corner.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "elastoplastic/plastic_plates.h"
#include "plastic_support.h"

using namespace plastic_test;
using namespace solver;

namespace {

constexpr double H = 4;  // thickness
const section_strength STEEL{H, YIELD, 0};
constexpr double N0 = YIELD * H, M0 = YIELD * H * H / 4;

section_matrix stiffness(bool thick = true) {
  section_matrix D{};
  const double m = YOUNG * H / (1 - POISSON * POISSON);
  for (const int at : {1, 4}) {
    const double d = at == 1 ? m : m * H * H / 12;
    D(at, at) = D(at + 1, at + 1) = d;
    D(at, at + 1) = D(at + 1, at) = POISSON * d;
    D(at + 2, at + 2) = d * (1 - POISSON) / 2;
  }
  if (thick) D(7, 7) = D(8, 8) = 5.0 / 6 * YOUNG / (2 * (1 + POISSON)) * H;
  return D;
}

// The condition, written from its definition.
double condition(const section_vector& s) {
  const double n1 = s(1) / N0, n2 = s(2) / N0, n12 = s(3) / N0, m1 = s(4) / M0, m2 = s(5) / M0, m12 = s(6) / M0;
  const double Qt = n1 * n1 + n2 * n2 - n1 * n2 + 3 * n12 * n12, Qm = m1 * m1 + m2 * m2 - m1 * m2 + 3 * m12 * m12;
  const double Qtm = n1 * m1 + n2 * m2 - n1 * m2 / 2 - n2 * m1 / 2 + 3 * n12 * m12;
  return Qt + Qm + std::fabs(Qtm) / std::sqrt(3.0) + 3 * (s(7) * s(7) + s(8) * s(8)) / (N0 * N0);
}

double mixed(const section_vector& s) {
  return (s(1) * s(4) + s(2) * s(5) - s(1) * s(5) / 2 - s(2) * s(4) / 2 + 3 * s(3) * s(6)) / (N0 * M0);
}

section_vector sum(section_vector a, double factor, const section_vector& b) {
  for (int i = 1; i <= 8; ++i) a(i) += factor * b(i);
  return a;
}

double dot(const section_vector& a, const section_vector& b) {
  double result = 0;
  for (int i = 1; i <= 8; ++i) result += a(i) * b(i);
  return result;
}

class random_forces {
 public:
  explicit random_forces(unsigned seed) : random_(seed) {}
  // Membrane forces, moments and shears of the given sizes, by the plastic ones.
  section_vector of(double n, double m, double q) {
    section_vector s;
    for (int i = 1; i <= 8; ++i) s(i) = one_(random_) * (i <= 3 ? n * N0 : i <= 6 ? m * M0 : q * N0);
    return s;
  }
  // On the yield surface, in any direction.
  section_vector admissible() {
    const section_vector s = of(1, 1, 0.5);
    return sum(section_vector{}, 1 / std::sqrt(condition(s)), s);
  }

 private:
  std::mt19937 random_;
  std::normal_distribution<double> one_{0, 1};
};

section_vector returned(const section_matrix& D, const section_vector& trial, const corner_state& corner) {
  return sum(trial, -1, times(D, corner.flow));
}

}  // namespace

TEST(SectionCorner, PureBendingFlowsInBendingAlone) {
  section_vector trial{};
  trial(4) = 1.7 * M0;
  corner_state corner;
  const section_matrix D = stiffness();
  ASSERT_EQ(return_side(STEEL, D, trial, 0, corner), yield_side::CORNER);
  for (const int i : {1, 2, 3, 6, 7, 8}) EXPECT_EQ(corner.flow(i), 0) << i;
  const section_vector s = returned(D, trial, corner);
  EXPECT_WITHIN(condition(s), 1.0, 1.0, 1e-12);
  // The flow is along the gradient of m1^2 + m2^2 - m1 m2.
  EXPECT_WITHIN(corner.flow(5) * (2 * s(4) - s(5)), corner.flow(4) * (2 * s(5) - s(4)), M0 * corner.flow(4), 1e-12);
  EXPECT_GT(corner.flow(4), 0);
  // The strains at the upper face are h / 2 times the curvatures.
  EXPECT_WITHIN(corner.equivalent, std::sqrt(2.0 / 3) * H / 2 * std::hypot(corner.flow(4), corner.flow(5)),
                corner.equivalent, 1e-12);
}

TEST(SectionCorner, BelowYieldItIsElastic) {
  section_vector trial{};
  trial(4) = 0.999999 * M0;
  corner_state corner;
  EXPECT_EQ(return_side(STEEL, stiffness(), trial, 0, corner), yield_side::ELASTIC);
  trial(4) = 1.000001 * M0;
  EXPECT_EQ(return_side(STEEL, stiffness(), trial, 0, corner), yield_side::CORNER);
}

TEST(SectionCorner, ForcesAndMomentsOfOneSignStandOnTheirSide) {
  section_vector trial{};
  trial(1) = 0.7 * N0;
  trial(4) = 1.5 * M0;
  corner_state corner;
  EXPECT_EQ(return_side(STEEL, stiffness(), trial, 0, corner), yield_side::POSITIVE);
  trial(1) = -trial(1);
  EXPECT_EQ(return_side(STEEL, stiffness(), trial, 0, corner), yield_side::NEGATIVE);
}

TEST(SectionCorner, NoOtherStateDissipatesMore) {
  // flow . (s - other) >= 0 for every admissible state: s is the point of the yield surface next to the trial forces.
  random_forces draw(7);
  int corners = 0;
  for (int k = 0; k < 2000; ++k) {
    const section_matrix D = stiffness(k % 2 == 0);
    section_vector trial = draw.of(0.2, 1.5, k % 2 == 0 ? 0.3 : 0);
    if (k % 3 == 0) trial = draw.of(1.5, 0.2, 0);
    corner_state corner;
    if (return_side(STEEL, D, trial, 0, corner) != yield_side::CORNER) continue;
    ++corners;
    const section_vector s = returned(D, trial, corner);
    ASSERT_LT(std::fabs(condition(s) - 1), 1e-9);
    ASSERT_LT(std::fabs(mixed(s)), 1e-9);
    EXPECT_LT(std::fabs(corner.mixed), 1e-9);
    for (int other = 0; other < 50; ++other) {
      const section_vector away = sum(s, -1, draw.admissible());
      EXPECT_GE(dot(corner.flow, away), -1e-9 * std::fabs(dot(corner.flow, s)));
    }
  }
  EXPECT_GT(corners, 300);
}

TEST(SectionCorner, TheTangentIsTheDerivative) {
  random_forces draw(11);
  int corners = 0;
  for (int k = 0; k < 400; ++k) {
    const section_matrix D = stiffness();
    const section_vector trial = draw.of(0.1, 1.5, 0.2), direction = draw.of(1e-5, 1e-5, 1e-5);
    corner_state corner, ahead, behind;
    if (return_side(STEEL, D, trial, 0, corner) != yield_side::CORNER) continue;
    const section_vector more = sum(trial, 1, direction), less = sum(trial, -1, direction);
    if (return_side(STEEL, D, more, 0, ahead) != yield_side::CORNER) continue;
    if (return_side(STEEL, D, less, 0, behind) != yield_side::CORNER) continue;
    ++corners;
    // Strains that make the trial forces differ by `direction`: D is block diagonal.
    section_vector strain;
    for (const int at : {1, 4}) {
      const double d = D(at, at), c = D(at, at + 1), det = d * d - c * c;
      strain(at) = (d * direction(at) - c * direction(at + 1)) / det;
      strain(at + 1) = (d * direction(at + 1) - c * direction(at)) / det;
      strain(at + 2) = direction(at + 2) / D(at + 2, at + 2);
    }
    for (const int i : {7, 8}) strain(i) = direction(i) / D(i, i);
    const section_vector slope = sum(returned(D, more, ahead), -1, returned(D, less, behind));
    const section_vector expected = times(corner.tangent, strain);
    for (int i = 1; i <= 8; ++i)
      EXPECT_LT(std::fabs(slope(i) / 2 - expected(i)), 1e-9 * (i <= 3 || i > 6 ? N0 : M0)) << i;
  }
  EXPECT_GT(corners, 100);
}

TEST(SectionCorner, HardeningGrowsWithTheEquivalentStrain) {
  const section_strength harder{H, YIELD, 1000};
  const double before = 0.01;
  section_vector trial{};
  trial(4) = 2 * M0;
  trial(6) = 0.4 * M0;
  corner_state corner;
  const section_matrix D = stiffness();
  ASSERT_EQ(return_side(harder, D, trial, before, corner), yield_side::CORNER);
  const section_vector& p = corner.flow;
  const double growth = std::sqrt(2.0 / 3) * H / 2 * std::sqrt(p(4) * p(4) + p(5) * p(5) + p(6) * p(6));
  EXPECT_WITHIN(corner.equivalent, before + growth, growth, 1e-12);
  const double k = 1 + 1000 * corner.equivalent / YIELD;
  EXPECT_WITHIN(condition(returned(D, trial, corner)), k * k, 1.0, 1e-7);
}

TEST(SectionCorner, TheTangentKnowsTheHardening) {
  // Just beyond yield in twisting the flow has one direction: D33 H' / (D33 + H') of the curvature. The moment at yield
  // is k M0 / sqrt(3), k = 1 + Hp e / fy, and e grows by sqrt(2/3) h / 2 times the plastic curvature.
  const section_strength harder{H, YIELD, YOUNG / 5};
  const section_matrix D = stiffness();
  const double d = D(6, 6), slope = M0 / std::sqrt(3.0) * (YOUNG / 5) / YIELD * std::sqrt(2.0 / 3) * H / 2;
  section_vector trial{};
  trial(6) = 1.00001 * M0 / std::sqrt(3.0);
  corner_state corner;
  ASSERT_EQ(return_side(harder, D, trial, 0, corner), yield_side::CORNER);
  EXPECT_WITHIN(corner.tangent(6, 6), d * slope / (d + slope), d, 1e-4);
  EXPECT_WITHIN(corner.tangent(4, 4), D(4, 4), d, 1e-4);
}

// Of two trial states the returned ones are no farther apart, in the norm of D^-1: the return is a projection on a
// convex set. Whole elements: points off the corner go through the library.
TEST(SectionCorner, ElementsReturnToTheNearestState) {
  for (const sheet& one : all_forms()) {
    sheet form = one;
    form.n = 1;
    form.E = YOUNG;
    form.thickness = H;
    form.place = [](double u, double v) { return point{30 * u + 4 * v, 25 * v - 3 * u * v, 0}; };
    SCOPED_TRACE(name_of(form));
    const model m = read(yielding(form, {0, "MODEL=SECTION"}, "LEFT, 1, 6\n", "*ELASTOPLASTIC\n*CLOAD\n4, 3, 1.\n"));
    library_model library(m);
    plastic_plates plates(m, library);
    std::mt19937 random(3);
    std::normal_distribution<double> one_value(0, 1);
    random_forces draw(5);
    int flowing = 0;
    for (int k = 0; k < 300; ++k) {
      element_vector u{};
      for (int i = 1; i <= 6 * static_cast<int>(m.elements[0].nodes.size()); ++i)
        u(i) = one_value(random) * ((i - 1) % 6 < 2 ? 0.02 : (i - 1) % 6 == 2 ? 0.3 : 0.03);
      ASSERT_TRUE(plates.update(0, u));
      flowing += plates.flowing_points(0);
      for (int q = 1; q <= SURFACE_POINTS; ++q) {
        const point_values v = plates.values(0, q, u);
        EXPECT_LT(condition(v.force), 1 + 1e-4);
        section_vector flow{};  // from the plastic strains at the faces and the shears
        for (int i = 1; i <= 3; ++i) {
          flow(i) = v.plastic[1](i);
          flow(i + 3) = (v.plastic[2](i) - v.plastic[0](i)) / H;
        }
        for (int i = 0; i < 2; ++i) flow(7 + i) = v.plastic_shear[static_cast<std::size_t>(i)];
        for (int other = 0; other < 20; ++other) {
          const section_vector away = sum(v.force, -1, draw.admissible());
          EXPECT_GE(dot(flow, away), -1e-4 * std::fabs(dot(flow, v.force)));
        }
      }
    }
    EXPECT_GT(flowing, 600);
  }
}
