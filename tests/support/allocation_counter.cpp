// allocation_counter.cpp: the counting allocator.
#include "allocation_counter.h"

#include <cerrno>
#include <cstddef>

#include "sanitizer.h"

namespace {
long allocations = 0;  // tests are single-threaded
}

#if !defined(FINITES_ADDRESS_SANITIZER)

// The C library's allocator under its second names.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* old, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);

#define VISIBLE __attribute__((visibility("default")))

VISIBLE void* malloc(std::size_t size) {
  ++allocations;
  return __libc_malloc(size);
}

VISIBLE void* calloc(std::size_t count, std::size_t size) {
  ++allocations;
  return __libc_calloc(count, size);
}

VISIBLE void* realloc(void* old, std::size_t size) {
  ++allocations;
  return __libc_realloc(old, size);
}

VISIBLE void* memalign(std::size_t alignment, std::size_t size) {
  ++allocations;
  return __libc_memalign(alignment, size);
}

VISIBLE void* aligned_alloc(std::size_t alignment, std::size_t size) {
  ++allocations;
  return __libc_memalign(alignment, size);
}

VISIBLE int posix_memalign(void** slot, std::size_t alignment, std::size_t size) {
  ++allocations;
  *slot = __libc_memalign(alignment, size);
  return *slot == nullptr ? ENOMEM : 0;
}
}

#endif

namespace support {

allocation_counter::allocation_counter() : start_(allocations) {}
long allocation_counter::count() const { return allocations - start_; }

bool allocation_counter::available() {
#if defined(FINITES_ADDRESS_SANITIZER)
  return false;
#else
  return true;
#endif
}

}  // namespace support
