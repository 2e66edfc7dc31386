// tangent.cpp: CALC_KT_TANGENT, the tangent of the forces of an equilibrium with respect to the nodes.
//
// A change of the tension at one end is the same change all along the cable, and the span follows it by
//
//   d(X2 - X1) = length (Z + I/stiffness) dt,      Z = mean of (I - t tT/T^2)/T
//
// so that the inverse of this matrix is the stiffness between the nodes. The equilibrium is not solved again.
#include <algorithm>
#include <cmath>
#include <cstdint>

#include "cable.h"
#include "flexibility.h"
#include "morvenik.h"

namespace morvenik {

namespace {

struct symmetric3 {
  double xx, xy, xz, yy, yz, zz;
};

void add(symmetric3& K, double f, const vector3& a, const vector3& b) {
  K.xx += f * a.x * b.x;
  K.xy += 0.5 * f * (a.x * b.y + a.y * b.x);
  K.xz += 0.5 * f * (a.x * b.z + a.z * b.x);
  K.yy += f * a.y * b.y;
  K.yz += 0.5 * f * (a.y * b.z + a.z * b.y);
  K.zz += f * a.z * b.z;
}

// (Z + stretch I)^-1. The plane's part is inverted in its own axes, where the pivots are far apart only when they lie
// on the diagonal.
symmetric3 inverse(const flexibility& z, double stretch) {
  const double f11 = z.f11 + stretch;
  const double f22 = z.f22 + stretch;
  const double out = 1.0 / (z.out + stretch);
  const double k11 = 1.0 / (f11 - z.f12 * (z.f12 / f22));
  const double k22 = 1.0 / (f22 - z.f12 * (z.f12 / f11));
  const double k12 = -(z.f12 / f22) * k11;
  symmetric3 K = {out, 0.0, 0.0, out, 0.0, out};
  add(K, k11 - out, z.e1, z.e1);
  add(K, k22 - out, z.e2, z.e2);
  add(K, 2.0 * k12, z.e1, z.e2);
  return K;
}

// [K -K; -K K], times a factor, into six columns. False when an entry is beyond the range of a double.
bool place(const symmetric3& K, double factor, double* KT) {
  const double block[3][3] = {{K.xx, K.xy, K.xz}, {K.xy, K.yy, K.yz}, {K.xz, K.yz, K.zz}};
  bool in_range = true;
  for (int j = 0; j < 3; ++j) {
    for (int i = 0; i < 3; ++i) {
      const double k = factor * block[i][j];
      in_range = in_range && std::isfinite(k);
      KT[6 * j + i] = k;
      KT[6 * (j + 3) + i + 3] = k;
      KT[6 * (j + 3) + i] = -k;
      KT[6 * j + i + 3] = -k;
    }
  }
  return in_range;
}

std::int32_t tangent(const cable& c, const vector3& middle, double* KT) {
  // Forces in units of the larger of tension and load.
  const double unit = std::max(norm(middle), c.weight);
  if (!(unit > 0.0)) return CABLE_SLACK_WITHOUT_LOAD;
  const flexibility z = make_flexibility(middle / unit, c.weight / unit, c.down);
  if (place(inverse(z, unit / c.stiffness), unit / c.length, KT)) return CABLE_SOLVED;
  std::fill_n(KT, 36, 0.0);
  return CABLE_NOT_CONVERGED;
}

}  // namespace

}  // namespace morvenik

void CALC_KT_TANGENT(const std::int32_t* /*elem*/, const double* X1, const double* X2, const double* F,
                     const double* area, const double* E, const double* L0, const double* w, const double* e,
                     double* KT, std::int32_t* status) {
  using namespace morvenik;
  std::fill_n(KT, 36, 0.0);
  cable c;
  // The tension at the middle has half of each end; the halves first, for the range of a double.
  const vector3 middle = 0.5 * at(F + 3) - 0.5 * at(F);
  const vector3 difference = at(X2) - at(X1);
  if (!make_cable(*area, *E, *L0, *e, w, c) || !finite(middle) || !finite(difference)) {
    *status = CABLE_BAD_DATA;
    return;
  }
  *status = tangent(c, middle, KT);
}
