// plate_calls.cpp: the operations on plates from numbers: a filled plate on the stack, its operation, the answer.
#include "plain_calls/plate_calls.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "finites/fields.h"
#include "finites/records.h"
#include "finites/views.hpp"
#include "plain_calls/input_numbers.h"
#include "plain_calls/plate_on_stack.h"
#include "plate_results/res_record.h"
#include "shells/engines/plate_operations.h"
#include "shells/engines/rigid_links.h"

namespace {

void copy_to_loads(FILLED_PLATE& plate, int place, const double* from, int count) {
  if (from == nullptr) return;
  for (int i = 0; i < count; ++i) plate.LOADS(place + i) = from[i];
}

void give_loads(const finites_plate& p, const FILLED_PLATE& plate, double* to) {
  double F[PLATE_MAX_DOFS] = {};
  loads_of_plate(plate, F);
  std::copy_n(F, order_of(p), to);
}

// The engines answer minus the geometric stiffness. A difference from 0 leaves no negative zeros.
void geometric_matrix(const finites_plate& p, const FILLED_PLATE& plate, const double* u, double* points, double* KG) {
  const int order = order_of(p);
  matrix_of_plate(plate, 0, u, points, order, KG);
  for (int i = 0; i < order * order; ++i) KG[i] = 0.0 - KG[i];
}

void name_surface(const RES_READER& R, int strain, int stress, int principal, int plastic, finites_surface& surface) {
  std::copy_n(&R(strain), 3, surface.strain);
  std::copy_n(&R(stress), 3, surface.stress);
  surface.angle = R(principal);
  surface.s1 = R(principal + 1);
  surface.s2 = R(principal + 2);
  surface.max_shear = R(principal + 3);
  surface.von_mises = R(principal + 4);
  std::copy_n(&R(plastic), 3, surface.plastic_strain);
}

void name_point(const RES_READER& R, finites_plate_point& point) {
  std::copy_n(&R(COL_X), 3, point.xyz);
  name_surface(R, COL_STRAIN_TOP, COL_STRESS_TOP, COL_PRINCIPAL_TOP, COL_PLASTIC_TOP, point.top);
  name_surface(R, COL_STRAIN_MID, COL_STRESS_MID, COL_PRINCIPAL_MID, COL_PLASTIC_MID, point.middle);
  name_surface(R, COL_STRAIN_BOTTOM, COL_STRESS_BOTTOM, COL_PRINCIPAL_BOTTOM, COL_PLASTIC_BOTTOM, point.bottom);
  std::copy_n(&R(COL_FORCES), 3, point.force);
  std::copy_n(&R(COL_MOMENTS), 3, point.moment);
  std::copy_n(&R(COL_SHEAR_STRAIN), 2, point.shear_strain);
  std::copy_n(&R(COL_SHEAR_FORCE), 2, point.shear_force);
  std::copy_n(&R(COL_SHEAR_STRESS), 2, point.shear_stress);
  std::copy_n(&R(COL_PLASTIC_SHEAR), 2, point.plastic_shear_strain);
}

// The equivalent stresses have the squares of all stresses in the plane in them.
bool finite_records(const double* records) {
  double sum = 0.0;
  for (int point = 1; point <= RES_POINTS; ++point) {
    const RES_READER R = BLOCK_OF(records, point);
    sum += R(COL_PRINCIPAL_TOP + 4) + R(COL_PRINCIPAL_MID + 4) + R(COL_PRINCIPAL_BOTTOM + 4);
    sum += R(COL_SHEAR_STRESS) + R(COL_SHEAR_STRESS + 1);
  }
  return std::isfinite(sum);
}

}  // namespace

void compute_plate_stiffness(const finites_plate& plate, double* K) {
  const PLATE_ON_STACK filled(plate, OP_STIFFNESS, SECTION::WITH_MATERIAL);
  matrix_of_plate(filled.plate, 0, nullptr, nullptr, order_of(plate), K);
}

void compute_plate_mass(const finites_plate& plate, double* M) {
  PLATE_ON_STACK filled(plate, OP_MASS, SECTION::THICKNESS_ALONE);
  filled.plate.LOADS(LOAD_DENSITY) = plate.density * plate.mass_factor;
  matrix_of_plate(filled.plate, 0, nullptr, nullptr, order_of(plate), M);
}

void compute_plate_geometric(const finites_plate& plate, const double* u, double* KG) {
  const PLATE_ON_STACK filled(plate, OP_GEOMETRIC, SECTION::WITH_MATERIAL);
  double points[RES_VALUES];
  geometric_matrix(plate, filled.plate, u, points, KG);
}

void compute_plate_geometric_of_forces(const finites_plate& plate, const double forces[4][6], double* KG) {
  const PLATE_ON_STACK filled(plate, OP_GEOMETRIC_STORED, SECTION::WITH_MATERIAL);
  double points[RES_VALUES] = {};
  for (int p = 0; p < RES_POINTS; ++p) std::copy_n(forces[p], 6, &BLOCK_OF(points, p + 1)(COL_FORCES));
  geometric_matrix(plate, filled.plate, nullptr, points, KG);
}

void compute_plate_forces(const finites_plate& plate, const double* u, double* F) {
  const PLATE_ON_STACK filled(plate, OP_FORCES, SECTION::WITH_MATERIAL);
  double forces[PLATE_MAX_DOFS] = {};
  forces_of_plate(filled.plate, u, nullptr, forces);
  std::copy_n(forces, order_of(plate), F);
}

void compute_plate_surface_load(const finites_plate& plate, const double* global, const double* local, double* F) {
  PLATE_ON_STACK filled(plate, OP_LOADS, SECTION::THICKNESS_ALONE);
  copy_to_loads(filled.plate, LOAD_SURFACE, global, 3);
  copy_to_loads(filled.plate, LOAD_SURFACE_LOCAL, local, 3);
  give_loads(plate, filled.plate, F);
}

void compute_plate_body_load(const finites_plate& plate, const double* load, double* F) {
  PLATE_ON_STACK filled(plate, OP_LOADS, SECTION::THICKNESS_ALONE);
  copy_to_loads(filled.plate, LOAD_BODY, load, 3);
  give_loads(plate, filled.plate, F);
}

void compute_plate_temperature_load(const finites_plate& plate, double change, double difference, double* F) {
  PLATE_ON_STACK filled(plate, OP_LOADS, SECTION::WITH_MATERIAL);
  filled.plate.LOADS(LOAD_TEMPERATURE) = change;
  filled.plate.LOADS(LOAD_TEMPERATURE_DIFF) = difference;
  give_loads(plate, filled.plate, F);
}

finites_status compute_plate_point_load(const finites_plate& plate, const double* point, const double* global,
                                        const double* local, double* F) {
  PLATE_ON_STACK filled(plate, OP_POINT_LOAD, SECTION::THICKNESS_ALONE);
  copy_to_loads(filled.plate, LOAD_POINT, point, 3);
  copy_to_loads(filled.plate, LOAD_FORCE, global, 3);
  copy_to_loads(filled.plate, LOAD_FORCE_LOCAL, local, 3);
  double loads[PLATE_MAX_DOFS] = {};
  loads_of_plate(filled.plate, loads);
  return copy_finite(loads, order_of(plate), F);
}

void compute_plate_measures(const finites_plate& plate, finites_plate_measures& measures) {
  PLATE_ON_STACK filled(plate, OP_GEOMETRY, SECTION::THICKNESS_ALONE);
  filled.plate.LOADS(LOAD_DENSITY) = plate.density;
  const PLATE_SIZE size = size_of_plate(filled.plate);
  measures.area = size.area;
  measures.volume = size.volume;
  measures.mass = size.weight * plate.mass_factor;
  for (int i = 0; i < 3; ++i) {
    double sum = 0.0;
    for (int m = 0; m < plate.nodes; ++m) sum += filled.plate.xyz[3 * m + i];
    measures.center[i] = sum / plate.nodes;
    for (int a = 0; a < 3; ++a) measures.axes[a][i] = size.AXES(a + 1, i + 1);
  }
}

void compute_plate_location(const finites_plate& plate, const double* point, finites_location& location) {
  PLATE_ON_STACK filled(plate, OP_POINT_LOCATION, SECTION::THICKNESS_ALONE);
  copy_to_loads(filled.plate, LOAD_POINT, point, 3);
  const PLATE_LOCATION at = location_of_plate(filled.plate);
  location.inside = at.point_flag1 == 0 ? 1 : 0;
  location.above = at.point_flag2;
  location.distance = at.distance;
}

finites_status compute_plate_results(const finites_plate& plate, const double* u, const double* temperature,
                                     finites_plate_results& results) {
  PLATE_ON_STACK filled(plate, OP_RESULTS, SECTION::WITH_MATERIAL);
  copy_to_loads(filled.plate, LOAD_TEMPERATURE, temperature, 2);
  double nodes[RES_VALUES];
  double points[RES_VALUES];
  results_of_plate(filled.plate, u, nodes, points);
  if (!finite_records(nodes) || !finite_records(points)) return FINITES_RESULT;
  name_plate_results(plate.nodes, nodes, points, results);
  return FINITES_OK;
}

void name_plate_results(int nodes, const double* node_records, const double* point_records,
                        finites_plate_results& results) {
  results.nodes = nodes;
  results.points = RES_POINTS;
  for (int i = 0; i < RES_POINTS; ++i) {
    name_point(BLOCK_OF(node_records, i + 1), results.node[i]);
    name_point(BLOCK_OF(point_records, i + 1), results.point[i]);
  }
}
