// deck_aliases_test.cpp: element types of other programs, what they are read as, and what those are told that are not
// read.
#include <gtest/gtest.h>

#include "deck_builder.h"
#include "run_support.h"

using namespace deck_test;

namespace {

// A square of one element of plane stress, or of any other type of four nodes.
std::string square(const std::string& type, const std::string& section = "0.5",
                   const std::string& fourth = "4, 0., 1.") {
  return "*NODE\n1, 0., 0.\n2, 1., 0.\n3, 1., 1.\n" + fourth + "\n*ELEMENT, TYPE=" + type +
         ", ELSET=E\n1, 1, 2, 3, 4\n*MATERIAL, NAME=M\n*ELASTIC\n100., 0.25\n*SOLID SECTION, ELSET=E, MATERIAL=M\n" +
         section + "\n*BOUNDARY\n1, 1, 2\n4, 1\n*STEP\n*STATIC\n*CLOAD\n2, 1, 1.\n3, 1, 1.\n*END STEP\n";
}

}  // namespace

TEST(deck_aliases, shells_are_read_with_a_note) {
  const std::string text = replaced(8, "*ELEMENT, TYPE=S3R, ELSET=SKIN");
  EXPECT_EQ(read(text).elements[0].type, solver::element_type::S3);
  expect_notes(text, {"plate.inp:8: *ELEMENT: S3R is read as S3: integrated in full, with transverse shear"});
}

TEST(deck_aliases, a_note_stands_once_with_its_count) {
  const std::string text = replaced(10, "*ELEMENT, TYPE=S3R, ELSET=SKIN\n2, 1, 3, 4");
  std::string both = text;
  both.replace(both.find("TYPE=S3,"), 8, "TYPE=S3R,");
  expect_notes(both,
               {"plate.inp:8: *ELEMENT: S3R is read as S3: integrated in full, with transverse shear (2 times; this "
                "is the first)"});
}

TEST(deck_aliases, thin_triangles_keep_their_formulation_beside_thick_ones) {
  const solver::model m = read(replaced(10, "*ELEMENT, TYPE=STRI3, ELSET=SKIN\n2, 1, 3, 4"));
  EXPECT_EQ(m.shell_sections[m.elements[0].section].formulation, solver::shell_formulation::THICK);
  EXPECT_EQ(m.shell_sections[m.elements[1].section].formulation, solver::shell_formulation::THIN);
  EXPECT_EQ(m.shell_sections[m.elements[1].section].thickness, 0.01);
}

TEST(deck_aliases, plane_stress_is_a_membrane_held_in_its_plane) {
  const solver::model m = read(square("CPS4R"));
  EXPECT_EQ(m.elements[0].type, solver::element_type::M3D4);
  EXPECT_EQ(m.shell_sections[0].thickness, 0.5);
  int held = 0;
  for (const solver::boundary_condition& c : m.boundaries) held += c.first_dof == 3 && c.last_dof == 5 ? 1 : 0;
  EXPECT_EQ(held, 4);
  EXPECT_EQ(read(square("CPS4", ",")).shell_sections[0].thickness, 1);
}

// sigma = 2 / (0.5 1) = 4: u = sigma / E = 0.04 along x, v = -nu sigma / E = -0.01.
TEST(deck_aliases, plane_stress_in_tension) {
  for (const char* const type : {"CPS4", "CPS4R", "CPS4I"}) {
    const run_test::ran answer = run_test::run(square(type));
    EXPECT_NEAR(answer.u(1, 3, 'x'), 0.04, 1e-14);
    EXPECT_NEAR(answer.u(1, 3, 'y'), -0.01, 1e-14);
    EXPECT_EQ(answer.u(1, 3, 'z'), 0);
  }
}

// A square frame member of a plane: P L^3 / (3 E I), 24 / (3 100 1/12), with axis 1 along -z; and a bar F L / (E A).
TEST(deck_aliases, members_of_a_plane) {
  const auto member = [](const std::string& type, const std::string& section, const std::string& held) {
    return "*NODE\n1,\n2, 2.\n*ELEMENT, TYPE=" + type +
           ", ELSET=E\n1, 1, 2\n*MATERIAL, NAME=M\n*ELASTIC\n100., 0.25\n" + section + "\n*BOUNDARY\n" + held +
           "\n*STEP\n*STATIC\n*CLOAD\n2, 1, 5.\n2, 2, " + (type == "B23" ? "3." : "0.") + "\n*END STEP\n";
  };
  const run_test::ran beam =
      run_test::run(member("B23", "*BEAM SECTION, ELSET=E, MATERIAL=M, SECTION=RECT\n1., 1.", "1, 1, 2\n1, 6"));
  EXPECT_NEAR(beam.u(1, 2, 'y'), 0.96, 1e-12);
  const run_test::ran bar = run_test::run(member("T2D2", "*SOLID SECTION, ELSET=E, MATERIAL=M\n0.5", "1, 1, 2\n2, 2"));
  EXPECT_NEAR(bar.u(1, 2, 'x'), 0.2, 1e-14);
}

TEST(deck_aliases, elements_of_a_plane_lie_in_it) {
  expect_error(square("CPS4", "0.5", "4, 0., 1., 0.25"), 7, "*ELEMENT",
               "element 1 belongs to a plane z = constant, and node 4 has another z than element 1: membranes (M3D3, "
               "M3D4), trusses (T3D2) and beams (B31) lie anywhere");
  EXPECT_EQ(read("*NODE, NSET=N\n9, 0., 5., 0.\n" + square("CPS4")).elements.size(), 1u);
}

TEST(deck_aliases, plane_stress_takes_a_solid_section) {
  std::string text = square("CPS4");
  text.replace(text.find("*SOLID SECTION"), 14, "*MEMBRANE SECTION");
  expect_error(text, 11, "*MEMBRANE SECTION", "element 1 is one of plane stress: it takes a *SOLID SECTION");
  expect_error(square("CPS4", "-1."), 12, "*SOLID SECTION", "thickness: '-1.' is not positive");
}

TEST(deck_aliases, types_that_are_refused_say_why) {
  expect_error(square("CPE4"), 6, "*ELEMENT",
               "the element type 'CPE4' is not supported: plane strain is not supported: CPS3 or CPS4 with E / (1 - "
               "nu^2), nu / (1 - nu) and the expansion alpha (1 + nu) have the same answer in the plane");
  for (const char* const type : {"CAX4R", "DC2D4", "COH3D8", "GAPUNI", "B31OS"}) {
    try {
      read(square(type));
      ADD_FAILURE() << type;
    } catch (const std::exception& error) {
      EXPECT_NE(std::string(error.what()).find(std::string("'") + type + "' is not supported: "), std::string::npos)
          << error.what();
    }
  }
}

// Plane strain with the moduli of the message: E' = E / (1 - nu^2), nu' = nu / (1 - nu). In tension across a strip
// without strain in z: eps_x = (1 - nu^2) sigma / E, eps_y = -nu (1 + nu) sigma / E.
TEST(deck_aliases, the_moduli_of_plane_strain) {
  std::string text = square("CPS4", "1.");
  const double nu = 0.25, E = 100;
  text.replace(text.find("100., 0.25"), 10, std::to_string(E / (1 - nu * nu)) + ", " + std::to_string(nu / (1 - nu)));
  const run_test::ran answer = run_test::run(text);
  EXPECT_NEAR(answer.u(1, 3, 'x'), (1 - nu * nu) * 2 / E, 1e-8);
  EXPECT_NEAR(answer.u(1, 3, 'y'), -nu * (1 + nu) * 2 / E, 1e-8);
}
