// Beams and cylinders of solids against theory, with the known stiffness of bricks of eight nodes in bending.
#include <gtest/gtest.h>

#include <cmath>

#include "frame_decks.h"
#include "solids_support.h"

using namespace solids_test;
using frame_test::number;

namespace {

constexpr double PI = 3.14159265358979323846;

// Along x, in layers across y; one layer and 1 wide across z.
block beam(double length, int along, int layers, double nu) {
  block b;
  b.count = {along, layers, layers};
  b.nu = nu;
  b.place = [length](double u, double v, double w) { return point{length * u, v, w}; };
  return b;
}

// A quarter of a cylinder of radii 1 and 2, plane strain.
block cylinder(const std::string& kind, int through) {
  block b;
  b.kind = kind;
  b.count = {through, 2 * through, 1};
  b.nu = 0.3;
  b.place = [](double u, double v, double w) {
    return point{(1 + u) * std::cos(PI / 2 * v), (1 + u) * std::sin(PI / 2 * v), 0.25 * w};
  };
  return b;
}

// A unit pressure on the facets inside, by quarters to their nodes.
std::string inner_pressure(const block& b) {
  std::string text;
  for (int j = 0; j < b.count[1]; ++j) {
    const point p = b.at(b.node(0, j, 0)), q = b.at(b.node(0, j + 1, 0));
    for (const int n : {b.node(0, j, 0), b.node(0, j + 1, 0), b.node(0, j, 1), b.node(0, j + 1, 1)}) {
      text += std::to_string(n + 1) + ", 1, " + number(0.25 * (q[1] - p[1]) / 4) + "\n";
      text += std::to_string(n + 1) + ", 2, " + number(0.25 * (p[0] - q[0]) / 4) + "\n";
    }
  }
  return text;
}

double lame_displacement(const block& b, double r) { return (1 + b.nu) / (3 * b.E) * ((1 - 2 * b.nu) * r + 4 / r); }

}  // namespace

// Pure bending of one layer of bricks without Poisson's ratio. The nodes follow the parabola of a beam that is stiffer
// by 1 + (l/h)^2 / 2: at the distance x from the middle of a brick its shear strain is k x instead of 0, whose energy
// is G (k l)^2 / 12 beside E (k h)^2 / 12 of the bending, and G = E / 2.
TEST(AnalysisSolidsBeam, ParasiticShearOfBricksIsWhatTheirShapesGive) {
  for (const int along : {3, 6, 12}) {
    const block b = beam(6, along, 1, 0);
    const double length = 6.0 / along, moment = 100, inertia = 1.0 / 12;
    std::string load = "*STATIC\n*CLOAD\n";
    for (const int n : b.face(0, true))
      load += std::to_string(n + 1) + ", 1, " + number(b.at(n)[1] > 0.5 ? -moment / 2 : moment / 2) + "\n";
    const solved s = solve(read(b.deck("X0, 1\nZ0, 3\n1, 2\n2, 2\n", load)));
    const double curvature = moment / (b.E * inertia) / (1 + length * length / 2);
    for (int i = 1; i <= along; ++i) {
      const double x = length * i, w = curvature * x * x / 2;
      EXPECT_WITHIN(s.u(b.node(i, 0, 0), 'y'), w, w, 1e-9) << along << " " << i;
    }
  }
}

// A cantilever with h/L = 0.1. Of N layers with elements of length h / (2 N) the bending is too stiff by the parasitic
// shear, (l/h)^2 / 2 (1 + nu), and by the contraction across, constant in each layer: (1 - nu) / (1 + nu) (1 - 2 nu) on
// 1 / N^2 of the energy at most. Nothing makes it softer.
TEST(AnalysisSolidsBeam, CantileverConvergesToBeamTheory) {
  double before = 0;
  for (const int layers : {1, 2, 4}) {
    const block b = beam(10, 20 * layers, layers, 0.3);
    const solved s = solve(read(b.deck("X0, 1, 3\n", "*STATIC\n*CLOAD\n" + face_load(b, 0, true, 2, 1))));
    const double factor = 10 * 1.3 / (12 + 11 * 0.3);  // Cowper (1966)
    const double theory = 1000 / (3 * b.E / 12) + 10 * 2 * 1.3 / (factor * b.E);
    const double ratio = s.u(b.node(20 * layers, layers / 2, layers / 2), 'y') / theory;
    const double N2 = layers * layers;
    const double shear = 0.25 / N2 / (2 * 1.3), contraction = (0.7 / (1.3 * 0.4) - 1) / N2;
    EXPECT_LT(ratio, 1.0) << layers;
    EXPECT_GT(ratio, 1 / (1 + shear + contraction) * 0.995) << layers;  // the clamped end hinders contraction as well
    EXPECT_GT(ratio, before) << layers;
    before = ratio;
  }
}

TEST(AnalysisSolidsBeam, ThickCylinderConvergesToLame) {
  for (const char* const kind : {"C3D8", "C3D6"}) {
    double before = 0;
    for (const int through : {4, 8, 16}) {
      const block b = cylinder(kind, through);
      const solved s = solve(read(b.deck("ALL, 3\nY0, 2\nY1, 1\n", "*STATIC\n*CLOAD\n" + inner_pressure(b))));
      const double error = std::fabs(s.u(b.node(0, 0, 0), 'x') / lame_displacement(b, 1) - 1);
      // Second order: four times as good with twice the elements, when the mesh is fine enough. Wedges, of a constant
      // strain in the plane, come to that later.
      const bool brick = std::string(kind) == "C3D8";
      if (before > 0) {
        EXPECT_LT(error, before / (brick ? 3.5 : 3)) << kind << through;
        EXPECT_GT(error, before / 4.5) << kind << through;
      }
      before = error;
      if (through != 16) continue;
      EXPECT_LT(error, brick ? 0.004 : 0.01) << kind;
      EXPECT_WITHIN(s.u(b.node(16, 0, 0), 'x'), lame_displacement(b, 2), lame_displacement(b, 2), 0.01) << kind;
      for (const solver::solid_part& part : s.results.solids) {
        if (part.node != b.node(8, 16, 0)) continue;  // r 1.5, at 45 degrees
        const double across = 4 / (3 * 2.25);
        EXPECT_WITHIN(part.at.principal[0], 1.0 / 3 + across, 1.0, 0.02) << kind;
        EXPECT_WITHIN(part.at.principal[1], 0.3 * 2 / 3, 1.0, 0.02) << kind;
        EXPECT_WITHIN(part.at.principal[2], 1.0 / 3 - across, 1.0, 0.02) << kind;
      }
    }
  }
}

// The decks of the project, as their headings promise.
TEST(AnalysisSolidsBeam, Decks) {
  EXPECT_WITHIN(solve(frame_test::deck("solid_cantilever.inp")).u(364, 'y'), 0.00040306, 0.00040306, 0.111);
  for (const char* const name : {"solid_cylinder.inp", "solid_wedges.inp"}) {
    const solved s = solve(frame_test::deck(name));
    EXPECT_WITHIN(s.u(0, 'x'), 1.90667e-7, 1.90667e-7, 0.05) << name;
    EXPECT_WITHIN(s.u(72, 'x'), 1.21333e-7, 1.21333e-7, 0.05) << name;
  }
}
