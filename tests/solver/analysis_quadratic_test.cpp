// Quadratic shells, membranes and beams, read in parts: what must be exact is, and a mesh of S8 gives what the same
// mesh of S4 gives.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>

#include <pugixml.hpp>

#include "frame_decks.h"
#include "output/vtu_writer.h"
#include "quadratic_support.h"
#include "run_support.h"
#include "shell_decks.h"
#include "vtu_reading.h"

using namespace quadratic_test;
using frame_test::number;
using run_test::run;

namespace {

constexpr double E = 2e5, NU = 0.3, T = 0.01;

std::string section(const std::string& keyword, const std::string& more = "") {
  return "*MATERIAL, NAME=M\n*ELASTIC\n" + number(E) + ", " + number(NU) + "\n*DENSITY\n8E-3\n*EXPANSION\n1.2E-5\n*" +
         keyword + ", ELSET=BODY, MATERIAL=M" + more + "\n" + number(T) + "\n";
}

std::string prescribed(int id, int dof, double value) {
  const std::string d = std::to_string(dof);
  return std::to_string(id) + ", " + d + ", " + d + ", " + number(value) + "\n";
}

std::vector<double> listed(const std::array<double, 3>& v) { return {v.begin(), v.end()}; }

struct named_mesh {
  char shape;
  std::string type, keyword;
};
const std::vector<named_mesh> SHEETS = {{'Q', "S8R", "SHELL SECTION"},
                                        {'T', "STRI65", "SHELL SECTION"},
                                        {'Q', "M3D8", "MEMBRANE SECTION"},
                                        {'T', "M3D6", "MEMBRANE SECTION"}};

mesh plane_of(const named_mesh& kind) { return {kind.shape, kind.type, {3, 3, 0}, bumped_plane}; }

}  // namespace

// u = 1e-3 (x + y / 2), v = 1e-3 (y + x / 2): equal strains 1e-3 and the shear 1e-3, everywhere.
TEST(AnalysisQuadratic, ConstantMembraneStress) {
  const double normal = E / (1 - NU) * 1e-3, shear = E / (2 * (1 + NU)) * 1e-3;
  for (const named_mesh& kind : SHEETS) {
    const mesh mesh = plane_of(kind);
    std::string supports = kind.type[0] == 'S' ? "ALL, 3, 6\n" : "ALL, 3\n";
    for (const auto& [h, id] : mesh.nodes()) {
      const point x = mesh.at(h);
      if (mesh.inside(h)) continue;
      supports += prescribed(id, 1, 1e-3 * (x[0] + x[1] / 2)) + prescribed(id, 2, 1e-3 * (x[1] + x[0] / 2));
    }
    const solver::model m = read(deck(mesh, section(kind.keyword), supports, "*STATIC\n"));
    const solved s = solve(m);
    for (int n = 0; n < solver::count_of(m.nodes); ++n) {
      const point& x = m.nodes[n].xyz;
      EXPECT_WITHIN(s.u(n, 'x'), 1e-3 * (x[0] + x[1] / 2), 1e-3, 1e-9) << kind.type;
      EXPECT_WITHIN(s.u(n, 'y'), 1e-3 * (x[1] + x[0] / 2), 1e-3, 1e-9) << kind.type;
    }
    ASSERT_EQ(s.results.parts.size(), m.nodes.size());
    for (const solver::nodal_part& part : s.results.parts)
      EXPECT_WITHIN(listed(part.at[0].stress), (std::vector<double>{normal, normal, shear}), normal, 1e-9) << kind.type;
  }
}

// w = k (x^2 + x y + y^2) / 2: curvatures k, k and twist k, so that M11 = M22 = -D (1 + nu) k and M12 = -D (1 - nu) k /
// 2 up to the sign that the whole field shares.
TEST(AnalysisQuadratic, ConstantCurvature) {
  const double k = 1e-3, D = E * T * T * T / (12 * (1 - NU * NU));
  for (const named_mesh& kind : {SHEETS[0], SHEETS[1]}) {
    const mesh mesh = plane_of(kind);
    std::string supports = "ALL, 1, 2\nALL, 6\n";
    for (const auto& [h, id] : mesh.nodes()) {
      const point p = mesh.at(h);
      const double x = p[0], y = p[1];
      if (mesh.inside(h)) continue;
      supports += prescribed(id, 3, k * (x * x + x * y + y * y) / 2) + prescribed(id, 4, k * (x / 2 + y)) +
                  prescribed(id, 5, -k * (x + y / 2));
    }
    const solver::model m = read(deck(mesh, section("SHELL SECTION", ", FORMULATION=THIN"), supports, "*STATIC\n"));
    const solved s = solve(m);
    for (const solver::element_result& e : s.results.elements) {
      EXPECT_WITHIN(std::fabs(e.moment[0]), D * (1 + NU) * k, D * k, 1e-8) << kind.type;
      EXPECT_WITHIN(std::fabs(e.moment[1]), D * (1 + NU) * k, D * k, 1e-8) << kind.type;
      EXPECT_WITHIN(std::fabs(e.moment[2]), D * (1 - NU) / 2 * k, D * k, 1e-8) << kind.type;
    }
  }
}

// The nodes that are made in eight-node squares complete the grid of four-node squares half as large.
TEST(AnalysisQuadratic, PlateIsThatOfFourNodes) {
  const int n = 3;
  const mesh mesh('Q', "S8", {n, n, 0}, straight);
  shell_test::sheet sheet;
  sheet.n = 2 * n;
  sheet.formulation = "THICK";
  for (const std::string edge : {"ENCASTRE", "1, 3"}) {
    const std::string step = "*STATIC\n*DLOAD\nBODY, P, 0.01\nBODY, GRAV, 3., 0, 1, -1\n";
    std::string step4 = step;
    for (std::size_t at = step4.find("BODY"); at != std::string::npos; at = step4.find("BODY"))
      step4.replace(at, 4, "SKIN");
    const auto held = [&](const std::vector<std::string>& sets) {
      std::string text;
      for (const std::string& set : sets) text += set + ", " + edge + "\n";
      return text;
    };
    const std::string own = held({"X0", "X1", "Y0", "Y1"}), other = held({"LEFT", "RIGHT", "LOWER", "UPPER"});
    const solver::model m = read(deck(mesh, section("SHELL SECTION"), own, step));
    const solved s = solve(m), reference = solve(shell_test::read(sheet.deck(other, step4)));
    for (const auto& [h, id] : mesh.nodes()) {
      const int node = index_of(m, id), same = sheet.node(h[0], h[1]);
      const double largest = std::fabs(reference.u(sheet.node(n, n), 'z'));
      for (const char direction : {'x', 'y', 'z'})
        EXPECT_WITHIN(s.u(node, direction), reference.u(same, direction), largest, 1e-8) << edge << id;
      for (const char direction : {'X', 'Y'})
        EXPECT_WITHIN(s.u(node, direction), reference.u(same, direction), 10 * largest, 1e-8) << edge << id;
    }
    const std::vector<double> found =
        shell_test::modes(read(deck(mesh, section("SHELL SECTION"), own, "*FREQUENCY\n4\n")));
    const std::vector<double> expected = shell_test::modes(shell_test::read(sheet.deck(other, "*FREQUENCY\n4\n")));
    EXPECT_WITHIN(found, expected, expected[0], 1e-7) << edge;
  }
}

// In the middle of an element of a cylinder, whose edges along the axis are straight, the functions give -cos a of the
// corners and 1 + cos a of the middles: the radius itself.
TEST(AnalysisQuadratic, MadeNodesLieOnTheCylinder) {
  const double R = 5;
  const mesh mesh('Q', "S8R", {4, 2, 0}, [&](double u, double v, double) {
    return point{R * std::cos(u * std::acos(0.0)), R * std::sin(u * std::acos(0.0)), 3 * v};
  });
  const double p = 2.0;
  const std::string supports = "X0, YSYMM\nX1, XSYMM\nY0, ZSYMM\nY1, ZSYMM\n";
  const solver::model m = read(deck(mesh, section("SHELL SECTION"), supports, "*STATIC\n*DLOAD\nBODY, P, 2.\n"));
  EXPECT_EQ(m.made_nodes.size(), 8U);
  for (const solver::made_node& made : m.made_nodes) {
    const point& x = m.nodes[made.node].xyz;
    EXPECT_WITHIN(std::hypot(x[0], x[1]), R, R, 1e-14);
  }
  // Facets of angle a = 90 / 8 degrees, held along the axis: two pressures p l / 2 at a corner are in equilibrium with
  // forces N of the facets, 2 N sin(a / 2) = p l cos(a / 2), so that N = p R cos(a / 2).
  const solved s = solve(m);
  const double half = std::acos(0.0) / 16, u = (1 - NU * NU) * p * R * R * std::cos(half) / (E * T);
  for (const auto& [h, id] : mesh.nodes()) {
    const int n = index_of(m, id);
    const point& x = m.nodes[n].xyz;
    EXPECT_WITHIN((s.u(n, 'x') * x[0] + s.u(n, 'y') * x[1]) / R, u, u, 1e-8) << id;
  }
}

// A sheet that is warm everywhere grows and has no stress: also where the deck has no node to be warm.
TEST(AnalysisQuadratic, FreeExpansion) {
  for (const named_mesh& kind : SHEETS) {
    const mesh mesh = plane_of(kind);
    const std::string corner = std::to_string(mesh.id({0, 0, 0})), other = std::to_string(mesh.id({6, 0, 0}));
    const std::string supports = corner + ", 1, 3\n" + other + ", 2, 3\nALL, 3\n";
    const solver::model m = read(deck(mesh, section(kind.keyword), supports, "*STATIC\n*TEMPERATURE\nALL, 50.\n"));
    const solved s = solve(m);
    EXPECT_WITHIN(s.u(index_of(m, mesh.id({6, 6, 0})), 'y'), 50 * 1.2e-5, 50 * 1.2e-5, 1e-9) << kind.type;
    for (const solver::nodal_part& part : s.results.parts)
      EXPECT_WITHIN(listed(part.at[0].stress), (std::vector<double>{0, 0, 0}), E * 50 * 1.2e-5, 1e-9) << kind.type;
  }
}

namespace {

// A beam of three elements along a line of seven nodes.
std::string beam(const std::string& type, const std::string& cards, const std::string& supports,
                 const std::string& step) {
  std::string text = "*NODE, NSET=ALL\n";
  for (int i = 0; i <= 6; ++i) text += std::to_string(i + 1) + ", " + std::to_string(i) + ", 0, 0\n";
  text += "*ELEMENT, TYPE=" + type + ", ELSET=BODY\n";
  const int step_of = type[2] == '2' ? 2 : 1;
  for (int i = 1, e = 1; i < 7; i += step_of, ++e) {
    text += std::to_string(e);
    for (int k = 0; k <= step_of; ++k) text += ", " + std::to_string(i + k);
    text += "\n";
  }
  return text +
         "*MATERIAL, NAME=M\n*ELASTIC\n2E5, 0.3\n*DENSITY\n8E-3\n*BEAM SECTION, ELSET=BODY, MATERIAL=M, "
         "SECTION=RECT\n0.2, 0.3\n0, 0, -1\n" +
         cards + "*BOUNDARY\n" + supports + step;
}

std::string static_step(const std::string& loads) { return "*STEP\n*STATIC\n" + loads + "*END STEP\n"; }

}  // namespace

// Bending about axis 1 (n1 along -z, axis 2 along y): I = b h^3 / 12 with h = 0.3 across axis 2.
TEST(AnalysisQuadratic, BeamsAreTwoInARow) {
  const std::string loads = "*CLOAD\n7, 2, 3.\n*DLOAD\nBODY, PY, 0.5\n";
  const solver::model m = frame_test::read(beam("B32", "", "1, ENCASTRE\n", static_step(loads)));
  const solved s = solve(m), other = solve(frame_test::read(beam("B31", "", "1, ENCASTRE\n", static_step(loads))));
  EXPECT_EQ(m.elements.size(), 6U);
  const double EI = E * 0.2 * 0.027 / 12, G = E / 2.6, kappa = 10 * 1.3 / (12 + 11 * 0.3);
  const double bending = 3 * 216 / (3 * EI) + 0.5 * 1296 / (8 * EI);
  const double shear = (3 * 6 + 0.5 * 36 / 2) / (kappa * G * 0.06);
  EXPECT_WITHIN(s.u(6, 'y'), bending + shear, bending, 1e-9);
  for (int n = 0; n < 7; ++n)
    for (const char direction : {'x', 'y', 'z', 'X', 'Y', 'Z'})
      EXPECT_EQ(s.u(n, direction), other.u(n, direction)) << n << direction;
  const auto modes = [&](const char* type) {
    return shell_test::modes(frame_test::read(beam(type, "", "1, ENCASTRE\n", "*STEP\n*FREQUENCY\n3\n*END STEP\n")));
  };
  EXPECT_EQ(modes("B32R"), modes("B31"));
}

// Pins at both ends of the middle element: q l^2 / 8 between them, nothing at its ends. Tables count along the whole.
TEST(AnalysisQuadratic, TablesShowTheBeamOfTheDeck) {
  const std::string release = "*RELEASE\n2, S1, ALLM\n2, S2, M1-M2\n";
  const auto r = run(beam("B32", release, "1, ENCASTRE\n7, ENCASTRE\n", static_step("*DLOAD\n2, PY, -4.\n")));
  const run_test::table& members = r.members.front();
  ASSERT_EQ(members.rows.size(), 6U);
  const std::vector<double> most = members.column("Mz_max"), least = members.column("Mz_min");
  const std::vector<double> other = members.column("My_max"), other_least = members.column("My_min");
  const double largest = std::max({most[2], -least[2], other[2], -other_least[2]});
  EXPECT_WITHIN(largest, 4.0 * 4 / 8, 2.0, 1e-9);
  for (const char* name : {"moment_y", "moment_z"})
    for (const std::size_t row : {2U, 3U}) EXPECT_WITHIN(members.column(name)[row], 0.0, 2.0, 1e-9) << name;
  const std::vector<double> at_z = members.column("Mz_max_at"), at_y = members.column("My_max_at");
  const std::vector<double> at_z_least = members.column("Mz_min_at"), at_y_least = members.column("My_min_at");
  const double place = largest == most[2]     ? at_z[2]
                       : largest == -least[2] ? at_z_least[2]
                       : largest == other[2]  ? at_y[2]
                                              : at_y_least[2];
  EXPECT_WITHIN(place, 1.0, 1.0, 1e-6);
  EXPECT_EQ(r.steps.front().rows.size(), 7U);
}

// The made nodes have no row; the deck's have theirs.
TEST(AnalysisQuadratic, TablesShowTheNodesOfTheDeck) {
  const mesh mesh('Q', "S8R", {2, 1, 0}, straight);
  const auto r = run(deck(mesh, section("SHELL SECTION"), "X0, ENCASTRE\n", "*STATIC\n*DLOAD\nBODY, P, 1.\n"));
  const std::vector<double> numbers = r.steps.front().column("node");
  ASSERT_EQ(numbers.size(), mesh.nodes().size());
  for (std::size_t i = 0; i < numbers.size(); ++i) EXPECT_GT(numbers[i], 0.0);
  EXPECT_NE(r.text.find("2 of them made in quadratic elements"), std::string::npos) << r.text;
}

// The cells are the parts, with the number of the element; made nodes have none.
TEST(AnalysisQuadratic, CellsAreTheParts) {
  const mesh mesh('Q', "S8R", {2, 1, 0}, straight);
  const solver::model m =
      read(deck(mesh, section("SHELL SECTION"), "X0, ENCASTRE\n", "*STATIC\n*DLOAD\nBODY, P, 1.\n"));
  const solved s = solve(m);
  std::ostringstream out;
  solver::write_vtu(out, m, s.solution, s.results);
  pugi::xml_document file;
  ASSERT_TRUE(file.load_string(out.str().c_str()));
  const pugi::xml_node piece = file.child("VTKFile").child("UnstructuredGrid").child("Piece");
  const auto array = [&](const char* data, const char* name) {
    return vtu_test::numbers(piece.child(data).find_child_by_attribute("DataArray", "Name", name));
  };
  EXPECT_EQ(array("CellData", "element_id"), (std::vector<double>{1, 1, 1, 1, 2, 2, 2, 2}));
  EXPECT_EQ(array("CellData", "element_part"), (std::vector<double>{1, 2, 3, 4, 1, 2, 3, 4}));
  const std::vector<double> nodes = array("PointData", "node_id");
  EXPECT_EQ(std::count(nodes.begin(), nodes.end(), -1.0), 2);
  EXPECT_EQ(std::count(nodes.begin(), nodes.end(), 0.0), 0);
}

// A quarter circle: the node in the middle lies on it, and so do the ends of both halves. The vertical end force P at
// the free end makes the moment P R at the support.
TEST(AnalysisQuadratic, HalvesOfACurvedBeam) {
  const double R = 4, c = R * std::sqrt(0.5);
  const std::string text = "*NODE\n1, 0, 0, 0\n2, " + number(R - c) + ", " + number(c) + ", 0\n3, " + number(R) + ", " +
                           number(R) +
                           ", 0\n*ELEMENT, TYPE=B32, ELSET=BODY\n1, 1, 2, 3\n*MATERIAL, NAME=M\n*ELASTIC\n" +
                           "2E5, 0.3\n*BEAM SECTION, ELSET=BODY, MATERIAL=M, SECTION=RECT\n0.2, 0.3\n0, 0, -1\n" +
                           "*BOUNDARY\n1, ENCASTRE\n*STEP\n*STATIC\n*CLOAD\n3, 2, -5.\n*END STEP\n";
  const solver::model m = frame_test::read(text);
  ASSERT_EQ(m.elements.size(), 2U);
  EXPECT_TRUE(m.made_nodes.empty());
  const solved s = solve(m);
  EXPECT_WITHIN(std::fabs(s.reaction(0, 'Z')), 5 * R, 5 * R, 1e-9);
  const double half = std::hypot(R - c, c);
  ASSERT_EQ(s.results.fields.size(), 2U);
  const auto along = solver::stations_of(m, s.results.fields[1], 3);
  EXPECT_WITHIN(along.front().distance, half, half, 1e-12);
  EXPECT_WITHIN(along.back().distance, 2 * half, half, 1e-12);
  EXPECT_WITHIN(along.front().place[1], c, c, 1e-12);
}

// A strip under pressure along it, thick enough for its width: Euler's load pi^2 E I / (4 L^2), nu 0.
TEST(AnalysisQuadratic, BucklingOfAStrip) {
  const double L = 10, b = 0.5, t = 0.02;
  const mesh mesh('Q', "S8", {8, 1, 0}, [&](double u, double v, double) { return point{L * u, b * v, 0}; });
  std::string load = "*BUCKLE\n1\n*CLOAD\n";
  for (const auto& [j, share] : {std::pair{0, 0.25}, std::pair{1, 0.5}, std::pair{2, 0.25}})
    load += std::to_string(mesh.id({16, j, 0})) + ", 1, " + number(-share) + "\n";
  const std::string strip = "*MATERIAL, NAME=M\n*ELASTIC\n2E5, 0\n*SHELL SECTION, ELSET=BODY, MATERIAL=M\n0.02\n";
  const double euler = std::pow(2 * std::acos(0.0), 2) * E * b * t * t * t / 12 / (4 * L * L);
  EXPECT_WITHIN(shell_test::modes(read(deck(mesh, strip, "X0, ENCASTRE\n", load))).front(), euler, euler, 2e-3);
}
