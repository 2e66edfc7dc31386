// lanes_bench.cpp: stiffness of n elements by n single calls and by a batch, for every width of lanes of this machine.
//
//     finites_lanes_bench [n] [repetitions]           1,000 elements, 200 repetitions
//
// Both write to the same n matrices, which are warm: every element differs, and matrices of 1,000 quadrilaterals take
// 4.6 MB. The last column is the time of storing the matrices alone, element by element. Times are of the processor,
// the shortest of all repetitions: other work on the machine disturbs them less.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "finites/elements.h"
#include "plain_calls/batch_stiffness.h"

namespace {

using reals = std::vector<double>;

double processor_time() {
  timespec t{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
  return static_cast<double>(t.tv_sec) + 1e-9 * static_cast<double>(t.tv_nsec);
}

// Nanoseconds per element, the least of all repetitions.
double shortest(std::int64_t n, int repetitions, const std::function<void()>& work) {
  double best = 1e9;
  for (int r = 0; r < repetitions; ++r) {
    const double start = processor_time();
    work();
    best = std::min(best, processor_time() - start);
  }
  return 1e9 * best / static_cast<double>(n);
}

class numbers {
 public:
  double around(double middle, double spread) {
    return middle + spread * (2.0 * static_cast<double>(bits_() >> 11U) / 9007199254740992.0 - 1.0);
  }

 private:
  std::mt19937_64 bits_{7};
};

// Corners of unit elements, distorted and sheared.
reals places(numbers& random, const double (*corner)[3], int nodes, std::int64_t n) {
  reals xyz;
  for (std::int64_t e = 0; e < n; ++e) {
    double shear[3][3];
    for (int i = 0; i < 3; ++i) {
      for (int j = 0; j < 3; ++j) shear[i][j] = random.around(i == j ? 1.5 : 0.0, 0.3);
    }
    for (int m = 0; m < nodes; ++m) {
      double x[3];
      for (int i = 0; i < 3; ++i) x[i] = random.around(corner[m][i], 0.1);
      for (int i = 0; i < 3; ++i) xyz.push_back(shear[i][0] * x[0] + shear[i][1] * x[1] + shear[i][2] * x[2]);
    }
  }
  return xyz;
}

struct task {
  std::string name;
  std::int64_t n;
  int order;
  std::function<void(std::int64_t e, double* K)> single;
  std::function<void(double* K, const LANE_KERNELS& kernels)> batch;
};

void report(const task& t, int repetitions) {
  const std::int64_t size = t.order * t.order;
  reals K(static_cast<std::size_t>(t.n * size));
  const double single = shortest(t.n, repetitions, [&] {
    for (std::int64_t e = 0; e < t.n; ++e) t.single(e, K.data() + e * size);
  });
  std::printf("%-24s %8.0f", t.name.c_str(), single);
  for (const int width : {2, 4, 8}) {
    const LANE_KERNELS* const kernels = lane_kernels(width);
    if (kernels == nullptr) continue;
    const double batch = shortest(t.n, repetitions, [&] { t.batch(K.data(), *kernels); });
    std::printf("   %7.0f %5.2f", batch, single / batch);
  }
  const double store = shortest(t.n, repetitions, [&] {
    for (std::int64_t e = 0; e < t.n; ++e) std::fill_n(K.data() + e * size, size, static_cast<double>(e));
  });
  std::printf("   %8.0f\n", store);
}

void report_plates(std::int64_t n, int repetitions) {
  constexpr double CORNER[4][3] = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
  constexpr struct {
    int theory;
    const char* name;
  } THEORIES[] = {{FINITES_THICK, "thick"}, {FINITES_THIN, "thin"}, {FINITES_MEMBRANE, "membrane"}};
  for (const int nodes : {3, 4}) {
    for (const auto& theory : THEORIES) {
      numbers random;
      const reals xyz = places(random, CORNER, nodes, n);
      reals h, E;
      for (std::int64_t e = 0; e < n; ++e) {
        h.push_back(random.around(0.1, 0.05));
        E.push_back(random.around(2e5, 1e4));
      }
      finites_plates plates{};
      finites_plate_init(&plates.common);
      plates.common.nodes = nodes;
      plates.common.theory = theory.theory;
      plates.common.nu = 0.3;
      plates.count = n;
      plates.xyz = {xyz.data(), 3 * nodes};
      plates.thickness = {h.data(), 1};
      plates.E = {E.data(), 1};
      std::vector<finites_plate> all;
      for (std::int64_t e = 0; e < n; ++e) all.push_back(element_of(plates, e));
      const int order = 6 * nodes;
      report({std::string(theory.name) + (nodes == 3 ? " triangle" : " quadrilateral"), n, order,
              [&](std::int64_t e, double* K) { (void)finites_plate_stiffness(&all[static_cast<std::size_t>(e)], K); },
              [&](double* K, const LANE_KERNELS& kernels) {
                (void)stiffness_of_plates(&plates, {0, n, nullptr}, K, order * order, kernels);
              }},
             repetitions);
    }
  }
}

void report_bricks(std::int64_t n, int repetitions) {
  constexpr double CORNER[8][3] = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0},
                                   {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}};
  numbers random;
  const reals xyz = places(random, CORNER, 8, n);
  finites_solids solids{};
  finites_solid_init(&solids.common);
  solids.common.E = 2e5;
  solids.common.nu = 0.3;
  solids.count = n;
  solids.xyz = {xyz.data(), 24};
  std::vector<finites_solid> all;
  for (std::int64_t e = 0; e < n; ++e) all.push_back(element_of(solids, e));
  report({"brick", n, 24,
          [&](std::int64_t e, double* K) { (void)finites_solid_stiffness(&all[static_cast<std::size_t>(e)], K); },
          [&](double* K, const LANE_KERNELS& kernels) {
            (void)stiffness_of_solids(&solids, {0, n, nullptr}, K, 576, kernels);
          }},
         repetitions);
}

}  // namespace

int main(int argc, char** argv) {
  const std::int64_t n = argc > 1 ? std::atoll(argv[1]) : 1000;
  const int repetitions = argc > 2 ? std::atoi(argv[2]) : 200;
  if (n < 1 || repetitions < 1) return 1;
  std::printf("%lld elements: nanoseconds an element; a batch and its multiple of single calls\n",
              static_cast<long long>(n));
  std::printf("%-24s %8s   %13s   %13s   %13s   %8s\n", "stiffness", "single", "2 lanes", "4 lanes", "8 lanes",
              "store");
  report_plates(n, repetitions);
  report_bricks(n, repetitions);
  return 0;
}
