/* assembled_plate.c: a strip of four thin quadrilaterals, clamped at x = 0, is bent by moments at its far end: checked,
 * assembled, solved, and its stresses asked for. nu = 0, so that the strip is a beam: w = M L^2 / (2 E I) at the end,
 * 6 M / (b h^2) at the faces. Units: N, mm.
 *
 * Built with -Iinclude -Icompanions/tarnix; docs/calling.md, "A first program", has the whole command. */
#include <math.h>
#include <stdio.h>

#include "finites/builders.h"
#include "finites/checks.h"
#include "finites/finites.h"
#include "small_solve.h"
#include "tarnix.h"

enum { PLATES = 4, NODES = 10, FREE = 48, EXCHANGE = 121, NODE = 901, SECTION = 1301, MATERIAL = 1341, ENTRY = 1351 };
enum { NODE_LENGTH = 30, ENTRY_LENGTH = 70, LENGTH = 1700 };

static double A[LENGTH], K[FREE * FREE], u[FREE + 12];
static PLATE_RECORD plate[PLATES];

/* Nodes count from 0, two by two along x; the first two are clamped. */
static int32_t node_of(int32_t e, int32_t corner) {
  const int32_t from[4] = {-2, 0, 1, -1};
  return 2 * e + from[corner];
}

static void call(int32_t op, int32_t elem, double* matrix) {
  const int32_t k = ENTRY + (elem - 1) * ENTRY_LENGTH, n = LENGTH;
  double data[64] = {0}, forces[24] = {0};
  FINITES(&op, &elem, &k, A, &n, data, forces, matrix);
}

int main(void) {
  const double L = 1000, b = 200, h = 10, E = 210e3, M = 5e5, I = b * h * h * h / 12;
  double matrix[24 * 24], deflection, stress;
  finites_finding found[8];
  int32_t e, i, j, findings, ptr[4];
  finites_fill_header(A, EXCHANGE, ENTRY, ENTRY_LENGTH);
  for (i = 0; i < NODES; ++i) finites_fill_node_block(A, NODE + NODE_LENGTH * i, i / 2 * L / PLATES, i % 2 * b, 0);
  finites_fill_section_of_plate(A, SECTION, 1, h);
  finites_fill_material_of_plate(A, MATERIAL, 1, E, 0, 77e-6);
  FINITES_REFER_1(SOLANAELEM.PLATE_RECORDS, plate, PLATES);
  for (e = 1; e <= PLATES; ++e) {
    const int32_t k = ENTRY + (e - 1) * ENTRY_LENGTH;
    for (i = 0; i < 4; ++i) ptr[i] = NODE + NODE_LENGTH * node_of(e, i);
    finites_fill_plate_block(A, k, e, 4, FORMULATION_THIN);
    finites_fill_plate_record(&plate[e - 1], SECTION, MATERIAL, 4, ptr);
    findings = finites_check_plate(e, k, A, LENGTH, found, 8);
    for (i = 0; i < findings && i < 8; ++i) puts(found[i].text);
    call(OP_STIFFNESS, e, matrix);
    for (j = 0; j < 24; ++j) {
      for (i = 0; i < 24; ++i) {
        const int row = 6 * node_of(e, i / 6) + i % 6 - 12, column = 6 * node_of(e, j / 6) + j % 6 - 12;
        if (row >= 0 && column >= 0) K[row * FREE + column] += matrix[j * 24 + i];
      }
    }
  }
  u[FREE + 4] = u[FREE + 10] = -M / 2; /* about y: raises the end, the top is pressed */
  small_solve(K, u + 12, FREE);
  deflection = u[FREE + 2];
  for (i = 0; i < 24; ++i) {
    A[EXCHANGE + EXCHANGE_DISPLACEMENTS - 1 + i] = u[6 * node_of(1, i / 6) + i % 6];
  }
  call(OP_RESULTS, 1, matrix);
  stress = A[EXCHANGE + EXCHANGE_POINTS - 1 + COL_STRESS_TOP - 1];
  printf("deflection %.8g, by formula %.8g\n", deflection, M * L * L / (2 * E * I));
  printf("stress at the top %.8g, by formula %.8g\n", stress, -6 * M / (b * h * h));
  return fabs(deflection / (M * L * L / (2 * E * I)) - 1) > 1e-8 || fabs(stress / (-6 * M / (b * h * h)) - 1) > 1e-8;
}
