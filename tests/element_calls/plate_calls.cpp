// plate_calls.cpp: sample elements, guarded calls, and MODEL_DATA compared bit for bit.
#include "plate_calls.h"

#include <cstring>

#include "finites/fields.h"

namespace plate_calls {

std::vector<point> flat_triangle() { return {point{0.0, 0.0, 0.0}, point{2.0, 0.0, 0.0}, point{0.5, 1.5, 0.0}}; }

std::vector<point> space_triangle() { return {point{0.3, -0.2, 0.7}, point{1.9, 0.5, 1.1}, point{0.4, 1.6, -0.3}}; }

std::vector<point> space_quadrilateral() {  // a parallelogram
  return {point{0.3, -0.2, 0.7}, point{1.9, 0.5, 1.1}, point{2.0, 2.3, 0.1}, point{0.4, 1.6, -0.3}};
}

plate_description isotropic(const std::vector<point>& nodes, int formulation) {
  plate_description d;
  d.nodes = nodes;
  d.formulation = formulation;
  d.thickness = 0.12;
  d.modifier_membrane = 0.9;
  d.modifier_bending = 0.7;
  d.modifier_shear = 0.6;
  d.mass_factor = 1.3;
  return d;
}

plate_description orthotropic(const std::vector<point>& nodes, int formulation) {
  plate_description d = isotropic(nodes, formulation);
  d.ortho_angle = 0.4;
  d.material.ortho = 1;
  d.material.E1 = 1.9e5F;
  d.material.E2 = 0.7e5F;
  d.material.HARDENING = 1234.5F;
  d.material.G12 = 0.31e5F;
  d.material.G13 = 0.32e5F;
  d.material.G23 = 0.33e5F;
  d.material.NU1 = 0.23F;
  d.material.NU2 = 0.11F;
  d.material.ALPHA1 = 1.1e-5F;
  d.material.ALPHA2 = 2.3e-5F;
  return d;
}

plate_description composite(const std::vector<point>& nodes, int formulation) {
  plate_description d = isotropic(nodes, formulation);
  d.ortho_angle = -0.3;
  d.section_type = COMPOSITE_SECTION;
  d.composite.E1 = 1.7e5F;
  d.composite.E2 = 0.9e5F;
  d.composite.NU1 = 0.21F;
  d.composite.NU2 = 0.13F;
  d.composite.G12 = 0.41e5F;
  d.composite.G13 = 0.42e5F;
  d.composite.G23 = 0.43e5F;
  d.composite.ALPHA1 = 0.9e-5F;
  d.composite.ALPHA2 = 1.7e-5F;
  d.composite.UNIT_WEIGHT = 3.3e-4F;
  d.composite.CLT_FACTOR_1 = 0.77F;
  d.composite.CLT_FACTOR_2 = 1.21F;
  return d;
}

std::vector<plate_description> elastic_triangles() {
  std::vector<plate_description> all;
  for (const int formulation : {1, 2}) {
    all.push_back(isotropic(space_triangle(), formulation));
    all.push_back(orthotropic(space_triangle(), formulation));
    all.push_back(composite(space_triangle(), formulation));
  }
  return all;
}

std::string label(const plate_description& d) {
  const char* section = d.section_type == COMPOSITE_SECTION ? "composite" : d.material.ortho == 1 ? "ortho" : "iso";
  return "formulation " + std::to_string(d.formulation) + " " + section;
}

outputs call(plate_model& model, int op, int elem, const std::vector<double>& input) {
  outputs out;
  out.data.set_input(input);
  out.op = model.call(op, elem, out.data.data(), out.forces.data(), out.matrix.data());
  return out;
}

void prepare(plate_model& model, int elem) { call(model, PREPARE_ONLY, elem); }

snapshot::snapshot(plate_model& model) : model_(model), before_(model.raw(), model.raw() + model.extent()) {}

std::vector<int> snapshot::changed() const {
  std::vector<int> subscripts;
  for (std::size_t i = 0; i < before_.size(); ++i) {
    if (std::memcmp(&before_[i], model_.raw() + i, sizeof(double)) != 0) subscripts.push_back(static_cast<int>(i) + 1);
  }
  return subscripts;
}

int exchange_start(plate_model& model) { return model.A().INTEGER(RES_BASE); }

void poison_exchange(plate_model& model) {
  support::guarded_buffer pattern(1);
  for (int i = EXCHANGE_FORCES; i < EXCHANGE_POINTS + 360; ++i) {
    std::memcpy(&model.A()(exchange_start(model) + i), pattern.data(), sizeof(double));
  }
}

}  // namespace plate_calls
