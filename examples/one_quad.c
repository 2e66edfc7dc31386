/* one_quad.c: a caller in C99 outside of this tree, with an installed library. One rectangular quadrilateral of steel
 * is pulled along x: the stiffness comes from the library, the displacements from the equations of the free nodes, the
 * stress of the displacements from the library again. Each is printed beside its formula. Units: N, mm.
 *
 *     y
 *     4 ------ 3 --> s h b / 2          u = 0 at nodes 1 and 4, v = 0 at nodes 1 and 2
 *     |        |
 *     1 ------ 2 --> s h b / 2    x     a by b, thickness h */
#include <finites/fields.h>
#include <finites/finites.h>
#include <finites/records.h>
#include <finites/tarnix.h>
#include <math.h>
#include <stdio.h>
#include <string.h>

static const double a = 2000, b = 1000, h = 10, young = 210e3, poisson = 0.3, pull = 100;

/* Where this model keeps its blocks. The library fixes the header and the fields inside a block, not the places. */
enum { EXCHANGE = 201, NODES = 1001, SECTION = 1101, MATERIAL = 1201, ELEMENT = 1301, LENGTH = 1400 };

static double A[LENGTH];      /* MODEL_DATA */
static PLATE_RECORD plate;    /* plate 1, which is element 1 */
static double matrix[24][24]; /* by columns */

/* A(place) of the documents, which count from 1. */
static double* at(int32_t place) { return &A[place - 1]; }

static void fill_blocks(void) {
  *at(RES_BASE) = EXCHANGE;
  *at(ENTRY_START) = ELEMENT;
  *at(ENTRY_STRIDE) = 70;
  *at(SECTION + SECTION_NUMBER) = 1;
  *at(SECTION + SECTION_TYPE) = HOMOGENEOUS_SECTION;
  *at(SECTION + SECTION_THICKNESS) = h;
  *at(MATERIAL + MATERIAL_NUMBER) = 1;
  *at(MATERIAL + MATERIAL_YOUNG) = young;
  *at(MATERIAL + MATERIAL_POISSON) = poisson;
  *at(ELEMENT + ELEM_ID) = 1;
  *at(ELEMENT + MASS_FACTOR) = 1;
  *at(ELEMENT + BLOCK_NODE_COUNT) = 4;
  *at(ELEMENT + FORMULATION) = 1; /* thin shell */
  *at(ELEMENT + MODIFIER_MEMBRANE) = *at(ELEMENT + MODIFIER_BENDING) = *at(ELEMENT + MODIFIER_SHEAR) = 1;
}

static void fill_records(void) {
  const double x[4] = {0, a, a, 0}, y[4] = {0, 0, b, b};
  const int32_t material_number = 1;
  MATERIAL_RECORD elastic; /* type 0, not orthotropic: constants of the material block */
  int n;
  plate.SECTION_PTR = SECTION;
  plate.MATERIAL_PTR = MATERIAL;
  plate.NODE_COUNT = 4;
  for (n = 0; n < 4; ++n) {
    plate.NODE_PTR[n] = NODES + 10 * n;
    *at(plate.NODE_PTR[n] + NODE_X) = x[n];
    *at(plate.NODE_PTR[n] + NODE_X + 1) = y[n];
  }
  FINITES_REFER_1(SOLANAELEM.PLATE_RECORDS, &plate, 1);
  memset(&elastic, 0, sizeof elastic);
  TARNIX_STORE_MATERIAL(&material_number, &elastic);
}

static void call(int32_t op) {
  const int32_t elem = 1, k = ELEMENT, n = LENGTH;
  double data[64] = {0}, forces[24] = {0};
  FINITES(&op, &elem, &k, A, &n, data, forces, &matrix[0][0]);
}

/* K x = f by elimination without pivoting: the matrix of a supported structure is positive definite. */
static void solve(double K[4][4], double f[4], double x[4]) {
  int i, j, k;
  for (k = 0; k < 4; ++k) {
    for (i = k + 1; i < 4; ++i) {
      const double factor = K[i][k] / K[k][k];
      for (j = k; j < 4; ++j) K[i][j] -= factor * K[k][j];
      f[i] -= factor * f[k];
    }
  }
  for (k = 3; k >= 0; --k) {
    x[k] = f[k];
    for (j = k + 1; j < 4; ++j) x[k] -= K[k][j] * x[j];
    x[k] /= K[k][k];
  }
}

static int wrong = 0;

static void compare(const char* what, double actual, double expected) {
  printf("%-32s %14.8g    by formula %14.8g\n", what, actual, expected);
  if (!(fabs(actual - expected) <= 1e-9 * fabs(expected))) wrong = 1;
}

int main(void) {
  enum { U2 = 6, U3 = 12, V3 = 13, V4 = 19 }; /* six degrees of freedom per node: u, v, w and three rotations */
  const int free_ones[4] = {U2, U3, V3, V4};
  const double direct = young / (1 - poisson * poisson), shear = young / (2 * (1 + poisson));
  double K[4][4], u[4], f[4];
  const double* record;
  int i, j;

  fill_blocks();
  fill_records();
  call(OP_STIFFNESS);
  /* Bilinear function N of node 1: the integral of N,x^2 is b / (3 a); the shear is that of the centre, where
   * N,y = -1 / (2 b). */
  compare("stiffness of u1", matrix[0][0], h * (direct * b / (3 * a) + shear * a / (4 * b)));

  for (i = 0; i < 4; ++i) {
    for (j = 0; j < 4; ++j) K[i][j] = matrix[free_ones[j]][free_ones[i]];
    f[i] = free_ones[i] == U2 || free_ones[i] == U3 ? pull * h * b / 2 : 0;
  }
  solve(K, f, u);
  compare("displacement u of node 2", u[0], pull * a / young);
  compare("displacement v of node 3", u[2], -poisson * pull * b / young);

  for (i = 0; i < 4; ++i) *at(EXCHANGE + EXCHANGE_DISPLACEMENTS + free_ones[i]) = u[i];
  call(OP_RESULTS);
  record = at(EXCHANGE + EXCHANGE_POINTS); /* of the first integration point; its columns count from 1 too */
  compare("stress x", record[COL_STRESS_MID - 1], pull);
  return wrong;
}
