// check_test.cpp: --check reads a deck, checks every element and solves nothing.
#include "check.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <string>

#include "deck_builder.h"
#include "model/deck_error.h"
#include "options.h"

namespace {

struct checked {
  bool good;
  std::string out, err;
  bool wrote;  // a file besides the deck
};

checked check(const std::string& deck) {
  const deck_test::scratch_folder scratch;
  solver::options wanted;
  wanted.deck = scratch.write("run.inp", deck);
  wanted.check = true;
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  checked result{};
  result.good = solver::check(wanted);
  result.out = testing::internal::GetCapturedStdout();
  result.err = testing::internal::GetCapturedStderr();
  const auto files = std::filesystem::directory_iterator(std::filesystem::path(wanted.deck).parent_path());
  result.wrote = std::distance(begin(files), end(files)) != 1;
  return result;
}

std::string solid(const std::string& top) {
  return "*NODE\n1, 0, 0, 0\n2, 1, 0, 0\n3, 0, 1, 0\n4, " + top +
         "\n*ELEMENT, TYPE=C3D4, ELSET=ALL\n70, 1, 2, 3, 4\n*MATERIAL, NAME=STEEL\n*ELASTIC\n210000, 0.3\n"
         "*SOLID SECTION, ELSET=ALL, MATERIAL=STEEL\n*BOUNDARY\n1, 1, 3\n2, 2, 3\n3, 3, 3\n"
         "*STEP\n*STATIC\n*CLOAD\n4, 3, 1\n*END STEP\n";
}

const char* const FRAME =
    "*NODE\n1, 0, 0, 0\n2, 1000, 0, 0\n3, 1000, 1000, 0\n4, 0, 1000, 0\n"
    "*ELEMENT, TYPE=S4, ELSET=PLATE\n1, 1, 2, 3, 4\n"
    "*ELEMENT, TYPE=B31, ELSET=BEAM\n2, 1, 3\n"
    "*ELEMENT, TYPE=T3D2, ELSET=BAR\n3, 2, 4\n"
    "*MATERIAL, NAME=STEEL\n*ELASTIC\n210000, 0.3\n"
    "*SHELL SECTION, ELSET=PLATE, MATERIAL=STEEL\n10\n"
    "*BEAM SECTION, SECTION=RECT, ELSET=BEAM, MATERIAL=STEEL\n50, 100\n0, 0, 1\n"
    "*SOLID SECTION, ELSET=BAR, MATERIAL=STEEL\n200\n"
    "*BOUNDARY\n1, 1, 6\n"
    "*STEP\n*STATIC\n*CLOAD\n3, 3, 1\n*END STEP\n";

}  // namespace

// The bar of 1414 and the beam have no density, so that there is no mass; the force of 1 at node 3 (1000, 1000, 0)
// turns by 1000 about x and by -1000 about y.
TEST(Check, AGoodDeckSaysWhatItHolds) {
  const checked c = check(FRAME);
  EXPECT_TRUE(c.good);
  EXPECT_NE(c.out.find("run.inp: 3 elements checked, nothing found\n"), std::string::npos) << c.out;
  for (const char* const line :
       {"  nodes         4; x 0 to 1000, y 0 to 1000, z 0 to 0\n", "  elements      3: 1 B31, 1 S4, 1 T3D2\n",
        "  materials     1: STEEL\n", "  element sets  3: PLATE (1), BEAM (1), BAR (1)\n", "  mass          none: ",
        "  step 1: static\n", "    *CLOAD      force 0, 0, 1; moment about the origin 1000, -1000, 0\n",
        "    supports    6 degrees of freedom of 1 node: 1 ux, 1 uy, 1 uz, 1 rx, 1 ry, 1 rz\n"}) {
    EXPECT_NE(c.out.find(line), std::string::npos) << line << c.out;
  }
  EXPECT_EQ(c.err, "");
  EXPECT_FALSE(c.wrote);
}

// A tetrahedron as large as a grain in metres cubed: its Jacobian is below what the library takes.
TEST(Check, AnErrorNamesFileLineElementAndWhatToDo) {
  std::string deck = solid("0, 0, 1");
  const std::string thousandth = "1e-7";
  for (const std::string& place : {std::string("2, 1, 0, 0"), std::string("3, 0, 1, 0"), std::string("4, 0, 0, 1")}) {
    std::string small = place;
    small.replace(small.find(", 1") + 2, 1, thousandth);
    deck.replace(deck.find(place), place.size(), small);
  }
  const checked c = check(deck);
  EXPECT_FALSE(c.good);
  EXPECT_NE(c.err.find("run.inp:7: *ELEMENT: element 70: the solid has no volume"), std::string::npos) << c.err;
  EXPECT_EQ(c.err.rfind("error: ", 0), 0U) << c.err;
  EXPECT_NE(c.out.find("1 element checked, 1 error, 0 warnings\n"), std::string::npos) << c.out;
  EXPECT_FALSE(c.wrote);
}

// A tetrahedron of volume 1/6, density 6 and a mass of 2 in a corner: 3, and the centre by its own at a quarter.
TEST(Check, MassAndCentre) {
  std::string deck = solid("0, 0, 1");
  deck.replace(deck.find("*SOLID SECTION"), 0, "*DENSITY\n6\n");
  deck.replace(deck.find("*MATERIAL"), 0, "*ELEMENT, TYPE=MASS, ELSET=M\n71, 4\n*MASS, ELSET=M\n2\n");
  const checked c = check(deck);
  EXPECT_NE(c.out.find("  mass          3, centre at 0.0833333, 0.0833333, 0.75\n"), std::string::npos) << c.out;
}

TEST(Check, ADeckThatCannotBeReadIsAnErrorAsEver) {
  const deck_test::scratch_folder scratch;
  solver::options wanted;
  wanted.deck = scratch.write("run.inp", "*NODE\n1, x\n");
  EXPECT_THROW(solver::check(wanted), solver::deck_errors);
}

TEST(Check, IsAnOption) {
  int exit_code = 0;
  const char* const words[] = {"finites-solve", "--check", "deck.inp"};
  const auto wanted = solver::parse_command_line(3, words, exit_code);
  ASSERT_TRUE(wanted.has_value());
  EXPECT_TRUE(wanted->check);
  EXPECT_FALSE(solver::parse_command_line(2, words + 1, exit_code)->check);
}

// A folded corner of a solid is told by the checker, with its element; the reader's note of the same is left out.
TEST(Check, AFoldedCornerIsToldOnce) {
  solver::options wanted;
  wanted.deck = FINITES_DECKS "/solid_patch.inp";
  wanted.check = true;
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  EXPECT_TRUE(solver::check(wanted));
  testing::internal::GetCapturedStdout();
  const std::string err = testing::internal::GetCapturedStderr();
  EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 1) << err;
  EXPECT_NE(err.find("element 4: the Jacobian at a corner is "), std::string::npos) << err;
}
