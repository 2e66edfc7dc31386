// threads.cpp: what each thread that calls the element library has for itself: the scratch record of plate calls and,
// when it asks for one, an exchange area.
#include <atomic>
#include <memory>

#include "finites/records.h"
#include "finites/services.h"
#include "tarnix.h"

namespace {

std::atomic<bool> plateelem_is_taken{false};

// Two pointers stand in the static block of a thread: each call of an element reads one of them, and an address that is
// found through a table would be felt. For libraries that a running program loads, as an interpreter does, the block
// has room for a few bytes: a record of some 4 kB among the variables of a thread would keep this one from being
// loaded.
#define IN_STATIC_BLOCK __attribute__((tls_model("initial-exec")))
IN_STATIC_BLOCK thread_local PLATEELEM_RECORD* record_of_this_thread = nullptr;
IN_STATIC_BLOCK thread_local double* exchange_area_of_this_thread = nullptr;

thread_local std::unique_ptr<PLATEELEM_RECORD> own_record;

}  // namespace

// The first thread that asks has PLATEELEM, every other a record of its own.
PLATEELEM_RECORD* TARNIX_PLATEELEM() {
  if (record_of_this_thread != nullptr) return record_of_this_thread;
  if (plateelem_is_taken.exchange(true)) {
    own_record = std::make_unique<PLATEELEM_RECORD>();
    record_of_this_thread = own_record.get();
  } else {
    record_of_this_thread = &PLATEELEM;
  }
  return record_of_this_thread;
}

double* TARNIX_EXCHANGE_AREA() { return exchange_area_of_this_thread; }

void TARNIX_SET_EXCHANGE_AREA(double* area) { exchange_area_of_this_thread = area; }
