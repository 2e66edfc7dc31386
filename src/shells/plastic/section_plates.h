// section_plates.h: the whole-section model on a plate, written once over the four kernels.
//
//     KSTIF_PLAST   KSTIF_TRI_THIN_PLAST, KSTIF_TRI_THICK_PLAST, KSTIF_QUAD_THIN_PLAST, KSTIF_QUAD_THICK_PLAST
//     KGEOM_PLAST   KGEOM_TRI_THIN_PLAST and so on
//     FINT_PLAST    FINT_TRI_THIN_PLAST and so on
//     RES_PLAST     RES_TRI_THIN_PLAST and so on
//
// An ELEMENT is what an engine works on (engines/plate_engine.h); plate() is its kernel.
#ifndef FINITES_SECTION_PLATES_H
#define FINITES_SECTION_PLATES_H

#include <algorithm>
#include <cstdint>

#include "finites/records.h"
#include "plate_material/section_state.h"
#include "shells/common/groups.h"
#include "shells/common/plate_matrices.h"
#include "shells/plastic/section_element.h"

// us := the stored displacements of the element, turned to element axes as they are stored; zero without a state.
template <class ELEMENT>
void stored_displacements(const ELEMENT& e, const PLATE_STATE_IN_USE& state, double (&us)[ELEMENT::DOFS]) {
  const double* const stored = stored_displacements_of(state);
  if (stored != nullptr) {
    groups_to_local(e.axes(), ELEMENT::GROUPS, stored, us);
  } else {
    std::fill_n(us, ELEMENT::DOFS, 0.0);
  }
}

// K, full, element axes, from the stored tangents, with the drilling term.
template <class ELEMENT>
void KSTIF_PLAST(const ELEMENT& e, const PLATE_STATE_IN_USE& state, double* K) {
  std::fill_n(K, ELEMENT::DOFS * ELEMENT::DOFS, 0.0);
  section_stiffness(e.plate(), state, K);
  e.place_drilling(K);
}

// K += the geometric stiffness of the stored forces of each point.
template <class ELEMENT>
void KGEOM_PLAST(const ELEMENT& e, const double* points, double* K) {
  section_geometric_stiffness(e.plate(), points, K);
}

// f(24): internal forces of the displacements of the call; the material follows them and the stored ones together.
// Operation 33 stores the state and returns forces in element axes, operation 3 stores nothing and returns forces in
// global axes.
template <class ELEMENT>
void FINT_PLAST(const ELEMENT& e, const PLATE_STATE_IN_USE& state, std::int32_t op, double* f) {
  const auto plate = e.plate();
  double us[ELEMENT::DOFS];
  stored_displacements(e, state, us);
  std::fill_n(f, 24, 0.0);
  section_forces(plate, state, op, picked(us, plate.MEMBRANE_DOF), picked(us, plate.PLATE_DOF), f);
  e.finish_forces(op, f);
}

// Records at the nodes and points, without any temperature term; the state is only read.
template <class ELEMENT>
void RES_PLAST(const ELEMENT& e, const PLATE_STATE_IN_USE& state, double* nodes, double* points) {
  section_results(e.plate(), state, e.local, nodes, points);
}

#endif
