// deck_masses_test.cpp: *MASS, *ROTARY INERTIA and MASS of *FREQUENCY, and what is wrong with them.
#include "deck_builder.h"

#include <gtest/gtest.h>

using namespace deck_test;

namespace {

std::string deck(const std::string& cards, const std::string& step = "*STEP\n*STATIC\n*CLOAD\n1, 1, 1.\n*END STEP\n") {
  return "*NODE\n1, 0., 0., 0.\n*ELEMENT, TYPE=SPRING1, ELSET=S\n1, 1\n*SPRING, ELSET=S\n1\n1.\n*ELEMENT, TYPE=MASS, "
         "ELSET=M\n2, 1\n*ELEMENT, TYPE=ROTARYI, ELSET=R\n3, 1\n" +
         cards + step;
}

const char* const MASS = "*MASS, ELSET=M\n2.5\n";
const char* const ROTARY = "*ROTARY INERTIA, ELSET=R\n1., 2., 3.\n";

}  // namespace

TEST(DeckMasses, ValuesAndOrder) {
  for (const std::string& cards : {std::string(MASS) + ROTARY, std::string(ROTARY) + MASS}) {
    const solver::model m = read(deck(cards));
    EXPECT_EQ(m.point_masses[m.elements[1].section].mass, 2.5);
    EXPECT_EQ(m.point_masses[m.elements[2].section].inertia, (std::array<double, 6>{1, 2, 3, 0, 0, 0}));
  }
  const solver::model m = read(deck(std::string(MASS) + "*ROTARY INERTIA, ELSET=R\n4., 5., 6., 0.1, 0.2, 0.3\n"));
  EXPECT_EQ(m.point_masses[1].inertia, (std::array<double, 6>{4, 5, 6, 0.1, 0.2, 0.3}));
}

TEST(DeckMasses, ChoiceOfFrequency) {
  const auto lumped = [](const std::string& choice) {
    return read(deck(std::string(MASS) + ROTARY, "*STEP\n*FREQUENCY" + choice + "\n1\n*END STEP\n"))
        .steps[0]
        .lumped_mass;
  };
  EXPECT_FALSE(lumped(""));
  EXPECT_FALSE(lumped(", MASS=CONSISTENT"));
  EXPECT_TRUE(lumped(", MASS=lumped"));
  expect_error(deck(std::string(MASS) + ROTARY, "*STEP\n*FREQUENCY, MASS=HEAVY\n1\n*END STEP\n"), 17, "*FREQUENCY",
               "MASS is CONSISTENT or LUMPED, not 'HEAVY'");
}

TEST(DeckMasses, DampingIsNoted) {
  const solver::model m = read(deck(std::string("*MASS, ELSET=M, ALPHA=0.1\n2.5\n") + ROTARY));
  ASSERT_EQ(m.notes.size(), 1U);
  EXPECT_EQ(m.notes[0], "plate.inp:12: *MASS: ALPHA has no effect: no analysis has damping");
}

TEST(DeckMasses, Errors) {
  expect_error(deck(ROTARY), 9, "*ELEMENT", "element 2 has no section: it is a mass (MASS): it takes a *MASS");
  expect_error(deck(MASS), 11, "*ELEMENT",
               "element 3 has no section: it is a rotary inertia (ROTARYI): it takes a *ROTARY INERTIA");
  expect_error(deck("*MASS, ELSET=M\n-1.\n"), 13, "*MASS", "mass: '-1.' is not positive");
  expect_error(deck("*MASS, ELSET=M\n1., 2.\n"), 13, "*MASS", "too many fields (2): mass");
  expect_error(deck("*MASS, ELSET=M\n"), 12, "*MASS", "no data line follows");
  expect_error(deck("*MASS, ELSET=S\n1.\n"), 12, "*MASS", "element 1 is a spring: it takes a *SPRING");
  expect_error(deck("*MASS, ELSET=M, TYPE=ANISOTROPIC\n1.\n"), 12, "*MASS",
               "TYPE=ANISOTROPIC is not supported; ISOTROPIC is: one mass in all directions");
  expect_error(deck(std::string(MASS) + MASS), 14, "*MASS", "element 2 has its values already, of line 12");
  expect_error(deck("*ROTARY INERTIA, ELSET=R\n1., 1., 1., 2.\n"), 13, "*ROTARY INERTIA",
               "no body has these moments of inertia: their matrix is not positive");
  expect_error(deck("*ROTARY INERTIA, ELSET=R\n1., 1.\n"), 13, "*ROTARY INERTIA",
               "too few fields (2): I11, I22, I33, I12, I13, I23");
  expect_error(deck("*SPRING, ELSET=M\n1.\n"), 12, "*SPRING", "element 2 of line 9 is a mass (MASS): it takes a *MASS");
}
