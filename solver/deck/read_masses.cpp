// read_masses.cpp: *MASS, *ROTARY INERTIA, and how *FREQUENCY takes the masses of elements.
#include <algorithm>
#include <cmath>

#include "deck/fields.h"
#include "deck/keywords.h"
#include "model/vectors.h"

namespace solver::deck {

static point_mass start_point(build& b, const card& c) {
  for (const char* const damping : {"ALPHA", "COMPOSITE"}) {
    if (c.find(damping) != nullptr) b.note(c, std::string(damping) + " has no effect: no analysis has damping");
  }
  point_mass p;
  p.elset = upper(c.value("ELSET"));
  p.line = c.line;
  p.file = c.file;
  return p;
}

static void assign(build& b, const card& c, element_type type, const point_mass& p) {
  model& m = b.result;
  for (const int index : b.elements.members(set_of_parameter(b, c, b.elements, "ELSET"))) {
    element& e = m.elements[index];
    const std::string name = "element " + std::to_string(e.id);
    if (e.type != type) b.deck.fail(c, name + " is " + sections_that_fit(e.type));
    if (e.section >= 0) {
      const point_mass& first = m.point_masses[e.section];
      b.deck.fail(c, name + " has its values already, of " + b.other_place(c, first.file, first.line));
    }
    e.section = count_of(m.point_masses);
  }
  m.point_masses.push_back(p);
}

void read_mass(build& b, const card& c) {
  const std::string type = squeezed(c.value("TYPE"));
  if (!type.empty() && type != "ISOTROPIC") {
    b.deck.fail(c, "TYPE=" + c.value("TYPE") + " is not supported; ISOTROPIC is: one mass in all directions");
  }
  point_mass p = start_point(b, c);
  const data_fields row = only_line(b, c, "it takes one");
  row.expect(1, 1, "mass");
  p.mass = row.positive(0, "mass");
  assign(b, c, element_type::MASS, p);
}

// The three directions of an orientation, the additional rotation included.
static MATRIX<3, 3> directions_of(const build& b, const card& c) {
  const orientation& o = b.result.orientations[orientation_of_parameter(b, c)];
  if (o.system != orientation_system::RECTANGULAR) {
    b.deck.fail(c, "a rotary inertia takes an ORIENTATION with SYSTEM=RECTANGULAR");
  }
  const std::size_t axis = subscript(o.axis - 1), first = (axis + 1) % 3, second = (axis + 2) % 3;
  const double angle = o.angle * PI / 180, cosine = std::cos(angle), sine = std::sin(angle);
  std::array<vector3, 3> d = o.direction;
  for (std::size_t i = 0; i < 3; ++i) {
    d[first][i] = cosine * o.direction[first][i] + sine * o.direction[second][i];
    d[second][i] = cosine * o.direction[second][i] - sine * o.direction[first][i];
  }
  return matrix_of_rows(d[0], d[1], d[2]);
}

// xx, yy, zz, xy, xz, yz as a matrix, turned by the directions in the rows of T: T^T I T.
static std::array<double, 6> turned(const std::array<double, 6>& I, const MATRIX<3, 3>& T) {
  const MATRIX<3, 3> own = matrix_of_rows({I[0], I[3], I[4]}, {I[3], I[1], I[5]}, {I[4], I[5], I[2]});
  MATRIX<3, 3> global{};
  for (int i = 1; i <= 3; ++i) {
    for (int j = 1; j <= 3; ++j) {
      for (int k = 1; k <= 3; ++k) {
        for (int l = 1; l <= 3; ++l) global(i, j) += T(k, i) * own(k, l) * T(l, j);
      }
    }
  }
  return {global(1, 1), global(2, 2), global(3, 3), global(1, 2), global(1, 3), global(2, 3)};
}

// No motion has a negative energy: the leading minors of the matrix, by the largest part, and its trace.
static bool is_inertia(const std::array<double, 6>& I) {
  constexpr double ROUNDING = 1e-12;
  const double size = std::max({I[0], I[1], I[2]});
  if (!(I[0] >= 0 && I[1] >= 0 && I[2] >= 0 && size > 0)) return false;
  std::array<double, 6> r = I;
  for (double& part : r) part /= size;
  const double xy = r[0] * r[1] - r[3] * r[3], xz = r[0] * r[2] - r[4] * r[4], yz = r[1] * r[2] - r[5] * r[5];
  const double all = r[0] * yz - r[3] * (r[3] * r[2] - r[5] * r[4]) + r[4] * (r[3] * r[5] - r[1] * r[4]);
  return std::min({xy, xz, yz, all}) >= -ROUNDING;
}

void read_rotary_inertia(build& b, const card& c) {
  point_mass p = start_point(b, c);
  const data_fields row = only_line(b, c, "it takes one");
  row.expect(3, 6, "I11, I22, I33, I12, I13, I23");
  static const char* const NAMES[] = {"I11", "I22", "I33", "I12", "I13", "I23"};
  for (int i = 0; i < 6; ++i) p.inertia[subscript(i)] = row.has(i) || i < 3 ? row.real(i, NAMES[i]) : 0;
  if (!is_inertia(p.inertia)) row.fail("no body has these moments of inertia: their matrix is not positive");
  if (c.find("ORIENTATION") != nullptr) p.inertia = turned(p.inertia, directions_of(b, c));
  assign(b, c, element_type::ROTARYI, p);
}

void read_mass_choice(build& b, const card& c) {
  const std::string word = squeezed(c.value("MASS"));
  if (!word.empty() && word != "CONSISTENT" && word != "LUMPED") {
    b.deck.fail(c, "MASS is CONSISTENT or LUMPED, not " + in_quotes(c.value("MASS")));
  }
  b.result.steps.back().lumped_mass = word == "LUMPED";
}

}  // namespace solver::deck
