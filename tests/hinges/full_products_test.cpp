// full_products_test.cpp: KSTIFB_PLAST against the full products of the routines for each step, with every zero of the
// flow directions: the same numbers, and the same places of infinities and NaN.
#include <gtest/gtest.h>

#include <cmath>
#include <utility>

#include "broken_values.h"
#include "comparison.h"
#include "finites/finites.h"
#include "hinge_model.h"
#include "hinges/hinge_stiffness.h"
#include "plastic_cases.h"
#include "plugin_recorder.h"

namespace {

using namespace hinge_tests;
using plugin_recorder::answer;
using support::BROKEN;
using support::expect_same_places;
using support::seeded_random;

using numbers = std::vector<double>;

// A (m, n) B (n, p), every product in its turn.
numbers product(const numbers& A, const numbers& B, int m, int n, int p) {
  numbers C(static_cast<std::size_t>(m * p), 0.0);
  for (int j = 0; j < p; ++j) {
    for (int k = 0; k < n; ++k) {
      for (int i = 0; i < m; ++i) {
        C[static_cast<std::size_t>(m * j + i)] +=
            A[static_cast<std::size_t>(m * k + i)] * B[static_cast<std::size_t>(n * j + k)];
      }
    }
  }
  return C;
}

// Rows and columns of a matrix of twelve rows.
numbers part(const numbers& A, int row, int rows, int column, int columns) {
  numbers P;
  for (int j = column; j < column + columns; ++j) {
    for (int i = row; i < row + rows; ++i) P.push_back(A[static_cast<std::size_t>(12 * j + i)]);
  }
  return P;
}

numbers minus(numbers A) {
  for (double& a : A) a = -a;
  return A;
}

// Of a member by its planes: symmetric, positive definite, zero where the planes do not couple.
numbers planar_stiffness(seeded_random& random) {
  numbers K(144, 0.0);
  for (const std::vector<std::size_t>& plane : {std::vector<std::size_t>{0, 6}, {3, 9}, {1, 5, 7, 11}, {2, 4, 8, 10}}) {
    for (const std::size_t i : plane) {
      for (const std::size_t j : plane) K[12 * j + i] = K[12 * i + j] = random.uniform(-1.0, 1.0);
    }
    for (const std::size_t i : plane) K[13 * i] = random.uniform(5.0, 9.0);
  }
  return K;
}

struct expected_answer {
  numbers KP;
  bool singular;
};

expected_answer both_ends(const numbers& K, const numbers& N, std::int32_t n) {
  std::int32_t IERR = 0;
  numbers G(static_cast<std::size_t>(12 * n));
  MATRIX_PLASTIC_MAGNITUDES_BOTH_SIDES(K.data(), N.data(), &n, G.data(), &IERR);
  if (IERR != 0) return {numbers(144, 0.0), true};
  return {minus(product(product(K, N, 12, 12, n), G, 12, n, 12)), false};
}

// The columns of the yielding end alone, by its six rows.
expected_answer one_end(const numbers& K, const numbers& N, int column, std::int32_t n, int end) {
  const int row = 6 * (end - 1);
  const numbers NE = part(N, row, 6, column, n), KE = part(K, row, 6, row, 6);
  numbers BETA(static_cast<std::size_t>(n * n), 0.0);
  std::int32_t IERR = 0;
  CALCULATE_MAT_BETA_INVERSE(KE.data(), NE.data(), &n, BETA.data(), &IERR);
  if (IERR != 0) return {numbers(144, 0.0), true};
  numbers G(36);
  MAT_N_BETA_NT(BETA.data(), NE.data(), &n, G.data());
  const numbers columns = part(K, 0, 12, row, 6), rows = part(K, row, 6, 0, 12);
  return {minus(product(product(columns, G, 12, 6, 6), rows, 12, 6, 12)), false};
}

expected_answer by_full_products(hinge_model& model, const numbers& K) {
  const equation_counts e = counts(model, 0);
  const numbers N = gradients(model, 0, e);
  const HINGE_RECORD& h = model.hinge();
  if (h.END1_STATE == 1 && h.END2_STATE == 1) return both_ends(K, N, e.NTOT);
  return h.END1_STATE == 1 ? one_end(K, N, 0, e.N1, 1) : one_end(K, N, e.N1, e.N2, 2);
}

void expect_full_products(hinge_model& model, const numbers& K) {
  const expected_answer expected = by_full_products(model, K);
  const plastic_answer a = plastic(model, K);
  expect_same_places(a.KP, expected.KP);
  EXPECT_EQ(a.texts.size(), expected.singular ? 1U : 0U);
}

class FullProducts : public ::testing::Test {
 protected:
  FullProducts() : random(5701) { plugin_recorder::reset(answer::stand_in); }

  static std::vector<plastic_case> all_cases() {
    std::vector<plastic_case> cases = one_end_cases();
    for (const plastic_case& c : two_end_cases()) cases.push_back(c);
    return cases;
  }

  seeded_random random;
};

}  // namespace

TEST_F(FullProducts, GiveTheSameNumbers) {
  for (const plastic_case& c : all_cases()) {
    SCOPED_TRACE(c.name);
    hinge_model model(c.hinge);
    model.set_end_forces(END1, END2);
    for (int i = 0; i < 5; ++i) {
      expect_full_products(model, planar_stiffness(random));
      expect_full_products(model, sound_stiffness(random));
    }
  }
}

TEST_F(FullProducts, OfBothEndsGiveTheSameNumbersToTheLastDigit) {
  for (const plastic_case& c : two_end_cases()) {
    SCOPED_TRACE(c.name);
    hinge_model model(c.hinge);
    model.set_end_forces(END1, END2);
    for (const numbers& K : {planar_stiffness(random), any_stiffness(random)}) {
      EXPECT_EQ(plastic(model, K).KP, by_full_products(model, K).KP);
    }
  }
}

TEST_F(FullProducts, CountEveryEntryThatLeavesThePlanes) {
  // One entry alone, and with its mirror.
  for (const plastic_case& c : all_cases()) {
    hinge_model model(c.hinge);
    model.set_end_forces(END1, END2);
    for (const bool mirrored : {false, true}) {
      numbers K = planar_stiffness(random);
      for (std::size_t entry = 0; entry < 144; ++entry) {
        SCOPED_TRACE(::testing::Message() << c.name << ", place " << entry + 1);
        const std::size_t mirror = mirrored ? entry % 12 * 12 + entry / 12 : entry;
        const double kept = K[entry], kept_mirror = K[mirror];
        K[entry] = K[mirror] = kept + 0.125;
        expect_full_products(model, K);
        K[entry] = kept;
        K[mirror] = kept_mirror;
      }
    }
  }
}

TEST_F(FullProducts, CarryEveryEntryOfTheStiffnessThatIsNotFinite) {
  // Entries that meet a flow direction, and those that meet its zeros alone. Some are of the planes.
  for (const plastic_case& c : all_cases()) {
    hinge_model model(c.hinge);
    model.set_end_forces(END1, END2);
    for (const double broken : BROKEN) {
      for (std::size_t entry = 0; entry < 144; entry += 5) {
        SCOPED_TRACE(::testing::Message() << c.name << ", " << broken << " at place " << entry + 1);
        for (numbers K : {planar_stiffness(random), sound_stiffness(random)}) {
          K[entry] = K[entry % 12 * 12 + entry / 12] = broken;
          expect_full_products(model, K);
        }
      }
    }
    numbers torsion = planar_stiffness(random);  // of a plane that no flow direction meets
    torsion[39] = torsion[117] = BROKEN[0];
    expect_full_products(model, torsion);
  }
}

TEST_F(FullProducts, CarryForcesThatAreNotFinite) {
  for (const auto& [first, second] : {std::pair{1, 0}, {0, 1}, {1, 1}}) {
    for (const double broken : BROKEN) {
      SCOPED_TRACE(::testing::Message() << broken << ", states " << first << " and " << second);
      hinge_model model(hinge_of(2, 7, first, second));
      model.set_end_forces({END1.P, broken, END1.MZ}, {broken, END2.MY, END2.MZ});
      expect_full_products(model, planar_stiffness(random));
    }
  }
}

TEST_F(FullProducts, CarryProductsThatOverflow) {
  // Gradients of 1e170: their squares are infinite. Of 1e308: their products with K are. Of 1e30: the singles of two
  // equations are.
  numbers bar(144, 0.0);
  bar[0] = bar[78] = 64.0;
  bar[6] = bar[72] = -64.0;
  for (const double capacity : {1e-170, 1e-308, 1e-30}) {
    for (const auto& [first, second] : {std::pair{1, 0}, {0, 1}, {1, 1}}) {
      for (int FS = 1; FS <= 3; ++FS) {
        SCOPED_TRACE(::testing::Message() << capacity << ", set " << FS << ", states " << first << " and " << second);
        HINGE_RECORD h = hinge_of(1, FS, first, second);
        h.CAP_P = h.CAP_MY = h.CAP_MZ = capacity;
        hinge_model model(h);
        model.set_end_forces(END1, END2);
        expect_full_products(model, planar_stiffness(random));
        if (FS == 1) expect_full_products(model, bar);
      }
    }
  }
}

TEST_F(FullProducts, CarryInversesThatOverflow) {
  // N^T K N of 1e-310 has an infinite inverse, whose products with the zeros of N are NaN.
  numbers positive = planar_stiffness(random);
  for (double& entry : positive) entry = std::fabs(entry);
  for (const int end : {1, 2}) {
    HINGE_RECORD h = hinge_of(3, 7, end == 1 ? 1 : 0, end == 2 ? 1 : 0);
    set_segments(end == 1 ? h.END1_SEG : h.END2_SEG, {1, 0, 0, 0});
    h.CAP_P = h.CAP_MY = h.CAP_MZ = 1e155;
    hinge_model model(h);
    model.set_end_forces(END1, END2);
    expect_full_products(model, positive);
  }
}
