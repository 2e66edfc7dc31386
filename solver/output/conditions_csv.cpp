// conditions_csv.cpp: card by card, node by node.
#include "output/conditions_csv.h"

#include <string>

#include "analyses/condition_forces.h"
#include "analyses/load_sums.h"
#include "output/text.h"

namespace solver {

namespace {

using buffer = fmt::memory_buffer;
using six = std::array<double, DIRECTIONS>;

void append_values(buffer& text, const six& values) {
  for (const double value : values) append(text, ",{}", value);
  append(text, "\n");
}

void append_node(buffer& text, const model& m, const std::string& head, const node_force& at) {
  const node& n = m.nodes[at.node];
  append(text, "{},{}", head, is_made(n) ? node_name(m, at.node) : std::to_string(n.id));
  for (const double x : n.xyz) append(text, ",{}", x);
  append_values(text, at.force);
}

void append_sum(buffer& text, const std::string& head, const six& sum) {
  append(text, "{},,,,", head);
  append_values(text, sum);
}

}  // namespace

void write_conditions_csv(std::ostream& out, const model& m, const static_solution& solution) {
  buffer text;
  append(text, "kind,card,place,node,x,y,z,force_x,force_y,force_z,moment_x,moment_y,moment_z\n");
  six all{};
  for (const card_force& card : forces_of_conditions(m, solution)) {
    const std::string place = card.keyword + "," + table_field(place_of(m, card.file, card.line));
    for (const node_force& at : card.nodes) append_node(text, m, "node," + place, at);
    append_sum(text, "card," + place, card.sum);
    for (std::size_t i = 0; i < DIRECTIONS; ++i) all[i] += card.sum[i];
  }
  for (const node_force& at : moments_of_turned_arms(solution)) {
    append_node(text, m, "arms,,", at);
    for (std::size_t i = 0; i < DIRECTIONS; ++i) all[i] += at.force[i];
  }
  append_sum(text, "total,conditions,", all);
  append_sum(text, "total,reactions,", resultant_of(m, solution.reaction));
  append_sum(text, "total,loads,", resultant_of(m, solution.load));
  out.write(text.data(), signed_index(text.size()));
}

}  // namespace solver
