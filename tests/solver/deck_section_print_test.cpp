// deck_section_print_test.cpp: *SECTION PRINT: what it asks for, what goes on in later steps, what is noted or refused.
#include <gtest/gtest.h>

#include <algorithm>

#include "deck_builder.h"
#include "output/flat_deck.h"

using namespace deck_test;

namespace {

using names = std::vector<std::string>;

std::string cubes(const std::string& surfaces, const std::string& steps) {
  return std::string(
             "*NODE\n1, 0., 0., 0.\n2, 1., 0., 0.\n3, 1., 1., 0.\n4, 0., 1., 0.\n5, 0., 0., 1.\n6, 1., 0., 1.\n7, 1., "
             "1., "
             "1.\n8, 0., 1., 1.\n9, 2., 0., 0.\n10, 2., 1., 0.\n11, 2., 0., 1.\n12, 2., 1., 1.\n13, 5., 0., 0.\n14, "
             "6., "
             "0., 0.\n15, 6., 1., 0.\n*ELEMENT, TYPE=C3D8, ELSET=CUBES\n1, 1, 2, 3, 4, 5, 6, 7, 8\n2, 2, 9, 10, 3, 6, "
             "11, "
             "12, 7\n*ELEMENT, TYPE=S3, ELSET=SHELL\n3, 13, 14, 15\n*MATERIAL, NAME=M\n*ELASTIC\n100., "
             "0.3\n*DENSITY\n1.\n") +
         "*SOLID SECTION, ELSET=CUBES, MATERIAL=M\n*SHELL SECTION, ELSET=SHELL, MATERIAL=M\n0.1\n" +
         "*BOUNDARY\n1, 1, 3\n4, 1, 3\n5, 1, 3\n8, 1, 3\n13, 1, 6\n" + surfaces + steps;
}

const std::string CUT = "*SURFACE, NAME=Cut\n1, S4\n";
const std::string LOADED = "*STEP\n*STATIC\n*CLOAD\n9, 1, 1.\n";

std::string with_card(const std::string& card, const std::string& surfaces = CUT) {
  return cubes(surfaces, LOADED + card + "\n*END STEP\n");
}

// The line of the card in such a deck.
int line_of(const std::string& deck) {
  const std::size_t at = deck.find("*SECTION PRINT");
  return 1 + static_cast<int>(std::count(deck.begin(), deck.begin() + static_cast<std::ptrdiff_t>(at), '\n'));
}

void expect_card_error(const std::string& card, const std::string& sentence, const std::string& surfaces = CUT) {
  const std::string deck = with_card(card, surfaces);
  expect_error(deck, line_of(deck), "*SECTION PRINT", sentence);
}

void expect_card_note(const std::string& deck, const std::string& sentence) {
  expect_notes(deck, {"plate.inp:" + std::to_string(line_of(deck)) + ": *SECTION PRINT: " + sentence});
}

}  // namespace

TEST(deck_section_print, a_request_goes_on_until_the_next) {
  const solver::model m = read(with_card("*SECTION PRINT, NAME=A, SURFACE=cut\nSOF, som\nSOAREA") + LOADED +
                               "*END STEP\n" + LOADED + "*SECTION PRINT, SURFACE=CUT, FREQUENCY=0\n*END STEP\n");
  ASSERT_EQ(m.steps.size(), 3u);
  for (const int step : {0, 1}) {
    ASSERT_EQ(m.steps[step].prints.size(), 1u);
    EXPECT_EQ(m.steps[step].prints[0].set, "CUT");
    EXPECT_EQ(m.steps[step].prints[0].quantities, (names{"SOF", "SOM", "SOAREA"}));
  }
  EXPECT_EQ(m.steps[2].prints[0].quantities, names{});
}

TEST(deck_section_print, errors) {
  expect_card_error("*SECTION PRINT, NAME=A\nSOF", "SURFACE is missing: the name of a surface of faces or edges");
  expect_card_error("*SECTION PRINT, NAME=A, SURFACE=NOWHERE\nSOF", "the surface 'NOWHERE' is not defined");
  expect_card_error("*SECTION PRINT, NAME=A, SURFACE=CUT\nSOF",
                    "the surface 'CUT' is one of nodes, which have no sides; make it of element faces or edges "
                    "(TYPE=ELEMENT), or use *NODE PRINT with RF and TOTALS=ONLY",
                    "*SURFACE, NAME=CUT, TYPE=NODE\n2\n");
  expect_card_error("*SECTION PRINT, NAME=A, SURFACE=CUT\nSOF",
                    "the surface 'CUT' is a side of shells, through which no section goes; name their edges (E1 to E4)",
                    "*SURFACE, NAME=CUT\n3, SPOS\n");
  expect_card_error("*SECTION PRINT, NAME=A, SURFACE=CUT\nSOF",
                    "the surface 'CUT' has a face from both sides, at element 2: what goes through it cancels; name "
                    "the elements of one side",
                    "*SURFACE, NAME=CUT\n1, S4\n2, S6\n");
  expect_card_error("*SECTION PRINT, NAME=A, SURFACE=CUT, AXES=LOCAL\nSOF",
                    "AXES=LOCAL is not supported: forces and moments stand in global axes; leave it away");
}

TEST(deck_section_print, notes) {
  expect_card_note(with_card("*SECTION PRINT, NAME=A, SURFACE=CUT\nSOF, SOCF"),
                   "'SOCF' is not printed by this solver; it prints SOF, SOM, SOAREA");
  expect_card_note(with_card("*SECTION PRINT, NAME=A, SURFACE=CUT, UPDATE=NO\nSOF"),
                   "UPDATE has no effect: the whole table is printed at the end of the step, in global axes");
  expect_card_note(with_card("*SECTION PRINT, NAME=A, SURFACE=CUT"),
                   "no data line names a quantity: nothing is printed");
  expect_card_note(cubes(CUT, "*STEP\n*FREQUENCY\n1\n*SECTION PRINT, NAME=A, SURFACE=CUT\nSOF\n*END STEP\n"),
                   "SOF is not printed: a step that looks for modes has displacements alone");
}

TEST(deck_section_print, a_flat_deck_has_surface_and_request) {
  const solver::model m = read(with_card("*SECTION PRINT, NAME=A, SURFACE=CUT\nSOF")), again = read(flat_deck(m));
  ASSERT_EQ(again.steps[0].prints.size(), 1u);
  EXPECT_EQ(again.steps[0].prints[0].quantities, names{"SOF"});
  ASSERT_EQ(again.surfaces.size(), 1u);
  EXPECT_EQ(again.surfaces[0].faces[0].element, 0);
  EXPECT_EQ(again.surfaces[0].faces[0].face, 4);
}
