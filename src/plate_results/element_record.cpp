// element_record.cpp: faces, forces and moments of a thin element's result record.
#include "plate_results/element_record.h"

#include "plate_results/principal_values.h"
#include "plate_results/res_record.h"

void fill_thin_record(double x, double y, const VECTOR<3>& e, const VECTOR<3>& k, const VECTOR<3>& s,
                      const VECTOR<3>& M, double h, double* block) {
  const RES_BLOCK R(block);
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
  PRINCIPAUX_PLA(block, RES_LENGTH);
}
