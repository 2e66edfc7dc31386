// deck_named_edges_test.cpp: elements that Gmsh leaves on named edges are left out where no section names them, and
// nowhere else.
#include <gtest/gtest.h>

#include "deck_builder.h"

using namespace deck_test;

namespace {

// A bar and a strip; line by line as Gmsh saves them.
std::string mesh(const std::string& sections, const std::string& type = "T3D2", const std::string& set = "Line4") {
  return "*NODE\n1, 0., 0., 0.\n2, 1., 0., 0.\n3, 1., 1., 0.\n4, 0., 1., 0.\n*ELEMENT, type=" + type +
         ", ELSET=" + set +
         "\n1, 4, 1\n*ELEMENT, type=S4, ELSET=Surface1\n2, 1, 2, 3, 4\n*ELSET,ELSET=FIXED\n1, \n*ELSET,ELSET=STRIP\n2, "
         "\n"
         "*NSET,NSET=FIXED\n1, 4, \n*MATERIAL, NAME=M\n*ELASTIC\n1., 0.3\n" +
         sections + "*BOUNDARY\nFIXED, 1, 6\n*STEP\n*STATIC\n*CLOAD\n2, 1, 1.\n*END STEP\n";
}

const std::string STRIP = "*SHELL SECTION, ELSET=STRIP, MATERIAL=M\n1.\n";
const std::string NOTE =
    "plate.inp:6: *ELEMENT: 1 elements of named edges and faces are left out, with the sets that hold nothing else: no "
    "section names them, as a mesher saves them to name their nodes";

}  // namespace

TEST(deck_named_edges, without_a_section_they_are_left_out) {
  const solver::model m = read(mesh(STRIP));
  ASSERT_EQ(m.elements.size(), 1u);
  EXPECT_EQ(m.elements[0].id, 2);
  ASSERT_EQ(m.elsets.size(), 2u);
  EXPECT_EQ(m.elsets[1].name, "STRIP");
  ASSERT_FALSE(m.notes.empty());
  EXPECT_EQ(m.notes[0], NOTE);
}

TEST(deck_named_edges, a_section_keeps_them) {
  for (const std::string set : {"Line4", "FIXED"}) {
    const solver::model m = read(mesh(STRIP + "*SOLID SECTION, ELSET=" + set + ", MATERIAL=M\n1.\n"));
    EXPECT_EQ(m.elements.size(), 2u) << set;
    EXPECT_TRUE(m.notes.empty()) << set;
  }
}

TEST(deck_named_edges, a_section_that_names_them_by_another_set_keeps_them) {
  for (const std::string data : {"FIXED", "LINE4", "1", "1, 1, 1"}) {
    const std::string generate = data == "1, 1, 1" ? ", GENERATE" : "";
    const solver::model m = read(mesh("*ELSET, ELSET=BARS" + generate + "\n" + data + "\n" + STRIP +
                                      "*SOLID SECTION, ELSET=BARS, MATERIAL=M\n1.\n"));
    EXPECT_EQ(m.elements.size(), 2u) << data;
  }
}

TEST(deck_named_edges, other_sets_and_types_lack_their_section) {
  const std::string sentence =
      "element 1 has no section: it is a bar (T3D2): it takes a *SOLID SECTION or *CABLE SECTION, with the area on its "
      "data line";
  expect_error(mesh(STRIP, "T3D2", "Bars"), 7, "*ELEMENT", sentence);
  expect_error(mesh(STRIP, "T3D2", "Lines4"), 7, "*ELEMENT", sentence);
  expect_error(mesh(STRIP, "B31", "Line4"), 7, "*ELEMENT",
               "element 1 has no section: it is a beam (B31): it takes a *BEAM GENERAL SECTION or *BEAM SECTION");
}

TEST(deck_named_edges, what_else_names_the_set_is_an_error) {
  const std::string text = mesh(STRIP), head = text.substr(0, text.find("*END STEP"));
  expect_error(
      head + "*EL PRINT, ELSET=FIXED\nS\n*END STEP\n", 7, "*ELEMENT",
      "element 1 has no section: it is a bar (T3D2): it takes a *SOLID SECTION or *CABLE SECTION, with the area on its "
      "data line");
  expect_error(head + "*DLOAD\nFIXED, PX, 1.\n*END STEP\n", 28, "*DLOAD", "the element set 'FIXED' is not defined");
}
