// rotations.cpp: the rotation functions of the discrete Kirchhoff quadrilateral (formulas in rotations.h).
#include "shells/quadrilateral/rotations.h"

void DKQ_ROTATIONS(const QUADRILATERAL_GEOMETRY& QUAD, double xi, double eta, VECTOR<12>& Hx, VECTOR<12>& Hy) {
  dkq_rotations_at(QUAD, xi, eta, Hx, Hy);
}
