// named_edges.cpp: looks at cards alone, before anything is read.
#include "deck/named_edges.h"

#include <algorithm>
#include <unordered_set>

#include "deck/fields.h"

namespace solver::deck {

namespace {

using ids = std::unordered_set<int>;
using names = std::unordered_set<std::string>;

bool is(const card& c, const char* keyword) { return squeezed(c.keyword) == squeezed(keyword); }

// "LINE12" for "LINE".
bool is_numbered(const std::string& name, const std::string& word) {
  return name.size() > word.size() && name.compare(0, word.size(), word) == 0 &&
         name.find_first_not_of("0123456789", word.size()) == std::string::npos;
}

bool is_on_edge(const card& c) {
  const std::string type = squeezed(c.value("TYPE")), set = upper(c.value("ELSET"));
  const bool plane = type == "CPS3" || type == "CPS4" || type == "CPS6" || type == "CPS8";
  const bool line = type == "T3D2" || type == "T3D3";
  return is(c, "*ELEMENT") && !c.broken &&
         ((line && is_numbered(set, "LINE")) || (plane && is_numbered(set, "SURFACE")));
}

// The integers of a line; what is no number is passed over.
std::vector<int> numbers_of(const data_line& l) {
  std::vector<std::string_view> fields;
  split_fields(l.text, fields);
  std::vector<int> numbers;
  for (const std::string_view field : fields) {
    int number = 0;
    if (parse_integer(field, number) == number_fault::NONE) numbers.push_back(number);
  }
  return numbers;
}

// The sets that a section, or another card than those that make and print sets, names as its elements.
names sections_of(const card_deck& deck) {
  names all;
  for (const card& c : deck.cards) {
    const bool makes = is(c, "*ELEMENT") || is(c, "*ELSET");
    if (!makes && c.find("ELSET") != nullptr) all.insert(upper(c.value("ELSET")));
  }
  return all;
}

// Sets that go into one of these, and the numbers in them. Sets name others that stand above them as a rule, so that
// the way goes from the end.
void take_in(const card_deck& deck, names& sets, ids& numbers) {
  for (auto c = deck.cards.rbegin(); c != deck.cards.rend(); ++c) {
    if (!is(*c, "*ELSET") || sets.count(upper(c->value("ELSET"))) == 0) continue;
    for (const data_line* l = deck.begin_of(*c); l != deck.end_of(*c); ++l) {
      std::vector<std::string_view> fields;
      split_fields(l->text, fields);
      for (const std::string_view field : fields) sets.insert(upper(field));
      const std::vector<int> found = numbers_of(*l);
      numbers.insert(found.begin(), found.end());
      if (c->find("GENERATE") == nullptr || found.size() < 2) continue;
      const int step = found.size() > 2 && found[2] > 0 ? found[2] : 1;
      for (long long id = found[0]; id <= found[1]; id += step) numbers.insert(static_cast<int>(id));
    }
  }
}

// The numbers of the elements of a card.
std::vector<int> elements_of(const card_deck& deck, const card& c) {
  std::vector<int> first;
  for (const data_line* l = deck.begin_of(c); l != deck.end_of(c); ++l) {
    const std::vector<int> numbers = numbers_of(*l);
    if (!numbers.empty()) first.push_back(numbers.front());
  }
  return first;
}

bool any_of(const std::vector<int>& list, const ids& set) {
  return std::any_of(list.begin(), list.end(), [&](int id) { return set.count(id) > 0; });
}

// A set of nothing but elements that are left out.
bool holds_only(const card_deck& deck, const card& c, const ids& gone, const names& gone_sets) {
  if (!is(c, "*ELSET") || c.find("GENERATE") != nullptr || c.broken) return false;
  for (const data_line* l = deck.begin_of(c); l != deck.end_of(c); ++l) {
    std::vector<std::string_view> fields;
    split_fields(l->text, fields);
    for (const std::string_view field : fields) {
      int id = 0;
      const bool number = parse_integer(field, id) == number_fault::NONE;
      if (number ? gone.count(id) == 0 : gone_sets.count(upper(field)) == 0) return false;
    }
  }
  return c.count > 0;
}

}  // namespace

std::string leave_out_named_edges(card_deck& deck) {
  if (std::none_of(deck.cards.begin(), deck.cards.end(), is_on_edge)) return "";
  names named = sections_of(deck);
  ids covered, gone;
  names gone_sets;
  take_in(deck, named, covered);
  const auto is_bare = [&](const card& c) {
    return is_on_edge(c) && named.count(upper(c.value("ELSET"))) == 0 && !any_of(elements_of(deck, c), covered);
  };
  const card* first = nullptr;
  bool others = false;
  for (const card& c : deck.cards) {
    others = others || (is(c, "*ELEMENT") && !is_bare(c));
    if (!is_bare(c)) continue;
    if (first == nullptr) first = &c;
    for (const int id : elements_of(deck, c)) gone.insert(id);
    gone_sets.insert(upper(c.value("ELSET")));
  }
  if (first == nullptr || !others) return "";  // a mesh of nothing else lacks its sections
  const std::string place = deck.files[first->file] + ":" + std::to_string(first->line);
  std::string note =
      place + ": *ELEMENT: " + std::to_string(gone.size()) +
      " elements of named edges and faces are left out, with the sets that hold nothing else: no section "
      "names them, as a mesher saves them to name their nodes";
  const auto leaves = [&](const card& c) { return is_bare(c) || holds_only(deck, c, gone, gone_sets); };
  deck.cards.erase(std::remove_if(deck.cards.begin(), deck.cards.end(), leaves), deck.cards.end());
  return note;
}

}  // namespace solver::deck
