// threads.cpp: what each thread that calls the element library has for itself: the scratch record of plate calls and, when
// it asks for one, an exchange area.
#include <atomic>

#include "finites/records.h"
#include "finites/services.h"
#include "tarnix.h"

namespace {

// Whether PLATEELEM serves a living thread.
std::atomic<bool> plateelem_is_taken{false};

// The record of a thread: PLATEELEM for the first, which gives it back at its end, one of its own for every other.
class scratch {
 public:
  scratch() : takes_plateelem_(!plateelem_is_taken.exchange(true)) {}
  scratch(const scratch&) = delete;
  scratch& operator=(const scratch&) = delete;
  ~scratch() {
    if (takes_plateelem_) plateelem_is_taken = false;
  }
  PLATEELEM_RECORD* record() { return takes_plateelem_ ? &PLATEELEM : &own_; }

 private:
  bool takes_plateelem_;
  PLATEELEM_RECORD own_{};
};

thread_local scratch of_this_thread;
thread_local double* exchange_area_of_this_thread = nullptr;

}  // namespace

PLATEELEM_RECORD* TARNIX_PLATEELEM() { return of_this_thread.record(); }

double* TARNIX_EXCHANGE_AREA() { return exchange_area_of_this_thread; }

void TARNIX_SET_EXCHANGE_AREA(double* area) { exchange_area_of_this_thread = area; }
