// tri_thin.h: a flat facet of three nodes: constant strain membrane, discrete Kirchhoff bending and a small stiffness
// on the drilling rotations.
//
// This file has what the engine adds to the element of its shape (plate_engine.h).
//
// Mirror: shells/engines/quad_thin.h.
#ifndef FINITES_TRI_THIN_H
#define FINITES_TRI_THIN_H

#include <cstdint>

#include "finites/records.h"
#include "plate_material/through_thickness.h"
#include "shells/common/surface_points.h"
#include "shells/triangle/elastic_fields.h"
#include "shells/triangle/element.h"
#include "shells/triangle/loads.h"
#include "shells/triangle/thin/forces.h"
#include "shells/triangle/thin/loads.h"
#include "shells/triangle/thin/plate_kernel.h"
#include "shells/triangle/thin/results.h"
#include "shells/triangle/thin/stiffness.h"

struct TRI_THIN : TRIANGLE_ELEMENT {
  static constexpr int THEORY = THIN_THEORY;
  using TRIANGLE_ELEMENT::TRIANGLE_ELEMENT;

  TRI_THIN_PLATE plate() const { return {EL, TRI, TRI_U}; }
  void set_side_constants() const {}

  void stiffness(FLAT_PARTS<3>& parts) const { TRI_STIFFNESS(EL, TRI, ISO, parts); }

  bool forces_of_fields(std::int32_t op, const double* U, double* f) const {
    return TRI_FORCES_OF_FIELDS(EL, THEORY, TRI.AXES, local, ISO, LOADS, U, f, op);
  }
  void forces_isotropic(std::int32_t op, double* f) const {
    TRI_FORCES_ISO(EL, TRI, ISO, TRI_U, LOADS, f, TRI_RULE_COUNT, TRI_RULE_FOUR, op);
  }
  void forces_general(std::int32_t op, double* f) const {
    TRI_FORCES_GENERAL(EL, TRI, TRI_U, LOADS, f, TRI_RULE_COUNT, op);
  }

  bool results_of_fields(const double* U, double* nodes, double* points) const {
    return TRI_RESULTS_OF_FIELDS(EL, THEORY, TRI.AXES, local, ISO, LOADS, U, nodes, points);
  }
  void results_isotropic(double* nodes, double* points) const {
    TRI_RESULTS_ISO(EL, TRI, ISO, TRI_U, LOADS, local, TRI_RULE_COUNT, TRI_RULE_FOUR, nodes, points);
  }
  void results_general(double* nodes, double* points) const {
    TRI_RESULTS_GENERAL(EL, TRI, TRI_U, local, TRI_RULE_COUNT, nodes, points);
  }

  void loads_isotropic(double* f) const {
    TRI_LOADS_ISO(EL, TRI, LOADS, TRI_RULE_COUNT, TRI_RULE_FOUR, f, TRI_LOAD_MODE, membrane_only);
  }
  void loads_general(double* f) const {
    TRI_LOADS_GENERAL(EL, TRI, LOADS, TRI_RULE_COUNT, f, TRI_LOAD_MODE, membrane_only);
  }
};

#endif
