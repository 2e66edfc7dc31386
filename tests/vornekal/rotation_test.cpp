// rotation_test.cpp: local axes of sound members, by hand and by the laws of a rotation.
#include <gtest/gtest.h>

#include "finites/fields.h"
#include "rotation_case.h"

namespace {

using rotation_case::blocks;
using rotation_case::member;
using rotation_case::NOT_A_NUMBER;
using rotation_case::rotation_of;
using support::point;
using support::seeded_random;

point row(const std::vector<double>& R, std::size_t i) { return {R[i], R[12 + i], R[24 + i]}; }

double product(const point& a, const point& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

point random_point(seeded_random& random, double size) {
  return {random.uniform(-size, size), random.uniform(-size, size), random.uniform(-size, size)};
}

}  // namespace

TEST(MemberRotation, AlongXWithN1AlongMinusYIsTheGlobalTriad) {
  // x cross n1 = (1,0,0) x (0,-1,0) = (0,0,-1).
  EXPECT_CLOSE(rotation_of(member({1, 2, 3}, {5, 2, 3}, {0, -2, 0})), blocks({1, 0, 0}, {0, -1, 0}, {0, 0, -1}), 1.0,
               4);
  // (1,0,0) x (0,1,0) = (0,0,1).
  EXPECT_CLOSE(rotation_of(member({1, 2, 3}, {5, 2, 3}, {0, 7, 0})), rotation_case::identity(), 1.0, 4);
}

TEST(MemberRotation, AlongZWithN1) {
  // (0,0,1) x (1,0,0) = (0,1,0); y = z x x = (0,1,0) x (0,0,1) = (1,0,0).
  EXPECT_CLOSE(rotation_of(member({1, 2, 3}, {1, 2, 8}, {3, 0, 0})), blocks({0, 0, 1}, {1, 0, 0}, {0, 1, 0}), 1.0, 4);
}

TEST(MemberRotation, AgainstXWithN1) {
  // (-1,0,0) x (0,1,0) = (0,0,-1); y = (0,0,-1) x (-1,0,0) = (0,1,0).
  EXPECT_CLOSE(rotation_of(member({5, 0, 0}, {1, 0, 0}, {0, 1, 0})), blocks({-1, 0, 0}, {0, 1, 0}, {0, 0, -1}), 1.0, 4);
}

TEST(MemberRotation, ObliqueWithN1ThatIsNotSquareToIt) {
  // x = (2,1,2)/3, n1 = (1,0,0): x cross n1 = (0,2,-1)/3, z = (0,2,-1)/sqrt(5);
  // y = z cross x = (2*2+1*1, -1*2-0, 0-2*2)/(3 sqrt(5)) = (5,-2,-4)/(3 sqrt(5)).
  const double r = std::sqrt(5.0);
  EXPECT_CLOSE(rotation_of(member({1, 1, 1}, {5, 3, 5}, {1, 0, 0})),
               blocks({2 / 3.0, 1 / 3.0, 2 / 3.0}, {5 / (3 * r), -2 / (3 * r), -4 / (3 * r)}, {0, 2 / r, -1 / r}), 1.0,
               8);
}

TEST(MemberRotation, WithoutN1GlobalZTakesItsPlace) {
  // x = (3,4,0)/5: x cross (0,0,1) = (4,-3,0)/5; y = z cross x = (4*(0)-..., ...) = (0,0,(16+9)/25) = (0,0,1).
  const auto expected = blocks({0.6, 0.8, 0}, {0, 0, 1}, {0.8, -0.6, 0});
  for (const point& n1 : {point{0, 0, 0}, point{NOT_A_NUMBER, 0, 1}, point{0, rotation_case::INFINITE, 0},
                          point{-6, -8, 0}, point{3e-200, 4e-200, 0}, point{3, 4, 1e-7}}) {
    EXPECT_CLOSE(rotation_of(member({0, 0, 0}, {3, 4, 0}, n1)), expected, 1.0, 8) << n1[0] << " " << n1[1];
  }
}

TEST(MemberRotation, WithoutN1AnUprightMemberTakesGlobalY) {
  // (0,0,1) x (0,1,0) = (-1,0,0); y = (-1,0,0) x (0,0,1) = (0*1-0*0, 0*0+1*1, 0) = (0,1,0).
  for (const point& n1 : {point{0, 0, 0}, point{0, 0, 5}, point{0, NOT_A_NUMBER, 0}}) {
    EXPECT_CLOSE(rotation_of(member({0, 0, 0}, {0, 0, 2}, n1)), blocks({0, 0, 1}, {0, 1, 0}, {-1, 0, 0}), 1.0, 4);
  }
  // Downwards: (0,0,-1) x (0,1,0) = (1,0,0); y = (1,0,0) x (0,0,-1) = (0,1,0).
  EXPECT_CLOSE(rotation_of(member({0, 0, 2}, {0, 0, 0}, {0, 0, 0})), blocks({0, 0, -1}, {0, 1, 0}, {1, 0, 0}), 1.0, 4);
  // Direction cosines 0.89 and 0.91 with Z lie on either side of the change: z is across the direction that was taken.
  for (const double cosine : {0.89, 0.91, -0.89, -0.91}) {
    const double rest = std::sqrt(1 - cosine * cosine);
    const std::vector<double> R = rotation_of(member({0, 0, 0}, {rest * 0.6, rest * 0.8, cosine}, {0, 0, 0}));
    const point z = row(R, 2);
    EXPECT_EQ(z[std::fabs(cosine) > 0.9 ? 1 : 2], 0.0) << cosine;
  }
}

TEST(MemberRotation, AnN1IsAlongTheMemberBelowAMillionth) {
  // n1 = (3, 4, -5 s) / 5 has the sine s with x = (3, 4, 0) / 5. As long as it counts, x cross n1 is along
  // (-4, 3, 0); global Z in its place turns z round.
  const auto taken = blocks({0.6, 0.8, 0}, {0, 0, -1}, {-0.8, 0.6, 0});
  const auto dropped = blocks({0.6, 0.8, 0}, {0, 0, 1}, {0.8, -0.6, 0});
  for (const double s : {1e-3, 1e-5, 2e-6, 5e-7, 1e-8}) {
    // Rounding of 1 in x cross n1 is eps / s of it.
    EXPECT_CLOSE(rotation_of(member({0, 0, 0}, {3, 4, 0}, {3, 4, -5 * s})), s > 1e-6 ? taken : dropped, 1.0, 8 / s)
        << s;
  }
}

// Without n1 a member is upright above the cosine 0.9 with Z: z is then across Y, otherwise across Z.
TEST(MemberRotation, UprightBeginsAtTheCosineItself) {
  for (const double off : {1e-7, 2e-8, 9e-9, 1e-9, 1e-12}) {
    for (const double cosine : {0.9 + off, 0.9 - off, -0.9 - off, -0.9 + off}) {
      const double rest = std::sqrt(1 - cosine * cosine);
      const point z = row(rotation_of(member({0, 0, 0}, {rest * 0.6, rest * 0.8, cosine}, {0, 0, 0})), 2);
      EXPECT_EQ(z[std::fabs(cosine) > 0.9 ? 1 : 2], 0.0) << cosine;
      EXPECT_NE(z[std::fabs(cosine) > 0.9 ? 2 : 1], 0.0) << cosine;
    }
  }
  // Neighbouring members, whose x comes out within two or three units of 0.9.
  double rest = std::sqrt(1 - 0.9 * 0.9);
  for (int i = 0; i < 16; ++i) rest = std::nextafter(rest, 0.0);
  for (int i = 0; i < 32; ++i, rest = std::nextafter(rest, 1.0)) {
    const std::vector<double> R = rotation_of(member({0, 0, 0}, {rest, 0, 0.9}, {0, 0, 0}));
    EXPECT_EQ(row(R, 2)[row(R, 0)[2] > 0.9 ? 1 : 2], 0.0) << i;
  }
}

// x = (1, 0, 0) and n1 = (1, t, 0): the sine is t / sqrt(1 + t t), without a rounding in x cross n1.
TEST(MemberRotation, AnN1OfExactlyAMillionthGivesNoDirection) {
  double t = 1e-6 * (1.0 + 0.5e-12);
  for (int i = 0; i < 8; ++i) t = std::nextafter(t, 0.0);
  int exact = 0;
  for (int i = 0; i < 16; ++i, t = std::nextafter(t, 1.0)) {
    const double sine = t / std::sqrt(1.0 + t * t);
    // Taken: (1,0,0) x (0,1,0) = (0,0,1). Dropped: (1,0,0) x (0,0,1) = (0,-1,0), y = (0,-1,0) x (1,0,0) = (0,0,1).
    const std::vector<double> expected =
        sine > 1e-6 ? rotation_case::identity() : blocks({1, 0, 0}, {0, 0, 1}, {0, -1, 0});
    EXPECT_CLOSE(rotation_of(member({0, 0, 0}, {2, 0, 0}, {1, t, 0})), expected, 1.0, 2) << i;
    if (sine == 1e-6) ++exact;
  }
  EXPECT_GT(exact, 0);
}

TEST(MemberRotation, AShortN1AndFarNodesLoseNothing) {
  const auto expected = rotation_of(member({0, 0, 0}, {2, 1, 2}, {1, 0, 0}));
  EXPECT_CLOSE(rotation_of(member({0, 0, 0}, {2, 1, 2}, {1e-300, 0, 0})), expected, 1.0, 4);
  EXPECT_CLOSE(rotation_of(member({0, 0, 0}, {2, 1, 2}, {1e300, 0, 0})), expected, 1.0, 4);
  EXPECT_CLOSE(rotation_of(member({0, 0, 0}, {2e300, 1e300, 2e300}, {1, 0, 0})), expected, 1.0, 4);
  // (0,1,0) x (1,0,0) = (0,0,-1); y = (0,0,-1) x (0,1,0) = (1,0,0). The length itself would overflow.
  EXPECT_CLOSE(rotation_of(member({0, -1e308, 0}, {0, 1e308, 0}, {1, 0, 0})), blocks({0, 1, 0}, {1, 0, 0}, {0, 0, -1}),
               1.0, 4);
  EXPECT_CLOSE(rotation_of(member({0, 0, 0}, {2e-300, 1e-300, 2e-300}, {1, 0, 0})), expected, 1.0, 4);
}

TEST(MemberRotation, IntegersAreTruncated) {
  member m({0, 0, 0}, {3, 4, 0}, {0, 0, 1});
  const auto expected = rotation_of(m);
  m.word(rotation_case::ENTRY + MEMBER_NODE_1) += 0.9;
  m.word(rotation_case::ENTRY + MEMBER_NODE_2) += 0.999;
  EXPECT_EQ(rotation_of(m), expected);
}

TEST(MemberRotation, IsARotationWhoseRowsAreTheLocalAxes) {
  seeded_random random(5101);
  for (int i = 0; i < 300; ++i) {
    const point from = random_point(random, 100), to = random_point(random, 100), n1 = random_point(random, 3);
    const std::vector<double> R = rotation_of(member(from, to, n1));
    const point x = row(R, 0), y = row(R, 1), z = row(R, 2);
    EXPECT_EQ(R, blocks(x, y, z));  // four equal blocks and zeros
    for (const double square : {product(x, x), product(y, y), product(z, z)}) EXPECT_CLOSE(square, 1.0, 1.0, 8);
    for (const double angle : {product(x, y), product(y, z), product(z, x)}) EXPECT_CLOSE(angle, 0.0, 1.0, 8);
    const point xy{x[1] * y[2] - x[2] * y[1], x[2] * y[0] - x[0] * y[2], x[0] * y[1] - x[1] * y[0]};
    EXPECT_CLOSE(product(xy, z), 1.0, 1.0, 16);  // determinant
    const point d{to[0] - from[0], to[1] - from[1], to[2] - from[2]};
    const double L = std::sqrt(product(d, d));
    EXPECT_CLOSE(product(x, d), L, L, 16);
    // z is across n1, and n1 lies on the positive side of y: y . n1 = sine > 0.
    EXPECT_CLOSE(product(z, n1), 0.0, 10.0, 16);
    EXPECT_GT(product(y, n1), 0.0);
  }
}
