// geometric_stiffness.cpp: the work of constant membrane forces on the slopes of the linear displacement field. All
// three translations have the same matrix; the rotations have none.
#include "shells/tri_thin/geometric_stiffness.h"

#include "element_calls/gauss_int_2d.h"
#include "operations.h"
#include "plate_results/res_record.h"
#include "shared_records.h"
#include "shells/common/constitutive.h"
#include "shells/common/general_products.h"
#include "shells/common/strains.h"
#include "shells/tri_thin/forces.h"
#include "shells/tri_thin/geometry.h"
#include "shells/tri_thin/membrane.h"

namespace {

// The u freedoms of the three nodes; v and w follow each.
constexpr int TRANSLATION_DOF[3] = {1, 7, 13};

bool takes_stored_forces(int op) { return op == OP_STIFFNESS || op == OP_GEOMETRIC_STORED; }

VECTOR<3> stored_forces(const double* big) {
  const RES_READER R = BLOCK_OF(big, 1);
  return {{R(COL_FORCES), R(COL_FORCES + 1), R(COL_FORCES + 2)}};
}

// k(a,b) = fx nax nbx + fy nay nby + fxy (nax nby + nbx nay), at the same place for u, v and w.
void write_geometric(const VECTOR<3>& N, double area_factor, const VECTOR<3>& nx, const VECTOR<3>& ny, double* K) {
  const double fx = N(1) * area_factor;
  const double fy = N(2) * area_factor;
  const double fxy = N(3) * area_factor;
  for (int b = 1; b <= 3; ++b) {
    for (int a = 1; a <= b; ++a) {
      const double k = fx * nx(a) * nx(b) + fy * ny(a) * ny(b) + fxy * (nx(a) * ny(b) + nx(b) * ny(a));
      for (int t = 0; t < 3; ++t) K[SYM(TRANSLATION_DOF[a - 1] + t, TRANSLATION_DOF[b - 1] + t) - 1] = k;
    }
  }
}

}  // namespace

void TRI_KG_ISO(int op, const ELEM_LOADS& LOADS, const double* disp, const double* big, double factor, double* K) {
  VECTOR<3> N;
  if (takes_stored_forces(op)) {
    N = stored_forces(big);
  } else {
    MATRIX<3, 6> B;
    TRI_DISP_SPLIT(disp);
    TRI_B_MEMBRANE_STORED(B);
    const double s = PLATEELEM.ALPHA1 * LOADS(LOAD_TEMPERATURE);
    const VECTOR<3> e = strains_of(B, TRI.U_MEMBRANE);
    N(1) = ISO.DM11 * (e(1) - s) + ISO.DM12 * (e(2) - s);
    N(2) = ISO.DM12 * (e(1) - s) + ISO.DM22 * (e(2) - s);
    N(3) = ISO.DM33 * e(3);
  }
  const VECTOR<3> nx{{-TRI.G11 - TRI.G12, TRI.G11, TRI.G12}};
  const VECTOR<3> ny{{-TRI.G21 - TRI.G22, TRI.G21, TRI.G22}};
  write_geometric(N, TRI.TWO_AREA / 2.0 * factor, nx, ny, K);
}

void TRI_KG_GENERAL(int op, const double* disp, const double* big, double factor, double* K) {
  const SURFACE_POINT s = surface_point(RULE_FULL, 1, 3, PLATEELEM.LOCAL_XYZ.data());
  VECTOR<3> N;
  if (takes_stored_forces(op)) {
    N = stored_forces(big);
  } else {
    MATRIX<3, 6> B;
    TRI_DISP_SPLIT(disp);
    TRI_B_MEMBRANE(s.g11, s.g12, s.g21, s.g22, B);
    VECTOR<3> e = product(B, TRI.U_MEMBRANE);
    e(1) -= PLATEELEM.THERMAL_M1;
    e(2) -= PLATEELEM.THERMAL_M2;
    N = product(PLATEELEM.D_MEMBRANE_NORMAL, e);
  }
  const VECTOR<3> nx{{-s.g11 - s.g12, s.g11, s.g12}};
  const VECTOR<3> ny{{-s.g21 - s.g22, s.g21, s.g22}};
  write_geometric(N, s.detj / 2.0 * factor, nx, ny, K);
}

void TRI_ADD_GEOMETRIC(const double* KG, double* K) {
  for (int b = 0; b < 3; ++b) {
    for (int a = 0; a <= b; ++a) {
      for (int t = 0; t < 3; ++t) {
        const int at = SYM(TRANSLATION_DOF[a] + t, TRANSLATION_DOF[b] + t) - 1;
        K[at] += KG[at];
      }
    }
  }
}
