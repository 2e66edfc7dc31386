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

}  // namespace solver
