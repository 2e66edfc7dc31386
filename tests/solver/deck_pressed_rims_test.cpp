// deck_pressed_rims_test.cpp: the note on P at free curved edges of shells.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "deck_builder.h"

using deck_test::expect_notes;

namespace {

constexpr double PI = 3.14159265358979323846;

// A sheet of 8 by 2 elements, 0.05 thick, that turns by `angle` (degrees) from element to element of the length 0.1,
// and is `depth` deep: nodes 1 to 9 on its free edge, 201 to 209 held.
std::string sheet(double angle, double depth, const std::string& more = "", const std::string& load = "S, P, 6.",
                  const std::string& type = "S4", const std::string& more_nodes = "") {
  std::string text = "*NODE\n";
  for (int row = 0; row <= 2; ++row) {
    double x = 0, y = 0;
    for (int i = 0; i <= 8; ++i) {
      text += std::to_string(100 * row + i + 1) + ", " + std::to_string(x) + ", " + std::to_string(y) + ", " +
              std::to_string(depth * row) + "\n";
      x += 0.1 * std::cos(i * angle * PI / 180);
      y += 0.1 * std::sin(i * angle * PI / 180);
    }
  }
  text += more_nodes + "*NSET, NSET=HELD, GENERATE\n201, 209, 1\n*ELEMENT, TYPE=" + type + "\n1, 1, 2, 102, 101\n";
  text += "*ELGEN, ELSET=S\n1, 8, 1, 1, 2, 100, 100\n";
  text += type[0] == 'S' ? "*SHELL SECTION" : "*MEMBRANE SECTION";
  text += ", ELSET=S, MATERIAL=M\n0.05\n*MATERIAL, NAME=M\n*ELASTIC\n1000., 0.3\n*BOUNDARY\nHELD, 1, 6\n";
  return text + more + "*STEP\n*STATIC\n*DLOAD\n" + load + "\n*END STEP\n";
}

std::string sentence(int line, const std::string& sides, const std::string& share, const std::string& element = "1") {
  return "plate.inp:" + std::to_string(line) +
         ": *DLOAD: P on a shell has moments at its nodes, as a flat plate needs them; along " + sides +
         " of a free curved edge (element " + element + ") they change the displacements by " + share +
         " of what the pressure causes: take smaller elements there, or HP, which presses by forces alone";
}

}  // namespace

// The edge turns by 2 sin(5 degrees) in 0.1: 1 / R = 1.743 towards the normal of the elements beside the node, of which
// each is 5 degrees off the mean. L^2 / (R t) = 0.1^2 1.74 / 0.05 = 0.348, of which 0.275 is 9.6 %.
TEST(DeckPressedRims, WhatTheMomentsDoIsTold) {
  expect_notes(sheet(10, 0.1), {sentence(45, "8 sides", "about 10 %")});
  expect_notes(sheet(-10, 0.1), {sentence(45, "8 sides", "about 10 %")});  // curved the other way
  expect_notes(sheet(10, 0.05), {sentence(45, "8 sides", "about 2 %")});   // a quarter of it
  expect_notes(sheet(10, 0.02), {});                                       // 0.4 %
  expect_notes(sheet(10, 0.2), {sentence(45, "8 sides", "more than a tenth")});
  expect_notes(sheet(10, 0.1, "", "2, P, 6."), {sentence(45, "1 side", "about 10 %", "2")});
}

TEST(DeckPressedRims, WhereNothingIsLeftOverNothingIsSaid) {
  expect_notes(sheet(0, 0.1), {});    // flat
  expect_notes(sheet(60, 0.01), {});  // folds
  expect_notes(sheet(10, 0.1, "", "S, HP, 6., 9., 0."), {});
  expect_notes(sheet(10, 0.1, "", "S, BZ, 6."), {});
  expect_notes(sheet(10, 0.1, "", "S, P, 6.", "M3D4"), {});            // membranes have no moments
  expect_notes(sheet(10, 0.1, "1, 1\n3, 2\n5, 3\n7, 1\n9, 1\n"), {});  // no side without a support
}

// A ring along the edge takes up the moments.
TEST(DeckPressedRims, MembersAlongTheEdgeStiffenIt) {
  const std::string ring =
      "*ELEMENT, TYPE=B33, ELSET=RING\n901, 1, 2\n902, 2, 3\n903, 3, 4\n904, 4, 5\n905, 5, 6\n"
      "906, 6, 7\n"
      "*BEAM SECTION, ELSET=RING, MATERIAL=M, SECTION=RECT\n0.1, 0.1\n0., 0., 1.\n";
  expect_notes(sheet(10, 0.1, ring), {sentence(55, "2 sides", "about 10 %", "7")});
}
