// restart_file.cpp: cereal writes the states.
#include "steps/restart_file.h"

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
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "finites/version.h"
#include "model/yielding.h"
#include "output/output_file.h"
#include "steps/report.h"
#include "steps/shared_deck.h"
#include "system/ranks.h"

namespace solver {

template <class ARCHIVE>
void serialize(ARCHIVE& archive, left_state& s) {
  archive(s.finished, s.state);
}

namespace {

constexpr const char* FORM = "finites restart 1";
constexpr int SHARE = 20;  // of the time of a run: one part of so many goes into the file at most

std::string identity_of(const model& m, std::size_t path_states) {
  return fmt::format("{}; {} states along paths", FINITES_VERSION_TEXT, path_states) + deck_sums(m);
}

// The first byte says whether the file is there.
std::vector<char> presence_and_bytes(const std::string& path) {
  std::error_code ignored;
  if (!std::filesystem::exists(path, ignored)) {
    const output_file probe(path);  // a place that cannot be written is known before the work begins
    return {0};
  }
  if (std::filesystem::is_directory(path, ignored)) throw std::runtime_error(path + ": is a directory");
  std::vector<char> bytes(1, 1);
  std::ifstream file(path, std::ios::binary);
  bytes.insert(bytes.end(), std::istreambuf_iterator<char>(file), {});
  return bytes;
}

}  // namespace

restart_file::restart_file(std::string path, const model& m, std::size_t path_states)
    : path_(std::move(path)), identity_(identity_of(m, path_states)) {
  // The file may lie on a machine that only the first process runs on, and all have to go on from the same place.
  std::vector<char> found;
  fail_together([&] {
    if (is_first_rank()) found = presence_and_bytes(path_);
  });
  found = of_first_rank(found);
  if (found[0] != 0) read({found.begin() + 1, found.end()});
}

void restart_file::read(const std::string& bytes) {
  std::istringstream file(bytes);
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
                             identity +
                             "; --increments and --report ask for states): remove it to start from the beginning");
  }
  kept_ = left_;
}

class restart_file::step_part : public path_restart {
 public:
  step_part(restart_file& file, std::size_t step) : file_(file), step_(step) {}

  const left_state* left() const override {
    const auto found = file_.left_.find(step_);
    return found == file_.left_.end() ? nullptr : &found->second;
  }
  void keep(bool finished, const std::function<std::string()>& state) override { file_.keep(step_, finished, state); }

 private:
  restart_file& file_;
  std::size_t step_;
};

path_restart* restart_file::of_step(std::size_t step) {
  std::unique_ptr<path_restart>& part = parts_[step];
  if (part == nullptr) part = std::make_unique<step_part>(*this, step);
  return part.get();
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
  const bool any = std::any_of(m.steps.begin(), m.steps.end(), [&](const step& s) {
    const bool follows = s.kind == step_kind::PUSHOVER || s.kind == step_kind::ELASTOPLASTIC;
    return follows || follows_shells(m, s) || follows_hinges(m, s);
  });
  if (!any) {
    warn(
        "warning: --restart: has nothing to hold: there is no *PUSHOVER and no *ELASTOPLASTIC, and nothing yields in a "
        "*STATIC\n");
  }
  return any ? std::make_unique<restart_file>(path, m, path_states) : nullptr;
}

}  // namespace solver
