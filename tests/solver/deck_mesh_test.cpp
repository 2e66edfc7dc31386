// deck_mesh_test.cpp: *NODE, *ELEMENT, *NSET, *ELSET.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "deck_builder.h"

using namespace deck_test;

static std::vector<int> set_named(const std::vector<solver::named_set>& sets, const std::string& name) {
  for (const solver::named_set& set : sets) {
    if (set.name == name) return set.members;
  }
  ADD_FAILURE() << "no set " << name;
  return {};
}

using indices = std::vector<int>;

TEST(deck_mesh, nodes_and_elements_with_their_lines) {
  const solver::model m = read(text_of(GOOD));
  ASSERT_EQ(m.nodes.size(), 4u);
  EXPECT_EQ(m.nodes[2].id, 3);
  EXPECT_EQ(m.nodes[2].xyz, (std::array<double, 3>{1, 1, 0}));
  EXPECT_EQ(m.nodes[2].line, 6);
  ASSERT_EQ(m.elements.size(), 2u);
  EXPECT_EQ(m.elements[1].id, 2);
  EXPECT_EQ(m.elements[1].type, solver::element_type::S3);
  EXPECT_EQ(m.elements[1].nodes, (indices{0, 2, 3}));
  EXPECT_EQ(m.elements[1].line, 10);
  EXPECT_EQ(set_named(m.nsets, "ALL"), (indices{0, 1, 2, 3}));
  EXPECT_EQ(set_named(m.nsets, "FIXED"), (indices{0, 3}));
  EXPECT_EQ(set_named(m.elsets, "SKIN"), (indices{0, 1}));
  EXPECT_EQ(set_named(m.elsets, "LOWER"), (indices{0}));
  EXPECT_EQ(m.deck, "plate.inp");
  EXPECT_EQ(m.title, "Square plate of two triangles");
}

TEST(deck_mesh, elements_may_stand_before_their_nodes) {
  std::vector<std::string> lines = GOOD;
  std::rotate(lines.begin() + 2, lines.begin() + 7, lines.begin() + 10);  // lines 8 to 10 before lines 3 to 7
  ASSERT_EQ(lines[2], "*ELEMENT, TYPE=S3, ELSET=SKIN");
  EXPECT_EQ(read(text_of(lines)).elements[1].nodes, (indices{0, 2, 3}));
}

TEST(deck_mesh, sets_grow_name_one_another_and_hold_a_member_once) {
  const solver::model m = read(inserted(
      13, "*NSET, NSET=ODD, GENERATE\n1, 3, 2\n*NSET, NSET=both\n4, Fixed, ODD,\n4\n*NSET, NSET=ODD\n2\nODD\n"));
  EXPECT_EQ(set_named(m.nsets, "ODD"), (indices{0, 1, 2}));
  EXPECT_EQ(set_named(m.nsets, "BOTH"), (indices{0, 2, 3}));
}

TEST(deck_mesh, generate_without_an_increment) {
  EXPECT_EQ(set_named(read(replaced(11, "*NSET, NSET=FIXED, GENERATE")).nsets, "FIXED"), (indices{0, 1, 2, 3}));
}

TEST(deck_mesh, elements_of_both_types) {
  const std::string deck = replaced(10, "*ELEMENT, TYPE=M3D3, ELSET=CLOTH\n2, 1, 3, 4");
  const std::string section = "*MEMBRANE SECTION, ELSET=CLOTH, MATERIAL=STEEL\n0.002\n*BOUNDARY\n";
  const std::size_t at = deck.find("*BOUNDARY\n");
  const solver::model m = read(deck.substr(0, at) + section + deck.substr(at + 10));
  EXPECT_EQ(m.elements[1].type, solver::element_type::M3D3);
  EXPECT_EQ(m.elements[1].section, 1);
  EXPECT_EQ(m.shell_sections[1].thickness, 0.002);
}

TEST(deck_mesh, node_fields) {
  expect_error(replaced(4, "1, 0., 0., 0., 0."), 4, "*NODE", "too many fields (5): number, x, y, z");
}
TEST(deck_mesh, node_number_below_one) {
  expect_error(replaced(4, "0, 0., 0., 0."), 4, "*NODE", "node number: '0' is not a number from 1");
}
TEST(deck_mesh, node_twice) {
  expect_error(replaced(6, "2, 1., 1., 0."), 6, "*NODE", "node 2 is defined already, in line 5");
}
TEST(deck_mesh, element_twice) {
  expect_error(replaced(10, "1, 1, 3, 4"), 10, "*ELEMENT", "element 1 is defined already, in line 9");
}
TEST(deck_mesh, element_type_missing) {
  expect_error(replaced(8, "*ELEMENT, ELSET=SKIN"), 8, "*ELEMENT", "the parameter TYPE is missing");
}
TEST(deck_mesh, element_type_not_supported) {
  expect_error(replaced(8, "*ELEMENT, TYPE=Q4, ELSET=SKIN"), 8, "*ELEMENT",
               "the element type 'Q4' is not supported; S3, S4, S6, S8, M3D3, M3D4, M3D6, M3D8, B31, B32, B33, T3D2, "
               "SPRING1, SPRING2, SPRINGA, CONN3D2, C3D4, C3D6, C3D8, MASS and ROTARYI are");
}
TEST(deck_mesh, element_fields) {
  expect_error(replaced(9, "1, 1, 2"), 9, "*ELEMENT", "too few fields (3): number, node 1, node 2, node 3");
  expect_error(replaced(9, "1, 1, 2, 3, 4"), 9, "*ELEMENT", "too many fields (5): number, node 1, node 2, node 3");
}
TEST(deck_mesh, element_that_goes_on_and_ends_short) {
  expect_error(replaced(10, "2, 1, 3,"), 10, "*ELEMENT", "too few fields (3): number, node 1, node 2, node 3");
}
TEST(deck_mesh, element_with_a_missing_node) {
  expect_error(replaced(9, "1, 1, 2, 17"), 9, "*ELEMENT", "element 1: node 17 is not defined");
}
TEST(deck_mesh, element_with_a_repeated_node) {
  expect_error(replaced(9, "1, 1, 2, 1"), 9, "*ELEMENT", "element 1: node 1 is named twice");
}
TEST(deck_mesh, element_without_area) {
  const char* sentence = "element 1 has no area: its nodes coincide or lie on one line";
  expect_error(replaced(6, "3, 2., 0., 0."), 9, "*ELEMENT", sentence);
  expect_error(replaced(5, "2, 0., 0., 0."), 9, "*ELEMENT", sentence);
}
TEST(deck_mesh, thin_but_real_elements_are_accepted) {
  EXPECT_EQ(read(replaced(6, "3, 1., 1E-6, 0.")).elements.size(), 2u);
}
TEST(deck_mesh, no_elements) { expect_error(without(8, 10), 32, "*ELEMENT", "the deck has no elements"); }
TEST(deck_mesh, set_without_a_name) {
  expect_error(replaced(11, "*NSET, GENERATE"), 11, "*NSET", "the parameter NSET is missing");
}
TEST(deck_mesh, set_with_a_number_as_its_name) {
  expect_error(replaced(11, "*NSET, NSET=12"), 11, "*NSET", "'12' is not a name: it is a number");
}
TEST(deck_mesh, set_with_too_long_a_name) {
  expect_error(replaced(11, "*NSET, NSET=" + std::string(81, 'N')), 11, "*NSET",
               "the name '" + std::string(40, 'N') + "...' is longer than 80 letters");
}
TEST(deck_mesh, set_member_not_defined) {
  expect_error(replaced(12, "1, 17"), 12, "*NSET", "node 17 is not defined");
  expect_error(replaced(14, "17"), 14, "*ELSET", "element 17 is not defined");
}
TEST(deck_mesh, set_in_a_set_not_defined) {
  expect_error(replaced(12, "1, ROOF"), 12, "*NSET", "the node set 'ROOF' is not defined");
  expect_error(replaced(14, "ALL"), 14, "*ELSET", "the element set 'ALL' is not defined");
}
TEST(deck_mesh, set_with_an_empty_field) {
  expect_error(replaced(12, "1, , 4"), 12, "*NSET", "a field is empty: it takes a node number or the name of a set");
}
TEST(deck_mesh, set_of_itself_alone) {
  const std::string text = replaced(12, "FIXED");
  expect_notes(text, {"plate.inp:11: *NSET: the set 'FIXED' has no members",
                      "plate.inp:24: *BOUNDARY: the node set 'FIXED' has no members: the line that names it has no "
                      "effect"});
}
TEST(deck_mesh, generate_fields) {
  const std::string card = "*NSET, NSET=G, GENERATE\n";
  expect_error(inserted(13, card + "1"), 14, "*NSET", "too few fields (1): first, last, increment");
  expect_error(inserted(13, card + "1, 2, 1, 1"), 14, "*NSET", "too many fields (4): first, last, increment");
  expect_error(inserted(13, card + "1, FIXED"), 14, "*NSET", "last: 'FIXED' is not an integer");
}
TEST(deck_mesh, generate_backwards) {
  expect_error(inserted(13, "*NSET, NSET=G, GENERATE\n4, 1"), 14, "*NSET", "the last number is smaller than the first");
}
TEST(deck_mesh, generate_with_an_increment_of_zero) {
  expect_error(inserted(13, "*NSET, NSET=G, GENERATE\n1, 4, 0"), 14, "*NSET", "increment: '0' is not a number from 1");
}
TEST(deck_mesh, generate_past_the_last) {
  expect_error(inserted(13, "*NSET, NSET=G, GENERATE\n1, 4, 2"), 14, "*NSET",
               "the increment does not lead from the first number to the last");
}
TEST(deck_mesh, generate_over_what_is_not_defined) {
  expect_error(inserted(13, "*NSET, NSET=G, GENERATE\n1, 2147483647"), 14, "*NSET", "node 5 is not defined");
}
