// batches.cpp: seeded random elements for the benchmarks.
#include "batches.h"

#include <algorithm>

#include "finites/fields.h"
#include "random_shapes.h"

namespace bench {

namespace {

constexpr unsigned SEED = 20;

bool four_nodes(int kind) { return kind >= KIND_QUAD_THIN; }

int formulation_of(int kind) {
  switch (kind) {
    case KIND_TRI_MEMBRANE:
    case KIND_QUAD_MEMBRANE: return FORMULATION_MEMBRANE_PLASTIC;
    case KIND_TRI_THICK:
    case KIND_QUAD_THICK: return 0;
    default: return FORMULATION_THIN;
  }
}

support::plate_description describe(support::seeded_random& random, const batch_kind& kind) {
  const std::vector<support::point> nodes =
      four_nodes(kind.kind) ? support::random_quadrilateral(random) : support::random_triangle(random);
  support::plate_description description =
      kind.behav == 0 ? support::random_isotropic(random, nodes)
                      : support::random_orthotropic(random, nodes, support::orthotropy::reciprocal);
  description.formulation = formulation_of(kind.kind);
  if (kind.offsets == offset_use::each_node) support::add_random_offsets(random, description);
  return description;
}

// A point of the element near its centroid, then forces.
std::array<double, 12> point_and_force(support::seeded_random& random, const support::plate_description& description) {
  std::array<double, 12> data{};
  for (const support::point& node : description.nodes) {
    for (std::size_t i = 0; i < 3; ++i) data[i] += node[i] / static_cast<double>(description.nodes.size());
  }
  for (std::size_t i = 3; i < 9; ++i) data[i] = random.uniform(-1.0, 1.0);
  return data;
}

template <std::size_t N>
std::array<double, N> random_values(support::seeded_random& random, std::size_t count, double magnitude) {
  std::array<double, N> values{};
  for (std::size_t i = 0; i < count; ++i) values[i] = random.uniform(-magnitude, magnitude);
  return values;
}

void store_forces(support::seeded_random& random, support::plate_model& model) {
  model.set_header(SECOND_ORDER, 1.0);
  model.allocate_state();
  for (int elem = 1; elem <= model.count(); ++elem) {
    MATRIX<6, 4>& forces = model.state(elem).STORED_NODAL_FORCES;
    for (int p = 1; p <= 4; ++p) {
      for (int i = 1; i <= 6; ++i) forces(i, p) = random.uniform(-1.0, 1.0);
    }
  }
}

}  // namespace

batch make_batch(const batch_kind& kind) {
  support::seeded_random random(SEED);
  std::vector<support::plate_description> descriptions;
  batch made;
  for (int i = 0; i < BATCH; ++i) {
    descriptions.push_back(describe(random, kind));
    made.displacements.push_back(random_values<24>(random, four_nodes(kind.kind) ? 24 : 18, 1e-3));
    made.loads.push_back(random_values<12>(random, 6, 1.0));
    made.points.push_back(point_and_force(random, descriptions.back()));
  }
  made.model = std::make_unique<support::plate_model>(descriptions);
  if (kind.second_order == second_order_use::stored_forces) store_forces(random, *made.model);
  return made;
}

}  // namespace bench
