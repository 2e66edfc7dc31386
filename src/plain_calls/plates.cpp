// plates.cpp: the calls finites_plate_...: checks, then plate_calls.h.
#include "finites/elements.h"
#include "plain_calls/plate_calls.h"
#include "plain_calls/plate_checks.h"

namespace {

// The first of the statuses that is none of FINITES_OK.
template <class... NEXT>
finites_status first_of(finites_status status, NEXT... next) {
  if constexpr (sizeof...(next) > 0) {
    if (status == FINITES_OK) return first_of(next...);
  }
  return status;
}

// The plate, after the pointers that no call can do without.
template <class... POINTERS>
finites_status check(const finites_plate* plate, const POINTERS*... required) {
  if (plate == nullptr || (... || (required == nullptr))) return FINITES_NULL;
  return check_plate(*plate);
}

}  // namespace

void finites_plate_init(finites_plate* plate) {
  if (plate == nullptr) return;
  *plate = finites_plate{};
  plate->nodes = 4;
  plate->theory = FINITES_THICK;
  plate->twist_factor = plate->inplane_shear_factor = 1.0;
  plate->membrane_factor = plate->bending_factor = plate->shear_factor = plate->mass_factor = 1.0;
}

finites_status finites_plate_stiffness(const finites_plate* plate, double* K) {
  const finites_status status = check(plate, K);
  if (status == FINITES_OK) compute_plate_stiffness(*plate, K);
  return status;
}

finites_status finites_plate_mass(const finites_plate* plate, double* M) {
  const finites_status status = check(plate, M);
  if (status == FINITES_OK) compute_plate_mass(*plate, M);
  return status;
}

finites_status finites_plate_geometric(const finites_plate* plate, const double* u, double* KG) {
  finites_status status = check(plate, u, KG);
  if (status == FINITES_OK) status = check_reals(u, order_of(*plate));
  if (status == FINITES_OK) compute_plate_geometric(*plate, u, KG);
  return status;
}

finites_status finites_plate_geometric_of_forces(const finites_plate* plate, const double forces[4][6], double* KG) {
  finites_status status = check(plate, forces, KG);
  if (status == FINITES_OK) status = check_reals(&forces[0][0], 24);
  if (status == FINITES_OK) compute_plate_geometric_of_forces(*plate, forces, KG);
  return status;
}

finites_status finites_plate_forces(const finites_plate* plate, const double* u, double* F) {
  finites_status status = check(plate, u, F);
  if (status == FINITES_OK) status = check_reals(u, order_of(*plate));
  if (status == FINITES_OK) compute_plate_forces(*plate, u, F);
  return status;
}

finites_status finites_plate_surface_load(const finites_plate* plate, const double global[3], const double local[3],
                                          double* F) {
  const finites_status status =
      first_of(check(plate, F), check_optional_reals(global, 3), check_optional_reals(local, 3));
  if (status == FINITES_OK) compute_plate_surface_load(*plate, global, local, F);
  return status;
}

finites_status finites_plate_body_load(const finites_plate* plate, const double load[3], double* F) {
  const finites_status status = first_of(check(plate, load, F), check_reals(load, 3));
  if (status == FINITES_OK) compute_plate_body_load(*plate, load, F);
  return status;
}

finites_status finites_plate_temperature_load(const finites_plate* plate, double change, double difference, double* F) {
  const double temperature[2] = {change, difference};
  const finites_status status = first_of(check(plate, F), check_reals(temperature, 2));
  if (status == FINITES_OK) compute_plate_temperature_load(*plate, change, difference, F);
  return status;
}

finites_status finites_plate_point_load(const finites_plate* plate, const double point[3], const double global[3],
                                        const double local[3], double* F) {
  const finites_status status = first_of(check(plate, point, F), check_reals(point, 3), check_optional_reals(global, 3),
                                         check_optional_reals(local, 3));
  return status == FINITES_OK ? compute_plate_point_load(*plate, point, global, local, F) : status;
}

finites_status finites_plate_measure(const finites_plate* plate, finites_plate_measures* measures) {
  const finites_status status = check(plate, measures);
  if (status == FINITES_OK) compute_plate_measures(*plate, *measures);
  return status;
}

finites_status finites_plate_locate(const finites_plate* plate, const double point[3], finites_location* location) {
  const finites_status status = first_of(check(plate, point, location), check_reals(point, 3));
  if (status == FINITES_OK) compute_plate_location(*plate, point, *location);
  return status;
}

finites_status finites_plate_result(const finites_plate* plate, const double* u, const double temperature[2],
                                    finites_plate_results* results) {
  finites_status status = check(plate, u, results);
  if (status == FINITES_OK) status = first_of(check_reals(u, order_of(*plate)), check_optional_reals(temperature, 2));
  return status == FINITES_OK ? compute_plate_results(*plate, u, temperature, *results) : status;
}
