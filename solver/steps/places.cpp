// places.cpp: names and opens the files of results.
#include "steps/places.h"

#include <filesystem>
#include <set>
#include <system_error>

#include <fmt/format.h>

#include "system/ranks.h"

namespace solver {

namespace {

struct file_kind {
  std::string path;
  std::unique_ptr<output_file> places::*file;
};

std::vector<file_kind> files_of(const options& wanted) {
  return {{output_path(wanted), &places::vtu},     {wanted.csv, &places::csv},
          {wanted.reactions, &places::reactions},  {wanted.members, &places::members},
          {wanted.stations, &places::stations},    {wanted.stresses, &places::stresses},
          {wanted.solids, &places::solids},        {wanted.curve, &places::curve},
          {wanted.events, &places::events},        {wanted.points, &places::points},
          {wanted.modes, &places::modes},          {wanted.layers, &places::layers},
          {wanted.conditions, &places::conditions}};
}

bool same_place(const std::string& a, const std::string& b) {
  return std::filesystem::path(a).lexically_normal() == std::filesystem::path(b).lexically_normal();
}

// What there is one file of, for all steps.
std::vector<std::string> files_of_run(const options& wanted) { return {wanted.report, wanted.json, wanted.restart}; }

// Pieces must not take the place of other results.
void check_pieces(const options& wanted, std::size_t steps, const std::set<std::filesystem::path>& taken) {
  for (std::size_t s = 0; s < steps; ++s) {
    for (int p = 0; p < rank_count(); ++p) {
      const std::string piece = piece_of(file_of_step(wanted.output, s, steps), p);
      if (taken.count(std::filesystem::path(piece).lexically_normal()) > 0) {
        throw usage_error(piece + ": is wanted for two results, one of them a piece of " + wanted.output);
      }
    }
  }
}

// Results must not take the place of the deck, nor of each other.
void check_places(const options& wanted, std::size_t steps) {
  std::error_code ignored;
  std::set<std::filesystem::path> taken;
  std::vector<std::string> all = files_of_run(wanted);
  for (const auto& [path, file] : files_of(wanted)) all.push_back(path);
  for (const std::string& path : all) {
    if (path.empty()) continue;
    if (path == "-") throw usage_error("-: results go into files: name one, or /dev/stdout for the standard output");
    if (std::filesystem::equivalent(path, wanted.deck, ignored)) throw usage_error(path + ": is the deck itself");
    if (!taken.insert(std::filesystem::path(path).lexically_normal()).second) {
      throw usage_error(path + ": is wanted for two results");
    }
  }
  if (in_pieces(wanted)) check_pieces(wanted, steps, taken);
  for (const auto& [path, file] : files_of(wanted)) {
    for (std::size_t s = 0; steps > 1 && !path.empty() && s < steps; ++s) {
      const std::string own = file_of_step(path, s, steps);
      for (const std::string& other : files_of_run(wanted)) {
        if (!other.empty() && same_place(own, other)) throw usage_error(other + ": is wanted for two results");
      }
    }
  }
}

}  // namespace

std::string file_of_step(const std::string& path, std::size_t step, std::size_t steps) {
  if (steps == 1 || is_device(path)) return path;
  const std::filesystem::path whole(path);
  const std::string name = whole.stem().string() + "." + std::to_string(step + 1) + whole.extension().string();
  return (whole.parent_path() / name).string();
}

std::string output_path(const options& wanted) {
  if (!wanted.output.empty()) return wanted.output;
  return std::filesystem::path(wanted.deck).filename().replace_extension(".vtu").string();
}

bool in_pieces(const options& wanted) { return std::filesystem::path(wanted.output).extension() == ".pvtu"; }

std::string piece_of(const std::string& path, int process) {
  const std::filesystem::path whole(path);
  return (whole.parent_path() / fmt::format("{}_{}.vtu", whole.stem().string(), process)).string();
}

void check_new_place(const options& wanted, const std::string& path, const std::string& what) {
  std::error_code ignored;
  if (std::filesystem::equivalent(path, wanted.deck, ignored)) {
    throw usage_error(path + ": is the deck itself, and the place of " + what + ": name another with -o");
  }
  std::vector<std::string> all = files_of_run(wanted);
  for (const auto& [other, file] : files_of(wanted)) all.push_back(other);
  for (const std::string& other : all) {
    if (other.empty() || !same_place(other, path)) continue;
    throw usage_error(fmt::format("{}: is wanted for two results, one of them {}", path, what));
  }
}

std::vector<places> open_places(const options& wanted, std::size_t steps) {
  check_places(wanted, steps);
  std::vector<places> all(steps);
  for (const file_kind& kind : files_of(wanted)) {
    if (kind.path.empty()) continue;
    for (std::size_t s = 0; s < steps; ++s) {
      all[s].*kind.file = std::make_unique<output_file>(file_of_step(kind.path, s, steps));
    }
  }
  if (!in_pieces(wanted)) return all;
  fail_together([&] {
    for (places& of_step : all) {
      of_step.piece = std::make_unique<output_file>(piece_of(of_step.vtu->path(), rank()), writers::EACH);
    }
  });
  return all;
}

std::unique_ptr<output_file> open_report(const options& wanted) {
  return wanted.report.empty() ? nullptr : std::make_unique<output_file>(wanted.report);
}

}  // namespace solver
