// report_listener.cpp: the data of a run, and the file that holds them.
#include "report_page/report_listener.h"

#include <algorithm>
#include <array>
#include <ctime>

#include <nlohmann/json.hpp>

#include "finites/version.h"
#include "model/base_step.h"
#include "report_page/embedded_page.h"
#include "report_page/page_model.h"
#include "report_page/page_steps.h"

namespace solver {

namespace {

// Above it results keep fewer digits: bits of the mantissa that look random cannot be compressed.
constexpr std::size_t MANY_ELEMENTS = 20000;
constexpr int ALL_BITS = 24, FEWER_BITS = 17;

int result_bits(const model& m) { return m.elements.size() > MANY_ELEMENTS ? FEWER_BITS : ALL_BITS; }

std::string time_of_day() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  std::array<char, 32> text{};
  const std::size_t length = std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M", &local);
  return {text.data(), length};
}

void replace_all(std::string& text, const std::string& what, const std::string& by) {
  std::string result;
  std::size_t from = 0;
  for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, from)) {
    result.append(text, from, at - from).append(by);
    from = at + what.size();
  }
  text = result.append(text, from, std::string::npos);
}

// Nothing in it can end the element of the page that holds it; '<' stands in texts alone. Bytes of a deck that are no
// UTF-8 become the sign for that.
std::string as_text(const page_json& data) {
  std::string text = data.dump(-1, ' ', false, page_json::error_handler_t::replace);
  replace_all(text, "<", "\\u003c");
  replace_all(text, "\xE2\x80\xA8", "\\u2028");
  replace_all(text, "\xE2\x80\xA9", "\\u2029");
  return text;
}

}  // namespace

bool has_report_page() { return !embedded_page().empty(); }

report_listener::report_listener(const model& m, int station_count, const page_limits& limits)
    : limits_(limits),
      mesh_(m, m.elements.size() > limits.elements, station_count),
      buffers_(result_bits(m)),
      model_(page_json::object()),
      steps_(page_json::array()) {
  add_model(model_, mesh_, buffers_);
}

void report_listener::solved(const model& m, const step& s, const static_solution& solution,
                             const step_results& results) {
  page_json data = begin_step(m, s, solution.notes, solution.remarks);
  const bool room = mesh_.outline || buffers_.size() < limits_.characters;
  if (!room) without_fields_.push_back(number_of(m, s));
  add_solution(data, mesh_, m, solution, results, room ? page_fields::ALL : page_fields::DISPLACEMENTS, buffers_);
  steps_.push_back(std::move(data));
}

void report_listener::found_modes(const model& m, const step& s, const modal_solution& solution) {
  page_json data = begin_step(m, s, solution.notes, {});
  add_supports(data, mesh_, m, s, buffers_);
  add_modes(data, mesh_, s, solution, buffers_);
  steps_.push_back(std::move(data));
}

void report_listener::enveloped(const model& m, const step& s, const envelope& bounds) {
  page_json data = begin_step(m, s, {}, {});
  add_envelope(data, mesh_, m, s, bounds, buffers_);
  steps_.push_back(std::move(data));
}

void report_listener::followed_hinges(const model& m, const step& s, const pushover_solution& path) {
  if (page_json* const data = step_of(m, s)) add_path(*data, mesh_, m, s, path, buffers_);
}

void report_listener::followed_plates(const model& m, const step& s, const elastoplastic_solution& path) {
  if (page_json* const data = step_of(m, s)) add_path(*data, mesh_, path, buffers_);
}

// The step that was told last.
page_json* report_listener::step_of(const model& m, const step& s) {
  if (steps_.empty() || steps_.back()["number"] != number_of(m, s)) return nullptr;
  return &steps_.back();
}

page_json report_listener::begin_data() const {
  const model& m = mesh_.m;
  page_json left_out = page_json::array();
  if (mesh_.outline) {
    left_out.push_back("The model has " + std::to_string(m.elements.size()) +
                       " elements: this page shows its outline, and no fields of results.");
  } else if (result_bits(m) < ALL_BITS) {
    left_out.push_back(
        "Results of a model with so many elements have 5 digits on this page; tables of sums and "
        "extremes have all.");
  }
  if (!without_fields_.empty()) {
    left_out.push_back("Fields and diagrams of " + std::to_string(without_fields_.size()) + " steps, from step " +
                       std::to_string(without_fields_.front()) +
                       " on: the page would be too large. Their tables and deflected shapes are here, and their fields "
                       "in the files of results.");
  }
  return {{"format", 1},
          {"program", "finites-solve " FINITES_VERSION_TEXT},
          {"written", time_of_day()},
          {"deck", m.deck},
          {"title", m.title},
          {"warnings", m.notes},
          {"outline", mesh_.outline},
          {"left_out", std::move(left_out)}};
}

page_json report_listener::time_of(const stopwatch& watch) const {
  page_json all = page_json::array();
  for (const auto& [phase, seconds] : watch.phases()) all.push_back(page_json::array({phase, seconds}));
  return all;
}

void report_listener::write(std::ostream& out, const stopwatch& watch) const {
  page_json data = begin_data();
  for (const auto& [name, value] : model_.items()) data[name] = value;
  data["steps"] = steps_;
  data["time"] = time_of(watch);
  const std::string_view page = embedded_page();
  const std::size_t place = page.find(DATA_PLACE);
  out << page.substr(0, place);
  out << R"(<script type="application/json" id="finites-report">)" << as_text(data) << "</script>\n";
  buffers_.write(out);
  out << page.substr(std::min(page.size(), place + DATA_PLACE.size()));
}

}  // namespace solver
