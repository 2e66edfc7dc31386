// elastic_fields.cpp: internal forces and results of an elastic quadrilateral from its fields.
//
// With the normals n1, n2 of a station (plane_fields.h) and derivatives by xi and eta, times DET:
//
//     (ex, ey) = n1 (u,xi v,xi) + n2 (u,eta v,eta)           component by component
//     gxy      = n1' . (u,xi v,xi) + n2' . (u,eta v,eta)     n' = n with its components swapped
//
// the curvatures likewise from beta x, beta y, and of the thick theory
//
//     (gxz, gyz) = n1 g_xi + n2 g_eta
//     g_xi  = -((h_1 - h_3) - eta (h_1 + h_3)) / 6,    g_eta = -((h_2 - h_4) + xi (h_2 + h_4)) / 6
//
// with h_k = L_k phi_k dB_k = c_k s_k (thick/shear.cpp). The forces are the same products transposed, station by
// station, then the sums over the stations, then the sides and the nodes. The in-plane shear acts at the centre.
//
// Mirror: shells/triangle/elastic_fields.cpp.
#include "shells/quadrilateral/elastic_fields.h"

#include "common/finiteness.h"
#include "common/lanes.h"
#include "finites/fields.h"
#include "plate_material/through_thickness.h"
#include "plate_results/principal_values.h"
#include "plate_results/res_record.h"
#include "plate_results/station_record.h"
#include "shells/common/behaviour.h"
#include "shells/common/node_vectors.h"
#include "shells/common/packed.h"
#include "shells/common/plane_sections.h"
#include "shells/common/side_increments.h"
#include "shells/common/side_section.h"
#include "shells/common/surface_points.h"
#include "shells/quadrilateral/membrane.h"
#include "shells/quadrilateral/plane_fields.h"

namespace {

constexpr double CENTRE_WEIGHT = QUAD_RULE_CENTRE[0].weight;

// What both operations need of an element and its displacements.
struct PLANE_ELEMENT {
  LANES x[4];
  BILINEAR X;
  SIDE_INCREMENTS<4> sides;
  NODE_VECTORS<4> u;
  BILINEAR membrane;
  ROTATION_FIELD rotation;

  template <class FACTOR>
  PLANE_ELEMENT(const PLANE_AXES& axes, const MATRIX<3, 4>& local, FACTOR side_factor, const double* U)
      : x{lanes_at(&local(1, 1)), lanes_at(&local(1, 2)), lanes_at(&local(1, 3)), lanes_at(&local(1, 4))},
        X(x),
        sides(x, side_factor),
        u(to_node_vectors<4>(axes, U)),
        membrane(u.uv),
        rotation(u, sides) {}
};

// ex, ey, or the first two curvatures, and gxy or the third, times DET.
inline LANES normal_strains(LANES n1, LANES n2, LANES d_xi, LANES d_eta) { return n1 * d_xi + n2 * d_eta; }
inline double twist(LANES n1, LANES n2, LANES d_xi, LANES d_eta) {
  return sum_of(swapped(n1) * d_xi + swapped(n2) * d_eta);
}

// g_xi and g_eta at the stations: h_1 and h_3 enter the first, h_2 and h_4 the second.
struct TIED_SHEARS {
  double XI[4], ETA[4];

  TIED_SHEARS(const SIDE_INCREMENTS<4>& sides, const double (&s)[4], double g) {
    double h[4];
    for (int k = 0; k < 4; ++k) h[k] = -sides.c[k] * s[k] / 6.0;
    const double rise = g * (h[0] + h[2]);
    const double across = g * (h[1] + h[3]);
    XI[0] = XI[1] = h[0] - h[2] + rise;
    XI[2] = XI[3] = h[0] - h[2] - rise;
    ETA[0] = ETA[3] = h[1] - h[3] - across;
    ETA[1] = ETA[2] = h[1] - h[3] + across;
  }

  // The forces on s, when these are those on g_xi and g_eta.
  void add(const SIDE_INCREMENTS<4>& sides, double g, double (&f_s)[4]) const {
    const double below = XI[0] + XI[1];
    const double above = XI[2] + XI[3];
    const double left = ETA[0] + ETA[3];
    const double right = ETA[1] + ETA[2];
    const double f_h[4] = {below + above + g * (below - above), left + right + g * (right - left),
                           g * (below - above) - (below + above), g * (right - left) - (left + right)};
    for (int k = 0; k < 4; ++k) f_s[k] -= sides.c[k] * f_h[k] / 6.0;
  }
};

// The forces on the derivatives of a station.
inline LANES force(LANES n, const PLANE_RESULTANTS& N) { return n * N.xy + N.twist * swapped(n); }

// The sum over the points, and the shear of the centre.
template <class PLATE>
void set_membrane_forces(const PLANE_ELEMENT& e, const STATION_NORMALS& n, const PLATE& D, NODE_VECTORS<4>& f) {
  const STATION_DERIVATIVES d = derivatives(e.membrane, QUAD_GAUSS);
  STATION_DERIVATIVES F;
  for (int p = 0; p < 4; ++p) {
    const LANES n1 = n.N1[p];
    const LANES n2 = n.N2[p];
    const LANES strains = n.R[p] * normal_strains(n1, n2, d.XI[p], d.ETA[p]);
    if constexpr (PLATE::POINTS_WITHOUT_SHEAR) {
      const LANES N = D.points.of(strains, 0.0).xy;
      F.XI[p] = n1 * N;
      F.ETA[p] = n2 * N;
    } else {
      const PLANE_RESULTANTS N = D.points.of(strains, n.R[p] * twist(n1, n2, d.XI[p], d.ETA[p]));
      F.XI[p] = force(n1, N);
      F.ETA[p] = force(n2, N);
    }
  }
  BILINEAR sums = forces_on_terms(F, QUAD_GAUSS);
  const LANES n1 = turned(e.X.ETA);
  const LANES n2 = -turned(e.X.XI);
  const double c = CENTRE_WEIGHT / dot(n1, e.X.XI);
  const PLANE_RESULTANTS N = D.centre.of(c * normal_strains(n1, n2, e.membrane.XI, e.membrane.ETA),
                                         c * twist(n1, n2, e.membrane.XI, e.membrane.ETA));
  sums.XI += force(n1, N);
  sums.ETA += force(n2, N);
  sums.spread(f.uv);
}

// The forces on the derivatives of the rotations at the points, then those on the nodes and the sides.
template <class PLATE>
void set_bending_forces(const PLANE_ELEMENT& e, const STATION_NORMALS& n, const PLATE& D, NODE_VECTORS<4>& f,
                        double (&f_s)[4]) {
  const STATION_DERIVATIVES d = e.rotation.derivatives(QUAD_GAUSS);
  STATION_DERIVATIVES F;
  for (int p = 0; p < 4; ++p) {
    const LANES n1 = n.N1[p];
    const LANES n2 = n.N2[p];
    const PLANE_RESULTANTS M =
        D.bending.of(n.R[p] * normal_strains(n1, n2, d.XI[p], d.ETA[p]), n.R[p] * twist(n1, n2, d.XI[p], d.ETA[p]));
    F.XI[p] = force(n1, M);
    F.ETA[p] = force(n2, M);
  }
  e.rotation.spread(F, QUAD_GAUSS, e.sides, f.beta, f_s);
}

template <class PLATE>
void add_shear_forces(const PLANE_ELEMENT& e, const STATION_NORMALS& n, const PLATE& D, double (&f_s)[4]) {
  TIED_SHEARS g(e.sides, e.rotation.s, QUAD_GAUSS);
  for (int p = 0; p < 4; ++p) {
    const LANES Q = D.shear(n.R[p] * (g.XI[p] * n.N1[p] + g.ETA[p] * n.N2[p]));
    g.XI[p] = dot(n.N1[p], Q);
    g.ETA[p] = dot(n.N2[p], Q);
  }
  g.add(e.sides, QUAD_GAUSS, f_s);
}

// e (theta_i - mean of the other three) for each node.
void set_drilling_forces(const PLATEELEM_RECORD& EL, const MATRIX<3, 4>& local, const NODE_VECTORS<4>& u,
                         NODE_VECTORS<4>& f) {
  double Kdrill[SYM(4, 4)];
  quad_kdrill(EL, local, Kdrill);
  const double own = Kdrill[SYM(1, 1) - 1];
  const double other = Kdrill[SYM(1, 2) - 1];
  const double sum = (u.theta_z[0] + u.theta_z[1]) + (u.theta_z[2] + u.theta_z[3]);
  for (int i = 0; i < 4; ++i) f.theta_z[i] = own * u.theta_z[i] + other * (sum - u.theta_z[i]);
}

// The strains at the stations (-+ g, -+ g). gxy is that of the centre.
void set_strains(const PLANE_ELEMENT& e, double g, STATION_STRAINS* at) {
  const STATION_NORMALS n = normals(e.X, g);
  const STATION_DERIVATIVES m = derivatives(e.membrane, g);
  const STATION_DERIVATIVES b = e.rotation.derivatives(g);
  const TIED_SHEARS shears(e.sides, e.rotation.s, g);
  const LANES n1 = turned(e.X.ETA);
  const LANES n2 = -turned(e.X.XI);
  const double exy = twist(n1, n2, e.membrane.XI, e.membrane.ETA) / dot(n1, e.X.XI);
  for (int p = 0; p < 4; ++p) {
    const LANES n1_R = n.R[p] * n.N1[p];
    const LANES n2_R = n.R[p] * n.N2[p];
    at[p].e = normal_strains(n1_R, n2_R, m.XI[p], m.ETA[p]);
    at[p].exy = exy;
    at[p].k = normal_strains(n1_R, n2_R, b.XI[p], b.ETA[p]);
    at[p].kxy = twist(n1_R, n2_R, b.XI[p], b.ETA[p]);
    at[p].g = shears.XI[p] * n1_R + shears.ETA[p] * n2_R;
  }
}

// An element with its section: the operations.
template <class PLATE>
struct ELASTIC_ELEMENT {
  const PLATEELEM_RECORD& EL;
  const MATRIX<3, 4>& local;
  PLANE_AXES axes;
  PLATE D;
  PLANE_ELEMENT e;

  template <class FACTOR>
  ELASTIC_ELEMENT(const PLATEELEM_RECORD& record, const MATRIX<3, 3>& AXES, const MATRIX<3, 4>& coordinates,
                  const PLATE& section, FACTOR side_factor, const double* U)
      : EL(record), local(coordinates), axes(AXES), D(section), e(axes, local, side_factor, U) {}

  bool forces(int theory, int op, double* f) const {
    if (!e.sides.proper) return false;
    const STATION_NORMALS n = normals(e.X, QUAD_GAUSS);
    NODE_VECTORS<4> forces;
    double f_s[4];
    set_membrane_forces(e, n, D, forces);
    set_bending_forces(e, n, D, forces, f_s);
    if (theory == THICK_THEORY) add_shear_forces(e, n, D, f_s);
    e.sides.spread(f_s, forces);
    set_drilling_forces(EL, local, e.u, forces);
    set_forces(op, axes, forces, f);
    return all_finite(f, QUAD_DOFS);
  }

  bool results(const PLATE_TEMPERATURE& T, double* nodes, double* points) const {
    if (!e.sides.proper) return false;
    const FACE_FACTORS F(EL.THICKNESS);
    const double per_h = 1.0 / EL.THICKNESS;
    STATION_STRAINS strains[8];  // nodes, then points
    STATION_STRESSES stresses[8];
    set_strains(e, 1.0, strains);
    set_strains(e, QUAD_GAUSS, strains + 4);
    for (int i = 0; i < 8; ++i) stresses[i] = stresses_at(D, T, per_h, strains[i]);
    if (!finite(strains, stresses, F)) return false;
    const LANES middle = 0.25 * ((e.x[0] + e.x[1]) + (e.x[2] + e.x[3]));
    LANES place[4];
    STATION_SUMS{middle, QUAD_GAUSS * e.X.XI, QUAD_GAUSS * e.X.ETA, (QUAD_GAUSS * QUAD_GAUSS) * e.X.TWIST}.spread(
        place);
    for (int i = 0; i < 4; ++i) {
      fill_station(F, e.x[i], strains[i], stresses[i], nodes + i * RES_LENGTH);
      fill_station(F, place[i], strains[4 + i], stresses[4 + i], points + i * RES_LENGTH);
    }
    for (int i = 0; i < 4; i += 2) {
      principal_values_of_two(nodes + i * RES_LENGTH, nodes + (i + 1) * RES_LENGTH);
      principal_values_of_two(points + i * RES_LENGTH, points + (i + 1) * RES_LENGTH);
    }
    return true;
  }
};

// operate(element, temperature) for the section of the behaviour.
template <class OPERATION>
bool for_section(const PLATEELEM_RECORD& EL, int theory, const MATRIX<3, 3>& AXES, const MATRIX<3, 4>& local,
                 const ISOTROPIC_SECTION& ISO, const ELEM_LOADS& LOADS, const double* U, OPERATION operate) {
  if (isotropic(EL)) {
    const double c = theory == THICK_THEORY ? isotropic_side_factor(EL, LOADS) : 0.0;
    const ISOTROPIC_PLATE D(ISO);
    return operate(ELASTIC_ELEMENT<ISOTROPIC_PLATE>(EL, AXES, local, D, equal_side_factors(c), U),
                   isotropic_temperature(EL, ISO, LOADS));
  }
  const GENERAL_PLATE D(EL);
  const PLATE_TEMPERATURE T = general_temperature(EL);
  if (theory == THICK_THEORY) {
    return operate(ELASTIC_ELEMENT<GENERAL_PLATE>(EL, AXES, local, D, side_factors_of(EL), U), T);
  }
  return operate(ELASTIC_ELEMENT<GENERAL_PLATE>(EL, AXES, local, D, equal_side_factors(0.0), U), T);
}

}  // namespace

bool QUAD_FORCES_OF_FIELDS(const PLATEELEM_RECORD& EL, int theory, const MATRIX<3, 3>& AXES, const MATRIX<3, 4>& local,
                           const ISOTROPIC_SECTION& ISO, const ELEM_LOADS& LOADS, const double* U, double* f, int op) {
  if (LOADS(LOAD_FOUNDATION) != 0.0) return false;
  return for_section(EL, theory, AXES, local, ISO, LOADS, U,
                     [=](const auto& e, const PLATE_TEMPERATURE& /*T*/) { return e.forces(theory, op, f); });
}

bool QUAD_RESULTS_OF_FIELDS(const PLATEELEM_RECORD& EL, int theory, const MATRIX<3, 3>& AXES, const MATRIX<3, 4>& local,
                            const ISOTROPIC_SECTION& ISO, const ELEM_LOADS& LOADS, const double* U, double* nodes,
                            double* points) {
  return for_section(EL, theory, AXES, local, ISO, LOADS, U,
                     [=](const auto& e, const PLATE_TEMPERATURE& T) { return e.results(T, nodes, points); });
}
