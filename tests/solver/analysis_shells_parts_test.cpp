// Stresses at nodes by parts of the surface, shells whose four nodes lie off one plane, and what is written of them.
#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "finites/fields.h"
#include "output/csv_writer.h"
#include "output/summary.h"
#include "output/vtu_writer.h"
#include "shell_decks.h"

using namespace shell_test;

namespace {

// Two quadrilaterals side by side, the second turned about their common side (nodes 2 and 3); stretched along x.
std::string two_quads(double degrees, const std::string& second, const std::string& more_sections,
                      const std::string& first_set = "SKIN") {
  const double c = std::cos(degrees * 3.14159265358979323846 / 180),
               s = std::sin(degrees * 3.14159265358979323846 / 180);
  std::ostringstream text;
  text.precision(17);
  text << "*NODE, NSET=ALL\n1, 0, 0, 0\n2, 1, 0, 0\n3, 1, 1, 0\n4, 0, 1, 0\n5, " << 1 + c << ", 0, " << s << "\n6, "
       << 1 + c << ", 1, " << s << "\n*ELEMENT, TYPE=S4, ELSET=" << first_set
       << "\n1, 1, 2, 3, 4\n*ELEMENT, TYPE=S4, ELSET=SKIN\n"
       << second
       << "\n*MATERIAL, NAME=M\n*ELASTIC\n1000, 0.3\n*SHELL SECTION, ELSET=SKIN, MATERIAL=M, FORMULATION=THIN\n0.1\n"
       << more_sections << "*BOUNDARY\n1, ENCASTRE\n4, ENCASTRE\n*STEP\n*STATIC\n*CLOAD\n5, 1, 1\n6, 1, 2\n*END STEP\n";
  return text.str();
}

std::vector<solver::nodal_part> parts_at(const solved& s, int node) {
  std::vector<solver::nodal_part> found;
  for (const solver::nodal_part& part : s.results.parts)
    if (part.node == node) found.push_back(part);
  return found;
}

double first_moment(const solver::model& m, const solver::static_solution& s, std::size_t i) {
  return solver::sum_forces(m, s).applied[i] + solver::sum_forces(m, s).reaction[i];
}

// A surface that is hollow along one diagonal and arched along the other: every quadrilateral is warped.
sheet saddle() {
  sheet s;
  s.thickness = 0.05;
  s.place = [](double u, double v) { return point{u, v, 0.4 * u * v + 0.1 * u}; };
  return s;
}

}  // namespace

TEST(AnalysisShellsParts, FlatAndSlightlyBentSurfacesAreOne) {
  for (const double degrees : {0.0, 25.0}) {
    const solved s = solve(read(two_quads(degrees, "2, 2, 5, 6, 3", "")));
    ASSERT_EQ(parts_at(s, 1).size(), 1U) << degrees;
    EXPECT_EQ(parts_at(s, 1)[0].elements, 2);
    EXPECT_EQ(parts_at(s, 0)[0].elements, 1);
    // The normal lies half-way; x is the projection of the global x axis.
    const double half = degrees / 2 * 3.14159265358979323846 / 180;
    EXPECT_WITHIN(parts_at(s, 1)[0].axes(3, 1), -std::sin(half), 1.0, 1e-14);
    EXPECT_WITHIN(parts_at(s, 1)[0].axes(1, 1), std::cos(half), 1.0, 1e-14);
  }
}

TEST(AnalysisShellsParts, FoldsSectionsAndTurnedNormalsDivide) {
  EXPECT_EQ(parts_at(solve(read(two_quads(45, "2, 2, 5, 6, 3", ""))), 1).size(), 2U);
  EXPECT_EQ(parts_at(solve(read(two_quads(0, "2, 2, 3, 6, 5", ""))), 1).size(), 2U);
  const std::string other = "*SHELL SECTION, ELSET=OTHER, MATERIAL=M, FORMULATION=THIN\n0.2\n";
  EXPECT_EQ(parts_at(solve(read(two_quads(0, "2, 2, 5, 6, 3", other, "OTHER"))), 1).size(), 2U);
}

TEST(AnalysisShellsParts, WallOfNormalXHasItsXAlongZ) {
  sheet s;
  s.place = [](double u, double v) { return point{0, u, v}; };
  const solved r = solve(read(s.deck("LEFT, ENCASTRE\n", "*STATIC\n*CLOAD\n25, 1, 1.\n")));
  for (const solver::nodal_part& part : r.results.parts) {
    EXPECT_WITHIN(part.axes(1, 3), 1.0, 1.0, 1e-14);
    EXPECT_WITHIN(part.axes(3, 1), 1.0, 1.0, 1e-14);
  }
}

TEST(AnalysisShellsParts, OnAFlatPlateTheFrameIsGlobal) {
  // Two ways to one average: tensors turned to global axes, and plane stresses turned to the frame of the part, by
  // elements whose own axes differ.
  for (sheet s : all_forms()) {
    const solved r = solve(read(s.deck("LEFT, ENCASTRE\n", "*STATIC\n*CLOAD\n25, 3, 1.\n23, 1, 5.\n")));
    double scale = 0;
    for (const solver::nodal_result& n : r.results.nodes) scale = std::fmax(scale, n.equivalent_top);
    ASSERT_EQ(r.results.parts.size(), r.results.nodes.size());
    for (const solver::nodal_part& part : r.results.parts) {
      const solver::nodal_result& n = r.results.nodes[static_cast<std::size_t>(part.node)];
      const std::array<double, 3>& top = part.at[solver::TOP].stress;
      EXPECT_WITHIN((std::vector<double>{top[0], top[1], top[2]}), (std::vector<double>{n.top[0], n.top[1], n.top[3]}),
                    scale, 1e-13)
          << name_of(s);
      EXPECT_WITHIN(part.at[solver::TOP].equivalent, n.equivalent_top, scale, 1e-13) << name_of(s);
      // Principal values are those of the average: same sum, same product as the stresses.
      const solver::surface_stress& at = part.at[solver::TOP];
      EXPECT_WITHIN(at.first + at.second, top[0] + top[1], scale, 1e-13) << name_of(s);
      EXPECT_WITHIN(at.first * at.second, top[0] * top[1] - top[2] * top[2], scale * scale, 1e-13) << name_of(s);
    }
  }
}

TEST(AnalysisShellsParts, TransverseShearOfThickShells) {
  // A cantilever of length and width 1 under a line load P: Q = P per length, the other shear force is small.
  sheet s;
  s.n = 8;
  s.nu = 0;
  s.thickness = 0.1;
  s.formulation = "THICK";
  const solved r = solve(read(s.deck("LEFT, ENCASTRE\n", "*STATIC\n*CLOAD\n" + line_load(s, 1, 3, 2.0))));
  ASSERT_EQ(r.results.elements.size(), 64U);
  for (std::size_t e = 0; e < 64; ++e) {
    const std::array<double, 2>& Q = r.results.elements[e].shear_force;
    EXPECT_WITHIN(std::hypot(Q[0], Q[1]), 2.0, 2.0, 1e-6);
  }
  for (const solver::nodal_part& part : r.results.parts)
    EXPECT_WITHIN(std::fabs(part.shear[0]), 2.0 / (0.1 * 5 / 6), 2.0 / 0.1, 1e-6);
}

TEST(AnalysisShellsWarp, RigidMotionOfAWarpedShellGivesNoForce) {
  for (const char* const formulation : {"THIN", "THICK"}) {
    sheet s = saddle();
    s.formulation = formulation;
    solver::model m = read(s.deck("1, 1\n", "*STATIC\n"));
    m.boundaries.clear();
    // u = t + r x X on the border; what lies inside must follow.
    const double t[3] = {0.3, -0.2, 0.1}, r[3] = {0.02, -0.03, 0.04};
    const auto motion = [&](int node, int d) {
      const auto& X = m.nodes[static_cast<std::size_t>(node)].xyz;
      if (d >= 3) return r[d - 3];
      const int a = (d + 1) % 3, b = (d + 2) % 3;
      return t[d] + r[a] * X[static_cast<std::size_t>(b)] - r[b] * X[static_cast<std::size_t>(a)];
    };
    for (int edge = 0; edge < 4; ++edge)
      for (const int n : s.edge(edge))
        for (int d = 0; d < 6; ++d) m.boundaries.push_back({n, d + 1, d + 1, motion(n, d), 0, 0});
    const solved found = solve(m);
    const int middle = s.node(2, 2);
    for (int d = 0; d < 6; ++d)
      EXPECT_WITHIN(found.solution.displacement[solver::freedom(middle, d)], motion(middle, d), 0.3, 1e-8)
          << formulation << " " << d;
    EXPECT_LT(max_norm(found.solution.reaction), 1e-9 * s.E * s.thickness * 0.04) << formulation;
  }
}

TEST(AnalysisShellsWarp, MomentsOfAWarpedShellAreInBalance) {
  // Flat elements whose nodes lie off their plane would leave a moment over.
  for (const char* const formulation : {"THIN", "THICK"}) {
    sheet s = saddle();
    s.formulation = formulation;
    const solver::model m = read(s.deck("LEFT, ENCASTRE\n", "*STATIC\n*CLOAD\n25, 1, 1.\n21, 2, -2.\n23, 3, 0.5\n"));
    const solved r = solve(m);
    for (std::size_t i = 0; i < 6; ++i) EXPECT_WITHIN(first_moment(m, r.solution, i), 0.0, 1.0, 1e-8) << formulation;
  }
}

TEST(AnalysisShellsWarp, TheLargestWarpIsToldOnce) {
  const solver::model m = read(saddle().deck("LEFT, ENCASTRE\n", "*STATIC\n*CLOAD\n25, 3, 1.\n"));
  ASSERT_EQ(m.notes.size(), 1U);
  EXPECT_NE(m.notes[0].find("*ELEMENT: 16 elements are warped: flat elements stand for them. The largest warp, of "),
            std::string::npos)
      << m.notes[0];
  EXPECT_EQ(m.notes[0].find("DRILLING"), std::string::npos) << m.notes[0];
  sheet flat;
  flat.place = [](double u, double v) { return point{u, v + 0.2 * u * v, 0.7 * u - 0.3 * (v + 0.2 * u * v)}; };
  EXPECT_TRUE(read(flat.deck("LEFT, ENCASTRE\n", "*STATIC\n*CLOAD\n4, 3, 1.\n")).notes.empty());
}

TEST(AnalysisShellsDrilling, RigidMotionAndConstantStrainMeetNoResistance) {
  // The whole stiffness of a warped, offset quadrilateral with the tie against its rigid motions.
  for (const char* const formulation : {"THIN", "THICK"}) {
    sheet s = saddle();
    s.n = 1;
    s.formulation = std::string(formulation) + ", DRILLING=1, OFFSET=0.4";
    const solver::model m = read(s.deck("1, 1\n", "*STATIC\n"));
    solver::library_model library(m);
    solver::element_matrix K;
    library.stiffness(0, K);
    double largest = 0;
    for (int i = 1; i <= 24; ++i) largest = std::fmax(largest, K(i, i));
    for (int mode = 0; mode < 6; ++mode) {
      solver::element_vector u{};
      for (int n = 0; n < 4; ++n) {
        const auto& X = m.nodes[static_cast<std::size_t>(m.elements[0].nodes[static_cast<std::size_t>(n)])].xyz;
        u(6 * n + mode + 1) = 1;
        if (mode < 3) continue;
        const int a = (mode - 2) % 3, b = (mode - 1) % 3;  // e_mode x X
        u(6 * n + b + 1) = X[static_cast<std::size_t>(a)];
        u(6 * n + a + 1) = -X[static_cast<std::size_t>(b)];
      }
      for (int i = 1; i <= 24; ++i) {
        double force = 0;
        for (int j = 1; j <= 24; ++j) force += K(i, j) * u(j);
        EXPECT_WITHIN(force, 0.0, largest, 1e-13) << formulation << " mode " << mode << " row " << i;
      }
    }
  }
}

TEST(AnalysisShellsDrilling, TiedRotationIsThatOfTheSheet) {
  // A flat square is sheared by g = 1e-3 along x, u = g y: its rotation about z is -g / 2, also in the middle; without
  // the tie the solver holds it at zero.
  for (const double tie : {0.0, 1.0}) {
    sheet s;
    s.formulation = "THIN, DRILLING=" + std::to_string(tie);
    solver::model m = read(s.deck("ALL, 3, 5\nALL, 2\n", "*STATIC\n"));
    for (int edge = 0; edge < 4; ++edge)
      for (const int n : s.edge(edge))
        m.boundaries.push_back({n, 1, 1, 1e-3 * m.nodes[static_cast<std::size_t>(n)].xyz[1], 0, 0});
    const solved r = solve(m);
    EXPECT_WITHIN(r.u(s.node(2, 2), 'Z'), -0.5e-3 * tie, 1e-3, 1e-9);
    EXPECT_WITHIN(r.u(s.node(2, 2), 'x'), 0.5e-3, 1e-3, 1e-9);
  }
}

TEST(AnalysisShellsDrilling, TwistedBeamOfQuadrilaterals) {
  // MacNeal and Harder (1985): length 12, width 1.1, thickness 0.32, 90 degrees; 0.005424 in the plane of the loaded
  // tip. Without the tie the bending hides in the rotations about the normal.
  for (const char* const formulation : {"THIN", "THICK"}) {
    sheet s;
    s.n = 8;
    s.E = 29e6;
    s.nu = 0.22;
    s.thickness = 0.32;
    s.place = [](double u, double v) {
      const double angle = 1.5707963267948966 * u, across = 1.1 * (v - 0.5);
      return point{12 * u, across * std::cos(angle), across * std::sin(angle)};
    };
    const std::string step = "*STATIC\n*CLOAD\n" + line_load(s, 1, 3, 1);
    s.formulation = formulation;
    EXPECT_WITHIN(solve(read(s.deck("LEFT, ENCASTRE\n", step))).u(s.node(8, 4), 'z'), 0.005424, 0.005424, 0.03);
    s.formulation = std::string(formulation) + ", DRILLING=0";
    EXPECT_GT(solve(read(s.deck("LEFT, ENCASTRE\n", step))).u(s.node(8, 4), 'z'), 1.2 * 0.005424);
  }
}

TEST(AnalysisShellsOutput, QuadrilateralsAndPartsInTheViewersFile) {
  sheet s;
  s.n = 2;
  s.kind = cells::MIXED;
  s.formulation = "THICK";
  const solver::model m = read(s.deck("LEFT, ENCASTRE\n", "*STATIC\n*CLOAD\n9, 3, 1.\n"));
  const solved r = solve(m);
  std::ostringstream out;
  solver::write_vtu(out, m, r.solution, r.results);
  const std::string text = out.str();
  for (const char* const name : {"nodal_parts", "nodal_axis_x", "nodal_normal", "part_stress_top",
                                 "part_principal_middle", "part_von_mises_bottom", "shear_force"})
    EXPECT_NE(text.find("Name=\"" + std::string(name) + "\""), std::string::npos) << name;
  EXPECT_NE(text.find("\n5 \n5 \n5 \n5 \n9 \n9 \n"), std::string::npos) << "types of four triangles and two quads";
}

TEST(AnalysisShellsOutput, TableOfStresses) {
  const solver::model m = read(two_quads(45, "2, 2, 5, 6, 3", ""));
  const solved r = solve(m);
  std::ostringstream out;
  solver::write_stresses_csv(out, m, r.results);
  std::istringstream lines(out.str());
  std::string line;
  std::vector<std::string> beginnings;
  while (std::getline(lines, line)) {
    EXPECT_EQ(std::count(line.begin(), line.end(), ','), 29) << line;
    beginnings.push_back(line.substr(0, line.find(',', line.find(',', line.find(',') + 1) + 1)));
  }
  const std::vector<std::string> expected = {"node,elset,elements",
                                             "1,SKIN,1",
                                             "2,SKIN,1",
                                             "2,SKIN,1",
                                             "3,SKIN,1",
                                             "3,SKIN,1",
                                             "4,SKIN,1",
                                             "5,SKIN,1",
                                             "6,SKIN,1"};
  EXPECT_EQ(beginnings, expected);
}
