// random_solids_test.cpp: seeded random and degenerate solids. Whatever their records hold, a call ends, and it writes
// nothing but its results. Under the sanitizers the same calls show that nothing else goes wrong either.
//
// The environment variable FINITES_ROBUSTNESS_CALLS sets the number of calls; without it there are 20,000.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <limits>

#include "finites/fields.h"
#include "finites/finites.h"
#include "guarded_buffer.h"
#include "solid_cases.h"
#include "solids/results.h"

namespace {

using support::guarded_buffer;
using support::seeded_random;
using support::solid_description;
using support::solid_model;

constexpr int CALLS_A_MODEL = 20;

int call_count() {
  const char* text = std::getenv("FINITES_ROBUSTNESS_CALLS");
  const long count = text != nullptr ? std::strtol(text, nullptr, 10) : 20000;
  return count < 1 ? 1 : count > 10000000 ? 10000000 : static_cast<int>(count);
}

template <class T, std::size_t N>
T any_of(seeded_random& random, const T (&values)[N]) {
  return values[random.integer(0, static_cast<int>(N) - 1)];
}

// A number that a broken model may hold.
double broken_value(seeded_random& random) {
  constexpr double inf = std::numeric_limits<double>::infinity();
  constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();
  constexpr double broken[] = {0.0,  -0.0,   1.0,  -1.0,   0.5, -0.5, 1e-308, 1e308, -1e308,       4e9, -4e9,
                               1e19, 1e-320, 1e-7, 4600.0, 7.0, inf,  -inf,   1e-20, not_a_number, 2.9};
  return any_of(random, broken);
}

std::int32_t any_count(seeded_random& random, std::int32_t right) {
  constexpr std::int32_t wrong[] = {
      0, 1, 4, 5, 6, 8, 9, 10, 15, 18, 20, 27, 28, -1, 1000000, 2147483647, -2147483647 - 1};
  return random.integer(0, 2) == 0 ? any_of(random, wrong) : right;
}

std::int32_t any_operation(seeded_random& random) {
  constexpr std::int32_t codes[] = {1, 2, 3, 33, 5, 7, 71, 41, 9, 0, -1, 401, 2147483647, -2147483647 - 1};
  return any_of(random, codes);
}

solid_description any_solid(seeded_random& random) {
  constexpr int counts[] = {4, 6, 8};
  solid_description d = solid_cases::random_solid(random, any_of(random, counts));
  for (int i = random.integer(0, 3); i > 0; --i) {
    const std::size_t k = static_cast<std::size_t>(random.integer(0, static_cast<int>(d.nodes.size()) - 1));
    switch (random.integer(0, 4)) {
      case 0: d.nodes[k] = d.nodes[0]; break;
      case 1: d.nodes[k][static_cast<std::size_t>(random.integer(0, 2))] = broken_value(random); break;
      case 2: d.young = broken_value(random); break;
      case 3: d.poisson = broken_value(random); break;
      default: d.stiff_factor = random.integer(0, 1) == 0 ? 0.0F : std::numeric_limits<float>::infinity(); break;
    }
  }
  return d;
}

void expect_within(const guarded_buffer& buffer, int count, const char* what) {
  for (const int position : buffer.changed())
    ASSERT_TRUE(position >= 1 && position <= count) << what << " " << position;
}

// FINITES_SOLID_3D, with an element and a node count that may be wrong. The record has room for nine nodes, so that a
// count up to there meets nodes of its list, of which those that nobody gave are NaN.
void element_call(seeded_random& random, solid_model& model) {
  const int nodes = model.nodes(1);
  const std::int32_t count = any_count(random, nodes), op = any_operation(random);
  const int elem = random.integer(0, 20) == 0 ? random.integer(-2, 4) : 1;
  const double G[3] = {broken_value(random), 1.0, -2.0};
  guarded_buffer F(27), K(576);
  const support::solid_status status = model.call(op, elem, count, G, F.data(), K.data());
  expect_within(F, status.ierr == 0 ? 3 * count : 0, "F");
  expect_within(K, status.ierr == 0 ? 24 * 3 * count : 0, "K");
  ASSERT_TRUE(status.ierr == 0 || status.ierr == 1228) << status.ierr;
  ASSERT_EQ(status.msg.find('~') == std::string::npos, status.ierr != 0);
}

void chain_call(seeded_random& random, solid_model& model) {
  const std::int32_t count = any_count(random, model.nodes(1)), one = random.integer(0, 20) == 0 ? 5 : 1;
  const std::int32_t spare = 0, n = model.extent(), off = random.integer(0, 5) == 0 ? -2147483647 - 1 : model.entry(1);
  std::vector<double> U = random.vector(81, 1e-3);
  if (random.integer(0, 3) == 0) U[static_cast<std::size_t>(random.integer(0, 80))] = broken_value(random);
  guarded_buffer RES(50 * 27), S(6 * 27), FG(81);
  std::int32_t ierr = -1;
  std::string msg(520, '~');
  GET_ELEM3D(&one, &off, &spare, model.raw(), &n, &count, RES.data(), S.data(), U.data(), FG.data(), &ierr, msg.data());
  const int nodes = std::clamp(count, 0, 27);
  expect_within(RES, 50 * nodes, "RES");
  expect_within(S, 6 * nodes, "S");
  expect_within(FG, 3 * nodes, "FG");
  ASSERT_TRUE(ierr == 0 || ierr == 1228) << ierr;
  ASSERT_EQ(msg.substr(500), std::string(20, '~'));
}

void picking_call(seeded_random& random, solid_model& model) {
  model.record().NNODE = any_count(random, model.nodes(1));
  for (int k = 1; k <= model.nodes(1); ++k) {
    std::array<double, 6> e{};
    for (double& equation : e) equation = random.integer(0, 2) == 0 ? broken_value(random) : random.integer(-3, 40);
    model.set_equations(1, k, e);
  }
  // Places of the list that nobody gave: a node that there is.
  for (int k = model.nodes(1) + 1; k <= 9; ++k) model.record().NODE_OFF(k) = model.node_block(1, 1);
  const std::vector<double> UG(static_cast<std::size_t>(random.integer(1, 30)), 2.5);
  const std::int32_t one = random.integer(0, 20) == 0 ? -3 : 1, n = model.extent(), off = model.entry(1);
  const std::int32_t NUG = random.integer(0, 5) == 0 ? -1 : static_cast<std::int32_t>(UG.size());
  if (random.integer(0, 3) == 0) model.A()(off) = broken_value(random);
  std::int32_t NN = any_count(random, 8);
  GET_NONLIN_UGLO_SOLIDELEM_RAM(&one, &NN, &off, model.raw(), &n, UG.data(), &NUG);
  guarded_buffer AXES(9);
  TRFA_3DSOLID(&one, &NN, model.raw(), &n, AXES.data());
  expect_within(AXES, 9, "AXES");
}

void reactions_call(seeded_random& random, solid_model& model) {
  const std::int32_t load = random.integer(1, 3), n = model.extent(), NN = random.integer(-1, 8);
  std::int32_t ID[8];
  for (std::int32_t& joint : ID) joint = random.integer(-1, 9);
  const std::vector<double> F(24, broken_value(random));
  RAMSR_SOLID(&load, &n, model.raw(), &NN, ID, F.data());
}

void record_calls(seeded_random& random) {
  guarded_buffer R(50), SN(48), EN(48);
  std::vector<double> words(50);
  for (double& word : words) word = random.integer(0, 1) == 0 ? broken_value(random) : random.uniform(-1e3, 1e3);
  R.set_input(words);
  UPDATE_PRINCIPAUX_RES50_SOLID_DBL(R.data());
  for (const int position : R.changed()) ASSERT_TRUE(position >= 22 && position <= 25) << position;
  float narrow[50];
  for (std::size_t at = 0; at < 50; ++at) {
    narrow[at] = std::fabs(words[at]) > 1e38 ? std::numeric_limits<float>::infinity() : static_cast<float>(words[at]);
  }
  UPDATE_PRINCIPAUX_RES50_SOLID(narrow);
  const std::vector<double> points(48, broken_value(random));
  SOLID_EXTRAPOLATE_BRICK(any_count(random, 8), points.data(), points.data(), SN.data(), EN.data());
  expect_within(SN, 48, "SN");
  expect_within(EN, 48, "EN");
}

}  // namespace

TEST(RandomSolids, EndAndWriteTheirResultsAlone) {
  seeded_random random(20261120);
  const int count = call_count();
  for (int done = 0; done < count;) {
    solid_model model({any_solid(random), solid_cases::random_solid(random, 8)});
    if (random.integer(0, 1) == 0) {
      model.allocate_nonlinear();
      for (double& s : model.nonlinear().GAUSS_STRESS.V) s = broken_value(random);
    }
    const SOLID_RECORD other = model.record(2);
    for (int i = 0; i < CALLS_A_MODEL && done < count; ++i, ++done) {
      model.set_header(SECOND_ORDER, random.integer(0, 4) == 0 ? broken_value(random) : random.integer(0, 3));
      model.set_header(ANALYSIS_STATE, random.integer(0, 4) == 0 ? broken_value(random) : random.integer(0, 1));
      model.set_header(STEP_COUNTER, random.integer(0, 4) == 0 ? broken_value(random) : random.integer(0, 1));
      switch (random.integer(0, 9)) {
        case 0: chain_call(random, model); break;
        case 1: picking_call(random, model); break;
        case 2: reactions_call(random, model); break;
        case 3: record_calls(random); break;
        default: element_call(random, model); break;
      }
      if (::testing::Test::HasFatalFailure()) return;
    }
    // Calls of element 2 may fill its results; what describes it stays.
    ASSERT_EQ(std::memcmp(&other, &model.record(2), offsetof(SOLID_RECORD, U_ELEM)), 0);
  }
}
