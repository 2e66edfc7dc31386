// Fields of constant strain through the whole solver, on distorted bricks, wedges and tetrahedra: exact whatever the
// mesh.
#include <gtest/gtest.h>

#include <algorithm>

#include "frame_decks.h"
#include "solids_support.h"

using namespace solids_test;

namespace {

// u = F x, no two entries alike.
constexpr double F[3][3] = {{1e-3, 4e-4, -3e-4}, {2e-4, -7e-4, 6e-4}, {5e-4, -1e-4, 9e-4}};

double field(const point& x, std::size_t i) { return F[i][0] * x[0] + F[i][1] * x[1] + F[i][2] * x[2]; }

// Hooke's law by Lame's constants: xx, yy, zz, xy, yz, xz.
std::vector<double> stress(double E, double nu) {
  const double shear = E / (2 * (1 + nu)), lambda = E * nu / ((1 + nu) * (1 - 2 * nu));
  const double volume = lambda * (F[0][0] + F[1][1] + F[2][2]);
  return {volume + 2 * shear * F[0][0], volume + 2 * shear * F[1][1], volume + 2 * shear * F[2][2],
          shear * (F[0][1] + F[1][0]),  shear * (F[1][2] + F[2][1]),  shear * (F[0][2] + F[2][0])};
}

std::vector<double> listed(const std::array<double, 6>& v) { return {v.begin(), v.end()}; }

// `limit`: rules of wedges have single-precision digits.
void expect_field(const block& b, double limit) {
  std::string boundary;
  for (std::size_t axis = 0; axis < 3; ++axis)
    for (const bool end : {false, true})
      for (const int n : b.face(axis, end))
        for (int dof = 1; dof <= 3; ++dof)
          boundary += prescribed(n, dof, field(b.at(n), static_cast<std::size_t>(dof - 1)));
  const solved s = solve(read(b.deck(boundary, "*STATIC\n")));
  ASSERT_FALSE(b.inside().empty());
  for (const int n : b.inside())
    for (std::size_t i = 0; i < 3; ++i) EXPECT_WITHIN(s.u(n, "xyz"[i]), field(b.at(n), i), 1e-3, limit) << b.kind << n;
  const std::vector<double> expected = stress(b.E, b.nu);
  EXPECT_EQ(s.results.solids.size(), b.inside().size() + 56);
  for (const solver::solid_part& part : s.results.solids)
    EXPECT_WITHIN(listed(part.at.stress), expected, max_norm(expected), 10 * limit) << b.kind << part.node;
  for (const solver::solid_stress& mean : s.results.in_solids)
    EXPECT_WITHIN(listed(mean.stress), expected, max_norm(expected), 10 * limit) << b.kind;
}

}  // namespace

TEST(AnalysisSolidsPatch, Bricks) { expect_field(distorted("C3D8", 3), 1e-10); }
TEST(AnalysisSolidsPatch, Wedges) { expect_field(distorted("C3D6", 3), 1e-7); }
TEST(AnalysisSolidsPatch, Tetrahedra) { expect_field(distorted("C3D4", 3), 1e-10); }

// MacNeal and Harder (1985): normal stresses 2000, shear 400, so that the principal stresses are 2800, 1600, 1600 and
// von Mises' is 1200. Principal values of the library hold a root of 2 in single precision.
TEST(AnalysisSolidsPatch, MacNealHarder) {
  const solver::model m = frame_test::deck("solid_patch.inp");
  const solved s = solve(m);
  for (std::size_t n = 8; n < 16; ++n) {
    const point& x = m.nodes[n].xyz;
    const double sum = x[0] + x[1] + x[2];
    for (std::size_t i = 0; i < 3; ++i)
      EXPECT_WITHIN(s.u(static_cast<int>(n), "xyz"[i]), 0.5e-3 * (sum + x[i]), 1e-3, 1e-10) << n;
  }
  ASSERT_EQ(s.results.solids.size(), 16U);
  for (const solver::solid_part& part : s.results.solids) {
    EXPECT_WITHIN(listed(part.at.stress), (std::vector<double>{2000, 2000, 2000, 400, 400, 400}), 2000.0, 1e-10);
    EXPECT_WITHIN(part.at.equivalent, 1200.0, 1200.0, 1e-10);
    EXPECT_WITHIN(part.at.principal[0], 2800.0, 2800.0, 2e-8);
    EXPECT_WITHIN(part.at.principal[1], 1600.0, 1600.0, 1e-4);
    EXPECT_WITHIN(part.at.principal[2], 1600.0, 1600.0, 1e-4);
  }
}

// All faces follow x = const strain: no deviator, for which the library has no principal values.
TEST(AnalysisSolidsPatch, HydrostaticState) {
  const block b;
  std::string boundary;
  for (int n = 0; n < 27; ++n)
    for (int dof = 1; dof <= 3; ++dof)
      boundary += prescribed(n, dof, 1e-3 * b.at(n)[static_cast<std::size_t>(dof - 1)]);
  const solved s = solve(read(b.deck(boundary, "*STATIC\n")));
  for (const solver::solid_part& part : s.results.solids)
    EXPECT_WITHIN((std::vector<double>(part.at.principal.begin(), part.at.principal.end())),
                  (std::vector<double>{2000, 2000, 2000}), 2000.0, 1e-9);
}

// A bar in tension, E A u / L, and what a traction of its end makes of it: the same in every mesh.
TEST(AnalysisSolidsPatch, TensionMeetsTheSameStiffnessInEveryMesh) {
  for (const auto& [kind, limit] : {std::pair{"C3D8", 1e-10}, std::pair{"C3D6", 1e-7}, std::pair{"C3D4", 1e-10}}) {
    const block b = distorted(kind, 3);
    const solved s = solve(read(b.deck("X0, 1\nY0, 2\nZ0, 3\nX1, 1, 1, 0.01\n", "*STATIC\n")));
    EXPECT_WITHIN(s.reaction(b.face(0, true), 'x'), b.E * 0.01, b.E * 0.01, limit) << kind;
    EXPECT_WITHIN(s.u(b.node(3, 3, 3), 'y'), -b.nu * 0.01, 0.01, limit) << kind;
    // Nodal forces of linear triangles on the face: a third of each triangle's area, of two triangles on one diagonal.
    const bool brick = b.kind == "C3D8" || b.kind == "C3D6";
    block straight;
    straight.kind = kind;
    straight.count = {3, 1, 1};
    const std::string load = brick ? face_load(straight, 0, true, 1, 1000) : "";
    std::string corners;
    for (const int n : straight.face(0, true)) {
      const point x = straight.at(n);
      const bool on_diagonal = x[1] == x[2];
      corners += std::to_string(n + 1) + ", 1, " + (on_diagonal ? "333.33333333333333" : "166.66666666666667") + "\n";
    }
    const solved pulled =
        solve(read(straight.deck("X0, 1\nY0, 2\nZ0, 3\n", "*STATIC\n*CLOAD\n" + (brick ? load : corners))));
    for (int i = 1; i <= 3; ++i)
      EXPECT_WITHIN(pulled.u(straight.node(i, 1, 1), 'x'), 1e-3 * i / 3, 1e-3, limit) << kind << i;
    EXPECT_WITHIN(pulled.u(straight.node(3, 1, 1), 'z'), -0.25e-3, 1e-3, limit) << kind;
  }
}

// The corner tetrahedron, V = 1/6, grad N = (-1, -1, -1), e1, e2, e3. Under u = F x its nodes bear V sigma grad N, with
// the geometric stiffness of its own stresses V (sigma + F sigma) grad N; under a force b per volume V b / 4 each.
TEST(AnalysisSolidsPatch, ForcesOfATetrahedronByHand) {
  const double gradient[4][3] = {{-1, -1, -1}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  const point at[4] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  std::string text =
      "*NODE, NSET=ALL\n1, 0, 0, 0\n2, 1, 0, 0\n3, 0, 1, 0\n4, 0, 0, 1\n*ELEMENT, TYPE=C3D4, ELSET=BODY\n1, 1, 2, 3, "
      "4\n"
      "*MATERIAL, NAME=M\n*ELASTIC\n1e6, 0.25\n*SOLID SECTION, ELSET=BODY, MATERIAL=M\n*BOUNDARY\n";
  for (int n = 0; n < 4; ++n)
    for (int dof = 1; dof <= 3; ++dof) text += prescribed(n, dof, field(at[n], static_cast<std::size_t>(dof - 1)));
  const std::vector<double> s = stress(1e6, 0.25);
  const double sigma[3][3] = {{s[0], s[3], s[5]}, {s[3], s[1], s[4]}, {s[5], s[4], s[2]}};
  const double body[3] = {300, -500, 700};
  for (const bool second_order : {false, true}) {
    const std::string step = std::string("*STEP") + (second_order ? ", PDELTA" : "") + "\n*STATIC\n*DLOAD\n" +
                             "BODY, BX, 300\nBODY, BY, -500\nBODY, BZ, 700\n*END STEP\n";
    const solved r = solve(read(text + step));
    for (int n = 0; n < 4; ++n)
      for (std::size_t k = 0; k < 3; ++k) {
        double force = -body[k] / 24;
        for (std::size_t j = 0; j < 3; ++j) {
          double flow = sigma[k][j];
          for (std::size_t i = 0; i < 3 && second_order; ++i) flow += F[k][i] * sigma[i][j];
          force += flow * gradient[n][j] / 6;
        }
        EXPECT_WITHIN(r.reaction(n, "xyz"[k]), force, 300.0, 1e-12) << second_order << n << k;
      }
  }
}

// A truss along one edge: the two share the tension, and the rotations of the nodes are held.
TEST(AnalysisSolidsPatch, SolidsBesideATruss) {
  block b;
  b.count = {1, 1, 1};
  b.nu = 0;
  std::string text = b.deck("X0, 1\nY0, 2\nZ0, 3\nX1, 1, 1, 0.01\n", "*STATIC\n");
  text.insert(text.find("*NSET"), "*ELEMENT, TYPE=T3D2, ELSET=BAR\n50, 1, 5\n");
  text.insert(text.find("*BOUNDARY"), "*SOLID SECTION, ELSET=BAR, MATERIAL=M\n0.5\n");
  const solved s = solve(read(text));
  EXPECT_WITHIN(s.reaction(b.face(0, true), 'x'), 1.5 * b.E * 0.01, b.E * 0.01, 1e-10);
  EXPECT_WITHIN(s.results.members[1][6], 0.5 * b.E * 0.01, b.E * 0.01, 1e-10);
  EXPECT_EQ(s.solution.notes, (std::vector<std::string>{"held 24 rotations of nodes that only solids join"}));
}

// Two sections at a face keep their own stresses there.
TEST(AnalysisSolidsPatch, SectionsAreNotAveraged) {
  block b;
  b.count = {2, 1, 1};
  b.nu = 0;
  std::string text = b.deck("X0, 1\nY0, 2\nZ0, 3\nX1, 1, 1, 0.01\n", "*STATIC\n");
  const std::string halves = "*ELSET, ELSET=LEFT\n1\n*ELSET, ELSET=RIGHT\n2\n";
  text.insert(text.find("*MATERIAL"), halves);
  const std::size_t card = text.find("*SOLID SECTION");
  text.replace(card, text.find("*BOUNDARY") - card,
               "*SOLID SECTION, ELSET=LEFT, MATERIAL=M\n*SOLID SECTION, ELSET=RIGHT, MATERIAL=N\n*MATERIAL, NAME=N\n"
               "*ELASTIC\n3e6, 0\n");
  const solved s = solve(read(text));
  EXPECT_EQ(s.results.solids.size(), 16U);  // four nodes of the middle count twice
  // In series: the stress is 0.01 / (0.5 / E + 0.5 / 3E) in both.
  for (const solver::solid_part& part : s.results.solids) EXPECT_WITHIN(part.at.stress[0], 15000.0, 15000.0, 1e-10);
}
