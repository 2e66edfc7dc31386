// batch_trusses.cpp: finites_trusses_...: the plain calls of many trusses, element by element.
#include <algorithm>
#include <cmath>

#include "finites/elements.h"
#include "plain_calls/batch.h"
#include "plain_calls/lanes/beam_limits.h"

finites_truss element_of(const finites_trusses& trusses, std::int64_t e) {
  finites_truss truss = trusses.common;
  take(trusses.xyz, e, 6, &truss.xyz[0][0]);
  take(trusses.E, e, 1, &truss.E);
  take(trusses.area, e, 1, &truss.area);
  take(trusses.density, e, 1, &truss.density);
  take(trusses.pretension, e, 1, &truss.pretension);
  return truss;
}

bool strides_stand(const finites_trusses& t) {
  return std::min({t.xyz.stride, t.E.stride, t.area.stride, t.density.stride, t.pretension.stride}) >= 0;
}

namespace {

constexpr int TRUSS_ORDER = 6;

// Whether a call surely succeeds: by limits within which no check can fail.
bool sure(const finites_truss& t) {
  const double numbers[] = {t.E, t.area, t.density, t.expansion, t.pretension};
  if (!ordinary(numbers, 5) || !ordinary(&t.xyz[0][0], 6)) return false;
  if (!(t.E > SURE_LIMITS::SMALL && t.area > SURE_LIMITS::SMALL && t.density >= 0.0)) return false;
  double square = 0.0, largest = 0.0;
  for (int i = 0; i < 3; ++i) {
    const double along = t.xyz[1][i] - t.xyz[0][i];
    square += along * along;
    largest = std::max({largest, std::fabs(t.xyz[0][i]), std::fabs(t.xyz[1][i])});
  }
  const double apart = SURE_LIMITS::APART * largest;
  return square > SURE_LIMITS::SHORT * SURE_LIMITS::SHORT && square > apart * apart;
}

// The call of every truss, with answers of `count` reals; given: the `size` reals of an element that it takes, or none.
template <class CALL>
finites_status trusses_with(const finites_trusses* trusses, const BATCH_RANGE& range, const finites_reals& given,
                            int size, double* out, std::int64_t stride, int count, CALL call) {
  const bool without = size > 0 && given.first == nullptr;
  finites_status status = check_batch(trusses, range, without ? nullptr : out, {given.stride});
  if (status == FINITES_OK) status = check_stride(range, stride, count);
  if (status != FINITES_OK) return fault_at(range, -1, status);
  return run_single_calls(
      *trusses, range, out, stride,
      [&](const finites_truss& truss, std::int64_t e) { return ordinary(reals_of(given, e), size) && sure(truss); },
      call);
}

}  // namespace

finites_status finites_trusses_stiffness(const finites_trusses* trusses, int64_t begin, int64_t end, double* K,
                                         int64_t stride, int64_t* failed) {
  return trusses_with(
      trusses, {begin, end, failed}, NO_REALS, 0, K, stride, TRUSS_ORDER * TRUSS_ORDER,
      [](const finites_truss& truss, std::int64_t, double* to) { return finites_truss_stiffness(&truss, to); });
}

finites_status finites_trusses_mass(const finites_trusses* trusses, int64_t begin, int64_t end, int32_t lumped,
                                    double* M, int64_t stride, int64_t* failed) {
  const BATCH_RANGE range{begin, end, failed};
  if (lumped != 0 && lumped != 1) {
    const finites_status given = check_batch(trusses, range, M);
    return fault_at(range, -1, first_of(given, FINITES_BAD_CODE));
  }
  return trusses_with(
      trusses, range, NO_REALS, 0, M, stride, TRUSS_ORDER * TRUSS_ORDER,
      [=](const finites_truss& truss, std::int64_t, double* to) { return finites_truss_mass(&truss, lumped, to); });
}

finites_status finites_trusses_geometric_of_force(const finites_trusses* trusses, int64_t begin, int64_t end,
                                                  finites_reals axial, double* KG, int64_t stride, int64_t* failed) {
  return trusses_with(trusses, {begin, end, failed}, axial, 1, KG, stride, TRUSS_ORDER * TRUSS_ORDER,
                      [&](const finites_truss& truss, std::int64_t e, double* to) {
                        return finites_truss_geometric_of_force(&truss, *reals_of(axial, e), to);
                      });
}

finites_status finites_trusses_forces(const finites_trusses* trusses, int64_t begin, int64_t end, finites_reals u,
                                      double* F, int64_t stride, int64_t* failed) {
  return trusses_with(trusses, {begin, end, failed}, u, TRUSS_ORDER, F, stride, TRUSS_ORDER,
                      [&](const finites_truss& truss, std::int64_t e, double* to) {
                        return finites_truss_forces(&truss, reals_of(u, e), to);
                      });
}
