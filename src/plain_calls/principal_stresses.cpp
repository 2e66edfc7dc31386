// principal_stresses.cpp: the principal stresses of a stress in space, in closed form (Scherzinger and Dohrmann, 2008).
//
// The trigonometric form loses half of the digits of two nearly equal roots. The root that lies apart from both others
// keeps them: with the deviator s = stress - m I, J2 = s:s / 2 and x = cos 3t = (J3 / 2) (3 / J2)^(3/2) it is
//
//     r = 2 sqrt(J2 / 3) cos(acos(|x|) / 3),      with the sign of x
//
// The rows of s - r I span the plane across its direction, in which the other two are those of a 2 by 2 matrix:
//
//     (a + c) / 2 +- hypot((a - c) / 2, b)        without a difference that cancels
#include "plain_calls/principal_stresses.h"

#include <algorithm>
#include <cmath>

#include "plain_calls/arrow.h"

namespace {

struct TENSOR {
  double xx, yy, zz, xy, xz, yz;
};

ARROW scaled(const ARROW& a, double f) { return {a.x * f, a.y * f, a.z * f}; }
ARROW less(const ARROW& a, const ARROW& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }

ARROW product(const TENSOR& s, const ARROW& a) {
  return {s.xx * a.x + s.xy * a.y + s.xz * a.z, s.xy * a.x + s.yy * a.y + s.yz * a.z,
          s.xz * a.x + s.yz * a.y + s.zz * a.z};
}

// The root of the deviator that lies apart, largest in size. The largest entry of s is 1 in size.
double lone_root(const TENSOR& s) {
  const double j2 = 0.5 * (s.xx * s.xx + s.yy * s.yy + s.zz * s.zz) + s.xy * s.xy + s.xz * s.xz + s.yz * s.yz;
  const double j3 =
      s.xx * (s.yy * s.zz - s.yz * s.yz) - s.xy * (s.xy * s.zz - s.yz * s.xz) + s.xz * (s.xy * s.yz - s.yy * s.xz);
  const double radius = std::sqrt(j2 / 3.0);
  const double x = 0.5 * j3 / (radius * radius * radius);
  return std::copysign(2.0 * radius * std::cos(std::acos(std::min(std::fabs(x), 1.0)) / 3.0), x);
}

// Two unit vectors across the direction of the root: the longest row of s - r I, and the longest part of another row
// across it. The matrix has rank 2, so that neither is short.
void plane_across(const TENSOR& s, double r, ARROW& first, ARROW& second) {
  const ARROW row[3] = {{s.xx - r, s.xy, s.xz}, {s.xy, s.yy - r, s.yz}, {s.xz, s.yz, s.zz - r}};
  int longest = 0;
  for (int i = 1; i < 3; ++i) {
    if (dot(row[i], row[i]) > dot(row[longest], row[longest])) longest = i;
  }
  first = scaled(row[longest], 1.0 / std::sqrt(dot(row[longest], row[longest])));
  second = {0.0, 0.0, 0.0};
  for (int i = 1; i < 3; ++i) {
    const ARROW& other = row[(longest + i) % 3];
    const ARROW part = less(other, scaled(first, dot(first, other)));
    if (dot(part, part) > dot(second, second)) second = part;
  }
  second = scaled(second, 1.0 / std::sqrt(dot(second, second)));
}

}  // namespace

void principal_stresses(const double stress[6], double principal[3]) {
  const double mean = stress[0] / 3.0 + stress[1] / 3.0 + stress[2] / 3.0;
  const double deviator[6] = {stress[0] - mean, stress[1] - mean, stress[2] - mean, stress[3], stress[4], stress[5]};
  double size = 0.0;
  for (const double s : deviator) size = std::max(size, std::fabs(s));
  std::fill_n(principal, 3, mean);
  if (!(size > 0.0)) return;

  TENSOR s = {deviator[0] / size, deviator[1] / size, deviator[2] / size,
              deviator[3] / size, deviator[4] / size, deviator[5] / size};
  const double lone = lone_root(s);
  ARROW first;
  ARROW second;
  plane_across(s, lone, first, second);
  const ARROW s_first = product(s, first);
  const ARROW s_second = product(s, second);
  const double a = dot(first, s_first);
  const double b = dot(second, s_first);
  const double c = dot(second, s_second);
  const double half = std::hypot(0.5 * (a - c), b);
  const double pair = 0.5 * (a + c);
  principal[0] += size * lone;
  principal[1] += size * (pair + half);
  principal[2] += size * (pair - half);
  std::sort(principal, principal + 3, [](double p, double q) { return p > q; });
}
