/* plain_quad.c: the stiffness of a thick quadrilateral of steel by one plain call. Units: N, m. */
#include <finites/elements.h>
#include <stdio.h>

int main(void) {
  finites_plate plate;
  double K[24][24]; /* by columns: ux, uy, uz, rx, ry, rz of node 1, then those of node 2 ... */
  finites_status status;
  finites_plate_init(&plate); /* thick, four nodes, all of them at the origin */
  plate.xyz[1][0] = plate.xyz[2][0] = 2.0;
  plate.xyz[2][1] = plate.xyz[3][1] = 1.0;
  plate.thickness = 0.02;
  plate.E = 210e9;
  plate.nu = 0.3;
  status = finites_plate_stiffness(&plate, &K[0][0]);
  printf("%s, stiffness of ux1: %.6e N/m\n", finites_text(status), K[0][0]);
  return status == FINITES_OK ? 0 : 1;
}
