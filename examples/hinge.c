/* hinge.c: a beam that is clamped at both ends carries a shear force across. When the moment of its first end reaches
 * the plastic moment a hinge forms: the force per displacement falls from 12 E I / L^3 to 3 E I / L^3, that of a beam
 * with a pin there. The library has the tangent; the solver finds the event. Units: N, mm.
 *
 * Built with -Iinclude -Icompanions/tarnix; docs/calling.md, "A first program", has the whole command. */
#include <math.h>
#include <stdio.h>

#include "finites/builders.h"
#include "finites/checks.h"
#include "finites/finites.h"
#include "tarnix.h"

enum { EXCHANGE = 121, ENTRY = 901, SECTION = 1001, MATERIAL = 1011, NODE = 1021, LENGTH = 1100 };

int main(void) {
  static double A[LENGTH], T[144], K[144], KG[144];
  static MEMBER_RECORD member;
  static HINGE_RECORD hinge;
  static MEMBER_FORCES_RECORD forces;
  const double L = 4000, E = 210e3, Iz = 4e7, Mp = 8e7, first[3] = {0, 0, 0}, second[3] = {4000, 0, 0},
               up[3] = {0, 1, 0};
  const int32_t mode = MODE_STEP, elem = 1, entry = ENTRY, n = LENGTH, none = 0, on = 1;
  int32_t pos = 1, i, count;
  finites_finding found[8];
  double elastic, plastic, v, phi;

  finites_fill_header(A, EXCHANGE, ENTRY, 90);
  A[SECOND_ORDER - 1] = GEOMETRIC_ADDED; /* hinges act with it alone; AXIAL_FORCE 0 makes the analysis first-order */
  TARNIX_STORE_KNLMATERIAL_MEMBER(&on);
  finites_fill_node_block(A, NODE, 0, 0, 0);
  finites_fill_node_block(A, NODE + 30, L, 0, 0);
  finites_fill_section_of_member(A, SECTION, 5e3, Iz, Iz, Iz);
  finites_fill_material_of_member(A, MATERIAL, E, 0.3, 0);
  finites_fill_member_block(A, ENTRY, 1, SECTION, MATERIAL, NODE, NODE + 30);
  finites_fill_member_record(&member, finites_fill_rotation(T, first, second, up));
  hinge.HINGE_MODEL = HINGE_MODEL_ON;
  hinge.CURVE_KIND = SINGLE_FORCES;
  hinge.FORCE_SET = ONLY_MZ;
  hinge.CAP_P = hinge.CAP_MY = hinge.CAP_MZ = Mp; /* all three above 0, or the curve has no values */
  FINITES_REFER_1(SOLANAELEM.ELEM_POS, &pos, 1);
  FINITES_REFER_1(SOLANAELEM.MEMBER_REC, &member, 1);
  FINITES_REFER_1(SOLANAELEM.HINGE_REC, &hinge, 1);
  FINITES_REFER_1(SOLANAELEM.MEMBER_FORCES, &forces, 1);
  count = finites_check_member(FINITES_ELEMENT_BEAM, 1, ENTRY, A, LENGTH, found, 8);
  for (i = 0; i < count && i < 8; ++i) { /* three notes, all meant: no shear areas, no axial force */
    printf("%s: %s\n", found[i].severity == FINITES_SEVERITY_NOTE ? "note" : "to mend", found[i].text);
  }

  KSTIFB(&mode, &elem, &entry, A, &n, T, &none, T, K, KG);
  elastic = K[7 * 12 + 7];      /* v of the second end */
  v = Mp / fabs(K[7 * 12 + 5]); /* the moment of the first end is 6 E I v / L^2 */
  forces.F_END[5] = K[7 * 12 + 5] * v;
  phi = fabs(forces.F_END[5]) / Mp; /* SINGLE_FORCES: M / Mp */
  hinge.END1_STATE = YIELDING;
  KSTIFB(&mode, &elem, &entry, A, &n, T, &none, T, K, KG);
  plastic = K[7 * 12 + 7];
  printf("phi %.6f at v = %.4f, by formula %.4f\n", phi, v, Mp * L * L / (6 * E * Iz));
  printf("stiffness %.6g, with the hinge %.6g, by formula %.6g and %.6g\n", elastic, plastic, 12 * E * Iz / (L * L * L),
         3 * E * Iz / (L * L * L));
  return fabs(elastic * L * L * L / (E * Iz) - 12) > 1e-8 || fabs(plastic * L * L * L / (E * Iz) - 3) > 1e-8;
}
