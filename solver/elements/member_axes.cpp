// member_axes.cpp: length and local axes of frame elements.
#include <cmath>

#include "elements/library_model.h"

#include "model/vectors.h"

namespace solver {

namespace {

using vector = std::array<double, 3>;

double length_of(const vector& a) { return std::hypot(a[0], a[1], a[2]); }

vector scaled(const vector& a, double factor) { return {a[0] * factor, a[1] * factor, a[2] * factor}; }

vector along(const model& m, const element& e) {
  const vector& a = m.nodes[static_cast<std::size_t>(e.nodes[0])].xyz;
  const vector& b = m.nodes[static_cast<std::size_t>(e.nodes[1])].xyz;
  return {b[0] - a[0], b[1] - a[1], b[2] - a[2]};
}

// A direction well away from x, for members whose section has no n1 and needs none.
vector any_other(const vector& x) {
  const bool near_z = std::fabs(x[2]) > 0.9;
  return {0, near_z ? 1.0 : 0.0, near_z ? 0.0 : 1.0};
}

MATRIX<3, 3> rows(const vector& x, const vector& y, const vector& z) {
  MATRIX<3, 3> axes;
  for (int i = 1; i <= 3; ++i) {
    const auto k = static_cast<std::size_t>(i - 1);
    axes(1, i) = x[k];
    axes(2, i) = y[k];
    axes(3, i) = z[k];
  }
  return axes;
}

bool needs_n1(frame_section_kind kind) { return kind == frame_section_kind::BEAM; }

}  // namespace

double member_length(const model& m, const element& e) { return e.nodes.size() == 2 ? length_of(along(m, e)) : 0; }

MATRIX<3, 3> member_axes(const model& m, const element& e) {
  const double length = member_length(m, e);
  const bool global_directions = e.type == element_type::SPRING1 || e.type == element_type::SPRING2;
  if (global_directions || !(length > 0)) return rows({1, 0, 0}, {0, 1, 0}, {0, 0, 1});
  const frame_section& section = frame_section_of(m, e);
  const vector x = scaled(along(m, e), 1 / length);
  const vector n1 = section.has_n1 || needs_n1(section.kind) ? section.n1 : any_other(x);
  const vector side = cross(x, n1);
  // The sine of the angle between the member and n1, below which n1 gives no direction.
  if (!(length_of(side) > 1e-6 * length_of(n1)))
    throw model_error(m, section, section.keyword,
                      "n1 runs along element " + std::to_string(e.id) + ": give a direction across the member");
  const vector z = scaled(side, 1 / length_of(side));
  return rows(x, cross(z, x), z);
}

}  // namespace solver
