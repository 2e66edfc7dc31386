// layered_element.h: the plate elements of the layered model: stiffness, internal forces and results, for every shape
// and theory. An ELEMENT is the plate kernel of an engine (plate_matrices.h).
//
//     K = sum_p  B^T D B w detj,    F = sum_p  B^T n w detj,    n = D B u
//
// The material follows the total strains B (u + us), of the displacements u of the call and the stored ones us; the
// section matrices D, integrated from the tangents after that update, act on u only.
#ifndef FINITES_LAYERED_ELEMENT_H
#define FINITES_LAYERED_ELEMENT_H

#include <algorithm>
#include <cstdint>

#include "finites/fields.h"
#include "finites/records.h"
#include "finites/views.hpp"
#include "plate_material/layered_column.h"
#include "plate_material/through_thickness.h"
#include "plate_results/element_record.h"
#include "plate_results/extrapolation.h"
#include "plate_results/res_record.h"
#include "shells/common/plate_matrices.h"
#include "shells/common/records.h"
#include "shells/common/strains.h"
#include "shells/common/surface_points.h"
#include "shells/plastic/element_points.h"
#include "shells/plastic/strain_cases.h"

constexpr int COMPONENTS = 5;  // of the stress of a layer: xx, yy, xy, xz, yz
constexpr int HEIGHTS = 3;     // at which layers are shown: bottom, middle, top

template <class ELEMENT>
constexpr int THEORY_OF = ELEMENT::WIDTH == 8 ? THICK_THEORY : THIN_THEORY;

// Section strains in parts.
template <int WIDTH>
LAYERED_STRAINS layered_parts(const VECTOR<WIDTH>& e) {
  LAYERED_STRAINS strains{part_of<3>(e, 0), part_of<3>(e, 3), {}};
  if constexpr (WIDTH == 8) strains.s = part_of<2>(e, 6);
  return strains;
}

// B (um, up) in parts.
template <class ELEMENT>
LAYERED_STRAINS layered_strains(const MATRICES_OF<ELEMENT>& B, const VECTOR<ELEMENT::MEMBRANE>& um,
                                const VECTOR<ELEMENT::PLATE>& up) {
  return layered_parts(section_strains(B, um, up));
}

// N, M and Q of the section for its strains; Q is zero in a thin element.
struct LAYERED_FORCES {
  VECTOR<3> N, M;
  VECTOR<2> Q;
};

LAYERED_FORCES layered_section_forces(const SECTION_INTEGRALS& D, const LAYERED_STRAINS& e, int theory);

// F, element axes: += the forces of the plate; u and us are the displacements of the call and the stored ones.
template <class ELEMENT>
void layered_forces(const ELEMENT& element, const PLATE_STATE_IN_USE& state, int ngp, const double* u, const double* us,
                    double* F, int op) {
  const PLATEELEM_RECORD& EL = element.EL;
  constexpr int theory = THEORY_OF<ELEMENT>;
  const auto* const points = layered_state_of(state);
  if (points == nullptr) return;
  const std::int32_t n = state.thickness_points;
  PACKED_FIELDS fields((*points)(1));
  for (std::int32_t k = 1; fields && k < n; k += 2) fields.expect(k);
  const auto um = picked(u, ELEMENT::MEMBRANE_DOF);
  const auto up = picked(u, ELEMENT::PLATE_DOF);
  auto tm = picked(us, ELEMENT::MEMBRANE_DOF);
  auto tp = picked(us, ELEMENT::PLATE_DOF);
  for (int i = 1; i <= ELEMENT::MEMBRANE; ++i) tm(i) = um(i) + tm(i);
  for (int i = 1; i <= ELEMENT::PLATE; ++i) tp(i) = up(i) + tp(i);

  const LAYERED_LAW law(EL, theory, op, state);
  const THICKNESS_SECTION rule(n, EL.THICKNESS);
  const STRAIN_CASES<ELEMENT::MEMBRANE> membrane_cases(um, tm);
  const STRAIN_CASES<ELEMENT::PLATE> plate_cases(up, tp);
  SECTION_INTEGRALS elastic;  // of a surface point without a plastic one
  integrate_section(rule, theory, law.tangent, elastic);
  ELEMENT_POINTS<ELEMENT> surface(element, ngp, membrane_cases, plate_cases);
  VECTOR<ELEMENT::WIDTH> forces[POINTS_OF_PLATE];
  SECTION_INTEGRALS D;
  for (int gp = 1; gp <= ngp; ++gp) {
    const SECTION_STRAINS<ELEMENT::WIDTH>& strains = surface.strains[gp - 1];
    LAYERED_COLUMN column(law, (*points)(gp), fields, gp);
    const PACKED_FIELDS next((*points)(std::min(gp + 1, ngp)));
    if (gp < ngp && next) column.next = &next;
    const bool all_elastic = update_layered_points(column, layered_parts(strains.total), rule, n);
    fields = next;
    if (!all_elastic) integrate_section(rule, theory, (*points)(gp), D);
    const LAYERED_FORCES f = layered_section_forces(all_elastic ? elastic : D, layered_parts(strains.of_call), theory);
    VECTOR<ELEMENT::WIDTH>& of_point = forces[gp - 1];
    for (int i = 1; i <= 3; ++i) of_point(i) = f.N(i);
    for (int i = 1; i <= 3; ++i) of_point(3 + i) = f.M(i);
    for (int i = 7; i <= ELEMENT::WIDTH; ++i) of_point(i) = f.Q(i - 6);
  }
  surface.add_forces(forces, F);
}

// C: D as one matrix, its lower blocks the transposes of the upper ones.
void set_section_block(const SECTION_INTEGRALS& D, MATRIX<6, 6>& C);
void set_section_block(const SECTION_INTEGRALS& D, MATRIX<8, 8>& C);

// K, full, element axes: += the integral of B^T D B. The drilling rotations stay zero.
template <class ELEMENT>
void layered_stiffness(const ELEMENT& element, const PLATE_STATE_IN_USE& state, int ngp, double* K) {
  const PLATEELEM_RECORD& EL = element.EL;
  const auto* const points = layered_state_of(state);
  if (points == nullptr) return;
  const THICKNESS_SECTION rule(state.thickness_points, EL.THICKNESS);
  MATRICES_OF<ELEMENT> B;
  SECTION_INTEGRALS D;
  MATRIX<ELEMENT::WIDTH, ELEMENT::WIDTH> C;
  for (int gp = 1; gp <= ngp; ++gp) {
    const SURFACE_POINT s = element.point(gp);
    element.matrices(s, B);
    integrate_section(rule, THEORY_OF<ELEMENT>, (*points)(gp), D);
    set_section_block(D, C);
    add_section_product<ELEMENT>(B, C, s.weight * s.detj, K);
  }
}

// The values of a surface point that are extrapolated to the nodes: section forces N, M, Q; stresses and plastic
// increments at three heights (bottom, middle, top), five components each.
struct LAYERED_POINT_RESULT {
  VECTOR<8> forces;
  VECTOR<15> stress, plastic;
};

// Stresses, plastic increments and section forces of a surface point with n thickness points.
LAYERED_POINT_RESULT layered_point_result(const PLATEELEM_RECORD& EL, const LAYERED_STRAINS& e,
                                          const POINT_STATE_RECORD& state, std::int32_t n, int theory);

// One record, from the strains at its place and from a result that belongs to a point or was extrapolated to a node.
void fill_layered_result(const PLATEELEM_RECORD& EL, double x, double y, const LAYERED_STRAINS& e,
                         const LAYERED_POINT_RESULT& r, double* block);

// Writes the record of surface point gp for the displacements of the call; returns the values for the nodes.
template <class ELEMENT>
LAYERED_POINT_RESULT LAYERED_GP_RESULT(const ELEMENT& element, const POINT_STATE_RECORD& state, std::int32_t n,
                                       const MATRIX<3, ELEMENT::NODES>& local, int gp,
                                       const VECTOR<ELEMENT::MEMBRANE>& um, const VECTOR<ELEMENT::PLATE>& up,
                                       double* block) {
  const PLATEELEM_RECORD& EL = element.EL;
  const SURFACE_POINT s = element.point(gp);
  MATRICES_OF<ELEMENT> B;
  element.matrices(s, B);
  const LAYERED_STRAINS e = layered_strains<ELEMENT>(B, um, up);
  const LAYERED_POINT_RESULT r = layered_point_result(EL, e, state, n, THEORY_OF<ELEMENT>);
  fill_layered_result(EL, position(local, 1, s.xi, s.eta), position(local, 2, s.xi, s.eta), e, r, block);
  return r;
}

// The record of a node: strains computed at the node, all else extrapolated from the points.
template <class ELEMENT>
void LAYERED_NODE_RESULT(const ELEMENT& element, const LAYERED_POINT_RESULT& extrapolated,
                         const MATRIX<3, ELEMENT::NODES>& local, int node, const VECTOR<ELEMENT::MEMBRANE>& um,
                         const VECTOR<ELEMENT::PLATE>& up, double* block) {
  const PLATEELEM_RECORD& EL = element.EL;
  MATRICES_OF<ELEMENT> B;
  element.matrices(element.node(node), B);
  fill_layered_result(EL, local(1, node), local(2, node), layered_strains<ELEMENT>(B, um, up), extrapolated, block);
}

// Records at the points, then at the nodes.
template <class ELEMENT>
void layered_results(const ELEMENT& element, const PLATE_STATE_IN_USE& in_use, const MATRIX<3, ELEMENT::NODES>& local,
                     const double* u, int ngp, double* nodes, double* points) {
  const auto* const state = layered_state_of(in_use);
  if (state == nullptr || in_use.thickness_points < 1) return;
  const auto um = picked(u, ELEMENT::MEMBRANE_DOF);
  const auto up = picked(u, ELEMENT::PLATE_DOF);
  VECTOR<8> forces[POINTS_OF_PLATE] = {};
  VECTOR<15> stress[POINTS_OF_PLATE] = {};
  VECTOR<15> plastic[POINTS_OF_PLATE] = {};
  for (int gp = 1; gp <= ngp; ++gp) {
    const LAYERED_POINT_RESULT r = LAYERED_GP_RESULT(element, (*state)(gp), in_use.thickness_points, local, gp, um, up,
                                                     points + (gp - 1) * RES_LENGTH);
    forces[gp - 1] = r.forces;
    stress[gp - 1] = r.stress;
    plastic[gp - 1] = r.plastic;
  }
  VECTOR<8> node_forces[ELEMENT::NODES];
  VECTOR<15> node_stress[ELEMENT::NODES];
  VECTOR<15> node_plastic[ELEMENT::NODES];
  ELEMENT::extrapolate(forces, node_forces);
  ELEMENT::extrapolate(stress, node_stress);
  ELEMENT::extrapolate(plastic, node_plastic);
  for (int n = 1; n <= ELEMENT::NODES; ++n) {
    LAYERED_NODE_RESULT(element, {node_forces[n - 1], node_stress[n - 1], node_plastic[n - 1]}, local, n, um, up,
                        nodes + (n - 1) * RES_LENGTH);
  }
}

#endif
