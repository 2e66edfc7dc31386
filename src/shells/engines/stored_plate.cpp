// stored_plate.cpp: the stresses of a state on the four engines.
#include "shells/engines/stored_plate.h"

#include <algorithm>

#include "finites/fields.h"
#include "finites/records.h"
#include "plate_results/res_record.h"
#include "shells/common/behaviour.h"
#include "shells/engines/plate_engine.h"
#include "shells/engines/quad_thick.h"
#include "shells/engines/quad_thin.h"
#include "shells/engines/rigid_links.h"
#include "shells/engines/tri_thick.h"
#include "shells/engines/tri_thin.h"
#include "shells/plastic/stored_state.h"

namespace {

constexpr int WITH_BENDING = 0;  // no membrane

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
    case KIND_TRI_THIN: prepared(TRI_THIN{plate.EL, plate.LOADS, WITH_BENDING}, plate, u, work); break;
    case KIND_TRI_THICK: prepared(TRI_THICK{plate.EL, plate.LOADS, WITH_BENDING}, plate, u, work); break;
    case KIND_QUAD_THIN: prepared(QUAD_THIN{plate.EL, plate.LOADS, WITH_BENDING}, plate, u, work); break;
    case KIND_QUAD_THICK: prepared(QUAD_THICK{plate.EL, plate.LOADS, WITH_BENDING}, plate, u, work); break;
    default: break;
  }
}

}  // namespace

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
