// Each status has a sentence of its own.
#include <set>
#include <string>

#include "finites/elements.h"
#include "finites/version.h"
#include "gtest/gtest.h"

TEST(Status, EachHasASentenceOfItsOwn) {
  std::set<std::string> texts;
  for (int s = FINITES_OK; s <= FINITES_RESULT; ++s) {
    const std::string text = finites_text(static_cast<finites_status>(s));
    EXPECT_GT(text.size(), 6U) << s;
    EXPECT_NE(text, "unknown status") << s;
    EXPECT_TRUE(texts.insert(text).second) << text;
  }
}

TEST(Status, AnotherNumberIsUnknown) {
  EXPECT_STREQ(finites_text(static_cast<finites_status>(FINITES_RESULT + 1)), "unknown status");
  EXPECT_STREQ(finites_text(static_cast<finites_status>(31)), "unknown status");
}

// A batch that asks for elements it does not have reads what its range and strides must be.
TEST(Status, TheRangeOfABatchIsTold) {
  finites_plates plates{};
  finites_plate_init(&plates.common);
  plates.count = 3;
  double K[24 * 24];
  const std::string text = finites_text(finites_plates_stiffness(&plates, 0, 4, K, 24 * 24, nullptr));
  EXPECT_NE(text.find("0 <= begin <= end <= count"), std::string::npos) << text;
  EXPECT_NE(text.find("stride of it is negative or shorter than an answer"), std::string::npos) << text;
}

TEST(Version, IsThatOfTheHeaders) { EXPECT_STREQ(finites_version(), FINITES_VERSION_TEXT); }

// Without finites_plate_init all factors are 0: the stiffness would be that of the drilling rotations alone.
TEST(Status, AStructThatWasNotInitialised) {
  finites_plate plate{};
  plate.nodes = 4;
  plate.xyz[1][0] = plate.xyz[2][0] = plate.xyz[2][1] = plate.xyz[3][1] = 1.0;
  plate.thickness = 0.1;
  plate.E = 1.0;
  double K[24 * 24];
  EXPECT_EQ(finites_plate_stiffness(&plate, K), FINITES_FACTOR);
  plate.mass_factor = 1.0;  // a plate that carries load and mass alone
  EXPECT_EQ(finites_plate_stiffness(&plate, K), FINITES_OK);
}
