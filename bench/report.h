// report.h: the table of the benchmark run: for each code path the time of one call, its multiple of the calibration
// product, and the aim where there is one.
#ifndef FINITES_BENCH_REPORT_H
#define FINITES_BENCH_REPORT_H

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace bench {

constexpr const char* CALIBRATION_NAME = "calibration_24x24x24";

// Keeps the shortest time of each benchmark over its repetitions: disturbances only make a run longer. The repetitions
// are interleaved, so that a slow phase of the machine affects all benchmarks alike.
class multiple_reporter : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context& context) override;
  void ReportRuns(const std::vector<Run>& runs) override;
  void Finalize() override;

 private:
  std::vector<std::string> order_;             // as first met
  std::map<std::string, double> nanoseconds_;  // of one call
};

}  // namespace bench

#endif
