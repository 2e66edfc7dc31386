// results_test.cpp: von Mises and principal stresses, the two exported routines that renew them, and the extrapolation
// from the points of a brick.
#include "solids/results.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#include "comparison.h"
#include "finites/finites.h"
#include "guarded_buffer.h"
#include "reference_solid.h"
#include "solid_cases.h"

namespace {

using reference::real;
using reference::tensor;
using support::seeded_random;

using stress6 = std::vector<double>;

tensor tensor_of(const stress6& s) { return reference::stress_tensor(reference::listed(s)); }

// Eigenvalues, the largest first.
std::vector<double> eigenvalues(const stress6& s) {
  const dense::eigen_system solver(tensor_of(s));
  return {static_cast<double>(solver.eigenvalues()(2)), static_cast<double>(solver.eigenvalues()(1)),
          static_cast<double>(solver.eigenvalues()(0))};
}

std::vector<double> principal(const stress6& s) {
  std::vector<double> p(3, -55.0);
  PRINCIPAL_6(s.data(), p.data());
  return p;
}

// Norm of the deviator and the cosine of three times the Lode angle, from eigenvalues.
struct deviator {
  real size, cosine;
};

deviator deviator_of(const stress6& s) {
  const tensor D = tensor_of(s) - tensor_of(s).trace() / 3 * tensor::Identity();
  const real size = D.norm();
  return {size, size > 0 ? 3 * std::sqrt(6.0L) * D.determinant() / (size * size * size) : 0};
}

// The argument of the arc cosine, as the closed form is written down.
double argument(const stress6& s) {
  const double a = s[0], b = s[1], c = s[2], d = s[3], e = s[4], f = s[5];
  const double I1 = a + b + c, I2 = a * b + a * c + b * c - d * d - e * e - f * f;
  const double I3 = a * b * c + 2.0 * d * e * f - a * f * f - b * e * e - c * d * d;
  const double r = std::sqrt(2.0 * (I1 * I1 / 3.0 - I2) / 3.0);
  return (I3 - I1 * I2 / 3.0 + 2.0 * I1 * I1 * I1 / 27.0) * 1.4142135381698608 / (r * r * r);
}

std::vector<double> record_of(const stress6& s) {
  std::vector<double> R(50, 7.5);
  std::copy(s.begin(), s.end(), R.begin() + 9);
  return R;
}

}  // namespace

TEST(SolidPrincipal, AreTheEigenvaluesAwayFromEqualOnes) {
  seeded_random random(6301);
  int done = 0;
  for (int i = 0; i < 2000; ++i) {
    const stress6 s = random.vector(6, 100.0);
    const deviator D = deviator_of(s);
    if (std::fabs(D.cosine) > 0.99L) continue;  // two values nearly equal: the angle is lost there
    ++done;
    const std::vector<double> p = principal(s);
    // The root of 2 is off by 1.7e-8, and the angle by as much over its sine.
    EXPECT_WITHIN(p, eigenvalues(s), static_cast<double>(D.size), 1e-7);
    EXPECT_TRUE(p[0] >= p[1] && p[1] >= p[2]);
  }
  EXPECT_GT(done, 1000);
}

TEST(SolidPrincipal, SumIsTheFirstInvariant) {
  seeded_random random(6302);
  for (int i = 0; i < 200; ++i) {
    const stress6 s = random.vector(6, 100.0);
    if (std::fabs(deviator_of(s).cosine) > 0.99L) continue;
    const std::vector<double> p = principal(s);
    EXPECT_CLOSE(p[0] + p[1] + p[2], s[0] + s[1] + s[2], 300.0, 30);
  }
}

TEST(SolidPrincipal, DoNotChangeWithTheAxes) {
  seeded_random random(6303);
  for (int i = 0; i < 100; ++i) {
    const stress6 s = random.vector(6, 100.0);
    const deviator D = deviator_of(s);
    if (std::fabs(D.cosine) > 0.9L) continue;
    const support::rotation Q = support::random_rotation(random);
    tensor R;
    for (dense::index r = 0; r < 3; ++r) {
      for (dense::index c = 0; c < 3; ++c) R(r, c) = Q[static_cast<std::size_t>(r)][static_cast<std::size_t>(c)];
    }
    const stress6 turned = reference::rounded(reference::stress_column(R * tensor_of(s) * R.transpose()));
    EXPECT_CLOSE(principal(turned), principal(s), 200.0, 3000);
  }
}

TEST(SolidPrincipal, OfAPureShear) {
  for (std::size_t shear = 3; shear < 6; ++shear) {
    stress6 s(6, 0.0);
    s[shear] = 7.0;
    EXPECT_WITHIN(principal(s), (std::vector<double>{7.0, 0.0, -7.0}), 7.0, 2e-8);
  }
}

// Uniaxial tension: the cosine is s / sqrt 2 = 1 - 1.7e-8 in place of 1, the angle 6e-5 in place of 0, and the two
// values that ought to be 0 are as far from it as that sine.
TEST(SolidPrincipal, OfUniaxialTensionShowTheSingleRootOfTwo) {
  const real s = 1.4142135381698608, root = std::sqrt(2.0L);
  const real angle = std::acos(s / root) / 3, R = 200 / real(3) * (s / root);
  const real third = 2 * std::acos(-1.0L) / 3, mean = 100 / real(3);
  const std::vector<double> expected = {static_cast<double>(R * std::cos(angle) + mean),
                                        static_cast<double>(R * std::cos(angle - third) + mean),
                                        static_cast<double>(R * std::cos(angle + third) + mean)};
  const std::vector<double> p = principal({100, 0, 0, 0, 0, 0});
  EXPECT_WITHIN(p, expected, 100.0, 1e-10);
  EXPECT_WITHIN(p[0], 100.0, 100.0, 2e-8);
  EXPECT_WITHIN(p[1], 3.56e-3, 3.56e-3, 0.01);
  EXPECT_WITHIN(p[2], -3.56e-3, 3.56e-3, 0.01);
  EXPECT_EQ(principal({0, 100, 0, 0, 0, 0}), p);
}

TEST(SolidPrincipal, OfUniaxialPressure) {
  const std::vector<double> p = principal({0, 0, -100, 0, 0, 0});
  EXPECT_WITHIN(p, (std::vector<double>{0.0, 0.0, -100.0}), 100.0, 1e-4);
  EXPECT_TRUE(p[0] >= p[1] && p[1] >= p[2]);
}

TEST(SolidPrincipal, OfAHydrostaticStateAreZero) {
  for (const double m : {50.0, -50.0, 0.0, 1024.0}) {
    EXPECT_EQ(principal({m, m, m, 0, 0, 0}), std::vector<double>(3, 0.0)) << m;
  }
}

// r = 1e-16 is the last deviator that counts as none: a shear d has r = sqrt(2 / 3) d.
TEST(SolidPrincipal, ASmallDeviatorCountsAsNone) {
  EXPECT_EQ(principal({0, 0, 0, 1.2e-16, 0, 0}), std::vector<double>(3, 0.0));
  EXPECT_WITHIN(principal({0, 0, 0, 1.3e-16, 0, 0}), (std::vector<double>{1.3e-16, 0.0, -1.3e-16}), 1.3e-16, 1e-7);
}

// The limit itself counts as none: shears for which r = sqrt(2 d^2 / 3) is 1e-16 to the last bit, and their neighbours
// a little above and below.
TEST(SolidPrincipal, TheLimitOfTheDeviatorIsTenToTheMinusSixteen) {
  constexpr double middle = 1.224744871391589e-16;  // sqrt(3 / 2) 1e-16
  int met = 0;
  for (int i = -8; i <= 8; ++i) {
    const double d = middle * (1.0 + i * std::numeric_limits<double>::epsilon());
    if (std::sqrt(2.0 * (d * d) / 3.0) != 1e-16) continue;
    ++met;
    EXPECT_EQ(principal({0, 0, 0, d, 0, 0}), std::vector<double>(3, 0.0));
    EXPECT_EQ(principal({0, 0, 0, 0, 0, -d}), std::vector<double>(3, 0.0));
  }
  EXPECT_GE(met, 1);
  const double above = middle * (1.0 + 1e-12), below = middle * (1.0 - 1e-12);
  EXPECT_EQ(principal({0, 0, 0, 0, below, 0}), std::vector<double>(3, 0.0));
  EXPECT_WITHIN(principal({0, 0, 0, 0, above, 0}), (std::vector<double>{above, 0.0, -above}), above, 1e-7);
}

// The argument is not clamped: where the invariants cancel it rounds beyond 1.
TEST(SolidPrincipal, AnArgumentBeyondOneIsNotANumber) {
  seeded_random random(6304);
  int beyond = 0;
  for (int i = 0; i < 400; ++i) {
    stress6 s = random.vector(6, 1.0);
    for (std::size_t k = 0; k < 3; ++k) s[k] += 1e6;
    const double x = argument(s);
    if (!(std::fabs(x) > 2.0)) continue;
    ++beyond;
    for (const double p : principal(s)) EXPECT_TRUE(std::isnan(p)) << x;
    EXPECT_TRUE(std::isfinite(VON_MISES_6(s.data())));
  }
  EXPECT_GT(beyond, 10);
}

// The closed form with its arc cosine, in extended precision, over the whole range of the angle: stresses of which only
// the cosine of the triple angle varies, R (cos t, cos(t - 2 pi/3), cos(t + 2 pi/3)).
TEST(SolidPrincipal, AreThoseOfTheArcCosine) {
  const real pi = std::acos(-1.0L);
  for (int i = 0; i <= 2000; ++i) {
    const real t = pi / 3 * i / 2000, R = i % 2 == 0 ? 100.0L : 3e-7L;
    const stress6 s = {static_cast<double>(R * std::cos(t)),
                       static_cast<double>(R * std::cos(t - 2 * pi / 3)),
                       static_cast<double>(R * std::cos(t + 2 * pi / 3)),
                       0,
                       0,
                       0};
    const double x = argument(s), mean = (s[0] + s[1] + s[2]) / 3.0;
    ASSERT_LE(std::fabs(x), 1.0);
    const real I1 = s[0] + s[1] + s[2], I2 = real(s[0]) * s[1] + real(s[0]) * s[2] + real(s[1]) * s[2];
    const real size = std::sqrt(2 * (I1 * I1 / 3 - I2) / 3) * 1.4142135381698608L, angle = std::acos(real(x)) / 3;
    const std::vector<double> expected = {static_cast<double>(size * std::cos(angle) + mean),
                                          static_cast<double>(size * std::cos(angle - 2 * pi / 3) + mean),
                                          static_cast<double>(size * std::cos(angle + 2 * pi / 3) + mean)};
    EXPECT_CLOSE(principal(s), expected, static_cast<double>(R), 10) << "t = " << static_cast<double>(t);
  }
}

// Two records side by side are those of each alone, whatever is beside a state: none, hydrostatic, NaN.
TEST(SolidRecords, InPairsHaveTheBitsOfEachAlone) {
  seeded_random random(6308);
  const double nan = std::numeric_limits<double>::quiet_NaN();
  for (int i = 0; i < 200; ++i) {
    const stress6 beside[3] = {{50, 50, 50, 0, 0, 0}, {nan, 1, 2, 3, 4, 5}, {1e6, 1e6, 1e6 + 0.5, 0.3, 0.2, 0.1}};
    const stress6 a = random.vector(6, 100.0), b = i % 4 == 3 ? random.vector(6, 100.0) : beside[i % 4];
    VECTOR<6, LANES> strain, stress;
    VECTOR<6> strain_a, strain_b, stress_a, stress_b;
    for (int k = 1; k <= 6; ++k) {
      stress_a(k) = a[static_cast<std::size_t>(k - 1)];
      stress_b(k) = b[static_cast<std::size_t>(k - 1)];
      strain_a(k) = random.uniform(-1, 1);
      strain_b(k) = random.uniform(-1, 1);
      stress(k) = LANES{stress_a(k), stress_b(k)};
      strain(k) = LANES{strain_a(k), strain_b(k)};
    }
    support::guarded_buffer first(50), second(50), alone_a(50), alone_b(50), skipped(50);
    fill_solid_records(strain, stress, first.data(), second.data());
    fill_solid_record(strain_a, stress_a, alone_a.data());
    fill_solid_record(strain_b, stress_b, alone_b.data());
    EXPECT_EQ(first.changed(), support::range(1, 40));
    EXPECT_EQ(second.changed(), support::range(1, 40));
    for (int word = 1; word <= 40; ++word) {
      EXPECT_EQ(first(word), alone_a(word)) << word;
      EXPECT_TRUE(second(word) == alone_b(word) || (std::isnan(second(word)) && std::isnan(alone_b(word)))) << word;
    }
    fill_solid_records(strain, stress, skipped.data(), nullptr);
    for (int word = 1; word <= 40; ++word) EXPECT_EQ(skipped(word), alone_a(word)) << word;
  }
}

TEST(SolidMises, ByHand) {
  const auto mises = [](const stress6& s) { return VON_MISES_6(s.data()); };
  EXPECT_EQ(mises({100, 0, 0, 0, 0, 0}), 100.0);
  EXPECT_EQ(mises({50, 50, 50, 0, 0, 0}), 0.0);
  EXPECT_CLOSE(mises({0, 0, 0, 7, 0, 0}), 7.0 * std::sqrt(3.0), 12.0, 5);
  EXPECT_CLOSE(mises({1, 2, 3, 4, 5, 6}), std::sqrt(234.0), 15.0, 5);  // (1 + 4 + 1) / 2 + 3 (16 + 25 + 36)
}

TEST(SolidMises, IsTheNormOfTheDeviator) {
  seeded_random random(6305);
  for (int i = 0; i < 200; ++i) {
    const stress6 s = random.vector(6, 100.0);
    EXPECT_CLOSE(VON_MISES_6(s.data()), static_cast<double>(std::sqrt(1.5L) * deviator_of(s).size), 100.0, 20);
  }
}

TEST(SolidRecordUpdate, WritesFourWords) {
  seeded_random random(6306);
  for (int i = 0; i < 50; ++i) {
    const stress6 s = random.vector(6, 100.0);
    support::guarded_buffer R(50);
    R.set_input(record_of(s));
    UPDATE_PRINCIPAUX_RES50_SOLID_DBL(R.data());
    EXPECT_EQ(R.changed(), support::range(22, 25));
    EXPECT_EQ(R(22), VON_MISES_6(s.data()));
    const std::vector<double> p = principal(s);
    for (int k = 0; k < 3; ++k) EXPECT_EQ(R(23 + k), p[static_cast<std::size_t>(k)]);
  }
}

TEST(SolidRecordUpdate, OfAHydrostaticStateClearsThePrincipalWords) {
  std::vector<double> R = record_of({50, 50, 50, 0, 0, 0});
  UPDATE_PRINCIPAUX_RES50_SOLID_DBL(R.data());
  for (const std::size_t word : {22U, 23U, 24U, 25U}) EXPECT_EQ(R[word - 1], 0.0) << word;
}

TEST(SolidRecordUpdate, SingleWorksInDoubleAndNarrows) {
  seeded_random random(6307);
  for (int i = 0; i < 200; ++i) {
    std::vector<float> narrow(54, 7.5F);
    for (std::size_t at = 9; at < 15; ++at) narrow[at] = static_cast<float>(random.uniform(-100, 100));
    const std::vector<float> before = narrow;
    std::vector<double> wide(narrow.begin(), narrow.end());
    UPDATE_PRINCIPAUX_RES50_SOLID(narrow.data());
    UPDATE_PRINCIPAUX_RES50_SOLID_DBL(wide.data());
    for (std::size_t at = 0; at < 54; ++at) {
      const float expected = at >= 21 && at < 25 ? static_cast<float>(wide[at]) : before[at];
      EXPECT_EQ(narrow[at], expected) << "word " << at + 1;
    }
  }
}

// In single precision the sums of these stresses would lose the small one.
TEST(SolidRecordUpdate, SingleKeepsWhatItsOwnSumsWouldLose) {
  float R[50] = {};
  R[9] = 10000.0F;
  R[10] = 10000.0F;
  R[11] = 10000.0F;
  R[12] = 0.25F;
  UPDATE_PRINCIPAUX_RES50_SOLID(R);
  EXPECT_WITHIN(static_cast<double>(R[21]), 0.25 * std::sqrt(3.0), 0.43, 1e-6);
}

TEST(SolidExtrapolation, OfConstantsIsTheConstant) {
  const std::vector<double> SP(48, 3.0), EP(48, -2.0);
  std::vector<double> SN(48, -55.0), EN(48, -55.0);
  SOLID_EXTRAPOLATE_BRICK(8, SP.data(), EP.data(), SN.data(), EN.data());
  EXPECT_WITHIN(SN, SP, 3.0, 1e-6);  // the four values are single precision
  EXPECT_WITHIN(EN, EP, 2.0, 1e-6);
}

// Values of 1 at one point: the entry says in how many natural coordinates the signs of node and point differ.
TEST(SolidExtrapolation, EntryByTheSignsThatDiffer) {
  constexpr double entries[4] = {2.5490379333496094, -0.6830127239227295, 0.1830126941204071, -0.049038052558898926};
  const reference::matrix XI = reference::node_coordinates(10);
  for (dense::index p = 0; p < 8; ++p) {
    std::vector<double> SP(48, 0.0), EP(48, 0.0), SN(48, -55.0), EN(48, -55.0);
    for (std::size_t i = 0; i < 6; ++i) {
      SP[6 * static_cast<std::size_t>(p) + i] = static_cast<double>(i + 1);
      EP[6 * static_cast<std::size_t>(p) + i] = -1.0;
    }
    SOLID_EXTRAPOLATE_BRICK(8, SP.data(), EP.data(), SN.data(), EN.data());
    for (dense::index k = 0; k < 8; ++k) {
      const double entry =
          entries[static_cast<std::size_t>(std::lround(std::fabs((XI.col(p) - XI.col(k)).cwiseAbs().sum()) / 2))];
      for (std::size_t i = 0; i < 6; ++i) {
        EXPECT_EQ(SN[6 * static_cast<std::size_t>(k) + i], entry * static_cast<double>(i + 1)) << p << " " << k;
        EXPECT_EQ(EN[6 * static_cast<std::size_t>(k) + i], -entry) << p << " " << k;
      }
    }
  }
}

// A trilinear field through the points, taken at the nodes.
TEST(SolidExtrapolation, OfATrilinearField) {
  const auto field = [](double x, double y, double z) { return 1.0 + 2.0 * x - y + 3.0 * z + x * y * z - y * z; };
  std::vector<double> SP, expected;
  const reference::matrix XI = reference::node_coordinates(10);
  std::size_t k = 0;
  for (const reference::station& p : reference::rule(10)) {
    SP.insert(SP.end(), 6, field(p.xi, p.eta, p.zeta));
    const std::vector<double> node = reference::rounded(XI.col(static_cast<dense::index>(k++)));
    expected.insert(expected.end(), 6, field(node[0], node[1], node[2]));
  }
  std::vector<double> SN(48), EN(48);
  SOLID_EXTRAPOLATE_BRICK(8, SP.data(), SP.data(), SN.data(), EN.data());
  EXPECT_WITHIN(SN, expected, 10.0, 1e-6);
  EXPECT_EQ(EN, SN);
}

TEST(SolidExtrapolation, AnotherNodeCountFillsNoMatrix) {
  const std::vector<double> SP(48, 3.0);
  for (const int nodes : {4, 6, 0, 20, -1, 9}) {
    std::vector<double> SN(48, -55.0), EN(48, -55.0);
    SOLID_EXTRAPOLATE_BRICK(nodes, SP.data(), SP.data(), SN.data(), EN.data());
    EXPECT_EQ(SN, std::vector<double>(48, 0.0)) << nodes;
    EXPECT_EQ(EN, std::vector<double>(48, 0.0)) << nodes;
  }
}
