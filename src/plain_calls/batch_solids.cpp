// batch_solids.cpp: finites_solids_...: the plain calls of many solids.
//
// The stiffness of bricks is computed for several elements side by side (lanes/). Everything else goes element by
// element.
#include <algorithm>

#include "finites/elements.h"
#include "finites/services.h"
#include "plain_calls/batch.h"
#include "plain_calls/batch_stiffness.h"
#include "plain_calls/solid_input.h"

finites_solid element_of(const finites_solids& solids, std::int64_t e) {
  finites_solid solid = solids.common;
  take(solids.xyz, e, 3 * std::clamp(solid.nodes, 0, 8), &solid.xyz[0][0]);
  take(solids.E, e, 1, &solid.E);
  take(solids.nu, e, 1, &solid.nu);
  take(solids.density, e, 1, &solid.density);
  return solid;
}

bool strides_stand(const finites_solids& s) {
  return std::min({s.xyz.stride, s.E.stride, s.nu.stride, s.density.stride}) >= 0;
}

namespace {

constexpr int MOST_LANES = 8;

int order_of(const finites_solids& solids) { return 3 * std::clamp(solids.common.nodes, 4, 8); }

// A solid that passes its checks, of numbers of ordinary size: its Jacobians are not below a limit, so that nothing
// overflows.
bool sure(const finites_solid& solid) {
  const double constants[] = {solid.E, solid.density, solid.expansion, solid.stiffness_factor};
  SOLID_CALL S;
  return ordinary(constants, 4) && ordinary(&solid.xyz[0][0], 3 * std::clamp(solid.nodes, 0, 8)) &&
         prepare_solid_input(solid, S) == FINITES_OK;
}

// The call of every element, with answers of `count` reals; given: the `size` reals of an element that it takes, or
// none. They are read last: how many there are is known of elements with a node count of solids alone.
template <class CALL>
finites_status solids_with(const finites_solids* solids, const BATCH_RANGE& range, const finites_reals& given, int size,
                           double* out, std::int64_t stride, int count, CALL call) {
  const finites_status strides = check_stride(range, stride, count);
  if (strides != FINITES_OK) return fault_at(range, -1, strides);
  return run_single_calls(
      *solids, range, out, stride,
      [&](const finites_solid& solid, std::int64_t e) { return sure(solid) && ordinary(reals_of(given, e), size); },
      call);
}

// ------------------------------------------------------------------------------------------------ in lanes

// The bricks from e on.
SOLID_LANES lanes_from(const finites_solids& solids, std::int64_t e) {
  const finites_solid& common = solids.common;
  return {lane_input(solids.xyz, &common.xyz[0][0], e),
          {nullptr, 0},
          lane_input(solids.E, &common.E, e),
          lane_input(solids.nu, &common.nu, e),
          lane_input(solids.density, &common.density, e),
          common.stiffness_factor,
          linear_kind(BRICK_8)};
}

// Their matrices; the axes are asked of the common library. False where a matrix is not finite.
bool bricks_in_lanes(const finites_solids& solids, std::int64_t e, const LANE_KERNELS& kernels,
                     const LANE_OUTPUT& out) {
  constexpr std::int32_t NODES = 8;
  double axes[9 * MOST_LANES];
  SOLID_LANES lanes = lanes_from(solids, e);
  for (int l = 0; l < kernels.width; ++l) {
    SOLIDELEM_AXE_DBL(&NODES, lanes.xyz.first + l * lanes.xyz.stride, axes + 9 * l);
  }
  lanes.axes = {axes, 9};
  return kernels.brick(lanes, output_from(out, e));
}

// Whether the stiffness of every element can be computed.
finites_status check_stiffness(const finites_solids& solids, const BATCH_RANGE& range) {
  return for_elements(solids, range, [](const finites_solid& solid, std::int64_t) {
    double tried[24 * 24];
    return sure(solid) ? FINITES_OK : finites_solid_stiffness(&solid, tried);
  });
}

// The same of bricks. What all share is checked with the first, which the lanes do not look at again.
finites_status check_bricks(const finites_solids& solids, const BATCH_RANGE& range, const LANE_KERNELS& kernels) {
  const auto check = [&](const BATCH_RANGE& part) { return check_stiffness(solids, part); };
  if (range.end - range.begin < kernels.width || !sure(element_of(solids, range.begin))) return check(range);
  const auto passes = [&](std::int64_t e) { return kernels.check_brick(lanes_from(solids, e)); };
  return check_groups(range, kernels.width, passes, check);
}

}  // namespace

finites_status stiffness_of_solids(const finites_solids* solids, const BATCH_RANGE& range, double* K,
                                   std::int64_t stride, const LANE_KERNELS& kernels) {
  finites_status status = check_batch(solids, range, K);
  if (status == FINITES_OK) status = check_stride(range, stride, order_of(*solids) * order_of(*solids));
  if (status != FINITES_OK) return fault_at(range, -1, status);
  const bool bricks = solids->common.nodes == 8;
  status = bricks ? check_bricks(*solids, range, kernels) : check_stiffness(*solids, range);
  if (status != FINITES_OK) return status;

  const LANE_OUTPUT out = lane_output(K, stride, range, order_of(*solids));
  write_groups(
      range, kernels.width, [&](std::int64_t e) { return bricks && bricks_in_lanes(*solids, e, kernels, out); },
      [&](std::int64_t e) {
        const finites_solid solid = element_of(*solids, e);
        (void)finites_solid_stiffness(&solid, K + e * stride);
      });
  finish_streams(out);
  return FINITES_OK;
}

finites_status finites_solids_stiffness(const finites_solids* solids, int64_t begin, int64_t end, double* K,
                                        int64_t stride, int64_t* failed) {
  return stiffness_of_solids(solids, {begin, end, failed}, K, stride, widest_lanes());
}

// ------------------------------------------------------------------------------------------------ one by one

finites_status finites_solids_mass(const finites_solids* solids, int64_t begin, int64_t end, double* M, int64_t stride,
                                   int64_t* failed) {
  const BATCH_RANGE range{begin, end, failed};
  const finites_status status = check_batch(solids, range, M);
  if (status != FINITES_OK) return fault_at(range, -1, status);
  return solids_with(
      solids, range, NO_REALS, 0, M, stride, order_of(*solids) * order_of(*solids),
      [](const finites_solid& solid, std::int64_t, double* to) { return finites_solid_mass(&solid, to); });
}

finites_status finites_solids_geometric(const finites_solids* solids, int64_t begin, int64_t end, finites_reals u,
                                        double* KG, int64_t stride, int64_t* failed) {
  const BATCH_RANGE range{begin, end, failed};
  const finites_status status = check_batch(solids, range, u.first == nullptr ? nullptr : KG, {u.stride});
  if (status != FINITES_OK) return fault_at(range, -1, status);
  return solids_with(solids, range, u, order_of(*solids), KG, stride, order_of(*solids) * order_of(*solids),
                     [&](const finites_solid& solid, std::int64_t e, double* to) {
                       return finites_solid_geometric(&solid, reals_of(u, e), to);
                     });
}

finites_status finites_solids_forces(const finites_solids* solids, int64_t begin, int64_t end, finites_reals u,
                                     double* F, int64_t stride, int64_t* failed) {
  const BATCH_RANGE range{begin, end, failed};
  const finites_status status = check_batch(solids, range, u.first == nullptr ? nullptr : F, {u.stride});
  if (status != FINITES_OK) return fault_at(range, -1, status);
  return solids_with(solids, range, u, order_of(*solids), F, stride, order_of(*solids),
                     [&](const finites_solid& solid, std::int64_t e, double* to) {
                       return finites_solid_forces(&solid, reals_of(u, e), to);
                     });
}

finites_status finites_solids_body_load(const finites_solids* solids, int64_t begin, int64_t end, finites_reals load,
                                        double* F, int64_t stride, int64_t* failed) {
  const BATCH_RANGE range{begin, end, failed};
  const finites_status status = check_batch(solids, range, load.first == nullptr ? nullptr : F, {load.stride});
  if (status != FINITES_OK) return fault_at(range, -1, status);
  return solids_with(solids, range, load, 3, F, stride, order_of(*solids),
                     [&](const finites_solid& solid, std::int64_t e, double* to) {
                       return finites_solid_body_load(&solid, reals_of(load, e), to);
                     });
}

finites_status finites_solids_temperature_load(const finites_solids* solids, int64_t begin, int64_t end,
                                               finites_reals change, double* F, int64_t stride, int64_t* failed) {
  const BATCH_RANGE range{begin, end, failed};
  const finites_status status = check_batch(solids, range, change.first == nullptr ? nullptr : F, {change.stride});
  if (status != FINITES_OK) return fault_at(range, -1, status);
  return solids_with(solids, range, change, 1, F, stride, order_of(*solids),
                     [&](const finites_solid& solid, std::int64_t e, double* to) {
                       return finites_solid_temperature_load(&solid, *reals_of(change, e), to);
                     });
}

finites_status finites_solids_result(const finites_solids* solids, int64_t begin, int64_t end, finites_reals u,
                                     double temperature, finites_solid_results* results, int64_t* failed) {
  const BATCH_RANGE range{begin, end, failed};
  const finites_status status = check_batch(solids, range, u.first == nullptr ? nullptr : results, {u.stride});
  if (status != FINITES_OK) return fault_at(range, -1, status);
  return run_single_calls(
      *solids, range, results, 1,
      [&](const finites_solid& solid, std::int64_t e) {
        return ordinary(&temperature, 1) && sure(solid) && ordinary(reals_of(u, e), order_of(*solids));
      },
      [&](const finites_solid& solid, std::int64_t e, finites_solid_results* to) {
        return finites_solid_result(&solid, reals_of(u, e), temperature, to);
      });
}
