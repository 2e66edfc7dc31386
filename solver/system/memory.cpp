// memory.cpp: what /proc, the limits of the process and its control group say.
#include "system/memory.h"

#include <sys/resource.h>
#include <unistd.h>

#include <cmath>
#include <fstream>
#include <limits>
#include <stdexcept>

#include <fmt/format.h>

namespace solver {

namespace {

constexpr double MEGABYTE = 1e6;

// OpenBLAS maps a buffer of 128 MB when it is first used, and repeats the attempt without end where the address space
// is too small.
constexpr double BLAS_BUFFER = 140;

// "MemAvailable:   20480 kB", "inactive_file 4096" of a file of such lines; negative when it is not there.
double value_of(const std::string& path, const std::string& name) {
  std::ifstream file(path);
  for (std::string word; file >> word;) {
    double value = 0;
    if (word == name && file >> value) return value;
  }
  return -1;
}

// A file with one number, as of control groups; negative when it is not there or says "max".
double number_in(const std::string& path) {
  std::ifstream file(path);
  double value = -1;
  return file >> value ? value : -1;
}

// Bytes that a control group leaves; infinite where it has no limit. What it counts as used holds pages of files that
// it gives back on demand: those that nobody has used of late are free.
double left_by_group(const std::string& limit, const std::string& usage, const std::string& statistics,
                     const char* unused_pages) {
  const double most = number_in(limit), used = number_in(usage);
  if (most < 0 || used < 0) return std::numeric_limits<double>::infinity();
  const double pages = value_of(statistics, unused_pages);
  return most - std::fmax(used - std::fmax(pages, 0), 0);
}

void lower(memory_bound& bound, double megabytes, const std::string& reason) {
  if (megabytes >= bound.megabytes) return;
  bound.megabytes = std::fmax(megabytes, 0);
  bound.reason = reason;
}

// The paths of this process below the root of the second version of control groups; the first version has a fixed one.
void lower_by_control_groups(memory_bound& bound, int processes) {
  std::ifstream groups("/proc/self/cgroup");
  std::string own;
  for (std::string line; std::getline(groups, line);) {
    if (line.rfind("0::", 0) == 0) own = line.substr(3);
  }
  while (true) {
    const std::string folder = "/sys/fs/cgroup" + own;
    const double left =
        left_by_group(folder + "/memory.max", folder + "/memory.current", folder + "/memory.stat", "inactive_file");
    lower(bound, left / MEGABYTE / processes, "left by the control group of the process");
    if (own.empty() || own == "/") break;
    own.erase(own.find_last_of('/'));
  }
  const std::string first = "/sys/fs/cgroup/memory/memory.";
  const double left =
      left_by_group(first + "limit_in_bytes", first + "usage_in_bytes", first + "stat", "total_inactive_file");
  lower(bound, left / MEGABYTE / processes, "left by the control group of the process");
}

}  // namespace

memory_bound free_memory(double wanted, int processes) {
  memory_bound bound{std::numeric_limits<double>::infinity(), ""};
  const double available = value_of("/proc/meminfo", "MemAvailable:");
  if (available >= 0) lower(bound, available * 1024 / MEGABYTE / processes, "free on this machine");
  lower_by_control_groups(bound, processes);
  rlimit space{};
  const double mapped = value_of("/proc/self/status", "VmSize:") * 1024;
  if (getrlimit(RLIMIT_AS, &space) == 0 && space.rlim_cur != RLIM_INFINITY && mapped >= 0) {
    lower(bound, (static_cast<double>(space.rlim_cur) - mapped) / MEGABYTE - BLAS_BUFFER,
          "left by the limit of the process (ulimit -v)");
  }
  if (wanted > 0) {
    lower(bound, std::fmax(wanted / processes - held_memory(), 0),
          fmt::format("left of the {:.0f} MB of --memory-limit beside what the program holds", wanted));
  }
  return bound;
}

double held_memory() { return std::fmax(value_of("/proc/self/status", "VmRSS:") * 1024, 0) / MEGABYTE; }

void require_memory(double megabytes, double wanted, int processes) {
  const memory_bound bound = free_memory(wanted, processes);
  // A program that holds more than it may already has no room for work that takes next to nothing either.
  const bool is_over = wanted > 0 && held_memory() + megabytes > wanted / processes;
  if (megabytes <= bound.megabytes && !is_over) return;
  const std::string shared =
      processes > 1 ? fmt::format(" in each of {} processes on this machine", processes) : std::string();
  throw std::runtime_error(fmt::format(
      "not enough memory: the factorisation needs {:.0f} MB{}, {:.0f} MB{} are {}; make the model smaller or the "
      "memory larger",
      std::ceil(megabytes), shared, std::floor(bound.megabytes), processes > 1 ? " for each" : "", bound.reason));
}

}  // namespace solver
