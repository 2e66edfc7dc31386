// *ORIENTATION and the sections that name one: what is read, and what is refused where.
#include <gtest/gtest.h>

#include <cmath>

#include "deck_builder.h"
#include "elements/material_axes.h"
#include "model/vectors.h"

using namespace deck_test;

namespace {

// The good deck with an orientation before its section and the section's name for it.
std::string oriented(const std::string& card, const std::string& name = "ORIENTATION=Ply") {
  std::vector<std::string> lines = GOOD;
  lines[21] = card + "\n" + lines[21] + (name.empty() ? "" : ", " + name);
  return text_of(lines);
}

}  // namespace

TEST(deck_orientation, rectangular) {
  const solver::model m = read(oriented("*ORIENTATION, NAME=ply, SYSTEM=RECTANGULAR\n0., 2., 0., -3., 1., 0.\n3, 30."));
  ASSERT_EQ(m.orientations.size(), 1U);
  const solver::orientation& o = m.orientations[0];
  EXPECT_EQ(o.name, "PLY");
  EXPECT_EQ(o.system, solver::orientation_system::RECTANGULAR);
  const std::array<std::array<double, 3>, 3> axes = {{{0, 1, 0}, {-1, 0, 0}, {0, 0, 1}}};
  EXPECT_EQ(o.direction, axes);
  EXPECT_EQ(o.axis, 3);
  EXPECT_EQ(o.angle, 30);
  EXPECT_EQ(o.line, 22);
  EXPECT_EQ(m.shell_sections[0].orientation, 0);
}

TEST(deck_orientation, cylindrical) {
  const solver::model m = read(oriented("*Orientation, name=ply, system=Cylindrical\n1., 2., 3., 1., 2., -4.\n3"));
  const solver::orientation& o = m.orientations[0];
  EXPECT_EQ(o.system, solver::orientation_system::CYLINDRICAL);
  EXPECT_EQ(o.origin, (std::array<double, 3>{1, 2, 3}));
  EXPECT_EQ(o.direction[2], (std::array<double, 3>{0, 0, -1}));
  EXPECT_EQ(o.axis, 3);
  EXPECT_EQ(o.angle, 0);
}

// A square whose middle lies 2 along x from the axis, along z or against it: the additional rotation goes from the
// direction that leads away from the axis to the one round it, which turns with the axis.
TEST(deck_orientation, rotation_in_cylindrical_axes) {
  for (const char* const end : {"1., 2., 9.", "1., 2., -9."}) {
    const solver::model m = read(
        "*NODE\n1, 2., 1., 0.\n2, 4., 1., 0.\n3, 4., 3., 0.\n4, 2., 3., 0.\n*ELEMENT, TYPE=S4, ELSET=E\n1, 1, 2, 3, 4\n"
        "*MATERIAL, NAME=M\n*ELASTIC\n1., 0.\n*ORIENTATION, NAME=O, SYSTEM=CYLINDRICAL\n1., 2., 0., " +
        std::string(end) +
        "\n3, 30.\n*SHELL SECTION, ELSET=E, MATERIAL=M, ORIENTATION=O\n1.\n*BOUNDARY\n1, 1, 6\n*STEP\n*STATIC\n"
        "*CLOAD\n3, 1, 1.\n*END STEP\n");
    const std::array<double, 3> first = solver::first_axis(m, m.elements[0], 0, 0);
    EXPECT_NEAR(first[0], std::sqrt(0.75), 1e-14);
    EXPECT_NEAR(first[1], std::string(end) == "1., 2., 9." ? 0.5 : -0.5, 1e-14);
    EXPECT_NEAR(first[2], 0, 1e-14);
  }
}

TEST(deck_orientation, a_section_without_one) { EXPECT_EQ(read(text_of(GOOD)).shell_sections[0].orientation, -1); }

TEST(deck_orientation, may_stand_below_its_section) {
  std::vector<std::string> lines = GOOD;
  lines[21] += ", ORIENTATION=PLY";
  lines[22] += "\n*ORIENTATION, NAME=PLY\n1., 0., 0., 0., 1., 0.\n3";
  EXPECT_EQ(read(text_of(lines)).shell_sections[0].orientation, 0);
}

TEST(deck_orientation, a_missing_second_line_is_noted) {
  const std::string rest =
      ": direction 3 is taken, axis 1 of the material is then the projection of direction 1 (write "
      "'3, 0' to say so, '1, 0' for that of direction 2)";
  expect_notes(oriented("*ORIENTATION, NAME=PLY\n1., 0., 0., 0., 1., 0."),
               {"plate.inp:22: *ORIENTATION: no second data line says which direction is nearest to the normal of the "
                "shells" +
                rest});
  const std::string round =
      ": direction 1 is taken, axis 1 of the material then runs round the axis (write '1, 0' to say "
      "so, '3, 0' for plates across the axis)";
  expect_notes(oriented("*ORIENTATION, NAME=PLY, SYSTEM=CYLINDRICAL\n9., 0., 0., 9., 1., 0.", ""),
               {"plate.inp:22: *ORIENTATION: no second data line says which direction is nearest to the normal of the "
                "shells" +
                round});
}

TEST(deck_orientation, names) {
  expect_error(oriented("*ORIENTATION, NAME=Wood\n1., 0., 0., 0., 1., 0.\n3"), 25, "*SHELL SECTION",
               "the orientation 'Ply' is not defined");
  expect_error(oriented("*ORIENTATION\n1., 0., 0., 0., 1., 0.\n3"), 22, "*ORIENTATION",
               "the parameter NAME is missing");
  expect_error(oriented("*ORIENTATION, NAME=7\n1., 0., 0., 0., 1., 0.\n3"), 22, "*ORIENTATION",
               "'7' is not a name: it is a number");
  expect_error(
      oriented("*ORIENTATION, NAME=PLY\n1., 0., 0., 0., 1., 0.\n3\n*ORIENTATION, NAME=Ply\n1., 0., 0., 0., 1., "
               "0.\n3"),
      25, "*ORIENTATION", "the orientation 'PLY' is defined already, in line 22");
}

TEST(deck_orientation, points) {
  const auto refused = [](const std::string& system, const std::string& line, const std::string& sentence) {
    expect_error(oriented("*ORIENTATION, NAME=PLY" + system + "\n" + line + "\n3"), 23, "*ORIENTATION", sentence);
  };
  refused("", "1., 0., 0., -3., 0., 0.", "the origin, point a and point b lie on one line: they do not span a plane");
  refused("", "1E200, 2E200, 0., 2E-200, 4E-200, 0.",
          "the origin, point a and point b lie on one line: they do not span a plane");
  // The sine of the angle at the origin, 1e-9 is the least.
  refused("", "1., 0., 0., 1., 1E-10, 0.", "the origin, point a and point b lie on one line: they do not span a plane");
  expect_notes(oriented("*ORIENTATION, NAME=PLY\n1., 0., 0., 1., 1E-8, 0.\n3"), {});
  refused("", "0., 0., 0., 1., 0., 0.", "point a is the origin: no direction leads to it");
  refused("", "1., 0., 0., 2., 3., 4., 2., 3., 4.", "point b is the origin: no direction leads to it");
  refused("", "1., 0., 0., 0., 1.", "too few fields (5): x, y, z of a, x, y, z of b");
  refused("", "1., 0., 0., 0., 1., 0., 4.", "too many fields (7): x, y, z of a, x, y, z of b");
  refused("", "1., 0., zero, 0., 1., 0.", "z of a: 'zero' is not a number");
  refused(", SYSTEM=CYLINDRICAL", "1., 2., 3., 1., 2., 3.",
          "the points a and b are the same: they are to be two points of the axis");
  refused(", SYSTEM=CYLINDRICAL", "1., 2., 3.",
          "too few fields (3): x, y, z of a, x, y, z of b: two points of the axis");
}

TEST(deck_orientation, second_line) {
  const auto refused = [](const std::string& line, int at, const std::string& sentence) {
    expect_error(oriented("*ORIENTATION, NAME=PLY\n1., 0., 0., 0., 1., 0.\n" + line), at, "*ORIENTATION", sentence);
  };
  refused("4, 30.", 24, "the axis of the additional rotation is 1, 2 or 3, not '4'");
  refused("0", 24, "the axis of the additional rotation is 1, 2 or 3, not '0'");
  refused("3., 30.", 24, "axis of the additional rotation: '3.' is not an integer");
  refused("3, thirty", 24, "angle of the additional rotation: 'thirty' is not a number");
  refused("3, inf", 24, "angle of the additional rotation: 'inf' is not finite");
  refused("3, 30., 1.", 24, "too many fields (3): axis of the additional rotation (1, 2 or 3), angle");
  refused("3\n3", 25, "a third data line: two belong here");
}

TEST(deck_orientation, forms_that_are_not_supported) {
  expect_error(oriented("*ORIENTATION, NAME=PLY, SYSTEM=USER\n1., 0., 0., 0., 1., 0."), 22, "*ORIENTATION",
               "SYSTEM=USER is not supported; RECTANGULAR, Z RECTANGULAR, CYLINDRICAL and SPHERICAL are");
  expect_error(oriented("*ORIENTATION, NAME=PLY, DEFINITION=OFFSET TO NODES\n1, 2, 3"), 22, "*ORIENTATION",
               "DEFINITION=OFFSET TO NODES is not supported; COORDINATES and NODES are");
}

TEST(deck_orientation, a_direction_without_projection) {
  // Direction 1 is z, the normal of the plate.
  expect_error(
      oriented("*ORIENTATION, NAME=PLY\n0., 0., 1., 0., 1., 0.\n3, 0."), 9, "*ELEMENT",
      "the direction of the orientation PLY that gives axis 1 is the normal of element 1: it has no projection "
      "on it. The second line of the *ORIENTATION names the direction that is nearest to the normal");
  // Two degrees from the normal it has one.
  expect_notes(
      oriented("*ORIENTATION, NAME=PLY\n0.035, 0., 1., 0., 1., 0.\n3, 0."),
      {"plate.inp:9: *ELEMENT: the direction that gives axis 1 lies within 10 degrees of the normal of 2 "
       "elements, element 1 the first: the second line of the *ORIENTATION names the direction that is nearest "
       "to the normal"});
}

TEST(deck_orientation, an_element_on_the_axis) {
  // The axis through the middle of the second triangle, (1/3, 2/3).
  expect_error(
      oriented("*ORIENTATION, NAME=PLY, SYSTEM=CYLINDRICAL\n0.3333333333333333, 0.6666666666666667, -1., "
               "0.3333333333333333, 0.6666666666666667, 1.\n3, 0."),
      10, "*ELEMENT",
      "the middle of element 2 lies on the axis of the orientation PLY, where no direction leads away from it: "
      "give the element a section of its own");
}
