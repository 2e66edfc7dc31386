/* outside.c: twice the area of a triangle, by the installed header and library. */
#include <finites/finites.h>
#include <stdio.h>

int main(void) {
  const int32_t rule = 1, point = 1, nodes = 3;
  const double xyz[9] = {1, 1, 0, 5, 1, 0, 1, 4, 0};
  double out[12];
  GAUSS_INT_2D(&rule, &point, &nodes, xyz, out, out + 1, out + 2, out + 3, out + 4, out + 5, out + 6, out + 7, out + 8,
               out + 9, out + 10, out + 11);
  if (out[2] == 12.0) return 0;
  printf("twice the area: actual %.17g, expected 12\n", out[2]);
  return 1;
}
