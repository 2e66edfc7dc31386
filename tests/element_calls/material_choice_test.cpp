// material_choice_test.cpp: which kind, behaviour and parts FINITES and INFO_FINITES choose, over every combination of
// what decides.
#include <gtest/gtest.h>

#include <cstdint>

#include "finites/fields.h"
#include "finites/finites.h"
#include "finites/records.h"
#include "finites/views.hpp"
#include "plate_calls.h"
#include "tarnix.h"

namespace {

using plate_calls::plate_model;
using plate_calls::prepare;

struct choice {
  int kind, behav, parts;
};

bool operator==(const choice& a, const choice& b) {
  return a.kind == b.kind && a.behav == b.behav && a.parts == b.parts;
}

std::ostream& operator<<(std::ostream& out, const choice& c) {
  return out << "kind " << c.kind << ", behav " << c.behav << ", parts " << c.parts;
}

// Everything that decides.
struct circumstances {
  int nodes = 3, formulation = 1, section = 1, mtype = 0, ortho = 0, code = 0, nonlinear = 0, plastic = 0;
};

std::ostream& operator<<(std::ostream& out, const circumstances& c) {
  return out << c.nodes << " nodes, formulation " << c.formulation << ", section " << c.section << ", mtype " << c.mtype
             << ", ortho " << c.ortho << ", code " << c.code << ", NONLIN_MATERIAL " << c.nonlinear
             << ", PLASTIC_SWITCH " << c.plastic;
}

// Element 1 is a triangle, element 2 a quadrilateral.
class bench {
 public:
  bench()
      : model_({plate_calls::isotropic(plate_calls::space_triangle()),
                plate_calls::isotropic(plate_calls::space_quadrilateral())}) {}

  void set(const circumstances& c) {
    elem_ = c.nodes == 3 ? 1 : 2;
    const std::int32_t k = model_.block(elem_);
    const PLATE_RECORD& plate = model_.plate(elem_);
    model_.set_header(NONLIN_MATERIAL, c.nonlinear);
    model_.set_plate_material_code(c.code);
    model_.A()(k + FORMULATION) = c.formulation;
    model_.A()(k + PLASTIC_SWITCH) = c.plastic;
    model_.A()(plate.SECTION_PTR + SECTION_TYPE) = c.section;
    MATERIAL_RECORD material{};
    material.mtype = c.mtype;
    material.ortho = c.ortho;
    const std::int32_t number = model_.A().INTEGER(plate.MATERIAL_PTR + MATERIAL_NUMBER);
    TARNIX_STORE_MATERIAL(&number, &material);
  }

  choice of_finites() {
    prepare(model_, elem_);
    return {PLATEELEM.ELEM_KIND, PLATEELEM.MAT_BEHAV, PLATEELEM.ACTIVE_PARTS};
  }

  choice of_info() {
    const std::int32_t element = elem_, n = model_.extent();
    choice c{-1, -1, -1};
    std::int32_t kind = -1, behav = -1, parts = -1;
    INFO_FINITES(&element, model_.raw(), &n, &kind, &behav, &parts);
    c = {kind, behav, parts};
    return c;
  }

  plate_model& model() { return model_; }

 private:
  plate_model model_;
  int elem_ = 1;
};

// ------------------------------------------------------------------------------------------- what the rules ask for

int expected_kind(const circumstances& c) {
  const int family = c.nodes == 3 ? 10 : 20;
  if (c.formulation == 1) return family;
  const bool membrane = c.formulation == 2 || c.formulation == 3 || c.formulation == 98 || c.formulation == 99;
  return membrane ? family + 2 : family + 1;
}

int expected_parts(int kind, int behav) {
  const int by_kind[3] = {1 + 2, 1 + 2 + 4, 1};  // thin, thick, membrane
  return by_kind[kind % 10] + (behav == 2 ? 8 : 0);
}

// The choice when a plastic material is admitted by all that FINITES and INFO_FINITES see alike.
int expected_behaviour(const circumstances& c, bool switches_on) {
  if (c.section == 6) return 1;
  if (c.section != 1) return 0;
  if (c.mtype == 0 && c.ortho == 1) return 1;
  const bool yields = (c.mtype == 1 || c.mtype == 3) && c.ortho == 0;
  const bool excluded = c.formulation == 2 || c.formulation == 98 || c.formulation == 99;
  if (!yields || excluded || c.code <= 0 || !switches_on) return 0;
  return c.code == 2 ? 3 : 2;
}

choice expected_of_finites(const circumstances& c) {
  const int kind = expected_kind(c);
  const int behav = expected_behaviour(c, c.nonlinear == 1 && c.plastic == 1);
  return {kind, behav, expected_parts(kind, behav)};
}

choice expected_of_info(const circumstances& c) {
  const int kind = expected_kind(c);
  const int behav = expected_behaviour(c, c.plastic != 0);
  return {kind, behav, expected_parts(kind, behav)};
}

template <class FUNCTION>
void for_all_materials(circumstances c, FUNCTION visit) {
  for (c.section = 0; c.section <= 6; ++c.section) {
    for (c.mtype = 0; c.mtype <= 4; ++c.mtype) {
      for (c.ortho = 0; c.ortho <= 2; ++c.ortho) {
        for (c.code = -1; c.code <= 3; ++c.code) {
          for (c.nonlinear = 0; c.nonlinear <= 2; ++c.nonlinear) {
            for (c.plastic = -1; c.plastic <= 2; ++c.plastic) visit(c);
          }
        }
      }
    }
  }
}

// Circumstances under which a thin triangle yields.
circumstances yielding() {
  circumstances c;
  c.mtype = 1;
  c.code = 1;
  c.nonlinear = 1;
  c.plastic = 1;
  return c;
}

}  // namespace

// ------------------------------------------------------------------------------------------------ the tables

TEST(MaterialChoice, OfBothEntriesOverAllCircumstances) {
  bench b;
  for (const int nodes : {3, 4}) {
    for (const int formulation : {-1, 0, 1, 2, 3, 4, 5, 97, 98, 99, 100}) {
      circumstances start;
      start.nodes = nodes;
      start.formulation = formulation;
      for_all_materials(start, [&b](const circumstances& c) {
        b.set(c);
        const choice finites = b.of_finites(), info = b.of_info();
        if (!(finites == expected_of_finites(c))) ADD_FAILURE() << "FINITES, " << c << ": " << finites;
        if (!(info == expected_of_info(c))) ADD_FAILURE() << "INFO_FINITES, " << c << ": " << info;
      });
      if (HasFailure()) return;
    }
  }
}

// The rows that the table's rule could hide, by hand: FINITES first, then INFO_FINITES.
TEST(MaterialChoice, RowsWhereTheTwoEntriesDiffer) {
  bench b;
  circumstances c = yielding();
  b.set(c);
  EXPECT_EQ(b.of_finites(), (choice{10, 2, 11}));
  EXPECT_EQ(b.of_info(), (choice{10, 2, 11}));

  c.nonlinear = 0;
  b.set(c);
  EXPECT_EQ(b.of_finites(), (choice{10, 0, 3}));
  EXPECT_EQ(b.of_info(), (choice{10, 2, 11})) << "NONLIN_MATERIAL is not asked";

  c = yielding();
  c.plastic = 2;
  b.set(c);
  EXPECT_EQ(b.of_finites(), (choice{10, 0, 3})) << "the switch must be 1";
  EXPECT_EQ(b.of_info(), (choice{10, 2, 11})) << "the switch need only be non-zero";
}

TEST(MaterialChoice, LayeredPlasticityAddsNoPart) {
  bench b;
  circumstances c = yielding();
  c.code = 2;
  c.formulation = 0;
  b.set(c);
  EXPECT_EQ(b.of_finites(), (choice{11, 3, 7}));
  EXPECT_EQ(b.of_info(), (choice{11, 3, 7}));
  c.code = 1;
  b.set(c);
  EXPECT_EQ(b.of_finites(), (choice{11, 2, 15}));
  EXPECT_EQ(b.of_info(), (choice{11, 2, 15}));
}

TEST(MaterialChoice, NodesAreCountedInTheRecordByOneAndInTheBlockByTheOther) {
  bench b;
  circumstances c;
  b.set(c);
  b.model().A()(b.model().block(1) + BLOCK_NODE_COUNT) = 4.0;  // the record says 3
  EXPECT_EQ(b.of_finites().kind, 10);
  EXPECT_EQ(b.of_info().kind, 20);
  for (const double count : {0.0, 2.0, 5.0, -3.0}) {
    b.model().A()(b.model().block(1) + BLOCK_NODE_COUNT) = count;
    EXPECT_EQ(b.of_info().kind, 20) << count;
  }
}

TEST(MaterialChoice, InfoTouchesNoState) {
  bench b;
  b.set(yielding());
  b.model().set_header(ANALYSIS_STATE, 1);  // the first pass, when FINITES would initialise a state
  PLATEELEM.ELEM_KIND = 77;
  PLATEELEM.E1 = 3.5;
  const plate_calls::snapshot before(b.model());
  b.of_info();
  EXPECT_EQ(before.changed(), std::vector<int>{});
  EXPECT_EQ(PLATEELEM.ELEM_KIND, 77);
  EXPECT_EQ(PLATEELEM.E1, 3.5);
}

TEST(MaterialChoice, IntegersOfTheModelAreTruncated) {
  bench b;
  b.set(yielding());
  b.model().A()(b.model().block(1) + FORMULATION) = 2.99;
  b.model().A()(b.model().block(1) + BLOCK_NODE_COUNT) = 3.75;
  EXPECT_EQ(b.of_finites().kind, 12);
  EXPECT_EQ(b.of_info().kind, 12);
}

// ------------------------------------------------------------------------------------------------ named cases

TEST(MaterialEdgeCases, FormulationFiveIsAThickShell) {
  bench b;
  circumstances c;
  c.formulation = 5;
  b.set(c);
  EXPECT_EQ(b.of_finites(), (choice{11, 0, 7}));
  EXPECT_EQ(b.of_info(), (choice{11, 0, 7}));
  c.nodes = 4;
  b.set(c);
  EXPECT_EQ(b.of_finites(), (choice{21, 0, 7}));
}

TEST(MaterialEdgeCases, FormulationThreeMayYieldAndFormulationTwoNever) {
  bench b;
  circumstances c = yielding();
  for (const int code : {1, 2, 3}) {
    c.code = code;
    c.formulation = 3;
    b.set(c);
    EXPECT_EQ(b.of_finites().kind, 12);
    EXPECT_EQ(b.of_finites().behav, code == 2 ? 3 : 2);
    for (const int formulation : {2, 98, 99}) {
      c.formulation = formulation;
      b.set(c);
      EXPECT_EQ(b.of_finites(), (choice{12, 0, 1})) << formulation;
      EXPECT_EQ(b.of_info(), (choice{12, 0, 1})) << formulation;
    }
  }
}

TEST(MaterialEdgeCases, SectionOfAnotherTypeIsIsotropic) {
  bench b;
  circumstances c;
  c.ortho = 1;
  for (const int section : {0, 2, 3, 5, 7, -1}) {
    c.section = section;
    b.set(c);
    EXPECT_EQ(b.of_finites().behav, 0) << section;
    EXPECT_EQ(b.of_info().behav, 0) << section;
  }
}
