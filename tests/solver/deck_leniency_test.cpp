// deck_leniency_test.cpp: what other programs leave out or write beside; what refused keywords say; options of steps.
#include <gtest/gtest.h>

#include <cmath>

#include "deck/hints.h"
#include "deck_builder.h"
#include "run_support.h"

using namespace deck_test;

TEST(deck_leniency, coordinates_left_out_are_zero) {
  const solver::model m = read(replaced(4, "1"));
  EXPECT_EQ(m.nodes[0].xyz, (std::array<double, 3>{0, 0, 0}));
  EXPECT_EQ(read(replaced(7, "4, , 1.")).nodes[3].xyz, (std::array<double, 3>{0, 1, 0}));
}

TEST(deck_leniency, nodes_in_cylinder_and_sphere_coordinates) {
  std::vector<std::string> lines = GOOD;
  lines[2] = "*NODE, NSET=ALL, SYSTEM=C";
  lines[5] = "3, 2., 30., 5.";
  lines[6] = "4, 1., 90.";
  const std::array<double, 3> q = read(text_of(lines)).nodes[2].xyz;
  EXPECT_NEAR(q[0], std::sqrt(3.0), 1e-15);
  EXPECT_NEAR(q[1], 1, 1e-15);
  EXPECT_EQ(q[2], 5);
  lines = GOOD;
  lines[2] = "*NODE, NSET=ALL, SYSTEM=S";
  lines[5] = "3, 2., 90., 30.";
  lines[6] = "4, 1., 0., 90.";
  const std::array<double, 3> p = read(text_of(lines)).nodes[2].xyz;
  EXPECT_NEAR(p[0], 0, 1e-15);
  EXPECT_NEAR(p[1], std::sqrt(3.0), 1e-15);
  EXPECT_NEAR(p[2], 1, 1e-15);
  expect_error(replaced(3, "*NODE, SYSTEM=Q"), 3, "*NODE", "SYSTEM is R, C or S, not 'Q'", false);
}

TEST(deck_leniency, data_lines_in_a_file) {
  const scratch_folder scratch;
  scratch.write("nodes.txt", "1, 0., 0., 0.\n2, 1., 0., 0.\n");
  std::vector<std::string> lines = GOOD;
  lines[2] = "*NODE, NSET=ALL, INPUT=nodes.txt";
  lines.erase(lines.begin() + 3, lines.begin() + 5);
  const std::string deck = scratch.write("deck.inp", text_of(lines));
  EXPECT_EQ(read("*INCLUDE, INPUT=" + deck + "\n").nodes.size(), 4u);
  scratch.write("nodes.txt", "1, 0., 0., 0.\n*NSET, NSET=X\n1\n");
  try {
    read("*INCLUDE, INPUT=" + deck + "\n");
    ADD_FAILURE();
  } catch (const std::exception& error) {
    EXPECT_NE(std::string(error.what()).find("nodes.txt:2: *NSET: a file of data lines holds no keywords"),
              std::string::npos)
        << error.what();
  }
}

TEST(deck_leniency, names_that_begin_with_a_digit) {
  std::vector<std::string> lines = GOOD;
  lines[10] = "*NSET, NSET=1_LEFT";
  lines[24] = "1_left, 1, 6";
  lines[12] = "*ELSET, ELSET=\"2 lower\"";
  lines[30] = "2 LOWER, P, 1000.";
  const solver::model m = read(text_of(lines));
  EXPECT_EQ(m.boundaries.size(), 2u);
  EXPECT_EQ(m.steps[0].element_loads[0].element, 0);
  expect_error(replaced(11, "*NSET, NSET=1E5"), 11, "*NSET", "'1E5' is not a name: it is a number");
  expect_error(inserted(13, "*NSET, NSET=-A\n1"), 13, "*NSET",
               "'-A' is not a name: names begin with a letter, a digit or an underscore", false);
  expect_error(replaced(25, "3x, 1, 6"), 25, "*BOUNDARY", "node: '3x' is not an integer");
}

TEST(deck_leniency, headings_sets_and_flags) {
  EXPECT_EQ(read(without(2, 2)).title, "");
  const solver::model m = read(replaced(11, "*NSET, NSET=FIXED, INTERNAL, UNSORTED"));
  EXPECT_EQ(m.nsets[1].members.size(), 2u);
  const solver::model by_elements = read(inserted(15, "*NSET, NSET=OF_LOWER, ELSET=LOWER"));
  EXPECT_EQ(by_elements.nsets[2].members, (std::vector<int>{0, 1, 2}));
  expect_error(replaced(13, "*ELSET, ELSET=LOWER, INSTANCE=I"), 13, "*ELSET",
               "the parameter 'INSTANCE' is not known; known here: ELSET, GENERATE, INTERNAL, UNSORTED");
}

TEST(deck_leniency, operations_without_lines) {
  expect_notes(inserted(28, "*CLOAD, OP=NEW\n*DLOAD, OP=NEW"), {});
  expect_error(inserted(28, "*CLOAD"), 28, "*CLOAD", "no data line follows");
  expect_error(replaced(24, "*BOUNDARY, TYPE=VELOCITY"), 24, "*BOUNDARY",
               "TYPE=VELOCITY is not supported: nothing moves in time; DISPLACEMENT is");
}

TEST(deck_leniency, keywords_without_effect_are_noted_once) {
  const std::string twice =
      inserted(15, "*PREPRINT, ECHO=YES\n*PREPRINT, ECHO=NO\n*PHYSICAL CONSTANTS, ABSOLUTE ZERO=0");
  expect_notes(twice,
               {"plate.inp:15: *PREPRINT: the card has no effect: it concerns what other programs print (2 times; "
                "this is the first)",
                "plate.inp:17: *PHYSICAL CONSTANTS: the card has no effect: no step here uses it"});
  expect_notes(replaced(22, "*SHELL SECTION, ELSET=SKIN, MATERIAL=STEEL, CONTROLS=EC-1"),
               {"plate.inp:22: *SHELL SECTION: CONTROLS has no effect: elements are integrated by their own rules"});
}

TEST(deck_leniency, refused_keywords_say_what_to_do) {
  const auto refusal = [](const std::string& card) {
    try {
      read(inserted(26, card));
    } catch (const std::exception& error) {
      return std::string(error.what());
    }
    return std::string();
  };
  EXPECT_EQ(
      refusal("*NO ANALYSIS"),
      "plate.inp:26: *NO ANALYSIS: this solver does not have the keyword: finites-solve --check reads and checks a "
      "deck without solving it");
  for (const char* const card :
       {"*DYNAMIC", "*CONTACT PAIR", "*GAP", "*HEAT TRANSFER", "*MODAL DYNAMIC", "*STEADY STATE DYNAMICS", "*CREEP",
        "*VISCO", "*HYPERELASTIC", "*CYCLIC SYMMETRY MODEL", "*USER MATERIAL", "*SUBMODEL", "*MODEL CHANGE"}) {
    EXPECT_NE(refusal(card).find(std::string(card) + ": this solver does not have the keyword: "), std::string::npos)
        << refusal(card);
  }
  EXPECT_EQ(solver::deck::refusal_of("*COLOUR"), "this solver does not know the keyword");
  expect_error(
      replaced(27, "*STATIC, RIKS"), 27, "*STATIC",
      "the parameter RIKS is not supported: *PUSHOVER and *ELASTOPLASTIC follow frames and shells to their limit "
      "load, *BUCKLE gives the critical load");
}

namespace {

std::string modal(const std::string& line, const std::string& flags = "") {
  std::vector<std::string> lines = GOOD;
  lines.erase(lines.begin() + 27, lines.begin() + 34);
  lines[26] = "*FREQUENCY" + flags + "\n" + line;
  return text_of(lines);
}

std::vector<double> frequencies(const std::string& line, const std::string& flags = "") {
  return run_test::run(modal(line, flags)).modes(1);
}

}  // namespace

TEST(deck_leniency, frequencies_within_bounds) {
  const std::vector<double> all = frequencies("5");
  ASSERT_EQ(all.size(), 5u);
  const auto between = [&](int i) { return std::to_string((all[std::size_t(i)] + all[std::size_t(i) + 1]) / 2); };
  const std::vector<double> above = frequencies("2, " + between(1));
  ASSERT_EQ(above.size(), 2u);
  EXPECT_NEAR(above[0], all[2], 1e-9 * all[2]);
  EXPECT_NEAR(above[1], all[3], 1e-9 * all[3]);
  const std::vector<double> inside = frequencies("4, " + between(0) + ", " + between(2));
  ASSERT_EQ(inside.size(), 2u);
  EXPECT_NEAR(inside[1], all[2], 1e-9 * all[2]);
  EXPECT_EQ(frequencies("4, , " + between(2)).size(), 3u);
  EXPECT_EQ(frequencies("4, " + between(2), ", EIGENSOLVER=SUBSPACE").size(), 3u);
}

TEST(deck_leniency, options_of_frequencies) {
  expect_error(modal("2, 5., 3."), 28, "*FREQUENCY", "the highest frequency does not lie above the lowest");
  expect_error(modal("2, x"), 28, "*FREQUENCY", "lowest frequency: 'x' is not a number");
  expect_error(modal("2", ", EIGENSOLVER=OTHER"), 27, "*FREQUENCY",
               "EIGENSOLVER is LANCZOS, SUBSPACE or AMS, not 'OTHER'");
  expect_notes(
      modal("2, 0., 0., , 30", ", STORAGE=YES, EIGENSOLVER=LANCZOS, NORMALIZATION=DISPLACEMENT"),
      {"plate.inp:27: *FREQUENCY: STORAGE has no effect: the modes are in the results; no further step takes "
       "them",
       "plate.inp:27: *FREQUENCY: EIGENSOLVER has no effect: frequencies are found by this solver's own method",
       "plate.inp:27: *FREQUENCY: the fields after the highest frequency have no effect: they steer the search "
       "of other programs"});
}

TEST(deck_leniency, options_of_buckling) {
  std::vector<std::string> lines = GOOD;
  lines.erase(lines.begin() + 29, lines.begin() + 34);
  lines[26] = "*BUCKLE\n3, 1E-2, 20";
  expect_notes(text_of(lines),
               {"plate.inp:27: *BUCKLE: the fields after the number have no effect: the factors are found "
                "to the accuracy of the arithmetic"});
  const std::string both = "*BOUNDARY, OP=NEW, LOAD CASE=1\nFIXED, 1, 6\n*BOUNDARY, OP=NEW, LOAD CASE=2\nFIXED, 1, 6\n";
  lines[26] = "*BUCKLE\n3\n" + both;
  EXPECT_EQ(read(text_of(lines)).steps[0].boundaries.size(), 2u);
  lines[26] = "*BUCKLE\n3\n*BOUNDARY, LOAD CASE=1\nFIXED, 1, 6\n*BOUNDARY, LOAD CASE=2\nFIXED, 1, 3";
  expect_error(text_of(lines), 32, "*BOUNDARY",
               "LOAD CASE=2 holds other degrees of freedom than LOAD CASE=1: the shapes of a *BUCKLE are held as the "
               "state under its loads; take the whole structure where its shapes are not symmetric");
}
