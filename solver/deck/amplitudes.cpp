// amplitudes.cpp: *AMPLITUDE, and the cards that name one. A step here is solved once, for its end: what stands on the
// data lines is taken with the value of the table at that time.
#include <algorithm>
#include <iterator>

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

static const amplitude& amplitude_of(const build& b, const card& c) {
  const std::string name = c.value("AMPLITUDE");
  const auto found = b.amplitudes.find(upper(name));
  if (found != b.amplitudes.end()) return b.amplitude_tables[found->second];
  if (b.lost_amplitudes.count(upper(name)) + b.lost_amplitudes.count(ANY_NAME) > 0) throw consequence{};
  b.deck.fail(c, "the amplitude " + in_quotes(name) + " is not defined");
}

namespace {

// The step that is open while the cards go by.
struct step_clock {
  bool open = false;
  bool timed = true;          // steps with PERTURBATION, *BUCKLE and *FREQUENCY have no time
  double begin = 0, end = 0;  // from the beginning of the first step
};

// The fields of a data line that an amplitude concerns; `second` is a gradient, which an ABSOLUTE one leaves alone.
struct loaded_fields {
  const char* keyword;
  std::size_t value, second;
};

}  // namespace

static constexpr loaded_fields LOADED[] = {
    {"*BOUNDARY", 3, 0}, {"*CLOAD", 2, 0}, {"*DLOAD", 2, 0}, {"*DSLOAD", 2, 0}, {"*TEMPERATURE", 1, 2},
};

// The time of a step is the second field of its *STATIC.
static step_clock clock_of(const build& b, const card& at, double begin) {
  step_clock now{true, at.find("PERTURBATION") == nullptr, begin, begin};
  double duration = 1;
  const card* const end = b.deck.cards.data() + b.deck.cards.size();
  for (const card* c = &at + 1; c < end; ++c) {
    const std::string keyword = squeezed(c->keyword);
    if (keyword == "*STEP" || keyword == "*ENDSTEP") break;
    if (keyword == "*FREQUENCY" || keyword == "*BUCKLE") now.timed = false;
    if (keyword != "*STATIC" || c->count == 0) continue;
    const data_fields row(b, *c, *b.deck.begin_of(*c));
    double given = 0;
    if (row.has(1) && parse_real(row.text(1), given) == number_fault::NONE && given > 0) duration = given;
  }
  if (now.timed) now.end += duration;
  return now;
}

// About a loaded state there is no time: some programs leave the amplitude out then, others take its value.
static void check_time(const build& b, const card& c, const step_clock& now, const amplitude& a) {
  const bool one =
      !a.absolute && std::all_of(a.points.begin(), a.points.end(), [](const auto& point) { return point[1] == 1; });
  if (now.timed || one) return;
  b.deck.fail(c,
              "AMPLITUDE is not supported in a step with PERTURBATION or *BUCKLE, which has no time: write the "
              "values on the data lines");
}

// One data line with its value taken at the time of the amplitude; words in the place of a value stay for the reader.
static std::string loaded_line(std::string_view text, const loaded_fields& at, const amplitude& a, double value) {
  std::vector<std::string_view> fields;
  split_fields(text, fields);
  std::vector<std::string> words(fields.begin(), fields.end());
  const bool word = at.value == 3 && words.size() > 1 && !looks_like_number(words[1]);  // ENCASTRE
  if (a.absolute && !word && words.size() <= at.value) words.resize(at.value + 1);
  for (const std::size_t i : {at.value, at.second}) {
    double written = 0;
    if (i == 0 || i >= words.size() || (i == at.second && a.absolute)) continue;
    if (!words[i].empty() && parse_real(words[i], written) != number_fault::NONE) continue;
    words[i] = text_of_real(a.absolute ? value : value * written);
  }
  std::string line;
  for (std::size_t i = 0; i < words.size(); ++i) line += (i > 0 ? ", " : "") + words[i];
  return line;
}

static void take_amplitude(build& b, card_deck& cards, const card& c, const loaded_fields& at, const step_clock& now) {
  if (!now.open) b.deck.fail(c, "AMPLITUDE belongs inside a *STEP");
  const amplitude& a = amplitude_of(b, c);
  check_time(b, c, now, a);
  const double time = a.total_time ? now.end : now.end - now.begin;
  const double value = value_at(a, time);
  for (std::size_t i = c.first; i < c.first + c.count; ++i) {
    cards.buffers.push_back(loaded_line(cards.lines[i].text, at, a, value));
    cards.lines[i].text = cards.buffers.back();
  }
  b.note(c, "the amplitude " + in_quotes(a.name) + " has the value " + text_of_real(value) + " at the " +
                (a.total_time ? "total time " : "step time ") + text_of_real(time) +
                (a.absolute ? ", which stands in the place of those on the data lines"
                            : ": the values of the card are taken times it"));
}

// Before the steps are read: their readers see what the loads are at the end.
void apply_amplitudes(build& b, card_deck& cards) {
  const bool any =
      std::any_of(cards.cards.begin(), cards.cards.end(), [](const card& c) { return c.find("AMPLITUDE") != nullptr; });
  if (!any) return;
  step_clock now;
  for (const card& c : cards.cards) {
    const std::string keyword = squeezed(c.keyword);
    if (keyword == "*STEP") now = clock_of(b, c, c.further_case ? now.begin : now.end);
    if (keyword == "*ENDSTEP") now.open = false;
    const auto* const at = std::find_if(std::begin(LOADED), std::end(LOADED),
                                        [&](const loaded_fields& each) { return keyword == each.keyword; });
    if (at == std::end(LOADED) || c.broken || c.find("AMPLITUDE") == nullptr) continue;
    b.errors.attempt([&] { take_amplitude(b, cards, c, *at, now); });
  }
}

}  // namespace solver::deck
