// batch_support.cpp: random batches, and the comparison of a batch with the calls of its elements.
#include "batch_support.h"

#include <algorithm>
#include <array>

#include "gtest/gtest.h"
#include "member_cases.h"
#include "plate_subjects.h"
#include "random_shapes.h"
#include "solids_support.h"

namespace batches {

namespace {

constexpr double UNTOUCHED = -7.25e77;

finites_reals array_of(const reals& values, std::int64_t stride) { return {values.data(), stride}; }

void append(reals& to, const double* from, int count, int gap) {
  to.insert(to.end(), from, from + count);
  to.insert(to.end(), static_cast<std::size_t>(gap), UNTOUCHED);
}

// The answers of elements begin to end - 1 in a row with a margin before and after it.
void expect_part(std::int64_t begin, std::int64_t end, std::int64_t stride, std::int64_t size, const batch_call& batch,
                 const reals& expected, const std::string& what) {
  constexpr std::int64_t MARGIN = 3;  // leaves the answers off the boundaries of wide vectors
  reals out(static_cast<std::size_t>(2 * MARGIN + end * stride + 1), UNTOUCHED);
  reals wanted = out;
  for (std::int64_t e = begin; e < end; ++e) {
    std::copy_n(&expected[static_cast<std::size_t>(e * size)], size,
                &wanted[static_cast<std::size_t>(MARGIN + e * stride)]);
  }
  ASSERT_EQ(batch(begin, end, out.data() + MARGIN, stride), FINITES_OK) << what;
  for (std::size_t i = 0; i < out.size(); ++i) {
    ASSERT_EQ(std::memcmp(&out[i], &wanted[i], sizeof(double)), 0)
        << what << ": elements " << begin << " to " << end << ", stride " << stride << ", value "
        << static_cast<std::int64_t>(i) - MARGIN << ": " << out[i] << " and " << wanted[i];
  }
}

}  // namespace

std::vector<const LANE_KERNELS*> widths() {
  std::vector<const LANE_KERNELS*> all;
  for (const int width : {2, 4, 8}) {
    if (const LANE_KERNELS* const kernels = lane_kernels(width)) all.push_back(kernels);
  }
  return all;
}

void expect_single_answers(std::int64_t count, std::int64_t size, const batch_call& batch, const single_call& single,
                           const std::string& what) {
  reals expected(static_cast<std::size_t>(count * size));
  for (std::int64_t e = 0; e < count; ++e) {
    ASSERT_EQ(single(e, &expected[static_cast<std::size_t>(e * size)]), FINITES_OK) << what << ", element " << e;
  }
  for (const std::int64_t stride : {size, size + 1, size + 6}) {
    expect_part(0, count, stride, size, batch, expected, what);
    expect_part(1, count - 2, stride, size, batch, expected, what);
  }
  for (const std::int64_t begin : {std::int64_t{0}, std::int64_t{5}, count}) {
    for (std::int64_t end = begin; end <= std::min(count, begin + 3); ++end) {
      expect_part(begin, end, size, size, batch, expected, what);
    }
  }
}

// ------------------------------------------------------------------------------------------------ plates

plate_batch random_plates(int nodes, int theory, bool offsets, std::int64_t count, unsigned seed) {
  support::seeded_random random(seed);
  plate_batch b;
  const subjects::plate_kind kind{nodes, theory, subjects::behaviour::isotropic, offsets};
  finites_plate plate{};
  for (std::int64_t e = 0; e < count; ++e) {
    plate = subjects::as_numbers(subjects::random_plate(random, kind));
    append(b.xyz, &plate.xyz[0][0], 3 * nodes, 2);
    append(b.offset, &plate.offset[0][0], 3 * nodes, 0);
    b.thickness.push_back(plate.thickness);
    append(b.E, &plate.E, 1, 1);
    b.nu.push_back(plate.nu);
    b.density.push_back(plate.density);
    const reals u = subjects::random_displacements(random, nodes);
    append(b.u, u.data(), 6 * nodes, 1);
    const reals more = random.vector(5, 1.0);
    append(b.load, more.data(), 3, 0);
    append(b.temperature, more.data() + 3, 2, 0);
  }
  b.plates.common = plate;
  b.plates.count = count;
  b.plates.xyz = array_of(b.xyz, 3 * nodes + 2);
  b.plates.offset = array_of(b.offset, 3 * nodes);
  b.plates.thickness = array_of(b.thickness, 1);
  b.plates.E = array_of(b.E, 2);
  b.plates.nu = array_of(b.nu, 1);
  b.plates.density = array_of(b.density, 1);
  b.plates.angle = {nullptr, 0};
  return b;
}

finites_plate plate_batch::element(std::int64_t e) const {
  finites_plate plate = plates.common;
  const int corners = 3 * plate.nodes;
  const auto at = static_cast<std::size_t>(e);
  std::copy_n(&xyz[at * static_cast<std::size_t>(corners + 2)], corners, &plate.xyz[0][0]);
  std::copy_n(&offset[at * static_cast<std::size_t>(corners)], corners, &plate.offset[0][0]);
  plate.thickness = thickness[at];
  plate.E = E[2 * at];
  plate.nu = nu[at];
  plate.density = density[at];
  return plate;
}

finites_reals plate_batch::vectors_u() const { return array_of(u, 6 * plates.common.nodes + 1); }
finites_reals plate_batch::loads() const { return array_of(load, 3); }
finites_reals plate_batch::temperatures() const { return array_of(temperature, 2); }

// ------------------------------------------------------------------------------------------------ solids

solid_batch random_solids(int nodes, std::int64_t count, unsigned seed) {
  support::seeded_random random(seed);
  solid_batch b;
  finites_solid solid{};
  for (std::int64_t e = 0; e < count; ++e) {
    solid = plain_solids::random_solid(random, nodes);
    append(b.xyz, &solid.xyz[0][0], 3 * nodes, 1);
    b.E.push_back(solid.E);
    b.nu.push_back(solid.nu);
    const reals u = random.vector(3 * nodes, 1e-3);
    append(b.u, u.data(), 3 * nodes, 0);
  }
  b.solids.common = solid;
  b.solids.count = count;
  b.solids.xyz = array_of(b.xyz, 3 * nodes + 1);
  b.solids.E = array_of(b.E, 1);
  b.solids.nu = array_of(b.nu, 1);
  b.solids.density = {nullptr, 0};
  return b;
}

finites_solid solid_batch::element(std::int64_t e) const {
  finites_solid solid = solids.common;
  const int values = 3 * solid.nodes;
  const auto at = static_cast<std::size_t>(e);
  std::copy_n(&xyz[at * static_cast<std::size_t>(values + 1)], values, &solid.xyz[0][0]);
  solid.E = E[at];
  solid.nu = nu[at];
  return solid;
}

finites_reals solid_batch::vectors_u() const { return array_of(u, 3 * solids.common.nodes); }

// ------------------------------------------------------------------------------------------------ beams

beam_batch random_beams(std::int64_t count, unsigned seed) {
  support::seeded_random random(seed);
  beam_batch b;
  finites_beam beam{};
  for (std::int64_t e = 0; e < count; ++e) {
    beam = plain_members::random_beam(random);
    append(b.xyz, &beam.xyz[0][0], 6, 0);
    append(b.up, beam.up, 3, 0);
    b.E.push_back(beam.E);
    b.G.push_back(beam.G);
    b.area.push_back(beam.area);
    b.Iz.push_back(beam.Iz);
    b.Iy.push_back(beam.Iy);
    b.J.push_back(beam.J);
    const reals u = random.vector(12, 1e-3);
    append(b.u, u.data(), 12, 0);
    b.axial.push_back(random.uniform(-1.0, 1.0));
  }
  b.beams.common = beam;
  b.beams.count = count;
  b.beams.xyz = array_of(b.xyz, 6);
  b.beams.up = array_of(b.up, 3);
  b.beams.offset = {nullptr, 0};
  b.beams.E = array_of(b.E, 1);
  b.beams.G = array_of(b.G, 1);
  b.beams.density = {nullptr, 0};
  b.beams.area = array_of(b.area, 1);
  b.beams.Iz = array_of(b.Iz, 1);
  b.beams.Iy = array_of(b.Iy, 1);
  b.beams.J = array_of(b.J, 1);
  return b;
}

finites_beam beam_batch::element(std::int64_t e) const {
  finites_beam beam = beams.common;
  const auto at = static_cast<std::size_t>(e);
  std::copy_n(&xyz[6 * at], 6, &beam.xyz[0][0]);
  std::copy_n(&up[3 * at], 3, beam.up);
  beam.E = E[at];
  beam.G = G[at];
  beam.area = area[at];
  beam.Iz = Iz[at];
  beam.Iy = Iy[at];
  beam.J = J[at];
  return beam;
}

finites_reals beam_batch::vectors_u() const { return array_of(u, 12); }
finites_reals beam_batch::forces() const { return array_of(axial, 1); }

}  // namespace batches
