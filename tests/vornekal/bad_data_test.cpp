// bad_data_test.cpp: data that make no member give the identity; offsets that lie outside A are not followed.
#include <gtest/gtest.h>

#include <iterator>

#include "finites/fields.h"
#include "rotation_case.h"

namespace {

using rotation_case::ENTRY;
using rotation_case::EXTENT;
using rotation_case::identity;
using rotation_case::member;
using rotation_case::NODE_1;
using rotation_case::NODE_2;
using rotation_case::rotation_of;

constexpr std::int32_t SMALLEST = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t LARGEST = std::numeric_limits<std::int32_t>::max();

member oblique() { return member({1, 1, 1}, {5, 3, 5}, {1, 0, 0}); }

}  // namespace

TEST(BadData, TheMemberOfTheseTestsIsNotTheIdentityByItself) { EXPECT_NE(rotation_of(oblique()), identity()); }

TEST(BadData, CoincidentNodes) {
  EXPECT_EQ(rotation_of(member({1, 2, 3}, {1, 2, 3}, {1, 0, 0})), identity());
  member one_node = oblique();
  one_node.word(ENTRY + MEMBER_NODE_2) = NODE_1;
  EXPECT_EQ(rotation_of(one_node), identity());
}

TEST(BadData, CoordinatesThatAreNotFinite) {
  for (const double bad : {rotation_case::NOT_A_NUMBER, rotation_case::INFINITE, -rotation_case::INFINITE}) {
    for (const std::int32_t node : {NODE_1, NODE_2}) {
      for (int i = 0; i < 3; ++i) {
        member m = oblique();
        m.word(node + NODE_X + i) = bad;
        EXPECT_EQ(rotation_of(m), identity()) << bad << " at " << node + i;
      }
    }
  }
}

TEST(BadData, AnEntryOutsideAIsNotRead) {
  for (const std::int32_t entry : {0, -1, -20, SMALLEST, EXTENT - 20, EXTENT, EXTENT + 1, LARGEST}) {
    member m = oblique();
    m.entry = entry;
    EXPECT_EQ(rotation_of(m), identity()) << entry;
  }
  // Also without an extent an entry starts at 1 or above.
  for (const std::int32_t entry : {0, -1, SMALLEST}) {
    member m = oblique();
    m.entry = entry;
    m.extent = 0;
    EXPECT_EQ(rotation_of(m), identity()) << entry;
  }
}

TEST(BadData, AnEntryOrANodeAtZeroIsNotReadThoughItsWordsLieInA) {
  // The entry at 0 has its nodes at 14 and 15 and n1 at 19 to 21.
  member m = oblique();
  m.word(MEMBER_NODE_1) = NODE_1;
  m.word(MEMBER_NODE_2) = NODE_2;
  for (int i = 0; i < 3; ++i) m.word(MEMBER_DIRECTION + i) = i == 0 ? 1.0 : 0.0;
  m.entry = 0;
  EXPECT_EQ(rotation_of(m), identity());
  // The node at 0 has its coordinates at 5 to 7.
  for (const int end : {MEMBER_NODE_1, MEMBER_NODE_2}) {
    member n = oblique();
    for (int i = 0; i < 3; ++i) n.word(NODE_X + i) = 9.0 + i * i;
    n.word(ENTRY + end) = 0.0;
    EXPECT_EQ(rotation_of(n), identity());
  }
}

TEST(BadData, NodeBlocksOutsideAAreNotRead) {
  for (const double node : {0.0, 0.99, -1.0, -7.0, EXTENT - 6.0, 1.0 * EXTENT, 1e9, -1e9, 1e300, -1e300,
                            rotation_case::NOT_A_NUMBER, rotation_case::INFINITE, -rotation_case::INFINITE}) {
    for (const int end : {MEMBER_NODE_1, MEMBER_NODE_2}) {
      member m = oblique();
      m.word(ENTRY + end) = node;
      EXPECT_EQ(rotation_of(m), identity()) << node;
    }
  }
}

TEST(BadData, TheLastWordsOfAAreStillA) {
  // The second node's block ends with A itself; one word less is one too few.
  member m = oblique();
  ASSERT_EQ(NODE_2 + NODE_X + 2, EXTENT);
  EXPECT_NE(rotation_of(m), identity());
  m.extent = EXTENT - 1;
  EXPECT_EQ(rotation_of(m), identity());
  // The same block as the first node's.
  member turned = oblique();
  turned.word(ENTRY + MEMBER_NODE_1) = NODE_2;
  turned.word(ENTRY + MEMBER_NODE_2) = NODE_1;
  EXPECT_NE(rotation_of(turned), identity());
  turned.extent = EXTENT - 1;
  EXPECT_EQ(rotation_of(turned), identity());
}

TEST(BadData, AnEntryMayEndWithA) {
  // The words up to n1 are the last ones of A; the nodes lie before.
  member m = oblique();
  m.entry = EXTENT - MEMBER_DIRECTION - 2;
  constexpr std::int32_t first = 1, second = 10;
  for (int i = 0; i < 3; ++i) {
    m.word(first + NODE_X + i) = 1.0;
    m.word(second + NODE_X + i) = i == 1 ? 3.0 : 5.0;
    m.word(m.entry + MEMBER_DIRECTION + i) = i == 0 ? 1.0 : 0.0;
  }
  m.word(m.entry + MEMBER_NODE_1) = first;
  m.word(m.entry + MEMBER_NODE_2) = second;
  EXPECT_EQ(rotation_of(m), rotation_of(oblique()));
  m.extent = EXTENT - 1;
  EXPECT_EQ(rotation_of(m), identity());
}

TEST(BadData, AnExtentThatIsNotKnownChecksNothing) {
  const auto expected = rotation_of(oblique());
  for (const std::int32_t extent : {0, -1, SMALLEST}) {
    member m = oblique();
    m.extent = extent;
    EXPECT_EQ(rotation_of(m), expected) << extent;
  }
}

TEST(BadData, RandomWordsGiveARotationOrTheIdentity) {
  support::seeded_random random(5102);
  constexpr double odd[] = {0.0,
                            -0.0,
                            1.0,
                            -1.0,
                            5e-324,
                            1e-300,
                            1e300,
                            -1.7e308,
                            rotation_case::NOT_A_NUMBER,
                            30.0,
                            2.2e16,
                            -31.0,
                            50.0,
                            29.0,
                            51.0,
                            57.0,
                            rotation_case::INFINITE};
  for (int i = 0; i < 20000; ++i) {
    member m = oblique();
    for (int k = random.integer(1, 6); k > 0; --k) {
      m.word(random.integer(1, EXTENT)) = odd[random.integer(0, static_cast<int>(std::size(odd)) - 1)];
    }
    if (random.integer(0, 3) == 0) m.entry = random.integer(-3, EXTENT + 3);
    for (const double r : rotation_of(m)) ASSERT_LE(std::fabs(r), 1.0 + 1e-15);
  }
}
