// plastic_output.cpp: what a step with yielding plates prints, and its curve.
#include <fmt/format.h>

#include "elastoplastic/elastoplastic.h"
#include "output/text.h"

namespace solver {

std::string how_it_ended(const elastoplastic_solution& solution) {
  const std::string factor = fmt::format("{:.6g}", solution.factor);
  const std::string largest = fmt::format("{:.6g}", solution.largest_factor);
  switch (solution.end) {
    case elastoplastic_end::LIMIT:
      return "limit point: load factor " + largest + "; the displacements grow and the load no longer does";
    case elastoplastic_end::NO_EQUILIBRIUM:
      return "stopped at load factor " + factor + ": no equilibrium was found beyond it; the largest was " + largest;
    case elastoplastic_end::FACTOR_REACHED: return "the largest load factor of the deck is reached, " + factor;
    default:
      return "stopped at load factor " + factor + " after the largest number of increments; the largest factor was " +
             largest;
  }
}

std::string elastoplastic_summary(const model& m, const step&, const elastoplastic_solution& solution) {
  fmt::memory_buffer text;
  append(text, "  {}\n", how_it_ended(solution));
  if (solution.first_yield > 0) append(text, "  first yield at load factor {:.9g}\n", solution.first_yield);
  append(text, "  {} increments, {} halved; largest force out of balance {:.1e} of the loads\n",
         solution.curve.size() - 1, solution.cuts, solution.out_of_balance);
  append(text, "  {:>9} {:>14} {:>14} {:>8} {:>10}   node {} {}\n", "increment", "load factor", "displacement",
         "flowing", "iterations", m.nodes[solution.node].id, direction_short_name(solution.direction));
  for (std::size_t k = 1; k < solution.curve.size(); ++k) {
    const yielding_point& p = solution.curve[k];
    append(text, "  {:>9} {:>14.9f} {:>14.6e} {:>8} {:>10}\n", k, p.factor, p.displacement, p.flowing, p.iterations);
  }
  return fmt::to_string(text);
}

void write_curve_csv(std::ostream& out, const model& m, const elastoplastic_solution& solution) {
  out << "point,load_factor,node,direction,displacement,flowing_points,iterations\n";
  for (std::size_t k = 0; k < solution.curve.size(); ++k) {
    const yielding_point& p = solution.curve[k];
    out << fmt::format("{},{},{},{},{},{},{}\n", k, p.factor, m.nodes[solution.node].id,
                       direction_short_name(solution.direction), p.displacement, p.flowing, p.iterations);
  }
}

}  // namespace solver
