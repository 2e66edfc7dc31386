// yield_surface.cpp: the calls of the yield curve routines, and the way to the surface along a ray.
#include "pushover/yield_surface.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include "finites/fields.h"
#include "finites/finites.h"

namespace solver {

namespace {

constexpr double NEVER = std::numeric_limits<double>::infinity();

bool is_flat(const hinge_model& h) { return h.curve != yield_curve::ORBISON; }

}  // namespace

int equation_count(const hinge_model& h) {
  if (h.curve == yield_curve::ORBISON) return 1;
  if (h.curve == yield_curve::SINGLE) return 2;
  switch (h.force_set) {
    case 2:
    case 3: return 2;
    case 4:
    case 5: return 8;
    case 6: return 4;
    default: return 16;
  }
}

double size_of(const hinge_model& h, const hinge_forces& f) {
  const int set = h.force_set;
  double size = 0;
  if (set != 2 && set != 3 && set != 6) size += std::fabs(f.P) / h.cap_p;
  if (set != 1 && set != 3 && set != 5) size += std::fabs(f.My) / h.cap_my;
  if (set != 1 && set != 2 && set != 4) size += std::fabs(f.Mz) / h.cap_mz;
  return size;
}

double yield_value(const hinge_model& h, int equation, const hinge_forces& f) {
  const std::int32_t set = h.force_set;
  const std::array<std::int32_t, 4> one = {equation, 0, 0, 0};
  std::array<double, 4> value{};
  switch (h.curve) {
    case yield_curve::ORBISON:
      PHI_ORBISON(&h.cap_p, &h.cap_my, &h.cap_mz, &set, &f.P, &f.My, &f.Mz, value.data());
      break;
    case yield_curve::SINGLE:
      PHI_SINGLE_FORCES(one.data(), &h.cap_p, &h.cap_my, &h.cap_mz, &set, &f.P, &f.My, &f.Mz, value.data());
      break;
    case yield_curve::LINEAR:
      PHI_LINEAR_SEGMENT(one.data(), &h.cap_p, &h.cap_my, &h.cap_mz, &set, &f.P, &f.My, &f.Mz, value.data());
      break;
  }
  return value[0];
}

hinge_forces yield_gradient(const hinge_model& h, int equation, const hinge_forces& f) {
  const std::int32_t set = h.force_set, segment = equation;
  hinge_forces n{};
  switch (h.curve) {
    case yield_curve::ORBISON:
      ORBISON_CURVE_GRADIENT(&set, &h.cap_p, &h.cap_my, &h.cap_mz, &f.P, &f.My, &f.Mz, &n.P, &n.My, &n.Mz);
      break;
    case yield_curve::SINGLE:
      SINGLE_FORCES_CURVE_GRADIENT(&segment, &set, &h.cap_p, &h.cap_my, &h.cap_mz, &f.P, &f.My, &f.Mz, &n.P, &n.My,
                                   &n.Mz);
      break;
    case yield_curve::LINEAR:
      LINEAR_SEGMENT_GRADIENT(&set, &segment, &h.cap_p, &h.cap_my, &h.cap_mz, &f.P, &f.My, &f.Mz, &n.P, &n.My, &n.Mz);
      break;
  }
  return n;
}

namespace {

// A ray that starts inside is outside when one of its forces has come to more than its capacity; on the way there, or
// from a point on the surface that moves inwards, the first change from inside to outside counts.
double distance_to_curve(const hinge_model& h, const hinge_forces& f, const hinge_forces& rate) {
  constexpr int INTERVALS = 64, BISECTIONS = 100;
  constexpr double INSIDE = 1e-10;  // a value so little above 1 is on the surface: rounding of the step that led there
  const double fastest =
      std::max({std::fabs(rate.P) / h.cap_p, std::fabs(rate.My) / h.cap_my, std::fabs(rate.Mz) / h.cap_mz});
  if (!(fastest > 0)) return NEVER;
  const auto excess = [&](double x) {
    return yield_value(h, 1, {f.P + x * rate.P, f.My + x * rate.My, f.Mz + x * rate.Mz}) - 1;
  };
  const double width = 2.5 / fastest / INTERVALS;
  bool inside = excess(0) < -INSIDE;
  for (int i = 1; i <= INTERVALS; ++i) {
    double low = (i - 1) * width, high = i * width;
    const double there = excess(high);
    if (inside && there >= 0) {
      for (int k = 0; k < BISECTIONS && low < high; ++k) {
        const double middle = low + (high - low) / 2;
        (excess(middle) >= 0 ? high : low) = middle;
      }
      return high;
    }
    inside = inside || there < -INSIDE;
  }
  return NEVER;
}

}  // namespace

double distance_to_yield(const hinge_model& h, int equation, const hinge_forces& f, const hinge_forces& rate) {
  if (!is_flat(h)) return distance_to_curve(h, f, rate);
  const double growth = yield_value(h, equation, rate);  // a flat equation is homogeneous
  const double left = 1 - yield_value(h, equation, f);
  return growth > 0 ? std::fmax(left, 0) / growth : NEVER;
}

}  // namespace solver
