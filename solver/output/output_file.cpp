// output_file.cpp: a temporary file with the process number in its name, and a rename.
#include "output/output_file.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <stdexcept>

namespace solver {

output_file::output_file(const std::string& path)
    : path_(path), temporary_(path + "." + std::to_string(getpid()) + ".part") {
  std::error_code ignored;
  if (std::filesystem::is_directory(path_, ignored)) throw std::runtime_error(path_ + ": is a directory");
  stream_.open(temporary_, std::ios::binary);
  if (!stream_) throw std::runtime_error(path_ + ": cannot be written: " + std::strerror(errno));
}

output_file::~output_file() {
  if (committed_) return;
  stream_.close();
  std::error_code ignored;
  std::filesystem::remove(temporary_, ignored);
}

void output_file::commit() {
  stream_.close();
  if (!stream_) throw std::runtime_error(path_ + ": could not be written to the end: " + std::strerror(errno));
  std::error_code failure;
  std::filesystem::rename(temporary_, path_, failure);
  if (failure) throw std::runtime_error(path_ + ": cannot be put in place: " + failure.message());
  committed_ = true;
}

}  // namespace solver
