// section_element.h: the plate elements of the whole-section model: stiffness, internal forces, results and geometric
// stiffness, whatever the shape and the theory.
//
// An ELEMENT tells what differs:
//
//   NODES, WIDTH           nodes; strains at a point: 6 thin, 8 thick
//   MEMBRANE, PLATE        freedoms of the membrane and of the plate
//   MEMBRANE_DOF, PLATE_DOF  their places among the element's freedoms
//   point(gp), node(n)     integration point and node with their Jacobian
//   matrices(s, B)         the strain matrices there
//   u_membrane(), u_plate()  the split displacements of the geometry store
//   slopes(s)              slopes of the displacement functions of the membrane
//   extrapolate(p, n)      values at the nodes from values at the points
#ifndef FINITES_SECTION_ELEMENT_H
#define FINITES_SECTION_ELEMENT_H

#include <algorithm>

#include "element_calls/gauss_int_2d.h"
#include "operations.h"
#include "plate_material/section_state.h"
#include "plate_material/section_update.h"
#include "plate_results/element_record.h"
#include "plate_results/res_record.h"
#include "shared_records.h"
#include "shells/common/records.h"
#include "shells/common/strains.h"
#include "shells/common/translations.h"
#include "views.h"

constexpr int SECTION_POINTS = 4;

// From the points to the nodes: row by node, column by point. Of the triangle the literals have seven digits, those of
// the quadrilateral are single-precision values: neither row adds up to 1, and both stay.
constexpr double TRI_OWN = 1.9166667, TRI_OTHER = -0.5833333;
constexpr double TRI_SHARES[3][SECTION_POINTS] = {{0.25, TRI_OWN, TRI_OTHER, TRI_OTHER},
                                                  {0.25, TRI_OTHER, TRI_OWN, TRI_OTHER},
                                                  {0.25, TRI_OTHER, TRI_OTHER, TRI_OWN}};
constexpr double QUAD_OWN = 1.866025447845459, QUAD_BESIDE = -0.5, QUAD_ACROSS = 0.1339746117591858;
constexpr double QUAD_SHARES[4][SECTION_POINTS] = {{QUAD_OWN, QUAD_BESIDE, QUAD_ACROSS, QUAD_BESIDE},
                                                   {QUAD_BESIDE, QUAD_OWN, QUAD_BESIDE, QUAD_ACROSS},
                                                   {QUAD_ACROSS, QUAD_BESIDE, QUAD_OWN, QUAD_BESIDE},
                                                   {QUAD_BESIDE, QUAD_ACROSS, QUAD_BESIDE, QUAD_OWN}};

template <int WIDTH, int NODES>
void extrapolate(const double (&shares)[NODES][SECTION_POINTS], const VECTOR<WIDTH> (&at_points)[SECTION_POINTS],
                 VECTOR<WIDTH> (&at_nodes)[NODES]) {
  for (int n = 0; n < NODES; ++n) {
    at_nodes[n] = VECTOR<WIDTH>{};
    for (int p = 0; p < SECTION_POINTS; ++p) {
      for (int i = 1; i <= WIDTH; ++i) at_nodes[n](i) += shares[n][p] * at_points[p](i);
    }
  }
}

// Values at the three or four nodes from values at the four points.
template <int WIDTH>
void EXTRAP_TRI(const VECTOR<WIDTH> (&at_points)[SECTION_POINTS], VECTOR<WIDTH> (&at_nodes)[3]) {
  extrapolate(TRI_SHARES, at_points, at_nodes);
}
template <int WIDTH>
void EXTRAP_QUAD(const VECTOR<WIDTH> (&at_points)[SECTION_POINTS], VECTOR<WIDTH> (&at_nodes)[4]) {
  extrapolate(QUAD_SHARES, at_points, at_nodes);
}
inline constexpr auto EXTRAP_TRI_6 = &EXTRAP_TRI<6>;
inline constexpr auto EXTRAP_TRI_8 = &EXTRAP_TRI<8>;
inline constexpr auto EXTRAP_QUAD_6 = &EXTRAP_QUAD<6>;
inline constexpr auto EXTRAP_QUAD_8 = &EXTRAP_QUAD<8>;

// Membrane strains from the membrane freedoms; curvatures, and transverse shears of a thick element, from the plate's.
template <int WIDTH, int MEMBRANE, int PLATE>
struct SECTION_MATRICES {
  MATRIX<3, MEMBRANE> m;
  MATRIX<WIDTH - 3, PLATE> p;
};

template <class ELEMENT>
using MATRICES_OF = SECTION_MATRICES<ELEMENT::WIDTH, ELEMENT::MEMBRANE, ELEMENT::PLATE>;

// Rows FIRST + 1 to FIRST + COUNT of a vector.
template <int COUNT, int N>
VECTOR<COUNT> part_of(const VECTOR<N>& v, int first) {
  VECTOR<COUNT> part;
  for (int i = 1; i <= COUNT; ++i) part(i) = v(first + i);
  return part;
}

// Curvatures and shears side by side, for the thick theories.
template <int PLATE>
void stack_plate_rows(const MATRIX<3, PLATE>& bending, const MATRIX<2, PLATE>& shear, MATRIX<5, PLATE>& p) {
  for (int i = 1; i <= PLATE; ++i) {
    for (int r = 1; r <= 3; ++r) p(r, i) = bending(r, i);
    for (int r = 1; r <= 2; ++r) p(3 + r, i) = shear(r, i);
  }
}

template <int WIDTH, int MEMBRANE, int PLATE>
VECTOR<WIDTH> section_strains(const SECTION_MATRICES<WIDTH, MEMBRANE, PLATE>& B, const VECTOR<MEMBRANE>& um,
                              const VECTOR<PLATE>& up) {
  const VECTOR<3> e = strains_of(B.m, um);
  const VECTOR<WIDTH - 3> k = strains_of(B.p, up);
  VECTOR<WIDTH> eps;
  for (int i = 1; i <= 3; ++i) eps(i) = e(i);
  for (int i = 4; i <= WIDTH; ++i) eps(i) = k(i - 3);
  return eps;
}

template <int N>
VECTOR<N> matrix_times(const MATRIX<N, N>& C, const VECTOR<N>& v) {
  VECTOR<N> out{};
  for (int j = 1; j <= N; ++j) {
    for (int i = 1; i <= N; ++i) out(i) += C(i, j) * v(j);
  }
  return out;
}

// K(dof_i, dof_j) += the part of B^T C B that comes from these columns: `column` is c C B(:, j).
template <int ROWS, int N, int WIDTH>
void add_rows(const MATRIX<ROWS, N>& B, int first, const VECTOR<WIDTH>& column, const int (&freedoms)[N],
              double* K_column) {
  for (int i = 1; i <= N; ++i) {
    double k = 0.0;
    for (int r = 1; r <= ROWS; ++r) k += B(r, i) * column(first + r);
    K_column[freedoms[i - 1] - 1] += k;
  }
}

// Columns of K that belong to freedoms of one part of B, whose rows are first + 1 and on.
template <class ELEMENT, int ROWS, int N>
void add_columns(const MATRICES_OF<ELEMENT>& B, const MATRIX<ROWS, N>& part, int first,
                 const MATRIX<ELEMENT::WIDTH, ELEMENT::WIDTH>& C, double c, const int (&freedoms)[N], double* K) {
  constexpr int order = 6 * ELEMENT::NODES;
  for (int j = 1; j <= N; ++j) {
    VECTOR<ELEMENT::WIDTH> column{};
    for (int r = 1; r <= ROWS; ++r) {
      for (int i = 1; i <= ELEMENT::WIDTH; ++i) column(i) += C(i, first + r) * part(r, j) * c;
    }
    double* const K_column = K + (freedoms[j - 1] - 1) * order;
    add_rows(B.m, 0, column, ELEMENT::MEMBRANE_DOF, K_column);
    add_rows(B.p, 3, column, ELEMENT::PLATE_DOF, K_column);
  }
}

// K, full, element axes: += the integral of B^T C B with the stored tangents. Membrane and plate couple here.
template <class ELEMENT>
void section_stiffness(double* K) {
  const SECTION_STATE state = section_state_of(PLATEELEM.ELEM_INDEX);
  if (!state.complete) return;
  MATRICES_OF<ELEMENT> B;
  for (int gp = 1; gp <= SECTION_POINTS; ++gp) {
    const SURFACE_POINT s = ELEMENT::point(gp);
    ELEMENT::matrices(s, B);
    const auto C = section_tangent<ELEMENT::WIDTH>(*state.record, gp);
    const double c = s.weight * s.detj;
    add_columns<ELEMENT>(B, B.m, 0, C, c, ELEMENT::MEMBRANE_DOF, K);
    add_columns<ELEMENT>(B, B.p, 3, C, c, ELEMENT::PLATE_DOF, K);
  }
}

// What operation 33 keeps of a point.
template <int WIDTH>
void store_section_point(const SECTION_ANSWER<WIDTH>& answer, int gp, PLATE_STATE_RECORD& record) {
  record.SEC_EPBAR_CUR(gp) = answer.ebar;
  record.SEC_SIGN_CUR(gp) = answer.qtm;
  record.SEC_CURV_INC(gp) = answer.dkap;
  for (int i = 1; i <= 12; ++i) {
    record.SEC_EP_INC(i, gp) = answer.ep(i) - record.SEC_EP_CUR(i, gp);
    record.SEC_EP_CUR(i, gp) = answer.ep(i);
  }
  store_section_tangent(record, gp, answer.C);
}

// f, element axes: += the integral of B^T times the section forces. The material follows the total strains, of the
// displacements and the stored ones (us_membrane, us_plate); the forces are its tangent times the strains of the
// displacements alone.
template <class ELEMENT>
void section_forces(int op, const VECTOR<ELEMENT::MEMBRANE>& us_membrane, const VECTOR<ELEMENT::PLATE>& us_plate,
                    double* f) {
  const SECTION_STATE state = section_state_of(PLATEELEM.ELEM_INDEX);
  if (!state.complete) return;
  VECTOR<ELEMENT::MEMBRANE> um = ELEMENT::u_membrane();
  VECTOR<ELEMENT::PLATE> up = ELEMENT::u_plate();
  for (int i = 1; i <= ELEMENT::MEMBRANE; ++i) um(i) += us_membrane(i);
  for (int i = 1; i <= ELEMENT::PLATE; ++i) up(i) += us_plate(i);
  MATRICES_OF<ELEMENT> B;
  for (int gp = 1; gp <= SECTION_POINTS; ++gp) {
    const SURFACE_POINT s = ELEMENT::point(gp);
    ELEMENT::matrices(s, B);
    PLATE_STATE_RECORD& r = *state.record;
    const SECTION_POINT from{plastic_strains(r.SEC_EP_START, gp), r.SEC_EPBAR_START(gp), r.SEC_SIGN_START(gp),
                             r.SEC_AUX(gp)};
    SECTION_ANSWER<ELEMENT::WIDTH> answer{};
    PLATE_SECTION_UPDATE(PLATEELEM.THICKNESS, PLATEELEM.YIELD_STRESS, section_strains(B, um, up), from, answer);
    if (op == OP_FORCES_COMMIT) store_section_point(answer, gp, r);
    const auto n = matrix_times(answer.C, section_strains(B, ELEMENT::u_membrane(), ELEMENT::u_plate()));
    const double c = s.weight * s.detj;
    add_forces(B.m, part_of<3>(n, 0), c, ELEMENT::MEMBRANE_DOF, f);
    add_forces(B.p, part_of<ELEMENT::WIDTH - 3>(n, 3), c, ELEMENT::PLATE_DOF, f);
  }
}

// One record, without any temperature term.
template <int WIDTH>
void fill_section_record(double x, double y, const VECTOR<WIDTH>& eps, const VECTOR<WIDTH>& n, const VECTOR<WIDTH>& ep,
                         double* block) {
  const double h = PLATEELEM.THICKNESS;
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
void RES_PT_PLAST(const PLATE_STATE_RECORD& record, const MATRIX<3, ELEMENT::NODES>& local, int gp,
                  VECTOR<ELEMENT::WIDTH>& n, VECTOR<ELEMENT::WIDTH>& ep, double* block) {
  const SURFACE_POINT s = ELEMENT::point(gp);
  MATRICES_OF<ELEMENT> B;
  ELEMENT::matrices(s, B);
  const VECTOR<ELEMENT::WIDTH> eps = section_strains(B, ELEMENT::u_membrane(), ELEMENT::u_plate());
  n = matrix_times(section_tangent<ELEMENT::WIDTH>(record, gp), eps);
  SECTION_EP_TO_LOCAL(plastic_strains(record.SEC_EP_INC, gp), ep);
  fill_section_record(position(local, 1, s.xi, s.eta), position(local, 2, s.xi, s.eta), eps, n, ep, block);
}

// The record of a node: strains of its own, forces and plastic strains brought out from the points.
template <class ELEMENT>
void RES_NODE_PLAST(const MATRIX<3, ELEMENT::NODES>& local, int node, const VECTOR<ELEMENT::WIDTH>& n,
                    const VECTOR<ELEMENT::WIDTH>& ep, double* block) {
  MATRICES_OF<ELEMENT> B;
  ELEMENT::matrices(ELEMENT::node(node), B);
  const VECTOR<ELEMENT::WIDTH> eps = section_strains(B, ELEMENT::u_membrane(), ELEMENT::u_plate());
  fill_section_record(local(1, node), local(2, node), eps, n, ep, block);
}

// Records at the points, then at the nodes.
template <class ELEMENT>
void section_results(const MATRIX<3, ELEMENT::NODES>& local, double* nodes, double* points) {
  const SECTION_STATE state = section_state_of(PLATEELEM.ELEM_INDEX);
  if (!state.complete) return;
  VECTOR<ELEMENT::WIDTH> n[SECTION_POINTS];
  VECTOR<ELEMENT::WIDTH> ep[SECTION_POINTS];
  for (int gp = 1; gp <= SECTION_POINTS; ++gp) {
    RES_PT_PLAST<ELEMENT>(*state.record, local, gp, n[gp - 1], ep[gp - 1], points + (gp - 1) * RES_LENGTH);
  }
  VECTOR<ELEMENT::WIDTH> n_node[ELEMENT::NODES];
  VECTOR<ELEMENT::WIDTH> ep_node[ELEMENT::NODES];
  ELEMENT::extrapolate(n, n_node);
  ELEMENT::extrapolate(ep, ep_node);
  for (int node = 1; node <= ELEMENT::NODES; ++node) {
    RES_NODE_PLAST<ELEMENT>(local, node, n_node[node - 1], ep_node[node - 1], nodes + (node - 1) * RES_LENGTH);
  }
}

// K, full, element axes: += the geometric stiffness of the stored forces of each point.
template <class ELEMENT>
void section_geometric_stiffness(const double* points, double* K) {
  constexpr int NODES = ELEMENT::NODES;
  double k[SYM(NODES, NODES)] = {};
  for (int gp = 1; gp <= SECTION_POINTS; ++gp) {
    const SURFACE_POINT s = ELEMENT::point(gp);
    add_geometric_pairs(stored_membrane_forces(points, gp), s.weight * s.detj, ELEMENT::slopes(s), k);
  }
  add_translations_full<NODES>(k, K);
}

#endif
