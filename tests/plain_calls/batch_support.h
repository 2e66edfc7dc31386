// batch_support.h: random batches for the tests, and the comparison of a batch with the calls of its elements.
#ifndef FINITES_TESTS_BATCH_SUPPORT_H
#define FINITES_TESTS_BATCH_SUPPORT_H

#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "finites/elements.h"
#include "plain_calls/lanes/lane_kernels.h"

namespace batches {

using reals = std::vector<double>;

// The widths of lanes that this machine has.
std::vector<const LANE_KERNELS*> widths();

// `count` elements whose data lie in the arrays of the owner: those of a row further apart than they are long.
struct plate_batch {
  finites_plates plates;
  reals xyz, thickness, E, nu, density, offset, u, load, temperature;
  finites_plate element(std::int64_t e) const;
  finites_reals vectors_u() const;
  finites_reals loads() const;
  finites_reals temperatures() const;
};
plate_batch random_plates(int nodes, int theory, bool offsets, std::int64_t count, unsigned seed);

struct solid_batch {
  finites_solids solids;
  reals xyz, E, nu, u;
  finites_solid element(std::int64_t e) const;
  finites_reals vectors_u() const;
};
solid_batch random_solids(int nodes, std::int64_t count, unsigned seed);

struct beam_batch {
  finites_beams beams;
  reals xyz, up, E, G, area, Iz, Iy, J, u, axial;
  finites_beam element(std::int64_t e) const;
  finites_reals vectors_u() const;
  finites_reals forces() const;
};
beam_batch random_beams(std::int64_t count, unsigned seed);

// A batch call of elements begin to end - 1, and the single call of element e.
using batch_call =
    std::function<finites_status(std::int64_t begin, std::int64_t end, double* out, std::int64_t stride)>;
using single_call = std::function<finites_status(std::int64_t e, double* out)>;

// Expects the answers of `size` reals of the single calls, bit by bit, for whole batches, parts of them and strides,
// and everything between and beside them untouched.
void expect_single_answers(std::int64_t count, std::int64_t size, const batch_call& batch, const single_call& single,
                           const std::string& what);

}  // namespace batches

#endif
