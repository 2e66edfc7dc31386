// builders_test.cpp: what the builders fill lacks nothing, and answers as the formulas of the elements say. MODEL_DATA
// holds NaN wherever they have not written.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "finites/builders.h"
#include "finites/finites.h"
#include "found.h"
#include "tarnix.h"

namespace {

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr std::int32_t EXCHANGE = 121, NODES = 900, SECTION = 1101, MATERIAL = 1141, ENTRY = 1151, LENGTH = 1300;
constexpr std::int32_t NODE_STRIDE = 30;

class Builders : public testing::Test {
 protected:
  void SetUp() override {
    TARNIX_CLEAR();
    finites_fill_header(A.data(), EXCHANGE, ENTRY, 90);
  }
  void TearDown() override { TARNIX_CLEAR(); }

  findings member_findings(std::int32_t kind) {
    return found_by([&](finites_finding* to, std::int32_t room) {
      return finites_check_member(kind, 1, ENTRY, A.data(), LENGTH, to, room);
    });
  }
  findings plate_findings() {
    return found_by([&](finites_finding* to, std::int32_t room) {
      return finites_check_plate(1, ENTRY, A.data(), LENGTH, to, room);
    });
  }
  double& at(std::int32_t place) { return A[static_cast<std::size_t>(place - 1)]; }

  // A square of side 1000 with n of its corners.
  void fill_plate(std::int32_t n, std::int32_t formulation) {
    const double x[4] = {0, 1000, 1000, 0}, y[4] = {0, 0, 1000, 1000};
    std::int32_t ptr[4];
    for (int i = 0; i < 4; ++i) finites_fill_node_block(A.data(), ptr[i] = NODES + NODE_STRIDE * i, x[i], y[i], 0);
    finites_fill_section_of_plate(A.data(), SECTION, 1, 20);
    finites_fill_material_of_plate(A.data(), MATERIAL, 1, 210e3, 0.3, 77e-6);
    finites_fill_plate_block(A.data(), ENTRY, 17, n, formulation);
    finites_fill_plate_record(&plate, SECTION, MATERIAL, n, ptr);
    SOLANAELEM.PLATE_RECORDS = REFER_TO(&plate, 1);
  }
  void call(std::int32_t op) {
    const std::int32_t elem = 1, k = ENTRY, n = LENGTH;
    FINITES(&op, &elem, &k, A.data(), &n, data, forces, K);
  }

  std::vector<double> A = std::vector<double>(LENGTH, NaN);
  PLATE_RECORD plate{};
  double data[64] = {}, forces[24] = {}, K[576] = {};
};

}  // namespace

TEST_F(Builders, PlatesLackNothing) {
  for (const std::int32_t n : {3, 4}) {
    for (const std::int32_t formulation : {FORMULATION_THICK, FORMULATION_THIN, FORMULATION_MEMBRANE}) {
      fill_plate(n, formulation);
      EXPECT_EQ(all_texts(plate_findings()), "");
      for (const std::int32_t op : {OP_STIFFNESS, OP_MASS, OP_GEOMETRY}) call(op);
      EXPECT_TRUE(std::all_of(K, K + 6 * n, [](double v) { return std::isfinite(v); }));
      EXPECT_FLOAT_EQ(plate.AREA, n == 3 ? 5e5F : 1e6F);
      EXPECT_FLOAT_EQ(plate.FACTORED_WEIGHT, plate.AREA * 20 * 77e-6F);
    }
  }
}

TEST_F(Builders, MembersLackNothing) {
  const double first[3] = {0, 0, 0}, second[3] = {3000, 4000, 0}, up[3] = {0, 0, 1};
  double T[144];
  const double L = finites_fill_rotation(T, first, second, up);
  EXPECT_DOUBLE_EQ(L, 5000);
  finites_fill_node_block(A.data(), NODES, 0, 0, 0);
  finites_fill_node_block(A.data(), NODES + NODE_STRIDE, 3000, 4000, 0);
  finites_fill_section_of_member(A.data(), SECTION, 2e3, 3e6, 4e6, 5e6);
  finites_fill_material_of_member(A.data(), MATERIAL, 210e3, 0.3, 0);
  finites_fill_member_block(A.data(), ENTRY, 17, SECTION, MATERIAL, NODES, NODES + NODE_STRIDE);
  std::int32_t pos = 1;
  MEMBER_RECORD record;
  finites_fill_member_record(&record, L);
  SOLANAELEM.ELEM_POS = REFER_TO(&pos, 1);
  SOLANAELEM.MEMBER_REC = REFER_TO(&record, 1);
  // No shear areas: notes, no warnings.
  EXPECT_EQ(worst(member_findings(FINITES_ELEMENT_BEAM)), NOTE) << all_texts(member_findings(FINITES_ELEMENT_BEAM));
  EXPECT_EQ(all_texts(member_findings(FINITES_ELEMENT_TRUSS)), "");

  const std::int32_t mode = MODE_ELASTIC, local = MODE_LOCAL, one = 1, entry = ENTRY, n = LENGTH, none = 0;
  double k[144], KG[144];
  KSTIFB(&local, &one, &entry, A.data(), &n, T, &none, nullptr, k, KG);
  const auto entry_of = [&k](int i, int j) { return k[(j - 1) * 12 + i - 1]; };
  EXPECT_NEAR(entry_of(1, 1), 210e3 * 2e3 / L, 1e-9 * entry_of(1, 1));
  EXPECT_NEAR(entry_of(4, 4), 210e3 / 2.6 * 5e6 / L, 1e-9 * entry_of(4, 4));
  EXPECT_NEAR(entry_of(6, 6), 4 * 210e3 * 3e6 / L, 1e-9 * entry_of(6, 6));
  EXPECT_NEAR(entry_of(11, 5), 2 * 210e3 * 4e6 / L, 1e-9 * entry_of(5, 5));
  // Along x of the member, (0.6, 0.8, 0): k = (E A / L) n n^T in the translations; its y is up, (0, 0, 1).
  KSTIFB(&mode, &one, &entry, A.data(), &n, T, &none, nullptr, k, KG);
  const double axial = 210e3 * 2e3 / L, bending_z = 12 * 210e3 * 3e6 / (L * L * L),
               bending_y = 12 * 210e3 * 4e6 / (L * L * L);
  EXPECT_NEAR(entry_of(1, 1), 0.36 * axial + 0.64 * bending_y, 1e-9 * axial);
  EXPECT_NEAR(entry_of(1, 2), 0.48 * axial - 0.48 * bending_y, 1e-9 * axial);
  EXPECT_NEAR(entry_of(3, 3), bending_z, 1e-9 * bending_z);

  at(ENTRY + UNSTRESSED_LENGTH) = 5100;
  at(ENTRY + MEMBER_WEIGHT) = 700;
  EXPECT_EQ(all_texts(member_findings(FINITES_ELEMENT_CABLE)), "");
  std::array<std::int32_t, LINK_WORDS> property{};
  const float stiffness = 5;
  std::memcpy(&property[SPRING_STIFFNESS_X], &stiffness, sizeof stiffness);
  std::memcpy(&property[SPRING_STIFFNESS_X + LINK_SHIFT], &stiffness, sizeof stiffness);
  finites_fill_property_address(A.data(), ENTRY, property.data());
  EXPECT_EQ(all_texts(member_findings(FINITES_ELEMENT_LINK)), "");
  EXPECT_EQ(all_texts(member_findings(FINITES_ELEMENT_SPRING)), "");
}

TEST_F(Builders, ARotationIsRightHandedOrRefused) {
  const double o[3] = {1, 2, 3}, p[3] = {4, 6, 15}, up[3] = {0.3, -2, 0.7}, along[3] = {3, 4, 12}, none[3] = {0, 0, 0};
  double T[144];
  EXPECT_DOUBLE_EQ(finites_fill_rotation(T, o, p, up), 13);
  double up_local[3] = {0, 0, 0};
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) {
      double product = 0;
      for (int c = 0; c < 3; ++c) product += T[c * 12 + i] * T[c * 12 + j];
      EXPECT_NEAR(product, i == j ? 1 : 0, 1e-14);
      up_local[i] += T[j * 12 + i] * up[j];
    }
  }
  EXPECT_GT(up_local[1], 0);
  EXPECT_NEAR(up_local[2], 0, 1e-14);
  std::fill_n(T, 144, 7.0);
  EXPECT_EQ(finites_fill_rotation(T, o, p, along), 0);
  EXPECT_EQ(finites_fill_rotation(T, o, o, up), 0);
  EXPECT_EQ(finites_fill_rotation(T, o, p, none), 0);
  EXPECT_EQ(T[0], 7.0);
}

TEST_F(Builders, SolidsLackNothing) {
  const double c[8][3] = {{0, 0, 0}, {2, 0, 0}, {2, 1, 0}, {0, 1, 0}, {0, 0, 3}, {2, 0, 3}, {2, 1, 3}, {0, 1, 3}};
  std::int32_t ptr[8], pos = 1;
  for (int i = 0; i < 8; ++i) {
    finites_fill_node_block(A.data(), ptr[i] = NODES + NODE_STRIDE * i, c[i][0], c[i][1], c[i][2]);
  }
  const std::int32_t material = NODES + 8 * NODE_STRIDE + 5;
  finites_fill_material_of_plate(A.data(), material, 1, 210e3, 0.3, 77e-6);
  SOLID_RECORD record;
  finites_fill_solid_record(&record, 17, material, 8, ptr);
  SOLANAELEM.SOLID_POS = REFER_TO(&pos, 1);
  SOLANAELEM.SOLID_REC = REFER_TO(&record, 1);
  const findings found = found_by(
      [&](finites_finding* to, std::int32_t room) { return finites_check_solid(1, A.data(), LENGTH, to, room); });
  EXPECT_EQ(all_texts(found), "");
}

// Both states complete and started by the very first pass, with the elastic tangent.
TEST_F(Builders, StatesOfPlatesThatYield) {
  fill_plate(4, FORMULATION_THIN);
  MATERIAL_RECORD m{};
  m.mtype = MATERIAL_YIELDING;
  const std::int32_t one = 1;
  TARNIX_STORE_MATERIAL(&one, &m);
  at(MATERIAL + MATERIAL_YIELD_STRESS) = 235;
  at(ENTRY + PLASTIC_SWITCH) = at(NONLIN_MATERIAL) = at(ANALYSIS_STATE) = 1;
  constexpr std::int32_t layers = 5;
  SOLANAELEM.NPT_THICK = layers;
  PLATE_STATE_RECORD state;
  POINT_STATE_RECORD points[4];
  std::vector<double> memory(FINITES_SECTION_STATE_REALS + FINITES_LAYERED_STATE_REALS(layers) + 2, NaN);
  for (const std::int32_t code : {PLATE_MODEL_SECTION, PLATE_MODEL_LAYERED}) {
    std::fill(memory.begin(), memory.end(), NaN);
    TARNIX_STORE_KNLMATERIAL_PLATE(&code);
    const bool layered = code == PLATE_MODEL_LAYERED;
    if (layered) {
      finites_fill_layered_state(&state, points, layers, memory.data());
    } else {
      finites_fill_section_state(&state, memory.data());
    }
    const auto used = static_cast<std::size_t>(layered ? FINITES_LAYERED_STATE_REALS(layers)
                                                       : std::int32_t{FINITES_SECTION_STATE_REALS});
    EXPECT_TRUE(std::all_of(memory.begin(), memory.begin() + static_cast<std::ptrdiff_t>(used),
                            [](double v) { return v == 0.0; }));
    EXPECT_TRUE(std::isnan(memory[used]));
    SOLANAELEM.PLATE_STATE = REFER_TO(&state, 1);
    at(STEP_COUNTER) = 0;
    EXPECT_EQ(all_texts(plate_findings()), "");
    call(OP_STIFFNESS);
    at(STEP_COUNTER) = 1;
    EXPECT_EQ(all_texts(plate_findings()), "");
    // Uniaxial stress of the strain 1e-4: E 1e-4 h b / 2 at the nodes of the far side.
    double far_force = 0, side_force = 0;
    for (int node = 0; node < 4; ++node) {
      const double x = at(NODES + NODE_STRIDE * node + NODE_X), y = at(NODES + NODE_STRIDE * node + NODE_X + 1);
      far_force += 1e-4 * (K[6 * node * 24 + 6] * x - 0.3 * K[(6 * node + 1) * 24 + 6] * y);
      side_force += 1e-4 * (K[6 * node * 24 + 19] * x - 0.3 * K[(6 * node + 1) * 24 + 19] * y);
    }
    EXPECT_NEAR(far_force, 210e3 * 1e-4 * 20 * 500, 1e-6 * far_force);
    EXPECT_NEAR(side_force, 0, 1e-6 * far_force);

    // Stretched to twice the yield strain and accepted: the strains of the step are those from which the next counts.
    for (int node = 0; node < 4; ++node) {
      const double x = at(NODES + NODE_STRIDE * node + NODE_X), y = at(NODES + NODE_STRIDE * node + NODE_X + 1);
      for (int d = 0; d < 6; ++d) at(EXCHANGE + 6 * node + d) = 0;
      at(EXCHANGE + 6 * node) = 2 * 235.0 / 210e3 * x;
      at(EXCHANGE + 6 * node + 1) = -0.3 * 2 * 235.0 / 210e3 * y;
    }
    call(OP_FORCES_COMMIT);
    const double plastic = layered ? points[0].EP_CUR(1, 3) : state.SEC_EP_CUR(1, 1);
    EXPECT_GT(plastic, 0.5 * 235.0 / 210e3);
    EXPECT_EQ(layered ? points[0].EP_START(1, 3) : state.SEC_EP_START(1, 1), 0);
    finites_accept_plate_state(&state);
    EXPECT_EQ(layered ? points[0].EP_START(1, 3) : state.SEC_EP_START(1, 1), plastic);
    EXPECT_EQ(layered ? points[3].EPBAR_START(5) : state.SEC_EPBAR_START(4),
              layered ? points[3].EPBAR_CUR(5) : state.SEC_EPBAR_CUR(4));
  }
}

TEST_F(Builders, NullIsLeftAlone) {
  finites_fill_header(nullptr, 1, 1, 1);
  finites_fill_node_block(nullptr, 1, 0, 0, 0);
  finites_fill_plate_block(nullptr, 1, 1, 4, 1);
  finites_fill_section_of_plate(nullptr, 1, 1, 1);
  finites_fill_material_of_plate(nullptr, 1, 1, 1, 0, 0);
  finites_fill_member_block(nullptr, 1, 1, 1, 1, 1, 1);
  finites_fill_section_of_member(nullptr, 1, 1, 1, 1, 1);
  finites_fill_material_of_member(nullptr, 1, 1, 0, 0);
  finites_fill_property_address(nullptr, 1, nullptr);
  finites_fill_plate_record(nullptr, 1, 1, 4, nullptr);
  finites_fill_plate_record(&plate, 1, 1, 4, nullptr);
  finites_fill_member_record(nullptr, 1);
  finites_fill_solid_record(nullptr, 1, 1, 8, nullptr);
  finites_fill_section_state(nullptr, nullptr);
  finites_fill_layered_state(nullptr, nullptr, 5, nullptr);
  finites_accept_plate_state(nullptr);
  EXPECT_EQ(finites_fill_rotation(nullptr, nullptr, nullptr, nullptr), 0);
}

namespace {

// A row of the fields of a block, each with what it holds in an ordinary element; all others stay as they were.
struct filled {
  int name;
  double value;
};

void expect_filled(const std::vector<double>& data, int start, const std::vector<filled>& fields) {
  std::vector<double> expected(data.size(), NaN);
  for (const filled& f : fields) expected[static_cast<std::size_t>(start + f.name - 1)] = f.value;
  for (std::size_t i = 0; i < data.size(); ++i) {
    if (std::isnan(expected[i])) {
      EXPECT_TRUE(std::isnan(data[i])) << "A(" << start << " + " << static_cast<int>(i) + 1 - start << ") was written";
    } else {
      EXPECT_EQ(data[i], expected[i]) << "A(" << start << " + " << static_cast<int>(i) + 1 - start << ")";
    }
  }
}

}  // namespace

// Of a linear analysis with shear deformation, an element without offsets, angle, releases, weight and pretension, a
// node without axes of its own; factors and fixities 1.
TEST(BuildersOfBlocks, WriteTheFieldsThatTheLibraryReads) {
  constexpr int START = 200;
  const auto of = [](int start, const auto& fill, const std::vector<filled>& fields) {
    std::vector<double> data(500, NaN);
    fill(data.data());
    expect_filled(data, start, fields);
  };
  of(0, [](double* A) { finites_fill_header(A, 121, 151, 90); },
     {{NONLIN_MATERIAL, 0},
      {STEP_COUNTER, 0},
      {ANALYSIS_STATE, 0},
      {SECOND_ORDER, 0},
      {SHEAR_DEFORMATION, 1},
      {RES_BASE, 121},
      {ENTRY_START, 151},
      {ENTRY_STRIDE, 90}});
  of(START, [](double* A) { finites_fill_node_block(A, START, 1, 2, 3); },
     {{NODE_X, 1}, {NODE_X + 1, 2}, {NODE_X + 2, 3}, {NODE_LOCAL_AXES, 0}});
  of(START, [](double* A) { finites_fill_plate_block(A, START, 17, 4, 1); },
     {{ELEM_ID, 17},
      {BLOCK_NODE_COUNT, 4},
      {FORMULATION, 1},
      {MASS_FACTOR, 1},
      {MODIFIER_MEMBRANE, 1},
      {MODIFIER_BENDING, 1},
      {MODIFIER_SHEAR, 1},
      {OFFSET_SWITCH, 0},
      {COMMON_OFFSET, 0},
      {COMMON_OFFSET + 1, 0},
      {COMMON_OFFSET + 2, 0},
      {ORTHO_ANGLE_IN, 0},
      {PLASTIC_SWITCH, 0}});
  of(START, [](double* A) { finites_fill_section_of_plate(A, START, 5, 20); },
     {{SECTION_NUMBER, 5}, {SECTION_TYPE, HOMOGENEOUS_SECTION}, {SECTION_THICKNESS, 20}});
  of(START, [](double* A) { finites_fill_material_of_plate(A, START, 6, 260, 0.3, 7); },
     {{MATERIAL_NUMBER, 6},
      {MATERIAL_YIELD_STRESS, 0},
      {MATERIAL_EXPANSION, 0},
      {MATERIAL_YOUNG, 260},
      {MATERIAL_POISSON, 0.3},
      {MATERIAL_UNIT_WEIGHT, 7},
      {MATERIAL_SHEAR_MODULUS, 100}});
  of(START, [](double* A) { finites_fill_member_block(A, START, 18, 1, 2, 3, 4); },
     {{ELEM_ID, 18},          {FIXITY_Y1, 1},         {FIXITY_Z1, 1},       {FIXITY_Y2, 1},      {FIXITY_Z2, 1},
      {MEMBER_SECTION, 1},    {MEMBER_MATERIAL, 2},   {MEMBER_NODE_1, 3},   {MEMBER_NODE_2, 4},  {FACTOR_AREA, 1},
      {FACTOR_I1, 1},         {FACTOR_I2, 1},         {FACTOR_J, 1},        {FACTOR_TORSION, 1}, {RELEASE_AXIAL, 0},
      {RELEASE_Y, 0},         {RELEASE_Z, 0},         {RELEASE_TORSION, 0}, {MEMBER_WEIGHT, 0},  {PROPERTY_ADDRESS, 0},
      {UNSTRESSED_LENGTH, 0}, {PRETENSION_STRESS, 0}, {REMOVE_MIN, 0},      {REDUCTION_INDEX, 0}});
  of(START, [](double* A) { finites_fill_section_of_member(A, START, 1, 2, 3, 4); },
     {{FRAME_SECTION_TYPE, HOMOGENEOUS_SECTION},
      {SECTION_AREA, 1},
      {SECTION_SHEAR_AREA_Z, 0},
      {SECTION_SHEAR_AREA_Y, 0},
      {SECTION_I1, 2},
      {SECTION_I2, 3},
      {SECTION_J, 4}});
  of(START, [](double* A) { finites_fill_material_of_member(A, START, 260, 0.3, 0); },
     {{MEMBER_E1, 260}, {MEMBER_E2, 260}, {MEMBER_G, 100}, {MEMBER_MATERIAL_KIND, 0}});
}

TEST(BuildersOfBlocks, RecordOfASolid) {
  const std::int32_t nodes[] = {11, 12, 13, 14, 15, 16, 17, 18};
  SOLID_RECORD record;
  std::memset(static_cast<void*>(&record), 0xff, sizeof record);
  finites_fill_solid_record(&record, 9, 31, 8, nodes);
  EXPECT_EQ(record.ELEM_NO, 9);
  EXPECT_EQ(record.MAT_OFF, 31);
  EXPECT_EQ(record.NNODE, 8);
  EXPECT_EQ(record.STIFF_FACTOR, 1.0F);
  for (std::size_t i = 0; i < 8; ++i) EXPECT_EQ(record.NODE_OFF.data()[i], nodes[i]);
}
