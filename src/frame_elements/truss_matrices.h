// truss_matrices.h: the matrices of a truss in local axes, 6 by 6, from its properties alone.
#ifndef FINITES_TRUSS_MATRICES_H
#define FINITES_TRUSS_MATRICES_H

// K := E A / L [1 -1; -1 1] on u.
void truss_stiffness(double stiffness, double* K);

// KG := P / L [1 -1; -1 1] on v and on w.
void truss_string(double P, double L, double* KG);

// K := K + the string stiffness of P.
void add_truss_string(double P, double L, double* K);

// M := consistent or lumped.
void truss_mass(double mass, bool consistent, double* M);

// K := T^T K T, T (12, 12).
void truss_to_solver_axes(const double* T, double* K);

#endif
