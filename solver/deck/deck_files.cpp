// deck_files.cpp: files of this machine.
#include "deck/deck_files.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "model/index.h"

namespace solver {

namespace {

// The bytes of a regular file; returns nothing, or the reason why it cannot be read: "No such file or directory".
std::string read_bytes(const std::string& path, std::string& text) {
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(path, error);
  if (error) return error.message();
  if (std::filesystem::is_directory(status)) return "it is a folder";
  if (!std::filesystem::is_regular_file(status)) return "it is no regular file";  // a device or a pipe may never end
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  if (error) return error.message();
  errno = 0;
  std::ifstream stream(path, std::ios::binary);
  if (!stream) return errno != 0 ? std::strerror(errno) : "the system gives no reason";
  text.resize(subscript(size));
  stream.read(text.data(), signed_index(size));
  return stream.gcount() == signed_index(size) ? "" : "it was not read to its end";
}

}  // namespace

std::string true_path(const std::string& name) {
  std::error_code ignored;  // a name that cannot be resolved is compared as it stands
  const std::filesystem::path path = std::filesystem::weakly_canonical(name, ignored);
  return ignored ? name : path.string();
}

file_text text_of_file(const std::string& name) {
  file_text found;
  found.place = true_path(name);
  found.fault = read_bytes(name, found.text);
  return found;
}

}  // namespace solver
