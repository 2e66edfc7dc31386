// build.cpp: what the readers of the keywords share.
#include "deck/build.h"

#include "deck/fields.h"

namespace solver::deck {

void build::note(const card& c, const std::string& text) {
  result.notes.push_back(place_of(result, c.file, c.line) + ": " + c.keyword + ": " + text);
}

std::string build::other_place(const card& c, int file, int line) const {
  return file == c.file ? "line " + std::to_string(line) : place_of(result, file, line);
}

void data_fields::read(const data_line& l) {
  line_ = &l;
  fields_.clear();
  append(l);
}

void data_fields::append(const data_line& l) {
  line_ = &l;  // an error stands where the fields end
  goes_on_ = split_fields(l.text, fields_);
}

void data_fields::expect(int least, int most, const char* form) const {
  if (count() < least) fail("too few fields (" + std::to_string(count()) + "): " + form);
  if (count() > most) fail("too many fields (" + std::to_string(count()) + "): " + form);
}

double data_fields::real(int i, const char* what) const {
  double value = 0;
  const number_fault fault = parse_real(text(i), value);
  if (fault != number_fault::NONE) fail(std::string(what) + ": " + describe(fault, text(i), false));
  return value;
}

double data_fields::positive(int i, const char* what) const {
  const double value = real(i, what);
  if (!(value > 0)) fail(std::string(what) + ": " + in_quotes(text(i)) + " is not positive");
  return value;
}

int data_fields::integer(int i, const char* what) const {
  int value = 0;
  const number_fault fault = parse_integer(text(i), value);
  if (fault != number_fault::NONE) fail(std::string(what) + ": " + describe(fault, text(i), true));
  return value;
}

int data_fields::number(int i, const char* what) const {
  const int value = integer(i, what);
  if (value < 1) fail(std::string(what) + ": " + in_quotes(text(i)) + " is not a number from 1");
  return value;
}

void data_fields::fail(const std::string& text) const { build_.deck.fail(card_, *line_, text); }

std::string checked_name(const build& b, const card& c, const std::string& name) {
  constexpr std::size_t LONGEST = 80;
  std::string upper_name = upper(name);
  const char first = upper_name.empty() ? ' ' : upper_name[0];
  const bool letter = (first >= 'A' && first <= 'Z') || first == '_' || static_cast<unsigned char>(first) > 127;
  if (!letter) b.deck.fail(c, in_quotes(name) + " is not a name: names begin with a letter or an underscore");
  if (name.size() > LONGEST) b.deck.fail(c, "the name " + in_quotes(name) + " is longer than 80 letters");
  return upper_name;
}

const std::vector<int>& members_of(build& b, catalogue& all, const data_fields& row, int i) {
  const std::string_view field = row.text(i);
  if (field.empty()) row.fail("a field is empty: it takes a " + all.noun() + " number or the name of a set");
  if (looks_like_number(field)) {
    const int id = row.number(i, all.noun().c_str());
    const int index = all.index_of(id);
    if (index < 0) row.fail(all.noun() + " " + std::to_string(id) + " is not defined");
    b.single.assign(1, index);
    return b.single;
  }
  const int set = all.find_set(upper(field));
  if (set < 0) row.fail("the " + all.noun() + " set " + in_quotes(field) + " is not defined");
  return all.members(set);
}

int set_of_parameter(const build& b, const card& c, const catalogue& all, const char* name) {
  const std::string value = c.value(name);
  const int set = all.find_set(upper(value));
  if (set < 0) b.deck.fail(c, "the " + all.noun() + " set " + in_quotes(value) + " is not defined");
  return set;
}

double real_parameter(const build& b, const card& c, const char* name) {
  const std::string text = c.value(name);
  double value = 0;
  const number_fault fault = parse_real(text, value);
  if (fault != number_fault::NONE) b.deck.fail(c, std::string(name) + ": " + describe(fault, text, false));
  return value;
}

data_fields only_line(const build& b, const card& c, const char* why) {
  const data_line* line = b.deck.begin_of(c);
  if (c.count > 1) b.deck.fail(c, line[1], std::string("a second data line: ") + why);
  return data_fields(b, c, *line);
}

}  // namespace solver::deck
