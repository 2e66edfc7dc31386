// layered_column.cpp: the stress update of the thickness points of a surface point (layered_point.cpp), two at a time.
//
// Neighbours mostly are both elastic or both plastic and stand in the two lanes of one calculation. A plastic point
// where anything is unusual goes through PLATE_RADIAL_RETURN, which reports what there is to report.
#include "plate_material/layered_column.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "common/array_columns.h"
#include "common/lanes.h"
#include "finites/fields.h"
#include "finites/records.h"
#include "plate_material/layered_kernel.h"
#include "plate_material/layered_point.h"
#include "plate_material/layered_store.h"

namespace {

constexpr const char* RETURN_TEXT = "Plasticite Plaque: pb avec algorithme de rabattement radial";

// Points in a REAL, and the value of one of them.
template <class REAL>
constexpr int POINTS_IN = sizeof(REAL) / sizeof(double);

double lane(double v, int /*point*/) { return v; }
double lane(LANES v, int point) { return v[point]; }

template <int N, class REAL>
VECTOR<N> lane(const VECTOR<N, REAL>& v, int point) {
  VECTOR<N> out;
  for (int i = 1; i <= N; ++i) out(i) = lane(v(i), point);
  return out;
}

template <class REAL>
const MATRIX<3, 3, REAL>& axes_of(const LAYERED_LAW& law) {
  if constexpr (POINTS_IN<REAL> == 1) {
    return law.EL.AXES;
  } else {
    return law.axes;
  }
}

VECTOR<5, LANES> side_by_side(const VECTOR<5>& a, const VECTOR<5>& b) {
  return {{LANES{a(1), b(1)}, LANES{a(2), b(2)}, LANES{a(3), b(3)}, LANES{a(4), b(4)}, LANES{a(5), b(5)}}};
}

bool all_zero(const VECTOR<6>& v) {
  for (const double value : v.V) {
    if (value != 0.0) return false;
  }
  return true;
}

// A point at the start of the step: its plastic strain in global and element axes and the equivalent one. Most points
// have none: nothing is turned then.
struct POINT_START {
  VECTOR<6> global;
  VECTOR<5> ep{};
  double ebar;

  POINT_START(const LAYERED_COLUMN& column, std::int32_t k)
      : global(global_values(column.s.EP_START, k)), ebar(column.s.EPBAR_START(k)) {
    if (!all_zero(global)) VEC6_TO_LOCAL5(column.law.EL, global, ep);
  }
};

void store_elastic(const LAYERED_COLUMN& column, const VECTOR<5>& sigma, const POINT_START& start, std::int32_t k) {
  const VECTOR<6> global = turned_to_global(column.law.EL.AXES, sigma, 0.0);
  store_point(column.s, column.law.increment_from_current, k, global, start.global, start.ebar, column.law.tangent);
}

void set_consistent_tangent(const LAYERED_LAW& law, double dlam, const VECTOR<5>& sigma, MATRIX5& C) {
  PLATE_TANGENT_ALGO(law.EL, dlam, sigma, law.P, metric_eigenvalues(law.theory),
                     elastic_eigenvalues(law.EL, law.theory), eigenvectors(law.theory), C);
}

// Returns plastic points k, k + 1, ... to the yield surface and, in operation 33, stores them. False, with nothing
// stored, where the general routine must decide.
template <class REAL>
bool return_points(const LAYERED_COLUMN& column, const VECTOR<5, REAL>& trial, VECTOR<5, REAL> ep, REAL ebar,
                   std::int32_t k) {
  const LAYERED_LAW& law = column.law;
  REAL dlam{};
  if (!find_multiplier(law, TRIAL_INVARIANTS<REAL>(law, trial), ebar, dlam)) return false;
  if (law.op != OP_FORCES_COMMIT) return true;
  const VECTOR<5, REAL> sigma = returned_stress(law, dlam, trial);
  const VECTOR<5, REAL> flow = flow_of(law.P, sigma);
  const REAL beta = dot(sigma, flow);
  for (int i = 1; i <= 5; ++i) ep(i) = ep(i) + dlam * flow(i);
  const MATRIX<3, 3, REAL>& axes = axes_of<REAL>(law);
  const VECTOR<6, REAL> stress = turned_to_global(axes, sigma, REAL{});
  const VECTOR<6, REAL> strain = turned_to_global(axes, ep, -(ep(1) + ep(2)));
  ebar = ebar + dlam * ROOT_2_3_SINGLE * root_of(beta);
  const MATRIX<5, 5, REAL> C = tangent_of(law, sigma, flow, beta);
  for (int point = 0; point < POINTS_IN<REAL>; ++point) {
    MATRIX5 of_point;
    for (int i = 0; i < 25; ++i) of_point.V[i] = lane(C.V[i], point);
    if (law.stored_tangent == TANGENT::CONSISTENT) {
      set_consistent_tangent(law, lane(dlam, point), lane(sigma, point), of_point);
    }
    store_point(column.s, law.increment_from_current, k + point, lane(stress, point), lane(strain, point),
                lane(ebar, point), of_point);
  }
  return true;
}

// A point that stands on its surface may have a multiplier so small that its relative changes are rounding and it never
// settles. The yield function and the consistency function differ by the single precision of the metric, so that the
// first sees it outside by some 1e-8. A plain call takes it as it stands, elastic; the protocol reports it.
constexpr double STANDS_ON_SURFACE = 1e-6;  // of kappa^2 / 3

bool stands_on_surface(const LAYERED_LAW& law, double f, double ebar) {
  const double kappa = law.yield_stress + law.hardening * ebar;
  return !law.failures.by_protocol() && f <= STANDS_ON_SURFACE * kappa * kappa / 3.0;
}

// Whether the point is elastic after all.
bool return_in_general(const LAYERED_COLUMN& column, const VECTOR<5>& trial, const POINT_START& start, double f,
                       std::int32_t k) {
  const LAYERED_LAW& law = column.law;
  std::int32_t ok = 1;
  const THICKNESS_POINT at{column.s, k, law.increment_from_current, law.failures.at(column.gp), law.stored_tangent};
  PLATE_RADIAL_RETURN(law.EL, trial, at, law.theory, law.op, ok);
  if (ok != 0) return false;
  if (stands_on_surface(law, f, start.ebar)) {
    store_elastic(column, trial, start, k);
    return true;
  }
  at.failures.failed(RETURN_TEXT);
  return false;
}

template <class REAL>
REAL yield_value(const LAYERED_LAW& law, const VECTOR<5, REAL>& trial, REAL ebar) {
  return yield_function(law.P, law.yield_stress, law.hardening, trial, ebar);
}

bool finish_point(const LAYERED_COLUMN& column, const VECTOR<5>& trial, const POINT_START& start, double f,
                  std::int32_t k) {
  if (f <= 0.0) {
    store_elastic(column, trial, start, k);
    return true;
  }
  if (std::isfinite(f) && return_points(column, trial, start.ep, start.ebar, k)) return false;
  return return_in_general(column, trial, start, f, k);
}

// Points k and k + 1.
bool finish_two_points(const LAYERED_COLUMN& column, const VECTOR<5, LANES>& trial, const VECTOR<5, LANES>& ep,
                       const POINT_START& first, const POINT_START& second, std::int32_t k) {
  const LANES ebar{first.ebar, second.ebar};
  const LANES f = yield_value(column.law, trial, ebar);
  const bool both_yield = f[0] > 0.0 && f[1] > 0.0 && std::isfinite(f[0]) && std::isfinite(f[1]);
  if (both_yield && return_points(column, trial, ep, ebar, k)) return false;
  const bool elastic = finish_point(column, lane(trial, 0), first, f[0], k);
  return finish_point(column, lane(trial, 1), second, f[1], k + 1) && elastic;
}

bool update_two_points(const LAYERED_COLUMN& column, const VECTOR<5, LANES>& strain, std::int32_t k) {
  const POINT_START first(column, k);
  const POINT_START second(column, k + 1);
  const VECTOR<5, LANES> ep = side_by_side(first.ep, second.ep);
  return finish_two_points(column, elastic_stress(column.law.D, ep, strain), ep, first, second, k);
}

// ---- points of packed fields that are elastic and had no plastic strain before: most of all points

// Whether 2 n values are zero, of either sign.
template <int N>
bool all_zero_at(const double* at) {
  LANE_BITS any = bits_of(lanes_at(at));
  for (int i = 1; i < N; ++i) any = any | bits_of(lanes_at(at + 2 * i));
  return static_cast<std::uint64_t>(any[0] | any[1]) << 1U == 0;
}

// One value of a point, or of two points that follow each other, and back; the vectors of six.
template <class REAL>
REAL load_points(const double* from) {
  REAL v;
  std::memcpy(&v, from, sizeof v);
  return v;
}

void store_points(const VECTOR<6>& v, double* to) { std::copy_n(v.data(), 6, to); }
void store_points(const VECTOR<6, LANES>& v, double* to) {
  for (int i = 1; i < 6; i += 2) {
    store_lanes(to + i - 1, LANES{v(i)[0], v(i + 1)[0]});
    store_lanes(to + 6 + i - 1, LANES{v(i)[1], v(i + 1)[1]});
  }
}

// Points k, k + 1, ... False, with nothing stored, where one is of another kind. EP_CUR becomes EP_START: 0, of its
// sign. A tangent that stands there already is not written again: the state of a model is larger than the caches.
template <class REAL>
bool update_calm_points(const LAYERED_COLUMN& column, const VECTOR<5, REAL>& strain, std::int32_t k) {
  constexpr int POINTS = POINTS_IN<REAL>;
  const LAYERED_LAW& law = column.law;
  const PACKED_FIELDS& at = column.packed;
  const int six = 6 * (k - 1);
  if (!at || !all_zero_at<3 * POINTS>(at.EP_START + six)) return false;
  const REAL ebar = load_points<REAL>(at.EPBAR_START + k - 1);
  const VECTOR<5, REAL> trial = elastic_stress(law.D, VECTOR<5, REAL>{}, strain);
  if (!at_most(yield_value(law, trial, ebar), 0.0)) return false;
  store_points(turned_to_global(axes_of<REAL>(law), trial, REAL{}), at.SIG + six);
  const double* const reference = law.increment_from_current ? at.EP_CUR : at.EP_START;
  for (int i = six; i < six + 6 * POINTS; i += 2) {
    const LANES p = lanes_at(at.EP_START + i);
    store_lanes(at.EP_INC + i, p - lanes_at(reference + i));
    store_lanes(at.EP_CUR + i, p);
  }
  std::memcpy(at.EPBAR_CUR + k - 1, &ebar, sizeof ebar);
  double* const C = at.TANGENT + 25 * (k - 1);
  constexpr std::size_t length = 25 * POINTS * sizeof(double);
  // Bit by bit: a read is cheaper than a write, and a zero of the other sign is written as well.
  const auto* const there = reinterpret_cast<const unsigned char*>(C);
  const auto* const wanted = reinterpret_cast<const unsigned char*>(law.two_tangents);
  if (std::memcmp(there, wanted, length) != 0) std::memcpy(C, law.two_tangents, length);
  return true;
}

// m + z b in the plane, the shears across.
template <class REAL>
VECTOR<5, REAL> strain_at(const LAYERED_STRAINS& e, REAL z) {
  const REAL none{};
  return {{e.m(1) + z * e.b(1), e.m(2) + z * e.b(2), e.m(3) + z * e.b(3), none + e.s(1), none + e.s(2)}};
}

}  // namespace

bool update_layered_point(const LAYERED_COLUMN& column, const VECTOR<5>& strain, std::int32_t k) {
  const POINT_START start(column, k);
  const VECTOR<5> trial = elastic_stress(column.law.D, start.ep, strain);
  return finish_point(column, trial, start, yield_value(column.law, trial, start.ebar), k);
}

bool update_layered_points(const LAYERED_COLUMN& column, const LAYERED_STRAINS& total, const THICKNESS_SECTION& rule,
                           std::int32_t n) {
  bool elastic = true;
  std::int32_t k = 1;
  for (; k < n; k += 2) {
    if (column.next != nullptr) column.next->expect(k);
    const VECTOR<5, LANES> strain = strain_at(total, LANES{rule.z(k), rule.z(k + 1)});
    if (!update_calm_points(column, strain, k)) elastic &= update_two_points(column, strain, k);
  }
  if (k == n) {
    const VECTOR<5> strain = strain_at(total, rule.z(k));
    if (!update_calm_points(column, strain, k)) elastic &= update_layered_point(column, strain, k);
  }
  return elastic;
}
