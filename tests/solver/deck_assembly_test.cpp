// deck_assembly_test.cpp: parts and instances: the model is that of the flat deck, moved where an instance says so.
#include <gtest/gtest.h>

#include <cmath>

#include "deck_builder.h"

using namespace deck_test;

namespace {

const char MATERIAL[] = "*MATERIAL, NAME=M\n*ELASTIC\n2.E11, 0.3\n";
const char STEP[] = "*STEP\n*STATIC\n*CLOAD\nPLATE-1.3, 3, 1.\n*END STEP\n";

std::string part(const std::string& more = "") {
  return "*PART, NAME=Plate\n*NODE\n1, 0., 0., 0.\n2, 2., 0., 0.\n3, 2., 1., 0.\n4, 0., 1., 0.\n"
         "*ELEMENT, TYPE=S4, ELSET=ALL\n1, 1, 2, 3, 4\n*NSET, NSET=SIDE\n1, 4\n" +
         more + "*SHELL SECTION, ELSET=ALL, MATERIAL=M\n0.01\n*END PART\n";
}

std::string instance(const std::string& name, const std::string& motion = "") {
  return "*INSTANCE, NAME=" + name + ", PART=PLATE\n" + motion + "*END INSTANCE\n";
}

std::string assembly(const std::string& cards) { return "*ASSEMBLY, NAME=A\n" + cards + "*END ASSEMBLY\n"; }

std::string deck(const std::string& instances, const std::string& more = "") {
  return part() + assembly(instances + more) + MATERIAL + "*BOUNDARY\nPLATE-1.SIDE, 1, 6\n" + STEP;
}

const solver::named_set& set(const solver::numbered<solver::named_set>& sets, const std::string& name) {
  for (const solver::named_set& each : sets) {
    if (each.name == name) return each;
  }
  ADD_FAILURE() << "no set " << name;
  return sets.front();
}

void expect_point(const solver::model& m, int index, double x, double y, double z) {
  const std::array<double, 3>& p = m.nodes[index].xyz;
  EXPECT_LT(std::hypot(p[0] - x, p[1] - y, p[2] - z), 1e-14)
      << "node " << m.nodes[index].id << ": " << p[0] << ' ' << p[1] << ' ' << p[2];
}

}  // namespace

TEST(deck_assembly, one_instance_is_the_part) {
  const solver::model m = read(deck(instance("Plate-1")));
  ASSERT_EQ(m.nodes.size(), 4u);
  ASSERT_EQ(m.elements.size(), 1u);
  EXPECT_EQ(m.nodes[2].id, 3);
  EXPECT_EQ(m.nodes[2].line, 5);
  EXPECT_EQ(set(m.nsets, "PLATE-1.SIDE").members, (std::vector<int>{0, 3}));
  EXPECT_EQ(m.shell_sections[0].elset, "PLATE-1.ALL");
  EXPECT_EQ(m.steps[0].nodal_loads[0].node, 2);
  EXPECT_TRUE(m.notes.empty());
}

TEST(deck_assembly, an_instance_is_shifted_and_then_turned) {
  // (x, y, z) + (0, 3, 1), then 90 degrees about z through (0, 3, 0): (x, 3 + y) -> (-y, 3 + x).
  const solver::model m = read(deck(instance("PLATE-1", "0., 3., 1.\n0., 3., 0., 0., 3., 1., 90.\n")));
  expect_point(m, 0, 0, 3, 1);
  expect_point(m, 1, 0, 5, 1);
  expect_point(m, 2, -1, 5, 1);
  expect_point(m, 3, -1, 3, 1);
}

TEST(deck_assembly, a_rotation_about_a_slanted_axis) {
  // A third of a turn about the diagonal takes x to y, y to z, z to x.
  const solver::model m = read(deck(instance("PLATE-1", "0., 0., 0.\n0., 0., 0., 2., 2., 2., 120.\n")));
  expect_point(m, 1, 0, 2, 0);
  expect_point(m, 2, 0, 2, 1);
  expect_point(m, 3, 0, 0, 1);
}

TEST(deck_assembly, the_second_instance_counts_on) {
  const std::string text = deck(instance("PLATE-1") + instance("PLATE-2", "5.,\n"),
                                "*NSET, NSET=BOTH, INSTANCE=PLATE-1\n2, 3\n*NSET, NSET=BOTH, INSTANCE=PLATE-2\nSIDE\n"
                                "*NSET, NSET=NAMED\nPLATE-2.3, PLATE-1.SIDE, A.PLATE-2.4\n"
                                "*ELSET, ELSET=ALL, INSTANCE=PLATE-2, GENERATE\n1, 1, 1\n");
  const solver::model m = read(text);
  ASSERT_EQ(m.nodes.size(), 8u);
  EXPECT_EQ(m.nodes[4].id, 11);
  EXPECT_EQ(m.elements[1].id, 11);
  EXPECT_EQ(m.elements[1].nodes, (std::vector<int>{4, 5, 6, 7}));
  expect_point(m, 6, 7, 1, 0);
  EXPECT_EQ(set(m.nsets, "BOTH").members, (std::vector<int>{1, 2, 4, 7}));
  EXPECT_EQ(set(m.nsets, "NAMED").members, (std::vector<int>{0, 3, 6, 7}));
  EXPECT_EQ(set(m.elsets, "ALL").members, (std::vector<int>{1}));
  expect_notes(text, {"plate.inp:14: *ASSEMBLY: numbers of nodes and elements that others have already are counted on: "
                      "PLATE-2 from 10 (its 1 is 11 here)"});
}

TEST(deck_assembly, an_instance_with_numbers_of_its_own_keeps_them) {
  const std::string other =
      "*INSTANCE, NAME=OWN\n*NODE\n21, 9., 0., 0.\n22, 9., 1., 0.\n*ELEMENT, TYPE=T3D2, "
      "ELSET=BAR\n21, 21, 22\n*SOLID SECTION, ELSET=BAR, MATERIAL=M\n1.\n*END INSTANCE\n";
  const solver::model m = read(deck(instance("PLATE-1") + other));
  EXPECT_EQ(m.nodes[4].id, 21);
  EXPECT_EQ(m.elements[1].id, 21);
  EXPECT_EQ(m.frame_sections[0].elset, "OWN.BAR");
  EXPECT_TRUE(m.notes.empty());
}

TEST(deck_assembly, nodes_of_the_assembly_count_on_behind_all_instances) {
  const std::string more =
      "*NODE\n1, 8., 0., 0.\n*NSET, NSET=POINT\n1,\n*ELEMENT, TYPE=T3D2, ELSET=ROD\n1, PLATE-1.2, 1\n"
      "*SOLID SECTION, ELSET=ROD, MATERIAL=M\n1.\n";
  const solver::model m = read(deck(instance("PLATE-1") + instance("PLATE-2", "5.\n"), more));
  ASSERT_EQ(m.nodes.size(), 9u);
  EXPECT_EQ(m.nodes[8].id, 21);
  EXPECT_EQ(set(m.nsets, "POINT").members, (std::vector<int>{8}));
  EXPECT_EQ(m.elements[2].id, 21);
  EXPECT_EQ(m.elements[2].nodes, (std::vector<int>{1, 8}));
  EXPECT_EQ(m.frame_sections[0].elset, "ROD");
}

TEST(deck_assembly, orientations_turn_with_the_instance) {
  const std::string text =
      "*PART, NAME=P\n*NODE\n1, 0., 0., 0.\n2, 2., 0., 0.\n3, 2., 1., 0.\n4, 0., 1., 0.\n"
      "*ELEMENT, TYPE=S4, ELSET=ALL\n1, 1, 2, 3, 4\n*ORIENTATION, NAME=O\n0., 1., 0., -1., 0., "
      "0.\n3, 0.\n*SHELL SECTION, ELSET=ALL, MATERIAL=M, ORIENTATION=O\n0.01\n*END PART\n"
      "*ASSEMBLY\n*INSTANCE, NAME=I, PART=P\n1., 1., 1.\n0., 0., 0., 1., 0., 0., 90.\n*END "
      "INSTANCE\n*END ASSEMBLY\n" +
      std::string(MATERIAL) + "*BOUNDARY\nI.1, 1, 6\n*STEP\n*STATIC\n*CLOAD\nI.3, 3, 1.\n*END STEP\n";
  const solver::model m = read(text);
  ASSERT_EQ(m.orientations.size(), 1u);
  const solver::orientation& o = m.orientations[0];
  EXPECT_EQ(o.name, "I.O");
  EXPECT_NEAR(o.direction[0][2], 1, 1e-15);   // y goes to z
  EXPECT_NEAR(o.direction[1][0], -1, 1e-15);  // -x stays
  EXPECT_NEAR(o.direction[2][1], -1, 1e-15);  // z goes to -y
}

TEST(deck_assembly, beams_take_their_n1_along) {
  const auto frame = [](const std::string& n1) {
    return "*PART, NAME=P\n*NODE\n1, 0., 0., 0.\n2, 2., 0., 0.\n*ELEMENT, TYPE=B33, ELSET=ALL\n1, 1, 2\n*BEAM SECTION, "
           "ELSET=ALL, MATERIAL=M, SECTION=RECT\n1., 2.\n" +
           n1 +
           "*END PART\n*ASSEMBLY\n*INSTANCE, NAME=I, PART=P\n\n0., 0., 0.\n0., 0., 0., 1., 0., 0., 90.\n"
           "*END INSTANCE\n*END ASSEMBLY\n" +
           MATERIAL + "*BOUNDARY\nI.1, 1, 6\n*STEP\n*STATIC\n*CLOAD\nI.2, 3, 1.\n*END STEP\n";
  };
  const solver::model given = read(frame("0., 1., 0.\n")), left_out = read(frame(""));
  EXPECT_NEAR(given.frame_sections[0].n1[2], 1, 1e-15);
  EXPECT_NEAR(left_out.frame_sections[0].n1[1], 1, 1e-15);  // (0, 0, -1) by 90 degrees about x
}

TEST(deck_assembly, errors_of_a_part_stand_where_it_is_written) {
  const std::string wrong = part("*NSET, NSET=X\n9\n") + assembly(instance("PLATE-1")) + MATERIAL + STEP;
  expect_error(wrong, 12, "*NSET", "node 9 is not defined");
  expect_error(deck(instance("PLATE-1"), "*NSET, NSET=X\nPLATE-1.NONE\n"), 18, "*NSET",
               "the node set 'PLATE-1.NONE' is not defined");
}

TEST(deck_assembly, structure) {
  expect_error(deck(""), 1, "*PART", "no *INSTANCE puts the part into an *ASSEMBLY");
  expect_error(deck("*INSTANCE, NAME=X, PART=NONE\n*END INSTANCE\n"), 15, "*INSTANCE",
               "the part 'NONE' is not defined");
  expect_error(deck("*INSTANCE, PART=PLATE\n*END INSTANCE\n"), 15, "*INSTANCE", "the parameter NAME is missing");
  expect_error(deck(instance("PLATE-1") + instance("plate-1")), 17, "*INSTANCE",
               "the instance 'plate-1' is defined already");
  expect_error(deck("*INSTANCE, NAME=X, PART=PLATE\n"), 15, "*INSTANCE", "the instance has no *END INSTANCE");
  expect_error(deck("*INSTANCE, NAME=X, PART=PLATE\n" + instance("Y")), 16, "*INSTANCE",
               "the *INSTANCE of line 15 has no *END INSTANCE yet", false);
  expect_error(part() + deck(instance("PLATE-1")), 14, "*PART", "the part 'PLATE' is defined already, in line 1");
  expect_error("*END PART\n" + deck(instance("PLATE-1")), 1, "*END PART", "no *PART is open here");
  expect_error(part() + "*ASSEMBLY\n" + instance("PLATE-1") + MATERIAL + STEP, 14, "*ASSEMBLY",
               "no *END ASSEMBLY follows before the first *STEP or the end");
  expect_error(part() + instance("PLATE-1") + MATERIAL + STEP, 14, "*INSTANCE",
               "an instance stands between *ASSEMBLY and *END ASSEMBLY");
  expect_error(deck("*INSTANCE, NAME=X, LIBRARY=OTHER\n*END INSTANCE\n"), 15, "*INSTANCE",
               "an instance from another analysis is not supported: give its *PART in this deck");
  expect_error(deck(instance("PLATE-1"), "*NSET, NSET=X, INSTANCE=NONE\n1\n"), 17, "*NSET",
               "the instance 'NONE' is not defined");
}

TEST(deck_assembly, motions) {
  expect_error(deck(instance("PLATE-1", "0., 0., x\n")), 16, "*INSTANCE", "'x' is not a number");
  expect_error(deck(instance("PLATE-1", "0., 0., 0., 0.\n")), 16, "*INSTANCE", "too many fields (4): dx, dy, dz");
  expect_error(deck(instance("PLATE-1", "0., 0., 0.\n0., 0., 0., 0., 0., 1.\n")), 17, "*INSTANCE",
               "7 fields belong here, not 6: x, y, z of point a, x, y, z of point b of the axis, angle in degrees");
  expect_error(deck(instance("PLATE-1", "0., 0., 0.\n1., 0., 0., 1., 0., 0., 30.\n")), 17, "*INSTANCE",
               "the points a and b are the same: they are to be two points of the axis");
  expect_error(deck(instance("PLATE-1", "0.\n0., 0., 0., 1., 0., 0., 30.\n0.\n")), 18, "*INSTANCE",
               "a third data line: a translation and a rotation belong here");
}

TEST(deck_assembly, a_part_without_an_instance_is_noted) {
  const std::string spare = "*PART, NAME=SPARE\n*NODE\n1, 0., 0., 0.\n*END PART\n";
  expect_notes(spare + deck(instance("PLATE-1")),
               {"plate.inp:1: *PART: the part 'SPARE' has no effect: it is in no *INSTANCE"});
}
