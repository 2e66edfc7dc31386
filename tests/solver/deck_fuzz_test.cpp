// deck_fuzz_test.cpp: whatever is done to a deck, the reader answers with a model or with a deck_error.
#include <gtest/gtest.h>

#include <algorithm>
#include <exception>
#include <random>

#include "deck/deck_reader.h"
#include "deck_builder.h"

using namespace deck_test;

namespace {

class mutator {
 public:
  explicit mutator(unsigned seed) : random_(seed) {}

  // A good deck with one to four mutations.
  std::string mutate(const std::vector<std::string>& good) {
    lines_ = good;
    for (std::size_t n = 1 + below(4); n > 0; --n) {
      switch (below(7)) {
        case 0: flip_byte(); break;
        case 1: drop_line(); break;
        case 2: std::swap(any_line(), any_line()); break;
        case 3: swap_fields(); break;
        case 4: replace_field(); break;
        case 5: lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(below(lines_.size())), any_line()); break;
        default: any_line() += ","; break;
      }
    }
    std::string text = text_of(lines_);
    if (below(10) == 0) text.resize(below(text.size() + 1));
    return text;
  }

 private:
  std::size_t below(std::size_t n) { return static_cast<std::size_t>(random_()) % n; }
  std::string& any_line() { return lines_[below(lines_.size())]; }

  void flip_byte() {
    std::string& line = any_line();
    if (!line.empty()) line[below(line.size())] = static_cast<char>(below(256));
  }
  void drop_line() {
    if (lines_.size() > 1) lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(below(lines_.size())));
  }

  static std::vector<std::string> fields_of(const std::string& line) {
    std::vector<std::string> fields(1);
    for (const char c : line) {
      if (c == ',') {
        fields.emplace_back();
      } else {
        fields.back() += c;
      }
    }
    return fields;
  }
  static std::string joined(const std::vector<std::string>& fields) {
    std::string line = fields[0];
    for (std::size_t i = 1; i < fields.size(); ++i) line += "," + fields[i];
    return line;
  }
  void swap_fields() {
    std::string& line = any_line();
    std::vector<std::string> fields = fields_of(line);
    std::swap(fields[below(fields.size())], fields[below(fields.size())]);
    line = joined(fields);
  }
  void replace_field() {
    static const std::vector<std::string> ODD = {
        "",         "0", "-1",        "2147483647", "2147483648", "1E308", "1D-308", "nan", "-inf", "ALL",   "SKIN",
        "GENERATE", "=", "NSET=SKIN", "*",          "**",         "GRAV",  "XSYMM",  "\r",  "3",    "1e-320"};
    std::string& line = any_line();
    std::vector<std::string> fields = fields_of(line);
    fields[below(fields.size())] = ODD[below(ODD.size())];
    line = joined(fields);
  }

  std::mt19937 random_;
  std::vector<std::string> lines_;
};

}  // namespace

// A model that was accepted must hold together: every index lies inside what it points to.
static bool consistent(const solver::model& m) {
  const auto inside = [](int i, std::size_t size) { return i >= 0 && static_cast<std::size_t>(i) < size; };
  const auto node_ok = [&](int i) { return inside(i, m.nodes.size()); };
  bool ok = !m.elements.empty() && !m.steps.empty();
  for (const auto& e : m.elements) {
    const std::size_t corners = is_solid(e.type)                          ? 8
                                : is_plate(e.type)                        ? 3
                                : e.type == solver::element_type::SPRING1 ? 1
                                                                          : 2;
    ok = ok && e.nodes.size() == corners && std::all_of(e.nodes.begin(), e.nodes.end(), node_ok);
    ok = ok && inside(e.section, is_solid(e.type)   ? m.solid_sections.size()
                                 : is_plate(e.type) ? m.shell_sections.size()
                                                    : m.frame_sections.size());
    ok = ok && (e.ends < 0 || inside(e.ends, m.ends.size()));
  }
  for (const auto& s : m.shell_sections) ok = ok && inside(s.material, m.materials.size()) && s.thickness > 0;
  for (const auto& set : m.nsets) ok = ok && std::all_of(set.members.begin(), set.members.end(), node_ok);
  for (const auto& c : m.boundaries) {
    ok = ok && node_ok(c.node) && 1 <= c.first_dof && c.first_dof <= c.last_dof && c.last_dof <= 6;
  }
  for (const auto& s : m.steps) {
    for (const auto& load : s.nodal_loads) ok = ok && node_ok(load.node) && 1 <= load.dof && load.dof <= 6;
    for (const auto& load : s.element_loads) ok = ok && inside(load.element, m.elements.size());
    for (const auto& t : s.temperatures) ok = ok && node_ok(t.node);
  }
  return ok;
}

static void mutate_many(const std::vector<std::string>& good, int decks) {
  mutator mutations(20240607);
  int models = 0, errors = 0;
  for (int i = 0; i < decks; ++i) {
    const std::string text = mutations.mutate(good);
    try {
      const solver::model m = read(text);
      ++models;
      ASSERT_TRUE(consistent(m)) << "deck " << i << ":\n" << text;
    } catch (const solver::deck_error& error) {
      ++errors;
      ASSERT_FALSE(error.text.empty()) << "deck " << i << ":\n" << text;
    } catch (const std::exception& other) {
      FAIL() << "deck " << i << " threw " << other.what() << ":\n" << text;
    }
  }
  // Both answers must occur often, or the mutations test nothing.
  EXPECT_GT(models, decks / 50);
  EXPECT_GT(errors, decks / 2);
}

TEST(deck_fuzz, a_model_or_a_deck_error) { mutate_many(GOOD, 20000); }
TEST(deck_fuzz, a_frame_or_a_deck_error) { mutate_many(GOOD_FRAME, 20000); }
TEST(deck_fuzz, a_solid_or_a_deck_error) { mutate_many(GOOD_SOLIDS, 20000); }
