// flexibility.cpp: the mean of (I - t tT/T^2)/T along a cable.
//
// The end of t runs along a straight segment in the space of forces, so that the integrals are those of the potential
// and of the field of a uniform line. Written with the lengths T0, T1 of its ends they hold for every load without a
// division by it (Smythe, 1950, on the charged segment).
#include "flexibility.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace morvenik {

namespace {

// A cable whose tension is this many times its load counts as taut. There the differences of the closed forms have lost
// a factor of 12 TAUT^2, and five points of Gauss have a relative error of 4e-13; the first grows fast above this
// value, the second below it.
constexpr double TAUT = 10.0;
constexpr double EPSILON = std::numeric_limits<double>::epsilon();

// T - V without cancellation, T = sqrt(H^2 + V^2).
double without(double T, double V, double H) { return V > 0.0 ? H * H / (T + V) : T - V; }

// Mean of H^2/T^3. Where V changes its sign along the cable H^2 cancels and is left out.
double mean_of_field(double H, double V0, double V1, double T0, double T1) {
  const double product = T0 * T1;
  if (V0 * V1 >= 0.0) return (H / product) * (H * (T0 + T1) / (product + V0 * V1 + H * H));
  return (T0 + T1) / (product * (1.0 + (H * H + V0 * V0 + V1 * V1) / (product - V0 * V1)));
}

// Axes across (e1) and along (e2) the load, closed forms.
flexibility sagging(const vector3& across, double H, double V, double weight, const vector3& down) {
  // An offset of the size of rounding has no meaningful direction: every direction across gets the secant, offset over
  // force, which is the stiffness out of plane everywhere.
  const double least = 4.0 * EPSILON * std::max(weight, std::fabs(V));
  const bool upright = H <= least;
  if (upright) H = least;

  const double V0 = V + 0.5 * weight;
  const double V1 = V - 0.5 * weight;
  const double T0 = std::sqrt(H * H + V0 * V0);
  const double T1 = std::sqrt(H * H + V1 * V1);
  const double potential = std::log1p(2.0 * weight / (without(T0, V0, H) + without(T1, -V1, H))) / weight;
  const double field = mean_of_field(H, V0, V1, T0, T1);
  if (upright) return {{0.0, 0.0, 0.0}, down, potential, 0.0, field, potential};
  return {across / H, down, potential - field, -2.0 * (H / T0) * (V / T1) / (T0 + T1), field, potential};
}

// Axes along (e1) and across (e2) the tension at the middle. The first entry is small as the square of weight/tension;
// it comes from the components of t across, by five points of Gauss, of which the middle one adds nothing.
flexibility taut(const vector3& middle, double m, double weight, const vector3& down) {
  constexpr double POINT[2] = {0.2692346550528415, 0.4530899229693320};  // on -1/2 to 1/2
  constexpr double WEIGHT[2] = {0.2393143352496832, 0.1184634425280945};

  const vector3 axis = middle / m;
  const double parallel = dot(down, axis);
  const vector3 rest = down - parallel * axis;
  const double normal = norm(rest);
  double f11 = 0.0;
  double f12 = 0.0;
  for (int i = 0; i < 2; ++i) {
    for (const double sigma : {-POINT[i], POINT[i]}) {
      const double t1 = m - weight * parallel * sigma;
      const double t2 = -weight * normal * sigma;
      const double square = t1 * t1 + t2 * t2;
      const double factor = WEIGHT[i] / (square * std::sqrt(square));
      f11 += factor * t2 * t2;
      f12 -= factor * t1 * t2;
    }
  }
  const vector3 half = 0.5 * weight * down;
  const double both = norm(middle + half) + norm(middle - half);
  const double ratio = weight / both;
  const double potential = ratio > 0.0 ? 2.0 * std::atanh(ratio) / ratio / both : 2.0 / both;
  const vector3 side = normal > 4.0 * EPSILON ? rest / normal : vector3{0.0, 0.0, 0.0};
  return {axis, side, f11, f12, potential - f11, potential};
}

}  // namespace

flexibility make_flexibility(const vector3& middle, double weight, const vector3& down) {
  const double m = norm(middle);
  if (m > TAUT * weight) return taut(middle, m, weight, down);
  const double V = dot(middle, down);
  const vector3 across = middle - V * down;
  return sagging(across, norm(across), V, weight, down);
}

}  // namespace morvenik
