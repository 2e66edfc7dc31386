// deck_pressed_sides_test.cpp: the note on pressures that oppose each other over a common edge.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "deck_builder.h"

using deck_test::expect_notes;

namespace {

// Plates of one set on a row of nodes 1 to 5 along x, and 11 to 15 beside it.
std::string plates(const std::string& elements, const std::string& load, const std::string& type = "S4") {
  std::string text = "*NODE, NSET=ALL\n";
  for (int i = 1; i <= 5; ++i) {
    const std::string x = std::to_string(i);
    text += x + ", " + x + ", 0., 0.\n1" + x + ", " + x + ", 1., 0.\n";
  }
  text += "*ELEMENT, TYPE=" + type + ", ELSET=S\n" + elements;
  text += type[0] == 'S' ? "*SHELL SECTION" : "*MEMBRANE SECTION";
  text += ", ELSET=S, MATERIAL=M\n0.1\n*MATERIAL, NAME=M\n*ELASTIC\n1000., 0.3\n*BOUNDARY\nALL, 1, 6\n";
  return text + "*STEP\n*STATIC\n" + load + "*END STEP\n";
}

const std::string ALIKE = "1, 1, 2, 12, 11\n2, 2, 3, 13, 12\n3, 3, 4, 14, 13\n4, 4, 5, 15, 14\n";
const std::string TURNED = "1, 1, 2, 12, 11\n2, 2, 12, 13, 3\n3, 3, 13, 14, 4\n4, 4, 5, 15, 14\n";
const std::string P = "*DLOAD\nS, P, 6.\n";

std::string sentence(int line, const std::string& keyword, const std::string& who, const std::string& pair,
                     bool one = false) {
  return "plate.inp:" + std::to_string(line) + ": " + keyword + ": " + who + " pressed elements " +
         (one ? "points the other way than its" : "point the other way than their") +
         " neighbours over a common edge (" + pair +
         "): their pressures oppose each other; turn the order of the nodes of " +
         (one ? "that one, or give it the opposite sign on a line of its own"
              : "those, or give them the opposite sign on a line of their own");
}

}  // namespace

TEST(DeckPressedSides, TheFewerOnesAreCounted) {
  expect_notes(plates(ALIKE, P), {});
  expect_notes(plates(TURNED, P), {sentence(27, "*DLOAD", "2 of 4", "element 1 beside 2")});
  expect_notes(plates(TURNED, P, "M3D4"), {sentence(27, "*DLOAD", "2 of 4", "element 1 beside 2")});
  // Three of the four the other way: the one is named.
  expect_notes(plates("1, 1, 2, 12, 11\n2, 2, 12, 13, 3\n3, 3, 13, 14, 4\n4, 4, 14, 15, 5\n", P),
               {sentence(27, "*DLOAD", "1 of 4", "element 1 beside 2", true)});
  // Plates that touch at a node or not at all say nothing of each other.
  expect_notes(plates("1, 1, 2, 12, 11\n4, 4, 14, 15, 5\n", P), {});
}

TEST(DeckPressedSides, TheSignCounts) {
  const std::string turned_back = "*DLOAD\n1, P, 6.\n4, P, 6.\n2, P, -6.\n3, P, -6.\n";
  expect_notes(plates(TURNED, turned_back), {});
  expect_notes(plates(TURNED, "*DLOAD\nS, HP, 6., 2., 1.\n"), {sentence(27, "*DLOAD", "2 of 4", "element 1 beside 2")});
  // 0 presses nothing; a step without any load is told of.
  expect_notes(plates(TURNED, "*DLOAD\nS, P, 0.\n*CLOAD\nALL, 3, 1.\n"), {});
  // The sides of a surface turn with the elements: the upper side of all.
  const std::string surface = "*SURFACE, NAME=TOP\n1, SPOS\n4, SPOS\n2, SNEG\n3, SNEG\n";
  const std::string wrong = "*SURFACE, NAME=TOP\nS, SPOS\n", load = "*DSLOAD\nTOP, P, 6.\n",
                    fluid = "*DSLOAD\nTOP, HP, 6., 2., 1.\n";
  expect_notes(plates(TURNED + surface, load), {});
  expect_notes(plates(TURNED + surface, fluid), {});
  expect_notes(plates(TURNED + wrong, load), {sentence(29, "*DSLOAD", "2 of 4", "element 1 beside 2")});
  expect_notes(plates(TURNED + wrong, fluid), {sentence(29, "*DSLOAD", "2 of 4", "element 1 beside 2")});
}

TEST(DeckPressedSides, EveryLoadIsToldOfOnce) {
  const std::string two_lines = "*DLOAD\nS, P, 6.\nS, P, 7.\n";
  expect_notes(plates(TURNED, two_lines),
               {sentence(27, "*DLOAD", "2 of 4", "element 1 beside 2") + " (2 times; this is the first)"});
  // Gravity has no side.
  expect_notes(plates(TURNED, "*DLOAD\nS, BZ, 6.\n"), {});
}

// Quadratic elements count as what the deck has: two, of which one is turned.
TEST(DeckPressedSides, PartsOfAnElementAreOne) {
  const std::string nodes =
      "*NODE, NSET=ALL\n1, 0., 0., 0.\n2, 1., 0., 0.\n3, 2., 0., 0.\n4, 3., 0., 0.\n5, 4., 0., 0.\n"
      "6, 0., 1., 0.\n7, 2., 1., 0.\n8, 4., 1., 0.\n9, 0., 2., 0.\n10, 1., 2., 0.\n11, 2., 2., 0.\n"
      "12, 3., 2., 0.\n13, 4., 2., 0.\n*ELEMENT, TYPE=S8R, ELSET=S\n";
  const std::string rest =
      "*SHELL SECTION, ELSET=S, MATERIAL=M\n0.1\n*MATERIAL, NAME=M\n*ELASTIC\n1000., 0.3\n"
      "*BOUNDARY\nALL, 1, 6\n*STEP\n*STATIC\n*DLOAD\nS, P, 1.\n*END STEP\n";
  const auto notes = [&](const std::string& second) {
    return deck_test::read(nodes + "1, 1, 3, 11, 9, 2, 7, 10, 6\n2, " + second + rest).notes;
  };
  const std::vector<std::string> alike = notes("3, 5, 13, 11, 4, 8, 12, 7\n");
  const std::vector<std::string> turned = notes("3, 11, 13, 5, 7, 12, 8, 4\n");
  ASSERT_EQ(turned.size(), alike.size() + 1);
  EXPECT_EQ(turned.back(), sentence(28, "*DLOAD", "1 of 2", "element 1 beside 2", true));
}

// Two plates on the same nodes, as layers have them, and three at an edge.
TEST(DeckPressedSides, LayersAndBranchesAreNoFault) {
  expect_notes(plates("1, 1, 2, 12, 11\n2, 1, 2, 12, 11\n", P), {});
  std::string branch = plates("1, 1, 2, 12, 11\n2, 2, 3, 13, 12\n3, 2, 23, 22, 12\n", P);
  branch.insert(branch.find("*ELEMENT"), "22, 2., 1., 1.\n23, 2., 0., 1.\n");
  branch.replace(branch.find("3, 2, 23, 22, 12"), 16, "3, 12, 22, 23, 2");
  expect_notes(branch, {});
}

// A strip of five triangles with half a turn has one side: however its nodes go round, two oppose each other.
TEST(DeckPressedSides, ASurfaceWithOneSide) {
  std::string text =
      "*NODE, NSET=ALL\n1, 1., 0., 0.\n2, .3, .95, .2\n3, -.8, .6, .5\n4, -.8, -.6, -.3\n5, .3, -.95, .4\n"
      "*ELEMENT, TYPE=S3, ELSET=S\n1, 1, 2, 3\n2, 2, 4, 3\n3, 3, 4, 5\n4, 4, 1, 5\n5, 5, 1, 2\n"
      "*SHELL SECTION, ELSET=S, MATERIAL=M\n0.01\n*MATERIAL, NAME=M\n*ELASTIC\n1000., 0.3\n"
      "*BOUNDARY\nALL, 1, 6\n*STEP\n*STATIC\n*DLOAD\nS, P, 1.\n*END STEP\n";
  const std::vector<std::string> notes = deck_test::read(text).notes;
  ASSERT_EQ(notes.size(), 1u);
  EXPECT_NE(notes[0].find(" of 5 pressed elements point the other way"), std::string::npos) << notes[0];
}
