// assembly_cards.h: one card of a part, of an instance or of an assembly in the words of a flat deck.
#ifndef FINITES_SOLVER_DECK_ASSEMBLY_CARDS_H
#define FINITES_SOLVER_DECK_ASSEMBLY_CARDS_H

#include <deque>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "deck/assembly_motion.h"
#include "deck/cards.h"

namespace solver::deck {

// What names and numbers of a card refer to: an instance, or the assembly itself.
struct assembly_level {
  std::string name;    // in upper case; empty: the assembly
  std::string prefix;  // "PART-1-1."; of the assembly nothing
  int offset = 0;      // of its node and element numbers
  rigid_motion motion;
  std::unordered_set<std::string> orientations;  // of its own
};

// May the card stand in a part or an assembly, and which of its words are names and numbers there?
bool belongs_to_part(const card& c);

// Cards of all kinds but those of the structure (*PART, ...) go through it, in their order.
class card_writer {
 public:
  // New text goes to `buffers`, where nothing moves.
  card_writer(const card_deck& from, card_deck& to, std::deque<std::string>& buffers)
      : from_(from), to_(to), buffers_(buffers) {}

  std::unordered_map<std::string, const assembly_level*> instances;  // by name
  std::string assembly;                                              // its name and a point; empty without one

  void copy(const card& c);                              // as it stands
  void write(const card& c, const assembly_level& own);  // of a part, an instance or the assembly
  void resolve(const card& c);                           // outside of all: I.12 and I.SET

 private:
  void put(card c, const std::vector<data_line>& lines);
  void put_same(card c, const card& lines);
  const assembly_level& level_of_data(const card& c, const assembly_level& own, card& changed) const;
  void check_motion(const card& c, const assembly_level& own);
  void rewrite_parameters(card& c, const assembly_level& own) const;
  std::string reference(const card& c, const data_line* l, std::string_view field, const assembly_level& at) const;
  std::string name_of(std::string_view written, const assembly_level& at) const;
  bool is_dotted(std::string_view field) const;

  const card_deck& from_;
  card_deck& to_;
  std::deque<std::string>& buffers_;
};

}  // namespace solver::deck

#endif
