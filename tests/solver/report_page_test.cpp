// The report page of a model that is too large for fields, and reactions by node sets.
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "analyses/reaction_sums.h"
#include "analyses/results.h"
#include "deck/deck_reader.h"
#include "deck_builder.h"
#include "report_page/report_listener.h"
#include "system/linear_solver.h"

using deck_test::scratch_folder;
using solver::model;

namespace {

model read(const std::string& text) {
  const scratch_folder scratch;
  return solver::read_deck(scratch.write("page.inp", text), {});
}

// Bricks of side 1 in a row along x, with 3 x 3 of them across, held at x = 0.
std::string bar(int length) {
  std::string text = "*NODE\n";
  const auto node = [](int i, int j, int k) { return std::to_string(1 + j + 4 * k + 16 * i); };
  for (int i = 0; i <= length; ++i) {
    for (int k = 0; k < 4; ++k) {
      for (int j = 0; j < 4; ++j) {
        text += node(i, j, k) + "," + std::to_string(i) + "," + std::to_string(j) + "," + std::to_string(k) + "\n";
      }
    }
  }
  text += "*ELEMENT, TYPE=C3D8, ELSET=BAR\n";
  int number = 0;
  for (int i = 0; i < length; ++i) {
    for (int k = 0; k < 3; ++k) {
      for (int j = 0; j < 3; ++j) {
        text += std::to_string(++number);
        for (const int up : {0, 1}) {
          text += "," + node(i, j, k + up) + "," + node(i + 1, j, k + up) + "," + node(i + 1, j + 1, k + up) + "," +
                  node(i, j + 1, k + up);
        }
        text += "\n";
      }
    }
  }
  return text +
         "*NSET, NSET=BASE, GENERATE\n1, 16, 1\n*NSET, NSET=LOW\n1, 2, 3, 4, 17\n*NSET, NSET=FREE\n17, 18\n"
         "*MATERIAL, NAME=M\n*ELASTIC\n1000., 0.\n*SOLID SECTION, ELSET=BAR, MATERIAL=M\n*STEP\n*STATIC\n"
         "*BOUNDARY\nBASE, 1, 3\n*CLOAD\n" +
         node(length, 0, 0) + ", 1, 7.\n*END STEP\n";
}

struct solved_bar {
  explicit solved_bar(int length, const std::string& changed = "")
      : m(read(changed.empty() ? bar(length) : changed)), library(m) {
    const auto equations = solver::make_linear_solver(solver::default_solver(), 0);
    solution = solver::solve_static(m, m.steps[0], library, *equations, watch);
  }
  model m;
  solver::library_model library;
  solver::stopwatch watch;
  solver::static_solution solution;
};

// The JSON of a page, without its scripts, which name fields too.
std::string data_of(const std::ostringstream& page) {
  const std::string text = page.str();
  const std::size_t start = text.find("id=\"finites-report\"");
  return text.substr(start, text.find("</script>", start) - start);
}

}  // namespace

TEST(ReportPage, OutlineOfALargeModelHasEdgesAlone) {
  const model m = read(bar(5));
  const solver::page_mesh mesh(m, true, 11);
  EXPECT_TRUE(mesh.faces.empty());
  EXPECT_TRUE(mesh.parts.empty());
  EXPECT_TRUE(mesh.solids.empty());
  EXPECT_EQ(mesh.edges.size(), 4U * (5 + 3 + 3));
  // On the twelve edges of the box, 4 (4 + 2 + 2) within them and 8 corners, and the four nodes within the held face.
  EXPECT_EQ(mesh.nodes.size(), 4U * (4 + 2 + 2) + 8 + 4);
  for (std::size_t n = 0; n < mesh.nodes.size(); ++n) EXPECT_EQ(mesh.number_of_node(mesh.nodes[n]), int(n));
  for (const auto& edge : mesh.edges) {
    EXPECT_GE(mesh.number_of_node(edge[0]), 0);
    EXPECT_GE(mesh.number_of_node(edge[1]), 0);
  }
}

TEST(ReportPage, PageOfALargeModelSaysThatItIsAnOutline) {
  solved_bar bar(2);
  solver::report_listener page(bar.m, 11, {17, 1000000});
  page.solved(bar.m, bar.m.steps[0], bar.solution, solver::recover_results(bar.m, bar.library, bar.solution));
  std::ostringstream out;
  page.write(out, bar.watch);
  const std::string text = out.str();
  EXPECT_NE(text.find("\"outline\":true"), std::string::npos);
  EXPECT_NE(text.find("The model has 18 elements: this page shows its outline"), std::string::npos);
  EXPECT_NE(text.find("\"fields\":[]"), std::string::npos);
  EXPECT_EQ(text.find("\"elements\":{"), std::string::npos);
  EXPECT_NE(text.find("\"reaction_sets\":[{\"set\":\"BASE\",\"nodes\":16"), std::string::npos);
}

TEST(ReportPage, StepsThatThePageHasNoRoomForKeepTablesAndShape) {
  solved_bar bar(2);
  solver::report_listener page(bar.m, 11, {400000, 1});
  const auto results = solver::recover_results(bar.m, bar.library, bar.solution);
  page.solved(bar.m, bar.m.steps[0], bar.solution, results);
  std::ostringstream out;
  page.write(out, bar.watch);
  const std::string text = data_of(out);
  EXPECT_NE(text.find("\"left_out\":[\"Fields and diagrams of 1 steps, from step 1 on: "), std::string::npos);
  EXPECT_NE(text.find("\"name\":\"displacement\""), std::string::npos);
  EXPECT_EQ(text.find("\"stress_solid\""), std::string::npos);
  EXPECT_NE(text.find("\"reaction_sets\":[{\"set\":\"BASE\",\"nodes\":16"), std::string::npos);
  EXPECT_NE(text.find("\"elements\":{"), std::string::npos);

  solver::report_listener roomy(bar.m, 11);
  roomy.solved(bar.m, bar.m.steps[0], bar.solution, results);
  std::ostringstream whole;
  roomy.write(whole, bar.watch);
  EXPECT_NE(data_of(whole).find("\"stress_solid\""), std::string::npos);
  EXPECT_NE(data_of(whole).find("\"left_out\":[]"), std::string::npos);
}

TEST(ReportPage, MembersOfALargeModelAreEdges) {
  const model m = read(
      "*NODE\n1,0,0,0\n2,1,0,0\n3,2,0,0\n*ELEMENT, TYPE=B33, ELSET=B\n1,1,2\n2,2,3\n*MATERIAL, "
      "NAME=M\n*ELASTIC\n1.,0.\n"
      "*BEAM SECTION, ELSET=B, MATERIAL=M, SECTION=RECT\n1.,1.\n*BOUNDARY\n1,1,6\n*STEP\n*STATIC\n*CLOAD\n3,3,1.\n"
      "*END STEP\n");
  EXPECT_EQ(solver::page_mesh(m, true, 11).edges.size(), 2U);
  const solver::page_mesh whole(m, false, 11);
  EXPECT_TRUE(whole.edges.empty());
  ASSERT_EQ(whole.members.size(), 2U);
  EXPECT_EQ(whole.members[1].distance.size(), 11U);
}

// The load of 7 along x at y = z = 0 is carried at the base, all of it in BASE; sets share nodes, and FREE has no held
// one. With the moments of forces about the origin the base is in equilibrium with the load.
TEST(ReactionSums, EverySetWithHeldNodes) {
  const solved_bar bar(3);
  const std::vector<solver::set_reaction> sums = solver::reactions_by_set(bar.m, bar.solution);
  ASSERT_EQ(sums.size(), 2U);
  EXPECT_EQ(sums[0].set, "BASE");
  EXPECT_EQ(sums[0].nodes, 16);
  EXPECT_NEAR(sums[0].sum[0], -7, 1e-9);
  for (std::size_t i = 1; i < 6; ++i) EXPECT_NEAR(sums[0].sum[i], 0, 1e-8);
  EXPECT_EQ(sums[1].set, "LOW");
  EXPECT_EQ(sums[1].nodes, 4);  // node 17 is free
  double low = 0;
  for (int n = 0; n < 4; ++n) low += bar.solution.reaction[solver::freedom(n, 0)];
  EXPECT_NEAR(sums[1].sum[0], low, 1e-12);
  // A bar that is pulled at a corner has stresses from 4 P / A at that side to -2 P / A across, by Navier; of three
  // elements the first row of nodes takes (2 * 4 + 2) / 18 of it.
  EXPECT_NEAR(low, -7 * 10.0 / 18, 0.03 * 7);
}

TEST(ReactionSums, HeldNodesOfNoSetComeLast) {
  std::string text = bar(1);
  text.replace(text.find("BASE, GENERATE\n1, 16, 1"), std::string("BASE, GENERATE\n1, 16, 1").size(),
               "PART, GENERATE\n1, 12, 1");
  text.replace(text.find("BASE, 1, 3"), std::string("BASE, 1, 3").size(), "PART, 1, 3\n13, 1, 3\n14, 1, 1");
  const solved_bar own(1, text);
  const std::vector<solver::set_reaction> sums = solver::reactions_by_set(own.m, own.solution);
  ASSERT_EQ(sums.size(), 3U);
  EXPECT_EQ(sums[0].nodes, 12);
  EXPECT_EQ(sums[2].set, solver::OTHER_SUPPORTS);
  EXPECT_EQ(sums[2].nodes, 2);
  EXPECT_NEAR(sums[0].sum[0] + sums[2].sum[0], -7, 1e-9);
}
