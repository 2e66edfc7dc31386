// material_constants_test.cpp: the constants that each choice of a material leaves in PLATEELEM, and which operations
// make the choice.
#include <gtest/gtest.h>

#include <vector>

#include "element_calls/plate_call.h"
#include "finites/fields.h"
#include "finites/records.h"
#include "finites/views.hpp"
#include "plate_calls.h"

namespace {

using plate_calls::plate_description;
using plate_calls::plate_model;
using plate_calls::prepare;

}  // namespace

TEST(MaterialConstants, IsotropicComeFromTheBlocks) {
  const plate_description d = plate_calls::isotropic(plate_calls::space_triangle());
  plate_model model({d});
  prepare(model, 1);
  EXPECT_EQ(PLATEELEM.THICKNESS, 0.12);
  EXPECT_EQ(PLATEELEM.YIELD_STRESS, 235.0);
  EXPECT_EQ(PLATEELEM.E1, 2.1e5);
  EXPECT_EQ(PLATEELEM.NU1, 0.3);
  EXPECT_EQ(PLATEELEM.ALPHA1, 1.2e-5);
  EXPECT_EQ(PLATEELEM.CLT_FACTOR_1, 1.0);
  EXPECT_EQ(PLATEELEM.CLT_FACTOR_2, 1.0);
  for (int i = 1; i <= 3; ++i) {
    EXPECT_EQ(PLATEELEM.MOD_MEMBRANE(i), 0.9);
    EXPECT_EQ(PLATEELEM.MOD_BENDING(i), 0.7);
  }
  for (int i = 1; i <= 2; ++i) EXPECT_EQ(PLATEELEM.MOD_SHEAR(i), 0.6);
  // What an isotropic material does not set is zero.
  EXPECT_EQ(PLATEELEM.ELEM_INDEX, 0);
  for (const double value : {PLATEELEM.E2, PLATEELEM.NU2, PLATEELEM.G12, PLATEELEM.G13, PLATEELEM.G23, PLATEELEM.ALPHA2,
                             PLATEELEM.TANGENT_MOD}) {
    EXPECT_EQ(value, 0.0);
  }
  EXPECT_EQ(PLATEELEM.ORTHO_ANGLE, 0.0F);
}

// The doubles to which the single-precision fields widen, written as such.
TEST(MaterialConstants, OrthotropicComeFromTheRecordWidened) {
  const plate_description d = plate_calls::orthotropic(plate_calls::space_triangle());
  plate_model model({d});
  prepare(model, 1);
  EXPECT_EQ(PLATEELEM.MAT_BEHAV, 1);
  EXPECT_EQ(PLATEELEM.E1, 190000.0);
  EXPECT_EQ(PLATEELEM.E2, 70000.0);
  EXPECT_EQ(PLATEELEM.NU1, 0.23000000417232513);
  EXPECT_EQ(PLATEELEM.NU2, 0.10999999940395355);
  EXPECT_EQ(PLATEELEM.G12, 31000.0);
  EXPECT_EQ(PLATEELEM.G13, 32000.0);
  EXPECT_EQ(PLATEELEM.G23, 33000.0);
  EXPECT_EQ(PLATEELEM.ALPHA1, 1.1000000085914508e-05);
  EXPECT_EQ(PLATEELEM.ALPHA2, static_cast<double>(d.material.ALPHA2));
  EXPECT_EQ(PLATEELEM.TANGENT_MOD, 0.0) << "the hardening modulus belongs to plasticity";
  EXPECT_EQ(PLATEELEM.ORTHO_ANGLE, 0.4F);
  EXPECT_NE(static_cast<double>(PLATEELEM.ORTHO_ANGLE), 0.4) << "the angle is narrowed";
}

TEST(MaterialConstants, CompositeComeFromTheSectionRecordWidened) {
  const plate_description d = plate_calls::composite(plate_calls::space_triangle());
  plate_model model({d});
  prepare(model, 1);
  EXPECT_EQ(PLATEELEM.MAT_BEHAV, 1);
  EXPECT_EQ(PLATEELEM.E1, 170000.0);
  EXPECT_EQ(PLATEELEM.E2, 90000.0);
  EXPECT_EQ(PLATEELEM.NU1, 0.20999999344348907);
  EXPECT_EQ(PLATEELEM.NU2, 0.12999999523162842);
  EXPECT_EQ(PLATEELEM.G12, 41000.0);
  EXPECT_EQ(PLATEELEM.G13, 42000.0);
  EXPECT_EQ(PLATEELEM.G23, 43000.0);
  EXPECT_EQ(PLATEELEM.ALPHA1, static_cast<double>(d.composite.ALPHA1));
  EXPECT_EQ(PLATEELEM.ALPHA2, static_cast<double>(d.composite.ALPHA2));
  EXPECT_EQ(PLATEELEM.CLT_FACTOR_1, 0.76999998092651367);
  EXPECT_EQ(PLATEELEM.CLT_FACTOR_2, 1.2100000381469727);
  EXPECT_EQ(PLATEELEM.ORTHO_ANGLE, -0.3F);
}

TEST(MaterialConstants, PlasticAreIsotropicWithTheHardeningOfTheRecord) {
  plate_description d = plate_calls::isotropic(plate_calls::space_triangle());
  d.shear_modulus = 12345.0;
  d.plastic_switch = 1;
  d.material.mtype = 3;
  d.material.HARDENING = 987.65F;
  for (const int code : {1, 2}) {
    plate_model model({plate_calls::isotropic(plate_calls::space_triangle()), d});
    model.set_header(NONLIN_MATERIAL, 1);
    model.set_plate_material_code(code);
    prepare(model, 2);
    EXPECT_EQ(PLATEELEM.MAT_BEHAV, code == 2 ? 3 : 2);
    EXPECT_EQ(PLATEELEM.ELEM_INDEX, 2);
    EXPECT_EQ(PLATEELEM.E2, 2.1e5);
    EXPECT_EQ(PLATEELEM.NU2, 0.3);
    EXPECT_EQ(PLATEELEM.G12, 12345.0);
    EXPECT_EQ(PLATEELEM.G13, 12345.0);
    EXPECT_EQ(PLATEELEM.G23, 12345.0);
    EXPECT_EQ(PLATEELEM.ALPHA2, 1.2e-5);
    EXPECT_EQ(PLATEELEM.TANGENT_MOD, 987.65002441406250);
    EXPECT_EQ(PLATEELEM.ORTHO_ANGLE, 0.0F);
  }
}

TEST(MaterialConstants, EveryCallStartsFromZeros) {
  plate_model model(
      {plate_calls::composite(plate_calls::space_triangle()), plate_calls::isotropic(plate_calls::space_triangle())});
  plate_calls::call(model, 1, 1);
  plate_calls::call(model, 8, 2);
  EXPECT_EQ(PLATEELEM.MAT_BEHAV, 0);
  EXPECT_EQ(PLATEELEM.E2, 0.0);
  EXPECT_EQ(PLATEELEM.CLT_FACTOR_1, 1.0);
  EXPECT_EQ(PLATEELEM.ORTHO_ANGLE, 0.0F);
  EXPECT_EQ(PLATEELEM.D_BENDING(1, 1), 0.0);
  EXPECT_EQ(PLATEELEM.D_MEMBRANE_TOTAL(1, 1), 0.0);
}

// Mass, loads without temperature, geometry and points ask for no material; everything else does.
TEST(MaterialConstants, WhichOperationsResolveTheMaterial) {
  const std::vector<double> data(9, 0.5);
  for (const int op : {2, 4, 41, 8, 9, 10}) {
    plate_model model({plate_calls::orthotropic(plate_calls::space_triangle())});
    plate_calls::call(model, op, 1, data);
    EXPECT_EQ(PLATEELEM.MAT_BEHAV, 0) << "operation " << op;
    EXPECT_EQ(PLATEELEM.E1, 2.1e5) << "operation " << op;
    EXPECT_EQ(PLATEELEM.E2, 0.0) << "operation " << op;
  }
  for (const int op : {1, 3, 33, 401, 5, 7, 71, 6, 0, 999, -1}) {
    plate_model model({plate_calls::orthotropic(plate_calls::space_triangle())});
    plate_calls::call(model, op, 1, data);
    EXPECT_EQ(PLATEELEM.MAT_BEHAV, 1) << "operation " << op;
    EXPECT_EQ(PLATEELEM.E1, 190000.0) << "operation " << op;
  }
}

// No operation that weighs an element resolves its material; the preparation keeps the section's weight all the same.
TEST(MaterialConstants, CompositeSectionsHaveAWeightOfTheirOwn) {
  plate_model model({plate_calls::composite(plate_calls::space_triangle())});
  PLATE_CALL resolved(PLATEELEM, model.raw(), 1, 1, model.block(1));
  prepare_plate(resolved);
  EXPECT_EQ(resolved.unit_weight, static_cast<double>(3.3e-4F));
  PLATE_CALL weighed(PLATEELEM, model.raw(), 8, 1, model.block(1));
  prepare_plate(weighed);
  EXPECT_EQ(weighed.unit_weight, 7.7e-5);
}
