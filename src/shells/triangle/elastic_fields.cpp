// elastic_fields.cpp: internal forces and results of an elastic triangle from its fields.
//
// With the normals n1, n2 (plane_fields.h) and derivatives by xi and eta, times TWO_AREA:
//
//     (ex, ey) = n1 (u,xi v,xi) + n2 (u,eta v,eta)           component by component
//     gxy      = n1' . (u,xi v,xi) + n2' . (u,eta v,eta)     n' = n with its components swapped
//
// the curvatures likewise from beta x, beta y. They are linear, k = k_0 + xi k_1 + eta k_2, as the moments are, so that
// the sum over the points needs only the sums of the rule: w, w xi, w xi^2 and w xi eta. Of the thick theory
//
//     (gxz, gyz) = a (lambda (h_1 n_3 - h_3 n_1) + xi (h_2 n_1 - h_1 n_2) + eta (h_3 n_2 - h_2 n_3))
//     a = 1 / (1.5 TWO_AREA),    h_k = L_k phi_k dB_k = c_k s_k
//
// with n_k = (y, -x) of side k: the corner values of thick/shear.cpp, D_i being the sine between two sides,
// -TWO_AREA / (L_j L_k). The forces are the same products transposed.
//
// Mirror: shells/quadrilateral/elastic_fields.cpp.
#include "shells/triangle/elastic_fields.h"

#include <algorithm>

#include "common/constants.h"
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

// What both operations need of an element and its displacements.
struct PLANE_ELEMENT {
  LANES x[3];
  TRIANGLE_NORMALS n;
  SIDE_INCREMENTS<3> sides;
  NODE_VECTORS<3> u;
  LINEAR membrane;
  TRIANGLE_ROTATIONS rotation;

  template <class FACTOR>
  PLANE_ELEMENT(const PLANE_AXES& axes, const MATRIX<3, 3>& local, FACTOR side_factor, const double* U)
      : x{lanes_at(&local(1, 1)), lanes_at(&local(1, 2)), lanes_at(&local(1, 3))},
        n(LINEAR(x)),
        sides(x, side_factor),
        u(to_node_vectors<3>(axes, U)),
        membrane(u.uv),
        rotation(u, sides) {}
};

// ex, ey, or the first two curvatures, and gxy or the third, times TWO_AREA.
inline LANES normal_strains(const TRIANGLE_NORMALS& n, LANES d_xi, LANES d_eta) { return n.N1 * d_xi + n.N2 * d_eta; }
inline double twist(const TRIANGLE_NORMALS& n, LANES d_xi, LANES d_eta) {
  return sum_of(swapped(n.N1) * d_xi + swapped(n.N2) * d_eta);
}

// The forces on the derivatives.
inline LANES force(LANES n, const PLANE_RESULTANTS& N) { return n * N.xy + N.twist * swapped(n); }

// W TWO_AREA is the area of the element.
template <class PLATE>
void set_membrane_forces(const PLANE_ELEMENT& e, const PLATE& D, NODE_VECTORS<3>& f) {
  const double a = W / e.n.TWO_AREA;
  const PLANE_RESULTANTS N = D.membrane.of(a * normal_strains(e.n, e.membrane.XI, e.membrane.ETA),
                                           a * twist(e.n, e.membrane.XI, e.membrane.ETA));
  f.uv[1] = force(e.n.N1, N);
  f.uv[2] = force(e.n.N2, N);
  f.uv[0] = -f.uv[1] - f.uv[2];
}

// The integrals of m = m_0 + xi m_1 + eta m_2 with 1, xi and eta.
inline void integrate(const PLANE_RESULTANTS (&m)[3], PLANE_RESULTANTS (&integral)[3]) {
  const auto combine = [&](double c0, double c1, double c2) {
    return PLANE_RESULTANTS{c0 * m[0].xy + c1 * m[1].xy + c2 * m[2].xy,
                            c0 * m[0].twist + c1 * m[1].twist + c2 * m[2].twist};
  };
  integral[0] = combine(W, W_1, W_1);
  integral[1] = combine(W_1, W_11, W_12);
  integral[2] = combine(W_1, W_12, W_11);
}

template <class PLATE>
void set_bending_forces(const PLANE_ELEMENT& e, const PLATE& D, NODE_VECTORS<3>& f, double (&f_s)[3]) {
  const double a = 1.0 / e.n.TWO_AREA;
  const ROTATION_DERIVATIVES d = e.rotation.derivatives(e.sides);
  PLANE_RESULTANTS M[3];
  for (int i = 0; i < 3; ++i) {
    M[i] = D.bending.of(a * normal_strains(e.n, d.XI[i], d.ETA[i]), a * twist(e.n, d.XI[i], d.ETA[i]));
  }
  PLANE_RESULTANTS integral[3];
  integrate(M, integral);
  ROTATION_DERIVATIVES F;
  for (int i = 0; i < 3; ++i) {
    F.XI[i] = force(e.n.N1, integral[i]);
    F.ETA[i] = force(e.n.N2, integral[i]);
  }
  spread(F, e.sides, f.beta, f_s);
}

// The shears gxz, gyz at the three corners, or the forces on them.
struct CORNER_SHEARS {
  LANES n[3];
  double a[3];  // c_k / (1.5 TWO_AREA)

  CORNER_SHEARS(const SIDE_INCREMENTS<3>& sides, double TWO_AREA) {
    for (int k = 0; k < 3; ++k) {
      n[k] = turned(sides.X[k]);
      a[k] = sides.c[k] / (1.5 * TWO_AREA);
    }
  }

  void of(const double (&s)[3], LANES (&g)[3]) const {
    const double h[3] = {a[0] * s[0], a[1] * s[1], a[2] * s[2]};
    g[0] = h[0] * n[2] - h[2] * n[0];
    g[1] = h[1] * n[0] - h[0] * n[1];
    g[2] = h[2] * n[1] - h[1] * n[2];
  }

  // The forces on s of those on the corner values.
  void add(const LANES (&f)[3], double (&f_s)[3]) const {
    f_s[0] += a[0] * (dot(n[2], f[0]) - dot(n[1], f[1]));
    f_s[1] += a[1] * (dot(n[0], f[1]) - dot(n[2], f[2]));
    f_s[2] += a[2] * (dot(n[1], f[2]) - dot(n[0], f[0]));
  }
};

template <class PLATE>
void add_shear_forces(const PLANE_ELEMENT& e, const PLATE& D, double (&f_s)[3]) {
  const CORNER_SHEARS shears(e.sides, e.n.TWO_AREA);
  LANES g[3];
  shears.of(e.rotation.s, g);
  const LANES sum = W_12 * (g[0] + g[1] + g[2]);
  for (LANES& corner : g) corner = e.n.TWO_AREA * D.shear((W_11 - W_12) * corner + sum);
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
  LANES e, k[3], g[3];
  double exy, kxy[3];

  explicit STRAIN_FIELD(const PLANE_ELEMENT& p) {
    const double a = 1.0 / p.n.TWO_AREA;
    const ROTATION_DERIVATIVES d = p.rotation.derivatives(p.sides);
    e = a * normal_strains(p.n, p.membrane.XI, p.membrane.ETA);
    exy = a * twist(p.n, p.membrane.XI, p.membrane.ETA);
    for (int i = 0; i < 3; ++i) {
      k[i] = a * normal_strains(p.n, d.XI[i], d.ETA[i]);
      kxy[i] = a * twist(p.n, d.XI[i], d.ETA[i]);
    }
    CORNER_SHEARS(p.sides, p.n.TWO_AREA).of(p.rotation.s, g);
    g[1] -= g[0];
    g[2] -= g[0];
  }

  STATION_STRAINS at(const SURFACE_STATION& s) const {
    return {e, k[0] + s.xi * k[1] + s.eta * k[2], g[0] + s.xi * g[1] + s.eta * g[2], exy,
            kxy[0] + s.xi * kxy[1] + s.eta * kxy[2]};
  }
};

// An element with its section: the operations.
template <class PLATE>
struct ELASTIC_ELEMENT {
  const PLATEELEM_RECORD& EL;
  PLANE_AXES axes;
  PLATE D;
  PLANE_ELEMENT e;

  template <class FACTOR>
  ELASTIC_ELEMENT(const PLATEELEM_RECORD& record, const MATRIX<3, 3>& AXES, const MATRIX<3, 3>& local,
                  const PLATE& section, FACTOR side_factor, const double* U)
      : EL(record), axes(AXES), D(section), e(axes, local, side_factor, U) {}

  bool forces(int theory, int op, double* f) const {
    if (!e.sides.proper) return false;
    NODE_VECTORS<3> forces;
    double f_s[3];
    set_membrane_forces(e, D, forces);
    set_bending_forces(e, D, forces, f_s);
    if (theory == THICK_THEORY) add_shear_forces(e, D, f_s);
    e.sides.spread(f_s, forces);
    set_drilling_forces(EL, e.n.TWO_AREA, e.u, forces);
    set_forces(op, axes, forces, f);
    std::fill_n(f + TRI_DOFS, QUAD_DOFS - TRI_DOFS, 0.0);
    return all_finite(f, TRI_DOFS);
  }

  bool results(const PLATE_TEMPERATURE& T, double* nodes, double* points) const {
    if (!e.sides.proper) return false;
    const FACE_FACTORS F(EL.THICKNESS);
    const double per_h = 1.0 / EL.THICKNESS;
    const STRAIN_FIELD field(e);
    STATION_STRAINS strains[7];  // nodes, then points
    STATION_STRESSES stresses[7];
    for (int i = 0; i < 7; ++i) {
      strains[i] = field.at(i < 3 ? TRI_RULE_NODES[i] : TRI_RULE_FOUR[i - 3]);
      stresses[i] = stresses_at(D, T, per_h, strains[i]);
    }
    if (!finite(strains, stresses, F)) return false;
    double* record[7];
    for (int i = 0; i < 7; ++i) {
      record[i] = i < 3 ? nodes + i * RES_LENGTH : points + (i - 3) * RES_LENGTH;
      fill_station(F, i < 3 ? e.x[i] : place_of(TRI_RULE_FOUR[i - 3]), strains[i], stresses[i], record[i]);
    }
    for (int i = 0; i < 6; i += 2) principal_values_of_two(record[i], record[i + 1]);
    principal_values_of_two(record[6], record[6]);
    return true;
  }

  LANES place_of(const SURFACE_STATION& s) const {
    return (1.0 - s.xi - s.eta) * e.x[0] + s.xi * e.x[1] + s.eta * e.x[2];
  }
};

// operate(element, temperature) for the section of the behaviour.
template <class OPERATION>
bool for_section(const PLATEELEM_RECORD& EL, int theory, const MATRIX<3, 3>& AXES, const MATRIX<3, 3>& local,
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

bool TRI_FORCES_OF_FIELDS(const PLATEELEM_RECORD& EL, int theory, const MATRIX<3, 3>& AXES, const MATRIX<3, 3>& local,
                          const ISOTROPIC_SECTION& ISO, const ELEM_LOADS& LOADS, const double* U, double* f, int op) {
  if (LOADS(LOAD_FOUNDATION) != 0.0) return false;
  return for_section(EL, theory, AXES, local, ISO, LOADS, U,
                     [=](const auto& e, const PLATE_TEMPERATURE& /*T*/) { return e.forces(theory, op, f); });
}

bool TRI_RESULTS_OF_FIELDS(const PLATEELEM_RECORD& EL, int theory, const MATRIX<3, 3>& AXES, const MATRIX<3, 3>& local,
                           const ISOTROPIC_SECTION& ISO, const ELEM_LOADS& LOADS, const double* U, double* nodes,
                           double* points) {
  return for_section(EL, theory, AXES, local, ISO, LOADS, U,
                     [=](const auto& e, const PLATE_TEMPERATURE& T) { return e.results(T, nodes, points); });
}
