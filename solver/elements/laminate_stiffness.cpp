// laminate_stiffness.cpp: classical lamination theory, and its sum of orthotropic parts.
//
// A part is orthotropic in axes of its own. A matrix that is orthotropic in some axes is one part. Any other is the sum
// of its layers, of which those whose angles differ by quarter turns share their axes. Thin shells and membranes are
// linear in the section: their sum is exact. The shear strains of thick shells depend on bending and shear stiffness
// together: these need one part.
#include "elements/laminate_stiffness.h"

#include <algorithm>
#include <cmath>

#include "model/vectors.h"

namespace solver {

namespace {

// Against the largest constants. The library keeps those of orthotropic materials in single precision.
constexpr double ROUNDING = 1e-6;
constexpr double SAME_ANGLE = 1e-9;  // degrees: sums and differences of angles that a deck gives are not exact

// Cosine and sine of an angle in degrees; of quarter turns exactly.
struct turn {
  double c, s;
  explicit turn(double degrees) {
    const double within = std::remainder(degrees, 360.0);
    c = std::cos(within * (PI / 180));
    s = std::sin(within * (PI / 180));
    if (within == 90 || within == -90) c = 0;
    if (within == 180 || within == -180) s = 0;
  }
};

// Strains 11, 22 and engineering 12 in axes that are turned by an angle.
plane_matrix strain_turn(const turn& t) {
  const double c = t.c, s = t.s;
  return {{{c * c, s * s, c * s}, {s * s, c * c, -c * s}, {-2 * c * s, 2 * c * s, c * c - s * s}}};
}

// R^T Q R
plane_matrix congruent(const plane_matrix& R, const plane_matrix& Q) {
  plane_matrix result{};
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < 3; ++j) {
      for (std::size_t k = 0; k < 3; ++k) {
        for (std::size_t l = 0; l < 3; ++l) result[i][j] += R[k][i] * Q[k][l] * R[l][j];
      }
    }
  }
  return result;
}

// A stiffness in axes from which its own lie turned by `degrees`.
plane_matrix turned(const plane_matrix& Q, double degrees) { return congruent(strain_turn(turn(degrees)), Q); }

plane_vector product(const plane_matrix& Q, const plane_vector& v) {
  plane_vector result{};
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < 3; ++j) result[i] += Q[i][j] * v[j];
  }
  return result;
}

void add(plane_matrix& sum, double factor, const plane_matrix& Q) {
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < 3; ++j) sum[i][j] += factor * Q[i][j];
  }
}

void add(plane_vector& sum, double factor, const plane_vector& v) {
  for (std::size_t i = 0; i < 3; ++i) sum[i] += factor * v[i];
}

plane_matrix inverse(const plane_matrix& Q) {
  plane_matrix result{};
  const auto cofactor = [&](std::size_t i, std::size_t j) {
    const std::size_t a = (i + 1) % 3, b = (i + 2) % 3, c = (j + 1) % 3, d = (j + 2) % 3;
    return Q[a][c] * Q[b][d] - Q[a][d] * Q[b][c];
  };
  const double determinant = Q[0][0] * cofactor(0, 0) + Q[0][1] * cofactor(0, 1) + Q[0][2] * cofactor(0, 2);
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < 3; ++j) result[i][j] = cofactor(j, i) / determinant;
  }
  return result;
}

// Plane stress, in the axes of the material.
plane_matrix stiffness_of(const material& m) {
  const double nu21 = m.NU12 * m.E2 / m.E1, q = 1 - m.NU12 * nu21;
  return {{{m.E1 / q, nu21 * m.E1 / q, 0}, {nu21 * m.E1 / q, m.E2 / q, 0}, {0, 0, m.G12}}};
}

// One layer in the axes of the section.
struct placed_layer {
  const material* mat = nullptr;
  double angle = 0;
  double bottom = 0, top = 0;  // above the mid surface
  plane_matrix Q{};
  plane_vector expansion{};

  double thickness() const { return top - bottom; }
  double first_moment() const { return (top - bottom) * (top + bottom) / 2; }
  double second_moment() const { return (top * top * top - bottom * bottom * bottom) / 3; }
};

std::vector<placed_layer> place(const std::vector<layer>& layers, const numbered<material>& materials) {
  std::vector<placed_layer> result;
  double z = -thickness_of(layers) / 2;
  for (const layer& each : layers) {
    placed_layer p;
    p.mat = &materials[each.material];
    p.angle = each.angle;
    p.bottom = z;
    p.top = z += each.thickness;
    p.Q = turned(stiffness_of(*p.mat), each.angle);
    p.expansion = product(strain_turn(turn(-each.angle)), {p.mat->alpha1, p.mat->alpha2, 0});
    result.push_back(p);
  }
  return result;
}

// The sum of the layers, each with a weight.
template <class WEIGHT>
plane_matrix sum_of(const std::vector<placed_layer>& layers, const WEIGHT& weight) {
  plane_matrix sum{};
  for (const placed_layer& p : layers) add(sum, weight(p), p.Q);
  return sum;
}

template <class WEIGHT>
plane_vector thermal_sum_of(const std::vector<placed_layer>& layers, const WEIGHT& weight) {
  plane_vector sum{};
  for (const placed_layer& p : layers) add(sum, weight(p), product(p.Q, p.expansion));
  return sum;
}

double largest(const plane_matrix& Q) { return std::max(Q[0][0], Q[1][1]); }

bool couples_shear(const plane_matrix& Q) {
  return std::max(std::abs(Q[0][2]), std::abs(Q[1][2])) > ROUNDING * largest(Q);
}

// The axes in which a stiffness has no entries 13 and 23. Under a turn their sum goes round with the double angle,
// their difference with the fourfold one; one of the two says where the axes lie, the other one whether they are such
// axes.
bool find_axes(const plane_matrix& Q, double& degrees) {
  const double sum = Q[0][2] + Q[1][2], difference = Q[0][2] - Q[1][2];
  const double fourfold = Q[0][0] + Q[1][1] - 2 * Q[0][1] - 4 * Q[2][2];
  for (const double angle :
       {0.0, std::atan2(2 * sum, Q[0][0] - Q[1][1]) / 2, std::atan2(4 * difference, fourfold) / 4}) {
    degrees = angle * (180 / PI);
    if (!couples_shear(turned(Q, -degrees))) return true;
  }
  return false;
}

// Q is in the axes of the part.
laminate_part part_of(const plane_matrix& Q, double degrees, bool bends, double thickness) {
  laminate_part part;
  part.bends = bends;
  part.angle = degrees;
  const double t = thickness_of(part, thickness), inertia = bends ? t * t * t / 12 : t;
  const double nu21 = Q[0][1] / Q[0][0];
  part.NU12 = Q[0][1] / Q[1][1];
  const double q = 1 - part.NU12 * nu21;
  part.E1 = Q[0][0] * q / inertia;
  part.E2 = Q[1][1] * q / inertia;
  part.G12 = Q[2][2] / inertia;
  part.G13 = part.G23 = part.G12;
  return part;
}

double within_quarter(double degrees) {
  const double rest = std::fmod(degrees, 90.0);
  return rest < 0 ? rest + 90 : rest;
}

// The layers whose axes are those of an angle or lie square to them, as one part each.
template <class WEIGHT>
std::vector<laminate_part> parts_by_angle(std::vector<placed_layer> layers, bool bends, double thickness,
                                          const WEIGHT& weight) {
  std::vector<laminate_part> parts;
  while (!layers.empty()) {
    const double angle = within_quarter(layers.front().angle);
    const auto others = std::stable_partition(layers.begin(), layers.end(), [&](const placed_layer& p) {
      return std::abs(std::remainder(p.angle - angle, 90.0)) < SAME_ANGLE;
    });
    const std::vector<placed_layer> together(layers.begin(), others);
    parts.push_back(part_of(turned(sum_of(together, weight), -angle), angle, bends, thickness));
    layers.erase(layers.begin(), others);
  }
  return parts;
}

template <class WEIGHT>
std::vector<laminate_part> parts_of(const std::vector<placed_layer>& layers, bool bends, double thickness,
                                    const WEIGHT& weight, bool& one_part) {
  const plane_matrix Q = sum_of(layers, weight);
  double degrees = 0;
  one_part = find_axes(Q, degrees);
  if (!one_part) return parts_by_angle(layers, bends, thickness, weight);
  return {part_of(turned(Q, -degrees), degrees, bends, thickness)};
}

// The flexibility of a layer in transverse shear across axis 1 of axes at an angle to those of its material.
double shear_flexibility(const placed_layer& p, double axes) {
  const turn t(p.angle - axes);
  return t.c * t.c / p.mat->G13 + t.s * t.s / p.mat->G23;
}

// The shear stiffness of cylindrical bending (Whitney 1973; Reddy 2004): where bending makes shear stresses of g(z) Q,
//
//     dg/dz = -Q11(z) z / D11,      1 / H = integral of g^2 / G(z),
//
// which is 5/6 G h of a homogeneous section. Q11, D11 and G belong to the direction of the axes.
double shear_stiffness(const std::vector<placed_layer>& layers, double axes) {
  constexpr double POINT = 0.7745966692414834;  // the square root of 3/5; g^2 is of the fourth degree in z
  constexpr double PLACES[] = {-POINT, 0, POINT}, WEIGHTS[] = {5.0 / 9, 8.0 / 9, 5.0 / 9};
  double D11 = 0;
  for (const placed_layer& p : layers) D11 += turned(p.Q, -axes)[0][0] * p.second_moment();
  double g = 0, flexibility = 0;
  for (const placed_layer& p : layers) {
    const double Q11 = turned(p.Q, -axes)[0][0];
    const auto g_at = [&](double z) { return g - Q11 * (z * z - p.bottom * p.bottom) / (2 * D11); };
    for (std::size_t i = 0; i < 3; ++i) {
      const double at = g_at((p.bottom + p.top) / 2 + PLACES[i] * p.thickness() / 2);
      flexibility += WEIGHTS[i] * p.thickness() / 2 * at * at * shear_flexibility(p, axes);
    }
    g = g_at(p.top);
  }
  return 1 / flexibility;
}

// Layers that lie unlike about the mid surface bend when they are stretched or heated.
bool is_symmetric(const std::vector<placed_layer>& layers, double thickness) {
  const auto moment = [](const placed_layer& p) { return p.first_moment(); };
  const plane_matrix B = sum_of(layers, moment);
  const plane_vector heat = thermal_sum_of(layers, moment);
  double size = 0, heat_size = 0;
  for (const placed_layer& p : layers) {
    size = std::max(size, largest(p.Q));
    for (const double part : product(p.Q, p.expansion)) heat_size = std::max(heat_size, std::abs(part));
  }
  const double area = thickness * thickness;
  const auto zero = [&](double value, double scale) { return std::abs(value) <= ROUNDING * area * scale; };
  return std::all_of(heat.begin(), heat.end(), [&](double v) { return zero(v, heat_size); }) &&
         std::all_of(B.begin(), B.end(), [&](const plane_vector& row) {
           return std::all_of(row.begin(), row.end(), [&](double v) { return zero(v, size); });
         });
}

material mean_of(const std::vector<placed_layer>& layers, const laminate& section, double thickness) {
  material mean;
  const plane_matrix& a = section.flexibility_in_plane;
  mean.elastic = mean.orthotropic = true;
  mean.E1 = 1 / (a[0][0] * thickness);
  mean.E2 = 1 / (a[1][1] * thickness);
  mean.NU12 = -a[0][1] / a[0][0];
  mean.G12 = mean.G13 = mean.G23 = 1 / (a[2][2] * thickness);
  for (const placed_layer& p : layers) {
    mean.density += p.mat->density * p.thickness() / thickness;
    mean.expansion = mean.expansion || p.mat->expansion;
  }
  mean.alpha1 = section.expansion[0];
  mean.alpha2 = section.expansion[1];
  return mean;
}

const char* const NOT_SYMMETRIC =
    "the layers do not lie symmetrically about the mid surface: stretching them bends them (the matrix B is not 0), "
    "which the sections of the library do not know; SYMMETRIC repeats the lines of one half in reverse; layers that do "
    "not lie so are sections of their own, on elements that share the nodes, each with its OFFSET";

const char* const COUPLED =
    "bending of the layers twists them (D16 and D26 are not 0), which thick shells do not know; FORMULATION=THIN holds "
    "the laminate, without transverse shear strains";

}  // namespace

double thickness_of(const std::vector<layer>& layers) {
  double sum = 0;
  for (const layer& each : layers) sum += each.thickness;
  return sum;
}

laminate_section make_laminate(const std::vector<layer>& layers, const numbered<material>& materials,
                               shell_formulation formulation) {
  laminate_section result;
  laminate& s = result.section;
  s.layers = layers;
  const double h = thickness_of(layers);
  const std::vector<placed_layer> placed = place(layers, materials);
  const auto stretch = [](const placed_layer& p) { return p.thickness(); };
  const auto bending = [](const placed_layer& p) { return p.second_moment(); };
  s.flexibility_in_plane = inverse(sum_of(placed, stretch));
  s.flexibility_in_bending = inverse(sum_of(placed, bending));
  s.expansion = product(s.flexibility_in_plane, thermal_sum_of(placed, stretch));
  s.bending_expansion = product(s.flexibility_in_bending, thermal_sum_of(placed, bending));
  result.mean = mean_of(placed, s, h);

  bool one_part = false;
  result.parts = parts_of(placed, false, h, stretch, one_part);
  std::vector<laminate_part> bent = parts_of(placed, true, h, bending, one_part);
  for (laminate_part& part : bent) {
    part.G13 = shear_stiffness(placed, part.angle) / (SHEAR_SHARE * thickness_of(part, h));
    part.G23 = shear_stiffness(placed, part.angle + 90) / (SHEAR_SHARE * thickness_of(part, h));
    result.parts.push_back(part);
  }
  s.part_count = count_of(result.parts);
  if (!is_symmetric(placed, h)) {
    result.refusal = NOT_SYMMETRIC;
  } else if (!one_part && formulation == shell_formulation::THICK) {
    result.refusal = COUPLED;
  }
  return result;
}

namespace {

// The strains of the section: e + z k, in its axes.
class strained_section {
 public:
  strained_section(const laminate& section, const plane_vector& N, const plane_vector& M, double change,
                   double gradient)
      : strain_(product(section.flexibility_in_plane, N)),
        curvature_(product(section.flexibility_in_bending, M)),
        change_(change),
        gradient_(gradient) {
    add(strain_, change, section.expansion);
    add(curvature_, gradient, section.bending_expansion);
  }

  // Q (e + z k - alpha (T + z T'))
  plane_vector stress(const placed_layer& p, double z) const {
    plane_vector e = strain_;
    add(e, z, curvature_);
    add(e, -(change_ + z * gradient_), p.expansion);
    return product(p.Q, e);
  }

 private:
  plane_vector strain_, curvature_;
  double change_, gradient_;
};

// A stress in axes that are turned by an angle; energies are the same: s' = R^-T s, the turn back of strains
// transposed.
plane_vector stress_in(const plane_vector& s, double degrees) {
  const plane_matrix back = strain_turn(turn(-degrees));
  plane_vector result{};
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < 3; ++j) result[i] += back[j][i] * s[j];
  }
  return result;
}

}  // namespace

std::array<plane_vector, 3> layer_stresses(const laminate& section, const numbered<material>& materials,
                                           const plane_vector& N, const plane_vector& M, double change,
                                           double gradient) {
  const std::vector<placed_layer> layers = place(section.layers, materials);
  const strained_section strained(section, N, M, change, gradient);
  const auto middle = std::find_if(layers.begin(), layers.end() - 1,
                                   [](const placed_layer& p) { return p.top > ROUNDING * (p.top - p.bottom); });
  return {strained.stress(layers.back(), layers.back().top), strained.stress(*middle, 0),
          strained.stress(layers.front(), layers.front().bottom)};
}

std::vector<layer_faces> stresses_of_layers(const laminate& section, const numbered<material>& materials,
                                            const plane_vector& N, const plane_vector& M, double change,
                                            double gradient) {
  const strained_section strained(section, N, M, change, gradient);
  std::vector<layer_faces> result;
  for (const placed_layer& p : place(section.layers, materials)) {
    const plane_vector below = strained.stress(p, p.bottom), above = strained.stress(p, p.top);
    result.push_back({{p.bottom, below, stress_in(below, p.angle)}, {p.top, above, stress_in(above, p.angle)}});
  }
  return result;
}

}  // namespace solver
