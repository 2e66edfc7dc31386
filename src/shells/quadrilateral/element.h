// element.h: a four-node element during one operation: what it holds, and what both theories do in the same way.
//
// The engines are written once for every shape and theory (engines/plate_engine.h) and use an element through these
// names.
//
// Mirror: shells/triangle/element.h.
#ifndef FINITES_QUAD_ELEMENT_H
#define FINITES_QUAD_ELEMENT_H

#include <cstdint>

#include "finites/fields.h"
#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/constitutive.h"
#include "shells/common/elem_loads.h"
#include "shells/common/flat_parts.h"
#include "shells/common/packed.h"
#include "shells/common/side_coefficients.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/quadrilateral/membrane.h"

struct QUADRILATERAL_ELEMENT {
  static constexpr int NODES = 4, DOFS = QUAD_DOFS, GROUPS = QUAD_GROUPS, PACKED = QUAD_PACKED;
  static constexpr bool CLEARS_POINTS = false;  // operation 7 leaves the records of the points alone

  PLATEELEM_RECORD& EL;
  const ELEM_LOADS& LOADS;
  int membrane_only;

  QUADRILATERAL_GEOMETRY QUAD;
  MATRIX<3, 4> local;  // coordinates of the nodes, element axes
  ISOTROPIC_SECTION ISO;
  QUAD_DISPLACEMENTS QUAD_U;

  QUADRILATERAL_ELEMENT(PLATEELEM_RECORD& record, const ELEM_LOADS& loads, int membrane)
      : EL(record), LOADS(loads), membrane_only(membrane) {
    QUAD.AXES = MATRIX<3, 3>{};  // the answer of an operation that is not known; each other sets what it reads
  }

  // The axes and the local coordinates; the geometry with them.
  void set_frame(const double* xyz);
  void set_geometry(const double* xyz, SIDE_COEFFICIENTS wanted);
  const MATRIX<3, 3>& axes() const { return QUAD.AXES; }

  // AXES and LOCAL_XYZ_QUAD of EL, which the kernels of the general section read beside the section.
  void store_frame() const;

  // SPLIT_SHEAR, except for the whole-section model, the only one that integrates the in-plane shear at all points.
  int split() const { return EL.MAT_BEHAV == BEHAV_SECTION_PLASTIC ? 0 : SPLIT_SHEAR; }

  // The parts of the displacements U(24), global axes.
  void split_displacements(const double* U);

  // parts += foundation and, when wanted, the geometric stiffness of the stored forces; the drilling part is written.
  void finish_stiffness(int geometric, const double* points, FLAT_PARTS<4>& parts) const;

  // K(24, 24): the drilling stiffness, added at its places.
  void place_drilling(double* K) const;

  // M, of the density of LOADS.
  void mass(FLAT_PARTS<4>& M) const;

  // K(300): the 30 entries of the translations. ul(24) are the displacements in element axes.
  void geometric_stiffness(std::int32_t op, const double* ul, const double* points, double factor, double* K) const;

  // The terms of foundation and drilling, and the turn to global axes, on the forces f.
  void finish_forces(std::int32_t op, double* f) const;

  double area() const;
  void locate_point(const double* xyz, int& point_flag1, int& point_flag2, double& distance);
  void point_load(const double* xyz, double* f);
};

#endif
