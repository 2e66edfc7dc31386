// What the program says on its error stream: warnings, several errors of a deck, memory, and sentences about what other
// programs and other countries write differently.
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <thread>

#include "deck_builder.h"
#include "finites/fields.h"
#include "model/deck_error.h"
#include "options.h"
#include "program_support.h"
#include "sanitizer.h"
#include "solids_support.h"
#include "system/memory.h"
#include "system/progress.h"

using namespace deck_test;
using namespace program_test;

namespace {

// The sentences of a deck that must be refused, in the order in which they are reported.
std::vector<std::string> errors_of(const std::string& text) {
  try {
    read(text);
  } catch (const solver::deck_errors& errors) {
    std::vector<std::string> all;
    for (const solver::deck_error& each : errors.all) all.emplace_back(each.what());
    return all;
  } catch (const solver::deck_error& error) {
    return {error.what()};
  }
  return {};
}

// The good deck with several lines changed, given by their numbers.
std::string changed(const std::vector<std::pair<int, std::string>>& changes) {
  std::vector<std::string> lines = GOOD;
  for (const auto& [n, line] : changes) lines.at(static_cast<std::size_t>(n - 1)) = line;
  return text_of(lines);
}

}  // namespace

TEST(Messages, NotesAreWarningsOnTheErrorStreamAlways) {
  const scratch_folder scratch;
  // A triangle that only a truss joins: held rotations; and a request that has no effect.
  std::vector<std::string> lines = GOOD_SOLIDS;
  lines[21] = "ALL, 1, 3";
  lines[23] = "*STATIC\n*NODE FILE, NSET=ALL\nU\n*CLOAD\n7, 1, 5.";
  const std::string deck = scratch.write("bar.inp", text_of(lines));
  for (const std::string& quiet : {std::string(""), std::string(" --quiet")}) {
    const answer said = run_program(scratch, deck + " -o " + scratch.path("r.vtu") + quiet);
    EXPECT_EQ(said.status, 0) << said.err;
    EXPECT_EQ(lines_of(said.err),
              (std::vector<std::string>{
                  "warning: " + deck +
                      ":25: *NODE FILE: this solver writes its results in one fixed form; the request "
                      "has no effect",
                  "warning: " + deck + ":23: *STEP: held 24 rotations of nodes that only solids join"}));
    EXPECT_EQ(said.out.empty(), !quiet.empty());
    EXPECT_EQ(said.out.find("request"), std::string::npos) << said.out;
  }
}

TEST(Messages, Version) {
  const scratch_folder scratch;
  const answer said = run_program(scratch, "--version");
  EXPECT_EQ(said.status, 0);
  ASSERT_EQ(lines_of(said.out).size(), 1U) << said.out;
  int major = -1, minor = -1, patch = -1;
  EXPECT_EQ(std::sscanf(said.out.c_str(), "finites-solve %d.%d.%d", &major, &minor, &patch), 3) << said.out;
  EXPECT_EQ(said.err, "");
}

TEST(Messages, AStepThatNothingDrives) {
  const std::string note =
      "plate.inp:26: *STEP: the step has no load and no prescribed displacement other than 0: nothing moves";
  expect_notes(without(28, 34), {note});
  std::vector<std::string> lines = GOOD;
  lines.erase(lines.begin() + 29, lines.begin() + 34);
  lines[28] = "3, 3, 0.";
  expect_notes(text_of(lines), {note});
  lines[27] = "*BOUNDARY";
  lines[28] = "3, 3, 3, 1e-3";
  expect_notes(text_of(lines), {});
  lines[27] = "*TEMPERATURE";
  lines[28] = "3, 0, 4.";
  expect_notes(text_of(lines), {});
}

TEST(Messages, BucklingWithoutALoad) {
  const std::string sentence = "the step with *BUCKLE has no load other than 0: no buckling factor exists";
  solids_test::block b;
  const std::string solids = b.deck("X0, 1, 3\n", "*BUCKLE\n1\n");
  const int line = static_cast<int>(lines_of(solids.substr(0, solids.find("*STEP"))).size()) + 1;
  expect_error(solids, line, "*STEP", sentence);
  std::vector<std::string> frame = GOOD_FRAME;
  frame[37] = "*BUCKLE\n2";
  frame[39] = "BEAMS, P2, 0.";
  expect_error(text_of(frame), 37, "*STEP", sentence);
}

TEST(Messages, NothingCanMove) {
  const scratch_folder scratch;
  std::vector<std::string> frame = GOOD_FRAME;
  frame[35] = "ALL, 1, 6";
  std::fill(frame.begin() + 30, frame.begin() + 34, "**");  // without *RELEASE and *FIXITY
  for (const char* analysis : {"*BUCKLE\n2", "*FREQUENCY\n2"}) {
    frame[37] = analysis;
    if (frame[37] == "*FREQUENCY\n2") frame.erase(frame.begin() + 38, frame.begin() + 40);  // it has no loads
    const answer said = run_program(scratch, scratch.write("frame.inp", text_of(frame)));
    EXPECT_EQ(said.status, 1);
    EXPECT_EQ(said.err, "finites-solve: " + scratch.path("frame.inp") +
                            ":37: *STEP: every degree of freedom is held: there is nothing to move\n");
  }
  const std::string deck = scratch.write("pushover.inp",
                                         "*NODE, NSET=ALL\n1, 0, 0, 0\n2, 1000, 0, 0\n"
                                         "*ELEMENT, TYPE=B33, ELSET=FRAME\n1, 1, 2\n"
                                         "*MATERIAL, NAME=STEEL\n*ELASTIC\n210000, 0.3\n"
                                         "*BEAM GENERAL SECTION, ELSET=FRAME, MATERIAL=STEEL\n"
                                         "5000, 8e7, 0, 8e7, 1e6\n0, 0, 1\n"
                                         "*PLASTIC HINGE, ELSET=FRAME, CURVE=SINGLE, FORCES=M1\n1e9, 1e8, 1e8\n"
                                         "*BOUNDARY\nALL, 1, 6\n"
                                         "*STEP\n*PUSHOVER, NODE=2, DOF=1\n*CLOAD\n2, 2, 1000\n*END STEP\n");
  const answer said = run_program(scratch, deck);
  EXPECT_EQ(said.status, 1);
  EXPECT_EQ(said.err,
            "finites-solve: " + deck + ":16: *STEP: nothing can move: every degree of freedom is prescribed\n");
}

TEST(Messages, ErrorsOfTheCommandLineBeginWithTheName) {
  const scratch_folder scratch;
  for (const char* arguments : {"", "a.inp b.inp", "--solver abacus a.inp", "--memory-limit much a.inp",
                                "--speed 3 a.inp", "a.inp --reference 1,2", "a.inp --station-count 1"}) {
    const answer said = run_program(scratch, arguments);
    EXPECT_EQ(said.status, 2) << arguments;
    EXPECT_EQ(said.out, "") << arguments;
    ASSERT_EQ(lines_of(said.err).size(), 1U) << said.err;
    EXPECT_EQ(said.err.find("finites-solve: "), 0U) << said.err;
  }
}

// Loads that strain nothing: a column pushed where it is held.
TEST(Messages, BucklingWithoutAForce) {
  const solids_test::block b;
  const solver::model m =
      solids_test::read(b.deck("X0, 1, 3\n", "*BUCKLE\n1\n*CLOAD\n" + solids_test::face_load(b, 0, false, 1, 5)));
  EXPECT_TRUE(solids_test::modes(m).empty());
  const scratch_folder scratch;
  const std::string deck = scratch.write(
      "block.inp", b.deck("X0, 1, 3\n", "*BUCKLE\n1\n*CLOAD\n" + solids_test::face_load(b, 0, false, 1, 5)));
  const answer said = run_program(scratch, deck + " -o " + scratch.path("r.vtu"));
  EXPECT_EQ(said.status, 0);
  EXPECT_NE(said.err.find("*STEP: the loads give no axial forces, membrane forces or stresses: nothing can buckle\n"),
            std::string::npos)
      << said.err;
}

TEST(Messages, SeveralErrorsInTheOrderOfTheLines) {
  const std::string text = changed(
      {{5, "2, 1., zero, 0."}, {17, "2.1E11, 0.7"}, {23, "-1"}, {29, "3, 9, -100."}, {31, "SKIN, NEWTON, 1000."}});
  EXPECT_EQ(errors_of(text),
            (std::vector<std::string>{"plate.inp:5: *NODE: y: 'zero' is not a number",
                                      "plate.inp:17: *ELASTIC: Poisson's ratio must lie above -1 and not above 0.5",
                                      "plate.inp:23: *SHELL SECTION: thickness: '-1' is not positive",
                                      "plate.inp:29: *CLOAD: the degree of freedom 9 is not one of 1 to 6",
                                      "plate.inp:31: *DLOAD: the load type 'NEWTON' is not supported; P, GRAV, BX, BY, "
                                      "BZ, PX, PY, PZ, P1 to P6, HP, TRVEC, TRSHR and CENTRIF are, and on edges EDNOR, "
                                      "EDSHR, EDTRA, EDMOM and EDLD with the number of the edge"}));
  const scratch_folder scratch;
  const answer said = run_program(scratch, scratch.write("plate.inp", text));
  EXPECT_EQ(said.status, 1);
  const std::vector<std::string> lines = lines_of(said.err);
  ASSERT_EQ(lines.size(), 6U) << said.err;
  EXPECT_EQ(lines[0], "finites-solve: " + scratch.path("plate.inp") + ":5: *NODE: y: 'zero' is not a number");
  EXPECT_EQ(lines[5], "finites-solve: 5 errors");
}

// That a step says nothing of its analysis is known at its end, and reported where it begins.
TEST(Messages, AnErrorThatIsFoundLateStandsInItsPlace) {
  const std::vector<std::string> errors = errors_of(changed({{27, "** no analysis"}, {29, "3, 9, -100."}}));
  ASSERT_EQ(errors.size(), 2U);
  EXPECT_EQ(errors[0].find("plate.inp:26: *STEP: "), 0U) << errors[0];
  EXPECT_EQ(errors[1].find("plate.inp:29: *CLOAD: "), 0U) << errors[1];
}

// A node, a set, a material, a keyword or a step in error: what names them is not in error for that.
TEST(Messages, WhatFollowsFromAnErrorIsNotTold) {
  EXPECT_EQ(errors_of(changed({{4, "1, 0., x, 0."}})),
            (std::vector<std::string>{"plate.inp:4: *NODE: y: 'x' is not a number"}));
  EXPECT_EQ(errors_of(changed({{3, "*NODE, NSET=ALL, SPEED=1"}})).size(), 1U);
  EXPECT_EQ(errors_of(changed({{8, "*ELEMENT, TYPE=S5, ELSET=SKIN"}})).size(), 1U);
  EXPECT_EQ(errors_of(changed({{9, "1, 1, 2, 77"}})).size(), 1U);
  EXPECT_EQ(errors_of(changed({{11, "*NSET, NSET=FIXED, SPEED"}})).size(), 1U);
  EXPECT_EQ(errors_of(changed({{12, "1, 44"}})).size(), 1U);
  EXPECT_EQ(errors_of(changed({{15, "*MATERIAL, NAME=STEEL, SPEED=1"}})).size(), 1U);
  EXPECT_EQ(errors_of(changed({{15, "*MATERIAL"}})).size(), 1U);
  EXPECT_EQ(errors_of(changed({{16, "*ELASTIC, TYPE=CURVED"}})).size(), 1U);
  EXPECT_EQ(errors_of(changed({{22, "*SHELL SECTION, ELSET=SKIN, MATERIAL=STEEL, OFFSET=up"}})).size(), 1U);
  struct misspelt {
    int line;
    std::string keyword, parameters, meant;
  };
  for (const misspelt& each :
       {misspelt{3, "*NODES", ", NSET=ALL", "*NODE"}, misspelt{8, "*ELEMENTS", ", TYPE=S3, ELSET=SKIN", "*ELEMENT"},
        misspelt{11, "*NSETS", ", NSET=FIXED", "*NSET"}, misspelt{15, "*MATERIALS", ", NAME=STEEL", "*MATERIAL"},
        misspelt{22, "*SHEL SECTION", ", ELSET=SKIN, MATERIAL=STEEL", "*SHELL SECTION"},
        misspelt{26, "*STEPS", "", "*STEP"}, misspelt{27, "*STATICS", "", "*STATIC"},
        misspelt{35, "*ENDE STEP", "", "*END STEP"}}) {
    EXPECT_EQ(errors_of(changed({{each.line, each.keyword + each.parameters}})),
              (std::vector<std::string>{"plate.inp:" + std::to_string(each.line) + ": " + each.keyword +
                                        ": this solver does not know the keyword; is " + each.meant + " meant?"}));
  }
  EXPECT_EQ(errors_of(changed({{26, "*STEP, NLGEOM=YES"}, {29, "3, 9, -100."}})).size(), 2U);
  EXPECT_EQ(errors_of(changed({{26, "*STEP, SPEED=5"}, {29, "3, 9, -100."}})).size(), 2U);
  EXPECT_EQ(errors_of(changed({{26, "*STEP, NAME=a, NAME=b"}, {29, "3, 9, -100."}})).size(), 2U);
}

// Found in the order of the stages, reported in that of the lines, except for what 10000 errors leave unread.
TEST(Messages, AnErrorThatIsFoundLateIsToldInItsPlaceAmongMany) {
  for (const int wrong : {9990, 10010}) {
    std::string nodes;
    for (int n = 0; n < wrong; ++n) nodes += "\nx";
    // The section and its material stand above the nodes, and are read after them.
    std::vector<std::string> lines = GOOD;
    lines[21] += ", OFFSET=up";
    std::rotate(lines.begin() + 2, lines.begin() + 21, lines.begin() + 23);
    std::string& last_node = *std::find(lines.begin(), lines.end(), GOOD[6]);
    last_node += nodes;
    const std::vector<std::string> errors = errors_of(text_of(lines));
    ASSERT_EQ(errors.size(), 20U) << wrong;
    EXPECT_EQ(errors[0].find("plate.inp:3: *SHELL SECTION: OFFSET"), wrong < 10000 ? 0U : std::string::npos)
        << errors[0];
    EXPECT_EQ(errors[1].find("plate.inp:1"), 0U) << errors[1];
  }
}

// A misspelt *ORIENTATION may have been meant for the name that a section takes.
TEST(Messages, WhatAMisspeltOrientationLosesIsNotTold) {
  std::vector<std::string> lines = GOOD;
  lines[21] = "*ORIENTATIONS, NAME=PLY\n1., 0., 0., 0., 1., 0.\n3\n" + lines[21] + ", ORIENTATION=Ply";
  EXPECT_EQ(
      errors_of(text_of(lines)),
      (std::vector<std::string>{"plate.inp:22: *ORIENTATIONS: this solver does not know the keyword; is *ORIENTATION "
                                "meant?"}));
  lines[21].replace(lines[21].find("NAME=PLY"), 8, "NAME=OAK");
  EXPECT_EQ(
      errors_of(text_of(lines)),
      (std::vector<std::string>{"plate.inp:22: *ORIENTATIONS: this solver does not know the keyword; is *ORIENTATION "
                                "meant?",
                                "plate.inp:25: *SHELL SECTION: the orientation 'Ply' is not defined"}));
}

TEST(Messages, ParametersAreNamedAsDecksWriteThem) {
  expect_error(replaced(22, GOOD[21] + ", ORIENTATION ANGLE=1, OrientationAngle=2"), 22, "*SHELL SECTION",
               "the parameter ORIENTATIONANGLE is given twice");
  expect_error(replaced(22, GOOD[21] + ", orientation angle="), 22, "*SHELL SECTION",
               "the parameter ORIENTATION ANGLE has no value");
  expect_error(replaced(22, GOOD[21] + ", orientation angles=1"), 22, "*SHELL SECTION",
               "the parameter 'ORIENTATION ANGLES' is not known; known here: ELSET, MATERIAL, OFFSET, ORIENTATION, "
               "ORIENTATION ANGLE, FORMULATION, DRILLING, MODEL, POINTS, COMPOSITE, SYMMETRIC, LAYUP, STACK DIRECTION");
  expect_error(replaced(22, GOOD[21] + ", orientationangle=up"), 22, "*SHELL SECTION",
               "ORIENTATION ANGLE: 'up' is not a number");
}

// Two shapes, one with a direction along the member; the line of the section is 9.
TEST(Messages, ABeamSectionIsNamedAsTheDeckNamesIt) {
  const auto beam = [](const std::string& keyword, const std::string& n1) {
    return "*NODE\n1, 0., 0., 0.\n2, 1., 0., 0.\n*ELEMENT, TYPE=B31, ELSET=B\n1, 1, 2\n*MATERIAL, "
           "NAME=M\n*ELASTIC\n1e9, "
           "0.3\n" +
           keyword + ", ELSET=B, MATERIAL=M, SECTION=GENERAL\n1., 1., 0., 1., 1.\n" + n1 +
           "\n*BOUNDARY\n1, ENCASTRE\n*STEP\n*STATIC\n*CLOAD\n2, 2, 1.\n*END STEP\n";
  };
  for (const std::string& keyword : {std::string("*BEAM SECTION"), std::string("*BEAM GENERAL SECTION")}) {
    expect_notes(beam(keyword, "0., 1., 0."),
                 {"plate.inp:9: " + keyword +
                  ": the elements B31 of the set B count no shear deformation: their section has no shape, and no "
                  "*TRANSVERSE SHEAR STIFFNESS follows; B33 are the beams without it"});
    const scratch_folder scratch;
    const answer said = run_program(scratch, scratch.write("along.inp", beam(keyword, "1., 0., 0.")));
    EXPECT_NE(said.err.find("along.inp:9: " + keyword + ": n1 runs along element 1"), std::string::npos) << said.err;
  }
}

TEST(Messages, TwentyErrorsAndMore) {
  std::string nodes;
  for (int n = 100; n < 125; ++n) nodes += "\n" + std::to_string(n) + ", 0., 0., 0., 0.";
  try {
    read(changed({{7, "4, 0., 1., 0." + nodes}}));
    ADD_FAILURE() << "no error";
  } catch (const solver::deck_errors& errors) {
    ASSERT_EQ(errors.all.size(), 20U);
    for (std::size_t i = 0; i < 20; ++i) EXPECT_EQ(errors.all[i].line, 8 + static_cast<int>(i));
    EXPECT_EQ(errors.line, 8);
    EXPECT_EQ(lines_of(errors.what()).back(), "20 errors and more");
    EXPECT_EQ(lines_of(errors.what()).front(), "plate.inp:8: *NODE: too many fields (5): number, x, y, z");
  }
  nodes.clear();
  for (int n = 0; n < 30000; ++n) nodes += "\nx";
  EXPECT_EQ(errors_of(changed({{7, "4, 0., 1., 0." + nodes}})).size(), 20U);
}

// The errors of an included file stand where its *INCLUDE stands.
TEST(Messages, ErrorsOfIncludedFilesStandInTheirPlace) {
  const scratch_folder scratch;
  scratch.write("mesh.inp", "1, 0., 0., x\n2, 1., 0., 0., 0.\n");
  std::vector<std::string> lines = GOOD;
  lines[3] = "*INCLUDE, INPUT=mesh.inp";
  lines[4] = "3, 1., 1., 0., 0.";
  lines[1] = "plate\n*HEADING\nagain";
  const answer said = run_program(scratch, scratch.write("plate.inp", text_of(lines)));
  const std::vector<std::string> err = lines_of(said.err);
  ASSERT_EQ(err.size(), 5U) << said.err;
  EXPECT_NE(err[0].find("plate.inp:3: *HEADING"), std::string::npos) << err[0];
  EXPECT_NE(err[1].find("mesh.inp:1: "), std::string::npos) << err[1];
  EXPECT_NE(err[2].find("mesh.inp:2: "), std::string::npos) << err[2];
  EXPECT_NE(err[3].find("plate.inp:7: "), std::string::npos) << err[3];
}

TEST(Messages, CarriageReturnsAloneEndLines) {
  std::string bare, both;
  for (const std::string& line : GOOD) {
    bare += line + "\r";
    both += line + "\r\n";
  }
  EXPECT_EQ(read(bare).elements.size(), 2U);
  EXPECT_EQ(read(both).elements.size(), 2U);
  std::vector<std::string> lines = GOOD;
  lines[5] = "3, 1., 1., 0., 0.";
  bare.clear();
  for (const std::string& line : lines) bare += line + "\r";
  expect_error(bare, 6, "*NODE", "too many fields (5): number, x, y, z");
}

// One file, included twice: its errors stand once at each place.
TEST(Messages, AFileIncludedTwiceStandsInBothPlaces) {
  const scratch_folder scratch;
  scratch.write("mesh.inp", "1, 0., 0., x\n");
  std::vector<std::string> lines = GOOD;
  lines[3] = "*INCLUDE, INPUT=mesh.inp";
  lines[4] = "3, 1., 1., 0., 0.";
  lines[5] = "*INCLUDE, INPUT=mesh.inp";
  const answer said = run_program(scratch, scratch.write("plate.inp", text_of(lines)));
  const std::vector<std::string> err = lines_of(said.err);
  ASSERT_GE(err.size(), 3U) << said.err;
  EXPECT_NE(err[0].find("mesh.inp:1: "), std::string::npos) << said.err;
  EXPECT_NE(err[1].find("plate.inp:5: "), std::string::npos) << said.err;
  EXPECT_NE(err[2].find("mesh.inp:1: "), std::string::npos) << said.err;
}

// A return in a text of line feeds is a blank: what is commented out stays so.
TEST(Messages, AStrayCarriageReturnEndsNoLine) {
  std::vector<std::string> lines = GOOD;
  const std::size_t loads = read(text_of(lines)).steps[0].nodal_loads.size();
  lines[28] += "\n** not this one:\r3, 3, 5.";
  EXPECT_EQ(read(text_of(lines)).steps[0].nodal_loads.size(), loads);
  lines = GOOD;
  lines[5] = "3, 1.\r, 1.,\r0.";
  EXPECT_EQ(read(text_of(lines)).elements.size(), 2U);
}

TEST(Messages, ErrorsInTenThousandKeywordLinesAreTold) {
  std::string text = "*HEADING\nx\n";
  for (int n = 0; n < 12000; ++n) text += "*NODE, NSET=A, NSET=A\n";
  const std::vector<std::string> errors = errors_of(text);
  ASSERT_EQ(errors.size(), 20U);
  for (std::size_t i = 0; i < 20; ++i)
    EXPECT_EQ(errors[i], "plate.inp:" + std::to_string(i + 3) + ": *NODE: the parameter NSET is given twice");
}

TEST(Messages, CoordinatesOutOfRange) {
  expect_error(replaced(6, "3, 1., 1e300, 0."), 6, "*NODE", "y: '1e300' is out of range: a coordinate reaches to 1e50");
  expect_error(replaced(6, "3, 1., 1., -1e51"), 6, "*NODE", "z: '-1e51' is out of range: a coordinate reaches to 1e50");
}

TEST(Messages, FilesWithoutADeck) {
  expect_error("", 1, "", "the file is empty");
  const std::string blank = "the file holds no keyword: it is blank or has nothing but comments";
  expect_error("\n  \n", 1, "", blank);
  expect_error("** only a comment\n", 1, "", blank);
}

// Both orders of bytes; the marks of UTF-8 are read over.
TEST(Messages, TextOfTwoBytesALetter) {
  const std::string utf16 = "the file is UTF-16 (two bytes a letter): save it as UTF-8 or ASCII";
  expect_error(std::string("\xFF\xFE*\0N\0", 6), 1, "", utf16);
  expect_error(std::string("\xFE\xFF\0*\0N", 6), 1, "", utf16);
  EXPECT_TRUE(errors_of("\xEF\xBB\xBF" + text_of(GOOD)).empty());
}

TEST(Messages, FieldsThatNoCommaSeparates) {
  const std::string commas = ": fields are separated by commas";
  expect_error(replaced(5, "2\t1.\t0.\t0."), 5, "*NODE", "node number: '2?1.?0.?0.' is not an integer" + commas);
  expect_error(replaced(23, "0.01 5"), 23, "*SHELL SECTION", "thickness: '0.01 5' is not a number" + commas);
  expect_error(replaced(23, "0.01x"), 23, "*SHELL SECTION", "thickness: '0.01x' is not a number");
}

TEST(Messages, DecimalCommas) {
  const std::string point = " looks like a decimal comma: decimals take a point";
  expect_error(replaced(23, "0,01"), 23, "*SHELL SECTION", "'0,01'" + point);
  expect_error(replaced(29, "3, 3, -100,5"), 29, "*CLOAD", "'-100,5'" + point);
  expect_error(replaced(19, "7850,5"), 19, "*DENSITY", "'7850,5'" + point);
  expect_error(replaced(5, "2, 1,0, 0,0, 0,0"), 5, "*NODE", "'1,0'" + point);
  expect_error(replaced(9, "1,1,2,3,4"), 9, "*ELEMENT", "too many fields (5): number, node 1, node 2, node 3");
}

// A blank, a name, an integer or a count that no joining mends: the line has too many fields for another reason.
TEST(Messages, DecimalCommasAreToldOnlyWhereTheyMendTheLine) {
  const std::string point = " looks like a decimal comma: decimals take a point";
  // 9 fields; with the first pair joined they would be 8.
  expect_error(replaced(31, "SKIN, NEWTON, 100,0,0,0,0,0,1"), 31, "*DLOAD",
               "the load type 'NEWTON' is not supported; P, GRAV, BX, BY, BZ, PX, PY, PZ, P1 to P6, HP, TRVEC, TRSHR "
               "and CENTRIF are, and on edges EDNOR, EDSHR, EDTRA, EDMOM and EDLD with the number of the edge");
  expect_error(replaced(31, "1,P,CENTRIF,100,5"), 31, "*DLOAD", "too many fields (5): element or set, P, pressure");
  expect_error(replaced(31, "SKIN, P, 100,5"), 31, "*DLOAD", "'100,5'" + point);
  std::vector<std::string> buckle = GOOD;
  buckle[26] = "*BUCKLE\n2, , 4, 30, 1, 1";
  expect_error(text_of(buckle), 28, "*BUCKLE", "too many fields (6): number of buckling factors");
  // Node and degree of freedom are integers: the pair is behind them.
  expect_error(replaced(29, "3,3,-100,5"), 29, "*CLOAD", "'-100,5'" + point);
  expect_error(replaced(29, "3,3,-100,5,2"), 29, "*CLOAD",
               "too many fields (5): node or set, degree of freedom, value");
  expect_error(replaced(29, "3,3,-100, 5"), 29, "*CLOAD", "too many fields (4): node or set, degree of freedom, value");
  // Halves that are no parts of one number: a leading zero, letters, a sign.
  expect_error(replaced(29, "3, 3, 007,5"), 29, "*CLOAD", "too many fields (4): node or set, degree of freedom, value");
  expect_error(replaced(29, "3, 3, 7,5x"), 29, "*CLOAD", "too many fields (4): node or set, degree of freedom, value");
  expect_error(replaced(29, "3, 3, 7,-5"), 29, "*CLOAD", "too many fields (4): node or set, degree of freedom, value");
  // Of several pairs the one that stands apart, or whose second half is not 0.
  expect_error(replaced(5, "2, 1, 0,5, 0"), 5, "*NODE", "'0,5'" + point);
  expect_error(replaced(5, "2,1,5,0,0"), 5, "*NODE", "'1,5'" + point);
  expect_error(replaced(5, "2,1,0,0,5"), 5, "*NODE", "'0,5'" + point);
  // The angle of an axis, nine coordinates.
  expect_error(replaced(17, "2.1E11, 0,3"), 17, "*ELASTIC", "'0,3'" + point);
  expect_error(inserted(15, "*ORIENTATION, NAME=O\n1., 0., 0., 0., 1., 0., 0., 0., 0,5"), 16, "*ORIENTATION",
               "'0,5'" + point);
}

TEST(Messages, Articles) {
  expect_error(replaced(31, ", P, 1000."), 31, "*DLOAD",
               "a field is empty: it takes an element number or the name of a set");
}

// The program alone, with its elements, takes more than 10 megabytes: nothing is left for the factors.
TEST(Messages, MemoryIsAskedForBeforeAFactorisation) {
  const scratch_folder scratch;
  solids_test::block b;
  b.count = {8, 8, 8};
  const std::string deck = scratch.write("block.inp", b.deck("X0, 1, 3\n", "*STATIC\n*DLOAD\nBODY, BX, 1\n"));
  for (const std::string& kind : {std::string(" --solver eigen"), std::string("")}) {
    std::remove(scratch.path("r.vtu").c_str());
    const answer said = run_program(scratch, deck + " -o " + scratch.path("r.vtu") + " --memory-limit 10" + kind);
    EXPECT_EQ(said.status, 1);
    double needed = 0, left = -1;
    const std::size_t at = said.err.find("not enough memory: the factorisation needs");
    ASSERT_NE(at, std::string::npos) << said.err;
    EXPECT_EQ(std::sscanf(said.err.c_str() + at,
                          "not enough memory: the factorisation needs %lf MB, %lf MB are left of the", &needed, &left),
              2)
        << said.err;
    EXPECT_GT(needed, left);
    EXPECT_GE(left, 0);
    EXPECT_FALSE(std::ifstream(scratch.path("r.vtu")).good());
    EXPECT_EQ(
        run_program(scratch, deck + " --quiet -o " + scratch.path("r.vtu") + " --memory-limit 4000" + kind).status, 0);
  }
  for (const std::string& wrong : {std::string("0"), std::string("-1"), std::string("much"), std::string("inf")}) {
    const answer said = run_program(scratch, deck + " --memory-limit=" + wrong);
    EXPECT_EQ(said.status, 2);
    EXPECT_NE(said.err.find("'" + wrong + "' is not a number of megabytes above 0"), std::string::npos) << said.err;
    EXPECT_LT(said.err.size(), 200U) << said.err;
  }
}

TEST(Messages, MemoryLimitsOfTheProcess) {
  EXPECT_GT(solver::free_memory(0).megabytes, 0);
  EXPECT_LE(solver::free_memory(100).megabytes, 100);
  EXPECT_EQ(solver::free_memory(1e-3).megabytes, 0);
  EXPECT_THROW(solver::require_memory(1e12, 0), std::runtime_error);
  EXPECT_NO_THROW(solver::require_memory(1e-3, 0));
}

TEST(Messages, AnAddressLimitIsNamed) {
  if (support::address_sanitizer) GTEST_SKIP() << "the sanitizer maps more than any limit of addresses leaves";
  const scratch_folder scratch;
  solids_test::block b;
  b.count = {8, 8, 8};
  const std::string deck = scratch.write("block.inp", b.deck("X0, 1, 3\n", "*STATIC\n*DLOAD\nBODY, BX, 1\n"));
  const answer said = run_program(scratch, deck + " --quiet -o " + scratch.path("r.vtu"),
                                  "ulimit -v 200000; OPENBLAS_NUM_THREADS=1 timeout 60 ");
  EXPECT_EQ(said.status, 1);
  EXPECT_NE(said.err.find("left by the limit of the process (ulimit -v)"), std::string::npos) << said.err;
}

TEST(Messages, ATickingClockShowsTheSeconds) {
  std::FILE* const file = std::tmpfile();
  ASSERT_NE(file, nullptr);
  const auto written = [&] {
    std::fflush(file);
    std::rewind(file);
    std::string text(100000, '\0');
    text.resize(std::fread(text.data(), 1, text.size(), file));
    return text;
  };
  {
    const solver::ticking_clock unwatched("work", false, file, std::chrono::milliseconds(1));
    const solver::ticking_clock short_work("work", true, file, std::chrono::seconds(1000));
  }
  EXPECT_EQ(written(), "");
  {
    const solver::ticking_clock clock("factorisation", true, file, std::chrono::milliseconds(1));
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
  }
  const std::string text = written();
  EXPECT_EQ(text.find("\rfactorisation, 0 s"), 0U) << text;
  EXPECT_EQ(text.substr(text.size() - 4), "\r\033[K");
  std::fclose(file);
}
