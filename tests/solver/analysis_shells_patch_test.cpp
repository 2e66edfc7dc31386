// Fields of constant strain and constant curvature through the whole solver, on the distorted quadrilaterals of MacNeal
// and Harder (1985), some of them cut in two: exact whatever the mesh, thin and thick.
#include <gtest/gtest.h>

#include "finites/fields.h"
#include "frame_decks.h"
#include "shell_decks.h"

using namespace shell_test;
using frame_test::number;

namespace {

constexpr double E = 1e6, NU = 0.25, T = 0.001;
constexpr std::array<std::array<double, 2>, 8> NODES = {
    {{0, 0}, {.24, 0}, {.24, .12}, {0, .12}, {.04, .02}, {.18, .03}, {.16, .08}, {.08, .08}}};

// Quadrilaterals below, above and in the middle, triangles on the sides.
std::string mesh(const std::string& three, const std::string& four) {
  std::string text = "*NODE, NSET=ALL\n";
  for (std::size_t n = 0; n < NODES.size(); ++n)
    text += std::to_string(n + 1) + ", " + number(NODES[n][0]) + ", " + number(NODES[n][1]) + ", 0\n";
  return text + "*ELEMENT, TYPE=" + four + ", ELSET=SKIN\n1, 1, 2, 6, 5\n2, 7, 3, 4, 8\n3, 5, 6, 7, 8\n" +
         "*ELEMENT, TYPE=" + three + ", ELSET=SKIN\n4, 2, 3, 7\n5, 7, 6, 2\n6, 4, 1, 5\n7, 5, 8, 4\n" +
         "*MATERIAL, NAME=M\n*ELASTIC\n1E6, 0.25\n";
}

std::string prescribed(std::size_t n, int dof, double value) {
  const std::string d = std::to_string(dof);
  return std::to_string(n + 1) + ", " + d + ", " + d + ", " + number(value) + "\n";
}

std::vector<double> listed(const std::array<double, 3>& v) { return {v.begin(), v.end()}; }

double x(std::size_t n) { return NODES[n][0]; }
double y(std::size_t n) { return NODES[n][1]; }
double membrane_u(std::size_t n) { return 1e-3 * (x(n) + y(n) / 2); }
double membrane_v(std::size_t n) { return 1e-3 * (y(n) + x(n) / 2); }

void expect_membrane(const std::string& deck, const std::string& name) {
  const solved s = solve(read(deck));
  const double normal = E / (1 - NU) * 1e-3, shear = E / (2 * (1 + NU)) * 1e-3;
  for (std::size_t n = 4; n < 8; ++n) {
    EXPECT_WITHIN(s.u(static_cast<int>(n), 'x'), membrane_u(n), 1e-4, 1e-10) << name;
    EXPECT_WITHIN(s.u(static_cast<int>(n), 'y'), membrane_v(n), 1e-4, 1e-10) << name;
  }
  ASSERT_EQ(s.results.parts.size(), 8U);
  for (const solver::nodal_part& part : s.results.parts)
    for (const solver::surface_stress& at : part.at) {
      EXPECT_WITHIN(listed(at.stress), (std::vector<double>{normal, normal, shear}), normal, 1e-10) << name;
      EXPECT_WITHIN(at.first, normal + shear, normal, 1e-10) << name;
      EXPECT_WITHIN(at.second, normal - shear, normal, 1e-10) << name;
    }
  EXPECT_WITHIN(s.reaction({1, 2}, 'x'), normal * T * 0.12, normal * T * 0.12, 1e-9) << name;
}

}  // namespace

TEST(AnalysisShellsPatch, ConstantMembraneStress) {
  std::string boundary = "*BOUNDARY\n";
  for (std::size_t n = 0; n < 4; ++n) boundary += prescribed(n, 1, membrane_u(n)) + prescribed(n, 2, membrane_v(n));
  const std::string step = "*STEP\n*STATIC\n*END STEP\n";
  expect_membrane(mesh("M3D3", "M3D4") + "*MEMBRANE SECTION, ELSET=SKIN, MATERIAL=M\n0.001\n" + boundary + step,
                  "membrane");
  for (const std::string& formulation : {std::string("THIN"), std::string("THICK")})
    expect_membrane(mesh("S3", "S4") + "*SHELL SECTION, ELSET=SKIN, MATERIAL=M, FORMULATION=" + formulation +
                        "\n0.001\n" + boundary + "1, 3, 5\n2, 3, 5\n3, 3, 5\n4, 3, 5\n" + step,
                    formulation);
}

TEST(AnalysisShellsPatch, ConstantCurvature) {
  std::string boundary = "*BOUNDARY\nALL, 1, 2\nALL, 6\n";
  const auto w = [](std::size_t n) { return 0.5e-3 * (x(n) * x(n) + x(n) * y(n) + y(n) * y(n)); };
  const auto wx = [](std::size_t n) { return 0.5e-3 * (2 * x(n) + y(n)); };
  const auto wy = [](std::size_t n) { return 0.5e-3 * (x(n) + 2 * y(n)); };
  for (std::size_t n = 0; n < 4; ++n)
    boundary += prescribed(n, 3, w(n)) + prescribed(n, 4, wy(n)) + prescribed(n, 5, -wx(n));
  for (const std::string& formulation : {std::string("THIN"), std::string("THICK")}) {
    const solved s =
        solve(read(mesh("S3", "S4") + "*SHELL SECTION, ELSET=SKIN, MATERIAL=M, FORMULATION=" + formulation +
                   "\n0.001\n" + boundary + "*STEP\n*STATIC\n*END STEP\n"));
    for (std::size_t n = 4; n < 8; ++n) {
      EXPECT_WITHIN(s.u(static_cast<int>(n), 'z'), w(n), 1e-5, 1e-9) << formulation;
      EXPECT_WITHIN(s.u(static_cast<int>(n), 'X'), wy(n), 1e-4, 1e-9) << formulation;
      EXPECT_WITHIN(s.u(static_cast<int>(n), 'Y'), -wx(n), 1e-4, 1e-9) << formulation;
    }
    // Hollow upwards: pressed at the top. s = 6 M / t^2, M the published moments 1.111e-7 and 3.333e-8.
    const double D = E * T * T * T / (12 * (1 - NU * NU));
    const double normal = 6 * D * (1 + NU) * 1e-3 / (T * T), twist = 6 * D * (1 - NU) * 0.5e-3 / (T * T);
    for (const solver::nodal_part& part : s.results.parts) {
      EXPECT_WITHIN(listed(part.at[solver::TOP].stress), (std::vector<double>{-normal, -normal, -twist}), normal, 1e-8)
          << formulation;
      EXPECT_WITHIN(listed(part.at[solver::BOTTOM].stress), (std::vector<double>{normal, normal, twist}), normal, 1e-8)
          << formulation;
    }
  }
}
