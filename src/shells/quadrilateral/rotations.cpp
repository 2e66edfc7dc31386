// rotations.cpp: the rotation functions of the discrete Kirchhoff quadrilateral (formulas in rotations.h).
//
//     corners     N_i = -(1 + xi_i xi)(1 + eta_i eta)(1 - xi_i xi - eta_i eta) / 4
//     mid-sides   N_5, N_7 = (1 - xi^2)(1 + eta_k eta) / 2,    N_6, N_8 = (1 - eta^2)(1 + xi_k xi) / 2
#include "shells/quadrilateral/rotations.h"

void DKQ_ROTATIONS(const QUADRILATERAL_GEOMETRY& QUAD, double xi, double eta, VECTOR<12>& Hx, VECTOR<12>& Hy) {
  const VECTOR<8> N{
      {-(1.0 - eta) * (1.0 - xi) * (1.0 + eta + xi) / 4.0, -(1.0 + xi) * (1.0 - eta) * (1.0 - xi + eta) / 4.0,
       -(1.0 + eta) * (1.0 + xi) * (1.0 - xi - eta) / 4.0, -(1.0 - xi) * (1.0 + eta) * (1.0 + xi - eta) / 4.0,
       (1.0 - xi) * (1.0 + xi) * (1.0 - eta) / 2.0, (1.0 - eta) * (1.0 + eta) * (1.0 + xi) / 2.0,
       (1.0 - xi) * (1.0 + xi) * (1.0 + eta) / 2.0, (1.0 - eta) * (1.0 + eta) * (1.0 - xi) / 2.0}};
  dkq_rotation_functions(QUAD, N, Hx, Hy);
}
