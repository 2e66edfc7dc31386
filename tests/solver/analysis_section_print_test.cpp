// analysis_section_print_test.cpp: forces through a surface against the equilibrium of the part beyond it, by hand, on
// meshes whose elements beside the cut are irregular.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <sstream>

#include "deck_builder.h"
#include "options.h"
#include "run.h"

using namespace deck_test;

namespace {

using numbers = std::vector<double>;

std::string printed(const std::string& deck) {
  const scratch_folder scratch;
  solver::options wanted;
  wanted.deck = scratch.write("cut.inp", deck);
  wanted.output = scratch.path("out.vtu");
  wanted.quiet = true;
  solver::run(wanted);
  std::ostringstream text;
  text << std::ifstream(scratch.path("out.dat")).rdbuf();
  return text.str();
}

// The numbers behind a heading, `count` of them; `from`: where the search begins.
numbers behind(const std::string& text, const std::string& heading, int count, std::size_t from = 0) {
  const std::size_t at = text.find(heading, from);
  if (at == std::string::npos) return {};
  std::istringstream rest(text.substr(text.find('\n', at)));
  numbers all(static_cast<std::size_t>(count));
  for (double& each : all) rest >> each;
  return all;
}

numbers forces(const std::string& text, const std::string& name) {
  const std::size_t at = text.find("statistics for surface set " + name + " ");
  return at == std::string::npos ? numbers{} : behind(text, "total surface force", 6, at);
}

// To the seven digits of the file, by the largest.
void expect_near(const numbers& found, const numbers& expected) {
  ASSERT_EQ(found.size(), expected.size());
  double size = 0;
  for (const double each : expected) size = std::fmax(size, std::fabs(each));
  for (std::size_t i = 0; i < found.size(); ++i) EXPECT_NEAR(found[i], expected[i], 2e-6 * size) << i;
}

// A bar 4 x 1 x 1 along x in 4 x 2 x 2 cells. Nodes leave their places, those with x = 2 within this plane.
struct bar {
  bool tetrahedra = false;
  std::string poisson = "0.3";

  static int node(int i, int j, int k) { return 1 + (i * 3 + j) * 3 + k; }
  static std::array<double, 3> place(int i, int j, int k) {
    const double off = j == 1 || k == 1 ? 0.11 * std::sin(3. * i + 5. * j + 7. * k) : 0;
    return {i == 1 || i == 3 ? i + off : i, j == 1 ? 0.5 + off : j / 2., k == 1 ? 0.5 - off : k / 2.};
  }
  static int plane_of(int node) { return (node - 1) / 9; }

  // Elements of the cells, with those faces that have x = 2 and lie on the left or the right.
  std::string mesh() const {
    std::ostringstream nodes, elements, left, right;
    for (int i = 0; i <= 4; ++i) {
      for (int j = 0; j <= 2; ++j) {
        for (int k = 0; k <= 2; ++k) {
          const std::array<double, 3> x = place(i, j, k);
          nodes << node(i, j, k) << ", " << x[0] << ", " << x[1] << ", " << x[2] << "\n";
        }
      }
    }
    int id = 0;
    for (int i = 0; i < 4; ++i) {
      for (int j = 0; j < 2; ++j) {
        for (int k = 0; k < 2; ++k) add_cell(i, j, k, id, elements, left, right);
      }
    }
    return "*NODE, NSET=ALL\n" + nodes.str() + "*ELEMENT, ELSET=BAR, TYPE=" + (tetrahedra ? "C3D4\n" : "C3D8\n") +
           elements.str() + "*SURFACE, NAME=LEFT\n" + left.str() + "*SURFACE, NAME=RIGHT\n" + right.str() +
           "*NSET, NSET=ROOT, GENERATE\n1, 9\n*NSET, NSET=TIP, GENERATE\n37, 45\n";
  }

  void add_cell(int i, int j, int k, int& id, std::ostream& elements, std::ostream& left, std::ostream& right) const {
    const int n[8] = {node(i, j, k),     node(i + 1, j, k),     node(i + 1, j + 1, k),     node(i, j + 1, k),
                      node(i, j, k + 1), node(i + 1, j, k + 1), node(i + 1, j + 1, k + 1), node(i, j + 1, k + 1)};
    if (!tetrahedra) {
      elements << ++id;
      for (const int each : n) elements << ", " << each;
      elements << "\n";
      if (i == 1) left << id << ", S4\n";
      if (i == 2) right << id << ", S6\n";
      return;
    }
    // Six round the diagonal from corner 1 to corner 7.
    constexpr int SIX[6][4] = {{0, 1, 2, 6}, {0, 2, 3, 6}, {0, 3, 7, 6}, {0, 7, 4, 6}, {0, 4, 5, 6}, {0, 5, 1, 6}};
    constexpr int FACES[4][3] = {{0, 1, 2}, {0, 1, 3}, {1, 2, 3}, {0, 2, 3}};
    for (const auto& corners : SIX) {
      elements << ++id;
      for (const int c : corners) elements << ", " << n[c];
      elements << "\n";
      for (int f = 0; f < 4; ++f) {
        int in_plane = 0;
        for (const int c : FACES[f]) in_plane += plane_of(n[corners[c]]) == 2 ? 1 : 0;
        if (in_plane == 3) (i == 1 ? left : right) << id << ", S" << f + 1 << "\n";
      }
    }
  }

  std::string deck(const std::string& steps) const {
    return mesh() + "*MATERIAL, NAME=M\n*ELASTIC\n1000., " + poisson +
           "\n*DENSITY\n3.\n*SOLID SECTION, ELSET=BAR, MATERIAL=M\n*BOUNDARY\nROOT, 1, 3\n" + steps;
  }
};

std::string static_step(const std::string& cards, const std::string& flags = "") {
  return "*STEP" + flags + "\n*STATIC\n" + cards + "*SECTION PRINT, NAME=A, SURFACE=LEFT\nSOF, SOM, SOAREA\n" +
         "*SECTION PRINT, NAME=B, SURFACE=RIGHT\nSOF\n*END STEP\n";
}

// A strip 4 x 1 in the plane z = 0, 4 x 2 shells; the edges in the middle belong to the left half.
std::string strip(const std::string& type, const std::string& steps) {
  std::ostringstream text;
  text << "*NODE\n";
  for (int i = 0; i <= 4; ++i) {
    for (int j = 0; j <= 2; ++j) {
      text << 1 + 3 * i + j << ", " << (j == 1 && i % 2 == 1 ? i + 0.15 : i) << ", " << j * 0.5 << ", 0.\n";
    }
  }
  text << "*ELEMENT, ELSET=STRIP, TYPE=" << type << "\n";
  for (int i = 0; i < 4; ++i) {
    for (int j = 0; j < 2; ++j) {
      const int n = 1 + 3 * i + j;
      text << 1 + 2 * i + j << ", " << n << ", " << n + 3 << ", " << n + 4 << ", " << n + 1 << "\n";
    }
  }
  text << "*SURFACE, NAME=CUT\n3, E2\n4, E2\n*SURFACE, NAME=HALF\n3, E2\n*NSET, NSET=TIP\n13, 14, 15\n"
       << "*MATERIAL, NAME=M\n*ELASTIC\n1000., 0.3\n*DENSITY\n3.\n"
       << (type == "S4" ? "*SHELL SECTION" : "*MEMBRANE SECTION") << ", ELSET=STRIP, MATERIAL=M\n0.2\n"
       << "*BOUNDARY\n1, 1, " << (type == "S4" ? 6 : 3) << "\n2, 1, " << (type == "S4" ? 6 : 3) << "\n3, 1, "
       << (type == "S4" ? 6 : 3) << "\n"
       << steps;
  return text.str();
}

const std::string OF_CUT = "*SECTION PRINT, NAME=C, SURFACE=CUT\nSOF\n";

}  // namespace

// The load F = 2.7 against z at the corner (4, 1, 1): F and its moment about the origin, r x F.
TEST(section_print, a_cantilever_of_solids) {
  for (const bool tetrahedra : {false, true}) {
    const std::string text = printed(bar{tetrahedra}.deck(static_step("*CLOAD\n45, 3, -2.7\n45, 1, 1.\n")));
    const numbers expected = {1, 0, -2.7, -2.7, 1 + 4 * 2.7, -1};
    expect_near(forces(text, "LEFT"), expected);
    numbers opposite = expected;
    for (double& each : opposite) each = -each;
    expect_near(forces(text, "RIGHT"), opposite);
    expect_near(behind(text, "center of gravity and mean normal", 6), {2, 0.5, 0.5, 1, 0, 0});
    expect_near(behind(text, "area, normal force", 3), {1, 1, 2.7});
    expect_near(behind(text, "moment about the center of gravity", 3), {-1.35, 0.5 + 2 * 2.7, -0.5});
  }
}

// Half of the body hangs on the cut: density 3, 2 of volume, acceleration 10, its centre at (3, 1/2, 1/2).
TEST(section_print, the_weight_of_the_part_beyond) {
  for (const bool tetrahedra : {false, true}) {
    const std::string text = printed(bar{tetrahedra}.deck(static_step("*DLOAD\nBAR, GRAV, 10., 0., 0., -1.\n")));
    expect_near(forces(text, "LEFT"), {0, 0, -60, -30, 180, 0});
  }
}

// Pressure 5 on the free sides y = 0 of the bricks from x = 2 on: 2 of area, its middle at (3, 0, 1/2).
TEST(section_print, pressure_on_faces_beside_the_cut) {
  std::string loads;
  for (const int e : {1, 2, 5, 6, 9, 10, 13, 14}) loads += std::to_string(e) + ", P3, 5.\n";
  expect_near(forces(printed(bar{}.deck(static_step("*DLOAD\n" + loads))), "LEFT"), {0, 10, 0, -5, 0, 30});
}

// E A d / L with E = 1000, A = 1, d = 0.02, L = 4; Poisson's ratio 0, so that the held root does not matter.
TEST(section_print, a_bar_that_is_pulled_by_a_prescribed_displacement) {
  bar b;
  b.poisson = "0.";
  const std::string text = printed(b.deck(static_step("*BOUNDARY\nTIP, 1, 1, 0.02\n")));
  expect_near(forces(text, "LEFT"), {5, 0, 0, 0, 2.5, -2.5});
  expect_near(behind(text, "area, normal force", 2), {1, 5});
}

// Heated between two rigid ends: - E A alpha T.
TEST(section_print, a_heated_bar_between_rigid_ends) {
  bar b;
  b.poisson = "0.";
  std::string deck = b.deck(static_step("*BOUNDARY\nTIP, 1, 1\n*TEMPERATURE\nALL, 50.\n"));
  deck.replace(deck.find("*DENSITY"), 8, "*EXPANSION\n1.E-4\n*DENSITY");
  expect_near(behind(printed(deck), "area, normal force", 2), {1, -5});
}

// A load on the surface itself comes through it: pressure 5 on the face x = 4 of area 1.
TEST(section_print, a_loaded_face_at_the_end) {
  const std::string end =
      "*SURFACE, NAME=END\nLAST, S4\n*STEP\n*STATIC\n*DSLOAD\nEND, P, 5.\n*SECTION PRINT, "
      "NAME=E, SURFACE=END\nSOF\n*END STEP\n";
  expect_near(forces(printed(bar{}.deck("*ELSET, ELSET=LAST\n13, 14, 15, 16\n" + end)), "END"),
              {-5, 0, 0, 0, -2.5, 2.5});
}

// Shells: the force at the tip, pressure 2 on the half beyond (area 2), its own moments among the nodal ones.
TEST(section_print, the_edge_of_a_strip_of_shells) {
  const std::string text = printed(
      strip("S4", "*STEP\n*STATIC\n*CLOAD\n13, 3, 4.\n15, 1, 2.\n*DLOAD\nSTRIP, P, 2.\n" + OF_CUT + "*END STEP\n"));
  // (4, 0, 0) x (0, 0, 4) + (4, 1, 0) x (2, 0, 0) + (3, 1/2, 0) x (0, 0, 4)
  expect_near(forces(text, "CUT"), {2, 0, 8, 2, -16 - 12, -2});
  expect_near(behind(text, "center of gravity and mean normal", 6), {2, 0.5, 0, 1, 0, 0});
  expect_near(behind(text, "area, normal force", 3), {0.2, 2, 8});
}

TEST(section_print, the_edge_of_membranes) {
  const std::string held = "*BOUNDARY\n4, 3\n5, 3\n6, 3\n7, 3\n8, 3\n9, 3\n10, 3\n11, 3\n12, 3\n13, 3\n14, 3\n15, 3\n";
  const std::string text =
      printed(strip("M3D4", held + "*STEP\n*STATIC\n*CLOAD\n13, 2, 4.\n15, 1, 2.\n" + OF_CUT + "*END STEP\n"));
  expect_near(forces(text, "CUT"), {2, 4, 0, 0, 0, 16 - 2});
}

// With P-delta forces are in equilibrium in the displaced place: sum of (x + u) x F over the loads beyond. The
// geometric stiffness of a shell has the mean of its membrane forces, so that this holds nearly.
TEST(section_print, p_delta_at_the_displaced_place) {
  const std::string text =
      printed(strip("S4", "*STEP, PDELTA\n*STATIC\n*CLOAD\n13, 1, -0.01\n14, 1, -0.02\n15, 1, -0.01\n14, 3, 0.01\n" +
                              OF_CUT + "*NODE PRINT, NSET=TIP\nUT\n*END STEP\n"));
  const numbers u = behind(text, "displacements (vx,vy,vz)", 12);  // number, three displacements, three times
  const double at_first_places = -0.04, displaced = -(4 + u[5]) * 0.01 - 0.01 * (u[3] + 2 * u[7] + u[11]);
  EXPECT_GT(std::fabs(displaced - at_first_places), 0.002);  // or the test would say nothing
  const numbers found = forces(text, "CUT");
  expect_near({found[0], found[2]}, {-0.04, 0.01});
  EXPECT_NEAR(found[4], displaced, 1e-3 * std::fabs(displaced));
}

TEST(section_print, a_step_with_perturbation) {
  const std::string text = printed(bar{}.deck("*STEP\n*STATIC\n*CLOAD\nTIP, 1, 1.\n*END STEP\n" +
                                              static_step("*CLOAD\n45, 3, -2.7\n", ", PERTURBATION")));
  const numbers found = forces(text, "LEFT");
  expect_near({found.begin(), found.begin() + 3}, {0, 0, -2.7});
}

TEST(section_print, a_surface_that_ends_inside_the_body_is_noted) {
  const std::string deck =
      strip("S4", "*STEP\n*STATIC\n*CLOAD\n13, 3, 4.\n*SECTION PRINT, SURFACE=HALF\nSOF\n*END STEP\n");
  const auto line =
      1 + std::count(deck.begin(), deck.begin() + static_cast<std::ptrdiff_t>(deck.find("*SECTION")), '\n');
  expect_notes(deck, {"plate.inp:" + std::to_string(line) +
                      ": *SECTION PRINT: the surface 'HALF' ends inside the body, at node 8: at such nodes only the "
                      "forces of its own elements count, which depends on the mesh"});
}

TEST(section_print, steps_that_yield_have_none) {
  std::string deck = strip("S4", "*STEP\n*STATIC\n*CLOAD\n13, 3, 4.\n" + OF_CUT + "*END STEP\n");
  deck.replace(deck.find("*DENSITY\n3."), 11, "*PLASTIC\n500., 0.");
  const auto line =
      1 + std::count(deck.begin(), deck.begin() + static_cast<std::ptrdiff_t>(deck.find("*SECTION PR")), '\n');
  expect_notes(deck, {"plate.inp:" + std::to_string(line) +
                      ": *SECTION PRINT: forces through a surface are not printed in step 1, in which something may "
                      "yield; *STATIC, ELASTIC has them"});
  deck.replace(deck.find("*STATIC"), 7, "*STATIC, ELASTIC");
  expect_notes(deck, {"plate.inp:44: *STATIC: ELASTIC: nothing yields in this step, whatever its stresses"});
}
