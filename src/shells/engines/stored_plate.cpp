// stored_plate.cpp: the stresses of a state on the four engines.
#include "shells/engines/stored_plate.h"

#include <algorithm>
#include <cstdint>

#include "finites/fields.h"
#include "finites/records.h"
#include "plate_results/res_record.h"
#include "shells/common/behaviour.h"
#include "shells/engines/plate_engine.h"
#include "shells/engines/plate_operations.h"
#include "shells/engines/quad_thick.h"
#include "shells/engines/quad_thin.h"
#include "shells/engines/rigid_links.h"
#include "shells/engines/tri_thick.h"
#include "shells/engines/tri_thin.h"
#include "shells/plastic/corner_points.h"
#include "shells/plastic/stored_state.h"

namespace {

template <class ELEMENT, class WORK>
void prepared(ELEMENT&& e, const FILLED_PLATE& plate, const double* u, WORK work) {
  double U[PLATE_MAX_DOFS] = {};
  std::copy_n(u, PLATE_NODE_DOFS * plate.nodes, U);
  displace_by_offsets(plate, U);
  e.set_geometry(plate.xyz, SIDE_COEFFICIENTS::WANTED);
  set_section(e, plate.state);
  e.split_displacements(U);
  work(e);
}

// work(element) with geometry, section and displacements.
template <class WORK>
void with_element(const FILLED_PLATE& plate, const double* u, WORK work) {
  switch (plate.EL.ELEM_KIND) {
    case KIND_TRI_THIN: prepared(TRI_THIN{plate.EL, plate.LOADS, NO_MEMBRANE}, plate, u, work); break;
    case KIND_TRI_THICK: prepared(TRI_THICK{plate.EL, plate.LOADS, NO_MEMBRANE}, plate, u, work); break;
    case KIND_QUAD_THIN: prepared(QUAD_THIN{plate.EL, plate.LOADS, NO_MEMBRANE}, plate, u, work); break;
    case KIND_QUAD_THICK: prepared(QUAD_THICK{plate.EL, plate.LOADS, NO_MEMBRANE}, plate, u, work); break;
    default: break;
  }
}

bool sides_chosen(const FILLED_PLATE& plate, const double* u, CORNER_POINTS& at) {
  bool found = false;
  with_element(plate, u, [&](const auto& e) { found = choose_sides(e.plate(), *plate.state.record, at); });
  return found;
}

bool is_thick(std::int32_t kind) { return kind == KIND_TRI_THICK || kind == KIND_QUAD_THICK; }

}  // namespace

bool store_state_of_plate(FILLED_PLATE& plate, const double* u) {
  double unused[PLATE_MAX_DOFS];
  plate.op = OP_FORCES_COMMIT;
  if (!section_plastic(plate.EL)) {
    forces_of_plate(plate, u, nullptr, unused);
    return true;
  }
  CORNER_POINTS at;
  if (!sides_chosen(plate, u, at)) return false;
  forces_of_plate(plate, u, nullptr, unused);
  if (is_thick(plate.EL.ELEM_KIND)) {
    settle_corners<8>(plate.EL, at, *plate.state.record);
  } else {
    settle_corners<6>(plate.EL, at, *plate.state.record);
  }
  return true;
}

void stored_forces_of_plate(const FILLED_PLATE& plate, const double* u, double* F) {
  std::fill_n(F, PLATE_MAX_DOFS, 0.0);
  with_element(plate, u, [&](const auto& e) {
    add_stored_forces(e.plate(), plate.state, F);
    e.finish_forces(OP_FORCES, F);
  });
  move_forces_by_offsets(plate, F);
}

double distance_of_plate(const FILLED_PLATE& plate, const double* u) {
  if (!section_plastic(plate.EL)) return 0.0;
  double distance = 0.0;
  with_element(plate, u, [&](const auto& e) { distance = distance_from_surface(e.plate(), *plate.state.record); });
  return distance;
}

void stored_results_of_plate(const FILLED_PLATE& plate, const double* u, double* nodes, double* points) {
  std::fill_n(nodes, RES_VALUES, 0.0);
  std::fill_n(points, RES_VALUES, 0.0);
  with_element(plate, u, [&](const auto& e) {
    if (section_plastic(plate.EL)) {
      stored_section_results(e.plate(), *plate.state.record, e.local, nodes, points);
    } else {
      stored_layered_results(e.plate(), plate.state, e.local, nodes, points);
    }
  });
}
