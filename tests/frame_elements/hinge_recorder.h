// hinge_recorder.h: the hinge stiffness, in whose place a recorder stands in this test binary. It keeps what it is
// given and answers KP = 0 unless the test has prepared another.
#ifndef FINITES_TESTS_HINGE_RECORDER_H
#define FINITES_TESTS_HINGE_RECORDER_H

#include <vector>

namespace hinge_recorder {

struct recorded_call {
  int calls = 0;
  int number = 0, elem = 0, extent = 0;
  const double* A = nullptr;
  std::vector<double> K;          // as it came
  std::vector<double> K_ELASTIC;  // what the first record that was prepared held at that time
};

recorded_call& recorded();
std::vector<double>& prepared_KP();  // 144
const double*& watched();            // 144 numbers that the recorder copies into K_ELASTIC; null: none
double& axial_share();               // K(1, 1) of the caller is multiplied by it; 1: left alone
void reset();

}  // namespace hinge_recorder

#endif
