// tensors_test.cpp: rotations of vectors and tensors, against hand formulas, triple products and invariants.
#include <gtest/gtest.h>

#include <array>

#include "finites/services.h"
#include "reference_matrix.h"

namespace {

constexpr double PI = 3.14159265358979323846;

// Rows: local axes turned by `angle` about global z.
DENSE turned_about_z(double angle) {
  DENSE R(3, 3);
  R(1, 1) = std::cos(angle);
  R(1, 2) = std::sin(angle);
  R(2, 1) = -std::sin(angle);
  R(2, 2) = std::cos(angle);
  R(3, 3) = 1.0;
  return R;
}

DENSE random_symmetric(std::mt19937_64& source) {
  DENSE T = random_matrix(source, 3, 3);
  for (int j = 1; j <= 3; ++j) {
    for (int i = j + 1; i <= 3; ++i) T(i, j) = T(j, i);
  }
  return T;
}

DENSE to_local(const DENSE& T, const DENSE& R) {
  DENSE out(3, 3);
  TENSEUR_G2L_DBL(T.data(), R.data(), out.data());
  return out;
}

DENSE to_global(const DENSE& T, const DENSE& R) {
  DENSE out(3, 3);
  TENSEUR_L2G_DBL(T.data(), R.data(), out.data());
  return out;
}

}  // namespace

TEST(Tensors, UniaxialStressInTurnedAxes) {
  // Mohr's circle: s cos^2, s sin^2 and -s sin cos in axes turned by 30 degrees.
  const DENSE R = turned_about_z(PI / 6.0);
  DENSE T(3, 3);
  T(1, 1) = 8.0;
  const DENSE local = to_local(T, R);
  EXPECT_NEAR(local(1, 1), 6.0, 1e-14);
  EXPECT_NEAR(local(2, 2), 2.0, 1e-14);
  EXPECT_NEAR(local(1, 2), -8.0 * std::sqrt(3.0) / 4.0, 1e-14);
  EXPECT_EQ(local(1, 2), local(2, 1));
  for (int i = 1; i <= 3; ++i) EXPECT_EQ(local(3, i), 0.0);
}

TEST(Tensors, AgreeWithTripleProductsForAnyMatrix) {
  std::mt19937_64 source(31);
  for (int trial = 0; trial < 200; ++trial) {
    const DENSE T = random_matrix(source, 3, 3), R = random_matrix(source, 3, 3), RT = transposed(R);
    const DENSE scale_local = exact_product(magnitudes(R), exact_product(magnitudes(T), magnitudes(RT)));
    const DENSE scale_global = exact_product(magnitudes(RT), exact_product(magnitudes(T), magnitudes(R)));
    expect_close("TENSEUR_G2L_DBL", to_local(T, R), exact_product(R, exact_product(T, RT)), scale_local, 8);
    expect_close("TENSEUR_L2G_DBL", to_global(T, R), exact_product(RT, exact_product(T, R)), scale_global, 8);
  }
}

TEST(Tensors, GoToLocalAxesAndBack) {
  std::mt19937_64 source(32);
  const DENSE T = random_symmetric(source), R = turned_about_z(0.7);
  const DENSE back = to_global(to_local(T, R), R);
  for (int i = 0; i < 9; ++i)
    EXPECT_NEAR(back.value[static_cast<std::size_t>(i)], T.value[static_cast<std::size_t>(i)], 1e-15);
}

TEST(Tensors, MayReturnIntoTheirOwnStorage) {
  std::mt19937_64 source(33);
  const DENSE T = random_symmetric(source), R = turned_about_z(-0.4);
  DENSE in_place = T;
  TENSEUR_G2L_DBL(in_place.data(), R.data(), in_place.data());
  EXPECT_EQ(in_place.value, to_local(T, R).value);
}

TEST(Tensors, AVectorTakesItsComponentsAlongTheRows) {
  const DENSE R = turned_about_z(PI / 2.0);  // local x is global y, local y is minus global x
  const double x = 1.0, y = 2.0, z = 3.0;
  double xl = 0.0, yl = 0.0, zl = 0.0;
  TRANS_VEC_G2L1_DBL(&x, &y, &z, R.data(), &xl, &yl, &zl);
  EXPECT_NEAR(xl, 2.0, 1e-15);
  EXPECT_NEAR(yl, -1.0, 1e-15);
  EXPECT_EQ(zl, 3.0);
}

TEST(Tensors, AVectorMayBeTurnedInPlace) {
  std::mt19937_64 source(34);
  const DENSE R = random_matrix(source, 3, 3), v = random_matrix(source, 3, 1);
  DENSE turned = v;
  TRANS_VEC_G2L1_DBL(&turned(1, 1), &turned(2, 1), &turned(3, 1), R.data(), &turned(1, 1), &turned(2, 1),
                     &turned(3, 1));
  expect_close("TRANS_VEC_G2L1_DBL", turned, exact_product(R, v), exact_product(magnitudes(R), magnitudes(v)), 4);
}
