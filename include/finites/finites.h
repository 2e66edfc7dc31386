/* finites.h: the exported routines of the element library.
 *
 * Plain C: C, C++ and Fortran can use it. Every argument goes by reference and nothing is returned. Integers have 32
 * bits, reals 64 unless it is said. Arrays are column-major and numbered from 1, as the descriptions write them.
 *
 * The library is entered by one thread at a time; the routines that touch only their arguments say so.
 * docs/calling.md shows the calls at work. */
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
 *   op      i/o  operation, below; 41 and 401 come back as 4
 *   elem    in   sequential index of the element, the subscript into PLATE_OF_ELEM
 *   k       in   start of the element's block in MODEL_DATA: its fields are A(k+1) onward
 *   A(n)    i/o  MODEL_DATA
 *   n       in   its declared extent; not read
 *   data    i/o  parameters of operations 4, 41, 401, 5, 9, 10, and the reply of operation 9, data(10..12)
 *   forces  out  24 reals, nodal load vector of operations 4, 41, 401, 10; global axes; 19 to 24 are 0 for a triangle
 *   matrix  out  24 by 24, matrix of operations 1, 2, 7, 71; global axes; for a triangle rows and columns 19 to 24 keep
 *                what the caller had there
 *
 *     op  what                       reads                               writes
 *      1  stiffness                  stored forces, when second order    matrix
 *      2  consistent mass                                                matrix
 *      3  internal forces            displacements at A(RES_BASE), 24    A(RES_BASE+24), 24, global axes
 *     33  the same, committing       the same                            the same in element axes, not carried back
 *                                                                        over the offsets
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
 * Freedoms are six a node: three translations, three rotations, global axes. Another code only prepares the element and
 * answers nothing. There is no status: a degenerate element gives infinities or not-a-number values that travel on.
 * Kinds without an engine in this version (11, 20, 21, 22) leave matrices as they are or zero, and forces and records
 * zero. */
FINITES_EXPORT void FINITES(int32_t* op, const int32_t* elem, const int32_t* k, double* A, const int32_t* n,
                            double* data, double* forces, double* matrix);

/* INFO_FINITES: kind, material behaviour and stiffness parts of an element, without touching any state.
 *
 *   elem   in   sequential index; the element's block starts at (elem-1) A(102) + A(100)
 *   A(n)   in   MODEL_DATA
 *   n      in   not read
 *   kind   out  10 thin, 11 thick, 12 membrane triangle; 20, 21, 22 the quadrilaterals
 *   behav  out  0 isotropic, 1 general, 2 whole-section plasticity, 3 layered plasticity
 *   parts  out  sum of 1 membrane, 2 bending, 4 transverse shear, 8 whole-section plasticity */
FINITES_EXPORT void INFO_FINITES(const int32_t* elem, const double* A, const int32_t* n, int32_t* kind, int32_t* behav,
                                 int32_t* parts);

/* GAUSS_INT_2D: one integration point of a flat element and the Jacobian of the straight-sided map there.
 *
 *   rule    in   1, 2 or 3; another rule has all points at the origin with weight 0
 *   point   in   number of the point, from 1; beyond the rule's points the origin with weight 0
 *   nodes   in   4 for the quadrilateral, otherwise the triangle
 *   xyz     in   (3, nodes) local coordinates; z is not read
 *   xi, eta, detj, weight         out  natural coordinates, determinant, weight
 *   j11, j12, j21, j22            out  dx/dxi, dy/dxi, dx/deta, dy/deta
 *   g11, g12, g21, g22            out  the inverse: d/dx = g11 d/dxi + g12 d/deta, d/dy = g21 d/dxi + g22 d/deta
 *
 * Quadrilateral: 1 is the 2 by 2 Gauss rule, 2 the centre, 3 the nodes with weight 0. Triangle: 1 the three-point rule,
 * 2 the four-point rule with a negative centroid, 3 the nodes with weight 0. A degenerate element gives a determinant 0
 * and an inverse that is not finite. Touches only its arguments. */
FINITES_EXPORT void GAUSS_INT_2D(const int32_t* rule, const int32_t* point, const int32_t* nodes, const double* xyz,
                                 double* xi, double* eta, double* detj, double* weight, double* j11, double* j12,
                                 double* j21, double* j22, double* g11, double* g12, double* g21, double* g22);

/* UPDATE_PRINCIPAUX_RES100_PLA, in single precision, and UPDATE_PRINCIPAUX_RES100_PLA_DBL: principal and equivalent
 * stresses again, after the solver has changed the stresses of a record of its own (averaged them at a node, say).
 *
 *   res  i/o  at least 47 values, numbered from 1
 *          in   24..26, 27..29, 30..32  sx, sy, sxy at the top, mid surface, bottom
 *               33                      without effect
 *               46, 47                  mean transverse shear stresses
 *          out  7, 8, 9                 equivalent stress at the top, mid surface, bottom
 *               34..37, 38..41, 42..45  angle (radians), first and second principal stress, largest shear, likewise
 *
 * The other columns keep their values. Arithmetic is double in both. Touch only their argument. */
FINITES_EXPORT void UPDATE_PRINCIPAUX_RES100_PLA(float* res);
FINITES_EXPORT void UPDATE_PRINCIPAUX_RES100_PLA_DBL(double* res);

/* ------------------------------------------------------------------------------------------ frame members
 *
 * Common arguments:
 *
 *   MODE     in   0 the stiffness of the current step: removal and geometric stiffness act; 1 local axes, without them;
 *                 any other value the solver's axes, without them. A pretension (KSTIFT) and the ratio of a nonlinear
 *                 component (KSTIF_LINK, KSTIF_SPR) act beside them, as told there
 *   IELEM    in   element sequence index, the subscript of ELEM_POS
 *   IOFF     in   I, start of the element's entry in MODEL_DATA: its fields are A(I+1) onward
 *   A(NDIM)  in   MODEL_DATA; NDIM is only handed on
 *   T        in   12 by 12 rotation: its rows are the local axes, u_local = T u_solver; six-freedom members use its
 *                 leading 6 by 6
 *   K, KG    out  stiffness and geometric stiffness; KG is zero when it is not built
 *
 * Freedoms: u, v, w, rotations about x, y, z of the first end, then of the second; six-freedom members have the three
 * translations of each end. x runs along the member. Beams and trusses report nothing: a zero length divides by zero.
 * RELEASE_DOF, RELEASE_DOF_MAS and KSTIFB_GEOM touch only their arguments. */

/* KSTIFB: stiffness (12, 12) of a beam with shear deformation, semi-rigid ends and releases (Monforton and Wu, 1963).
 *
 *   NT2  in  above 0: K := T2^T K T2 after the rotation by T
 *   T2   in  12 by 12
 *
 * A(41) 1 adds the geometric stiffness to K, 3 returns it apart. Writes K11_COPY, PRESTRESS_FORCE and, in MODE 0 with
 * yielding members, K_ELASTIC. */
FINITES_EXPORT void KSTIFB(const int32_t* MODE, const int32_t* IELEM, const int32_t* IOFF, const double* A,
                           const int32_t* NDIM, const double* T, const int32_t* NT2, const double* T2, double* K,
                           double* KG);

/* RELEASE_DOF: static condensation of freedom IDOF out of K (N, N), in place. Does nothing when IDOF is not one of the
 * freedoms or its diagonal is exactly 0. */
FINITES_EXPORT void RELEASE_DOF(const int32_t* IDOF, double* K, const int32_t* N);

/* GET_N_CONVERG_TOM: in how many steps (1 to 100) a failing element reaches its least coefficient RMIN, and the RATIO
 * by which each step divides. GET_COEF_REMOVE: its coefficient at the counter STEP (0 or above: 1; negative: failing).
 */
FINITES_EXPORT void GET_N_CONVERG_TOM(const double* RMIN, double* RATIO, int32_t* NSTEP);
FINITES_EXPORT void GET_COEF_REMOVE(const int32_t* STEP, const double* RMIN, double* COEF);

/* KSTIFB_GEOM: geometric stiffness KG (12, 12) of a beam, local axes.
 *
 *   P               in  axial force, tension positive; 0 gives zeros
 *   L, E1, E2       in  length, moduli of x-y and of x-z bending
 *   I1, I2          in  moments of inertia of x-y and of x-z bending
 *   SEMIY, SEMIZ    in  1: a semi-rigid end in the x-z, in the x-y plane; either gives both planes the closed form
 *   RELY, RELZ      in  release codes of the forces along y and z
 *   A1, B1, A2, B2  in  fixity factors: A x-z bending, B x-y bending; 1 first, 2 second end */
FINITES_EXPORT void KSTIFB_GEOM(const double* P, const double* L, const double* E1, const double* E2, const double* I1,
                                const double* I2, const int32_t* SEMIY, const int32_t* SEMIZ, const int32_t* RELY,
                                const int32_t* RELZ, const double* A1, const double* B1, const double* A2,
                                const double* B2, double* KG);

/* KSTIFB_MASS: mass M (12, 12) of a beam, the solver's axes: consistent with rotary inertia, or lumped (LUMPED_MASS).
 */
FINITES_EXPORT void KSTIFB_MASS(const int32_t* IELEM, const int32_t* IOFF, const double* A, const int32_t* NDIM,
                                const double* T, const int32_t* NT2, const double* T2, double* M);

/* RELEASE_DOF_MAS: takes freedom IDOF out of M (12, 12), in place; a translation or torsion gives its diagonal to the
 * same freedom of the other end. Does nothing when IDOF is not 1 to 12 or its diagonal is exactly 0. */
FINITES_EXPORT void RELEASE_DOF_MAS(const int32_t* IDOF, double* M);

/* KSTIFT: stiffness (6, 6) of a two-node axial element, with the pretension of a section of type 14 (in MODE 0, and in
 * every MODE when A(41) is not 1) and the yield of one of type 10. Writes K11_COPY and PRESTRESS_FORCE. */
FINITES_EXPORT void KSTIFT(const int32_t* MODE, const int32_t* IELEM, const int32_t* IOFF, const double* A,
                           const int32_t* NDIM, const double* T, double* K, double* KG);

/* KSTIFT_PLAST: softens K (6, 6), local axes, in place, when the hinge record of the element says that it yields. */
FINITES_EXPORT void KSTIFT_PLAST(const int32_t* IELEM, double* K);

/* KSTIFT_MASS: mass M (6, 6) of an axial element, the solver's axes. */
FINITES_EXPORT void KSTIFT_MASS(const int32_t* IOFF, const double* A, const int32_t* NDIM, const double* T, double* M);

/* KSTIFT_CATENARY: tangent stiffness (6, 6) of a hanging cable, through the cable library. KG is always zero.
 *
 *   ILOAD  in   load case of MEMBER_LOADS; below 1 the self-weight along the negative global y axis
 *   IERR   out  0, or the message number of a failure; K is then zero
 *   MSG    out  500 characters, blank-padded, filled on failure */
FINITES_EXPORT void KSTIFT_CATENARY(const int32_t* MODE, const int32_t* IELEM, const int32_t* IOFF,
                                    const int32_t* ILOAD, const double* A, const int32_t* NDIM, const double* T,
                                    double* K, double* KG, int32_t* IERR, char* MSG);

/* KSTIF_LINK, KSTIF_SPR: stiffness (12, 12) of a link and of a spring from the property record whose address lies in
 * A(I+31). KG is always zero. No record: ASSERTF, then zeros. A component of kind 8 has its current stiffness in MODE 0
 * and 1. A spring turns by T only where its first node has local axes; a link of length zero is valid. */
FINITES_EXPORT void KSTIF_LINK(const int32_t* MODE, const int32_t* IELEM, const int32_t* IOFF, const double* A,
                               const int32_t* NDIM, const double* T, double* K, double* KG);
FINITES_EXPORT void KSTIF_SPR(const int32_t* MODE, const int32_t* IELEM, const int32_t* IOFF, const double* A,
                              const int32_t* NDIM, const double* T, double* K, double* KG);

/* GET_COEF_REMOVE_SPRING: as GET_COEF_REMOVE; a component of KIND 8 takes the ratio of the current to the initial
 * stiffness of spring NLIDX instead (none: ASSERTF, then 1). */
FINITES_EXPORT void GET_COEF_REMOVE_SPRING(const int32_t* STEP, const double* RMIN, const int32_t* NLIDX,
                                           const int32_t* KIND, double* COEF);

#ifdef __cplusplus
}
#endif

#endif
