// What the program writes and prints for frames: members, modes, tables.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <pugixml.hpp>

#include "deck_builder.h"
#include "frame_decks.h"
#include "output/summary.h"
#include "run.h"
#include "vtu_reading.h"

using namespace frame_test;
using deck_test::scratch_folder;
using vtu_test::numbers;

namespace {

std::string file_text(const std::string& path) {
  std::ifstream in(path);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

// Runs a deck; the files r.vtu, r.csv and m.csv appear in the folder.
void run_deck(const scratch_folder& scratch, const std::string& text) {
  solver::options wanted;
  wanted.deck = scratch.write("frame.inp", text);
  wanted.output = scratch.path("r.vtu");
  wanted.csv = scratch.path("r.csv");
  wanted.members = scratch.path("m.csv");
  wanted.quiet = true;
  solver::run(wanted);
}

pugi::xml_node array(const pugi::xml_document& document, const char* part, const char* name) {
  return document.child("VTKFile")
      .child("UnstructuredGrid")
      .child("Piece")
      .child(part)
      .find_child_by_attribute("DataArray", "Name", name);
}

}  // namespace

TEST(AnalysisFrameOutput, MembersOfAStaticStep) {
  const scratch_folder scratch;
  straight_member b;
  b.length = 4;
  b.area = 8;
  b.inertia_xy = 16;
  b.inertia_xz = 16;
  b.torsion = 2;
  b.E = 1024;
  b.nu = 0;
  run_deck(scratch, b.deck("", "1, ENCASTRE\n", "*STATIC\n*CLOAD\n2, 1, 64.\n2, 2, 3.\n"));
  std::istringstream table(file_text(scratch.path("m.csv")));
  std::string line;
  std::getline(table, line);
  EXPECT_EQ(line.substr(0, 66), "element,end,force_x,force_y,force_z,moment_x,moment_y,moment_z,N_m") << line;
  const double expected[2][6] = {{-64, -3, 0, 0, 0, -12}, {64, 3, 0, 0, 0, 0}};
  for (int end = 1; end <= 2; ++end) {
    std::getline(table, line);
    std::replace(line.begin(), line.end(), ',', ' ');
    std::istringstream fields(line);
    double id = 0, number = 0;
    fields >> id >> number;
    EXPECT_EQ(id, 1);
    EXPECT_EQ(number, end);
    for (const double value : expected[end - 1]) {
      double actual = 0;
      ASSERT_TRUE(fields >> actual);
      EXPECT_WITHIN(actual, value, 64.0, 1e-12);
    }
  }
  EXPECT_FALSE(std::getline(table, line));

  pugi::xml_document document;
  ASSERT_TRUE(document.load_file(scratch.path("r.vtu").c_str()));
  EXPECT_WITHIN(numbers(array(document, "CellData", "axial_force")), std::vector<double>{64}, 64.0, 1e-12);
  EXPECT_WITHIN(numbers(array(document, "CellData", "end_moment_1")), (std::vector<double>{0, 0, -12}), 64.0, 1e-12);
  EXPECT_EQ(numbers(array(document, "Cells", "types")), std::vector<double>{4});  // a polyline of VTK
  EXPECT_EQ(numbers(array(document, "Cells", "connectivity")),
            (std::vector<double>{2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
}

TEST(AnalysisFrameOutput, ModesOfAStep) {
  const scratch_folder scratch;
  straight_member b;
  b.elements = 2;
  run_deck(scratch, b.deck("", "1, ENCASTRE\n", "*FREQUENCY\n2\n"));
  const std::string table = file_text(scratch.path("r.csv"));
  EXPECT_EQ(table.substr(0, 17), "mode,frequency\n1,");
  EXPECT_EQ(std::count(table.begin(), table.end(), '\n'), 3);
  EXPECT_FALSE(std::filesystem::exists(scratch.path("m.csv")));  // modes have no end forces
  pugi::xml_document document;
  ASSERT_TRUE(document.load_file(scratch.path("r.vtu").c_str()));
  for (const char* const name : {"mode_1", "mode_2"}) {
    const std::vector<double> u = numbers(array(document, "PointData", name));
    ASSERT_EQ(u.size(), 9U);
    EXPECT_WITHIN(max_norm(u), 1.0, 1.0, 1e-15) << name;
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(u[i], 0) << name;  // the clamped node
  }
  EXPECT_FALSE(array(document, "PointData", "mode_3"));
}

TEST(AnalysisFrameOutput, Summaries) {
  straight_member b;
  const solver::model m = read(b.deck("", "1, ENCASTRE\n", "*STATIC\n*CLOAD\n2, 1, -64.\n2, 2, 3.\n"));
  const solved s = solve(m);
  const std::string text = member_summary(m, s.results);
  EXPECT_NE(text.find("largest axial force  -6.400000e+01   end 1 of element 1"), std::string::npos) << text;
  EXPECT_NE(text.find("largest moment z      1.200000e+04   end 1 of element 1"), std::string::npos) << text;
  EXPECT_NE(model_summary(m, s.solution, "X").find("1   B33 1\n"), std::string::npos);

  // A spring under tension, whichever of its ends is first.
  for (const char* const nodes : {"1, 2", "2, 1"}) {
    const solver::model spring =
        read(std::string("*NODE\n1, 0, 0, 0\n2, 1, 0, 0\n*ELEMENT, TYPE=SPRINGA, ELSET=S\n7, ") + nodes +
             "\n*SPRING, ELSET=S\n\n50.\n*BOUNDARY\n1, 1, 3\n2, 2, 3\n*STEP\n*STATIC\n*CLOAD\n2, 1, 8.\n*END STEP\n");
    const std::string told = member_summary(spring, solve(spring).results);
    EXPECT_NE(told.find("largest axial force   8.000000e+00   end 1 of element 7"), std::string::npos) << told;
  }

  solver::modal_solution found;
  found.modes.push_back({2.5, {}});
  solver::step step;
  step.kind = solver::step_kind::BUCKLE;
  EXPECT_EQ(modes_summary(step, found), "    mode        load factor\n       1    2.500000000e+00\n");
}
