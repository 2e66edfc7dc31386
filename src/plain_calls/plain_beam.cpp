// plain_beam.cpp: checks and axes of the beams of the plain calls.
//
// A rigid link from node to end, o = offset, moves the end with u + theta x o and turns it with theta. With the matrix
// T2 of this for both ends and the rotation T, u_local = T T2 u, F = T2^T T^T f and K := T2^T T^T K T T2.
#include "plain_calls/plain_beam.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

#include "frame_elements/plane_pattern.h"
#include "plain_calls/batch.h"
#include "plain_calls/lanes/beam_limits.h"

namespace {

finites_status check_values(const finites_beam& b) {
  const double values[] = {b.E,           b.G,           b.E2,         b.density,      b.expansion,    b.area,
                           b.Iz,          b.Iy,          b.J,          b.shear_area_y, b.shear_area_z, b.fixity_z[0],
                           b.fixity_z[1], b.fixity_y[0], b.fixity_y[1]};
  return first_fault(check_member_numbers(&b.xyz[0][0], 6), check_member_numbers(b.up, 3),
                     check_member_numbers(&b.offset[0][0], 6),
                     check_member_numbers(values, static_cast<int>(sizeof values / sizeof *values)));
}

finites_status check_properties(const finites_beam& b) {
  if (!(b.E > 0.0) || !(b.G > 0.0) || b.E2 < 0.0) return FINITES_MODULUS;
  if (b.density < 0.0) return FINITES_DENSITY;
  for (const double s : {b.area, b.Iz, b.Iy, b.J}) {
    if (!(s > 0.0)) return FINITES_SECTION;
  }
  if (b.shear_area_y < 0.0 || b.shear_area_z < 0.0) return FINITES_SECTION;
  for (const double f : {b.fixity_z[0], b.fixity_z[1], b.fixity_y[0], b.fixity_y[1]}) {
    if (f < 0.0 || f > 1.0) return FINITES_FIXITY;
  }
  for (const std::int32_t code : {b.release_axial, b.release_y, b.release_z, b.release_torsion}) {
    if (code < 0 || code > 2) return FINITES_RELEASE;
  }
  return FINITES_OK;
}

void set_link(const double o[3], int first, MATRIX_VIEW<12> T2) {
  T2(first, first + 4) = o[2];
  T2(first, first + 5) = -o[1];
  T2(first + 1, first + 3) = -o[2];
  T2(first + 1, first + 5) = o[0];
  T2(first + 2, first + 3) = o[1];
  T2(first + 2, first + 4) = -o[0];
}

void links_of(const PLAIN_BEAM& beam, double* T2) {
  std::fill_n(T2, 144, 0.0);
  const MATRIX_VIEW<12> view(T2);
  for (int d = 1; d <= 12; ++d) view(d, d) = 1.0;
  set_link(beam.offset[0], 1, view);
  set_link(beam.offset[1], 7, view);
}

bool surely_has_frame(const finites_beam& b) {
  constexpr double SHORT = SURE_LIMITS::SHORT, APART = SURE_LIMITS::APART, SINE = SURE_LIMITS::SINE;
  const double* const up = b.up;
  double along[3];
  double largest = 0.0, square = 0.0;
  for (int i = 0; i < 3; ++i) {
    const double first = b.xyz[0][i] + b.offset[0][i], second = b.xyz[1][i] + b.offset[1][i];
    along[i] = second - first;
    largest = std::max(largest, std::max(std::fabs(first), std::fabs(second)));
    square += along[i] * along[i];
  }
  if (!(square > SHORT * SHORT && square > APART * APART * largest * largest)) return false;
  const double of_up = up[0] * up[0] + up[1] * up[1] + up[2] * up[2];
  if (up[0] == 0.0 && up[1] == 0.0 && up[2] == 0.0) return true;
  const double side[3] = {along[1] * up[2] - along[2] * up[1], along[2] * up[0] - along[0] * up[2],
                          along[0] * up[1] - along[1] * up[0]};
  return of_up > SHORT * SHORT &&
         side[0] * side[0] + side[1] * side[1] + side[2] * side[2] > SINE * SINE * of_up * square;
}

bool within(const double (&fixity)[2]) {
  return fixity[0] >= 0.0 && fixity[0] <= 1.0 && fixity[1] >= 0.0 && fixity[1] <= 1.0;
}

// Shear divides by it: smaller ones are left to the checks of a single call.
bool usual_shear_area(double area) { return area == 0.0 || area > 1e-12; }

}  // namespace

bool surely_reads(const finites_beam& b) {
  constexpr double SMALL = SURE_LIMITS::SMALL;
  const double numbers[] = {b.E,  b.G,  b.E2, b.density,      b.expansion,   b.area,
                            b.Iz, b.Iy, b.J,  b.shear_area_y, b.shear_area_z};
  const double least = std::min({b.E, b.G, b.area, b.Iz, b.Iy, b.J});
  return ordinary(numbers, 11) && least > SMALL && (b.E2 == 0.0 || b.E2 > SMALL) && ordinary(&b.xyz[0][0], 6) &&
         ordinary(&b.offset[0][0], 6) && ordinary(b.up, 3) && within(b.fixity_y) && within(b.fixity_z) &&
         usual_shear_area(b.shear_area_y) && usual_shear_area(b.shear_area_z) && check_properties(b) == FINITES_OK &&
         surely_has_frame(b);
}

finites_status read_beam(const finites_beam& from, PLAIN_BEAM& beam) {
  finites_status status = check_values(from);
  if (status != FINITES_OK) return status;
  status = fill_beam(from, beam);
  return status != FINITES_OK ? status : check_properties(from);
}

finites_status fill_beam(const finites_beam& from, PLAIN_BEAM& beam) {
  const finites_status status = frame_of_member(from.xyz, from.offset, from.up, beam.frame);
  if (status != FINITES_OK) return status;

  BEAM_PROPERTIES& p = beam.properties;
  p.E1 = from.E;
  p.E2 = from.E2 > 0.0 ? from.E2 : from.E;
  p.G = from.G;
  p.L = beam.frame.length;
  p.AREA = from.area;
  p.I1 = from.Iz;
  p.I2 = from.Iy;
  p.AS1 = from.shear_area_y;
  p.AS2 = from.shear_area_z;
  p.GJ = from.G * from.J;
  p.a1 = from.fixity_y[0];
  p.a2 = from.fixity_y[1];
  p.b1 = from.fixity_z[0];
  p.b2 = from.fixity_z[1];
  p.release_x = from.release_axial;
  p.release_y = from.release_y;
  p.release_z = from.release_z;
  p.release_t = from.release_torsion;
  p.shear = true;
  p.axial_force = 0.0;
  beam.expansion = from.expansion;
  std::copy_n(&from.offset[0][0], 6, &beam.offset[0][0]);
  beam.has_offsets = std::any_of(&from.offset[0][0], &from.offset[0][0] + 6, [](double o) { return o != 0.0; });
  return FINITES_OK;
}

double axial_stiffness(const BEAM_PROPERTIES& p) { return p.release_x != 0 ? 0.0 : p.E1 * p.AREA / p.L; }

double torsional_stiffness(const BEAM_PROPERTIES& p) { return p.release_t != 0 ? 0.0 : p.GJ / p.L; }

finites_status local_stiffness(const PLAIN_BEAM& beam, PLANE_MATRIX& P) {
  elastic_planes(beam.properties, P);
  return release_ends(beam.properties, P) && all_finite(P) ? FINITES_OK : FINITES_RESULT;
}

void turn_to_nodes(const PLAIN_BEAM& beam, const PLANE_MATRIX& P, double* K) {
  double T[144];
  double T2[144];
  rotation_of_member(beam.frame, T);
  if (beam.has_offsets) links_of(beam, T2);
  turn_planes(PLANE_ROTATION(T), P, T, beam.has_offsets ? 1 : 0, T2, K);
}

void turn_to_nodes(const PLAIN_BEAM& beam, double* K) {
  double T[144];
  double T2[144];
  rotation_of_member(beam.frame, T);
  if (beam.has_offsets) links_of(beam, T2);
  turn_full(PLANE_ROTATION(T), T, beam.has_offsets ? 1 : 0, T2, K);
}

VECTOR<12> ends_of_nodes(const PLAIN_BEAM& beam, const double* u) {
  VECTOR<12> local;
  for (int end = 0; end < 2; ++end) {
    const double* const o = beam.offset[end];
    const double* const v = u + 6 * end;
    const double moved[3] = {v[0] + (v[4] * o[2] - v[5] * o[1]), v[1] + (v[5] * o[0] - v[3] * o[2]),
                             v[2] + (v[3] * o[1] - v[4] * o[0])};
    for (int i = 1; i <= 3; ++i) {
      double along = 0.0;
      double turned = 0.0;
      for (int k = 1; k <= 3; ++k) {
        along += beam.frame.axes(i, k) * moved[k - 1];
        turned += beam.frame.axes(i, k) * v[2 + k];
      }
      local(6 * end + i) = along;
      local(6 * end + 3 + i) = turned;
    }
  }
  return local;
}

VECTOR<12> nodes_of_ends(const PLAIN_BEAM& beam, const VECTOR<12>& f) {
  VECTOR<12> global{};
  for (int end = 0; end < 2; ++end) {
    double* const F = global.data() + 6 * end;
    for (int k = 1; k <= 3; ++k) {
      for (int i = 1; i <= 3; ++i) {
        F[i - 1] += beam.frame.axes(k, i) * f(6 * end + k);
        F[2 + i] += beam.frame.axes(k, i) * f(6 * end + 3 + k);
      }
    }
    const double* const o = beam.offset[end];
    F[3] += o[1] * F[2] - o[2] * F[1];
    F[4] += o[2] * F[0] - o[0] * F[2];
    F[5] += o[0] * F[1] - o[1] * F[0];
  }
  return global;
}
