// batch_beams.cpp: finites_beams_...: the plain calls of many beams.
//
// The stiffness of beams without releases and offsets is computed for several elements side by side (lanes/).
// Everything else goes element by element.
#include <algorithm>

#include "finites/elements.h"
#include "frame_elements/member_axes.h"
#include "plain_calls/batch.h"
#include "plain_calls/batch_stiffness.h"
#include "plain_calls/plain_beam.h"

finites_beam element_of(const finites_beams& beams, std::int64_t e) {
  finites_beam beam = beams.common;
  take(beams.xyz, e, 6, &beam.xyz[0][0]);
  take(beams.up, e, 3, beam.up);
  take(beams.offset, e, 6, &beam.offset[0][0]);
  take(beams.E, e, 1, &beam.E);
  take(beams.G, e, 1, &beam.G);
  take(beams.density, e, 1, &beam.density);
  take(beams.area, e, 1, &beam.area);
  take(beams.Iz, e, 1, &beam.Iz);
  take(beams.Iy, e, 1, &beam.Iy);
  take(beams.J, e, 1, &beam.J);
  return beam;
}

bool strides_stand(const finites_beams& b) {
  return std::min({b.xyz.stride, b.up.stride, b.offset.stride, b.E.stride, b.G.stride, b.density.stride, b.area.stride,
                   b.Iz.stride, b.Iy.stride, b.J.stride}) >= 0;
}

namespace {

constexpr int ORDER = 12;

// Whether a beam surely has a geometric stiffness: the closed form of semi-rigid ends may divide by zero
// (frame_elements/beam_geometric.cpp).
bool surely_has_geometric(const finites_beam& b) {
  for (int end = 0; end < 2; ++end) {
    if (semi_rigid(b.fixity_y[end]) || semi_rigid(b.fixity_z[end])) return false;
  }
  return surely_reads(b);
}

// The call of every beam, with answers of `count` reals; given: the `size` reals of an element that it takes, or none;
// sure(beam): whether it succeeds for ordinary ones.
template <class CALL>
finites_status beams_with(const finites_beams* beams, const BATCH_RANGE& range, const finites_reals& given, int size,
                          double* out, std::int64_t stride, int count, bool (*sure)(const finites_beam&), CALL call) {
  const finites_status strides = check_stride(range, stride, count);
  if (strides != FINITES_OK) return fault_at(range, -1, strides);
  return run_single_calls(
      *beams, range, out, stride,
      [&](const finites_beam& beam, std::int64_t e) { return ordinary(reals_of(given, e), size) && sure(beam); }, call);
}

// Likewise of matrices: where all beams surely succeed, write(beam, description, to) makes them without more checks.
template <class CALL, class WRITE>
finites_status matrices_of(const finites_beams* beams, const BATCH_RANGE& range, double* out, std::int64_t stride,
                           CALL call, WRITE write) {
  std::int64_t first = range.begin;
  while (first < range.end && surely_reads(element_of(*beams, first))) ++first;
  if (first < range.end || check_stride(range, stride, ORDER * ORDER) != FINITES_OK) {
    return beams_with(beams, range, NO_REALS, 0, out, stride, ORDER * ORDER, surely_reads, call);
  }
  return for_elements(*beams, range, [&](const finites_beam& description, std::int64_t e) {
    PLAIN_BEAM beam;
    const finites_status status = fill_beam(description, beam);
    return status != FINITES_OK ? status : write(beam, description, out + e * stride);
  });
}

// ------------------------------------------------------------------------------------------------ in lanes

bool all_zero(const double* values, int count) {
  return std::all_of(values, values + count, [](double x) { return x == 0.0; });
}

// The beams from e on.
BEAM_LANES lanes_from(const finites_beams& beams, std::int64_t e) {
  const finites_beam& common = beams.common;
  return {lane_input(beams.xyz, &common.xyz[0][0], e),
          lane_input(beams.up, common.up, e),
          lane_input(beams.E, &common.E, e),
          lane_input(beams.G, &common.G, e),
          lane_input(beams.density, &common.density, e),
          lane_input(beams.area, &common.area, e),
          lane_input(beams.Iz, &common.Iz, e),
          lane_input(beams.Iy, &common.Iy, e),
          lane_input(beams.J, &common.J, e),
          &common,
          beams.up.first == nullptr && all_zero(common.up, 3)};
}

// Whether the lanes have the formulas of these beams, and what all beams share is surely good.
bool fit_lanes(const finites_beams& beams, const BATCH_RANGE& range, int width) {
  const finites_beam& b = beams.common;
  return range.end - range.begin >= width && beams.offset.first == nullptr && all_zero(&b.offset[0][0], 6) &&
         b.release_axial == 0 && b.release_y == 0 && b.release_z == 0 && b.release_torsion == 0 &&
         surely_reads(element_of(beams, range.begin));
}

finites_status check_stiffness(const finites_beams& beams, const BATCH_RANGE& range) {
  return for_elements(beams, range, [](const finites_beam& beam, std::int64_t) {
    double tried[ORDER * ORDER];
    return surely_reads(beam) ? FINITES_OK : finites_beam_stiffness(&beam, tried);
  });
}

}  // namespace

finites_status stiffness_of_beams(const finites_beams* beams, const BATCH_RANGE& range, double* K, std::int64_t stride,
                                  const LANE_KERNELS& kernels) {
  const finites_status given = check_batch(beams, range, K);
  if (given != FINITES_OK) return fault_at(range, -1, given);
  const auto single = [](const finites_beam& beam, std::int64_t, double* to) {
    return finites_beam_stiffness(&beam, to);
  };
  if (!fit_lanes(*beams, range, kernels.width)) {
    return matrices_of(beams, range, K, stride, single, [](const PLAIN_BEAM& beam, const finites_beam&, double* to) {
      return write_stiffness(beam, to);
    });
  }
  const finites_status apart = check_stride(range, stride, ORDER * ORDER);
  if (apart != FINITES_OK) return fault_at(range, -1, apart);
  const finites_status status = check_groups(
      range, kernels.width, [&](std::int64_t e) { return kernels.check_beam(lanes_from(*beams, e)); },
      [&](const BATCH_RANGE& part) { return check_stiffness(*beams, part); });
  if (status != FINITES_OK) return status;
  const LANE_OUTPUT out = lane_output(K, stride, range, ORDER);
  write_groups(
      range, kernels.width, [&](std::int64_t e) { return kernels.beam(lanes_from(*beams, e), output_from(out, e)); },
      [&](std::int64_t e) { (void)single(element_of(*beams, e), e, K + e * stride); });
  finish_streams(out);
  return FINITES_OK;
}

finites_status finites_beams_stiffness(const finites_beams* beams, int64_t begin, int64_t end, double* K,
                                       int64_t stride, int64_t* failed) {
  return stiffness_of_beams(beams, {begin, end, failed}, K, stride, widest_lanes());
}

finites_status finites_beams_mass(const finites_beams* beams, int64_t begin, int64_t end, int32_t lumped, double* M,
                                  int64_t stride, int64_t* failed) {
  const BATCH_RANGE range{begin, end, failed};
  const finites_status status =
      first_of(check_batch(beams, range, M), lumped == 0 || lumped == 1 ? FINITES_OK : FINITES_BAD_CODE);
  if (status != FINITES_OK) return fault_at(range, -1, status);
  return matrices_of(
      beams, range, M, stride,
      [=](const finites_beam& beam, std::int64_t, double* to) { return finites_beam_mass(&beam, lumped, to); },
      [=](const PLAIN_BEAM& beam, const finites_beam& description, double* to) {
        write_mass(beam, description.density, description.J, lumped == 1, to);
        return FINITES_OK;
      });
}

finites_status finites_beams_geometric_of_force(const finites_beams* beams, int64_t begin, int64_t end,
                                                finites_reals axial, double* KG, int64_t stride, int64_t* failed) {
  const BATCH_RANGE range{begin, end, failed};
  const finites_status status = check_batch(beams, range, axial.first == nullptr ? nullptr : KG, {axial.stride});
  if (status != FINITES_OK) return fault_at(range, -1, status);
  return beams_with(beams, range, axial, 1, KG, stride, ORDER * ORDER, surely_has_geometric,
                    [&](const finites_beam& beam, std::int64_t e, double* to) {
                      return finites_beam_geometric_of_force(&beam, *reals_of(axial, e), to);
                    });
}

finites_status finites_beams_geometric(const finites_beams* beams, int64_t begin, int64_t end, finites_reals u,
                                       double* KG, int64_t stride, int64_t* failed) {
  const BATCH_RANGE range{begin, end, failed};
  const finites_status status = check_batch(beams, range, u.first == nullptr ? nullptr : KG, {u.stride});
  if (status != FINITES_OK) return fault_at(range, -1, status);
  return beams_with(beams, range, u, ORDER, KG, stride, ORDER * ORDER, surely_has_geometric,
                    [&](const finites_beam& beam, std::int64_t e, double* to) {
                      return finites_beam_geometric(&beam, reals_of(u, e), to);
                    });
}

finites_status finites_beams_forces(const finites_beams* beams, int64_t begin, int64_t end, finites_reals u, double* F,
                                    int64_t stride, int64_t* failed) {
  const BATCH_RANGE range{begin, end, failed};
  const finites_status status = check_batch(beams, range, u.first == nullptr ? nullptr : F, {u.stride});
  if (status != FINITES_OK) return fault_at(range, -1, status);
  return beams_with(beams, range, u, ORDER, F, stride, ORDER, surely_reads,
                    [&](const finites_beam& beam, std::int64_t e, double* to) {
                      return finites_beam_forces(&beam, reals_of(u, e), to);
                    });
}

int32_t finites_lanes(void) { return widest_lanes().width; }
