// deck_generators_test.cpp: generated nodes and elements: where they lie, which numbers they have, what is refused.
#include <gtest/gtest.h>

#include <cmath>

#include "deck_builder.h"

using namespace deck_test;

namespace {

const char REST[] =
    "*MATERIAL, NAME=M\n*ELASTIC\n1., 0.3\n*SOLID SECTION, ELSET=BARS, MATERIAL=M\n1.\n*STEP\n*STATIC\n*END STEP\n";
const char ENDS[] = "*NODE\n1, 2., 0., 0.\n5, 0., 2., 0.\n9, 0., 0., 0.\n";

std::string with(const std::string& cards) {
  return ENDS + cards + "*ELEMENT, TYPE=T3D2, ELSET=BARS\n1, 1, 5\n" + REST;
}

std::array<double, 3> place(const solver::model& m, int id) {
  for (const solver::node& n : m.nodes) {
    if (n.id == id) return n.xyz;
  }
  ADD_FAILURE() << "no node " << id;
  return {};
}

void expect_place(const solver::model& m, int id, double x, double y, double z = 0) {
  const std::array<double, 3> p = place(m, id);
  EXPECT_LT(std::hypot(p[0] - x, p[1] - y, p[2] - z), 1e-14) << id << ": " << p[0] << ' ' << p[1] << ' ' << p[2];
}

}  // namespace

TEST(deck_generators, nodes_on_a_line) {
  const solver::model m = read(with("*NGEN, NSET=ROW\n1, 5\n"));
  ASSERT_EQ(m.nodes.size(), 6u);
  expect_place(m, 2, 1.5, 0.5);
  expect_place(m, 4, 0.5, 1.5);
  EXPECT_EQ(m.nsets[0].name, "ROW");
  EXPECT_EQ(m.nsets[0].members.size(), 5u);
  expect_place(read(with("*NGEN\n1, 5, 2\n")), 3, 1, 1);
  expect_place(read(with("*NGEN\n5, 1, -2\n")), 3, 1, 1);
}

TEST(deck_generators, nodes_on_a_circle_and_a_parabola) {
  const double c = std::sqrt(2.0);
  expect_place(read(with("*NGEN, LINE=C\n1, 5, 2, 9\n")), 3, c, c);
  expect_place(read(with("*NGEN, LINE=C\n1, 5, 2, , 0., 0., 0., 0., 0., -1.\n")), 3, -c, -c);  // the other way round
  expect_place(read(with("*NGEN, LINE=P\n1, 5, 1, , 1.2, 1.2, 0.\n")), 3, 1.2, 1.2);
}

TEST(deck_generators, nodes_between_two_sets) {
  const solver::model m =
      read(with("*NODE, NSET=B\n11, 2., 0., 4.\n15, 0., 2., 4.\n*NSET, NSET=A\n1, 5\n*NFILL, "
                "NSET=ALL\nA, B, 4, 100\n"));
  expect_place(m, 201, 2, 0, 2);
  expect_place(m, 305, 0, 2, 3);
  EXPECT_EQ(m.nodes.size(), 11u);
}

TEST(deck_generators, copies_of_nodes_and_elements) {
  const solver::model m =
      read(std::string(ENDS) +
           "*NSET, NSET=A\n1, 5\n*NCOPY, CHANGE NUMBER=10, OLD SET=A, NEW SET=B, SHIFT\n0., 0., 3.\n"
           "0., 0., 0., 0., 0., 1., 90.\n*ELEMENT, TYPE=T3D2, ELSET=BARS\n1, 1, 5\n"
           "*ELCOPY, ELEMENT SHIFT=7, OLD SET=BARS, SHIFT NODES=10, NEW SET=BARS\n" +
           REST);
  expect_place(m, 11, 0, 2, 3);
  expect_place(m, 15, -2, 0, 3);
  ASSERT_EQ(m.elements.size(), 2u);
  EXPECT_EQ(m.elements[1].id, 8);
  EXPECT_EQ(m.nodes[m.elements[1].nodes[1]].id, 15);
  EXPECT_EQ(m.elements[1].section, 0);
}

// Rows of two elements, three of them: numbers 1, 2, 11, 12, 21, 22 on nodes that go up by 1 and by 10.
TEST(deck_generators, elements_in_rows_and_layers) {
  std::string nodes =
      "*NODE\n1, 0., 0.\n3, 2., 0.\n31, 0., 3.\n33, 2., 3.\n*NGEN, NSET=LOW\n1, 3\n*NGEN, NSET=HIGH\n31, "
      "33\n*NFILL\nLOW, HIGH, 3, 10\n";
  const solver::model m =
      read(nodes +
           "*ELEMENT, TYPE=S4\n1, 1, 2, 12, 11\n*ELGEN, ELSET=ALL\n1, 2, 1, 1, 3, 10, 10\n"
           "*MATERIAL, NAME=M\n*ELASTIC\n1., 0.3\n*SHELL SECTION, ELSET=ALL, MATERIAL=M\n1.\n*STEP\n"
           "*STATIC\n*END STEP\n");
  ASSERT_EQ(m.elements.size(), 6u);
  EXPECT_EQ(m.elements[5].id, 22);
  EXPECT_EQ(m.nodes[m.elements[5].nodes[0]].id, 22);
  EXPECT_EQ(m.nodes[m.elements[5].nodes[2]].id, 33);
  expect_place(m, 22, 1, 2);
}

TEST(deck_generators, refused) {
  expect_error(with("*NGEN\n1, 7\n"), 6, "*NGEN", "node 7 is not defined above");
  expect_error(with("*NGEN\n1, 5, 3\n"), 6, "*NGEN", "the increment does not lead from the first number to the last");
  expect_error(with("*NGEN\n1, 5, 0\n"), 6, "*NGEN", "the increment does not lead from the first number to the last");
  expect_error(with("*NGEN, LINE=C\n1, 5, 1, , 1., 0., 0.\n"), 6, "*NGEN",
               "the two nodes have different distances from the centre");
  expect_error(with("*NGEN\n"), 5, "*NGEN", "no data line follows");
  expect_error(with("*NFILL\nA, B, 3\n"), 5, "*NFILL", "the set 'A' is not defined above, or has no members", false);
  expect_error(with("*NFILL, BIAS=2\nA, B, 3\n"), 5, "*NFILL", "the parameter 'BIAS' is not supported");
  expect_error(with("*ELGEN\n4, 2\n"), 6, "*ELGEN", "element 4 is not defined above");
  expect_error(with("*NCOPY, CHANGE NUMBER=1, OLD SET=X\n"), 5, "*NCOPY",
               "SHIFT is missing: nodes are copied by a translation and a rotation");
  expect_error(with("*NGEN\n1, 5, 2\n*NGEN\n1, 5, 4000000000\n"), 8, "*NGEN",
               "increment: '4000000000' is beyond the numbers that can be held");
}
