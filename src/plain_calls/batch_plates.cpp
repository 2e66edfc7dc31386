// batch_plates.cpp: finites_plates_...: the plain calls of many plates.
//
// The stiffness of isotropic plates without offsets is computed for several elements side by side (lanes/). Everything
// else goes element by element.
#include <algorithm>
#include <cmath>

#include "common/constants.h"
#include "finites/elements.h"
#include "plain_calls/batch.h"
#include "plain_calls/batch_stiffness.h"
#include "plain_calls/plate_calls.h"
#include "plain_calls/plate_checks.h"

finites_plate element_of(const finites_plates& plates, std::int64_t e) {
  finites_plate plate = plates.common;
  const int corners = plate.nodes == 3 ? 9 : 12;
  take(plates.xyz, e, corners, &plate.xyz[0][0]);
  take(plates.offset, e, corners, &plate.offset[0][0]);
  take(plates.thickness, e, 1, &plate.thickness);
  take(plates.E, e, 1, &plate.E);
  take(plates.nu, e, 1, &plate.nu);
  take(plates.density, e, 1, &plate.density);
  take(plates.angle, e, 1, &plate.angle);
  return plate;
}

bool strides_stand(const finites_plates& p) {
  return std::min({p.xyz.stride, p.offset.stride, p.thickness.stride, p.E.stride, p.nu.stride, p.density.stride,
                   p.angle.stride}) >= 0;
}

namespace {

int order_of(const finites_plates& plates) { return plates.common.nodes == 3 ? 18 : 24; }

// A call with answers of `count` reals: checks of a description, of the vectors of an element, and its computation.
template <class CHECK, class COMPUTE>
finites_status plates_with(const finites_plates* plates, const BATCH_RANGE& range, double* out, std::int64_t stride,
                           int count, CHECK check, COMPUTE compute) {
  const finites_status strides = check_stride(range, stride, count);
  if (strides != FINITES_OK) return fault_at(range, -1, strides);
  return run_batch(
      *plates, range,
      [&](const finites_plate& plate, std::int64_t e) { return first_of(check_plate(plate), check(e)); },
      [&](const finites_plate& plate, std::int64_t e) {
        compute(plate, e, out + e * stride);
        return FINITES_OK;
      });
}

finites_status no_vectors(std::int64_t /*e*/) { return FINITES_OK; }

// For an isotropic plate: numbers of ordinary size, no short side.
bool ordinary_plate(const finites_plate& p) {
  constexpr double SHORT = 1e-8;
  const double section[] = {p.thickness,       1.0 / p.thickness, p.E,           p.expansion,
                            p.membrane_factor, p.bending_factor,  p.shear_factor};
  if (p.orthotropic != 0 || !ordinary(section, 7)) return false;
  const PLATE_CORNERS corners(p);
  if (!ordinary(&corners.x[0][0], 12)) return false;
  for (int m = 0; m < p.nodes; ++m) {
    const double* const a = corners.x[m];
    const double* const b = corners.x[m + 1 == p.nodes ? 0 : m + 1];
    if (std::hypot(b[0] - a[0], b[1] - a[1], b[2] - a[2]) < SHORT) return false;
  }
  return true;
}

// ------------------------------------------------------------------------------------------------ in lanes

PLATE_LANES_KERNEL kernel_of(const finites_plate& plate, const LANE_KERNELS& kernels) {
  const bool triangle = plate.nodes == 3;
  switch (plate.theory) {
    case FINITES_THICK: return triangle ? kernels.thick_triangle : kernels.thick_quadrilateral;
    case FINITES_THIN: return triangle ? kernels.thin_triangle : kernels.thin_quadrilateral;
    default: return triangle ? kernels.membrane_triangle : kernels.membrane_quadrilateral;
  }
}

// The elements from e on.
PLATE_LANES lanes_from(const finites_plates& plates, std::int64_t e) {
  const finites_plate& common = plates.common;
  const bool reduced = common.theory == FINITES_MEMBRANE_REDUCED;
  const double axial = reduced ? common.membrane_factor * REDUCED_AXIAL : common.membrane_factor;
  return {lane_input(plates.xyz, &common.xyz[0][0], e),
          lane_input(plates.thickness, &common.thickness, e),
          lane_input(plates.E, &common.E, e),
          lane_input(plates.nu, &common.nu, e),
          lane_input(plates.density, &common.density, e),
          {axial, common.membrane_factor, common.bending_factor, common.shear_factor}};
}

bool has_offsets(const finites_plates& plates, std::int64_t e) {
  const double* const own = reals_of(plates.offset, e);
  const double* const offset = own != nullptr ? own : &plates.common.offset[0][0];
  return std::any_of(offset, offset + 3 * plates.common.nodes, [](double d) { return d != 0.0; });
}

bool any_offsets(const finites_plates& plates, const BATCH_RANGE& range) {
  if (plates.offset.first == nullptr || plates.offset.stride == 0) return has_offsets(plates, 0);
  for (std::int64_t e = range.begin; e < range.end; ++e) {
    if (has_offsets(plates, e)) return true;
  }
  return false;
}

finites_status check_plates(const finites_plates& plates, const BATCH_RANGE& range) {
  return for_elements(plates, range, [](const finites_plate& plate, std::int64_t) { return check_plate(plate); });
}

// The same. What all plates share is checked with the first, which the lanes do not look at again.
finites_status check_in_lanes(const finites_plates& plates, const BATCH_RANGE& range, const LANE_KERNELS& kernels) {
  const PLATE_CHECK_KERNEL pass = plates.common.nodes == 3 ? kernels.check_triangle : kernels.check_quadrilateral;
  if (range.end - range.begin >= kernels.width) {
    const finites_status status = check_plate(element_of(plates, range.begin));
    if (status != FINITES_OK) return fault_at(range, range.begin, status);
  }
  return check_groups(
      range, kernels.width, [&](std::int64_t e) { return pass(lanes_from(plates, e)); },
      [&](const BATCH_RANGE& part) { return check_plates(plates, part); });
}

}  // namespace

finites_status stiffness_of_plates(const finites_plates* plates, const BATCH_RANGE& range, double* K,
                                   std::int64_t stride, const LANE_KERNELS& kernels) {
  finites_status status = check_batch(plates, range, K);
  if (status == FINITES_OK) status = check_stride(range, stride, order_of(*plates) * order_of(*plates));
  if (status != FINITES_OK) return fault_at(range, -1, status);
  const bool in_lanes = plates->common.orthotropic == 0 && !any_offsets(*plates, range);
  status = in_lanes ? check_in_lanes(*plates, range, kernels) : check_plates(*plates, range);
  if (status != FINITES_OK) return status;

  const LANE_OUTPUT out = lane_output(K, stride, range, order_of(*plates));
  const PLATE_LANES_KERNEL kernel = kernel_of(plates->common, kernels);
  write_groups(
      range, kernels.width,
      [&](std::int64_t e) { return in_lanes && kernel(lanes_from(*plates, e), output_from(out, e)); },
      [&](std::int64_t e) { compute_plate_stiffness(element_of(*plates, e), K + e * stride); });
  finish_streams(out);
  return FINITES_OK;
}

finites_status finites_plates_stiffness(const finites_plates* plates, int64_t begin, int64_t end, double* K,
                                        int64_t stride, int64_t* failed) {
  return stiffness_of_plates(plates, {begin, end, failed}, K, stride, widest_lanes());
}

// ------------------------------------------------------------------------------------------------ one by one

finites_status finites_plates_mass(const finites_plates* plates, int64_t begin, int64_t end, double* M, int64_t stride,
                                   int64_t* failed) {
  const BATCH_RANGE range{begin, end, failed};
  const finites_status status = check_batch(plates, range, M);
  if (status != FINITES_OK) return fault_at(range, -1, status);
  const int order = order_of(*plates);
  return plates_with(plates, range, M, stride, order * order, no_vectors,
                     [](const finites_plate& plate, std::int64_t, double* to) { compute_plate_mass(plate, to); });
}

finites_status finites_plates_geometric(const finites_plates* plates, int64_t begin, int64_t end, finites_reals u,
                                        double* KG, int64_t stride, int64_t* failed) {
  const BATCH_RANGE range{begin, end, failed};
  const finites_status status = check_batch(plates, range, u.first == nullptr ? nullptr : KG, {u.stride});
  if (status != FINITES_OK) return fault_at(range, -1, status);
  const int order = order_of(*plates);
  return plates_with(
      plates, range, KG, stride, order * order, [&](std::int64_t e) { return check_reals(reals_of(u, e), order); },
      [&](const finites_plate& plate, std::int64_t e, double* to) {
        compute_plate_geometric(plate, reals_of(u, e), to);
      });
}

finites_status finites_plates_forces(const finites_plates* plates, int64_t begin, int64_t end, finites_reals u,
                                     double* F, int64_t stride, int64_t* failed) {
  const BATCH_RANGE range{begin, end, failed};
  const finites_status status = check_batch(plates, range, u.first == nullptr ? nullptr : F, {u.stride});
  if (status != FINITES_OK) return fault_at(range, -1, status);
  const int order = order_of(*plates);
  return plates_with(
      plates, range, F, stride, order, [&](std::int64_t e) { return check_reals(reals_of(u, e), order); },
      [&](const finites_plate& plate, std::int64_t e, double* to) { compute_plate_forces(plate, reals_of(u, e), to); });
}

finites_status finites_plates_surface_load(const finites_plates* plates, int64_t begin, int64_t end,
                                           finites_reals global, finites_reals local, double* F, int64_t stride,
                                           int64_t* failed) {
  const BATCH_RANGE range{begin, end, failed};
  const finites_status status = check_batch(plates, range, F, {global.stride, local.stride});
  if (status != FINITES_OK) return fault_at(range, -1, status);
  return plates_with(
      plates, range, F, stride, order_of(*plates),
      [&](std::int64_t e) {
        return first_of(check_optional_reals(reals_of(global, e), 3), check_optional_reals(reals_of(local, e), 3));
      },
      [&](const finites_plate& plate, std::int64_t e, double* to) {
        compute_plate_surface_load(plate, reals_of(global, e), reals_of(local, e), to);
      });
}

finites_status finites_plates_body_load(const finites_plates* plates, int64_t begin, int64_t end, finites_reals load,
                                        double* F, int64_t stride, int64_t* failed) {
  const BATCH_RANGE range{begin, end, failed};
  const finites_status status = check_batch(plates, range, load.first == nullptr ? nullptr : F, {load.stride});
  if (status != FINITES_OK) return fault_at(range, -1, status);
  return plates_with(
      plates, range, F, stride, order_of(*plates), [&](std::int64_t e) { return check_reals(reals_of(load, e), 3); },
      [&](const finites_plate& plate, std::int64_t e, double* to) {
        compute_plate_body_load(plate, reals_of(load, e), to);
      });
}

finites_status finites_plates_temperature_load(const finites_plates* plates, int64_t begin, int64_t end,
                                               finites_reals temperature, double* F, int64_t stride, int64_t* failed) {
  const BATCH_RANGE range{begin, end, failed};
  const finites_status status =
      check_batch(plates, range, temperature.first == nullptr ? nullptr : F, {temperature.stride});
  if (status != FINITES_OK) return fault_at(range, -1, status);
  return plates_with(
      plates, range, F, stride, order_of(*plates),
      [&](std::int64_t e) { return check_reals(reals_of(temperature, e), 2); },
      [&](const finites_plate& plate, std::int64_t e, double* to) {
        const double* const t = reals_of(temperature, e);
        compute_plate_temperature_load(plate, t[0], t[1], to);
      });
}

finites_status finites_plates_measure(const finites_plates* plates, int64_t begin, int64_t end,
                                      finites_plate_measures* measures, int64_t* failed) {
  const BATCH_RANGE range{begin, end, failed};
  const finites_status status = check_batch(plates, range, measures);
  if (status != FINITES_OK) return fault_at(range, -1, status);
  return run_batch(
      *plates, range, [](const finites_plate& plate, std::int64_t) { return check_plate(plate); },
      [&](const finites_plate& plate, std::int64_t e) {
        compute_plate_measures(plate, measures[e]);
        return FINITES_OK;
      });
}

// Stresses have squares: of numbers that are not ordinary the results are tried first. No strain is larger than the
// displacements over the squares of the smallest length.
finites_status finites_plates_result(const finites_plates* plates, int64_t begin, int64_t end, finites_reals u,
                                     finites_reals temperature, finites_plate_results* results, int64_t* failed) {
  const BATCH_RANGE range{begin, end, failed};
  const finites_status status =
      check_batch(plates, range, u.first == nullptr ? nullptr : results, {u.stride, temperature.stride});
  if (status != FINITES_OK) return fault_at(range, -1, status);
  return run_single_calls(
      *plates, range, results, 1,
      [&](const finites_plate& plate, std::int64_t e) {
        return ordinary_plate(plate) && ordinary(reals_of(u, e), order_of(*plates)) &&
               ordinary(reals_of(temperature, e), 2) && check_plate(plate) == FINITES_OK;
      },
      [&](const finites_plate& plate, std::int64_t e, finites_plate_results* to) {
        return finites_plate_result(&plate, reals_of(u, e), reals_of(temperature, e), to);
      });
}
