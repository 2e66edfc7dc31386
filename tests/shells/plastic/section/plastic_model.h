// plastic_model.h: the kinds of element that the whole-section model knows, and a model of them as a solver runs it.
#ifndef FINITES_TESTS_PLASTIC_MODEL_H
#define FINITES_TESTS_PLASTIC_MODEL_H

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "finites/fields.h"
#include "plate_model.h"
#include "random_shapes.h"
#include "section_storage.h"

struct plastic_kind {
  const char* name;
  int nodes, formulation, width;
  bool thick() const { return width == 8; }
  bool membrane_only() const { return formulation == 3; }
};

const std::vector<plastic_kind>& shell_kinds();     // 10, 11, 20, 21
const std::vector<plastic_kind>& membrane_kinds();  // 12, 22 by code 3, the one membrane code that can yield

// Random shape, random isotropic plate without modifiers. hardening: 0, or the largest tangent modulus over E.
support::plate_description random_plate(support::seeded_random& random, const plastic_kind& kind, double hardening);

// One element with its state. A nonlinear run is on, the very first pass is not over.
struct plastic_model : support::plate_model {
  explicit plastic_model(const support::plate_description& d, array_layout layout = array_layout::packed);

  // The stiffness of the very first pass, after which it is over.
  std::vector<double> first_pass();
  void go_on() { set_header(STEP_COUNTER, 1.0); }
  PLATE_STATE_RECORD& record() { return state(1); }
  section_values values() { return values_of(record()); }
  // Accepts a step of these displacements.
  void accept(const std::vector<double>& u);

  std::unique_ptr<section_storage> storage;
};

#endif
