// modal_output.cpp: two tables, with six by_direction each.
#include "output/modal_output.h"

#include "output/text.h"

namespace solver {

namespace {

using by_direction = std::array<double, DIRECTIONS>;
constexpr const char* NAMES[DIRECTIONS] = {"x", "y", "z", "rotation x", "rotation y", "rotation z"};
constexpr const char* COLUMNS[DIRECTIONS] = {"x", "y", "z", "rx", "ry", "rz"};

by_direction sum_of(const modal_masses& masses) {
  by_direction sum{};
  for (const modal_mass& one : masses.modes) {
    for (std::size_t i = 0; i < DIRECTIONS; ++i) sum[i] += one.effective[i];
  }
  return sum;
}

void print_row(fmt::memory_buffer& text, const by_direction& values) {
  for (const double value : values) append(text, " {:>13.6e}", value);
  append(text, "\n");
}

void print_names(fmt::memory_buffer& text, const char* first) {
  append(text, "  {:>6}", first);
  for (const char* const name : NAMES) append(text, " {:>13}", name);
  append(text, "\n");
}

void print_shares(fmt::memory_buffer& text, const by_direction& sum, const by_direction& of) {
  append(text, "  {:>6}", "share");
  for (std::size_t i = 0; i < DIRECTIONS; ++i) {
    of[i] > 0 ? append(text, " {:>11.4f} %", 100 * sum[i] / of[i]) : append(text, " {:>13}", "-");
  }
  append(text, "\n");
}

void write_row(fmt::memory_buffer& text, const char* name, const by_direction& effective) {
  append(text, "{},,", name);
  for (int i = 0; i < DIRECTIONS; ++i) append(text, ",");
  for (const double value : effective) append(text, ",{}", value);
  append(text, "\n");
}

}  // namespace

std::string modal_masses_summary(const modal_solution& solution) {
  const modal_masses& masses = solution.masses;
  fmt::memory_buffer text;
  append(text, "  participation factors, rotations about the origin\n");
  print_names(text, "mode");
  for (std::size_t k = 0; k < masses.modes.size(); ++k) {
    append(text, "  {:>6}", k + 1);
    print_row(text, masses.modes[k].factor);
  }
  append(text, "  effective modal masses\n");
  print_names(text, "mode");
  for (std::size_t k = 0; k < masses.modes.size(); ++k) {
    append(text, "  {:>6}", k + 1);
    print_row(text, masses.modes[k].effective);
  }
  const by_direction sum = sum_of(masses);
  append(text, "  {:>6}", "sum");
  print_row(text, sum);
  append(text, "  {:>6}", "free");
  print_row(text, masses.free);
  append(text, "  {:>6}", "total");
  print_row(text, masses.total);
  print_shares(text, sum, masses.free);
  append(text, "  (free: of all modes; total: with what stands on held degrees of freedom; share: sum by free)\n");
  append(text, "  centre of the mass at ({:.6e}, {:.6e}, {:.6e})\n", masses.centre[0], masses.centre[1],
         masses.centre[2]);
  return fmt::to_string(text);
}

void write_modal_masses_csv(std::ostream& out, const step& s, const modal_solution& solution) {
  fmt::memory_buffer text;
  const bool masses = s.kind == step_kind::FREQUENCY;
  append(text, "mode,{}", masses ? "frequency,generalized_mass" : "factor");
  for (const char* const kind : {"factor", "effective"}) {
    for (const char* const name : COLUMNS) {
      if (masses) append(text, ",{}_{}", kind, name);
    }
  }
  append(text, "\n");
  for (std::size_t k = 0; k < solution.modes.size(); ++k) {
    append(text, "{},{}", k + 1, solution.modes[k].value);
    if (masses) {
      const modal_mass& one = solution.masses.modes[k];
      append(text, ",{}", one.generalised);
      for (const double value : one.factor) append(text, ",{}", value);
      for (const double value : one.effective) append(text, ",{}", value);
    }
    append(text, "\n");
  }
  if (masses) {
    write_row(text, "sum", sum_of(solution.masses));
    write_row(text, "free", solution.masses.free);
    write_row(text, "total", solution.masses.total);
  }
  out.write(text.data(), signed_index(text.size()));
}

}  // namespace solver
