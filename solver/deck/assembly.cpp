// assembly.cpp: a deck of parts and instances as a flat one.
#include "deck/assembly.h"

#include <algorithm>
#include <climits>
#include <deque>
#include <map>

#include "deck/assembly_cards.h"
#include "deck/fields.h"
#include "deck/keywords.h"
#include "deck/load_cases.h"
#include "deck/mesh_generators.h"
#include "model/deck_error.h"

namespace solver::deck {

namespace {

// The numbers of nodes or elements of a level, from the first to the last.
struct number_range {
  int first = INT_MAX, last = 0;
  bool overlaps(const number_range& other) const { return first <= other.last && other.first <= last; }
  void add(int id) {
    first = std::min(first, id);
    last = std::max(last, id);
  }
};

struct deck_part {
  const card* opens = nullptr;
  std::vector<const card*> cards;
  mutable bool used = false;
};

struct deck_instance {
  const card* opens = nullptr;
  const deck_part* of = nullptr;   // null: its mesh is its own
  std::vector<const card*> cards;  // of its own
  assembly_level level;
  number_range nodes, elements;
};

class assembly_flattener {
 public:
  explicit assembly_flattener(card_deck& deck) : deck_(deck), writer_(deck, flat_, deck.buffers) {}
  card_deck flatten(card_deck& deck);

 private:
  void sort_cards();
  void take(const card& c, const std::string& keyword);
  void open_part(const card& c);
  void open_assembly(const card& c);
  void open_instance(const card& c);
  void close(const card& c, const card*& open, const char* what);
  void check_closed();
  std::string required(const card& c, const char* parameter) const;
  void check_parameters(const card& c, std::initializer_list<const char*> known) const;
  void measure(const std::vector<const card*>& cards, number_range& nodes, number_range& elements) const;
  void choose_offsets();
  void note_offsets(const std::vector<const deck_instance*>& counted_on);
  void write();
  void write_level(const deck_instance& i);
  void write_once(const deck_part& p);

  const card_deck& deck_;
  card_deck flat_;
  card_writer writer_;
  std::map<std::string, deck_part> parts_;
  std::deque<deck_instance> instances_;  // in the order of the deck; they do not move
  deck_instance assembly_;               // its own nodes and elements
  const card *in_part_ = nullptr, *in_assembly_ = nullptr, *in_instance_ = nullptr, *assembly_card_ = nullptr;
  deck_part* open_ = nullptr;
};

}  // namespace

static bool is_structure(const std::string& keyword) {
  static const char* const WORDS[] = {"*PART", "*ENDPART", "*ASSEMBLY", "*INSTANCE", "*ENDINSTANCE", "*ENDASSEMBLY"};
  return std::any_of(std::begin(WORDS), std::end(WORDS), [&](const char* word) { return keyword == word; });
}

std::string assembly_flattener::required(const card& c, const char* parameter) const {
  const std::string value = c.value(parameter);
  if (value.empty()) deck_.fail(c, std::string("the parameter ") + parameter + " is missing");
  if (value.size() > 80) deck_.fail(c, "the name " + in_quotes(value) + " is longer than 80 letters");
  return upper(value);
}

void assembly_flattener::check_parameters(const card& c, std::initializer_list<const char*> known) const {
  for (const parameter& p : c.parameters) {
    if (std::none_of(known.begin(), known.end(), [&](const char* name) { return p.name == name; })) {
      deck_.fail(c, "the parameter " + in_quotes(p.written) + " is not known");
    }
  }
}

void assembly_flattener::open_part(const card& c) {
  if (in_part_ != nullptr) {
    deck_.fail(c, "the *PART of line " + std::to_string(in_part_->line) + " has no *END PART yet");
  }
  if (in_assembly_ != nullptr) deck_.fail(c, "a part stands before the *ASSEMBLY, not in it");
  in_part_ = &c;
  open_ = nullptr;
  check_parameters(c, {"NAME"});
  const std::string name = required(c, "NAME");
  if (c.count > 0) deck_.fail(c, *deck_.begin_of(c), "no data line belongs here");
  const auto [place, is_new] = parts_.emplace(name, deck_part{});
  if (!is_new) {
    deck_.fail(
        c, "the part " + in_quotes(name) + " is defined already, in line " + std::to_string(place->second.opens->line));
  }
  place->second.opens = &c;
  open_ = &place->second;
}

void assembly_flattener::open_assembly(const card& c) {
  if (assembly_card_ != nullptr) {
    deck_.fail(c, "the deck has an *ASSEMBLY already, in line " + std::to_string(assembly_card_->line));
  }
  if (in_part_ != nullptr) {
    deck_.fail(c, "the *PART of line " + std::to_string(in_part_->line) + " has no *END PART yet");
  }
  in_assembly_ = assembly_card_ = &c;
  check_parameters(c, {"NAME"});
  if (!c.value("NAME").empty()) writer_.assembly = upper(c.value("NAME")) + ".";
}

void assembly_flattener::open_instance(const card& c) {
  if (in_instance_ != nullptr) {
    deck_.fail(c, "the *INSTANCE of line " + std::to_string(in_instance_->line) + " has no *END INSTANCE yet");
  }
  in_instance_ = &c;
  instances_.emplace_back();
  deck_instance& i = instances_.back();
  i.opens = &c;
  if (in_assembly_ == nullptr) deck_.fail(c, "an instance stands between *ASSEMBLY and *END ASSEMBLY");
  if (c.find("LIBRARY") != nullptr || c.find("INSTANCE") != nullptr) {
    deck_.fail(c, "an instance from another analysis is not supported: give its *PART in this deck");
  }
  check_parameters(c, {"NAME", "PART"});
  i.level.name = required(c, "NAME");
  i.level.prefix = i.level.name + ".";
  i.level.motion = read_motion(deck_, c, deck_.begin_of(c), c.count);
  if (c.find("PART") != nullptr) {
    const auto found = parts_.find(required(c, "PART"));
    if (found == parts_.end()) deck_.fail(c, "the part " + in_quotes(c.value("PART")) + " is not defined");
    i.of = &found->second;
    i.of->used = true;
  }
  if (!writer_.instances.emplace(i.level.name, &i.level).second) {
    deck_.fail(c, "the instance " + in_quotes(c.value("NAME")) + " is defined already");
  }
}

void assembly_flattener::close(const card& c, const card*& open, const char* what) {
  const bool was_open = open != nullptr;
  open = nullptr;
  if (!was_open) deck_.fail(c, std::string("no ") + what + " is open here");
  if (c.count > 0) deck_.fail(c, *deck_.begin_of(c), "no data line belongs here");
  const card* const instance = in_instance_;
  in_instance_ = nullptr;
  if (instance != nullptr) deck_.fail(*instance, "the instance has no *END INSTANCE");
}

void assembly_flattener::take(const card& c, const std::string& keyword) {
  if (c.broken && is_structure(keyword)) return;
  if (keyword == "*PART") return open_part(c);
  if (keyword == "*ASSEMBLY") return open_assembly(c);
  if (keyword == "*INSTANCE") return open_instance(c);
  if (keyword == "*ENDPART") return close(c, in_part_, "*PART");
  if (keyword == "*ENDINSTANCE") return close(c, in_instance_, "*INSTANCE");
  if (keyword == "*ENDASSEMBLY") return close(c, in_assembly_, "*ASSEMBLY");
  if (keyword == "*STEP") check_closed();
  if (in_part_ != nullptr && open_ != nullptr) open_->cards.push_back(&c);
  if (in_instance_ != nullptr) {
    instances_.back().cards.push_back(&c);
  } else if (in_assembly_ != nullptr || in_part_ == nullptr) {
    assembly_.cards.push_back(&c);  // also what stands outside of all parts
  }
}

void assembly_flattener::check_closed() {
  const card* const open = in_part_ != nullptr ? in_part_ : in_instance_ != nullptr ? in_instance_ : in_assembly_;
  const char* const end = in_part_ != nullptr       ? "*END PART"
                          : in_instance_ != nullptr ? "*END INSTANCE"
                                                    : "*END ASSEMBLY";
  in_part_ = in_instance_ = in_assembly_ = nullptr;
  if (open != nullptr) deck_.fail(*open, std::string("no ") + end + " follows before the first *STEP or the end");
}

// What each level holds. The cards themselves are written later, once all offsets are known.
void assembly_flattener::sort_cards() {
  error_list errors = deck_.errors;
  bool sound = true;
  const auto attempt = [&](const auto& action) { sound = errors.attempt(action) && sound; };
  for (const card& c : deck_.cards) {
    const std::string keyword = squeezed(c.keyword);
    sound = sound && !(c.broken && is_structure(keyword));
    attempt([&] { take(c, keyword); });
  }
  attempt([&] { check_closed(); });
  attempt([&] {
    if (sound && !parts_.empty() && instances_.empty()) {
      deck_.fail(*parts_.begin()->second.opens, "no *INSTANCE puts the part into an *ASSEMBLY");
    }
  });
  if (!sound) errors.raise(deck_);
}

void assembly_flattener::measure(const std::vector<const card*>& cards, number_range& nodes,
                                 number_range& elements) const {
  for (const card* c : cards) {
    const std::string keyword = squeezed(c->keyword);
    if (keyword != "*NODE" && keyword != "*ELEMENT") continue;
    for (const data_line* l = deck_.begin_of(*c); l != deck_.end_of(*c); ++l) {
      int id = 0;
      if (parse_integer(trimmed(l->text.substr(0, l->text.find(','))), id) != number_fault::NONE) continue;
      if (id > 0) (keyword == "*NODE" ? nodes : elements).add(id);
    }
  }
}

// An instance whose numbers lie apart from those before it keeps them. The others, and the assembly's own nodes, are
// counted on from a multiple of a power of ten: the last digits stay those of the part.
void assembly_flattener::choose_offsets() {
  std::vector<deck_instance*> levels;
  for (deck_instance& i : instances_) {
    if (i.of != nullptr) measure(i.of->cards, i.nodes, i.elements);
    measure(i.cards, i.nodes, i.elements);
    levels.push_back(&i);
  }
  measure(assembly_.cards, assembly_.nodes, assembly_.elements);
  levels.push_back(&assembly_);

  int last = 0;
  for (const deck_instance* i : levels) last = std::max({last, i->nodes.last, i->elements.last});
  long long unit = 10;
  while (unit <= last) unit *= 10;
  const auto most = static_cast<long long>(levels.size());
  if (unit * most > INT_MAX) unit = last + 1LL;
  std::vector<const deck_instance*> kept, counted_on;
  for (std::size_t k = 0; k < levels.size(); ++k) {
    deck_instance& i = *levels[k];
    const bool free = std::none_of(kept.begin(), kept.end(), [&](const deck_instance* other) {
      return i.nodes.overlaps(other->nodes) || i.elements.overlaps(other->elements);
    });
    if (free) {
      kept.push_back(&i);
      continue;
    }
    const long long offset = unit * static_cast<long long>(k);
    if (offset + last > INT_MAX) deck_.fail(*instances_.back().opens, "the numbers of all instances are too many");
    i.level.offset = static_cast<int>(offset);
    counted_on.push_back(&i);
  }
  note_offsets(counted_on);
}

void assembly_flattener::note_offsets(const std::vector<const deck_instance*>& counted_on) {
  constexpr std::size_t MOST_NAMED = 20;
  if (counted_on.empty()) return;
  std::string text = "numbers of nodes and elements that others have already are counted on:";
  for (std::size_t k = 0; k < counted_on.size() && k < MOST_NAMED; ++k) {
    const assembly_level& level = counted_on[k]->level;
    const std::string name = level.name.empty() ? "the assembly" : level.name;
    const int example = counted_on[k]->nodes.last > 0 ? counted_on[k]->nodes.first : counted_on[k]->elements.first;
    text += (k > 0 ? "; " : " ") + name + " from " + std::to_string(level.offset) + " (its " + std::to_string(example) +
            " is " + std::to_string(example + level.offset) + " here)";
  }
  if (counted_on.size() > MOST_NAMED) {
    text += "; and " + std::to_string(counted_on.size() - MOST_NAMED) + " more instances in the same steps";
  }
  const card& c = *assembly_card_;
  flat_.notes.push_back({c.file, c.line, c.keyword, text});
}

// What does not belong to the mesh (materials, requests) is the same for all instances.
static bool is_common(const card& c) { return c.broken || !belongs_to_part(c); }

void assembly_flattener::write_once(const deck_part& p) {
  for (const card* c : p.cards) {
    if (is_common(*c)) writer_.copy(*c);
  }
  if (p.used) return;
  const std::string name = in_quotes(p.opens->value("NAME"));
  flat_.notes.push_back(
      {p.opens->file, p.opens->line, p.opens->keyword, "the part " + name + " has no effect: it is in no *INSTANCE"});
}

void assembly_flattener::write_level(const deck_instance& i) {
  const auto each = [&](const card* c) {
    flat_.errors.attempt([&] {
      if (!is_common(*c)) writer_.write(*c, i.level);
    });
  };
  if (i.of != nullptr) std::for_each(i.of->cards.begin(), i.of->cards.end(), each);
  std::for_each(i.cards.begin(), i.cards.end(), each);
}

// In the order of the deck, each instance where its card stands.
void assembly_flattener::write() {
  for (deck_instance& i : instances_) {
    const auto gather = [&](const card* c) {
      if (squeezed(c->keyword) == "*ORIENTATION") i.level.orientations.insert(upper(c->value("NAME")));
    };
    if (i.of != nullptr) std::for_each(i.of->cards.begin(), i.of->cards.end(), gather);
    std::for_each(i.cards.begin(), i.cards.end(), gather);
  }
  auto next = instances_.begin();
  bool in_part = false, in_instance = false;
  for (const card& c : deck_.cards) {
    const std::string keyword = squeezed(c.keyword);
    if (keyword == "*PART") write_once(parts_.at(upper(c.value("NAME"))));
    if (keyword == "*INSTANCE") write_level(*next++);
    in_part = keyword == "*PART" || (in_part && keyword != "*ENDPART");
    in_instance = keyword == "*INSTANCE" || (in_instance && keyword != "*ENDINSTANCE");
    if (is_structure(keyword) || in_part) continue;
    if (in_instance) {
      if (is_common(c)) writer_.copy(c);
      continue;
    }
    const bool text = keyword == "*HEADING" || keyword == "*STEP";
    const bool mesh = !c.broken && belongs_to_part(c);
    flat_.errors.attempt([&] {
      text ? writer_.copy(c) : mesh ? writer_.write(c, assembly_.level) : writer_.resolve(c);
    });
  }
}

card_deck assembly_flattener::flatten(card_deck& deck) {
  sort_cards();
  choose_offsets();
  flat_.errors = deck.errors;
  flat_.notes.insert(flat_.notes.begin(), deck.notes.begin(), deck.notes.end());
  write();
  flat_.files = std::move(deck.files);
  flat_.included_from = std::move(deck.included_from);
  flat_.last_line = deck.last_line;
  flat_.buffers = std::move(deck.buffers);
  return std::move(flat_);
}

card_deck flat_cards(card_deck deck) {
  write_out_generators(deck);
  const bool has_parts = std::any_of(deck.cards.begin(), deck.cards.end(),
                                     [](const card& c) { return is_structure(squeezed(c.keyword)); });
  if (has_parts) deck = assembly_flattener(deck).flatten(deck);
  write_out_load_cases(deck);
  return deck;
}

}  // namespace solver::deck
