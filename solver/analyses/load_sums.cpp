// load_sums.cpp: what each card puts on the nodes, added up.
#include "analyses/load_sums.h"

#include <algorithm>
#include <map>

#include "system/assembly.h"

namespace solver {

namespace {

constexpr std::size_t MOST_LINES = 8;  // of a keyword; more of them are added up

using group_key = std::pair<int, int>;  // file and line
using line_groups = std::map<group_key, std::vector<element_load>>;

// Of some loads of the step alone. As increments they are without the pretension of trusses.
std::array<double, DIRECTIONS> total_of_loads(const model& m, const step& s, library_model& library,
                                              std::vector<nodal_load> nodal, std::vector<element_load> elements) {
  step part;
  part.kind = s.kind;
  part.line = s.line;
  part.file = s.file;
  part.nodal_loads = std::move(nodal);
  part.element_loads = std::move(elements);
  load_case loads = gather_load_case(m, part);
  for (distributed_load& load : loads.element) load.increment = true;
  return resultant_of(m, assemble_loads(m, s, library, loads));
}

std::string line_name(const model& m, const std::string& keyword, const group_key& key) {
  return keyword +
         (key.first == 0 ? ", line " + std::to_string(key.second) : ", " + place_of(m, key.first, key.second));
}

}  // namespace

std::array<double, DIRECTIONS> resultant_of(const model& m, const std::vector<double>& by_freedom) {
  std::array<double, DIRECTIONS> sum{};
  for (std::size_t n = 0; n < m.nodes.size(); ++n) {
    const double* const f = by_freedom.data() + DIRECTIONS * n;
    const std::array<double, 3>& x = m.nodes[n].xyz;
    for (std::size_t i = 0; i < DIRECTIONS; ++i) sum[i] += f[i];
    sum[3] += x[1] * f[2] - x[2] * f[1];
    sum[4] += x[2] * f[0] - x[0] * f[2];
    sum[5] += x[0] * f[1] - x[1] * f[0];
  }
  return sum;
}

std::vector<load_sum> sum_loads(const model& m, const step& s, library_model& library) {
  const bool cables = std::any_of(m.frame_sections.begin(), m.frame_sections.end(),
                                  [](const frame_section& f) { return f.kind == frame_section_kind::CABLE; });
  if (cables) return {};
  std::vector<load_sum> sums;
  if (!s.nodal_loads.empty()) sums.push_back({"*CLOAD", total_of_loads(m, s, library, s.nodal_loads, {})});
  std::map<std::string, line_groups> by_keyword;
  for (const element_load& load : s.element_loads) by_keyword[load.keyword][{load.file, load.line}].push_back(load);
  for (const auto& [keyword, lines] : by_keyword) {
    std::vector<element_load> all;
    for (const auto& [key, loads] : lines) {
      if (lines.size() > MOST_LINES) {
        all.insert(all.end(), loads.begin(), loads.end());
      } else {
        sums.push_back({line_name(m, keyword, key), total_of_loads(m, s, library, {}, loads)});
      }
    }
    if (!all.empty()) sums.push_back({keyword, total_of_loads(m, s, library, {}, all)});
  }
  return sums;
}

}  // namespace solver
