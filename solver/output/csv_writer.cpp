// csv_writer.cpp: numbers with the fewest digits that read back as the same double.
#include "output/csv_writer.h"

#include "output/text.h"

namespace solver {

void write_csv(std::ostream& out, const model& m, const static_solution& solution) {
  out << "node,x,y,z,ux,uy,uz,rx,ry,rz,force_x,force_y,force_z,moment_x,moment_y,moment_z\n";
  fmt::memory_buffer text;
  for (std::size_t n = 0; n < m.nodes.size(); ++n) {
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

static std::string joined(const extreme& e, double length) { return fmt::format(",{},{}", e.value, e.xi * length); }

// Least and largest section forces, the largest displacement, the sag of a cable: each with its place.
static std::string extremes_along(const member_field& f) {
  std::string text;
  for (std::size_t i = 0; i < SECTION_FORCES; ++i) {
    const value_range range = range_of_force(f, i);
    text += joined(range.least, f.length) + joined(range.largest, f.length);
  }
  if (f.hanging) return text + ",," + joined(sag_of(*f.hanging), f.length);
  return text + joined(largest_displacement(f), f.length) + ",,";
}

void write_members_csv(std::ostream& out, const model& m, const step_results& results) {
  out << "element,end,force_x,force_y,force_z,moment_x,moment_y,moment_z";
  for (const char* const name : SECTION_FORCE_NAMES) out << fmt::format(",{0}_min,{0}_min_at,{0}_max,{0}_max_at", name);
  out << ",displacement_max,displacement_max_at,sag,sag_at\n";
  const std::string nothing(4 * SECTION_FORCES + 4, ',');
  auto field = results.fields.begin();
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    if (!is_member(m.elements[e].type)) continue;
    const bool has_one = field != results.fields.end() && field->element == e;
    const std::string along = has_one ? extremes_along(*field++) : nothing;
    for (std::size_t end = 0; end < m.elements[e].nodes.size(); ++end) {
      out << fmt::format("{},{}", m.elements[e].id, end + 1);
      for (std::size_t i = 0; i < 6; ++i) out << fmt::format(",{}", results.members[e][6 * end + i]);
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
    out << fmt::format("{},{},{}", m.nodes[part.node].id, m.solid_sections[part.section].elset, part.elements);
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
    out << fmt::format("{},{},{}", m.nodes[part.node].id, m.shell_sections[part.section].elset, part.elements);
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
