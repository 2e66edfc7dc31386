// messages_test.cpp: the numbered messages letter by letter, in a field that is padded and never overrun.
#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <string>

#include "finites/services.h"

namespace {

constexpr char UNTOUCHED = '\x7F';

// A text in a field of 70 characters, as the callers hand it over.
std::string field(const std::string& text) { return text + std::string(70 - text.size(), ' '); }

struct CALL {
  std::int32_t code = 0;
  std::int32_t types = 0;
  std::int32_t integer[2] = {0, 0};
  std::string text[2];
  std::int32_t room = 500;
};

// The whole field, after a look at the guard bytes behind it. Values that `types` does not announce are null.
std::string message(const CALL& call) {
  std::string buffer(static_cast<std::size_t>(call.room) + 16, UNTOUCHED);
  const std::int32_t given = call.types / 10;
  const std::int32_t length[2] = {static_cast<std::int32_t>(call.text[0].size()),
                                  static_cast<std::int32_t>(call.text[1].size())};
  const bool text1 = call.types % 10 > 0, text2 = call.types % 10 > 1;
  std::int32_t ierr = 0;
  WERRTU(&call.code, &call.types, given > 0 ? &call.integer[0] : nullptr, given > 1 ? &call.integer[1] : nullptr,
         nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, text1 ? call.text[0].data() : nullptr,
         text1 ? &length[0] : nullptr, text2 ? call.text[1].data() : nullptr, text2 ? &length[1] : nullptr, nullptr,
         nullptr, &ierr, buffer.data(), &call.room);
  EXPECT_EQ(ierr, call.code);
  EXPECT_EQ(buffer.substr(static_cast<std::size_t>(call.room)), std::string(16, UNTOUCHED));
  return buffer.substr(0, static_cast<std::size_t>(call.room));
}

std::string padded(std::string text, std::size_t room) {
  text.resize(room, ' ');
  return text;
}

}  // namespace

TEST(Messages, ASingularSolidElement) {
  const std::string expected =
      "Solid element 4711: the Jacobian is singular. Check the number of its nodes, their order and their positions.";
  EXPECT_EQ(message({1228, 10, {4711, 0}, {}, 500}), padded(expected, 500));
}

TEST(Messages, ACableThatFails) {
  const std::string expected = "Cable element 12: Case_1_L_0_3D2 ended with status -3 (called by kStifT).";
  EXPECT_EQ(message({1264, 22, {12, -3}, {field("kStifT"), field("Case_1_L_0_3D2")}, 500}), padded(expected, 500));
}

TEST(Messages, AnUnknownNumberIsNamed) {
  EXPECT_EQ(message({77, 0, {}, {}, 500}), padded("Message 77: no text is known for this number.", 500));
  EXPECT_EQ(message({-2147483647 - 1, 0, {}, {}, 500}),
            padded("Message -2147483648: no text is known for this number.", 500));
}

TEST(Messages, ValuesThatAreNotGivenShowAsQuestionMarks) {
  const std::string expected = "Cable element 5: ? ended with status ? (called by kStifT).";
  EXPECT_EQ(message({1264, 11, {5, 0}, {field("kStifT"), ""}, 500}), padded(expected, 500));
  EXPECT_EQ(message({1264, -5, {}, {}, 500}), padded("Cable element ?: ? ended with status ? (called by ?).", 500));
}

TEST(Messages, ATextEndsAtItsTerminator) {
  const std::string routine("kStifT\0garbage ", 15);
  const std::string expected = "Cable element 5: a b ended with status 6 (called by kStifT).";
  EXPECT_EQ(message({1264, 22, {5, 6}, {routine, "a b"}, 500}), padded(expected, 500));
}

TEST(Messages, ATextMayHaveOneLetterOrNone) {
  EXPECT_EQ(message({1264, 22, {5, 6}, {"k", "C"}, 500}),
            padded("Cable element 5: C ended with status 6 (called by k).", 500));
  EXPECT_EQ(message({1264, 22, {5, 6}, {"", " "}, 500}),
            padded("Cable element 5:  ended with status 6 (called by ).", 500));
}

TEST(Messages, AShortFieldCutsTheText) {
  const std::string whole = "Solid element 9: the Jacobian is singular.";
  for (std::int32_t room : {1, 14, 16, 30}) {
    EXPECT_EQ(message({1228, 10, {9, 0}, {}, room}), whole.substr(0, static_cast<std::size_t>(room)));
  }
}

TEST(Messages, WithoutAFieldTheNumberIsStillReturned) {
  const std::int32_t code = 1228, types = 0, room = 500, negative = -1;
  for (const std::int32_t* length : {&room, &negative}) {
    std::int32_t ierr = 0;
    char byte = UNTOUCHED;
    WERRTU(&code, &types, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
           nullptr, nullptr, nullptr, nullptr, nullptr, &ierr, length == &room ? nullptr : &byte, length);
    EXPECT_EQ(ierr, 1228);
    EXPECT_EQ(byte, UNTOUCHED);
  }
}

TEST(Messages, MoreValuesThanThereArePlacesAreNotRead) {
  const std::int32_t code = 1228, value = 3, room = 60, types = std::numeric_limits<std::int32_t>::max();
  const std::int32_t length = 1;
  std::int32_t ierr = 0;
  std::string buffer(60, UNTOUCHED);
  WERRTU(&code, &types, &value, &value, &value, &value, &value, &value, &value, &value, &value, "a", &length, "b",
         &length, "c", &length, &ierr, buffer.data(), &room);
  EXPECT_EQ(buffer.substr(0, 17), "Solid element 3: ");
}
