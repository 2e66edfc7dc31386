// allocation_test.cpp: a plate call takes nothing from the heap, except for the packed copy of a list with gaps.
#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "allocation_counter.h"
#include "finites/fields.h"
#include "finites/finites.h"
#include "plate_calls.h"
#include "search_recorder.h"

namespace {

using plate_calls::plate_description;
using plate_calls::plate_model;

constexpr int OPERATIONS[] = {1, 2, 3, 33, 4, 41, 401, 5, 7, 71, 8, 9, 10, 6, 999};

long allocations_of(plate_model& model, int op) {
  std::array<double, 12> data{0.5, 0.4, 0.3, 1.0, 2.0, 3.0};
  std::array<double, 24> forces{};
  std::array<double, 24 * 24> matrix{};
  const support::allocation_counter counter;
  model.call(op, 1, data.data(), forces.data(), matrix.data());
  return counter.count();
}

class Allocation : public ::testing::Test {
 protected:
  void SetUp() override {
    record_searches(false);
    if (!support::allocation_counter::available()) GTEST_SKIP() << "the sanitizer has the heap";
  }
  void TearDown() override { record_searches(true); }
};

// Every kind with every elastic section.
std::vector<plate_description> elements_at_rest() {
  std::vector<plate_description> all;
  for (const std::vector<support::point>& nodes : {plate_calls::space_triangle(), plate_calls::space_quadrilateral()}) {
    for (const int formulation : {0, 1, 2}) {
      all.push_back(plate_calls::isotropic(nodes, formulation));
      all.push_back(plate_calls::orthotropic(nodes, formulation));
      all.push_back(plate_calls::composite(nodes, formulation));
    }
  }
  return all;
}

std::vector<plate_description> all_elements() {
  std::vector<plate_description> all = elements_at_rest();
  for (plate_description d : elements_at_rest()) {
    d.offset_switch = 1;
    d.offsets = {support::point{0.1, 0.2, 0.3}, support::point{0.2, 0.1, 0.0}, support::point{}, support::point{}};
    all.push_back(d);
  }
  return all;
}

}  // namespace

TEST_F(Allocation, TheCounterCounts) {
  const support::allocation_counter counter;
  double* volatile some = new double[10];  // volatile: a compiler may leave out an allocation that nobody sees
  const long taken = counter.count();
  delete[] some;
  EXPECT_EQ(taken, 1);
}

TEST_F(Allocation, NoOperationTakesAny) {
  for (const plate_description& d : all_elements()) {
    plate_model model({d});
    for (const int op : OPERATIONS) {
      EXPECT_EQ(allocations_of(model, op), 0) << plate_calls::label(d) << ", operation " << op;
    }
    model.allocate_state();
    model.set_header(SECOND_ORDER, 1);
    for (const int op : OPERATIONS) {
      EXPECT_EQ(allocations_of(model, op), 0) << plate_calls::label(d) << ", operation " << op << " with a state";
    }
  }
}

TEST_F(Allocation, AListWithoutGapsTakesNone) {
  plate_model model({plate_calls::orthotropic(plate_calls::space_triangle())});
  model.set_stiffness_factors({2, 10, 20}, {1, 1, 0.5F, 0.5F, 1, 1});
  for (const int op : OPERATIONS) EXPECT_EQ(allocations_of(model, op), 0) << "operation " << op;
}

TEST_F(Allocation, AListWithGapsTakesOneCopy) {
  plate_model model({plate_calls::orthotropic(plate_calls::space_triangle())});
  model.set_stiffness_factors({2, 10, 20}, {1, 1, 0.5F, 0.5F, 1, 1}, 3);
  for (const int op : {1, 3, 33, 401, 5, 7, 71}) EXPECT_EQ(allocations_of(model, op), 1) << "operation " << op;
  for (const int op : {2, 4, 41, 8, 9, 10}) EXPECT_EQ(allocations_of(model, op), 0) << "operation " << op;
}

TEST_F(Allocation, NeitherDoTheOtherEntries) {
  plate_model model({plate_calls::composite(plate_calls::space_triangle())});
  const std::int32_t one = 1, three = 3, n = model.extent();
  std::int32_t kind = 0, behav = 0, parts = 0;
  const std::array<double, 9> xyz{0, 0, 0, 1, 0, 0, 0, 1, 0};
  std::array<double, 12> o{};
  std::array<double, 47> wide{};
  std::array<float, 47> narrow{};
  const support::allocation_counter counter;
  INFO_FINITES(&one, model.raw(), &n, &kind, &behav, &parts);
  GAUSS_INT_2D(&one, &one, &three, xyz.data(), &o[0], &o[1], &o[2], &o[3], &o[4], &o[5], &o[6], &o[7], &o[8], &o[9],
               &o[10], &o[11]);
  UPDATE_PRINCIPAUX_RES100_PLA(narrow.data());
  UPDATE_PRINCIPAUX_RES100_PLA_DBL(wide.data());
  EXPECT_EQ(counter.count(), 0);
}
