// allocation_test.cpp: the services of every element call allocate nothing once the model is stored.
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

#include "tarnix.h"

namespace {

bool counting = false;
int allocations = 0;

void* counted(std::size_t size) {
  if (counting) ++allocations;
  if (void* const room = std::malloc(size == 0 ? 1 : size)) return room;
  throw std::bad_alloc();
}

}  // namespace

// In the place of the allocator of the whole process, Tarnix included.
void* operator new(std::size_t size) { return counted(size); }
void* operator new[](std::size_t size) { return counted(size); }
void operator delete(void* room) noexcept { std::free(room); }
void operator delete[](void* room) noexcept { std::free(room); }
void operator delete(void* room, std::size_t) noexcept { std::free(room); }
void operator delete[](void* room, std::size_t) noexcept { std::free(room); }

TEST(Allocation, NoneOnTheNormalPath) {
  static double A[576], B[576], C[576];
  for (int i = 0; i < 24; ++i) A[25 * i] = B[25 * i] = 1.0;
  const std::int32_t n = 24, one = 1, twelve = 12, eleven = 11, room = 500, code = 1228, types = 10;
  const double d = 1.0;
  MATERIAL_RECORD material{};
  CLT_SECTION_RECORD section{};
  SOLPARAM_RECORD parameters{};
  char msg[500];
  std::int32_t result = 0;
  void* slot = nullptr;
  TARNIX_STORE_MATERIAL(&one, &material);
  LOAD_DLL_SUBROUTINE("PlugTest.DLL", &twelve, "PLUG_DOUBLE", &eleven, &slot);

  counting = true;
  MATMUL_M1_M2_DBL(C, A, B, &n);
  MATMUL_M1_M2T_DBL(C, A, B, &n, &n);
  MATMUL_RT_M_R_DBL(A, B, &n, &n, &n);
  MATMUL_R_M_RT_DBL(A, B, &n, &n, &n);
  MATMUL_R_V_DBL(A, B, C, &n, &n);
  MATMUL_RT_V_DBL(A, B, C, &n, &n);
  INVMAT_DB(A, &n, &n, &result);
  TENSEUR_G2L_DBL(A, B, C);
  GET_JOINT_OFFSET_J6D(&d, &d, &d, C);
  ZelkMaterialGetRec(&one, &material, &result);
  ZelkSectionCLTGetRec(&one, &section, &result);
  ZelkuSolParamGetRec(&parameters);
  GET_KCOLDFORM(&one, &result);
  QFIND_SORT_INTEGER(&one, &one, &one, &result);
  WERRTU(&code, &types, &one, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
         nullptr, nullptr, nullptr, nullptr, &result, msg, &room);
  LOAD_DLL_SUBROUTINE("PlugTest.DLL", &twelve, "PLUG_DOUBLE", &eleven, &slot);
  counting = false;

  EXPECT_NE(slot, nullptr);
  EXPECT_EQ(allocations, 0);
  TARNIX_CLEAR();
}
