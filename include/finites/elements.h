/* elements.h: the elements as plain calls. Numbers go in, dense matrices and named results come out; nothing else is
 * needed: no solver, no shared records, no initialisation. Plain C; C++, Fortran and Python have layers of their own
 * over it (elements.hpp, the module finites_library, the package finites). Library: libfinites_elements.so.
 *
 * Every call
 *   - returns a finites_status: FINITES_OK, or what is wrong; finites_text() says it in words. On an error nothing is
 *     written;
 *   - depends on its arguments alone and may run in any number of threads; a state object belongs to one thread at a
 *     time;
 *   - allocates nothing, except finites_..._state_create and _copy.
 *
 * The answers are those of the exported routines of finites.h, to the last bit.
 *
 * Vectors go node by node: ux, uy, uz, rx, ry, rz of the first node, then of the second (ux, uy, uz for trusses, cables
 * and solids), in global axes. Matrices are dense, of the element's own order n, n * n reals, column-major: entry
 * (i, j) is at [(j - 1) * n + i - 1]; all but the tangents of plastic states are symmetric. Units are the caller's,
 * consistent: the density is a mass per volume. Angles are in radians. Arrays of C are given with their C dimensions,
 * for example xyz[4][3] by node and component.
 *
 * Numbers whose size is above 1e30 count as out of range (FINITES_RANGE), and so do lengths between nodes below 1e-30:
 * what matrices are made of cannot overflow then. Where an answer is not finite nevertheless (squares of stresses, a
 * load at a far point), the status is FINITES_RESULT. */
#ifndef FINITES_ELEMENTS_H
#define FINITES_ELEMENTS_H

#include <stdint.h>

#if defined(FINITES_BUILDING_LIBRARY) && defined(__GNUC__)
#define FINITES_CALL __attribute__((visibility("default")))
#else
#define FINITES_CALL
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ------------------------------------------------------------------------------------------ statuses */

typedef enum finites_status {
  FINITES_OK = 0,
  FINITES_NULL = 1,            /* a required pointer is null */
  FINITES_NAN = 2,             /* an input is NaN or infinite */
  FINITES_RANGE = 3,           /* a number, a count, a range of elements or a stride is beyond its bounds */
  FINITES_NODES = 4,           /* nodes is no node count of the kind */
  FINITES_BAD_CODE = 5,        /* theory, form, curve, model or another code is none of its list */
  FINITES_COINCIDENT = 6,      /* two nodes coincide */
  FINITES_DEGENERATE = 7,      /* no area or volume: nodes on a line or in a plane, a re-entrant or inverted element */
  FINITES_ORIENTATION = 8,     /* the vector that sets the local axes is parallel to the member */
  FINITES_THICKNESS = 9,       /* thickness not above 0 */
  FINITES_MODULUS = 10,        /* E, E2, G, G12, G13 or G23 not above 0 */
  FINITES_POISSON = 11,        /* nu not above -1 or too large (plates: above 0.5; solids: not below 0.5), or
                               nu12 nu21 not below 1, or E nu21 and E2 nu12 differ by more than 1e-6 of the larger */
  FINITES_FACTOR = 12,         /* a factor is negative, all are 0 (without ..._init; a solid has one), or shear_factor
                               is 0 in a thick orthotropic plate */
  FINITES_DENSITY = 13,        /* density negative */
  FINITES_SECTION = 14,        /* area, inertia or torsion constant not above 0, or a shear area negative */
  FINITES_FIXITY = 15,         /* a fixity factor outside 0 to 1 */
  FINITES_RELEASE = 16,        /* a release is none of 0, 1, 2 */
  FINITES_LENGTH = 17,         /* unstressed length not above 0, or a place along a member outside it */
  FINITES_STIFFNESS = 18,      /* stiffness of a link or spring negative */
  FINITES_SLACK = 19,          /* a slack cable without load has no shape */
  FINITES_NO_CONVERGENCE = 20, /* the equilibrium of a cable was not found */
  FINITES_YIELD = 21,          /* yield stress not above 0, or a capacity not above 0 */
  FINITES_HARDENING = 22,      /* hardening modulus negative or not below E */
  FINITES_LAYERS = 23,         /* layers is none of 3, 5, 7, 9, 11, 13, 15 */
  FINITES_RETURN = 24,         /* the return to the yield surface failed: try a smaller step */
  FINITES_MECHANISM = 25,      /* releases or hinges leave a mechanism that the call cannot answer */
  FINITES_MEMORY = 26,         /* no memory for a state */
  FINITES_STATE = 27,          /* the element cannot yield (a membrane, an orthotropic plate, a membrane_factor,
                               bending_factor or shear_factor other than 1), or two states are not of one kind */
  FINITES_RESULT = 28          /* the answer is not finite although the input is: an element at the edge of the range */
} finites_status;

/* A sentence about the status; never null, for every number. The text is constant and must not be freed. */
FINITES_CALL const char* finites_text(finites_status status);

/* "1.2.0", as FINITES_VERSION of version.h says for the library that runs. */
FINITES_CALL const char* finites_version(void);

/* ------------------------------------------------------------------------------------------ plates and shells
 *
 * Element axes: x from node 1 to node 2, z normal to the nodes by the right-hand rule (nodes 1, 2 and the last one),
 * y = z cross x. A quadrilateral may be warped: it is projected along z, and then resists rigid rotations
 * about axes in its plane a little. Node here means corner of the element: the node
 * plus its offset.
 *
 * FINITES_COINCIDENT: two nodes are closer than 1e-12 of the longest side. FINITES_DEGENERATE: at some node the area
 * that the adjacent sides span, projected along z, is not above 1e-12 of the square of the longest side; so no interior
 * angle is 180 degrees or more. Thicknesses, moduli and factors above 0 but below 1e-30 are FINITES_RANGE, and so are
 * moduli G13 and G23 of a thick plate whose ratio is above 1e10. */

/* The theory of a plate. */
enum { FINITES_THICK = 0, FINITES_THIN = 1, FINITES_MEMBRANE = 2, FINITES_MEMBRANE_REDUCED = 98 };

typedef struct finites_plate {
  int32_t nodes;       /* 3 or 4 */
  int32_t theory;      /* FINITES_THICK (Mindlin), FINITES_THIN (Kirchhoff), FINITES_MEMBRANE (in its plane only),
                            FINITES_MEMBRANE_REDUCED (a membrane with 0.01 of the axial stiffness) */
  int32_t orthotropic; /* 0: E, nu, expansion. 1: the constants of both directions */
  int32_t unused;
  double xyz[4][3];    /* nodes; those of a triangle are the first three */
  double offset[4][3]; /* from each node to the corner of the element, global axes: a rigid link */
  double thickness;
  double E, nu;     /* modulus and Poisson's ratio; orthotropic: E1 and nu12 */
  double density;   /* mass per volume */
  double expansion; /* per degree; orthotropic: in direction 1 */
  double E2, nu21;  /* read with orthotropic 1 alone, as what follows up to inplane_shear_factor; nu21 0: nu E2 / E */
  double G12, G13, G23; /* G13 and G23 matter to thick plates alone */
  double expansion2;
  double angle;                /* from axis x of the element to direction 1; used in single precision */
  double twist_factor;         /* on the twisting stiffness G12 h^3 / 12 */
  double inplane_shear_factor; /* on the membrane shear stiffness G12 h */
  double membrane_factor, bending_factor, shear_factor; /* on the membrane, bending and transverse shear stiffness */
  double mass_factor;
} finites_plate;

/* A thick isotropic quadrilateral without offsets, all factors 1, everything else 0: fill nodes, theory, xyz,
 * thickness, E, nu. */
FINITES_CALL void finites_plate_init(finites_plate* plate);

/* K, M, KG: (6 nodes) squared. M is the consistent mass. KG is the geometric stiffness of the membrane forces of the
 * displacements u, or of given section forces by integration point (Nx, Ny, Nxy, Mx, My, Mxy in element axes; the
 * membrane forces count; of a triangle those of the first point, its centroid): tension stiffens, and K + KG is the
 * stiffness of a plate under these forces. */
FINITES_CALL finites_status finites_plate_stiffness(const finites_plate* plate, double* K);
FINITES_CALL finites_status finites_plate_mass(const finites_plate* plate, double* M);
FINITES_CALL finites_status finites_plate_geometric(const finites_plate* plate, const double* u, double* KG);
FINITES_CALL finites_status finites_plate_geometric_of_forces(const finites_plate* plate, const double forces[4][6],
                                                              double* KG);

/* F := the nodal forces that hold the elastic element in the displacements u: K u. */
FINITES_CALL finites_status finites_plate_forces(const finites_plate* plate, const double* u, double* F);

/* F := consistent nodal loads: force per area in global and in element axes (either may be null: none); force per
 * volume, global; temperature change of the mid surface and difference through the thickness (top, z = +h/2, minus
 * bottom): K u = F in free expansion; a force at a point, in global and in element axes (either may be null), the
 * functions of the nodes being extrapolated for a point outside (FINITES_RESULT: too far). */
FINITES_CALL finites_status finites_plate_surface_load(const finites_plate* plate, const double global[3],
                                                       const double local[3], double* F);
FINITES_CALL finites_status finites_plate_body_load(const finites_plate* plate, const double load[3], double* F);
FINITES_CALL finites_status finites_plate_temperature_load(const finites_plate* plate, double change, double difference,
                                                           double* F);
FINITES_CALL finites_status finites_plate_point_load(const finites_plate* plate, const double point[3],
                                                     const double global[3], const double local[3], double* F);

typedef struct finites_plate_measures {
  double area, volume, mass; /* mass = density volume mass_factor: the weight, where the density is a unit weight */
  double center[3];          /* mean of the corners, global */
  double axes[3][3];         /* axes[a]: the element axis x, y, z in global components */
} finites_plate_measures;

/* measures := the size, the place and the axes of a plate. */
FINITES_CALL finites_status finites_plate_measure(const finites_plate* plate, finites_plate_measures* measures);

typedef struct finites_location {
  int32_t inside;  /* 1 on the element, and up to 0.001 length units beyond a side */
  int32_t above;   /* 1 above its plane by more than 0.05 of the longest side */
  double distance; /* from the plane, positive on the side of the normal */
} finites_location;

/* location := where a point, in global coordinates, lies beside a plate. */
FINITES_CALL finites_status finites_plate_locate(const finites_plate* plate, const double point[3],
                                                 finites_location* location);

/* Results in element axes. Forces and moments are per length; positive Mx and My give tension at the top face, positive
 * Mxy a positive shear stress xy there. Strains are those of the displacements: a free expansion counts. */
typedef struct finites_surface {
  double strain[3], stress[3];                /* x, y, xy; the shear strain is the full angle */
  double angle, s1, s2, max_shear, von_mises; /* principal stresses, s1 at the angle from x, max_shear (s1 - s2) / 2;
                                                  at the middle sqrt(3) times the transverse shear stress is added to
                                                  the equivalent stress */
  double plastic_strain[3];
} finites_surface;

typedef struct finites_plate_point {
  double xyz[3]; /* element axes, from node 1 of a triangle, from the mean of the nodes of a quadrilateral; z is 0 */
  finites_surface top, middle, bottom;                     /* at z = +h/2, 0, -h/2 */
  double force[3];                                         /* Nx, Ny, Nxy */
  double moment[3];                                        /* Mx, My, Mxy */
  double shear_strain[2], shear_force[2], shear_stress[2]; /* xz, yz: strain / (5/6); Qx, Qy; Q / (5/6 h) */
  double plastic_shear_strain[2];
} finites_plate_point;

typedef struct finites_plate_results {
  int32_t nodes, points;        /* how many of each there are: 3 and 4 for triangles, 4 and 4 for quadrilaterals */
  finites_plate_point node[4];  /* at the nodes; the fourth of a triangle is zero */
  finites_plate_point point[4]; /* integration points: of a triangle the centroid, then one near each node */
} finites_plate_results;

/* Elastic results for u and, where temperature is not null, its change and difference (as the load). FINITES_RESULT:
 * squares of the stresses overflow. */
FINITES_CALL finites_status finites_plate_result(const finites_plate* plate, const double* u,
                                                 const double temperature[2], finites_plate_results* results);

/* ------------------------------------------------------------------------------------------ plates that yield
 *
 * A state keeps what a von Mises plate must remember. The displacements of its calls are total ones. A step goes
 *
 *     try(u) as often as the iteration wants; commit(u) where it has converged; accept() at the end of the step
 *
 * trying never changes the state. F are the nodal forces of the stresses (or section forces) that the tried
 * displacements have, returned to the yield surface. A Newton iteration F = load therefore ends in equilibrium on the
 * yield surface, of the layered model whatever the size of the step; start it with the tangent of the committed state
 * for the displacements that are prescribed. commit may be repeated within a step: plastic strains count from the last
 * accept.
 *
 * K of a try is the tangent of the return mapping (Simo and Taylor, 1986), with which the iteration converges in a few
 * passes; of the whole section it leaves out how the hardening changes with the direction of the flow, and the
 * convergence is linear then, and fast. K of the forces call is the tangent that the protocol stores: of the layers
 * that of the rate equations at the stored stresses.
 *
 * The in-plane shear of a quadrilateral is integrated at its four points, not at the centre as in the elastic plate:
 * the two agree where it does not vary. The surface of the whole section has a corner where membrane forces and moments
 * have no mixed term, as in pure bending and in pure tension: a point returns to the side on which its return ends, or
 * flows along both normals there (finites_section_return). Along a path whose stresses keep their direction its forces
 * do not hang on the size of the step; where they turn, the error falls with it. */

/* The model of a plate that yields. */
enum { FINITES_WHOLE_SECTION = 1, FINITES_LAYERED = 2 };

typedef struct finites_plastic {
  int32_t model;       /* FINITES_LAYERED: stresses at points through the thickness; FINITES_WHOLE_SECTION: one yield
                           surface of section forces */
  int32_t layers;      /* of the layered model: 3, 5, 7, 9, 11, 13 or 15 points of Lobatto's rule. Fully plastic they
                           carry 0.667, 0.913, 0.960, 0.977, 0.985, 0.989, 0.992 of the plastic moment */
  double yield_stress; /* uniaxial */
  double hardening;    /* tangent modulus of stress over total strain beyond yield, below E; 0: perfectly plastic */
} finites_plastic;

typedef struct finites_plate_state finites_plate_state;

/* The plate is copied into the state: isotropic, thin or thick, membrane_factor, bending_factor and shear_factor 1. */
FINITES_CALL finites_status finites_plate_state_create(const finites_plate* plate, const finites_plastic* plastic,
                                                       finites_plate_state** state);
/* A state of its own, with all that the first one remembers. */
FINITES_CALL finites_status finites_plate_state_copy(const finites_plate_state* state, finites_plate_state** copy);
/* Null: nothing is done. */
FINITES_CALL void finites_plate_state_free(finites_plate_state* state);

/* The answer to displacements u; the state stays as it is. F (6 nodes) and K (6 nodes squared) may each be null. */
FINITES_CALL finites_status finites_plate_state_try(const finites_plate_state* state, const double* u, double* F,
                                                    double* K);
/* Stores what the displacements u lead to. */
FINITES_CALL finites_status finites_plate_state_commit(finites_plate_state* state, const double* u);
/* Ends a step: the next one starts here. */
FINITES_CALL finites_status finites_plate_state_accept(finites_plate_state* state);
/* F and K of the state as it was committed last; each may be null. */
FINITES_CALL finites_status finites_plate_state_forces(const finites_plate_state* state, double* F, double* K);
/* Results of the state as it was committed last. Layered: the stresses of the points at the faces and in the middle. Of
 * the whole section, which has section forces alone, the stresses are those that an elastic section has under them,
 * N / h +- 6 M / h^2 at the faces: up to 1.5 times the yield stress where M is the plastic moment. */
FINITES_CALL finites_status finites_plate_state_result(const finites_plate_state* state,
                                                       finites_plate_results* results);

/* The surface of the whole section, for who keeps sections of his own:
 *
 *     F = Qt + Qm + |n m| / sqrt(3) + 3 q q - k^2,        k = 1 + plastic_modulus equivalent / yield_stress
 *
 * with n = N / N0, m = M / M0, q = Q / N0, N0 = yield_stress thickness, M0 = N0 thickness / 4, Qt and Qm von Mises'
 * forms of n and of m and n m their mixed form (Ilyushin, 1948). Two smooth surfaces, of n m above and below 0, meet in
 * a corner. Forces: N1, N2, N12, M1, M2, M12, Q1, Q2; strains: what they work on, engineering shears. */
typedef struct finites_section {
  double thickness;
  double yield_stress;    /* uniaxial */
  double plastic_modulus; /* stress per equivalent plastic strain: Et / (1 - Et / E); 0: perfectly plastic */
} finites_section;

/* excess: F, 0 on the surface, negative inside; mixed: n m, whose sign is the side; each may be null.
 * FINITES_HARDENING: plastic_modulus or equivalent negative. */
FINITES_CALL finites_status finites_section_value(const finites_section* section, const double force[8],
                                                  double equivalent, double* excess, double* mixed);

/* Where the return of a section ends. */
enum {
  FINITES_SIDE_ELASTIC = 0,  /* the trial forces lie within the surface */
  FINITES_SIDE_POSITIVE = 1, /* the return ends where n m is above 0 */
  FINITES_SIDE_NEGATIVE = 2, /* below 0 */
  FINITES_SIDE_CORNER = 3    /* neither: the section flows along both normals (Koiter, 1953) */
};

typedef struct finites_section_corner {
  double flow[8];     /* plastic strains of the step */
  double equivalent;  /* equivalent plastic strain at its end */
  double mixed;       /* n m, zero to rounding */
  double tangent[64]; /* of the returned forces by the strains, consistent with the return */
} finites_section_corner;

/* Where the return of the trial forces ends. D: the elastic section, 8 by 8, isotropic and without coupling of membrane
 * and bending (of a thin plate without shears). equivalent: before the step. corner may be null and is set for
 * FINITES_SIDE_CORNER alone: the returned forces are trial - D flow. FINITES_RETURN: no side was found. */
FINITES_CALL finites_status finites_section_return(const finites_section* section, const double D[64],
                                                   const double trial[8], double equivalent, int32_t* side,
                                                   finites_section_corner* corner);

/* ------------------------------------------------------------------------------------------ beams
 *
 * x runs from the first end to the second; y lies in the plane of x and up; z = x cross y. Bending in the x-y plane
 * turns about z (Iz), bending in the x-z plane about y (Iy). */

typedef struct finites_beam {
  double xyz[2][3];
  double up[3]; /* a vector in the x-y plane on the side of y; 0, 0, 0: global Z, for a member along Z global X. Along:
                   within a sine of 1e-6 */
  double offset[2][3]; /* from each node to the end of the beam, global axes: a rigid link */
  double E, G;
  double E2;        /* modulus of bending in the x-z plane; 0: E */
  double density;   /* mass per volume */
  double expansion; /* per degree */
  double area, Iz, Iy, J;
  double shear_area_y, shear_area_z; /* 0: no shear deformation of that plane */
  double fixity_z[2], fixity_y[2];   /* of the rotation about z and y at both ends: 0 a pin, whose rotation has zeros
                                        in the matrix, so that something else must hold it; 1 rigid */
  int32_t release_axial, release_y, release_z, release_torsion; /* of the force along x, y, z and of the torsion:
                                                                    0 none, 1 at the first, 2 at the second end */
} finites_beam;

/* Fixities 1, everything else 0: fill xyz, E, G, area, Iz, Iy, J. */
FINITES_CALL void finites_beam_init(finites_beam* beam);

/* K, M, KG: 12 by 12. lumped: 0 the consistent mass with rotary inertia, 1 the lumped one. KG of the axial force
 * (tension positive) that u gives, or of a given one. */
FINITES_CALL finites_status finites_beam_stiffness(const finites_beam* beam, double* K);
FINITES_CALL finites_status finites_beam_mass(const finites_beam* beam, int32_t lumped, double* M);
FINITES_CALL finites_status finites_beam_geometric(const finites_beam* beam, const double* u, double* KG);
FINITES_CALL finites_status finites_beam_geometric_of_force(const finites_beam* beam, double axial, double* KG);

/* Loads along a beam: force per length in global and in local axes, temperature change of the axis and its gradients
 * along y and z (degrees per length), and forces and moments at points. */
typedef struct finites_beam_point_load {
  double x; /* from the first end; as every place along a beam by up to 1e-9 of the length beyond an end, which it is
               then */
  double force[3], moment[3]; /* global axes */
} finites_beam_point_load;

typedef struct finites_beam_load {
  double line[3], line_local[3];
  double temperature, gradient_y, gradient_z;
  int32_t point_count, unused;
  const finites_beam_point_load* points; /* may be null when point_count is 0 */
} finites_beam_load;

/* F := consistent nodal loads (12), with releases and fixities taken into account; F := K u. FINITES_MECHANISM for a
 * load across a beam that is pinned at both ends with that force released. */
FINITES_CALL finites_status finites_beam_loads(const finites_beam* beam, const finites_beam_load* load, double* F);
FINITES_CALL finites_status finites_beam_forces(const finites_beam* beam, const double* u, double* F);

/* At a place along the beam, local axes: force and moment that the part beyond the place exerts on the part before it
 * (N positive in tension), displacements of the axis and rotations of the section (of the beam itself: beyond releases
 * and semi-rigid connections they are not those of the node). A force or moment at the place itself belongs to the part
 * beyond. */
typedef struct finites_beam_section {
  double x;
  double force[3];        /* N, Vy, Vz */
  double moment[3];       /* T, My, Mz */
  double displacement[3]; /* u, v, w, local axes */
  double rotation[3];
} finites_beam_section;

/* For displacements u of the nodes and a load (may be null), at count places x (0 to the length). FINITES_MECHANISM for
 * a beam that is pinned at both ends with the force of that plane released: where it lies is not known. */
FINITES_CALL finites_status finites_beam_sections(const finites_beam* beam, const double* u,
                                                  const finites_beam_load* load, int32_t count, const double* x,
                                                  finites_beam_section* sections);

typedef struct finites_member_measures {
  double length, volume, mass;
  double center[3];
  double axes[3][3]; /* axes[a]: the local axis x, y, z in global components */
} finites_member_measures;

/* measures := the size, the place and the axes of a beam. */
FINITES_CALL finites_status finites_beam_measure(const finites_beam* beam, finites_member_measures* measures);

/* ------------------------------------------------------------------------------------------ yield surfaces, hinges
 *
 * A hinge at an end of a beam yields under the axial force P and the moments My and Mz; the curve is value = 1. */

/* The curve of a hinge. */
enum { FINITES_SINGLE = 1, FINITES_ORBISON = 2, FINITES_SEGMENTS = 3 };

typedef struct finites_yield {
  int32_t curve;  /* FINITES_SINGLE: one force alone; FINITES_ORBISON: a smooth surface (Orbison, McGuire and Abel,
                      1982), Mz the strong axis; FINITES_SEGMENTS: p + 8/9 m = 1 for p >= 0.2, p/2 + m = 1 below */
  int32_t forces; /* which interact: 1 P, 2 My, 3 Mz, 4 P and My, 5 P and Mz, 6 My and Mz, 7 all three. FINITES_SINGLE
                      takes 1 to 3, FINITES_ORBISON and FINITES_SEGMENTS 2 to 7 */
  double capacity[3]; /* of P, My, Mz; all above 0 */
} finites_yield;

/* The equations that are active for forces {P, My, Mz} (one; of segments two where one moment is exactly 0, three where
 * both are): their count, their segment numbers (0 for a smooth curve), the value and the gradient of each. Any output
 * but count may be null. */
FINITES_CALL finites_status finites_yield_equations(const finites_yield* yield, const double force[3], int32_t* count,
                                                    int32_t segment[4], double value[4], double gradient[4][3]);
/* The largest value of them: below 1 elastic. */
FINITES_CALL finites_status finites_yield_value(const finites_yield* yield, const double force[3], double* value);

/* A beam with elastic-perfectly plastic hinges at its ends; used as the state of a plate: try, commit, accept. ends:
 * sum of 1 (the first end may yield) and 2 (the second). There are no loads along the beam: its axial force is that of
 * both ends. Flow is along the gradient. F are the nodal forces of the section forces that the tried displacements
 * have, returned to the point of the yield surfaces that is nearest in the elastic energy; K is symmetric here. Where
 * two beams meet, one of them should have the hinge: two at one node leave its rotation without stiffness. The smooth
 * surface is hollow by some thousandths between two forces: a large step against a hollow may end with
 * FINITES_RETURN. */
typedef struct finites_beam_state finites_beam_state;

/* state := that of a beam without plastic deformation, to be freed by the caller. Calls as of a plate's state. */
FINITES_CALL finites_status finites_beam_state_create(const finites_beam* beam, const finites_yield* yield,
                                                      int32_t ends, finites_beam_state** state);
/* A state of its own, with all that the first one remembers. */
FINITES_CALL finites_status finites_beam_state_copy(const finites_beam_state* state, finites_beam_state** copy);
/* Null: nothing is done. */
FINITES_CALL void finites_beam_state_free(finites_beam_state* state);
/* The answer to displacements u; the state stays as it is. F (12) and K (12 by 12) may each be null. */
FINITES_CALL finites_status finites_beam_state_try(const finites_beam_state* state, const double* u, double* F,
                                                   double* K);
/* Stores what the displacements u lead to. */
FINITES_CALL finites_status finites_beam_state_commit(finites_beam_state* state, const double* u);
/* Ends a step: the next one starts here. */
FINITES_CALL finites_status finites_beam_state_accept(finites_beam_state* state);
/* F and K of the state as it was committed last; each may be null. */
FINITES_CALL finites_status finites_beam_state_forces(const finites_beam_state* state, double* F, double* K);

typedef struct finites_hinge {
  int32_t yields; /* 1: on the yield surface with plastic flow in the last committed step */
  int32_t unused;
  double force[3];   /* P, My, Mz of the section at the end, as in finites_beam_section */
  double value;      /* of the yield function */
  double plastic[3]; /* plastic deformation since the start, positive as the forces: axial, rotation about y, about z */
} finites_hinge;

/* hinge := those of the first and of the second end, in the last committed step. */
FINITES_CALL finites_status finites_beam_state_hinges(const finites_beam_state* state, finites_hinge hinge[2]);

/* ------------------------------------------------------------------------------------------ trusses, cables */

typedef struct finites_truss {
  double xyz[2][3];
  double E, area;
  double density, expansion;
  double pretension; /* a force; its string stiffness belongs to the stiffness */
} finites_truss;

FINITES_CALL void finites_truss_init(finites_truss* truss); /* zeros */
/* K, M, KG: 6 by 6; F := K u. As those of beams. */
FINITES_CALL finites_status finites_truss_stiffness(const finites_truss* truss, double* K);
FINITES_CALL finites_status finites_truss_mass(const finites_truss* truss, int32_t lumped, double* M);
FINITES_CALL finites_status finites_truss_geometric(const finites_truss* truss, const double* u, double* KG);
FINITES_CALL finites_status finites_truss_geometric_of_force(const finites_truss* truss, double axial, double* KG);
FINITES_CALL finites_status finites_truss_forces(const finites_truss* truss, const double* u, double* F);
/* F := nodal loads of a force per length (global; may be null) and a temperature change. */
FINITES_CALL finites_status finites_truss_loads(const finites_truss* truss, const double line[3], double temperature,
                                                double* F);
/* Axial force of u and a temperature change, with the pretension; tension positive. */
FINITES_CALL finites_status finites_truss_axial_force(const finites_truss* truss, const double* u, double temperature,
                                                      double* axial);
/* What the geometry alone tells. */
FINITES_CALL finites_status finites_truss_measure(const finites_truss* truss, finites_member_measures* measures);

typedef struct finites_cable {
  double xyz[2]
            [3]; /* of the nodes where they are now: the equilibrium is that of the deformed cable. They may coincide */
  double E, area;
  double length;  /* unstressed */
  double strain;  /* stress-free strain, for example from temperature; above -1, otherwise FINITES_LENGTH */
  double load[3]; /* dead load per unstressed length, global axes */
} finites_cable;

FINITES_CALL void finites_cable_init(finites_cable* cable); /* zeros */
/* F (6): the forces that the nodes exert on the cable, those of the exact elastic catenary; tension[2] at the ends (may
 * be null). */
FINITES_CALL finites_status finites_cable_forces(const finites_cable* cable, double* F, double tension[2]);
/* The tangent dF/dx, 6 by 6. */
FINITES_CALL finites_status finites_cable_stiffness(const finites_cable* cable, double* K);
/* Where the count points of unstressed coordinate s (0 to length) hang, and their tension (may be null). A negative
 * count is FINITES_RANGE. */
FINITES_CALL finites_status finites_cable_shape(const finites_cable* cable, int32_t count, const double* s,
                                                double (*xyz)[3], double* tension);

/* ------------------------------------------------------------------------------------------ links, springs
 *
 * Six components: translations along and rotations about x, y, z of the axes of the element. 12 by 12. F := K u. */

typedef struct finites_link {
  double xyz[2][3]; /* coincident nodes are allowed: the axes are the global ones then, and up has no effect */
  double up[3];     /* as of beams */
  double k[6];      /* not negative */
  int32_t at_ends;  /* 0: the deformable point is at mid-length, so that shear turns the ends; 1: the length has no
                       effect */
  int32_t unused;
} finites_link;

/* Between two nodes in one place; the ground is a node that does not move. */
typedef struct finites_spring {
  double k[6];       /* not negative */
  double axes[3][3]; /* rows x, y, z, orthonormal and right-handed to 1e-6; all zero: the global axes */
} finites_spring;

/* Zeros. */
FINITES_CALL void finites_link_init(finites_link* link);
FINITES_CALL void finites_spring_init(finites_spring* spring);
/* K, 12 by 12; F := K u. */
FINITES_CALL finites_status finites_link_stiffness(const finites_link* link, double* K);
FINITES_CALL finites_status finites_link_forces(const finites_link* link, const double* u, double* F);
FINITES_CALL finites_status finites_spring_stiffness(const finites_spring* spring, double* K);
FINITES_CALL finites_status finites_spring_forces(const finites_spring* spring, const double* u, double* F);

/* ------------------------------------------------------------------------------------------ solids
 *
 * Tetrahedra (4 nodes), wedges (6), bricks (8): the nodes of the first face, against the clock as seen from the others,
 * then those above them in the same order. Stiffness, mass and loads of all kinds are those of the volume itself (in
 * the protocol matrices and forces of a tetrahedron are six times as large). The volume per volume of natural
 * coordinates, det J, must be above 0 at all nodes and points; below 1e-20 it counts as 0, so that edges should not be
 * shorter than about 1e-6 of the unit of length. */

typedef struct finites_solid {
  int32_t nodes; /* 4, 6 or 8 */
  int32_t unused;
  double xyz[8][3];
  double E, nu;
  double density, expansion;
  double stiffness_factor; /* on E; above 0 */
} finites_solid;

FINITES_CALL void finites_solid_init(finites_solid* solid); /* a brick, the factor 1, everything else 0 */

/* (3 nodes) squared. KG of the stresses of u, or of given stresses (xx, yy, zz, xy, xz, yz in element axes) by
 * integration point (8 of a brick, 6 of a wedge, 1 of a tetrahedron): tension stiffens. */
FINITES_CALL finites_status finites_solid_stiffness(const finites_solid* solid, double* K);
FINITES_CALL finites_status finites_solid_mass(const finites_solid* solid, double* M);
FINITES_CALL finites_status finites_solid_geometric(const finites_solid* solid, const double* u, double* KG);
FINITES_CALL finites_status finites_solid_geometric_of_stresses(const finites_solid* solid, const double (*stress)[6],
                                                                double* KG);
FINITES_CALL finites_status finites_solid_forces(const finites_solid* solid, const double* u, double* F);

/* F := consistent nodal loads: force per volume, global; temperature change; force per area (global; may be null) and
 * pressure (positive into the solid) on a face. Faces by their nodes:
 *
 *     brick        1: 1 2 3 4   2: 5 6 7 8   3: 1 2 6 5   4: 2 3 7 6   5: 3 4 8 7   6: 4 1 5 8
 *     wedge        1: 1 2 3     2: 4 5 6     3: 1 2 5 4   4: 2 3 6 5   5: 3 1 4 6
 *     tetrahedron  1: 1 2 3     2: 1 2 4     3: 2 3 4     4: 3 1 4
 *
 * Another face is FINITES_BAD_CODE. */
FINITES_CALL finites_status finites_solid_body_load(const finites_solid* solid, const double load[3], double* F);
FINITES_CALL finites_status finites_solid_temperature_load(const finites_solid* solid, double change, double* F);
FINITES_CALL finites_status finites_solid_face_load(const finites_solid* solid, int32_t face, const double traction[3],
                                                    double pressure, double* F);

typedef struct finites_solid_measures {
  double volume, mass; /* mass = density volume */
  double center[3];    /* mean of the nodes */
  double axes[3][3]; /* axes[a]: the element axis in global components, in which stresses are: x from node 1 to node 2,
                          z across the plane of both and node 4 of a brick, 3 of the others, y = z cross x */
} finites_solid_measures;

/* measures := the size, the place and the axes of a solid. */
FINITES_CALL finites_status finites_solid_measure(const finites_solid* solid, finites_solid_measures* measures);

typedef struct finites_solid_point {
  double xyz[3];               /* global */
  double strain[6], stress[6]; /* xx, yy, zz, xy, xz, yz, element axes; shear strains are full angles */
  double principal[3];         /* s1 >= s2 >= s3, to rounding (records of the protocol: single precision) */
  double von_mises;
} finites_solid_point;

/* Nodes in the order of the element. The points of a brick lie before its nodes in the same order; those of a wedge at
 * the middles of the sides 23, 31, 12 of a triangle, three before the first and three before the second face; that of a
 * tetrahedron in its middle. What is beyond nodes and points is 0. */
typedef struct finites_solid_results {
  int32_t nodes, points;
  finites_solid_point node[8]; /* computed there, not extrapolated */
  finites_solid_point point[8];
} finites_solid_results;

/* temperature: the change, as of the load. The strain is that of u, the stress that of the strain without the free
 * expansion. */
FINITES_CALL finites_status finites_solid_result(const finites_solid* solid, const double* u, double temperature,
                                                 finites_solid_results* results);

/* ------------------------------------------------------------------------------------------ batches
 *
 * The same calls over many elements, one vector lane of the processor each where the element allows: the answers are
 * those of the single calls to the last bit. A batch takes what its elements share from common, and the rest from
 * arrays with a stride: the value of element e (from 0) starts at first[e * stride]. An array whose first is null is
 * taken from common; a stride of 0 repeats the first value.
 *
 * A call does elements begin to end - 1, 0 <= begin <= end <= count, and writes those of element e at out[e * stride];
 * a batch may be cut anywhere, for example among threads. No stride is negative, and that of an answer is not below its
 * length where a call does more than one element (FINITES_RANGE). All elements are checked first: on an error nothing
 * is written and failed (may be null) is the first element at fault, -1 where it is none of them: pointers, range,
 * strides.
 *
 * Cables, links and springs have no batches: a model has few of them, and a batch would have to compute each cable
 * twice, once to learn whether it hangs. */

typedef struct finites_reals {
  const double* first;
  int64_t stride; /* reals from one element to the next */
} finites_reals;

typedef struct finites_plates {
  finites_plate common;
  int64_t count;
  finites_reals xyz, offset; /* nodes * 3 reals of an element */
  finites_reals thickness, E, nu, density, angle;
} finites_plates;

typedef struct finites_beams {
  finites_beam common;
  int64_t count;
  finites_reals xyz; /* 2 * 3 reals */
  finites_reals up, offset;
  finites_reals E, G, density, area, Iz, Iy, J;
} finites_beams;

typedef struct finites_trusses {
  finites_truss common;
  int64_t count;
  finites_reals xyz; /* 2 * 3 reals */
  finites_reals E, area, density, pretension;
} finites_trusses;

typedef struct finites_solids {
  finites_solid common;
  int64_t count;
  finites_reals xyz; /* nodes * 3 reals */
  finites_reals E, nu, density;
} finites_solids;

/* Each as the call on one element (finites_plate_stiffness and so on), for elements begin to end - 1. */
#define FINITES_BATCH int64_t begin, int64_t end
FINITES_CALL finites_status finites_plates_stiffness(const finites_plates* plates, FINITES_BATCH, double* K,
                                                     int64_t stride, int64_t* failed);
FINITES_CALL finites_status finites_plates_mass(const finites_plates* plates, FINITES_BATCH, double* M, int64_t stride,
                                                int64_t* failed);
FINITES_CALL finites_status finites_plates_geometric(const finites_plates* plates, FINITES_BATCH, finites_reals u,
                                                     double* KG, int64_t stride, int64_t* failed);
FINITES_CALL finites_status finites_plates_forces(const finites_plates* plates, FINITES_BATCH, finites_reals u,
                                                  double* F, int64_t stride, int64_t* failed);
FINITES_CALL finites_status finites_plates_surface_load(const finites_plates* plates, FINITES_BATCH,
                                                        finites_reals global, finites_reals local, double* F,
                                                        int64_t stride, int64_t* failed);
FINITES_CALL finites_status finites_plates_body_load(const finites_plates* plates, FINITES_BATCH, finites_reals load,
                                                     double* F, int64_t stride, int64_t* failed);
/* temperature: change and difference of each element. */
FINITES_CALL finites_status finites_plates_temperature_load(const finites_plates* plates, FINITES_BATCH,
                                                            finites_reals temperature, double* F, int64_t stride,
                                                            int64_t* failed);
FINITES_CALL finites_status finites_plates_measure(const finites_plates* plates, FINITES_BATCH,
                                                   finites_plate_measures* measures, int64_t* failed);
FINITES_CALL finites_status finites_plates_result(const finites_plates* plates, FINITES_BATCH, finites_reals u,
                                                  finites_reals temperature, finites_plate_results* results,
                                                  int64_t* failed);
FINITES_CALL finites_status finites_beams_stiffness(const finites_beams* beams, FINITES_BATCH, double* K,
                                                    int64_t stride, int64_t* failed);
FINITES_CALL finites_status finites_beams_mass(const finites_beams* beams, FINITES_BATCH, int32_t lumped, double* M,
                                               int64_t stride, int64_t* failed);
FINITES_CALL finites_status finites_beams_geometric_of_force(const finites_beams* beams, FINITES_BATCH,
                                                             finites_reals axial, double* KG, int64_t stride,
                                                             int64_t* failed);
FINITES_CALL finites_status finites_beams_geometric(const finites_beams* beams, FINITES_BATCH, finites_reals u,
                                                    double* KG, int64_t stride, int64_t* failed);
FINITES_CALL finites_status finites_beams_forces(const finites_beams* beams, FINITES_BATCH, finites_reals u, double* F,
                                                 int64_t stride, int64_t* failed);
FINITES_CALL finites_status finites_trusses_stiffness(const finites_trusses* trusses, FINITES_BATCH, double* K,
                                                      int64_t stride, int64_t* failed);
FINITES_CALL finites_status finites_trusses_mass(const finites_trusses* trusses, FINITES_BATCH, int32_t lumped,
                                                 double* M, int64_t stride, int64_t* failed);
FINITES_CALL finites_status finites_trusses_geometric_of_force(const finites_trusses* trusses, FINITES_BATCH,
                                                               finites_reals axial, double* KG, int64_t stride,
                                                               int64_t* failed);
FINITES_CALL finites_status finites_trusses_forces(const finites_trusses* trusses, FINITES_BATCH, finites_reals u,
                                                   double* F, int64_t stride, int64_t* failed);
FINITES_CALL finites_status finites_solids_stiffness(const finites_solids* solids, FINITES_BATCH, double* K,
                                                     int64_t stride, int64_t* failed);
FINITES_CALL finites_status finites_solids_mass(const finites_solids* solids, FINITES_BATCH, double* M, int64_t stride,
                                                int64_t* failed);
FINITES_CALL finites_status finites_solids_geometric(const finites_solids* solids, FINITES_BATCH, finites_reals u,
                                                     double* KG, int64_t stride, int64_t* failed);
FINITES_CALL finites_status finites_solids_forces(const finites_solids* solids, FINITES_BATCH, finites_reals u,
                                                  double* F, int64_t stride, int64_t* failed);
FINITES_CALL finites_status finites_solids_body_load(const finites_solids* solids, FINITES_BATCH, finites_reals load,
                                                     double* F, int64_t stride, int64_t* failed);
FINITES_CALL finites_status finites_solids_temperature_load(const finites_solids* solids, FINITES_BATCH,
                                                            finites_reals change, double* F, int64_t stride,
                                                            int64_t* failed);
FINITES_CALL finites_status finites_solids_result(const finites_solids* solids, FINITES_BATCH, finites_reals u,
                                                  double temperature, finites_solid_results* results, int64_t* failed);
#undef FINITES_BATCH

/* The vector lanes that batches use on this processor: 2, 4 or 8. */
FINITES_CALL int32_t finites_lanes(void);

#ifdef __cplusplus
}
#endif

#endif
