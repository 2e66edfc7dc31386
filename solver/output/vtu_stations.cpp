// vtu_stations.cpp: point data of members.
#include "output/vtu_stations.h"

#include <algorithm>

namespace solver {

vtu_points::vtu_points(const model& m, const step_results& results, int station_count) : vtu_points(m) {
  if (results.fields.empty()) return;
  first_.assign(m.elements.size() + 1, 0);
  std::size_t e = 0;
  for (const member_field& f : results.fields) {
    for (; e <= f.element; ++e) first_[e] = stations_.size();
    const std::vector<station> along = stations_of(m, f, station_count);
    stations_.insert(stations_.end(), along.begin(), along.end());
    field_.insert(field_.end(), along.size(), &f);
  }
  for (; e < first_.size(); ++e) first_[e] = stations_.size();
}

int vtu_points::id(std::size_t point) const {
  return is_node(point) && !is_made(model_.nodes[point]) ? model_.nodes[point].id : -1;
}

double vtu_points::place(std::size_t point, int i) const {
  const auto k = subscript(i);
  return is_node(point) ? model_.nodes[point].xyz[k] : at(point).place[k];
}

std::vector<int> vtu_points::of_element(std::size_t e) const {
  if (first_.empty() || first_[e] == first_[e + 1]) return model_.elements[e].nodes;
  std::vector<int> points;
  for (std::size_t s = first_[e]; s < first_[e + 1]; ++s) points.push_back(number_of(nodes_ + s));
  return points;
}

void vtu_points::write_places(const vtu_data& data) const {
  data_array(data, "station_element", "Int32", count(), SCALAR,
             [&](std::size_t p, int) { return is_node(p) ? -1 : model_.elements[field_[p - nodes_]->element].id; });
  reals(data, "station_distance", count(), SCALAR, [&](std::size_t p, int) { return is_node(p) ? 0 : at(p).distance; });
}

void vtu_points::write(const vtu_data& data) const {
  if (stations_.empty()) return;
  write_places(data);
  const bool beams = std::any_of(field_.begin(), field_.end(), [&](const member_field* f) {
    return frame_section_of(model_, model_.elements[f->element]).kind == frame_section_kind::BEAM;
  });
  for (std::size_t i = 0; i < (beams ? SECTION_FORCES : 1); ++i) {
    reals(data, SECTION_FORCE_NAMES[i], count(), SCALAR,
          [&](std::size_t p, int) { return is_node(p) ? 0 : at(p).force[i]; });
  }
  if (beams) write_diagrams(data);
}

// Ordinates of the diagrams as vectors across the member, for a filter that shifts points by them: moments on the side
// of the tension, My along z and Mz against y; shear forces along y and z.
void vtu_points::write_diagrams(const vtu_data& data) const {
  const auto ordinate = [&](std::size_t p, int i, std::size_t along_y, double sign, std::size_t along_z) {
    if (is_node(p)) return 0.0;
    const MATRIX<3, 3>& axes = field_[p - nodes_]->axes;
    return sign * at(p).force[along_y] * axes(2, i + 1) + at(p).force[along_z] * axes(3, i + 1);
  };
  reals(data, "moment_diagram", count(), XYZ, [&](std::size_t p, int i) { return ordinate(p, i, 5, -1, 4); });
  reals(data, "shear_diagram", count(), XYZ, [&](std::size_t p, int i) { return ordinate(p, i, 1, 1, 2); });
}

}  // namespace solver
