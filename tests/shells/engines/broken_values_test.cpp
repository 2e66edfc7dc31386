// broken_values_test.cpp: NaN and infinities in the data of an element. The matrix of operation 1 carries them where
// the products AXES^T b AXES of the 3 by 3 blocks of the packed matrix carry them.
#include "broken_values.h"

#include "element_call.h"
#include "element_subject.h"
#include "finites/records.h"
#include "shells/engines/plate_engine.h"
#include "shells/engines/quad_thick.h"
#include "shells/engines/quad_thin.h"
#include "shells/engines/tri_thick.h"
#include "shells/engines/tri_thin.h"

using support::plate_description;
using support::seeded_random;

namespace {

// The packed matrix in element axes, from the kernels, turned by the products of the blocks.
template <class ELEMENT>
std::vector<double> turned_kernels(const element_call& call) {
  double xyz[12] = {};
  double* at = xyz;
  for (const support::point& node : call.element.nodes) at = std::copy(node.begin(), node.end(), at);
  ELEMENT e(PLATEELEM, call.LOADS, 0);
  e.set_geometry(xyz, SIDE_COEFFICIENTS::WANTED);
  set_section(e, NO_PLATE_STATE);
  FLAT_PARTS<ELEMENT::NODES> parts;
  e.stiffness(parts);
  e.finish_stiffness(0, nullptr, parts);
  std::vector<double> K(ELEMENT::PACKED);
  assemble_parts(parts, K.data());
  return support::turned_by_blocks(e.axes().data(), K, ELEMENT::DOFS);
}

std::vector<double> turned_kernels(const element_call& call, bool thin) {
  if (call.element.nodes.size() == 3) return thin ? turned_kernels<TRI_THIN>(call) : turned_kernels<TRI_THICK>(call);
  return thin ? turned_kernels<QUAD_THIN>(call) : turned_kernels<QUAD_THICK>(call);
}

}  // namespace

TEST(BrokenValues, AreCarriedByTheProductsOfTheBlocks) {
  seeded_random random(398);
  int partly = 0;  // matrices with NaN and finite entries
  for (const bool quadrilateral : {false, true}) {
    for (const bool thin : {true, false}) {
      for (const double broken : support::BROKEN) {
        for (int field = 0; field < 7; ++field) {
          plate_description d = support::random_isotropic(
              random, quadrilateral ? support::random_quadrilateral(random) : support::random_triangle(random));
          d.formulation = thin ? 1 : 0;
          double* const fields[] = {&d.thickness,        &d.young,       &d.poisson,    &d.modifier_membrane,
                                    &d.modifier_bending, &d.nodes[0][0], &d.nodes[2][1]};
          *fields[field] = broken;
          SCOPED_TRACE(::testing::Message() << (quadrilateral ? "quadrilateral" : "triangle")
                                            << (thin ? " thin" : " thick") << ", field " << field << " is " << broken);
          element_call call(d);
          call.run(1);
          const std::vector<double> actual = call.matrix_values();
          support::expect_same_places(actual, turned_kernels(call, thin));
          const auto count = std::count_if(actual.begin(), actual.end(), [](double v) { return std::isnan(v); });
          if (count > 0 && count < static_cast<long>(actual.size())) ++partly;
        }
      }
    }
  }
  EXPECT_EQ(partly, 12);  // those of a membrane modifier: the bending terms stay finite
}
