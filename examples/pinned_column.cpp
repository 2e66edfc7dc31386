// pinned_column.cpp: a column that is clamped at its foot and held at its top by a pin, which is a fixity of 0 at the
// end of the last beam: its critical load from the sign of the pivots of K + KG. The exact one is x^2 E I / L^2 with
// tan x = x, 20.191. The geometric stiffness of the pinned beam is condensed by itself: 1.125 P / L across.
//
// Built with -Iinclude; docs/calling.md, "A first program", has the whole command.
#include <cmath>
#include <cstdio>
#include <vector>

#include "finites/builders.h"
#include "finites/finites.h"
#include "small_solve.h"

namespace {

constexpr int exchange = 121, entry = 901, section = 1001, material = 1011, length = 1100;

// Critical loads below P of n beams along x, E I = 1 and L = 1, which bend in the x-y plane.
int loads_below(double P, int n) {
  std::vector<double> A(length);
  finites_fill_header(A.data(), exchange, entry, 90);
  A[SECOND_ORDER - 1] = GEOMETRIC_ADDED;
  finites_fill_section_of_member(A.data(), section, 1, 1, 1, 1);
  finites_fill_material_of_member(A.data(), material, 1, 0.3, 0);
  std::int32_t pos = 1;
  MEMBER_RECORD record;
  finites_fill_member_record(&record, 1.0 / n);
  record.AXIAL_FORCE = -P;
  SOLANAELEM.ELEM_POS = REFER_TO(&pos, 1);
  SOLANAELEM.MEMBER_REC = REFER_TO(&record, 1);
  const double foot[3] = {0, 0, 0}, top[3] = {1, 0, 0}, up[3] = {0, 1, 0};
  double T[144], K[144], KG[144];
  finites_fill_rotation(T, foot, top, up);

  const int free_ones = 2 * (n - 1);  // v and rotation z of the nodes between; the pin has no rotation of its own
  std::vector<double> S(static_cast<std::size_t>(free_ones * free_ones)), f(static_cast<std::size_t>(free_ones));
  for (int e = 0; e < n; ++e) {
    finites_fill_member_block(A.data(), entry, e + 1, section, material, 0, 0);
    if (e == n - 1) A[entry + FIXITY_Z2 - 1] = 0;  // Z: bending in the x-y plane
    const std::int32_t mode = MODE_STEP, elem = 1, I = entry, size = length, second = 0;
    KSTIFB(&mode, &elem, &I, A.data(), &size, T, &second, nullptr, K, KG);
    const int freedom[4] = {1, 5, 7, 11};
    for (int i = 0; i < 4; ++i) {
      for (int j = 0; j < 4; ++j) {
        const int row = 2 * e - 2 + i, column = 2 * e - 2 + j;
        if (row < 0 || column < 0 || row >= free_ones || column >= free_ones) continue;
        S[static_cast<std::size_t>(row * free_ones + column)] += K[freedom[j] * 12 + freedom[i]];
      }
    }
  }
  return small_solve(S.data(), f.data(), free_ones);
}

double critical_load(int n) {
  double low = 0, high = 60;
  for (int pass = 0; pass < 60; ++pass) (loads_below((low + high) / 2, n) > 0 ? high : low) = (low + high) / 2;
  return low;
}

}  // namespace

int main() {
  double x = 4.5;  // tan x = x by Newton's method
  for (int pass = 0; pass < 9; ++pass) x -= (std::sin(x) - x * std::cos(x)) / (x * std::sin(x));
  double error[3];
  for (int i = 0; i < 3; ++i) {
    const int n = 2 << i;
    error[i] = critical_load(n) / (x * x) - 1;
    std::printf("%d beams: P = %.3f E I / L^2, %+.2f %% of the exact %.3f\n", n, critical_load(n), 100 * error[i],
                x * x);
  }
  // From above, with the fourth power of the length of a beam at the least.
  return error[2] > 0 && error[2] < 4e-4 && error[0] > 16 * error[1] && error[1] > 16 * error[2] ? 0 : 1;
}
