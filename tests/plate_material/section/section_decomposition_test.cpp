// section_decomposition_test.cpp: the spectral form of section and metric: its tables, what they add up to, and its
// check.
#include <cmath>

#include <algorithm>

#include "assert_recorder.h"
#include "comparison.h"
#include "dense.h"
#include "guarded_buffer.h"
#include "prepared_section.h"

using section_reference::column;
using section_reference::largest;
using section_reference::matrix;
using section_reference::real;
using section_reference::spectral_data;
using support::seeded_random;
using texts = std::vector<std::string>;

namespace {

// "é" has two bytes.
const std::string CHECK_TEXT =
    "D\xC3\xA9"
    "composition spectrale, KOK_DS";

constexpr double INFINITE = std::numeric_limits<double>::infinity();
constexpr double TINY = std::numeric_limits<double>::denorm_min();

// Each entry by itself; a zero is a zero.
void expect_entries(const MATRIX<8, 8>& actual, const matrix& expected, const char* name) {
  for (int j = 1; j <= 8; ++j) {
    for (int i = 1; i <= 8; ++i) {
      const double value = static_cast<double>(expected(i - 1, j - 1));
      EXPECT_CLOSE(actual(i, j), value, std::fabs(value), 8) << name << " " << i << " " << j;
    }
  }
}

void expect_tables(const section_reference::plate& p, int branch) {
  const spectral_data d = section_reference::spectral_data_of(p, branch);
  expect_entries(PLATEELEM.P8, d.P, "P8");
  expect_entries(PLATEELEM.Q8, d.Q, "Q8");
  expect_entries(PLATEELEM.QINV8, d.QI, "QINV8");
  expect_entries(PLATEELEM.LAM8, d.L, "LAM8");
}

// The three blocks of membrane, bending and shear have units of their own.
void expect_blocks(const matrix& actual, const matrix& expected, double limit) {
  const int first[] = {0, 3, 6}, count[] = {3, 3, 2};
  for (int a = 0; a < 3; ++a) {
    for (int b = 0; b < 3; ++b) {
      const matrix x = actual.block(first[a], first[b], count[a], count[b]);
      const matrix y = expected.block(first[a], first[b], count[a], count[b]);
      EXPECT_WITHIN(section_reference::listed(x), section_reference::listed(y), largest(y), limit) << a << b;
    }
  }
}

constexpr double SEVEN_DIGITS = 8.0 / 16777216.0;  // eight roundings to single precision

MATRIX<8, 8> diagonal(double first, double others = 1.0) {
  MATRIX<8, 8> M{};
  for (int i = 1; i <= 8; ++i) M(i, i) = others;
  M(1, 1) = first;
  return M;
}

const MATRIX<8, 8> UNIT = diagonal(1.0);

// The check of M = D against R = L in entry (1, 1).
int check(double M, double R) {
  std::int32_t ok = 7;
  SPECTRAL_CHECK(diagonal(M), UNIT, UNIT, diagonal(R), UNIT, ok);
  return ok;
}

struct branch_case {
  double ref;
  int branch;
};
const branch_case BRANCHES[] = {{1.0, 1},          {0.0, 1},   {-0.0, 1},   {TINY, 1},  {INFINITE, 1},
                                {NOT_A_NUMBER, 1}, {-1.0, -1}, {-TINY, -1}, {-1e9, -1}, {-INFINITE, -1}};

}  // namespace

TEST(SectionSpectral, FillsTheTablesForThePositiveBranch) {
  seeded_random random(601);
  for (int trial = 0; trial < 20; ++trial) {
    const prepared_section s(random, 0.0);
    SECTION_SPECTRAL_SIGN(PLATEELEM, -1.0, s.p.h, s.p.sy);
    SECTION_SPECTRAL(PLATEELEM, BY_ASSERTF);
    expect_tables(s.p, 1);
    expect_entries(PLATEELEM.D8, section_reference::isotropic_section(s.p), "D8");
  }
}

TEST(SectionSpectral, SectionMatrixTakesBlocksAndTheDiagonalOfTheShears) {
  seeded_random random(602);
  const prepared_section s(random, 0.0);
  for (double& v : PLATEELEM.D_MEMBRANE_NORMAL.V) v = random.uniform(1.0, 2.0);
  for (double& v : PLATEELEM.D_MEMBRANE_SHEAR.V) v = random.uniform(1.0, 2.0);
  for (double& v : PLATEELEM.D_BENDING.V) v = random.uniform(1.0, 2.0);
  for (double& v : PLATEELEM.D_SHEAR.V) v = random.uniform(1.0, 2.0);
  for (double& v : PLATEELEM.D8.V) v = NOT_A_NUMBER;
  SECTION_SPECTRAL(PLATEELEM, BY_ASSERTF);
  for (int j = 1; j <= 8; ++j) {
    for (int i = 1; i <= 8; ++i) {
      double expected = 0.0;
      if (i <= 3 && j <= 3) expected = PLATEELEM.D_MEMBRANE_NORMAL(i, j);
      if (i > 3 && j > 3 && i <= 6 && j <= 6) expected = PLATEELEM.D_BENDING(i - 3, j - 3);
      if (i > 6 && i == j) expected = PLATEELEM.D_SHEAR(i - 6, i - 6);
      EXPECT_EQ(PLATEELEM.D8(i, j), expected) << i << " " << j;
    }
  }
}

TEST(SectionSpectral, DiagonalFormIsSectionTimesMetricToSevenDigits) {
  seeded_random random(603);
  support::forget_assertions();
  for (int trial = 0; trial < 200; ++trial) {
    const prepared_section s(random, 0.0);
    for (const double ref : {1.0, -1.0}) {
      SECTION_SPECTRAL_SIGN(PLATEELEM, ref, s.p.h, s.p.sy);
      const matrix Q = matrix_of(PLATEELEM.Q8), QI = matrix_of(PLATEELEM.QINV8);
      expect_blocks(Q * matrix_of(PLATEELEM.LAM8) * QI, s.D * matrix_of(PLATEELEM.P8), SEVEN_DIGITS);
      const matrix unit = Q * QI;
      EXPECT_WITHIN(section_reference::listed(unit.diagonal()), std::vector<double>(8, 1.0), 1.0, SEVEN_DIGITS);
    }
  }
  EXPECT_EQ(support::recorded_assertions(), texts());
}

TEST(SectionSpectral, EigenvaluesAreThoseOfANumericalDecomposition) {
  seeded_random random(604);
  for (int trial = 0; trial < 50; ++trial) {
    const prepared_section s(random, 0.0);
    for (const double ref : {1.0, -1.0}) {
      SECTION_SPECTRAL_SIGN(PLATEELEM, ref, s.p.h, s.p.sy);
      // D P has the eigenvalues of the symmetric R P R, where R R = D.
      const dense::eigen_system modes(s.D);
      const matrix R = modes.vectors * modes.values.cwiseSqrt().asDiagonal() * modes.vectors.transpose();
      const column values = dense::eigen_system(R * matrix_of(PLATEELEM.P8) * R).values;
      std::vector<double> numerical, closed;
      for (int i = 0; i < 8; ++i) {
        numerical.push_back(static_cast<double>(values(i)));
        closed.push_back(PLATEELEM.LAM8(i + 1, i + 1));
      }
      std::sort(numerical.begin(), numerical.end());
      std::sort(closed.begin(), closed.end());
      for (std::size_t i = 0; i < 8; ++i) EXPECT_WITHIN(closed[i], numerical[i], numerical[i], SEVEN_DIGITS);
    }
  }
}

TEST(SectionSpectral, MetricIsTheYieldFunctionOfItsBranch) {
  seeded_random random(605);
  for (int trial = 0; trial < 100; ++trial) {
    const prepared_section s(random, 0.0);
    const column sig = s.random_resultants(random, 8, 1.0);
    const double ref = static_cast<double>(section_reference::mixed_product(sig));
    SECTION_SPECTRAL_SIGN(PLATEELEM, ref, s.p.h, s.p.sy);
    const real F = sig.dot(matrix_of(PLATEELEM.P8) * sig) - 1;
    EXPECT_CLOSE(static_cast<double>(F), static_cast<double>(section_reference::yield_function(s.p, sig, 0)), 1.0, 16);
  }
}

TEST(SectionSpectralSign, NegativeIsTheNegativeBranchAndAllElseThePositiveOne) {
  seeded_random random(606);
  const prepared_section s(random, 0.0);
  for (const branch_case& c : BRANCHES) {
    SECTION_SPECTRAL_SIGN(PLATEELEM, c.ref, s.p.h, s.p.sy);
    expect_tables(s.p, c.branch);
  }
}

TEST(SectionSpectralSign, TakesThicknessAndYieldStressFromItsArguments) {
  seeded_random random(607);
  const prepared_section s(random, 0.0);
  section_reference::plate other = s.p;
  other.h *= 3.0;
  other.sy *= 0.5;
  SECTION_SPECTRAL_SIGN(PLATEELEM, -1.0, other.h, other.sy);
  expect_tables(other, -1);
}

TEST(SectionSpectralSign, SaysNothingOfASectionThatDoesNotFitAndLeavesIt) {
  seeded_random random(608);
  const prepared_section s(random, 0.0);
  for (double& v : PLATEELEM.D8.V) v = 12345.0;
  support::forget_assertions();
  SECTION_SPECTRAL_SIGN(PLATEELEM, 1.0, s.p.h, s.p.sy);
  EXPECT_EQ(support::recorded_assertions(), texts());
  EXPECT_EQ(listed(PLATEELEM.D8), std::vector<double>(64, 12345.0));
}

// ---- the check

TEST(SectionSpectral, ReportsModifiersFromATenthOnAndGoesOn) {
  // The change is measured on the modified value: 1 / 0.91 - 1 is below a tenth, 1 / 0.90 - 1 is not.
  struct modifier_case {
    double factor;
    std::size_t reports;
  };
  EXPECT_EQ(CHECK_TEXT.size(), 32U);
  seeded_random random(609);
  for (const modifier_case& c : {modifier_case{0.95, 0}, {0.915, 0}, {0.90, 1}, {1.1, 0}, {1.12, 1}, {2.0, 1}}) {
    for (int block = 0; block < 3; ++block) {
      const prepared_section s(random, 0.0);
      support::forget_assertions();
      double* first = block == 0   ? PLATEELEM.D_MEMBRANE_NORMAL.V
                      : block == 1 ? PLATEELEM.D_BENDING.V
                                   : PLATEELEM.D_SHEAR.V;
      for (int i = 0; i < (block == 2 ? 4 : 9); ++i) first[i] *= c.factor;
      SECTION_SPECTRAL(PLATEELEM, BY_ASSERTF);
      EXPECT_EQ(support::recorded_assertions(), texts(c.reports, CHECK_TEXT)) << c.factor << " block " << block;
      expect_tables(s.p, 1);
    }
  }
}

TEST(SpectralCheck, HoldsToATenthWithTheGuardInsideTheAbsoluteValue) {
  // |1 - 1.1| / |1 + 1e-7| is just below a tenth, |-1 + 1.1| / |-1 + 1e-7| just above it.
  EXPECT_EQ(check(1.0, 1.0), 1);
  EXPECT_EQ(check(1.0, 1.1), 1);
  EXPECT_EQ(check(1.0, 1.1000002), 0);
  EXPECT_EQ(check(1.0, 0.9), 1);
  EXPECT_EQ(check(1.0, 0.8999998), 0);
  EXPECT_EQ(check(-1.0, -1.1), 0);
  EXPECT_EQ(check(-1.0, -1.0999998), 1);
}

TEST(SpectralCheck, OfAZeroMeasuresOnTheGuard) {
  EXPECT_EQ(check(0.0, 0.9e-8), 1);
  EXPECT_EQ(check(0.0, 1.1e-8), 0);
  EXPECT_EQ(check(-1e-7, -1.000001e-7), 0);  // divides by zero
  EXPECT_EQ(check(-1e-7, -1e-7), 1);         // zero by zero is at least nothing
}

TEST(SpectralCheck, LetsNotANumberPass) {
  EXPECT_EQ(check(NOT_A_NUMBER, 1.0), 1);
  EXPECT_EQ(check(1.0, NOT_A_NUMBER), 1);
}

TEST(SpectralCheck, LooksAtEveryEntry) {
  for (int j = 1; j <= 8; ++j) {
    for (int i = 1; i <= 8; ++i) {
      MATRIX<8, 8> QI = UNIT;
      QI(i, j) += 0.2;
      std::int32_t ok = 7;
      SPECTRAL_CHECK(UNIT, UNIT, UNIT, UNIT, QI, ok);
      EXPECT_EQ(ok, 0) << i << " " << j;
    }
  }
}

TEST(SpectralCheck, TakesProductsInTheirOrder) {
  // M = D P and R = Q L QI of random matrices that do not commute.
  seeded_random random(610);
  MATRIX<8, 8> D{}, P{}, Q{}, QI{}, L{};
  for (MATRIX<8, 8>* M : {&P, &Q, &QI, &L}) {
    for (double& v : M->V) v = random.uniform(0.5, 1.0);
  }
  const matrix M = matrix_of(Q) * matrix_of(L) * matrix_of(QI) * matrix_of(P).inverse();
  for (int j = 1; j <= 8; ++j) {
    for (int i = 1; i <= 8; ++i) D(i, j) = static_cast<double>(M(i - 1, j - 1));
  }
  std::int32_t ok = 7;
  SPECTRAL_CHECK(D, P, Q, L, QI, ok);
  EXPECT_EQ(ok, 1);
  SPECTRAL_CHECK(P, D, Q, L, QI, ok);
  EXPECT_EQ(ok, 0);
  SPECTRAL_CHECK(D, P, QI, L, Q, ok);
  EXPECT_EQ(ok, 0);
}

// ---- products

TEST(Matmul, OfThreeAndFourMatricesOfEveryOrder) {
  seeded_random random(611);
  for (int n = 1; n <= 8; ++n) {
    const std::size_t size = static_cast<std::size_t>(n * n);
    std::vector<std::vector<double>> factors;
    matrix expected = matrix::Identity(n, n), three;
    for (int i = 0; i < 4; ++i) {
      factors.push_back(random.vector(n * n, 1.0));
      if (i == 3) three = expected;
      expected = (expected * dense::widened(factors.back().data(), n, n));
    }
    support::guarded_buffer out(n * n);
    MATMUL3(n, factors[0].data(), factors[1].data(), factors[2].data(), out.data());
    EXPECT_CLOSE(std::vector<double>(out.data(), out.data() + size), section_reference::listed(three), n * n, 8) << n;
    EXPECT_EQ(out.changed(), support::range(1, n * n)) << n;
    out.refill();
    MATMUL4(n, factors[0].data(), factors[1].data(), factors[2].data(), factors[3].data(), out.data());
    EXPECT_CLOSE(std::vector<double>(out.data(), out.data() + size), section_reference::listed(expected), n * n * n, 8)
        << n;
    EXPECT_EQ(out.changed(), support::range(1, n * n)) << n;
  }
}
