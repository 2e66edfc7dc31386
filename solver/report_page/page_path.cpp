// page_path.cpp: load factor and displacement along a path, its hinges, and the deformed states that were kept.
#include <algorithm>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "report_page/page_fields.h"
#include "report_page/page_steps.h"

namespace solver {

namespace {

// The translations of the nodes of the page.
std::vector<float> shown_nodes(const page_mesh& mesh, const std::vector<float>& translations) {
  std::vector<float> values;
  values.reserve(3 * mesh.nodes.size());
  for (const int n : mesh.nodes) {
    const auto at = translations.begin() + 3 * signed_index(n);
    values.insert(values.end(), at, at + 3);
  }
  return values;
}

// Others may have asked for more states than the page has room for.
page_json states_of(const page_mesh& mesh, const std::vector<path_state>& kept, page_buffers& buffers) {
  const std::size_t count = std::min(kept.size(), mesh.states_of_path());
  page_json all = page_json::array();
  for (std::size_t i = 0; i < count; ++i) {
    const path_state& state = kept[count == 1 ? 0 : i * (kept.size() - 1) / (count - 1)];
    page_json fields = page_json::array();
    if (!mesh.outline && !state.equivalent_plastic.empty()) {
      fields.push_back(as_data(equivalent_plastic_field(state.equivalent_plastic), buffers));
    }
    all.push_back({{"point", state.point},
                   {"displacement", buffers.results(shown_nodes(mesh, state.displacement), 3)},
                   {"fields", std::move(fields)}});
  }
  return all;
}

template <class CURVE>
page_json begin_path(const page_mesh& mesh, const CURVE& curve, int node, int direction, page_buffers& buffers) {
  std::vector<float> factor, displacement;
  for (const auto& point : curve) {
    factor.push_back(as_float(point.factor));
    displacement.push_back(as_float(point.displacement));
  }
  return {{"node", mesh.number_of_node(node)},
          {"dof", direction_short_name(direction)},
          {"factor", buffers.exact(factor)},
          {"displacement", buffers.exact(displacement)}};
}

const char* name_of(event_kind kind) {
  switch (kind) {
    case event_kind::FORMED: return "formed";
    case event_kind::CLOSED: return "closed";
    default: return "turned";
  }
}

// An event lies at the first point of the curve that has its factor; the factors of a pushover do not fall.
page_json events_of(const pushover_solution& path) {
  page_json all = page_json::array();
  std::size_t point = 0;
  for (const hinge_event& e : path.events) {
    while (point + 1 < path.curve.size() && path.curve[point].factor < e.factor) ++point;
    all.push_back({{"factor", e.factor},
                   {"element", e.element},
                   {"end", e.end + 1},
                   {"kind", name_of(e.kind)},
                   {"point", point},
                   {"forces", {e.forces.P, e.forces.My, e.forces.Mz}}});
  }
  return all;
}

void add_row(page_json& data, const char* name, const std::string& value) {
  data["summary"].push_back(page_json::array({name, value}));
}

}  // namespace

void add_path(page_json& data, const page_mesh& mesh, const model& m, const step& s, const pushover_solution& path,
              page_buffers& buffers) {
  page_json own = begin_path(mesh, path.curve, path.node, path.direction, buffers);
  own["end"] = how_it_ended(m, s, path);
  own["states"] = states_of(mesh, path.kept, buffers);
  own["events"] = events_of(path);
  own["goes_on"] = s.pushover.goes_on;
  const auto count = [&](event_kind kind) {
    return std::count_if(path.events.begin(), path.events.end(),
                         [kind](const hinge_event& e) { return e.kind == kind; });
  };
  add_row(data, "load factor reached", fmt::format("{:.9g}", path.factor));
  add_row(data, "hinges formed", std::to_string(count(event_kind::FORMED)));
  add_row(data, "hinges closed", std::to_string(count(event_kind::CLOSED)));
  if (path.span) add_row(data, "valid up to load factor", fmt::format("{:.9g}", path.span->factor));
  data["path"] = std::move(own);
}

void add_path(page_json& data, const page_mesh& mesh, const elastoplastic_solution& path, page_buffers& buffers) {
  page_json own = begin_path(mesh, path.curve, path.node, path.direction, buffers);
  own["end"] = how_it_ended(path);
  own["states"] = states_of(mesh, path.kept, buffers);
  own["events"] = page_json::array();
  if (path.first_yield > 0) add_row(data, "first yield at load factor", fmt::format("{:.9g}", path.first_yield));
  add_row(data, "largest load factor", fmt::format("{:.9g}", path.largest_factor));
  add_row(data, "increments", fmt::format("{}, {} halved", path.curve.size() - 1, path.cuts));
  add_row(data, "largest force out of balance, by the loads", fmt::format("{:.1e}", path.out_of_balance));
  data["path"] = std::move(own);
}

}  // namespace solver
