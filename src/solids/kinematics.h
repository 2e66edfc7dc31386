// kinematics.h: Jacobian, strain and gradient matrices of the solid elements.
//
// OK is 0 where the Jacobian is singular, |det J| < 1e-20. A negative determinant is accepted.
#ifndef FINITES_SOLID_KINEMATICS_H
#define FINITES_SOLID_KINEMATICS_H

#include <cmath>
#include <cstdint>

#include "finites/views.hpp"
#include "solids/shapes.h"

constexpr int SOLID_DOFS = 3 * SOLID_ROOM;

// A vector of each node, (3, NN): coordinates, displacements, forces.
using SOLID_VECTORS = MATRIX<3, SOLID_ROOM>;

// Derivatives of the shape functions by x, y, z, (3, NN).
using SOLID_GRADIENTS = MATRIX<3, SOLID_ROOM>;

// A determinant below it, without its sign, makes the element fail. It is absolute: the limit on the volume of an
// element depends on the length unit. NaN passes.
constexpr double SINGULAR_DETERMINANT = 1e-20;

inline bool singular(double DET) { return std::fabs(DET) < SINGULAR_DETERMINANT; }

// DET := the determinant of M; OK := 0 when |DET| < 1e-20, unchanged otherwise.
void DET3_DBL(const MATRIX<3, 3>& M, double& DET, std::int32_t& OK);

// MINV := the inverse, or zero where OK becomes 0. OK is 1 on entry.
void INV3_DBL(const MATRIX<3, 3>& M, MATRIX<3, 3>& MINV, std::int32_t& OK);

// J(i, j) := the derivative of coordinate j by natural direction i, from XYZ (3, NN).
void SOLID_JACOBIAN(double XI, double ETA, double ZETA, std::int32_t KIND, std::int32_t NN, const SOLID_VECTORS& XYZ,
                    MATRIX<3, 3>& J, double& DETJ, std::int32_t& OK);

// The gradients of the shape functions at a point, and the determinant there.
void solid_gradients(std::int32_t KIND, double XI, double ETA, double ZETA, std::int32_t NN, const SOLID_VECTORS& XYZ,
                     SOLID_GRADIENTS& g, double& DETJ, std::int32_t& OK);

// B (6, 3 NN): strains xx, yy, zz, xy, xz, yz, shears engineering, per translation. G (9, 3 NN): the gradients of u,
// then of v, then of w. The library multiplies out B^T D B and G^T T G without forming them (operations.cpp); only
// tests call these two, as the reference of those products.
void SOLID_B_MATRIX(std::int32_t KIND, double XI, double ETA, double ZETA, std::int32_t NN, const SOLID_VECTORS& XYZ,
                    MATRIX<6, SOLID_DOFS>& B, std::int32_t& OK);
void SOLID_G_MATRIX(std::int32_t KIND, double XI, double ETA, double ZETA, std::int32_t NN, const SOLID_VECTORS& XYZ,
                    MATRIX<9, SOLID_DOFS>& G, std::int32_t& OK);

// B u from the gradients.
VECTOR<6> solid_strain(const SOLID_GRADIENTS& g, std::int32_t NN, const SOLID_VECTORS& u);

#endif
