// element_record.cpp: faces, forces and moments of an element's result record, and its transverse shear.
//
//     top     e + k h / 2,  s + 6 M / h^2        forces   N = s h,  M
//     bottom  e - k h / 2,  s - 6 M / h^2        shear    g / SHEAR_FACTOR,  Q,  Q / (SHEAR_FACTOR h)
//
// Tension is positive; z = +h/2 at the top. The shear strain of the element and the mean shear stress Q / h are both
// divided by SHEAR_FACTOR.
#include "plate_results/element_record.h"

#include "common/constants.h"
#include "finites/fields.h"
#include "plate_results/principal_values.h"
#include "plate_results/res_record.h"

namespace {

// Columns 1 to 62; those that are neither faces nor resultants are zero.
void fill_faces(double x, double y, const VECTOR<3>& e, const VECTOR<3>& k, const VECTOR<3>& s, const VECTOR<3>& M,
                double h, const RES_BLOCK& R) {
  R(COL_X) = x;
  R(COL_Y) = y;
  R(COL_Z) = 0.0;
  const double h2 = h * h;
  for (int i = 1; i <= 3; ++i) {
    const int at = i - 1;
    R(COL_STRAIN_TOP + at) = e(i) + k(i) * h * 0.5;
    R(COL_STRESS_TOP + at) = s(i) + M(i) * 6.0 / h2;
    R(COL_STRAIN_MID + at) = e(i);
    R(COL_STRESS_MID + at) = s(i);
    R(COL_STRAIN_BOTTOM + at) = e(i) - k(i) * h * 0.5;
    R(COL_STRESS_BOTTOM + at) = s(i) - M(i) * 6.0 / h2;
    R(COL_FORCES + at) = s(i) * h;
    R(COL_MOMENTS + at) = M(i);
  }
  for (int column = COL_SHEAR_STRAIN; column <= COL_LAST; ++column) R(column) = 0.0;
}

}  // namespace

void fill_thin_record(double x, double y, const VECTOR<3>& e, const VECTOR<3>& k, const VECTOR<3>& s,
                      const VECTOR<3>& M, double h, double* block) {
  fill_faces(x, y, e, k, s, M, h, RES_BLOCK(block));
  PRINCIPAUX_PLA(block, RES_LENGTH);
}

void fill_thick_record(double x, double y, const VECTOR<3>& e, const VECTOR<3>& k, const VECTOR<3>& s,
                       const VECTOR<3>& M, const VECTOR<2>& g, const VECTOR<2>& Q, double h, double* block) {
  const RES_BLOCK R(block);
  fill_faces(x, y, e, k, s, M, h, R);
  for (int i = 1; i <= 2; ++i) {
    const int at = i - 1;
    R(COL_SHEAR_STRAIN + at) = g(i) / SHEAR_FACTOR;
    R(COL_SHEAR_FORCE + at) = Q(i);
    R(COL_SHEAR_STRESS + at) = Q(i) / (SHEAR_FACTOR * h);
  }
  PRINCIPAUX_PLA(block, RES_LENGTH);
}

void fill_plastic_columns(const VECTOR<3>& ep, const VECTOR<3>& kp, const VECTOR<2>& gp, double h, double* block) {
  const RES_BLOCK R(block);
  for (int i = 1; i <= 3; ++i) {
    const int at = i - 1;
    R(COL_PLASTIC_TOP + at) = ep(i) + kp(i) * h * 0.5;
    R(COL_PLASTIC_MID + at) = ep(i);
    R(COL_PLASTIC_BOTTOM + at) = ep(i) - kp(i) * h * 0.5;
  }
  R(COL_PLASTIC_SHEAR) = gp(1);
  R(COL_PLASTIC_SHEAR + 1) = gp(2);
}

void fill_layered_record(double x, double y, const LAYERED_RECORD& r, double h, double* block) {
  const RES_BLOCK R(block);
  for (int column = 1; column <= COL_LAST; ++column) R(column) = 0.0;
  R(COL_X) = x;
  R(COL_Y) = y;
  constexpr int strain[3] = {COL_STRAIN_BOTTOM, COL_STRAIN_MID, COL_STRAIN_TOP};
  constexpr int stress[3] = {COL_STRESS_BOTTOM, COL_STRESS_MID, COL_STRESS_TOP};
  constexpr int plastic[3] = {COL_PLASTIC_BOTTOM, COL_PLASTIC_MID, COL_PLASTIC_TOP};
  const double z[3] = {-h / 2.0, 0.0, h / 2.0};
  for (int at = 0; at < 3; ++at) {
    for (int i = 1; i <= 3; ++i) {
      R(strain[at] + i - 1) = r.e(i) + z[at] * r.k(i);
      R(stress[at] + i - 1) = r.stress[at](i);
      R(plastic[at] + i - 1) = r.plastic[at](i);
    }
  }
  for (int i = 1; i <= 3; ++i) {
    R(COL_FORCES + i - 1) = r.N(i);
    R(COL_MOMENTS + i - 1) = r.M(i);
  }
  for (int i = 1; i <= 2; ++i) {
    R(COL_SHEAR_STRAIN + i - 1) = r.g(i) / SHEAR_FACTOR;
    R(COL_SHEAR_FORCE + i - 1) = r.Q(i);
    R(COL_SHEAR_STRESS + i - 1) = r.shear_stress(i);
    R(COL_PLASTIC_SHEAR + i - 1) = r.plastic_shear(i);
  }
  PRINCIPAUX_PLA(block, RES_LENGTH);
}
