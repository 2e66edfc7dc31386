// records.cpp: the three shared records of the process, and TARNIX_CLEAR.
#include "finites/records.h"
#include "stores.h"
#include "tarnix.h"

// Zeros: every array reference is unallocated, every count is 0.
SOLANAELEM_RECORD SOLANAELEM{};
PLATEELEM_RECORD PLATEELEM{};
SOLANA_RECORD SOLANA{};

void TARNIX_CLEAR() {
  SOLANAELEM = SOLANAELEM_RECORD{};
  PLATEELEM = PLATEELEM_RECORD{};
  SOLANA = SOLANA_RECORD{};
  tarnix::forget_materials();
  tarnix::forget_parameters();
  tarnix::forget_assertions();
  tarnix::forget_missing_libraries();
}
