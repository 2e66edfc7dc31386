// plugin_recorder.h: the service that loads routines by name, in whose place a recorder stands in this test binary. It
// keeps what it is asked for and answers with no routine, with a rotation that the test has prepared, or with what the
// common library finds.
#ifndef FINITES_TESTS_PLUGIN_RECORDER_H
#define FINITES_TESTS_PLUGIN_RECORDER_H

#include <cstdint>
#include <string>
#include <vector>

namespace plugin_recorder {

enum class answer { missing, stand_in, loaded };

struct recorded_calls {
  int loads = 0, rotations = 0;
  // The last load: the texts with as many characters as the caller says.
  std::string library, routine;
  void** slot = nullptr;
  // The last rotation.
  std::int32_t I = 0, extent = 0, pos = 0;
  const double* A = nullptr;
};

recorded_calls& calls();
std::vector<double>& rotation();  // 144, by columns; what the stand-in answers
void reset(answer a);             // forgets the calls; the rotation is the identity

}  // namespace plugin_recorder

#endif
