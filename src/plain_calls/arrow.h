// arrow.h: vectors in space.
#ifndef FINITES_PLAIN_ARROW_H
#define FINITES_PLAIN_ARROW_H

struct ARROW {
  double x, y, z;
};

inline double dot(const ARROW& a, const ARROW& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

#endif
