// member_axes.cpp: length and local axes of frame elements.
#include "elements/member_axes.h"

#include <cmath>
#include <string>

#include "model/model_error.h"
#include "model/vectors.h"

namespace solver {

namespace {

vector3 along(const model& m, const element& e) { return difference(m.nodes[e.nodes[0]].xyz, m.nodes[e.nodes[1]].xyz); }

// A direction well away from x, for members whose section has no n1 and needs none.
vector3 any_other(const vector3& x) {
  const bool near_z = std::fabs(x[2]) > 0.9;
  return {0, near_z ? 1.0 : 0.0, near_z ? 0.0 : 1.0};
}

// The sine of the angle between a member and n1, below which n1 gives no direction: decks write directions with some
// six digits.
constexpr double LEAST_SINE = 1e-6;

bool needs_n1(frame_section_kind kind) { return kind == frame_section_kind::BEAM; }

}  // namespace

double member_length(const model& m, const element& e) { return e.nodes.size() == 2 ? length_of(along(m, e)) : 0; }

MATRIX<3, 3> member_axes(const model& m, const element& e) {
  const double length = member_length(m, e);
  const bool global_directions = e.type == element_type::SPRING1 || e.type == element_type::SPRING2;
  if (global_directions || !(length > 0)) return matrix_of_rows({1, 0, 0}, {0, 1, 0}, {0, 0, 1});
  const frame_section& section = frame_section_of(m, e);
  const vector3 x = scaled(along(m, e), 1 / length);
  const vector3 n1 = section.has_n1 || needs_n1(section.kind) ? section.n1 : any_other(x);
  const vector3 side = cross(x, n1);
  if (!(length_of(side) > LEAST_SINE * length_of(n1))) {
    throw model_error(m, section, section.keyword,
                      "n1 runs along element " + std::to_string(e.id) + ": give a direction across the member");
  }
  const vector3 z = scaled(side, 1 / length_of(side));
  return matrix_of_rows(x, cross(z, x), z);
}

double cable_length(const model& m, const element& e) {
  const frame_section& section = frame_section_of(m, e);
  return section.unstressed_length > 0 ? section.unstressed_length : section.length_ratio * member_length(m, e);
}

}  // namespace solver
