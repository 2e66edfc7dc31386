// hinge_model.cpp: the model and the calls on its member.
#include "hinge_model.h"

#include <gtest/gtest.h>

#include <limits>

#include "assert_recorder.h"
#include "comparison.h"
#include "finites/finites.h"
#include "guarded_buffer.h"
#include "tarnix.h"

namespace hinge_tests {

namespace {

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

// Header words of the first element entry and of the distance from one to the next.
constexpr int ENTRY_BASE = 100, ENTRY_DISTANCE = 102;

std::vector<member_description> three_members(const HINGE_RECORD& hinge, member_description member) {
  member.hinge = hinge;
  std::vector<member_description> members(3);
  for (member_description& other : members) {
    other.hinge.HINGE_MODEL = other.hinge.END1_STATE = other.hinge.END2_STATE = 1;
    other.hinge.CURVE_KIND = 2;
  }
  members[MEMBER - 1] = member;
  return members;
}

template <int N>
void fill(VECTOR<N>& v) {
  for (double& x : v.V) x = NOT_A_NUMBER;
}

MEMBER_FORCES_RECORD unset_forces() {
  MEMBER_FORCES_RECORD f;
  fill(f.F_END);
  fill(f.F_END_STEP);
  fill(f.F_END_ITER);
  return f;
}

ALT_FORCES_RECORD unset_alt_forces() {
  const MEMBER_FORCES_RECORD f = unset_forces();
  return {f.F_END, f.F_END_STEP};
}

}  // namespace

HINGE_RECORD hinge_of(int curve, int force_set, int end1_state, int end2_state) {
  HINGE_RECORD h{};
  h.HINGE_MODEL = 1;
  h.CURVE_KIND = curve;
  h.FORCE_SET = force_set;
  h.CAP_P = 100.0;
  h.CAP_MY = 20.0;
  h.CAP_MZ = 30.0;
  h.END1_STATE = end1_state;
  h.END2_STATE = end2_state;
  for (double& k : h.K_ELASTIC.V) k = NOT_A_NUMBER;
  return h;
}

void set_segments(VECTOR<4, std::int32_t>& list, const segments& values) {
  for (std::size_t i = 0; i < 4; ++i) list.V[i] = values[i];
}

hinge_model::hinge_model(const HINGE_RECORD& hinge, member_description member)
    : frame_(three_members(hinge, std::move(member))),
      forces_(static_cast<std::size_t>(2 * frame_.count() + 1), unset_forces()),
      alt_forces_(forces_.size(), unset_alt_forces()),
      alt_states_(2) {
  frame_.A()(ENTRY_BASE) = frame_.entry(1);
  frame_.A()(ENTRY_DISTANCE) = frame_.entry(2) - frame_.entry(1);
  set_element_kind(1.0);
  SOLANAELEM.MEMBER_FORCES = REFER_TO(forces_.data(), forces_.size());
  SOLANAELEM.LOAD_STEP = 1.0;
  alt_states_[0].LOAD_STEP = alt_states_[1].LOAD_STEP = NOT_A_NUMBER;
  alt_states_[0].MEMBER_FORCES = REFER_TO(alt_forces_.data(), alt_forces_.size());
  SOLANAELEM.ALT_STATE = REFER_TO(alt_states_.data(), alt_states_.size());
  support::forget_assertions();
}

void hinge_model::set_force_mode(int mode) {
  SOLPARAM_RECORD parameters;
  ZelkuSolParamGetRec(&parameters);
  parameters.HINGE_FORCE_MODE = mode;
  TARNIX_STORE_SOLPARAM(&parameters);
}

void hinge_model::set_end_forces(const section_forces& end1, const section_forces& end2) {
  VECTOR<12>& f = forces().F_END;
  f(1) = end1.P;
  f(5) = end1.MY;
  f(6) = end1.MZ;
  f(7) = end2.P;
  f(11) = end2.MY;
  f(12) = end2.MZ;
}

hinge_forces forces_at(hinge_model& model, int fmode, int end, int set) {
  const std::int32_t elem = MEMBER, extent = model.frame().extent(), pos = model.position();
  const std::int32_t FMODE = fmode, END = end, SET = set;
  support::guarded_buffer o(66);
  double* const d = o.data();
  GET_HINGE_FORCES(&elem, model.frame().storage().data(), &extent, &pos, &FMODE, &END, &SET, d, d + 13, d + 26, d + 39,
                   d + 52, d + 65);
  EXPECT_EQ(o.changed(), (std::vector<int>{1, 14, 27, 40, 53, 66}));
  return {o(1), o(14), o(27), o(40), o(53), o(66)};
}

equation_counts counts(hinge_model& model, int fmode, const segments& before) {
  std::int32_t elem = MEMBER, extent = model.frame().extent(), FMODE = fmode;
  equation_counts n{-7777, -7777, -7777, before, before};
  GET_YIELD_CURVE_EQ_COUNT(&elem, model.frame().storage().data(), &extent, &FMODE, &n.NTOT, &n.N1, &n.N2, n.SEG1.data(),
                           n.SEG2.data());
  return n;
}

std::vector<double> gradients(hinge_model& model, int fmode, const equation_counts& n) {
  std::int32_t elem = MEMBER, extent = model.frame().extent(), FMODE = fmode;
  equation_counts handed = n;
  const int entries = 12 * n.NTOT;
  support::guarded_buffer NMAT(entries);
  NMAT.set_input(std::vector<double>(static_cast<std::size_t>(entries), 0.0));
  GET_YIELD_CURVE_DERIVATIVES(&elem, model.frame().storage().data(), &extent, &FMODE, NMAT.data(), &handed.NTOT,
                              &handed.N1, &handed.N2, handed.SEG1.data(), handed.SEG2.data());
  for (const int position : NMAT.changed()) EXPECT_TRUE(position >= 1 && position <= entries) << position;
  return support::values(NMAT.data(), entries);
}

plastic_answer plastic(hinge_model& model, const std::vector<double>& K) {
  const std::int32_t elem = MEMBER, number = model.frame().number(MEMBER), extent = model.frame().extent();
  support::guarded_buffer k(144), kp(144);
  k.set_input(K);
  support::forget_assertions();
  KSTIFB_PLAST(&number, model.frame().storage().data(), &extent, &elem, k.data(), kp.data());
  EXPECT_EQ(kp.changed(), support::range(1, 144));
  for (const int position : k.changed()) EXPECT_TRUE(position >= 1 && position <= 144) << position;
  return {support::values(k.data(), 144), support::values(kp.data(), 144), support::recorded_assertions()};
}

}  // namespace hinge_tests
