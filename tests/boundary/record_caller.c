/* record_caller.c: a solver in C99 that fills every record itself: one triangle, as a membrane and as a thin shell of
 * the layered plastic model. What the library answers has closed forms. Silent when all is well; exit status 1
 * otherwise.
 *
 * Nodes (0, 0, 0), (A, 0, 0), (0, B, 0): the element axes are the global ones, and the gradients of the area
 * coordinates of nodes 2 and 3 are (1/A, 0) and (0, 1/B). */
#include <math.h>
#include <stdio.h>
#include <string.h>

#include "finites/fields.h"
#include "finites/finites.h"
#include "finites/record_layout.h"
#include "finites/res100.h"
#include "finites/thickness_rule.h"
#include "tarnix.h"

static int failures = 0;

static void expect(const char* what, double actual, double expected, double tolerance) {
  if (fabs(actual - expected) <= tolerance) return;
  printf("%s: actual %.17g, expected %.17g\n", what, actual, expected);
  ++failures;
}

/* ---- the layout of records */

static void expect_place(const char* record, const char* field, long offset, long size) {
  const int32_t record_length = (int32_t)strlen(record), field_length = (int32_t)strlen(field);
  int64_t found_offset = 0, found_size = 0;
  char what[160];
  TARNIX_RECORD_LAYOUT(record, &record_length, field, &field_length, &found_offset, &found_size);
  sprintf(what, "%s.%s", record, field);
  expect(what, (double)found_offset, (double)offset, 0);
  expect(what, (double)found_size, (double)size, 0);
}

/* Offsets and sizes as this compiler has them, of every record and field. */
static void layout_of_this_compiler(void) {
#define EXPECT_RECORD(NAME, SIZE) expect_place(#NAME, "", 0, (long)sizeof(NAME));
#define EXPECT_FIELD(RECORD, NAME, OFFSET, SIZE) \
  expect_place(#RECORD, #NAME, (long)offsetof(RECORD, NAME), (long)sizeof(((RECORD*)0)->NAME));
  FINITES_RECORD_LAYOUT(EXPECT_RECORD, EXPECT_FIELD)
}

/* The sum of the widths of the fields: integers and singles 4, doubles 8; an array that the solver sizes is an address,
 * a length, a flag with four bytes that align the next, and three integers of 8 to a dimension. */
enum { LIST_1 = 8 + 8 + 4 + 4 + 24, LIST_2 = LIST_1 + 24, LIST_3 = LIST_2 + 24 };

static void layout_by_widths(void) {
  expect_place("PLATE_RECORD", "NODE_PTR", 3 * 4, 4 * 4);
  expect_place("PLATE_RECORD", "NODE_OFFSETS", (3 + 4 + 3) * 4, 12 * 8);
  expect_place("PLATE_RECORD", "", 0, (3 + 4 + 3) * 4 + 12 * 8);
  expect_place("POINT_STATE_RECORD", "EPBAR_CUR", 4 * LIST_2 + LIST_1, LIST_1);
  expect_place("POINT_STATE_RECORD", "", 0, 4 * LIST_2 + 2 * LIST_1 + LIST_3);
  expect_place("PLATE_STATE_RECORD", "SEC_TANGENT", 2 * 24 * 8 + 3 * LIST_2 + 2 * LIST_1, LIST_3);
  expect_place("PLATE_STATE_RECORD", "", 0, 2 * 24 * 8 + 3 * LIST_2 + 2 * LIST_1 + LIST_3 + 5 * LIST_1);
  expect_place("HINGE_RECORD", "CAP_P", 3 * 4 + 4, 8); /* four bytes align it */
  expect_place("HINGE_RECORD", "", 0, 16 + 3 * 8 + 2 * 4 + 16 + 4 + 16 + 4 + 144 * 8);
  expect_place("SOLANAELEM_RECORD", "PLATE_STATE", 8 + 8 * LIST_1, LIST_1);
  expect_place("PLATE_RECORD   ", "AREA ", 28, 4); /* blanks at the end do not count */
  expect_place("PLATE_RECORD", "HEIGHT", -1, -1);
  expect_place("PLATES", "", -1, -1);
  expect_place("", "AREA", -1, -1);
}

/* ---- the points through the thickness */

/* Lobatto's rule of n points is exact for polynomials up to the order 2 n - 3, and not for the next even one. */
static void thickness_rules(void) {
  int32_t n;
  for (n = 0; n <= 17; ++n) {
    double xi[MOST_THICKNESS_POINTS + 1] = {0}, w[MOST_THICKNESS_POINTS + 1] = {0}, order = 0;
    const int32_t found = THICKNESS_RULE(n, xi, w);
    int32_t k;
    int power;
    xi[MOST_THICKNESS_POINTS] = 0;
    expect("there is a rule", found, n >= 3 && n <= 15 && n % 2 == 1, 0);
    if (!found) {
      for (k = 0; k < MOST_THICKNESS_POINTS; ++k) expect("nothing is written", fabs(xi[k]) + fabs(w[k]), 0, 0);
      continue;
    }
    expect("bottom face", xi[0], -1, 0);
    expect("top face", xi[n - 1], 1, 0);
    for (k = 1; k < n; ++k) expect("from the bottom to the top", xi[k] > xi[k - 1], 1, 0);
    for (power = 0; power <= 2 * n - 2; ++power) {
      double sum = 0;
      for (k = 0; k < n; ++k) sum += w[k] * pow(xi[k], power);
      order = power % 2 == 0 ? 2.0 / (power + 1) : 0;
      if (power <= 2 * n - 3) {
        expect("integral of a power", sum, order, 4e-15);
      } else {
        expect("integral of a power above the order", fabs(sum - order) > 1e-9, 1, 0);
      }
    }
  }
}

/* ---- one triangle */

#define A_SIDE 3.0
#define B_SIDE 2.0
#define THICKNESS 0.5
#define YOUNG 1000.0
#define POISSON 0.25

enum { EXCHANGE = 201, NODES = 1001, SECTION = 1101, MATERIAL = 1201, BLOCK = 1301, LENGTH = 1400, POINTS = 5 };

static double A[LENGTH];
static PLATE_RECORD plate;
static PLATE_STATE_RECORD state;
static POINT_STATE_RECORD points[4];
static double stress[4][POINTS][6], plastic[4][3][POINTS][6], equivalent[4][2][POINTS], tangent[4][POINTS][5][5];
static int32_t plate_of_elem[1] = {1};

static double* at(int32_t index) { return &A[index - 1]; }

static void fill_model(int formulation) {
  static const double nodes[3][3] = {{0, 0, 0}, {A_SIDE, 0, 0}, {0, B_SIDE, 0}};
  const int32_t number = 1;
  MATERIAL_RECORD material;
  int i, n;
  memset(A, 0, sizeof A);
  *at(RES_BASE) = EXCHANGE;
  *at(ENTRY_START) = BLOCK;
  *at(ENTRY_STRIDE) = 70;
  *at(SECTION + SECTION_NUMBER) = 1;
  *at(SECTION + SECTION_TYPE) = HOMOGENEOUS_SECTION;
  *at(SECTION + SECTION_THICKNESS) = THICKNESS;
  *at(MATERIAL + MATERIAL_NUMBER) = number;
  *at(MATERIAL + MATERIAL_YOUNG) = YOUNG;
  *at(MATERIAL + MATERIAL_POISSON) = POISSON;
  *at(MATERIAL + MATERIAL_YIELD_STRESS) = 2.0;
  *at(BLOCK + ELEM_ID) = 1;
  *at(BLOCK + MASS_FACTOR) = 1;
  *at(BLOCK + BLOCK_NODE_COUNT) = 3;
  *at(BLOCK + FORMULATION) = formulation;
  *at(BLOCK + MODIFIER_MEMBRANE) = *at(BLOCK + MODIFIER_BENDING) = *at(BLOCK + MODIFIER_SHEAR) = 1;

  memset(&plate, 0, sizeof plate);
  plate.SECTION_PTR = SECTION;
  plate.MATERIAL_PTR = MATERIAL;
  plate.NODE_COUNT = 3;
  for (n = 0; n < 3; ++n) {
    plate.NODE_PTR[n] = NODES + 10 * n;
    for (i = 0; i < 3; ++i) *at(plate.NODE_PTR[n] + NODE_X + i) = nodes[n][i];
  }
  FINITES_REFER_1(SOLANAELEM.PLATE_RECORDS, &plate, 1);
  FINITES_REFER_1(SOLANAELEM.PLATE_OF_ELEM, plate_of_elem, 1);

  memset(&material, 0, sizeof material);
  material.mtype = MATERIAL_YIELDING;
  TARNIX_STORE_MATERIAL(&number, &material);
}

static void fill_layered_state(void) {
  const int32_t layered = PLATE_MODEL_LAYERED;
  int p;
  memset(points, 0, sizeof points);
  for (p = 0; p < 4; ++p) {
    FINITES_REFER_2(points[p].SIG, &stress[p][0][0], 6, POINTS);
    FINITES_REFER_2(points[p].EP_START, &plastic[p][0][0][0], 6, POINTS);
    FINITES_REFER_2(points[p].EP_CUR, &plastic[p][1][0][0], 6, POINTS);
    FINITES_REFER_2(points[p].EP_INC, &plastic[p][2][0][0], 6, POINTS);
    FINITES_REFER_1(points[p].EPBAR_START, equivalent[p][0], POINTS);
    FINITES_REFER_1(points[p].EPBAR_CUR, equivalent[p][1], POINTS);
    FINITES_REFER_3(points[p].TANGENT, &tangent[p][0][0][0], 5, 5, POINTS);
  }
  memset(&state, 0, sizeof state);
  FINITES_REFER_1(state.POINT_STATE, points, 4);
  FINITES_REFER_1(SOLANAELEM.PLATE_STATE, &state, 1);
  SOLANAELEM.NPT_THICK = POINTS;
  TARNIX_STORE_KNLMATERIAL_PLATE(&layered);
  *at(NONLIN_MATERIAL) = *at(ANALYSIS_STATE) = 1;
  *at(BLOCK + PLASTIC_SWITCH) = 1;
}

static double matrix[24][24]; /* by columns */

static void call(int32_t op) {
  const int32_t elem = 1, k = BLOCK, n = LENGTH;
  double data[64] = {0}, forces[24] = {0};
  FINITES(&op, &elem, &k, A, &n, data, forces, &matrix[0][0]);
}

/* E / (1 - nu^2) times (1, nu, (1 - nu) / 2): plane stress. */
static const double DIRECT = YOUNG / (1.0 - POISSON * POISSON);

/* Constant strain: K = area h B^T D B, by the gradients above. u and v of a node are the first two of its six. */
static void expect_membrane(const char* what) {
  const double factor = A_SIDE * B_SIDE / 2.0 * THICKNESS, shear = YOUNG / (2.0 * (1.0 + POISSON));
  const double tolerance = 1e-12 * YOUNG;
  enum { U2 = 6, V2 = 7, U3 = 12, V3 = 13 };
  expect(what, matrix[U2][U2], factor * DIRECT / (A_SIDE * A_SIDE), tolerance);
  expect(what, matrix[V2][V2], factor * shear / (A_SIDE * A_SIDE), tolerance);
  expect(what, matrix[U3][U3], factor * shear / (B_SIDE * B_SIDE), tolerance);
  expect(what, matrix[V3][V3], factor * DIRECT / (B_SIDE * B_SIDE), tolerance);
  expect(what, matrix[V3][U2], factor * POISSON * DIRECT / (A_SIDE * B_SIDE), tolerance);
  expect(what, matrix[V2][U3], factor * shear / (A_SIDE * B_SIDE), tolerance);
  expect(what, matrix[U2][V2], 0, tolerance);
}

/* Strain x alone: stresses E' (1, nu, 0), the principal ones along the axes, von Mises' equivalent of the two. */
static void results_of_a_membrane(void) {
  const double strain = 1e-3, s = DIRECT * strain;
  double res100[RES100_LENGTH];
  int i, face;
  *at(EXCHANGE + EXCHANGE_DISPLACEMENTS + 6) = strain * A_SIDE;
  call(5);
  for (i = 0; i < RES100_LENGTH; ++i) res100[i] = -7.0;
  RES100_FROM_RECORD(at(EXCHANGE + EXCHANGE_POINTS), res100);
  for (face = 0; face < 3; ++face) {
    const double* stresses = &res100[RES100_STRESS_TOP - 1 + 3 * face];
    const double* principal = &res100[RES100_PRINCIPAL_TOP - 1 + 4 * face];
    expect("stress x", stresses[0], s, 1e-12);
    expect("stress y", stresses[1], POISSON * s, 1e-12);
    expect("stress xy", stresses[2], 0, 1e-12);
    expect("angle", principal[0], 0, 1e-9);
    expect("largest principal stress", principal[1], s, 1e-12);
    expect("smallest principal stress", principal[2], POISSON * s, 1e-12);
    expect("largest shear", principal[3], s * (1 - POISSON) / 2, 1e-12);
    expect("equivalent", res100[RES100_EQUIVALENT_TOP - 1 + face], s * sqrt(1 - POISSON + POISSON * POISSON), 1e-12);
  }
  expect("shear stress xz", res100[RES100_SHEAR_STRESS - 1], 0, 0);
  expect("a column of the solver's own", res100[RES100_SPARE - 1], -7.0, 0);
  expect("the last column", res100[RES100_LENGTH - 1], -7.0, 0);
}

static void membrane(void) {
  fill_model(2);
  call(1);
  expect_membrane("stiffness of the membrane");
  call(8);
  expect("area", (double)plate.AREA, A_SIDE * B_SIDE / 2, 1e-6);
  results_of_a_membrane();
}

/* The first pass makes every point elastic; the weights through the thickness give back the membrane's stiffness. */
static void layered(void) {
  const int32_t quiet = 1;
  int p, k;
  memset(stress, 1, sizeof stress);
  memset(plastic, 1, sizeof plastic);
  fill_model(1);
  fill_layered_state();
  /* The first pass, STEP_COUNTER 0. It makes the constants of both plastic models, and the check of the decomposition
   * of the section's, which is not asked for here, may speak: that is counted, not printed. */
  TARNIX_SET_ASSERT_QUIET(&quiet);
  call(3);
  *at(STEP_COUNTER) = 1;
  for (p = 0; p < 4; ++p) {
    for (k = 0; k < POINTS; ++k) {
      expect("tangent xx xx", tangent[p][k][0][0], DIRECT, 1e-10);
      expect("tangent yy xx", tangent[p][k][0][1], POISSON * DIRECT, 1e-10);
      expect("tangent xy xy", tangent[p][k][2][2], YOUNG / (2 * (1 + POISSON)), 1e-10);
      expect("stress", stress[p][k][0], 0, 0);
      expect("plastic strain", plastic[p][1][k][5], 0, 0);
    }
  }
  call(1);
  expect_membrane("stiffness of the layered shell");
}

int main(void) {
  layout_of_this_compiler();
  layout_by_widths();
  thickness_rules();
  membrane();
  layered();
  TARNIX_CLEAR();
  return failures == 0 ? 0 : 1;
}
