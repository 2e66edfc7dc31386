// deck_frames_test.cpp: the cards of frame elements: what they mean, and every way in which they can be wrong.
#include <gtest/gtest.h>

#include "deck_builder.h"

using namespace deck_test;

namespace {

std::string with(int n, const std::string& line) {
  std::vector<std::string> lines = GOOD_FRAME;
  lines.at(static_cast<std::size_t>(n - 1)) = line;
  return text_of(lines);
}

}  // namespace

TEST(deck_frames, a_frame_is_read) {
  const solver::model m = read(text_of(GOOD_FRAME));
  ASSERT_EQ(m.frame_sections.size(), 4U);
  const solver::frame_section& beam = m.frame_sections[0];
  EXPECT_EQ(beam.kind, solver::frame_section_kind::BEAM);
  EXPECT_EQ(beam.area, 0.01);
  EXPECT_EQ(beam.inertia_xz, 2e-5);  // about axis 1: in the plane of the member and axis 2
  EXPECT_EQ(beam.inertia_xy, 1e-5);
  EXPECT_EQ(beam.torsion, 3e-6);
  EXPECT_EQ(beam.n1, (std::array<double, 3>{0, 0, 1}));
  EXPECT_EQ(beam.shear_stiffness_z, 5e8);
  EXPECT_EQ(beam.shear_stiffness_y, 6e8);
  EXPECT_EQ(m.frame_sections[1].kind, solver::frame_section_kind::TRUSS);
  EXPECT_EQ(m.frame_sections[2].stiffness, (std::array<double, 6>{0, 1e6, 0, 0, 0, 0}));
  EXPECT_EQ(m.frame_sections[3].stiffness, (std::array<double, 6>{1, 2, 3, 4, 5, 6}));
  const solver::member_ends& first = m.ends[static_cast<std::size_t>(m.elements[0].ends)];
  EXPECT_EQ(first.fixity[0], (std::array<double, 2>{1, 1}));
  EXPECT_EQ(first.fixity[1], (std::array<double, 2>{0, 1}));
  EXPECT_EQ(first.released, (std::array<int, 4>{0, 0, 0, 2}));
  const solver::member_ends& second = m.ends[static_cast<std::size_t>(m.elements[1].ends)];
  EXPECT_EQ(second.fixity[0], (std::array<double, 2>{0.25, 0.5}));
  EXPECT_EQ(m.elements[3].nodes.size(), 1U);
  const solver::element_load& load = m.steps[0].element_loads[0];
  EXPECT_EQ(load.kind, solver::element_load_kind::LINE_LOCAL);
  EXPECT_EQ(load.direction, (std::array<double, 3>{0, 0, 1}));
}

TEST(deck_frames, cables) {
  const solver::model m = read(with(24, "*CABLE SECTION, ELSET=BARS, MATERIAL=STEEL, LENGTH RATIO=1.01"));
  EXPECT_TRUE(is_cable(m, m.elements[2]));
  EXPECT_EQ(m.frame_sections[1].length_ratio, 1.01);
  std::string text = with(24, "*CABLE SECTION, ELSET=BARS, MATERIAL=STEEL");
  text.replace(text.find("0.002"), 5, "0.002, 3.7");
  EXPECT_EQ(read(text).frame_sections[1].unstressed_length, 3.7);
  expect_error(with(24, "*CABLE SECTION, ELSET=BARS, MATERIAL=STEEL, LENGTH RATIO=0"), 24, "*CABLE SECTION",
               "LENGTH RATIO: '0' is not positive");
}

TEST(deck_frames, elements) {
  expect_error(with(6, "1, 1, 2, 3"), 6, "*ELEMENT", "too many fields (4): number, node 1, node 2");
  expect_error(with(11, "4, 3, 1"), 11, "*ELEMENT", "too many fields (3): number, node");
  expect_error(with(4, "3, 2., 0., 0."), 7, "*ELEMENT", "element 2 has no length: its nodes coincide");
}

TEST(deck_frames, beam_sections) {
  expect_error(with(20, "0.01, 2.E-5, 1.5E-5, 1.E-5, 3.E-6"), 20, "*BEAM GENERAL SECTION",
               "I12 is too large: I11 I22 must be above I12 I12");
  expect_error(with(20, "0.01, 2.E-5, 0., 1.E-5"), 20, "*BEAM GENERAL SECTION",
               "too few fields (4): area, I11, I12, I22, J");
  expect_error(with(20, "0., 2.E-5, 0., 1.E-5, 3.E-6"), 20, "*BEAM GENERAL SECTION", "area: '0.' is not positive");
  expect_error(with(21, "0., 0., 0."), 21, "*BEAM GENERAL SECTION", "the direction n1 is zero");
  expect_error(with(21, "0., 0., 1.\n2.1E11, 8.E10"), 22, "*BEAM GENERAL SECTION",
               "a data line too many: the constants stand in the *MATERIAL");
  expect_error(with(19, "*BEAM SECTION, ELSET=BEAMS, MATERIAL=STEEL, SECTION=TRAPEZOID"), 19, "*BEAM SECTION",
               "SECTION=TRAPEZOID is not supported; RECT, CIRC, PIPE, BOX, I, L, T, HEX, ARBITRARY and GENERAL are");
  EXPECT_EQ(read(with(19, "*BEAM SECTION, ELSET=BEAMS, MATERIAL=STEEL, SECTION=GENERAL")).frame_sections[0].area, 0.01);
  expect_error(with(19, "*BEAM GENERAL SECTION, ELSET=BARS, MATERIAL=STEEL"), 19, "*BEAM GENERAL SECTION",
               "element 3 of line 9 is a bar (T3D2): it takes a *SOLID SECTION or *CABLE SECTION, with the area on its "
               "data line");
  expect_error(with(16, "2.1E11, 0.3\n*COLOUR"), 17, "*COLOUR", "this solver does not know the keyword");
  expect_error(with(23, "0., 6.E8"), 23, "*TRANSVERSE SHEAR STIFFNESS", "K23: '0.' is not positive");
  expect_error(with(24, "*TRANSVERSE SHEAR STIFFNESS"), 24, "*TRANSVERSE SHEAR STIFFNESS",
               "the section has one already");
  expect_error(with(28, "1.E6\n*TRANSVERSE SHEAR STIFFNESS\n1., 2."), 29, "*TRANSVERSE SHEAR STIFFNESS",
               "belongs below a *BEAM GENERAL SECTION or *BEAM SECTION");
}

TEST(deck_frames, orthotropic_material) {
  std::string text = with(16, "1.E10, 1.E9, 0.3, 1.E9, 1.E9, 1.E9");
  text.replace(text.find("*ELASTIC"), 8, "*ELASTIC, TYPE=LAMINA");
  expect_error(text, 19, "*BEAM GENERAL SECTION",
               "the material 'STEEL' is not isotropic: members take Young's modulus and Poisson's ratio (*ELASTIC "
               "without TYPE), or constants that are those of an isotropic material",
               false);
}

TEST(deck_frames, element_without_a_section) {
  std::vector<std::string> lines = GOOD_FRAME;
  lines.erase(lines.begin() + 23, lines.begin() + 25);
  expect_error(
      text_of(lines), 9, "*ELEMENT",
      "element 3 has no section: it is a bar (T3D2): it takes a *SOLID SECTION or *CABLE SECTION, with the area on its "
      "data line");
}

TEST(deck_frames, springs_and_links) {
  expect_error(with(27, "7"), 27, "*SPRING", "the degree of freedom 7 is not one of 1 to 6");
  expect_error(with(28, "0."), 28, "*SPRING", "stiffness: '0.' is not positive");
  expect_error(with(28, "1.E6\n2.E6"), 26, "*SPRING", "two data lines belong here: degrees of freedom, then stiffness");
  expect_error(with(26, "*SPRING, ELSET=LINKS"), 26, "*SPRING",
               "element 5 of line 13 is a link (CONN3D2): it takes a *LINK SECTION");
  expect_error(with(29, "*LINK SECTION, ELSET=LINKS, FORM=ENDS"), 29, "*LINK SECTION",
               "FORM=ENDS is not supported; NODES and MIDDLE are");
  expect_error(with(30, "1., 2., -3., 4., 5., 6."), 30, "*LINK SECTION", "stiffness: '-3.' is negative");
  std::string text = with(10, "*ELEMENT, TYPE=SPRING2, ELSET=GROUND");
  text.replace(text.find("4, 3\n"), 4, "4, 3, 1");
  text.replace(text.find("\n2\n") + 1, 1, "2, 3");
  expect_error(text, 27, "*SPRING",
               "two different degrees of freedom are not supported: the spring acts in one direction");
}

TEST(deck_frames, ends) {
  expect_error(with(32, "3, S2, M1"), 32, "*RELEASE", "element 3 is not a beam (B31, B33)");
  expect_error(with(32, "1, S3, M1"), 32, "*RELEASE", "the end 'S3' is neither S1 nor S2");
  expect_error(with(32, "1, S2, M3"), 32, "*RELEASE",
               "the release 'M3' is not supported; M1, M2, T, M1-M2, M1-T, M2-T, ALLM, N, V1 and V2 are");
  expect_error(with(32, "1, S1, N\n1, S2, N"), 33, "*RELEASE", "the force is released at the other end already");
  expect_error(with(34, "2, S1, 0.25, 1.5"), 34, "*FIXITY", "the fixity factor '1.5' is not from 0 to 1");
  EXPECT_EQ(read(with(32, "1, S1, ALLM\n1, S2, ALLM")).ends[0].released[3], 1);
}

TEST(deck_frames, loads) {
  expect_error(with(40, "BEAMS, P, 4."), 40, "*DLOAD", "'P' on element 1: a pressure acts on plates");
  expect_error(with(40, "GROUND, PX, 4."), 40, "*DLOAD",
               "'PX' on element 4: a load per length acts on beams, trusses and cables");
  expect_error(with(40, "BARS, P1, 4."), 40, "*DLOAD", "'P1' on element 3: only beams have the axes 1 and 2");
  expect_error(with(40, "LINKS, GRAV, 9.81, 0., 0., -1."), 40, "*DLOAD",
               "GRAV on element 5: springs and links have no mass");
  expect_error(with(40, "BEAMS, PX, 4., 1."), 40, "*DLOAD",
               "too many fields (4): element or set, PX, PY, PZ, P1 or P2, force per length");
}

TEST(deck_frames, procedures) {
  const solver::model m = read(with(38, "*BUCKLE\n3"));
  EXPECT_EQ(m.steps[0].kind, solver::step_kind::BUCKLE);
  EXPECT_EQ(m.steps[0].modes, 3);
  EXPECT_TRUE(read(with(37, "*STEP, PDELTA")).steps[0].p_delta);
  expect_error(with(38, "*FREQUENCY\n3"), 41, "*DLOAD", "a load has no effect in a step with *FREQUENCY");
  expect_error(with(38, "*FREQUENCY\n0"), 39, "*FREQUENCY", "number of frequencies: '0' is not a number from 1");
  expect_error(with(38, "*FREQUENCY"), 38, "*FREQUENCY", "no data line follows");
  expect_error(with(38, "*STATIC\n*BUCKLE\n1"), 39, "*BUCKLE", "the step has a *STATIC already");
  std::string text = with(38, "*BUCKLE\n3");
  text.replace(text.find("*STEP"), 5, "*STEP, PDELTA");
  expect_error(text, 38, "*BUCKLE", "PDELTA belongs to a step with *STATIC");
}
