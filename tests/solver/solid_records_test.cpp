// Solids share one record of the library. In a model of many, called in any order, each has the bits of the same
// element alone in a model, which has the record to itself.
#include <gtest/gtest.h>

#include <algorithm>

#include "elements/library_model.h"
#include "solids_support.h"

using namespace solids_test;

namespace {

// Bricks, wedges and tetrahedra on the same nodes, one of each in turn.
solver::model mixed() {
  solver::model m = read(distorted("C3D8", 3).deck("X0, 1, 3\n", "*STATIC\n"));
  const solver::model wedges = read(distorted("C3D6", 3).deck("X0, 1, 3\n", "*STATIC\n"));
  const solver::model tetrahedra = read(distorted("C3D4", 3).deck("X0, 1, 3\n", "*STATIC\n"));
  const solver::numbered<solver::element> bricks = m.elements;
  m.elements.clear();
  for (std::size_t e = 0; e < bricks.size(); ++e) {
    for (const solver::element& each : {bricks[e], wedges.elements[2 * e], tetrahedra.elements[6 * e + 1]}) {
      m.elements.push_back(each);
      m.elements[m.elements.size() - 1].id = static_cast<int>(m.elements.size());
    }
  }
  return m;
}

solver::element_vector displacements(const solver::model& m, const solver::element& e) {
  solver::element_vector u{};
  int at = 0;
  for (const int n : e.nodes) {
    const auto& x = m.nodes[static_cast<std::size_t>(n)].xyz;
    u(++at) = 1e-3 * x[0] * x[1] + 2e-3 * x[2];
    u(++at) = 4e-4 * x[0] - 7e-4 * x[1] * x[2];
    u(++at) = 9e-4 * x[2] * x[0] - 3e-4 * x[1];
  }
  return u;
}

// Everything that elements are asked for, by element: matrices and loads, then results and their state, then what rests
// on the state, each in another order of the elements.
std::vector<std::vector<double>> answers(const solver::model& m) {
  solver::library_model library(m);
  const std::size_t count = m.elements.size();
  std::vector<std::vector<double>> all(count);
  const auto add = [&](std::size_t e, const double* values, std::size_t n) {
    all[e].insert(all[e].end(), values, values + n);
  };
  const auto add_matrix = [&](std::size_t e, auto ask) {
    solver::element_matrix K{};
    ask(e, K);
    add(e, K.V, 576);
  };
  solver::distributed_load load;
  load.body = {1, -2, 3};
  for (std::size_t e = 0; e < count; ++e) {
    add_matrix(e, [&](std::size_t i, solver::element_matrix& K) { library.stiffness(i, K); });
  }
  for (std::size_t e = count; e-- > 0;) {
    solver::element_vector f{};
    library.loads(e, load, f);
    add(e, f.V, 24);
  }
  for (std::size_t e = count; e-- > 0;) {
    add_matrix(e, [&](std::size_t i, solver::element_matrix& M) { library.mass(i, M); });
    const solver::solid_records r = library.solids().results(e, displacements(m, m.elements[e]));
    add(e, r.nodes.V, static_cast<std::size_t>(50 * m.elements[e].nodes.size()));
    add(e, r.points.V, static_cast<std::size_t>(6 * r.point_count));
    library.solids().axes((e + 5) % count);
    add(e, library.solids().axes(e).V, 9);
  }
  for (std::size_t e = 0; e < count; ++e) library.keep_state(e, displacements(m, m.elements[e]), load);
  library.second_order(true);
  for (std::size_t e = count; e-- > 0;) {
    add_matrix(e, [&](std::size_t i, solver::element_matrix& G) { library.geometric_stiffness(i, G); });
    add_matrix(e, [&](std::size_t i, solver::element_matrix& K) { library.stiffness(i, K); });
  }
  library.clear_state();
  for (std::size_t e = 0; e < count; ++e) {
    add_matrix(e, [&](std::size_t i, solver::element_matrix& G) { library.geometric_stiffness(i, G); });
  }
  return all;
}

}  // namespace

TEST(SolidRecords, SharedByAllHaveTheBitsOfEachAlone) {
  const solver::model m = mixed();
  const std::vector<std::vector<double>> shared = answers(m);
  ASSERT_EQ(shared.size(), 81U);
  for (std::size_t e = 0; e < shared.size(); ++e) {
    solver::model alone = m;
    alone.elements.clear();
    alone.elements.push_back(m.elements[e]);
    const std::vector<double> own = answers(alone)[0];
    ASSERT_EQ(shared[e].size(), own.size());
    EXPECT_TRUE(std::equal(own.begin(), own.end(), shared[e].begin())) << "element " << e + 1;
    EXPECT_GT(*std::max_element(own.begin(), own.end()), 0.0);
  }
}

// Records do not grow with the number of solids: every position is the same one.
TEST(SolidRecords, AreOne) {
  const solver::model m = mixed();
  const solver::library_model library(m);
  for (std::int32_t e = 2; e <= 81; ++e) {
    EXPECT_EQ(&SOLANAELEM.SOLID_REC(SOLANAELEM.SOLID_POS(e)), &SOLANAELEM.SOLID_REC(SOLANAELEM.SOLID_POS(1)));
  }
}
