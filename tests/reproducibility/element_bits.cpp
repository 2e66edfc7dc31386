// element_bits.cpp: a seeded list of calls of every exported routine and the bits of what they write.
//
//   element_bits                   one line a call: analysis, stage, element, what was called, a hash of all it wrote
//   element_bits --values          the values behind the hashes too, as bits and as decimal numbers
//   element_bits --compare-orders  silent: makes the calls forwards and backwards and fails when the order shows
//   element_bits --power FILE      silent: fails unless every routine that FILE lists is called, and each kind of call
//                                  writes something that is neither zero nor NaN
//
// --elements N beside any of them: so many random elements in all. An element is a plate, a member and a solid.
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "scene.h"

namespace {

using every_call::analysis;
using every_call::listener;
using every_call::observed;
using every_call::scene;

constexpr int USUAL_ELEMENTS = 324;

// Where in the list the calls are that come next.
struct place {
  const char* analysis_name;
  int stage, elem;
};

using call_handler = std::function<void(const place&, const char* routine, const std::string& what, const observed&)>;

class reporter : public listener {
 public:
  reporter(const place& at, const call_handler& handler) : at_(at), handler_(handler) {}
  void called(const char* routine, const std::string& what, const observed& written) override {
    handler_(at_, routine, what, written);
  }

 private:
  place at_;
  const call_handler& handler_;
};

void call_analysis(const analysis& a, int elements, bool forwards, const call_handler& handler) {
  scene model(a, elements);
  for (int stage = model.first_stage(); stage <= scene::LAST_STAGE; ++stage) {
    model.enter(stage);
    for (int i = 1; i <= elements; ++i) {
      const int elem = forwards ? i : elements + 1 - i;
      reporter to({a.name, stage, elem}, handler);
      model.call(stage, elem, model.exchange(), to);
    }
  }
}

void call_everything(int elements, bool forwards, const call_handler& handler) {
  const int analyses = static_cast<int>(every_call::analyses().size());
  for (const analysis& a : every_call::analyses())
    call_analysis(a, (elements + analyses - 1) / analyses, forwards, handler);
}

std::string described(const place& at, const char* routine, const std::string& what) {
  return std::string(at.analysis_name) + " " + std::to_string(at.stage) + " " + std::to_string(at.elem) + " " +
         routine + (what.empty() ? "" : " ") + what;
}

// ------------------------------------------------------------------------------------------------ what is asked for

int print(int elements, bool with_values) {
  call_everything(elements, true,
                  [&](const place& at, const char* routine, const std::string& what, const observed& written) {
                    std::printf("%s %016" PRIx64 "\n", described(at, routine, what).c_str(), written.hash());
                    if (!with_values) return;
                    for (std::size_t i = 0; i < written.values().size(); ++i) {
                      const double value = written.values()[i];
                      const std::uint64_t bits = every_call::bits_of(value);
                      if (bits != 0) std::printf("  %zu %016" PRIx64 " %.17g\n", i + 1, bits, value);
                    }
                  });
  return 0;
}

// The calls of each element in their order, by the place of the element.
using call_hashes = std::map<std::string, std::vector<std::uint64_t>>;

call_hashes hashes_of(int elements, bool forwards) {
  call_hashes all;
  call_everything(elements, forwards,
                  [&](const place& at, const char* routine, const std::string& what, const observed& written) {
                    all[described(at, routine, what)].push_back(written.hash());
                  });
  return all;
}

int compare_orders(int elements) {
  const call_hashes forwards = hashes_of(elements, true);
  const call_hashes backwards = hashes_of(elements, false);
  int differences = forwards.size() == backwards.size() ? 0 : 1;
  for (const auto& [name, hashes] : forwards) {
    const auto other = backwards.find(name);
    if (other != backwards.end() && other->second == hashes) continue;
    std::printf("%s depends on the calls before it\n", name.c_str());
    ++differences;
  }
  return differences == 0 ? 0 : 1;
}

int compare_names(const std::set<std::string>& called, const char* file) {
  std::ifstream list(file);
  std::set<std::string> exported;
  for (std::string name; list >> name;) exported.insert(name);
  int differences = exported.empty() ? 1 : 0;
  if (exported.empty()) std::printf("%s lists no routines\n", file);
  for (const std::string& name : exported) {
    if (called.count(name) > 0) continue;
    std::printf("%s is never called\n", name.c_str());
    ++differences;
  }
  for (const std::string& name : called) {
    if (exported.count(name) > 0) continue;
    std::printf("%s is not in %s\n", name.c_str(), file);
    ++differences;
  }
  return differences;
}

struct power {
  std::set<std::string> routines;
  std::map<std::string, int> calls_that_show;  // by routine and analysis, and by routine and what it does
};

power measure_power(int elements) {
  power p;
  call_everything(elements, true,
                  [&](const place& at, const char* routine, const std::string& what, const observed& written) {
                    const int shows = written.shows_something() ? 1 : 0;
                    p.routines.insert(routine);
                    p.calls_that_show[std::string(routine) + " in " + at.analysis_name] += shows;
                    if (!what.empty()) p.calls_that_show[std::string(routine) + " " + what] += shows;
                  });
  return p;
}

// Answers that are zero by rule have to be so, all others show something.
int check_power(int elements, const char* file) {
  const power p = measure_power(elements);
  int failures = compare_names(p.routines, file);
  for (const auto& [kind, count] : p.calls_that_show) {
    const bool zero = kind.find(every_call::ZERO_BY_RULE) != std::string::npos;
    if (zero == (count == 0)) continue;
    std::printf("%s: %s\n", kind.c_str(), zero ? "not zero" : "every answer is zero or no number");
    ++failures;
  }
  return failures == 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  int elements = USUAL_ELEMENTS;
  std::function<int()> asked = [&] { return print(elements, false); };
  for (int i = 1; i < argc; ++i) {
    const std::string option = argv[i];
    const bool more = i + 1 < argc;
    if (option == "--elements" && more) {
      elements = std::atoi(argv[++i]);
    } else if (option == "--values") {
      asked = [&] { return print(elements, true); };
    } else if (option == "--compare-orders") {
      asked = [&] { return compare_orders(elements); };
    } else if (option == "--power" && more) {
      const char* const file = argv[++i];
      asked = [&elements, file] { return check_power(elements, file); };
    } else {
      std::fprintf(stderr, "element_bits [--elements N] [--values | --compare-orders | --power FILE]\n");
      return 2;
    }
  }
  if (elements < 1) {
    std::fprintf(stderr, "element_bits: --elements wants a number above 0\n");
    return 2;
  }
  return asked();
}
