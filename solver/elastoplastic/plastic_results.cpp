// plastic_results.cpp: results of yielding plates in the form of the library's records.
//
// Operation 5 shows the tangent times a displacement, which after yielding is no stress. The records are therefore
// filled here, in the same columns, from the stored state; the values at the nodes are carried out from the points as
// the library does it.
#include <algorithm>
#include <array>

#include "elastoplastic/elastoplastic.h"
#include "elastoplastic/plastic_system.h"
#include "finites/fields.h"
#include "model/result_columns.h"
#include "system/ranks.h"

namespace solver {

namespace {

constexpr int NODES = 4;
using shares = double[NODES][SURFACE_POINTS];

// The linear function of a triangle through its points, and the bilinear one of a quadrilateral.
constexpr double OWN_3 = 23.0 / 12, OTHER_3 = -7.0 / 12;
constexpr double ROOT_3_BY_2 = 0.86602540378443865;
constexpr shares TRIANGLE = {
    {0.25, OWN_3, OTHER_3, OTHER_3}, {0.25, OTHER_3, OWN_3, OTHER_3}, {0.25, OTHER_3, OTHER_3, OWN_3}, {0, 0, 0, 0}};
constexpr shares QUADRILATERAL = {{1 + ROOT_3_BY_2, -0.5, 1 - ROOT_3_BY_2, -0.5},
                                  {-0.5, 1 + ROOT_3_BY_2, -0.5, 1 - ROOT_3_BY_2},
                                  {1 - ROOT_3_BY_2, -0.5, 1 + ROOT_3_BY_2, -0.5},
                                  {-0.5, 1 - ROOT_3_BY_2, -0.5, 1 + ROOT_3_BY_2}};

using point_record = std::array<double, RES_LENGTH>;
using point_records = std::array<point_record, SURFACE_POINTS>;

point_record record_of(const point_values& v) {
  point_record r{};
  const auto put = [&](int column, double value) { r[subscript(column - 1)] = value; };
  for (std::size_t s = 0; s < SURFACES; ++s) {
    const std::size_t face = SURFACES - 1 - s;  // records go from the top down
    for (int i = 0; i < 3; ++i) {
      put(STRESS_COLUMN[s] + i, v.stress[face](i + 1));
      put(PLASTIC_COLUMN[s] + i, v.plastic[face](i + 1));
    }
  }
  for (int i = 0; i < 6; ++i) put(COL_FORCES + i, v.force(i + 1));
  for (int i = 0; i < 2; ++i) {
    put(COL_SHEAR_FORCE + i, v.force(7 + i));
    put(COL_SHEAR_STRESS + i, v.shear_stress[subscript(i)]);
    put(COL_PLASTIC_SHEAR + i, v.plastic_shear[subscript(i)]);
  }
  return r;
}

point_records carried_out(const point_records& points, const shares& share) {
  point_records nodes{};
  for (std::size_t n = 0; n < NODES; ++n) {
    for (std::size_t p = 0; p < SURFACE_POINTS; ++p) {
      for (std::size_t i = 0; i < RES_LENGTH; ++i) nodes[n][i] += share[n][p] * points[p][i];
    }
  }
  return nodes;
}

}  // namespace

step_results recover_plastic_results(const model& m, library_model& library, plastic_system& system,
                                     const static_solution& solution) {
  const plastic_plates& plates = system.plates();
  point_records points{}, nodes{};
  std::vector<double> equivalent(m.elements.size(), 0.0);
  step_results all =
      recover_results(m, library, solution, [&](std::size_t e, const element_vector& u) -> element_results {
        if (!plates.yields(e)) return library.plates().results(e, u, solution.loads.element[e]);
        for (int q = 1; q <= SURFACE_POINTS; ++q) {
          const point_values v = plates.values(e, q, u);
          points[subscript(q - 1)] = record_of(v);
          equivalent[e] = std::max(equivalent[e], v.equivalent);
        }
        nodes = carried_out(points, m.elements[e].nodes.size() == 3 ? TRIANGLE : QUADRILATERAL);
        return {nodes[0].data(), points[0].data()};
      });
  sum_over_ranks(equivalent);  // each has one part that is not 0
  for (std::size_t e = 0; e < all.elements.size(); ++e) all.elements[e].equivalent_plastic = equivalent[e];
  all.yielding = true;
  return all;
}

}  // namespace solver
