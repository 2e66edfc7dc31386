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
//   slopes(s, nx, ny)      slopes of the displacement functions of the membrane
//   extrapolation(n, gp)   weight of an integration point in the result of a node
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
constexpr double EXTRAP_TRI[3][SECTION_POINTS] = {{0.25, TRI_OWN, TRI_OTHER, TRI_OTHER},
                                                  {0.25, TRI_OTHER, TRI_OWN, TRI_OTHER},
                                                  {0.25, TRI_OTHER, TRI_OTHER, TRI_OWN}};
constexpr double QUAD_OWN = 1.866025447845459, QUAD_BESIDE = -0.5, QUAD_ACROSS = 0.1339746117591858;
constexpr double EXTRAP_QUAD[4][SECTION_POINTS] = {{QUAD_OWN, QUAD_BESIDE, QUAD_ACROSS, QUAD_BESIDE},
                                                   {QUAD_BESIDE, QUAD_OWN, QUAD_BESIDE, QUAD_ACROSS},
                                                   {QUAD_ACROSS, QUAD_BESIDE, QUAD_OWN, QUAD_BESIDE},
                                                   {QUAD_BESIDE, QUAD_ACROSS, QUAD_BESIDE, QUAD_OWN}};

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

// Records at the points, from the stored tangents and the last plastic increments; then at the nodes, whose forces and
// plastic strains are brought out from the points.
template <class ELEMENT>
void section_results(const MATRIX<3, ELEMENT::NODES>& local, double* nodes, double* points) {
  constexpr int WIDTH = ELEMENT::WIDTH;
  const SECTION_STATE state = section_state_of(PLATEELEM.ELEM_INDEX);
  if (!state.complete) return;
  VECTOR<WIDTH> n[SECTION_POINTS];
  VECTOR<WIDTH> ep[SECTION_POINTS];
  MATRICES_OF<ELEMENT> B;
  for (int gp = 1; gp <= SECTION_POINTS; ++gp) {
    const SURFACE_POINT s = ELEMENT::point(gp);
    ELEMENT::matrices(s, B);
    const VECTOR<WIDTH> eps = section_strains(B, ELEMENT::u_membrane(), ELEMENT::u_plate());
    n[gp - 1] = matrix_times(section_tangent<WIDTH>(*state.record, gp), eps);
    SECTION_EP_TO_LOCAL(plastic_strains(state.record->SEC_EP_INC, gp), ep[gp - 1]);
    fill_section_record(position(local, 1, s.xi, s.eta), position(local, 2, s.xi, s.eta), eps, n[gp - 1], ep[gp - 1],
                        points + (gp - 1) * RES_LENGTH);
  }
  for (int node = 1; node <= ELEMENT::NODES; ++node) {
    VECTOR<WIDTH> n_node{};
    VECTOR<WIDTH> ep_node{};
    for (int gp = 1; gp <= SECTION_POINTS; ++gp) {
      const double share = ELEMENT::extrapolation(node, gp);
      for (int i = 1; i <= WIDTH; ++i) {
        n_node(i) += share * n[gp - 1](i);
        ep_node(i) += share * ep[gp - 1](i);
      }
    }
    ELEMENT::matrices(ELEMENT::node(node), B);
    const VECTOR<WIDTH> eps = section_strains(B, ELEMENT::u_membrane(), ELEMENT::u_plate());
    fill_section_record(local(1, node), local(2, node), eps, n_node, ep_node, nodes + (node - 1) * RES_LENGTH);
  }
}

// K, full, element axes: += the geometric stiffness of the stored forces of each point.
template <class ELEMENT>
void section_geometric_stiffness(const double* points, double* K) {
  constexpr int NODES = ELEMENT::NODES;
  double k[SYM(NODES, NODES)] = {};
  for (int gp = 1; gp <= SECTION_POINTS; ++gp) {
    const SURFACE_POINT s = ELEMENT::point(gp);
    VECTOR<NODES> nx;
    VECTOR<NODES> ny;
    ELEMENT::slopes(s, nx, ny);
    add_geometric_pairs(stored_membrane_forces(points, gp), s.weight * s.detj, nx, ny, k);
  }
  add_translations_full<NODES>(k, K);
}

#endif
