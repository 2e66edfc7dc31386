// stored_state.h: forces and results of the stresses that a plastic state holds.
//
//     layered          N = sum_k w s,  M = sum_k w z s,  Q = sum_k w t   s, t: the stored stresses of thickness point k
//     whole section    n = D (B u - p)                                   p: the stored plastic strains
//
//     f = sum_p  B^T n w detj
//
// The forces of the operations are a tangent times displacements (section_element.h, layered_element.h): those of a
// path only as far as the tangent is that of the path. These lie on the yield surface wherever it leads, so that an
// equilibrium of them is one.
#ifndef FINITES_STORED_STATE_H
#define FINITES_STORED_STATE_H

#include <cmath>
#include <cstdint>

#include "finites/records.h"
#include "finites/views.hpp"
#include "plate_material/section_state.h"
#include "plate_material/section_update.h"
#include "plate_material/state_in_use.h"
#include "plate_material/through_thickness.h"
#include "plate_results/extrapolation.h"
#include "plate_results/res_record.h"
#include "shells/common/behaviour.h"
#include "shells/common/plate_matrices.h"
#include "shells/common/records.h"
#include "shells/common/strains.h"
#include "shells/common/surface_points.h"
#include "shells/plastic/element_points.h"
#include "shells/plastic/layered_element.h"
#include "shells/plastic/section_element.h"
#include "shells/plastic/strain_cases.h"

// N, M and Q, and the stresses and plastic strains at three heights, of a layered surface point with n thickness
// points.
LAYERED_POINT_RESULT stored_layered_point(const PLATEELEM_RECORD& EL, const POINT_STATE_RECORD& state, std::int32_t n);

// The section forces of point gp under the strains eps, and its plastic strains p in element axes.
template <int WIDTH>
VECTOR<WIDTH> stored_section_forces(const PLATEELEM_RECORD& EL, const PLATE_STATE_RECORD& record, int gp,
                                    const VECTOR<WIDTH>& eps, VECTOR<WIDTH>& p) {
  VECTOR<WIDTH> n;
  SECTION_EP_TO_LOCAL(EL, plastic_strains(record.SEC_EP_CUR, gp), p);
  SECTION_TRIAL(EL, eps, p, n);
  return n;
}

// n(4): the section forces of the points under the displacements of the element, in which the state was stored.
template <class ELEMENT>
void set_stored_forces(const ELEMENT& element, const PLATE_STATE_IN_USE& state, const ELEMENT_POINTS<ELEMENT>& points,
                       VECTOR<ELEMENT::WIDTH> (&n)[POINTS_OF_PLATE]) {
  const PLATEELEM_RECORD& EL = element.EL;
  for (int gp = 1; gp <= POINTS_OF_PLATE; ++gp) {
    if (section_plastic(EL)) {
      VECTOR<ELEMENT::WIDTH> p;
      n[gp - 1] = stored_section_forces(EL, *state.record, gp, points.strains[gp - 1].total, p);
    } else {
      const POINT_STATE_RECORD& s = state.record->POINT_STATE(gp);
      n[gp - 1] = part_of<ELEMENT::WIDTH>(stored_layered_point(EL, s, state.thickness_points).forces, 0);
    }
  }
}

// The strains of all points for the displacements of the element.
template <class ELEMENT>
ELEMENT_POINTS<ELEMENT> points_of(const ELEMENT& element) {
  const STRAIN_CASES<ELEMENT::MEMBRANE> membrane(element.u_membrane(), element.u_membrane());
  const STRAIN_CASES<ELEMENT::PLATE> plate(element.u_plate(), element.u_plate());
  return {element, POINTS_OF_PLATE, membrane, plate};
}

// f, element axes: += the integral of B^T n.
template <class ELEMENT>
void add_stored_forces(const ELEMENT& element, const PLATE_STATE_IN_USE& state, double* f) {
  const ELEMENT_POINTS<ELEMENT> points = points_of(element);
  VECTOR<ELEMENT::WIDTH> n[POINTS_OF_PLATE];
  set_stored_forces(element, state, points, n);
  points.add_forces(n, f);
}

// The yield function of the whole-section model at the point that exceeds it most; of points that have yielded in this
// step also how far they are inside. 0 where all are elastic.
template <class ELEMENT>
double distance_from_surface(const ELEMENT& element, const PLATE_STATE_RECORD& record) {
  const PLATEELEM_RECORD& EL = element.EL;
  const ELEMENT_POINTS<ELEMENT> points = points_of(element);
  double largest = 0.0;
  for (int gp = 1; gp <= POINTS_OF_PLATE; ++gp) {
    VECTOR<ELEMENT::WIDTH> p;
    const auto n = stored_section_forces(EL, record, gp, points.strains[gp - 1].total, p);
    const double F = section_yield_value(EL, n, record.SEC_EPBAR_CUR(gp));
    const bool flows = !(record.SEC_EPBAR_CUR(gp) <= record.SEC_EPBAR_START(gp));
    const double distance = flows ? std::fabs(F) : F;
    if (!(distance <= largest)) largest = distance;
  }
  return largest;
}

// Records at the points, then at the nodes, where strains are computed and all else is extrapolated.
template <class ELEMENT>
void stored_layered_results(const ELEMENT& element, const PLATE_STATE_IN_USE& state,
                            const MATRIX<3, ELEMENT::NODES>& local, double* nodes, double* points) {
  const PLATEELEM_RECORD& EL = element.EL;
  VECTOR<8> forces[POINTS_OF_PLATE];
  VECTOR<15> stress[POINTS_OF_PLATE];
  VECTOR<15> plastic[POINTS_OF_PLATE];
  MATRICES_OF<ELEMENT> B;
  for (int gp = 1; gp <= POINTS_OF_PLATE; ++gp) {
    const LAYERED_POINT_RESULT r = stored_layered_point(EL, state.record->POINT_STATE(gp), state.thickness_points);
    const SURFACE_POINT s = element.point(gp);
    element.matrices(s, B);
    const LAYERED_STRAINS e = layered_strains<ELEMENT>(B, element.u_membrane(), element.u_plate());
    fill_layered_result(EL, position(local, 1, s.xi, s.eta), position(local, 2, s.xi, s.eta), e, r,
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
    LAYERED_NODE_RESULT(element, {node_forces[n - 1], node_stress[n - 1], node_plastic[n - 1]}, local, n,
                        element.u_membrane(), element.u_plate(), nodes + (n - 1) * RES_LENGTH);
  }
}

template <class ELEMENT>
void stored_section_results(const ELEMENT& element, const PLATE_STATE_RECORD& record,
                            const MATRIX<3, ELEMENT::NODES>& local, double* nodes, double* points) {
  const PLATEELEM_RECORD& EL = element.EL;
  VECTOR<ELEMENT::WIDTH> n[POINTS_OF_PLATE];
  VECTOR<ELEMENT::WIDTH> ep[POINTS_OF_PLATE];
  MATRICES_OF<ELEMENT> B;
  for (int gp = 1; gp <= POINTS_OF_PLATE; ++gp) {
    const SURFACE_POINT s = element.point(gp);
    element.matrices(s, B);
    const VECTOR<ELEMENT::WIDTH> eps = section_strains(B, element.u_membrane(), element.u_plate());
    n[gp - 1] = stored_section_forces(EL, record, gp, eps, ep[gp - 1]);
    fill_section_record(EL, position(local, 1, s.xi, s.eta), position(local, 2, s.xi, s.eta), eps, n[gp - 1],
                        ep[gp - 1], points + (gp - 1) * RES_LENGTH);
  }
  VECTOR<ELEMENT::WIDTH> n_node[ELEMENT::NODES];
  VECTOR<ELEMENT::WIDTH> ep_node[ELEMENT::NODES];
  ELEMENT::extrapolate(n, n_node);
  ELEMENT::extrapolate(ep, ep_node);
  for (int node = 1; node <= ELEMENT::NODES; ++node) {
    RES_NODE_PLAST(element, local, node, n_node[node - 1], ep_node[node - 1], nodes + (node - 1) * RES_LENGTH);
  }
}

#endif
