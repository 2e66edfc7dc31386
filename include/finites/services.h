// services.h: the routines that the element library needs from others: the services of the common library and the two
// routines of the cable library. For C99 and C++.
//
// Every argument is passed by reference; matrices are column-major reals of 64 bits, integers have 32 bits. The
// services keep no state except where stated. Texts are passed with their length and need no terminator.
#ifndef FINITES_SERVICES_H
#define FINITES_SERVICES_H

#include <stdint.h>

#include "finites/records.h"

#ifdef __cplusplus
extern "C" {
#endif

// ---------------------------------------------------------------------------------------------- matrices

// C (m, p) := A (m, n) B (n, p), dense. C must not overlap A or B.
void MATMUL_M1MN_M2MN_DBL(double* C, const double* A, const int32_t* m, const int32_t* n, const double* B,
                          const int32_t* n_of_b, const int32_t* p);

// C := A B, square of order n. C must not overlap A or B.
void MATMUL_M1_M2_DBL(double* C, const double* A, const double* B, const int32_t* n);

// C := A B^T, square of order n. C must not overlap A or B.
void MATMUL_M1_M2T_DBL(double* C, const double* A, const double* B, const int32_t* n, const int32_t* n_of_b);

// M := R^T M R in place, of order n. R is used in its leading n by n part and has the leading dimension ld; M has its
// own.
void MATMUL_RT_M_R_DBL(const double* R, double* M, const int32_t* n, const int32_t* ld, const int32_t* ld_of_m);

// M := R M R^T in place, likewise.
void MATMUL_R_M_RT_DBL(const double* R, double* M, const int32_t* n, const int32_t* ld, const int32_t* ld_of_m);

// out := R v on the leading n by n of R, whose leading dimension is ld. out must not overlap v.
void MATMUL_R_V_DBL(const double* R, const double* v, double* out, const int32_t* n, const int32_t* ld);

// out := R^T v, likewise.
void MATMUL_RT_V_DBL(const double* R, const double* v, double* out, const int32_t* n, const int32_t* ld);

// M := the inverse of its leading n by n part, in place; ierr is not 0 when a pivot is exactly 0, and M is then
// overwritten.
void INVMAT_DB(double* M, const int32_t* n, const int32_t* ld, int32_t* ierr);

// The library does not call this one and the two tensors below; solvers turn with them what it answers.
// (xl, yl, zl) := AX (x, y, z): the rows of AX are the local axes.
void TRANS_VEC_G2L1_DBL(const double* x, const double* y, const double* z, const double* AX, double* xl, double* yl,
                        double* zl);

// out := R T R^T: a symmetric 3 by 3 tensor to local axes, the rows of R being the local axes.
void TENSEUR_G2L_DBL(const double* T, const double* R, double* out);

// out := R^T T R: the same back to global axes.
void TENSEUR_L2G_DBL(const double* T, const double* R, double* out);

// Axes of a solid element of NN nodes from its node coordinates XYZ (3, NN). AX 3 by 3, rows the axes.
void SOLIDELEM_AXE_DBL(const int32_t* NN, const double* XYZ, double* AX);

// ---------------------------------------------------------------------------------------------- offsets

// J, 6 by 6: the rigid link from a node to a point offset by (dx, dy, dz). The identity, with the skew matrix of the
// offset in the block that turns rotations into translations: J(1:3, 4:6) = [0 -dz dy; dz 0 -dx; -dy dx 0].
void GET_JOINT_OFFSET_J6D(const double* dx, const double* dy, const double* dz, double* J);

// P, of order 6 n: the block diagonal of the J of each node, with n nodes.
void GET_PLATE_OFFSET_P_DBL(const int32_t* n, const double* dx1, const double* dy1, const double* dz1,
                            const double* dx2, const double* dy2, const double* dz2, const double* dx3,
                            const double* dy3, const double* dz3, const double* dx4, const double* dy4,
                            const double* dz4, double* P);

// ---------------------------------------------------------------------------------------------- records

// Copies the solution parameters into rec.
void ZelkuSolParamGetRec(SOLPARAM_RECORD* rec);

// code: 0 no nonlinear plate material; 1 whole-section; 2 layered.
void ZELKU_SOLPARAM_GET_KNLMATERIAL_PLATE(int32_t* code);

// flag: 1 when nonlinear material of members is on.
void ZELKU_SOLPARAM_GET_KNLMATERIAL_MEMBER(int32_t* flag);

// Copies the material record, or the composite section record, of a number into rec. status is 0, or not 0 when there
// is none; rec is then all zeros.
void ZelkMaterialGetRec(const int32_t* number, MATERIAL_RECORD* rec, int32_t* status);
void ZelkSectionCLTGetRec(const int32_t* number, CLT_SECTION_RECORD* rec, int32_t* status);

// pos := the position, from 1, of key in the ascending array sorted (count); 0 when it is absent.
void QFIND_SORT_INTEGER(const int32_t* count, const int32_t* key, const int32_t* sorted, int32_t* pos);

// flag: 1 when the section type is a cold-formed one.
void GET_KCOLDFORM(const int32_t* type, int32_t* flag);

// pointer := the address that is stored in the bits of the double word cell.
void INT_EQUIV_KPT(const double* cell, void** pointer);

// ---------------------------------------------------------------------------------------------- threads
//
// A common library that serves one thread only may leave out these two.

// The scratch record of plate calls of the calling thread; PLATEELEM for the thread that calls first.
PLATEELEM_RECORD* TARNIX_PLATEELEM(void);

// The exchange area that the calling thread has set for itself, 768 reals; null: the area at A(RES_BASE).
double* TARNIX_EXCHANGE_AREA(void);

// ---------------------------------------------------------------------------------------------- diagnostics, plug-ins

// Reports the text when the condition is false (0). It may stop the run or return, as the solver has set.
void ASSERTF(const char* text, const int32_t* length, const int32_t* condition);

// Where the failures that this thread reports next are: the sequential index of the element, the operation, the point
// of a plate or the end of a member; each 0 where it is not known. It holds until the next call; three zeros end it. A
// common library need not have this one.
void TARNIX_FAILURE_PLACE(const int32_t* elem, const int32_t* operation, const int32_t* point);

// Formats message number code with nine integers and three texts into msg, blank-padded to msg_length, and sets ierr to
// the number. types is ten times the count of integers that the caller gives plus the count of its texts; what is
// beyond them is not read.
void WERRTU(const int32_t* code, const int32_t* types, const int32_t* i1, const int32_t* i2, const int32_t* i3,
            const int32_t* i4, const int32_t* i5, const int32_t* i6, const int32_t* i7, const int32_t* i8,
            const int32_t* i9, const char* text1, const int32_t* length1, const char* text2, const int32_t* length2,
            const char* text3, const int32_t* length3, int32_t* ierr, char* msg, const int32_t* msg_length);

// slot := the address of a routine of a library, loaded by name ("Vornekal.DLL"); null when it is not available.
// A terminator or blanks at the end of a name do not belong to it.
void LOAD_DLL_SUBROUTINE(const char* library, const int32_t* library_length, const char* routine,
                         const int32_t* routine_length, void** slot);

// ---------------------------------------------------------------------------------------------- cables
//
// A cable of unstressed length L0 hangs between two nodes under a dead load w per unit of unstressed length: the whole
// load is w L0 wherever the nodes are. e is a stress-free strain. Along the unstressed coordinate s from 0 to L0, with
// the tension vector t(s) = t(0) - w s of length T,
//
//   dx/ds = (1 + e + T/(E A)) t/T
//
// All arguments go by reference. The statuses of both routines: 0 success; 1 bad data (L0, E A or 1 + e not above 0, a
// value that is not finite); 2 a slack cable without load; 3 no convergence. After a failure all results are zero.

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
void CASE_1_L_0_3D2(const int32_t* elem, const double* X1, const double* X2, const double* area, const double* E,
                    const double* L0, const double* e, const double* w, double* F, double* tension1, double* tension2,
                    int32_t* status);

// Tangent KT (6, 6) = dF/dX of the forces F of an equilibrium, as CASE_1_L_0_3D2 returned them, with respect to the
// coordinates of the first node, then of the second. Symmetric. The equilibrium is not solved again.
void CALC_KT_TANGENT(const int32_t* elem, const double* X1, const double* X2, const double* F, const double* area,
                     const double* E, const double* L0, const double* w, const double* e, double* KT, int32_t* status);

#ifdef __cplusplus
}
#endif

#endif
