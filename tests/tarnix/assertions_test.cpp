// assertions_test.cpp: a failed assertion is reported and counted; it returns or ends the run, as was set.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <thread>

#include "tarnix.h"

namespace {

constexpr std::int32_t HOLDS = 1, FAILS = 0;

class Assertions : public testing::Test {
 protected:
  void SetUp() override { TARNIX_CLEAR(); }
  void TearDown() override {
    const std::int32_t no = 0;
    TARNIX_SET_ASSERT_STOPS(&no);
    TARNIX_CLEAR();
  }
};

void check(const char* text, std::int32_t length, std::int32_t condition) { ASSERTF(text, &length, &condition); }

std::int32_t count() {
  std::int32_t failed = -1;
  TARNIX_GET_ASSERT_COUNT(&failed);
  return failed;
}

}  // namespace

TEST_F(Assertions, AConditionThatHoldsIsSilent) {
  testing::internal::CaptureStderr();
  check("no word", 7, HOLDS);
  check("no word", 7, -1);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(count(), 0);
}

TEST_F(Assertions, AConditionThatFailsIsReportedAndCounted) {
  testing::internal::CaptureStderr();
  check("Verify Singular KP and more", 18, FAILS);
  check(
      "D\xC3\xA9"
      "composition",
      14, FAILS);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "Verify Singular KP\nD\xC3\xA9"
            "composition\n");
  EXPECT_EQ(count(), 2);
  TARNIX_CLEAR();
  EXPECT_EQ(count(), 0);
}

TEST_F(Assertions, QuietOnesAreCountedWithoutTheirText) {
  const std::int32_t yes = 1, no = 0;
  testing::internal::CaptureStderr();
  TARNIX_SET_ASSERT_QUIET(&yes);
  check("not told", 8, FAILS);
  TARNIX_SET_ASSERT_QUIET(nullptr);
  check("not told", 8, FAILS);
  TARNIX_SET_ASSERT_QUIET(&no);
  check("told", 4, FAILS);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "told\n");
  EXPECT_EQ(count(), 3);
}

TEST_F(Assertions, ATerminatorInTheLengthIsNotPrinted) {
  testing::internal::CaptureStderr();
  check("kStif_SPR", 10, FAILS);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "kStif_SPR\n");
}

TEST_F(Assertions, ATextThatIsMissingStillCounts) {
  testing::internal::CaptureStderr();
  check(nullptr, 5, FAILS);
  check("text", 0, FAILS);
  check("text", -3, FAILS);
  ASSERTF("text", nullptr, &FAILS);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "\n\n\n\n");
  EXPECT_EQ(count(), 4);
  ASSERTF("text", &HOLDS, nullptr);  // no condition: nothing to judge
  EXPECT_EQ(count(), 4);
}

TEST_F(Assertions, ThePlaceStandsBeforeTheText) {
  const auto at = [](std::int32_t elem, std::int32_t operation, std::int32_t point) {
    TARNIX_FAILURE_PLACE(&elem, &operation, &point);
  };
  testing::internal::CaptureStderr();
  at(17, 3, 2);
  check("Division by 0, COEFF", 20, FAILS);
  check("Division by 0, F1", 17, FAILS);  // the place holds until it is changed
  at(5, 0, 0);
  check("kStif_SPR", 9, FAILS);
  at(0, 33, 0);
  check("here", 4, FAILS);
  at(0, 0, 0);
  check("nowhere", 7, FAILS);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "finites: element 17, operation 3, point 2: Division by 0, COEFF\n"
            "finites: element 17, operation 3, point 2: Division by 0, F1\n"
            "finites: element 5: kStif_SPR\n"
            "finites: operation 33: here\n"
            "nowhere\n");
}

TEST_F(Assertions, APlaceIsThatOfItsThread) {
  const std::int32_t elem = 17, none = 0;
  TARNIX_FAILURE_PLACE(&elem, &none, nullptr);
  testing::internal::CaptureStderr();
  std::thread([] { check("another thread", 14, FAILS); }).join();
  check("this thread", 11, FAILS);
  TARNIX_CLEAR();
  check("forgotten", 9, FAILS);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "another thread\nfinites: element 17: this thread\nforgotten\n");
}

TEST_F(Assertions, EndsTheRunWhenItIsSetSo) {
  testing::GTEST_FLAG(death_test_style) = "threadsafe";
  const auto failing_run = [] {
    const std::int32_t yes = 1;
    TARNIX_SET_ASSERT_STOPS(&yes);
    check("passed", 6, HOLDS);
    check("the end", 7, FAILS);
  };
  EXPECT_EXIT(failing_run(), testing::ExitedWithCode(1), "^the end\n$");
}
