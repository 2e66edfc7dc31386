// report.cpp: collects the shortest times and prints the table.
#include "report.h"

#include <algorithm>
#include <cstdio>

namespace bench {

namespace {

// Multiples of the calibration product to stay under: about what kernels written by hand for one element and one
// section take.
const std::map<std::string, double> AIMS = {
    {"op_1_stiffness/kind_10/behav_0", 0.16},
    {"op_1_stiffness/kind_10/behav_1", 0.40},
    {"op_1_stiffness/kind_11/behav_0", 0.25},
    {"op_1_stiffness/kind_11/behav_1", 0.55},
    {"op_1_stiffness/kind_20/behav_0", 0.30},
    {"op_1_stiffness/kind_20/behav_1", 0.55},
    {"op_1_stiffness/kind_21/behav_0", 0.38},
    {"op_1_stiffness/kind_21/behav_1", 0.70},
    {"op_1_stiffness_offsets/kind_10/behav_0", 0.28},
    {"op_1_stiffness_offsets/kind_11/behav_0", 0.37},
    {"op_1_stiffness_offsets/kind_20/behav_0", 0.42},
    {"op_1_stiffness_offsets/kind_21/behav_0", 0.50},
    {"op_2_mass/kind_20/behav_0", 0.20},
    {"op_2_mass/kind_21/behav_0", 0.20},
    {"op_3_internal_forces/kind_10/behav_0", 0.09},
    {"op_3_internal_forces/kind_11/behav_0", 0.13},
    {"op_3_internal_forces/kind_20/behav_0", 0.14},
    {"op_3_internal_forces/kind_21/behav_0", 0.19},
    {"op_5_results/kind_20/behav_0", 0.35},
    {"op_5_results/kind_21/behav_0", 0.45},
    {"op_33_element_forces/kind_20/behav_2_elastic", 0.5},
    {"op_33_element_forces/kind_20/behav_2_plastic", 2.5},
    {"op_33_element_forces/kind_21/behav_2_elastic", 0.7},
    {"op_33_element_forces/kind_21/behav_2_plastic", 3.5},
    {"op_33_element_forces/kind_21/behav_3_points_5_elastic", 0.7},
    {"op_33_element_forces/kind_21/behav_3_points_5_plastic", 4.0},
    {"op_33_element_forces/kind_21/behav_3_points_9_elastic", 0.8},
    {"op_33_element_forces/kind_21/behav_3_points_9_plastic", 6.0},
    {"op_33_element_forces/kind_21/behav_3_points_15_elastic", 1.0},
    {"op_33_element_forces/kind_21/behav_3_points_15_plastic", 10.0},
    {"kstifb_rotated", 0.055},
    {"kstifb_step_geometric", 0.07},
    {"kstifb_one_hinge", 0.22},
    {"kstifb_two_hinges", 0.22},
    {"kstift_catenary", 0.14},
    {"solid_op_1_stiffness/brick_8", 0.45},
    {"solid_op_3_internal_forces/brick_8", 0.22},
    {"solid_op_5_results/brick_8", 0.6},
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
    if (aim != AIMS.end()) std::printf(" %6.3g", aim->second);
    std::printf("\n");
  }
}

}  // namespace bench
