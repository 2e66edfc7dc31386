// batches_test.cpp: batches give the bits of the single calls of their elements, for every width of lanes that this
// machine has; on an error nothing is written.
#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <thread>

#include "batch_support.h"
#include "finites/elements.h"
#include "gtest/gtest.h"
#include "plain_calls/batch_stiffness.h"
#include "plate_subjects.h"

namespace {

using batches::expect_single_answers;
using batches::reals;
using std::int64_t;

constexpr int64_t COUNT = 37;  // no multiple of a width
constexpr int THEORIES[] = {FINITES_THICK, FINITES_THIN, FINITES_MEMBRANE, FINITES_MEMBRANE_REDUCED};

std::string name_of(int nodes, int theory) {
  return std::to_string(nodes) + " nodes, theory " + std::to_string(theory);
}

// Stiffness with lanes of a width, and by the routine that chooses one.
void expect_plate_stiffness(const batches::plate_batch& b, const std::string& name) {
  const int64_t size = b.plates.common.nodes == 3 ? 18 * 18 : 24 * 24;
  const auto single = [&](int64_t e, double* K) {
    const finites_plate plate = b.element(e);
    return finites_plate_stiffness(&plate, K);
  };
  for (const LANE_KERNELS* const kernels : batches::widths()) {
    expect_single_answers(
        b.plates.count, size,
        [&](int64_t begin, int64_t end, double* K, int64_t stride) {
          return stiffness_of_plates(&b.plates, {begin, end, nullptr}, K, stride, *kernels);
        },
        single, name + ", " + std::to_string(kernels->width) + " lanes");
  }
  expect_single_answers(
      b.plates.count, size,
      [&](int64_t begin, int64_t end, double* K, int64_t stride) {
        return finites_plates_stiffness(&b.plates, begin, end, K, stride, nullptr);
      },
      single, name);
}

}  // namespace

TEST(PlateBatches, StiffnessHasTheBitsOfSingleCalls) {
  for (const int nodes : {3, 4}) {
    for (const int theory : THEORIES) {
      expect_plate_stiffness(batches::random_plates(nodes, theory, false, COUNT, 11), name_of(nodes, theory));
    }
  }
}

// Ordinary plates and bricks stay in the lanes: their kernels and checks ask for no single call.
TEST(Lanes, TakeOrdinaryElements) {
  for (const LANE_KERNELS* const kernels : batches::widths()) {
    for (const int nodes : {3, 4}) {
      const batches::plate_batch b = batches::random_plates(nodes, FINITES_THICK, false, 8, 25);
      const finites_plates& p = b.plates;
      const PLATE_LANES lanes{{p.xyz.first, p.xyz.stride}, {p.thickness.first, 1}, {p.E.first, 2}, {p.nu.first, 1},
                              {p.density.first, 1},        {1.0, 1.0, 1.0, 1.0}};
      reals K(8 * 576, 0.0);
      const LANE_OUTPUT out{K.data(), 576, false};
      EXPECT_TRUE((nodes == 3 ? kernels->check_triangle : kernels->check_quadrilateral)(lanes));
      for (const PLATE_LANES_KERNEL kernel :
           nodes == 3 ? std::vector<PLATE_LANES_KERNEL>{kernels->thin_triangle, kernels->thick_triangle,
                                                        kernels->membrane_triangle}
                      : std::vector<PLATE_LANES_KERNEL>{kernels->thin_quadrilateral, kernels->thick_quadrilateral,
                                                        kernels->membrane_quadrilateral}) {
        EXPECT_TRUE(kernel(lanes, out));
      }
      EXPECT_NE(K[0], 0.0);
    }
  }
}

TEST(PlateBatches, OffsetsGoThroughSingleCalls) {
  for (const int nodes : {3, 4}) {
    expect_plate_stiffness(batches::random_plates(nodes, FINITES_THICK, true, COUNT, 12), name_of(nodes, 0));
  }
}

// Zeros of either sign in coordinates and offsets: the corners are nodes plus offsets.
TEST(PlateBatches, NegativeZerosCountAsInSingleCalls) {
  for (const int nodes : {3, 4}) {
    for (const int theory : THEORIES) {
      batches::plate_batch b = batches::random_plates(nodes, theory, false, COUNT, 13);
      const finites_plate flat = subjects::rectangle(nodes, theory, 2.0, 1.0);
      for (std::size_t e = 0; e < COUNT; ++e) {
        double* const xyz = &b.xyz[e * static_cast<std::size_t>(3 * nodes + 2)];
        for (int i = 0; i < 3 * nodes; ++i) {
          const double x = (&flat.xyz[0][0])[i];
          xyz[i] = x == 0.0 && (static_cast<int>(e) + i) % 3 == 0 ? -0.0 : x * (i % 3 == 1 ? -1.0 : 1.0);
        }
        if (e % 2 == 0) {  // turned over, so that the normal of each points to the other side
          for (int m = 0; m < nodes; ++m) std::swap(xyz[3 * m], xyz[3 * m + 1]);
        }
      }
      expect_plate_stiffness(b, name_of(nodes, theory));
    }
  }
}

TEST(PlateBatches, SharedArraysRepeat) {
  batches::plate_batch b = batches::random_plates(4, FINITES_THIN, false, COUNT, 14);
  b.plates.thickness = {nullptr, 0};
  b.plates.E.stride = 0;
  b.plates.offset = {nullptr, 0};
  const auto single = [&](int64_t e, double* K) {
    finites_plate plate = b.element(e);
    plate.thickness = b.plates.common.thickness;
    plate.E = b.E[0];
    std::fill_n(&plate.offset[0][0], 12, 0.0);
    return finites_plate_stiffness(&plate, K);
  };
  std::fill_n(&b.plates.common.offset[0][0], 12, 0.0);
  expect_single_answers(
      COUNT, 576,
      [&](int64_t begin, int64_t end, double* K, int64_t stride) {
        return finites_plates_stiffness(&b.plates, begin, end, K, stride, nullptr);
      },
      single, "shared arrays");
}

TEST(PlateBatches, OtherCallsHaveTheBitsOfSingleCalls) {
  for (const int nodes : {3, 4}) {
    const batches::plate_batch b = batches::random_plates(nodes, FINITES_THICK, true, 9, 15);
    const int64_t order = 6 * nodes;
    const finites_reals u = b.vectors_u(), loads = b.loads(), t = b.temperatures(), none = {nullptr, 0};
    const auto compare = [&](const char* name, int64_t size, auto batch, auto single) {
      expect_single_answers(
          9, size,
          [&](int64_t begin, int64_t end, double* out, int64_t stride) { return batch(begin, end, out, stride); },
          [&](int64_t e, double* out) {
            const finites_plate plate = b.element(e);
            return single(plate, e, out);
          },
          name);
    };
    const auto at = [](const finites_reals& r, int64_t e) { return r.first + e * r.stride; };
    const finites_plates* const p = &b.plates;
    compare(
        "mass", order * order,
        [&](int64_t i, int64_t j, double* M, int64_t s) { return finites_plates_mass(p, i, j, M, s, nullptr); },
        [&](const finites_plate& q, int64_t, double* M) { return finites_plate_mass(&q, M); });
    compare(
        "geometric", order * order,
        [&](int64_t i, int64_t j, double* K, int64_t s) { return finites_plates_geometric(p, i, j, u, K, s, nullptr); },
        [&](const finites_plate& q, int64_t e, double* K) { return finites_plate_geometric(&q, at(u, e), K); });
    compare(
        "forces", order,
        [&](int64_t i, int64_t j, double* F, int64_t s) { return finites_plates_forces(p, i, j, u, F, s, nullptr); },
        [&](const finites_plate& q, int64_t e, double* F) { return finites_plate_forces(&q, at(u, e), F); });
    compare(
        "surface load", order,
        [&](int64_t i, int64_t j, double* F, int64_t s) {
          return finites_plates_surface_load(p, i, j, loads, none, F, s, nullptr);
        },
        [&](const finites_plate& q, int64_t e, double* F) {
          return finites_plate_surface_load(&q, at(loads, e), nullptr, F);
        });
    compare(
        "body load", order,
        [&](int64_t i, int64_t j, double* F, int64_t s) {
          return finites_plates_body_load(p, i, j, loads, F, s, nullptr);
        },
        [&](const finites_plate& q, int64_t e, double* F) { return finites_plate_body_load(&q, at(loads, e), F); });
    compare(
        "temperature load", order,
        [&](int64_t i, int64_t j, double* F, int64_t s) {
          return finites_plates_temperature_load(p, i, j, t, F, s, nullptr);
        },
        [&](const finites_plate& q, int64_t e, double* F) {
          return finites_plate_temperature_load(&q, at(t, e)[0], at(t, e)[1], F);
        });
  }
}

TEST(PlateBatches, RecordsHaveTheBitsOfSingleCalls) {
  const batches::plate_batch b = batches::random_plates(4, FINITES_THICK, true, 9, 16);
  std::vector<finites_plate_measures> measures(9), measure(9);
  std::vector<finites_plate_results> results(9), result(9);
  const finites_reals u = b.vectors_u(), t = b.temperatures();
  std::memset(results.data(), 0, 9 * sizeof results[0]);
  std::memset(result.data(), 0, 9 * sizeof result[0]);
  ASSERT_EQ(finites_plates_measure(&b.plates, 2, 8, measures.data(), nullptr), FINITES_OK);
  ASSERT_EQ(finites_plates_result(&b.plates, 2, 8, u, t, results.data(), nullptr), FINITES_OK);
  for (int64_t e = 2; e < 8; ++e) {
    const finites_plate plate = b.element(e);
    const auto i = static_cast<std::size_t>(e);
    ASSERT_EQ(finites_plate_measure(&plate, &measure[i]), FINITES_OK);
    ASSERT_EQ(finites_plate_result(&plate, u.first + e * u.stride, t.first + e * t.stride, &result[i]), FINITES_OK);
  }
  EXPECT_EQ(std::memcmp(measures.data(), measure.data(), 9 * sizeof measure[0]), 0);
  EXPECT_EQ(std::memcmp(results.data(), result.data(), 9 * sizeof result[0]), 0);
}

TEST(SolidBatches, HaveTheBitsOfSingleCalls) {
  for (const int nodes : {4, 6, 8}) {
    const batches::solid_batch b = batches::random_solids(nodes, COUNT, 17);
    const finites_solids* const s = &b.solids;
    const finites_reals u = b.vectors_u();
    const int64_t order = 3 * nodes;
    const auto compare = [&](const std::string& name, int64_t size, auto batch, auto single) {
      expect_single_answers(
          COUNT, size,
          [&](int64_t begin, int64_t end, double* out, int64_t stride) { return batch(begin, end, out, stride); },
          [&](int64_t e, double* out) {
            const finites_solid solid = b.element(e);
            return single(solid, u.first + e * u.stride, out);
          },
          name + ", " + std::to_string(nodes) + " nodes");
    };
    const auto stiffness = [](const finites_solid& q, const double*, double* K) {
      return finites_solid_stiffness(&q, K);
    };
    for (const LANE_KERNELS* const kernels : batches::widths()) {
      compare(
          "stiffness in " + std::to_string(kernels->width), order * order,
          [&](int64_t i, int64_t j, double* K, int64_t stride) {
            return stiffness_of_solids(s, {i, j, nullptr}, K, stride, *kernels);
          },
          stiffness);
    }
    compare(
        "stiffness", order * order,
        [&](int64_t i, int64_t j, double* K, int64_t t) { return finites_solids_stiffness(s, i, j, K, t, nullptr); },
        stiffness);
    compare(
        "mass", order * order,
        [&](int64_t i, int64_t j, double* M, int64_t t) { return finites_solids_mass(s, i, j, M, t, nullptr); },
        [](const finites_solid& q, const double*, double* M) { return finites_solid_mass(&q, M); });
    compare(
        "geometric", order * order,
        [&](int64_t i, int64_t j, double* K, int64_t t) { return finites_solids_geometric(s, i, j, u, K, t, nullptr); },
        [](const finites_solid& q, const double* v, double* K) { return finites_solid_geometric(&q, v, K); });
    compare(
        "body load", order,
        [&](int64_t i, int64_t j, double* F, int64_t t) { return finites_solids_body_load(s, i, j, u, F, t, nullptr); },
        [](const finites_solid& q, const double* v, double* F) { return finites_solid_body_load(&q, v, F); });
    compare(
        "temperature load", order,
        [&](int64_t i, int64_t j, double* F, int64_t t) {
          return finites_solids_temperature_load(s, i, j, u, F, t, nullptr);
        },
        [](const finites_solid& q, const double* v, double* F) { return finites_solid_temperature_load(&q, *v, F); });
    compare(
        "forces", order,
        [&](int64_t i, int64_t j, double* F, int64_t t) { return finites_solids_forces(s, i, j, u, F, t, nullptr); },
        [](const finites_solid& q, const double* v, double* F) { return finites_solid_forces(&q, v, F); });
  }
}

TEST(BeamBatches, HaveTheBitsOfSingleCalls) {
  const batches::beam_batch b = batches::random_beams(COUNT, 18);
  const finites_beams* const p = &b.beams;
  const finites_reals u = b.vectors_u(), axial = b.forces();
  const auto compare = [&](const char* name, int64_t size, auto batch, auto single) {
    expect_single_answers(
        COUNT, size,
        [&](int64_t begin, int64_t end, double* out, int64_t stride) { return batch(begin, end, out, stride); },
        [&](int64_t e, double* out) {
          const finites_beam beam = b.element(e);
          return single(beam, e, out);
        },
        name);
  };
  compare(
      "stiffness", 144,
      [&](int64_t i, int64_t j, double* K, int64_t s) { return finites_beams_stiffness(p, i, j, K, s, nullptr); },
      [](const finites_beam& q, int64_t, double* K) { return finites_beam_stiffness(&q, K); });
  for (const int lumped : {0, 1}) {
    compare(
        "mass", 144,
        [&](int64_t i, int64_t j, double* M, int64_t s) { return finites_beams_mass(p, i, j, lumped, M, s, nullptr); },
        [&](const finites_beam& q, int64_t, double* M) { return finites_beam_mass(&q, lumped, M); });
  }
  compare(
      "geometric", 144,
      [&](int64_t i, int64_t j, double* K, int64_t s) {
        return finites_beams_geometric_of_force(p, i, j, axial, K, s, nullptr);
      },
      [&](const finites_beam& q, int64_t e, double* K) {
        return finites_beam_geometric_of_force(&q, axial.first[e], K);
      });
  compare(
      "geometric of displacements", 144,
      [&](int64_t i, int64_t j, double* K, int64_t s) { return finites_beams_geometric(p, i, j, u, K, s, nullptr); },
      [&](const finites_beam& q, int64_t e, double* K) { return finites_beam_geometric(&q, u.first + 12 * e, K); });
  compare(
      "forces", 12,
      [&](int64_t i, int64_t j, double* F, int64_t s) { return finites_beams_forces(p, i, j, u, F, s, nullptr); },
      [&](const finites_beam& q, int64_t e, double* F) { return finites_beam_forces(&q, u.first + 12 * e, F); });
}

namespace {

struct truss_batch {
  std::vector<finites_truss> elements;
  reals u, axial;
  finites_trusses trusses{};
};

truss_batch random_trusses(unsigned seed) {
  support::seeded_random random(seed);
  truss_batch b;
  for (int64_t e = 0; e < COUNT; ++e) {
    finites_truss t = plain_members::random_truss(random);
    if (e > 0) t.expansion = b.elements[0].expansion;
    t.density = random.uniform(1.0, 9.0);
    t.pretension = random.uniform(-1.0, 1.0);
    b.elements.push_back(t);
    const reals u = random.vector(6, 1e-3);
    b.u.insert(b.u.end(), u.begin(), u.end());
    b.axial.push_back(random.uniform(-1.0, 1.0));
  }
  constexpr int64_t STRIDE = sizeof(finites_truss) / sizeof(double);
  const finites_truss& first = b.elements[0];
  b.trusses.common = first;
  b.trusses.count = COUNT;
  b.trusses.xyz = {&first.xyz[0][0], STRIDE};
  b.trusses.E = {&first.E, STRIDE};
  b.trusses.area = {&first.area, STRIDE};
  b.trusses.density = {&first.density, STRIDE};
  b.trusses.pretension = {&first.pretension, STRIDE};
  return b;
}

}  // namespace

TEST(TrussBatches, HaveTheBitsOfSingleCalls) {
  const truss_batch b = random_trusses(25);
  const finites_trusses* const p = &b.trusses;
  const finites_reals u = {b.u.data(), 6}, axial = {b.axial.data(), 1};
  const auto compare = [&](const char* name, int64_t size, auto batch, auto single) {
    expect_single_answers(
        COUNT, size,
        [&](int64_t begin, int64_t end, double* out, int64_t stride) { return batch(begin, end, out, stride); },
        [&](int64_t e, double* out) { return single(&b.elements[static_cast<std::size_t>(e)], e, out); }, name);
  };
  compare(
      "stiffness", 36,
      [&](int64_t i, int64_t j, double* K, int64_t s) { return finites_trusses_stiffness(p, i, j, K, s, nullptr); },
      [](const finites_truss* q, int64_t, double* K) { return finites_truss_stiffness(q, K); });
  for (const int lumped : {0, 1}) {
    compare(
        "mass", 36,
        [&](int64_t i, int64_t j, double* M, int64_t s) {
          return finites_trusses_mass(p, i, j, lumped, M, s, nullptr);
        },
        [&](const finites_truss* q, int64_t, double* M) { return finites_truss_mass(q, lumped, M); });
  }
  compare(
      "geometric", 36,
      [&](int64_t i, int64_t j, double* K, int64_t s) {
        return finites_trusses_geometric_of_force(p, i, j, axial, K, s, nullptr);
      },
      [&](const finites_truss* q, int64_t e, double* K) {
        return finites_truss_geometric_of_force(q, axial.first[e], K);
      });
  compare(
      "forces", 6,
      [&](int64_t i, int64_t j, double* F, int64_t s) { return finites_trusses_forces(p, i, j, u, F, s, nullptr); },
      [&](const finites_truss* q, int64_t e, double* F) { return finites_truss_forces(q, u.first + 6 * e, F); });
}

TEST(TrussBatches, TheTrussAtFaultIsToldAndNothingWritten) {
  const struct {
    finites_status status;
    void (*spoil)(finites_truss&);
  } faults[] = {{FINITES_NAN, [](finites_truss& t) { t.xyz[1][1] = std::numeric_limits<double>::quiet_NaN(); }},
                {FINITES_RANGE, [](finites_truss& t) { t.pretension = 2e30; }},
                {FINITES_MODULUS, [](finites_truss& t) { t.E = 0.0; }},
                {FINITES_DENSITY, [](finites_truss& t) { t.density = -1.0; }},
                {FINITES_SECTION, [](finites_truss& t) { t.area = 0.0; }},
                {FINITES_COINCIDENT, [](finites_truss& t) { std::copy_n(t.xyz[0], 3, t.xyz[1]); }}};
  for (const auto& fault : faults) {
    for (const int64_t at : {int64_t{0}, int64_t{7}, COUNT - 1}) {
      truss_batch b = random_trusses(26);
      fault.spoil(b.elements[static_cast<std::size_t>(at)]);
      reals K(36 * COUNT, 0.5);
      int64_t failed = -2;
      EXPECT_EQ(finites_trusses_stiffness(&b.trusses, 0, COUNT, K.data(), 36, &failed), fault.status);
      EXPECT_EQ(failed, at);
      EXPECT_EQ(std::count(K.begin(), K.end(), 0.5), static_cast<std::ptrdiff_t>(K.size()));
    }
  }
  truss_batch b = random_trusses(27);
  reals K(36 * COUNT, 0.5);
  int64_t failed = -2;
  EXPECT_EQ(finites_trusses_mass(&b.trusses, 0, COUNT, 2, K.data(), 36, &failed), FINITES_BAD_CODE);
  EXPECT_EQ(failed, -1);
  EXPECT_EQ(finites_trusses_stiffness(&b.trusses, 0, COUNT + 1, K.data(), 36, &failed), FINITES_RANGE);
  EXPECT_EQ(finites_trusses_stiffness(&b.trusses, 0, COUNT, K.data(), 35, &failed), FINITES_RANGE);
  EXPECT_EQ(finites_trusses_stiffness(nullptr, 0, 1, K.data(), 36, &failed), FINITES_NULL);
  EXPECT_EQ(finites_trusses_forces(&b.trusses, 0, 1, {nullptr, 0}, K.data(), 6, &failed), FINITES_NULL);
  b.trusses.area.stride = -1;
  EXPECT_EQ(finites_trusses_stiffness(&b.trusses, 0, COUNT, K.data(), 36, &failed), FINITES_RANGE);
  EXPECT_EQ(std::count(K.begin(), K.end(), 0.5), static_cast<std::ptrdiff_t>(K.size()));
}

// Matrices that no cache holds leave past the caches, two reals at a time, from places that are multiples of 16 bytes;
// from a place of 8 more, or where an odd stride puts every second matrix at one, they go through the caches. What lies
// before and between the matrices stays as it is.
namespace {

constexpr double UNTOUCHED = 1234.5;

void expect_large(std::int64_t count, std::int64_t size,
                  const std::function<finites_status(double*, std::int64_t, const LANE_KERNELS&)>& batch,
                  const std::function<finites_status(std::int64_t, double*)>& single) {
  ASSERT_GT(count * size * 8, STREAMED_BYTES);
  reals expected(static_cast<std::size_t>(count * size));
  for (std::int64_t e = 0; e < count; ++e) {
    ASSERT_EQ(single(e, &expected[static_cast<std::size_t>(e * size)]), FINITES_OK);
  }
  for (const LANE_KERNELS* const kernels : batches::widths()) {
    for (const std::int64_t stride : {size, size + 1, size + 2}) {
      for (const std::int64_t shift : {0, 1}) {
        SCOPED_TRACE(std::to_string(kernels->width) + " lanes, stride " + std::to_string(stride) + ", place " +
                     std::to_string(shift));
        reals out(static_cast<std::size_t>(count * stride + shift), UNTOUCHED);
        ASSERT_EQ(batch(out.data() + shift, stride, *kernels), FINITES_OK);
        for (std::int64_t e = 0; e < count; ++e) {
          const double* const K = out.data() + shift + e * stride;
          ASSERT_EQ(std::memcmp(K, &expected[static_cast<std::size_t>(e * size)],
                                static_cast<std::size_t>(size) * sizeof(double)),
                    0)
              << e;
          for (std::int64_t i = size; i < stride; ++i) ASSERT_EQ(K[i], UNTOUCHED) << e;
        }
        for (std::int64_t i = 0; i < shift; ++i) ASSERT_EQ(out[static_cast<std::size_t>(i)], UNTOUCHED);
      }
    }
  }
}

}  // namespace

TEST(PlateBatches, LargeBatchesHaveTheBitsOfSingleCalls) {
  for (const int nodes : {3, 4}) {
    const std::int64_t size = nodes == 3 ? 18 * 18 : 24 * 24, many = nodes == 3 ? 3300 : 1900;
    const batches::plate_batch b = batches::random_plates(nodes, FINITES_THICK, false, many, 19);
    expect_large(
        many, size,
        [&](double* K, std::int64_t stride, const LANE_KERNELS& kernels) {
          return stiffness_of_plates(&b.plates, {0, many, nullptr}, K, stride, kernels);
        },
        [&](std::int64_t e, double* K) {
          const finites_plate plate = b.element(e);
          return finites_plate_stiffness(&plate, K);
        });
  }
}

TEST(SolidBatches, LargeBatchesHaveTheBitsOfSingleCalls) {
  constexpr std::int64_t MANY = 1900;
  const batches::solid_batch b = batches::random_solids(8, MANY, 21);
  expect_large(
      MANY, 576,
      [&](double* K, std::int64_t stride, const LANE_KERNELS& kernels) {
        return stiffness_of_solids(&b.solids, {0, MANY, nullptr}, K, stride, kernels);
      },
      [&](std::int64_t e, double* K) {
        const finites_solid solid = b.element(e);
        return finites_solid_stiffness(&solid, K);
      });
}

TEST(PlateBatches, FourThreadsGiveTheBitsOfOne) {
  const batches::plate_batch b = batches::random_plates(4, FINITES_THICK, false, 101, 20);
  reals one(101 * 576), four(101 * 576);
  ASSERT_EQ(finites_plates_stiffness(&b.plates, 0, 101, one.data(), 576, nullptr), FINITES_OK);
  const int64_t cuts[] = {0, 13, 50, 51, 101};
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back(
        [&, t] { finites_plates_stiffness(&b.plates, cuts[t], cuts[t + 1], four.data(), 576, nullptr); });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(std::memcmp(one.data(), four.data(), one.size() * sizeof(double)), 0);
}

// ------------------------------------------------------------------------------------------------ errors

namespace {

// A fault in one element: its status, its number, and no value written.
template <class SPOIL>
void expect_fault(int nodes, finites_status status, SPOIL spoil) {
  for (const int64_t at : {int64_t{0}, int64_t{5}, int64_t{20}, COUNT - 1}) {
    for (const LANE_KERNELS* const kernels : batches::widths()) {
      batches::plate_batch b = batches::random_plates(nodes, FINITES_THICK, false, COUNT, 21);
      spoil(b, static_cast<std::size_t>(at));
      const finites_plate plate = b.element(at);
      reals K(576 * COUNT, 0.5);
      int64_t failed = -2;
      EXPECT_EQ(finites_plate_stiffness(&plate, K.data()), status);
      EXPECT_EQ(stiffness_of_plates(&b.plates, {0, COUNT, &failed}, K.data(), 576, *kernels), status);
      EXPECT_EQ(failed, at);
      EXPECT_EQ(std::count(K.begin(), K.end(), 0.5), static_cast<std::ptrdiff_t>(K.size()));
      EXPECT_EQ(finites_plates_mass(&b.plates, 0, COUNT, K.data(), 576, &failed), status);
      EXPECT_EQ(failed, at);
      if (at > 5) {
        EXPECT_EQ(stiffness_of_plates(&b.plates, {0, 5, &failed}, K.data(), 576, *kernels), FINITES_OK);
        EXPECT_EQ(failed, -1);
      }
    }
  }
}

}  // namespace

TEST(BatchFaults, TheElementAtFaultIsToldAndNothingWritten) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  for (const int nodes : {3, 4}) {
    const auto row = [nodes](std::size_t e) { return e * static_cast<std::size_t>(3 * nodes + 2); };
    expect_fault(nodes, FINITES_NAN, [&](auto& b, std::size_t e) { b.xyz[row(e) + 4] = nan; });
    expect_fault(nodes, FINITES_RANGE, [&](auto& b, std::size_t e) { b.xyz[row(e) + 4] = 2e30; });
    expect_fault(nodes, FINITES_THICKNESS, [](auto& b, std::size_t e) { b.thickness[e] = 0.0; });
    expect_fault(nodes, FINITES_MODULUS, [](auto& b, std::size_t e) { b.E[2 * e] = -1.0; });
    expect_fault(nodes, FINITES_POISSON, [](auto& b, std::size_t e) { b.nu[e] = 0.51; });
    expect_fault(nodes, FINITES_DENSITY, [](auto& b, std::size_t e) { b.density[e] = -1.0; });
    expect_fault(nodes, FINITES_COINCIDENT,
                 [&](auto& b, std::size_t e) { std::copy_n(&b.xyz[row(e)], 3, &b.xyz[row(e) + 3]); });
    expect_fault(nodes, FINITES_DEGENERATE, [&](auto& b, std::size_t e) {  // the last node on the side of the first two
      for (std::size_t i = 0; i < 3; ++i) {
        const double first = b.xyz[row(e) + i], second = b.xyz[row(e) + 3 + i];
        b.xyz[row(e) + static_cast<std::size_t>(3 * nodes - 3) + i] = 0.25 * first + 0.75 * second;
      }
    });
  }
}

TEST(BatchFaults, CommonDataCountForAllElements) {
  batches::plate_batch b = batches::random_plates(4, FINITES_THICK, false, COUNT, 22);
  reals K(576 * COUNT, 0.5);
  int64_t failed = -2;
  const auto status = [&](auto spoil) {
    finites_plates plates = b.plates;
    spoil(plates.common);
    return finites_plates_stiffness(&plates, 3, COUNT, K.data(), 576, &failed);
  };
  EXPECT_EQ(status([](finites_plate& p) { p.nodes = 5; }), FINITES_NODES);
  EXPECT_EQ(failed, 3);
  EXPECT_EQ(status([](finites_plate& p) { p.theory = 7; }), FINITES_BAD_CODE);
  EXPECT_EQ(status([](finites_plate& p) { p.bending_factor = -1.0; }), FINITES_FACTOR);
  EXPECT_EQ(status([](finites_plate& p) { p.orthotropic = 2; }), FINITES_BAD_CODE);
  EXPECT_EQ(failed, 3);
  EXPECT_EQ(std::count(K.begin(), K.end(), 0.5), static_cast<std::ptrdiff_t>(K.size()));
}

TEST(BatchFaults, RangesAndStridesMustBeSome) {
  batches::plate_batch b = batches::random_plates(4, FINITES_THICK, false, COUNT, 23);
  reals K(576 * COUNT, 0.5);
  int64_t failed = -2;
  const auto status = [&](int64_t begin, int64_t end, int64_t stride) {
    return finites_plates_stiffness(&b.plates, begin, end, K.data(), stride, &failed);
  };
  EXPECT_EQ(status(-1, 3, 576), FINITES_RANGE);
  EXPECT_EQ(failed, -1);
  EXPECT_EQ(status(3, 2, 576), FINITES_RANGE);
  EXPECT_EQ(status(0, COUNT + 1, 576), FINITES_RANGE);
  EXPECT_EQ(status(0, COUNT, 575), FINITES_RANGE);
  EXPECT_EQ(status(4, 4, 576), FINITES_OK);
  EXPECT_EQ(finites_plates_stiffness(nullptr, 0, 1, K.data(), 576, &failed), FINITES_NULL);
  EXPECT_EQ(finites_plates_stiffness(&b.plates, 0, 1, nullptr, 576, &failed), FINITES_NULL);
  EXPECT_EQ(finites_plates_forces(&b.plates, 0, 1, {nullptr, 0}, K.data(), 24, &failed), FINITES_NULL);
  b.plates.E.stride = -2;
  EXPECT_EQ(status(0, COUNT, 576), FINITES_RANGE);
  EXPECT_EQ(std::count(K.begin(), K.end(), 0.5), static_cast<std::ptrdiff_t>(K.size()));
}

TEST(BatchFaults, AnInvertedBrickIsTold) {
  for (const LANE_KERNELS* const kernels : batches::widths()) {
    batches::solid_batch b = batches::random_solids(8, COUNT, 24);
    for (std::size_t i = 0; i < 12; ++i) std::swap(b.xyz[25 * 21 + i], b.xyz[25 * 21 + 12 + i]);
    reals K(576 * COUNT, 0.5);
    int64_t failed = -2;
    EXPECT_EQ(stiffness_of_solids(&b.solids, {0, COUNT, &failed}, K.data(), 576, *kernels), FINITES_DEGENERATE);
    EXPECT_EQ(failed, 21);
    EXPECT_EQ(std::count(K.begin(), K.end(), 0.5), static_cast<std::ptrdiff_t>(K.size()));
  }
}

TEST(Lanes, AreTheWidestOfThisMachine) {
  EXPECT_EQ(finites_lanes(), batches::widths().back()->width);
  EXPECT_EQ(batches::widths().front()->width, 2);
}
