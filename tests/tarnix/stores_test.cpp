// stores_test.cpp: what the solver stores is what an element fetches; what was never stored is zero.
#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <string>

#include "tarnix.h"

namespace {

class Stores : public testing::Test {
 protected:
  void SetUp() override { TARNIX_CLEAR(); }
  void TearDown() override { TARNIX_CLEAR(); }
};

template <class RECORD>
RECORD filled(unsigned char byte) {
  RECORD rec;
  std::memset(&rec, byte, sizeof rec);
  return rec;
}

// Bit for bit: the patterns need not be numbers. The records have no gaps between their 32-bit words.
template <class RECORD>
std::string bytes(const RECORD& rec) {
  return std::string(reinterpret_cast<const char*>(&rec), sizeof rec);
}

template <class RECORD>
bool same(const RECORD& a, const RECORD& b) {
  return bytes(a) == bytes(b);
}

constexpr std::int32_t NUMBERS[] = {
    1, 0, -5, 70000, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()};

}  // namespace

TEST_F(Stores, AMaterialComesBackUnderItsNumber) {
  unsigned char byte = 1;
  for (std::int32_t number : NUMBERS) {
    const auto stored = filled<MATERIAL_RECORD>(byte++);
    TARNIX_STORE_MATERIAL(&number, &stored);
  }
  byte = 1;
  for (std::int32_t number : NUMBERS) {
    auto fetched = filled<MATERIAL_RECORD>(0xEE);
    std::int32_t status = -1;
    ZelkMaterialGetRec(&number, &fetched, &status);
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(same(fetched, filled<MATERIAL_RECORD>(byte++))) << number;
  }
}

TEST_F(Stores, ACompositeSectionComesBackUnderItsNumber) {
  const std::int32_t number = 12, other = 13;
  const auto first = filled<CLT_SECTION_RECORD>(3), second = filled<CLT_SECTION_RECORD>(4);
  TARNIX_STORE_SECTION_CLT(&number, &first);
  TARNIX_STORE_SECTION_CLT(&number, &second);  // takes the place of the first
  auto fetched = filled<CLT_SECTION_RECORD>(0xEE);
  std::int32_t status = -1;
  ZelkSectionCLTGetRec(&number, &fetched, &status);
  EXPECT_EQ(status, 0);
  EXPECT_TRUE(same(fetched, second));
  ZelkSectionCLTGetRec(&other, &fetched, &status);
  EXPECT_EQ(status, 1);
  EXPECT_TRUE(same(fetched, filled<CLT_SECTION_RECORD>(0)));
}

TEST_F(Stores, MaterialsAndSectionsDoNotShareNumbers) {
  const std::int32_t number = 4;
  const auto stored = filled<CLT_SECTION_RECORD>(9);
  TARNIX_STORE_SECTION_CLT(&number, &stored);
  auto fetched = filled<MATERIAL_RECORD>(0xEE);
  std::int32_t status = -1;
  ZelkMaterialGetRec(&number, &fetched, &status);
  EXPECT_EQ(status, 1);
  EXPECT_TRUE(same(fetched, filled<MATERIAL_RECORD>(0)));
}

TEST_F(Stores, SolutionParametersAreZeroUntilTheyAreStored) {
  auto fetched = filled<SOLPARAM_RECORD>(0xEE);
  std::int32_t code = -1, flag = -1;
  ZelkuSolParamGetRec(&fetched);
  ZELKU_SOLPARAM_GET_KNLMATERIAL_PLATE(&code);
  ZELKU_SOLPARAM_GET_KNLMATERIAL_MEMBER(&flag);
  EXPECT_TRUE(same(fetched, filled<SOLPARAM_RECORD>(0)));
  EXPECT_EQ(code, 0);
  EXPECT_EQ(flag, 0);
}

TEST_F(Stores, SolutionParametersComeBack) {
  const auto stored = filled<SOLPARAM_RECORD>(0x5A);
  const std::int32_t two = 2, one = 1;
  TARNIX_STORE_SOLPARAM(&stored);
  TARNIX_STORE_KNLMATERIAL_PLATE(&two);
  TARNIX_STORE_KNLMATERIAL_MEMBER(&one);
  auto fetched = filled<SOLPARAM_RECORD>(0xEE);
  std::int32_t code = -1, flag = -1;
  ZelkuSolParamGetRec(&fetched);
  ZELKU_SOLPARAM_GET_KNLMATERIAL_PLATE(&code);
  ZELKU_SOLPARAM_GET_KNLMATERIAL_MEMBER(&flag);
  EXPECT_TRUE(same(fetched, stored));
  EXPECT_EQ(code, 2);
  EXPECT_EQ(flag, 1);
}

TEST_F(Stores, ColdFormedTypesAreThoseThatWereNamed) {
  const std::int32_t seven = 7, eight = 8, yes = 1, no = 0;
  std::int32_t flag = -1;
  GET_KCOLDFORM(&seven, &flag);
  EXPECT_EQ(flag, 0);
  TARNIX_STORE_KCOLDFORM(&seven, &yes);
  GET_KCOLDFORM(&seven, &flag);
  EXPECT_EQ(flag, 1);
  GET_KCOLDFORM(&eight, &flag);
  EXPECT_EQ(flag, 0);
  const std::int32_t four = 4;  // any flag that is not 0 is a yes, and is answered by 1
  TARNIX_STORE_KCOLDFORM(&seven, &four);
  GET_KCOLDFORM(&seven, &flag);
  EXPECT_EQ(flag, 1);
  TARNIX_STORE_KCOLDFORM(&seven, &no);
  GET_KCOLDFORM(&seven, &flag);
  EXPECT_EQ(flag, 0);
}

TEST_F(Stores, ClearForgetsEverything) {
  const std::int32_t one = 1;
  const auto material = filled<MATERIAL_RECORD>(1);
  const auto section = filled<CLT_SECTION_RECORD>(1);
  const auto parameters = filled<SOLPARAM_RECORD>(1);
  TARNIX_STORE_MATERIAL(&one, &material);
  TARNIX_STORE_SECTION_CLT(&one, &section);
  TARNIX_STORE_SOLPARAM(&parameters);
  TARNIX_STORE_KNLMATERIAL_PLATE(&one);
  TARNIX_STORE_KNLMATERIAL_MEMBER(&one);
  TARNIX_STORE_KCOLDFORM(&one, &one);
  SOLANA.STIFF_LIST_COUNT = 3;
  SOLANAELEM.NPT_THICK = 5;
  PLATEELEM.CLT_FACTOR_2 = 1.0;
  std::int32_t number = 0;
  SOLANAELEM.ELEM_POS = REFER_TO(&number, 1);

  TARNIX_CLEAR();

  std::int32_t material_status = 0, section_status = 0, code = 1, flag = 1, cold = 1;
  auto fetched_material = material;
  auto fetched_section = section;
  auto fetched_parameters = parameters;
  ZelkMaterialGetRec(&one, &fetched_material, &material_status);
  ZelkSectionCLTGetRec(&one, &fetched_section, &section_status);
  ZelkuSolParamGetRec(&fetched_parameters);
  ZELKU_SOLPARAM_GET_KNLMATERIAL_PLATE(&code);
  ZELKU_SOLPARAM_GET_KNLMATERIAL_MEMBER(&flag);
  GET_KCOLDFORM(&one, &cold);
  EXPECT_EQ(material_status, 1);
  EXPECT_EQ(section_status, 1);
  EXPECT_TRUE(same(fetched_parameters, filled<SOLPARAM_RECORD>(0)));
  EXPECT_EQ(code, 0);
  EXPECT_EQ(flag, 0);
  EXPECT_EQ(cold, 0);
  EXPECT_EQ(SOLANA.STIFF_LIST_COUNT, 0);
  EXPECT_EQ(SOLANAELEM.NPT_THICK, 0);
  EXPECT_EQ(PLATEELEM.CLT_FACTOR_2, 0.0);
  EXPECT_FALSE(ALLOCATED(SOLANAELEM.ELEM_POS));
}

TEST_F(Stores, NothingGivenIsNothingStored) {
  const std::int32_t one = 1;
  std::int32_t status = -1;
  MATERIAL_RECORD rec{};
  TARNIX_STORE_MATERIAL(&one, nullptr);
  TARNIX_STORE_MATERIAL(nullptr, &rec);
  TARNIX_STORE_SOLPARAM(nullptr);
  TARNIX_STORE_KNLMATERIAL_PLATE(nullptr);
  TARNIX_STORE_KCOLDFORM(nullptr, &one);
  ZelkMaterialGetRec(&one, &rec, &status);
  EXPECT_EQ(status, 1);
  ZelkMaterialGetRec(&one, nullptr, nullptr);
  ZelkMaterialGetRec(nullptr, &rec, &status);
  EXPECT_EQ(status, 1);
}
