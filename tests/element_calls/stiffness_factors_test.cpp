// stiffness_factors_test.cpp: the list of elements with stiffness factors: when it is searched, for what, and what the
// two factors do to each constant.
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "finites/fields.h"
#include "finites/finites.h"
#include "finites/records.h"
#include "finites/views.hpp"
#include "plate_calls.h"
#include "search_recorder.h"
#include "tarnix.h"

namespace {

using plate_calls::plate_description;
using plate_calls::plate_model;
using plate_calls::prepare;

// An isotropic element whose material record has moduli of its own; identifier 730, sequence number 2.
plate_description listed_element() {
  plate_description d = plate_calls::orthotropic(plate_calls::space_triangle());
  d.material.ortho = 0;
  d.id = 730;
  return d;
}

void set_reduction(int on) {
  SOLPARAM_RECORD parameters{};
  parameters.STIFF_REDUCTION_ON = on;
  TARNIX_STORE_SOLPARAM(&parameters);
}

class StiffnessFactors : public ::testing::Test {
 protected:
  StiffnessFactors() { forget_searches(); }
};

}  // namespace

TEST_F(StiffnessFactors, ScaleOneIsotropicMaterialInTwoDirections) {
  plate_model model({plate_calls::isotropic(plate_calls::space_triangle()), listed_element()});
  model.set_stiffness_factors({20, 730, 900}, {9.0F, 9.0F, 0.3F, 0.7F, 8.0F, 8.0F});
  prepare(model, 2);
  const double f1 = 0.30000001192092896, f2 = 0.69999998807907104;  // 0.3 and 0.7 in single precision, widened
  const double nu = 0.23000000417232513;
  EXPECT_EQ(PLATEELEM.MAT_BEHAV, 1);
  EXPECT_EQ(PLATEELEM.E1, 190000.0 * f1);
  EXPECT_EQ(PLATEELEM.E2, 190000.0 * f2) << "the record's second modulus plays no part";
  EXPECT_EQ(PLATEELEM.NU1, nu * f1);
  EXPECT_EQ(PLATEELEM.NU2, nu * f2);
  EXPECT_EQ(PLATEELEM.G12, 31000.0 * f1 * f2);
  EXPECT_EQ(PLATEELEM.G13, 31000.0 * f1) << "the in-plane modulus, not the record's G13";
  EXPECT_EQ(PLATEELEM.G23, 31000.0 * f2);
  EXPECT_EQ(PLATEELEM.ALPHA1, 1.1000000085914508e-05);
  EXPECT_EQ(PLATEELEM.ALPHA2, 1.1000000085914508e-05);
  EXPECT_EQ(PLATEELEM.ORTHO_ANGLE, 0.4F);
  EXPECT_EQ(PLATEELEM.CLT_FACTOR_1, 1.0);
  EXPECT_EQ(PLATEELEM.CLT_FACTOR_2, 1.0);
  EXPECT_EQ(PLATEELEM.MOD_MEMBRANE(1), 0.9);
}

TEST_F(StiffnessFactors, SearchIsForTheIdentifierInTheListItself) {
  plate_model model({plate_calls::isotropic(plate_calls::space_triangle()), listed_element()});
  const std::vector<std::int32_t> ids = {2, 730, 900};
  model.set_stiffness_factors(ids, {9.0F, 9.0F, 0.5F, 0.25F, 8.0F, 8.0F});
  prepare(model, 2);
  ASSERT_EQ(recorded_searches().size(), 1U);
  EXPECT_EQ(recorded_searches()[0].key, 730);
  EXPECT_EQ(recorded_searches()[0].entries, ids);
  EXPECT_EQ(recorded_searches()[0].list, SOLANA.STIFF_LIST.BASE) << "a list without gaps is not copied";
}

TEST_F(StiffnessFactors, FirstAndLastEntryAreFoundAndTheirOwnFactorsTaken) {
  for (const int stride : {1, 3}) {
    for (const std::vector<std::int32_t>& ids :
         {std::vector<std::int32_t>{730, 800, 900}, {1, 730, 900}, {1, 2, 730}, {730}}) {
      plate_model model({plate_calls::isotropic(plate_calls::space_triangle()), listed_element()});
      std::vector<float> factors(2 * ids.size(), 64.0F);
      for (std::size_t i = 0; i < ids.size(); ++i) {
        if (ids[i] == 730) factors[2 * i] = 0.5F;
        if (ids[i] == 730) factors[2 * i + 1] = 0.125F;
      }
      model.set_stiffness_factors(ids, factors, stride);
      prepare(model, 2);
      EXPECT_EQ(PLATEELEM.MAT_BEHAV, 1);
      EXPECT_EQ(PLATEELEM.E1, 95000.0) << "stride " << stride << ", " << ids.size() << " entries";
      EXPECT_EQ(PLATEELEM.E2, 23750.0) << "stride " << stride << ", " << ids.size() << " entries";
    }
  }
}

TEST_F(StiffnessFactors, SectionWithGapsIsSearchedWithoutThem) {
  plate_model model({plate_calls::isotropic(plate_calls::space_triangle()), listed_element()});
  const std::vector<std::int32_t> ids = {5, 6, 730, 731};
  model.set_stiffness_factors(ids, {1, 1, 1, 1, 0.5F, 0.25F, 1, 1}, 4);
  prepare(model, 2);
  ASSERT_EQ(recorded_searches().size(), 1U);
  EXPECT_EQ(recorded_searches()[0].entries, ids);
  EXPECT_EQ(PLATEELEM.E1, 95000.0);
}

// The list as one member of an array of records, the factors every second column of a larger array.
TEST_F(StiffnessFactors, LowerBoundsAndStridesOfTheReferencesAreHonoured) {
  plate_model model({plate_calls::isotropic(plate_calls::space_triangle()), listed_element()});
  std::int32_t pairs[3][2] = {{11, -1}, {730, -2}, {740, -3}};
  float wide[3][4] = {{7, 7, -1, -1}, {0.5F, 0.25F, -1, -1}, {7, 7, -1, -1}};
  SOLANA.STIFF_LIST_COUNT = 3;
  SOLANA.STIFF_LIST = REFER_TO_SECTION(&pairs[0][0], 3, 2 * sizeof(std::int32_t), -4);
  SOLANA.STIFF_FACTORS = REFER_TO(&wide[0][0], 2, 3);
  SOLANA.STIFF_FACTORS.DIMENSION[1].STRIDE = 4 * sizeof(float);
  set_reduction(1);
  prepare(model, 2);
  ASSERT_EQ(recorded_searches().size(), 1U);
  EXPECT_EQ(recorded_searches()[0].entries, (std::vector<std::int32_t>{11, 730, 740}));
  EXPECT_EQ(PLATEELEM.E1, 95000.0);
  EXPECT_EQ(PLATEELEM.E2, 47500.0);
}

TEST_F(StiffnessFactors, AbsentElementGoesOnToItsSection) {
  plate_model model({plate_calls::orthotropic(plate_calls::space_triangle()), listed_element()});
  model.set_stiffness_factors({1, 2, 730}, {0.5F, 0.5F, 0.5F, 0.5F, 0.5F, 0.5F});
  prepare(model, 1);  // identifier 10
  EXPECT_EQ(recorded_searches().size(), 1U);
  EXPECT_EQ(PLATEELEM.MAT_BEHAV, 1);
  EXPECT_EQ(PLATEELEM.E1, 190000.0);
  EXPECT_EQ(PLATEELEM.E2, 70000.0);
  model.set_stiffness_factors({1, 2, 731}, {0.5F, 0.5F, 0.5F, 0.5F, 0.5F, 0.5F});
  prepare(model, 2);
  EXPECT_EQ(PLATEELEM.MAT_BEHAV, 0);
  EXPECT_EQ(PLATEELEM.E1, 2.1e5);
}

TEST_F(StiffnessFactors, ListGoesBeforeEverySection) {
  plate_description ortho = listed_element(), layered = listed_element(),
                    comp = plate_calls::composite(plate_calls::space_triangle());
  ortho.material.ortho = 1;
  layered.material.mtype = 1;
  layered.plastic_switch = 1;
  comp.material = listed_element().material;
  comp.id = 730;
  comp.ortho_angle = 0.4;
  for (const plate_description& d : {ortho, layered, comp}) {
    plate_model model({d});
    model.set_header(NONLIN_MATERIAL, 1);
    model.set_plate_material_code(2);
    model.set_stiffness_factors({730}, {0.5F, 0.25F});
    prepare(model, 1);
    EXPECT_EQ(PLATEELEM.MAT_BEHAV, 1);
    EXPECT_EQ(PLATEELEM.E1, 95000.0);
    EXPECT_EQ(PLATEELEM.E2, 47500.0);
    EXPECT_EQ(PLATEELEM.CLT_FACTOR_1, 1.0);
    EXPECT_EQ(PLATEELEM.TANGENT_MOD, 0.0);
    EXPECT_EQ(PLATEELEM.ELEM_INDEX, 0);
  }
}

TEST_F(StiffnessFactors, ReductionSwitchedOffMakesNoSearch) {
  for (const int on : {0, -1}) {
    plate_model model({listed_element()});
    model.set_stiffness_factors({730}, {0.5F, 0.25F});
    set_reduction(on);
    prepare(model, 1);
    EXPECT_TRUE(recorded_searches().empty()) << on;
    EXPECT_EQ(PLATEELEM.MAT_BEHAV, 0) << on;
  }
}

TEST_F(StiffnessFactors, AnySwitchAboveZeroSearches) {
  plate_model model({listed_element()});
  model.set_stiffness_factors({730}, {0.5F, 0.25F});
  set_reduction(7);
  prepare(model, 1);
  EXPECT_EQ(recorded_searches().size(), 1U);
  EXPECT_EQ(PLATEELEM.MAT_BEHAV, 1);
}

TEST_F(StiffnessFactors, OperationsWithoutMaterialMakeNoSearch) {
  plate_model model({listed_element()});
  model.set_stiffness_factors({730}, {0.5F, 0.25F});
  for (const int op : {2, 4, 41, 8, 9, 10}) plate_calls::call(model, op, 1, std::vector<double>(9, 0.5));
  EXPECT_TRUE(recorded_searches().empty());
}

TEST_F(StiffnessFactors, InfoDoesNotConsultTheList) {
  plate_model model({listed_element()});
  model.set_stiffness_factors({730}, {0.5F, 0.25F});
  const std::int32_t element = 1, n = model.extent();
  std::int32_t kind = 0, behav = -1, parts = 0;
  INFO_FINITES(&element, model.raw(), &n, &kind, &behav, &parts);
  EXPECT_TRUE(recorded_searches().empty());
  EXPECT_EQ(behav, 0);
}

TEST_F(StiffnessFactors, FactorsOfTheSameSizeScaleTheMembraneForces) {
  plate_description d = plate_calls::isotropic(plate_calls::flat_triangle());
  d.poisson = 0.0;
  d.modifier_membrane = d.modifier_bending = 1.0;
  d.material.E1 = static_cast<float>(d.young);
  d.material.G12 = static_cast<float>(d.young / 2.0);
  const std::vector<double> stretch = {0, 0, 0, 0, 0, 0, 2e-3, 0, 0, 0, 0, 0, 0.5e-3, 0, 0, 0, 0, 0};  // ex = 0.001
  plate_model model({d});
  const double plain = model.results(1, stretch).points[36];
  model.set_stiffness_factors({10}, {0.5F, 0.25F});
  EXPECT_DOUBLE_EQ(model.results(1, stretch).points[36], 0.5 * plain);
}

// ------------------------------------------------------------------------------------------------ named cases

TEST_F(StiffnessFactors, EdgeCaseCountZeroMakesNoSearch) {
  for (const int count : {0, -3}) {
    plate_model model({listed_element()});
    model.set_stiffness_factors({730}, {0.5F, 0.25F});
    SOLANA.STIFF_LIST_COUNT = count;
    SOLANA.STIFF_LIST.BASE = nullptr;  // whoever looks, falls
    SOLANA.STIFF_FACTORS.BASE = nullptr;
    prepare(model, 1);
    EXPECT_TRUE(recorded_searches().empty()) << count;
    EXPECT_EQ(PLATEELEM.MAT_BEHAV, 0) << count;
  }
}

TEST_F(StiffnessFactors, EdgeCaseListWithoutFactorsScalesNothing) {
  for (const int stride : {1, 3}) {
    plate_model model({listed_element()});
    model.set_stiffness_factors({730}, {0.5F, 0.25F}, stride);
    SOLANA.STIFF_FACTORS.ALLOCATED_FLAG = 0;
    SOLANA.STIFF_FACTORS.BASE = nullptr;  // whoever looks, falls
    prepare(model, 1);
    EXPECT_TRUE(recorded_searches().empty());
    EXPECT_EQ(PLATEELEM.MAT_BEHAV, 0);
    EXPECT_EQ(PLATEELEM.E1, 2.1e5);
    EXPECT_EQ(PLATEELEM.MOD_MEMBRANE(1), 0.9);
  }
}
