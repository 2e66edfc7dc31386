// output_file.cpp: a temporary file with the process number in its name, and a rename.
#include "output/output_file.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <stdexcept>

namespace solver {

namespace {

// What a link leads to, so that the link stays.
std::string behind_links(const std::string& path) {
  std::error_code failure;
  const std::filesystem::path place = std::filesystem::canonical(path, failure);
  return failure ? path : place.string();
}

// A device or a pipe cannot be replaced by a file: it is written as it stands.
bool is_no_file(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::exists(path, ignored) && !std::filesystem::is_regular_file(path, ignored);
}

}  // namespace

output_file::output_file(const std::string& path) : path_(path), place_(behind_links(path)) {
  std::error_code ignored;
  if (std::filesystem::is_directory(place_, ignored)) throw std::runtime_error(path_ + ": is a directory");
  temporary_ = is_no_file(place_) ? "" : place_ + "." + std::to_string(getpid()) + ".part";
  stream_.open(temporary_.empty() ? place_ : temporary_, std::ios::binary);
  if (!stream_) throw std::runtime_error(path_ + ": cannot be written: " + std::strerror(errno));
}

output_file::~output_file() {
  if (committed_) return;
  stream_.close();
  if (temporary_.empty()) return;
  std::error_code ignored;
  std::filesystem::remove(temporary_, ignored);
}

void output_file::commit() {
  stream_.close();
  if (!stream_) throw std::runtime_error(path_ + ": could not be written to the end: " + std::strerror(errno));
  committed_ = true;
  if (temporary_.empty()) return;
  std::error_code failure;
  std::filesystem::rename(temporary_, place_, failure);
  committed_ = !failure;
  if (failure) throw std::runtime_error(path_ + ": cannot be put in place: " + failure.message());
}

}  // namespace solver
