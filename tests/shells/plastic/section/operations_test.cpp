// operations_test.cpp: operations other than stiffness, forces and results of plates that yield: what they prepare, and
// the matrix of the forces of displacements.
#include <algorithm>
#include <array>

#include "assert_recorder.h"
#include "comparison.h"
#include "plastic_reference.h"
#include "shells/engines/quad_thick.h"
#include "shells/engines/quad_thin.h"
#include "shells/engines/tri_thick.h"
#include "shells/engines/tri_thin.h"
#include "shells/plastic/section_plates.h"

using shell_reference::column;
using shell_reference::column_of;
using shell_reference::listed;
using shell_reference::matrix;
using shell_reference::vector3;
using support::seeded_random;
using texts = std::vector<std::string>;

namespace {

const std::string CHECK_TEXT =
    "D\xC3\xA9"
    "composition spectrale, KOK_DS";

// The forces of the displacements u on an element of an engine.
template <class ELEMENT>
void forces_of(ELEMENT element, const double* xyz, const std::vector<double>& u, double* f) {
  element.set_geometry(xyz, SIDE_COEFFICIENTS::WANTED);
  element.split_displacements(u.data());
  FINT_PLAST(element, state_of_element(PLATEELEM.ELEM_INDEX), 3, f);
}

// The forces of the element whose call has just come to its end, after its section has been formed.
void forces_again(const plastic_kind& kind, const std::vector<support::point>& nodes, const std::vector<double>& u,
                  double* f) {
  std::vector<double> xyz;
  for (const support::point& node : nodes) xyz.insert(xyz.end(), node.begin(), node.end());
  const ELEM_LOADS none{};
  constexpr int shell = 0;
  if (kind.nodes == 3 && kind.thick()) return forces_of(TRI_THICK(PLATEELEM, none, shell), xyz.data(), u, f);
  if (kind.nodes == 3) return forces_of(TRI_THIN(PLATEELEM, none, shell), xyz.data(), u, f);
  if (kind.thick()) return forces_of(QUAD_THICK(PLATEELEM, none, shell), xyz.data(), u, f);
  forces_of(QUAD_THIN(PLATEELEM, none, shell), xyz.data(), u, f);
}

}  // namespace

TEST(PlasticOperations, CheckTheSpectralDataWhereverTheyFormTheSection) {
  // Stiffness, forces, results, thermal loads and both geometric matrices; frame, area, mass and plain loads form none.
  seeded_random random(761);
  for (const plastic_kind& kind : shell_kinds()) {
    support::plate_description d = random_plate(random, kind, 0.1);
    d.modifier_bending = 0.5;
    plastic_model model(d);
    model.first_pass();
    const auto reports = [&model](int op) {
      std::array<double, 12> data{1.0, 1.0, 1.0, 1.0, 1.0, 1.0};
      std::array<double, 24> forces{};
      std::array<double, 576> full{};
      model.set_displacements(std::vector<double>(24, 0.0));
      support::forget_assertions();
      model.call(op, 1, data.data(), forces.data(), full.data());
      return support::recorded_assertions();
    };
    for (const int op : {1, 3, 33, 5, 401, 7, 71}) EXPECT_EQ(reports(op), texts{CHECK_TEXT}) << kind.name << " " << op;
    for (const int op : {2, 4, 41, 6, 8, 9, 10}) EXPECT_EQ(reports(op), texts()) << kind.name << " " << op;
  }
}

TEST(PlasticOperations, MatrixOfTheForcesOfDisplacementsIsElasticWithTheShearOfEachPoint) {
  // Operation 7 after yielding: N = D e of each point, whatever the stored tangents and displacements are.
  seeded_random random(762);
  for (const plastic_kind& kind : shell_kinds()) {
    const support::plate_description d = random_plate(random, kind, 0.1);
    plastic_reference r(d, kind);
    plastic_model model(d);
    model.first_pass();
    const std::vector<double> step = r.displacements(random, 2.0);
    model.internal_forces(1, step, 33);
    model.accept(step);
    const std::vector<double> u = r.displacements(random, 1.0);
    const section_values before = model.values();
    model.set_displacements(u);
    const column local = r.e.to_local(column_of(u));
    std::vector<vector3> N;
    double largest_force = 0.0;
    for (const shell_reference::station& s : shell_reference::element_rule(kind.nodes)) {
      N.emplace_back(r.D.topLeftCorner(3, 3) * (r.B(s.xi, s.eta) * local).head(3));
      largest_force = std::max(largest_force, shell_reference::largest(N.back()));
    }
    const matrix expected = r.e.to_global_matrix(-r.e.geometric(N));
    EXPECT_GT(largest_force, 1e-3 * d.yield_stress * d.thickness) << kind.name;
    EXPECT_CLOSE(model.matrix(7, 1), listed(expected), shell_reference::largest(expected), 1000) << kind.name;
    EXPECT_EQ(model.values(), before) << kind.name;
  }
}

TEST(PlasticOperations, ForcesReplaceWhatTheirTwentyFourPlacesHeld) {
  seeded_random random(763);
  for (const plastic_kind& kind : shell_kinds()) {
    const support::plate_description d = random_plate(random, kind, 0.1);
    plastic_model model(d);
    model.first_pass();
    const std::vector<double> u = plastic_reference(d, kind).displacements(random, 2.0);
    std::vector<double> expected = model.internal_forces(1, u, 3), f(24, 7.0);
    expected.resize(24, 0.0);
    forces_again(kind, d.nodes, u, f.data());
    EXPECT_EQ(f, expected) << kind.name;
  }
}
