// plugin_test.cpp: the routine by the name under which the element library asks for it.
#include <gtest/gtest.h>

#include "finites/services.h"
#include "rotation_case.h"

namespace {

void* load(std::int32_t library_length, std::int32_t routine_length) {
  int marker = 0;
  void* slot = &marker;
  LOAD_DLL_SUBROUTINE("Vornekal.DLL", &library_length, "NL_RotationMatrix_Beam", &routine_length, &slot);
  return slot;
}

}  // namespace

TEST(Plugin, IsLoadedByItsNameAndWorks) {
  // The lengths count a terminator, or not.
  void* const slot = load(13, 23);
  ASSERT_NE(slot, nullptr);
  EXPECT_EQ(load(12, 22), slot);
  const rotation_case::member m({1, 1, 1}, {5, 3, 5}, {1, 0, 0});
  const std::vector<double> R = rotation_case::rotation_of(m, reinterpret_cast<rotation_case::routine>(slot));
  EXPECT_EQ(R, rotation_case::rotation_of(m));
  EXPECT_NE(R, rotation_case::identity());
}
