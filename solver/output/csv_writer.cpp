// csv_writer.cpp: numbers with the fewest digits that read back as the same double.
#include "output/csv_writer.h"

#include <functional>

#include "output/text.h"

namespace solver {

void write_csv(std::ostream& out, const model& m, const static_solution& solution) {
  out << "node,x,y,z,ux,uy,uz,rx,ry,rz,force_x,force_y,force_z,moment_x,moment_y,moment_z\n";
  fmt::memory_buffer text;
  for (std::size_t n = 0; n < m.nodes.size(); ++n) {
    if (is_made(m.nodes[n])) continue;
    append(text, "{}", m.nodes[n].id);
    for (const double x : m.nodes[n].xyz) append(text, ",{}", x);
    for (const std::vector<double>* values : {&solution.displacement, &solution.reaction}) {
      for (int d = 0; d < DIRECTIONS; ++d) {
        append(text, ",{}", (*values)[freedom(number_of(n), d)]);
      }
    }
    text.push_back('\n');
  }
  out.write(text.data(), signed_index(text.size()));
}

void write_modes_csv(std::ostream& out, const step& s, const modal_solution& solution) {
  out << (s.kind == step_kind::FREQUENCY ? "mode,frequency\n" : "mode,factor\n");
  for (std::size_t k = 0; k < solution.modes.size(); ++k) out << fmt::format("{},{}\n", k + 1, solution.modes[k].value);
}

namespace {

// A value along a member of the deck and its distance from the first end.
struct placed {
  double value = 0, distance = 0;
};

placed placed_in(const member_field& f, const extreme& e) { return {e.value, f.before + e.xi * f.length}; }
std::string joined(const placed& p) { return fmt::format(",{},{}", p.value, p.distance); }

using field_range = const member_field*;  // first and last of the parts of a member

placed largest_of(field_range first, field_range last, const std::function<extreme(const member_field&)>& of) {
  placed most = placed_in(*first, of(*first));
  for (field_range f = first + 1; f != last; ++f) {
    const placed here = placed_in(*f, of(*f));
    if (here.value > most.value) most = here;
  }
  return most;
}

// Least and largest section forces, the largest displacement, the sag of a cable: each with its place.
std::string extremes_along(field_range first, field_range last) {
  std::string text;
  for (std::size_t i = 0; i < SECTION_FORCES; ++i) {
    placed least = largest_of(first, last, [i](const member_field& f) {
      const extreme e = range_of_force(f, i).least;
      return extreme{-e.value, e.xi};
    });
    least.value = -least.value;
    text += joined(least);
    text += joined(largest_of(first, last, [i](const member_field& f) { return range_of_force(f, i).largest; }));
  }
  if (first->hanging) return text + ",," + joined(placed_in(*first, sag_of(*first->hanging)));
  return text + joined(largest_of(first, last, largest_displacement)) + ",,";
}

}  // namespace

// The parts of a member follow one another, and so do their fields: its first end is that of the first part, its second
// that of the last one.
void write_members_csv(std::ostream& out, const model& m, const step_results& results) {
  out << "element,end,force_x,force_y,force_z,moment_x,moment_y,moment_z";
  for (const char* const name : SECTION_FORCE_NAMES) out << fmt::format(",{0}_min,{0}_min_at,{0}_max,{0}_max_at", name);
  out << ",displacement_max,displacement_max_at,sag,sag_at\n";
  const std::string nothing(4 * SECTION_FORCES + 4, ',');
  std::size_t field = 0;
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    const element& elem = m.elements[e];
    if (!is_member(elem.type) || elem.part > 0) continue;
    const bool has_one = field < results.fields.size() && results.fields[field].element == e;
    const field_range first = results.fields.data() + field;
    const std::string along = has_one ? extremes_along(first, first + elem.parts) : nothing;
    field += has_one ? subscript(elem.parts) : 0;
    for (std::size_t end = 0; end < elem.nodes.size(); ++end) {
      out << fmt::format("{},{}", elem.id, end + 1);
      const end_forces& at_end = results.members[e + (end == 0 ? 0 : subscript(elem.parts - 1))];
      for (std::size_t i = 0; i < 6; ++i) out << fmt::format(",{}", at_end[6 * end + i]);
      out << along << '\n';
    }
  }
}

void write_stations_csv(std::ostream& out, const model& m, const step_results& results, int station_count) {
  out << "element,distance,x,y,z,ux,uy,uz,rx,ry,rz";
  for (const char* const name : SECTION_FORCE_NAMES) out << ',' << name;
  out << '\n';
  fmt::memory_buffer text;
  for (const member_field& f : results.fields) {
    for (const station& s : stations_of(m, f, station_count)) {
      append(text, "{},{}", m.elements[f.element].id, s.distance);
      for (const std::array<double, 3>* part : {&s.place, &s.displacement, &s.rotation}) {
        for (const double v : *part) append(text, ",{}", v);
      }
      for (const double v : s.force) append(text, ",{}", v);
      text.push_back('\n');
    }
  }
  out.write(text.data(), signed_index(text.size()));
}

void write_solids_csv(std::ostream& out, const model& m, const step_results& results) {
  out << "node,elset,elements,sxx,syy,szz,sxy,syz,sxz,first,second,third,von_mises\n";
  for (const solid_part& part : results.solids) {
    if (is_made(m.nodes[part.node])) continue;
    out << fmt::format("{},{},{}", m.nodes[part.node].id, table_field(m.solid_sections[part.section].elset),
                       part.elements);
    for (const double s : part.at.stress) out << fmt::format(",{}", s);
    for (const double s : part.at.principal) out << fmt::format(",{}", s);
    out << fmt::format(",{}\n", part.at.equivalent);
  }
}

void write_stresses_csv(std::ostream& out, const model& m, const step_results& results) {
  out << "node,elset,elements,x_x,x_y,x_z,normal_x,normal_y,normal_z";
  for (const char* const name : {"top", "middle", "bottom"}) {
    out << fmt::format(",sx_{0},sy_{0},sxy_{0},first_{0},second_{0},angle_{0},von_mises_{0}", name);
  }
  out << '\n';
  for (const nodal_part& part : results.parts) {
    if (is_made(m.nodes[part.node])) continue;
    out << fmt::format("{},{},{}", m.nodes[part.node].id, table_field(m.shell_sections[part.section].elset),
                       part.elements);
    for (const int row : {1, 3}) {
      for (int i = 1; i <= 3; ++i) out << fmt::format(",{}", part.axes(row, i));
    }
    for (const surface_stress& at : part.at) {
      out << fmt::format(",{},{},{},{},{},{},{}", at.stress[0], at.stress[1], at.stress[2], at.first, at.second,
                         at.angle, at.equivalent);
    }
    out << '\n';
  }
}

}  // namespace solver
