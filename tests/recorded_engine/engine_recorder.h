// engine_recorder.h: a PLATE_ELEMENT_DISPATCH that writes down what it is given and answers what a test has set.
#ifndef FINITES_TESTS_ENGINE_RECORDER_H
#define FINITES_TESTS_ENGINE_RECORDER_H

#include <cstdint>
#include <vector>

struct recorded_call {
  int count = 0;  // calls since the last forget_engine_calls
  std::int32_t ident = 0, kind = 0, op = 0;
  int geometric = 0;
  std::vector<double> xyz;         // 12
  std::vector<double> loads;       // 50
  std::vector<double> U, U_TOTAL;  // 24 each
  std::vector<std::int32_t> node_list;
  std::vector<double> nodes, points;  // 360 each as the engine found them; empty when it was given none
};

// What the engine answers. F and matrix are written as long as they are: 18 or 24 values, 18 by 18 or 24 by 24.
// nodes and points are written when they are given and the operation is 5.
struct engine_answer {
  std::vector<double> F, matrix, nodes, points;
  double area = 0.0, volume = 0.0, weight = 0.0, distance = 0.0;
  int point_flag1 = 0, point_flag2 = 0;
};

recorded_call& last_engine_call();
engine_answer& next_engine_answer();
void forget_engine_calls();

#endif
