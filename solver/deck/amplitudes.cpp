// amplitudes.cpp: *AMPLITUDE, and the cards that name one. A step here is solved once, for its end: what stands on the
// data lines is taken with the value of the table at that time.
#include <algorithm>
#include <charconv>

#include "deck/fields.h"
#include "deck/keywords.h"

namespace solver::deck {

static void check_form(const build& b, const card& c) {
  const std::string definition = squeezed(c.value("DEFINITION"));
  if (!definition.empty() && definition != "TABULAR") {
    b.deck.fail(c, "DEFINITION=" + c.value("DEFINITION") +
                       " is not supported; TABULAR is: a step takes the value at its end, which a table of two lines "
                       "can give");
  }
  for (const char* const name : {"SHIFTX", "SHIFTY"}) {
    if (c.find(name) != nullptr && real_parameter(b, c, name) != 0) {
      b.deck.fail(c, std::string(name) + " is not supported: give the shifted times and values");
    }
  }
}

static void read_points(const build& b, const card& c, amplitude& a) {
  for (const data_line* l = b.deck.begin_of(c); l != b.deck.end_of(c); ++l) {
    const data_fields row(b, c, *l);
    if (row.count() % 2 != 0 || row.count() > 8) row.expect(8, 8, "time, value, and so on, four pairs on a line");
    for (int i = 0; i < row.count(); i += 2) {
      const double time = row.real(i, "time"), value = row.real(i + 1, "value");
      if (!a.points.empty() && time <= a.points.back()[0]) {
        row.fail("time: " + in_quotes(row.text(i)) + " does not lie after the time before it");
      }
      a.points.push_back({time, value});
    }
  }
}

void read_amplitude(build& b, const card& c) {
  amplitude a;
  a.name = checked_name(b, c, c.value("NAME"));
  a.line = c.line;
  a.file = c.file;
  const auto known = b.amplitudes.find(a.name);
  if (known != b.amplitudes.end()) {
    const amplitude& first = b.amplitude_tables[known->second];
    b.deck.fail(c, "the amplitude " + in_quotes(a.name) + " is defined already, in " +
                       b.other_place(c, first.file, first.line));
  }
  check_form(b, c);
  const std::string time = squeezed(c.value("TIME")), value = squeezed(c.value("VALUE"));
  if (!time.empty() && time != "STEPTIME" && time != "TOTALTIME") {
    b.deck.fail(c, "TIME is STEP TIME or TOTAL TIME, not " + in_quotes(c.value("TIME")));
  }
  if (!value.empty() && value != "RELATIVE" && value != "ABSOLUTE") {
    b.deck.fail(c, "VALUE is RELATIVE or ABSOLUTE, not " + in_quotes(c.value("VALUE")));
  }
  a.total_time = time == "TOTALTIME";
  a.absolute = value == "ABSOLUTE";
  read_points(b, c, a);
  if (c.find("SMOOTH") != nullptr) b.note(c, "SMOOTH has no effect: a step takes the value at its end");
  b.amplitudes.emplace(a.name, count_of(b.amplitude_tables));
  b.amplitude_tables.push_back(a);
}

// Straight lines between the points; the first and last values hold beyond them.
static double value_at(const amplitude& a, double time) {
  if (time <= a.points.front()[0]) return a.points.front()[1];
  if (time >= a.points.back()[0]) return a.points.back()[1];
  const auto next = std::upper_bound(a.points.begin(), a.points.end(), time,
                                     [](double t, const std::array<double, 2>& p) { return t < p[0]; });
  const std::array<double, 2>&before = *(next - 1), &after = *next;
  return before[1] + (after[1] - before[1]) * ((time - before[0]) / (after[0] - before[0]));
}

bool takes_amplitude(const build& b, const card& c) { return b.inside_step && c.find("AMPLITUDE") != nullptr; }

static const amplitude& amplitude_of(const build& b, const card& c) {
  const std::string name = c.value("AMPLITUDE");
  const auto found = b.amplitudes.find(upper(name));
  if (found != b.amplitudes.end()) return b.amplitude_tables[found->second];
  if (b.lost_amplitudes.count(upper(name)) + b.lost_amplitudes.count(ANY_NAME) > 0) throw consequence{};
  b.deck.fail(c, "the amplitude " + in_quotes(name) + " is not defined");
}

static std::string text_of(double value) {
  char text[40];
  const std::to_chars_result end = std::to_chars(text, text + sizeof text, value);
  return {text, end.ptr};
}

// About a loaded state there is no time: some programs leave the amplitude out then, others take its value.
static void check_procedure(const build& b, const card& c, const step& s, const amplitude& a) {
  if (!s.perturbation && s.kind != step_kind::BUCKLE) return;
  const bool one = !a.absolute && std::all_of(a.points.begin(), a.points.end(),
                                              [](const std::array<double, 2>& p) { return p[1] == 1; });
  if (one) return;
  b.deck.fail(c, "AMPLITUDE is not supported in a step with PERTURBATION or *BUCKLE, which has no time: write the "
                 "values on the data lines");
}

namespace {

// How many records of each kind the step has.
struct record_counts {
  explicit record_counts(const step& s)
      : boundaries(s.boundaries.size()),
        nodal_loads(s.nodal_loads.size()),
        element_loads(s.element_loads.size()),
        temperatures(s.temperatures.size()) {}
  std::size_t boundaries, nodal_loads, element_loads, temperatures;
};

}  // namespace

void read_by_amplitude(build& b, const card& c, void (*read)(build&, const card&)) {
  const amplitude& a = amplitude_of(b, c);
  step& s = b.result.steps.back();
  const int now = count_of(b.result.steps) - 1;
  const double begin = now > 0 ? b.step_ends[now - 1] : 0;
  const double time = a.total_time ? b.step_ends[now] : b.step_ends[now] - begin;
  const double value = value_at(a, time);
  check_procedure(b, c, s, a);
  const record_counts before(s);
  read(b, c);
  const auto take = [&](double& loaded) { loaded = a.absolute ? value : loaded * value; };
  for (std::size_t i = before.boundaries; i < s.boundaries.size(); ++i) take(s.boundaries[i].value);
  for (std::size_t i = before.nodal_loads; i < s.nodal_loads.size(); ++i) take(s.nodal_loads[i].value);
  for (std::size_t i = before.element_loads; i < s.element_loads.size(); ++i) take(s.element_loads[i].magnitude);
  for (std::size_t i = before.temperatures; i < s.temperatures.size(); ++i) {
    take(s.temperatures[i].change);
    s.temperatures[i].gradient *= a.absolute ? 1 : value;
  }
  b.note(c, "the amplitude " + in_quotes(a.name) + " has the value " + text_of(value) + " at the " +
                (a.total_time ? "total time " : "step time ") + text_of(time) +
                (a.absolute ? ", which stands in the place of those on the data lines"
                            : ": the values of the card are taken times it"));
}

}  // namespace solver::deck
