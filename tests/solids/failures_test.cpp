// failures_test.cpp: message 1228 and what it leaves alone: singular Jacobians, node counts that are no kind.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>

#include "comparison.h"
#include "finites/fields.h"
#include "finites/finites.h"
#include "guarded_buffer.h"
#include "reference_solid.h"
#include "solid_cases.h"

namespace {

using solid_cases::random_solid;
using support::guarded_buffer;
using support::point;
using support::seeded_random;
using support::solid_answer;
using support::solid_description;
using support::solid_model;
using support::solid_status;

constexpr int OPERATIONS[] = {1, 2, 3, 33, 5, 7, 41, 71, 9};
constexpr std::int32_t WRONG_COUNTS[] = {
    0, 1, 3, 5, 7, 9, 10, 15, 18, 20, 27, 28, 100, -1, -8, 2147483647, -2147483647 - 1};

// The number of the element stands in the text, and blanks fill the field.
void expect_message(const solid_status& status, int number) {
  EXPECT_EQ(status.ierr, 1228);
  ASSERT_EQ(status.msg.size(), 500U);
  EXPECT_NE(status.msg.find(" " + std::to_string(number) + ":"), std::string::npos) << status.msg;
  EXPECT_EQ(status.msg.find('~'), std::string::npos);
  EXPECT_EQ(status.msg.find('\0'), std::string::npos);
  EXPECT_EQ(status.msg.substr(400), std::string(100, ' '));
}

// A call that fails: nothing but IERR and MSG changes.
void expect_untouched(solid_model& model, int op, int node_count) {
  const SOLID_RECORD record = model.record();
  const std::vector<double> before = model.storage();
  guarded_buffer F(27), K(576);
  const double G[3] = {1, 2, 3};
  const solid_status status = model.call(op, 1, node_count, G, F.data(), K.data());
  expect_message(status, model.number(1));
  EXPECT_EQ(F.changed(), std::vector<int>{}) << "operation " << op << ", " << node_count << " nodes";
  EXPECT_EQ(K.changed(), std::vector<int>{}) << "operation " << op << ", " << node_count << " nodes";
  EXPECT_EQ(std::memcmp(&record, &model.record(), sizeof record), 0) << "operation " << op << ", " << node_count;
  EXPECT_EQ(std::memcmp(before.data(), model.storage().data(), before.size() * sizeof(double)), 0);
}

// All nodes in one plane: singular everywhere.
solid_description flat(int nodes) {
  solid_description d;
  const reference::matrix XI = reference::node_coordinates(reference::kind_of(nodes));
  for (dense::index k = 0; k < XI.cols(); ++k) {
    d.nodes.push_back({static_cast<double>(XI(0, k)), static_cast<double>(XI(1, k)), 2.0});
  }
  return d;
}

// A brick whose nodes 3 and 4, and 7 and 8, are one: singular along that edge alone, not at the points.
solid_description collapsed_brick() {
  solid_description d = solid_cases::box(1, 1, 1);
  d.nodes[3] = d.nodes[2];
  d.nodes[7] = d.nodes[6];
  return d;
}

}  // namespace

TEST(SolidFailures, AFlatElementIsReportedByEveryOperation) {
  for (const int nodes : {4, 6, 8}) {
    for (const int op : OPERATIONS) {
      solid_model model({flat(nodes)});
      model.allocate_nonlinear();
      model.set_header(SECOND_ORDER, 1.0);
      expect_untouched(model, op, nodes);
    }
  }
}

TEST(SolidFailures, AnElementWithAllNodesInOnePlaceIsReported) {
  for (const int nodes : {4, 6, 8}) {
    solid_description d;
    d.nodes.assign(static_cast<std::size_t>(nodes), point{1, 2, 3});
    solid_model model({d});
    for (const int op : OPERATIONS) expect_untouched(model, op, nodes);
  }
}

// The limit of a determinant is 1e-20 whatever the unit: a cube of edge 2 h has h^3.
TEST(SolidFailures, ASmallElementIsSingularByTheLimit) {
  solid_model regular({solid_cases::box(4.4e-7, 4.4e-7, 4.4e-7)});  // 1.06e-20
  double K[576] = {};
  const double G[3] = {};
  EXPECT_EQ(regular.call(1, 1, 8, G, nullptr, K).ierr, 0);
  EXPECT_GT(K[0], 0.0);
  solid_model small({solid_cases::box(4.2e-7, 4.2e-7, 4.2e-7)});  // 0.93e-20
  for (const int op : OPERATIONS) expect_untouched(small, op, 8);
}

TEST(SolidFailures, TheMessageHasTheNumberOfTheUser) {
  solid_description d = flat(8);
  d.id = 987654;
  solid_model model({solid_cases::box(1, 1, 1), d});
  double K[576];
  const double G[3] = {};
  expect_message(model.call(1, 2, 8, G, nullptr, K), 987654);
}

TEST(SolidFailures, ANodeCountThatIsNoKindIsReported) {
  for (const std::int32_t count : WRONG_COUNTS) {
    for (const int op : OPERATIONS) {
      solid_model model({solid_cases::box(1, 1, 1)});
      expect_untouched(model, op, count);
    }
  }
}

TEST(SolidFailures, ASuccessAfterAFailureClearsTheStatus) {
  solid_model model({solid_cases::box(1, 1, 1)});
  double K[576];
  const double G[3] = {};
  EXPECT_EQ(model.call(1, 1, 5, G, nullptr, K).ierr, 1228);
  EXPECT_EQ(model.call(1, 1, 8, G, nullptr, K).ierr, 0);
}

// The Jacobian is singular at two nodes only: matrices and forces stand, results at nodes do not.
TEST(SolidFailures, ACollapsedBrickHasForcesButNoResultsAtItsNodes) {
  seeded_random random(6321);
  solid_model model({collapsed_brick()});
  const std::vector<double> u = random.vector(24, 1e-3);
  double K[576];
  const double G[3] = {1, 2, 3};
  EXPECT_EQ(model.call(1, 1, 8, G, nullptr, K).ierr, 0);
  EXPECT_EQ(model.call(2, 1, 8, G, nullptr, K).ierr, 0);
  expect_message(model.results(1, u), 17);
  // Nodes 1 and 2 came before the singular one; points come after all nodes.
  EXPECT_FALSE(std::isnan(model.record().RES50_NODE(4, 2)));
  for (const double word : model.record().RES50_GAUSS.V) EXPECT_TRUE(std::isnan(word));
}

TEST(SolidFailures, TheChainStopsWhereItFails) {
  seeded_random random(6322);
  const std::vector<double> u = random.vector(24, 1e-3);
  solid_model model({collapsed_brick()});
  const std::vector<double> F = model.forces(3, 1, u), local = model.forces(33, 1, u);
  const solid_answer answer = model.answer(1, u);
  expect_message(answer.status, model.number(1));
  EXPECT_EQ(answer.FG, F);  // as far as it came
  for (std::size_t k = 0; k < 8; ++k) {
    for (std::size_t word = 1; word <= 50; ++word) {
      const double expected = word >= 36 && word <= 38 ? local[3 * k + word - 36] : 0.0;
      EXPECT_EQ(answer.RES[50 * k + word - 1], expected) << word;
    }
  }
  EXPECT_EQ(answer.S, std::vector<double>(48, 0.0));
}

TEST(SolidFailures, TheChainOfAFlatElementStopsAtOnce) {
  seeded_random random(6323);
  solid_model model({flat(8)});
  model.allocate_nonlinear();
  const std::vector<double> u = random.vector(24, 1e-3);
  const solid_answer answer = model.answer(1, u);
  expect_message(answer.status, model.number(1));
  EXPECT_EQ(answer.RES, std::vector<double>(400, 0.0));
  EXPECT_EQ(answer.S, std::vector<double>(48, 0.0));
  for (const double f : answer.FG) EXPECT_TRUE(std::isnan(f));
  for (int at = 0; at < 24; ++at) {
    EXPECT_EQ(model.record().U_ELEM.V[at], u[static_cast<std::size_t>(at)]);
    EXPECT_EQ(model.nonlinear().U_NL.V[at], u[static_cast<std::size_t>(at)]);
    EXPECT_EQ(model.record().F_ELEM.V[at], 0.0);
  }
}

TEST(SolidFailures, TheChainWithAWrongNodeCountWritesNoMoreThanItsRoom) {
  for (const std::int32_t count : WRONG_COUNTS) {
    solid_model model({solid_cases::box(1, 1, 1)});
    model.allocate_nonlinear();
    // As many nodes as the count says, 27 at most: what a record has room for.
    const int nodes = std::clamp(count, 0, 27);
    guarded_buffer RES(50 * 27), S(6 * 27), FG(3 * 27);
    const std::vector<double> U(81, 1e-3);
    const std::int32_t one = 1, off = model.entry(1), spare = 0, n = model.extent();
    std::int32_t ierr = -1;
    std::string msg(520, '~');
    GET_ELEM3D(&one, &off, &spare, model.raw(), &n, &count, RES.data(), S.data(), U.data(), FG.data(), &ierr,
               msg.data());
    expect_message({ierr, msg.substr(0, 500)}, model.number(1));
    EXPECT_EQ(msg.substr(500), std::string(20, '~'));
    EXPECT_EQ(RES.changed(), support::range(1, 50 * nodes)) << count;
    EXPECT_EQ(S.changed(), support::range(1, 6 * nodes)) << count;
    EXPECT_EQ(FG.changed(), std::vector<int>{}) << count;
  }
}

TEST(SolidFailures, AnElementWithoutARecordIsReportedAndNotSearched) {
  solid_model model({solid_cases::box(1, 1, 1)});
  const double G[3] = {};
  for (const int elem : {0, -1, 2, 1000000}) {
    guarded_buffer F(27), K(576);
    expect_message(model.call(1, elem, 8, G, F.data(), K.data()), elem);
    EXPECT_EQ(K.changed(), std::vector<int>{});
  }
}
