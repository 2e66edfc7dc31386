// plastic_sections.cpp: section forces, stresses and plastic strains of a point, out of its stored state.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <map>

#include "elastoplastic/plastic_plates.h"
#include "model/vectors.h"
#include "tarnix.h"

namespace solver {

namespace {

// Global values xx, yy, zz, xy, xz, yz to element axes: shears turn as they stand.
MATRIX<3, 3> local_tensor(const double* t, const MATRIX<3, 3>& axes) {
  const MATRIX<3, 3> T{{t[0], t[3], t[4], t[3], t[1], t[5], t[4], t[5], t[2]}};
  MATRIX<3, 3> L;
  TENSEUR_G2L_DBL(T.V, axes.V, L.V);
  return L;
}

VECTOR<3> in_plane(const MATRIX<3, 3>& t) { return {{t(1, 1), t(2, 2), t(1, 2)}}; }

// The Legendre polynomial P(n) and its derivative inside the interval.
struct legendre {
  double value, slope;
};
legendre legendre_at(int n, double x) {
  double before = 1, now = x;
  for (int k = 2; k <= n; ++k) {
    const double next = ((2 * k - 1) * x * now - (k - 1) * before) / k;
    before = now;
    now = next;
  }
  return {now, n * (before - x * now) / (1 - x * x)};
}

constexpr double LAST_DIGIT = 1e-16;  // of a station between -1 and 1: half a unit in the last place

// A root of P'(n) near x; P'' follows from Legendre's equation.
double station_near(int n, double x) {
  for (int pass = 0; pass < 50; ++pass) {
    const legendre p = legendre_at(n, x);
    const double curvature = (2 * x * p.slope - n * (n + 1) * p.value) / (1 - x * x);
    const double step = p.slope / curvature;
    x -= step;
    if (std::fabs(step) < LAST_DIGIT) break;
  }
  return x;
}

}  // namespace

static thickness_rule made_rule(int points) {
  const int n = points - 1;
  thickness_rule rule;
  for (int k = 0; k <= n; ++k) {
    const bool face = k == 0 || k == n;
    const double x = k == 0 ? -1.0 : k == n ? 1.0 : 2 * k == n ? 0.0 : station_near(n, -std::cos(PI * k / n));
    const double P = face ? 1.0 : legendre_at(n, x).value;
    rule.station.push_back(x);
    rule.weight.push_back(2 / (n * (n + 1) * P * P));
  }
  return rule;
}

const thickness_rule& lobatto_rule(int points) {
  static std::map<int, thickness_rule> made;  // of the point counts seen so far
  const auto found = made.find(points);
  return found != made.end() ? found->second : made.emplace(points, made_rule(points)).first->second;
}

// The plastic strains of the whole-section model: two tensors, membrane with transverse shear, then curvatures.
section_vector plastic_plates::plastic_strain(const plate& p, const double* record) const {
  const MATRIX<3, 3> m = local_tensor(record, p.axes), b = local_tensor(record + 6, p.axes);
  return {{m(1, 1), m(2, 2), m(1, 2), b(1, 1), b(2, 2), b(1, 2), m(1, 3), m(2, 3)}};
}

namespace {

// A record's plastic strain of a point, from a local vector.
void put_plastic_strain(const section_vector& p, const MATRIX<3, 3>& axes, double* record) {
  const auto turn = [&](const MATRIX<3, 3>& local, double* t) {
    MATRIX<3, 3> T;
    TENSEUR_L2G_DBL(local.V, axes.V, T.V);
    const std::array<double, 6> parts = {T(1, 1), T(2, 2), T(3, 3), T(1, 2), T(1, 3), T(2, 3)};
    std::copy(parts.begin(), parts.end(), t);
  };
  turn({{p(1), p(3), p(7), p(3), p(2), p(8), p(7), p(8), 0}}, record);
  turn({{p(4), p(6), 0, p(6), p(5), 0, 0, 0, 0}}, record + 6);
}

section_vector sum(section_vector a, double factor, const section_vector& b) {
  for (int i = 1; i <= 8; ++i) a(i) += factor * b(i);
  return a;
}

section_vector flow_of(const finites_section_corner& corner) {
  section_vector flow;
  std::copy_n(corner.flow, 8, flow.data());
  return flow;
}

// A point that has flowed along both normals: its record after the library's update.
void put_corner(const section_vector& start, const finites_section_corner& corner, const MATRIX<3, 3>& axes, int point,
                PLATE_STATE_RECORD& record) {
  const section_vector f = flow_of(corner);
  put_plastic_strain(start, axes, &record.SEC_EP_START(1, point));
  put_plastic_strain(sum(start, 1, f), axes, &record.SEC_EP_CUR(1, point));
  for (int i = 1; i <= 12; ++i) {
    record.SEC_EP_INC(i, point) = record.SEC_EP_CUR(i, point) - record.SEC_EP_START(i, point);
  }
  record.SEC_EPBAR_CUR(point) = corner.equivalent;
  record.SEC_SIGN_CUR(point) = corner.mixed;
  record.SEC_CURV_INC(point) = std::sqrt(f(4) * f(4) + f(5) * f(5) + f(4) * f(5) + 0.25 * f(6) * f(6));
  std::copy_n(corner.tangent, 64, &record.SEC_TANGENT(1, 1, point));
}

}  // namespace

// Does a point stand where its record says: within its yield condition, or on it, on the side that was chosen?
bool plastic_plates::stands(const plate& p, const PLATE_STATE_RECORD& record, int point,
                            const section_vector& strain) const {
  // The library's return ends at 1e-4 of the multiplier, or closer; the side is known to the rounding of its steps.
  constexpr double ON_SURFACE = 1e-4, OFF_SIDE = 1e-6;
  const section_vector force = times(p.D, sum(strain, -1, plastic_strain(p, &record.SEC_EP_CUR(1, point))));
  double excess = 0, mixed = 0;
  if (finites_section_value(&p.strength, force.data(), record.SEC_EPBAR_CUR(point), &excess, &mixed) != FINITES_OK) {
    return false;
  }
  if (!(excess <= ON_SURFACE)) return false;
  if (record.SEC_EPBAR_CUR(point) <= record.SEC_EPBAR_START(point)) return true;
  return excess >= -ON_SURFACE && mixed * record.SEC_SIGN_START(point) >= -OFF_SIDE;
}

// One call for the four points, each with the side on which its return ends. A point in the corner of the surface
// starts the call where it ends, so that the library finds nothing to do there; its flow and its tangent are put in
// afterwards.
bool plastic_plates::update_section(std::size_t element, const element_vector& increment) {
  const plate& p = plates_[plate_of_[element]];
  PLATE_STATE_RECORD& record = library_.plates().state(element);
  std::array<section_vector, SURFACE_POINTS> strain, start;
  std::array<finites_section_corner, SURFACE_POINTS> corner;
  std::array<std::int32_t, SURFACE_POINTS> side{};
  for (int q = 1; q <= SURFACE_POINTS; ++q) {
    const auto at = subscript(q - 1);
    strain[at] = sum(p.accepted[at], 1, times(p.B[at], increment));
    start[at] = plastic_strain(p, &record.SEC_EP_START(1, q));
    const section_vector trial = times(p.D, sum(strain[at], -1, start[at]));
    const finites_status status = finites_section_return(&p.strength, p.D.data(), trial.data(),
                                                         record.SEC_EPBAR_START(q), &side[at], &corner[at]);
    if (status != FINITES_OK) return false;
    record.SEC_SIGN_START(q) = side[at] == FINITES_SIDE_NEGATIVE ? -1 : 1;
    if (side[at] == FINITES_SIDE_CORNER) {
      put_plastic_strain(sum(start[at], 1, flow_of(corner[at])), p.axes, &record.SEC_EP_START(1, q));
    }
  }
  element_vector unused;
  library_.plates().commit_forces(element, increment, unused);
  bool sound = true;
  for (int q = 1; q <= SURFACE_POINTS; ++q) {
    const auto at = subscript(q - 1);
    if (side[at] == FINITES_SIDE_CORNER) {
      put_corner(start[at], corner[at], p.axes, q, record);
    } else {
      sound = sound && stands(p, record, q, strain[at]);
    }
  }
  return sound;
}

void plastic_plates::layered_values(std::size_t element, const plate& p, int point, point_values& v) const {
  const POINT_STATE_RECORD& state = library_.plates().state(element).POINT_STATE(point);
  const int n = number_of(state.EPBAR_CUR.DIMENSION[0].EXTENT);
  const thickness_rule& rule = lobatto_rule(n);
  const double half = thickness(element) / 2;
  const std::array<int, 3> shown{1, (n + 1) / 2, n};
  for (int k = 1; k <= n; ++k) {
    const auto at = subscript(k - 1);
    const double w = rule.weight[at] * half, z = rule.station[at] * half;
    const MATRIX<3, 3> stress = local_tensor(&state.SIG(1, k), p.axes);
    const VECTOR<3> s = in_plane(stress);
    for (int i = 1; i <= 3; ++i) {
      v.force(i) += w * s(i);
      v.force(i + 3) += w * z * s(i);
    }
    v.force(7) += w * stress(1, 3);
    v.force(8) += w * stress(2, 3);
    const MATRIX<3, 3> plastic = local_tensor(&state.EP_CUR(1, k), p.axes);
    for (std::size_t face = 0; face < 3; ++face) {
      if (shown[face] != k) continue;
      v.stress[face] = s;
      v.plastic[face] = in_plane(plastic);
    }
    if (k == shown[1]) {
      v.shear_stress = {stress(1, 3), stress(2, 3)};
      v.plastic_shear = {plastic(1, 3), plastic(2, 3)};
    }
    v.equivalent = std::max(v.equivalent, state.EPBAR_CUR(k));
  }
}

point_values plastic_plates::values(std::size_t element, int point, const element_vector& u) const {
  const plate& p = plates_[plate_of_[element]];
  point_values v;
  if (library_.plates().model_of(element) == plate_model::LAYERED) {
    layered_values(element, p, point, v);
    return v;
  }
  v.force = section_forces(element, p, point, u);
  const section_vector ep = plastic_strain(p, &library_.plates().state(element).SEC_EP_CUR(1, point));
  const double h = thickness(element);
  for (std::size_t face = 0; face < 3; ++face) {
    const double side = static_cast<double>(face) - 1;  // bottom, middle, top
    for (int i = 1; i <= 3; ++i) {
      v.stress[face](i) = v.force(i) / h + side * 6 * v.force(i + 3) / (h * h);
      v.plastic[face](i) = ep(i) + side * h / 2 * ep(i + 3);
    }
  }
  for (int i = 0; i < 2; ++i) {
    v.shear_stress[subscript(i)] = v.force(7 + i) / (0.833333333333333 * h);
    v.plastic_shear[subscript(i)] = ep(7 + i);
  }
  v.equivalent = library_.plates().state(element).SEC_EPBAR_CUR(point);
  return v;
}

int plastic_plates::flowing_points(std::size_t element) const {
  if (!yields(element)) return 0;
  const PLATE_STATE_RECORD& record = library_.plates().state(element);
  int count = 0;
  for (int q = 1; q <= SURFACE_POINTS; ++q) {
    bool flows = false;
    if (library_.plates().model_of(element) == plate_model::SECTION) {
      flows = !(record.SEC_EPBAR_CUR(q) <= record.SEC_EPBAR_START(q));
    } else {
      const POINT_STATE_RECORD& state = record.POINT_STATE(q);
      for (std::int64_t k = 1; k <= state.EPBAR_CUR.DIMENSION[0].EXTENT; ++k) {
        flows = flows || !(state.EPBAR_CUR(k) <= state.EPBAR_START(k));
      }
    }
    count += flows ? 1 : 0;
  }
  return count;
}

}  // namespace solver
