// output_file.cpp: a temporary file with the process number in its name, and a rename.
#include "output/output_file.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <stdexcept>

#include "output/unfinished_files.h"
#include "system/ranks.h"

namespace solver {

namespace {

// What a link leads to, so that the link stays.
std::string behind_links(const std::string& path) {
  constexpr int MOST_LINKS = 40;
  std::filesystem::path place(path);
  std::error_code failure;
  for (int k = 0; k < MOST_LINKS && std::filesystem::is_symlink(place, failure); ++k) {
    place = place.parent_path() / std::filesystem::read_symlink(place, failure);
  }
  return place.string();
}

}  // namespace

bool is_device(const std::string& path) {
  std::error_code ignored;
  const std::filesystem::file_status found = std::filesystem::status(path, ignored);
  return std::filesystem::exists(found) && !std::filesystem::is_regular_file(found) &&
         !std::filesystem::is_directory(found);
}

output_file::output_file(const std::string& path, writers who) : path_(path), place_(behind_links(path)) {
  if (who == writers::FIRST && !is_first_rank()) {
    stream_.setstate(std::ios::badbit);  // takes everything, and does nothing with it
    committed_ = true;
    return;
  }
  std::error_code ignored;
  if (std::filesystem::is_directory(place_, ignored)) throw std::runtime_error(path_ + ": is a directory");
  temporary_ = is_device(place_) ? "" : place_ + "." + std::to_string(getpid()) + ".part";
  stream_.open(temporary_.empty() ? place_ : temporary_, std::ios::binary);
  if (!stream_) throw std::runtime_error(path_ + ": cannot be written: " + std::strerror(errno));
  if (!temporary_.empty()) unfinished_ = remember_unfinished(temporary_);
}

output_file::~output_file() {
  if (committed_) return;
  stream_.close();
  if (temporary_.empty()) return;
  std::error_code ignored;
  std::filesystem::remove(temporary_, ignored);
  forget_unfinished(unfinished_);
}

void output_file::commit() {
  if (!is_written()) return;
  stream_.close();
  if (!stream_) throw std::runtime_error(path_ + ": could not be written to the end: " + std::strerror(errno));
  committed_ = true;
  if (temporary_.empty()) return;
  std::error_code failure;
  std::filesystem::rename(temporary_, place_, failure);
  committed_ = !failure;
  if (committed_) forget_unfinished(unfinished_);
  if (failure) throw std::runtime_error(path_ + ": cannot be put in place: " + failure.message());
}

}  // namespace solver
