// plate_lanes.h: the stiffness of isotropic plates, one in every lane of V, in global axes. Each puts the formulas of
// an engine (shells/engines) together.
#ifndef FINITES_PLATE_LANES_H
#define FINITES_PLATE_LANES_H

#include "common/lane_pair.h"
#include "finites/views.hpp"
#include "plain_calls/lanes/gather.h"
#include "plain_calls/lanes/lane_kernels.h"
#include "shells/common/flat_formulas.h"
#include "shells/common/isotropic_section.h"
#include "shells/common/point_pairs.h"
#include "shells/common/side_fields.h"
#include "shells/quadrilateral/geometry_formulas.h"
#include "shells/quadrilateral/membrane_formulas.h"
#include "shells/quadrilateral/point_pairs.h"
#include "shells/quadrilateral/thick/plate_formulas.h"
#include "shells/quadrilateral/thick/side_formulas.h"
#include "shells/quadrilateral/thin/bending_formulas.h"
#include "shells/triangle/geometry_formulas.h"
#include "shells/triangle/membrane_formulas.h"
#include "shells/triangle/point_pairs.h"
#include "shells/triangle/thick/plate_formulas.h"
#include "shells/triangle/thick/side_formulas.h"
#include "shells/triangle/thin/bending_formulas.h"

template <class V>
inline PLATE_CONSTANTS<V> gathered_constants(const PLATE_LANES& plates) {
  return {gathered<V>(plates.E), gathered<V>(plates.nu), gathered<V>(plates.h)};
}

// Nodes plus their offsets, which are 0: -0 becomes 0, as in the single call.
template <class V, int N>
inline void gather_corners(const LANE_INPUT& in, V (&xyz)[N]) {
  gather(in, xyz);
  for (V& x : xyz) x = x + 0.0;
}

// The matrices of the parts in global axes.
template <int NODES, class V>
inline bool scatter_parts(const MATRIX<3, 3, V>& AXES, const FLAT_PARTS<NODES, V>& parts, const LANE_OUTPUT& out) {
  if (!finite_parts(parts) || !all_finite(AXES.data(), 9)) return false;
  V packed[SYM(6 * NODES, 6 * NODES)];
  turn_parts(AXES, parts, PACKED_MATRIX<V>{packed});
  scatter_symmetric<6 * NODES>(packed, out);
  return true;
}

// ------------------------------------------------------------------------------------------------ quadrilaterals

template <class V>
struct QUAD_LANES {
  QUADRILATERAL_GEOMETRY_OF<V> QUAD;
  MATRIX<3, 4, V> local;
  PLATE_CONSTANTS<V> section;
  FLAT_PARTS<4, V> parts;

  QUAD_LANES(const PLATE_LANES& plates, int sides) : section(gathered_constants<V>(plates)) {
    V xyz[12];
    VECTOR<3, V> centroid;
    gather_corners(plates.xyz, xyz);
    quad_local_frame(xyz, QUAD, local, centroid);
    quad_geometry(local, sides, QUAD);
    quad_drilling(section.E, section.h, local, parts.drilling);
  }
};

// Thin, or a membrane.
template <class V>
inline bool thin_quad_lanes(const PLATE_LANES& plates, int membrane_only, const LANE_OUTPUT& out) {
  QUAD_LANES<V> q(plates, WITH_SIDES);
  const ISOTROPIC_SECTION_OF<V> ISO = isotropic_section(q.section, membrane_only, plates.modifiers);
  const auto points = quad_pairs_iso(q.QUAD, QUAD_RULE_FULL);
  quad_split_membrane(quad_centre(q.QUAD), ISO, points, q.parts.membrane);
  dkq_stiffness(q.QUAD, bending_terms(ISO), points, q.parts.plate);
  return scatter_parts(q.QUAD.AXES, q.parts, out);
}

template <class V>
bool thick_quadrilateral_lanes(const PLATE_LANES& plates, const LANE_OUTPUT& out) {
  QUAD_LANES<V> q(plates, WITHOUT_SIDES);
  const PLATE_CONSTANTS<V>& s = q.section;
  const ISOTROPIC_SECTION_OF<V> ISO = isotropic_section(s, 0, plates.modifiers);
  const auto points = quad_pairs_iso(q.QUAD, QUAD_RULE_FULL);
  const QUADRILATERAL_SIDES_OF<V> sides =
      isotropic_quad_sides(isotropic_side_factor(s.nu, s.h, plates.modifiers), q.QUAD);
  quad_split_membrane(quad_centre(q.QUAD), ISO, points, q.parts.membrane);
  integrate_thick_quad<MEETING_SIDES>(points, QUAD_SIDE_VALUES_OF<V>(sides), bending_terms(ISO),
                                      SHEAR_TERMS_OF<V>{ISO.DS1, ISO.DS2}, q.parts.plate);
  return scatter_parts(q.QUAD.AXES, q.parts, out);
}

template <class V>
bool thin_quadrilateral_lanes(const PLATE_LANES& plates, const LANE_OUTPUT& out) {
  return thin_quad_lanes<V>(plates, 0, out);
}

template <class V>
bool membrane_quadrilateral_lanes(const PLATE_LANES& plates, const LANE_OUTPUT& out) {
  return thin_quad_lanes<V>(plates, 1, out);
}

// ------------------------------------------------------------------------------------------------ triangles

template <class V>
struct TRI_LANES {
  TRIANGLE_GEOMETRY_OF<V> TRI;
  PLATE_CONSTANTS<V> section;
  FLAT_PARTS<3, V> parts;

  explicit TRI_LANES(const PLATE_LANES& plates) : section(gathered_constants<V>(plates)) {
    V xyz[9];
    MATRIX<3, 3, V> local;
    gather_corners(plates.xyz, xyz);
    tri_local_frame(xyz, TRI, local);
    tri_geometry(local, TRI);
    tri_drilling(section.E, section.h, TRI, parts.drilling);
  }
};

// Thin, or a membrane.
template <class V>
inline bool thin_tri_lanes(const PLATE_LANES& plates, int membrane_only, const LANE_OUTPUT& out) {
  TRI_LANES<V> t(plates);
  const ISOTROPIC_SECTION_OF<V> ISO = isotropic_section(t.section, membrane_only, plates.modifiers);
  tri_membrane(t.TRI, ISO, t.parts.membrane);
  dkt_stiffness(t.TRI, bending_terms(ISO), tri_pairs_iso(t.TRI, TRI_RULE_FOUR), t.parts.plate);
  return scatter_parts(t.TRI.AXES, t.parts, out);
}

template <class V>
bool thick_triangle_lanes(const PLATE_LANES& plates, const LANE_OUTPUT& out) {
  TRI_LANES<V> t(plates);
  const PLATE_CONSTANTS<V>& s = t.section;
  const ISOTROPIC_SECTION_OF<V> ISO = isotropic_section(s, 0, plates.modifiers);
  const TRIANGLE_SIDES_OF<V> sides = isotropic_tri_sides(isotropic_side_factor(s.nu, s.h, plates.modifiers), t.TRI);
  tri_membrane(t.TRI, ISO, t.parts.membrane);
  integrate_thick_tri<MEETING_SIDES>(tri_pairs_iso(t.TRI, TRI_RULE_FOUR), TRI_SIDE_VALUES_OF<V>(sides),
                                     tri_linear_slopes(t.TRI), bending_terms(ISO), SHEAR_TERMS_OF<V>{ISO.DS1, ISO.DS2},
                                     t.parts.plate);
  return scatter_parts(t.TRI.AXES, t.parts, out);
}

template <class V>
bool thin_triangle_lanes(const PLATE_LANES& plates, const LANE_OUTPUT& out) {
  return thin_tri_lanes<V>(plates, 0, out);
}

template <class V>
bool membrane_triangle_lanes(const PLATE_LANES& plates, const LANE_OUTPUT& out) {
  return thin_tri_lanes<V>(plates, 1, out);
}

#endif
