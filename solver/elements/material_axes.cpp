// material_axes.cpp: where axis 1 of a plate lies.
#include "elements/material_axes.h"

#include <cmath>

#include "elements/plate_axes.h"
#include "model/model_error.h"
#include "model/vectors.h"

namespace solver {

namespace {

using direction = vector3;

// c a + s b
direction turned(const direction& a, const direction& b, double c, double s) {
  return {c * a[0] + s * b[0], c * a[1] + s * b[1], c * a[2] + s * b[2]};
}

// Cosine and sine of an angle in degrees; of quarter turns exactly, which the conversion to radians would miss.
void cosine_and_sine(double degrees, double& c, double& s) {
  const double within = std::remainder(degrees, 360.0);
  c = std::cos(within * (PI / 180));
  s = std::sin(within * (PI / 180));
  if (within == 90 || within == -90) c = 0;
  if (within == 180 || within == -180) s = 0;
}

// The part of `v` square to the unit vector `n`, at unit length. False where its length does not exceed `least`.
bool project(direction& v, const direction& n, double least) {
  const double along = dot(v, n);
  for (std::size_t i = 0; i < 3; ++i) v[i] -= along * n[i];
  const double size = norm(v);
  if (!(size > least)) return false;
  for (double& part : v) part /= size;
  return true;
}

direction centre_of(const model& m, const element& e) {
  direction centre{};
  for (const int n : e.nodes) {
    for (std::size_t i = 0; i < 3; ++i) centre[i] += m.nodes[n].xyz[i] / count_of(e.nodes);
  }
  return centre;
}

// The three directions of an orientation in the middle of an element. Within this share of its distance from the origin
// the middle lies on the axis of a cylindrical one, as far as doubles can tell.
std::array<direction, 3> directions_at(const model& m, const element& e, const orientation& o) {
  constexpr double ON_AXIS = 1e-9;
  if (o.system == orientation_system::RECTANGULAR) return o.direction;
  direction out = centre_of(m, e);
  for (std::size_t i = 0; i < 3; ++i) out[i] -= o.origin[i];
  const double distance = norm(out);
  if (!project(out, o.direction[2], ON_AXIS * distance)) {
    throw model_error(m, e, "*ELEMENT",
                      "the middle of element " + std::to_string(e.id) + " lies on the axis of the orientation " +
                          o.name + ", where no direction leads away from it: give the element a section of its own");
  }
  if (o.system == orientation_system::SPHERICAL) {
    direction radial = difference(o.origin, centre_of(m, e));
    for (double& part : radial) part /= distance;
    const direction round = cross(o.direction[2], out);
    return {radial, round, cross(radial, round)};
  }
  return {out, cross(o.direction[2], out), o.direction[2]};
}

// The direction of an orientation that is projected on an element.
direction projected_direction(const model& m, const element& e, const orientation& o) {
  const std::array<direction, 3> directions = directions_at(m, e, o);
  const std::size_t first = subscript(o.axis % 3), second = subscript((o.axis + 1) % 3);
  double c = 1, s = 0;
  cosine_and_sine(o.angle, c, s);
  return turned(directions[first], directions[second], c, s);
}

direction oriented_axis(const model& m, const element& e, const orientation& o, const direction& normal) {
  direction v = projected_direction(m, e, o);
  if (!project(v, normal, ALONG_NORMAL)) {
    throw model_error(m, e, "*ELEMENT",
                      "the direction of the orientation " + o.name + " that gives axis 1 is the normal of element " +
                          std::to_string(e.id) + ": it has no projection on it. The second line of the *ORIENTATION " +
                          "names the direction that is nearest to the normal");
  }
  return v;
}

direction global_axis(const direction& normal) {
  direction v{1, 0, 0};
  if (project(v, normal, ALONG_NORMAL)) return v;
  v = {0, 0, 1};
  project(v, normal, 0);
  return v;
}

}  // namespace

std::array<double, 3> first_axis(const model& m, const element& e, int orientation, double degrees) {
  const direction normal = row(plate_axes(m, e), 3);
  const direction first =
      orientation < 0 ? global_axis(normal) : oriented_axis(m, e, m.orientations[orientation], normal);
  double c = 1, s = 0;
  cosine_and_sine(degrees, c, s);
  return turned(first, cross(normal, first), c, s);
}

MATRIX<3, 3> material_axes(const model& m, const element& e) {
  MATRIX<3, 3> axes = plate_axes(m, e);
  const bool bare = e.section < 0;
  const direction first = first_axis(m, e, bare ? -1 : m.shell_sections[e.section].orientation,
                                     bare ? 0 : m.shell_sections[e.section].orientation_angle);
  set_row(axes, 1, first);
  set_row(axes, 2, cross(row(axes, 3), first));
  return axes;
}

double projection_of_axis(const model& m, const element& e) {
  const int o = m.shell_sections[e.section].orientation;
  const direction normal = row(plate_axes(m, e), 3);
  const direction square = cross(projected_direction(m, e, m.orientations[o]), normal);
  return norm(square);
}

double material_angle(const model& m, const element& e) {
  const MATRIX<3, 3> from = plate_axes(m, e);
  const direction first = row(material_axes(m, e), 1);
  const double angle = std::atan2(dot(first, row(from, 2)), dot(first, row(from, 1)));
  return angle > PI / 2 ? angle - PI : angle <= -PI / 2 ? angle + PI : angle;
}

plane_rotation::plane_rotation(const MATRIX<3, 3>& from, const MATRIX<3, 3>& to)
    : c(dot(row(from, 1), row(to, 1))), s(dot(row(from, 1), row(to, 2))) {
  const double size = std::hypot(c, s);
  c /= size;
  s /= size;
}

std::array<double, 2> plane_rotation::vector(const double* v) const {
  return {c * v[0] - s * v[1], s * v[0] + c * v[1]};
}

std::array<double, 3> plane_rotation::tensor(const double* t) const {
  const double x = t[0], y = t[1], xy = t[2];
  return {c * c * x + s * s * y - 2 * c * s * xy, s * s * x + c * c * y + 2 * c * s * xy,
          c * s * (x - y) + (c * c - s * s) * xy};
}

std::array<double, 3> plane_rotation::strains(const double* e) const {
  const double half[3] = {e[0], e[1], e[2] / 2};
  std::array<double, 3> result = tensor(half);
  result[2] *= 2;
  return result;
}

}  // namespace solver
