// cable_test.cpp: what reaches the two routines of the cable library, the frame of the result, and the report of a
// failure.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "cable_recorder.h"
#include "comparison.h"
#include "finites/finites.h"
#include "guarded_buffer.h"
#include "member_cases.h"
#include "reference_member.h"

namespace {

using cable_recorder::answers;
using cable_recorder::calls;
using support::cable_answer;
using support::frame_model;
using support::member_description;
using support::seeded_random;

using triple = std::array<double, 3>;

const std::vector<double> ZEROS(36, 0.0);

// Loads by case: entry r of case c is 100 c + r.
std::vector<double> numbered_loads(int cases) {
  std::vector<double> loads;
  for (int c = 1; c <= cases; ++c) {
    for (int r = 1; r <= 13; ++r) loads.push_back(100.0 * c + r);
  }
  return loads;
}

member_description some_cable() {
  member_description m;
  m.family = support::member_family::cable;
  m.id = 4711;
  m.length = 8.0;
  m.weight = 20.0;
  m.area = 0.5;
  m.factor_area = 0.75;
  m.e1 = 1234.0;
  m.unstressed_length = 9.5;
  m.node1 = {1.0, 2.0, 3.0};
  m.node2 = {4.0, 5.5, 6.25};
  m.tau_b = 0.5;  // neither reduces a cable
  m.remove_step = -9;
  return m;
}

class Cable : public ::testing::Test {
 protected:
  void SetUp() override {
    cable_recorder::reset();
    seeded_random random(4801);
    const std::vector<double> KT = random.vector(36, 10.0);
    std::copy_n(KT.data(), 36, answers().KT.data());
  }
  static std::vector<double> KT() { return {answers().KT.begin(), answers().KT.end()}; }
};

void expect_load(const triple& w, double e) {
  EXPECT_EQ(calls().equilibrium.w, w);
  EXPECT_EQ(calls().equilibrium.e, e);
  EXPECT_EQ(calls().tangent.w, w);
  EXPECT_EQ(calls().tangent.e, e);
}

std::string padded(std::string text) {
  text.resize(500, ' ');
  return text;
}

}  // namespace

TEST_F(Cable, DataOfBothRoutines) {
  frame_model model({some_cable(), some_cable()});
  for (const int mode : {0, 1, 2}) {
    calls() = {};
    const cable_answer answer = model.cable(mode, 0, 2);
    EXPECT_EQ(answer.ierr, 0);
    EXPECT_EQ(calls().equilibria, 1);
    EXPECT_EQ(calls().tangents, 1);
    for (const cable_recorder::cable_data& data : {calls().equilibrium, calls().tangent}) {
      EXPECT_EQ(data.elem, 4711);
      EXPECT_EQ(data.X1, (triple{1.0, 2.0, 3.0}));
      EXPECT_EQ(data.X2, (triple{4.0, 5.5, 6.25}));
      EXPECT_EQ(data.area, 0.375);
      EXPECT_EQ(data.E, 1234.0);
      EXPECT_EQ(data.L0, 9.5);
    }
    EXPECT_EQ(calls().F, answers().F);
  }
}

TEST_F(Cable, SelfWeightHangsAlongTheNegativeGlobalYAxis) {
  member_description m = some_cable();
  m.loads = numbered_loads(2);
  frame_model model({m});
  for (const int load : {0, -1, -2147483647 - 1}) {
    model.cable(0, load);
    expect_load({0.0, -2.5, 0.0}, 0.0);
  }
}

TEST_F(Cable, WithoutWeightThereIsNoLoad) {
  member_description m = some_cable();
  m.weight = 0.0;
  frame_model model({m});
  EXPECT_EQ(model.cable(0, 0).ierr, 0);
  expect_load({0.0, 0.0, 0.0}, 0.0);
}

TEST_F(Cable, LoadCases) {
  member_description other = some_cable(), m = some_cable();
  other.loads = numbered_loads(1);
  m.loads = numbered_loads(4);
  frame_model model({other, m});
  for (int load = 1; load <= 4; ++load) {
    model.cable(0, load, 2);
    expect_load({100.0 * load + 7, 100.0 * load + 8, 100.0 * load + 9}, 100.0 * load + 13);
  }
}

TEST_F(Cable, ACaseBeyondTheLoadsIsNoLoad) {
  member_description m = some_cable();
  m.loads = numbered_loads(2);
  frame_model model({m});
  for (const int load : {3, 4, 2147483647}) {
    model.cable(0, load);
    expect_load({0.0, 0.0, 0.0}, 0.0);
  }
}

TEST_F(Cable, LoadsThatAreNotAllocatedAreNone) {
  frame_model model({some_cable()});
  for (const int load : {1, 2, 99}) {
    model.cable(0, load);
    expect_load({0.0, 0.0, 0.0}, 0.0);
  }
  // The flag says it, not the base.
  std::vector<double> loads = numbered_loads(2);
  model.record().MEMBER_LOADS = REFER_TO(loads.data(), 13, 2);
  model.record().MEMBER_LOADS.ALLOCATED_FLAG = 0;
  model.cable(0, 1);
  expect_load({0.0, 0.0, 0.0}, 0.0);
}

TEST_F(Cable, LoadsMayBeASectionWithItsOwnBoundsAndStrides) {
  // 15 rows, every second case of a larger array, cases counted from 3.
  std::vector<double> store(15 * 6);
  for (std::size_t i = 0; i < store.size(); ++i) store[i] = static_cast<double>(i);
  frame_model model({some_cable()});
  ARRAY_REFERENCE<double, 2>& loads = model.record().MEMBER_LOADS;
  loads = REFER_TO(store.data(), 15, 3);
  loads.DIMENSION[1] = {3, 2 * 15 * 8, 3};
  model.cable(0, 4);  // the second of them: column 3 of the store
  expect_load({30.0 + 6, 30.0 + 7, 30.0 + 8}, 30.0 + 12);
  for (const int outside : {1, 2, 6}) {
    model.cable(0, outside);
    expect_load({0.0, 0.0, 0.0}, 0.0);
  }
}

TEST_F(Cable, LoadsWithoutTheRowsOfACableAreNone) {
  // Rows 7 to 13 are what a cable reads; an array that lacks one of them has no load for it.
  std::vector<double> store = numbered_loads(2);
  frame_model model({some_cable()});
  ARRAY_REFERENCE<double, 2>& loads = model.record().MEMBER_LOADS;
  loads = REFER_TO(store.data(), 13, 2);
  const struct {
    std::int64_t extent, lower;
    bool complete;
  } rows[] = {{13, 1, true}, {12, 1, false}, {7, 7, true}, {6, 7, false}, {13, 8, false}, {13, 0, false}};
  for (const auto& row : rows) {
    loads.DIMENSION[0] = {row.extent, 8, row.lower};
    model.cable(0, 1);
    const double first = 101.0 - static_cast<double>(row.lower);  // what row 0 would hold
    if (row.complete) {
      expect_load({first + 7, first + 8, first + 9}, first + 13);
    } else {
      expect_load({0.0, 0.0, 0.0}, 0.0);
    }
  }
}

TEST_F(Cable, KindOneScalesLoadAndStrainByTheLoadFactor) {
  member_description m = some_cable();
  m.loads = numbered_loads(1);
  frame_model model({m});
  SOLANA.LOAD_FACTOR = 0.25;
  for (const int kind : {0, 1, 2, 3}) {
    model.set_kind(kind);
    const double factor = kind == 1 ? 0.25 : 1.0;
    for (const int mode : {0, 1, 2}) {
      model.cable(mode, 1);
      expect_load({107 * factor, 108 * factor, 109 * factor}, 113 * factor);
      model.cable(mode, 0);
      expect_load({0.0, -2.5 * factor, 0.0}, 0.0);
    }
  }
}

TEST_F(Cable, TheResultIsInGlobalAxesButForModeOne) {
  seeded_random random(4802);
  frame_model model({some_cable()});
  for (const bool full : {false, true}) {
    const std::vector<double> T =
        full ? member_cases::full_transformation(random) : member_cases::block_rotation(random);
    model.set_rotation(T);
    for (const int mode : {0, 2, -1, 3}) EXPECT_EQ(model.cable(mode, 0).K, KT()) << mode;
    const reference::matrix R = reference::square(T).topLeftCorner(6, 6);
    const reference::matrix expected = R * reference::square(KT()) * R.transpose();
    EXPECT_CLOSE(model.cable(1, 0).K, reference::listed(expected), static_cast<double>(expected.cwiseAbs().maxCoeff()),
                 30);
  }
}

TEST_F(Cable, NoGeometricMatrixInAnyModeAndKind) {
  frame_model model({some_cable()});
  SOLANA.LOAD_FACTOR = 1.0;
  for (const int kind : {0, 1, 3}) {
    for (const int mode : {0, 1, 2}) {
      model.set_kind(kind);
      EXPECT_EQ(model.cable(mode, 0).KG, ZEROS);
    }
  }
  EXPECT_TRUE(std::isnan(model.record().K11_COPY));  // a cable writes none
}

TEST_F(Cable, SuccessLeavesTheMessageAlone) {
  frame_model model({some_cable()});
  EXPECT_EQ(model.cable(0, 0).msg, std::string(500, '#'));
}

TEST_F(Cable, NoEquilibriumIsReported) {
  answers().equilibrium_status = 3;
  for (const int mode : {0, 1, 2}) {
    calls() = {};
    frame_model model({some_cable()});
    const cable_answer answer = model.cable(mode, 0);
    EXPECT_EQ(calls().tangents, 0);
    EXPECT_EQ(answer.ierr, 1264);
    EXPECT_EQ(answer.msg, padded("Cable element 4711: Case_1_L_0_3D2 ended with status 3 (called by kStifT)."));
    EXPECT_EQ(answer.K, ZEROS);
    EXPECT_EQ(answer.KG, ZEROS);
  }
}

TEST_F(Cable, NoTangentIsReportedAndLeavesZeros) {
  answers().tangent_status = -12;
  for (const int mode : {0, 1, 2}) {
    frame_model model({some_cable()});
    const cable_answer answer = model.cable(mode, 0);
    EXPECT_EQ(answer.ierr, 1264);
    EXPECT_EQ(answer.msg, padded("Cable element 4711: Calc_Kt_Tangent ended with status -12 (called by kStifT)."));
    EXPECT_EQ(answer.K, ZEROS);
    EXPECT_EQ(answer.KG, ZEROS);
  }
}

TEST_F(Cable, EveryStatusButZeroIsAFailure) {
  for (const int status : {1, 2, 3, -1, 2147483647, -2147483647 - 1}) {
    for (const bool first : {true, false}) {
      answers().equilibrium_status = first ? status : 0;
      answers().tangent_status = first ? 0 : status;
      frame_model model({some_cable()});
      const cable_answer answer = model.cable(0, 0);
      EXPECT_EQ(answer.ierr, 1264);
      EXPECT_NE(answer.msg.find("status " + std::to_string(status) + " "), std::string::npos) << answer.msg;
      EXPECT_EQ(answer.K, ZEROS);
    }
  }
}

TEST_F(Cable, TheMessageFillsItsFiveHundredCharactersAndNoMore) {
  answers().tangent_status = 1;
  frame_model model({some_cable()});
  std::string text(700, '~');
  std::vector<double> K(36), KG(36);
  std::int32_t ierr = 0;
  model.cable_call(0, 1, 0, K.data(), KG.data(), &ierr, text.data() + 100);
  EXPECT_EQ(text.substr(0, 100), std::string(100, '~'));
  EXPECT_EQ(text.substr(600), std::string(100, '~'));
  EXPECT_EQ(text.find('\0'), std::string::npos);
  EXPECT_EQ(text[599], ' ');
}

TEST_F(Cable, ErrorOfAnEarlierCallIsCleared) {
  frame_model model({some_cable()});
  std::string text(500, '~');
  std::vector<double> K(36, 5.0), KG(36, 5.0);
  std::int32_t ierr = 1264;
  model.cable_call(0, 1, 0, K.data(), KG.data(), &ierr, text.data());
  EXPECT_EQ(ierr, 0);
  EXPECT_EQ(K, KT());
  EXPECT_EQ(KG, ZEROS);
}
