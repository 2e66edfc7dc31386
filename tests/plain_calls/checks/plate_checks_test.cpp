// plate_checks_test.cpp: what is forgotten in a plate is found, with the effect that the library then shows.
#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <string>

#include "found.h"
#include "random_shapes.h"
#include "tarnix.h"

namespace {

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

const std::vector<support::point> TRIANGLE = {{0, 0, 0}, {2000, 0, 0}, {300, 1500, 0}};
const std::vector<support::point> SQUARE = {{0, 0, 0}, {1000, 0, 0}, {1000, 1000, 0}, {0, 1000, 0}};

support::plate_description plate(int formulation, const std::vector<support::point>& nodes = SQUARE) {
  support::plate_description d;
  d.nodes = nodes;
  d.formulation = formulation;
  d.thickness = 20.0;
  return d;
}

support::plate_description orthotropic(int formulation) {
  support::plate_description d = plate(formulation);
  d.material.ortho = 1;
  d.material.E1 = 2e5F;
  d.material.E2 = 1e5F;
  d.material.NU1 = 0.3F;
  d.material.NU2 = 0.15F;
  d.material.G12 = d.material.G13 = d.material.G23 = 6e4F;
  return d;
}

support::plate_description composite(int formulation) {
  support::plate_description d = plate(formulation);
  d.section_type = COMPOSITE_SECTION;
  d.composite.E1 = d.composite.E2 = 1e5F;
  d.composite.NU1 = d.composite.NU2 = 0.2F;
  d.composite.G12 = d.composite.G13 = d.composite.G23 = 4e4F;
  d.composite.CLT_FACTOR_1 = d.composite.CLT_FACTOR_2 = 1.0F;
  return d;
}

// A forgotten or wrong field, what is to be found, and a part of what is to be said.
struct mistake {
  const char* name;
  support::plate_description description;
  std::function<void(support::plate_model&)> make;
  std::int32_t severity, code;
  std::string said;
};

void expect_found(const mistake& m) {
  SCOPED_TRACE(m.name);
  support::plate_model model({m.description});
  m.make(model);
  const findings found = check(model);
  EXPECT_NE(text_of(found, m.severity, m.code).find(m.said), std::string::npos) << all_texts(found);
  EXPECT_EQ(worst(found), m.severity) << all_texts(found);
}

auto field(int name, double value) {
  return [=](support::plate_model& m) { m.A()(m.block(1) + name) = value; };
}
auto section(int name, double value) {
  return [=](support::plate_model& m) { m.A()(m.plate(1).SECTION_PTR + name) = value; };
}
auto material(int name, double value) {
  return [=](support::plate_model& m) { m.A()(m.plate(1).MATERIAL_PTR + name) = value; };
}
template <class CHANGE>
auto record(CHANGE change) {
  return [=](support::plate_model& m) { change(m.plate(1)); };
}

}  // namespace

// Models whose every unread place is NaN: nothing is to be said of them.
TEST(PlateChecks, AFilledPlateHasNoFinding) {
  for (const int formulation : {0, 1, 2, 3, 98, 99}) {
    for (const auto& nodes : {TRIANGLE, SQUARE}) {
      support::plate_model model({plate(formulation, nodes), plate(formulation, nodes)});
      EXPECT_EQ(all_texts(check(model, 1)), "");
      EXPECT_EQ(all_texts(check(model, 2)), "");
      model.deallocate_plate_of_elem();
      EXPECT_EQ(all_texts(check(model, 2)), "");
    }
    support::plate_model model({orthotropic(formulation), composite(formulation)});
    EXPECT_EQ(all_texts(check(model, 1)), "");
    EXPECT_EQ(all_texts(check(model, 2)), "");
  }
}

// A node off the plane, carried by its offset, is on it.
TEST(PlateChecks, AnOffsetCarriesANodeOffThePlane) {
  support::plate_description d = plate(0);
  d.nodes[2][2] = 200.0;
  {
    support::plate_model model({d});
    EXPECT_NE(text_of(check(model), WARNING, FINITES_FOUND_WARPED).find("node 3"), std::string::npos);
  }
  d.offset_switch = 1;
  d.offsets[2] = {0, 0, 200.0};
  support::plate_model model({d});
  EXPECT_EQ(all_texts(check(model)), "");
}

TEST(PlateChecks, TheTextNamesElementFieldPlaceEffectAndRemedy) {
  support::plate_description d = plate(1);
  d.id = 17;
  support::plate_model model({d});
  model.A()(model.block(1) + MODIFIER_BENDING) = 0;
  const findings found = check(model);
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(std::string(found[0].text), "element 1 (number 17): A(k + MODIFIER_BENDING) = A(" +
                                            std::to_string(model.block(1) + 58) +
                                            ") is 0: the element has no bending stiffness; set it to 1");
  EXPECT_EQ(found[0].element, 1);
  EXPECT_EQ(found[0].number, 17);
}

TEST(PlateChecks, FieldsOfTheEntry) {
  for (const mistake& m : std::vector<mistake>{
           {"membrane", plate(1), field(MODIFIER_MEMBRANE, 0), WARNING, FINITES_FOUND_MODIFIER, "no membrane"},
           {"bending", plate(1), field(MODIFIER_BENDING, 0), WARNING, FINITES_FOUND_MODIFIER, "no bending"},
           {"shear", plate(0), field(MODIFIER_SHEAR, 0), WARNING, FINITES_FOUND_MODIFIER, "no transverse shear forces"},
           {"general shear", orthotropic(0), field(MODIFIER_SHEAR, 0), ERROR, FINITES_FOUND_MODIFIER, "NaN"},
           {"NaN", plate(1), field(MODIFIER_BENDING, NaN), ERROR, FINITES_FOUND_NOT_FINITE, "MODIFIER_BENDING"},
           {"negative", plate(1), field(MODIFIER_BENDING, -1), WARNING, FINITES_FOUND_MODIFIER, "above 0"},
           {"mass", plate(1), field(MASS_FACTOR, 0), WARNING, FINITES_FOUND_MASS_FACTOR, "operation 2"},
           {"formulation", plate(1), field(FORMULATION, -7), NOTE, FINITES_FOUND_FORMULATION, "thick shell"},
           {"degrees", orthotropic(1), field(ORTHO_ANGLE_IN, 45), WARNING, FINITES_FOUND_ANGLE, "radians"},
           {"over a turn", orthotropic(1), field(ORTHO_ANGLE_IN, -6.3), WARNING, FINITES_FOUND_ANGLE, "radians"},
           {"count", plate(1), field(BLOCK_NODE_COUNT, 3), WARNING, FINITES_FOUND_NODE_COUNTS_DIFFER, "INFO_FINITES"},
           {"count NaN", plate(1), field(BLOCK_NODE_COUNT, NaN), WARNING, FINITES_FOUND_NODE_COUNTS_DIFFER, "nan"}}) {
    expect_found(m);
  }
}

// A full turn is 6.28318... radians.
TEST(PlateChecks, AnAngleUpToAFullTurnHasNoFinding) {
  for (const double angle : {-6.2831, 6.2831}) {
    support::plate_model model({orthotropic(1)});
    model.A()(model.block(1) + ORTHO_ANGLE_IN) = angle;
    EXPECT_EQ(all_texts(check(model, 1)), "");
  }
}

// What no operation of the kind reads may stay empty.
TEST(PlateChecks, FieldsThatAreNotReadMayBeEmpty) {
  support::plate_model model({plate(2), plate(1), plate(0)});
  model.A()(model.block(1) + MODIFIER_BENDING) = model.A()(model.block(1) + MODIFIER_SHEAR) = 0;
  model.A()(model.block(2) + MODIFIER_SHEAR) = 0;
  for (const int elem : {1, 2, 3}) {
    model.A()(model.plate(elem).MATERIAL_PTR + MATERIAL_SHEAR_MODULUS) = 0;
    EXPECT_EQ(all_texts(check(model, elem)), "");
  }
}

TEST(PlateChecks, SectionAndMaterial) {
  const auto no_composite = composite(1);
  auto bad_factor = composite(1);
  bad_factor.composite.CLT_FACTOR_2 = 0;
  auto no_shear = orthotropic(0), no_inplane = orthotropic(1), unlike = orthotropic(1), singular = orthotropic(1);
  no_shear.material.G13 = 0;
  no_inplane.material.G12 = 0;
  unlike.material.NU2 = 0.3F;
  singular.material.NU1 = 2.0F;
  singular.material.NU2 = 0.5F;
  singular.material.E2 = singular.material.E1 / 4;
  for (const mistake& m : std::vector<mistake>{
           {"thickness", plate(1), section(SECTION_THICKNESS, 0), WARNING, FINITES_FOUND_THICKNESS, "is zero"},
           {"general", orthotropic(0), section(SECTION_THICKNESS, 0), ERROR, FINITES_FOUND_THICKNESS, "NaN"},
           {"negative", plate(1), section(SECTION_THICKNESS, -1), WARNING, FINITES_FOUND_THICKNESS, "above 0"},
           {"number", composite(1), section(SECTION_NUMBER, 99), WARNING, FINITES_FOUND_COMPOSITE, "record 99"},
           {"number", composite(0), section(SECTION_NUMBER, 99), ERROR, FINITES_FOUND_COMPOSITE, "NaN"},
           {"factor", bad_factor, [](auto&) {}, WARNING, FINITES_FOUND_COMPOSITE, "CLT_FACTOR_2"},
           {"type", orthotropic(1), section(SECTION_TYPE, 0), WARNING, FINITES_FOUND_SECTION_TYPE, "not read"},
           {"E", plate(1), material(MATERIAL_YOUNG, 0), WARNING, FINITES_FOUND_YOUNG, "all stiffness"},
           {"E NaN", plate(1), material(MATERIAL_YOUNG, NaN), ERROR, FINITES_FOUND_NOT_FINITE, "MATERIAL_YOUNG"},
           {"nu", plate(1), material(MATERIAL_POISSON, 0.6), WARNING, FINITES_FOUND_POISSON, "between -1 and 0.5"},
           {"nu 1", plate(1), material(MATERIAL_POISSON, 1), ERROR, FINITES_FOUND_POISSON, "1 - nu^2"},
           {"m and N", plate(1), material(MATERIAL_UNIT_WEIGHT, 77e-3), NOTE, FINITES_FOUND_UNITS, "9810"},
           {"G13", no_shear, [](auto&) {}, ERROR, FINITES_FOUND_SHEAR_MODULUS, "G13 of material"},
           {"G12", no_inplane, [](auto&) {}, WARNING, FINITES_FOUND_SHEAR_MODULUS, "G12 of material"},
           {"unlike", unlike, [](auto&) {}, WARNING, FINITES_FOUND_ORTHOTROPY, "NU1 E2 / E1"},
           {"singular", singular, [](auto&) {}, ERROR, FINITES_FOUND_POISSON, "1 - NU1 NU2"}}) {
    expect_found(m);
  }
}

TEST(PlateChecks, Records) {
  for (const mistake& m :
       std::vector<mistake>{{"plates", plate(1), [](auto&) { SOLANAELEM.PLATE_RECORDS = {}; }, ERROR,
                             FINITES_FOUND_NO_RECORDS, "PLATE_RECORDS is missing"},
                            {"extent", plate(1), [](auto&) { SOLANAELEM.PLATE_RECORDS.DIMENSION[0].EXTENT = 0; }, ERROR,
                             FINITES_FOUND_NO_RECORD, "PLATE_RECORDS(1)"},
                            {"flag", plate(1), [](auto&) { SOLANAELEM.PLATE_RECORDS.ALLOCATED_FLAG = 0; }, WARNING,
                             FINITES_FOUND_RECORD_FLAG, "flag 0"},
                            {"plate of", plate(1), [](auto&) { SOLANAELEM.PLATE_OF_ELEM.DIMENSION[0].EXTENT = 0; },
                             ERROR, FINITES_FOUND_NO_RECORD, "PLATE_OF_ELEM(1)"},
                            {"address", plate(1), [](auto&) { SOLANAELEM.PLATE_OF_ELEM.BASE = nullptr; }, ERROR,
                             FINITES_FOUND_NO_RECORDS, "PLATE_OF_ELEM"},
                            {"NODE_COUNT", plate(1), record([](PLATE_RECORD& r) { r.NODE_COUNT = 0; }), ERROR,
                             FINITES_FOUND_NODE_COUNT, "set it to 3 or 4"},
                            {"section", plate(1), record([](PLATE_RECORD& r) { r.SECTION_PTR = 0; }), ERROR,
                             FINITES_FOUND_NO_BLOCK, "SECTION_PTR"},
                            {"material", plate(1), record([](PLATE_RECORD& r) { r.MATERIAL_PTR = 1 << 30; }), ERROR,
                             FINITES_FOUND_BLOCK_OUTSIDE, "MATERIAL_PTR"},
                            {"node", plate(1), record([](PLATE_RECORD& r) { r.NODE_PTR(2) = 0; }), ERROR,
                             FINITES_FOUND_NO_BLOCK, "NODE_PTR(2)"},
                            {"exchange", plate(1), [](support::plate_model& p) { p.A()(RES_BASE) = 0; }, ERROR,
                             FINITES_FOUND_EXCHANGE_AREA, "TARNIX_SET_EXCHANGE_AREA"},
                            {"header", plate(1), [](support::plate_model& p) { p.A()(RES_BASE) = 20; }, WARNING,
                             FINITES_FOUND_EXCHANGE_AREA, "overwrite"},
                            {"stored forces", plate(1), [](support::plate_model& p) { p.set_header(SECOND_ORDER, 1); },
                             WARNING, FINITES_FOUND_NO_STORED_FORCES, "STORED_NODAL_FORCES"}}) {
    expect_found(m);
  }
}

// An area of the calling thread takes the place of that of RES_BASE.
TEST(PlateChecks, AThreadMayHaveAnExchangeAreaOfItsOwn) {
  support::plate_model model({plate(1)});
  model.A()(RES_BASE) = 0;
  std::vector<double> area(EXCHANGE_LENGTH);
  TARNIX_SET_EXCHANGE_AREA(area.data());
  EXPECT_EQ(all_texts(check(model)), "");
  TARNIX_SET_EXCHANGE_AREA(nullptr);
  EXPECT_EQ(worst(check(model)), ERROR);
}

TEST(PlateChecks, Offsets) {
  auto unused = plate(1), both = plate(1);
  unused.offsets[0] = {0, 0, 50};
  auto fourth = plate(1);
  fourth.offsets[3] = {50, 0, 0};
  both.offset_switch = 1;
  both.common_offset = {0, 0, 50};
  auto by_node = unused;
  by_node.offset_switch = 1;
  for (const mistake& m : std::vector<mistake>{
           {"off", unused, [](auto&) {}, WARNING, FINITES_FOUND_OFFSETS, "OFFSET_SWITCH"},
           {"fourth", fourth, [](auto&) {}, WARNING, FINITES_FOUND_OFFSETS, "OFFSET_SWITCH"},
           {"common", both, [](auto&) {}, WARNING, FINITES_FOUND_OFFSETS, "COMMON_OFFSET) is not read"},
           {"by node", by_node, [](support::plate_model& p) { p.deallocate_plate_of_elem(); }, WARNING,
            FINITES_FOUND_OFFSETS, "NODE_OFFSETS of the plate record are not read"}}) {
    expect_found(m);
  }
}

TEST(PlateChecks, Shapes) {
  const auto with = [](std::vector<support::point> nodes) { return plate(1, nodes); };
  const auto nothing = [](support::plate_model&) {};
  for (const mistake& m : std::vector<mistake>{
           {"twice", with({{0, 0, 0}, {1, 0, 0}, {1, 0, 0}}), nothing, ERROR, FINITES_FOUND_COINCIDENT_NODES,
            "nodes 2 and 3"},
           {"collapsed", with({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 0, 0}}), nothing, ERROR,
            FINITES_FOUND_COINCIDENT_NODES, "nodes 1 and 4"},
           {"line", with({{0, 0, 0}, {1, 1, 1}, {3, 3, 3}}), nothing, ERROR, FINITES_FOUND_NO_AREA, "on a line"},
           {"point", with({{1, 1, 1}, {1, 1, 1}, {1, 1, 1}, {1, 1, 1}}), nothing, ERROR, FINITES_FOUND_NO_AREA,
            "one place"},
           {"re-entrant", with({{0, 0, 0}, {1, 0, 0}, {0.2, 0.2, 0}, {0, 1, 0}}), nothing, WARNING,
            FINITES_FOUND_FOLDED, "node 3"},
           {"bow tie", with({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1.1, 1, 0}}), nothing, WARNING, FINITES_FOUND_FOLDED,
            "round the element"},
           {"warped", with({{0, 0, 0}, {1, 0, 0}, {1, 1, 0.1}, {0, 1, 0}}), nothing, WARNING, FINITES_FOUND_WARPED,
            "longest side"},
           {"NaN", with({{0, 0, 0}, {1, NaN, 0}, {0, 1, 0}}), nothing, ERROR, FINITES_FOUND_NOT_FINITE, "node 2"}}) {
    expect_found(m);
  }
}

TEST(PlateChecks, StiffnessFactors) {
  const auto list = [](std::vector<float> factors) {
    return [factors](support::plate_model& p) { p.set_stiffness_factors({10}, factors); };
  };
  auto filled = plate(1);
  filled.material.E1 = 2e5F;
  filled.material.NU1 = 0.3F;
  filled.material.G12 = 8e4F;
  expect_found({"record", plate(1), list({0.5F, 0.5F}), WARNING, FINITES_FOUND_YOUNG, "E1 of material"});
  expect_found({"factor", filled, list({0.5F, 0.0F}), WARNING, FINITES_FOUND_STIFF_LIST, "column 1"});
  const auto shortened = [](support::plate_model& p) {
    p.set_stiffness_factors({10}, {0.5F, 0.5F});
    SOLANA.STIFF_FACTORS.DIMENSION[1].EXTENT = 0;
  };
  expect_found({"columns", filled, shortened, ERROR, FINITES_FOUND_STIFF_LIST, "no column"});
  support::plate_model model({filled});
  model.set_stiffness_factors({10}, {0.5F, 0.5F});
  EXPECT_EQ(all_texts(check(model)), "");
}

// The claims of the findings against the library's answers: over plates in which a random half of the numbers is
// forgotten, NaN comes with an error, and a freedom without stiffness with a warning. The drilling rotations of shells
// have theirs from E and h alone; a membrane has no stiffness across.
TEST(PlateChecks, TheLibraryAnswersAsForetold) {
  support::seeded_random random(7);
  int nan = 0, zero = 0, fine = 0;
  for (int run = 0; run < 3000; ++run) {
    const int formulation = random.integer(0, 2);
    const auto nodes =
        random.integer(0, 1) == 1 ? support::random_triangle(random, 1e3) : support::random_quadrilateral(random, 1e3);
    auto d = run % 3 == 0 ? plate(formulation) : run % 3 == 1 ? orthotropic(formulation) : composite(formulation);
    d.nodes = nodes;
    const auto forgets = [&random] { return random.integer(0, 7) == 0; };
    for (float* const value : {&d.material.E1, &d.material.G12, &d.material.G13, &d.material.G23, &d.composite.E2,
                               &d.composite.G12, &d.composite.G23, &d.composite.CLT_FACTOR_1}) {
      if (forgets()) *value = 0;
    }
    for (double* const value :
         {&d.thickness, &d.young, &d.poisson, &d.modifier_membrane, &d.modifier_bending, &d.modifier_shear}) {
      if (forgets()) *value = 0;
    }
    support::plate_model model({d});
    const findings found = check(model);
    const std::vector<double> K = model.stiffness(1);
    const int order = model.order(1);
    const int expected = formulation == 2 ? order / 2 : 0;
    if (!all_finite(K)) {
      ++nan;
      EXPECT_EQ(worst(found), ERROR) << run << "\n" << all_texts(found);
    } else if (zeros_on_diagonal(K, order) > expected) {
      ++zero;
      EXPECT_GE(worst(found), WARNING) << run << "\n" << all_texts(found);
    } else if (found.empty()) {
      ++fine;
    }
  }
  EXPECT_GT(nan, 50);
  EXPECT_GT(zero, 50);
  EXPECT_GT(fine, 200);
}
