// yield_curves.cpp: the active yield equations of a member and their gradients, for the three families of curves.
//
// Each end that yields stands on its curve PHI(P, My, Mz), and its plastic flow follows the normal of the curve: the
// column of an equation has dPHI/dP, dPHI/dMy and dPHI/dMz in the rows of P, My and Mz of its end, zeros elsewhere. At
// a corner of linear segments several are active, each with a column of its own.
#include "hinges/yield_curves.h"

#include <algorithm>

#include "common/member_order.h"
#include "finites/fields.h"
#include "finites/finites.h"

namespace {

constexpr int ROW_P = 1, ROW_MY = 5, ROW_MZ = 6;  // of the first end; six further down of the second
constexpr int FIRST_END = 1, SECOND_END = 2;

// Those of now, not those at which the hinge has formed.
SECTION_FORCES forces_of_end(std::int32_t end, const std::int32_t* IELEM, const double* A, const std::int32_t* NDIM,
                             const std::int32_t* POS, const std::int32_t* FMODE) {
  constexpr std::int32_t current = 1;
  SECTION_FORCES f;
  SECTION_FORCES load;
  GET_HINGE_FORCES(IELEM, A, NDIM, POS, FMODE, &end, &current, &f.P, &f.MY, &f.MZ, &load.P, &load.MY, &load.MZ);
  return f;
}

// (dPHI/dP, dPHI/dMy, dPHI/dMz) of the curve of the record.
SECTION_FORCES gradient(const HINGE_RECORD& h, std::int32_t segment, const SECTION_FORCES& f) {
  SECTION_FORCES g{0.0, 0.0, 0.0};
  const std::int32_t* const FS = &h.FORCE_SET;
  switch (h.CURVE_KIND) {
    case SINGLE_FORCES:
      SINGLE_FORCES_CURVE_GRADIENT(&segment, FS, &h.CAP_P, &h.CAP_MY, &h.CAP_MZ, &f.P, &f.MY, &f.MZ, &g.P, &g.MY,
                                   &g.MZ);
      break;
    case ORBISON:
      ORBISON_CURVE_GRADIENT(FS, &h.CAP_P, &h.CAP_MY, &h.CAP_MZ, &f.P, &f.MY, &f.MZ, &g.P, &g.MY, &g.MZ);
      break;
    case LINEAR_SEGMENTS:
      LINEAR_SEGMENT_GRADIENT(FS, &segment, &h.CAP_P, &h.CAP_MY, &h.CAP_MZ, &f.P, &f.MY, &f.MZ, &g.P, &g.MY, &g.MZ);
      break;
    default: break;
  }
  return g;
}

void count_single(const HINGE_RECORD& h, const SECTION_FORCES& f, std::int32_t& count, std::int32_t* SEG) {
  SINGLE_FORCES_SEGMENT_EQUATION(&h.CAP_P, &h.CAP_MY, &h.CAP_MZ, &h.FORCE_SET, &f.P, &f.MY, &f.MZ, &count, SEG);
}

// The segments that the record names; without any the end still has one equation.
void count_segments(const VECTOR<SEGMENTS, std::int32_t>& of_record, std::int32_t& count,
                    VECTOR<SEGMENTS, std::int32_t>& SEG) {
  SEG = of_record;
  count = std::max(positive_entries(SEG.data()), 1);
}

// Adds a column for each of the first `count` places that holds a segment. Returns the number of columns in use.
int add_segment_columns(const HINGE_RECORD& h, const SECTION_FORCES& f, std::int32_t count,
                        const VECTOR<SEGMENTS, std::int32_t>& SEG, std::int32_t end, int columns, FLOW_COLUMN* N) {
  for (int i = 1; i <= std::min(count, SEGMENTS); ++i) {
    if (SEG(i) > 0) N[columns++] = {end, gradient(h, SEG(i), f)};
  }
  return columns;
}

}  // namespace

HINGE_FORCES hinge_forces(const HINGE_RECORD& hinge, const std::int32_t* IELEM, const double* A,
                          const std::int32_t* NDIM, const std::int32_t* POS, const std::int32_t* FMODE) {
  HINGE_FORCES forces{};
  if (hinge.CURVE_KIND != SINGLE_FORCES && hinge.CURVE_KIND != ORBISON) return forces;
  if (hinge.END1_STATE == YIELDING) forces.END1 = forces_of_end(1, IELEM, A, NDIM, POS, FMODE);
  if (hinge.END2_STATE == YIELDING) forces.END2 = forces_of_end(2, IELEM, A, NDIM, POS, FMODE);
  return forces;
}

void count_equations(const HINGE_RECORD& hinge, const HINGE_FORCES& forces, ACTIVE_EQUATIONS& equations) {
  ACTIVE_EQUATIONS& e = equations;
  e.NTOT = e.N1 = e.N2 = 0;
  const bool first = hinge.END1_STATE == YIELDING;
  const bool second = hinge.END2_STATE == YIELDING;
  switch (hinge.CURVE_KIND) {
    case SINGLE_FORCES:
      e.NTOT = 2;
      e.N1 = e.N2 = 1;
      if (first) count_single(hinge, forces.END1, e.N1, e.SEG1.data());
      if (second) count_single(hinge, forces.END2, e.N2, e.SEG2.data());
      break;
    case ORBISON:
      e.NTOT = 2;
      e.N1 = e.N2 = 1;
      break;
    case LINEAR_SEGMENTS:
      e.N1 = e.N2 = 1;
      if (first) count_segments(hinge.END1_SEG, e.N1, e.SEG1);
      if (second) count_segments(hinge.END2_SEG, e.N2, e.SEG2);
      e.NTOT = e.N1 + e.N2;
      break;
    default: break;
  }
}

void set_flow_columns(const HINGE_RECORD& hinge, const HINGE_FORCES& forces, const ACTIVE_EQUATIONS& equations,
                      FLOW_COLUMN* columns) {
  const ACTIVE_EQUATIONS& e = equations;
  switch (hinge.CURVE_KIND) {
    case SINGLE_FORCES:
    case ORBISON:
      if (hinge.END1_STATE == YIELDING) columns[0] = {FIRST_END, gradient(hinge, e.SEG1(1), forces.END1)};
      if (hinge.END2_STATE == YIELDING) columns[1] = {SECOND_END, gradient(hinge, e.SEG2(1), forces.END2)};
      break;
    case LINEAR_SEGMENTS: {
      const int first = add_segment_columns(hinge, forces.END1, e.N1, e.SEG1, FIRST_END, 0, columns);
      // The first end keeps a column of zeros.
      add_segment_columns(hinge, forces.END2, e.N2, e.SEG2, SECOND_END, std::max(first, 1), columns);
      break;
    }
    default: break;
  }
}

void write_columns(const FLOW_COLUMN* columns, int count, double* N) {
  const MATRIX_VIEW<MEMBER_DOFS> NV(N);
  for (int j = 1; j <= count; ++j) {
    const FLOW_COLUMN& column = columns[j - 1];
    if (column.end == 0) continue;
    const int before = column.end == SECOND_END ? MEMBER_DOFS / 2 : 0;
    NV(before + ROW_P, j) = column.n.P;
    NV(before + ROW_MY, j) = column.n.MY;
    NV(before + ROW_MZ, j) = column.n.MZ;
  }
}

void GET_YIELD_CURVE_EQ_COUNT(const int32_t* IELEM, const double* A, const int32_t* NDIM, const int32_t* FMODE,
                              int32_t* NTOT, int32_t* N1, int32_t* N2, int32_t* SEG1, int32_t* SEG2) {
  const std::int32_t pos = SOLANAELEM.ELEM_POS(*IELEM);
  if (!HAS_ELEMENT(SOLANAELEM.HINGE_REC, pos)) {
    *NTOT = *N1 = *N2 = 0;
    return;
  }
  const HINGE_RECORD& hinge = SOLANAELEM.HINGE_REC(pos);
  ACTIVE_EQUATIONS e;
  std::copy_n(SEG1, SEGMENTS, e.SEG1.data());
  std::copy_n(SEG2, SEGMENTS, e.SEG2.data());
  count_equations(hinge, hinge_forces(hinge, IELEM, A, NDIM, &pos, FMODE), e);
  *NTOT = e.NTOT;
  *N1 = e.N1;
  *N2 = e.N2;
  std::copy_n(e.SEG1.data(), SEGMENTS, SEG1);
  std::copy_n(e.SEG2.data(), SEGMENTS, SEG2);
}

void GET_YIELD_CURVE_DERIVATIVES(const int32_t* IELEM, const double* A, const int32_t* NDIM, const int32_t* FMODE,
                                 double* NMAT, const int32_t* NTOT, const int32_t* N1, const int32_t* N2,
                                 const int32_t* SEG1, const int32_t* SEG2) {
  const std::int32_t pos = SOLANAELEM.ELEM_POS(*IELEM);
  if (!HAS_ELEMENT(SOLANAELEM.HINGE_REC, pos)) return;
  const HINGE_RECORD& hinge = SOLANAELEM.HINGE_REC(pos);
  ACTIVE_EQUATIONS e{*NTOT, *N1, *N2, {}, {}};
  std::copy_n(SEG1, SEGMENTS, e.SEG1.data());
  std::copy_n(SEG2, SEGMENTS, e.SEG2.data());
  FLOW_COLUMN columns[MOST_EQUATIONS] = {};
  set_flow_columns(hinge, hinge_forces(hinge, IELEM, A, NDIM, &pos, FMODE), e, columns);
  write_columns(columns, MOST_EQUATIONS, NMAT);
}
