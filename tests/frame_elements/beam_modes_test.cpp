// beam_modes_test.cpp: what MODE and the kind of analysis build, add and turn; hinges; the second transformation.
#include <gtest/gtest.h>

#include "broken_values.h"
#include "comparison.h"
#include "finites/finites.h"
#include "hinge_recorder.h"
#include "member_cases.h"
#include "reference_member.h"

namespace {

using member_cases::random_beam;
using reference::by_diagonal;
using reference::listed;
using reference::matrix;
using reference::square;
using reference::turned;
using support::frame_model;
using support::max_norm;
using support::member_description;
using support::member_matrices;
using support::seeded_random;

const std::vector<double> ZEROS(144, 0.0);

class BeamModes : public ::testing::Test {
 protected:
  void SetUp() override { hinge_recorder::reset(); }
};

// The geometric matrix in local axes, as its own routine gives it for the description (no reductions).
matrix geometric(const member_description& m) {
  const double I1 = m.i1 * m.factor_i1, I2 = m.i2 * m.factor_i2;
  const auto semi = [](const std::array<double, 2>& f) {
    return static_cast<std::int32_t>((f[0] > 0 && f[0] < 1) || (f[1] > 0 && f[1] < 1));
  };
  const std::int32_t y = semi(m.fixity_y), z = semi(m.fixity_z), rel_y = m.release[1], rel_z = m.release[2];
  std::vector<double> KG(144);
  KSTIFB_GEOM(&m.axial_force, &m.length, &m.e1, &m.e2, &I1, &I2, &y, &z, &rel_y, &rel_z, &m.fixity_y[0], &m.fixity_z[0],
              &m.fixity_y[1], &m.fixity_z[1], KG.data());
  return square(KG);
}

matrix linear(const member_description& m) {
  return reference::released_stiffness(reference::beam_stiffness(reference::properties_of(m, true), m), m);
}

void expect_table_row(const member_description& m, seeded_random& random, int mode, int kind) {
  SCOPED_TRACE(::testing::Message() << "mode " << mode << ", kind " << kind);
  frame_model model({m});
  model.set_shear_deformation(1.0);
  model.set_kind(kind);
  const std::vector<double> T = member_cases::block_rotation(random);
  model.set_rotation(T);
  const bool built = mode == 0 && (kind == 1 || kind == 3);
  matrix G = built ? geometric(m) : matrix::Zero(12, 12);
  matrix K = linear(m);
  if (kind == 1) K += G;
  if (mode != 1) {
    K = turned(K, T);
    G = turned(G, T);
  }
  const member_matrices actual = model.beam(mode);
  const double scale = static_cast<double>(K.cwiseAbs().maxCoeff());
  EXPECT_CLOSE(actual.K, listed(K), scale, 60);
  if (built) {
    EXPECT_CLOSE(actual.KG, listed(G), static_cast<double>(G.cwiseAbs().maxCoeff()), 60);
    EXPECT_GT(max_norm(actual.KG), 0.0);
  } else {
    EXPECT_EQ(actual.KG, ZEROS);
  }
}

}  // namespace

TEST_F(BeamModes, TableOfModesKindsAndReleases) {
  seeded_random random(4301);
  for (const int mode : {0, 1, 2, -1}) {
    for (const int kind : {0, 1, 2, 3, 4}) {
      for (int codes = 0; codes < 9; ++codes) {
        member_description m = random_beam(random);
        m.release = {codes % 3, codes % 3, codes / 3, codes / 3};
        m.axial_force = random.uniform(5e3, 2e4) * (random.integer(0, 1) == 0 ? 1 : -1);
        if (random.integer(0, 1) == 0) m.fixity_z = {0.4, 0.7};
        if (random.integer(0, 1) == 0) m.fixity_y = {1.0, 0.2};
        expect_table_row(m, random, mode, kind);
      }
    }
  }
  EXPECT_EQ(hinge_recorder::recorded().calls, 0);  // members do not yield
}

TEST_F(BeamModes, SemiRigidFlagsOfEachFactor) {
  // One factor between 0 and 1 switches both planes to the closed form; 0 and 1 themselves do not.
  seeded_random random(4302);
  for (int which = 0; which < 5; ++which) {
    for (const double fixity : {0.0, 1.0, 0.5, 1e-12, 1 - 1e-12, -0.5, 1.5}) {
      member_description m = random_beam(random);
      m.axial_force = 1e4;
      if (which < 4) (which < 2 ? m.fixity_y : m.fixity_z)[static_cast<std::size_t>(which % 2)] = fixity;
      frame_model model({m});
      model.set_kind(3);
      const matrix G = geometric(m);
      EXPECT_CLOSE(model.beam(0).KG, listed(G), static_cast<double>(G.cwiseAbs().maxCoeff()), 4)
          << which << ", " << fixity;
    }
  }
}

TEST_F(BeamModes, SecondTransformationFollowsTheFirst) {
  seeded_random random(4303);
  for (const int count : {1, 5, 0, -1}) {
    for (const int mode : {0, 1, 2}) {
      for (const int kind : {0, 1, 3}) {
        SCOPED_TRACE(::testing::Message() << "NT2 " << count << ", mode " << mode << ", kind " << kind);
        member_description m = random_beam(random);
        m.axial_force = 3e4;
        frame_model model({m});
        model.set_kind(kind);
        const std::vector<double> T = member_cases::full_transformation(random);
        const std::vector<double> T2 = member_cases::full_transformation(random);
        const member_matrices local = model.beam(mode);  // the identity: the same numbers
        model.set_rotation(T);
        model.set_second_transformation(count, T2);
        matrix K = square(local.K), G = square(local.KG);
        if (mode != 1) {
          K = turned(K, T);
          G = turned(G, T);
          if (count > 0) {
            K = turned(K, T2);
            G = turned(G, T2);
          }
        }
        const member_matrices actual = model.beam(mode);
        EXPECT_CLOSE(actual.K, listed(K), static_cast<double>(K.cwiseAbs().maxCoeff()), 100);
        EXPECT_CLOSE(actual.KG, listed(G), static_cast<double>(G.cwiseAbs().maxCoeff()), 100);
      }
    }
  }
}

TEST_F(BeamModes, RotationIsTheDenseProductForAnyT) {
  seeded_random random(4304);
  for (int trial = 0; trial < 40; ++trial) {
    member_description m = random_beam(random);
    frame_model model({m});
    model.set_shear_deformation(1.0);
    const bool full = trial % 2 == 0;
    const std::vector<double> T =
        full ? member_cases::full_transformation(random) : member_cases::block_rotation(random);
    model.set_rotation(T);
    const matrix expected = turned(linear(m), T);
    EXPECT_CLOSE(model.beam(2).K, listed(expected), static_cast<double>(expected.cwiseAbs().maxCoeff()), 60);
  }
}

TEST_F(BeamModes, EveryEntryThatLeavesTheCommonRotationCounts) {
  // One rotation in all four blocks, then one entry more or other than that: the dense product of exactly this T.
  seeded_random random(4311);
  member_description m = random_beam(random);
  m.axial_force = -2e4;
  frame_model model({m});
  model.set_shear_deformation(1.0);
  model.set_kind(1);
  const std::vector<double> rotation = member_cases::node_rotation(support::random_rotation(random));
  for (std::size_t entry = 0; entry < 144; ++entry) {
    SCOPED_TRACE(::testing::Message() << "T(" << entry % 12 + 1 << ", " << entry / 12 + 1 << ")");
    std::vector<double> T = rotation;
    T[entry] += 0.25;
    model.set_rotation(T);
    const matrix G = turned(geometric(m), T), K = turned(linear(m) + geometric(m), T);
    const member_matrices actual = model.beam(0);
    EXPECT_CLOSE(actual.K, listed(K), static_cast<double>(K.cwiseAbs().maxCoeff()), 60);
    EXPECT_CLOSE(actual.KG, listed(G), static_cast<double>(G.cwiseAbs().maxCoeff()), 60);
  }
}

TEST_F(BeamModes, EndsOfTheirOwnRotationWithRigidOffsets) {
  // Each end has T = R [1 W; 0 1], W theta = theta x d: translations and rotations of a node couple.
  seeded_random random(4312);
  for (int trial = 0; trial < 20; ++trial) {
    const member_description m = random_beam(random);
    frame_model model({m});
    model.set_shear_deformation(1.0);
    matrix P = matrix::Identity(12, 12);
    for (int end = 0; end < 12; end += 6) {
      const std::vector<double> d = random.vector(3, 0.5);
      P.block(end, end + 3, 3, 3) << 0.0L, d[2], -d[1], -d[2], 0.0L, d[0], d[1], -d[0], 0.0L;
    }
    // The same rotation at both ends in every second trial: then only the offsets leave the common rotation.
    const std::vector<double> R = trial % 2 == 0 ? member_cases::node_rotation(support::random_rotation(random))
                                                 : member_cases::block_rotation(random);
    const std::vector<double> T = listed(square(R) * P);
    model.set_rotation(T);
    const matrix expected = turned(linear(m), T);
    EXPECT_CLOSE(model.beam(2).K, listed(expected), static_cast<double>(expected.cwiseAbs().maxCoeff()), 60);
  }
}

TEST_F(BeamModes, SecondTransformationFollowsACommonRotation) {
  seeded_random random(4313);
  member_description m = random_beam(random);
  m.axial_force = 3e4;
  frame_model model({m});
  model.set_shear_deformation(1.0);
  model.set_kind(1);
  const std::vector<double> T = member_cases::node_rotation(support::random_rotation(random));
  const std::vector<double> T2 = member_cases::full_transformation(random);
  model.set_rotation(T);
  for (const int count : {0, 1}) {
    model.set_second_transformation(count, T2);
    matrix G = turned(geometric(m), T), K = turned(linear(m) + geometric(m), T);
    if (count > 0) {
      G = turned(G, T2);
      K = turned(K, T2);
    }
    const member_matrices actual = model.beam(0);
    EXPECT_CLOSE(actual.K, listed(K), static_cast<double>(K.cwiseAbs().maxCoeff()), 100) << "NT2 " << count;
    EXPECT_CLOSE(actual.KG, listed(G), static_cast<double>(G.cwiseAbs().maxCoeff()), 100) << "NT2 " << count;
  }
}

TEST_F(BeamModes, HingesCoupleThePlanesUnderACommonRotationAndASecondTransformation) {
  // The matrix of hinges is full: one rotation in all four blocks must not take it for that of an elastic beam.
  seeded_random random(4315);
  const member_description m = random_beam(random);
  frame_model model({m});
  model.set_shear_deformation(1.0);
  model.set_kind(1);
  model.set_members_yield(1);
  const std::vector<double> KP = random.vector(144, 1e3);
  hinge_recorder::prepared_KP() = KP;
  const std::vector<double> T = member_cases::node_rotation(support::random_rotation(random));
  const std::vector<double> T2 = member_cases::full_transformation(random);
  model.set_rotation(T);
  for (const int count : {0, 1}) {
    model.set_second_transformation(count, T2);
    matrix expected = turned(linear(m) + square(KP), T);
    if (count > 0) expected = turned(expected, T2);
    EXPECT_CLOSE(model.beam(2).K, listed(expected), static_cast<double>(expected.cwiseAbs().maxCoeff()), 100)
        << "NT2 " << count;
  }
}

TEST_F(BeamModes, InfinitiesAndNaNGoWhereTheFullProductCarriesThem) {
  seeded_random random(4314);
  const member_description sound = random_beam(random);
  for (const double broken : support::BROKEN) {
    // A property of the member.
    for (double member_description::*field :
         {&member_description::area, &member_description::i1, &member_description::i2, &member_description::j,
          &member_description::e1, &member_description::e2, &member_description::g, &member_description::length}) {
      member_description m = sound;
      m.*field = broken;
      frame_model model({m});
      const std::vector<double> local = model.beam(1).K;
      const std::vector<double> T = member_cases::node_rotation(support::random_rotation(random));
      model.set_rotation(T);
      support::expect_same_places(model.beam(2).K, support::full_product(T.data(), local, 12));
    }
    // One entry of a block of the rotation, the same in all four; the axes of a member along a solver's axis have
    // zeros.
    for (const bool along_axis : {false, true}) {
      for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
          support::rotation R = support::random_rotation(random);
          if (along_axis) R = {support::point{0, 1, 0}, {-1, 0, 0}, {0, 0, 1}};
          R.at(static_cast<std::size_t>(i)).at(static_cast<std::size_t>(j)) = broken;
          SCOPED_TRACE(::testing::Message() << broken << " at row " << i + 1 << ", column " << j + 1 << " of a block");
          frame_model model({sound});
          const std::vector<double> local = model.beam(1).K;
          const std::vector<double> T = member_cases::node_rotation(R);
          model.set_rotation(T);
          support::expect_same_places(model.beam(2).K, support::full_product(T.data(), local, 12));
        }
      }
    }
  }
}

TEST_F(BeamModes, RowsOfTAreTheLocalAxes) {
  // A member along the solver's y axis: its axial stiffness comes out in degree of freedom 2.
  member_description m;
  frame_model model({m});
  model.set_rotation(member_cases::node_rotation({support::point{0, 1, 0}, {-1, 0, 0}, {0, 0, 1}}));
  const std::vector<double> K = model.beam(2).K;
  EXPECT_EQ(K[13], m.e1 * m.area / m.length);
  EXPECT_CLOSE(K[0], 12 * m.e1 * m.i1 / 27, K[0], 4);
  // u = -v' : the couple of the rotation about z with the first translation changes its sign.
  EXPECT_CLOSE(K[5], -6 * m.e1 * m.i1 / 9, K[0], 8);
}

TEST_F(BeamModes, HingesActForKindOneAndYieldingMembersInEveryMode) {
  seeded_random random(4305);
  const std::vector<double> KP = random.vector(144, 1e3);
  for (const int yield : {0, 1, 2}) {
    for (const int kind : {0, 1, 2, 3}) {
      for (const int mode : {0, 1, 2, -3}) {
        SCOPED_TRACE(::testing::Message() << "yield " << yield << ", kind " << kind << ", mode " << mode);
        member_description m = random_beam(random);
        m.axial_force = 2e4;
        frame_model model({m, m});
        model.set_kind(kind);
        model.set_members_yield(yield);
        const std::vector<double> T = member_cases::block_rotation(random);
        hinge_recorder::reset();
        model.set_rotation(T);
        hinge_recorder::prepared_KP() = KP;
        hinge_recorder::watched() = model.hinge(2).K_ELASTIC.data();
        std::fill_n(model.hinge(2).K_ELASTIC.data(), 144, -5.0);
        const member_matrices actual = model.beam(mode, 2);
        matrix before = linear(m);
        if (mode == 0 && kind == 1) before += geometric(m);
        // linear() has shear areas in it: the switch is on for this model too.
        model.set_shear_deformation(1.0);
        hinge_recorder::reset();
        hinge_recorder::prepared_KP() = KP;
        hinge_recorder::watched() = model.hinge(2).K_ELASTIC.data();
        std::fill_n(model.hinge(2).K_ELASTIC.data(), 144, -5.0);
        const member_matrices sheared = model.beam(mode, 2);
        EXPECT_NE(actual.K, sheared.K);
        const bool acts = kind == 1 && yield == 1;
        const hinge_recorder::recorded_call& call = hinge_recorder::recorded();
        ASSERT_EQ(call.calls, acts ? 1 : 0);
        matrix expected = before;
        if (acts) expected += square(KP);
        if (mode != 1) expected = turned(expected, T);
        EXPECT_CLOSE(sheared.K, listed(expected), static_cast<double>(expected.cwiseAbs().maxCoeff()), 60);
        const std::vector<double> kept = support::values(model.hinge(2).K_ELASTIC.data(), 144);
        if (acts) {
          EXPECT_EQ(call.number, model.number(2));
          EXPECT_EQ(call.elem, 2);
          EXPECT_EQ(call.extent, model.extent());
          EXPECT_EQ(call.A, model.storage().data());
          EXPECT_CLOSE(call.K, listed(before), static_cast<double>(before.cwiseAbs().maxCoeff()), 60);
        }
        if (acts && mode == 0) {
          // Stored before the hinges are asked, with the geometric matrix in it, and without theirs.
          EXPECT_EQ(kept, call.K);
          EXPECT_EQ(call.K_ELASTIC, call.K);
        } else {
          EXPECT_EQ(kept, std::vector<double>(144, -5.0));
        }
      }
    }
  }
}

TEST_F(BeamModes, HingesMayChangeTheStiffnessThatTheyAreGiven) {
  // They get K itself, not a copy; what they leave in it counts. K_ELASTIC and the axial copy were stored before.
  member_description m;
  frame_model model({m});
  model.set_kind(1);
  model.set_members_yield(1);
  hinge_recorder::axial_share() = 0.5;
  hinge_recorder::prepared_KP()[0] = 3.0;
  const double k = m.e1 * m.area / m.length;
  EXPECT_EQ(model.beam(0).K[0], k * 0.5 + 3.0);
  EXPECT_EQ(model.hinge().K_ELASTIC(1, 1), k);
  EXPECT_EQ(model.record().K11_COPY, k);
}

TEST_F(BeamModes, ModeOneWithKindOneHasNoGeometricMatrixAndNoRemovalButHinges) {
  seeded_random random(4306);
  member_description m = random_beam(random);
  m.axial_force = 9e5;
  m.remove_step = -5;
  frame_model model({m});
  model.set_shear_deformation(1.0);
  model.set_kind(1);
  model.set_members_yield(1);
  model.set_rotation(member_cases::full_transformation(random));
  hinge_recorder::prepared_KP() = random.vector(144, 1e2);
  model.hinge().K_ELASTIC(3, 4) = 123.0;
  const member_matrices actual = model.beam(1);
  const matrix expected = linear(m) + square(hinge_recorder::prepared_KP());
  EXPECT_CLOSE(actual.K, listed(expected), static_cast<double>(expected.cwiseAbs().maxCoeff()), 20);
  EXPECT_EQ(actual.KG, ZEROS);
  EXPECT_EQ(model.hinge().K_ELASTIC(3, 4), 123.0);
  EXPECT_EQ(hinge_recorder::recorded().calls, 1);
}

TEST_F(BeamModes, TheTwelfthFreedomOfTheSecondEndIsReleasedToo) {
  // Each release code at each end, seen in the solver's axes with the identity: whole rows vanish.
  const int freedoms[4] = {1, 2, 3, 4};
  for (std::size_t code = 0; code < 4; ++code) {
    for (const int end : {1, 2}) {
      member_description m;
      m.release[code] = end;
      frame_model model({m});
      const std::vector<double> K = model.beam(2).K;
      const int gone = freedoms[code] + (end == 2 ? 6 : 0);
      for (int i = 1; i <= 12; ++i) {
        const double entry = K[static_cast<std::size_t>(12 * (gone - 1) + i - 1)];
        EXPECT_CLOSE(entry, 0.0, max_norm(K), 1) << gone << ", " << i;
      }
    }
  }
}
