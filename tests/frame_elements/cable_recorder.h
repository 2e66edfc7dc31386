// cable_recorder.h: the two routines of the cable library, in whose place a recorder stands in this test binary. It
// keeps what it is given and answers what the test has prepared.
#ifndef FINITES_TESTS_CABLE_RECORDER_H
#define FINITES_TESTS_CABLE_RECORDER_H

#include <array>

namespace cable_recorder {

struct cable_data {
  int elem;
  std::array<double, 3> X1, X2, w;
  double area, E, L0, e;
};

struct recorded_calls {
  int equilibria = 0, tangents = 0;
  cable_data equilibrium{}, tangent{};
  std::array<double, 6> F{};  // as the second routine got it
};

struct prepared_answers {
  int equilibrium_status = 0, tangent_status = 0;
  std::array<double, 6> F{1.5, 2.5, 3.5, 4.5, 5.5, 6.5};
  std::array<double, 36> KT{};
};

recorded_calls& calls();
prepared_answers& answers();
void reset();

}  // namespace cable_recorder

#endif
