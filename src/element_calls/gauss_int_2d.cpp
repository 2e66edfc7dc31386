// gauss_int_2d.cpp: GAUSS_INT_2D, an integration point with its Jacobian for the caller.
//
//     j = [dx/dxi dy/dxi; dx/deta dy/deta],    detj = det j,    g = j^-1
#include "finites/finites.h"
#include "shells/common/surface_points.h"

void GAUSS_INT_2D(const int32_t* rule, const int32_t* point, const int32_t* nodes, const double* xyz, double* xi,
                  double* eta, double* detj, double* weight, double* j11, double* j12, double* j21, double* j22,
                  double* g11, double* g12, double* g21, double* g22) {
  const SURFACE_POINT p = surface_point(*rule, *point, *nodes, xyz);
  *xi = p.xi;
  *eta = p.eta;
  *detj = p.detj;
  *weight = p.weight;
  *j11 = p.j11;
  *j12 = p.j12;
  *j21 = p.j21;
  *j22 = p.j22;
  *g11 = p.g11;
  *g12 = p.g12;
  *g21 = p.g21;
  *g22 = p.g22;
}
