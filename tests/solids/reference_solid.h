// reference_solid.h: what solid elements ought to give, by other ways than the library's and in extended precision.
// Shape functions come from their polynomials and the nodes alone (a Vandermonde system), matrices from the full
// products of 6 and 9 rows in global axes.
#ifndef FINITES_TESTS_REFERENCE_SOLID_H
#define FINITES_TESTS_REFERENCE_SOLID_H

#include <functional>
#include <vector>

#include "dense.h"
#include "solid_model.h"

namespace reference {

using dense::column;
using dense::matrix;
using dense::real;
using tensor = dense::matrix3;

struct kind_facts {
  int kind, nodes, points;  // points with rule flag 0
};
const std::vector<kind_facts>& all_kinds();
std::vector<int> kinds();
int node_count(int kind);
int kind_of(int nodes);

// ---- shape functions: the polynomials of the element that are 1 at one node and 0 at the others

matrix node_coordinates(int kind);                           // 3 by n
column functions(int kind, const std::vector<double>& p);    // n
matrix derivatives(int kind, const std::vector<double>& p);  // 3 by n

// ---- integration

struct station {
  double xi, eta, zeta, weight;
};
std::vector<station> rule(int kind, int flag = 0);

// ---- one element, global axes

struct body {
  int kind;
  matrix XYZ;  // 3 by n
  real young, poisson, unit_weight, factor;
};
body body_of(const support::solid_description& d);

tensor axes(const body& b);  // rows
tensor jacobian(const body& b, const std::vector<double>& p);
matrix gradients(const body& b, const std::vector<double>& p);  // 3 by n, by x, y, z
matrix strain_matrix(const matrix& g);                          // 6 by 3 n
matrix gradient_matrix(const matrix& g);                        // 9 by 3 n
matrix elasticity(const body& b);                               // the inverse of the compliance, with the factor

matrix stiffness(const body& b);
matrix mass(const body& b);
column body_load(const body& b, const column& G);
// From the stress tensor of each point, global axes.
matrix geometric(const body& b, const std::vector<tensor>& stress);
column strain(const body& b, const std::vector<double>& p, const column& u);
real volume(const body& b);  // by the flux through its faces

tensor stress_tensor(const column& s);  // xx, yy, zz, xy, xz, yz
column stress_column(const tensor& s);  // of a symmetric tensor
tensor strain_tensor(const column& e);  // engineering shears halved
column strain_column(const tensor& e);

// R on the diagonal, once a node.
matrix blocks(const tensor& R, int nodes);

// ---- conversions

matrix square(const std::vector<double>& packed);
column listed(const std::vector<double>& values);
std::vector<double> rounded(const matrix& M);  // packed by columns
double norm(const matrix& M);

}  // namespace reference

#endif
