// allocation_counter.h: counts what is taken from the heap while a counter lives.
//
//     allocation_counter counter;
//     model.call(1, 1, data, forces, matrix);
//     EXPECT_EQ(counter.count(), 0);
//
// A test binary that links the allocation_counter library has its own malloc, calloc, realloc and aligned forms, which
// pass on to the C library's; operator new comes through them. Under a sanitizer, which has its own, nothing can be
// counted: available() says so and the test skips.
#ifndef FINITES_TESTS_ALLOCATION_COUNTER_H
#define FINITES_TESTS_ALLOCATION_COUNTER_H

namespace support {

class allocation_counter {
 public:
  allocation_counter();
  long count() const;  // allocations since the construction
  static bool available();

 private:
  long start_;
};

}  // namespace support

#endif
