// element.h: a three-node element during one operation: what it holds, and what both theories do in the same way.
//
// The engines are written once for every shape and theory (engines/plate_engine.h) and use an element through these
// names.
//
// Mirror: shells/quadrilateral/element.h.
#ifndef FINITES_TRI_ELEMENT_H
#define FINITES_TRI_ELEMENT_H

#include <cstdint>

#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/constitutive.h"
#include "shells/common/elem_loads.h"
#include "shells/common/flat_parts.h"
#include "shells/common/packed.h"
#include "shells/common/side_coefficients.h"
#include "shells/triangle/geometry.h"

struct TRIANGLE_ELEMENT {
  static constexpr int NODES = 3, DOFS = TRI_DOFS, GROUPS = TRI_GROUPS, PACKED = TRI_PACKED;
  static constexpr bool CLEARS_POINTS = true;  // operation 7 sets the records of the points to zero

  PLATEELEM_RECORD& EL;
  const ELEM_LOADS& LOADS;
  int membrane_only;

  TRIANGLE_GEOMETRY TRI;
  MATRIX<3, 3> local;  // coordinates of the nodes, element axes
  ISOTROPIC_SECTION ISO;
  TRI_DISPLACEMENTS TRI_U;

  TRIANGLE_ELEMENT(PLATEELEM_RECORD& record, const ELEM_LOADS& loads, int membrane)
      : EL(record), LOADS(loads), membrane_only(membrane) {
    TRI.AXES = MATRIX<3, 3>{};  // the answer of an operation that is not known; each other sets what it reads
  }

  // The axes and the local coordinates; the geometry with them. A triangle has no side coefficients to leave out.
  void set_frame(const double* xyz);
  void set_geometry(const double* xyz, SIDE_COEFFICIENTS wanted);
  const MATRIX<3, 3>& axes() const { return TRI.AXES; }

  // AXES and LOCAL_XYZ of EL, which the kernels of the general section read beside the section.
  void store_frame() const;

  // 0: in-plane shear and normal strains are integrated with the same points.
  static int split() { return 0; }

  // The parts of the displacements U(18), global axes.
  void split_displacements(const double* U);

  // parts += foundation and, when wanted, the geometric stiffness of the stored forces. The drilling part is there
  // already.
  void finish_stiffness(int geometric, const double* points, FLAT_PARTS<3>& parts) const;

  // K(18, 18): the drilling stiffness, written at its places.
  void place_drilling(double* K) const;

  // M, of the density of LOADS.
  void mass(FLAT_PARTS<3>& M) const;

  // K(171): the 18 entries of the translations. ul(18) are the displacements in element axes.
  void geometric_stiffness(std::int32_t op, const double* ul, const double* points, double factor, double* K) const;

  // The terms of foundation and drilling, and the turn to global axes, on the forces f.
  void finish_forces(std::int32_t op, double* f) const;

  double area() const;
  void locate_point(const double* xyz, int& point_flag1, int& point_flag2, double& distance);
  void point_load(const double* xyz, double* f);
};

#endif
