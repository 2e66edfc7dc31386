// link_spring_test.cpp: links and springs from the words of their property records.
#include <gtest/gtest.h>

#include <cmath>

#include "assert_recorder.h"
#include "broken_values.h"
#include "comparison.h"
#include "member_cases.h"
#include "reference_member.h"

namespace {

using reference::listed;
using reference::matrix;
using reference::real;
using reference::turned;
using support::frame_model;
using support::link_property;
using support::member_description;
using support::member_family;
using support::member_matrices;
using support::seeded_random;
using support::spring_property;

using kinds = std::array<int, 6>;
using stiffnesses = std::array<float, 6>;

const std::vector<double> ZEROS(144, 0.0);
const kinds PLAIN{};
const stiffnesses DISTINCT{3.0F, 5.0F, 7.0F, 11.0F, 13.0F, 17.0F};

member_description spring_of(const kinds& k, const stiffnesses& s) {
  member_description m;
  m.family = member_family::spring;
  m.property = spring_property(k, s);
  return m;
}

// form 1: blocks, so that the diagonal shows the stiffnesses.
member_description link_of(const kinds& k, const stiffnesses& s, int link_kind = 0, int count = 0, int form = 1) {
  member_description m;
  m.family = member_family::link;
  m.property = link_property(k, s, link_kind, count, form);
  return m;
}

// Both families, to run what they share.
std::vector<member_description> both(const kinds& k, const stiffnesses& s) { return {spring_of(k, s), link_of(k, s)}; }

member_matrices call(const frame_model& model, int mode, int elem = 1) {
  return model.at(elem).family == member_family::link ? model.link(mode, elem) : model.spring(mode, elem);
}

matrix blocks(const std::vector<double>& k) {
  matrix K = matrix::Zero(12, 12);
  for (dense::index d = 0; d < 6; ++d) {
    const real value = k[static_cast<std::size_t>(d)];
    K(d, d) = K(d + 6, d + 6) = value;
    K(d, d + 6) = K(d + 6, d) = -value;
  }
  return K;
}

std::vector<double> diagonal(const std::vector<double>& K) { return support::values(K.data(), 6, 13); }

class LinkSpring : public ::testing::Test {
 protected:
  void SetUp() override { support::forget_assertions(); }
  void TearDown() override { support::forget_assertions(); }
  static void set_limits() {
    SOLANA.RIGID_K_TRANS = 1e9;
    SOLANA.RIGID_K_ROT = 2e10;
    SOLANA.MIN_K_ROT = 12.0;
  }
};

}  // namespace

TEST_F(LinkSpring, WordsOfTheStiffnesses) {
  for (const member_description& m : both(PLAIN, DISTINCT)) {
    frame_model model({m});
    set_limits();
    for (const int mode : {0, 1, 2}) {
      EXPECT_EQ(call(model, mode).K, listed(blocks({3, 5, 7, 11, 13, 17}))) << mode;
      EXPECT_EQ(call(model, mode).KG, ZEROS);
    }
  }
}

TEST_F(LinkSpring, StiffnessesAreWidenedFromSinglePrecision) {
  for (const member_description& m : both(PLAIN, {0.1F, 0.2F, 0.3F, 0.4F, 0.6F, 0.7F})) {
    frame_model model({m});
    EXPECT_EQ(diagonal(call(model, 1).K),
              (std::vector<double>{static_cast<double>(0.1F), static_cast<double>(0.2F), static_cast<double>(0.3F),
                                   static_cast<double>(0.4F), static_cast<double>(0.6F), static_cast<double>(0.7F)}));
  }
}

TEST_F(LinkSpring, WordsOfTheKinds) {
  // Each component made rigid alone.
  for (std::size_t component = 0; component < 6; ++component) {
    kinds k{};
    k[component] = 9;
    std::vector<double> expected{3, 5, 7, 11, 13, 17};
    expected[component] = component < 3 ? 1e9 : 2e10;
    for (const member_description& m : both(k, DISTINCT)) {
      frame_model model({m});
      set_limits();
      for (const int mode : {0, 1, 2}) EXPECT_EQ(diagonal(call(model, mode).K), expected) << component;
    }
  }
}

TEST_F(LinkSpring, OtherKindsArePlain) {
  for (const int kind : {1, 2, 3, 7, 10, -9}) {
    for (const member_description& m : both({kind, kind, kind, kind, kind, kind}, DISTINCT)) {
      frame_model model({m});
      set_limits();
      EXPECT_EQ(diagonal(call(model, 0).K), (std::vector<double>{3, 5, 7, 11, 13, 17})) << kind;
    }
  }
  // 8 is nonlinear for translations; a rotation of kind 8 is plain.
  for (const member_description& m : both({0, 0, 0, 8, 8, 8}, DISTINCT)) {
    frame_model model({m});
    for (const int mode : {0, 1, 2}) EXPECT_EQ(diagonal(call(model, mode).K)[3], 11.0);
  }
  EXPECT_TRUE(support::recorded_assertions().empty());
}

TEST_F(LinkSpring, FloorOnRotationsOfLinksOfKindNine) {
  // MIN_K_ROT 12: of the rotations 11, 13, 17 the first is below.
  for (const int link_kind : {9, 8, 0}) {
    for (const int count : {1, 5, 0, -1}) {
      for (const int kind : {0, 1, 9}) {
        frame_model model({link_of({0, 0, 0, kind, kind, kind}, DISTINCT, link_kind, count)});
        set_limits();
        std::vector<double> expected{3, 5, 7, 11, 13, 17};
        if (link_kind == 9 && count > 0 && kind == 0) expected[3] = 12.0;
        if (kind == 9) expected[3] = expected[4] = expected[5] = 2e10;
        EXPECT_EQ(diagonal(model.link(2).K), expected) << link_kind << ", " << count << ", " << kind;
      }
    }
  }
}

TEST_F(LinkSpring, FloorOnEachRotationAndNoTranslation) {
  frame_model model({link_of({1, 1, 1, 0, 0, 0}, {1.0F, 1.0F, 1.0F, 0.0F, -5.0F, 11.5F}, 9, 2)});
  set_limits();
  EXPECT_EQ(diagonal(model.link(0).K), (std::vector<double>{1, 1, 1, 12, 12, 12}));
  frame_model mixed({link_of({0, 0, 0, 0, 3, 0}, {1.0F, 1.0F, 1.0F, 1.0F, 1.0F, 1.0F}, 9, 1)});
  set_limits();
  EXPECT_EQ(diagonal(mixed.link(0).K), (std::vector<double>{1, 1, 1, 12, 1, 12}));
  frame_model rigid({link_of({0, 0, 0, 0, 9, 0}, DISTINCT, 9, 1)});
  set_limits();
  SOLANA.RIGID_K_ROT = 5.0;  // below the floor, which is for kind 0 alone
  EXPECT_EQ(diagonal(rigid.link(0).K), (std::vector<double>{3, 5, 7, 12, 5, 17}));
}

TEST_F(LinkSpring, ASpringHasNoFloor) {
  member_description m = spring_of(PLAIN, {1.0F, 1.0F, 1.0F, 1.0F, 1.0F, 1.0F});
  m.property[1] = 9;  // what these words would mean for a link
  m.property[5] = 1;
  frame_model model({m});
  set_limits();
  EXPECT_EQ(diagonal(model.spring(0).K), (std::vector<double>{1, 1, 1, 1, 1, 1}));
}

TEST_F(LinkSpring, InitialStiffnessOfANonlinearSpringReplacesEveryKind) {
  for (const int kind : {0, 8, 9}) {
    for (const member_description& plain : both({kind, kind, kind, 0, 0, 0}, DISTINCT)) {
      member_description m = plain;
      m.nl_spring = {3, 1, 2};
      frame_model model({m});
      set_limits();
      model.set_nonlinear_springs({{1.0, 20.0}, {1.0, 30.0}, {1.0, 40.0}});
      EXPECT_EQ(diagonal(call(model, 2).K), (std::vector<double>{40, 20, 30, 11, 13, 17})) << kind;
    }
  }
}

TEST_F(LinkSpring, AnIndexNotAboveZeroReplacesNothing) {
  for (const member_description& plain : both({0, 9, 0, 0, 0, 0}, DISTINCT)) {
    member_description m = plain;
    m.nl_spring = {0, -4, 1};
    frame_model model({m});
    set_limits();
    model.set_nonlinear_springs({{1.0, 20.0}});
    EXPECT_EQ(diagonal(call(model, 0).K), (std::vector<double>{3, 1e9, 20, 11, 13, 17}));
  }
}

TEST_F(LinkSpring, AnIndexBeyondTheTableReplacesNothing) {
  for (const member_description& plain : both({0, 8, 0, 0, 0, 0}, DISTINCT)) {
    member_description m = plain;
    m.nl_spring = {2147483647, 2, 1};
    frame_model model({m});
    set_limits();
    model.set_nonlinear_springs({{10.0, 20.0}});
    EXPECT_EQ(diagonal(call(model, 0).K), (std::vector<double>{3, 5, 20, 11, 13, 17}));
  }
}

TEST_F(LinkSpring, RemovalByMode) {
  // x plain with counter -1, y nonlinear with a ratio of 0.75, z rigid with counter -3.
  for (const member_description& plain : both({0, 8, 9, 9, 0, 8}, DISTINCT)) {
    member_description m = plain;
    m.remove_step_spring = {-1, -2, -3};
    m.nl_spring = {0, 2, 0};
    m.remove_min = 1e-3;
    frame_model model({m});
    set_limits();
    model.set_nonlinear_springs({{7.0, 7.0}, {3.0, 4.0}});
    EXPECT_EQ(diagonal(call(model, 0).K), (std::vector<double>{1.5, 3.0, 1e9 / 8, 2e10, 13, 17}));
    EXPECT_EQ(diagonal(call(model, 1).K), (std::vector<double>{3, 3.0, 1e9, 2e10, 13, 17}));
    for (const int mode : {2, -1, 5}) {
      EXPECT_EQ(diagonal(call(model, mode).K), (std::vector<double>{3, 4.0, 1e9, 2e10, 13, 17}));
    }
  }
}

TEST_F(LinkSpring, EachTranslationHasItsOwnCounter) {
  for (const member_description& plain : both(PLAIN, {1.0F, 1.0F, 1.0F, 1.0F, 1.0F, 1.0F})) {
    member_description m = plain;
    m.remove_step_spring = {-1, 0, -3};
    m.remove_step = -5;  // the element's own does not count
    frame_model model({m});
    EXPECT_EQ(diagonal(call(model, 0).K), (std::vector<double>{0.5, 1, 0.125, 1, 1, 1}));
    model.record().REMOVE_STEP_SPR(2) = -60;
    EXPECT_EQ(diagonal(call(model, 0).K), (std::vector<double>{0.5, 1e-3, 0.125, 1, 1, 1}));
  }
}

TEST_F(LinkSpring, ANonlinearComponentWithoutARecordIsAnAssertion) {
  for (const member_description& m : both({0, 0, 8, 0, 0, 0}, DISTINCT)) {
    for (const int mode : {0, 1, 2}) {
      support::forget_assertions();
      frame_model model({m});
      EXPECT_EQ(diagonal(call(model, mode).K), (std::vector<double>{3, 5, 7, 11, 13, 17}));
      EXPECT_EQ(support::recorded_assertions(), std::vector<std::string>(mode == 2 ? 0 : 1, "GET_COEF_REMOVE_SPRING"));
    }
  }
}

TEST_F(LinkSpring, SpringTurnsOnlyWhereItsNodeHasLocalAxes) {
  seeded_random random(4901);
  const std::vector<double> T = member_cases::full_transformation(random);
  for (const double axes : {0.0, 1.0, 2.0, -1.0, 0.9, 1.9}) {
    for (const int mode : {0, 1, 2, -1}) {
      member_description m = spring_of(PLAIN, DISTINCT);
      m.local_axes = axes;
      frame_model model({m});
      model.set_rotation(T);
      matrix expected = blocks({3, 5, 7, 11, 13, 17});
      if (mode != 1 && static_cast<int>(axes) > 0) expected = turned(expected, T);
      EXPECT_CLOSE(model.spring(mode).K, listed(expected), static_cast<double>(expected.cwiseAbs().maxCoeff()), 60)
          << axes << ", " << mode;
    }
  }
}

TEST_F(LinkSpring, LinkTurnsUnlessLocal) {
  seeded_random random(4902);
  const std::vector<double> T = member_cases::full_transformation(random);
  for (const int form : {0, 1}) {
    frame_model model({link_of(PLAIN, DISTINCT, 0, 0, form)});
    const matrix local = reference::square(model.link(1).K);
    model.set_rotation(T);
    for (const int mode : {0, 1, 2, -1}) {
      const matrix expected = mode == 1 ? local : turned(local, T);
      EXPECT_CLOSE(model.link(mode).K, listed(expected), static_cast<double>(expected.cwiseAbs().maxCoeff()), 60);
    }
  }
}

TEST_F(LinkSpring, LinkOfTwoRigidBars) {
  // The ends carry rigid bars of half the length each to a point with six springs in between. Each bar takes the
  // motion of its end to the point: u + theta x r; the stretch of the springs is the second less the first.
  seeded_random random(4903);
  for (int trial = 0; trial < 50; ++trial) {
    stiffnesses s{};
    for (float& k : s) k = static_cast<float>(random.uniform(1.0, 100.0));
    member_description m = link_of(PLAIN, s, 0, 0, 0);
    m.length = random.uniform(0.1, 9.0);
    frame_model model({m});
    matrix stretch = matrix::Zero(6, 12);
    const real half = real(m.length) / 2;
    for (dense::index d = 0; d < 6; ++d) {
      stretch(d, d) = -1;
      stretch(d, d + 6) = 1;
    }
    // r = (half, 0, 0) from the first end, (-half, 0, 0) from the second: theta x r = (0, theta_z r, -theta_y r).
    stretch(1, 5) = -half;
    stretch(2, 4) = half;
    stretch(1, 11) = -half;
    stretch(2, 10) = half;
    matrix springs = matrix::Zero(6, 6);
    for (dense::index d = 0; d < 6; ++d) springs(d, d) = s[static_cast<std::size_t>(d)];
    const matrix expected = stretch.transpose() * springs * stretch;
    EXPECT_CLOSE(reference::by_diagonal(model.link(1).K, expected), reference::by_diagonal(listed(expected), expected),
                 1.0, 8);
    const matrix rigid = reference::square(model.link(1).K) * reference::rigid_motions(m.length);
    EXPECT_CLOSE(listed(rigid), std::vector<double>(72, 0.0), 100.0 * (1 + m.length * m.length), 8);
  }
}

TEST_F(LinkSpring, FormsDifferInTheCouplesAlone) {
  // A link without length has no bars.
  for (const int form : {0, 1, -1, 2}) {
    member_description m = link_of(PLAIN, DISTINCT, 0, 0, form);
    m.length = 0.0;
    frame_model model({m});
    EXPECT_EQ(model.link(1).K, listed(blocks({3, 5, 7, 11, 13, 17})));
    m.length = 2.0;
    frame_model longer({m});
    const std::vector<double> K = longer.link(1).K;
    EXPECT_EQ(K == listed(blocks({3, 5, 7, 11, 13, 17})), form != 0);
    EXPECT_EQ(K[12 * 1 + 5], form == 0 ? 5.0 : 0.0);  // K(6, 2) = ky a
  }
}

TEST_F(LinkSpring, RecordsOfItsOwnElement) {
  member_description first = link_of(PLAIN, DISTINCT, 0, 0, 0), second = link_of(PLAIN, {1.0F, 2.0F}, 0, 0, 0);
  first.length = 2.0;
  second.length = 8.0;
  second.remove_step_spring = {-1, -1, -1};
  frame_model model({first, second});
  EXPECT_EQ(model.link(0, 1).K[12 * 1 + 5], 5.0 * 1.0);
  EXPECT_EQ(model.link(0, 2).K[12 * 1 + 5], 1.0 * 4.0);
  EXPECT_EQ(model.link(0, 1).K[0], 3.0);
  EXPECT_EQ(model.link(0, 2).K[0], 0.5);
}

TEST_F(LinkSpring, WithoutARecordLinkIsAnAssertionAndZeros) {
  member_description m;
  m.family = member_family::link;
  for (const int mode : {0, 1, 2}) {
    frame_model model({m});
    support::forget_assertions();
    const member_matrices answer = model.link(mode);
    EXPECT_EQ(support::recorded_assertions(), std::vector<std::string>{"kStif_LINK"});
    EXPECT_EQ(answer.K, ZEROS);
    EXPECT_EQ(answer.KG, ZEROS);
  }
}

TEST_F(LinkSpring, WithoutARecordSpringIsAnAssertionAndZeros) {
  member_description m;
  m.family = member_family::spring;
  for (const int mode : {0, 1, 2}) {
    frame_model model({m});
    support::forget_assertions();
    const member_matrices answer = model.spring(mode);
    EXPECT_EQ(support::recorded_assertions(), std::vector<std::string>{"kStif_SPR"});
    EXPECT_EQ(answer.K, ZEROS);
    EXPECT_EQ(answer.KG, ZEROS);
  }
}

TEST_F(LinkSpring, ARecordIsNotRememberedFromCallToCall) {
  member_description none;
  none.family = member_family::link;
  frame_model model({link_of(PLAIN, DISTINCT), none, spring_of(PLAIN, DISTINCT)});
  model.link(0, 1);
  model.spring(0, 3);
  EXPECT_TRUE(support::recorded_assertions().empty());
  EXPECT_EQ(model.link(0, 2).K, ZEROS);
  EXPECT_EQ(support::recorded_assertions().size(), 1U);
}

TEST_F(LinkSpring, OneRotationOfBothEndsIsTheDenseProduct) {
  seeded_random random(4961);
  std::vector<member_description> members = both(PLAIN, DISTINCT);
  members.push_back(link_of(PLAIN, DISTINCT, 0, 0, 0));  // deforms at its mid-length
  for (member_description& m : members) m.local_axes = 1.0;
  frame_model model(members);
  for (int trial = 0; trial < 10; ++trial) {
    const std::vector<double> T = member_cases::node_rotation(support::random_rotation(random));
    model.set_rotation(T);
    for (int elem = 1; elem <= 3; ++elem) {
      const matrix expected = turned(reference::square(call(model, 1, elem).K), T);
      EXPECT_CLOSE(call(model, 2, elem).K, listed(expected), static_cast<double>(expected.cwiseAbs().maxCoeff()), 60);
    }
  }
}

TEST_F(LinkSpring, InfinitiesAndNaNGoWhereTheFullProductCarriesThem) {
  seeded_random random(4962);
  for (const double broken : support::BROKEN) {
    for (std::size_t component = 0; component < 7; ++component) {
      SCOPED_TRACE(::testing::Message() << broken << " in component " << component + 1);
      stiffnesses s = DISTINCT;
      support::rotation R = support::random_rotation(random);
      if (component < 6) {
        s[component] = static_cast<float>(broken);
      } else {
        R[0][1] = broken;
      }
      std::vector<member_description> members = both(PLAIN, s);
      members.push_back(link_of(PLAIN, s, 0, 0, 0));
      for (member_description& m : members) m.local_axes = 1.0;
      frame_model model(members);
      const std::vector<double> T = member_cases::node_rotation(R);
      model.set_rotation(T);
      for (int elem = 1; elem <= 3; ++elem) {
        const std::vector<double> local = call(model, 1, elem).K;
        support::expect_same_places(call(model, 2, elem).K, support::full_product(T.data(), local, 12));
      }
    }
  }
}
