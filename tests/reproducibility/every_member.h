// every_member.h: beams, trusses, cables, links and springs, with hinges, and the calls of the frame and hinge
// routines.
#ifndef FINITES_TESTS_EVERY_MEMBER_H
#define FINITES_TESTS_EVERY_MEMBER_H

#include <string>
#include <vector>

#include "frame_model.h"
#include "observed.h"
#include "scene_analysis.h"

namespace every_call {

class every_member {
 public:
  static constexpr int PERIOD = 8;  // the kinds repeat after so many elements

  // Joins the plates of the analysis.
  every_member(const analysis& a, int elements);

  void call(int elem, listener& to);

 private:
  void set_up_element(int elem);
  void set_up_hinges();

  // A stiffness routine as it stands: MODE and the outputs are the call's.
  void call_beam(int elem, listener& to);
  void call_beam_mass(int elem, listener& to);
  void call_truss(int elem, listener& to);
  void call_cable(int elem, listener& to);
  void call_link_or_spring(int elem, bool link, listener& to);
  void call_removal(int elem, listener& to);
  void call_hinge_forces(int elem, listener& to);
  void call_equations(int elem, listener& to);
  void call_plastic(int elem, const std::vector<double>& K, listener& to);
  void watch_record(int elem, observed& written);
  std::string hinge_label(int elem, bool release_comes_first);

  analysis analysis_;
  support::frame_model model_;
  std::vector<MEMBER_FORCES_RECORD> forces_;
  std::vector<ALT_FORCES_RECORD> alt_forces_;
  std::vector<ALT_STATE_RECORD> alt_states_;
};

}  // namespace every_call

#endif
