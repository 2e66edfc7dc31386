// yield_linear_segments.cpp: the polyhedron of the beam-column interaction rule with its break at p = 0.2,
//
//   p + 8/9 (my + mz) = 1  for p >= 0.2,    p/2 + my + mz = 1  below
//
// (AISC 360, section H1), with the absolute values of p, my and mz. A segment is one plane: the signs of its forces and
// the side of the break. The gradient of a plane with the signs sp, sy, sz is
//
//     above the break   (sp / CP, 8 sy / (9 CMY), 8 sz / (9 CMZ)),      below   (sp / (2 CP), sy / CMY, sz / CMZ)
//
// The value takes 8/9 in single precision, the gradient divides in double: the two differ in their last digits, which
// are part of the results (docs/decisions.md).
#include <cmath>

#include "finites/fields.h"
#include "finites/finites.h"
#include "hinges/yield_forces.h"

namespace {

constexpr double BREAK = 0.2;  // the axial ratio p at which the two planes of a quadrant meet
constexpr double EIGHT_NINTHS_SINGLE = static_cast<double>(8.0F / 9.0F);

// A plane of the polyhedron: the sign of each force, 0 for one that is not in the set, and the side of the break.
struct ROW {
  int p, my, mz;
  bool above;
};

// The quadrants of two moments, in the order in which the segments count them.
constexpr int QUADRANTS = 4;
constexpr int MY_SIGN[QUADRANTS] = {1, 1, -1, -1};
constexpr int MZ_SIGN[QUADRANTS] = {1, -1, -1, 1};

// The segments of an axial force with one moment, in their order.
struct P_M_ROW {
  int p, m;
  bool above;
};
constexpr P_M_ROW P_M_ROWS[8] = {{1, 1, false},   {1, 1, true},   {1, -1, true}, {1, -1, false},
                                 {-1, -1, false}, {-1, -1, true}, {-1, 1, true}, {-1, 1, false}};

// All three forces: four blocks of quadrants.
struct P_BLOCK {
  int p;
  bool above;
};
constexpr P_BLOCK P_BLOCKS[4] = {{1, true}, {1, false}, {-1, false}, {-1, true}};

std::int32_t segment_count(std::int32_t FS) {
  switch (FS) {
    case ONLY_MY:
    case ONLY_MZ: return 2;
    case P_AND_MY:
    case P_AND_MZ: return 8;
    case MY_AND_MZ: return QUADRANTS;
    case ALL_FORCES: return 4 * QUADRANTS;
    default: return 0;  // an axial force alone has no segment
  }
}

// A segment that does not exist has a row of zeros.
ROW row_of(std::int32_t FS, std::int32_t S) {
  if (S < 1 || S > segment_count(FS)) return {0, 0, 0, false};
  const std::int32_t quadrant = (S - 1) % QUADRANTS;
  switch (FS) {
    case ONLY_MY: return {0, S == 1 ? 1 : -1, 0, false};
    case ONLY_MZ: return {0, 0, S == 1 ? 1 : -1, false};
    case P_AND_MY: return {P_M_ROWS[S - 1].p, P_M_ROWS[S - 1].m, 0, P_M_ROWS[S - 1].above};
    case P_AND_MZ: return {P_M_ROWS[S - 1].p, 0, P_M_ROWS[S - 1].m, P_M_ROWS[S - 1].above};
    case MY_AND_MZ: return {0, MY_SIGN[quadrant], MZ_SIGN[quadrant], false};
    default: break;
  }
  const P_BLOCK& block = P_BLOCKS[(S - 1) / QUADRANTS];
  return {block.p, MY_SIGN[quadrant], MZ_SIGN[quadrant], block.above};
}

// The left side of the equation of a plane.
double value(const ROW& row, double p, double my, double mz) {
  const double c_p = row.above ? 1.0 : 0.5;
  const double c_m = row.above ? EIGHT_NINTHS_SINGLE : 1.0;
  double sum = 0.0;
  if (row.p != 0) sum += row.p * c_p * p;
  if (row.my != 0) sum += row.my * c_m * my;
  if (row.mz != 0) sum += row.mz * c_m * mz;
  return sum;
}

double slope_of_p(const ROW& row, double CP) { return row.p == 0 ? 0.0 : row.p * (row.above ? 1.0 : 0.5) / CP; }

double slope_of_m(int sign, bool above, double CM) {
  if (sign == 0) return 0.0;
  return above ? sign * 8.0 / (9.0 * CM) : sign / CM;
}

// Appends segments to the caller's list.
struct SEGMENT_LIST {
  std::int32_t* NEQ;
  std::int32_t* SEG;
  void add(std::int32_t segment) const { SEG[(*NEQ)++] = segment; }
};

// p = 0 belongs to the positive side. A NaN in p or m finds no segment.
void add_p_m(double p, double m, const SEGMENT_LIST& list) {
  for (std::int32_t S = 1; S <= 8; ++S) {
    const P_M_ROW& row = P_M_ROWS[S - 1];
    const bool side = row.p > 0 ? p >= 0.0 : p < 0.0;
    const bool range = row.above ? std::fabs(p) >= BREAK : std::fabs(p) < BREAK;
    const bool moment = row.m > 0 ? m >= 0.0 : m < 0.0;
    if (side && range && moment) list.add(S);
  }
}

// A moment of exactly 0 belongs to both of its sides.
void add_quadrants(std::int32_t base, double my, double mz, const SEGMENT_LIST& list) {
  for (std::int32_t quadrant = 0; quadrant < QUADRANTS; ++quadrant) {
    const bool first = MY_SIGN[quadrant] > 0 ? my >= 0.0 : my <= 0.0;
    const bool second = MZ_SIGN[quadrant] > 0 ? mz >= 0.0 : mz <= 0.0;
    if (first && second) list.add(base + quadrant + 1);
  }
}

void add_all_forces(double p, double my, double mz, const SEGMENT_LIST& list) {
  for (std::int32_t block = 0; block < 4; ++block) {
    const bool side = P_BLOCKS[block].p > 0 ? p >= 0.0 : p < 0.0;
    const bool range = P_BLOCKS[block].above ? std::fabs(p) >= BREAK : std::fabs(p) < BREAK;
    if (side && range) add_quadrants(block * QUADRANTS, my, mz, list);
  }
}

void add_segments(std::int32_t FS, double p, double my, double mz, const SEGMENT_LIST& list) {
  switch (FS) {
    case ONLY_MY: list.add(my < 0.0 ? 2 : 1); break;
    case ONLY_MZ: list.add(mz < 0.0 ? 2 : 1); break;
    case P_AND_MY: add_p_m(p, my, list); break;
    case P_AND_MZ: add_p_m(p, mz, list); break;
    case MY_AND_MZ: add_quadrants(0, my, mz, list); break;
    case ALL_FORCES: add_all_forces(p, my, mz, list); break;
    default: break;
  }
}

}  // namespace

// Without any moment all four quadrants meet: three equations already determine the point, and the fourth is dropped.
void LINEAR_SEGMENT_EQUATION(const double* CP, const double* CMY, const double* CMZ, const int32_t* FS, const double* P,
                             const double* MY, const double* MZ, int32_t* NEQ, int32_t* SEG) {
  *NEQ = 0;
  for (int i = 0; i < SEGMENTS; ++i) SEG[i] = 0;
  if (!has_capacity(*CP, *CMY, *CMZ)) return;
  add_segments(*FS, *P / *CP, *MY / *CMY, *MZ / *CMZ, {NEQ, SEG});
  if (*NEQ == SEGMENTS) {
    SEG[SEGMENTS - 1] = 0;
    *NEQ = SEGMENTS - 1;
  }
}

void PHI_LINEAR_SEGMENT(const int32_t* SEG, const double* CP, const double* CMY, const double* CMZ, const int32_t* FS,
                        const double* P, const double* MY, const double* MZ, double* PHI) {
  for (int i = 0; i < SEGMENTS; ++i) PHI[i] = 0.0;
  if (!has_capacity(*CP, *CMY, *CMZ)) return;
  for (int i = 0; i < SEGMENTS; ++i) {
    if (SEG[i] > 0) PHI[i] = value(row_of(*FS, SEG[i]), *P / *CP, *MY / *CMY, *MZ / *CMZ);
  }
}

void LINEAR_SEGMENT_GRADIENT(const int32_t* FS, const int32_t* S, const double* CP, const double* CMY,
                             const double* CMZ, const double* /*P*/, const double* /*MY*/, const double* /*MZ*/,
                             double* DP, double* DMY, double* DMZ) {
  *DP = *DMY = *DMZ = 0.0;
  if (!has_capacity(*CP, *CMY, *CMZ)) return;
  const ROW row = row_of(*FS, *S);
  *DP = slope_of_p(row, *CP);
  *DMY = slope_of_m(row.my, row.above, *CMY);
  *DMZ = slope_of_m(row.mz, row.above, *CMZ);
}
