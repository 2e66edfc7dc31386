// quad_thick.h: the quadrilateral with discrete Kirchhoff-Mindlin bending and transverse shear. Frame, membrane,
// drilling, mass, geometric stiffness, surface and point loads are shared with the thin quadrilateral.
//
// This file has what the engine adds to the element of its shape (plate_engine.h).
//
// Mirror: shells/engines/tri_thick.h.
#ifndef FINITES_QUAD_THICK_H
#define FINITES_QUAD_THICK_H

#include <cstdint>

#include "finites/records.h"
#include "plate_material/through_thickness.h"
#include "shells/common/behaviour.h"
#include "shells/quadrilateral/elastic_fields.h"
#include "shells/quadrilateral/element.h"
#include "shells/quadrilateral/thick/forces.h"
#include "shells/quadrilateral/thick/loads.h"
#include "shells/quadrilateral/thick/plate_kernel.h"
#include "shells/quadrilateral/thick/results.h"
#include "shells/quadrilateral/thick/side_constants.h"
#include "shells/quadrilateral/thick/stiffness.h"

struct QUAD_THICK : QUADRILATERAL_ELEMENT {
  static constexpr int THEORY = THICK_THEORY;
  using QUADRILATERAL_ELEMENT::QUADRILATERAL_ELEMENT;

  QUAD_THICK_PLATE plate() const { return {EL, QUAD, QUAD_U}; }
  void set_side_constants() const { SIDE_CONST_QUAD(EL); }

  void stiffness(FLAT_PARTS<4>& parts) const {
    if (isotropic(EL)) {
      KSTIF_QUAD_THICK_ISO(EL, QUAD, ISO, LOADS, split(), parts);
    } else {
      KSTIF_QUAD_THICK_GEN(EL, split(), parts);
    }
  }

  bool forces_of_fields(std::int32_t op, const double* U, double* f) const {
    return QUAD_FORCES_OF_FIELDS(EL, THEORY, QUAD.AXES, local, ISO, LOADS, U, f, op);
  }
  void forces_isotropic(std::int32_t op, double* f) const {
    FINT_QUAD_THICK_ISO(EL, QUAD, ISO, QUAD_U, LOADS, local, split(), f, op);
  }
  void forces_general(std::int32_t op, double* f) const {
    FINT_QUAD_THICK_GEN(EL, QUAD, QUAD_U, LOADS, local, split(), f, op);
  }

  bool results_of_fields(const double* U, double* nodes, double* points) const {
    return QUAD_RESULTS_OF_FIELDS(EL, THEORY, QUAD.AXES, local, ISO, LOADS, U, nodes, points);
  }
  void results_isotropic(double* nodes, double* points) const {
    RES_QUAD_THICK_ISO(EL, QUAD, ISO, QUAD_U, LOADS, local, split(), nodes, points);
  }
  void results_general(double* nodes, double* points) const {
    RES_QUAD_THICK_GEN(EL, QUAD_U, local, split(), nodes, points);
  }

  void loads_isotropic(double* f) const { LOAD_QUAD_THICK_ISO(EL, QUAD, LOADS, f); }
  void loads_general(double* f) const { LOAD_QUAD_THICK_GEN(EL, QUAD, LOADS, f); }
};

#endif
