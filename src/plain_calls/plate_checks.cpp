// plate_checks.cpp: the checks of plates, in the order in which a caller would correct what they find: pointers and
// codes, numbers, section, geometry.
#include "plain_calls/plate_checks.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "plain_calls/arrow.h"
#include "plain_calls/input_numbers.h"

namespace {

constexpr double SMALLEST = SMALLEST_LENGTH;  // of all that is divided by: thickness, moduli, factors above 0 too

// Two nodes closer than this part of the longest side coincide. A Jacobian at a corner below this part of its square is
// rounding: local coordinates have errors of 1e-16 of the longest side.
constexpr double NO_LENGTH = 1e-12;

// Both sides of the symmetry E1 nu21 = E2 nu12 may be rounded to single precision.
constexpr double SYMMETRY = 1e-6;

// Beyond this ratio of the shear moduli the determinant of the turned shear section of a side is rounding alone.
constexpr double LARGEST_SHEAR_RATIO = 1e10;

bool between_zero_and_smallest(double x) { return x > 0.0 && x < SMALLEST; }

template <std::size_t COUNT>
finites_status status_of_all(const double (&values)[COUNT]) {
  return status_of_numbers(values, static_cast<int>(COUNT));
}

// Of what a plate reads: nodes and offsets of its corners, the section, that of the second direction where it has one.
finites_status check_numbers(const finites_plate& p) {
  const double section[] = {
      p.thickness,    p.E,          p.nu, p.density, p.expansion, p.membrane_factor, p.bending_factor,
      p.shear_factor, p.mass_factor};
  const finites_status place =
      first_fault(status_of_numbers(&p.xyz[0][0], 3 * p.nodes), status_of_numbers(&p.offset[0][0], 3 * p.nodes));
  const finites_status common = first_fault(place, status_of_all(section));
  if (p.orthotropic == 0) return common;
  const double second[] = {p.E2, p.nu21, p.G12, p.expansion2, p.angle, p.twist_factor, p.inplane_shear_factor};
  const finites_status both = first_fault(common, status_of_all(second));
  if (p.theory != FINITES_THICK) return both;
  const double thick[] = {p.G13, p.G23};
  return first_fault(both, status_of_all(thick));
}

finites_status check_codes(const finites_plate& p) {
  if (p.nodes != 3 && p.nodes != 4) return FINITES_NODES;
  switch (p.theory) {
    case FINITES_THICK:
    case FINITES_THIN:
    case FINITES_MEMBRANE:
    case FINITES_MEMBRANE_REDUCED: break;
    default: return FINITES_BAD_CODE;
  }
  return p.orthotropic == 0 || p.orthotropic == 1 ? FINITES_OK : FINITES_BAD_CODE;
}

finites_status check_isotropic(const finites_plate& p) {
  return p.nu > -1.0 && p.nu <= 0.5 ? FINITES_OK : FINITES_POISSON;
}

// The matrix of plane stress is positive definite where nu12 nu21 < 1, and symmetric where E1 nu21 = E2 nu12.
finites_status check_orthotropic(const finites_plate& p) {
  const bool thick = p.theory == FINITES_THICK;
  if (!(p.E2 > 0.0 && p.G12 > 0.0) || (thick && !(p.G13 > 0.0 && p.G23 > 0.0))) return FINITES_MODULUS;
  if (p.nu21 != 0.0) {
    const double first = p.E * p.nu21;
    const double second = p.E2 * p.nu;
    if (!(std::fabs(first - second) <= SYMMETRY * std::max(std::fabs(first), std::fabs(second)))) {
      return FINITES_POISSON;
    }
  }
  const double nu21 = p.nu21 != 0.0 ? p.nu21 : p.nu * p.E2 / p.E;
  if (!(p.nu * nu21 < 1.0)) return FINITES_POISSON;
  if (p.twist_factor < 0.0 || p.inplane_shear_factor < 0.0) return FINITES_FACTOR;
  // The ratio of bending to shear flexibility of a side has no value without shear stiffness.
  if (thick && p.shear_factor == 0.0) return FINITES_FACTOR;
  if (thick && std::max(p.G13, p.G23) > LARGEST_SHEAR_RATIO * std::min(p.G13, p.G23)) return FINITES_RANGE;
  const bool small = p.E2 < SMALLEST || p.G12 < SMALLEST || (thick && (p.G13 < SMALLEST || p.G23 < SMALLEST)) ||
                     std::fabs(nu21) > LARGEST_INPUT || between_zero_and_smallest(p.twist_factor) ||
                     between_zero_and_smallest(p.inplane_shear_factor);
  return small ? FINITES_RANGE : FINITES_OK;
}

finites_status check_section(const finites_plate& p) {
  if (!(p.thickness > 0.0)) return FINITES_THICKNESS;
  if (!(p.E > 0.0)) return FINITES_MODULUS;
  const finites_status status = p.orthotropic == 1 ? check_orthotropic(p) : check_isotropic(p);
  if (status != FINITES_OK) return status;
  if (p.membrane_factor < 0.0 || p.bending_factor < 0.0 || p.shear_factor < 0.0 || p.mass_factor < 0.0) {
    return FINITES_FACTOR;
  }
  // A struct that nobody initialised: thickness and E are all that its user has set.
  if (p.membrane_factor == 0.0 && p.bending_factor == 0.0 && p.shear_factor == 0.0 && p.mass_factor == 0.0) {
    return FINITES_FACTOR;
  }
  if (p.density < 0.0) return FINITES_DENSITY;
  const bool small = p.thickness < SMALLEST || p.E < SMALLEST || between_zero_and_smallest(p.membrane_factor) ||
                     between_zero_and_smallest(p.bending_factor) || between_zero_and_smallest(p.shear_factor);
  return small ? FINITES_RANGE : FINITES_OK;
}

ARROW from_to(const double* a, const double* b) { return {b[0] - a[0], b[1] - a[1], b[2] - a[2]}; }
ARROW cross(const ARROW& a, const ARROW& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

// With sides d_i from corner i to the next, n_i = d_(i-1) x d_i and the element's normal n_1 / |n_1|: four times (of a
// triangle: once) the Jacobian at corner i of the element as its kernels see it, projected along its normal, is
//
//     n_i . n_1 / |n_1|
//
// It is positive inside where it is at every corner, since it is linear. How far a corner is from the plane of the
// others does not count.
finites_status check_geometry(const finites_plate& p) {
  const PLATE_CORNERS corners(p);
  ARROW d[4];
  double longest = 0.0;
  double shortest = 12.0 * LARGEST_INPUT * LARGEST_INPUT;
  for (int i = 0; i < p.nodes; ++i) {
    d[i] = from_to(corners.x[i], corners.x[i + 1 == p.nodes ? 0 : i + 1]);
    const double square = dot(d[i], d[i]);
    longest = std::max(longest, square);
    shortest = std::min(shortest, square);
  }
  if (p.nodes == 4) {
    const ARROW first = from_to(corners.x[0], corners.x[2]);
    const ARROW second = from_to(corners.x[1], corners.x[3]);
    shortest = std::min({shortest, dot(first, first), dot(second, second)});
  }
  if (shortest <= NO_LENGTH * NO_LENGTH * longest) return FINITES_COINCIDENT;
  if (shortest < SMALLEST * SMALLEST) return FINITES_RANGE;

  const ARROW normal = cross(d[p.nodes - 1], d[0]);
  const double limit = NO_LENGTH * longest * std::sqrt(dot(normal, normal));
  for (int i = 0; i < p.nodes; ++i) {
    const ARROW n = cross(d[i == 0 ? p.nodes - 1 : i - 1], d[i]);
    if (!(dot(n, normal) > limit)) return FINITES_DEGENERATE;
  }
  return FINITES_OK;
}

}  // namespace

PLATE_CORNERS::PLATE_CORNERS(const finites_plate& plate) : x{} {
  for (int m = 0; m < plate.nodes; ++m) {
    for (int i = 0; i < 3; ++i) x[m][i] = plate.xyz[m][i] + plate.offset[m][i];
  }
}

finites_status check_reals(const double* values, int count) {
  return values == nullptr ? FINITES_NULL : status_of_numbers(values, count);
}

finites_status check_optional_reals(const double* values, int count) {
  return values == nullptr ? FINITES_OK : status_of_numbers(values, count);
}

finites_status check_plate(const finites_plate& plate) {
  finites_status status = check_codes(plate);
  if (status == FINITES_OK) status = check_numbers(plate);
  if (status == FINITES_OK) status = check_section(plate);
  if (status == FINITES_OK) status = check_geometry(plate);
  return status;
}
