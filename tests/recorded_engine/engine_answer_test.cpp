// engine_answer_test.cpp: what the plate entry does with the answers of an engine, for three and for four nodes.
#include <gtest/gtest.h>

#include <vector>

#include "broken_values.h"
#include "comparison.h"
#include "finites/services.h"
#include "scene.h"

using plate_calls::outputs;
using scenes::for_all_scenes;
using scenes::plate_model;
using scenes::scene;
using scenes::seeded_random;
using scenes::some_data;
using scenes::with_zeros;

namespace {

void expect_transformed(const scene& s, int op, const std::vector<double>& K, bool plastic) {
  const std::size_t n = s.order();
  next_engine_answer().matrix = K;
  s.ask([&](plate_model& model) {
    if (plastic) {
      model.set_header(NONLIN_MATERIAL, 1.0);
      model.set_plate_material_code(PLATE_MODEL_LAYERED);
    }
    outputs out = plate_calls::call(model, op, 2);
    EXPECT_EQ(out.matrix.changed(), support::leading_block(static_cast<int>(n), 24)) << op;
    std::vector<double> leading;
    for (std::size_t j = 0; j < n; ++j) {
      const double* column = out.matrix.data() + 24 * j;
      leading.insert(leading.end(), column, column + n);
    }
    EXPECT_CLOSE(leading, s.moved_back_matrix(K), 16.0, 32.0) << op;
    return 0;
  });
}

}  // namespace

// Those of an elastic element are symmetric, and stay so to the last bit.
TEST(EngineAnswers, MatricesComeBackTransformed) {
  for_all_scenes([](const scene& s, seeded_random& random) {
    const std::size_t n = s.order();
    for (const int op : {1, 2, 7, 71}) {
      std::vector<double> K = random.vector(static_cast<int>(n * n), 1.0);
      for (std::size_t j = 0; j < n; ++j) {
        for (std::size_t i = 0; i < j; ++i) K[n * i + j] = K[n * j + i];
      }
      expect_transformed(s, op, K, false);
    }
  });
}

TEST(EngineAnswers, MatricesWithOneBrokenEntryComeBackAsTheFullProductHasThem) {
  // The first entry, the last and one between: the products with the zeros of P make NaN of them in whole rows.
  for_all_scenes([](const scene& s, seeded_random& random) {
    const auto nodes = static_cast<std::int32_t>(s.nodes());
    const auto n = static_cast<std::int32_t>(s.order());
    std::vector<double> P(s.order() * s.order());
    scenes::point d[4] = {};
    for (std::size_t m = 0; m < s.nodes(); ++m) d[m] = s.offset(m);
    GET_PLATE_OFFSET_P_DBL(&nodes, &d[0][0], &d[0][1], &d[0][2], &d[1][0], &d[1][1], &d[1][2], &d[2][0], &d[2][1],
                           &d[2][2], &d[3][0], &d[3][1], &d[3][2], P.data());
    const bool moved = d[0][0] != 0.0;  // not in the scene without offsets
    for (const double broken : support::BROKEN) {
      for (const int place : {0, n * n - 1, random.integer(1, n * n - 2)}) {
        std::vector<double> K = random.vector(n * n, 1.0);
        K[static_cast<std::size_t>(place)] = broken;
        next_engine_answer().matrix = K;
        const std::vector<double> actual = s.ask([&](plate_model& model) {
          outputs out = plate_calls::call(model, 1, 2);
          std::vector<double> leading;
          for (int j = 0; j < n; ++j) {
            const double* column = out.matrix.data() + 24 * j;
            leading.insert(leading.end(), column, column + n);
          }
          return leading;
        });
        SCOPED_TRACE("entry " + std::to_string(place + 1) + " is " + std::to_string(broken));
        support::expect_same_places(actual, moved ? support::full_product(P.data(), K, n) : K);
      }
    }
  });
}

TEST(EngineAnswers, PlasticTangentsComeBackTransformedWithoutSymmetry) {
  for_all_scenes([](scene s, seeded_random& random) {
    s.description().material.mtype = MATERIAL_YIELDING;
    s.description().plastic_switch = 1;
    expect_transformed(s, 1, random.vector(static_cast<int>(s.order() * s.order()), 1.0), true);
  });
}

TEST(EngineAnswers, InternalForcesComeBackByTheTransposeButNotThoseOfTheCommit) {
  for_all_scenes([](const scene& s, seeded_random& random) {
    for (const int op : {3, 33}) {
      const std::vector<double> f = random.vector(static_cast<int>(s.order()), 1.0);
      next_engine_answer().F = f;
      const std::vector<double> actual = s.ask([&](plate_model& model) {
        plate_calls::poison_exchange(model);
        plate_calls::call(model, op, 2);
        return support::values(model.exchange_forces(), 24);
      });
      EXPECT_CLOSE(actual, with_zeros(op == 3 ? s.moved_back(f) : f, 24), 4.0, 8.0) << op;
    }
  });
}

TEST(EngineAnswers, LoadsComeBackByTheTranspose) {
  for_all_scenes([](const scene& s, seeded_random& random) {
    for (const int op : {4, 41, 401, 10}) {
      const std::vector<double> f = random.vector(static_cast<int>(s.order()), 1.0);
      next_engine_answer().F = f;
      const std::vector<double> actual = s.ask([&](plate_model& model) {
        outputs out = plate_calls::call(model, op, 2, some_data());
        return support::values(out.forces.data(), 24);
      });
      EXPECT_CLOSE(actual, with_zeros(s.moved_back(f), 24), 4.0, 8.0) << op;
    }
  });
}

TEST(EngineAnswers, RecordsAreClearedBeforeAndCopiedBehindEachOther) {
  for_all_scenes([](const scene& s, seeded_random& random) {
    const std::vector<double> nodes = random.vector(360, 1.0), points = random.vector(360, 1.0);
    next_engine_answer().nodes = nodes;
    next_engine_answer().points = points;
    s.ask([&](plate_model& model) {
      plate_calls::poison_exchange(model);
      plate_calls::call(model, 5, 2, some_data());
      const int base = plate_calls::exchange_start(model);
      EXPECT_EQ(support::values(&model.A()(base + 48), 360), nodes);
      EXPECT_EQ(support::values(&model.A()(base + 408), 360), points);
      return 0;
    });
    EXPECT_EQ(last_engine_call().nodes, std::vector<double>(360, 0.0));
    EXPECT_EQ(last_engine_call().points, std::vector<double>(360, 0.0));
  });
}

TEST(EngineAnswers, ScalarsComeBackInTheirPlaces) {
  for_all_scenes([](const scene& s, seeded_random&) {
    engine_answer& answer = next_engine_answer();
    answer.area = 2.125;
    answer.volume = 17.0;
    answer.weight = 3.3;
    answer.distance = -0.7;
    answer.point_flag1 = 5;
    answer.point_flag2 = 6;
    s.ask([&](plate_model& model) {
      plate_calls::call(model, 8, 2);
      EXPECT_EQ(model.plate(2).AREA, 2.125F);
      EXPECT_EQ(model.plate(2).WEIGHT, 3.3F);
      EXPECT_EQ(model.plate(2).FACTORED_WEIGHT, static_cast<float>(3.3 * 1.3));
      outputs out = plate_calls::call(model, 9, 2, {1.0, 2.0, 3.0});
      EXPECT_EQ(out.data.changed(), support::range(10, 12));
      EXPECT_EQ((std::vector<double>{out.data(10), out.data(11), out.data(12)}), (std::vector<double>{5.0, 6.0, -0.7}));
      return 0;
    });
  });
}
