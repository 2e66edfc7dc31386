// cables.cpp: cables as plain calls. The cable library has forces and tangent (morvenik.h); the shape is here.
//
// Along the unstressed coordinate s the tension is t(s) = t0 - w s, of length T, and
//
//     dx/ds = (1 + e + T/(E A)) t/T        x(s) = x1 + (1 + e) integral of t/T + (t0 s - w s^2 / 2) / (E A)
//
// With the load q along the unit vector d and t = h + v d, h across d of length H, v = v0 - q s (Irvine, 1981):
//
//     integral of v/T = (T0 - T) / q = s (v0 + v) / (T0 + T)
//     integral of 1/T = (asinh(v0/H) - asinh(v/H)) / q
//
// The difference is asinh of sinh(a - b) = (v0 T - v T0) / H^2, which is q s (v0 + v) / (v0 T + v T0) where v0 and v
// have one sign: neither form then loses digits as q goes to 0.
#include <algorithm>
#include <cmath>

#include "common/finiteness.h"
#include "common/member_order.h"
#include "finites/elements.h"
#include "finites/services.h"
#include "plain_calls/input_numbers.h"

namespace {

constexpr std::int32_t NO_NUMBER = 0;  // of the element: the cable library does not read it

// Statuses of the cable library.
constexpr std::int32_t SLACK_WITHOUT_LOAD = 2;
constexpr std::int32_t NOT_CONVERGED = 3;

// Data that pass the checks fail in the cable library only where E A is beyond the range of a double.
finites_status status_of_solution(std::int32_t status) {
  if (status == 0) return FINITES_OK;
  if (status == SLACK_WITHOUT_LOAD) return FINITES_SLACK;
  return status == NOT_CONVERGED ? FINITES_NO_CONVERGENCE : FINITES_RESULT;
}

finites_status status_of_input(const finites_cable& cable) {
  const double numbers[] = {cable.E, cable.area, cable.length, cable.strain};
  const finites_status status =
      first_fault(first_fault(status_of_numbers(&cable.xyz[0][0], TRUSS_DOFS), status_of_numbers(numbers, 4)),
                  status_of_numbers(cable.load, 3));
  if (status != FINITES_OK) return status;
  if (!(cable.E > 0.0)) return FINITES_MODULUS;
  if (!(cable.area > 0.0)) return FINITES_SECTION;
  return cable.length > 0.0 && 1.0 + cable.strain > 0.0 ? FINITES_OK : FINITES_LENGTH;
}

struct EQUILIBRIUM {
  double F[TRUSS_DOFS];
  double tension[2];
};

finites_status solve(const finites_cable& cable, EQUILIBRIUM& at) {
  const finites_status input = status_of_input(cable);
  if (input != FINITES_OK) return input;
  std::int32_t status = 0;
  CASE_1_L_0_3D2(&NO_NUMBER, cable.xyz[0], cable.xyz[1], &cable.area, &cable.E, &cable.length, &cable.strain,
                 cable.load, at.F, &at.tension[0], &at.tension[1], &status);
  return status_of_solution(status);
}

// A solved cable, by its tension at the first node.
struct CATENARY {
  double t0[3];       // = h + v0 down
  double down[3], q;  // direction and size of the load; 0 without
  double h[3], H;
  double v0, T0;
};

CATENARY catenary_of(const finites_cable& cable, const EQUILIBRIUM& at) {
  CATENARY c{};
  const double* const w = cable.load;
  for (int i = 0; i < 3; ++i) c.t0[i] = c.h[i] = -at.F[i];
  c.q = std::hypot(w[0], w[1], w[2]);
  c.T0 = std::hypot(c.t0[0], c.t0[1], c.t0[2]);
  if (!(c.q > 0.0)) return c;
  for (int i = 0; i < 3; ++i) c.down[i] = w[i] / c.q;
  c.v0 = c.t0[0] * c.down[0] + c.t0[1] * c.down[1] + c.t0[2] * c.down[2];
  for (int i = 0; i < 3; ++i) c.h[i] = c.t0[i] - c.v0 * c.down[i];
  c.H = std::hypot(c.h[0], c.h[1], c.h[2]);
  return c;
}

// The integrals of v/T and of H/T, from 0 to s.
struct INTEGRALS {
  double along, across;
};

INTEGRALS integrals(const CATENARY& c, double s, double v, double T) {
  const double along = s * ((c.v0 + v) / (c.T0 + T));
  if (!(c.H > 0.0)) return {along, 0.0};
  if (c.v0 * v > 0.0) {
    const double secant = (c.v0 + v) / (c.v0 * T + v * c.T0);
    const double a = c.q * s * secant;
    return {along, c.H * (s * secant * (a > 0.0 ? std::asinh(a) / a : 1.0))};
  }
  return {along, c.H * ((std::asinh(c.v0 / c.H) - std::asinh(v / c.H)) / c.q)};
}

// place := x(s); the tension there is returned.
double place_at(const finites_cable& cable, const CATENARY& c, double s, double place[3]) {
  const double stretch = 1.0 + cable.strain;
  const double stiffness = cable.area * cable.E;
  const double v = c.v0 - c.q * s;
  const double T = c.q > 0.0 ? std::hypot(c.H, v) : c.T0;
  const bool loaded = c.q * s > 0.0;
  const INTEGRALS by = loaded ? integrals(c, s, v, T) : INTEGRALS{0.0, 0.0};
  for (int i = 0; i < 3; ++i) {
    const double across = c.H > 0.0 ? c.h[i] / c.H : 0.0;
    const double inextensible = loaded ? by.along * c.down[i] + by.across * across : c.t0[i] / c.T0 * s;
    const double elastic = (c.t0[i] - 0.5 * s * cable.load[i]) * (s / stiffness);
    place[i] = cable.xyz[0][i] + (s > 0.0 ? stretch * inextensible + elastic : 0.0);
  }
  return T;
}

finites_status status_of_places(const finites_cable& cable, std::int32_t count, const double* s) {
  for (std::int32_t k = 0; k < count; ++k) {
    const finites_status number = status_of_numbers(s + k, 1);
    if (number != FINITES_OK) return number;
    if (s[k] < 0.0 || s[k] > cable.length) return FINITES_LENGTH;
  }
  return FINITES_OK;
}

bool shape_is_finite(const finites_cable& cable, const CATENARY& c, std::int32_t count, const double* s) {
  for (std::int32_t k = 0; k < count; ++k) {
    double place[3];
    const double T = place_at(cable, c, s[k], place);
    if (!std::isfinite(T) || !all_finite(place, 3)) return false;
  }
  return true;
}

}  // namespace

void finites_cable_init(finites_cable* cable) {
  if (cable != nullptr) *cable = finites_cable{};
}

finites_status finites_cable_forces(const finites_cable* cable, double* F, double tension[2]) {
  if (cable == nullptr || F == nullptr) return FINITES_NULL;
  EQUILIBRIUM at;
  const finites_status status = solve(*cable, at);
  if (status != FINITES_OK) return status;
  if (!all_finite(at.tension, 2)) return FINITES_RESULT;
  const finites_status written = copy_finite(at.F, TRUSS_DOFS, F);
  if (written == FINITES_OK && tension != nullptr) std::copy_n(at.tension, 2, tension);
  return written;
}

finites_status finites_cable_stiffness(const finites_cable* cable, double* K) {
  if (cable == nullptr || K == nullptr) return FINITES_NULL;
  EQUILIBRIUM at;
  const finites_status solved = solve(*cable, at);
  if (solved != FINITES_OK) return solved;
  double k[TRUSS_DOFS * TRUSS_DOFS];
  std::int32_t status = 0;
  CALC_KT_TANGENT(&NO_NUMBER, cable->xyz[0], cable->xyz[1], at.F, &cable->area, &cable->E, &cable->length, cable->load,
                  &cable->strain, k, &status);
  const finites_status found = status_of_solution(status);
  return found == FINITES_OK ? copy_finite(k, TRUSS_DOFS * TRUSS_DOFS, K) : found;
}

// Two runs over the places: the first shows that all can be written.
finites_status finites_cable_shape(const finites_cable* cable, int32_t count, const double* s, double (*xyz)[3],
                                   double* tension) {
  if (cable == nullptr || (count > 0 && (s == nullptr || xyz == nullptr))) return FINITES_NULL;
  if (count < 0) return FINITES_RANGE;
  EQUILIBRIUM at;
  const finites_status solved = solve(*cable, at);
  if (solved != FINITES_OK) return solved;
  const finites_status places = status_of_places(*cable, count, s);
  if (places != FINITES_OK) return places;
  const CATENARY c = catenary_of(*cable, at);
  if (!shape_is_finite(*cable, c, count, s)) return FINITES_RESULT;
  for (std::int32_t k = 0; k < count; ++k) {
    const double T = place_at(*cable, c, s[k], xyz[k]);
    if (tension != nullptr) tension[k] = T;
  }
  return FINITES_OK;
}
