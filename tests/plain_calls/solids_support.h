// solids_support.h: solids for the tests of the plain calls, and their answers as vectors.
#ifndef FINITES_TESTS_PLAIN_SOLIDS_SUPPORT_H
#define FINITES_TESTS_PLAIN_SOLIDS_SUPPORT_H

#include <array>
#include <vector>

#include "finites/elements.h"
#include "random_shapes.h"
#include "solid_model.h"

namespace plain_solids {

using support::point;
using support::seeded_random;

constexpr int NODE_COUNTS[] = {4, 6, 8};

using gradient = std::array<point, 3>;  // by rows

// Nodes of the straight element of a kind, edges 1 along the axes from the origin: in order of the header.
finites_solid straight(int nodes);
// The same with edges a, b, c, and steel in newtons and millimetres.
finites_solid block(int nodes, double a, double b, double c);
// Distorted, turned and moved, with constants of its own; the factor is one of single precision.
finites_solid random_solid(seeded_random& random, int nodes);

// The same solid for a solver's model.
support::solid_description described(const finites_solid& solid);

// u = a + H x of every node.
std::vector<double> linear_field(const finites_solid& solid, const point& a, const gradient& H);
gradient random_gradient(seeded_random& random, double size);

// Hooke's law in global axes: the stress tensor of the strain sym(H).
gradient hooke(const finites_solid& solid, const gradient& H);
// The volume by 4 by 4 by 4 points of the map from the natural element, in extended precision.
double volume(const finites_solid& solid);

// Answers of calls, which must succeed.
std::vector<double> stiffness(const finites_solid& solid);
std::vector<double> mass(const finites_solid& solid);
std::vector<double> geometric(const finites_solid& solid, const std::vector<double>& u);
std::vector<double> geometric_of_stresses(const finites_solid& solid, const std::vector<std::array<double, 6>>& stress);
std::vector<double> forces(const finites_solid& solid, const std::vector<double>& u);
std::vector<double> body_load(const finites_solid& solid, const point& load);
std::vector<double> temperature_load(const finites_solid& solid, double change);
std::vector<double> face_load(const finites_solid& solid, int face, const point& traction, double pressure);
finites_solid_measures measures(const finites_solid& solid);
finites_solid_results results(const finites_solid& solid, const std::vector<double>& u, double temperature = 0.0);

inline int faces(const finites_solid& solid) { return solid.nodes == 8 ? 6 : solid.nodes == 6 ? 5 : 4; }

}  // namespace plain_solids

#endif
