// reference_member.h: what the matrices of members ought to be, by other ways than the library's and in extended
// precision: the flexibility method, block condensation, integrals of shape functions.
#ifndef FINITES_TESTS_REFERENCE_MEMBER_H
#define FINITES_TESTS_REFERENCE_MEMBER_H

#include <vector>

#include "dense.h"
#include "frame_model.h"

namespace reference {

using dense::column;
using dense::matrix;
using dense::real;

matrix square(const std::vector<double>& packed);  // from a matrix packed by columns
using dense::listed;

// R^T M R with the leading part of R, of the order of M.
matrix turned(const matrix& M, const std::vector<double>& R);

// The degrees of freedom v1, theta1, v2, theta2 of bending in the x-y plane; stiffness GA 0 means no shear deformation.
// Fixity f: a rotational spring of stiffness 3 E I f / (L (1 - f)) between the end and its node.
matrix plane_stiffness(real EI, real GA, real L, real f, real g);

// Integral over the length of P v'^2, and of (v^2 + r L^2 v'^2) / L, for the cubic functions of the four degrees of
// freedom.
matrix plane_geometric(real P, real L);
matrix plane_mass(real r, real L);

// Puts x-y and x-z plane matrices (v or w, rotation, v or w, rotation) into a 12 by 12 matrix. A positive rotation
// about y lowers w along x: its sign is reversed.
void place_xy(const matrix& plane, matrix& M);
void place_xz(const matrix& plane, matrix& M);

// Condensation of a set of degrees of freedom (from 1) all at once.
matrix condensed(const matrix& K, const std::vector<int>& freedoms);

// The six rigid motions of the degrees of freedom of two nodes on the x axis, L apart: 12 by 6.
matrix rigid_motions(real L);

// What beams of these properties come to, local axes, without reductions, geometric stiffness and releases.
struct beam_properties {
  real EA, EI1, EI2, GJ, GA1, GA2, L;
};
beam_properties properties_of(const support::member_description& m, bool shear);
matrix beam_stiffness(const beam_properties& p, const support::member_description& m);
// With the axial and torsion switches and the releases of the forces along y and z.
matrix released_stiffness(const matrix& K, const support::member_description& m);

// Entries over sqrt(d_i d_j), d being the diagonal of the scale: every entry counts as much as its degrees of freedom
// allow.
std::vector<double> by_diagonal(const std::vector<double>& M, const matrix& scale);

}  // namespace reference

#endif
