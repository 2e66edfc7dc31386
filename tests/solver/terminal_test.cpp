// terminal_test.cpp: the line that shows how far work has come, colour, and the options of both.
#include "system/terminal.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <cstdio>
#include <string>
#include <thread>

#include "system/progress.h"

using solver::color_choice;

TEST(Terminal, Durations) {
  EXPECT_EQ(solver::duration_text(0.4), "0 s");
  EXPECT_EQ(solver::duration_text(119.4), "119 s");
  EXPECT_EQ(solver::duration_text(120), "2 min");
  EXPECT_EQ(solver::duration_text(3599), "60 min");
  EXPECT_EQ(solver::duration_text(3600), "1 h 00 min");
  EXPECT_EQ(solver::duration_text(3 * 3600 + 5 * 60 + 10), "3 h 05 min");
}

TEST(Terminal, ALineLeavesTheLastColumnFree) {
  EXPECT_EQ(solver::fitted("abcdef", 7), "abcdef");
  EXPECT_EQ(solver::fitted("abcdef", 6), "abcde");
  EXPECT_EQ(solver::fitted("abc\xc3\xa4", 5), "abc");  // two bytes of one letter
  EXPECT_EQ(solver::fitted("abc", 0), "a");
}

// Steps of equal length for eight tenths of a second, of which the first half shows nothing: what is left is about the
// time per step so far times the steps that remain.
TEST(Terminal, ProgressSaysHowMuchIsLeft) {
  testing::internal::CaptureStderr();
  {
    const auto start = std::chrono::steady_clock::now();
    const auto passed = [&] { return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(); };
    const solver::progress report("calls", true);
    while (passed() < 0.8) report.at(64 * static_cast<std::size_t>(passed() * 1000 / 8), 64 * 1000);
  }
  const std::string text = testing::internal::GetCapturedStderr();
  const std::size_t at = text.find("\rcalls ");
  ASSERT_NE(at, std::string::npos) << text;
  int percent = 0, left = 0;
  ASSERT_EQ(std::sscanf(text.c_str() + at, "\rcalls %d %%, about %d s left", &percent, &left), 2) << text;
  EXPECT_GE(percent, 5);
  EXPECT_LE(percent, 10);
  EXPECT_GE(left, 6);  // a step takes 8 ms, and 1000 of them 8 s
  EXPECT_LE(left, 9);
  EXPECT_EQ(text.substr(text.size() - 4), "\r\033[K");
}

// Work of 1.7 seconds, watched for half a second: the time left shrinks, and the line is wiped.
TEST(Terminal, AClockSaysWhatIsLeft) {
  std::FILE* const out = std::tmpfile();
  ASSERT_NE(out, nullptr);
  {
    const solver::ticking_clock clock("order", true, out, std::chrono::milliseconds(20), 1.7);
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
  }
  std::string text(static_cast<std::size_t>(std::ftell(out)), '\0');
  std::rewind(out);
  EXPECT_EQ(std::fread(text.data(), 1, text.size(), out), text.size());
  std::fclose(out);
  EXPECT_NE(text.find("\rorder, 0 s, about 2 s left"), std::string::npos) << text;
  EXPECT_NE(text.find("\rorder, 0 s, about 1 s left"), std::string::npos) << text;
  EXPECT_EQ(text.substr(text.size() - 4), "\r\033[K");
}

TEST(Terminal, NoProgressUnlessAllowedOrWatched) {
  testing::internal::CaptureStderr();
  {
    const auto start = std::chrono::steady_clock::now();
    const solver::progress report("calls", false);
    while (std::chrono::steady_clock::now() - start < std::chrono::milliseconds(600)) report.at("somewhere");
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_FALSE(solver::progress_is_shown());
}

TEST(Terminal, ColorOfTheFirstWordAlone) {
  const std::string plain = "warning: a\nerror: b\nfinites-solve: c\nno warning: d\n";
  solver::choose_color(color_choice::NEVER);
  EXPECT_EQ(solver::colored(plain), plain);
  solver::choose_color(color_choice::ALWAYS);
  EXPECT_EQ(solver::colored(plain),
            "\033[1;35mwarning:\033[0m a\n\033[1;31merror:\033[0m b\n\033[1;31mfinites-solve:\033[0m c\n"
            "no warning: d\n");
  EXPECT_EQ(solver::colored(""), "");
  EXPECT_EQ(solver::colored("warning: x"), "\033[1;35mwarning:\033[0m x");
  solver::choose_color(color_choice::NEVER);
}
