// isotropic_fields.cpp: internal forces and results of an isotropic triangle from its fields.
//
// With the normals n1, n2 (plane_fields.h) and derivatives by xi and eta, times TWO_AREA:
//
//     (ex, ey) = n1 (u,xi v,xi) + n2 (u,eta v,eta)           component by component
//     gxy      = n1' . (u,xi v,xi) + n2' . (u,eta v,eta)     n' = n with its components exchanged
//
// the curvatures likewise from beta x, beta y. They are linear, k = k_0 + xi k_1 + eta k_2, as the moments are, so that
// the sum over the points needs only the sums of the rule: w, w xi, w xi^2 and w xi eta. Of the thick theory
//
//     (gxz, gyz) = a (lambda (s_1 n_3 - s_3 n_1) + xi (s_2 n_1 - s_1 n_2) + eta (s_3 n_2 - s_2 n_3))
//     a = c / (1.5 TWO_AREA)
//
// with n_k = (y, -x) of side k: the corner values of thick/shear.cpp, with L_k phi_k dB_k = c s_k and D_i the sine of
// two sides, -TWO_AREA / (L_j L_k). The forces are the same products transposed.
//
// Mirror: shells/quadrilateral/isotropic_fields.cpp.
#include "shells/triangle/isotropic_fields.h"

#include <algorithm>

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
#include "shells/triangle/membrane.h"
#include "shells/triangle/plane_fields.h"

namespace {

// The sums of the rule of four points, which does not change when the nodes change places: W_1 that of w xi and of
// w eta, W_11 those of w xi^2, w eta^2 and w lambda^2, W_12 those of the products of two.
constexpr double sum_of_rule(int of_xi, int of_eta) {
  double sum = 0.0;
  for (const SURFACE_STATION& s : TRI_RULE_FOUR) {
    double term = s.weight;
    for (int i = 0; i < of_xi; ++i) term *= s.xi;
    for (int i = 0; i < of_eta; ++i) term *= s.eta;
    sum += term;
  }
  return sum;
}
constexpr double W = sum_of_rule(0, 0), W_1 = sum_of_rule(1, 0), W_11 = sum_of_rule(2, 0), W_12 = sum_of_rule(1, 1);

// Nx, Ny or Mx, My: D22 = D11.
inline PAIR normal_resultants(const SECTION_TERMS& D, PAIR e) { return D.D11 * e + D.D12 * exchanged(e); }

// What both operations need of an element and its displacements.
struct PLANE_ELEMENT {
  PAIR x[3];
  TRIANGLE_NORMALS n;
  SIDE_INCREMENTS<3> sides;
  NODE_VECTORS<3> u;
  LINEAR membrane;
  TRIANGLE_ROTATIONS rotation;

  PLANE_ELEMENT(const PLANE_AXES& axes, const MATRIX<3, 3>& local, double c, const double* U)
      : x{pair_at(&local(1, 1)), pair_at(&local(1, 2)), pair_at(&local(1, 3))},
        n(LINEAR(x)),
        sides(x, c),
        u(to_node_vectors<3>(axes, U)),
        membrane(u.uv),
        rotation(u, sides) {}
};

inline double side_factor(int theory, const PLATEELEM_RECORD& EL, const ELEM_LOADS& LOADS) {
  return theory == THICK_THEORY ? isotropic_side_factor(EL, LOADS) : 0.0;
}

// ex, ey, or the first two curvatures, and gxy or the third, times TWO_AREA.
inline PAIR normal_strains(const TRIANGLE_NORMALS& n, PAIR d_xi, PAIR d_eta) { return n.N1 * d_xi + n.N2 * d_eta; }
inline double twist(const TRIANGLE_NORMALS& n, PAIR d_xi, PAIR d_eta) {
  return total(exchanged(n.N1) * d_xi + exchanged(n.N2) * d_eta);
}

// W TWO_AREA is the area of the element, the constants of TWO_AREA cancel but one.
void set_membrane_forces(const PLANE_ELEMENT& e, const ISOTROPIC_SECTION& ISO, NODE_VECTORS<3>& f) {
  const SECTION_TERMS D = membrane_terms(ISO);
  const double a = W / e.n.TWO_AREA;
  const PAIR N = a * normal_resultants(D, normal_strains(e.n, e.membrane.XI, e.membrane.ETA));
  const double Nxy = a * D.D33 * twist(e.n, e.membrane.XI, e.membrane.ETA);
  f.uv[1] = e.n.N1 * N + Nxy * exchanged(e.n.N1);
  f.uv[2] = e.n.N2 * N + Nxy * exchanged(e.n.N2);
  f.uv[0] = -f.uv[1] - f.uv[2];
}

// The integrals of m = m_0 + xi m_1 + eta m_2 with 1, xi and eta.
template <class VALUE>
inline void integrate(VALUE (&m)[3]) {
  const VALUE m0 = m[0];
  const VALUE m1 = m[1];
  const VALUE m2 = m[2];
  m[0] = W * m0 + W_1 * (m1 + m2);
  m[1] = W_1 * m0 + W_11 * m1 + W_12 * m2;
  m[2] = W_1 * m0 + W_12 * m1 + W_11 * m2;
}

void set_bending_forces(const PLANE_ELEMENT& e, const ISOTROPIC_SECTION& ISO, NODE_VECTORS<3>& f, double (&f_s)[3]) {
  const SECTION_TERMS D = bending_terms(ISO);
  const double a = 1.0 / e.n.TWO_AREA;
  const ROTATION_DERIVATIVES d = e.rotation.derivatives(e.sides);
  PAIR M[3];
  double Mxy[3];
  for (int i = 0; i < 3; ++i) {
    M[i] = a * normal_resultants(D, normal_strains(e.n, d.XI[i], d.ETA[i]));
    Mxy[i] = a * D.D33 * twist(e.n, d.XI[i], d.ETA[i]);
  }
  integrate(M);
  integrate(Mxy);
  ROTATION_DERIVATIVES F;
  for (int i = 0; i < 3; ++i) {
    F.XI[i] = e.n.N1 * M[i] + Mxy[i] * exchanged(e.n.N1);
    F.ETA[i] = e.n.N2 * M[i] + Mxy[i] * exchanged(e.n.N2);
  }
  spread(F, e.sides, f.beta, f_s);
}

// The shears gxz, gyz at the three corners.
struct CORNER_SHEARS {
  PAIR n[3];
  double a;

  CORNER_SHEARS(const SIDE_INCREMENTS<3>& sides, double c, double TWO_AREA)
      : n{turned(sides.X[0]), turned(sides.X[1]), turned(sides.X[2])}, a(c / (1.5 * TWO_AREA)) {}

  void of(const double (&s)[3], PAIR (&g)[3]) const {
    g[0] = a * (s[0] * n[2] - s[2] * n[0]);
    g[1] = a * (s[1] * n[0] - s[0] * n[1]);
    g[2] = a * (s[2] * n[1] - s[1] * n[2]);
  }

  // The forces on s of those on the corner values.
  void add(const PAIR (&f)[3], double (&f_s)[3]) const {
    f_s[0] += a * (dot(n[2], f[0]) - dot(n[1], f[1]));
    f_s[1] += a * (dot(n[0], f[1]) - dot(n[2], f[2]));
    f_s[2] += a * (dot(n[1], f[2]) - dot(n[0], f[0]));
  }
};

void add_shear_forces(const PLANE_ELEMENT& e, double DS, double c, double (&f_s)[3]) {
  const CORNER_SHEARS shears(e.sides, c, e.n.TWO_AREA);
  PAIR g[3];
  shears.of(e.rotation.s, g);
  const PAIR sum = W_12 * (g[0] + g[1] + g[2]);
  for (PAIR& corner : g) corner = DS * e.n.TWO_AREA * ((W_11 - W_12) * corner + sum);
  shears.add(g, f_s);
}

// e (theta_i - mean of the other two) for each node.
void set_drilling_forces(const PLATEELEM_RECORD& EL, double TWO_AREA, const NODE_VECTORS<3>& u, NODE_VECTORS<3>& f) {
  const double own = DRILL_FACTOR * EL.E1 * EL.THICKNESS * TWO_AREA;
  const double sum = u.theta_z[0] + u.theta_z[1] + u.theta_z[2];
  for (int i = 0; i < 3; ++i) f.theta_z[i] = own * (u.theta_z[i] - 0.5 * (sum - u.theta_z[i]));
}

// What the strains at every station are combined of: v_0 + xi v_1 + eta v_2 of the curvatures and shears.
struct STRAIN_FIELD {
  PAIR e, k[3], g[3];
  double exy, kxy[3];

  STRAIN_FIELD(const PLANE_ELEMENT& p, double c) {
    const double a = 1.0 / p.n.TWO_AREA;
    const ROTATION_DERIVATIVES d = p.rotation.derivatives(p.sides);
    e = a * normal_strains(p.n, p.membrane.XI, p.membrane.ETA);
    exy = a * twist(p.n, p.membrane.XI, p.membrane.ETA);
    for (int i = 0; i < 3; ++i) {
      k[i] = a * normal_strains(p.n, d.XI[i], d.ETA[i]);
      kxy[i] = a * twist(p.n, d.XI[i], d.ETA[i]);
    }
    CORNER_SHEARS(p.sides, c, p.n.TWO_AREA).of(p.rotation.s, g);
    g[1] -= g[0];
    g[2] -= g[0];
  }

  STATION_STRAINS at(const SURFACE_STATION& s) const {
    return {e, k[0] + s.xi * k[1] + s.eta * k[2], g[0] + s.xi * g[1] + s.eta * g[2], exy,
            kxy[0] + s.xi * kxy[1] + s.eta * kxy[2]};
  }
};

}  // namespace

bool TRI_FORCES_OF_FIELDS(const PLATEELEM_RECORD& EL, int theory, const MATRIX<3, 3>& AXES, const MATRIX<3, 3>& local,
                          const ISOTROPIC_SECTION& ISO, const ELEM_LOADS& LOADS, const double* U, double* f, int op) {
  const double c = side_factor(theory, EL, LOADS);
  const PLANE_AXES axes(AXES);
  const PLANE_ELEMENT e(axes, local, c, U);
  if (!e.sides.proper || LOADS(LOAD_FOUNDATION) != 0.0) return false;
  NODE_VECTORS<3> forces;
  double f_s[3];
  set_membrane_forces(e, ISO, forces);
  set_bending_forces(e, ISO, forces, f_s);
  if (theory == THICK_THEORY) add_shear_forces(e, ISO.DS1, c, f_s);
  e.sides.spread(f_s, forces);
  set_drilling_forces(EL, e.n.TWO_AREA, e.u, forces);
  set_forces(op, axes, forces, f);
  std::fill_n(f + TRI_DOFS, QUAD_DOFS - TRI_DOFS, 0.0);
  return all_finite<TRI_DOFS>(f);
}

bool TRI_RESULTS_OF_FIELDS(const PLATEELEM_RECORD& EL, int theory, const MATRIX<3, 3>& AXES, const MATRIX<3, 3>& local,
                           const ISOTROPIC_SECTION& ISO, const ELEM_LOADS& LOADS, const double* U, double* nodes,
                           double* points) {
  const double c = side_factor(theory, EL, LOADS);
  const PLANE_ELEMENT e(PLANE_AXES(AXES), local, c, U);
  const STATION_SECTION S = station_section(EL, ISO, LOADS);
  const STRAIN_FIELD field(e, c);
  STATION_STRAINS at[7];
  double* record[7];
  PAIR place[7];
  for (int i = 0; i < 3; ++i) {
    at[i] = field.at(TRI_RULE_NODES[i]);
    record[i] = nodes + i * RES_LENGTH;
    place[i] = e.x[i];
  }
  for (int p = 0; p < 4; ++p) {
    const SURFACE_STATION& s = TRI_RULE_FOUR[p];
    at[3 + p] = field.at(s);
    record[3 + p] = points + p * RES_LENGTH;
    place[3 + p] = (1.0 - s.xi - s.eta) * e.x[0] + s.xi * e.x[1] + s.eta * e.x[2];
  }
  if (!e.sides.proper || !finite(S) || !finite(at)) return false;
  for (int i = 0; i < 7; ++i) fill_station(S, place[i], at[i], record[i]);
  for (int i = 0; i < 6; i += 2) principal_values_of_two(record[i], record[i + 1]);
  principal_values_of_two(record[6], record[6]);
  return true;
}
