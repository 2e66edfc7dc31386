// csv_writer.cpp: numbers with the fewest digits that read back as the same double.
#include "csv_writer.h"

#include <iterator>

#include <fmt/format.h>

namespace solver {

void write_csv(std::ostream& out, const model& m, const static_solution& solution) {
  out << "node,x,y,z,ux,uy,uz,rx,ry,rz,force_x,force_y,force_z,moment_x,moment_y,moment_z\n";
  fmt::memory_buffer text;
  for (std::size_t n = 0; n < m.nodes.size(); ++n) {
    fmt::format_to(std::back_inserter(text), "{}", m.nodes[n].id);
    for (const double x : m.nodes[n].xyz) fmt::format_to(std::back_inserter(text), ",{}", x);
    for (const std::vector<double>* values : {&solution.displacement, &solution.reaction})
      for (int d = 0; d < DIRECTIONS; ++d)
        fmt::format_to(std::back_inserter(text), ",{}", (*values)[freedom(static_cast<int>(n), d)]);
    text.push_back('\n');
  }
  out.write(text.data(), static_cast<std::streamsize>(text.size()));
}

void write_modes_csv(std::ostream& out, const step& s, const modal_solution& solution) {
  out << (s.kind == step_kind::FREQUENCY ? "mode,frequency\n" : "mode,factor\n");
  for (std::size_t k = 0; k < solution.modes.size(); ++k) out << fmt::format("{},{}\n", k + 1, solution.modes[k].value);
}

void write_members_csv(std::ostream& out, const model& m, const step_results& results) {
  out << "element,end,force_x,force_y,force_z,moment_x,moment_y,moment_z\n";
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    if (is_plate(m.elements[e].type)) continue;
    for (std::size_t end = 0; end < m.elements[e].nodes.size(); ++end) {
      out << fmt::format("{},{}", m.elements[e].id, end + 1);
      for (std::size_t i = 0; i < 6; ++i) out << fmt::format(",{}", results.members[e][6 * end + i]);
      out << '\n';
    }
  }
}

}  // namespace solver
