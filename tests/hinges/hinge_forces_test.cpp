// hinge_forces_test.cpp: the forces at the ends of a member, from the records of the analysis.
//
// Forces are whole numbers that tell their place: sums are exact and compare with ==.
#include <gtest/gtest.h>

#include <limits>

#include "comparison.h"
#include "hinge_model.h"
#include "plugin_recorder.h"

namespace {

using namespace hinge_tests;
using plugin_recorder::answer;

constexpr int LOAD_ROWS = 13;
// Rows of P, My, Mz of an end.
constexpr int ROWS[3][3] = {{0, 0, 0}, {1, 5, 6}, {7, 11, 12}};

// 13 rows by two cases: 2, 4, ... 24 in the first; the second, and the thirteenth row, would show.
std::vector<double> loads() {
  std::vector<double> columns;
  for (int i = 1; i <= 12; ++i) columns.push_back(2.0 * i);
  columns.resize(2 * LOAD_ROWS, 1e6);
  return columns;
}

class HingeForces : public ::testing::Test {
 protected:
  explicit HingeForces(bool with_loads = true) : model(hinge_of(2, 7, 1, 1), member(with_loads)) {
    plugin_recorder::reset(answer::stand_in);
    for (int i = 1; i <= 12; ++i) {
      model.forces().F_END(i) = 100 + i;
      model.forces().F_END_STEP(i) = 1000 + 10 * i;
      model.forces().F_END_ITER(i) = 40000 + 100 * i;
      model.alt_forces().F_END(i) = -300 - i;
      model.alt_forces().F_END_STEP(i) = -5000 - 10 * i;
    }
    SOLANAELEM.LOAD_STEP = 3.0;
    model.alt_state().LOAD_STEP = 5.0;
  }
  static member_description member(bool with_loads) {
    member_description m;
    if (with_loads) m.loads = loads();
    return m;
  }
  // All six against sums of whole numbers.
  void expect(int fmode, int end, int set, const std::vector<double>& stored, const std::vector<double>& load) {
    const hinge_forces f = forces_at(model, fmode, end, set);
    EXPECT_EQ((std::vector<double>{f.P, f.MY, f.MZ}), stored) << "mode " << fmode << ", end " << end << ", set " << set;
    EXPECT_EQ((std::vector<double>{f.LP, f.LMY, f.LMZ}), load)
        << "mode " << fmode << ", end " << end << ", set " << set;
  }

  hinge_model model;
};

class HingeForcesWithoutLoads : public HingeForces {
 protected:
  HingeForcesWithoutLoads() : HingeForces(false) {}
};

}  // namespace

TEST_F(HingeForces, ModeZeroTakesTheStoredEndForcesAndReturnsTheLoadsBesideThem) {
  // f = 3, loads 2 i.
  expect(0, 1, 1, {101, 105, 106}, {3 * 2, 3 * 10, 3 * 12});
  expect(0, 2, 1, {107, 111, 112}, {3 * 14, 3 * 22, 3 * 24});
}

TEST_F(HingeForces, AnyOtherModeAddsStepIterationAndLoads) {
  for (const int fmode : {1, 2, -1}) {
    // 1010 + 40100 + 6 and so on.
    expect(fmode, 1, 1, {41116, 41580, 41696}, {6, 30, 36});
    expect(fmode, 2, 1, {1070 + 40700 + 42, 1110 + 41100 + 66, 1120 + 41200 + 72}, {42, 66, 72});
  }
}

TEST_F(HingeForces, TheSecondStateHasItsOwnFactorAndForces) {
  // f = 5.
  expect(0, 1, 2, {-301, -305, -306}, {10, 50, 60});
  expect(0, 2, 2, {-307, -311, -312}, {70, 110, 120});
}

TEST_F(HingeForces, TheSecondStateHasNoForcesOfTheIteration) {
  for (const int fmode : {1, 7, -2}) {
    expect(fmode, 1, 2, {-5010 + 10, -5050 + 50, -5060 + 60}, {10, 50, 60});
    expect(fmode, 2, 2, {-5070 + 70, -5110 + 110, -5120 + 120}, {70, 110, 120});
  }
}

TEST_F(HingeForcesWithoutLoads, HaveNoLoadPart) {
  for (int end = 1; end <= 2; ++end) {
    const int* r = ROWS[end];
    expect(0, end, 1, {100.0 + r[0], 100.0 + r[1], 100.0 + r[2]}, {0, 0, 0});
    expect(1, end, 1, {41000.0 + 110 * r[0], 41000.0 + 110 * r[1], 41000.0 + 110 * r[2]}, {0, 0, 0});
    expect(1, end, 2, {-5000.0 - 10 * r[0], -5000.0 - 10 * r[1], -5000.0 - 10 * r[2]}, {0, 0, 0});
  }
}

TEST_F(HingeForcesWithoutLoads, AskForNoRotationWhateverTheElementKind) {
  for (const double kind : {1.0, 10.0, 14.0}) {
    model.set_element_kind(kind);
    forces_at(model, 0, 1, 1);
    forces_at(model, 1, 2, 2);
  }
  EXPECT_EQ(plugin_recorder::calls().rotations, 0);
  EXPECT_EQ(plugin_recorder::calls().loads, 6);
}

TEST_F(HingeForces, KindsTenAndFourteenRotateTwoVectorsAndKeepNothingElse) {
  // R = [1 2 3; 4 5 6; 7 8 9] in the leading block. v(1..3) = (2, 4, 6): row 1 gives 2 + 8 + 18 = 28. v(4..6) =
  // (8, 10, 12): row 1 gives 8 + 20 + 36 = 64. They lie at 1..3 and 7..9, so that no moment is left.
  std::vector<double>& R = plugin_recorder::rotation();
  R.assign(144, 1e9);
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < 3; ++j) R[12 * j + i] = 1.0 + 3.0 * static_cast<double>(i) + static_cast<double>(j);
  }
  // Kinds are truncated.
  for (const double kind : {10.0, 14.0, 10.9}) {
    model.set_element_kind(kind);
    expect(0, 1, 1, {101, 105, 106}, {3 * 28, 0, 0});
    expect(0, 2, 1, {107, 111, 112}, {3 * 64, 0, 0});
    expect(1, 1, 1, {41110 + 84, 41550, 41660}, {84, 0, 0});
    expect(1, 2, 1, {41770 + 192, 42210, 42320}, {192, 0, 0});
    expect(1, 1, 2, {-5010 + 140, -5050, -5060}, {140, 0, 0});
    expect(0, 2, 2, {-307, -311, -312}, {320, 0, 0});
  }
  EXPECT_EQ(plugin_recorder::calls().rotations, 18);
}

TEST_F(HingeForces, EveryOtherKindHasItsLoadsInLocalAxesAlready) {
  plugin_recorder::rotation().assign(144, 1e9);
  for (const double kind :
       {0.0, 1.0, 4.0, 9.0, 11.0, 13.0, 15.0, -10.0, 9.99, 1e300, std::numeric_limits<double>::quiet_NaN()}) {
    model.set_element_kind(kind);
    expect(0, 1, 1, {101, 105, 106}, {6, 30, 36});
  }
  EXPECT_EQ(plugin_recorder::calls().rotations, 0);
}

TEST_F(HingeForces, TheRotationIsAskedForWithTheEntryOfTheElement) {
  model.set_element_kind(14.0);
  forces_at(model, 0, 1, 1);
  const plugin_recorder::recorded_calls& call = plugin_recorder::calls();
  EXPECT_EQ(call.rotations, 1);
  EXPECT_EQ(call.I, model.frame().entry(MEMBER));
  EXPECT_EQ(call.A, model.frame().storage().data());
  EXPECT_EQ(call.extent, model.frame().extent());
  EXPECT_EQ(call.pos, model.position());
  EXPECT_NE(call.pos, MEMBER);
}

TEST_F(HingeForces, TheRoutineIsAskedForOnEachCallByLengthsThatCountATerminator) {
  for (int i = 1; i <= 3; ++i) {
    forces_at(model, 0, 1, 1);
    EXPECT_EQ(plugin_recorder::calls().loads, i);
    EXPECT_EQ(plugin_recorder::calls().library, std::string("Vornekal.DLL\0", 13));
    EXPECT_EQ(plugin_recorder::calls().routine, std::string("NL_RotationMatrix_Beam\0", 23));
  }
}

TEST_F(HingeForces, TheSlotIsOneCellForAllCalls) {
  forces_at(model, 0, 1, 1);
  void** const slot = plugin_recorder::calls().slot;
  forces_at(model, 1, 2, 2);
  EXPECT_EQ(plugin_recorder::calls().slot, slot);
}

TEST_F(HingeForces, WithoutTheRoutineAllAreZeroAlsoWhereNoRotationIsNeeded) {
  plugin_recorder::reset(answer::missing);
  for (const double kind : {1.0, 10.0}) {
    model.set_element_kind(kind);
    for (int end = 1; end <= 2; ++end) {
      for (int set = 1; set <= 2; ++set) {
        for (int fmode = 0; fmode <= 1; ++fmode) expect(fmode, end, set, {0, 0, 0}, {0, 0, 0});
      }
    }
  }
}

TEST_F(HingeForces, ARoutineThatGoesMissingIsNotRememberedAndOneThatComesBackIsUsed) {
  expect(0, 1, 1, {101, 105, 106}, {6, 30, 36});
  plugin_recorder::reset(answer::missing);
  expect(0, 1, 1, {0, 0, 0}, {0, 0, 0});
  plugin_recorder::reset(answer::stand_in);
  expect(0, 1, 1, {101, 105, 106}, {6, 30, 36});
}

TEST_F(HingeForces, LoadsThatAreASectionAreReadByTheirStridesAndLowerBounds) {
  // Every second word, rows from 0, columns 40 words apart from -1: column 1 is the third.
  std::vector<double> wide(120, 1e6);
  for (std::size_t i = 1; i <= 12; ++i) wide[80 + 2 * i] = 2.0 * static_cast<double>(i);
  ARRAY_REFERENCE<double, 2>& reference = model.frame().record(MEMBER).MEMBER_LOADS;
  reference = {wide.data(), 8, 1, {{LOAD_ROWS, 2 * 8, 0}, {3, 40 * 8, -1}}};
  expect(0, 1, 1, {101, 105, 106}, {6, 30, 36});
  expect(0, 2, 1, {107, 111, 112}, {42, 66, 72});
}

TEST_F(HingeForces, OneLoadCaseIsEnough) {
  std::vector<double> one = loads();
  one.resize(LOAD_ROWS);
  model.frame().record(MEMBER).MEMBER_LOADS = REFER_TO(one.data(), LOAD_ROWS, 1);
  expect(0, 2, 1, {107, 111, 112}, {42, 66, 72});
  model.frame().record(MEMBER).MEMBER_LOADS = REFER_TO(one.data(), 12, 1);
  expect(0, 2, 1, {107, 111, 112}, {42, 66, 72});
}

TEST_F(HingeForces, LoadsWithoutAFirstCaseOrWithTooFewRowsAreNotReadBeyondTheirEnd) {
  ARRAY_REFERENCE<double, 2>& reference = model.frame().record(MEMBER).MEMBER_LOADS;
  std::vector<double> few = loads();
  few.resize(5);
  reference = REFER_TO(few.data(), 5, 0);
  expect(0, 1, 1, {101, 105, 106}, {0, 0, 0});
  reference = REFER_TO(few.data(), 5, 1);
  reference.DIMENSION[1].LOWER = 2;
  expect(0, 1, 1, {101, 105, 106}, {0, 0, 0});
  reference.DIMENSION[1].LOWER = 1;
  expect(0, 1, 1, {101, 105, 106}, {6, 30, 0});
  // One case, numbered 0: the case 1 would lie behind it.
  std::vector<double> one = loads();
  reference = REFER_TO(one.data(), LOAD_ROWS, 1);
  reference.DIMENSION[1].LOWER = 0;
  expect(0, 1, 1, {101, 105, 106}, {0, 0, 0});
}

TEST_F(HingeForces, RowsOfLoadsAreNumberedFromTheLowerBound) {
  // Rows 6 to 12, the words 1 to 7 of the storage: rows 1 and 5 do not exist. What lies before and behind would show.
  std::vector<double> storage(26, 1e6);
  for (std::size_t i = 6; i <= 12; ++i) storage[i + 6] = 2.0 * static_cast<double>(i);
  ARRAY_REFERENCE<double, 2>& reference = model.frame().record(MEMBER).MEMBER_LOADS;
  reference = REFER_TO(storage.data() + 12, 7, 1);
  reference.DIMENSION[0].LOWER = 6;
  expect(0, 1, 1, {101, 105, 106}, {0, 0, 3 * 12});
  expect(0, 2, 1, {107, 111, 112}, {3 * 14, 3 * 22, 3 * 24});
  // Rows -5 to 6: the row 7 and those above it do not exist.
  reference = REFER_TO(storage.data(), 12, 1);
  reference.DIMENSION[0].LOWER = -5;
  storage[6] = 2;
  storage[10] = 10;
  storage[11] = 12;
  expect(0, 1, 1, {101, 105, 106}, {3 * 2, 3 * 10, 3 * 12});
  expect(0, 2, 1, {107, 111, 112}, {0, 0, 0});
}

TEST_F(HingeForces, EndsAndStatesThatDoNotExistHaveNone) {
  for (const int none : {0, 3, -1, 2147483647}) {
    expect(0, none, 1, {0, 0, 0}, {0, 0, 0});
    expect(1, 1, none, {0, 0, 0}, {0, 0, 0});
  }
  SOLANAELEM.ALT_STATE = {};
  expect(1, 1, 2, {0, 0, 0}, {0, 0, 0});
  expect(0, 1, 1, {101, 105, 106}, {6, 30, 36});
}

TEST_F(HingeForces, WithoutTheRecordsOfTheMemberAllAreZero) {
  const auto members = SOLANAELEM.MEMBER_REC;
  SOLANAELEM.MEMBER_REC = {};
  for (int set = 1; set <= 2; ++set) expect(0, 1, set, {0, 0, 0}, {0, 0, 0});
  SOLANAELEM.MEMBER_REC = members;
  SOLANAELEM.MEMBER_FORCES = {};
  expect(0, 1, 1, {0, 0, 0}, {0, 0, 0});
  // The second state has forces of its own.
  expect(0, 1, 2, {-301, -305, -306}, {10, 50, 60});
  model.alt_state().MEMBER_FORCES = {};
  expect(0, 1, 2, {0, 0, 0}, {0, 0, 0});
}

TEST_F(HingeForces, TheLoadedLibraryRotatesTheLoadsOfAnObliqueMember) {
  // Direction (2, 1, 2)/3: P of an end is the load vector along the member.
  plugin_recorder::reset(answer::loaded);
  model.set_element_kind(10.0);
  const MODEL_DATA A = model.frame().A();
  const std::int32_t I = model.frame().entry(MEMBER);
  for (int end = 1; end <= 2; ++end) {
    const std::int32_t N = model.frame().node(MEMBER, end);
    A(I + 13 + end) = N;
    for (int i = 0; i < 3; ++i) A(N + 5 + i) = end == 1 ? 1.0 : i == 1 ? 3.0 : 5.0;
    // n1: words 19 to 21.
    for (int i = 0; i < 3; ++i) A(I + 19 + i) = i == 0 ? 1.0 : 0.0;
  }
  // v(1..3) = (2, 4, 6): (4 + 4 + 12)/3 = 20/3; v(4..6) = (8, 10, 12): (16 + 10 + 24)/3 = 50/3.
  const hinge_forces first = forces_at(model, 0, 1, 1), second = forces_at(model, 0, 2, 1);
  EXPECT_CLOSE(first.LP, 3 * 20.0 / 3, 20.0, 8);
  EXPECT_CLOSE(second.LP, 3 * 50.0 / 3, 50.0, 8);
  EXPECT_EQ(first.P, 101.0);
  EXPECT_EQ(second.LMY, 0.0);
}
