// every_solid.h: tetrahedra, wedges and bricks, and the calls of the solid routines on them.
#ifndef FINITES_TESTS_EVERY_SOLID_H
#define FINITES_TESTS_EVERY_SOLID_H

#include <vector>

#include "observed.h"
#include "scene_analysis.h"
#include "solid_model.h"

namespace every_call {

class every_solid {
 public:
  static constexpr int PERIOD = 3;  // the kinds repeat after so many elements

  // Joins the plates of the analysis.
  every_solid(const analysis& a, int elements);

  void enter(int stage);
  void call(int elem, listener& to);

 private:
  void set_up_element(int elem);
  void operate(int op, int elem, std::int32_t node_count, listener& to);
  void call_results(int elem, listener& to);
  void call_axes(int elem, listener& to);
  void call_joints(int elem, listener& to);
  void watch_record(int elem, observed& written);

  bool has_state() const { return analysis_.state; }

  analysis analysis_;
  support::solid_model model_;
};

}  // namespace every_call

#endif
