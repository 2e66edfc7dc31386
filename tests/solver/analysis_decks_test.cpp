// The decks of the project, solved from their files: what the heading of each states must come out.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "frame_decks.h"

using namespace analysis_test;
using frame_test::deck;

namespace {

// Those that are made at build time.
solver::model large_deck(const std::string& name) { return solver::read_deck(FINITES_LARGE_DECKS "/" + name); }

std::vector<int> set(const solver::model& m, const std::string& name) {
  const auto found =
      std::find_if(m.nsets.begin(), m.nsets.end(), [&](const solver::named_set& s) { return s.name == name; });
  return found == m.nsets.end() ? std::vector<int>() : found->members;
}

}  // namespace

TEST(AnalysisDecks, CantileverStrip) {
  const solver::model m = deck("cantilever_strip.inp");
  for (const int n : set(m, "TIP")) EXPECT_WITHIN(solve(m).u(n, 'z'), -0.1, 0.1, 1e-3);
}

TEST(AnalysisDecks, OffsetStrip) {
  const solver::model m = deck("offset_strip.inp");
  const solved s = solve(m);
  ASSERT_FALSE(set(m, "TIP").empty());
  for (const int n : set(m, "TIP")) {
    EXPECT_WITHIN(s.u(n, 'z'), -0.315, 0.315, 1e-8);
    EXPECT_WITHIN(s.u(n, 'x'), 0.00516, 0.00516, 1e-8);
  }
}

TEST(AnalysisDecks, OrthotropicStrip) {
  const solver::model m = deck("orthotropic_strip.inp");
  const solved s = solve(m);
  const std::vector<int> tip = set(m, "TIP");
  ASSERT_FALSE(tip.empty());
  for (const int n : tip) EXPECT_WITHIN(s.u(n, 'x'), 0.01, 0.01, 1e-6);
  EXPECT_WITHIN(s.u(tip.front(), 'z'), -0.15, 0.15, 1e-5);
  EXPECT_WITHIN(s.u(tip.back(), 'y') - s.u(tip.front(), 'y'), -0.000125, 0.000125, 1e-5);
}

TEST(AnalysisDecks, WoundCylinder) {
  const solver::model m = deck("wound_cylinder.inp");
  const solved s = solve(m);
  ASSERT_EQ(set(m, "ON_X").size(), 2U);
  for (const int n : set(m, "ON_X")) EXPECT_WITHIN(s.u(n, 'x'), 0.001, 0.001, 1e-6);
  for (const int n : set(m, "ON_Y")) EXPECT_WITHIN(s.u(n, 'y'), 0.001, 0.001, 1e-6);
  for (const int n : set(m, "HEAD")) EXPECT_WITHIN(s.u(n, 'z'), -0.000125, 0.001, 1e-6);
  for (const solver::element_result& e : s.results.elements) EXPECT_WITHIN(e.force[0], 8.0, 8.0, 1e-6);
}

TEST(AnalysisDecks, HeatedStrip) {
  const solver::model m = deck("heated_strip.inp");
  const solved s = solve(m);
  const int corner = set(m, "TIP").front();
  EXPECT_WITHIN(s.u(corner, 'x'), 0.006, 0.006, 1e-8);
  EXPECT_WITHIN(s.u(corner, 'z'), -0.12, 0.12, 1e-8);
  for (const solver::element_result& e : s.results.elements)
    for (const solver::surface_stress& at : e.at) EXPECT_LT(at.equivalent, 1e-8 * 200000 * 1.2e-5 * 50);
}

TEST(AnalysisDecks, SquarePlate) {
  const solver::model m = large_deck("square_plate.inp");
  EXPECT_WITHIN(solve(m).u(set(m, "MIDDLE").front(), 'z'), 0.0022181, 0.0022181, 0.005);
}

TEST(AnalysisDecks, MembranePatch) {
  const solved s = solve(deck("membrane_patch.inp"));
  for (const solver::nodal_result& n : s.results.nodes)
    EXPECT_WITHIN(std::vector<double>(n.top.begin(), n.top.end()),
                  (std::vector<double>{4000.0 / 3, 4000.0 / 3, 0, 400, 0, 0}), 1000.0, 1e-10);
}

TEST(AnalysisDecks, ScordelisLoRoof) {
  const solver::model m = large_deck("scordelis_lo_tri.inp");
  const std::vector<int> node = set(m, "FREE_EDGE_MIDDLE");
  ASSERT_EQ(node.size(), 1U);
  EXPECT_WITHIN(solve(m).u(node.front(), 'z'), -0.3024, 0.3024, 0.02);
}
