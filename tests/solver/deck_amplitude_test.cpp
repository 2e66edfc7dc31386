// deck_amplitude_test.cpp: amplitudes: the value at the end of the step, and what is refused.
#include <gtest/gtest.h>

#include "deck_builder.h"

using namespace deck_test;

namespace {

// The good deck with a table in its head and *STATIC, *CLOAD and *TEMPERATURE that follow it.
std::string with(const std::string& table, const std::string& step, const std::string& load) {
  std::vector<std::string> lines = GOOD;
  lines[14] = table + "\n" + lines[14];
  lines[26] = step;
  lines[27] = load;
  return text_of(lines);
}

double load_of(const std::string& table, const std::string& step) {
  return read(with("*AMPLITUDE, NAME=A" + table, step, "*CLOAD, AMPLITUDE=a")).steps[0].nodal_loads[0].value;
}

}  // namespace

TEST(deck_amplitude, value_at_the_end_of_the_step) {
  EXPECT_EQ(load_of("\n0., 0., 2., 1.", "*STATIC"), -50);            // a step takes 1
  EXPECT_EQ(load_of("\n0., 0., 2., 1.", "*STATIC\n0.1, 1.5"), -75);  // the second field
  EXPECT_EQ(load_of("\n0., 0., 2., 1.", "*STATIC\n1., 8."), -100);   // the last value holds on
  EXPECT_EQ(load_of("\n3., 0.25, 4., 1.", "*STATIC"), -25);          // and the first one before it
  EXPECT_EQ(load_of("\n0., 0., 0.5, 4., 1., 2., 2., 0.\n", "*STATIC"), -200);
  EXPECT_EQ(load_of("\n0., 0.\n1., 3.", "*STATIC"), -300);  // pairs on lines of their own
  EXPECT_EQ(load_of(", VALUE=ABSOLUTE\n0., 0., 1., 7.", "*STATIC"), 7);
}

TEST(deck_amplitude, total_time_counts_from_the_first_step) {
  const std::string table = "*AMPLITUDE, NAME=A, TIME=TOTAL TIME\n0., 0., 10., 10.\n";
  std::vector<std::string> lines = GOOD;
  lines[14] = table + lines[14];
  lines[26] = "*STATIC\n1., 2.5";
  const std::string more =
      "*STEP\n*FREQUENCY\n1\n*END STEP\n*STEP\n*STATIC\n1., 3.\n*CLOAD, AMPLITUDE=A\n3, 1, 1.\n*END STEP\n";
  EXPECT_EQ(read(text_of(lines) + more).steps[2].nodal_loads[0].value, 5.5);
}

TEST(deck_amplitude, every_card_takes_it) {
  std::vector<std::string> lines = GOOD;
  lines[14] = "*AMPLITUDE, NAME=A\n0., 0., 1., 0.5\n" + lines[14];
  lines[27] = "*BOUNDARY, AMPLITUDE=A\n2, 1, 1, 8.\n*CLOAD";
  lines[29] = "*DLOAD, AMPLITUDE=A";
  lines[32] = "*TEMPERATURE, AMPLITUDE=A";
  const solver::step s = read(text_of(lines)).steps[0];
  EXPECT_EQ(s.boundaries[0].value, 4);
  EXPECT_EQ(s.nodal_loads[0].value, -100);
  EXPECT_EQ(s.element_loads[0].magnitude, 500);
  EXPECT_EQ(s.element_loads[2].magnitude, 9.81 / 2);
  EXPECT_EQ(s.temperatures[0].change, 10);
  EXPECT_EQ(s.temperatures[0].gradient, 2.5);
}

TEST(deck_amplitude, the_value_is_noted) {
  expect_notes(with("*AMPLITUDE, NAME=A\n0., 0., 1., 0.25", "*STATIC", "*CLOAD, AMPLITUDE=A"),
               {"plate.inp:30: *CLOAD: the amplitude 'A' has the value 0.25 at the step time 1: the values of the card "
                "are taken times it"});
}

TEST(deck_amplitude, refused) {
  const std::string table = "*AMPLITUDE, NAME=A\n0., 0., 1., 1.";
  expect_error(with(table, "*STATIC", "*CLOAD, AMPLITUDE=B"), 30, "*CLOAD", "the amplitude 'B' is not defined");
  expect_error(with("*AMPLITUDE, NAME=A, DEFINITION=PERIODIC\n1, 1., 0., 0.", "*STATIC", "*CLOAD, AMPLITUDE=A"), 15,
               "*AMPLITUDE",
               "DEFINITION=PERIODIC is not supported; TABULAR is: a step takes the value at its end, which a table of "
               "two lines can give");
  expect_error(with("*AMPLITUDE, NAME=A\n0., 0., 0., 1.", "*STATIC", "*CLOAD"), 16, "*AMPLITUDE",
               "time: '0.' does not lie after the time before it");
  expect_error(with("*AMPLITUDE, NAME=A\n0., 0., 1.", "*STATIC", "*CLOAD"), 16, "*AMPLITUDE",
               "too few fields (3): time, value, and so on, four pairs on a line");
  expect_error(with(table + "\n" + table, "*STATIC", "*CLOAD"), 17, "*AMPLITUDE",
               "the amplitude 'A' is defined already, in line 15");
  expect_error(with("*AMPLITUDE, NAME=A, TIME=LOCAL\n0., 0.", "*STATIC", "*CLOAD"), 15, "*AMPLITUDE",
               "TIME is STEP TIME or TOTAL TIME, not 'LOCAL'");
  std::vector<std::string> lines = GOOD;
  lines[23] = table + "\n*BOUNDARY, AMPLITUDE=A";
  expect_error(text_of(lines), 26, "*BOUNDARY", "AMPLITUDE belongs inside a *STEP");
  lines = GOOD;
  lines[14] = table + "\n" + lines[14];
  lines[25] = "*STEP, PERTURBATION";
  lines[27] = "*CLOAD, AMPLITUDE=A";
  expect_error(text_of(lines), 30, "*CLOAD",
               "AMPLITUDE is not supported in a step with PERTURBATION or *BUCKLE, which has no time: write the values "
               "on the data lines");
}
