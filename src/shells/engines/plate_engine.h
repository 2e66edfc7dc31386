// plate_engine.h: one operation on a plate, written once for the four engines.
//
// An ELEMENT is the element of a shape during one operation (triangle/element.h, quadrilateral/element.h), to which an
// engine adds the routines of its theory:
//
//   THEORY                                 THIN_THEORY or THICK_THEORY
//   plate()                                its kernel, for the plastic models (shells/common/plate_matrices.h)
//   set_side_constants()                   sides of a thick element, from the general section; nothing for a thin one
//   stiffness(parts)                       element axes, isotropic and general section
//   forces_isotropic(op, f), _general      internal forces of the split displacements
//   results_isotropic(nodes, points), _general
//   loads_isotropic(f), _general           nodal loads, added to f
#ifndef FINITES_PLATE_ENGINE_H
#define FINITES_PLATE_ENGINE_H

#include <algorithm>
#include <cstdint>

#include "finites/fields.h"
#include "finites/records.h"
#include "finites/views.hpp"
#include "plate_material/section_decomposition.h"
#include "plate_material/state_in_use.h"
#include "plate_results/res_record.h"
#include "shells/common/behaviour.h"
#include "shells/common/constitutive.h"
#include "shells/common/flat_parts.h"
#include "shells/common/groups.h"
#include "shells/common/packed.h"
#include "shells/common/side_coefficients.h"
#include "shells/common/translations.h"
#include "shells/plastic/layered_plates.h"
#include "shells/plastic/section_plates.h"

constexpr int NO_MEMBRANE = 0;  // a thick plate has no membrane kind

// The arguments of an engine (engines.h) beside its element.
struct ENGINE_CALL {
  std::int32_t op;
  const double *xyz, *U;
  double* F;
  int geometric;
  double *matrix, *nodes, *points;
  MATRIX<3, 3>& AXES;
  double &area, &volume, &weight;
  int &point_flag1, &point_flag2;
  double& distance;
  const PLATE_STATE_IN_USE& state;
  int leading;
};

// The section of the behaviour: ISO of the element, or the matrices of PLATEELEM with what the general kernels need
// beside them. Needs the geometry.
template <class ELEMENT>
void set_section(ELEMENT& e, const PLATE_STATE_IN_USE& state) {
  if (isotropic(e.EL)) {
    e.ISO = PLATE_D_ISOTROPIC(e.EL, e.membrane_only, e.LOADS);
    return;
  }
  e.store_frame();
  PLATE_D_GENERAL(e.EL, e.split(), e.membrane_only);
  e.set_side_constants();
  if (section_plastic(e.EL)) SECTION_SPECTRAL(e.EL, state.failures);
}

template <class ELEMENT>
void elastic_stiffness(const ELEMENT& e, const ENGINE_CALL& call) {
  FLAT_PARTS<ELEMENT::NODES> parts;
  e.stiffness(parts);
  e.finish_stiffness(call.geometric, call.points, parts);
  flat_to_global(e.axes(), parts, call.leading, call.matrix);
}

// The plastic routines build the full matrix, not the packed one. The foundation of the call block (LOAD_FOUNDATION) is
// not added: the elastic routines alone have it.
template <class ELEMENT>
void plastic_stiffness(const ELEMENT& e, const ENGINE_CALL& call) {
  double K[ELEMENT::DOFS * ELEMENT::DOFS];
  if (section_plastic(e.EL)) {
    KSTIF_PLAST(e, call.state, K);
  } else {
    layered_plate_stiffness(e, call.state, ELEMENT::THEORY, K);
  }
  if (call.geometric == 1) KGEOM_PLAST(e, call.points, K);
  full_to_global(e.axes(), ELEMENT::GROUPS, K);
  spread_columns(K, ELEMENT::DOFS, call.leading, call.matrix);
}

template <class ELEMENT>
void mass_matrix(ELEMENT& e, const ENGINE_CALL& call) {
  if (e.LOADS(LOAD_DENSITY) == 0.0) {
    for (int j = 0; j < ELEMENT::DOFS; ++j) std::fill_n(call.matrix + j * call.leading, ELEMENT::DOFS, 0.0);
    return;
  }
  FLAT_PARTS<ELEMENT::NODES> parts;
  e.set_geometry(call.xyz, SIDE_COEFFICIENTS::WANTED);
  e.mass(parts);
  flat_to_global(e.axes(), parts, call.leading, call.matrix);
}

template <class ELEMENT>
void layered_forces_of(const ELEMENT& e, const ENGINE_CALL& call) {
  double u[ELEMENT::DOFS];
  double us[ELEMENT::DOFS];
  groups_to_local(e.axes(), ELEMENT::GROUPS, call.U, u);
  stored_displacements(e, call.state, us);
  layered_plate_forces(e, call.state, u, us, call.op, ELEMENT::THEORY, call.F);
}

template <class ELEMENT>
void internal_forces(const ELEMENT& e, const ENGINE_CALL& call) {
  if (isotropic(e.EL)) {
    e.forces_isotropic(call.op, call.F);
  } else if (elastic(e.EL)) {
    e.forces_general(call.op, call.F);
  } else if (section_plastic(e.EL)) {
    FINT_PLAST(e, call.state, call.op, call.F);
  } else {
    layered_forces_of(e, call);
  }
}

// The forces of an elastic element without its strain matrices; they are formed where this says no.
template <class ELEMENT>
bool forces_of_fields(ELEMENT& e, const ENGINE_CALL& call) {
  if (!elastic(e.EL)) return false;
  e.set_frame(call.xyz);
  set_section(e, call.state);
  return e.forces_of_fields(call.op, call.U, call.F);
}

template <class ELEMENT>
void nodal_loads(ELEMENT& e, const ENGINE_CALL& call) {
  double* const F = call.F;
  std::fill_n(F, ELEMENT::DOFS, 0.0);
  if (isotropic(e.EL)) {
    e.loads_isotropic(F);
  } else {
    set_section(e, call.state);
    e.loads_general(F);
  }
}

template <class ELEMENT>
void results(const ELEMENT& e, const ENGINE_CALL& call) {
  if (isotropic(e.EL)) {
    e.results_isotropic(call.nodes, call.points);
  } else if (elastic(e.EL)) {
    e.results_general(call.nodes, call.points);
  } else if (section_plastic(e.EL)) {
    RES_PLAST(e, call.state, call.nodes, call.points);
  } else {
    double u[ELEMENT::DOFS];
    groups_to_local(e.axes(), ELEMENT::GROUPS, call.U, u);
    layered_plate_results(e, call.state, u, ELEMENT::THEORY, call.nodes, call.points);
  }
}

template <class ELEMENT>
bool results_of_fields(ELEMENT& e, const ENGINE_CALL& call) {
  if (!elastic(e.EL)) return false;
  e.set_frame(call.xyz);
  set_section(e, call.state);
  return e.results_of_fields(call.U, call.nodes, call.points);
}

// Operation 7 takes the membrane forces of the displacements, operation 71 those that the records of the points hold.
// Both return the negative of the geometric stiffness.
template <class ELEMENT>
void geometric_matrix(const ELEMENT& e, const ENGINE_CALL& call) {
  double u[ELEMENT::DOFS];
  if (call.op == OP_GEOMETRIC) {
    groups_to_local(e.axes(), ELEMENT::GROUPS, call.U, u);
    if (ELEMENT::CLEARS_POINTS) std::fill_n(call.points, RES_VALUES, 0.0);
  }
  double KG[ELEMENT::PACKED];  // its places of the translations are set, the others are not
  e.geometric_stiffness(call.op, u, call.points, -1.0, KG);
  if (translations_to_global<ELEMENT::NODES>(e.axes(), KG, call.leading, call.matrix)) return;
  double K[ELEMENT::PACKED] = {};
  add_translations<ELEMENT::NODES>(KG, K);
  flat_to_global<ELEMENT::NODES>(e.axes(), K, call.leading, call.matrix);
}

// volume = area h, weight = volume times LOADS(LOAD_DENSITY), which is the unit weight in operation 8.
template <class ELEMENT>
void measure(ELEMENT& e, const ENGINE_CALL& call) {
  e.set_geometry(call.xyz, SIDE_COEFFICIENTS::LEFT_OUT);
  call.area = e.area();
  call.volume = call.area * e.EL.THICKNESS;
  call.weight = call.volume * e.LOADS(LOAD_DENSITY);
}

// Each operation computes the geometry that it needs, then the section, then its answer. Loads without a temperature,
// mass and geometry need no section; points compute their own frame.
template <class ELEMENT>
void run_operation(ELEMENT&& e, const ENGINE_CALL& call) {
  if (e.EL.MAT_BEHAV == BEHAV_GENERAL) set_thermal_strains(e.EL, e.LOADS);
  switch (call.op) {
    case OP_STIFFNESS:
      e.set_geometry(call.xyz, SIDE_COEFFICIENTS::WANTED);
      set_section(e, call.state);
      if (elastic(e.EL)) {
        elastic_stiffness(e, call);
      } else {
        plastic_stiffness(e, call);
      }
      break;
    case OP_MASS: mass_matrix(e, call); break;
    case OP_FORCES:
    case OP_FORCES_COMMIT:
      if (forces_of_fields(e, call)) break;
      e.set_geometry(call.xyz, SIDE_COEFFICIENTS::WANTED);
      set_section(e, call.state);
      e.split_displacements(call.U);
      internal_forces(e, call);
      break;
    case OP_LOADS:
      e.set_geometry(call.xyz, SIDE_COEFFICIENTS::LEFT_OUT);
      nodal_loads(e, call);
      break;
    case OP_RESULTS:
      if (results_of_fields(e, call)) break;
      e.set_geometry(call.xyz, SIDE_COEFFICIENTS::WANTED);
      set_section(e, call.state);
      e.split_displacements(call.U);
      results(e, call);
      break;
    case OP_FRAME: e.set_frame(call.xyz); break;
    case OP_GEOMETRIC:
    case OP_GEOMETRIC_STORED:
      e.set_geometry(call.xyz, SIDE_COEFFICIENTS::LEFT_OUT);
      set_section(e, call.state);
      geometric_matrix(e, call);
      break;
    case OP_GEOMETRY: measure(e, call); break;
    case OP_POINT_LOCATION: e.locate_point(call.xyz, call.point_flag1, call.point_flag2, call.distance); break;
    case OP_POINT_LOAD: e.point_load(call.xyz, call.F); break;
    default: break;
  }
  call.AXES = e.axes();
}

#endif
