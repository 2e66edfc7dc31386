// quad_thin.h: a flat facet of four nodes: bilinear membrane with its shear at the centre, discrete Kirchhoff bending
// and a small stiffness on the drilling rotations.
//
// This file has what the engine adds to the element of its shape (plate_engine.h).
//
// Mirror: shells/engines/tri_thin.h.
#ifndef FINITES_QUAD_THIN_H
#define FINITES_QUAD_THIN_H

#include <cstdint>

#include "finites/records.h"
#include "plate_material/through_thickness.h"
#include "shells/common/behaviour.h"
#include "shells/common/surface_points.h"
#include "shells/quadrilateral/elastic_fields.h"
#include "shells/quadrilateral/element.h"
#include "shells/quadrilateral/thin/forces.h"
#include "shells/quadrilateral/thin/loads.h"
#include "shells/quadrilateral/thin/plate_kernel.h"
#include "shells/quadrilateral/thin/results.h"
#include "shells/quadrilateral/thin/stiffness.h"

struct QUAD_THIN : QUADRILATERAL_ELEMENT {
  static constexpr int THEORY = THIN_THEORY;
  using QUADRILATERAL_ELEMENT::QUADRILATERAL_ELEMENT;

  QUAD_THIN_PLATE plate() const { return {EL, QUAD, QUAD_U}; }
  void set_side_constants() const {}

  void stiffness(FLAT_PARTS<4>& parts) const {
    if (isotropic(EL)) {
      QUAD_STIFFNESS_ISO(QUAD, ISO, split(), QUAD_RULE_FULL, parts);
    } else {
      QUAD_STIFFNESS_GENERAL(EL, QUAD, split(), parts);
    }
  }

  bool forces_of_fields(std::int32_t op, const double* U, double* f) const {
    return QUAD_FORCES_OF_FIELDS(EL, THEORY, QUAD.AXES, local, ISO, LOADS, U, f, op);
  }
  void forces_isotropic(std::int32_t op, double* f) const {
    QUAD_FORCES_ISO(EL, QUAD, ISO, QUAD_U, LOADS, local, split(), f, QUAD_RULE_COUNT, QUAD_RULE_FULL, op);
  }
  void forces_general(std::int32_t op, double* f) const {
    QUAD_FORCES_GENERAL(EL, QUAD, QUAD_U, LOADS, local, split(), f, QUAD_RULE_COUNT, op);
  }

  bool results_of_fields(const double* U, double* nodes, double* points) const {
    return QUAD_RESULTS_OF_FIELDS(EL, THEORY, QUAD.AXES, local, ISO, LOADS, U, nodes, points);
  }
  void results_isotropic(double* nodes, double* points) const {
    QUAD_RESULTS_ISO(EL, QUAD, ISO, QUAD_U, LOADS, local, split(), QUAD_RULE_COUNT, QUAD_RULE_FULL, nodes, points);
  }
  void results_general(double* nodes, double* points) const {
    QUAD_RESULTS_GENERAL(EL, QUAD, QUAD_U, local, split(), QUAD_RULE_COUNT, nodes, points);
  }

  // With a temperature the loads compute the side coefficients, which operation 4 has left out of the geometry.
  void loads_isotropic(double* f) {
    QUAD_LOADS_ISO(EL, QUAD, LOADS, local, QUAD_RULE_COUNT, QUAD_RULE_FULL, f, membrane_only);
  }
  void loads_general(double* f) { QUAD_LOADS_GENERAL(EL, QUAD, LOADS, local, QUAD_RULE_COUNT, f, membrane_only); }
};

#endif
