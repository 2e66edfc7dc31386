// geometric_stiffness.cpp: the work of constant membrane forces on the slopes of the linear displacement field. All
// three translations have the same matrix; the rotations have none.
//
//     k(a, b) = factor (TWO_AREA / 2) (Nx n.X(a) n.X(b) + Ny n.Y(a) n.Y(b) + Nxy (n.X(a) n.Y(b) + n.X(b) n.Y(a)))
//
// N are the stored forces, or D (B u - free thermal strain). Tension is positive.
//
// Mirror: shells/quadrilateral/geometric_stiffness.cpp.
#include "shells/triangle/geometric_stiffness.h"

#include "finites/fields.h"
#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/common/general_products.h"
#include "shells/common/isotropic_products.h"
#include "shells/common/strains.h"
#include "shells/common/surface_points.h"
#include "shells/common/translations.h"
#include "shells/triangle/forces.h"
#include "shells/triangle/geometry.h"
#include "shells/triangle/membrane.h"

namespace {

void write_geometric(const VECTOR<3>& N, double c, const SLOPES<3>& n, double* K) {
  double k[SYM(3, 3)] = {};
  add_geometric_pairs(N, c, n, k);
  set_translations<3>(k, K);
}

}  // namespace

void TRI_KG_ISO(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO, int op,
                const ELEM_LOADS& LOADS, const double* disp, const double* big, double factor, double* K) {
  VECTOR<3> N;
  if (takes_stored_forces(op)) {
    N = stored_membrane_forces(big, 1);
  } else {
    MATRIX<3, 6> B;
    const TRI_DISPLACEMENTS TRI_U = TRI_DISP_SPLIT(disp);
    TRI_B_MEMBRANE_STORED(TRI, B);
    const double s = EL.ALPHA1 * LOADS(LOAD_TEMPERATURE);
    const VECTOR<3> e = strains_of(B, TRI_U.MEMBRANE);
    N = resultants(membrane_terms(ISO), VECTOR<3>{{e(1) - s, e(2) - s, e(3)}});
  }
  const SLOPES<3> n = linear_slopes(TRI.G11, TRI.G12, TRI.G21, TRI.G22);
  write_geometric(N, TRI.TWO_AREA / 2.0 * factor, n, K);
}

void TRI_KG_GENERAL(const PLATEELEM_RECORD& EL, int op, const double* disp, const double* big, double factor,
                    double* K) {
  const SURFACE_POINT s = surface_point(RULE_FULL, 1, 3, EL.LOCAL_XYZ.data());
  VECTOR<3> N;
  if (takes_stored_forces(op)) {
    N = stored_membrane_forces(big, 1);
  } else {
    MATRIX<3, 6> B;
    const TRI_DISPLACEMENTS TRI_U = TRI_DISP_SPLIT(disp);
    TRI_B_MEMBRANE(s.g11, s.g12, s.g21, s.g22, B);
    VECTOR<3> e = product(B, TRI_U.MEMBRANE);
    e(1) -= EL.THERMAL_M1;
    e(2) -= EL.THERMAL_M2;
    N = product(EL.D_MEMBRANE_NORMAL, e);
  }
  const SLOPES<3> n = linear_slopes(s.g11, s.g12, s.g21, s.g22);
  write_geometric(N, s.detj / 2.0 * factor, n, K);
}

void TRI_ADD_GEOMETRIC(const double* KG, double* K) { add_translations<3>(KG, K); }
