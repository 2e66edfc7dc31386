// geometric_stiffness.cpp: the work of the membrane forces of each point on the slopes of the bilinear displacement
// field. All three translations have the same matrix; the rotations have none.
//
//     k(a, b) = sum_p  factor w DET (Nx n.X(a) n.X(b) + Ny n.Y(a) n.Y(b) + Nxy (n.X(a) n.Y(b) + n.X(b) n.Y(a)))
//
// N are the stored forces, or D (B u - free thermal strain). Tension is positive.
//
// Mirror: shells/triangle/geometric_stiffness.cpp.
#include "shells/quadrilateral/geometric_stiffness.h"

#include "common/finiteness.h"
#include "common/lanes.h"
#include "finites/fields.h"
#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/common/general_products.h"
#include "shells/common/isotropic_products.h"
#include "shells/common/packed.h"
#include "shells/common/translations.h"
#include "shells/quadrilateral/forces.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/quadrilateral/membrane.h"
#include "shells/quadrilateral/plane_fields.h"

VECTOR<3> QUAD_MEMBRANE_FORCES(const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO,
                               const QUAD_DISPLACEMENTS& QUAD_U, int split, double s, double xi, double eta) {
  const VECTOR<3> e = QUAD_MEMBRANE_STRAINS_ISO(QUAD, QUAD_U, split, xi, eta);
  return resultants(membrane_terms(ISO), VECTOR<3>{{e(1) - s, e(2) - s, e(3)}});
}

namespace {

// The membrane forces of a split shear from the field of u, v (plane_fields.h), for finite values.
class MEMBRANE_FIELD {
 public:
  MEMBRANE_FIELD(const QUADRILATERAL_GEOMETRY& QUAD, const double* disp) {
    X.XI = LANES{QUAD.QA1, QUAD.QA3};
    X.ETA = LANES{QUAD.QA5, QUAD.QA6};
    X.TWIST = LANES{QUAD.QA2, QUAD.QA4};
    const LANES uv[4] = {lanes_at(disp), lanes_at(disp + 6), lanes_at(disp + 12), lanes_at(disp + 18)};
    U = BILINEAR(uv);
    const LANES n1 = turned(X.ETA);
    exy = dot(swapped(n1), U.XI) - dot(swapped(turned(X.XI)), U.ETA);
    exy /= dot(n1, X.XI);
  }

  // s is the free thermal strain.
  VECTOR<3> forces(const ISOTROPIC_SECTION& ISO, double s, double xi, double eta) const {
    const LANES x_xi = X.XI + eta * X.TWIST;
    const LANES n1 = turned(X.ETA + xi * X.TWIST);
    const LANES e = (n1 * (U.XI + eta * U.TWIST) - turned(x_xi) * (U.ETA + xi * U.TWIST)) / dot(n1, x_xi) - both(s);
    return resultants(membrane_terms(ISO), VECTOR<3>{{e[0], e[1], exy}});
  }

 private:
  BILINEAR X, U;
  double exy;
};

}  // namespace

void QUAD_KG_ISO(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO, int op,
                 int split, const ELEM_LOADS& LOADS, int count, const SURFACE_STATION* rule, const double* disp,
                 const double* big, double factor, double* K) {
  const double s = EL.ALPHA1 * LOADS(LOAD_TEMPERATURE);
  const bool stored = takes_stored_forces(op);
  constexpr double none[QUAD_DOFS] = {};
  const MEMBRANE_FIELD field(QUAD, stored ? none : disp);
  const auto forces_at = [&](int p, const SURFACE_STATION& at) {
    if (stored) return stored_membrane_forces(big, p);
    const VECTOR<3> N = field.forces(ISO, s, at.xi, at.eta);
    if (split == SPLIT_SHEAR && all_finite(N.V, 3)) return N;
    return QUAD_MEMBRANE_FORCES(QUAD, ISO, QUAD_DISP_SPLIT(disp), split, s, at.xi, at.eta);
  };
  double k[SYM(4, 4)] = {};
  for (int p = 1; p <= count; ++p) {
    const SURFACE_STATION at = rule[p - 1];
    const VECTOR<3> N = forces_at(p, at);
    const QUAD_POINT J = QUAD_JACOBIAN(QUAD, at.xi, at.eta);
    const SLOPES<4> n = bilinear_slopes(at.xi, at.eta, J.G11, J.G12, J.G21, J.G22);
    add_geometric_pairs(N, factor * at.weight * J.DET, n, k);
  }
  set_translations<4>(k, K);
}

void QUAD_KG_GENERAL(const PLATEELEM_RECORD& EL, int op, int split, int count, const double* disp, const double* big,
                     double factor, double* K) {
  const bool stored = takes_stored_forces(op);
  const QUAD_DISPLACEMENTS QUAD_U = stored ? QUAD_DISPLACEMENTS{} : QUAD_DISP_SPLIT(disp);
  double k[SYM(4, 4)] = {};
  for (int p = 1; p <= count; ++p) {
    const SURFACE_POINT at = surface_point(RULE_FULL, p, 4, EL.LOCAL_XYZ_QUAD.data());
    VECTOR<3> N;
    if (stored) {
      N = stored_membrane_forces(big, p);
    } else {
      VECTOR<3> e = QUAD_MEMBRANE_STRAINS_GENERAL(EL, QUAD_U, split, at);
      e(1) -= EL.THERMAL_M1;
      e(2) -= EL.THERMAL_M2;
      N = product(EL.D_MEMBRANE_TOTAL, e);
    }
    const SLOPES<4> n = bilinear_slopes(at.xi, at.eta, at.g11, at.g12, at.g21, at.g22);
    add_geometric_pairs(N, factor * at.weight * at.detj, n, k);
  }
  set_translations<4>(k, K);
}

void QUAD_ADD_GEOMETRIC(const double* KG, double* K) { add_translations<4>(KG, K); }
