// envelope.cpp: takes the results of steps into tables of bounds.
#include "analyses/envelope.h"

#include <algorithm>
#include <cmath>

#include "analyses/load_sums.h"
#include "analyses/reaction_sums.h"
#include "elements/load_case.h"
#include "elements/section_stresses.h"
#include "model/model_error.h"

namespace solver {

namespace {

constexpr double EQUAL_SHARE = 1e-9;
constexpr double NOTHING_SHARE = 1e-12;

// The value is taken exactly; the step that governs changes only where the difference is no rounding.
bool goes_beyond(double value, double bound, double nothing) {
  return value - bound > std::max(EQUAL_SHARE * std::max(std::fabs(value), std::fabs(bound)), nothing);
}

}  // namespace

bool bounds::take_largest(double value, int step, double nothing) {
  const bool governs = largest_step < 0 || goes_beyond(value, largest, nothing);
  if (governs) largest_step = step;
  if (governs || value > largest) largest = value;
  return governs;
}

bool bounds::take_least(double value, int step, double nothing) {
  const bool governs = least_step < 0 || goes_beyond(-value, -least, nothing);
  if (governs) least_step = step;
  if (governs || value < least) least = value;
  return governs;
}

bounds_table::bounds_table(std::size_t rows, std::vector<std::size_t> kinds)
    : kinds_(std::move(kinds)), all_(rows * kinds_.size()) {
  size_.assign(*std::max_element(kinds_.begin(), kinds_.end()) + 1, 0);
}

void bounds_table::measure(std::size_t column, double value) {
  double& size = size_[kinds_[column]];
  size = std::fmax(size, std::fabs(value));
}

void bounds_table::update(std::size_t row, std::size_t column, int step, double value) {
  bounds& b = all_[row * columns() + column];
  const double nothing = NOTHING_SHARE * size_[kinds_[column]];
  b.take_least(value, step, nothing);
  b.take_largest(value, step, nothing);
}

namespace {

using kinds = std::vector<std::size_t>;

const kinds VECTORS = {0, 0, 0, 1, 1, 1};  // displacements and rotations, forces and moments

template <class ITEM>
bool any(const std::vector<element>& elements, const ITEM& is) {
  return std::any_of(elements.begin(), elements.end(), [&](const element& e) { return is(e.type); });
}

// The points of the stations of a member, 0 where its section has none.
std::size_t points_of_field(const model& m, const envelope& e, std::size_t field) {
  return frame_section_of(m, m.elements[e.fields[field].element]).points.size() * e.stations_of_field[field];
}

void open_sums(const model& m, envelope& e) {
  e.held.assign(m.nodes.size(), 0);
  for (const named_set& set : m.nsets) e.sets.push_back({set.name, -1});
  e.sets.push_back({OTHER_SUPPORTS, -1});
  e.set_sums = {e.sets.size(), VECTORS};
  e.totals = {2, VECTORS};
}

void open_tables(const model& m, const step_results& results, const envelope_contents& wanted, envelope& e) {
  open_sums(m, e);
  e.displacement = bounds_table(m.nodes.size(), VECTORS);
  e.reaction = bounds_table(m.nodes.size(), VECTORS);
  if (any(m.elements, is_member)) e.ends = {m.elements.size(), {0, 0, 0, 1, 1, 1, 0, 0, 0, 1, 1, 1}};
  if (any(m.elements, is_plate)) e.plates = {m.elements.size(), {0, 0, 0, 1, 1, 1, 2, 2, 3, 3, 3}};
  e.fields = results.fields;
  e.members.resize(e.fields.size());
  std::size_t stations = 0;
  for (const member_field& f : e.fields) {
    e.stations_of_field.push_back(stations_of(m, f, wanted.station_count).size());
    stations += e.stations_of_field.back();
  }
  if (stations > 0) e.stations = {stations, {0, 0, 0, 1, 1, 1, 2, 2, 2, 3, 3, 3}};
  std::size_t points = 0;
  for (std::size_t f = 0; wanted.section_points && f < e.fields.size(); ++f) points += points_of_field(m, e, f);
  if (points > 0) e.section_points = {points, kinds(POINT_COLUMNS, 0)};
  e.at_parts = results.parts;
  e.at_solids = results.solids;
  if (!results.parts.empty()) e.parts = {results.parts.size(), kinds(SURFACES * STRESS_COLUMNS, 0)};
  if (!results.solids.empty()) e.solids = {results.solids.size(), kinds(SOLID_COLUMNS, 0)};
  if (!results.in_solids.empty()) e.in_solids = {results.in_solids.size(), kinds(SOLID_COLUMNS, 0)};
}

// Parts depend on sections and normals, fields on the elements: neither changes from step to step.
void require_same_places(const model& m, int step, const step_results& results, const envelope& e) {
  const auto same = [](const auto& a, const auto& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const auto& x, const auto& y) { return x.node == y.node && x.section == y.section; });
  };
  if (results.fields.size() == e.fields.size() && same(results.parts, e.at_parts) &&
      same(results.solids, e.at_solids)) {
    return;
  }
  throw model_error(m, m.steps[step], "*STEP", "an envelope cannot take the step: its results belong to other places");
}

double stress_of(const surface_stress& s, std::size_t column) {
  switch (column) {
    case FIRST: return s.first;
    case SECOND: return s.second;
    case VON_MISES: return s.equivalent;
    default: return s.stress[column];
  }
}

double plate_value(const element_result& r, std::size_t column) {
  if (column < OF_MOMENT) return r.force[column];
  if (column < OF_SHEAR) return r.moment[column - OF_MOMENT];
  if (column < OF_VON_MISES) return r.shear_force[column - OF_SHEAR];
  return r.at[column - OF_VON_MISES].equivalent;
}

double solid_value(const solid_stress& s, std::size_t column) {
  if (column < OF_PRINCIPAL) return s.stress[column];
  return column < OF_EQUIVALENT ? s.principal[column - OF_PRINCIPAL] : s.equivalent;
}

double station_value(const station& s, std::size_t column) {
  if (column < OF_ROTATION) return s.displacement[column];
  return column < OF_FORCES ? s.rotation[column - OF_ROTATION] : s.force[column - OF_FORCES];
}

using point_values = std::array<double, POINT_COLUMNS>;

void append_points(const frame_section& section, const station& s, std::vector<point_values>& all) {
  for (const section_point& p : section.points) {
    const point_stress stress = stress_at(section, p, s.force);
    all.push_back({stress.axial, stress.bending, stress.axial + stress.bending, s.force[1] / section.area,
                   s.force[2] / section.area});
  }
}

void take_stations(const model& m, int step, const step_results& results, const envelope_contents& wanted,
                   envelope& e) {
  if (e.stations.empty()) return;
  std::vector<station> all;
  std::vector<point_values> points;
  for (const member_field& f : results.fields) {
    const std::vector<station> along = stations_of(m, f, wanted.station_count);
    all.insert(all.end(), along.begin(), along.end());
    if (e.section_points.empty()) continue;
    for (const station& s : along) append_points(frame_section_of(m, m.elements[f.element]), s, points);
  }
  e.stations.take(step, [&](std::size_t r, std::size_t c) { return station_value(all[r], c); });
  e.section_points.take(step, [&](std::size_t r, std::size_t c) { return points[r][c]; });
}

// Two sets of one name are told one after the other, in the order of the deck.
void take_sums(const model& m, int step, const static_solution& solution, envelope& e) {
  const std::vector<char> held = held_nodes(m, solution.loads);
  for (std::size_t n = 0; n < held.size(); ++n) e.held[n] = static_cast<char>(e.held[n] | held[n]);
  std::vector<std::array<double, DIRECTIONS>> sums(e.sets.size());
  std::size_t at = 0;
  for (const set_reaction& own : reactions_by_set(m, solution)) {
    while (e.sets[at].set != own.set) ++at;
    e.sets[at].nodes = std::max(e.sets[at].nodes, own.nodes);
    sums[at++] = own.sum;
  }
  e.set_sums.take(step, [&](std::size_t r, std::size_t c) { return sums[r][c]; });
  const std::array<std::array<double, DIRECTIONS>, 2> totals = {resultant_of(m, solution.reaction),
                                                                resultant_of(m, solution.load)};
  e.totals.take(step, [&](std::size_t r, std::size_t c) { return totals[r][c]; });
}

double at_place(const member_field& f, const extreme& x) { return f.before + x.xi * f.length; }

void take(placed_bounds& b, const member_field& f, const value_range& range, int step, double nothing) {
  if (b.take_least(range.least.value, step, nothing)) b.least_at = at_place(f, range.least);
  if (b.take_largest(range.largest.value, step, nothing)) b.largest_at = at_place(f, range.largest);
}

void take_members(int step, const std::vector<member_field>& fields, envelope& e) {
  std::array<double, SECTION_FORCES> size{};
  for (const member_field& f : fields) {
    for (std::size_t i = 0; i < SECTION_FORCES; ++i) {
      const value_range range = range_of_force(f, i);
      double& kind = size[i < 3 ? 0 : 3];
      kind = std::max({kind, std::fabs(range.least.value), std::fabs(range.largest.value)});
    }
  }
  for (std::size_t k = 0; k < fields.size(); ++k) {
    member_bounds& own = e.members[k];
    for (std::size_t i = 0; i < SECTION_FORCES; ++i) {
      take(own.force[i], fields[k], range_of_force(fields[k], i), step, NOTHING_SHARE * size[i < 3 ? 0 : 3]);
    }
    if (fields[k].hanging) continue;
    const extreme most = largest_displacement(fields[k]);
    take(own.displacement, fields[k], {most, most}, step, 0);
  }
}

}  // namespace

void take_step(const model& m, int step, const static_solution& solution, const step_results& results,
               const envelope_contents& wanted, envelope& e) {
  if (e.steps.empty()) open_tables(m, results, wanted, e);
  require_same_places(m, step, results, e);
  e.steps.push_back(step);
  const auto by_node = [](const std::vector<double>& by_freedom) {
    return [&by_freedom](std::size_t node, std::size_t d) { return by_freedom[freedom(node, d)]; };
  };
  e.displacement.take(step, by_node(solution.displacement));
  e.reaction.take(step, by_node(solution.reaction));
  e.ends.take(step, [&](std::size_t r, std::size_t c) { return results.members[r][c]; });
  take_sums(m, step, solution, e);
  take_stations(m, step, results, wanted, e);
  take_members(step, results.fields, e);
  e.parts.take(step, [&](std::size_t r, std::size_t c) {
    return stress_of(results.parts[r].at[c / STRESS_COLUMNS], c % STRESS_COLUMNS);
  });
  e.plates.take(step, [&](std::size_t r, std::size_t c) { return plate_value(results.elements[r], c); });
  e.solids.take(step, [&](std::size_t r, std::size_t c) { return solid_value(results.solids[r].at, c); });
  e.in_solids.take(step, [&](std::size_t r, std::size_t c) { return solid_value(results.in_solids[r], c); });
}

}  // namespace solver
