// restart_file.cpp: cereal writes the states, zlib's sum tells one deck from another.
#include "steps/restart_file.h"

#include <zlib.h>

#include <algorithm>
#include <cereal/archives/portable_binary.hpp>
#include <cereal/types/map.hpp>
#include <cereal/types/string.hpp>
#include <cereal/types/utility.hpp>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <system_error>

#include <fmt/format.h>

#include "finites/version.h"
#include "output/output_file.h"
#include "steps/report.h"
#include "system/ranks.h"

namespace solver {

template <class ARCHIVE>
void serialize(ARCHIVE& archive, left_state& s) {
  archive(s.finished, s.state);
}

namespace {

constexpr const char* FORM = "finites restart 1";
constexpr int SHARE = 20;  // of the time of a run: one part of so many goes into the file at most

std::string content(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string identity_of(const model& m, std::size_t path_states) {
  std::string text = fmt::format("{}; {} states along paths", FINITES_VERSION_TEXT, path_states);
  for (const std::string& name : m.files) {
    const std::string deck = content(name);
    const uLong sum = crc32(0, reinterpret_cast<const Bytef*>(deck.data()), static_cast<uInt>(deck.size()));
    text += fmt::format("; {} bytes {:08x}", deck.size(), sum);
  }
  return text;
}

}  // namespace

restart_file::restart_file(std::string path, const model& m, std::size_t path_states)
    : path_(std::move(path)), identity_(identity_of(m, path_states)) {
  std::error_code ignored;
  if (std::filesystem::exists(path_, ignored)) {
    read();
  } else {
    output_file probe(path_);  // a place that cannot be written is known before the work begins
  }
}

void restart_file::read() {
  std::ifstream file(path_, std::ios::binary);
  std::string form, identity;
  try {
    cereal::PortableBinaryInputArchive archive(file);
    archive(form);
    if (form == FORM) archive(identity);
    if (identity == identity_) archive(left_);
  } catch (const std::exception&) {
    form.clear();  // of another kind, or cut
  }
  if (form != FORM) {
    throw std::runtime_error(path_ + ": is no restart file: name another one, or remove it");
  }
  if (identity != identity_) {
    throw std::runtime_error(path_ + ": belongs to another deck, another version or other results along paths (" +
                             identity + "): remove it to start from the beginning");
  }
  kept_ = left_;
}

const left_state* restart_file::left_of(std::size_t step) const {
  const auto found = left_.find(step);
  return found == left_.end() ? nullptr : &found->second;
}

void restart_file::keep(std::size_t step, bool finished, const std::function<std::string()>& state) {
  const clock::time_point start = clock::now();
  const bool due = finished || start - written_ >= SHARE * took_;
  if (!true_for_all(due || !is_first_rank())) return;  // the first process decides; all have a part in the state
  std::string text = state();
  if (!is_first_rank()) return;
  kept_[step] = {std::move(text), finished};
  write();
  written_ = clock::now();
  took_ = written_ - start;
}

void restart_file::write() {
  output_file file(path_);
  {
    cereal::PortableBinaryOutputArchive archive(file.stream());
    archive(std::string(FORM), identity_, kept_);
  }
  file.commit();
}

void restart_file::remove() const {
  std::error_code ignored;
  if (is_first_rank()) std::filesystem::remove(path_, ignored);
}

std::unique_ptr<restart_file> open_restart(const std::string& path, const model& m, std::size_t path_states) {
  if (path.empty()) return nullptr;
  const bool any = std::any_of(m.steps.begin(), m.steps.end(), [](const step& s) {
    return s.kind == step_kind::PUSHOVER || s.kind == step_kind::ELASTOPLASTIC;
  });
  if (!any) warn("warning: --restart: has nothing to hold: there is no *PUSHOVER and no *ELASTOPLASTIC\n");
  return any ? std::make_unique<restart_file>(path, m, path_states) : nullptr;
}

}  // namespace solver
