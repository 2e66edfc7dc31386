// links.cpp: links and springs as plain calls.
#include <algorithm>
#include <cmath>

#include "common/member_order.h"
#include "finites/elements.h"
#include "frame_elements/link_planes.h"
#include "plain_calls/member_frame.h"

namespace {

constexpr int ENTRIES = MEMBER_DOFS * MEMBER_DOFS;

// What the axes of a spring may differ from right angles and unit lengths.
constexpr double AXES_TOLERANCE = 1e-6;

bool all_zero(const double (&axes)[3][3]) {
  return std::all_of(&axes[0][0], &axes[0][0] + 9, [](double a) { return a == 0.0; });
}

finites_status status_of_stiffnesses(const double (&k)[6]) {
  return std::any_of(k, k + 6, [](double value) { return value < 0.0; }) ? FINITES_STIFFNESS : FINITES_OK;
}

VECTOR<6> components(const double (&k)[6]) { return {{k[0], k[1], k[2], k[3], k[4], k[5]}}; }

// Length and axes of a link: 0 and the global axes where its nodes coincide.
finites_status frame_of_link(const finites_link& link, MEMBER_FRAME& frame) {
  const finites_status status = frame_of_member(link.xyz, nullptr, link.up, frame);
  if (status != FINITES_COINCIDENT) return status;
  frame.length = 0.0;
  frame.axes = MATRIX<3, 3>{{1, 0, 0, 0, 1, 0, 0, 0, 1}};
  return FINITES_OK;
}

finites_status set_link(const finites_link& link, double* K) {
  const finites_status numbers = first_fault(check_member_numbers(&link.xyz[0][0], 6), check_member_numbers(link.up, 3),
                                             check_member_numbers(link.k, 6));
  if (numbers != FINITES_OK) return numbers;
  if (link.at_ends != 0 && link.at_ends != 1) return FINITES_BAD_CODE;
  const finites_status stiffnesses = status_of_stiffnesses(link.k);
  if (stiffnesses != FINITES_OK) return stiffnesses;
  MEMBER_FRAME frame;
  const finites_status found = frame_of_link(link, frame);
  if (found != FINITES_OK) return found;
  PLANE_MATRIX planes;
  if (link.at_ends == 1) {
    set_link_blocks(components(link.k), planes);
  } else {
    set_link_mid_length(components(link.k), frame.length, planes);
  }
  double T[ENTRIES];
  rotation_of_member(frame, T);
  write_or_turn_link(planes, true, T, K);
  return FINITES_OK;
}

bool orthonormal(const double (&axes)[3][3]) {
  for (int a = 0; a < 3; ++a) {
    for (int b = 0; b <= a; ++b) {
      const double dot = axes[a][0] * axes[b][0] + axes[a][1] * axes[b][1] + axes[a][2] * axes[b][2];
      if (!(std::fabs(dot - (a == b ? 1.0 : 0.0)) <= AXES_TOLERANCE)) return false;
    }
  }
  return true;
}

// x cross y runs along z, not against it.
bool right_handed(const double (&axes)[3][3]) {
  const double(&x)[3] = axes[0];
  const double(&y)[3] = axes[1];
  const double(&z)[3] = axes[2];
  return (x[1] * y[2] - x[2] * y[1]) * z[0] + (x[2] * y[0] - x[0] * y[2]) * z[1] + (x[0] * y[1] - x[1] * y[0]) * z[2] >
         0.0;
}

finites_status set_spring(const finites_spring& spring, double* K) {
  const finites_status numbers =
      first_fault(check_member_numbers(spring.k, 6), check_member_numbers(&spring.axes[0][0], 9));
  if (numbers != FINITES_OK) return numbers;
  const finites_status stiffnesses = status_of_stiffnesses(spring.k);
  if (stiffnesses != FINITES_OK) return stiffnesses;
  const bool global = all_zero(spring.axes);
  if (!global && !(orthonormal(spring.axes) && right_handed(spring.axes))) return FINITES_ORIENTATION;
  PLANE_MATRIX planes;
  set_link_blocks(components(spring.k), planes);
  MEMBER_FRAME frame{};
  for (int a = 0; a < 3; ++a) {
    for (int i = 0; i < 3; ++i) frame.axes(a + 1, i + 1) = spring.axes[a][i];
  }
  double T[ENTRIES];
  rotation_of_member(frame, T);
  write_or_turn_link(planes, !global, T, K);
  return FINITES_OK;
}

// F := K u.
finites_status multiply(const double* K, const double* u, double* F) {
  const finites_status numbers = check_member_numbers(u, MEMBER_DOFS);
  if (numbers != FINITES_OK) return numbers;
  double f[MEMBER_DOFS] = {};
  for (int j = 0; j < MEMBER_DOFS; ++j) {
    for (int i = 0; i < MEMBER_DOFS; ++i) f[i] += K[MEMBER_DOFS * j + i] * u[j];
  }
  return hand_over(f, MEMBER_DOFS, F);
}

}  // namespace

void finites_link_init(finites_link* link) {
  if (link != nullptr) *link = finites_link{};
}

void finites_spring_init(finites_spring* spring) {
  if (spring != nullptr) *spring = finites_spring{};
}

finites_status finites_link_stiffness(const finites_link* link, double* K) {
  if (link == nullptr || K == nullptr) return FINITES_NULL;
  double k[ENTRIES];
  const finites_status status = set_link(*link, k);
  return status == FINITES_OK ? hand_over(k, ENTRIES, K) : status;
}

finites_status finites_link_forces(const finites_link* link, const double* u, double* F) {
  if (link == nullptr || u == nullptr || F == nullptr) return FINITES_NULL;
  double k[ENTRIES];
  const finites_status status = set_link(*link, k);
  return status == FINITES_OK ? multiply(k, u, F) : status;
}

finites_status finites_spring_stiffness(const finites_spring* spring, double* K) {
  if (spring == nullptr || K == nullptr) return FINITES_NULL;
  double k[ENTRIES];
  const finites_status status = set_spring(*spring, k);
  return status == FINITES_OK ? hand_over(k, ENTRIES, K) : status;
}

finites_status finites_spring_forces(const finites_spring* spring, const double* u, double* F) {
  if (spring == nullptr || u == nullptr || F == nullptr) return FINITES_NULL;
  double k[ENTRIES];
  const finites_status status = set_spring(*spring, k);
  return status == FINITES_OK ? multiply(k, u, F) : status;
}
