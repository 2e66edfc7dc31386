// plastic_model.cpp: the table, and what a solver does between the calls.
#include "plastic_model.h"

#include "finites/fields.h"

const std::vector<plastic_kind>& shell_kinds() {
  static const std::vector<plastic_kind> kinds = {
      {"tri_thin", 3, 1, 6}, {"tri_thick", 3, 0, 8}, {"quad_thin", 4, 1, 6}, {"quad_thick", 4, 0, 8}};
  return kinds;
}

const std::vector<plastic_kind>& membrane_kinds() {
  static const std::vector<plastic_kind> kinds = {{"tri_membrane", 3, 3, 6}, {"quad_membrane", 4, 3, 6}};
  return kinds;
}

support::plate_description random_plate(support::seeded_random& random, const plastic_kind& kind, double hardening) {
  support::plate_description d = support::random_isotropic(
      random, kind.nodes == 3 ? support::random_triangle(random) : support::random_quadrilateral(random));
  d.formulation = kind.formulation;
  d.modifier_membrane = d.modifier_bending = d.modifier_shear = 1.0;
  d.yield_stress = d.young * random.log_uniform(5e-4, 4e-3);
  d.material.mtype = random.integer(0, 1) == 0 ? 1 : 3;
  d.material.HARDENING = static_cast<float>(d.young * hardening * random.uniform(0.5, 1.0));
  d.plastic_switch = 1;
  return d;
}

plastic_model::plastic_model(const support::plate_description& d, array_layout layout)
    : plate_model(std::vector<support::plate_description>{d}), storage(std::make_unique<section_storage>(layout)) {
  set_header(NONLIN_MATERIAL, 1.0);
  set_header(ANALYSIS_STATE, 1.0);
  set_header(STEP_COUNTER, 0.0);
  set_plate_material_code(1);
  allocate_state();
  storage->give_to(record());
}

std::vector<double> plastic_model::first_pass() {
  const std::vector<double> K = stiffness(1);
  go_on();
  return K;
}

void plastic_model::accept(const std::vector<double>& u) {
  promote(record());
  for (std::size_t i = 0; i < u.size(); ++i) record().STORED_DISPLACEMENTS.V[i] += u[i];
}
