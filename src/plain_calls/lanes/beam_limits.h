// beam_limits.h: the limits of the checks of beams, for one beam and for several side by side.
#ifndef FINITES_BEAM_LIMITS_H
#define FINITES_BEAM_LIMITS_H

// The sine of the angle between a member and a direction, below which the direction gives no plane: directions are
// often given with some six digits.
constexpr double LEAST_SINE = 1e-6;

// Within these limits no check of a beam can fail: numbers of ordinary size, no short length, no direction near that of
// the beam. APART and SINE are ten times above the limits of frame_of_member(); SHORT is far above its own, so that no
// quotient by a power of the length overflows; SMALL likewise of constants.
struct SURE_LIMITS {
  static constexpr double LARGE = 1e12, SMALL = 1e-30, SHORT = 1e-8, APART = 1e-13, SINE = 1e-5;
};

#endif
