// cards.cpp: cuts the text of a deck into keyword cards.
//
// A line that begins with ** is a comment, one that begins with * opens a card, every other one is data of the card
// above. Blank lines carry nothing. A keyword line that ends with a comma goes on in the next line.
#include "deck/cards.h"

#include <algorithm>
#include <filesystem>

#include "deck/fields.h"
#include "deck/keywords.h"
#include "model/deck_error.h"

namespace solver::deck {

namespace {

// The lines of one text that are neither blank nor comments, with their numbers.
class line_source {
 public:
  // Old programs end their lines by a carriage return alone. Where a text has line feeds a lone return is a blank.
  explicit line_source(std::string_view text) : rest_(text), returns_(text.find('\n') == std::string_view::npos) {}

  bool next(std::string_view& line) {
    while (!rest_.empty()) {
      const std::size_t end = rest_.find(returns_ ? '\r' : '\n');
      line = trimmed(rest_.substr(0, end));
      rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
      ++number_;
      if (!line.empty() && line.substr(0, 2) != "**") return true;
    }
    return false;
  }
  // Below a keyword line that ends with a comma: parameters begin with a letter. Before anything else the comma has no
  // meaning.
  bool parameters_follow() const {
    line_source ahead = *this;
    std::string_view line;
    return ahead.next(line) && line[0] != '*' && line[0] != ',' && !looks_like_number(line);
  }
  int number() const { return number_; }

 private:
  std::string_view rest_;
  bool returns_;
  int number_ = 0;
};

class card_cutter {
 public:
  card_cutter(card_deck& deck, const file_source& source) : deck_(deck), source_(source) {}

  void cut(file_text whole, const std::string& name, const place_in_deck& from);

 private:
  card read_keyword_line(line_source& lines, std::string_view line, int file);
  void refuse_utf16(std::string_view content, int file) const;
  void read_parameters(line_source& lines, std::string_view line, card& c) const;
  void add_parameter(card& c, std::string_view field) const;
  void include(const card& c);
  void take_file(const card& c, const std::string& input);
  void take_lines_of_file(std::size_t at);
  void add_data(std::string_view line, int number, int file);

  card_deck& deck_;
  const file_source& source_;
  std::vector<std::string> open_;  // the files that include one another, outermost first
};

}  // namespace

// Names for a message: *shell   section  ->  *SHELL SECTION
static std::string keyword_name(std::string_view text) {
  std::string name;
  for (const char c : upper(trimmed(text.substr(1)))) {
    const bool blank = c == ' ' || c == '\t' || c == '\r';
    if (!blank || (!name.empty() && name.back() != ' ')) name += blank ? ' ' : c;
  }
  return "*" + name;
}

void card_cutter::cut(file_text whole, const std::string& name, const place_in_deck& from) {
  const int file = count_of(deck_.files);
  deck_.files.push_back(name);
  deck_.included_from.push_back(from);
  deck_.buffers.push_back(std::move(whole.text));
  open_.push_back(std::move(whole.place));

  std::string_view content = deck_.buffers.back();
  if (content.substr(0, 3) == "\xEF\xBB\xBF") content.remove_prefix(3);  // some editors mark UTF-8 so
  refuse_utf16(content, file);
  line_source lines(content);
  std::string_view line;
  while (lines.next(line)) {
    if (line[0] != '*') {
      add_data(line, lines.number(), file);
      continue;
    }
    card c = read_keyword_line(lines, line, file);
    if (squeezed(c.keyword) == "*INCLUDE" && !c.broken) {
      include(c);
    } else {
      c.first = deck_.lines.size();
      deck_.cards.push_back(std::move(c));
      take_lines_of_file(deck_.cards.size() - 1);
    }
  }
  if (file == 0) deck_.last_line = std::max(1, lines.number());
  open_.pop_back();
}

// Editors and shells of Windows write text so ("Unicode"): two bytes a letter, the first two say in which order.
void card_cutter::refuse_utf16(std::string_view content, int file) const {
  const std::string_view mark = content.substr(0, 2);
  if (mark != "\xFF\xFE" && mark != "\xFE\xFF") return;
  deck_.fail(file, 1, "", "the file is UTF-16 (two bytes a letter): save it as UTF-8 or ASCII");
}

void card_cutter::add_data(std::string_view line, int number, int file) {
  if (deck_.cards.empty()) {
    deck_.fail(file, number, "", in_quotes(line) + " stands before the first keyword");
  }
  deck_.lines.push_back({line, number, file});
  ++deck_.cards.back().count;
}

card card_cutter::read_keyword_line(line_source& lines, std::string_view line, int file) {
  card c;
  c.line = lines.number();
  c.file = file;
  c.keyword = keyword_name(line.substr(0, line.find(',')));
  c.broken = !deck_.errors.attempt([&] { read_parameters(lines, line, c); });
  return c;
}

void card_cutter::read_parameters(line_source& lines, std::string_view line, card& c) const {
  std::vector<std::string_view> fields;
  bool goes_on = split_fields(line, fields);
  while (goes_on && lines.parameters_follow()) {
    lines.next(line);
    goes_on = split_fields(line, fields);
  }
  for (std::size_t i = 1; i < fields.size(); ++i) add_parameter(c, fields[i]);
}

void card_cutter::add_parameter(card& c, std::string_view field) const {
  constexpr std::size_t MOST_PARAMETERS = 50;  // far beyond every keyword; the search below stays short
  const std::size_t equal = field.find('=');
  parameter p;
  p.name = squeezed(field.substr(0, equal));
  p.written = upper(trimmed(field.substr(0, equal)));
  p.has_value = equal != std::string_view::npos;
  if (p.has_value) p.value = std::string(without_quotes(trimmed(field.substr(equal + 1))));

  if (p.name.empty()) deck_.fail(c, "a parameter without a name");
  if (c.parameters.size() >= MOST_PARAMETERS) deck_.fail(c, "too many parameters");
  if (c.find(p.name) != nullptr) deck_.fail(c, "the parameter " + p.written + " is given twice");
  c.parameters.push_back(std::move(p));
}

// The text of the file takes the place of the *INCLUDE. The folder of the including file is where its name starts.
void card_cutter::include(const card& c) {
  for (const parameter& p : c.parameters) {
    if (p.name != "INPUT") deck_.fail(c, "the parameter " + p.written + " is not known; INPUT is");
  }
  take_file(c, c.value("INPUT"));
}

void card_cutter::take_file(const card& c, const std::string& input) {
  constexpr std::size_t MOST_FILES = 1000;  // includes in includes could multiply without an end
  if (input.empty()) deck_.fail(c, "INPUT=file is missing");

  const std::filesystem::path folder = std::filesystem::path(deck_.files[c.file]).parent_path();
  const std::string name = (folder / input).string();
  if (deck_.files.size() >= MOST_FILES) deck_.fail(c, "more than " + std::to_string(MOST_FILES) + " files");
  file_text found = source_(name);
  if (!found.fault.empty()) deck_.fail(c, "the file " + in_quotes(name) + " cannot be opened: " + found.fault);
  if (std::find(open_.begin(), open_.end(), found.place) != open_.end()) {
    deck_.fail(c, "the file " + in_quotes(name) + " includes itself");
  }
  cut(std::move(found), name, {c.file, c.line});
}

// *NODE, INPUT=file: the file holds data lines of the card, before those below it.
void card_cutter::take_lines_of_file(std::size_t at) {
  if (deck_.cards[at].broken || deck_.cards[at].find("INPUT") == nullptr) return;
  const card c = deck_.cards[at];
  const std::string keyword = squeezed(c.keyword);
  const bool takes = keyword == "*NODE" || keyword == "*ELEMENT" || keyword == "*NSET" || keyword == "*ELSET" ||
                     keyword == "*AMPLITUDE";
  if (!takes) return;
  take_file(c, c.value("INPUT"));
  if (deck_.cards.size() > at + 1) deck_.fail(deck_.cards[at + 1], "a file of data lines holds no keywords");
  std::vector<parameter>& list = deck_.cards[at].parameters;
  list.erase(std::find_if(list.begin(), list.end(), [](const parameter& p) { return p.name == "INPUT"; }));
}

card_deck cut_into_cards(file_text file, const std::string& name, const file_source& source) {
  card_deck deck;
  if (file.text.empty()) throw deck_error(name, 1, "", "the file is empty");
  try {
    card_cutter cutter(deck, source);
    if (!deck.errors.attempt([&] { cutter.cut(std::move(file), name, {}); })) deck.errors.raise(deck);
  } catch (const error_list::too_many&) {
    deck.errors.raise(deck);
  }
  return deck;
}

const parameter* card::find(std::string_view name) const {
  const auto found =
      std::find_if(parameters.begin(), parameters.end(), [&](const parameter& p) { return p.name == name; });
  return found == parameters.end() ? nullptr : &*found;
}

std::string card::value(std::string_view name) const {
  const parameter* p = find(name);
  return p == nullptr ? std::string() : p->value;
}

void card_deck::fail(int file, int line, const std::string& keyword, const std::string& text) const {
  deck_error error(files[file], line, keyword, text);
  error.file_number = file;
  throw deck_error(error);
}
void card_deck::fail(const card& c, const std::string& text) const { fail(c.file, c.line, c.keyword, text); }
void card_deck::fail(const card& c, const data_line& l, const std::string& text) const {
  fail(l.file, l.line, c.keyword, text + missing_star(l.text));
}

}  // namespace solver::deck
