// cable_services.h: the two routines of the cable library that the element library calls.
//
// A cable of unstressed length L0 hangs between two nodes under a dead load w per unit of unstressed length: the whole
// load is w L0 wherever the nodes are. e is a stress-free strain. Along the unstressed coordinate s from 0 to L0, with
// the tension vector t(s) = t(0) - w s of length T,
//
//   dx/ds = (1 + e + T/(E A)) t/T
//
// All arguments go by reference. The statuses of both routines: 0 success; 1 bad data (L0, E A or 1 + e not above 0, a
// value that is not finite); 2 a slack cable without load; 3 no convergence. After a failure all results are zero.
#ifndef FINITES_CABLE_SERVICES_H
#define FINITES_CABLE_SERVICES_H

#include <cstdint>

extern "C" {

// Equilibrium of the cable.
//
//   elem                in   element number
//   X1, X2 (3)          in   coordinates of the nodes
//   area, E, L0         in
//   e                   in   stress-free strain
//   w (3)               in   load per unit of unstressed length, global axes
//   F (6)               out  forces that the nodes exert on the cable, global axes: F(1..3) = -t(0), F(4..6) = t(L0)
//   tension1, tension2  out  at the first and the second end
//   status              out
void CASE_1_L_0_3D2(const std::int32_t* elem, const double* X1, const double* X2, const double* area, const double* E,
                    const double* L0, const double* e, const double* w, double* F, double* tension1, double* tension2,
                    std::int32_t* status);

// Tangent KT (6, 6) = dF/dX of the forces F of an equilibrium, as CASE_1_L_0_3D2 returned them, with respect to the
// coordinates of the first node, then of the second. Symmetric. The equilibrium is not solved again.
void CALC_KT_TANGENT(const std::int32_t* elem, const double* X1, const double* X2, const double* F, const double* area,
                     const double* E, const double* L0, const double* w, const double* e, double* KT,
                     std::int32_t* status);
}

#endif
