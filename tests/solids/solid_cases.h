// solid_cases.h: the elements and places that the tests of solids share.
#ifndef FINITES_TESTS_SOLID_CASES_H
#define FINITES_TESTS_SOLID_CASES_H

#include <vector>

#include "random_shapes.h"
#include "solid_model.h"
#include "solids/kinematics.h"
#include "solids/shapes.h"

namespace solid_cases {

using support::point;
using support::seeded_random;
using support::solid_description;

// A distorted element of 4, 6 or 8 nodes, turned and moved in space, with a material of its own.
solid_description random_solid(seeded_random& random, int nodes);
// A box of the given edges, axes along its own.
solid_description box(double x, double y, double z);
// The tetrahedron of the origin and the points at a distance `edge` on the axes.
solid_description corner_tetrahedron(double edge);

solid_description turned(const solid_description& d, const support::rotation& R, const point& shift);

// A place inside the natural element.
std::vector<double> random_place(seeded_random& random, int kind);

// Displacements u = a + H x of every node, three a node; H by rows.
std::vector<double> linear_field(const solid_description& d, const point& a, const std::array<point, 3>& H);

// ---- the library's routines, with their result handed back; three a node, packed by columns

std::vector<double> shape(int kind, const std::vector<double>& p);
std::vector<double> shape_derivatives(int kind, const std::vector<double>& p);

// Coordinates (3, n) packed as the internal routines take them.
SOLID_VECTORS coordinates(const std::vector<point>& nodes);

}  // namespace solid_cases

#endif
