// engine_input_test.cpp: what the plate entry hands to an engine, for three and for four nodes.
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "comparison.h"
#include "finites/fields.h"
#include "scene.h"

using scenes::ALL_OPERATIONS;
using scenes::for_all_scenes;
using scenes::plate_description;
using scenes::plate_model;
using scenes::scene;
using scenes::seeded_random;
using scenes::some_data;
using scenes::source;
using scenes::with_zeros;

namespace {

std::vector<double> sum(std::vector<double> a, const std::vector<double>& b) {
  for (std::size_t i = 0; i < a.size(); ++i) a[i] += b[i];
  return a;
}

// Random values for the 24 places of the exchange area, also for those of a missing fourth node.
std::vector<double> fill_displacements(plate_model& model, seeded_random& random, std::size_t order) {
  std::vector<double> u = random.vector(24, 1.0);
  model.set_displacements(u);
  u.resize(order);
  return u;
}

}  // namespace

TEST(EngineIsGiven, OneCallByEveryOperationAndNoneByOtherCodes) {
  for_all_scenes([](const scene& s, seeded_random&) {
    for (const int op : ALL_OPERATIONS) {
      forget_engine_calls();
      s.ask([&](plate_model& model) { return plate_calls::call(model, op, 2, some_data()).op; });
      EXPECT_EQ(last_engine_call().count, 1) << op;
      EXPECT_EQ(last_engine_call().op, op == 41 || op == 401 ? 4 : op);
      EXPECT_EQ(last_engine_call().ident, 20) << op;
      EXPECT_EQ(last_engine_call().kind, s.nodes() == 3 ? 10 : 20) << op;
    }
    for (const int op : {0, 6, 11, 34, 70, 400, -1}) {
      forget_engine_calls();
      s.ask([&](plate_model& model) { return plate_calls::call(model, op, 2, some_data()).op; });
      EXPECT_EQ(last_engine_call().count, 0) << op;
    }
  });
}

TEST(EngineIsGiven, TheNodeListOfThePlate) {
  for_all_scenes([](const scene& s, seeded_random&) {
    s.ask([](plate_model& model) {
      plate_calls::call(model, 1, 2);
      const VECTOR<4, std::int32_t>& list = model.plate(2).NODE_PTR;
      EXPECT_EQ(last_engine_call().node_list, std::vector<std::int32_t>(list.V, list.V + 4));
      return 0;
    });
  });
}

// Each node less its own offset; a triangle has zeros in the fourth place, whatever offset stands there.
TEST(EngineIsGiven, TheCoordinatesLessTheOffsets) {
  for_all_scenes([](const scene& s, seeded_random&) {
    std::vector<double> expected(12, 0.0);
    for (std::size_t n = 0; n < s.nodes(); ++n) {
      for (std::size_t i = 0; i < 3; ++i) expected[3 * n + i] = s.description().nodes[n][i] - s.offset(n)[i];
    }
    for (const int op : ALL_OPERATIONS) {
      s.ask([&](plate_model& model) { return plate_calls::call(model, op, 2, some_data()).op; });
      EXPECT_EQ(last_engine_call().xyz, expected) << op;
    }
  });
}

// ------------------------------------------------------------------------------------------------ displacements

TEST(EngineIsGiven, TheDisplacementsOfItsOwnPoints) {
  for_all_scenes([](const scene& s, seeded_random& random) {
    for (const int op : {3, 33, 5, 7}) {
      const std::vector<double> u = s.ask([&](plate_model& model) {
        std::vector<double> set = fill_displacements(model, random, s.order());
        plate_calls::call(model, op, 2, some_data());
        return set;
      });
      EXPECT_CLOSE(last_engine_call().U, with_zeros(s.displaced(u), 24), 4.0, 8.0) << op;
    }
  });
}

TEST(EngineIsGiven, NoDisplacementsWhereNoneAreRead) {
  for_all_scenes([](const scene& s, seeded_random& random) {
    for (const int op : {1, 2, 4, 41, 401, 71, 8, 9, 10}) {
      s.ask([&](plate_model& model) {
        fill_displacements(model, random, s.order());
        return plate_calls::call(model, op, 2, some_data()).op;
      });
      EXPECT_EQ(last_engine_call().U, std::vector<double>(24, 0.0)) << op;
      EXPECT_EQ(last_engine_call().U_TOTAL, std::vector<double>(24, 0.0)) << op;
    }
  });
}

// Total displacements are the accumulated ones of the plate plus the current ones, and the offsets move them too.
TEST(EngineIsGiven, TheTotalDisplacements) {
  for_all_scenes([](const scene& s, seeded_random& random) {
    for (const int op : {3, 33}) {
      const std::vector<double> stored = random.vector(24, 1.0);
      std::vector<double> u;
      s.ask([&](plate_model& model) {
        model.allocate_state();
        for (double& value : model.state(1).STORED_DISPLACEMENTS.V) value = 77.0;
        for (double& value : model.state(2).STORED_NODAL_FORCES.V) value = 99.0;
        std::copy(stored.begin(), stored.end(), model.state(2).STORED_DISPLACEMENTS.data());
        u = fill_displacements(model, random, s.order());
        return plate_calls::call(model, op, 2).op;
      });
      EXPECT_CLOSE(last_engine_call().U, with_zeros(s.displaced(u), 24), 4.0, 8.0) << op;
      EXPECT_CLOSE(last_engine_call().U_TOTAL, with_zeros(s.displaced(sum(u, stored)), 24), 8.0, 8.0) << op;
    }
  });
}

TEST(EngineIsGiven, TheCurrentDisplacementsAsTheTotalWithoutAState) {
  for_all_scenes([](const scene& s, seeded_random& random) {
    for (const int op : {3, 33}) {
      s.ask([&](plate_model& model) {
        fill_displacements(model, random, s.order());
        return plate_calls::call(model, op, 2).op;
      });
      EXPECT_EQ(last_engine_call().U_TOTAL, last_engine_call().U) << op;
      EXPECT_GT(support::max_norm(last_engine_call().U), 0.0) << op;
    }
  });
}

// ------------------------------------------------------------------------------------------------ stored forces

namespace {

struct geometric_case {
  int op, second_order, analysis_state, step_counter;
  int flag;         // what the engine gets
  bool has_points;  // are the stored forces given to it?
};

constexpr geometric_case GEOMETRIC_CASES[] = {
    {1, 1, 0, 0, 1, true},   {1, 1, 1, 1, 1, true},   {1, 1, 1, -1, 1, true}, {1, 1, 1, 0, 0, false},
    {1, 0, 0, 0, 0, false},  {1, 2, 0, 0, 0, false},  {1, 3, 0, 0, 0, false}, {71, 0, 0, 0, 0, true},
    {71, 1, 1, 0, 0, true},  {71, 1, 1, 3, 0, true},  {7, 1, 0, 0, 0, false}, {2, 1, 0, 0, 0, false},
    {3, 1, 0, 0, 0, false},  {33, 1, 0, 0, 0, false}, {4, 1, 0, 0, 0, false}, {8, 1, 0, 0, 0, false},
    {10, 1, 0, 0, 0, false},
};

void set_analysis(plate_model& model, const geometric_case& c) {
  model.set_header(SECOND_ORDER, c.second_order);
  model.set_header(ANALYSIS_STATE, c.analysis_state);
  model.set_header(STEP_COUNTER, c.step_counter);
}

}  // namespace

// The flag is set for operation 1 alone. Six forces of each point stand in columns 37 to 42 of its block, the rest is
// zero; operation 7 takes its forces from the displacements.
TEST(EngineIsGiven, TheStoredForcesOfEveryPoint) {
  for_all_scenes([](const scene& s, seeded_random& random) {
    for (const geometric_case& c : GEOMETRIC_CASES) {
      const std::vector<double> stored = random.vector(24, 50.0);
      s.ask([&](plate_model& model) {
        set_analysis(model, c);
        model.allocate_state();
        for (double& value : model.state(1).STORED_NODAL_FORCES.V) value = 77.0;
        for (double& value : model.state(2).STORED_DISPLACEMENTS.V) value = 0.5;
        std::copy(stored.begin(), stored.end(), model.state(2).STORED_NODAL_FORCES.data());
        return plate_calls::call(model, c.op, 2, some_data()).op;
      });
      EXPECT_EQ(last_engine_call().geometric, c.flag)
          << "operation " << c.op << ", SECOND_ORDER " << c.second_order << ", STEP_COUNTER " << c.step_counter;
      if (!c.has_points) continue;
      std::vector<double> points(360, 0.0);
      for (std::size_t p = 0; p < 4; ++p) {
        for (std::size_t i = 0; i < 6; ++i) points[90 * p + 36 + i] = stored[6 * p + i];
      }
      EXPECT_EQ(last_engine_call().points, points) << "operation " << c.op;
    }
  });
}

TEST(EngineIsGiven, ZeroForcesWithoutAState) {
  for_all_scenes([](const scene& s, seeded_random&) {
    for (const int op : {1, 71}) {
      s.ask([&](plate_model& model) {
        model.set_header(SECOND_ORDER, 1);
        return plate_calls::call(model, op, 2).op;
      });
      EXPECT_EQ(last_engine_call().points, std::vector<double>(360, 0.0)) << op;
    }
  });
}

// ------------------------------------------------------------------------------------------------ the call block

namespace {

// The 50 values that an operation gives, from some_data() and the description.
std::vector<double> expected_loads(int op, const plate_description& d) {
  std::vector<double> L(51, 0.0);  // from 1
  const auto place = [&L](std::size_t first, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) L[first + i] = some_data()[i];
  };
  if (op == 2) L[4] = d.unit_weight / 9810.0 * d.mass_factor;
  if (op == 8) L[4] = d.unit_weight;
  if (op == 4) place(10, 6);
  if (op == 41) place(5, 3);
  if (op == 401 || op == 5) place(26, 2);
  if (op == 9) place(16, 3);
  if (op == 10) place(16, 9);
  L[35] = d.formulation == 98 ? d.modifier_membrane * 0.01 : d.modifier_membrane;
  L[36] = d.modifier_membrane;
  L[37] = d.modifier_bending;
  L[38] = d.modifier_shear;
  return std::vector<double>(L.begin() + 1, L.end());
}

}  // namespace

TEST(EngineIsGiven, TheFiftyValuesOfItsOperation) {
  seeded_random random(212);
  for (const int nodes : {3, 4}) {
    for (const int formulation : {1, 0, 2, 3, 98, 99}) {
      for (const int op : ALL_OPERATIONS) {
        scene s(nodes, source::none, random);
        s.description().formulation = formulation;
        s.description().unit_weight = random.uniform(0.1, 1.0);
        s.description().mass_factor = random.uniform(1.0, 2.0);
        s.ask([&](plate_model& model) { return plate_calls::call(model, op, 2, some_data()).op; });
        EXPECT_EQ(last_engine_call().loads, expected_loads(op, s.description()))
            << nodes << " nodes, formulation " << formulation << ", operation " << op;
      }
    }
  }
}
