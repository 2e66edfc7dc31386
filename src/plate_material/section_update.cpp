// section_update.cpp: the whole-section model at one surface point, in both widths: eight section forces with
// transverse shear, six without.
//
//     trial     sig_t = D (eps - p0)
//     yield     F = Qt + Qm + |Qtm| + shear - ((sy + H ebar) / sy)^2      (Ilyushin, 1948)
//     return    sig(x) = Q A Q^-1 sig_t,            A = 1 / (1 + 2 x LAM),  so that sig = sig_t - 2 x D P sig
//     strain    p = p0 + 2 x P sig,                 ebar = ebar0 + x sqrt(2/3) |T v|,    v = 2 P sig
//     tangent   C = X - X v (v^T X) / (alpha + m),  X = Q A Q^-1 D,  alpha = v^T X v
//
// The multiplier x solves F(sig(x), ebar(x)) = 0 by Newton's method. x T v is the increment of the plastic strain at
// the upper face, membrane + h/2 curvature, with transverse shear in the wide form: its length hardens the section.
// m = beta sqrt(2/3) |T v| with beta = 2 H (sy + H ebar) / sy^2; the change of |T v| with the forces is left out of it.
#include "plate_material/section_update.h"

#include <cmath>

#include "finites/records.h"
#include "finites/services.h"
#include "plate_material/plastic_material.h"
#include "plate_material/section_decomposition.h"
#include "plate_material/section_limits.h"
#include "plate_material/section_return.h"

namespace {

// The factor `a` on the plastic moment that every caller passes: a M0 with M0 = sy h^2 / 4.
constexpr double MOMENT_SCALE = 1.0;

//     N1 M1 + N2 M2 - (N1 M2 + N2 M1) / 2 + 3 N12 M12
template <int WIDTH>
double mixed_product(const VECTOR<WIDTH>& s) {
  return s(1) * s(4) + s(2) * s(5) - 0.5 * s(1) * s(5) - 0.5 * s(2) * s(4) + 3.0 * s(3) * s(6);
}

// With N0 = sy h and M0 = a sy h^2 / 4:
//
//     Qt  = (N1^2 + N2^2 - N1 N2 + 3 N12^2) / N0^2          Qm = the same of the moments / M0^2
//     Qtm = mixed_product / (sqrt(3) N0 M0)                 shear = 3 (Q1^2 + Q2^2) / N0^2, wide form only
template <int WIDTH>
double yield_function(const PLATEELEM_RECORD& EL, double a, double h, double sy, const VECTOR<WIDTH>& s, double ebar) {
  const double h2 = h * h;
  const double sy2 = sy * sy;
  const double Qt = (s(1) * s(1) + s(2) * s(2) - s(1) * s(2) + 3.0 * s(3) * s(3)) / (h2 * sy2);
  const double Qm = 16.0 * (s(4) * s(4) + s(5) * s(5) - s(4) * s(5) + 3.0 * s(6) * s(6)) / (h2 * h2 * sy2 * (a * a));
  const double Qtm = mixed_product(s) / (ROOT_3_SINGLE * (h2 * h) * sy2 * a * 0.25);
  double F = Qt + Qm + std::fabs(Qtm);
  if constexpr (WIDTH == 8) F += 3.0 * (s(7) * s(7) + s(8) * s(8)) / (h2 * sy2);
  const double k = (sy + plastic_modulus(EL) * ebar) / sy;
  return F - k * k;
}

template <int WIDTH>
MATRIX<WIDTH, WIDTH> leading(const MATRIX<8, 8>& M) {
  MATRIX<WIDTH, WIDTH> out;
  for (int j = 1; j <= WIDTH; ++j) {
    for (int i = 1; i <= WIDTH; ++i) out(i, j) = M(i, j);
  }
  return out;
}

// M v with the leading part of an 8 by 8 matrix.
template <int WIDTH>
VECTOR<WIDTH> times(const MATRIX<8, 8>& M, const VECTOR<WIDTH>& v) {
  VECTOR<WIDTH> out{};
  for (int j = 1; j <= WIDTH; ++j) {
    for (int i = 1; i <= WIDTH; ++i) out(i) += M(i, j) * v(j);
  }
  return out;
}

template <int WIDTH>
double dot(const VECTOR<WIDTH>& a, const VECTOR<WIDTH>& b) {
  double sum = 0.0;
  for (int i = 1; i <= WIDTH; ++i) sum += a(i) * b(i);
  return sum;
}

// T v = (v1 + h/2 v4, v2 + h/2 v5, v3 + h/2 v6, v7, v8): the section strain v as a strain at the upper face.
template <int WIDTH>
VECTOR<5> upper_face(double h, const VECTOR<WIDTH>& v) {
  VECTOR<5> w{{v(1) + h / 2.0 * v(4), v(2) + h / 2.0 * v(5), v(3) + h / 2.0 * v(6), 0.0, 0.0}};
  if constexpr (WIDTH == 8) {
    w(4) = v(7);
    w(5) = v(8);
  }
  return w;
}

double norm(const VECTOR<5>& w) { return std::sqrt(dot(w, w)); }

// A = 1 / (2 x LAM + 1), the diagonal as a vector. False, with the text reported, when a divisor is at most `limit`.
template <int WIDTH>
bool spectral_divisors(const PLATEELEM_RECORD& EL, double x, double limit, const char* text, const FAILURES& to_caller,
                       VECTOR<WIDTH>& A) {
  for (int i = 1; i <= WIDTH; ++i) {
    const double d = 2.0 * x * EL.LAM8(i, i) + 1.0;
    if (d <= limit) {
      to_caller.failed(text);
      return false;
    }
    A(i) = 1.0 / d;
  }
  return true;
}

template <int WIDTH>
VECTOR<WIDTH> scaled(const VECTOR<WIDTH>& A, const VECTOR<WIDTH>& v) {
  VECTOR<WIDTH> out;
  for (int i = 1; i <= WIDTH; ++i) out(i) = A(i) * v(i);
  return out;
}

// Q A Q^-1 of the trial forces.
template <int WIDTH>
VECTOR<WIDTH> returned(const PLATEELEM_RECORD& EL, const VECTOR<WIDTH>& A, const VECTOR<WIDTH>& trial) {
  return times(EL.Q8, scaled(A, times(EL.QINV8, trial)));
}

// 2 P sig: the flow direction.
template <int WIDTH>
VECTOR<WIDTH> flow(const PLATEELEM_RECORD& EL, const VECTOR<WIDTH>& sig) {
  VECTOR<WIDTH> v = times(EL.P8, sig);
  for (int i = 1; i <= WIDTH; ++i) v(i) = 2.0 * v(i);
  return v;
}

// |T v|.
template <int WIDTH>
double equivalent_flow(const PLATEELEM_RECORD& EL, double h, const VECTOR<WIDTH>& sig) {
  return norm(upper_face(h, flow(EL, sig)));
}

}  // namespace

template <int WIDTH>
void SECTION_TRIAL(const PLATEELEM_RECORD& EL, const VECTOR<WIDTH>& eps, const VECTOR<WIDTH>& p0, VECTOR<WIDTH>& sig) {
  const MATRIX<3, 3>& Dm = EL.D_MEMBRANE_NORMAL;
  const MATRIX<3, 3>& Db = EL.D_BENDING;
  VECTOR<WIDTH> d;
  for (int i = 1; i <= WIDTH; ++i) d(i) = eps(i) - p0(i);
  sig(1) = Dm(1, 1) * d(1) + Dm(1, 2) * d(2);
  sig(2) = Dm(2, 1) * d(1) + Dm(2, 2) * d(2);
  sig(3) = Dm(3, 3) * d(3);
  sig(4) = Db(1, 1) * d(4) + Db(1, 2) * d(5);
  sig(5) = Db(2, 1) * d(4) + Db(2, 2) * d(5);
  sig(6) = Db(3, 3) * d(6);
  if constexpr (WIDTH == 8) {
    sig(7) = EL.D_SHEAR(1, 1) * d(7);
    sig(8) = EL.D_SHEAR(2, 2) * d(8);
  }
}

template <int WIDTH>
void SECTION_YIELD(const PLATEELEM_RECORD& EL, double a, double h, double sy, const VECTOR<WIDTH>& sig, double ebar,
                   std::int32_t& plastic) {
  plastic = yield_function(EL, a, h, sy, sig, ebar) <= 0.0 ? 0 : 1;
}

template <int WIDTH>
double section_yield_value(const PLATEELEM_RECORD& EL, const VECTOR<WIDTH>& sig, double ebar) {
  return yield_function(EL, MOMENT_SCALE, EL.THICKNESS, EL.YIELD_STRESS, sig, ebar);
}

template <int WIDTH>
void SECTION_F1(const PLATEELEM_RECORD& EL, double a, double h, double sy, const VECTOR<WIDTH>& trial, double ebar0,
                double x, const FAILURES& to_caller, double& f) {
  VECTOR<WIDTH> A;
  if (!spectral_divisors(EL, x, SMALLEST_DIVISOR, "Division by 0, F1", to_caller, A)) return;
  const VECTOR<WIDTH> sig = returned(EL, A, trial);
  const double ebar = ebar0 + x * ROOT_2_3_SINGLE * equivalent_flow(EL, h, sig);
  f = yield_function(EL, a, h, sy, sig, ebar);
}

// With W = P dsig/dx, dA = -2 LAM / (1 + 2 x LAM)^2 in place of A, w = T v, c = -2 H (sy + H ebar) / sy^2:
//
//     df = 2 sig^T W + c sqrt(2/3) (|w| + 2 x w^T T W / |w|)
//
// The mixed term has the sign of the metric here, not its absolute value.
template <int WIDTH>
void SECTION_DF1(const PLATEELEM_RECORD& EL, double h, double sy, const VECTOR<WIDTH>& trial, double ebar0, double x,
                 const FAILURES& to_caller, double& df) {
  VECTOR<WIDTH> A;
  if (!spectral_divisors(EL, x, SMALLEST_DIVISOR, "Division by 0, F1", to_caller, A)) return;
  VECTOR<WIDTH> dA;
  for (int i = 1; i <= WIDTH; ++i) {
    const double d = 2.0 * x * EL.LAM8(i, i) + 1.0;
    dA(i) = -2.0 * EL.LAM8(i, i) / (d * d);
  }
  const VECTOR<WIDTH> sig = returned(EL, A, trial);
  const VECTOR<WIDTH> W = times(EL.P8, returned(EL, dA, trial));
  const VECTOR<5> w = upper_face(h, flow(EL, sig));
  const double length = norm(w);
  const double H = plastic_modulus(EL);
  const double ebar = ebar0 + x * ROOT_2_3_SINGLE * length;
  const double c = -2.0 * H * (sy + H * ebar) / (sy * sy);
  const double b1 = dot(sig, W);
  const double b2 = dot(w, upper_face(h, W));
  df = 2.0 * b1 + c * ROOT_2_3_SINGLE * length + c * ROOT_2_3_SINGLE * (2.0 * x * b2 / length);
}

template <int WIDTH>
void SECTION_MULT(const PLATEELEM_RECORD& EL, double a, double h, double sy, const VECTOR<WIDTH>& trial, double ebar0,
                  const FAILURES& to_caller, double& x) {
  double at = 0.0;
  for (int pass = 0; pass < NEWTON_PASSES; ++pass) {
    double f = 0.0;
    double df = 0.0;
    SECTION_F1(EL, a, h, sy, trial, ebar0, at, to_caller, f);
    SECTION_DF1(EL, h, sy, trial, ebar0, at, to_caller, df);
    if (std::fabs(df) <= SMALLEST_DIVISOR) {
      to_caller.failed("Division by 0, DFONC_EVAL");
      return;
    }
    const double y = at - f / df;
    const bool settled = std::fabs(y - at) / (std::fabs(y) + NEWTON_GUARD) <= NEWTON_CONVERGED;
    at = y;
    if (settled) break;
  }
  x = at;
}

// The limit of a divisor is 0 in the wide form and SMALLEST_DIVISOR in the narrow one: part of the results
// (docs/decisions.md).
template <int WIDTH>
void SECTION_STRESS(const PLATEELEM_RECORD& EL, double x, const VECTOR<WIDTH>& trial, const FAILURES& to_caller,
                    VECTOR<WIDTH>& sig) {
  constexpr double limit = WIDTH == 8 ? 0.0 : SMALLEST_DIVISOR;
  sig = VECTOR<WIDTH>{};
  VECTOR<WIDTH> A;
  if (spectral_divisors(EL, x, limit, "Division by 0, vMAT_LAM_GAM", to_caller, A)) sig = returned(EL, A, trial);
}

template <int WIDTH>
void SECTION_EP(const PLATEELEM_RECORD& EL, double x, const VECTOR<WIDTH>& sig, const VECTOR<WIDTH>& p0,
                VECTOR<WIDTH>& p) {
  const VECTOR<WIDTH> n = times(EL.P8, sig);
  for (int i = 1; i <= WIDTH; ++i) p(i) = p0(i) + 2.0 * x * n(i);
}

template <int WIDTH>
void SECTION_EPBAR(const PLATEELEM_RECORD& EL, double x, double h, const VECTOR<WIDTH>& sig, double ebar0,
                   double& ebar) {
  ebar = ebar0 + x * ROOT_2_3_SINGLE * equivalent_flow(EL, h, sig);
}

template <int WIDTH>
void SECTION_TANGENT(const PLATEELEM_RECORD& EL, double sy, double x, double h, double ebar, const VECTOR<WIDTH>& sig,
                     const FAILURES& to_caller, MATRIX<WIDTH, WIDTH>& C) {
  const VECTOR<WIDTH> v = flow(EL, sig);
  VECTOR<WIDTH> A;
  if (!spectral_divisors(EL, x, SMALLEST_DIVISOR, "Division by 0, COEFF", to_caller, A)) return;
  MATRIX<WIDTH, WIDTH> DIAGONAL{};
  for (int i = 1; i <= WIDTH; ++i) DIAGONAL(i, i) = A(i);
  MATRIX<WIDTH, WIDTH> X;
  MATMUL4(WIDTH, leading<WIDTH>(EL.Q8).data(), DIAGONAL.data(), leading<WIDTH>(EL.QINV8).data(),
          leading<WIDTH>(EL.D8).data(), X.data());
  VECTOR<WIDTH> Xv{};
  VECTOR<WIDTH> vX{};
  for (int j = 1; j <= WIDTH; ++j) {
    for (int i = 1; i <= WIDTH; ++i) {
      Xv(i) += X(i, j) * v(j);
      vX(j) += v(i) * X(i, j);
    }
  }
  const double alpha = dot(v, Xv);
  const double H = plastic_modulus(EL);
  const double beta = 2.0 * H * (sy + H * ebar) / (sy * sy);
  const double m = beta * ROOT_2_3_SINGLE * norm(upper_face(h, v));
  C = MATRIX<WIDTH, WIDTH>{};
  if (std::fabs(alpha + m) <= SMALLEST_DIVISOR) {
    to_caller.failed("Division by 0, COEFF+xM");
    return;
  }
  for (int j = 1; j <= WIDTH; ++j) {
    for (int i = 1; i <= WIDTH; ++i) C(i, j) = X(i, j) - Xv(i) * vX(j) / (alpha + m);
  }
}

// dkap = sqrt(dk1^2 + dk2^2 + dk1 dk2 + dk3^2 / 4) of the increment of the plastic curvature, dk3 being engineering
// twist; without the factor 2 / sqrt(3) of an equivalent strain. qtm gives the sign of the mixed term in the next step.
template <int WIDTH>
void update_section_point(const PLATEELEM_RECORD& EL, double h, double sy, const VECTOR<WIDTH>& eps,
                          const SECTION_POINT& from, const FAILURES& to_caller, SECTION_ANSWER<WIDTH>& to) {
  to.sig = VECTOR<WIDTH>{};
  to.ep = VECTOR<12>{};
  VECTOR<WIDTH> p0;
  SECTION_EP_TO_LOCAL(EL, from.ep0, p0);

  VECTOR<WIDTH> trial;
  SECTION_TRIAL(EL, eps, p0, trial);
  SECTION_YIELD(EL, MOMENT_SCALE, h, sy, trial, from.ebar0, to.plastic);
  VECTOR<WIDTH> p = p0;
  if (to.plastic == 0) {
    to.sig = trial;
    to.ebar = from.ebar0;
    to.C = leading<WIDTH>(EL.D8);
  } else if (!closed_form_return(EL, MOMENT_SCALE, h, sy, trial, p0, from.ebar0, to, p)) {
    double x = 0.0;
    SECTION_MULT(EL, MOMENT_SCALE, h, sy, trial, from.ebar0, to_caller, x);
    if (x < 0.0) {
      to_caller.failed("Negative Plastic_Multip");
      return;
    }
    SECTION_STRESS(EL, x, trial, to_caller, to.sig);
    SECTION_EP(EL, x, to.sig, p0, p);
    SECTION_EPBAR(EL, x, h, to.sig, from.ebar0, to.ebar);
    SECTION_TANGENT(EL, sy, x, h, to.ebar, to.sig, to_caller, to.C);
  }
  const double dk1 = p(4) - p0(4);
  const double dk2 = p(5) - p0(5);
  const double dk3 = p(6) - p0(6);
  to.dkap = std::sqrt(dk1 * dk1 + dk2 * dk2 + dk1 * dk2 + 0.25 * (dk3 * dk3));
  to.qtm = mixed_product(to.sig);
  SECTION_EP_TO_GLOBAL(EL, p, to.ep);
}

template <int WIDTH>
void PLATE_SECTION_UPDATE(PLATEELEM_RECORD& EL, double h, double sy, const VECTOR<WIDTH>& eps,
                          const SECTION_POINT& from, const FAILURES& to_caller, SECTION_ANSWER<WIDTH>& to) {
  SECTION_SPECTRAL_SIGN(EL, from.ref, h, sy);
  update_section_point(EL, h, sy, eps, from, to_caller, to);
}

template void update_section_point<8>(const PLATEELEM_RECORD& EL, double, double, const VECTOR<8>&,
                                      const SECTION_POINT&, const FAILURES&, SECTION_ANSWER<8>&);
template void PLATE_SECTION_UPDATE<8>(PLATEELEM_RECORD& EL, double, double, const VECTOR<8>&, const SECTION_POINT&,
                                      const FAILURES&, SECTION_ANSWER<8>&);
template void SECTION_TRIAL<8>(const PLATEELEM_RECORD& EL, const VECTOR<8>&, const VECTOR<8>&, VECTOR<8>&);
template void SECTION_YIELD<8>(const PLATEELEM_RECORD& EL, double, double, double, const VECTOR<8>&, double,
                               std::int32_t&);
template double section_yield_value<8>(const PLATEELEM_RECORD& EL, const VECTOR<8>&, double);
template void SECTION_MULT<8>(const PLATEELEM_RECORD& EL, double, double, double, const VECTOR<8>&, double,
                              const FAILURES&, double&);
template void SECTION_F1<8>(const PLATEELEM_RECORD& EL, double, double, double, const VECTOR<8>&, double, double,
                            const FAILURES&, double&);
template void SECTION_DF1<8>(const PLATEELEM_RECORD& EL, double, double, const VECTOR<8>&, double, double,
                             const FAILURES&, double&);
template void SECTION_STRESS<8>(const PLATEELEM_RECORD& EL, double, const VECTOR<8>&, const FAILURES&, VECTOR<8>&);
template void SECTION_EP<8>(const PLATEELEM_RECORD& EL, double, const VECTOR<8>&, const VECTOR<8>&, VECTOR<8>&);
template void SECTION_EPBAR<8>(const PLATEELEM_RECORD& EL, double, double, const VECTOR<8>&, double, double&);
template void SECTION_TANGENT<8>(const PLATEELEM_RECORD& EL, double, double, double, double, const VECTOR<8>&,
                                 const FAILURES&, MATRIX<8, 8>&);

template void update_section_point<6>(const PLATEELEM_RECORD& EL, double, double, const VECTOR<6>&,
                                      const SECTION_POINT&, const FAILURES&, SECTION_ANSWER<6>&);
template void PLATE_SECTION_UPDATE<6>(PLATEELEM_RECORD& EL, double, double, const VECTOR<6>&, const SECTION_POINT&,
                                      const FAILURES&, SECTION_ANSWER<6>&);
template void SECTION_TRIAL<6>(const PLATEELEM_RECORD& EL, const VECTOR<6>&, const VECTOR<6>&, VECTOR<6>&);
template void SECTION_YIELD<6>(const PLATEELEM_RECORD& EL, double, double, double, const VECTOR<6>&, double,
                               std::int32_t&);
template double section_yield_value<6>(const PLATEELEM_RECORD& EL, const VECTOR<6>&, double);
template void SECTION_MULT<6>(const PLATEELEM_RECORD& EL, double, double, double, const VECTOR<6>&, double,
                              const FAILURES&, double&);
template void SECTION_F1<6>(const PLATEELEM_RECORD& EL, double, double, double, const VECTOR<6>&, double, double,
                            const FAILURES&, double&);
template void SECTION_DF1<6>(const PLATEELEM_RECORD& EL, double, double, const VECTOR<6>&, double, double,
                             const FAILURES&, double&);
template void SECTION_STRESS<6>(const PLATEELEM_RECORD& EL, double, const VECTOR<6>&, const FAILURES&, VECTOR<6>&);
template void SECTION_EP<6>(const PLATEELEM_RECORD& EL, double, const VECTOR<6>&, const VECTOR<6>&, VECTOR<6>&);
template void SECTION_EPBAR<6>(const PLATEELEM_RECORD& EL, double, double, const VECTOR<6>&, double, double&);
template void SECTION_TANGENT<6>(const PLATEELEM_RECORD& EL, double, double, double, double, const VECTOR<6>&,
                                 const FAILURES&, MATRIX<6, 6>&);
