// envelope_summary.cpp: tables of plain text.
#include "output/envelope_summary.h"

#include <array>
#include <cmath>
#include <functional>

#include <fmt/format.h>

#include "elements/load_case.h"
#include "output/case_names.h"

namespace solver {

namespace {

constexpr double BEYOND = 1e-9;  // values that are equal to rounding: the first of them is named

std::string named_step(const model& m, int step) {
  return m.steps[step].name.empty() ? fmt::format("step {}", step + 1)
                                    : fmt::format("step {}, {}", step + 1, m.steps[step].name);
}

std::string in_case(const model& m, int step) {
  return m.steps[step].name.empty() ? fmt::format("step {}", step + 1) : m.steps[step].name;
}

// The least and the largest of several bounds, and where they are.
struct model_range {
  const bounds* least = nullptr;
  const bounds* largest = nullptr;
  std::size_t least_row = 0, largest_row = 0;

  void take(const bounds& b, std::size_t row) {
    const auto beyond = [](double value, double than) { return value > than + BEYOND * std::fabs(than); };
    if (b.largest_step < 0) return;
    if (least == nullptr || beyond(-b.least, -least->least)) {
      least = &b;
      least_row = row;
    }
    if (largest == nullptr || beyond(b.largest, largest->largest)) {
      largest = &b;
      largest_row = row;
    }
  }
  bool is_something() const { return least != nullptr && (least->least != 0 || largest->largest != 0); }
};

using place_of_row = std::function<std::string(std::size_t row, bool largest)>;

void append_most(std::string& text, const model& m, const std::string& name, const model_range& found,
                 const place_of_row& place) {
  if (!found.is_something()) return;
  text += fmt::format("  least   {:<12} {:>13.6e}   {}, {}\n", name, found.least->least, place(found.least_row, false),
                      in_case(m, found.least->least_step));
  text += fmt::format("  largest {:<12} {:>13.6e}   {}, {}\n", name, found.largest->largest,
                      place(found.largest_row, true), in_case(m, found.largest->largest_step));
}

using names_of_columns = std::array<const char*, DIRECTIONS>;

// What is 0 in all steps counts among displacements, and is no reaction.
enum class zeros { COUNT, ARE_NONE };

void append_columns(std::string& text, const model& m, const bounds_table& table, const names_of_columns& names,
                    zeros rows_of_zeros, const place_of_row& place) {
  for (std::size_t c = 0; c < names.size(); ++c) {
    model_range found;
    for (std::size_t r = 0; r < table.rows(); ++r) {
      const bounds& b = table.at(r, c);
      const bool nothing = b.least == 0 && b.largest == 0;
      if (rows_of_zeros == zeros::COUNT || !nothing) found.take(b, r);
    }
    append_most(text, m, names[c], found, place);
  }
}

std::string member_place(const model& m, const envelope& e, std::size_t field, double distance) {
  return fmt::format("in element {} at {:.6g}", m.elements[e.fields[field].element].id, distance);
}

void append_members(std::string& text, const model& m, const envelope& e) {
  static const char* const NAMES[] = {"axial force", "shear y", "shear z", "torsion", "moment y", "moment z"};
  for (std::size_t i = 0; i < SECTION_FORCES; ++i) {
    model_range found;
    for (std::size_t f = 0; f < e.members.size(); ++f) found.take(e.members[f].force[i], f);
    append_most(text, m, NAMES[i], found, [&](std::size_t f, bool largest) {
      const placed_bounds& b = e.members[f].force[i];
      return member_place(m, e, f, largest ? b.largest_at : b.least_at);
    });
  }
  model_range deflection;
  for (std::size_t f = 0; f < e.members.size(); ++f) deflection.take(e.members[f].displacement, f);
  if (!deflection.is_something()) return;
  const placed_bounds& b = e.members[deflection.largest_row].displacement;
  text += fmt::format("  largest {:<12} {:>13.6e}   {}, {}\n", "deflection", b.largest,
                      member_place(m, e, deflection.largest_row, b.largest_at), in_case(m, b.largest_step));
}

// Von Mises' stress has no least one that says something.
void append_equivalent(std::string& text, const model& m, const std::string& name, const bounds_table& table,
                       std::size_t column, const std::function<std::string(std::size_t row)>& place) {
  model_range found;
  for (std::size_t r = 0; r < table.rows(); ++r) found.take(table.at(r, column), r);
  if (!found.is_something()) return;
  text += fmt::format("  largest {:<12} {:>13.6e}   {}, {}\n", name, found.largest->largest, place(found.largest_row),
                      in_case(m, found.largest->largest_step));
}

}  // namespace

std::string combination_summary(const model& m, const step& s) {
  std::string text = "  combines\n";
  for (const combined_step& term : s.combined) {
    text += fmt::format("  {:>12.6g} times {}\n", term.factor, named_step(m, term.step));
  }
  return text;
}

std::string envelope_summary(const model& m, const envelope& e) {
  std::string text = "  spans\n";
  for (const int step : e.steps) text += "    " + named_step(m, step) + "\n";
  const place_of_row at_node = [&](std::size_t n, bool) { return "at " + node_name(m, number_of(n)); };
  append_columns(text, m, e.displacement, {"ux", "uy", "uz", "rx", "ry", "rz"}, zeros::COUNT, at_node);
  append_columns(text, m, e.reaction,
                 {"reaction x", "reaction y", "reaction z", "reaction mx", "reaction my", "reaction mz"},
                 zeros::ARE_NONE, at_node);
  append_members(text, m, e);
  const char* const surfaces[] = {"top", "middle", "bottom"};
  for (std::size_t s = 0; s < SURFACES; ++s) {
    append_equivalent(text, m, std::string("Mises ") + surfaces[s], e.parts, s * STRESS_COLUMNS + VON_MISES,
                      [&](std::size_t p) { return "at " + node_name(m, e.at_parts[p].node); });
  }
  append_equivalent(text, m, "Mises solids", e.solids, OF_EQUIVALENT,
                    [&](std::size_t p) { return "at " + node_name(m, e.at_solids[p].node); });
  return text;
}

}  // namespace solver
