// principal_values.cpp: PRINCIPAUX_PLA (Mohr's circle and the equivalent stress of von Mises, at top, mid surface and
// bottom) and the two routines by which a solver applies it to its own record.
//
//     angle = atan2(2 sxy, sx - sy) / 2,    s1, s2 = (sx + sy) / 2 +- r,    tau = r
//     r = sqrt(((sx - sy) / 2)^2 + sxy^2),    equivalent = sqrt(s1^2 + s2^2 - s1 s2)
//
// The angle goes from the local x axis to the direction of s1, in radians.
#include "plate_results/principal_values.h"

#include <cmath>

#include "finites/fields.h"
#include "finites/finites.h"
#include "plate_results/res_record.h"

namespace {

// A deviator at or below it has no direction, and its angle is 0: absolute for the whole record, in the stress unit of
// the model, and relative to the largest deviator of the record for each surface. Rounding of an equal biaxial state
// would otherwise give an arbitrary angle.
constexpr double STRESS_FLOOR = 1e-09;

struct plane_stress {
  double sx, sy, sxy;
};

struct principal_stress {
  double angle, s1, s2, tau;
};

plane_stress read_stress(RES_BLOCK R, int column) { return {R(column), R(column + 1), R(column + 2)}; }

double largest(double a, double b) { return a <= b ? b : a; }

// A surface has a direction when its deviation from an equal biaxial state exceeds STRESS_FLOOR times the largest of
// the record.
double direction_of(const plane_stress& s, double scale) {
  const double a = std::fabs(s.sx - s.sy);
  const double b = std::fabs(s.sxy);
  if (a / scale > STRESS_FLOOR || b / scale > STRESS_FLOOR) return 0.5 * std::atan2(s.sxy + s.sxy, s.sx - s.sy);
  return 0.0;
}

principal_stress principal_of(const plane_stress& s, double angle) {
  const double c = (s.sx + s.sy) * 0.5;
  const double d = (s.sx - s.sy) * 0.5;
  const double r = std::sqrt(d * d + s.sxy * s.sxy);
  return {angle, c + r, c - r, r};
}

double equivalent_of(const principal_stress& p) { return std::sqrt((p.s1 * p.s1 + p.s2 * p.s2) - p.s1 * p.s2); }

void write_principal(RES_BLOCK R, int column, const principal_stress& p, double equivalent) {
  R(column) = p.angle;
  R(column + 1) = p.s1;
  R(column + 2) = p.s2;
  R(column + 3) = p.tau;
  R(column + 4) = equivalent;
}

}  // namespace

void PRINCIPAUX_PLA(double* rec, int /*n*/) {
  const RES_BLOCK R(rec);
  const plane_stress top = read_stress(R, COL_STRESS_TOP);
  const plane_stress mid = read_stress(R, COL_STRESS_MID);
  const plane_stress bottom = read_stress(R, COL_STRESS_BOTTOM);

  // The order matters for NaN: `largest` keeps its first argument unless a <= b, so a NaN in the first stress stays and
  // gives the angle 0, one in a later stress is passed over.
  double scale = std::fabs(bottom.sxy);
  scale = largest(scale, std::fabs(bottom.sx - bottom.sy));
  scale = largest(scale, std::fabs(mid.sxy));
  scale = largest(scale, std::fabs(mid.sx - mid.sy));
  scale = largest(scale, std::fabs(top.sxy));
  scale = largest(scale, std::fabs(top.sx - top.sy));

  double angle_top = 0.0;
  double angle_bottom = 0.0;
  double angle_mid = 0.0;
  if (scale > STRESS_FLOOR) {
    angle_top = direction_of(top, scale);
    angle_bottom = direction_of(bottom, scale);
    angle_mid = direction_of(mid, scale);
  }

  const principal_stress p_top = principal_of(top, angle_top);
  const principal_stress p_mid = principal_of(mid, angle_mid);
  const principal_stress p_bottom = principal_of(bottom, angle_bottom);

  // On the mid surface, where the bending stress is zero, the transverse shear enters as sqrt(3 (txz^2 + tyz^2)), added
  // to the plane value and not combined with it under one root: part of the results (docs/decisions.md).
  const double txz = R(COL_SHEAR_STRESS);
  const double tyz = R(COL_SHEAR_STRESS + 1);
  const double shear_term = std::sqrt((txz * txz + tyz * tyz) * 3.0);

  write_principal(R, COL_PRINCIPAL_TOP, p_top, equivalent_of(p_top));
  write_principal(R, COL_PRINCIPAL_MID, p_mid, equivalent_of(p_mid) + shear_term);
  write_principal(R, COL_PRINCIPAL_BOTTOM, p_bottom, equivalent_of(p_bottom));
}

namespace {

// Columns of the solver's record against columns of the work record.
struct column_pair {
  int res100, work;
};

// clang-format off
constexpr column_pair INPUT_COLUMNS[] = {
    {24, 7},  {25, 8},  {26, 9},    // top
    {27, 18}, {28, 19}, {29, 20},   // mid surface
    {30, 29}, {31, 30}, {32, 31},   // bottom
    {33, 50},                       // copied, without effect on the results
    {46, 47}, {47, 48},             // mean transverse shear stresses
};
constexpr column_pair OUTPUT_COLUMNS[] = {
    {7, 14},  {8, 25},  {9, 36},               // equivalent stresses
    {34, 10}, {35, 11}, {36, 12}, {37, 13},    // top
    {38, 21}, {39, 22}, {40, 23}, {41, 24},    // mid surface
    {42, 32}, {43, 33}, {44, 34}, {45, 35},    // bottom
};
// clang-format on

// All arithmetic is in double precision: a single-precision record is widened before it and rounded once after it.
template <class REAL>
void update_principal_values(REAL* res) {
  double work[RES_LENGTH] = {};
  const RES_BLOCK W(work);
  const VECTOR_VIEW<REAL> RES(res);
  for (const column_pair& c : INPUT_COLUMNS) W(c.work) = static_cast<double>(RES(c.res100));
  PRINCIPAUX_PLA(work, RES_LENGTH);
  for (const column_pair& c : OUTPUT_COLUMNS) RES(c.res100) = static_cast<REAL>(W(c.work));
}

}  // namespace

void UPDATE_PRINCIPAUX_RES100_PLA(float* res) { update_principal_values(res); }

void UPDATE_PRINCIPAUX_RES100_PLA_DBL(double* res) { update_principal_values(res); }
