// layered_model.cpp: see the header.
#include "layered_model.h"

#include "finites/fields.h"
#include "finites/views.hpp"

using support::plate_description;
using support::seeded_random;

plate_description random_layered(seeded_random& random, const layered_subject& s, double hardening) {
  plate_description d = support::random_isotropic(
      random, s.nodes == 3 ? support::random_triangle(random) : support::random_quadrilateral(random));
  d.formulation = s.formulation;
  d.plastic_switch = 1;
  d.yield_stress = d.young * random.uniform(5e-4, 3e-3);
  d.material.mtype = random.integer(0, 1) == 0 ? 1 : 3;
  d.material.HARDENING = hardening > 0.0 ? static_cast<float>(d.young * random.uniform(0.01, hardening)) : 0.0F;
  return d;
}

layered_reference::material material_of(const plate_description& d) {
  return {d.young, d.poisson, d.yield_stress, static_cast<double>(d.material.HARDENING)};
}

layered_model::layered_model(const plate_description& d, int n, point_layout layout)
    : plate_model({d, d}),
      m(material_of(d)),
      storage(std::make_unique<layered_storage>(n > 0 ? n : 1, layout)),
      other(std::make_unique<layered_storage>(n > 0 ? n : 1)) {
  allocate_state();
  storage->give_to(state(1));
  other->give_to(state(2));
  SOLANAELEM.NPT_THICK = n;
  SOLANAELEM.EP_INC_FROM_CUR = 0;
  set_plate_material_code(2);
  set_header(NONLIN_MATERIAL, 1.0);
  set_header(ANALYSIS_STATE, 1.0);
  first_pass();
}

layered_model::~layered_model() { SOLANAELEM.NPT_THICK = SOLANAELEM.EP_INC_FROM_CUR = 0; }

void layered_model::first_pass() {
  set_header(STEP_COUNTER, 0.0);
  internal_forces(1, {});
  set_header(STEP_COUNTER, 1.0);
}

void layered_model::set_stored(const std::vector<double>& us) {
  MATRIX<6, 4>& stored = state(1).STORED_DISPLACEMENTS;
  for (std::size_t i = 0; i < 24; ++i) stored.V[i] = i < us.size() ? us[i] : 0.0;
}

void layered_model::promote_all() {
  for (int gp = 1; gp <= 4; ++gp) promote(point(gp));
}

void layered_model::fill_random(seeded_random& random) { storage->fill_random(random, m.sy, m.sy / m.E, m.E); }
