// lanes_bench.cpp: stiffness of n elements by n single calls and by a batch, for every width of lanes of this machine.
//
//     finites_lanes_bench [n] [repetitions] [name]    defaults: 1000 elements, 200 repetitions, all rows
//
// name chooses the rows whose first column contains it.
//
// Both write to the same n matrices, which are warm: every element differs, and matrices of 1,000 quadrilaterals take
// 4.6 MB. The last column is the time of storing the matrices alone, element by element. Times are of the processor,
// the shortest of all repetitions: other work on the machine disturbs them less.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <functional>
#include <new>
#include <random>
#include <string>
#include <system_error>
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

// Nanoseconds per element of each work, the least of all repetitions, which take turns: a slow phase of the machine
// affects all alike.
reals shortest(std::int64_t n, int repetitions, const std::vector<std::function<void()>>& works) {
  reals best(works.size(), 1e9);
  for (int r = 0; r < repetitions; ++r) {
    for (std::size_t w = 0; w < works.size(); ++w) {
      const double start = processor_time();
      works[w]();
      best[w] = std::min(best[w], processor_time() - start);
    }
  }
  for (double& time : best) time *= 1e9 / static_cast<double>(n);
  return best;
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

// Which are measured, and how often.
struct choice {
  std::int64_t n;
  int repetitions;
  std::string name;
};

constexpr int WIDTHS[] = {2, 4, 8};

// Returns how many rows it printed: 0 where this one was not asked for.
int report(const task& t, const choice& chosen) {
  if (t.name.find(chosen.name) == std::string::npos) return 0;
  const std::int64_t size = t.order * t.order;
  reals K(static_cast<std::size_t>(t.n * size));
  std::vector<std::function<void()>> works = {[&] {
    for (std::int64_t e = 0; e < t.n; ++e) t.single(e, K.data() + e * size);
  }};
  for (const int width : WIDTHS) {
    const LANE_KERNELS* const kernels = lane_kernels(width);
    if (kernels != nullptr) works.emplace_back([&, kernels] { t.batch(K.data(), *kernels); });
  }
  works.emplace_back([&] {
    for (std::int64_t e = 0; e < t.n; ++e) std::fill_n(K.data() + e * size, size, static_cast<double>(e));
  });
  const reals times = shortest(t.n, chosen.repetitions, works);
  std::printf("%-24s %8.0f", t.name.c_str(), times.front());
  std::size_t w = 0;
  for (const int width : WIDTHS) {
    if (lane_kernels(width) != nullptr) {
      ++w;
      std::printf("   %7.0f %5.2f", times[w], times.front() / times[w]);
    } else {
      std::printf("   %13s", "not here");
    }
  }
  std::printf("   %8.0f\n", times.back());
  return 1;
}

int report_plates(const choice& chosen) {
  const std::int64_t n = chosen.n;
  constexpr double CORNER[4][3] = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
  int rows = 0;
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
      rows += report(
          {std::string(theory.name) + (nodes == 3 ? " triangle" : " quadrilateral"), n, order,
           [&](std::int64_t e, double* K) { (void)finites_plate_stiffness(&all[static_cast<std::size_t>(e)], K); },
           [&](double* K, const LANE_KERNELS& kernels) {
             (void)stiffness_of_plates(&plates, {0, n, nullptr}, K, order * order, kernels);
           }},
          chosen);
    }
  }
  return rows;
}

int report_bricks(const choice& chosen) {
  const std::int64_t n = chosen.n;
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
  return report(
      {"brick", n, 24,
       [&](std::int64_t e, double* K) { (void)finites_solid_stiffness(&all[static_cast<std::size_t>(e)], K); },
       [&](double* K, const LANE_KERNELS& kernels) {
         (void)stiffness_of_solids(&solids, {0, n, nullptr}, K, 576, kernels);
       }},
      chosen);
}

// Beams of one section with different lengths and directions. The batch of masses goes element by element.
int report_beams(const choice& chosen) {
  constexpr double END[2][3] = {{0, 0, 0}, {1, 0, 0}};
  const std::int64_t n = chosen.n;
  numbers random;
  const reals xyz = places(random, END, 2, n);
  reals u(static_cast<std::size_t>(12 * n));
  for (double& value : u) value = random.around(0.0, 1e-3);
  finites_beams beams{};
  finites_beam_init(&beams.common);
  finites_beam& b = beams.common;
  b.E = 2e5;
  b.G = 8e4;
  b.density = 8.0;
  b.area = 0.01;
  b.Iz = 1e-5;
  b.Iy = 2e-5;
  b.J = 1e-6;
  beams.count = n;
  beams.xyz = {xyz.data(), 6};
  std::vector<finites_beam> all;
  for (std::int64_t e = 0; e < n; ++e) all.push_back(element_of(beams, e));
  const auto at = [&](std::int64_t e) { return &all[static_cast<std::size_t>(e)]; };
  int rows = report({"beam", n, 12, [&](std::int64_t e, double* K) { (void)finites_beam_stiffness(at(e), K); },
                     [&](double* K, const LANE_KERNELS& kernels) {
                       (void)stiffness_of_beams(&beams, {0, n, nullptr}, K, 144, kernels);
                     }},
                    chosen);
  rows += report({"beam mass", n, 12, [&](std::int64_t e, double* M) { (void)finites_beam_mass(at(e), 0, M); },
                  [&](double* M, const LANE_KERNELS&) { (void)finites_beams_mass(&beams, 0, n, 0, M, 144, nullptr); }},
                 chosen);
  return rows;
}

constexpr char USAGE[] =
    "usage: finites_lanes_bench [n] [repetitions] [name]\n"
    "  n            elements of a batch, from 1 (default 1000)\n"
    "  repetitions  of which the shortest counts, from 1 (default 200)\n"
    "  name         chooses the rows whose first column contains it, for example brick (default: all)\n";

// A whole number from 1; 0 for any other text.
int count_of(const char* text) {
  int value = 0;
  const char* const end = text + std::strlen(text);
  const auto [rest, error] = std::from_chars(text, end, value);
  return error == std::errc() && rest == end && value > 0 ? value : 0;
}

int run(const choice& chosen) {
  std::printf("%lld elements: nanoseconds per element; a batch and how many times faster than single calls it is\n",
              static_cast<long long>(chosen.n));
  std::printf("%-24s %8s   %13s   %13s   %13s   %8s\n", "stiffness", "single", "2 lanes", "4 lanes", "8 lanes",
              "store");
  const int rows = report_plates(chosen) + report_bricks(chosen) + report_beams(chosen);
  if (rows > 0) return 0;
  std::fprintf(stderr, "finites_lanes_bench: no row's name contains \"%s\"; without a name all rows are printed\n",
               chosen.name.c_str());
  return 2;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc > 1 && (std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0)) {
    std::fputs(USAGE, stdout);
    return 0;
  }
  const choice chosen = {argc > 1 ? count_of(argv[1]) : 1000, argc > 2 ? count_of(argv[2]) : 200,
                         argc > 3 ? argv[3] : ""};
  if (argc > 4 || chosen.n == 0 || chosen.repetitions == 0) {
    std::fprintf(stderr, "finites_lanes_bench: %s\n%s",
                 argc > 4 ? "more than three arguments" : "n and repetitions are whole numbers from 1", USAGE);
    return 2;
  }
  try {
    return run(chosen);
  } catch (const std::bad_alloc&) {
    std::fprintf(stderr, "finites_lanes_bench: no memory for %lld matrices; take fewer elements\n",
                 static_cast<long long>(chosen.n));
    return 1;
  }
}
