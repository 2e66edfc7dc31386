// odd_input_test.cpp: checks go through anything that a caller can have left out or broken, and say how many findings
// there are, not only how many there is room for.
#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <string>

#include "found.h"
#include "random_shapes.h"
#include "tarnix.h"

namespace {

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

std::vector<finites_finding> model_findings(const std::int32_t* kinds, std::int32_t count, const double* A,
                                            std::int64_t n) {
  return found_by(
      [&](finites_finding* to, std::int32_t room) { return finites_check_model(kinds, count, A, n, to, room); });
}

}  // namespace

TEST(OddInput, NothingAtAll) {
  TARNIX_CLEAR();
  finites_finding found{};
  for (const std::int64_t n : {std::int64_t{0}, std::int64_t{-5}, std::int64_t{1} << 40}) {
    EXPECT_EQ(finites_check_plate(1, 1, nullptr, n, &found, 1), 1);
    EXPECT_EQ(found.code, FINITES_FOUND_NO_MODEL_DATA);
    EXPECT_EQ(finites_check_solid(1, nullptr, n, &found, 1), 1);
    EXPECT_EQ(found.code, FINITES_FOUND_NO_MODEL_DATA);
    EXPECT_EQ(finites_check_model(nullptr, 0, nullptr, n, &found, 1), 1);
    EXPECT_EQ(found.code, FINITES_FOUND_NO_MODEL_DATA);
    for (std::int32_t kind = FINITES_ELEMENT_BEAM; kind <= FINITES_ELEMENT_SPRING; ++kind) {
      EXPECT_EQ(finites_check_member(kind, 1, 1, nullptr, n, &found, 1), 1);
      EXPECT_EQ(found.code, FINITES_FOUND_NO_MODEL_DATA);
    }
  }
  EXPECT_EQ(finites_check_plate(1, 1, nullptr, 0, nullptr, 0), 1);
  EXPECT_EQ(finites_check_plate(1, 1, nullptr, 0, nullptr, 10), 1);
}

TEST(OddInput, EmptyRecordsAndZeros) {
  TARNIX_CLEAR();
  const std::vector<double> A(2000, 0.0);
  finites_finding found[4];
  EXPECT_EQ(finites_check_plate(1, 200, A.data(), 2000, found, 4), 1);
  EXPECT_EQ(found[0].code, FINITES_FOUND_NO_RECORDS);
  EXPECT_GE(finites_check_member(FINITES_ELEMENT_BEAM, 1, 200, A.data(), 2000, found, 4), 3);
  EXPECT_EQ(finites_check_solid(1, A.data(), 2000, found, 4), 1);
  EXPECT_EQ(found[0].code, FINITES_FOUND_SOLID_POSITION);
  EXPECT_EQ(finites_check_plate(1, 0, A.data(), 2000, found, 4), 1);
  EXPECT_EQ(found[0].code, FINITES_FOUND_NO_BLOCK);
  EXPECT_EQ(finites_check_plate(1, 1990, A.data(), 2000, found, 4), 1);
  EXPECT_EQ(found[0].code, FINITES_FOUND_BLOCK_OUTSIDE);
}

TEST(OddInput, WhatHasNoRoomIsCounted) {
  support::plate_description d;
  d.nodes = {{0, 0, 0}, {1000, 0, 0}, {0, 1000, 0}};
  d.modifier_membrane = d.modifier_bending = d.young = 0;
  support::plate_model model({d});
  finites_finding found[3];
  std::memset(found, 7, sizeof found);
  EXPECT_EQ(finites_check_plate(1, model.block(1), model.raw(), model.extent(), nullptr, 0), 3);
  EXPECT_EQ(finites_check_plate(1, model.block(1), model.raw(), model.extent(), found, 2), 3);
  EXPECT_NE(found[1].text[0], 7);
  for (const char c : found[2].text) ASSERT_EQ(c, 7);
}

// Records and MODEL_DATA full of what they could hold by mistake. Addresses are those of arrays, or null.
TEST(OddInput, AnyNumberAnywhere) {
  support::seeded_random random(3);
  const double odd[] = {0, 1, -1, 3, 4, 0.5, 1e300, -1e300, 1e9, NaN, std::numeric_limits<double>::infinity(), 60, 200};
  const auto number = [&] { return odd[random.integer(0, 12)]; };
  for (int run = 0; run < 4000; ++run) {
    TARNIX_CLEAR();
    std::vector<double> A(static_cast<std::size_t>(random.integer(1, 1200)));
    for (double& value : A) value = number();
    std::vector<PLATE_RECORD> plates(2);
    std::vector<PLATE_STATE_RECORD> states(2);
    std::vector<MEMBER_RECORD> members(2);
    std::vector<HINGE_RECORD> hinges(2);
    std::vector<SOLID_RECORD> solids(2);
    std::vector<std::int32_t> places = {random.integer(-1, 3), random.integer(-1, 3)};
    for (PLATE_RECORD& p : plates) {
      p.NODE_COUNT = random.integer(-1, 5);
      p.SECTION_PTR = random.integer(-10, 1300);
      p.MATERIAL_PTR = random.integer(-10, 1300);
      for (std::int32_t& ptr : p.NODE_PTR.V) ptr = random.integer(-10, 1300);
    }
    for (MEMBER_RECORD& m : members) {
      m.LENGTH = number();
      m.REMOVE_STEP = random.integer(-2, 1);
      m.NL_SPRING_IDX(1) = random.integer(-1, 2);
    }
    for (HINGE_RECORD& h : hinges) h.HINGE_MODEL = h.CURVE_KIND = h.END1_STATE = random.integer(0, 3);
    for (SOLID_RECORD& s : solids) {
      s.NNODE = random.integer(0, 9);
      s.MAT_OFF = random.integer(-10, 1300);
      for (std::int32_t& ptr : s.NODE_OFF.V) ptr = random.integer(-10, 1300);
    }
    const auto there = [&random] { return random.integer(0, 5) > 0; };
    if (there()) SOLANAELEM.PLATE_RECORDS = REFER_TO(plates.data(), 2);
    if (there()) SOLANAELEM.PLATE_STATE = REFER_TO(states.data(), 2);
    if (there()) SOLANAELEM.MEMBER_REC = REFER_TO(members.data(), 2);
    if (there()) SOLANAELEM.HINGE_REC = REFER_TO(hinges.data(), 2);
    if (there()) SOLANAELEM.SOLID_REC = REFER_TO(solids.data(), 2);
    if (there()) SOLANAELEM.ELEM_POS = SOLANAELEM.SOLID_POS = REFER_TO(places.data(), 2);
    if (!there()) SOLANAELEM.PLATE_OF_ELEM = REFER_TO(places.data(), 2);
    if (!there()) SOLANAELEM.PLATE_STATE.BASE = nullptr;
    SOLANAELEM.NPT_THICK = random.integer(0, 5);
    const std::int32_t code = random.integer(-1, 3);
    TARNIX_STORE_KNLMATERIAL_PLATE(&code);
    TARNIX_STORE_KNLMATERIAL_MEMBER(&code);
    const auto n = static_cast<std::int64_t>(A.size());
    const std::int32_t elem = random.integer(-1, 3), entry = random.integer(-10, 1200);
    finites_finding found[3];
    finites_check_plate(elem, entry, A.data(), n, found, 3);
    finites_check_solid(elem, A.data(), n, found, 3);
    for (std::int32_t kind = -1; kind <= 8; ++kind) finites_check_member(kind, elem, entry, A.data(), n, found, 3);
    const std::int32_t kinds[3] = {1, random.integer(0, 8), 7};
    finites_check_model(kinds, 3, A.data(), n, found, 3);
  }
  TARNIX_CLEAR();
}

TEST(ModelChecks, HeaderParametersAndElements) {
  support::plate_description d;
  d.nodes = {{0, 0, 0}, {1000, 0, 0}, {0, 1000, 0}};
  support::plate_model model({d, d});
  const std::int32_t kinds[2] = {FINITES_ELEMENT_PLATE, FINITES_ELEMENT_PLATE};
  for (const int name : {NONLIN_MATERIAL, STEP_COUNTER, ANALYSIS_STATE, SECOND_ORDER, SHEAR_DEFORMATION}) {
    model.set_header(name, 0);
  }
  EXPECT_EQ(all_texts(model_findings(kinds, 2, model.raw(), model.extent())), "");

  model.A()(model.block(2) + MODIFIER_MEMBRANE) = 0;
  findings found = model_findings(kinds, 2, model.raw(), model.extent());
  ASSERT_EQ(found.size(), 1U) << all_texts(found);
  EXPECT_EQ(found[0].element, 2);
  EXPECT_EQ(all_texts(model_findings(nullptr, 2, model.raw(), model.extent())), "");
  const std::int32_t none[2] = {FINITES_ELEMENT_PLATE, FINITES_ELEMENT_NONE};
  EXPECT_EQ(all_texts(model_findings(none, 2, model.raw(), model.extent())), "");

  const std::int32_t yes = 1;
  TARNIX_STORE_KNLMATERIAL_MEMBER(&yes);
  model.set_header(SECOND_ORDER, 2);
  model.set_header(ENTRY_STRIDE, 0);
  SOLANAELEM.HINGE_REC.ALLOCATED_FLAG = 1;
  SOLANAELEM.HINGE_REC.DIMENSION[0].EXTENT = 1;
  found = model_findings(nullptr, 2, model.raw(), model.extent());
  EXPECT_NE(text_of(found, NOTE, FINITES_FOUND_SWITCH), "");
  EXPECT_NE(text_of(found, WARNING, FINITES_FOUND_SWITCH).find("hinges have no effect"), std::string::npos);
  EXPECT_NE(text_of(found, WARNING, FINITES_FOUND_ENTRY_TABLE), "");
  EXPECT_NE(text_of(found, ERROR, FINITES_FOUND_RECORD_FLAG).find("HINGE_REC"), std::string::npos);
  EXPECT_EQ(found[0].element, 0);
}

TEST(ModelChecks, TheListOfStiffnessFactorsAscends) {
  support::plate_description d;
  d.nodes = {{0, 0, 0}, {1000, 0, 0}, {0, 1000, 0}};
  support::plate_model model({d});
  for (const int name : {NONLIN_MATERIAL, STEP_COUNTER, ANALYSIS_STATE, SECOND_ORDER, SHEAR_DEFORMATION}) {
    model.set_header(name, 0);
  }
  model.set_stiffness_factors({30, 20}, {1, 1, 1, 1});
  const findings found = model_findings(nullptr, 1, model.raw(), model.extent());
  EXPECT_NE(text_of(found, WARNING, FINITES_FOUND_STIFF_LIST).find("ascend"), std::string::npos) << all_texts(found);
}
