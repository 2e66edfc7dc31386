// principal_values_test.cpp: PRINCIPAUX_PLA against the transformation of stress, the invariants and the rule that
// decides when a surface has a direction.
#include "plate_results/principal_values.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "comparison.h"
#include "guarded_buffer.h"
#include "random_shapes.h"

namespace {

using support::guarded_buffer;
using support::seeded_random;

constexpr double FLOOR = 1e-09;
constexpr double PI = 3.14159265358979323846;

struct stress {
  double x, y, xy;
};

struct principal {
  double angle, s1, s2, tau, equivalent;
};

// Columns of the three surfaces: stresses in, five values out.
struct surface {
  int in, out;
};
constexpr surface TOP{7, 10}, MID{18, 21}, BOTTOM{29, 32};

// A record of 90 of which only the stresses are input; the rest holds the guard pattern.
class record {
 public:
  record() : buffer_(90) {
    for (const surface s : {TOP, MID, BOTTOM}) set(s, {0.0, 0.0, 0.0});
    set_shear(0.0, 0.0);
  }
  void set(surface s, stress v) {
    double* column = buffer_.data() + s.in - 1;
    column[0] = v.x;
    column[1] = v.y;
    column[2] = v.xy;
  }
  void set_shear(double xz, double yz) {
    buffer_.data()[46] = xz;
    buffer_.data()[47] = yz;
  }
  void complete() { PRINCIPAUX_PLA(buffer_.data(), 90); }
  principal of(surface s) const {
    return {buffer_(s.out), buffer_(s.out + 1), buffer_(s.out + 2), buffer_(s.out + 3), buffer_(s.out + 4)};
  }
  guarded_buffer& buffer() { return buffer_; }

 private:
  guarded_buffer buffer_;
};

// von Mises from the components, without principal values.
double von_mises(const stress& s) { return std::sqrt(s.x * s.x + s.y * s.y - s.x * s.y + 3.0 * s.xy * s.xy); }

double size_of(const stress& s) { return std::fabs(s.x) + std::fabs(s.y) + std::fabs(s.xy); }

// Turned by the angle the stress has no shear, and the normal stresses are the principal ones, the larger first.
void expect_principal(const principal& p, const stress& s) {
  const double size = size_of(s);
  const double c = std::cos(p.angle), n = std::sin(p.angle);
  const double along = s.x * c * c + s.y * n * n + 2.0 * s.xy * n * c;
  const double across = s.x * n * n + s.y * c * c - 2.0 * s.xy * n * c;
  const double shear = (s.y - s.x) * n * c + s.xy * (c * c - n * n);
  EXPECT_CLOSE(shear, 0.0, size, 10.0);
  EXPECT_CLOSE(p.s1, along, size, 10.0);
  EXPECT_CLOSE(p.s2, across, size, 10.0);
  EXPECT_GE(p.s1, p.s2);
  EXPECT_CLOSE(p.tau, 0.5 * (p.s1 - p.s2), size, 10.0);
  EXPECT_LE(std::fabs(p.angle), PI / 2.0);
}

}  // namespace

TEST(PrincipalValues, TurnTheStressSoThatItsShearVanishes) {
  seeded_random random(21);
  for (int i = 0; i < 2000; ++i) {
    record r;
    const double magnitude = random.log_uniform(1e-6, 1e9);
    for (const surface s : {TOP, MID, BOTTOM}) {
      const std::vector<double> v = random.vector(3, magnitude);
      r.set(s, {v[0], v[1], v[2]});
      r.complete();
      expect_principal(r.of(s), {v[0], v[1], v[2]});
    }
  }
}

TEST(PrincipalValues, EquivalentStressIsThatOfTheInvariants) {
  seeded_random random(22);
  for (int i = 0; i < 2000; ++i) {
    record r;
    const std::vector<double> v = random.vector(3, 100.0);
    const stress s{v[0], v[1], v[2]};
    for (const surface face : {TOP, MID, BOTTOM}) r.set(face, s);
    r.complete();
    for (const surface face : {TOP, MID, BOTTOM}) EXPECT_CLOSE(r.of(face).equivalent, von_mises(s), size_of(s), 20.0);
  }
}

TEST(PrincipalValues, EachSurfaceKeepsToItsOwnColumns) {
  const stress values[3] = {{1.0, 2.0, 3.0}, {-40.0, 50.0, 60.0}, {700.0, -800.0, -900.0}};
  const surface faces[3] = {TOP, MID, BOTTOM};
  record r;
  for (int i = 0; i < 3; ++i) r.set(faces[i], values[i]);
  r.complete();
  for (int i = 0; i < 3; ++i) expect_principal(r.of(faces[i]), values[i]);
}

// The deviator alone says whether there is a direction: the mean of a push and an equal pull is zero.
TEST(PrincipalValues, OfAPushAlongAndAnEqualPullAcrossPointAcross) {
  record r;
  for (const surface s : {TOP, MID, BOTTOM}) r.set(s, {-100.0, 100.0, 0.0});
  r.complete();
  for (const surface s : {TOP, MID, BOTTOM}) {
    EXPECT_EQ(r.of(s).angle, PI / 2.0);
    EXPECT_EQ(r.of(s).s1, 100.0);
    EXPECT_EQ(r.of(s).s2, -100.0);
  }
}

TEST(PrincipalValues, WriteFifteenColumnsAndNothingElse) {
  seeded_random random(23);
  guarded_buffer buffer(90);
  buffer.set_input(random.vector(90, 50.0));
  PRINCIPAUX_PLA(buffer.data(), 90);
  std::vector<int> written = support::range(10, 14);
  for (const int first : {21, 32}) {
    for (const int column : support::range(first, first + 4)) written.push_back(column);
  }
  EXPECT_EQ(buffer.changed(), written);
}

TEST(PrincipalValues, DoNotReadTheLengthNorOtherColumns) {
  record r;  // all but the stresses is a pattern that would spread
  r.set(TOP, {1.0, 2.0, 3.0});
  PRINCIPAUX_PLA(r.buffer().data(), -12345);
  for (const surface s : {TOP, MID, BOTTOM}) {
    const principal p = r.of(s);
    for (const double value : {p.angle, p.s1, p.s2, p.tau, p.equivalent}) EXPECT_TRUE(std::isfinite(value));
  }
}

TEST(PrincipalValues, MidSurfaceAddsTheTransverseShearOutsideTheRoot) {
  record r;
  const stress plane{30.0, -20.0, 15.0};
  for (const surface s : {TOP, MID, BOTTOM}) r.set(s, plane);
  r.set_shear(-3.0, 4.0);
  r.complete();
  const double added = von_mises(plane) + std::sqrt(75.0);
  EXPECT_CLOSE(r.of(MID).equivalent, added, added, 10.0);
  EXPECT_GT(r.of(MID).equivalent, std::sqrt(von_mises(plane) * von_mises(plane) + 75.0) * 1.05);
  // The faces have no transverse shear.
  EXPECT_CLOSE(r.of(TOP).equivalent, von_mises(plane), von_mises(plane), 10.0);
  EXPECT_CLOSE(r.of(BOTTOM).equivalent, von_mises(plane), von_mises(plane), 10.0);
}

TEST(PrincipalValues, TransverseShearHasNoPartInTheScaleOfDirections) {
  record r;
  r.set(TOP, {0.0, 0.0, 1.0});
  r.set_shear(1e12, 1e12);
  r.complete();
  EXPECT_DOUBLE_EQ(r.of(TOP).angle, 0.5 * std::atan2(2.0, 0.0));
}

// ------------------------------------------------------------------------------------- when a surface has a direction

TEST(PrincipalDirection, ScaleAtTheFloorGivesNoDirectionAndJustAboveItDoes) {
  for (const surface s : {TOP, MID, BOTTOM}) {
    record at, above;
    at.set(s, {0.0, 0.0, -FLOOR});
    above.set(s, {0.0, 0.0, -std::nextafter(FLOOR, 1.0)});
    at.complete();
    above.complete();
    EXPECT_EQ(at.of(s).angle, 0.0);
    EXPECT_EQ(above.of(s).angle, -PI / 4.0);
    EXPECT_CLOSE(at.of(s).s1, FLOOR, FLOOR, 4.0);
    EXPECT_CLOSE(at.of(s).equivalent, std::sqrt(3.0) * FLOOR, FLOOR, 10.0);
  }
}

// The largest of the six differences and shears is the scale of all three surfaces.
TEST(PrincipalDirection, EachOfTheSixValuesCanBeTheScale) {
  for (const surface giver : {TOP, MID, BOTTOM}) {
    for (const bool by_shear : {false, true}) {
      for (const surface s : {TOP, MID, BOTTOM}) {
        if (s.in == giver.in) continue;
        const double scale = 4.0;
        const stress large = by_shear ? stress{0.0, 0.0, -scale} : stress{1.0, 1.0 + scale, 0.0};
        const double limit = FLOOR * scale;  // a power of two: the quotient is the floor itself
        record at, above;
        at.set(giver, large);
        above.set(giver, large);
        at.set(s, {0.0, 0.0, limit});
        above.set(s, {0.0, 0.0, std::nextafter(limit, 1.0)});
        at.complete();
        above.complete();
        EXPECT_EQ(at.of(s).angle, 0.0) << "columns " << giver.in << " and " << s.in << ", shear " << by_shear;
        EXPECT_EQ(above.of(s).angle, PI / 4.0) << "columns " << giver.in << " and " << s.in << ", shear " << by_shear;
      }
    }
  }
}

TEST(PrincipalDirection, ADifferenceCountsAsAShearDoes) {
  record at, above;
  for (record* r : {&at, &above}) r->set(MID, {0.0, 0.0, 1.0});
  at.set(TOP, {0.0, FLOOR, 0.0});
  above.set(TOP, {0.0, std::nextafter(FLOOR, 1.0), 0.0});
  at.complete();
  above.complete();
  EXPECT_EQ(at.of(TOP).angle, 0.0);
  EXPECT_EQ(above.of(TOP).angle, PI / 2.0);
}

TEST(PrincipalDirection, ASurfaceBelowTheScaleStillHasPrincipalValues) {
  record r;
  r.set(MID, {0.0, 0.0, 1e6});
  r.set(BOTTOM, {3e-4, 0.0, 2e-4});
  r.complete();
  EXPECT_EQ(r.of(BOTTOM).angle, 0.0);
  EXPECT_CLOSE(r.of(BOTTOM).s1, 4e-4, 4e-4, 10.0);   // 1.5 + sqrt(1.5^2 + 2^2)
  EXPECT_CLOSE(r.of(BOTTOM).s2, -1e-4, 4e-4, 10.0);  // 1.5 - 2.5
}

TEST(PrincipalDirection, IsHalfTheAngleOfTheDoubledShear) {
  record r;
  r.set(TOP, {5.0, 1.0, 3.0});
  r.set(MID, {1.0, 5.0, 3.0});
  r.set(BOTTOM, {1.0, 5.0, -3.0});
  r.complete();
  EXPECT_DOUBLE_EQ(r.of(TOP).angle, 0.5 * std::atan2(6.0, 4.0));
  EXPECT_DOUBLE_EQ(r.of(MID).angle, 0.5 * std::atan2(6.0, -4.0));
  EXPECT_DOUBLE_EQ(r.of(BOTTOM).angle, 0.5 * std::atan2(-6.0, -4.0));
}

// ------------------------------------------------------------------------------------------------ named cases

TEST(PrincipalEdgeCases, UniaxialStress) {
  record r;
  r.set(TOP, {100.0, 0.0, 0.0});
  r.complete();
  const principal p = r.of(TOP);
  EXPECT_EQ(p.angle, 0.0);
  EXPECT_EQ(p.s1, 100.0);
  EXPECT_EQ(p.s2, 0.0);
  EXPECT_EQ(p.tau, 50.0);
  EXPECT_EQ(p.equivalent, 100.0);
}

TEST(PrincipalEdgeCases, EqualBiaxialStressBesideAnotherSurfaceHasAngleZero) {
  record r;
  r.set(TOP, {100.0, 100.0, 0.0});
  r.set(BOTTOM, {100.0, 0.0, 0.0});
  r.complete();
  const principal p = r.of(TOP);
  EXPECT_EQ(p.angle, 0.0);
  EXPECT_EQ(p.s1, 100.0);
  EXPECT_EQ(p.s2, 100.0);
}

TEST(PrincipalEdgeCases, PureShear) {
  record r;
  r.set(TOP, {0.0, 0.0, 10.0});
  r.complete();
  const principal p = r.of(TOP);
  EXPECT_EQ(p.angle, PI / 4.0);
  EXPECT_EQ(p.s1, 10.0);
  EXPECT_EQ(p.s2, -10.0);
  EXPECT_EQ(p.tau, 10.0);
  EXPECT_CLOSE(p.equivalent, std::sqrt(300.0), 10.0, 4.0);
}

TEST(PrincipalEdgeCases, TinyStressesHaveNoDirectionButPrincipalValues) {
  record r;
  for (const surface s : {TOP, MID, BOTTOM}) r.set(s, {1e-10, 1e-10, 1e-10});
  r.complete();
  for (const surface s : {TOP, MID, BOTTOM}) {
    EXPECT_EQ(r.of(s).angle, 0.0);
    EXPECT_CLOSE(r.of(s).s1, 2e-10, 2e-10, 4.0);
    EXPECT_CLOSE(r.of(s).s2, 0.0, 2e-10, 4.0);
    EXPECT_CLOSE(r.of(s).equivalent, 2e-10, 2e-10, 4.0);
  }
}

TEST(PrincipalEdgeCases, MidSurfaceOfAThickElementWithTransverseShearAlone) {
  record r;
  r.set_shear(3.0, 4.0);
  r.complete();
  EXPECT_EQ(r.of(MID).equivalent, std::sqrt(75.0));
  EXPECT_EQ(r.of(MID).s1, 0.0);
  EXPECT_EQ(r.of(TOP).equivalent, 0.0);
  EXPECT_EQ(r.of(BOTTOM).equivalent, 0.0);
}
