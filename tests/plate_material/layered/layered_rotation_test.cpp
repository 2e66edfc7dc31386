// layered_rotation_test.cpp: vectors of thickness points between element and global axes.
#include "comparison.h"
#include "prepared_point.h"

using layered_reference::matrix3;
using layered_reference::real;
using layered_reference::vector5;
using layered_reference::vector6;
using support::seeded_random;

namespace {

void set_axes(const matrix3& axes) {
  for (int j = 1; j <= 3; ++j) {
    for (int i = 1; i <= 3; ++i) PLATEELEM.AXES(i, j) = static_cast<double>(axes(i - 1, j - 1));
  }
}

std::vector<double> local(const VECTOR<6>& v) {
  VECTOR<5> out;
  VEC6_TO_LOCAL5(PLATEELEM, v, out);
  return listed(out);
}

std::vector<double> stress_in_space(const VECTOR<5>& v) {
  VECTOR<6> out;
  VEC5_TO_GLOBAL6(PLATEELEM, v, out);
  return listed(out);
}

std::vector<double> strain_in_space(const VECTOR<5>& v) {
  VECTOR<6> out;
  EP5_TO_GLOBAL6(PLATEELEM, v, out);
  return listed(out);
}

}  // namespace

TEST(LayeredRotation, AxesOfSpaceChangeTheOrderAlone) {
  set_axes(matrix3::Identity());
  EXPECT_EQ(local({{1.0, 2.0, 3.0, 4.0, 5.0, 6.0}}), (std::vector<double>{1.0, 2.0, 4.0, 5.0, 6.0}));
  EXPECT_EQ(stress_in_space({{1.0, 2.0, 4.0, 5.0, 6.0}}), (std::vector<double>{1.0, 2.0, 0.0, 4.0, 5.0, 6.0}));
  EXPECT_EQ(strain_in_space({{1.0, 2.0, 4.0, 5.0, 6.0}}), (std::vector<double>{1.0, 2.0, -3.0, 4.0, 5.0, 6.0}));
}

TEST(LayeredRotation, QuarterTurnsByHand) {
  // x local = z global, y local = x global, z local = y global.
  matrix3 axes;
  axes << 0, 0, 1, 1, 0, 0, 0, 1, 0;
  set_axes(axes);
  // Local xx is global zz, yy is xx, xy is zx, xz is zy, yz is xy.
  EXPECT_EQ(local({{1.0, 2.0, 3.0, 4.0, 5.0, 6.0}}), (std::vector<double>{3.0, 1.0, 5.0, 6.0, 4.0}));
  EXPECT_EQ(stress_in_space({{1.0, 2.0, 4.0, 5.0, 6.0}}), (std::vector<double>{2.0, 0.0, 1.0, 6.0, 4.0, 5.0}));
  EXPECT_EQ(strain_in_space({{1.0, 2.0, 4.0, 5.0, 6.0}}), (std::vector<double>{2.0, -3.0, 1.0, 6.0, 4.0, 5.0}));
}

TEST(LayeredRotation, ShearsEnterAsTheyStandInAHalfRightAngle) {
  // A tensor (0, 0; xy 1) turned by 45 degrees has the direct parts 1 and -1: an engineering shear is not halved.
  const double h = 0.7071067811865476;
  matrix3 axes;
  axes << h, h, 0, -h, h, 0, 0, 0, 1;
  set_axes(axes);
  EXPECT_CLOSE(local({{0.0, 0.0, 0.0, 1.0, 0.0, 0.0}}), (std::vector<double>{1.0, -1.0, 0.0, 0.0, 0.0}), 1.0, 4);
  EXPECT_CLOSE(strain_in_space({{0.0, 0.0, 1.0, 0.0, 0.0}}), (std::vector<double>{-1.0, 1.0, 0.0, 0.0, 0.0, 0.0}), 1.0,
               4);
}

TEST(LayeredRotation, RandomAxes) {
  seeded_random random(711);
  for (int trial = 0; trial < 200; ++trial) {
    const matrix3 axes = layered_reference::random_axes(random);
    set_axes(axes);
    const std::vector<double> six = random.vector(6, 1.0), five = random.vector(5, 1.0);
    VECTOR<6> v6{};
    VECTOR<5> v5{};
    std::copy(six.begin(), six.end(), v6.V);
    std::copy(five.begin(), five.end(), v5.V);
    const vector6 w6 = rounded(v6);
    const vector5 w5 = rounded(v5);
    EXPECT_CLOSE(local(v6), layered_reference::listed(layered_reference::to_local(w6, axes)), 3.0, 16);
    EXPECT_CLOSE(stress_in_space(v5), layered_reference::listed(layered_reference::to_global(w5, axes)), 3.0, 16);
    const vector6 strain = layered_reference::to_global(w5, axes, -(w5(0) + w5(1)));
    EXPECT_CLOSE(strain_in_space(v5), layered_reference::listed(strain), 3.0, 16);
    EXPECT_CLOSE(static_cast<double>(strain.head(3).sum()), 0.0, 3.0, 16) << "no change of volume";
  }
}

TEST(LayeredRotation, ThereAndBack) {
  seeded_random random(712);
  for (int trial = 0; trial < 50; ++trial) {
    set_axes(layered_reference::random_axes(random));
    const std::vector<double> five = random.vector(5, 1.0);
    VECTOR<5> v{}, back{};
    std::copy(five.begin(), five.end(), v.V);
    VECTOR<6> space;
    VEC5_TO_GLOBAL6(PLATEELEM, v, space);
    VEC6_TO_LOCAL5(PLATEELEM, space, back);
    EXPECT_CLOSE(listed(back), five, 3.0, 32);
    EP5_TO_GLOBAL6(PLATEELEM, v, space);
    VEC6_TO_LOCAL5(PLATEELEM, space, back);
    EXPECT_CLOSE(listed(back), five, 3.0, 32);
  }
}
