// plugins.cpp: routines of libraries that are loaded by name while the program runs.
//
// "Vornekal.DLL" names the library libVornekal.so. It is searched in the directory of this library, then by the loader:
// never in the working directory, which belongs to the user's data and not to the program. The loader would search
// there when its list has an empty or a relative directory (a stray colon in LD_LIBRARY_PATH is enough); then only the
// absolute directories of its list are searched.
//
// A routine that was found is kept, so that a repeated call is a look-up. One that was not found is searched again: in
// the directory of this library in every call, by the loader once until TARNIX_CLEAR.
#include <dlfcn.h>
#include <link.h>
#include <strings.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "stores.h"
#include "tarnix.h"

namespace {

struct loaded_library {
  void* handle = nullptr;
  bool loader_has_searched = false;
  std::map<std::string, void*, std::less<>> routines;
};

// Locks: calls of several threads run one after the other here.
std::mutex libraries_mutex;

// By the name that the callers use. Handles are never closed: callers hold addresses in their libraries.
std::map<std::string, loaded_library, std::less<>>& libraries() {
  static std::map<std::string, loaded_library, std::less<>> store;
  return store;
}

// The full path of this library. Taken when the process loads it, since a relative one means something else after a
// change of the working directory.
std::string path_of_this_library() {
  Dl_info info{};
  if (dladdr(reinterpret_cast<const void*>(&TARNIX_CLEAR), &info) == 0 || info.dli_fname == nullptr) return {};
  const std::unique_ptr<char, decltype(&std::free)> path(realpath(info.dli_fname, nullptr), &std::free);
  return path != nullptr ? std::string(path.get()) : std::string();
}

const std::string OWN_PATH = path_of_this_library();

// A name in a field of counted length, without a terminator and without the blanks at its end.
std::string_view trimmed(const char* text, const std::int32_t* length) {
  if (text == nullptr || length == nullptr || *length < 1) return {};
  const std::string_view field(text, strnlen(text, static_cast<std::size_t>(*length)));
  const std::size_t last = field.find_last_not_of(' ');
  return last == std::string_view::npos ? std::string_view{} : field.substr(0, last + 1);
}

// A plain file name: letters, digits and a few marks. A directory, or a name that the loader would expand, is refused.
bool plain_name(std::string_view name) {
  constexpr std::string_view allowed = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-+.";
  constexpr std::size_t longest = 200;  // a file name has at most 255 characters
  return !name.empty() && name.size() <= longest && name.find_first_not_of(allowed) == std::string_view::npos;
}

// "Name.DLL" -> "libName.so"; the suffix may be absent, its case does not matter.
std::string file_name_of(std::string_view library) {
  constexpr std::size_t suffix = 4;
  if (library.size() > suffix && strncasecmp(library.data() + library.size() - suffix, ".dll", suffix) == 0) {
    library.remove_suffix(suffix);
  }
  return "lib" + std::string(library) + ".so";
}

// A library by its full path; null when there is no such file, or no library in it.
void* open_file(const std::string& path) {
  if (access(path.c_str(), R_OK) != 0) return nullptr;
  return dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
}

void* open_beside_this_library(const std::string& file) {
  const std::size_t slash = OWN_PATH.rfind('/');
  return slash == std::string::npos ? nullptr : open_file(OWN_PATH.substr(0, slash + 1) + file);
}

// The directories that the loader searches for this library, in its order. Empty when it does not report them.
std::vector<std::string> loader_directories() {
  std::vector<std::string> directories;
  void* const self = dlopen(OWN_PATH.c_str(), RTLD_LAZY | RTLD_NOLOAD);
  if (self == nullptr) return directories;
  Dl_serinfo size{};
  if (dlinfo(self, RTLD_DI_SERINFOSIZE, &size) == 0) {
    std::vector<std::max_align_t> room(size.dls_size / sizeof(std::max_align_t) + 1);
    auto* const list = reinterpret_cast<Dl_serinfo*>(room.data());
    *list = size;
    if (dlinfo(self, RTLD_DI_SERINFO, list) == 0) {
      for (unsigned i = 0; i < list->dls_cnt; ++i) directories.emplace_back(list->dls_serpath[i].dls_name);
    }
  }
  dlclose(self);
  return directories;
}

void* open_by_the_loader(const std::string& file) {
  const std::vector<std::string> directories = loader_directories();
  bool all_absolute = !directories.empty();
  for (const std::string& directory : directories) {
    if (directory.empty() || directory[0] != '/') all_absolute = false;
  }
  if (all_absolute) return dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  for (const std::string& directory : directories) {
    if (directory.empty() || directory[0] != '/') continue;
    std::string path = directory;
    path.append("/").append(file);
    if (void* const handle = open_file(path)) return handle;
  }
  return nullptr;
}

void* handle_of(loaded_library& library, std::string_view name) {
  if (library.handle != nullptr) return library.handle;
  const std::string file = file_name_of(name);
  library.handle = open_beside_this_library(file);
  if (library.handle == nullptr && !library.loader_has_searched) {
    library.loader_has_searched = true;
    library.handle = open_by_the_loader(file);
  }
  return library.handle;
}

void* routine_of(loaded_library& library, std::string_view name) {
  const auto known = library.routines.find(name);
  if (known != library.routines.end()) return known->second;
  const std::string symbol(name);
  void* const address = dlsym(library.handle, symbol.c_str());
  if (address != nullptr) library.routines.emplace(symbol, address);
  return address;
}

}  // namespace

void LOAD_DLL_SUBROUTINE(const char* library, const std::int32_t* library_length, const char* routine,
                         const std::int32_t* routine_length, void** slot) {
  if (slot == nullptr) return;
  *slot = nullptr;
  const std::string_view library_name = trimmed(library, library_length);
  const std::string_view routine_name = trimmed(routine, routine_length);
  if (routine_name.empty()) return;
  const std::lock_guard<std::mutex> lock(libraries_mutex);
  auto known = libraries().find(library_name);
  if (known == libraries().end()) {
    if (!plain_name(library_name)) return;  // those in the store are
    known = libraries().try_emplace(std::string(library_name)).first;
  }
  if (handle_of(known->second, library_name) != nullptr) *slot = routine_of(known->second, routine_name);
}

void tarnix::forget_missing_libraries() {
  const std::lock_guard<std::mutex> lock(libraries_mutex);
  for (auto& entry : libraries()) entry.second.loader_has_searched = false;
}
