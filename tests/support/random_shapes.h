// random_shapes.h: seeded random elements. A seed gives the same element on every machine: the numbers are made from
// the bits of the generator here, not by the distributions of the standard library, which differ between
// implementations.
#ifndef FINITES_TESTS_RANDOM_SHAPES_H
#define FINITES_TESTS_RANDOM_SHAPES_H

#include <array>
#include <random>
#include <vector>

#include "plate_model.h"

namespace support {

class seeded_random {
 public:
  explicit seeded_random(unsigned seed) : bits_(seed) {}
  double uniform(double low, double high);
  double log_uniform(double low, double high);  // both positive; every octave alike
  int integer(int low, int high);               // both included
  std::vector<double> vector(int count, double magnitude);

 private:
  std::mt19937_64 bits_;
};

using rotation = std::array<point, 3>;  // rows

rotation random_rotation(seeded_random& random);
point rotate(const rotation& R, const point& p);  // R p

// A triangle in space with angles between about 15 and 130 degrees; its longest side is about `size`.
std::vector<point> random_triangle(seeded_random& random, double size = 1.0);

// A flat convex quadrilateral in space, nodes in order round it.
std::vector<point> random_quadrilateral(seeded_random& random, double size = 1.0);

// Sections on given nodes: thickness 1/200 to 1/10 of the first side.
plate_description random_isotropic(seeded_random& random, const std::vector<point>& nodes);

// Orthotropic sections with an angle. reciprocal: E1 nu2 = E2 nu1 to the last bit, the material is symmetric.
enum class orthotropy { reciprocal, arbitrary };
plate_description random_orthotropic(seeded_random& random, const std::vector<point>& nodes, orthotropy kind);
plate_description random_composite(seeded_random& random, const std::vector<point>& nodes, orthotropy kind);

// Offsets of each node and a common one, up to a quarter of `size`; switched on.
void add_random_offsets(seeded_random& random, plate_description& description, double size = 1.0);

}  // namespace support

#endif
