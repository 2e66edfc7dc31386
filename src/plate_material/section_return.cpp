// section_return.cpp: the return mapping of the whole-section model without the zeros of its spectral form.
//
// Every sum runs over the same terms in the same order as the general one of section_update.cpp; those with the
// matrices leave out the products by zero (closed_form.h). The narrow form is the wide one without transverse shears,
// which add zeros.
#include "plate_material/section_return.h"

#include <cmath>

#include "common/lanes.h"
#include "finites/records.h"
#include "plate_material/closed_form.h"
#include "plate_material/plastic_material.h"
#include "plate_material/section_limits.h"

namespace {

// Most points settle in less than ten.
constexpr int USUAL_PASSES = 60;

template <int WIDTH>
FORCE_PAIRS pairs_of(const VECTOR<WIDTH>& v) {
  FORCE_PAIRS s{LANES{v(1), v(2)}, LANES{v(4), v(5)}, LANES{v(3), v(6)}, both(0.0)};
  if constexpr (WIDTH == 8) s.across = LANES{v(7), v(8)};
  return s;
}

template <int WIDTH>
VECTOR<WIDTH> vector_of(const FORCE_PAIRS& s) {
  VECTOR<WIDTH> v;
  v(1) = s.direct[0];
  v(2) = s.direct[1];
  v(3) = s.shear[0];
  v(4) = s.moment[0];
  v(5) = s.moment[1];
  v(6) = s.shear[1];
  if constexpr (WIDTH == 8) {
    v(7) = s.across[0];
    v(8) = s.across[1];
  }
  return v;
}

FORCE_PAIRS doubled(const FORCE_PAIRS& s) { return {2.0 * s.direct, 2.0 * s.moment, 2.0 * s.shear, 2.0 * s.across}; }

// In the order of the components: 1, 2, 3, ..., 8.
double dot(const FORCE_PAIRS& u, const FORCE_PAIRS& v) {
  const LANES d = u.direct * v.direct;
  const LANES m = u.moment * v.moment;
  const LANES s = u.shear * v.shear;
  const LANES q = u.across * v.across;
  return 0.0 + d[0] + d[1] + s[0] + m[0] + m[1] + s[1] + q[0] + q[1];
}

// T v, the strain at the upper face (section_update.cpp): xx, yy, then xy, then the transverse shears.
struct FACE_STRAIN {
  LANES direct;
  double shear;
  LANES across;
};

FACE_STRAIN upper_face(double h, const FORCE_PAIRS& v) {
  return {v.direct + h / 2.0 * v.moment, v.shear[0] + h / 2.0 * v.shear[1], v.across};
}

double dot(const FACE_STRAIN& u, const FACE_STRAIN& v) {
  const LANES d = u.direct * v.direct;
  const LANES q = u.across * v.across;
  return 0.0 + d[0] + d[1] + u.shear * v.shear + q[0] + q[1];
}

// The constants of the yield function and of its hardening.
struct YIELD_SURFACE {
  double h, sy, H;
  LANES quadratic;  // divisors of Qt and Qm
  LANES mixed;      // of Qtm and of the transverse shears

  YIELD_SURFACE(const PLATEELEM_RECORD& EL, double a, double thickness, double yield_stress)
      : h(thickness), sy(yield_stress), H(plastic_modulus(EL)) {
    const double h2 = h * h;
    const double sy2 = sy * sy;
    quadratic = LANES{h2 * sy2, h2 * h2 * sy2 * (a * a)};
    mixed = LANES{ROOT_3_SINGLE * (h2 * h) * sy2 * a * 0.25, h2 * sy2};
  }

  // The same expressions as those of section_update.cpp, two side by side.
  double value(const FORCE_PAIRS& s, double ebar) const {
    const LANES n = s.direct;
    const LANES m = s.moment;
    const LANES shears = 3.0 * s.shear * s.shear;
    const double n_form = n[0] * n[0] + n[1] * n[1] - n[0] * n[1] + shears[0];
    const double m_form = m[0] * m[0] + m[1] * m[1] - m[0] * m[1] + shears[1];
    const LANES alike = n * m;
    const LANES crossed = 0.5 * n * swapped(m);
    const double product = alike[0] + alike[1] - crossed[0] - crossed[1] + 3.0 * s.shear[0] * s.shear[1];
    const LANES squares = s.across * s.across;
    const LANES Q = LANES{n_form, 16.0 * m_form} / quadratic;
    const LANES rest = LANES{product, 3.0 * (squares[0] + squares[1])} / mixed;
    const double k = (sy + H * ebar) / sy;
    return Q[0] + Q[1] + std::fabs(rest[0]) + rest[1] - k * k;
  }
};

bool above(LANES v, double limit) { return v[0] > limit && v[1] > limit; }

// A point on the way back to the yield surface.
class RETURN_PATH {
 public:
  RETURN_PATH(const CLOSED_FORM& closed_form, const YIELD_SURFACE& yield_surface, const FORCE_PAIRS& trial,
              double start)
      : form(closed_form), surface(yield_surface), trial_modes(modes_of(closed_form, trial)), ebar0(start) {}

  // The point at multiplier x: forces, flow 2 P sig, |T flow| and equivalent plastic strain. False when a divisor
  // 2 x LAM + 1 counts as zero.
  bool go_to(double x) {
    const MODE_PAIRS& L = form.eigenvalue;
    d = {2.0 * x * L.first + 1.0, 2.0 * x * L.second + 1.0, 2.0 * x * L.shear + 1.0, 2.0 * x * L.across + 1.0};
    if (!above(d.first, SMALLEST_DIVISOR) || !above(d.second, SMALLEST_DIVISOR) || !above(d.shear, SMALLEST_DIVISOR) ||
        !above(d.across, SMALLEST_DIVISOR)) {
      return false;
    }
    A = {1.0 / d.first, 1.0 / d.second, 1.0 / d.shear, 1.0 / d.across};
    sig = forces_of(form, product(A, trial_modes));
    normal = metric_times(form, sig);
    flow = doubled(normal);
    face = upper_face(surface.h, flow);
    length = std::sqrt(dot(face, face));
    ebar = ebar0 + x * ROOT_2_3_SINGLE * length;
    return true;
  }

  double f() const { return surface.value(sig, ebar); }

  // df / dx (SECTION_DF1).
  double slope(double x) const {
    const MODE_PAIRS& L = form.eigenvalue;
    const MODE_PAIRS dA = {-2.0 * L.first / (d.first * d.first), -2.0 * L.second / (d.second * d.second),
                           -2.0 * L.shear / (d.shear * d.shear), -2.0 * L.across / (d.across * d.across)};
    const FORCE_PAIRS W = metric_times(form, forces_of(form, product(dA, trial_modes)));
    const double H = surface.H;
    const double sy = surface.sy;
    const double c = -2.0 * H * (sy + H * ebar) / (sy * sy);
    const double b1 = dot(sig, W);
    const double b2 = dot(face, upper_face(surface.h, W));
    return 2.0 * b1 + c * ROOT_2_3_SINGLE * length + c * ROOT_2_3_SINGLE * (2.0 * x * b2 / length);
  }

  const CLOSED_FORM& form;
  const YIELD_SURFACE& surface;
  MODE_PAIRS trial_modes;
  double ebar0;
  MODE_PAIRS d, A;
  FORCE_PAIRS sig, normal, flow;
  FACE_STRAIN face;
  double length, ebar;
};

// Newton's method (SECTION_MULT). An infinite or NaN value anywhere on the way makes f or its slope infinite or NaN.
bool find_multiplier(RETURN_PATH& path, double& x) {
  x = 0.0;
  for (int pass = 0; pass < USUAL_PASSES; ++pass) {
    if (!path.go_to(x)) return false;
    const double f = path.f();
    const double df = path.slope(x);
    if (!std::isfinite(f) || !std::isfinite(df) || std::fabs(df) <= SMALLEST_DIVISOR) return false;
    const double y = x - f / df;
    const bool settled = std::fabs(y - x) / (std::fabs(y) + NEWTON_GUARD) <= NEWTON_CONVERGED;
    x = y;
    if (settled) return true;
  }
  return false;
}

template <int WIDTH>
FORCE_PAIRS column_of(const MATRIX<8, 8>& M, int j) {
  FORCE_PAIRS c{rows(M, 1, 2, j), rows(M, 4, 5, j), rows(M, 3, 6, j), both(0.0)};
  if constexpr (WIDTH == 8) c.across = rows(M, 7, 8, j);
  return c;
}

// Column j of X = S D.
FORCE_PAIRS column_of_product(const SPECTRAL_PRODUCT& S, const FORCE_PAIRS& D) {
  return {combined(S.direct, D.direct, D.moment), combined(S.moment, D.direct, D.moment), combined(S.shear, D.shear),
          0.0 + S.across * D.across};
}

// sum += c v.
void add(const FORCE_PAIRS& c, double v, FORCE_PAIRS& sum) {
  sum.direct = sum.direct + c.direct * both(v);
  sum.moment = sum.moment + c.moment * both(v);
  sum.shear = sum.shear + c.shear * both(v);
  sum.across = sum.across + c.across * both(v);
}

// The tangent (SECTION_TANGENT) of the point; false where it would report something or has NaN.
template <int WIDTH>
bool set_tangent(const RETURN_PATH& path, const MATRIX<8, 8>& D8, MATRIX<WIDTH, WIDTH>& C) {
  const SPECTRAL_PRODUCT S(path.form, path.A);
  const VECTOR<WIDTH> v = vector_of<WIDTH>(path.flow);
  FORCE_PAIRS X[WIDTH];
  FORCE_PAIRS Xv{};
  VECTOR<WIDTH> vX;
  for (int j = 1; j <= WIDTH; ++j) {
    X[j - 1] = column_of_product(S, column_of<WIDTH>(D8, j));
    add(X[j - 1], v(j), Xv);
    vX(j) = dot(path.flow, X[j - 1]);
  }
  const YIELD_SURFACE& F = path.surface;
  const double alpha = dot(path.flow, Xv);
  const double beta = 2.0 * F.H * (F.sy + F.H * path.ebar) / (F.sy * F.sy);
  const double divisor = alpha + beta * ROOT_2_3_SINGLE * path.length;
  if (!std::isfinite(divisor) || std::fabs(divisor) <= SMALLEST_DIVISOR) return false;
  for (int j = 1; j <= WIDTH; ++j) {
    const FORCE_PAIRS& x = X[j - 1];
    const double f = vX(j);
    const VECTOR<WIDTH> c = vector_of<WIDTH>({x.direct - Xv.direct * f / divisor, x.moment - Xv.moment * f / divisor,
                                              x.shear - Xv.shear * f / divisor, x.across - Xv.across * f / divisor});
    for (int i = 1; i <= WIDTH; ++i) C(i, j) = c(i);
  }
  return true;
}

}  // namespace

template <int WIDTH>
bool closed_form_return(const PLATEELEM_RECORD& EL, double a, double h, double sy, const VECTOR<WIDTH>& trial,
                        const VECTOR<WIDTH>& p0, double ebar0, SECTION_ANSWER<WIDTH>& to, VECTOR<WIDTH>& p) {
  const CLOSED_FORM form(EL);
  const YIELD_SURFACE surface(EL, a, h, sy);
  RETURN_PATH path(form, surface, pairs_of(trial), ebar0);
  double x = 0.0;
  if (!find_multiplier(path, x) || x < 0.0 || !path.go_to(x)) return false;
  if (!std::isfinite(path.f()) || !set_tangent(path, EL.D8, to.C)) return false;
  to.sig = vector_of<WIDTH>(path.sig);
  to.ebar = path.ebar;
  const VECTOR<WIDTH> n = vector_of<WIDTH>(path.normal);
  for (int i = 1; i <= WIDTH; ++i) p(i) = p0(i) + 2.0 * x * n(i);
  return true;
}

template bool closed_form_return<8>(const PLATEELEM_RECORD& EL, double, double, double, const VECTOR<8>&,
                                    const VECTOR<8>&, double, SECTION_ANSWER<8>&, VECTOR<8>&);
template bool closed_form_return<6>(const PLATEELEM_RECORD& EL, double, double, double, const VECTOR<6>&,
                                    const VECTOR<6>&, double, SECTION_ANSWER<6>&, VECTOR<6>&);
