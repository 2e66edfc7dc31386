// reactions_csv.cpp: one table of three kinds of lines.
#include "output/reactions_csv.h"

#include "analyses/load_sums.h"
#include "analyses/reaction_sums.h"
#include "output/text.h"

namespace solver {

namespace {

using buffer = fmt::memory_buffer;

void append_values(buffer& text, const double* values) {
  for (int d = 0; d < DIRECTIONS; ++d) append(text, ",{}", values[d]);
  append(text, "\n");
}

int append_nodes(buffer& text, const model& m, const static_solution& solution) {
  const std::vector<char> held = held_nodes(m, solution.loads);
  int count = 0;
  for (int n = 0; n < count_of(m.nodes); ++n) {
    if (held[subscript(n)] == 0) continue;
    const node& at = m.nodes[n];
    append(text, "node,{},1", is_made(at) ? node_name(m, n) : std::to_string(at.id));
    for (const double x : at.xyz) append(text, ",{}", x);
    append_values(text, solution.reaction.data() + freedom(n, 0));
    if (!is_made(at)) ++count;
  }
  return count;
}

void append_sum(buffer& text, const char* kind, const std::string& name, const std::string& nodes,
                const std::array<double, DIRECTIONS>& sum) {
  append(text, "{},{},{},,,", kind, name, nodes);
  append_values(text, sum.data());
}

}  // namespace

void write_reactions_csv(std::ostream& out, const model& m, const static_solution& solution) {
  buffer text;
  append(text, "kind,name,nodes,x,y,z,force_x,force_y,force_z,moment_x,moment_y,moment_z\n");
  const int held = append_nodes(text, m, solution);
  for (const set_reaction& each : reactions_by_set(m, solution)) {
    append_sum(text, "set", table_field(each.set), std::to_string(each.nodes), each.sum);
  }
  append_sum(text, "total", "reactions", std::to_string(held), resultant_of(m, solution.reaction));
  append_sum(text, "total", "loads", "", resultant_of(m, solution.load));
  out.write(text.data(), signed_index(text.size()));
}

}  // namespace solver
