// solid_faces.h: the faces of the linear kinds and integrals over them.
//
// A face of four nodes is bilinear. With n = x,xi cross x,eta, which points out of the solid and whose length is the
// area per area of natural coordinates, the integrals of N_k n and of x . n are exact by 2 by 2 points; those of
// N_k |n| are so where the face is flat. A face of three nodes has constant n; its middle point, N = 1/3, is exact.
#ifndef FINITES_PLAIN_SOLID_FACES_H
#define FINITES_PLAIN_SOLID_FACES_H

#include <cstdint>

#include "finites/elements.h"

// Nodes from 0 on, against the clock seen from outside.
struct SOLID_FACE {
  int count;
  int node[4];
};

int solid_face_count(std::int32_t nodes);                    // 4, 5 or 6
const SOLID_FACE& solid_face(std::int32_t nodes, int face);  // face from 1 on

// One point of the rule of a face: functions of its nodes, place, normal n times the weight.
struct FACE_POINT {
  double N[4];
  double x[3];
  double n[3];
};

// The points of a face, their count; places count from `origin`.
int face_points(const finites_solid& solid, const SOLID_FACE& face, const double origin[3], FACE_POINT point[4]);

#endif
