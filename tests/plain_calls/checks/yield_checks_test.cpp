// yield_checks_test.cpp: what is forgotten in a plate that yields. The state is what a solver allocates.
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "found.h"
#include "tarnix.h"

namespace {

constexpr int SECTION_MODEL = 1, LAYERED_MODEL = 2;
constexpr int LAYERS = 7;

support::plate_description yielding(int formulation) {
  support::plate_description d;
  d.nodes = {{0, 0, 0}, {1000, 0, 0}, {1000, 1000, 0}, {0, 1000, 0}};
  d.formulation = formulation;
  d.thickness = 20.0;
  d.plastic_switch = 1;
  d.material.mtype = MATERIAL_YIELDING;
  d.material.HARDENING = 1000.0F;
  return d;
}

// The arrays of one plate's state.
struct state_arrays {
  std::vector<double> section = std::vector<double>(4 * (3 * 12 + 64 + 6));
  std::vector<double> layers = std::vector<double>(4 * LAYERS * (4 * 6 + 2 + 25));
  std::vector<POINT_STATE_RECORD> points = std::vector<POINT_STATE_RECORD>(4);

  void refer(PLATE_STATE_RECORD& r) {
    double* at = section.data();
    const auto take = [&at](std::size_t n) { return std::exchange(at, at + n); };
    for (auto* const f : {&r.SEC_EP_START, &r.SEC_EP_CUR, &r.SEC_EP_INC}) *f = REFER_TO(take(48), 12, 4);
    r.SEC_TANGENT = REFER_TO(take(256), 8, 8, 4);
    for (auto* const f :
         {&r.SEC_EPBAR_START, &r.SEC_EPBAR_CUR, &r.SEC_CURV_INC, &r.SEC_AUX, &r.SEC_SIGN_CUR, &r.SEC_SIGN_START}) {
      *f = REFER_TO(take(4), 4);
    }
    at = layers.data();
    for (POINT_STATE_RECORD& p : points) {
      for (auto* const f : {&p.SIG, &p.EP_START, &p.EP_CUR, &p.EP_INC}) *f = REFER_TO(take(6 * LAYERS), 6, LAYERS);
      for (auto* const f : {&p.EPBAR_START, &p.EPBAR_CUR}) *f = REFER_TO(take(LAYERS), LAYERS);
      p.TANGENT = REFER_TO(take(25 * LAYERS), 5, 5, LAYERS);
    }
    r.POINT_STATE = REFER_TO(points.data(), 4);
  }
};

// One plate in an analysis that yields, its state allocated and started.
struct yielding_model {
  support::plate_model model;
  state_arrays arrays;

  yielding_model(const support::plate_description& d, int code) : model({d}) {
    model.set_plate_material_code(code);
    model.set_header(NONLIN_MATERIAL, 1);
    SOLANAELEM.NPT_THICK = LAYERS;
    model.allocate_state();
    arrays.refer(model.state(1));
    model.set_header(ANALYSIS_STATE, 1);
    model.stiffness(1);
    model.set_header(STEP_COUNTER, 1);
  }
};

struct mistake {
  const char* name;
  int formulation, code;
  std::function<void(yielding_model&)> make;
  std::int32_t severity, what;
  std::string said;
};

auto material(int name, double value) {
  return [=](yielding_model& y) { y.model.A()(y.model.plate(1).MATERIAL_PTR + name) = value; };
}
auto field(int name, double value) {
  return [=](yielding_model& y) { y.model.A()(y.model.block(1) + name) = value; };
}
auto hardening(float value) {
  return [=](yielding_model& y) {
    MATERIAL_RECORD m = yielding(1).material;
    m.HARDENING = value;
    const std::int32_t number = y.model.A().INTEGER(y.model.plate(1).MATERIAL_PTR);
    TARNIX_STORE_MATERIAL(&number, &m);
  };
}
template <class CHANGE>
auto state(CHANGE change) {
  return [=](yielding_model& y) { change(y.model.state(1)); };
}

}  // namespace

TEST(YieldChecks, AFilledPlateHasNoFinding) {
  for (const int formulation : {0, 1}) {
    for (const int code : {SECTION_MODEL, LAYERED_MODEL}) {
      yielding_model y(yielding(formulation), code);
      EXPECT_EQ(all_texts(check(y.model)), "");
      EXPECT_TRUE(all_finite(y.model.stiffness(1)));
      EXPECT_EQ(zeros_on_diagonal(y.model.stiffness(1), 24), 0);
    }
  }
}

TEST(YieldChecks, WhatIsForgottenIsFound) {
  for (const mistake& m : std::vector<mistake>{
           {"fy", 1, SECTION_MODEL, material(MATERIAL_YIELD_STRESS, 0), ERROR, FINITES_FOUND_YIELD_STRESS, "set it"},
           {"fy", 1, LAYERED_MODEL, material(MATERIAL_YIELD_STRESS, 0), ERROR, FINITES_FOUND_YIELD_STRESS, "set it"},
           {"G thick", 0, LAYERED_MODEL, material(MATERIAL_SHEAR_MODULUS, 0), ERROR, FINITES_FOUND_SHEAR_MODULUS,
            "E/(2 (1 + nu))"},
           {"G thick", 0, SECTION_MODEL, material(MATERIAL_SHEAR_MODULUS, 0), ERROR, FINITES_FOUND_SHEAR_MODULUS,
            "NaN"},
           {"G thin", 1, SECTION_MODEL, material(MATERIAL_SHEAR_MODULUS, 0), WARNING, FINITES_FOUND_SHEAR_MODULUS,
            "shear in the plane"},
           {"G unlike", 0, SECTION_MODEL, material(MATERIAL_SHEAR_MODULUS, 1e4), WARNING, FINITES_FOUND_SHEAR_MODULUS,
            "isotropic"},
           {"Et = E", 1, LAYERED_MODEL, hardening(2.1e5F), ERROR, FINITES_FOUND_HARDENING, "below E"},
           {"Et < 0", 1, LAYERED_MODEL, hardening(-1.0F), WARNING, FINITES_FOUND_HARDENING, "softens"},
           {"layers", 1, LAYERED_MODEL, [](auto&) { SOLANAELEM.NPT_THICK = 4; }, WARNING, FINITES_FOUND_NPT_THICK,
            "3, 5, 7, 9, 11, 13 or 15"},
           {"modifier", 1, SECTION_MODEL, field(MODIFIER_BENDING, 0.5), WARNING, FINITES_FOUND_SPECTRAL, "KOK_DS"},
           {"no state", 1, SECTION_MODEL, [](auto&) { SOLANAELEM.PLATE_STATE = {}; }, WARNING,
            FINITES_FOUND_NO_PLATE_STATE, "drilling"},
           {"short", 1, SECTION_MODEL, [](auto&) { SOLANAELEM.PLATE_STATE.DIMENSION[0].EXTENT = 0; }, WARNING,
            FINITES_FOUND_NO_PLATE_STATE, "PLATE_STATE(1)"},
           {"no address", 1, SECTION_MODEL, [](auto&) { SOLANAELEM.PLATE_STATE.BASE = nullptr; }, ERROR,
            FINITES_FOUND_RECORD_FLAG, "no address"},
           {"field", 1, SECTION_MODEL, state([](PLATE_STATE_RECORD& s) { s.SEC_AUX = {}; }), WARNING,
            FINITES_FOUND_STATE_FIELDS, "SEC_AUX"},
           {"short field", 1, SECTION_MODEL,
            state([](PLATE_STATE_RECORD& s) { s.SEC_TANGENT.DIMENSION[2].EXTENT = 3; }), ERROR,
            FINITES_FOUND_STATE_FIELDS, "SEC_TANGENT"},
           {"points", 1, LAYERED_MODEL, state([](PLATE_STATE_RECORD& s) { s.POINT_STATE.DIMENSION[0].EXTENT = 3; }),
            WARNING, FINITES_FOUND_STATE_FIELDS, "POINT_STATE"},
           {"point field", 1, LAYERED_MODEL, state([](PLATE_STATE_RECORD& s) { s.POINT_STATE(4).EP_INC = {}; }),
            WARNING, FINITES_FOUND_STATE_FIELDS, "EP_INC"}}) {
    SCOPED_TRACE(m.name);
    yielding_model y(yielding(m.formulation), m.code);
    m.make(y);
    const findings found = check(y.model);
    EXPECT_NE(text_of(found, m.severity, m.what).find(m.said), std::string::npos) << all_texts(found);
    EXPECT_EQ(worst(found), m.severity) << all_texts(found);
  }
}

// With these the stiffness is as the texts say: zero but for the drilling rotations.
TEST(YieldChecks, OnlyTheDrillingStiffnessRemains) {
  const std::vector<std::function<void(yielding_model&)>> mistakes = {
      [](auto&) { SOLANAELEM.NPT_THICK = 4; },
      [](auto&) { SOLANAELEM.PLATE_STATE = {}; },
      state([](PLATE_STATE_RECORD& s) { s.POINT_STATE(2).SIG = {}; }),
      [](yielding_model& y) { std::fill(y.arrays.layers.begin(), y.arrays.layers.end(), 0.0); },
  };
  for (const auto& make : mistakes) {
    yielding_model y(yielding(1), LAYERED_MODEL);
    make(y);
    EXPECT_EQ(worst(check(y.model)), WARNING);
    EXPECT_EQ(zeros_on_diagonal(y.model.stiffness(1), 24), 20);
  }
}

TEST(YieldChecks, AStateThatWasNeverStartedIsFound) {
  yielding_model y(yielding(1), SECTION_MODEL);
  std::fill(y.arrays.section.begin(), y.arrays.section.end(), 0.0);
  EXPECT_NE(text_of(check(y.model), WARNING, FINITES_FOUND_STATE_NOT_STARTED).find("STEP_COUNTER"), std::string::npos);
  y.model.set_header(STEP_COUNTER, 0);  // the very first pass starts it
  EXPECT_EQ(all_texts(check(y.model)), "");
}

TEST(YieldChecks, ThickPlatesWithoutAShearModulusAreNaN) {
  testing::internal::CaptureStderr();  // the library fails, as the checker says
  for (const int code : {SECTION_MODEL, LAYERED_MODEL}) {
    auto d = yielding(0);
    d.shear_modulus = 1e-300;  // 0 is the isotropic one there
    yielding_model y(d, code);
    y.model.A()(y.model.plate(1).MATERIAL_PTR + MATERIAL_SHEAR_MODULUS) = 0;
    y.model.set_header(STEP_COUNTER, 0);
    EXPECT_EQ(worst(check(y.model)), ERROR);
    EXPECT_FALSE(all_finite(y.model.stiffness(1)));
  }
  testing::internal::GetCapturedStderr();
}

// Each switch that keeps a plate of a yielding material elastic is told.
TEST(YieldChecks, APlateThatCouldYieldButDoesNotIsNoted) {
  const auto noted = [](yielding_model& y) {
    const findings found = check(y.model);
    EXPECT_EQ(worst(found), NOTE) << all_texts(found);
    return text_of(found, NOTE, FINITES_FOUND_NOT_YIELDING);
  };
  {
    yielding_model y(yielding(1), SECTION_MODEL);
    y.model.set_header(NONLIN_MATERIAL, 0);
    EXPECT_NE(noted(y).find("NONLIN_MATERIAL"), std::string::npos);
  }
  {
    yielding_model y(yielding(1), 0);
    EXPECT_NE(noted(y).find("KNLMATERIAL_PLATE"), std::string::npos);
  }
  {
    yielding_model y(yielding(2), SECTION_MODEL);
    EXPECT_NE(noted(y).find("membrane"), std::string::npos);
  }
  auto d = yielding(1);
  d.plastic_switch = 0;
  yielding_model y(d, SECTION_MODEL);
  EXPECT_NE(noted(y).find("PLASTIC_SWITCH"), std::string::npos);
}

// Everything is switched on, but no material record says that the material yields.
TEST(YieldChecks, APlateThatIsSwitchedOnWithoutAMaterialRecord) {
  yielding_model y(yielding(1), SECTION_MODEL);
  EXPECT_EQ(all_texts(check(y.model)), "");
  y.model.A()(y.model.plate(1).MATERIAL_PTR + MATERIAL_NUMBER) = 99;
  const std::string said = text_of(check(y.model), NOTE, FINITES_FOUND_NOT_YIELDING);
  EXPECT_NE(said.find("PLASTIC_SWITCH) is 1, but the plate is elastic: material 99 has no record"), std::string::npos);
  y.model.set_header(NONLIN_MATERIAL, 0);
  EXPECT_EQ(all_texts(check(y.model)), "");
}
