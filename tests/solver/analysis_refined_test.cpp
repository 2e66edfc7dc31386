// Quadratic solids that are divided into linear ones: fields of constant strain are exact on curved elements, volumes,
// pressures and conditions are those of the element of the deck.
#include <gtest/gtest.h>

#include <cmath>

#include "frame_decks.h"
#include "quadratic_support.h"
#include "shell_decks.h"

using namespace quadratic_test;
using frame_test::number;

namespace {

constexpr double E = 1e6, NU = 0.25, RHO = 2;
// u = F x, no two entries alike.
constexpr double F[3][3] = {{1e-3, 4e-4, -3e-4}, {2e-4, -7e-4, 6e-4}, {5e-4, -1e-4, 9e-4}};

double field(const point& x, std::size_t i) { return F[i][0] * x[0] + F[i][1] * x[1] + F[i][2] * x[2]; }

// Hooke's law by Lame's constants: xx, yy, zz, xy, yz, xz.
std::vector<double> stress() {
  const double shear = E / (2 * (1 + NU)), lambda = E * NU / ((1 + NU) * (1 - 2 * NU));
  const double volume = lambda * (F[0][0] + F[1][1] + F[2][2]);
  return {volume + 2 * shear * F[0][0], volume + 2 * shear * F[1][1], volume + 2 * shear * F[2][2],
          shear * (F[0][1] + F[1][0]),  shear * (F[1][2] + F[2][1]),  shear * (F[0][2] + F[2][0])};
}

std::string section(const std::string& material = "") {
  return "*MATERIAL, NAME=M\n*ELASTIC\n" + number(E) + ", " + number(NU) + "\n*DENSITY\n" + number(RHO) + "\n" +
         material + "*SOLID SECTION, ELSET=BODY, MATERIAL=M\n";
}

std::string prescribed(int id, int dof, double value) {
  const std::string d = std::to_string(dof);
  return std::to_string(id) + ", " + d + ", " + d + ", " + number(value) + "\n";
}

struct solid {
  char shape;
  std::string type;    // empty: as the cells are
  std::string linear;  // with the same corners
  int faces;
  double limit;  // rules of wedges have single-precision digits
};
const std::vector<solid> SOLIDS = {
    {'B', "C3D20R", "C3D8", 6, 1e-9}, {'W', "C3D15", "C3D6", 5, 1e-6}, {'X', "C3D10", "C3D4", 4, 1e-9}};
const solid MIXED = {'M', "", "", 0, 1e-9};

}  // namespace

// The middles of faces on the ends follow from the deck's nodes, whose displacements are prescribed.
TEST(AnalysisRefined, ConstantStress) {
  std::vector<solid> all = SOLIDS;
  all.push_back(MIXED);
  const std::vector<double> expected = stress();
  for (const solid& kind : all) {
    const mesh mesh(kind.shape, kind.type, {2, 2, 2}, bumped);
    std::string supports;
    for (const auto& [h, id] : mesh.nodes())
      for (int dof = 1; dof <= 3 && !mesh.inside(h); ++dof)
        supports += prescribed(id, dof, field(mesh.at(h), static_cast<std::size_t>(dof - 1)));
    const solver::model m = read(deck(mesh, section(), supports, "*STATIC\n"));
    const solved s = solve(m);
    for (int n = 0; n < solver::count_of(m.nodes); ++n)
      for (std::size_t i = 0; i < 3; ++i)
        EXPECT_WITHIN(s.u(n, "xyz"[i]), field(m.nodes[n].xyz, i), 1e-3, kind.limit) << kind.shape << n;
    ASSERT_EQ(s.results.solids.size(), m.nodes.size());
    for (const solver::solid_stress& mean : s.results.in_solids)
      EXPECT_WITHIN((std::vector<double>{mean.stress.begin(), mean.stress.end()}), expected, max_norm(expected),
                    10 * kind.limit)
          << kind.shape;
  }
}

// The weight of a cube, whatever the elements inside it look like, and the pressure on each of their faces.
TEST(AnalysisRefined, VolumesAddUp) {
  std::vector<solid> all = SOLIDS;
  all.push_back(MIXED);
  for (const solid& kind : all) {
    const mesh mesh(kind.shape, kind.type, {2, 2, 2}, bumped);
    const solver::model m = read(deck(mesh, section(), "Z0, 1, 3\n", "*STATIC\n*DLOAD\nBODY, GRAV, 3., 0, 0, -1\n"));
    const solved s = solve(m);
    double sum = 0;
    for (int n = 0; n < solver::count_of(m.nodes); ++n) sum += s.reaction(n, 'z');
    EXPECT_WITHIN(sum, RHO * 3, RHO * 3, kind.limit) << kind.shape;
  }
}

// A pressure on a face of an element with straight edges has the resultant that it has on the linear element with the
// same corners, and the same moment about the origin.
TEST(AnalysisRefined, PressureOnEveryFace) {
  const auto skew = [](double u, double v, double w) { return point{u + 0.3 * v, v - 0.2 * w, w + 0.1 * u}; };
  for (const solid& kind : SOLIDS) {
    const mesh mesh(kind.shape, kind.type, {1, 1, 1}, skew);
    for (int face = 1; face <= kind.faces; ++face) {
      const std::string load = "*STATIC\n*DLOAD\n1, P" + std::to_string(face) + ", 7.\n";
      std::string text = deck(mesh, section(), "ALL, 1, 3\n", load);
      const solver::model m = read(text);
      // The same corners: the nodes that follow them on the data lines are left out.
      std::string nodes;
      for (const auto& [h, id] : mesh.nodes()) {
        const point p = mesh.at(h);
        nodes += std::to_string(id) + ", " + number(p[0]) + ", " + number(p[1]) + ", " + number(p[2]) + "\n";
      }
      const std::size_t corners = kind.shape == 'B' ? 8 : kind.shape == 'W' ? 6 : 4;
      const std::size_t line = text.find("\n1, ", text.find("*ELEMENT")) + 1;
      std::size_t end = line;
      for (std::size_t k = 0; k <= corners; ++k) end = text.find(',', end + 1);
      const std::string linear = "*NODE, NSET=ALL\n" + nodes + "*ELEMENT, TYPE=" + kind.linear + ", ELSET=BODY\n" +
                                 text.substr(line, end - line) + "\n" + section() + "*BOUNDARY\nALL, 1, 3\n*STEP\n" +
                                 load + "*END STEP\n";
      const solver::model other = read(linear);
      const auto resultant = [](const solver::model& of) {
        const solved s = solve(of);
        std::vector<double> sum(6);
        for (int n = 0; n < solver::count_of(of.nodes); ++n) {
          const point& x = of.nodes[n].xyz;
          const double f[3] = {s.reaction(n, 'x'), s.reaction(n, 'y'), s.reaction(n, 'z')};
          for (std::size_t i = 0; i < 3; ++i) {
            sum[i] += f[i];
            sum[3 + i] += x[(i + 1) % 3] * f[(i + 2) % 3] - x[(i + 2) % 3] * f[(i + 1) % 3];
          }
        }
        return sum;
      };
      EXPECT_WITHIN(resultant(m), resultant(other), 7.0, 1e-10) << kind.type << " P" << face;
    }
  }
}

// All nodes held across a plane: plane strain, E / (1 - nu^2), also in the middles that the deck does not know. The
// displaced end is prescribed in the step.
TEST(AnalysisRefined, PlaneStrain) {
  for (const solid& kind : SOLIDS) {
    const mesh mesh(kind.shape, kind.type, {2, 2, 1}, straight);
    const solver::model m =
        read(deck(mesh, section(), "ALL, 3\nX0, 1\nY0, 2\n", "*STATIC\n*BOUNDARY\nX1, 1, 1, 0.01\n"));
    const solved s = solve(m);
    double sum = 0;
    for (int n = 0; n < solver::count_of(m.nodes); ++n)
      if (m.nodes[n].xyz[0] > 0.999) sum += s.reaction(n, 'x');
    EXPECT_WITHIN(sum, E / (1 - NU * NU) * 0.01, E * 0.01, kind.limit) << kind.type;
  }
}

// The same condition in a step with PERTURBATION about a state in which the end has moved: an increment, not the sum.
TEST(AnalysisRefined, PerturbationCountsFromItsState) {
  const mesh mesh('B', "C3D20", {1, 1, 1}, straight);
  const std::string text = deck(mesh, section(), "X0, 1\nY0, 2\nZ0, 3\n",
                                "*STATIC\n*BOUNDARY\nX1, 1, 1, 1E-3\n*END STEP\n*STEP, PERTURBATION\n*STATIC\n"
                                "*BOUNDARY, OP=MOD\nX1, 1, 1, 2E-6\n");
  const solver::model m = read(text);
  ASSERT_EQ(m.made_nodes.size(), 7U);
  for (const auto& [step, value] : {std::pair{0, 1e-3}, std::pair{1, 2e-6}}) {
    int found = 0;
    for (const solver::boundary_condition& c : m.steps[step].boundaries)
      if (solver::is_made(m.nodes[c.node])) {
        EXPECT_WITHIN(c.value, value, value, 1e-12);
        ++found;
      }
    EXPECT_EQ(found, 1);
  }
}

// A block that hangs by a plane of symmetry: the same frequencies as that of bricks half as large.
TEST(AnalysisRefined, FrequenciesOfTheSmallBricks) {
  const auto place = [](double u, double v, double w) { return point{4 * u, v, w}; };
  const mesh coarse('B', "C3D20", {4, 1, 1}, place);
  const std::string step = "*FREQUENCY\n5\n";
  std::string text = "*NODE\n";
  const auto id = [](int i, int j, int k) { return (i * 3 + j) * 3 + k + 1; };
  std::string held;
  for (int i = 0; i <= 8; ++i)
    for (int j = 0; j <= 2; ++j)
      for (int k = 0; k <= 2; ++k) {
        text += std::to_string(id(i, j, k)) + ", " + number(i / 2.0) + ", " + number(j / 2.0) + ", " + number(k / 2.0) +
                "\n";
        if (i == 0) held += std::to_string(id(i, j, k)) + ", 1, 3\n";
      }
  text += "*ELEMENT, TYPE=C3D8, ELSET=BODY\n";
  int count = 0;
  for (int i = 0; i < 8; ++i)
    for (int j = 0; j < 2; ++j)
      for (int k = 0; k < 2; ++k) {
        text += std::to_string(++count);
        for (const int upper : {0, 1})
          for (const auto& [a, b] : {std::pair{0, 0}, std::pair{1, 0}, std::pair{1, 1}, std::pair{0, 1}})
            text += ", " + std::to_string(id(i + a, j + b, k + upper));
        text += "\n";
      }
  const std::string fine = text + section() + "*BOUNDARY\n" + held + "*STEP\n" + step + "*END STEP\n";
  const std::vector<double> expected = shell_test::modes(read(fine));
  EXPECT_WITHIN(shell_test::modes(read(deck(coarse, section(), "X0, 1, 3\n", step))), expected, expected[0], 1e-7);
}
