// tri_thick.h: the triangle with discrete Kirchhoff-Mindlin bending and transverse shear. Frame, membrane, drilling,
// mass, geometric stiffness, surface and point loads are shared with the thin triangle.
//
// This file has what the engine adds to the element of its shape (plate_engine.h).
//
// Mirror: shells/engines/quad_thick.h.
#ifndef FINITES_TRI_THICK_H
#define FINITES_TRI_THICK_H

#include <cstdint>

#include "finites/records.h"
#include "plate_material/through_thickness.h"
#include "shells/triangle/elastic_fields.h"
#include "shells/triangle/element.h"
#include "shells/triangle/thick/forces.h"
#include "shells/triangle/thick/loads.h"
#include "shells/triangle/thick/plate_kernel.h"
#include "shells/triangle/thick/results.h"
#include "shells/triangle/thick/side_constants.h"
#include "shells/triangle/thick/stiffness.h"

struct TRI_THICK : TRIANGLE_ELEMENT {
  static constexpr int THEORY = THICK_THEORY;
  using TRIANGLE_ELEMENT::TRIANGLE_ELEMENT;

  TRI_THICK_PLATE plate() const { return {EL, TRI, TRI_U}; }
  void set_side_constants() const { SIDE_CONST_TRI(EL); }

  void stiffness(FLAT_PARTS<3>& parts) const { KSTIF_TRI_THICK_ELAS(EL, TRI, ISO, LOADS, parts); }

  bool forces_of_fields(std::int32_t op, const double* U, double* f) const {
    return TRI_FORCES_OF_FIELDS(EL, THEORY, TRI.AXES, local, ISO, LOADS, U, f, op);
  }
  void forces_isotropic(std::int32_t op, double* f) const { FINT_TRI_THICK_ISO(EL, TRI, ISO, TRI_U, LOADS, f, op); }
  void forces_general(std::int32_t op, double* f) const { FINT_TRI_THICK_GEN(EL, TRI, TRI_U, LOADS, f, op); }

  bool results_of_fields(const double* U, double* nodes, double* points) const {
    return TRI_RESULTS_OF_FIELDS(EL, THEORY, TRI.AXES, local, ISO, LOADS, U, nodes, points);
  }
  void results_isotropic(double* nodes, double* points) const {
    RES_TRI_THICK_ISO(EL, TRI, ISO, TRI_U, LOADS, local, nodes, points);
  }
  void results_general(double* nodes, double* points) const { RES_TRI_THICK_GEN(EL, TRI_U, local, nodes, points); }

  void loads_isotropic(double* f) const { LOAD_TRI_THICK_ISO(EL, TRI, LOADS, f); }
  void loads_general(double* f) const { LOAD_TRI_THICK_GEN(EL, TRI, LOADS, f); }
};

#endif
