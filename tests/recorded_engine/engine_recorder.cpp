// engine_recorder.cpp: the recorder in the place of the engines.
#include "engine_recorder.h"

#include <algorithm>
#include <cmath>

#include "shells/engines/plate_element_dispatch.h"

recorded_call& last_engine_call() {
  static recorded_call call;
  return call;
}

engine_answer& next_engine_answer() {
  static engine_answer answer;
  return answer;
}

void forget_engine_calls() {
  last_engine_call() = recorded_call{};
  next_engine_answer() = engine_answer{};
}

namespace {

std::vector<double> copied(const double* from, int count) {
  return from == nullptr ? std::vector<double>() : std::vector<double>(from, from + count);
}

void write(const std::vector<double>& values, double* to) {
  if (to != nullptr) std::copy(values.begin(), values.end(), to);
}

bool makes_matrix(std::int32_t op) { return op == 1 || op == 2 || op == 7 || op == 71; }
bool takes_points(std::int32_t op, int geometric) { return op == 5 || op == 71 || (op == 1 && geometric == 1); }

}  // namespace

void PLATE_ELEMENT_DISPATCH(PLATEELEM_RECORD& /*EL*/, std::int32_t ident, std::int32_t kind, std::int32_t op,
                            const double* xyz, const ELEM_LOADS& LOADS, const double* U, double* F,
                            const VECTOR<4, std::int32_t>& node_list, int geometric, const double* U_TOTAL,
                            double* matrix, double* nodes, double* points, MATRIX<3, 3>& /*AXES*/, double& area,
                            double& volume, double& weight, int& point_flag1, int& point_flag2, double& distance,
                            const PLATE_STATE_IN_USE& /*state*/, int leading) {
  recorded_call& call = last_engine_call();
  const int count = call.count + 1;
  call = recorded_call{};
  call.count = count;
  call.ident = ident;
  call.kind = kind;
  call.op = op;
  call.geometric = geometric;
  call.xyz = copied(xyz, 12);
  call.loads = copied(LOADS.data(), 50);
  call.U = copied(U, 24);
  call.U_TOTAL = copied(U_TOTAL, 24);
  call.node_list.assign(node_list.V, node_list.V + 4);
  if (op == 5) call.nodes = copied(nodes, 360);
  if (takes_points(op, geometric)) call.points = copied(points, 360);

  const engine_answer& answer = next_engine_answer();
  write(answer.F, F);
  if (makes_matrix(op) && matrix != nullptr) {
    const auto order = static_cast<int>(std::lround(std::sqrt(answer.matrix.size())));
    for (int j = 0; j < order; ++j) std::copy_n(answer.matrix.data() + j * order, order, matrix + j * leading);
  }
  if (op == 5) {
    write(answer.nodes, nodes);
    write(answer.points, points);
  }
  area = answer.area;
  volume = answer.volume;
  weight = answer.weight;
  point_flag1 = answer.point_flag1;
  point_flag2 = answer.point_flag2;
  distance = answer.distance;
}
