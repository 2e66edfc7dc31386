// The least and largest values of a step, and where they are.
#include <gtest/gtest.h>

#include <algorithm>

#include "analyses/extremes.h"
#include "frame_decks.h"

using namespace frame_test;

namespace {

std::vector<solver::quantity_range> ranges(const solver::model& m) {
  const solved s = solve(m);
  return solver::ranges_of(m, s.solution, s.results);
}

bool has(const std::vector<solver::quantity_range>& all, const std::string& name) {
  return std::any_of(all.begin(), all.end(), [&](const solver::quantity_range& r) { return r.name == name; });
}

solver::quantity_range range(const std::vector<solver::quantity_range>& all, const std::string& name) {
  const auto found =
      std::find_if(all.begin(), all.end(), [&](const solver::quantity_range& r) { return r.name == name; });
  if (found != all.end()) return *found;
  ADD_FAILURE() << "no " << name;
  return {};
}

void expect_value(const solver::model& m, const solver::placed_value& found, double value, const std::string& place) {
  EXPECT_NEAR(found.value, value, 1e-9 * std::fabs(value));
  EXPECT_EQ(place_name(m, found.at), place);
}

}  // namespace

// A simple beam of length L = 4000 under q = -3 along local y: M = q L^2 / 8 and w = 5 q L^4 / 384 E I in the middle,
// V = q L / 2 at the ends. In two elements the middle is a node, in one it lies within.
TEST(AnalysisExtremes, SimpleBeam) {
  for (const int elements : {1, 2}) {
    straight_member beam;
    beam.elements = elements;
    const solver::model m = read(beam.deck("", elements == 1 ? "1, 1, 4\n2, 2, 3\n" : "1, 1, 4\n3, 2, 3\n",
                                           "*STATIC\n*DLOAD\nMEMBER, P1, -3\n"));
    const auto all = ranges(m);
    const solver::quantity_range moment = range(all, "Mz"), shear = range(all, "Vy");
    expect_value(m, moment.largest, 6e6, "element 1 at 2000");
    EXPECT_NEAR(moment.least.value, 0, 1e-3);
    expect_value(m, shear.least, -6000, "element 1 at 0");
    expect_value(m, shear.largest, 6000, elements == 1 ? "element 1 at 4000" : "element 2 at 2000");
    const double w = 5 * 3 * 4000.0 * 4000 * 4000 * 4000 / (384 * beam.E * beam.inertia_xy);
    expect_value(m, range(all, "displacement").largest, w, elements == 1 ? "element 1 at 2000" : "node 2");
    if (elements == 2) expect_value(m, range(all, "uy").least, -w, "node 2");
    const solver::quantity_range reaction = range(all, "reaction_uy");
    expect_value(m, reaction.least, 6000, "node 1");  // not the nodes without a reaction
    expect_value(m, reaction.largest, 6000, "node 1");
    EXPECT_FALSE(has(all, "von_mises_top"));
    EXPECT_FALSE(has(all, "solid_von_mises"));
    EXPECT_FALSE(has(all, "My"));
  }
}

// A sheet of width 2 and thickness 0.1 under a tension of 10: N1 = 5, stress 50 everywhere; u = 50 / 1000 * 3.
TEST(AnalysisExtremes, SheetInTension) {
  grid g(
      3, 2, [](double u, double v) { return rectangle(3, 2, u, v); }, isotropic(1000, 0.3), 0.1);
  g.fix(g.along_y(0), "xXYZz");
  g.fix({g.node(0, 0)}, "y");
  g.load_line(g.along_y(3), 'x', 10);
  for (std::size_t n = 0; n < g.m.nodes.size(); ++n) g.m.nodes[n].id = solver::number_of(n) + 1;
  const auto all = ranges(g.m);
  for (const char* const name : {"first_top", "first_middle", "von_mises_bottom"}) {
    expect_value(g.m, range(all, name).largest, 50, "node 1");
    EXPECT_NEAR(range(all, name).least.value, 50, 1e-9);
  }
  EXPECT_NEAR(range(all, "N1").least.value, 5, 1e-9);
  EXPECT_NEAR(range(all, "ux").largest.value, 0.15, 1e-12);
  EXPECT_FALSE(has(all, "N"));
}
