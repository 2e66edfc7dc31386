#include "plate_subjects.h"

#include <cstring>

#include "finites/fields.h"

namespace subjects {

using support::plate_description;
using support::seeded_random;

std::vector<plate_kind> all_plate_kinds() {
  std::vector<plate_kind> all;
  for (const int nodes : {3, 4}) {
    for (const int theory : {FINITES_THICK, FINITES_THIN, FINITES_MEMBRANE, FINITES_MEMBRANE_REDUCED}) {
      for (const behaviour section : {behaviour::isotropic, behaviour::orthotropic, behaviour::composite}) {
        for (const bool offsets : {false, true}) all.push_back({nodes, theory, section, offsets});
      }
    }
  }
  return all;
}

std::string name_of(const plate_kind& kind) {
  const char* const sections[] = {"isotropic", "orthotropic", "composite"};
  return std::to_string(kind.nodes) + " nodes, theory " + std::to_string(kind.theory) + ", " +
         sections[static_cast<int>(kind.section)] + (kind.offsets ? ", offsets" : "");
}

plate_description random_plate(seeded_random& random, const plate_kind& kind) {
  const auto nodes = kind.nodes == 3 ? support::random_triangle(random) : support::random_quadrilateral(random);
  plate_description d;
  switch (kind.section) {
    case behaviour::isotropic: d = support::random_isotropic(random, nodes); break;
    case behaviour::orthotropic: d = support::random_orthotropic(random, nodes, support::orthotropy::reciprocal); break;
    case behaviour::composite: d = support::random_composite(random, nodes, support::orthotropy::reciprocal); break;
  }
  d.formulation = kind.theory;
  if (kind.offsets) support::add_random_offsets(random, d, 0.2);  // no corner turns inwards
  return d;
}

namespace {

// Of a material record or a composite section record.
template <class RECORD>
void take_moduli(const RECORD& r, finites_plate& plate) {
  plate.orthotropic = 1;
  plate.E = static_cast<double>(r.E1);
  plate.nu = static_cast<double>(r.NU1);
  plate.expansion = static_cast<double>(r.ALPHA1);
  plate.E2 = static_cast<double>(r.E2);
  plate.nu21 = static_cast<double>(r.NU2);
  plate.G12 = static_cast<double>(r.G12);
  plate.G13 = static_cast<double>(r.G13);
  plate.G23 = static_cast<double>(r.G23);
  plate.expansion2 = static_cast<double>(r.ALPHA2);
}

}  // namespace

finites_plate as_numbers(const plate_description& d) {
  finites_plate plate;
  finites_plate_init(&plate);
  plate.nodes = static_cast<int>(d.nodes.size());
  plate.theory = d.formulation;
  for (std::size_t m = 0; m < d.nodes.size(); ++m) {
    for (std::size_t i = 0; i < 3; ++i) {
      plate.xyz[m][i] = d.nodes[m][i];
      if (d.offset_switch > 0) plate.offset[m][i] = -d.offsets[m][i];
    }
  }
  plate.thickness = d.thickness;
  plate.E = d.young;
  plate.nu = d.poisson;
  plate.density = d.unit_weight / GRAVITY;
  plate.expansion = d.expansion;
  plate.angle = d.ortho_angle;
  plate.membrane_factor = d.modifier_membrane;
  plate.bending_factor = d.modifier_bending;
  plate.shear_factor = d.modifier_shear;
  plate.mass_factor = d.mass_factor;
  if (d.section_type == COMPOSITE_SECTION) {
    take_moduli(d.composite, plate);
    plate.twist_factor = static_cast<double>(d.composite.CLT_FACTOR_1);
    plate.inplane_shear_factor = static_cast<double>(d.composite.CLT_FACTOR_2);
  } else if (d.material.ortho == 1) {
    take_moduli(d.material, plate);
  }
  return plate;
}

std::vector<double> random_displacements(seeded_random& random, int nodes) { return random.vector(6 * nodes, 0.01); }

finites_plate rectangle(int nodes, int theory, double a, double b) {
  const double x[4] = {0.0, a, nodes == 3 ? 0.0 : a, 0.0};
  const double y[4] = {0.0, 0.0, b, b};
  finites_plate plate;
  finites_plate_init(&plate);
  plate.nodes = nodes;
  plate.theory = theory;
  for (int m = 0; m < nodes; ++m) {
    plate.xyz[m][0] = x[m];
    plate.xyz[m][1] = y[m];
  }
  plate.thickness = 0.1;
  plate.E = 2e5;
  plate.nu = 0.25;
  plate.density = 7.8e-3;
  plate.expansion = 1e-5;
  return plate;
}

std::vector<double> every_answer(const finites_plate& plate, const std::vector<double>& u) {
  const std::size_t n = static_cast<std::size_t>(6 * plate.nodes);
  const double a[3] = {0.3, -0.2, 0.7}, b[3] = {-0.4, 0.6, 0.1}, t[2] = {20.0, -5.0};
  double forces[4][6];
  for (int p = 0; p < 4; ++p) {
    for (int i = 0; i < 6; ++i) forces[p][i] = 0.1 * p + i - 2.5;
  }
  std::vector<double> all(4 * n * n + 5 * n);
  double* at = all.data();
  const auto next = [&at](std::size_t count) {
    double* const here = at;
    at += count;
    return here;
  };
  finites_plate_stiffness(&plate, next(n * n));
  finites_plate_mass(&plate, next(n * n));
  finites_plate_geometric(&plate, u.data(), next(n * n));
  finites_plate_geometric_of_forces(&plate, forces, next(n * n));
  finites_plate_forces(&plate, u.data(), next(n));
  finites_plate_surface_load(&plate, a, b, next(n));
  finites_plate_body_load(&plate, a, next(n));
  finites_plate_temperature_load(&plate, t[0], t[1], next(n));
  finites_plate_point_load(&plate, plate.xyz[1], a, b, next(n));
  finites_plate_measures measures{};
  finites_plate_measure(&plate, &measures);
  finites_location location{};
  finites_plate_locate(&plate, a, &location);
  finites_plate_results results{};
  finites_plate_result(&plate, u.data(), t, &results);
  const auto append = [&all](const void* from, std::size_t bytes) {
    const std::size_t old = all.size();
    all.resize(old + bytes / sizeof(double));
    std::memcpy(&all[old], from, bytes);
  };
  static_assert(sizeof measures % sizeof(double) == 0 && sizeof location % sizeof(double) == 0 &&
                sizeof results % sizeof(double) == 0);
  append(&measures, sizeof measures);
  append(&location, sizeof location);
  append(&results, sizeof results);
  return all;
}

}  // namespace subjects
