// collections.cpp: the files of modes and of states along paths, and the collections that name them.
#include "steps/collections.h"

#include <algorithm>
#include <filesystem>
#include <functional>

#include <fmt/format.h>

#include "model/base_step.h"
#include "model/step_kinds.h"
#include "output/vtu_writer.h"
#include "steps/places.h"

namespace solver {

namespace {

namespace fs = std::filesystem;

// "2: dead" or, without a name, "2: static".
std::string label(const model& m, const step& s) {
  return fmt::format("{}: {}", number_of(m, s), s.name.empty() ? kind_name(s) : s.name);
}

// Files of one step beside its results: results.modes.pvd, and results.modes/mode_1.vtu and so on.
struct numbered_files {
  fs::path results;  // of the step
  const char* what;  // "modes"
  const char* each;  // "mode"
};

fs::path collection_of(const numbered_files& files) {
  return fs::path(files.results).replace_extension(std::string(".") + files.what + ".pvd");
}

// `write` gets a stream, the number of the file from 0 and its time. What earlier runs have left in the folder stays.
void write_numbered(const numbered_files& files, std::vector<pvd_entry> entries,
                    const std::function<void(std::ostream&, std::size_t, double)>& write) {
  const fs::path place = collection_of(files);
  const fs::path folder = fs::path(place).replace_extension();
  output_file collection(place.string());
  if (collection.is_written()) fs::create_directories(folder);
  for (std::size_t k = 0; k < entries.size(); ++k) {
    const std::string name = fmt::format("{}_{}.vtu", files.each, k + 1);
    output_file file((folder / name).string());
    write(file.stream(), k, entries[k].time);
    file.commit();
    entries[k].file = (folder.filename() / name).generic_string();
  }
  write_pvd(collection.stream(), entries);
  collection.commit();
}

std::vector<pvd_entry> entries_at(const std::vector<double>& values, const char* name) {
  std::vector<pvd_entry> entries;
  const std::vector<double> times = growing_times(values);
  for (std::size_t k = 0; k < values.size(); ++k) {
    entries.push_back({times[k], "", fmt::format(fmt::runtime(name), k + 1, values[k])});
  }
  return entries;
}

// At most `most` of the states along a path, the first and the last among them.
std::vector<path_state> chosen(const std::vector<path_state>& kept, std::size_t most) {
  if (kept.size() <= most) return kept;
  std::vector<path_state> fewer;
  for (std::size_t k = 0; k < most; ++k) fewer.push_back(kept[(k * (kept.size() - 1) + (most - 1) / 2) / (most - 1)]);
  return fewer;
}

// An end that turns goes to another face of its surface and goes on yielding.
void follow_event(const hinge_event& event, std::vector<int>& hinges) {
  const int end = event.end == 0 ? 1 : 2;
  if (event.kind == event_kind::FORMED) hinges[event.element] |= end;
  if (event.kind == event_kind::CLOSED) hinges[event.element] &= ~end;
}

}  // namespace

collections::collections(const options& wanted, const model& m) : wanted_(wanted), steps_(m.steps.size()) {
  if (steps_ == 1 || is_device(output_path(wanted))) return;
  const std::string path = fs::path(output_path(wanted)).replace_extension(".pvd").string();
  check_new_place(wanted, path, "the collection of the steps");
  file_ = std::make_unique<output_file>(path);
}

void collections::add_step(const model& m, const step& s) {
  const std::size_t number = number_of(m, s);
  const fs::path results = file_of_step(output_path(wanted_), number - 1, steps_);
  entries_.push_back({static_cast<double>(number), results.filename().string(), label(m, s)});
}

void collections::solved(const model& m, const step& s, const static_solution&, const step_results&) { add_step(m, s); }

void collections::found_modes(const model& m, const step& s, const modal_solution& solution) {
  add_step(m, s);
  if (is_device(output_path(wanted_))) return;
  std::vector<double> values;
  for (const mode& each : solution.modes) values.push_back(each.value);
  const fs::path results = file_of_step(output_path(wanted_), number_of(m, s) - 1, steps_);
  const char* const name = s.kind == step_kind::FREQUENCY ? "mode {}, frequency {}" : "mode {}, factor {}";
  const numbered_files files{results, "modes", "mode"};
  write_numbered(files, entries_at(values, name), [&](std::ostream& out, std::size_t k, double time) {
    write_mode_vtu(out, m, solution.modes[k], wanted_.form, {&s, {}, {values[k]}, number_of(k) + 1, time});
  });
  report_ += fmt::format("  modes in {}\n", collection_of(files).string());
}

void collections::enveloped(const model& m, const step& s, const envelope&) { add_step(m, s); }

void collections::write_states(const model& m, const step& s, const std::vector<path_state>& kept,
                               const std::vector<double>& factors, const std::vector<std::vector<int>>& hinges) {
  if (is_device(output_path(wanted_))) return;
  const fs::path results = file_of_step(output_path(wanted_), number_of(m, s) - 1, steps_);
  const numbered_files files{results, "increments", "increment"};
  const std::vector<pvd_entry> entries = entries_at(factors, "increment {}, load factor {}");
  write_numbered(files, entries, [&](std::ostream& out, std::size_t k, double time) {
    const std::vector<int> open = hinges.empty() ? std::vector<int>{} : hinges[k];
    write_state_vtu(out, m, kept[k], open, wanted_.form, {&s, factors[k], {}, 0, time});
  });
  report_ += fmt::format("  increments in {}\n", collection_of(files).string());
}

// The events of a point of the curve have its factor, or one between it and the point before.
void collections::followed_hinges(const model& m, const step& s, const pushover_solution& path) {
  if (!s.pushover.goes_on || hinges_.empty()) hinges_.assign(m.elements.size(), 0);
  const bool wanted = wanted_.increments > 0 && !path.kept.empty();
  const std::vector<path_state> kept =
      wanted ? chosen(path.kept, subscript(wanted_.increments)) : std::vector<path_state>{};
  std::vector<double> factors;
  std::vector<std::vector<int>> hinges;
  std::size_t next = 0;
  for (const path_state& at : kept) {
    factors.push_back(path.curve[at.point].factor);
    for (; next < path.events.size() && path.events[next].factor <= factors.back(); ++next) {
      follow_event(path.events[next], hinges_);
    }
    hinges.push_back(hinges_);
  }
  for (; next < path.events.size(); ++next) follow_event(path.events[next], hinges_);
  if (wanted) write_states(m, s, kept, factors, hinges);
}

void collections::followed_plates(const model& m, const step& s, const elastoplastic_solution& path) {
  if (wanted_.increments == 0 || path.kept.empty()) return;
  const std::vector<path_state> kept = chosen(path.kept, subscript(wanted_.increments));
  std::vector<double> factors(kept.size());
  std::transform(kept.begin(), kept.end(), factors.begin(),
                 [&](const path_state& at) { return path.curve[at.point].factor; });
  write_states(m, s, kept, factors, {});
}

std::string collections::take_report() { return std::exchange(report_, ""); }

void collections::commit() {
  if (file_ == nullptr || entries_.empty()) return;
  write_pvd(file_->stream(), entries_);
  file_->commit();
}

}  // namespace solver
