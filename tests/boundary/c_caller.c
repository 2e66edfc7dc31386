/* c_caller.c: a C99 program that calls exported routines of plates and solids. The answers are worked out by hand.
 * Silent when all is well; exit status 1 otherwise. */
#include <math.h>
#include <stdio.h>

#include "boundary_model.h"
#include "finites/finites.h"

static int failures = 0;

static void expect(const char* what, double actual, double expected, double tolerance) {
  if (fabs(actual - expected) <= tolerance) return;
  printf("%s: actual %.17g, expected %.17g\n", what, actual, expected);
  ++failures;
}

/* MODEL_DATA says where the block of an element starts. */
static int32_t block_of(int32_t elem, const double* A) {
  return (elem - 1) * (int32_t)A[102 - 1] + (int32_t)A[100 - 1];
}

static void classify(const double* A, const int32_t* n) {
  int32_t elem = 1, kind = 0, behav = -1, parts = 0;
  INFO_FINITES(&elem, A, n, &kind, &behav, &parts);
  expect("kind of the shell", kind, 10, 0);
  expect("behaviour of the shell", behav, 0, 0);
  expect("parts of the shell", parts, 3, 0);
  elem = 2;
  INFO_FINITES(&elem, A, n, &kind, &behav, &parts);
  expect("kind of the membrane", kind, 12, 0);
  expect("parts of the membrane", parts, 1, 0);
}

/* Area 3, thickness 0.5, unit weight 4: weight 6; times the mass factor of 1.5: 9. */
static void geometry(double* A, const int32_t* n) {
  int32_t op = 8, elem = 1, k = block_of(1, A);
  double data[12] = {0}, forces[24] = {0}, matrix[24 * 24] = {0};
  double area = 0, weight = 0, factored = 0;
  FINITES(&op, &elem, &k, A, n, data, forces, matrix);
  boundary_model_geometry(&elem, &area, &weight, &factored);
  expect("area", area, 3.0, 1e-6);
  expect("weight", weight, 6.0, 1e-6);
  expect("factored weight", factored, 9.0, 1e-6);
}

/* A body force of (0.5, -1, 2) on the volume of 1.5: the nodal forces add up to (0.75, -1.5, 3). */
static void body_force(double* A, const int32_t* n) {
  int32_t op = 41, elem = 1, k = block_of(1, A);
  double data[12] = {0.5, -1.0, 2.0}, forces[24] = {0}, matrix[24 * 24] = {0};
  double sum[3] = {0};
  int node, i;
  FINITES(&op, &elem, &k, A, n, data, forces, matrix);
  for (node = 0; node < 4; ++node) {
    for (i = 0; i < 3; ++i) sum[i] += forces[6 * node + i];
  }
  expect("operation after a body force", op, 4, 0);
  expect("sum of the forces, x", sum[0], 0.75, 1e-12);
  expect("sum of the forces, y", sum[1], -1.5, 1e-12);
  expect("sum of the forces, z", sum[2], 3.0, 1e-12);
}

/* The stiffness resists stretching along x. Strain 1e-3 and no lateral strain: E' = E / (1 - nu^2), and twice the
 * energy is E' strain^2 times the volume. */
static void stiffness(double* A, const int32_t* n) {
  int32_t op = 1, elem = 2, k = block_of(2, A);
  double data[12] = {0}, forces[24] = {0}, matrix[24 * 24] = {0};
  const double displacement = 3e-3; /* of node 2 along x: place 7 */
  FINITES(&op, &elem, &k, A, n, data, forces, matrix);
  expect("twice the energy", matrix[24 * 6 + 6] * displacement * displacement, 1000.0 / (1.0 - 0.0625) * 1e-6 * 1.5,
         1e-15);
}

/* Rule 2 of the triangle starts at the centroid, where the weight is negative; twice the area of the triangle is 6. */
static void integration_point(void) {
  const int32_t rule = 2, point = 1, nodes = 3;
  const double xyz[9] = {0, 0, 0, 3, 0, 0, 0, 2, 0};
  double xi, eta, detj, weight, j11, j12, j21, j22, g11, g12, g21, g22;
  GAUSS_INT_2D(&rule, &point, &nodes, xyz, &xi, &eta, &detj, &weight, &j11, &j12, &j21, &j22, &g11, &g12, &g21, &g22);
  expect("xi", xi, 1.0 / 3.0, 0);
  expect("eta", eta, 1.0 / 3.0, 0);
  expect("determinant", detj, 6.0, 0);
  expect("weight", weight, -0.28125, 0);
  expect("dx/dxi", j11, 3.0, 0);
  expect("dy/deta", j22, 2.0, 0);
  expect("dxi/dx", g11, 1.0 / 3.0, 1e-16);
  expect("deta/dy", g22, 0.5, 1e-16);
  expect("dy/dxi, dx/deta", fabs(j12) + fabs(j21) + fabs(g12) + fabs(g21), 0.0, 0);
}

/* Top: sx = 50, sy = -30, sxy = 30: centre 10, radius 50, principal stresses 60 and -40. */
static void principal_stresses(void) {
  double wide[100] = {0};
  float narrow[100] = {0};
  wide[23] = 50.0;
  narrow[23] = 50.0F;
  wide[24] = -30.0;
  narrow[24] = -30.0F;
  wide[25] = 30.0;
  narrow[25] = 30.0F;
  UPDATE_PRINCIPAUX_RES100_PLA_DBL(wide);
  UPDATE_PRINCIPAUX_RES100_PLA(narrow);
  expect("first principal stress", wide[34], 60.0, 1e-12);
  expect("second principal stress", wide[35], -40.0, 1e-12);
  expect("first principal stress, single", (double)narrow[34], 60.0, 1e-5);
  expect("second principal stress, single", (double)narrow[35], -40.0, 1e-5);
}

/* A box of volume 30: under a strain of 1e-3 along x twice the energy is 1200 times its square times the volume; a load
 * of (1, -2, 0.5) adds up to 30 times that. */
static void solid(double* A, const int32_t* n, const int32_t* IOFF) {
  const int32_t elem = 1, nodes = 8, stiffness_op = 1, load_op = 41, spare = 0;
  const double G[3] = {1.0, -2.0, 0.5};
  double F[24] = {0}, K[24 * 24] = {0}, U[24] = {0}, RES[50 * 8], S[6 * 8], FG[24];
  double energy = 0, sum[3] = {0};
  char msg[500] = "untouched";
  int32_t ierr = -1;
  int i, j;
  FINITES_SOLID_3D(&stiffness_op, &elem, IOFF, A, n, G, F, &nodes, K, &ierr, msg);
  expect("status of the stiffness", ierr, 0, 0);
  for (i = 3; i < 24; i += 3) U[i] = i == 3 || i == 6 || i == 15 || i == 18 ? 2e-3 : 0.0;
  for (i = 0; i < 24; ++i) {
    for (j = 0; j < 24; ++j) energy += U[i] * K[24 * j + i] * U[j];
  }
  expect("twice the energy of the solid", energy, 0.036, 1e-15);
  FINITES_SOLID_3D(&load_op, &elem, IOFF, A, n, G, F, &nodes, K, &ierr, msg);
  for (i = 0; i < 24; ++i) sum[i % 3] += F[i];
  expect("load on the solid, x", sum[0], 30.0, 1e-12);
  expect("load on the solid, y", sum[1], -60.0, 1e-12);
  expect("load on the solid, z", sum[2], 15.0, 1e-12);
  GET_ELEM3D(&elem, IOFF, &spare, A, n, &nodes, RES, S, U, FG, &ierr, msg);
  expect("status of the results", ierr, 0, 0);
  expect("stress at the last node, xx", RES[50 * 7 + 9], 1.2, 1e-14);
  expect("stress at the last point, yy", S[6 * 7 + 1], 0.4, 1e-14);
  expect("forces of the first node, x", FG[0], -1.2 * 15.0 / 4.0, 1e-13);
  expect("message", msg[0], 'u', 0);
}

/* Axes along the global ones; a node count that is no kind has a message. */
static void solid_border(const double* A, const int32_t* n, const int32_t* IOFF) {
  const int32_t elem = 1, wrong = 5, op = 1;
  double axes[9], F[24], K[24 * 24];
  const double G[3] = {0};
  double wide[50] = {0};
  float narrow[50] = {0};
  char msg[500];
  int32_t nodes = 0, ierr = -1;
  TRFA_3DSOLID(&elem, &nodes, A, n, axes);
  expect("nodes of the solid", nodes, 8, 0);
  expect("first axis of the solid", axes[0], 1.0, 0);
  FINITES_SOLID_3D(&op, &elem, IOFF, A, n, G, F, &wrong, K, &ierr, msg);
  expect("status of five nodes", ierr, 1228, 0);
  expect("the message is padded", msg[499], ' ', 0);
  wide[12] = 7.0;
  narrow[12] = 7.0F;
  UPDATE_PRINCIPAUX_RES50_SOLID_DBL(wide);
  UPDATE_PRINCIPAUX_RES50_SOLID(narrow);
  expect("first principal stress of a shear", wide[22], 7.0, 1e-6);
  expect("von Mises stress of a shear, single", (double)narrow[21], 7.0 * sqrt(3.0), 1e-5);
}

int main(void) {
  double* A = NULL;
  int32_t n = 0, entry = 0;
  boundary_model_open(&A, &n);
  classify(A, &n);
  geometry(A, &n);
  body_force(A, &n);
  stiffness(A, &n);
  integration_point();
  principal_stresses();
  boundary_model_open_solid(&A, &n, &entry);
  solid(A, &n, &entry);
  solid_border(A, &n, &entry);
  boundary_model_close();
  return failures == 0 ? 0 : 1;
}
