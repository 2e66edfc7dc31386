// Structures that move without resistance, degrees of freedom that are held because nothing can resist them, and models
// that give no number.
#include <gtest/gtest.h>

#include "analysis_support.h"

using namespace analysis_test;
using solver::element_type;

namespace {

grid sheet(element_type type = element_type::S3, int nx = 4, int ny = 3) {
  return grid(
      nx, ny, [](double u, double v) { return rectangle(4, 3, u, v); }, isotropic(1000, 0.3), 0.05, type);
}

void expect_error(const solver::model& m, const std::vector<std::string>& parts) {
  for (const solver::solver_kind kind : solvers()) {
    const std::string text = error_of(m, kind);
    for (const std::string& part : parts) EXPECT_NE(text.find(part), std::string::npos) << part << "\nnot in: " << text;
  }
}

void expect_note(const solved& s, const std::string& note) {
  for (const std::string& each : s.solution.notes)
    if (each == note) return;
  ADD_FAILURE() << "no note: " << note;
}

}  // namespace

TEST(AnalysisMechanism, FreePlateHasSixMotions) {
  grid g = sheet();
  g.load(g.node(2, 2), 'z', 1);
  expect_error(g.m, {"grid.inp: *STEP: mechanism: 6 motions meet no resistance", "translation x", "translation y",
                     "translation z", "node "});
}

TEST(AnalysisMechanism, HingeAboutALine) {
  // Held on one edge except for the rotation: the far corner moves most.
  grid g = sheet();
  g.fix(g.along_y(0), "xyz");
  g.load(g.node(4, 2), 'z', 1);
  expect_error(g.m, {"mechanism: 1 motion meets no resistance"});
  const std::string text = error_of(g.m);
  const bool far_edge = text.find("node 17 in translation z") != std::string::npos ||
                        text.find("node 18 in translation z") != std::string::npos ||
                        text.find("node 19 in translation z") != std::string::npos ||
                        text.find("node 20 in translation z") != std::string::npos;
  EXPECT_TRUE(far_edge) << text;
}

TEST(AnalysisMechanism, HoldingWhatIsNamedHoldsTheStructure) {
  // What the message names is enough: with these degrees of freedom prescribed the plate can be solved.
  grid g = sheet();
  g.load(g.node(2, 2), 'z', 1);
  const std::string text = error_of(g.m);
  const std::vector<std::string> names = {"translation x", "translation y", "translation z",
                                          "rotation x",    "rotation y",    "rotation z"};
  int found = 0;
  for (std::size_t at = text.find("\n  node "); at != std::string::npos; at = text.find("\n  node ", at + 1)) {
    const int id = std::stoi(text.substr(at + 8));
    for (std::size_t d = 0; d < 6; ++d) {
      const std::string whole = "node " + std::to_string(id) + " in " + names[d];
      if (text.compare(at + 3, whole.size(), whole) != 0) continue;
      g.fix({id - 1}, std::string(1, "xyzXYZ"[d]));
      ++found;
    }
  }
  EXPECT_EQ(found, 6) << text;
  EXPECT_EQ(error_of(g.m), "");
}

TEST(AnalysisMechanism, MissingSupportInOneDirection) {
  grid g = sheet();
  g.fix(g.border(), "xz");
  g.load(g.node(2, 1), 'z', 1);
  expect_error(g.m, {"1 motion meets", "in translation y"});
}

TEST(AnalysisMechanism, LoosePieceIsNamed) {
  // A second sheet beside the first that nothing holds.
  grid g = sheet();
  g.fix(g.border(), "xyzXYZ");
  const int first = static_cast<int>(g.m.nodes.size());
  const grid other = sheet();
  for (solver::node n : other.m.nodes) {
    n.id += 1000;
    n.xyz[2] = 5;
    g.m.nodes.push_back(n);
  }
  for (solver::element e : other.m.elements) {
    e.id += 1000;
    for (int& n : e.nodes) n += first;
    g.m.elements.push_back(e);
  }
  const std::string text = error_of(g.m);
  EXPECT_NE(text.find("6 motions meet"), std::string::npos) << text;
  EXPECT_NE(text.find("node 10"), std::string::npos) << text;
}

TEST(AnalysisMechanism, DrillingOfAFlatPlateIsHeld) {
  grid g = sheet();
  g.m.shell_sections[0].drilling = 0;
  g.fix(g.border(), "xyz");
  g.load(g.node(2, 1), 'z', 1);
  const solved s = solve(g.m);
  expect_note(s, "held the rotation about the normal of 1 flat part");
  for (int n = 0; n < 20; ++n) EXPECT_EQ(std::abs(s.u(n, 'Z')) < 1e-12, true);
  // The deflection is that of the plate with the rotation held in the deck.
  grid held = g;
  held.fix({held.node(0, 0)}, "Z");
  EXPECT_WITHIN(s.u(g.node(2, 1), 'z'), solve(held.m).u(g.node(2, 1), 'z'), 1e-2, 1e-10);
}

TEST(AnalysisMechanism, DrillingIsHeldInATiltedPlaneToo) {
  grid g(
      4, 3,
      [](double u, double v) {
        return point{3 * u, 2 * v + u, v - 2 * u};
      },
      isotropic(1000, 0.3), 0.05);
  g.m.shell_sections[0].drilling = 0;
  g.fix(g.border(), "xyz");
  g.load(g.node(2, 1), 'z', 1);
  expect_note(solve(g.m), "held the rotation about the normal of 1 flat part");
}

TEST(AnalysisMechanism, DrillingMomentOnAFlatPlateIsAnError) {
  grid g = sheet();
  g.m.shell_sections[0].drilling = 0;
  g.fix(g.border(), "xyz");
  g.load(g.node(2, 1), 'Z', 1);
  expect_error(g.m, {"mechanism: node ", "loaded in rotation z", "flat part"});
}

TEST(AnalysisMechanism, MembraneNodesAreHeldAcrossTheSheet) {
  for (const bool tilted : {false, true}) {
    const auto place = [&](double u, double v) {
      return tilted ? point{3 * u, 2 * v + u, v - 2 * u} : rectangle(4, 3, u, v);
    };
    grid g(4, 3, place, isotropic(1000, 0.3), 0.05, element_type::M3D3);
    g.fix(g.along_y(0), "xyz");
    const point a = place(0, 0), b = place(1, 0);
    for (int i = 0; i < 3; ++i) {
      const double along = b[static_cast<std::size_t>(i)] - a[static_cast<std::size_t>(i)];
      if (along != 0) g.load_line(g.along_y(4), "xyz"[i], along);
    }
    const solved s = solve(g.m);
    expect_note(s, "held 16 translations across flat membranes");
    expect_note(s, "held 60 rotations of nodes that only membranes join");
    EXPECT_LT(s.solution.residual, 1e-13);
  }
}

TEST(AnalysisMechanism, LoadAcrossAFlatMembrane) {
  grid g = sheet(element_type::M3D3);
  g.fix(g.along_y(0), "xyz");
  g.load(g.node(4, 1), 'z', 1);
  expect_error(g.m, {"mechanism: node 18 is loaded in translation z"});
  grid pressed = sheet(element_type::M3D3);
  pressed.fix(pressed.along_y(0), "xyz");
  pressed.pressure(1);
  expect_error(pressed.m, {"mechanism: node 5 is loaded in translation z"});
}

TEST(AnalysisMechanism, MomentOnAMembraneNode) {
  grid g = sheet(element_type::M3D3);
  g.fix(g.along_y(0), "xyz");
  g.load(g.node(4, 1), 'X', 1);
  expect_error(g.m, {"mechanism: node 18 is loaded in rotation x", "only membranes"});
}

TEST(AnalysisMechanism, NodeThatNoElementJoins) {
  grid g = sheet();
  g.fix(g.along_y(0), "xyzXYZ");
  solver::node lone;
  lone.id = 99;
  lone.xyz = {9, 9, 9};
  g.m.nodes.push_back(lone);
  expect_note(solve(g.m), "held 1 node that no element with stiffness joins");
  g.load(20, 'y', 1);
  expect_error(g.m, {"mechanism: node 99 is loaded in translation y", "no element with stiffness joins it"});
}

TEST(AnalysisMechanism, EverythingPrescribed) {
  grid g = sheet();
  for (int i = 0; i <= 4; ++i) g.fix(g.along_y(i), "xyzXYZ");
  g.pressure(2);
  const solved s = solve(g.m);
  EXPECT_EQ(s.solution.equations, 0U);
  double sum = 0;
  for (int n = 0; n < 20; ++n) sum += s.reaction(n, 'z');
  EXPECT_WITHIN(sum, -24.0, 24, 1e-12);
}

TEST(AnalysisMechanism, ThinPlateIsNoMechanism) {
  // A thickness of 1e-4 of the span: soft, but held.
  grid g = grid(
      20, 20, [](double u, double v) { return rectangle(1, 1, u, v); }, isotropic(2e11, 0.3), 1e-4);
  g.fix(g.along_y(0), "xyzXYZ");
  g.load(g.node(20, 10), 'z', 1e-6);
  for (const solver::solver_kind kind : solvers()) EXPECT_EQ(error_of(g.m, kind), "");
}

TEST(AnalysisMechanism, BadElementsAreNamed) {
  grid flat = sheet();
  flat.m.nodes[1].xyz = flat.m.nodes[0].xyz;
  flat.m.elements[1].line = 77;
  expect_error(flat.m, {"*ELEMENT: element ", "has no area"});

  grid bare = sheet();
  bare.m.elements[5].section = -1;
  bare.m.elements[5].line = 31;
  expect_error(bare.m, {"grid.inp:31: *ELEMENT: element 6 has no *SHELL SECTION"});

  grid thin = sheet();
  thin.fix(thin.border(), "xyz");
  thin.m.shell_sections[0].thickness = 1e200;
  thin.m.elements[0].line = 12;
  expect_error(thin.m, {"grid.inp:12: *ELEMENT: the stiffness of element 1 is not finite"});

  grid eccentric = sheet(element_type::M3D3);
  eccentric.m.shell_sections[0].offset = 0.5;
  expect_error(eccentric.m, {"OFFSET on membrane element 1"});

  grid weightless = sheet();
  weightless.fix(weightless.border(), "xyz");
  weightless.gravity(9.81, {0, 0, -1});
  expect_error(weightless.m, {"*DLOAD: gravity on element 1, but material ELASTIC has no *DENSITY"});
}
