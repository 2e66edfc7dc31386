// rotations.cpp: the rotation functions of the discrete Kirchhoff quadrilateral.
#include "shells/quadrilateral/rotations.h"

void DKQ_ROTATIONS(const QUADRILATERAL_GEOMETRY& QUAD, double xi, double eta, VECTOR<12>& Hx, VECTOR<12>& Hy) {
  const VECTOR<8> N{
      {-(1.0 - eta) * (1.0 - xi) * (1.0 + eta + xi) / 4.0, -(1.0 + xi) * (1.0 - eta) * (1.0 - xi + eta) / 4.0,
       -(1.0 + eta) * (1.0 + xi) * (1.0 - xi - eta) / 4.0, -(1.0 - xi) * (1.0 + eta) * (1.0 + xi - eta) / 4.0,
       (1.0 - xi) * (1.0 + xi) * (1.0 - eta) / 2.0, (1.0 - eta) * (1.0 + eta) * (1.0 + xi) / 2.0,
       (1.0 - xi) * (1.0 + xi) * (1.0 + eta) / 2.0, (1.0 - eta) * (1.0 + eta) * (1.0 - xi) / 2.0}};
  dkq_rotation_functions(QUAD, N, Hx, Hy);
}
