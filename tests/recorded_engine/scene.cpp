// scene.cpp: elements with offsets, and the rigid links by cross products.
#include "scene.h"

#include <algorithm>

#include "comparison.h"

namespace scenes {

namespace {

// The source that does not count holds what would make the result wrong. A triangle has a fourth offset too.
plate_description describe(int nodes, source from, seeded_random& random) {
  plate_description d =
      plate_calls::isotropic(nodes == 4 ? plate_calls::space_quadrilateral() : plate_calls::space_triangle());
  support::add_random_offsets(random, d, 2.0);
  if (from == source::none) d.offset_switch = 0;
  if (from == source::by_node) d.common_offset = {1e3, 2e3, 3e3};
  if (from == source::common) {
    d.offsets = {point{1e3, 2e3, 3e3}, point{4e3, 5e3, 6e3}, point{7e3, 8e3, 9e3}, point{1e4, 2e4, 3e4}};
  }
  return d;
}

// to += a x b
void add_cross(const point& a, const point& b, double* to) {
  to[0] += a[1] * b[2] - a[2] * b[1];
  to[1] += a[2] * b[0] - a[0] * b[2];
  to[2] += a[0] * b[1] - a[1] * b[0];
}

}  // namespace

const std::vector<double>& some_data() {
  static const std::vector<double> data = {0.9, 0.7, 0.5, -1.5, 2.5, 3.5, 0.25, -0.75, 1.25};
  return data;
}

scene::scene(int nodes, source from, seeded_random& random) : from_(from), description_(describe(nodes, from, random)) {
  forget_engine_calls();
}

point scene::offset(std::size_t node) const {
  if (from_ == source::none) return {0.0, 0.0, 0.0};
  return from_ == source::common ? description_.common_offset : description_.offsets[node];
}

std::vector<double> scene::displaced(std::vector<double> u) const {
  for (std::size_t n = 0; n < nodes(); ++n) {
    add_cross(offset(n), point{u[6 * n + 3], u[6 * n + 4], u[6 * n + 5]}, &u[6 * n]);
  }
  return u;
}

std::vector<double> scene::moved_back(std::vector<double> f) const {
  for (std::size_t n = 0; n < nodes(); ++n) {
    add_cross(point{f[6 * n], f[6 * n + 1], f[6 * n + 2]}, offset(n), &f[6 * n + 3]);
  }
  return f;
}

// Column by column: a unit displacement, the forces of the element, back to the nodes.
std::vector<double> scene::moved_back_matrix(const std::vector<double>& K) const {
  const std::size_t n = order();
  std::vector<double> result;
  for (std::size_t j = 0; j < n; ++j) {
    std::vector<double> unit(n, 0.0);
    unit[j] = 1.0;
    const std::vector<double> column = moved_back(support::product(K, displaced(unit)));
    result.insert(result.end(), column.begin(), column.end());
  }
  return result;
}

std::vector<double> with_zeros(std::vector<double> values, std::size_t length) {
  values.resize(length, 0.0);
  return values;
}

}  // namespace scenes
