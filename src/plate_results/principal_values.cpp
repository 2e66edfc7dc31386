// principal_values.cpp: PRINCIPAUX_PLA (Mohr's circle and the equivalent stress of von Mises, at top, mid surface and
// bottom) and the two routines by which a solver applies it to its own record.
//
//     angle = atan2(2 sxy, sx - sy) / 2,    s1, s2 = (sx + sy) / 2 +- r,    tau = r
//     r = sqrt(((sx - sy) / 2)^2 + sxy^2),    equivalent = sqrt(s1^2 + s2^2 - s1 s2)
//
// The angle goes from the local x axis to the direction of s1, in radians.
#include "plate_results/principal_values.h"

#include <cmath>

#include "common/lanes.h"
#include "finites/fields.h"
#include "finites/finites.h"
#include "plate_results/res_record.h"

namespace {

// A deviator at or below it has no direction, and its angle is 0: absolute for the whole record, in the stress unit of
// the model, and relative to the largest deviator of the record for each surface. Rounding of an equal biaxial state
// would otherwise give an arbitrary angle.
constexpr double STRESS_FLOOR = 1e-09;
constexpr double PI = 3.14159265358979323846;

// Each LANES has one value of each of two records.
struct plane_stress {
  LANES sx, sy, sxy;
};

LANES read_column(const double* const (&records)[2], int column) {
  return LANES{records[0][column - 1], records[1][column - 1]};
}

plane_stress read_stress(const double* const (&records)[2], int column) {
  return {read_column(records, column), read_column(records, column + 1), read_column(records, column + 2)};
}

void write_column(double* const (&records)[2], int column, LANES v) {
  records[0][column - 1] = v[0];
  records[1][column - 1] = v[1];
}

LANES largest(LANES a, LANES b) { return a <= b ? b : a; }

// The order matters for NaN: `largest` keeps its first argument unless a <= b, so a NaN in the first stress stays and
// gives the angle 0, one in a later stress is passed over.
LANES scale_of(const plane_stress& top, const plane_stress& mid, const plane_stress& bottom) {
  LANES scale = magnitude(bottom.sxy);
  scale = largest(scale, magnitude(bottom.sx - bottom.sy));
  scale = largest(scale, magnitude(mid.sxy));
  scale = largest(scale, magnitude(mid.sx - mid.sy));
  scale = largest(scale, magnitude(top.sxy));
  return largest(scale, magnitude(top.sx - top.sy));
}

// A surface has a direction when its deviation from an equal biaxial state exceeds STRESS_FLOOR times the largest of
// the record.
LANE_BITS has_direction(const plane_stress& s, LANES scale) {
  const LANES floor = both(STRESS_FLOOR);
  return (scale > floor) & ((magnitude(s.sx - s.sy) / scale > floor) | (magnitude(s.sxy) / scale > floor));
}

// atan(z) / z - 1 = z^2 P(z^2) for |z| <= tan(pi / 8): the polynomial through eleven Chebyshev points of z^2, within
// 1e-17 of the series. Its terms are summed in pairs of pairs, so that they need not wait for each other.
LANES arc_tangent(LANES z) {
  const LANES x = z * z;
  const LANES x2 = x * x;
  const LANES x4 = x2 * x2;
  const LANES p0 =
      (-0.3333333333333333 + 0.19999999999995516 * x) + (-0.14285714284665682 + 0.11111111015187018 * x) * x2;
  const LANES p4 =
      (-0.0909090457530649 + 0.07692183125376892 * x) + (-0.06664510525508936 + 0.05858140904866328 * x) * x2;
  const LANES p8 = (-0.050854078345894844 + 0.03923044778479309 * x) + -0.019175404711104935 * x2;
  return z + z * (x * (p0 + (p4 + p8 * x4) * x4));
}

// With r the radius of the circle and d half the difference of the stresses, tan(angle) = sxy / (r + d) where d is not
// negative, and cot(angle) = sxy / (r - d) where it is: a number between -1 and 1, of which 1 is taken out above
// tan(pi / 8) by atan t = pi/4 + atan((t - 1) / (t + 1)).
LANES angle_of(LANES d, LANES r, LANES sxy) {
  const LANES y = magnitude(sxy);
  const LANES x = r + magnitude(d);
  const LANE_BITS wide = y > 0.4142135623730951 * x;
  const LANES t = arc_tangent((wide ? y - x : y) / (wide ? y + x : x)) + where(wide, both(PI / 4.0));
  return with_signs(d < both(0.0) ? PI / 2.0 - t : t, sxy);
}

struct principal_stress {
  LANES angle, s1, s2, tau;
};

principal_stress principal_of(const plane_stress& s, LANES scale) {
  const LANES c = (s.sx + s.sy) * 0.5;
  const LANES d = (s.sx - s.sy) * 0.5;
  const LANES r = root(d * d + s.sxy * s.sxy);
  LANES angle = angle_of(d, r, s.sxy);
  // Stresses whose squares overflow.
  for (int i = 0; i < 2; ++i) {
    if (!std::isfinite(r[i])) angle[i] = 0.5 * std::atan2(s.sxy[i] + s.sxy[i], s.sx[i] - s.sy[i]);
  }
  return {where(has_direction(s, scale), angle), c + r, c - r, r};
}

LANES equivalent_of(const principal_stress& p) { return root((p.s1 * p.s1 + p.s2 * p.s2) - p.s1 * p.s2); }

void write_principal(double* const (&records)[2], int column, const principal_stress& p, LANES equivalent) {
  write_column(records, column, p.angle);
  write_column(records, column + 1, p.s1);
  write_column(records, column + 2, p.s2);
  write_column(records, column + 3, p.tau);
  write_column(records, column + 4, equivalent);
}

}  // namespace

void principal_values_of_two(double* first, double* second) {
  double* const out[2] = {first, second};
  const double* const in[2] = {first, second};
  const plane_stress top = read_stress(in, COL_STRESS_TOP);
  const plane_stress mid = read_stress(in, COL_STRESS_MID);
  const plane_stress bottom = read_stress(in, COL_STRESS_BOTTOM);
  const LANES scale = scale_of(top, mid, bottom);
  const principal_stress p_top = principal_of(top, scale);
  const principal_stress p_mid = principal_of(mid, scale);
  const principal_stress p_bottom = principal_of(bottom, scale);

  // On the mid surface, where the bending stress is zero, the transverse shear enters as sqrt(3 (txz^2 + tyz^2)), added
  // to the plane value and not combined with it under one root: part of the results (docs/decisions.md).
  const LANES txz = read_column(in, COL_SHEAR_STRESS);
  const LANES tyz = read_column(in, COL_SHEAR_STRESS + 1);
  const LANES shear_term = root((txz * txz + tyz * tyz) * 3.0);

  write_principal(out, COL_PRINCIPAL_TOP, p_top, equivalent_of(p_top));
  write_principal(out, COL_PRINCIPAL_MID, p_mid, equivalent_of(p_mid) + shear_term);
  write_principal(out, COL_PRINCIPAL_BOTTOM, p_bottom, equivalent_of(p_bottom));
}

void PRINCIPAUX_PLA(double* rec, int /*n*/) { principal_values_of_two(rec, rec); }

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
