// cards.h: a deck as keyword cards. A card is a keyword, its parameters and the data lines below it; nothing is
// interpreted here but the commas, the comments and *INCLUDE.
#ifndef FINITES_SOLVER_DECK_CARDS_H
#define FINITES_SOLVER_DECK_CARDS_H

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "deck/deck_files.h"
#include "deck/error_list.h"
#include "model/index.h"

namespace solver::deck {

struct data_line {
  std::string_view text;  // trimmed; lies in one of the buffers of the deck
  int line = 0;
  int file = 0;  // an included file may bring data lines for the card above the *INCLUDE
};

struct parameter {
  std::string name;     // squeezed: ORIENTATIONANGLE
  std::string written;  // for a message: ORIENTATION ANGLE
  std::string value;    // as written, trimmed
  bool has_value = false;
};

struct card {
  std::string keyword;  // "*SHELL SECTION": upper case, single blanks
  std::vector<parameter> parameters;
  std::size_t first = 0, count = 0;  // its data lines in card_deck::lines
  int line = 0;
  int file = 0;
  bool broken = false;        // its keyword line is in error: it is not read
  bool further_case = false;  // a *STEP written out for the second or a later *LOAD CASE of a step

  const parameter* find(std::string_view name) const;  // null when the card does not have it
  std::string value(std::string_view name) const;      // empty then
};

struct place_in_deck {
  int file = 0, line = 0;
};

// What has no effect here, or was understood in a way of its own: place and sentence.
struct deck_note {
  int file = 0, line = 0;
  std::string keyword;
  std::string text;
};

struct card_deck {
  std::deque<std::string> buffers;        // a deque: the text never moves, data_line::text points into it
  numbered<std::string> files;            // names as a message shows them
  numbered<place_in_deck> included_from;  // by file; of files[0] nothing
  std::vector<data_line> lines;
  std::vector<card> cards;
  int last_line = 1;             // of files[0]
  error_list errors;             // of keyword lines
  std::vector<deck_note> notes;  // of what was put into another form

  const data_line* begin_of(const card& c) const { return lines.data() + c.first; }
  const data_line* end_of(const card& c) const { return lines.data() + c.first + c.count; }

  [[noreturn]] void fail(int file, int line, const std::string& keyword, const std::string& text) const;
  [[noreturn]] void fail(const card& c, const std::string& text) const;
  [[noreturn]] void fail(const card& c, const data_line& l, const std::string& text) const;
};

// Cuts a text into cards and follows *INCLUDE from the folder of `name`; `source` has the files. Throws deck_error
// where nothing more can be read.
card_deck cut_into_cards(file_text file, const std::string& name, const file_source& source);

}  // namespace solver::deck

#endif
