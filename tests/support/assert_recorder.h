// assert_recorder.h: an ASSERTF that records the texts of failed assertions, in the place of Tarnix's.
//
// A test binary that links the assert_recorder library defines the service itself, and its definition goes before the
// one of the shared library. The recorder returns; it never stops the run.
#ifndef FINITES_TESTS_ASSERT_RECORDER_H
#define FINITES_TESTS_ASSERT_RECORDER_H

#include <string>
#include <vector>

namespace support {

// The texts of the assertions that failed since the last forget_assertions, in order, exactly as long as the caller
// said.
const std::vector<std::string>& recorded_assertions();
void forget_assertions();

}  // namespace support

#endif
