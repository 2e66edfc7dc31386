// every_plate.h: plates of every kind, formulation and material, and the calls of FINITES and INFO_FINITES on them.
#ifndef FINITES_TESTS_EVERY_PLATE_H
#define FINITES_TESTS_EVERY_PLATE_H

#include <array>
#include <string>
#include <vector>

#include "observed.h"
#include "plate_model.h"
#include "scene_analysis.h"

namespace every_call {

// The fields that a solver allocates for one plate that yields.
class plate_fields {
 public:
  void give_section(PLATE_STATE_RECORD& record);
  void give_layers(PLATE_STATE_RECORD& record, int thickness_points);

 private:
  double* take(int count);

  std::vector<double> values_;
  std::size_t used_ = 0;
  std::array<POINT_STATE_RECORD, 4> points_{};
};

class every_plate {
 public:
  every_plate(const analysis& a, int elements);

  double* exchange() { return model_.displacements(); }
  int period() const;  // shapes and formulations repeat after so many elements
  void enter(int stage);
  void call(int stage, int elem, double* exchange, listener& to);

 private:
  void give_state(int elem);
  void set_factors();
  void call_first_pass(int elem, double* exchange, listener& to);
  void call_steps(int elem, double* exchange, listener& to);
  void operate(int op, int elem, int purpose, const std::vector<double>& u, double* exchange, listener& to);
  void call_info(int elem, listener& to);
  void watch_state(int elem, observed& written);
  void converge(int elem, const std::vector<double>& u);
  void tell_plastic_strains(int elem, listener& to);
  struct kind {
    int shape, behaviour;
  };
  kind kind_of(int elem);
  std::string label(const std::string& what, int elem);

  bool has_state() const { return analysis_.state; }

  analysis analysis_;
  support::plate_model model_;
  std::vector<plate_fields> fields_;
};

}  // namespace every_call

#endif
