// report.cpp: collects the shortest times and prints the table.
#include "report.h"

#include <algorithm>
#include <cstdio>

namespace bench {

namespace {

// Multiples of the calibration product to stay under.
const std::map<std::string, double> AIMS = {
    {"op_1_stiffness/kind_10/behav_0", 0.6},
    {"op_1_stiffness/kind_10/behav_1", 1.5},
    {"op_1_stiffness/kind_11/behav_0", 0.9},
    {"op_1_stiffness/kind_20/behav_0", 1.1},
    {"op_1_stiffness/kind_21/behav_0", 1.5},
    {"op_3_internal_forces/kind_10/behav_0", 0.2},
    {"op_3_internal_forces/kind_11/behav_0", 0.3},
    {"op_3_internal_forces/kind_20/behav_0", 0.36},
    {"op_3_internal_forces/kind_21/behav_0", 0.5},
    {"kstifb_rotated", 0.2},
    {"kstift_catenary", 0.6},
    {"solid_op_1_stiffness/brick_8", 2.0},
    {"op_33_element_forces/kind_21/behav_3_points_5_elastic", 5.0},
    {"op_33_element_forces/kind_21/behav_3_points_5_plastic", 10.0},
};

}  // namespace

bool multiple_reporter::ReportContext(const Context& /*context*/) { return true; }

void multiple_reporter::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    if (run.run_type != Run::RT_Iteration) continue;
    const std::string name = run.run_name.function_name;
    if (run.error_occurred) {
      std::fprintf(stderr, "%s: %s\n", name.c_str(), run.error_message.c_str());
      continue;
    }
    const double calls = static_cast<double>(run.iterations) * run.counters.at("calls").value;
    const double time = run.cpu_accumulated_time * 1e9 / calls;
    const auto [entry, first] = nanoseconds_.emplace(name, time);
    if (first) order_.push_back(name);
    entry->second = std::min(entry->second, time);
  }
}

void multiple_reporter::Finalize() {
  const auto calibration = nanoseconds_.find(CALIBRATION_NAME);
  std::sort(order_.begin(), order_.end());
  std::printf("%-52s %12s %10s %6s\n", "code path", "ns a call", "multiple", "aim");
  for (const std::string& name : order_) {
    const double time = nanoseconds_.at(name);
    std::printf("%-52s %12.1f", name.c_str(), time);
    if (calibration != nanoseconds_.end()) std::printf(" %10.3f", time / calibration->second);
    const auto aim = AIMS.find(name);
    if (aim != AIMS.end()) std::printf(" %6.2f", aim->second);
    std::printf("\n");
  }
}

}  // namespace bench
