// What the program writes for solids, and what it says when the library refuses one.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>

#include <pugixml.hpp>

#include "deck_builder.h"
#include "run.h"
#include "solids_support.h"
#include "vtu_reading.h"

using namespace solids_test;
using deck_test::scratch_folder;
using vtu_test::numbers;

namespace {

// A brick, a wedge on its face x = 1 and a tetrahedron on top, pulled upwards without Poisson's ratio.
const char* const ZOO =
    "*NODE, NSET=ALL\n1, 0, 0, 0\n2, 1, 0, 0\n3, 1, 1, 0\n4, 0, 1, 0\n5, 0, 0, 1\n6, 1, 0, 1\n7, 1, 1, 1\n8, 0, 1, 1\n"
    "9, 2, 0, 0\n10, 2, 0, 1\n11, 0, 0, 2\n*ELEMENT, TYPE=C3D8, ELSET=A\n1, 1, 2, 3, 4, 5, 6, 7, 8\n"
    "*ELEMENT, TYPE=C3D6, ELSET=B\n2, 2, 9, 3, 6, 10, 7\n*ELEMENT, TYPE=C3D4, ELSET=C\n3, 5, 6, 8, 11\n"
    "*MATERIAL, NAME=M\n*ELASTIC\n1000, 0\n*SOLID SECTION, ELSET=A, MATERIAL=M\n*SOLID SECTION, ELSET=B, MATERIAL=M\n"
    "*SOLID SECTION, ELSET=C, MATERIAL=M\n*BOUNDARY\n";

// u = (0, 0, 0.01 z) everywhere: szz = 10.
std::string pulled() {
  std::string text = ZOO;
  const int height[] = {0, 0, 0, 0, 1, 1, 1, 1, 0, 1, 2};
  text += "ALL, 1, 2\n";
  for (int n = 0; n < 11; ++n) text += prescribed(n, 3, 0.01 * height[n]);
  return text + "*STEP\n*STATIC\n*END STEP\n";
}

}  // namespace

TEST(AnalysisSolidsOutput, CellsAndStresses) {
  const scratch_folder scratch;
  solver::options wanted;
  wanted.deck = scratch.write("zoo.inp", pulled());
  wanted.output = scratch.path("r.vtu");
  wanted.solids = scratch.path("s.csv");
  wanted.members = scratch.path("m.csv");
  wanted.quiet = true;
  solver::run(wanted);

  pugi::xml_document document;
  ASSERT_TRUE(document.load_file(scratch.path("r.vtu").c_str()));
  const pugi::xml_node piece = document.child("VTKFile").child("UnstructuredGrid").child("Piece");
  const auto array = [&](const char* part, const char* name) {
    return numbers(piece.child(part).find_child_by_attribute("DataArray", "Name", name));
  };
  EXPECT_EQ(array("Cells", "types"), (std::vector<double>{12, 13, 10}));
  EXPECT_EQ(array("Cells", "offsets"), (std::vector<double>{8, 14, 18}));
  EXPECT_EQ(array("Cells", "connectivity"),
            (std::vector<double>{0, 1, 2, 3, 4, 5, 6, 7, 1, 8, 2, 5, 9, 6, 4, 5, 7, 10}));
  const std::vector<double> cell = array("CellData", "solid_stress"), at_node = array("PointData", "solid_stress");
  ASSERT_EQ(cell.size(), 18U);
  ASSERT_EQ(at_node.size(), 66U);
  for (std::size_t i = 0; i < cell.size(); ++i) EXPECT_WITHIN(cell[i], i % 6 == 2 ? 10.0 : 0.0, 10.0, 1e-12) << i;
  for (std::size_t i = 0; i < at_node.size(); ++i) EXPECT_WITHIN(at_node[i], i % 6 == 2 ? 10.0 : 0.0, 10.0, 1e-12) << i;
  EXPECT_WITHIN(array("CellData", "solid_von_mises"), (std::vector<double>{10, 10, 10}), 10.0, 1e-12);
  EXPECT_TRUE(piece.child("CellData").find_child_by_attribute("DataArray", "Name", "membrane_force").empty());

  std::ifstream table(scratch.path("s.csv"));
  std::string line;
  std::getline(table, line);
  EXPECT_EQ(line, "node,elset,elements,sxx,syy,szz,sxy,syz,sxz,first,second,third,von_mises");
  int lines = 0, of_node_6 = 0;
  while (std::getline(table, line)) ++lines, of_node_6 += line.rfind("6,", 0) == 0 ? 1 : 0;
  EXPECT_EQ(lines, 18);     // a line a node of each section
  EXPECT_EQ(of_node_6, 3);  // brick, wedge and tetrahedron
  std::ifstream members(scratch.path("m.csv"));
  std::getline(members, line);
  EXPECT_FALSE(std::getline(members, line)) << "solids are no members";
}

// The library takes a determinant below 1e-20 for a singular one: its message comes with the line of the deck.
TEST(AnalysisSolidsOutput, SingularJacobianNamesElementAndLine) {
  block b;
  b.count = {1, 1, 1};
  b.place = [](double u, double v, double w) { return point{1e-7 * u, 1e-7 * v, 1e-7 * w}; };
  const std::string text = b.deck("X0, 1, 3\n", "*STATIC\n*CLOAD\n7, 1, 1\n");
  EXPECT_EQ(error_of(read(text)),
            "shell.inp:11: *ELEMENT: Solid element 1: the Jacobian is singular. Check the number of its nodes, their "
            "order and their positions.");
}

TEST(AnalysisSolidsOutput, LoadsOnRotationsMeetNothing) {
  block b;
  b.count = {1, 1, 1};
  const std::string text = b.deck("X0, 1, 3\n", "*STATIC\n*CLOAD\n7, 5, 1\n");
  const auto step = std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(text.find("*STEP")), '\n') + 1;
  EXPECT_EQ(error_of(read(text)), "shell.inp:" + std::to_string(step) +
                                      ": *STEP: mechanism: node 7 is loaded in rotation y (degree of freedom 5), but "
                                      "only solids join it, which resist no rotation");
}
