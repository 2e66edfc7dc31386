// beam_span.cpp: section forces and displacements along a beam, from its first end on.
//
// Bending in a plane, with the rotation phi of the section from x to the transverse axis, the shear force V along that
// axis and the moment m = E I (phi' - k), which the part beyond a place exerts on the part before it:
//
//     V' = -q,   m' = -V,   phi' = m / (E I) + k,   v' = phi + V / (G As)
//
// A temperature gradient g across the beam curves it freely by k = -alpha g. With forces P and moments C at places a,
// and <t> = t for t > 0, 0 otherwise (Macaulay, 1919), from the values V0, m0, phi0, v0 at x = 0:
//
//     V   = V0 - q x - sum P <x-a>^0
//     m   = m0 - V0 x + q x^2/2 + sum P <x-a> - sum C <x-a>^0
//     phi = phi0 + k x + (m0 x - V0 x^2/2 + q x^3/6 + sum P <x-a>^2/2 - sum C <x-a>) / (E I)
//     v   = v0 + phi0 x + k x^2/2 + (m0 x^2/2 - V0 x^3/6 + q x^4/24 + sum P <x-a>^3/6 - sum C <x-a>^2/2) / (E I)
//           + (V0 x - q x^2/2 - sum P <x-a>) / (G As)
//
// A connection of fixity r is a spring 3 E I r / (L (1 - r)) between node and end (Monforton and Wu, 1963). With the
// rotations t1, t2 of the nodes, and d = (v2 - v1) / L, the ends are held by
//
//     3 r1 (t1 - phi0) = -(1 - r1) m0 L/(E I),     3 r2 (t2 - phi(L)) = (1 - r2) m(L) L/(E I),     v(L) - v0 = d L
//
// In pure numbers M = m0 L/(E I), V = V0 L^2/(E I), s = E I/(G As L^2), and with the effects vp, phip, mp of the loads
// alone at x = L (divided likewise), two equations remain once phi0 is eliminated:
//
//     (1 + r1/2) M - 3 r1 (1/6 - s) V = 3 r1 (d - t1 - vp)
//     (1 + r2/2) M - (1 + 3 r2 s) V   = 3 r2 (t2 - d + vp - phip) - (1 - r2) mp
//
// Their determinant is -(4 - r1 r2 + 12 s (r1 + r2 + r1 r2)) / 4, never 0. Where V is released at an end, it is 0
// there, which gives V0, and the end slides; the springs alone remain, in M and phi0, with the determinant
// 3 (r1 + r2 + r1 r2): 0 between two pins, a mechanism.
//
// Along the beam N' = -qx and u' = N / (E A) + alpha t, about it T' = 0 and angle' = T / (G J), with jumps at the
// points.
#include "plain_calls/beam_span.h"

#include <cmath>

namespace {

// Share of the length by which a place may lie beyond an end.
constexpr double ROUNDING = 1e-9;
// Share of all loads below which those of a plane come from rounding in the axes.
constexpr double FROM_AXES = 1e-12;

// A direction of the loads: forces along `axis`, moments about `about` with a sign; 0 none.
struct DIRECTION {
  int force_axis, moment_axis;
  double sign;
};
constexpr DIRECTION XY{2, 3, 1.0}, XZ{3, 2, -1.0}, ALONG{1, 0, 0.0}, ABOUT{0, 1, 1.0};

double component(const PLAIN_BEAM& beam, int axis, const double* global) {
  if (axis == 0) return 0.0;
  const MATRIX<3, 3>& R = beam.frame.axes;
  return R(axis, 1) * global[0] + R(axis, 2) * global[1] + R(axis, 3) * global[2];
}

// Sums over the points before x: P[k] = sum P <x-a>^k, C[k] likewise.
struct SUMS {
  double P[4], C[3];
};

// `all`: with the points at x itself.
SUMS sums_before(const PLAIN_BEAM& beam, const SPAN_LOAD& load, const DIRECTION& d, double x, bool all) {
  SUMS s{};
  for (int i = 0; i < load.count; ++i) {
    double a = 0.0;
    place_along(beam, load.points[i].x, a);
    if (a > x || (a == x && !all)) continue;
    const double t = x - a;
    const double P = component(beam, d.force_axis, load.points[i].force);
    const double C = d.sign * component(beam, d.moment_axis, load.points[i].moment);
    double power = 1.0;
    for (int k = 0; k < 4; ++k, power *= t) {
      s.P[k] += P * power;
      if (k < 3) s.C[k] += C * power;
    }
  }
  return s;
}

// One plane of bending.
struct PLANE {
  double L, EI, GA;  // GA 0: no shear deformation
  double r1, r2;
  int released;
  double q, curvature;
};

double per_shear_stiffness(const PLANE& p) { return p.GA > 0.0 ? 1.0 / p.GA : 0.0; }

// v, phi, V, m at x from the values at the first end.
struct PLACE {
  double v, phi, V, m;
};

PLACE place_at(const PLANE& p, const SPAN_START& from, const SUMS& s, double x) {
  const double qx = p.q * x;
  PLACE at;
  at.V = from.V - qx - s.P[0];
  at.m = from.m - from.V * x + qx * x / 2.0 + s.P[1] - s.C[0];
  const double phi = from.m * x - from.V * x * x / 2.0 + qx * x * x / 6.0 + s.P[2] / 2.0 - s.C[1];
  const double v =
      from.m * x * x / 2.0 - from.V * x * x * x / 6.0 + qx * x * x * x / 24.0 + s.P[3] / 6.0 - s.C[2] / 2.0;
  const double slip = (from.V * x - qx * x / 2.0 - s.P[1]) * per_shear_stiffness(p);
  at.phi = from.phi + p.curvature * x + phi / p.EI;
  at.v = from.v + from.phi * x + p.curvature * x * x / 2.0 + v / p.EI + slip;
  return at;
}

// The displacements of both nodes: transverse, and the rotation from x to the transverse axis.
struct HELD {
  double v1, t1, v2, t2;
};

// The loads alone at the second end, in pure numbers.
struct EFFECTS {
  double v, phi, m;
};

void hold_both(const PLANE& p, const HELD& held, const EFFECTS& e, double s, SPAN_START& start) {
  const double drift = (held.v2 - held.v1) / p.L;
  const double c = 1.0 / 6.0 - s;
  const double a11 = 1.0 + p.r1 / 2.0;
  const double a12 = -3.0 * p.r1 * c;
  const double a21 = 1.0 + p.r2 / 2.0;
  const double a22 = -(1.0 + 3.0 * p.r2 * s);
  const double b1 = 3.0 * p.r1 * (drift - held.t1 - e.v);
  const double b2 = 3.0 * p.r2 * (held.t2 - drift + e.v - e.phi) - (1.0 - p.r2) * e.m;
  const double determinant = -(4.0 - p.r1 * p.r2 + 12.0 * s * (p.r1 + p.r2 + p.r1 * p.r2)) / 4.0;
  const double M = (b1 * a22 - a12 * b2) / determinant;
  const double V = (a11 * b2 - a21 * b1) / determinant;
  start.v = held.v1;
  start.phi = drift - e.v - M / 2.0 + V * c;
  start.m = M * p.EI / p.L;
  start.V = V * p.EI / (p.L * p.L);
}

// V0 is known: start.V.
void hold_sliding(const PLANE& p, const HELD& held, const EFFECTS& e, double s, SPAN_START& start) {
  const double V = start.V * p.L * p.L / p.EI;
  const double b1 = -3.0 * p.r1 * held.t1;
  const double b2 = 3.0 * p.r2 * (held.t2 + V / 2.0 - e.phi) + (1.0 - p.r2) * (V - e.m);
  const double determinant = 3.0 * (p.r1 + p.r2 + p.r1 * p.r2);
  const double M = (3.0 * p.r2 * b1 + 3.0 * p.r1 * b2) / determinant;
  start.phi = ((1.0 - p.r1) * b2 - (1.0 + 2.0 * p.r2) * b1) / determinant;
  start.m = M * p.EI / p.L;
  const double rise = start.phi + M / 2.0 - V * (1.0 / 6.0 - s) + e.v;
  start.v = p.released == 1 ? held.v2 - p.L * rise : held.v1;
}

SPAN_START solve_plane(const PLANE& p, const HELD& held, const SUMS& s) {
  const PLACE loads = place_at(p, {}, s, p.L);
  const EFFECTS effects{loads.v / p.L, loads.phi, loads.m * p.L / p.EI};
  const double shear = per_shear_stiffness(p) * p.EI / (p.L * p.L);
  SPAN_START start{};
  if (p.released == 0) {
    hold_both(p, held, effects, shear, start);
  } else {
    start.V = p.released == 2 ? -loads.V : 0.0;
    hold_sliding(p, held, effects, shear, start);
  }
  const PLACE end = place_at(p, start, s, p.L);
  start.V_end = p.released == 2 ? 0.0 : end.V;
  start.m_end = p.r2 == 0.0 ? 0.0 : end.m;
  if (p.r1 == 0.0) start.m = 0.0;
  return start;
}

PLANE plane_xy(const PLAIN_BEAM& beam, const SPAN_LOAD& load) {
  const BEAM_PROPERTIES& p = beam.properties;
  return {p.L, p.E1 * p.I1, p.G * p.AS1, p.b1, p.b2, p.release_y, load.q[1], load.curvature[0]};
}

PLANE plane_xz(const PLAIN_BEAM& beam, const SPAN_LOAD& load) {
  const BEAM_PROPERTIES& p = beam.properties;
  return {p.L, p.E2 * p.I2, p.G * p.AS2, p.a1, p.a2, p.release_z, load.q[2], load.curvature[1]};
}

// A bar between two values, of stiffness EA per length, with a load along it.
struct BAR {
  double L, EA, q, strain;
  int released;
};

double bar_at(const BAR& b, const SPAN_START& from, const SUMS& s, bool torsion, double x) {
  const double jumps = torsion ? s.C[1] : s.P[1];
  return from.v + (from.V * x - b.q * x * x / 2.0 - jumps) / b.EA + b.strain * x;
}

SPAN_START solve_bar(const BAR& b, double first, double second, const SUMS& s, bool torsion) {
  const double total = b.q * b.L + (torsion ? s.C[0] : s.P[0]);
  SPAN_START start{};
  const double loads = bar_at(b, {}, s, torsion, b.L);
  if (b.released == 0) start.V = (second - first - loads) * b.EA / b.L;
  if (b.released == 2) start.V = total;
  start.v = first;
  if (b.released == 1) start.v = second - loads;
  start.V_end = b.released == 2 ? 0.0 : start.V - total;
  return start;
}

BAR axial_bar(const PLAIN_BEAM& beam, const SPAN_LOAD& load) {
  const BEAM_PROPERTIES& p = beam.properties;
  return {p.L, p.E1 * p.AREA, load.q[0], load.strain, p.release_x};
}

BAR torsion_bar(const PLAIN_BEAM& beam) {
  return {beam.properties.L, beam.properties.GJ, 0.0, 0.0, beam.properties.release_t};
}

// A measure of the loads of a plane, as forces, and of all loads.
struct SIZES {
  double plane, all;
};

SIZES load_sizes(const PLAIN_BEAM& beam, const SPAN_LOAD& load, const DIRECTION& d) {
  const double L = beam.frame.length;
  SIZES sizes{std::fabs(load.q[d.force_axis - 1]) * L, 0.0};
  for (const double q : load.q) sizes.all += std::fabs(q) * L;
  for (int i = 0; i < load.count; ++i) {
    const finites_beam_point_load& p = load.points[i];
    sizes.plane +=
        std::fabs(component(beam, d.force_axis, p.force)) + std::fabs(component(beam, d.moment_axis, p.moment)) / L;
    for (int k = 0; k < 3; ++k) sizes.all += std::fabs(p.force[k]) + std::fabs(p.moment[k]) / L;
  }
  return sizes;
}

finites_status bend(const PLAIN_BEAM& beam, const SPAN_LOAD& load, const PLANE& p, const DIRECTION& d, const HELD& held,
                    bool forces_only, SPAN_START& start) {
  if (p.released != 0 && p.r1 == 0.0 && p.r2 == 0.0) {
    const SIZES sizes = load_sizes(beam, load, d);
    if (!forces_only || sizes.plane > FROM_AXES * sizes.all) return FINITES_MECHANISM;
    start = {};
    return FINITES_OK;
  }
  start = solve_plane(p, held, sums_before(beam, load, d, p.L, true));
  return FINITES_OK;
}

finites_status check_points(const PLAIN_BEAM& beam, const finites_beam_load& load) {
  if (load.point_count < 0) return FINITES_RANGE;
  if (load.point_count > 0 && load.points == nullptr) return FINITES_NULL;
  for (int i = 0; i < load.point_count; ++i) {
    const finites_beam_point_load& p = load.points[i];
    const finites_status status =
        first_fault(check_member_numbers(&p.x, 1), check_member_numbers(p.force, 3), check_member_numbers(p.moment, 3));
    if (status != FINITES_OK) return status;
    double place = 0.0;
    if (!place_along(beam, p.x, place)) return FINITES_LENGTH;
  }
  return FINITES_OK;
}

}  // namespace

bool place_along(const PLAIN_BEAM& beam, double x, double& place) {
  const double L = beam.frame.length;
  place = std::fmin(std::fmax(x, 0.0), L);
  return std::fabs(x - place) <= ROUNDING * L;
}

finites_status read_load(const PLAIN_BEAM& beam, const finites_beam_load* from, SPAN_LOAD& load) {
  load = {};
  if (from == nullptr) return FINITES_OK;
  const double temperature[] = {from->temperature, from->gradient_y, from->gradient_z};
  const finites_status status =
      first_fault(check_member_numbers(from->line, 3), check_member_numbers(from->line_local, 3),
                  check_member_numbers(temperature, 3), check_points(beam, *from));
  if (status != FINITES_OK) return status;
  for (int i = 0; i < 3; ++i) load.q[i] = component(beam, i + 1, from->line) + from->line_local[i];
  load.strain = beam.expansion * from->temperature;
  load.curvature[0] = -beam.expansion * from->gradient_y;
  load.curvature[1] = -beam.expansion * from->gradient_z;
  load.points = from->points;
  load.count = from->point_count;
  return FINITES_OK;
}

finites_status solve_span(const PLAIN_BEAM& beam, const SPAN_LOAD& load, const VECTOR<12>& d, bool forces_only,
                          SPAN& span) {
  const double L = beam.frame.length;
  const HELD xy{d(2), d(6), d(8), d(12)};
  const HELD xz{d(3), -d(5), d(9), -d(11)};
  span.axial = solve_bar(axial_bar(beam, load), d(1), d(7), sums_before(beam, load, ALONG, L, true), false);
  span.torsion = solve_bar(torsion_bar(beam), d(4), d(10), sums_before(beam, load, ABOUT, L, true), true);
  return first_fault(bend(beam, load, plane_xy(beam, load), XY, xy, forces_only, span.xy),
                     bend(beam, load, plane_xz(beam, load), XZ, xz, forces_only, span.xz));
}

// A rotation about y leads from z to x: moments of the x-z plane have the other sign.
VECTOR<12> end_forces_of(const SPAN& s) {
  return {{-s.axial.V, -s.xy.V, -s.xz.V, -s.torsion.V, s.xz.m, -s.xy.m, s.axial.V_end, s.xy.V_end, s.xz.V_end,
           s.torsion.V_end, -s.xz.m_end, s.xy.m_end}};
}

finites_beam_section section_at(const PLAIN_BEAM& beam, const SPAN_LOAD& load, const SPAN& span, double x) {
  const PLACE xy = place_at(plane_xy(beam, load), span.xy, sums_before(beam, load, XY, x, false), x);
  const PLACE xz = place_at(plane_xz(beam, load), span.xz, sums_before(beam, load, XZ, x, false), x);
  const SUMS along = sums_before(beam, load, ALONG, x, false);
  const SUMS about = sums_before(beam, load, ABOUT, x, false);
  finites_beam_section s;
  s.x = x;
  s.force[0] = span.axial.V - load.q[0] * x - along.P[0];
  s.force[1] = xy.V;
  s.force[2] = xz.V;
  s.moment[0] = span.torsion.V - about.C[0];
  s.moment[1] = -xz.m;
  s.moment[2] = xy.m;
  s.displacement[0] = bar_at(axial_bar(beam, load), span.axial, along, false, x);
  s.displacement[1] = xy.v;
  s.displacement[2] = xz.v;
  s.rotation[0] = bar_at(torsion_bar(beam), span.torsion, about, true, x);
  s.rotation[1] = -xz.phi;
  s.rotation[2] = xy.phi;
  return s;
}
