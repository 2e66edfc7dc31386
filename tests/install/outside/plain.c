/* plain.c: plain calls from C99, by the installed header and library alone. */
#include <finites/elements.h>
#include <math.h>
#include <stdio.h>
#include <string.h>

static int wrong = 0;

static void expect(const char* what, double actual, double expected) {
  if (fabs(actual - expected) <= 1e-12 * fabs(expected)) return;
  printf("%s: actual %.17g, expected %.17g\n", what, actual, expected);
  wrong = 1;
}

int main(void) {
  const double corners[4][3] = {{0, 0, 0}, {2, 0, 0}, {2, 1, 0}, {0, 1, 0}};
  const double shear = 210e9 / 2.6, direct = 210e9 / 0.91;
  static double K[576];
  finites_plate plate;
  finites_truss truss;
  finites_plate_init(&plate);
  memcpy(plate.xyz, corners, sizeof corners);
  plate.thickness = 0.02;
  plate.E = 210e9;
  plate.nu = 0.3;
  expect("status of the stiffness", finites_plate_stiffness(&plate, K), FINITES_OK);
  expect("K(1, 1) of the plate", K[0], 0.02 * (direct / 6 + shear / 2));

  K[0] = -1;
  plate.thickness = 0;
  expect("status without thickness", finites_plate_stiffness(&plate, K), FINITES_THICKNESS);
  expect("nothing is written", K[0], -1);

  finites_truss_init(&truss);
  truss.xyz[1][1] = 5;
  truss.E = 210e9;
  truss.area = 1e-3;
  expect("status of the truss", finites_truss_stiffness(&truss, K), FINITES_OK);
  expect("K(2, 2) of the truss", K[7], 210e9 * 1e-3 / 5);
  return wrong;
}
