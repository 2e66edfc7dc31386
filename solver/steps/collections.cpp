// collections.cpp: the files of modes and of states along paths, and the collections that name them.
#include "steps/collections.h"

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
  fs::create_directories(folder);
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
  for (std::size_t k = 0; k < values.size(); ++k)
    entries.push_back({times[k], "", fmt::format(fmt::runtime(name), k + 1, values[k])});
  return entries;
}

}  // namespace

collections::collections(const options& wanted, const model& m) : wanted_(wanted), steps_(m.steps.size()) {
  if (steps_ == 1) return;
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

std::string collections::take_report() { return std::exchange(report_, ""); }

void collections::commit() {
  if (file_ == nullptr || entries_.empty()) return;
  write_pvd(file_->stream(), entries_);
  file_->commit();
}

}  // namespace solver
