// plugins_test.cpp: routines found beside Tarnix and by the loader, and never in the working directory.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <string>

#include "tarnix.h"

namespace {

namespace fs = std::filesystem;
using PLUG_ROUTINE = void (*)(const std::int32_t*, std::int32_t*);

int marker = 0;  // slots start with its address: a slot that is not written shows

void* load(const std::string& library, const std::string& routine) {
  const auto library_length = static_cast<std::int32_t>(library.size());
  const auto routine_length = static_cast<std::int32_t>(routine.size());
  void* slot = &marker;
  LOAD_DLL_SUBROUTINE(library.data(), &library_length, routine.data(), &routine_length, &slot);
  return slot;
}

std::int32_t called(void* slot, std::int32_t in) {
  std::int32_t out = 0;
  reinterpret_cast<PLUG_ROUTINE>(slot)(&in, &out);
  return out;
}

// Does a fresh process that runs in `directory` with this search list find the plug-in that lies elsewhere?
bool probe_finds(const fs::path& directory, const char* search_list) {
  const pid_t child = fork();
  if (child == 0) {
    if (chdir(directory.c_str()) != 0 || setenv("LD_LIBRARY_PATH", search_list, 1) != 0) _exit(9);
    execl(PLUGIN_PROBE, PLUGIN_PROBE, "ElsewherePlug.DLL", "PLUG_DOUBLE", static_cast<char*>(nullptr));
    _exit(9);
  }
  int status = 0;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFEXITED(status) && (WEXITSTATUS(status) == 0 || WEXITSTATUS(status) == 3)) << status;
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// A copy of the plug-in in the directory of Tarnix, under a name of its own, for as long as a test needs it.
class copy_beside {
 public:
  explicit copy_beside(const fs::path& name) : path_(fs::path(PLUGIN_BESIDE).parent_path() / name) {
    new_folder_ = fs::create_directories(path_.parent_path());
    fs::copy_file(PLUGIN_BESIDE, path_, fs::copy_options::overwrite_existing);
  }
  copy_beside(const copy_beside&) = delete;
  copy_beside& operator=(const copy_beside&) = delete;
  ~copy_beside() {
    fs::remove(path_);
    if (new_folder_) fs::remove(path_.parent_path());
  }

 private:
  fs::path path_;
  bool new_folder_ = false;
};

const fs::path ELSEWHERE = fs::path(PLUGIN_ELSEWHERE).parent_path();

}  // namespace

TEST(Plugins, ARoutineBesideTarnixIsFound) {
  void* const slot = load("PlugTest.DLL", "PLUG_DOUBLE");
  ASSERT_NE(slot, nullptr);
  ASSERT_NE(slot, &marker);
  EXPECT_EQ(called(slot, 21), 42);
}

TEST(Plugins, TheSuffixMayHaveAnyCaseOrBeAbsent) {
  void* const slot = load("PlugTest.DLL", "PLUG_DOUBLE");
  ASSERT_NE(slot, nullptr);
  for (const char* name : {"PlugTest.dll", "PlugTest.Dll", "PlugTest"}) EXPECT_EQ(load(name, "PLUG_DOUBLE"), slot);
  EXPECT_EQ(load("plugtest.DLL", "PLUG_DOUBLE"), nullptr);  // the name itself is taken as it is
}

TEST(Plugins, TerminatorsAndBlanksDoNotBelongToTheNames) {
  const std::string library("PlugTest.DLL\0", 13), routine("PLUG_NEGATE\0xyz", 15);
  void* const slot = load(library, routine);
  ASSERT_NE(slot, nullptr);
  EXPECT_EQ(called(slot, 21), -21);
  EXPECT_EQ(load("PlugTest.DLL   ", "PLUG_NEGATE  "), slot);
}

TEST(Plugins, EveryCallWritesTheSlot) {
  void* const slot = load("PlugTest.DLL", "PLUG_DOUBLE");
  for (int i = 0; i < 3; ++i) EXPECT_EQ(load("PlugTest.DLL", "PLUG_DOUBLE"), slot);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(load("PlugTest.DLL", "PLUG_NOTHING"), nullptr);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(load("NoSuchPlug.DLL", "PLUG_DOUBLE"), nullptr);
}

TEST(Plugins, ANameThatIsNoPlainFileNameIsRefused) {
  const std::string beside = fs::path(PLUGIN_BESIDE).parent_path().string();
  EXPECT_EQ(load(beside + "/PlugTest.DLL", "PLUG_DOUBLE"), nullptr);
  EXPECT_EQ(load("x/../PlugTest.DLL", "PLUG_DOUBLE"), nullptr);
  EXPECT_EQ(load("$ORIGIN", "PLUG_DOUBLE"), nullptr);
  EXPECT_EQ(load("..\\PlugTest.DLL", "PLUG_DOUBLE"), nullptr);
  EXPECT_EQ(load(std::string(5000, 'a'), "PLUG_DOUBLE"), nullptr);
  EXPECT_EQ(load("", "PLUG_DOUBLE"), nullptr);
  EXPECT_EQ(load("   ", "PLUG_DOUBLE"), nullptr);
  EXPECT_EQ(load(".DLL", "PLUG_DOUBLE"), nullptr);
  EXPECT_EQ(load("PlugTest.DLL", ""), nullptr);
}

// "x/..." becomes "libx/..." beside Tarnix: with such a folder there, only the look at the name keeps the loader off.
TEST(Plugins, ANameWithADirectoryThatIsThereIsRefused) {
  const copy_beside inside("libx/libPlugTest.so");
  EXPECT_EQ(load("x/libPlugTest.DLL", "PLUG_DOUBLE"), nullptr);
  EXPECT_EQ(load("x/../libPlugTest.DLL", "PLUG_DOUBLE"), nullptr);
  EXPECT_EQ(load("x/libPlugTest", "PLUG_DOUBLE"), nullptr);
}

TEST(Plugins, NamesMayHaveOneCharacter) {
  const copy_beside short_name("libP.so");
  void* const slot = load("P", "N");
  ASSERT_NE(slot, nullptr);
  EXPECT_EQ(called(slot, 7), 8);
  void* const with_suffix = load("P.DLL", "N");
  ASSERT_NE(with_suffix, nullptr);
  EXPECT_EQ(called(with_suffix, -1), 0);
}

// Nothing stands before the suffix: it is the name, not a suffix, and no library of an empty name is meant.
TEST(Plugins, ASuffixAloneIsAName) {
  {
    const copy_beside empty_name("lib.so");
    EXPECT_EQ(load(".DLL", "PLUG_DOUBLE"), nullptr);
    EXPECT_EQ(load(".dll", "PLUG_DOUBLE"), nullptr);
  }
  const copy_beside name("lib.DLL.so");
  void* const slot = load(".DLL", "PLUG_DOUBLE");
  ASSERT_NE(slot, nullptr);
  EXPECT_EQ(called(slot, 21), 42);
}

TEST(Plugins, MissingArgumentsLeaveTheSlotNull) {
  const std::int32_t twelve = 12, negative = -12;
  for (int missing = 0; missing < 5; ++missing) {
    void* slot = &marker;
    LOAD_DLL_SUBROUTINE(missing == 0 ? nullptr : "PlugTest.DLL", missing == 1 ? nullptr : &twelve,
                        missing == 2 ? nullptr : "PLUG_DOUBLE\0", missing == 3 ? nullptr : &twelve,
                        missing == 4 ? nullptr : &slot);
    EXPECT_EQ(slot, missing == 4 ? &marker : nullptr) << missing;
  }
  void* slot = &marker;
  LOAD_DLL_SUBROUTINE("PlugTest.DLL", &negative, "PLUG_DOUBLE", &negative, &slot);
  EXPECT_EQ(slot, nullptr);
}

TEST(Plugins, ALibraryThatAppearsLaterIsFound) {
  const fs::path late = fs::path(PLUGIN_BESIDE).parent_path() / "libLatePlug.so";
  fs::remove(late);
  EXPECT_EQ(load("LatePlug.DLL", "PLUG_DOUBLE"), nullptr);
  fs::copy_file(PLUGIN_BESIDE, late);
  void* const slot = load("LatePlug.DLL", "PLUG_DOUBLE");
  fs::remove(late);
  ASSERT_NE(slot, nullptr);
  EXPECT_EQ(called(slot, 4), 8);
}

TEST(Plugins, ALibraryInTheWorkingDirectoryIsNotFound) {
  const fs::path before = fs::current_path();
  fs::current_path(ELSEWHERE);
  EXPECT_EQ(load("ElsewherePlug.DLL", "PLUG_DOUBLE"), nullptr);
  fs::current_path(before);
}

TEST(Plugins, TheLoaderSearchesItsAbsoluteDirectories) {
  EXPECT_TRUE(probe_finds("/", ELSEWHERE.c_str()));
  EXPECT_FALSE(probe_finds("/", "/nowhere"));
  EXPECT_FALSE(probe_finds(ELSEWHERE, "/nowhere"));
}

TEST(Plugins, TheLoaderDoesNotSearchTheWorkingDirectory) {
  // An empty entry of the list means the working directory to the loader.
  for (const char* list : {":", ":/nowhere", "/nowhere:", "/nowhere::/usr/lib", ".", "./", "/nowhere:."}) {
    EXPECT_FALSE(probe_finds(ELSEWHERE, list)) << list;
  }
  EXPECT_FALSE(probe_finds(ELSEWHERE.parent_path(), ELSEWHERE.filename().c_str()));
}

TEST(Plugins, AnAbsoluteDirectoryCountsAlsoBesideARelativeOne) {
  EXPECT_TRUE(probe_finds("/", (":" + ELSEWHERE.string()).c_str()));
  EXPECT_TRUE(probe_finds("/", (ELSEWHERE.string() + ":.").c_str()));
}
