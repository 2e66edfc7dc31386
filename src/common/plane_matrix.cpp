// plane_matrix.cpp: symmetric matrices of a member by the planes in which it acts.
#include "common/plane_matrix.h"

#include <cstdint>
#include <initializer_list>

#include "common/clear.h"
#include "common/lanes.h"
#include "common/member_order.h"

namespace {

// Calls act(i, j) for every entry of the lower triangle.
template <class ACTION>
void for_each_entry(const ACTION& act) {
  for (int d = 1; d <= MEMBER_DOFS; ++d) act(d, d);
  for (int d = 1; d <= MEMBER_DOFS / 2; ++d) act(d + 6, d);
  act(6, 2), act(5, 3), act(12, 8), act(11, 9);  // rotations by translations of the same end
  act(12, 2), act(8, 6), act(11, 3), act(9, 5);  // and of the other end
}

// Axial force and bending in x-z have odd degrees of freedom, torsion and bending in x-y even ones: 0 where no odd one
// couples with an even one.
std::uint64_t odd_with_even(const double* K) {
  LANE_BITS odd{};
  LANE_BITS even{};
  for (int j = 0; j < MEMBER_DOFS; j += 2) {
    for (int i = 0; i < MEMBER_DOFS; i += 2) {
      odd = odd | bits_of(lanes_at(K + MEMBER_DOFS * j + i));
      even = even | bits_of(lanes_at(K + MEMBER_DOFS * (j + 1) + i));
    }
  }
  return static_cast<std::uint64_t>(odd[1] | even[0]);
}

// The pairs with the fours of the same parity, and both triangles with each other.
std::uint64_t pairs_with_fours(MATRIX_VIEW<MEMBER_DOFS, const double> K) {
  std::uint64_t set = 0;
  const auto add = [&](int i, int j) { set |= bits_of(K(i, j)) | bits_of(K(j, i)); };
  for (const int d : {1, 7}) add(d, 3), add(d, 5), add(d, 9), add(d, 11);
  for (const int d : {4, 10}) add(d, 2), add(d, 6), add(d, 8), add(d, 12);
  for_each_entry([&](int i, int j) { set |= bits_of(K(i, j)) ^ bits_of(K(j, i)); });
  return set;
}

}  // namespace

void write_planes(const PLANE_MATRIX& P, double* K) {
  clear(K, MEMBER_DOFS * MEMBER_DOFS);
  const MATRIX_VIEW<MEMBER_DOFS> KV(K);
  for_each_entry([&](int i, int j) { KV(i, j) = KV(j, i) = P(i, j); });
}

bool read_planes(const double* K, PLANE_MATRIX& P) {
  const MATRIX_VIEW<MEMBER_DOFS, const double> KV(K);
  for_each_entry([&](int i, int j) { P(i, j) = KV(i, j); });
  return all_finite(P) && (odd_with_even(K) | pairs_with_fours(KV)) == 0;
}
