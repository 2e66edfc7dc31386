// through_thickness.cpp: rule, section matrices and first state of the layered plate.
//
//     z(k) = (1 - xi) / 2 (-t/2) + (1 + xi) / 2 (t/2),      xi(k), w(k) of the Gauss-Lobatto rule
//
//     D(r, c) = sum_k  C(r, c, k) z^power w t / 2
//
//     membrane    rows 1-3, columns 1-3, power 0        shear       rows 4-5, columns 4-5, power 0
//     coupling    rows 1-3, columns 1-3, power 1        memshear    rows 1-3, columns 4-5, power 0
//     bending     rows 1-3, columns 1-3, power 2        bendshear   rows 1-3, columns 4-5, power 1
//
// C(5, 5, k) is the tangent of thickness point k: xx, yy, xy, xz, yz.
#include "plate_material/through_thickness.h"

#include <algorithm>
#include <cmath>

#include "common/array_columns.h"
#include "finites/records.h"
#include "finites/thickness_rule.h"

namespace {

constexpr std::int32_t SKIPPED_RULE = 2;  // a selector without a rule: nothing is written

bool known(std::int32_t n) { return n >= 3 && n <= MOST_THICKNESS_POINTS && n % 2 == 1; }

// The rule of the section matrices; zeros for a count or a selector without one.
struct RULE {
  double xi[MOST_THICKNESS_POINTS] = {};
  double w[MOST_THICKNESS_POINTS] = {};
  std::int32_t points;  // whose weight is not zero

  RULE(std::int32_t selector, std::int32_t n) : points(known(n) && selector != SKIPPED_RULE ? n : 0) {
    if (points > 0) THICK_INT_POINTS(selector, n, xi, w);
  }
};

double height(double xi, double t) { return (1.0 - xi) * (-t / 2.0) / 2.0 + (1.0 + xi) * (t / 2.0) / 2.0; }

// w z^power t / 2 at a point of the rule.
double moment_weight(const PLATEELEM_RECORD& EL, const RULE& rule, std::int32_t k, int power) {
  double weight = rule.w[k - 1];
  for (int i = 0; i < power; ++i) weight *= height(rule.xi[k - 1], EL.THICKNESS);
  return weight * EL.THICKNESS / 2.0;
}

// D(r, c) = the sum of TANGENT(r + first row, c + first column, k) times the weight of point k.
template <int ROWS, int COLUMNS>
void integrate(const PLATEELEM_RECORD& EL, const RULE& rule, const POINT_STATE_RECORD& state, int first_row,
               int first_column, int power, MATRIX<ROWS, COLUMNS>& D) {
  D = MATRIX<ROWS, COLUMNS>{};
  for (std::int32_t k = 1; k <= rule.points; ++k) {
    const double weight = moment_weight(EL, rule, k, power);
    for (int c = 1; c <= COLUMNS; ++c) {
      for (int r = 1; r <= ROWS; ++r) D(r, c) += state.TANGENT(r + first_row, c + first_column, k) * weight;
    }
  }
}

template <int ROWS, int COLUMNS>
void section_matrix(const PLATEELEM_RECORD& EL, std::int32_t n, std::int32_t selector, std::int32_t plate,
                    std::int32_t gp, int first_row, int first_column, int power, MATRIX<ROWS, COLUMNS>& D) {
  const auto& points = SOLANAELEM.PLATE_STATE(plate).POINT_STATE;
  integrate(EL, RULE(selector, n), points(gp), first_row, first_column, power, D);
}

}  // namespace

void THICK_INT_POINTS(std::int32_t selector, std::int32_t n, double* xi, double* w) {
  if (selector != SKIPPED_RULE) THICKNESS_RULE(n, xi, w);
}

void DSEC_MEMBRANE(const PLATEELEM_RECORD& EL, std::int32_t n, std::int32_t selector, std::int32_t plate,
                   std::int32_t gp, MATRIX<3, 3>& D) {
  section_matrix(EL, n, selector, plate, gp, 0, 0, 0, D);
}

void DSEC_COUPLING(const PLATEELEM_RECORD& EL, std::int32_t n, std::int32_t selector, std::int32_t plate,
                   std::int32_t gp, MATRIX<3, 3>& D) {
  section_matrix(EL, n, selector, plate, gp, 0, 0, 1, D);
}

void DSEC_BENDING(const PLATEELEM_RECORD& EL, std::int32_t n, std::int32_t selector, std::int32_t plate,
                  std::int32_t gp, MATRIX<3, 3>& D) {
  section_matrix(EL, n, selector, plate, gp, 0, 0, 2, D);
}

void DSEC_SHEAR(const PLATEELEM_RECORD& EL, std::int32_t n, std::int32_t selector, std::int32_t plate, std::int32_t gp,
                MATRIX<2, 2>& D) {
  section_matrix(EL, n, selector, plate, gp, 3, 3, 0, D);
}

void DSEC_MEMSHEAR(const PLATEELEM_RECORD& EL, std::int32_t n, std::int32_t selector, std::int32_t plate,
                   std::int32_t gp, MATRIX<3, 2>& D) {
  section_matrix(EL, n, selector, plate, gp, 0, 3, 0, D);
}

void DSEC_BENDSHEAR(const PLATEELEM_RECORD& EL, std::int32_t n, std::int32_t selector, std::int32_t plate,
                    std::int32_t gp, MATRIX<3, 2>& D) {
  section_matrix(EL, n, selector, plate, gp, 0, 3, 1, D);
}

THICKNESS_SECTION::THICKNESS_SECTION(std::int32_t n, double thickness) {
  const RULE rule(LOBATTO_POINTS, n);
  points = rule.points;
  for (std::int32_t k = 0; k < points; ++k) {
    const double z = ::height(rule.xi[k], thickness);
    const double w = rule.w[k];
    height[k] = z;
    weights[k] = LANES{w * thickness / 2.0, w * z * thickness / 2.0};
    z2_weight[k] = w * z * z * thickness / 2.0;
  }
}

namespace {

// The sums of a section, two powers of z side by side.
struct SECTION_SUMS {
  LANES in_plane[3][3] = {};  // membrane, coupling; by columns
  double bending[3][3] = {};
  LANES with_shear[2][3] = {};  // memshear, bendshear
  double shear[2][2] = {};

  // column(c) gives column c of the tangent of point k.
  template <class COLUMN>
  void add(const THICKNESS_SECTION& rule, std::int32_t k, int theory, COLUMN column) {
    const LANES w = rule.weights[k];
    const double w2 = rule.z2_weight[k];
    for (int c = 0; c < 3; ++c) {
      const auto C = column(c + 1);
      for (int r = 0; r < 3; ++r) {
        in_plane[c][r] = in_plane[c][r] + C(r + 1) * w;
        bending[c][r] += C(r + 1) * w2;
      }
    }
    if (theory == THIN_THEORY) return;
    for (int c = 0; c < 2; ++c) {
      const auto C = column(c + 4);
      for (int r = 0; r < 3; ++r) with_shear[c][r] = with_shear[c][r] + C(r + 1) * w;
      for (int r = 0; r < 2; ++r) shear[c][r] += C(r + 4) * w[0];
    }
  }

  void give_to(SECTION_INTEGRALS& D) const {
    for (int c = 0; c < 3; ++c) {
      for (int r = 0; r < 3; ++r) {
        D.membrane(r + 1, c + 1) = in_plane[c][r][0];
        D.coupling(r + 1, c + 1) = in_plane[c][r][1];
        D.bending(r + 1, c + 1) = bending[c][r];
      }
    }
    for (int c = 0; c < 2; ++c) {
      for (int r = 0; r < 3; ++r) {
        D.memshear(r + 1, c + 1) = with_shear[c][r][0];
        D.bendshear(r + 1, c + 1) = with_shear[c][r][1];
      }
      for (int r = 0; r < 2; ++r) D.shear(r + 1, c + 1) = shear[c][r];
    }
  }
};

}  // namespace

void integrate_section(const THICKNESS_SECTION& rule, int theory, const POINT_STATE_RECORD& state,
                       SECTION_INTEGRALS& D) {
  SECTION_SUMS sums;
  for (std::int32_t k = 0; k < rule.points; ++k) {
    sums.add(rule, k, theory, [&](int c) { return column_of(state.TANGENT, c, k + 1); });
  }
  sums.give_to(D);
}

void integrate_section(const THICKNESS_SECTION& rule, int theory, const MATRIX<5, 5>& C, SECTION_INTEGRALS& D) {
  SECTION_SUMS sums;
  for (std::int32_t k = 0; k < rule.points; ++k) {
    sums.add(rule, k, theory, [&](int c) { return VECTOR_VIEW<const double>(&C(1, c)); });
  }
  sums.give_to(D);
}

THICKNESS_STATIONS::THICKNESS_STATIONS(std::int32_t n, double thickness) {
  const RULE rule(LOBATTO_POINTS, n);
  known_ = rule.points;
  for (std::int32_t k = 0; k < known_; ++k) z_[k] = height(rule.xi[k], thickness);
}

// (n + 1) / 2, formed in single precision and rounded away from zero at a half.
std::int32_t middle_point(std::int32_t n) {
  const float half = static_cast<float>(static_cast<std::int64_t>(n) + 1) / 2.0F;
  return static_cast<std::int32_t>(std::lround(half));
}

namespace {

// Whether the last dimension of an array covers 1 to n.
template <class T, int RANK>
bool reaches(const ARRAY_REFERENCE<T, RANK>& reference, std::int32_t n) {
  const ARRAY_DIMENSION& last = reference.DIMENSION[RANK - 1];
  return ALLOCATED(reference) && last.LOWER <= 1 && n - last.LOWER < last.EXTENT;
}

bool complete(const POINT_STATE_RECORD& s, std::int32_t n) {
  return reaches(s.SIG, n) && reaches(s.EP_START, n) && reaches(s.EP_CUR, n) && reaches(s.EP_INC, n) &&
         reaches(s.EPBAR_START, n) && reaches(s.EPBAR_CUR, n) && reaches(s.TANGENT, n);
}

template <class T>
void clear(const ARRAY_REFERENCE<T, 1>& a) {
  const ARRAY_DIMENSION& d = a.DIMENSION[0];
  for (std::int64_t i = 0; i < d.EXTENT; ++i) a(d.LOWER + i) = 0.0;
}

template <class T>
void clear(const ARRAY_REFERENCE<T, 2>& a) {
  const ARRAY_DIMENSION& rows = a.DIMENSION[0];
  const ARRAY_DIMENSION& columns = a.DIMENSION[1];
  for (std::int64_t j = 0; j < columns.EXTENT; ++j) {
    for (std::int64_t i = 0; i < rows.EXTENT; ++i) a(rows.LOWER + i, columns.LOWER + j) = 0.0;
  }
}

constexpr double FIVE_SIXTHS_SINGLE = 0.8333333134651184;  // single precision: part of the results (docs/decisions.md)

// The elastic matrix of layered_matrices.cpp, whose factor of the shears is 5/12 in one piece: here 5/6 times half,
// with the same bits. Shears are set in thin elements too.
void set_elastic_tangent(const PLATEELEM_RECORD& EL, const ARRAY_REFERENCE<double, 3>& C, std::int32_t n) {
  const double E = EL.E1;
  const double nu = EL.NU1;
  for (std::int32_t k = 1; k <= n; ++k) {
    for (int c = 1; c <= 5; ++c) {
      for (int r = 1; r <= 5; ++r) C(r, c, k) = 0.0;
    }
    C(1, 1, k) = C(2, 2, k) = E / (1.0 - nu * nu);
    C(1, 2, k) = C(2, 1, k) = nu * E / (1.0 - nu * nu);
    C(3, 3, k) = 0.5 * E / (1.0 + nu);
    C(4, 4, k) = C(5, 5, k) = FIVE_SIXTHS_SINGLE * (0.5 * E) / (1.0 + nu);
  }
}

}  // namespace

const ARRAY_REFERENCE<POINT_STATE_RECORD, 1>* layered_state_of(const PLATE_STATE_IN_USE& state) {
  if (state.record == nullptr) return nullptr;
  const ARRAY_REFERENCE<POINT_STATE_RECORD, 1>& points = state.record->POINT_STATE;
  for (int gp = 1; gp <= 4; ++gp) {
    if (!HAS_ELEMENT(points, gp) || !complete(points(gp), state.thickness_points)) return nullptr;
  }
  return &points;
}

void LAYERED_STATE_INIT(const PLATEELEM_RECORD& EL, const PLATE_STATE_IN_USE& state) {
  const ARRAY_REFERENCE<POINT_STATE_RECORD, 1>* const points = layered_state_of(state);
  if (points == nullptr) return;
  for (int gp = 1; gp <= 4; ++gp) {
    const POINT_STATE_RECORD& s = (*points)(gp);
    clear(s.SIG);
    clear(s.EP_START);
    clear(s.EP_CUR);
    clear(s.EP_INC);
    clear(s.EPBAR_START);
    clear(s.EPBAR_CUR);
    set_elastic_tangent(EL, s.TANGENT, state.thickness_points);
  }
}
