// section_state_test.cpp: the first state of an element, and access to its state.
#include <memory>

#include "assert_recorder.h"
#include "comparison.h"
#include "plate_material/section_state.h"
#include "plate_model.h"
#include "prepared_section.h"
#include "section_storage.h"
#include "shells/plastic/section_first_state.h"

using section_reference::matrix;
using support::seeded_random;
using texts = std::vector<std::string>;

namespace {

const std::string CHECK_TEXT =
    "D\xC3\xA9"
    "composition spectrale, KOK_DS";

const section_reference::plate STEEL{0.02, 235.0, 2.1e5, 0.3, 2000.0};

// Three triangles with their states, and PLATEELEM as FINITES has it for one of them before it asks for a first state.
struct states {
  explicit states(array_layout layout) : model(std::vector<support::plate_description>(3, triangle())) {
    model.allocate_state();
    for (int elem = 1; elem <= 3; ++elem) {
      storage.push_back(std::make_unique<section_storage>(layout));
      storage.back()->give_to(model.state(elem));
      storage.back()->fill(7.0);
    }
    const prepared_section s(STEEL);
    D = section_reference::isotropic_section(STEEL);
    PLATEELEM_RECORD& P = PLATEELEM;
    P.ELEM_INDEX = 2;
    P.G12 = P.G13 = P.G23 = STEEL.E / (2.0 * (1.0 + STEEL.nu));
    P.MOD_MEMBRANE = P.MOD_BENDING = {{1.0, 1.0, 1.0}};
    P.MOD_SHEAR = {{1.0, 1.0}};
    P.CLT_FACTOR_1 = P.CLT_FACTOR_2 = 1.0;
    P.D8 = MATRIX<8, 8>{};
    support::forget_assertions();
  }
  static support::plate_description triangle() {
    support::plate_description d;
    d.nodes = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    return d;
  }

  support::plate_model model;
  std::vector<std::unique_ptr<section_storage>> storage;
  matrix D;
};

class FirstState : public ::testing::TestWithParam<array_layout> {};
INSTANTIATE_TEST_SUITE_P(Layouts, FirstState, ::testing::Values(array_layout::packed, array_layout::scattered),
                         [](const auto& layout) {
                           return std::string(layout.param == array_layout::packed ? "Packed" : "Scattered");
                         });

}  // namespace

TEST_P(FirstState, IsZeroOnThePositiveBranchWithTheElasticSection) {
  states t(GetParam());
  t.model.state(2).STORED_DISPLACEMENTS(1, 1) = 5.0;
  t.model.state(2).STORED_NODAL_FORCES(1, 1) = 6.0;
  SECTION_STATE_INIT(PLATEELEM);
  const section_values values = values_of(t.model.state(2));
  for (const char* name : {"SEC_EP_START", "SEC_EP_CUR", "SEC_EP_INC"}) {
    EXPECT_EQ(field_of(values, name), std::vector<double>(48, 0.0)) << name;
  }
  for (const char* name : {"SEC_EPBAR_START", "SEC_EPBAR_CUR", "SEC_AUX", "SEC_CURV_INC"}) {
    EXPECT_EQ(field_of(values, name), std::vector<double>(4, 0.0)) << name;
  }
  for (const char* name : {"SEC_SIGN_START", "SEC_SIGN_CUR"}) {
    EXPECT_EQ(field_of(values, name), std::vector<double>(4, 1.0)) << name;
  }
  std::vector<double> tangents;
  for (int gp = 1; gp <= 4; ++gp) {
    const std::vector<double> D = section_reference::listed(t.D);
    tangents.insert(tangents.end(), D.begin(), D.end());
  }
  EXPECT_CLOSE(field_of(values, "SEC_TANGENT"), tangents, section_reference::largest(t.D), 4);
  for (int gp = 1; gp <= 4; ++gp) {  // bending lies far below the membrane
    EXPECT_CLOSE(t.model.state(2).SEC_TANGENT(4, 4, gp), static_cast<double>(t.D(3, 3)), static_cast<double>(t.D(3, 3)),
                 4);
  }
  EXPECT_EQ(t.model.state(2).STORED_DISPLACEMENTS(1, 1), 5.0);
  EXPECT_EQ(t.model.state(2).STORED_NODAL_FORCES(1, 1), 6.0);
  EXPECT_TRUE(t.storage[1]->guards_hold());
  EXPECT_EQ(support::recorded_assertions(), texts());
}

TEST_P(FirstState, LeavesTheOtherElementsAlone) {
  states t(GetParam());
  SECTION_STATE_INIT(PLATEELEM);
  for (const int elem : {1, 3}) {
    for (const auto& field : values_of(t.model.state(elem))) {
      EXPECT_EQ(field.second, std::vector<double>(field.second.size(), 7.0)) << field.first;
    }
  }
}

TEST(FirstStateOfAnElement, SetsTheSectionMatricesWithoutSplitAndWithBending) {
  states t(array_layout::packed);
  SECTION_STATE_INIT(PLATEELEM);
  const PLATEELEM_RECORD& P = PLATEELEM;
  EXPECT_EQ(listed(P.D_MEMBRANE_SHEAR), std::vector<double>(9, 0.0));
  EXPECT_GT(P.D_MEMBRANE_NORMAL(3, 3), 0.0);
  EXPECT_GT(P.D_BENDING(3, 3), 0.0);
  EXPECT_EQ(P.D8(3, 3), P.D_MEMBRANE_NORMAL(3, 3));
  EXPECT_EQ(P.D8(8, 8), P.D_SHEAR(2, 2));
}

TEST(FirstStateOfAnElement, ChecksTheSpectralDataAtEachOfFourPoints) {
  states t(array_layout::packed);
  PLATEELEM.MOD_BENDING = {{0.5, 0.5, 0.5}};
  SECTION_STATE_INIT(PLATEELEM);
  EXPECT_EQ(support::recorded_assertions(), texts(4, CHECK_TEXT));
  EXPECT_CLOSE(t.model.state(2).SEC_TANGENT(4, 4, 3), 0.5 * static_cast<double>(t.D(3, 3)),
               static_cast<double>(t.D(3, 3)), 4);
}

TEST(FirstStateOfAnElement, ToleratesWhatIsNotAllocated) {
  {
    states t(array_layout::packed);
    SOLANAELEM.PLATE_STATE = {};
    SECTION_STATE_INIT(PLATEELEM);
  }
  states t(array_layout::packed);
  PLATE_STATE_RECORD& r = t.model.state(2);
  const auto without = [&t, &r](auto& field) {
    t.storage[1]->give_to(r);
    field = {};
    SECTION_STATE_INIT(PLATEELEM);
    EXPECT_FALSE(section_state_of(state_of_element(2)).complete);
  };
  without(r.SEC_EP_START);
  without(r.SEC_EP_CUR);
  without(r.SEC_EPBAR_START);
  without(r.SEC_EPBAR_CUR);
  without(r.SEC_EP_INC);
  without(r.SEC_TANGENT);
  without(r.SEC_CURV_INC);
  without(r.SEC_AUX);
  without(r.SEC_SIGN_CUR);
  without(r.SEC_SIGN_START);
  t.storage[1]->give_to(r);
  EXPECT_TRUE(
      section_state_of(state_of_element(2)).complete);  // without POINT_STATE, which the layered model allocates
}

TEST(SectionState, IsFoundByTheIndexOfTheElement) {
  // Plates are numbered against the elements here.
  states t(array_layout::packed);
  for (int elem = 1; elem <= 3; ++elem) {
    EXPECT_EQ(section_state_of(state_of_element(elem)).record, &t.model.state(elem));
    EXPECT_EQ(stored_displacements_of(state_of_element(elem)), t.model.state(elem).STORED_DISPLACEMENTS.data());
  }
  SOLANAELEM.PLATE_STATE = {};
  EXPECT_EQ(section_state_of(state_of_element(1)).record, nullptr);
  EXPECT_FALSE(section_state_of(state_of_element(1)).complete);
  EXPECT_EQ(stored_displacements_of(state_of_element(1)), nullptr);
}

TEST_P(FirstState, TangentOfTheNarrowWidthHasZerosOutsideItsBlock) {
  states t(GetParam());
  seeded_random random(691);
  MATRIX<6, 6> C{};
  for (double& v : C.V) v = random.uniform(1.0, 2.0);
  store_section_tangent(t.model.state(1), 3, C);
  for (int gp = 1; gp <= 4; ++gp) {
    for (int j = 1; j <= 8; ++j) {
      for (int i = 1; i <= 8; ++i) {
        const double expected = gp != 3 ? 7.0 : i <= 6 && j <= 6 ? C(i, j) : 0.0;
        EXPECT_EQ(t.model.state(1).SEC_TANGENT(i, j, gp), expected) << i << " " << j << " " << gp;
      }
    }
  }
  EXPECT_EQ(listed(section_tangent<6>(t.model.state(1), 3)), listed(C));
  EXPECT_EQ(section_tangent<8>(t.model.state(1), 3)(7, 7), 0.0);
  EXPECT_TRUE(t.storage[0]->guards_hold());
}
