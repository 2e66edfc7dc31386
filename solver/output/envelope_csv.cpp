// envelope_csv.cpp: numbers with the fewest digits that read back as the same double.
#include "output/envelope_csv.h"

#include <initializer_list>
#include <string>

#include "elements/load_case.h"
#include "output/case_names.h"
#include "output/text.h"

namespace solver {

namespace {

using buffer = fmt::memory_buffer;

// The names of steps, made once.
class case_fields {
 public:
  explicit case_fields(const model& m) {
    for (int s = 0; s < count_of(m.steps); ++s) names_.push_back(case_field(m, s));
  }
  const std::string& of(int step) const { return step < 0 ? none_ : names_[step]; }

 private:
  numbered<std::string> names_;
  std::string none_;
};

void append_names(buffer& out, const std::string& name) {
  append(out, ",{0}_min,{0}_min_case,{0}_max,{0}_max_case", name);
}

void append_bounds(buffer& out, const case_fields& cases, const bounds& b) {
  append(out, ",{},{},{},{}", b.least, cases.of(b.least_step), b.largest, cases.of(b.largest_step));
}

void append_row(buffer& out, const case_fields& cases, const bounds_table& table, std::size_t row, std::size_t first,
                std::size_t count) {
  for (std::size_t c = first; c < first + count; ++c) append_bounds(out, cases, table.at(row, c));
}

void write(std::ostream& out, const buffer& text) { out.write(text.data(), signed_index(text.size())); }

// Of the parts of a member that one with the smallest or largest value.
placed_bounds joined(const envelope& e, std::size_t first, std::size_t last,
                     const placed_bounds& (*of)(const member_bounds&, std::size_t), std::size_t which) {
  placed_bounds all = of(e.members[first], which);
  for (std::size_t f = first + 1; f < last; ++f) {
    const placed_bounds& here = of(e.members[f], which);
    if (here.least < all.least) {
      all.least = here.least;
      all.least_at = here.least_at;
      all.least_step = here.least_step;
    }
    if (here.largest > all.largest) {
      all.largest = here.largest;
      all.largest_at = here.largest_at;
      all.largest_step = here.largest_step;
    }
  }
  return all;
}

const placed_bounds& force_of(const member_bounds& b, std::size_t which) { return b.force[which]; }
const placed_bounds& displacement_of(const member_bounds& b, std::size_t /*which*/) { return b.displacement; }

void append_along(buffer& text, const case_fields& cases, const envelope& e, std::size_t first, std::size_t last) {
  for (std::size_t i = 0; i < SECTION_FORCES; ++i) {
    const placed_bounds b = joined(e, first, last, force_of, i);
    append(text, ",{},{},{},{},{},{}", b.least, b.least_at, cases.of(b.least_step), b.largest, b.largest_at,
           cases.of(b.largest_step));
  }
  const placed_bounds u = joined(e, first, last, displacement_of, 0);
  if (u.largest_step < 0) {
    append(text, ",,,");
  } else {
    append(text, ",{},{},{}", u.largest, u.largest_at, cases.of(u.largest_step));
  }
}

}  // namespace

void write_envelope_csv(std::ostream& out, const model& m, const envelope& e) {
  const case_fields cases(m);
  buffer text;
  append(text, "node,x,y,z");
  for (const char* const name :
       {"ux", "uy", "uz", "rx", "ry", "rz", "force_x", "force_y", "force_z", "moment_x", "moment_y", "moment_z"}) {
    append_names(text, name);
  }
  append(text, "\n");
  for (std::size_t n = 0; n < m.nodes.size(); ++n) {
    if (is_made(m.nodes[n])) continue;
    append(text, "{}", m.nodes[n].id);
    for (const double x : m.nodes[n].xyz) append(text, ",{}", x);
    append_row(text, cases, e.displacement, n, 0, DIRECTIONS);
    append_row(text, cases, e.reaction, n, 0, DIRECTIONS);
    append(text, "\n");
  }
  write(out, text);
}

void write_envelope_reactions_csv(std::ostream& out, const model& m, const envelope& e) {
  const case_fields cases(m);
  buffer text;
  append(text, "kind,name,nodes,x,y,z");
  for (const char* const name : {"force_x", "force_y", "force_z", "moment_x", "moment_y", "moment_z"}) {
    append_names(text, name);
  }
  append(text, "\n");
  const auto finish_row = [&](const bounds_table& table, std::size_t row) {
    append_row(text, cases, table, row, 0, DIRECTIONS);
    append(text, "\n");
  };
  int held = 0;
  for (std::size_t n = 0; n < m.nodes.size(); ++n) {
    if (e.held[n] == 0) continue;
    const node& at = m.nodes[n];
    append(text, "node,{},1", is_made(at) ? node_name(m, number_of(n)) : std::to_string(at.id));
    for (const double x : at.xyz) append(text, ",{}", x);
    finish_row(e.reaction, n);
    if (!is_made(at)) ++held;
  }
  for (std::size_t s = 0; s < e.sets.size(); ++s) {
    if (e.sets[s].nodes < 0) continue;
    append(text, "set,{},{},,,", table_field(e.sets[s].set), e.sets[s].nodes);
    finish_row(e.set_sums, s);
  }
  append(text, "total,reactions,{},,,", held);
  finish_row(e.totals, 0);
  append(text, "total,loads,,,,");
  finish_row(e.totals, 1);
  write(out, text);
}

void write_envelope_points_csv(std::ostream& out, const model& m, const envelope& e) {
  const case_fields cases(m);
  buffer text;
  append(text, "element,distance,point,x1,x2");
  for (const char* const name : {"axial", "bending", "stress", "shear_1", "shear_2"}) append_names(text, name);
  append(text, "\n");
  std::size_t row = 0;
  for (std::size_t f = 0; !e.section_points.empty() && f < e.fields.size(); ++f) {
    const element& own = m.elements[e.fields[f].element];
    const std::vector<section_point>& points = frame_section_of(m, own).points;
    if (points.empty()) continue;
    for (const station& s : stations_of(m, e.fields[f], number_of(e.stations_of_field[f]))) {
      for (const section_point& p : points) {
        append(text, "{},{},{},{},{}", own.id, s.distance, p.number, p.x1, p.x2);
        append_row(text, cases, e.section_points, row++, 0, POINT_COLUMNS);
        append(text, "\n");
      }
    }
  }
  write(out, text);
}

void write_envelope_members_csv(std::ostream& out, const model& m, const envelope& e) {
  const case_fields cases(m);
  buffer text;
  append(text, "element,end");
  for (const char* const name : {"force_x", "force_y", "force_z", "moment_x", "moment_y", "moment_z"}) {
    append_names(text, name);
  }
  for (const char* const name : SECTION_FORCE_NAMES) {
    append(text, ",{0}_min,{0}_min_at,{0}_min_case,{0}_max,{0}_max_at,{0}_max_case", name);
  }
  append(text, ",displacement_max,displacement_max_at,displacement_max_case\n");
  const std::string nothing(6 * SECTION_FORCES + 3, ',');
  std::size_t field = 0;
  for (std::size_t i = 0; i < m.elements.size(); ++i) {
    const element& elem = m.elements[i];
    if (!is_member(elem.type) || elem.part > 0) continue;
    const bool has_one = field < e.fields.size() && e.fields[field].element == i;
    const std::size_t parts = subscript(elem.parts);
    buffer along;
    if (has_one) append_along(along, cases, e, field, field + parts);
    field += has_one ? parts : 0;
    for (std::size_t end = 0; end < elem.nodes.size(); ++end) {
      append(text, "{},{}", elem.id, end + 1);
      append_row(text, cases, e.ends, i + (end == 0 ? 0 : parts - 1), 6 * end, 6);
      append(text, "{}\n", has_one ? std::string(along.data(), along.size()) : nothing);
    }
  }
  write(out, text);
}

void write_envelope_stations_csv(std::ostream& out, const model& m, const envelope& e) {
  const case_fields cases(m);
  buffer text;
  append(text, "element,distance,x,y,z");
  for (const char* const name : {"ux", "uy", "uz", "rx", "ry", "rz"}) append_names(text, name);
  for (const char* const name : SECTION_FORCE_NAMES) append_names(text, name);
  append(text, "\n");
  std::size_t row = 0;
  for (std::size_t f = 0; f < e.fields.size(); ++f) {
    for (const station& s : stations_of(m, e.fields[f], number_of(e.stations_of_field[f]))) {
      append(text, "{},{}", m.elements[e.fields[f].element].id, s.distance);
      for (const double x : s.place) append(text, ",{}", x);
      append_row(text, cases, e.stations, row++, 0, STATION_COLUMNS);
      append(text, "\n");
    }
  }
  write(out, text);
}

void write_envelope_stresses_csv(std::ostream& out, const model& m, const envelope& e) {
  const case_fields cases(m);
  buffer text;
  append(text, "node,elset,elements,x_x,x_y,x_z,normal_x,normal_y,normal_z");
  for (const char* const surface : {"top", "middle", "bottom"}) {
    for (const char* const name : {"sx", "sy", "sxy", "first", "second", "von_mises"}) {
      append_names(text, std::string(name) + "_" + surface);
    }
  }
  append(text, "\n");
  for (std::size_t p = 0; p < e.at_parts.size(); ++p) {
    const nodal_part& part = e.at_parts[p];
    if (is_made(m.nodes[part.node])) continue;
    append(text, "{},{},{}", m.nodes[part.node].id, table_field(m.shell_sections[part.section].elset), part.elements);
    for (const int row : {1, 3}) {
      for (int i = 1; i <= 3; ++i) append(text, ",{}", part.axes(row, i));
    }
    append_row(text, cases, e.parts, p, 0, SURFACES * STRESS_COLUMNS);
    append(text, "\n");
  }
  write(out, text);
}

void write_envelope_solids_csv(std::ostream& out, const model& m, const envelope& e) {
  const case_fields cases(m);
  buffer text;
  append(text, "node,elset,elements");
  for (const char* const name : {"sxx", "syy", "szz", "sxy", "syz", "sxz", "first", "second", "third", "von_mises"}) {
    append_names(text, name);
  }
  append(text, "\n");
  for (std::size_t p = 0; p < e.at_solids.size(); ++p) {
    const solid_part& part = e.at_solids[p];
    if (is_made(m.nodes[part.node])) continue;
    append(text, "{},{},{}", m.nodes[part.node].id, table_field(m.solid_sections[part.section].elset), part.elements);
    append_row(text, cases, e.solids, p, 0, SOLID_COLUMNS);
    append(text, "\n");
  }
  write(out, text);
}

}  // namespace solver
