// check.cpp: prints what a deck holds and what the checker of the library finds in its model: errors and warnings on
// the standard error, a line per finding; what may be meant (a pin, a switch that is off) is left out.
#include "check.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include <fmt/format.h>

#include "elements/library_model.h"
#include "finites/checks.h"
#include "model/model_error.h"
#include "model/shared_notes.h"
#include "output/contents.h"
#include "output/summary.h"
#include "steps/report.h"
#include "steps/shared_deck.h"

namespace solver {

namespace {

// The text after the element, which the deck knows by another number.
std::string_view said(const finites_finding& found) {
  const std::string_view text(found.text);
  if (found.element == 0) return text;
  const std::size_t end = text.find(": ");
  return end == std::string_view::npos ? text : text.substr(end + 2);
}

std::string line_of(const model& m, const finites_finding& found) {
  const char* const severity = found.severity == FINITES_SEVERITY_ERROR ? "error" : "warning";
  if (found.element < 1) return fmt::format("{}: {}: {}\n", severity, m.deck, said(found));
  const element& e = m.elements[found.element - 1];
  const std::string sentence = fmt::format("element {}: {}", e.id, said(found));
  return fmt::format("{}: {}\n", severity, model_error(m, e, "*ELEMENT", sentence).what());
}

// The notes of the deck that no finding gives in more detail.
std::vector<std::string> without_repeated(std::vector<std::string> notes, const std::vector<finites_finding>& all) {
  const bool folded = std::any_of(all.begin(), all.end(), [](const finites_finding& f) {
    return f.code == FINITES_FOUND_FOLDED && f.severity > FINITES_SEVERITY_NOTE;
  });
  const auto repeated = [&](const std::string& note) {
    return folded && note.find(FOLDED_CORNERS) != std::string::npos;
  };
  notes.erase(std::remove_if(notes.begin(), notes.end(), repeated), notes.end());
  return notes;
}

std::ptrdiff_t count_of_severity(const std::vector<finites_finding>& all, std::int32_t severity) {
  return std::count_if(all.begin(), all.end(), [=](const finites_finding& f) { return f.severity == severity; });
}

std::string counted(std::ptrdiff_t count, const char* what) {
  return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

}  // namespace

bool check(const options& wanted) {
  const model m = read_shared_deck(wanted);
  library_model library(m);
  const std::vector<finites_finding> all = library.findings();
  warn(deck_warnings(without_repeated(m.notes, all)));
  std::string lines;
  for (const finites_finding& found : all) {
    if (found.severity > FINITES_SEVERITY_NOTE) lines += line_of(m, found);
  }
  if (!lines.empty()) warn(lines);
  const std::ptrdiff_t errors = count_of_severity(all, FINITES_SEVERITY_ERROR);
  const std::ptrdiff_t warnings = count_of_severity(all, FINITES_SEVERITY_WARNING);
  print(fmt::format("{}{}{}\n", m.deck, m.title.empty() ? "" : ": ", m.title));
  print(model_contents(m));
  if (errors == 0) print(step_contents(m, library));  // else the library would stumble
  const std::string result = errors + warnings == 0
                                 ? "nothing found"
                                 : fmt::format("{}, {}", counted(errors, "error"), counted(warnings, "warning"));
  print(fmt::format("{}: {} checked, {}\n", m.deck, counted(count_of(m.elements), "element"), result));
  return errors == 0;
}

}  // namespace solver
