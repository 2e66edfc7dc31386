// deck_prints_test.cpp: *NODE PRINT and *EL PRINT: what is asked for, what goes on in later steps, what is noted and
// what is refused.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "deck_builder.h"
#include "options.h"
#include "run.h"

using namespace deck_test;
using solver::print_kind;
using solver::print_totals;

namespace {

using names = std::vector<std::string>;

const std::string LATER = "*STEP\n*STATIC\n*CLOAD\n2, 1, 5.\n";

std::vector<solver::print_request> requests(const std::string& card) {
  return read(inserted(35, card)).steps.at(0).prints;
}

names quantities(const std::string& card) {
  const std::vector<solver::print_request> all = requests(card);
  return all.size() == 1 ? all[0].quantities : names{"several cards"};
}

std::string contents(const std::string& path) {
  std::ostringstream text;
  text << std::ifstream(path).rdbuf();
  return text.str();
}

std::string steel_bar(const std::string& prints) {
  return "*NODE\n1, 0., 0., 0.\n2, 1., 0., 0.\n*ELEMENT, TYPE=T3D2, ELSET=BAR\n1, 1, 2\n*MATERIAL, NAME=M\n*ELASTIC\n"
         "100., 0.3\n*DENSITY\n1.\n*SOLID SECTION, ELSET=BAR, MATERIAL=M\n1.\n*BOUNDARY\n1, 1, 3\n2, 2, 3\n" +
         prints;
}

// Runs a deck and gives the text of its .dat file; "none" where it has none.
std::string printed(const std::string& deck, const std::string& output = "out.vtu") {
  const scratch_folder scratch;
  solver::options wanted;
  wanted.deck = scratch.write("bar.inp", deck);
  wanted.output = scratch.path(output);
  wanted.quiet = true;
  solver::run(wanted);
  const std::string path = scratch.path("out.dat");
  return std::filesystem::exists(path) ? contents(path) : "none";
}

}  // namespace

TEST(deck_prints, a_request_names_set_and_quantities) {
  const std::vector<solver::print_request> all =
      requests("*NODE PRINT, NSET=Fixed, TOTALS=YES\nU, rf\n*EL PRINT, GLOBAL=YES, POSITION=CENTROIDAL\nS\nMISES, SF");
  ASSERT_EQ(all.size(), 2u);
  EXPECT_EQ(all[0].kind, print_kind::NODES);
  EXPECT_EQ(all[0].set, "FIXED");
  EXPECT_EQ(all[0].members, (std::vector<int>{0, 3}));
  EXPECT_EQ(all[0].quantities, (names{"U", "RF"}));
  EXPECT_EQ(all[0].totals, print_totals::YES);
  EXPECT_EQ(all[1].kind, print_kind::ELEMENTS);
  EXPECT_EQ(all[1].set, "");
  EXPECT_EQ(all[1].quantities, (names{"S", "MISES", "SF"}));
  EXPECT_TRUE(all[1].global_axes);
  EXPECT_TRUE(all[1].centroids);
}

TEST(deck_prints, components_and_other_names) {
  EXPECT_EQ(quantities("*EL PRINT\nS11, S22, SINV, SM2"), (names{"S", "MISES", "SF"}));
  EXPECT_EQ(quantities("*NODE PRINT\nU3, UR1, RT, NT11"), (names{"U3", "UR1", "RF", "NT"}));
  EXPECT_EQ(quantities("*NODE PRINT, FREQUENCY=0\nU"), names{});
}

TEST(deck_prints, requests_go_on_until_a_card_of_the_same_keyword) {
  const std::string first = inserted(35, "*NODE PRINT\nU\n*EL PRINT\nS");
  const solver::model m = read(first + LATER + "*END STEP\n" + LATER + "*NODE PRINT, FREQUENCY=0\n*END STEP\n");
  ASSERT_EQ(m.steps.size(), 3u);
  ASSERT_EQ(m.steps[1].prints.size(), 2u);
  EXPECT_EQ(m.steps[1].prints[0].quantities, names{"U"});
  ASSERT_EQ(m.steps[2].prints.size(), 2u);
  EXPECT_EQ(m.steps[2].prints[0].quantities, names{});
  EXPECT_EQ(m.steps[2].prints[1].quantities, names{"S"});
}

TEST(deck_prints, what_is_not_printed_is_noted_by_name) {
  const std::string of_nodes =
      "it prints U, UT, UR, U1, U2, U3, UR1, UR2, UR3, RF, RF1, RF2, RF3, RM, RM1, RM2, RM3, "
      "NT, COORD";
  const std::string of_elements = "it prints S, MISES, E, ME, SF, PEEQ";
  expect_notes(inserted(35, "*NODE PRINT\nU, CF, V"),
               {"plate.inp:35: *NODE PRINT: 'CF' is not printed by this solver; " + of_nodes,
                "plate.inp:35: *NODE PRINT: 'V' is not printed by this solver; " + of_nodes});
  expect_notes(inserted(35, "*EL PRINT, ELSET=SKIN, TOTALS=YES\nS, ELSE"),
               {"plate.inp:35: *EL PRINT: TOTALS has no effect: nothing that this solver prints of elements adds up",
                "plate.inp:35: *EL PRINT: 'ELSE' is not printed by this solver; " + of_elements});
  expect_notes(inserted(35, "*EL PRINT"),
               {"plate.inp:35: *EL PRINT: no data line names a quantity: nothing is printed"});
  expect_notes(inserted(35, "*EL PRINT, SUMMARY=YES, POSITION=NODES\nS"),
               {"plate.inp:35: *EL PRINT: POSITION=NODES has no effect, integration points are printed; --stresses and "
                "--solids have tables at nodes",
                "plate.inp:35: *EL PRINT: SUMMARY has no effect: the whole table is printed at the end of the step"});
  expect_notes(inserted(35, "*EL PRINT\nS, E"),
               {"plate.inp:35: *EL PRINT: strains are not printed in step 1, in which temperatures act"});
  expect_notes(inserted(24, "*NODE PRINT\nU"), {"plate.inp:24: *NODE PRINT: outside of a step it has no effect"});
}

TEST(deck_prints, modes_have_displacements_alone) {
  expect_notes(steel_bar("*STEP\n*NODE PRINT\nU, RF\n*EL PRINT\nS\n*FREQUENCY\n1\n*END STEP\n"),
               {"plate.inp:17: *NODE PRINT: RF is not printed: a step that looks for modes has displacements alone",
                "plate.inp:19: *EL PRINT: S is not printed: a step that looks for modes has displacements alone"});
}

TEST(deck_prints, errors) {
  expect_error(inserted(35, "*NODE PRINT, NSET=NOWHERE\nU"), 35, "*NODE PRINT",
               "the node set 'NOWHERE' is not defined");
  expect_error(inserted(35, "*EL PRINT, ELSET=NOWHERE\nS"), 35, "*EL PRINT",
               "the element set 'NOWHERE' is not defined");
  expect_error(inserted(35, "*NODE PRINT, TOTALS=MAYBE\nRF"), 35, "*NODE PRINT",
               "TOTALS is YES, ONLY or NO, not 'MAYBE'");
  expect_error(inserted(35, "*EL PRINT, GLOBAL=1\nS"), 35, "*EL PRINT", "GLOBAL is YES or NO, not '1'");
  expect_error(inserted(35, "*EL PRINT, FREQUENCY=-1\nS"), 35, "*EL PRINT", "FREQUENCY: '-1' is not a number from 0");
  expect_error(inserted(35, "*EL PRINT, POSITION=HERE\nS"), 35, "*EL PRINT",
               "POSITION is INTEGRATION POINTS, CENTROIDAL, NODES or AVERAGED AT NODES, not 'HERE'");
}

TEST(deck_prints, the_file_holds_the_tables_of_the_steps_that_ask) {
  EXPECT_EQ(printed(steel_bar("*STEP\n*STATIC\n*CLOAD\n2, 1, 5.\n*END STEP\n")), "none");
  EXPECT_EQ(printed(steel_bar("*STEP\n*STATIC\n*CLOAD\n2, 1, 5.\n*NODE PRINT, FREQUENCY=0\nU\n*END STEP\n")), "none");
  EXPECT_EQ(printed(steel_bar("*STEP\n*STATIC\n*CLOAD\n2, 1, 5.\n*END STEP\n*STEP\n*STATIC\n*CLOAD\n2, 1, 10.\n"
                              "*NODE PRINT\nU1\n*END STEP\n")),
            "\n                        S T E P       2\n\n\n displacements (vx) for all and time  0.2000000E+01\n\n"
            "         1  0.000000E+00\n         2  1.000000E-01\n");
}

// One consistent element between a wall and a free end: omega^2 = 3 E / (rho L^2).
TEST(deck_prints, modes) {
  const std::string text = printed(steel_bar("*STEP\n*FREQUENCY\n1\n*NODE PRINT\nU\n*END STEP\n"));
  EXPECT_NE(text.find("E I G E N V A L U E   O U T P U T"), std::string::npos) << text;
  EXPECT_NE(text.find("      1  3.000000E+02  1.732051E+01  2.756644E+00\n"), std::string::npos) << text;
  EXPECT_NE(text.find("M O D E       1\n\n displacements (vx,vy,vz) for all and time  0.1000000E+01\n"),
            std::string::npos)
      << text;
}

// The load of the second step is too large for numbers: what the first has printed stays.
TEST(deck_prints, tables_of_solved_steps_stay_after_an_error) {
  const std::string deck = steel_bar(
      "*STEP\n*STATIC\n*CLOAD\n2, 1, 5.\n*NODE PRINT\nU1\n*END STEP\n*STEP\n*STATIC\n"
      "*CLOAD\n2, 1, 1.7e308\n2, 1, 1.7e308\n*END STEP\n");
  const scratch_folder scratch;
  solver::options wanted;
  wanted.deck = scratch.write("bar.inp", deck);
  wanted.output = scratch.path("out.vtu");
  wanted.quiet = true;
  EXPECT_ANY_THROW(solver::run(wanted));
  EXPECT_NE(contents(scratch.path("out.dat")).find("         2  5.000000E-02\n"), std::string::npos);
  wanted.deck = scratch.write(
      "bar.inp", steel_bar("*STEP\n*STATIC\n*CLOAD\n2, 1, 1.7e308\n2, 1, 1.7e308\n*NODE PRINT\nU1\n*END STEP\n"));
  wanted.output = scratch.path("other.vtu");
  EXPECT_ANY_THROW(solver::run(wanted));
  EXPECT_FALSE(std::filesystem::exists(scratch.path("other.dat")));
}

TEST(deck_prints, a_place_that_is_taken) {
  const std::string deck = steel_bar("*STEP\n*STATIC\n*CLOAD\n2, 1, 5.\n*NODE PRINT\nU\n*END STEP\n");
  EXPECT_THROW(printed(deck, "out.dat"), solver::usage_error);
  const scratch_folder scratch;
  solver::options wanted;
  wanted.deck = scratch.write("bar.dat", deck);
  wanted.output = scratch.path("bar.vtu");
  EXPECT_THROW(solver::run(wanted), solver::usage_error);
  EXPECT_EQ(contents(wanted.deck), deck);
}

// What none of the elements has leaves no table: that is noted, of each quantity once.
TEST(deck_prints, quantities_that_no_element_has) {
  const auto notes = [](const std::string& card) {
    const solver::model m =
        read(steel_bar("*STEP\n*STATIC\n*EL PRINT, ELSET=BAR\n" + card + "\n*CLOAD\n2, 1, 5.\n*END STEP\n"));
    std::string all;
    for (const std::string& note : m.notes) all += note.substr(note.find("*EL PRINT: ") + 11) + "\n";
    return all;
  };
  EXPECT_EQ(notes("S, SF"), "");
  EXPECT_EQ(notes("MISES, S"), "MISES is not printed: no element of the set 'BAR' has it; members have SF\n");
  EXPECT_EQ(notes("E, PEEQ"),
            "E is not printed: no element of the set 'BAR' has it; members have SF\n"
            "PEEQ is not printed: no element of the set 'BAR' has it; members have SF\n");
}
