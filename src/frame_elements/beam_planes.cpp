// beam_planes.cpp: the stiffness of a prismatic two-node space beam with shear deformation, semi-rigid ends and end
// releases, in local axes.
//
// Semi-rigid ends after Monforton and Wu (1963), with the shear parameter of Przemieniecki (1968). Degrees of freedom
// of an end: u, v, w, rotations about x, y, z; x along the member. With the fixity factors f, g of the first and second
// end (0 a pin, 1 a rigid connection) and p = 12 E I / (G As L^2), in each plane of bending
//
//     d       = 4 - f g + p (f + g + f g)
//     shear   = 12 E I (f + g + f g) / (L^3 d)   force per translation
//     couple1 = 6 E I f (g + 2) / (L^2 d)        moment of the first end per translation; couple2 with f, g swapped
//     end1    = 3 E I f (p g + 4) / (L d)        moment per own rotation; end2 with f, g swapped
//     cross   = 3 E I (2 - p) f g / (L d)        moment per rotation of the other end
//
// and axially E A / L, in torsion G J / L. A pin needs no branch of its own: its row becomes zero. Moments about y have
// the opposite sign of those about z, since a positive rotation about y is -dw/dx.
#include "frame_elements/beam_planes.h"

#include "common/finiteness.h"
#include "common/lanes.h"
#include "frame_elements/bending_formulas.h"
#include "frame_elements/member_axes.h"
#include "frame_elements/release.h"

namespace {

// E A / L and G J / L; zero where the force is released at either end.
void set_axial_and_torsion(const BEAM_PROPERTIES& B, PLANE_MATRIX& K) {
  const bool axial = B.release_x != 1 && B.release_x != 2;
  const bool torsion = B.release_t != 1 && B.release_t != 2;
  K(1, 1) = K(7, 7) = (axial ? 1.0 : 0.0) * B.E1 * B.AREA / B.L;
  K(7, 1) = -K(1, 1);
  K(4, 4) = K(10, 10) = (torsion ? 1.0 : 0.0) * B.GJ / B.L;
  K(10, 4) = -K(4, 4);
}

// 0, no shear deformation, where the switch is off or G or the shear area is not positive.
double shear_parameter(const BEAM_PROPERTIES& B, double E, double I, double shear_area) {
  if (!B.shear || !(B.G > 0.0) || !(shear_area > 0.0)) return 0.0;
  return shear_parameter_of(E, I, B.G, shear_area, B.L);
}

// v and theta z from the x-y plane, w and theta y from the x-z plane.
void set_bending(const BEAM_PROPERTIES& B, PLANE_MATRIX& K) {
  constexpr int z = 0, y = 1;  // lanes
  const LANES p{shear_parameter(B, B.E1, B.I1, B.AS1), shear_parameter(B, B.E2, B.I2, B.AS2)};
  const BENDING_OF<LANES> b =
      bending_of(LANES{B.E1, B.E2}, LANES{B.I1, B.I2}, B.L, p, LANES{B.b1, B.a1}, LANES{B.b2, B.a2});
  // clang-format off
  K(2, 2) = K(8, 8) = b.shear[z];   K(8, 2) = -b.shear[z];
  K(6, 2) = b.couple1[z];           K(8, 6) = -b.couple1[z];
  K(12, 2) = b.couple2[z];          K(12, 8) = -b.couple2[z];
  K(6, 6) = b.end1[z];              K(12, 12) = b.end2[z];      K(12, 6) = b.cross[z];

  K(3, 3) = K(9, 9) = b.shear[y];   K(9, 3) = -b.shear[y];
  K(5, 3) = -b.couple1[y];          K(9, 5) = b.couple1[y];
  K(11, 3) = -b.couple2[y];         K(11, 9) = b.couple2[y];
  K(5, 5) = b.end1[y];              K(11, 11) = b.end2[y];      K(11, 5) = b.cross[y];
  // clang-format on
}

}  // namespace

BEAM_RELEASES released_by(const BEAM_PROPERTIES& B) {
  return {{released_freedom(B.release_x, 1), released_freedom(B.release_y, 2), released_freedom(B.release_z, 3),
           released_freedom(B.release_t, 4)}};
}

void elastic_planes(const BEAM_PROPERTIES& B, PLANE_MATRIX& K) {
  set_axial_and_torsion(B, K);
  set_bending(B, K);
}

bool release_ends(const BEAM_PROPERTIES& B, PLANE_MATRIX& K) {
  const BEAM_RELEASES released = released_by(B);
  std::int32_t any = 0;
  for (const std::int32_t d : released.freedom) {
    release_stiffness(d, K);
    any |= d;
  }
  return any == 0 || all_finite(K);
}

GEOMETRIC_DATA geometric_data(const BEAM_PROPERTIES& B) {
  const std::int32_t semi_y = semi_rigid(B.a1) || semi_rigid(B.a2) ? 1 : 0;
  const std::int32_t semi_z = semi_rigid(B.b1) || semi_rigid(B.b2) ? 1 : 0;
  return {B.axial_force, B.L,         B.E1 * B.I1, B.E2 * B.I2, semi_y, semi_z,
          B.release_y,   B.release_z, B.a1,        B.b1,        B.a2,   B.b2};
}
