// Temperatures and masses that a part of the model does not answer to are reported.
#include <gtest/gtest.h>

#include <algorithm>

#include "frame_decks.h"

namespace {

// A shell, a truss beside it, and a second material, as the texts say.
std::string mixed(const std::string& of_shell, const std::string& of_truss, const std::string& step) {
  return "*NODE\n1, 0, 0, 0\n2, 1, 0, 0\n3, 1, 1, 0\n4, 0, 1, 0\n5, 2, 0, 0\n*ELEMENT, TYPE=S4, ELSET=S\n1, 1, 2, 3, "
         "4\n"
         "*ELEMENT, TYPE=T3D2, ELSET=T\n2, 2, 5\n*MATERIAL, NAME=A\n*ELASTIC\n1000., 0.3\n" +
         of_shell + "*MATERIAL, NAME=B\n*ELASTIC\n1000., 0.3\n" + of_truss +
         "*SHELL SECTION, ELSET=S, MATERIAL=A\n0.1\n*SOLID SECTION, ELSET=T, MATERIAL=B\n0.01\n*BOUNDARY\n1, ENCASTRE\n"
         "4, ENCASTRE\n5, 1, 3\n*STEP\n" +
         step + "*END STEP\n";
}

int count(const std::string& deck, const std::string& sentence) {
  const solver::model m = frame_test::read(deck);
  return static_cast<int>(std::count_if(m.notes.begin(), m.notes.end(), [&](const std::string& note) {
    return note.find(sentence) != std::string::npos;
  }));
}

const std::string EXPANDS = "*EXPANSION\n1E-5\n", HEAVY = "*DENSITY\n1.\n";

}  // namespace

TEST(deck_lost_effects, a_gradient_where_no_shell_is) {
  const std::string lost =
      "*TEMPERATURE: the gradient at node 5 has no effect: gradients belong to shells, and none joins it";
  EXPECT_EQ(count(mixed(EXPANDS, EXPANDS, "*STATIC\n*TEMPERATURE\n2, 1., 3.\n5, 1., 3.\n"), lost), 1);
  EXPECT_EQ(count(mixed(EXPANDS, EXPANDS, "*STATIC\n*TEMPERATURE\n2, 1., 3.\n5, 1.\n"), "has no effect"), 0);
}

TEST(deck_lost_effects, a_heated_element_that_does_not_expand) {
  const std::string lost = "*MATERIAL: element 2 is heated and does not expand: the material 'B' has no *EXPANSION";
  EXPECT_EQ(count(mixed(EXPANDS, "", "*STATIC\n*TEMPERATURE\n5, 10.\n"), lost), 1);
  EXPECT_EQ(count(mixed(EXPANDS, "", "*STATIC\n*TEMPERATURE\n4, 10.\n"), "does not expand"), 0);
  EXPECT_EQ(count(mixed(EXPANDS, EXPANDS, "*STATIC\n*TEMPERATURE\n5, 10.\n"), "does not expand"), 0);
}

TEST(deck_lost_effects, an_element_without_mass_among_others) {
  const std::string lost =
      "*MATERIAL: element 2 has no mass in the step with *FREQUENCY: the material 'B' has no *DENSITY";
  EXPECT_EQ(count(mixed(HEAVY, "", "*FREQUENCY\n1\n"), lost), 1);
  EXPECT_EQ(count(mixed(HEAVY, HEAVY, "*FREQUENCY\n1\n"), "has no mass"), 0);
  EXPECT_EQ(count(mixed(HEAVY, "", "*STATIC\n*CLOAD\n2, 3, 1.\n"), "has no mass"), 0);
}
