/* finites.h: the exported routines of the element library.
 *
 * Plain C: C, C++ and Fortran can use it. Every argument is passed by reference and nothing is returned. Integers have
 * 32 bits, reals 64 except where stated. Arrays are column-major and numbered from 1 in the descriptions.
 *
 * Calls on different elements may run side by side in several threads, each with an exchange area of its own
 * (TARNIX_SET_EXCHANGE_AREA); two calls on the state of one element may not. Routines that access only their arguments
 * say so. fields.h has the names of places and codes, records.h the records. docs/calling.md shows how to call. */
#ifndef FINITES_FINITES_H
#define FINITES_FINITES_H

#include <stdint.h>

#if defined(FINITES_BUILDING_LIBRARY) && defined(__GNUC__)
#define FINITES_EXPORT __attribute__((visibility("default")))
#else
#define FINITES_EXPORT
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ------------------------------------------------------------------------------------------ plates and shells */

/* FINITES: one operation on one plate or shell element.
 *
 *   op      i/o  operation, below; 41 and 401 are returned as 4
 *   elem    in   sequential index of the element, the subscript into PLATE_OF_ELEM
 *   k       in   start of the element's block in MODEL_DATA: its fields are A(k+1) onward
 *   A(n)    i/o  MODEL_DATA
 *   n       in   its declared extent; not read
 *   data    i/o  parameters of operations 4, 41, 401, 5, 9, 10, and the reply of operation 9, data(10..12)
 *   forces  out  24 reals, nodal load vector of operations 4, 41, 401, 10; global axes; 19 to 24 are 0 for a triangle
 *   matrix  out  24 by 24, matrix of operations 1, 2, 7, 71; global axes; for a triangle rows and columns 19 to 24 stay
 *                unchanged
 *
 *     op  what                       reads                               writes
 *      1  stiffness                  stored forces, when second order    matrix
 *      2  consistent mass                                                matrix
 *      3  internal forces            displacements at A(RES_BASE), 24    A(RES_BASE+24), 24, global axes
 *     33  the same, storing state    the same                            the same in element axes, at the element and
 *                                                                        not transferred to the nodes of offsets
 *      4  surface load               data(1..3) global, (4..6) element   forces
 *     41  body force per volume      data(1..3) global                   forces
 *    401  temperature load           data(1) change, (2) difference      forces
 *      5  strains, stresses, forces  displacements; data(1..2) as 401    A(RES_BASE+48), 4 x 90 at the nodes;
 *                                                                        A(RES_BASE+408), 4 x 90 at the points
 *      7  minus the geometric stiffness of the displacements             matrix
 *     71  minus the geometric stiffness of the stored forces             matrix
 *      8  area, weight                                                   the plate record
 *      9  is a point on the element? data(1..3) the point, global        data(10..12): flag 1, flag 2, distance
 *     10  point load                 data(1..3) the point, (4..6) force  forces
 *                                    global, (7..9) force element axes
 *
 * Operation 9: flag 1 is 0 inside and up to 0.001 beyond a side, otherwise 1. Flag 2 is 1 above the plane by more than
 * 0.05 of the longest side, otherwise 0: below the plane too. The distance is positive on the side of the normal.
 *
 * There are six degrees of freedom per node: three translations, three rotations, global axes. Another code only
 * prepares the element and writes no result. There is no status: a degenerate element gives infinite values or NaN, a
 * thickness of 0 a matrix of zeros (NaN from a thick element of a general section). PLATE_RECORDS must be there.
 * Plates that yield keep their state in PLATE_STATE: any operation that needs the material initialises it on the very
 * first pass, operation 33 stores it, operation 3 does not (except that an elastic layered point is stored in both).
 * Without allocated state the plate part of stiffness and forces is zero, the terms of the drilling rotations and of
 * stored forces remain, and records are zero. */
FINITES_EXPORT void FINITES(int32_t* op, const int32_t* elem, const int32_t* k, double* A, const int32_t* n,
                            double* data, double* forces, double* matrix);

/* INFO_FINITES: kind, material behaviour and stiffness parts of an element, without changing any state.
 *
 *   elem   in   sequential index; the element's block starts at (elem-1) A(102) + A(100)
 *   A(n)   in   MODEL_DATA
 *   n      in   not read
 *   kind   out  10 thin, 11 thick, 12 membrane triangle; 20, 21, 22 the quadrilaterals; three nodes or four by
 *               BLOCK_NODE_COUNT of the block, not by the plate record that FINITES reads
 *   behav  out  0 isotropic, 1 general, 2 whole-section plasticity, 3 layered plasticity
 *   parts  out  sum of 1 membrane, 2 bending, 4 transverse shear, 8 whole-section plasticity */
FINITES_EXPORT void INFO_FINITES(const int32_t* elem, const double* A, const int32_t* n, int32_t* kind, int32_t* behav,
                                 int32_t* parts);

/* GAUSS_INT_2D: one integration point of a flat element and the Jacobian of the straight-sided map there.
 *
 *   rule    in   1, 2 or 3; another rule has all points at the origin with weight 0
 *   point   in   number of the point, from 1; a number without a point gives the origin with weight 0
 *   nodes   in   4 for the quadrilateral, otherwise the triangle
 *   xyz     in   (3, nodes) local coordinates; z is not read
 *   xi, eta, detj, weight         out  natural coordinates, determinant, weight
 *   j11, j12, j21, j22            out  dx/dxi, dy/dxi, dx/deta, dy/deta
 *   g11, g12, g21, g22            out  the inverse: d/dx = g11 d/dxi + g12 d/deta, d/dy = g21 d/dxi + g22 d/deta
 *
 * Quadrilateral: 1 is the 2 by 2 Gauss rule, 2 the centre, 3 the nodes with weight 0. Triangle: 1 the three-point rule,
 * 2 the four-point rule whose centroid has a negative weight, 3 the nodes with weight 0. A degenerate element gives a
 * determinant of 0 and an inverse that is infinite or NaN. Accesses only its arguments. */
FINITES_EXPORT void GAUSS_INT_2D(const int32_t* rule, const int32_t* point, const int32_t* nodes, const double* xyz,
                                 double* xi, double* eta, double* detj, double* weight, double* j11, double* j12,
                                 double* j21, double* j22, double* g11, double* g12, double* g21, double* g22);

/* UPDATE_PRINCIPAUX_RES100_PLA, in single precision, and UPDATE_PRINCIPAUX_RES100_PLA_DBL: compute principal and
 * equivalent stresses again after the solver has changed the stresses of its own record, for example averaged them at a
 * node.
 *
 *   res  i/o  at least 47 values, numbered from 1
 *          in   24..26, 27..29, 30..32  sx, sy, sxy at the top, mid surface, bottom
 *               33                      without effect
 *               46, 47                  mean transverse shear stresses
 *          out  7, 8, 9                 equivalent stress at the top, mid surface, bottom
 *               34..37, 38..41, 42..45  angle (radians), first and second principal stress, largest shear, likewise
 *
 * The other columns stay unchanged. Both compute in double precision and access only their argument. */
FINITES_EXPORT void UPDATE_PRINCIPAUX_RES100_PLA(float* res);
FINITES_EXPORT void UPDATE_PRINCIPAUX_RES100_PLA_DBL(double* res);

/* ------------------------------------------------------------------------------------------ frame members
 *
 * Common arguments:
 *
 *   MODE     in   0 the stiffness of the current step: removal and geometric stiffness act; 1 local axes, without them;
 *                 any other value the solver's axes, without them. A pretension (KSTIFT) and the ratio of a nonlinear
 *                 component (KSTIF_LINK, KSTIF_SPR) have rules of their own, described there
 *   IELEM    in   element sequence index, the subscript of ELEM_POS
 *   IOFF     in   I, start of the element's entry in MODEL_DATA: its fields are A(I+1) onward
 *   A(NDIM)  in   MODEL_DATA; NDIM is only passed on
 *   T        in   12 by 12 rotation: its rows are the local axes, u_local = T u_solver; members with six degrees of
 *                 freedom use its leading 6 by 6
 *   K, KG    out  stiffness and geometric stiffness; KG is zero when it is not built
 *
 * Degrees of freedom: u, v, w, rotations about x, y, z of the first end, then of the second; members with six degrees
 * of freedom have the three translations of each end. x runs along the member. Beams and trusses report nothing: a
 * zero length divides by zero. RELEASE_DOF, RELEASE_DOF_MAS and KSTIFB_GEOM access only their arguments. */

/* KSTIFB: stiffness (12, 12) of a beam with shear deformation, semi-rigid ends and releases (Monforton and Wu, 1963).
 *
 *   NT2  in  above 0: K := T2^T K T2 after the rotation by T
 *   T2   in  12 by 12
 *
 * A(41) 1 adds the geometric stiffness to K, 3 only returns it in KG. Writes K11_COPY, PRESTRESS_FORCE and, in MODE 0
 * with yielding members, K_ELASTIC. */
FINITES_EXPORT void KSTIFB(const int32_t* MODE, const int32_t* IELEM, const int32_t* IOFF, const double* A,
                           const int32_t* NDIM, const double* T, const int32_t* NT2, const double* T2, double* K,
                           double* KG);

/* RELEASE_DOF: static condensation of the degree of freedom IDOF from K (N, N), in place. Does nothing when IDOF is not
 * 1 to N or its diagonal is exactly 0. */
FINITES_EXPORT void RELEASE_DOF(const int32_t* IDOF, double* K, const int32_t* N);

/* GET_N_CONVERG_TOM: in how many steps (1 to 100) a failing element reaches its least coefficient RMIN, and the RATIO
 * by which each step divides. GET_COEF_REMOVE: its coefficient at the counter STEP (0 or above: 1; negative: failing).
 */
FINITES_EXPORT void GET_N_CONVERG_TOM(const double* RMIN, double* RATIO, int32_t* NSTEP);
FINITES_EXPORT void GET_COEF_REMOVE(const int32_t* STEP, const double* RMIN, double* COEF);

/* KSTIFB_GEOM: geometric stiffness KG (12, 12) of a beam, local axes.
 *
 * Cubic functions, or the closed form for semi-rigid ends. The closed form depends on the units of the model: with
 * E I / L^2 far above 1 as a number it is the matrix of rigid ends, far below 1 that of a string, with a negative
 * term on the first rotation. For semi-rigid ends rather take fixities of 1 and rotational springs (docs/decisions.md).
 *
 *   P               in  axial force, tension positive; 0 gives zeros
 *   L, E1, E2       in  length, moduli of x-y and of x-z bending
 *   I1, I2          in  moments of inertia of x-y and of x-z bending
 *   SEMIY, SEMIZ    in  1: a semi-rigid end in the x-z, in the x-y plane; either gives both planes the closed form
 *   RELY, RELZ      in  release codes of the forces along y and z
 *   A1, B1, A2, B2  in  fixity factors: A x-z bending, B x-y bending; 1 first, 2 second end. The formulas at the head
 *                       of beam_geometric.cpp are of one plane: a, b there are its first and second end */
FINITES_EXPORT void KSTIFB_GEOM(const double* P, const double* L, const double* E1, const double* E2, const double* I1,
                                const double* I2, const int32_t* SEMIY, const int32_t* SEMIZ, const int32_t* RELY,
                                const int32_t* RELZ, const double* A1, const double* B1, const double* A2,
                                const double* B2, double* KG);

/* KSTIFB_MASS: mass M (12, 12) of a beam, the solver's axes: consistent with rotary inertia, or lumped (LUMPED_MASS).
 */
FINITES_EXPORT void KSTIFB_MASS(const int32_t* IELEM, const int32_t* IOFF, const double* A, const int32_t* NDIM,
                                const double* T, const int32_t* NT2, const double* T2, double* M);

/* RELEASE_DOF_MAS: removes the degree of freedom IDOF from M (12, 12), in place; the diagonal of a translation or
 * torsion is added to the same degree of freedom of the other end. Does nothing when IDOF is not 1 to 12 or its
 * diagonal is exactly 0. */
FINITES_EXPORT void RELEASE_DOF_MAS(const int32_t* IDOF, double* M);

/* KSTIFT: stiffness (6, 6) of a two-node axial element, with the pretension of a section of type 14 (in MODE 0, and in
 * every MODE when A(41) is not 1) and the yield of one of type 10. Writes K11_COPY and PRESTRESS_FORCE. */
FINITES_EXPORT void KSTIFT(const int32_t* MODE, const int32_t* IELEM, const int32_t* IOFF, const double* A,
                           const int32_t* NDIM, const double* T, double* K, double* KG);

/* KSTIFT_PLAST: multiplies the axial terms of K (6, 6), local axes, by 1e-6 when the hinge record of the element says
 * that it yields. */
FINITES_EXPORT void KSTIFT_PLAST(const int32_t* IELEM, double* K);

/* KSTIFT_MASS: mass M (6, 6) of an axial element, the solver's axes. */
FINITES_EXPORT void KSTIFT_MASS(const int32_t* IOFF, const double* A, const int32_t* NDIM, const double* T, double* M);

/* KSTIFT_CATENARY: tangent stiffness (6, 6) of a hanging cable, through the cable library. KG is always zero.
 *
 *   ILOAD  in   load case of MEMBER_LOADS; below 1 the self-weight along the negative global y axis
 *   IERR   out  0, or the message number of a failure; K is then zero
 *   MSG    out  MESSAGE_LENGTH characters, blank-padded, filled on failure */
FINITES_EXPORT void KSTIFT_CATENARY(const int32_t* MODE, const int32_t* IELEM, const int32_t* IOFF,
                                    const int32_t* ILOAD, const double* A, const int32_t* NDIM, const double* T,
                                    double* K, double* KG, int32_t* IERR, char* MSG);

/* KSTIF_LINK, KSTIF_SPR: stiffness (12, 12) of a link and of a spring from the property record whose address is in
 * A(I+31). KG is always zero. No record: ASSERTF, then zeros. A component of kind 8 has its current stiffness in MODE 0
 * and 1. T is applied to a spring only where its first node has local axes; a link of length zero is valid. */
FINITES_EXPORT void KSTIF_LINK(const int32_t* MODE, const int32_t* IELEM, const int32_t* IOFF, const double* A,
                               const int32_t* NDIM, const double* T, double* K, double* KG);
FINITES_EXPORT void KSTIF_SPR(const int32_t* MODE, const int32_t* IELEM, const int32_t* IOFF, const double* A,
                              const int32_t* NDIM, const double* T, double* K, double* KG);

/* GET_COEF_REMOVE_SPRING: as GET_COEF_REMOVE; a component of KIND 8 takes the ratio of the current to the initial
 * stiffness of spring NLIDX instead (none: ASSERTF, then 1). */
FINITES_EXPORT void GET_COEF_REMOVE_SPRING(const int32_t* STEP, const double* RMIN, const int32_t* NLIDX,
                                           const int32_t* KIND, double* COEF);

/* ------------------------------------------------------------------------------------------ plastic hinges
 *
 * A hinge at a member's end yields under the axial force P and the moments MY and MZ. Common arguments:
 *
 *   CP, CMY, CMZ  in   capacities; unless all three are positive, values, NEQ and gradients are 0: no hinge forms
 *   FS            in   which forces interact: 1 P, 2 MY, 3 MZ, 4 P and MY, 5 P and MZ, 6 MY and MZ, 7 all three
 *   P, MY, MZ     in   the forces
 *   SEG (4)            segment numbers of the active equations, 0 in an empty place
 *   PHI           out  value of the yield function; the curve is PHI = 1
 *   DP, DMY, DMZ  out  its gradient
 *
 * The curve routines access only their arguments. The order of the arguments differs between the families. */

/* PHI_ORBISON, ORBISON_CURVE_GRADIENT: one smooth surface (Orbison, McGuire and Abel, 1982); MZ is the strong axis. The
 * gradient of FS 1 and of an unknown FS is 0, while the value then has all three forces. */
FINITES_EXPORT void PHI_ORBISON(const double* CP, const double* CMY, const double* CMZ, const int32_t* FS,
                                const double* P, const double* MY, const double* MZ, double* PHI);
FINITES_EXPORT void ORBISON_CURVE_GRADIENT(const int32_t* FS, const double* CP, const double* CMY, const double* CMZ,
                                           const double* P, const double* MY, const double* MZ, double* DP, double* DMY,
                                           double* DMZ);

/* Single forces, FS 1 to 3: segment 1 the positive side, 2 the negative one. SINGLE_FORCES_SEGMENT_EQUATION gives the
 * side of a force (NEQ 1, SEG(1)); any other FS has NEQ 0, value 0 and gradient 0. S is one segment number. */
FINITES_EXPORT void SINGLE_FORCES_SEGMENT_EQUATION(const double* CP, const double* CMY, const double* CMZ,
                                                   const int32_t* FS, const double* P, const double* MY,
                                                   const double* MZ, int32_t* NEQ, int32_t* SEG);
FINITES_EXPORT void PHI_SINGLE_FORCES(const int32_t* SEG, const double* CP, const double* CMY, const double* CMZ,
                                      const int32_t* FS, const double* P, const double* MY, const double* MZ,
                                      double* PHI);
FINITES_EXPORT void SINGLE_FORCES_CURVE_GRADIENT(const int32_t* S, const int32_t* FS, const double* CP,
                                                 const double* CMY, const double* CMZ, const double* P,
                                                 const double* MY, const double* MZ, double* DP, double* DMY,
                                                 double* DMZ);

/* Linear segments, FS 2 to 7: p + 8/9 m = 1 for p >= 0.2, p/2 + m = 1 below, in every quadrant.
 * LINEAR_SEGMENT_EQUATION gives the NEQ segments of a point, packed from SEG(1) on: up to three where a moment is
 * exactly 0. PHI (4) has the value of each segment of SEG. A number that is no segment has value 0 and gradient 0. */
FINITES_EXPORT void LINEAR_SEGMENT_EQUATION(const double* CP, const double* CMY, const double* CMZ, const int32_t* FS,
                                            const double* P, const double* MY, const double* MZ, int32_t* NEQ,
                                            int32_t* SEG);
FINITES_EXPORT void PHI_LINEAR_SEGMENT(const int32_t* SEG, const double* CP, const double* CMY, const double* CMZ,
                                       const int32_t* FS, const double* P, const double* MY, const double* MZ,
                                       double* PHI);
FINITES_EXPORT void LINEAR_SEGMENT_GRADIENT(const int32_t* FS, const int32_t* S, const double* CP, const double* CMY,
                                            const double* CMZ, const double* P, const double* MY, const double* MZ,
                                            double* DP, double* DMY, double* DMZ);

/* GET_YIELD_CURVE_EQ_COUNT: the active equations of a member from its hinge record.
 *
 *   IELEM, A(NDIM)  in   as for the frame members
 *   FMODE           in   HINGE_FORCE_MODE
 *   NTOT, N1, N2    out  equations in all, of the first end, of the second; 0 for an unknown curve. An end that does
 *                        not yield counts one, so that the columns of the other end keep their places; a yielding end
 *                        without an equation of single forces (FS above 3, no capacity) counts none, and NTOT stays 2
 *   SEG1, SEG2 (4)  i/o  segments of the ends; those of an end that does not yield stay unchanged
 *
 * GET_YIELD_CURVE_DERIVATIVES: their gradients, one column of NMAT (12, NTOT) each, in rows 1, 5, 6 for the first end
 * and 7, 11, 12 for the second (P, MY, MZ). NMAT must be zero on entry and have at least two columns. Single forces and
 * Orbison: columns 1 and 2, of yielding ends only. Segments: a column for each segment in the first N1 and N2 places of
 * SEG1 and SEG2, whatever the states of the ends; the first end has one, zero when it has no segment. With gaps in SEG1
 * the columns of the second end start before N1 + 1. */
FINITES_EXPORT void GET_YIELD_CURVE_EQ_COUNT(const int32_t* IELEM, const double* A, const int32_t* NDIM,
                                             const int32_t* FMODE, int32_t* NTOT, int32_t* N1, int32_t* N2,
                                             int32_t* SEG1, int32_t* SEG2);
FINITES_EXPORT void GET_YIELD_CURVE_DERIVATIVES(const int32_t* IELEM, const double* A, const int32_t* NDIM,
                                                const int32_t* FMODE, double* NMAT, const int32_t* NTOT,
                                                const int32_t* N1, const int32_t* N2, const int32_t* SEG1,
                                                const int32_t* SEG2);

/* GET_HINGE_FORCES: the forces at an end of a member, and the part of them that comes from loads on the member.
 *
 *   POS            in   position of the member's records
 *   FMODE          in   HINGE_FORCE_MODE: 0 the stored end forces, otherwise those of step and iteration with the
 *                       loads; the second state set has none of the iteration
 *   END            in   1 or 2; another number gives zeros
 *   SET            in   1 the current state, 2 the second state set; another number, or one without records, zeros
 *   P, MY, MZ      out  forces
 *   LP, LMY, LMZ   out  the part of the loads, at the load factor of the state
 *
 * All are 0 when the nonlinear analysis library ("Vornekal.DLL") is not found. It is looked up in every call. */
FINITES_EXPORT void GET_HINGE_FORCES(const int32_t* IELEM, const double* A, const int32_t* NDIM, const int32_t* POS,
                                     const int32_t* FMODE, const int32_t* END, const int32_t* SET, double* P,
                                     double* MY, double* MZ, double* LP, double* LMY, double* LMZ);

/* KSTIFB_PLAST: the change KP (12, 12) of a beam's stiffness by its hinges, KP = -K N (N^T K N)^-1 N^T K with the
 * gradients N of the active equations. KSTIFB adds it.
 *
 *   ELNO   in   element number; not read
 *   K      i/o  stiffness (12, 12), local axes; changed only when AXIAL_RELEASE is 1
 *
 * States of an end: 0 no hinge, 1 a hinge on the yield surface, 2 an end that takes no part. Two ends in state 0, or
 * two in state 2, and a HINGE_MODEL other than 1 change nothing; AXIAL_RELEASE takes precedence over the curves. KP is
 * zero, without a message, when no end is in state 1, when the only yielding end has no equation, and when a yielding
 * end of the linear family has no segment. Linearly dependent gradients, or a zero gradient (no forces, no nonlinear
 * library): ASSERTF "Verify Singular KP", and KP is zero. */
FINITES_EXPORT void KSTIFB_PLAST(const int32_t* ELNO, const double* A, const int32_t* NDIM, const int32_t* IELEM,
                                 double* K, double* KP);

/* DECOMPOSE_KSTIF: the blocks (6, 6) of K (12, 12). */
FINITES_EXPORT void DECOMPOSE_KSTIF(const double* K, double* K11, double* K12, double* K21, double* K22);

/* CALCULATE_MAT_BETA_INVERSE: BETA (NEQ, NEQ) := the inverse of N^T KB N of one end, KB (6, 6), N (6, NEQ).
 *
 *   BETA  i/o  zero on entry
 *   IERR  out  not 0 when it is singular, as with more than two equations, of which only two are formed */
FINITES_EXPORT void CALCULATE_MAT_BETA_INVERSE(const double* KB, const double* N, const int32_t* NEQ, double* BETA,
                                               int32_t* IERR);

/* MATRIX_PLASTIC_MAGNITUDES_BOTH_SIDES: G (NTOT, 12) := (N^T K N)^-1 N^T K, whose product with the displacements gives
 * the plastic multipliers of both ends.
 *
 *   K, N  in   (12, 12), (12, NTOT); NTOT 1 to 12, another number gives IERR 1
 *   IERR  out  not 0 when N^T K N is singular, and G is then 0; two equations are inverted in single precision */
FINITES_EXPORT void MATRIX_PLASTIC_MAGNITUDES_BOTH_SIDES(const double* K, const double* N, const int32_t* NTOT,
                                                         double* G, int32_t* IERR);

/* MATRIX_PLASTIC_MAGNITUDE_ONE_SIDE: the plastic multipliers OUT (NEQ) := BETA (N^T K1 D1 + N^T K2 D2) of one end from
 * the displacements D1, D2 (6) of both; K1, K2 (6, 6), N (6, NEQ), BETA (NEQ, NEQ). At most two equations enter, or
 * three when NEQ is 3. */
FINITES_EXPORT void MATRIX_PLASTIC_MAGNITUDE_ONE_SIDE(const double* K1, const double* K2, const double* N,
                                                      const int32_t* NEQ, const double* BETA, const double* D1,
                                                      const double* D2, double* OUT);

/* ------------------------------------------------------------------------------------------ solids
 *
 * Common arguments:
 *
 *   IELEM        in   element sequence index, the subscript of SOLID_POS
 *   IOFF         in   the element's entry in MODEL_DATA
 *   A(NDIM)           MODEL_DATA; NDIM is not read
 *   NN           in   nodes: 4, 6 or 8; another count is reported like a singular Jacobian
 *   IERR         out  0, or the message number of a failure. FINITES_SOLID_3D then leaves its results unchanged, except
 *                     for records that operation 5 has filled before the failure
 *   MSG          out  MESSAGE_LENGTH characters, blank-padded, filled on failure */

/* FINITES_SOLID_3D: one operation on one solid element. Element axes: x from node 1 to node 2, z normal to the plane of
 * nodes 1, 2 and the corner that follows on the first face.
 *
 *   G(3)      in   load per unit volume, global axes (41)
 *   F(3, NN)  out  nodal forces, global axes (41)
 *   K         out  matrix (3 NN, 3 NN), its columns 24 apart, global axes (1, 2, 7, 71)
 *
 *     OP  what                                   reads                          writes
 *      1  stiffness; with A(41) 1, but not on    SOLID_NL_REC                   K
 *         the very first pass of a nonlinear
 *         run, also the geometric part
 *      2  consistent mass                                                       K
 *      3  internal forces, global axes           U_ELEM                         F_ELEM
 *     33  the same, element axes                 U_ELEM                         F_ELEM
 *      5  strains and stresses                   U_ELEM                         RES50_NODE, RES50_GAUSS
 *      7  minus the geometric stiffness          U_ELEM                         K
 *     41  body load                              G                              F
 *     71  plus the geometric stiffness           GAUSS_STRESS                   K
 *
 * Any other code counts as 1. Every integral of a four-node tetrahedron (K, F, F_ELEM, forces of GET_ELEM3D) comes
 * out six times too large, since its one point has weight 1 in place of 1/6: a caller divides by six. Strains and
 * stresses are right. Poisson's ratio 0.5 gives NaN with IERR 0, STIFF_FACTOR 0 zeros. */
FINITES_EXPORT void FINITES_SOLID_3D(const int32_t* OP, const int32_t* IELEM, const int32_t* IOFF, const double* A,
                                     const int32_t* NDIM, const double* G, double* F, const int32_t* NN, double* K,
                                     int32_t* IERR, char* MSG);

/* GET_ELEM3D: forces and results of an element for the displacements U (3, NN), global axes.
 *
 *   ISPARE       in   not read
 *   RES(50, NN)  out  words 1 to 35 of the records at the nodes, words 36 to 38 the nodal forces in element axes
 *   S(6, NN)     out  stresses of the first NN point records: xx, yy, zz, xy, xz, yz
 *   FG(3, NN)    out  nodal forces, global axes
 *
 * Sets U_ELEM, and U_NL where it is allocated. A failure stops it; results written before the failure remain. */
FINITES_EXPORT void GET_ELEM3D(const int32_t* IELEM, const int32_t* IOFF, const int32_t* ISPARE, const double* A,
                               const int32_t* NDIM, const int32_t* NN, double* RES, double* S, const double* U,
                               double* FG, int32_t* IERR, char* MSG);

/* UPDATE_PRINCIPAUX_RES50_SOLID, in single precision, and UPDATE_PRINCIPAUX_RES50_SOLID_DBL: von Mises stress (word 22)
 * and principal stresses (23 to 25) of a record R (50) again, from its stresses (10 to 15). Both compute in double
 * precision and access only their argument. Without a deviator the principal stresses are 0. */
FINITES_EXPORT void UPDATE_PRINCIPAUX_RES50_SOLID(float* R);
FINITES_EXPORT void UPDATE_PRINCIPAUX_RES50_SOLID_DBL(double* R);

/* TRFA_3DSOLID: the axes of an element, the rows of AXES (3, 3); NN := the node count of its record. */
FINITES_EXPORT void TRFA_3DSOLID(const int32_t* IELEM, int32_t* NN, const double* A, const int32_t* NDIM, double* AXES);

/* RAMSR_SOLID: adds the nodal forces F (3, NN) of an element to the joint results of load case ILOAD; ID (NN) are the
 * joints, 0 or less for none. */
FINITES_EXPORT void RAMSR_SOLID(const int32_t* ILOAD, const int32_t* NDIM, double* A, const int32_t* NN,
                                const int32_t* ID, const double* F);

/* GET_NONLIN_UGLO_SOLIDELEM_RAM: U_ELEM of an element from the solution UG (NUG) by the equation numbers of its joints;
 * equation e is read at UG(e + 3), and one beyond NUG is ignored. All six equations of a joint are read, while a node
 * has three places: the rotations of a joint land on the place of the next node, where its own translations replace
 * them. A translation without an equation (0) keeps the rotation: joints of solids must have no rotation equations.
 *
 *   NN  i/o  set to the node count of the record where A(IOFF) is the code of solids; otherwise unchanged, and U_ELEM
 *            is set to zero */
FINITES_EXPORT void GET_NONLIN_UGLO_SOLIDELEM_RAM(const int32_t* IELEM, int32_t* NN, const int32_t* IOFF,
                                                  const double* A, const int32_t* NDIM, const double* UG,
                                                  const int32_t* NUG);

#ifdef __cplusplus
}
#endif

#endif
