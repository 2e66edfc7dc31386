// Sections at the edge of their yield surface: the principle of maximum dissipation (Hill, 1948), the tangent by
// differences, hardening by hand.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "comparison.h"
#include "finites/elements.h"
#include "finites/views.hpp"

namespace {

using section_vector = VECTOR<8>;
using section_matrix = MATRIX<8, 8>;

constexpr double YOUNG = 2e5, POISSON = 0.3, YIELD = 240;
constexpr double H = 4;  // thickness
const finites_section STEEL{H, YIELD, 0};
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

section_vector times(const section_matrix& A, const section_vector& v) {
  section_vector out{};
  for (int j = 1; j <= 8; ++j) {
    for (int i = 1; i <= 8; ++i) out(i) += A(i, j) * v(j);
  }
  return out;
}

section_vector flow_of(const finites_section_corner& edge) {
  section_vector v;
  for (int i = 1; i <= 8; ++i) v(i) = edge.flow[i - 1];
  return v;
}

section_matrix tangent_of(const finites_section_corner& edge) {
  section_matrix C;
  for (int i = 0; i < 64; ++i) C.V[i] = edge.tangent[i];
  return C;
}

// The side on which a return ends; -1: the call fails.
std::int32_t return_side(const finites_section& of, const section_matrix& D, const section_vector& trial,
                         double equivalent, finites_section_corner& edge) {
  std::int32_t side = -1;
  EXPECT_EQ(finites_section_return(&of, D.data(), trial.data(), equivalent, &side, &edge), FINITES_OK);
  return side;
}

section_vector returned(const section_matrix& D, const section_vector& trial, const finites_section_corner& corner) {
  return sum(trial, -1, times(D, flow_of(corner)));
}

}  // namespace

TEST(SectionReturn, PureBendingFlowsInBendingAlone) {
  section_vector trial{};
  trial(4) = 1.7 * M0;
  finites_section_corner corner{};
  const section_matrix D = stiffness();
  ASSERT_EQ(return_side(STEEL, D, trial, 0, corner), FINITES_SIDE_CORNER);
  for (const int i : {1, 2, 3, 6, 7, 8}) EXPECT_EQ(flow_of(corner)(i), 0) << i;
  const section_vector s = returned(D, trial, corner);
  EXPECT_WITHIN(condition(s), 1.0, 1.0, 1e-12);
  // The flow is along the gradient of m1^2 + m2^2 - m1 m2.
  EXPECT_WITHIN(flow_of(corner)(5) * (2 * s(4) - s(5)), flow_of(corner)(4) * (2 * s(5) - s(4)), M0 * flow_of(corner)(4),
                1e-12);
  EXPECT_GT(flow_of(corner)(4), 0);
  // The strains at the upper face are h / 2 times the curvatures.
  EXPECT_WITHIN(corner.equivalent, std::sqrt(2.0 / 3) * H / 2 * std::hypot(flow_of(corner)(4), flow_of(corner)(5)),
                corner.equivalent, 1e-12);
}

TEST(SectionReturn, BelowYieldItIsElastic) {
  section_vector trial{};
  trial(4) = 0.999999 * M0;
  finites_section_corner corner{};
  EXPECT_EQ(return_side(STEEL, stiffness(), trial, 0, corner), FINITES_SIDE_ELASTIC);
  trial(4) = 1.000001 * M0;
  EXPECT_EQ(return_side(STEEL, stiffness(), trial, 0, corner), FINITES_SIDE_CORNER);
}

TEST(SectionReturn, ForcesAndMomentsOfOneSignStandOnTheirSide) {
  section_vector trial{};
  trial(1) = 0.7 * N0;
  trial(4) = 1.5 * M0;
  finites_section_corner corner{};
  EXPECT_EQ(return_side(STEEL, stiffness(), trial, 0, corner), FINITES_SIDE_POSITIVE);
  trial(1) = -trial(1);
  EXPECT_EQ(return_side(STEEL, stiffness(), trial, 0, corner), FINITES_SIDE_NEGATIVE);
}

TEST(SectionReturn, NoOtherStateDissipatesMore) {
  // flow . (s - other) >= 0 for every admissible state: s is the point of the yield surface next to the trial forces.
  random_forces draw(7);
  int corners = 0;
  for (int k = 0; k < 2000; ++k) {
    const section_matrix D = stiffness(k % 2 == 0);
    section_vector trial = draw.of(0.2, 1.5, k % 2 == 0 ? 0.3 : 0);
    if (k % 3 == 0) trial = draw.of(1.5, 0.2, 0);
    finites_section_corner corner{};
    if (return_side(STEEL, D, trial, 0, corner) != FINITES_SIDE_CORNER) continue;
    ++corners;
    const section_vector s = returned(D, trial, corner);
    ASSERT_LT(std::fabs(condition(s) - 1), 1e-9);
    ASSERT_LT(std::fabs(mixed(s)), 1e-9);
    EXPECT_LT(std::fabs(corner.mixed), 1e-9);
    for (int other = 0; other < 50; ++other) {
      const section_vector away = sum(s, -1, draw.admissible());
      EXPECT_GE(dot(flow_of(corner), away), -1e-9 * std::fabs(dot(flow_of(corner), s)));
    }
  }
  EXPECT_GT(corners, 300);
}

TEST(SectionReturn, TheTangentIsTheDerivative) {
  random_forces draw(11);
  int corners = 0;
  for (int k = 0; k < 400; ++k) {
    const section_matrix D = stiffness();
    const section_vector trial = draw.of(0.1, 1.5, 0.2), direction = draw.of(1e-5, 1e-5, 1e-5);
    finites_section_corner corner{}, ahead{}, behind{};
    if (return_side(STEEL, D, trial, 0, corner) != FINITES_SIDE_CORNER) continue;
    const section_vector more = sum(trial, 1, direction), less = sum(trial, -1, direction);
    if (return_side(STEEL, D, more, 0, ahead) != FINITES_SIDE_CORNER) continue;
    if (return_side(STEEL, D, less, 0, behind) != FINITES_SIDE_CORNER) continue;
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
    const section_vector expected = times(tangent_of(corner), strain);
    for (int i = 1; i <= 8; ++i)
      EXPECT_LT(std::fabs(slope(i) / 2 - expected(i)), 1e-9 * (i <= 3 || i > 6 ? N0 : M0)) << i;
  }
  EXPECT_GT(corners, 100);
}

TEST(SectionReturn, HardeningGrowsWithTheEquivalentStrain) {
  const finites_section harder{H, YIELD, 1000};
  const double before = 0.01;
  section_vector trial{};
  trial(4) = 2 * M0;
  trial(6) = 0.4 * M0;
  finites_section_corner corner{};
  const section_matrix D = stiffness();
  ASSERT_EQ(return_side(harder, D, trial, before, corner), FINITES_SIDE_CORNER);
  const section_vector p = flow_of(corner);
  const double growth = std::sqrt(2.0 / 3) * H / 2 * std::sqrt(p(4) * p(4) + p(5) * p(5) + p(6) * p(6));
  EXPECT_WITHIN(corner.equivalent, before + growth, growth, 1e-12);
  const double k = 1 + 1000 * corner.equivalent / YIELD;
  EXPECT_WITHIN(condition(returned(D, trial, corner)), k * k, 1.0, 1e-7);
}

TEST(SectionReturn, TheTangentKnowsTheHardening) {
  // Just beyond yield in twisting the flow has one direction: D33 H' / (D33 + H') of the curvature. The moment at yield
  // is k M0 / sqrt(3), k = 1 + Hp e / fy, and e grows by sqrt(2/3) h / 2 times the plastic curvature.
  const finites_section harder{H, YIELD, YOUNG / 5};
  const section_matrix D = stiffness();
  const double d = D(6, 6), slope = M0 / std::sqrt(3.0) * (YOUNG / 5) / YIELD * std::sqrt(2.0 / 3) * H / 2;
  section_vector trial{};
  trial(6) = 1.00001 * M0 / std::sqrt(3.0);
  finites_section_corner corner{};
  ASSERT_EQ(return_side(harder, D, trial, 0, corner), FINITES_SIDE_CORNER);
  EXPECT_WITHIN(tangent_of(corner)(6, 6), d * slope / (d + slope), d, 1e-4);
  EXPECT_WITHIN(tangent_of(corner)(4, 4), D(4, 4), d, 1e-4);
}

TEST(SectionReturn, TheValueIsTheCondition) {
  random_forces draw(13);
  for (int k = 0; k < 200; ++k) {
    const section_vector s = draw.of(1, 1, 0.5);
    const finites_section harder{H, YIELD, 900};
    double excess = 0, share = 0;
    ASSERT_EQ(finites_section_value(&harder, s.data(), 0.02, &excess, &share), FINITES_OK);
    const double radius = 1 + 900 * 0.02 / YIELD;
    EXPECT_WITHIN(excess, condition(s) - radius * radius, condition(s), 1e-13);
    EXPECT_WITHIN(share, mixed(s), std::fabs(mixed(s)) + 1, 1e-13);
    double alone = 0;
    ASSERT_EQ(finites_section_value(&harder, s.data(), 0.02, nullptr, &alone), FINITES_OK);
    EXPECT_EQ(alone, share);
  }
}

TEST(SectionReturn, ArgumentsAreChecked) {
  const section_matrix D = stiffness();
  section_vector trial{};
  trial(4) = 2 * M0;
  std::int32_t side = 77;
  finites_section_corner edge{};
  const auto called = [&](finites_section section, const section_matrix& with, double equivalent) {
    return finites_section_return(&section, with.data(), trial.data(), equivalent, &side, &edge);
  };
  EXPECT_EQ(called({0, YIELD, 0}, D, 0), FINITES_THICKNESS);
  EXPECT_EQ(called({H, 0, 0}, D, 0), FINITES_YIELD);
  EXPECT_EQ(called({H, YIELD, -1}, D, 0), FINITES_HARDENING);
  EXPECT_EQ(called(STEEL, D, -1), FINITES_HARDENING);
  EXPECT_EQ(called({H, YIELD, std::numeric_limits<double>::quiet_NaN()}, D, 0), FINITES_NAN);
  section_matrix soft = D;
  soft(5, 5) = 0;
  EXPECT_EQ(called(STEEL, soft, 0), FINITES_STIFFNESS);
  trial(2) = std::numeric_limits<double>::infinity();
  EXPECT_EQ(called(STEEL, D, 0), FINITES_NAN);
  EXPECT_EQ(finites_section_return(nullptr, D.data(), trial.data(), 0, &side, &edge), FINITES_NULL);
  EXPECT_EQ(finites_section_return(&STEEL, D.data(), trial.data(), 0, nullptr, &edge), FINITES_NULL);
  EXPECT_EQ(finites_section_value(&STEEL, nullptr, 0, nullptr, nullptr), FINITES_NULL);
  EXPECT_EQ(side, 77);
  EXPECT_EQ(edge.equivalent, 0);
  trial(2) = 0;
  EXPECT_EQ(finites_section_return(&STEEL, D.data(), trial.data(), 0, &side, nullptr), FINITES_OK);
  EXPECT_EQ(side, FINITES_SIDE_CORNER);
}
