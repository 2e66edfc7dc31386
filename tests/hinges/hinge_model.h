// hinge_model.h: a model of three beams, of which the second has hinges and forces; everything that belongs to the
// others, and every force that a test has not set, is NaN.
#ifndef FINITES_TESTS_HINGE_MODEL_H
#define FINITES_TESTS_HINGE_MODEL_H

#include <array>
#include <string>
#include <vector>

#include "finites/records.h"
#include "frame_model.h"
#include "hinge_calls.h"

namespace hinge_tests {

using support::frame_model;
using support::member_description;

constexpr int MEMBER = 2;

// A record with capacities of 100, 20 and 30 and both ends elastic.
HINGE_RECORD hinge_of(int curve, int force_set, int end1_state, int end2_state);
void set_segments(VECTOR<4, std::int32_t>& list, const segments& values);

class hinge_model {
 public:
  explicit hinge_model(const HINGE_RECORD& hinge) : hinge_model(hinge, member_description{}) {}
  hinge_model(const HINGE_RECORD& hinge, member_description member);

  frame_model& frame() { return frame_; }
  HINGE_RECORD& hinge() { return frame_.hinge(MEMBER); }
  MEMBER_FORCES_RECORD& forces() { return forces_[place()]; }
  ALT_FORCES_RECORD& alt_forces() { return alt_forces_[place()]; }
  ALT_STATE_RECORD& alt_state() { return alt_states_[0]; }
  int position() const { return frame_.position(MEMBER); }

  void set_element_kind(double kind) { frame_.A()(frame_.entry(MEMBER)) = kind; }
  void set_force_mode(int mode);
  // F_END at 1, 5, 6 and at 7, 11, 12.
  void set_end_forces(const section_forces& end1, const section_forces& end2);

 private:
  std::size_t place() const { return static_cast<std::size_t>(position() - 1); }

  frame_model frame_;
  std::vector<MEMBER_FORCES_RECORD> forces_;
  std::vector<ALT_FORCES_RECORD> alt_forces_;
  std::vector<ALT_STATE_RECORD> alt_states_;
};

// ---- calls on the member with hinges

struct hinge_forces {
  double P, MY, MZ, LP, LMY, LMZ;
};
hinge_forces forces_at(hinge_model& model, int fmode, int end, int set);

struct equation_counts {
  std::int32_t NTOT, N1, N2;
  segments SEG1, SEG2;
};
// The lists hold `before` at the start.
equation_counts counts(hinge_model& model, int fmode, const segments& before = {});
// 12 rows by NTOT columns; only the columns that the counts announce are handed over, zeroed.
std::vector<double> gradients(hinge_model& model, int fmode, const equation_counts& n);

struct plastic_answer {
  std::vector<double> K, KP;       // K as the call leaves it
  std::vector<std::string> texts;  // of assertions that failed
};
plastic_answer plastic(hinge_model& model, const std::vector<double>& K);

}  // namespace hinge_tests

#endif
