// beam_not_finite_test.cpp: infinities and NaN of a beam go where the full matrices and the full products carry them.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "broken_values.h"
#include "common/finiteness.h"
#include "comparison.h"
#include "finites/finites.h"
#include "hinge_recorder.h"
#include "member_cases.h"

namespace {

using member_cases::random_beam;
using support::BROKEN;
using support::expect_same_places;
using support::frame_model;
using support::full_product;
using support::member_description;
using support::member_matrices;
using support::seeded_random;

const std::vector<double> ZEROS(144, 0.0);

// By its own routine, in local axes. No reductions, no factors of inertia.
std::vector<double> geometric(const member_description& m) {
  const double I1 = m.i1 * m.factor_i1, I2 = m.i2 * m.factor_i2;
  const std::int32_t rigid = 0, rel_y = m.release[1], rel_z = m.release[2];
  std::vector<double> KG(144);
  KSTIFB_GEOM(&m.axial_force, &m.length, &m.e1, &m.e2, &I1, &I2, &rigid, &rigid, &rel_y, &rel_z, &m.fixity_y[0],
              &m.fixity_z[0], &m.fixity_y[1], &m.fixity_z[1], KG.data());
  return KG;
}

std::vector<double> added(std::vector<double> a, const std::vector<double>& b) {
  for (std::size_t i = 0; i < a.size(); ++i) a[i] += b[i];
  return a;
}

// A transformation with one entry broken: in each block of one rotation, beside the blocks, or in the second one.
struct transformations {
  std::vector<double> T, T2;
  int second;
};

std::vector<transformations> broken_transformations(seeded_random& random, double broken) {
  const std::vector<double> sound = member_cases::node_rotation(support::random_rotation(random));
  support::rotation R = support::random_rotation(random);
  R[1][2] = broken;
  std::vector<double> beside = sound, second = member_cases::full_transformation(random);
  beside[4] = broken;
  const std::vector<double> unused = second;
  second[30] = broken;
  return {{member_cases::node_rotation(R), unused, 0}, {beside, unused, 0}, {beside, unused, 1}, {sound, second, 1}};
}

class BeamNotFinite : public ::testing::Test {
 protected:
  void SetUp() override { hinge_recorder::reset(); }
};

}  // namespace

TEST_F(BeamNotFinite, TheGeometricMatrixFollowsATransformationAlsoWhereItIsZero) {
  // T' 0 T is zero for a finite T alone. Kinds without a geometric matrix turn nothing.
  seeded_random random(4701);
  for (const double broken : BROKEN) {
    for (const transformations& t : broken_transformations(random, broken)) {
      for (const double force : {0.0, -3e4}) {
        member_description m = random_beam(random);
        m.axial_force = force;
        frame_model model({m});
        model.set_rotation(t.T);
        model.set_second_transformation(t.second, t.T2);
        for (const int kind : {0, 1, 2, 3, 4}) {
          for (const int mode : {0, 1, 2, -1}) {
            SCOPED_TRACE(::testing::Message() << broken << ", kind " << kind << ", mode " << mode << ", P " << force);
            model.set_kind(kind);
            const std::vector<double> KG = model.beam(mode).KG;
            if ((kind != 1 && kind != 3) || mode == 1) {
              EXPECT_EQ(KG, ZEROS);
              continue;
            }
            std::vector<double> expected = full_product(t.T.data(), mode == 0 ? geometric(m) : ZEROS, 12);
            if (t.second > 0) expected = full_product(t.T2.data(), expected, 12);
            expect_same_places(KG, expected);
          }
        }
      }
    }
  }
}

TEST_F(BeamNotFinite, TheGeometricMatrixThatIsNotBuiltStaysZeroUnderFiniteTransformations) {
  seeded_random random(4702);
  frame_model model({random_beam(random)});
  model.set_second_transformation(1, member_cases::full_transformation(random));
  for (const std::vector<double>& T :
       {member_cases::node_rotation(support::random_rotation(random)), member_cases::full_transformation(random)}) {
    model.set_rotation(T);
    for (const int kind : {1, 3}) {
      model.set_kind(kind);
      for (const int mode : {0, 2}) EXPECT_EQ(model.beam(mode).KG, ZEROS) << kind << ", " << mode;
    }
  }
}

TEST_F(BeamNotFinite, ReleasesCarryValuesToEveryEntry) {
  // The condensation of the full matrix: the product with a zero is NaN.
  seeded_random random(4703);
  const std::int32_t order = 12;
  for (const double broken : BROKEN) {
    for (double member_description::*field :
         {&member_description::area, &member_description::i1, &member_description::i2, &member_description::j,
          &member_description::e2, &member_description::length}) {
      for (const int end : {1, 2}) {
        member_description m = random_beam(random);
        m.*field = broken;
        std::vector<double> expected = frame_model({m}).beam(1).K;
        for (const std::int32_t d : {2, 3}) {
          const std::int32_t freedom = end == 1 ? d : d + 6;
          RELEASE_DOF(&freedom, expected.data(), &order);
        }
        m.release = {0, end, end, 0};
        frame_model model({m});
        expect_same_places(model.beam(1).K, expected);
        expect_same_places({model.record().K11_COPY}, {expected[0]});
        const std::vector<double> T = member_cases::node_rotation(support::random_rotation(random));
        model.set_rotation(T);
        expect_same_places(model.beam(2).K, full_product(T.data(), expected, 12));
      }
    }
  }
}

TEST_F(BeamNotFinite, TheAxialForceMultipliesZerosToo) {
  seeded_random random(4704);
  for (const double broken : BROKEN) {
    member_description m = random_beam(random);
    m.release = {0, 1, 0, 0};
    m.fixity_z = {1.0, 0.0};
    const std::vector<double> elastic = frame_model({m}).beam(1).K;
    m.axial_force = broken;
    const std::vector<double> KG = geometric(m);
    for (const double entry : KG) EXPECT_TRUE(std::isnan(entry) || std::isinf(entry));
    frame_model model({m});
    const std::vector<double> T = member_cases::node_rotation(support::random_rotation(random));
    model.set_rotation(T);
    for (const int kind : {1, 3}) {
      model.set_kind(kind);
      const member_matrices actual = model.beam(0);
      expect_same_places(actual.KG, full_product(T.data(), KG, 12));
      expect_same_places(actual.K, full_product(T.data(), kind == 1 ? added(elastic, KG) : elastic, 12));
    }
  }
}

TEST_F(BeamNotFinite, TheElasticStiffnessThatIsStoredHasEveryProductOfTheForce) {
  // In local axes, where the zeros times the force show.
  for (const double broken : BROKEN) {
    member_description m;
    m.axial_force = broken;
    frame_model model({m});
    model.set_kind(1);
    model.set_members_yield(1);
    model.beam(0);
    for (const double entry : model.hinge().K_ELASTIC.V) EXPECT_FALSE(std::isfinite(entry)) << broken;
    EXPECT_TRUE(std::isnan(model.hinge().K_ELASTIC(4, 1))) << broken;
  }
}

TEST_F(BeamNotFinite, ALengthReachesTheGeometricMatrixWithItsReleases) {
  seeded_random random(4705);
  for (const double broken : {0.0, BROKEN[0], BROKEN[1], BROKEN[2]}) {
    member_description m = random_beam(random);
    m.length = broken;
    m.axial_force = 2e4;
    m.fixity_y = {0.0, 1.0};
    m.release = {0, 0, 2, 0};
    frame_model model({m});
    model.set_kind(3);
    const std::vector<double> T = member_cases::node_rotation(support::random_rotation(random));
    model.set_rotation(T);
    expect_same_places(model.beam(0).KG, full_product(T.data(), geometric(m), 12));
  }
}

TEST_F(BeamNotFinite, HingesReachTheSolversAxesWithEveryProduct) {
  seeded_random random(4706);
  const member_description m = random_beam(random);
  frame_model model({m});
  const std::vector<double> elastic = model.beam(1).K;
  model.set_kind(1);
  model.set_members_yield(1);
  const std::vector<double> T = member_cases::node_rotation(support::random_rotation(random));
  model.set_rotation(T);
  for (const double broken : BROKEN) {
    for (std::size_t entry = 0; entry < 144; entry += 7) {
      std::vector<double> KP = random.vector(144, 1e3);
      KP[entry] = broken;
      hinge_recorder::prepared_KP() = KP;
      SCOPED_TRACE(::testing::Message() << broken << " at place " << entry + 1);
      expect_same_places(model.beam(2).K, full_product(T.data(), added(elastic, KP), 12));
    }
  }
}

TEST_F(BeamNotFinite, EntriesWhoseSumOverflowsAreNumbersAllTheSame) {
  // E A / L twice on the diagonal: more than the largest number. Along an axis of the solver nothing is added up.
  member_description m;
  m.e1 = 1.0;
  m.length = 1.0;
  m.area = 1.2e308;
  m.i1 = 1.0;
  frame_model model({m});
  const std::vector<double> local = model.beam(1).K;
  model.set_rotation(member_cases::node_rotation({support::point{0, 1, 0}, {-1, 0, 0}, {0, 0, 1}}));
  const std::vector<double> K = model.beam(2).K;
  for (const double entry : K) ASSERT_TRUE(std::isfinite(entry));
  EXPECT_EQ(K[13], 1.2e308);
  EXPECT_EQ(K[12 * 7 + 1], -1.2e308);
  EXPECT_EQ(K[0], local[13]);
}

TEST_F(BeamNotFinite, ATransformationWhoseSquaresOverflowIsTheDenseProduct) {
  seeded_random random(4707);
  member_description m = random_beam(random);
  m.e1 = m.e2 = m.g = 1e-180;
  frame_model model({m});
  const std::vector<double> local = model.beam(1).K;
  std::vector<double> T = member_cases::node_rotation(support::random_rotation(random));
  for (double& entry : T) entry *= 1e160;
  model.set_rotation(T);
  const std::vector<double> expected = full_product(T.data(), local, 12);
  EXPECT_TRUE(std::isfinite(expected[0]));
  EXPECT_GT(expected[0], 1e100);
  expect_same_places(model.beam(2).K, expected);
}

TEST(Finiteness, OneValueThatIsNotFiniteShowsAtEveryPlaceOfEveryCount) {
  for (int count = 0; count <= 40; ++count) {
    std::vector<double> values(static_cast<std::size_t>(count), -3.5);
    EXPECT_TRUE(all_finite(values.data(), count)) << count;
    for (std::size_t place = 0; place < values.size(); ++place) {
      for (const double broken : BROKEN) {
        values[place] = broken;
        EXPECT_FALSE(all_finite(values.data(), count)) << broken << " at place " << place + 1 << " of " << count;
      }
      values[place] = -3.5;
    }
  }
}

TEST(Finiteness, InfinitiesOfBothSignsDoNotCancel) {
  const double infinite = std::numeric_limits<double>::infinity();
  for (std::size_t first = 0; first < 12; ++first) {
    for (std::size_t second = first + 1; second < 12; ++second) {
      std::vector<double> values(12, 1.0);
      values[first] = infinite;
      values[second] = -infinite;
      EXPECT_FALSE(all_finite(values.data(), 12)) << first << ", " << second;
    }
  }
}
