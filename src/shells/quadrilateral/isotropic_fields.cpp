// isotropic_fields.cpp: internal forces and results of an isotropic quadrilateral from its fields.
//
// With the normals n1, n2 of a station (plane_fields.h) and derivatives by xi and eta, times DET:
//
//     (ex, ey) = n1 (u,xi v,xi) + n2 (u,eta v,eta)           component by component
//     gxy      = n1' . (u,xi v,xi) + n2' . (u,eta v,eta)     n' = n with its components exchanged
//
// the curvatures likewise from beta x, beta y, and of the thick theory
//
//     (gxz, gyz) = n1 g_xi + n2 g_eta
//     g_xi  = -(c/6) ((s_1 - s_3) - eta (s_1 + s_3)),    g_eta = -(c/6) ((s_2 - s_4) + xi (s_2 + s_4))
//
// (thick/shear.cpp, with L_k phi_k dB_k = c s_k). The forces are the same products transposed, station by station, then
// the sums over the stations, then the sides and the nodes. The in-plane shear acts at the centre.
//
// Mirror: shells/triangle/isotropic_fields.cpp.
#include "shells/quadrilateral/isotropic_fields.h"

#include "common/constants.h"
#include "common/pair.h"
#include "finites/fields.h"
#include "plate_material/through_thickness.h"
#include "plate_results/principal_values.h"
#include "plate_results/station_record.h"
#include "shells/common/isotropic_products.h"
#include "shells/common/node_vectors.h"
#include "shells/common/packed.h"
#include "shells/common/side_increments.h"
#include "shells/common/side_section.h"
#include "shells/common/station_section.h"
#include "shells/common/surface_points.h"
#include "shells/quadrilateral/membrane.h"
#include "shells/quadrilateral/plane_fields.h"

namespace {

constexpr double CENTRE_WEIGHT = QUAD_RULE_CENTRE[0].weight;

// Nx, Ny or Mx, My: D22 = D11.
inline PAIR normal_resultants(const SECTION_TERMS& D, PAIR e) { return D.D11 * e + D.D12 * exchanged(e); }

// What both operations need of an element and its displacements.
struct PLANE_ELEMENT {
  PAIR x[4];
  BILINEAR X;
  SIDE_INCREMENTS<4> sides;
  NODE_VECTORS<4> u;
  BILINEAR membrane;
  ROTATION_FIELD rotation;

  PLANE_ELEMENT(const PLANE_AXES& axes, const MATRIX<3, 4>& local, double c, const double* U)
      : x{pair_at(&local(1, 1)), pair_at(&local(1, 2)), pair_at(&local(1, 3)), pair_at(&local(1, 4))},
        X(x),
        sides(x, c),
        u(to_node_vectors<4>(axes, U)),
        membrane(u.uv),
        rotation(u, sides) {}
};

inline double side_factor(int theory, const PLATEELEM_RECORD& EL, const ELEM_LOADS& LOADS) {
  return theory == THICK_THEORY ? isotropic_side_factor(EL, LOADS) : 0.0;
}

// ex, ey, or the first two curvatures, and gxy or the third, times DET.
inline PAIR normal_strains(PAIR n1, PAIR n2, PAIR d_xi, PAIR d_eta) { return n1 * d_xi + n2 * d_eta; }
inline double twist(PAIR n1, PAIR n2, PAIR d_xi, PAIR d_eta) {
  return total(exchanged(n1) * d_xi + exchanged(n2) * d_eta);
}

// g_xi and g_eta at the stations; s_1 and s_3 enter the first, s_2 and s_4 the second. Their values at eta = -+ g and
// xi = -+ g.
struct TIED_SHEARS {
  double a, g;

  TIED_SHEARS(double c, double station) : a(-c / 6.0), g(station) {}

  void at_stations(const double (&s)[4], double (&xi)[4], double (&eta)[4]) const {
    const double rise = g * (s[0] + s[2]);
    const double across = g * (s[1] + s[3]);
    xi[0] = xi[1] = a * (s[0] - s[2] + rise);
    xi[2] = xi[3] = a * (s[0] - s[2] - rise);
    eta[0] = eta[3] = a * (s[1] - s[3] - across);
    eta[1] = eta[2] = a * (s[1] - s[3] + across);
  }

  // The forces on s of those on g_xi and g_eta at the stations.
  void add(const double (&xi)[4], const double (&eta)[4], double (&f)[4]) const {
    const double below = xi[0] + xi[1];
    const double above = xi[2] + xi[3];
    const double left = eta[0] + eta[3];
    const double right = eta[1] + eta[2];
    f[0] += a * (below + above + g * (below - above));
    f[2] += a * (g * (below - above) - (below + above));
    f[1] += a * (left + right + g * (right - left));
    f[3] += a * (g * (right - left) - (left + right));
  }
};

// The sum over the points, and the in-plane shear of the centre.
void set_membrane_forces(const PLANE_ELEMENT& e, const STATION_NORMALS& n, const ISOTROPIC_SECTION& ISO,
                         NODE_VECTORS<4>& f) {
  const SECTION_TERMS D = membrane_terms(ISO);
  const STATION_DERIVATIVES d = derivatives(e.membrane, QUAD_GAUSS);
  STATION_DERIVATIVES F;
  for (int p = 0; p < 4; ++p) {
    const PAIR N = n.R[p] * normal_resultants(D, normal_strains(n.N1[p], n.N2[p], d.XI[p], d.ETA[p]));
    F.XI[p] = n.N1[p] * N;
    F.ETA[p] = n.N2[p] * N;
  }
  BILINEAR sums = forces_on_terms(F, QUAD_GAUSS);
  const PAIR n1 = turned(e.X.ETA);
  const PAIR n2 = -turned(e.X.XI);
  const double shear = twist(n1, n2, e.membrane.XI, e.membrane.ETA);
  const double Nxy = CENTRE_WEIGHT * ISO.DM33 * shear / dot(n1, e.X.XI);
  sums.XI += Nxy * exchanged(n1);
  sums.ETA += Nxy * exchanged(n2);
  sums.spread(f.uv);
}

// The forces on the derivatives of the rotations at the points, then those on the nodes and the sides.
void set_bending_forces(const PLANE_ELEMENT& e, const STATION_NORMALS& n, const ISOTROPIC_SECTION& ISO,
                        NODE_VECTORS<4>& f, double (&f_s)[4]) {
  const SECTION_TERMS D = bending_terms(ISO);
  const STATION_DERIVATIVES d = e.rotation.derivatives(QUAD_GAUSS);
  STATION_DERIVATIVES F;
  for (int p = 0; p < 4; ++p) {
    const PAIR n1 = n.N1[p];
    const PAIR n2 = n.N2[p];
    const PAIR M = n.R[p] * normal_resultants(D, normal_strains(n1, n2, d.XI[p], d.ETA[p]));
    const double Mxy = n.R[p] * D.D33 * twist(n1, n2, d.XI[p], d.ETA[p]);
    F.XI[p] = n1 * M + Mxy * exchanged(n1);
    F.ETA[p] = n2 * M + Mxy * exchanged(n2);
  }
  e.rotation.spread(F, QUAD_GAUSS, e.sides, f.beta, f_s);
}

void add_shear_forces(const PLANE_ELEMENT& e, const STATION_NORMALS& n, double DS, double c, double (&f_s)[4]) {
  const TIED_SHEARS shears(c, QUAD_GAUSS);
  double xi[4];
  double eta[4];
  shears.at_stations(e.rotation.s, xi, eta);
  for (int p = 0; p < 4; ++p) {
    const PAIR Q = n.R[p] * DS * (xi[p] * n.N1[p] + eta[p] * n.N2[p]);
    xi[p] = dot(n.N1[p], Q);
    eta[p] = dot(n.N2[p], Q);
  }
  shears.add(xi, eta, f_s);
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
void set_strains(const PLANE_ELEMENT& e, double c, double g, STATION_STRAINS (&at)[4]) {
  const STATION_NORMALS n = normals(e.X, g);
  const STATION_DERIVATIVES m = derivatives(e.membrane, g);
  const STATION_DERIVATIVES b = e.rotation.derivatives(g);
  const PAIR n1 = turned(e.X.ETA);
  const PAIR n2 = -turned(e.X.XI);
  const double exy = twist(n1, n2, e.membrane.XI, e.membrane.ETA) / dot(n1, e.X.XI);
  double xi[4];
  double eta[4];
  TIED_SHEARS(c, g).at_stations(e.rotation.s, xi, eta);
  for (int p = 0; p < 4; ++p) {
    const PAIR n1_R = n.R[p] * n.N1[p];
    const PAIR n2_R = n.R[p] * n.N2[p];
    at[p].e = normal_strains(n1_R, n2_R, m.XI[p], m.ETA[p]);
    at[p].exy = exy;
    at[p].k = normal_strains(n1_R, n2_R, b.XI[p], b.ETA[p]);
    at[p].kxy = twist(n1_R, n2_R, b.XI[p], b.ETA[p]);
    at[p].g = xi[p] * n1_R + eta[p] * n2_R;
  }
}

// Four records, two at a time.
void fill_records(const STATION_SECTION& S, const PAIR (&place)[4], const STATION_STRAINS (&at)[4], double* records) {
  for (int p = 0; p < 4; p += 2) {
    double* const first = records + p * RES_LENGTH;
    double* const second = first + RES_LENGTH;
    fill_station(S, place[p], at[p], first);
    fill_station(S, place[p + 1], at[p + 1], second);
    principal_values_of_two(first, second);
  }
}

}  // namespace

bool QUAD_FORCES_OF_FIELDS(const PLATEELEM_RECORD& EL, int theory, const MATRIX<3, 3>& AXES, const MATRIX<3, 4>& local,
                           const ISOTROPIC_SECTION& ISO, const ELEM_LOADS& LOADS, const double* U, double* f, int op) {
  const double c = side_factor(theory, EL, LOADS);
  const PLANE_AXES axes(AXES);
  const PLANE_ELEMENT e(axes, local, c, U);
  if (!e.sides.proper || LOADS(LOAD_FOUNDATION) != 0.0) return false;
  const STATION_NORMALS n = normals(e.X, QUAD_GAUSS);
  NODE_VECTORS<4> forces;
  double f_s[4];
  set_membrane_forces(e, n, ISO, forces);
  set_bending_forces(e, n, ISO, forces, f_s);
  if (theory == THICK_THEORY) add_shear_forces(e, n, ISO.DS1, c, f_s);
  e.sides.spread(f_s, forces);
  set_drilling_forces(EL, local, e.u, forces);
  set_forces(op, axes, forces, f);
  return all_finite<QUAD_DOFS>(f);
}

bool QUAD_RESULTS_OF_FIELDS(const PLATEELEM_RECORD& EL, int theory, const MATRIX<3, 3>& AXES, const MATRIX<3, 4>& local,
                            const ISOTROPIC_SECTION& ISO, const ELEM_LOADS& LOADS, const double* U, double* nodes,
                            double* points) {
  const double c = side_factor(theory, EL, LOADS);
  const PLANE_ELEMENT e(PLANE_AXES(AXES), local, c, U);
  const STATION_SECTION S = station_section(EL, ISO, LOADS);
  STATION_STRAINS at_nodes[4];
  STATION_STRAINS at_points[4];
  set_strains(e, c, 1.0, at_nodes);
  set_strains(e, c, QUAD_GAUSS, at_points);
  if (!e.sides.proper || !finite(S) || !finite(at_nodes) || !finite(at_points)) return false;
  const PAIR middle = 0.25 * ((e.x[0] + e.x[1]) + (e.x[2] + e.x[3]));
  PAIR place[4];
  STATION_SUMS{middle, QUAD_GAUSS * e.X.XI, QUAD_GAUSS * e.X.ETA, (QUAD_GAUSS * QUAD_GAUSS) * e.X.TWIST}.spread(place);
  fill_records(S, e.x, at_nodes, nodes);
  fill_records(S, place, at_points, points);
  return true;
}
