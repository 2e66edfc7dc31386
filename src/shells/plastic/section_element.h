// section_element.h: the plate elements of the whole-section model: stiffness, internal forces, results and geometric
// stiffness, for every shape and theory. An ELEMENT is the plate kernel of an engine (plate_matrices.h).
//
//     K  = sum_p  B^T C B w detj                     C: the tangent of the point
//     f  = sum_p  B^T n w detj,    n = C B u         u: displacements of the call
//     KG = sum_p  (geometric pairs of the stored membrane forces) w detj
//
// The tangent follows the total strains B (u + us), us being the stored displacements.
#ifndef FINITES_SECTION_ELEMENT_H
#define FINITES_SECTION_ELEMENT_H

#include "common/array_columns.h"
#include "common/lanes.h"
#include "finites/fields.h"
#include "finites/records.h"
#include "finites/views.hpp"
#include "plate_material/section_decomposition.h"
#include "plate_material/section_state.h"
#include "plate_material/section_update.h"
#include "plate_results/element_record.h"
#include "plate_results/extrapolation.h"
#include "plate_results/res_record.h"
#include "shells/common/plate_matrices.h"
#include "shells/common/records.h"
#include "shells/common/strains.h"
#include "shells/common/surface_points.h"
#include "shells/common/translations.h"
#include "shells/plastic/element_points.h"
#include "shells/plastic/strain_cases.h"

// K, full, element axes: += the integral of B^T C B with the stored tangents. Membrane and plate couple here.
template <class ELEMENT>
void section_stiffness(const ELEMENT& element, const PLATE_STATE_IN_USE& in_use, double* K) {
  const SECTION_STATE state = section_state_of(in_use);
  if (!state.complete) return;
  MATRICES_OF<ELEMENT> B;
  for (int gp = 1; gp <= POINTS_OF_PLATE; ++gp) {
    const SURFACE_POINT s = element.point(gp);
    element.matrices(s, B);
    const auto C = section_tangent<ELEMENT::WIDTH>(*state.record, gp);
    const double c = s.weight * s.detj;
    add_section_product<ELEMENT>(B, C, c, K);
  }
}

// Stores the answer of a point in operation 33. SEC_EP_INC is the change of the plastic strain since the last store.
template <int WIDTH>
void store_section_point(const SECTION_ANSWER<WIDTH>& answer, int gp, PLATE_STATE_RECORD& record) {
  record.SEC_EPBAR_CUR(gp) = answer.ebar;
  record.SEC_SIGN_CUR(gp) = answer.qtm;
  record.SEC_CURV_INC(gp) = answer.dkap;
  const ARRAY_COLUMN<double> current = column_of(record.SEC_EP_CUR, gp);
  VECTOR<12> change = loaded<12>(current);
  for (int i = 1; i <= 12; ++i) change(i) = answer.ep(i) - change(i);
  store(change, column_of(record.SEC_EP_INC, gp));
  store(answer.ep, current);
  store_section_tangent(record, gp, answer.C);
}

// C e, two rows at a time, summed as in matrix_times.
template <int WIDTH>
VECTOR<WIDTH> tangent_times(const MATRIX<WIDTH, WIDTH>& C, const VECTOR<WIDTH>& e) {
  LANES sum[WIDTH / 2] = {};
  for (int j = 1; j <= WIDTH; ++j) {
    for (int i = 0; i < WIDTH / 2; ++i) sum[i] = sum[i] + lanes_at(&C(2 * i + 1, j)) * both(e(j));
  }
  VECTOR<WIDTH> n;
  for (int i = 0; i < WIDTH / 2; ++i) store_lanes(&n(2 * i + 1), sum[i]);
  return n;
}

// f, element axes: += the integral of B^T times the section forces. The material follows the total strains, of the
// displacements and the stored ones (us_membrane, us_plate); the forces are its tangent times the strains of the
// displacements alone.
template <class ELEMENT>
void section_forces(const ELEMENT& element, const PLATE_STATE_IN_USE& in_use, int op,
                    const VECTOR<ELEMENT::MEMBRANE>& us_membrane, const VECTOR<ELEMENT::PLATE>& us_plate, double* f) {
  PLATEELEM_RECORD& EL = element.EL;
  const SECTION_STATE state = section_state_of(in_use);
  if (!state.complete) return;
  VECTOR<ELEMENT::MEMBRANE> um = element.u_membrane();
  VECTOR<ELEMENT::PLATE> up = element.u_plate();
  for (int i = 1; i <= ELEMENT::MEMBRANE; ++i) um(i) += us_membrane(i);
  for (int i = 1; i <= ELEMENT::PLATE; ++i) up(i) += us_plate(i);
  const STRAIN_CASES<ELEMENT::MEMBRANE> membrane_cases(element.u_membrane(), um);
  const STRAIN_CASES<ELEMENT::PLATE> plate_cases(element.u_plate(), up);
  ELEMENT_POINTS<ELEMENT> points(element, POINTS_OF_PLATE, membrane_cases, plate_cases);
  VECTOR<ELEMENT::WIDTH> n[POINTS_OF_PLATE];
  double branch = 1.0;  // of the spectral data in EL, which SECTION_SPECTRAL has set
  for (int gp = 1; gp <= POINTS_OF_PLATE; ++gp) {
    PLATE_STATE_RECORD& r = *state.record;
    const SECTION_POINT from{plastic_strains(r.SEC_EP_START, gp), r.SEC_EPBAR_START(gp), r.SEC_SIGN_START(gp),
                             r.SEC_AUX(gp)};
    if (section_branch(from.ref) != branch) SECTION_SPECTRAL_SIGN(EL, from.ref, EL.THICKNESS, EL.YIELD_STRESS);
    branch = section_branch(from.ref);
    const SECTION_STRAINS<ELEMENT::WIDTH>& strains = points.strains[gp - 1];
    SECTION_ANSWER<ELEMENT::WIDTH> answer{};
    update_section_point(EL, EL.THICKNESS, EL.YIELD_STRESS, strains.total, from, in_use.failures.at(gp), answer);
    if (op == OP_FORCES_COMMIT) store_section_point(answer, gp, r);
    n[gp - 1] = tangent_times(answer.C, strains.of_call);
  }
  points.add_forces(n, f);
}

// One record, without any temperature term: stresses of the mid surface n / h, faces as in an elastic plate.
template <int WIDTH>
void fill_section_record(const PLATEELEM_RECORD& EL, double x, double y, const VECTOR<WIDTH>& eps,
                         const VECTOR<WIDTH>& n, const VECTOR<WIDTH>& ep, double* block) {
  const double h = EL.THICKNESS;
  VECTOR<3> stress = part_of<3>(n, 0);
  for (int i = 1; i <= 3; ++i) stress(i) /= h;
  VECTOR<2> plastic_shear{};
  if constexpr (WIDTH == 8) {
    fill_thick_record(x, y, part_of<3>(eps, 0), part_of<3>(eps, 3), stress, part_of<3>(n, 3), part_of<2>(eps, 6),
                      part_of<2>(n, 6), h, block);
    plastic_shear = part_of<2>(ep, 6);
  } else {
    fill_thin_record(x, y, part_of<3>(eps, 0), part_of<3>(eps, 3), stress, part_of<3>(n, 3), h, block);
  }
  fill_plastic_columns(part_of<3>(ep, 0), part_of<3>(ep, 3), plastic_shear, h, block);
}

// The record of point gp, from the stored tangent and the last plastic increment, for the displacements of the call; n
// and ep are its forces and plastic strains.
template <class ELEMENT>
void RES_PT_PLAST(const ELEMENT& element, const PLATE_STATE_RECORD& record, const MATRIX<3, ELEMENT::NODES>& local,
                  int gp, VECTOR<ELEMENT::WIDTH>& n, VECTOR<ELEMENT::WIDTH>& ep, double* block) {
  const PLATEELEM_RECORD& EL = element.EL;
  const SURFACE_POINT s = element.point(gp);
  MATRICES_OF<ELEMENT> B;
  element.matrices(s, B);
  const VECTOR<ELEMENT::WIDTH> eps = section_strains(B, element.u_membrane(), element.u_plate());
  n = matrix_times(section_tangent<ELEMENT::WIDTH>(record, gp), eps);
  SECTION_EP_TO_LOCAL(EL, plastic_strains(record.SEC_EP_INC, gp), ep);
  fill_section_record(EL, position(local, 1, s.xi, s.eta), position(local, 2, s.xi, s.eta), eps, n, ep, block);
}

// The record of a node: strains computed at the node, forces and plastic strains extrapolated from the points.
template <class ELEMENT>
void RES_NODE_PLAST(const ELEMENT& element, const MATRIX<3, ELEMENT::NODES>& local, int node,
                    const VECTOR<ELEMENT::WIDTH>& n, const VECTOR<ELEMENT::WIDTH>& ep, double* block) {
  const PLATEELEM_RECORD& EL = element.EL;
  MATRICES_OF<ELEMENT> B;
  element.matrices(element.node(node), B);
  const VECTOR<ELEMENT::WIDTH> eps = section_strains(B, element.u_membrane(), element.u_plate());
  fill_section_record(EL, local(1, node), local(2, node), eps, n, ep, block);
}

// Records at the points, then at the nodes.
template <class ELEMENT>
void section_results(const ELEMENT& element, const PLATE_STATE_IN_USE& in_use, const MATRIX<3, ELEMENT::NODES>& local,
                     double* nodes, double* points) {
  const SECTION_STATE state = section_state_of(in_use);
  if (!state.complete) return;
  VECTOR<ELEMENT::WIDTH> n[POINTS_OF_PLATE];
  VECTOR<ELEMENT::WIDTH> ep[POINTS_OF_PLATE];
  for (int gp = 1; gp <= POINTS_OF_PLATE; ++gp) {
    RES_PT_PLAST(element, *state.record, local, gp, n[gp - 1], ep[gp - 1], points + (gp - 1) * RES_LENGTH);
  }
  VECTOR<ELEMENT::WIDTH> n_node[ELEMENT::NODES];
  VECTOR<ELEMENT::WIDTH> ep_node[ELEMENT::NODES];
  ELEMENT::extrapolate(n, n_node);
  ELEMENT::extrapolate(ep, ep_node);
  for (int node = 1; node <= ELEMENT::NODES; ++node) {
    RES_NODE_PLAST(element, local, node, n_node[node - 1], ep_node[node - 1], nodes + (node - 1) * RES_LENGTH);
  }
}

// K, full, element axes: += the geometric stiffness of the stored forces of each point.
template <class ELEMENT>
void section_geometric_stiffness(const ELEMENT& element, const double* points, double* K) {
  constexpr int NODES = ELEMENT::NODES;
  double k[SYM(NODES, NODES)] = {};
  for (int gp = 1; gp <= POINTS_OF_PLATE; ++gp) {
    const SURFACE_POINT s = element.point(gp);
    add_geometric_pairs(stored_membrane_forces(points, gp), s.weight * s.detj, element.slopes(s), k);
  }
  add_translations_full<NODES>(k, K);
}

#endif
