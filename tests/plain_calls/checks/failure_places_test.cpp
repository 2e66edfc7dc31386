// failure_places_test.cpp: what Tarnix prints of a failed call says which element, operation and point it is of; the
// text itself stays as it is.
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "finites/builders.h"
#include "found.h"
#include "tarnix.h"

namespace {

template <class CALL>
std::string said(CALL call) {
  testing::internal::CaptureStderr();
  call();
  return testing::internal::GetCapturedStderr();
}

support::plate_description yielding() {
  support::plate_description d;
  d.nodes = {{0, 0, 0}, {1000, 0, 0}, {1000, 1000, 0}, {0, 1000, 0}};
  d.thickness = 20.0;
  d.plastic_switch = 1;
  d.material.mtype = MATERIAL_YIELDING;
  return d;
}

}  // namespace

TEST(FailurePlaces, LinksAndSpringsWithoutARecord) {
  for (const auto family : {support::member_family::link, support::member_family::spring}) {
    support::member_description d;
    d.family = family;
    support::frame_model model({d, d});
    const bool link = family == support::member_family::link;
    EXPECT_EQ(said([&] { link ? model.link(2, 2) : model.spring(2, 2); }),
              link ? "finites: element 2: kStif_LINK\n" : "finites: element 2: kStif_SPR\n");
    d.property.assign(45, 0);
    d.property[SPRING_KIND_Y + (link ? LINK_SHIFT : 0)] = COMPONENT_NONLINEAR;
    support::frame_model nonlinear({d});
    EXPECT_EQ(said([&] { link ? nonlinear.link(0, 1) : nonlinear.spring(0, 1); }),
              "finites: element 1: GET_COEF_REMOVE_SPRING\n");
  }
}

// Two equal segments have parallel gradients: N^T K N is singular.
TEST(FailurePlaces, SingularHinges) {
  support::member_description d;
  d.axial_force = -1.0;
  d.hinge.HINGE_MODEL = HINGE_MODEL_ON;
  d.hinge.CURVE_KIND = LINEAR_SEGMENTS;
  d.hinge.FORCE_SET = MY_AND_MZ;
  d.hinge.CAP_P = d.hinge.CAP_MY = d.hinge.CAP_MZ = 100.0;
  d.hinge.END2_STATE = YIELDING;
  d.hinge.END2_SEG(1) = d.hinge.END2_SEG(2) = 1;
  support::frame_model model({d});
  model.set_kind(GEOMETRIC_ADDED);
  model.set_members_yield(1);
  EXPECT_EQ(said([&] { model.beam(0); }), "finites: element 1, point 2: Verify Singular KP\n");
}

// Modifiers that the whole-section model does not have, and displacements that are NaN.
TEST(FailurePlaces, PlatesThatYield) {
  auto d = yielding();
  d.modifier_bending = 0.5;
  support::plate_model model({d, d});
  model.set_header(NONLIN_MATERIAL, 1);
  model.set_plate_material_code(PLATE_MODEL_SECTION);
  EXPECT_EQ(said([&] { model.stiffness(2); }),
            "finites: element 2, operation 1: D\xC3\xA9"
            "composition spectrale, KOK_DS\n");

  constexpr std::int32_t layers = 3;
  model.set_plate_material_code(PLATE_MODEL_LAYERED);
  model.allocate_state();
  SOLANAELEM.NPT_THICK = layers;
  std::vector<double> memory(FINITES_LAYERED_STATE_REALS(layers));
  POINT_STATE_RECORD points[4];
  finites_fill_layered_state(&model.state(2), points, layers, memory.data());
  const std::vector<double> u(24, std::numeric_limits<double>::quiet_NaN());
  const std::string lines = said([&] { model.internal_forces(2, u, OP_FORCES_COMMIT); });
  const std::string text = ": Plasticite Plaque: pb avec algorithme de rabattement radial\n";
  std::string expected;
  for (const char* const point : {"1", "2", "3", "4"}) {
    for (int k = 0; k < layers; ++k) expected.append("finites: element 2, operation 33, point ").append(point + text);
  }
  EXPECT_EQ(lines, expected);
  // The place ends with the call.
  const std::int32_t five = 5, fails = 0;
  EXPECT_EQ(said([&] { ASSERTF("later", &five, &fails); }), "later\n");
}
