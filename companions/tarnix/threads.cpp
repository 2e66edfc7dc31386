// threads.cpp: what each thread that calls the element library has for itself: the scratch record of plate calls and,
// when it asks for one, an exchange area.
#include <atomic>

#include "finites/records.h"
#include "finites/services.h"
#include "tarnix.h"

namespace {

std::atomic<bool> plateelem_is_taken{false};

thread_local PLATEELEM_RECORD own_record{};

// Two pointers stand in the static block of a thread: each call of an element reads one of them, and an address that is
// found through a table would be felt. The block has room for a few bytes of libraries that are loaded later.
#define IN_STATIC_BLOCK __attribute__((tls_model("initial-exec")))
IN_STATIC_BLOCK thread_local PLATEELEM_RECORD* record_of_this_thread = nullptr;
IN_STATIC_BLOCK thread_local double* exchange_area_of_this_thread = nullptr;

}  // namespace

// The first thread that asks has PLATEELEM, every other a record of its own.
PLATEELEM_RECORD* TARNIX_PLATEELEM() {
  if (record_of_this_thread == nullptr) {
    record_of_this_thread = plateelem_is_taken.exchange(true) ? &own_record : &PLATEELEM;
  }
  return record_of_this_thread;
}

double* TARNIX_EXCHANGE_AREA() { return exchange_area_of_this_thread; }

void TARNIX_SET_EXCHANGE_AREA(double* area) { exchange_area_of_this_thread = area; }
