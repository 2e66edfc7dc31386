// page_modes.cpp: modes of vibration and of buckling.
#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "report_page/page_fields.h"
#include "report_page/page_steps.h"

namespace solver {

void add_modes(page_json& data, const page_mesh& mesh, const step& s, const modal_solution& solution,
               page_buffers& buffers) {
  data["summary"].push_back(page_json::array({"equations", std::to_string(solution.equations)}));
  const bool masses = s.kind == step_kind::FREQUENCY && solution.masses.modes.size() == solution.modes.size();
  page_json modes = page_json::array();
  for (std::size_t k = 0; k < solution.modes.size(); ++k) {
    page_json own = {{"value", solution.modes[k].value},
                     {"shape", buffers.results(by_node(mesh, solution.modes[k].displacement, 0, 3), 3)}};
    if (masses) {
      own["generalised"] = solution.masses.modes[k].generalised;
      own["effective"] = solution.masses.modes[k].effective;
      own["factor"] = solution.masses.modes[k].factor;
    }
    modes.push_back(std::move(own));
  }
  data["modes"] = std::move(modes);
  if (!masses) return;
  data["masses"] = {
      {"total", solution.masses.total}, {"free", solution.masses.free}, {"centre", solution.masses.centre}};
}

}  // namespace solver
