// random_shapes.cpp: seeded random numbers, rotations, shapes and sections.
#include "random_shapes.h"

#include <algorithm>
#include <cmath>

#include "finites/fields.h"

namespace support {

double seeded_random::uniform(double low, double high) {
  const double fraction = static_cast<double>(bits_() >> 11U) * 0x1.0p-53;
  return low + (high - low) * fraction;
}

// By exact operations alone, as everything here: a logarithm of a constant is rounded by one compiler and called by
// another.
double seeded_random::log_uniform(double low, double high) {
  const int exponent = integer(std::ilogb(low), std::ilogb(high));
  return std::min(std::max(std::ldexp(uniform(1.0, 2.0), exponent), low), high);
}

int seeded_random::integer(int low, int high) {
  return low + static_cast<int>(bits_() % static_cast<unsigned long>(high - low + 1));
}

std::vector<double> seeded_random::vector(int count, double magnitude) {
  std::vector<double> values(static_cast<std::size_t>(count));
  for (double& value : values) value = uniform(-magnitude, magnitude);
  return values;
}

// From a unit quaternion, uniform over all rotations and without trigonometric functions (Marsaglia 1972).
rotation random_rotation(seeded_random& random) {
  double x = 0.0, y = 0.0, first = 2.0;
  for (int tries = 0; first >= 1.0 && tries < 100; ++tries) {
    x = random.uniform(-1.0, 1.0);
    y = random.uniform(-1.0, 1.0);
    first = x * x + y * y;
  }
  double z = 0.0, w = 0.0, second = 0.0;
  for (int tries = 0; (second >= 1.0 || second < 1e-12) && tries < 100; ++tries) {
    z = random.uniform(-1.0, 1.0);
    w = random.uniform(-1.0, 1.0);
    second = z * z + w * w;
  }
  const double stretch = std::sqrt((1.0 - first) / second);
  z *= stretch;
  w *= stretch;
  return {point{1.0 - 2.0 * (y * y + z * z), 2.0 * (x * y - z * w), 2.0 * (x * z + y * w)},
          point{2.0 * (x * y + z * w), 1.0 - 2.0 * (x * x + z * z), 2.0 * (y * z - x * w)},
          point{2.0 * (x * z - y * w), 2.0 * (y * z + x * w), 1.0 - 2.0 * (x * x + y * y)}};
}

point rotate(const rotation& R, const point& p) {
  point out{};
  for (std::size_t i = 0; i < 3; ++i) out[i] = R[i][0] * p[0] + R[i][1] * p[1] + R[i][2] * p[2];
  return out;
}

namespace {

// Turns a shape of the plane into space and moves it by up to twice its size.
std::vector<point> put_in_space(seeded_random& random, std::vector<point> nodes, double size) {
  const rotation R = random_rotation(random);
  point shift{};
  for (double& component : shift) component = random.uniform(-2.0 * size, 2.0 * size);
  for (point& node : nodes) {
    node = rotate(R, node);
    for (std::size_t i = 0; i < 3; ++i) node[i] += shift[i];
  }
  return nodes;
}

double first_side(const std::vector<point>& nodes) {
  double squares = 0.0;
  for (std::size_t i = 0; i < 3; ++i) squares += (nodes[1][i] - nodes[0][i]) * (nodes[1][i] - nodes[0][i]);
  return std::sqrt(squares);
}

// Moduli and ratios in single precision, as the records hold them. The ratio of the axes is a power of two for a
// reciprocal material: E1 nu2 = E2 nu1 then holds without rounding.
template <class RECORD>
void fill_moduli(seeded_random& random, double young, orthotropy kind, RECORD& record) {
  const float ratio = std::ldexp(1.0F, random.integer(-3, 2));
  record.E1 = static_cast<float>(young);
  record.NU1 = static_cast<float>(random.uniform(0.05, 0.35));
  record.E2 = record.E1 * ratio;
  record.NU2 = record.NU1 * ratio;
  if (record.NU1 * record.NU2 > 0.5F) {
    record.NU1 *= 0.5F;
    record.NU2 *= 0.5F;
  }
  if (kind == orthotropy::arbitrary) record.NU2 = static_cast<float>(random.uniform(0.05, 0.35));
  record.G12 = static_cast<float>(young * random.uniform(0.1, 0.5));
  record.G13 = static_cast<float>(young * random.uniform(0.1, 0.5));
  record.G23 = static_cast<float>(young * random.uniform(0.1, 0.5));
  record.ALPHA1 = static_cast<float>(random.uniform(1e-6, 2e-5));
  record.ALPHA2 = static_cast<float>(random.uniform(1e-6, 2e-5));
}

}  // namespace

std::vector<point> random_triangle(seeded_random& random, double size) {
  const double base = size * random.uniform(0.5, 1.0);
  const double foot = base * random.uniform(-0.1, 1.1);
  const double height = base * random.uniform(0.4, 1.3);
  return put_in_space(random, {point{0.0, 0.0, 0.0}, point{base, 0.0, 0.0}, point{foot, height, 0.0}}, size);
}

std::vector<point> random_quadrilateral(seeded_random& random, double size) {
  const double a = size * random.uniform(0.4, 1.0), b = size * random.uniform(0.4, 1.0);
  std::vector<point> nodes = {point{0.0, 0.0, 0.0}, point{a, 0.0, 0.0}, point{a, b, 0.0}, point{0.0, b, 0.0}};
  for (point& node : nodes) {
    node[0] += a * random.uniform(-0.15, 0.15);
    node[1] += b * random.uniform(-0.15, 0.15);
  }
  return put_in_space(random, nodes, size);
}

plate_description random_isotropic(seeded_random& random, const std::vector<point>& nodes) {
  plate_description description;
  description.nodes = nodes;
  description.thickness = first_side(nodes) * random.log_uniform(0.005, 0.1);
  description.young = random.log_uniform(1e3, 1e6);
  description.poisson = random.uniform(0.0, 0.45);
  description.unit_weight = random.log_uniform(1e-5, 1e-2);
  description.expansion = random.uniform(1e-6, 2e-5);
  description.modifier_membrane = random.uniform(0.3, 1.0);
  description.modifier_bending = random.uniform(0.3, 1.0);
  description.modifier_shear = random.uniform(0.3, 1.0);
  description.mass_factor = random.uniform(0.5, 2.0);
  return description;
}

plate_description random_orthotropic(seeded_random& random, const std::vector<point>& nodes, orthotropy kind) {
  plate_description description = random_isotropic(random, nodes);
  description.ortho_angle = random.uniform(-1.5, 1.5);
  description.material.ortho = 1;
  fill_moduli(random, description.young, kind, description.material);
  return description;
}

plate_description random_composite(seeded_random& random, const std::vector<point>& nodes, orthotropy kind) {
  plate_description description = random_isotropic(random, nodes);
  description.ortho_angle = random.uniform(-1.5, 1.5);
  description.section_type = COMPOSITE_SECTION;
  fill_moduli(random, description.young, kind, description.composite);
  description.composite.UNIT_WEIGHT = static_cast<float>(random.log_uniform(1e-5, 1e-2));
  description.composite.CLT_FACTOR_1 = static_cast<float>(random.uniform(0.5, 1.5));
  description.composite.CLT_FACTOR_2 = static_cast<float>(random.uniform(0.5, 1.5));
  return description;
}

void add_random_offsets(seeded_random& random, plate_description& description, double size) {
  description.offset_switch = 1;
  for (point& offset : description.offsets) {
    for (double& component : offset) component = random.uniform(-0.25 * size, 0.25 * size);
  }
  for (double& component : description.common_offset) component = random.uniform(-0.25 * size, 0.25 * size);
}

}  // namespace support
