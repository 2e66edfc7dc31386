// build.cpp: what the readers of the keywords share.
#include "deck/build.h"

#include <algorithm>
#include <initializer_list>

#include "deck/fields.h"
#include "deck/keywords.h"

namespace solver::deck {

static constexpr std::size_t LONGEST_NAME = 80;

void build::note(const card& c, const std::string& text) {
  result.notes.push_back(place_of(result, c.file, c.line) + ": " + c.keyword + ": " + text);
}

std::string build::other_place(const card& c, int file, int line) const {
  return file == c.file ? "line " + std::to_string(line) : place_of(result, file, line);
}

// What a keyword defines by number or name. One that is not known may have been meant for any of them.
static bool may_be(const card& c, std::initializer_list<const char*> keywords) {
  const keyword_rule* const r = find_rule(c.keyword);
  return r == nullptr ||
         std::any_of(keywords.begin(), keywords.end(), [&](const char* k) { return r->name == std::string(k); });
}

void build::lose(const card& c) {
  const auto name = [&](const char* parameter) {
    const std::string value = c.value(parameter);
    const bool usable = !c.broken && !value.empty() && !looks_like_number(value) && value.size() <= LONGEST_NAME;
    return usable ? upper(value) : ANY_NAME;
  };
  if (find_rule(c.keyword) == nullptr) {
    for (const parameter& p : c.parameters) {
      nodes.lose_set(upper(p.value));
      elements.lose_set(upper(p.value));
      lost_materials.insert(upper(p.value));
      lost_orientations.insert(upper(p.value));
    }
  } else {
    if (may_be(c, {"*NODE", "*NSET"})) nodes.lose_set(name("NSET"));
    if (may_be(c, {"*ELEMENT", "*ELSET"})) elements.lose_set(name("ELSET"));
    if (may_be(c, {"*MATERIAL"})) lost_materials.insert(name("NAME"));
    if (may_be(c, {"*ORIENTATION"})) lost_orientations.insert(name("NAME"));
  }
  for (const data_line* l = deck.begin_of(c); l != deck.end_of(c); ++l) lose(c, *l);
}

void build::lose(const card& c, const data_line& l) {
  int id = ANY_NUMBER;
  if (parse_integer(trimmed(l.text.substr(0, l.text.find(','))), id) != number_fault::NONE) id = ANY_NUMBER;
  if (id == ANY_NUMBER && find_rule(c.keyword) == nullptr) return;
  // A number below 1, or one that is there already, stands in the place of another.
  if (may_be(c, {"*NODE"})) nodes.lose(id > 0 && nodes.index_of(id) < 0 ? id : ANY_NUMBER);
  if (may_be(c, {"*ELEMENT"})) elements.lose(id > 0 && elements.index_of(id) < 0 ? id : ANY_NUMBER);
}

void build::each_line(const card& c, const std::function<void(data_fields& row)>& read) {
  data_fields row(*this, c, *deck.begin_of(c));
  for (const data_line* l = deck.begin_of(c); l != deck.end_of(c); ++l) {
    const bool sound = errors.attempt([&] {
      row.read(*l);
      read(row);
    });
    if (!sound) lose(c, *l);
  }
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
  if (count() <= most) return;
  const bool integers = std::string_view(form).substr(0, 12) == "number, node";  // of elements
  if (!integers) refuse_decimal_comma();
  fail("too many fields (" + std::to_string(count()) + "): " + form);
}

void data_fields::refuse_decimal_comma() const {
  const auto digits = [](std::string_view s) {
    return !s.empty() && s.find_first_not_of("0123456789") == std::string_view::npos;
  };
  for (int i = 0; i + 1 < count(); ++i) {
    std::string_view whole = text(i);
    if (!whole.empty() && (whole[0] == '-' || whole[0] == '+')) whole.remove_prefix(1);
    const std::string_view part = text(i + 1);
    const std::string_view fraction = part.substr(0, part.find_first_of("eEdD"));
    if (!digits(whole) || !digits(fraction) || part.data() != text(i).data() + text(i).size() + 1) continue;
    fail(in_quotes(std::string(text(i)) + "," + std::string(part)) +
         " looks like a decimal comma: decimals take a point");
  }
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
  std::string upper_name = upper(name);
  const char first = upper_name.empty() ? ' ' : upper_name[0];
  const bool letter = (first >= 'A' && first <= 'Z') || first == '_' || static_cast<unsigned char>(first) > 127;
  if (!letter) b.deck.fail(c, in_quotes(name) + " is not a name: names begin with a letter or an underscore");
  if (name.size() > LONGEST_NAME) b.deck.fail(c, "the name " + in_quotes(name) + " is longer than 80 letters");
  return upper_name;
}

void fail_undefined(const catalogue& all, int id, const data_fields& row, const std::string& text) {
  if (all.lost(id)) throw consequence{};
  row.fail(text);
}

void fail_undefined(const build& b, const card& c, const catalogue& all, const std::string& set) {
  if (all.lost_set(upper(set))) throw consequence{};
  b.deck.fail(c, "the " + all.noun() + " set " + in_quotes(set) + " is not defined");
}

static std::string with_article(const std::string& noun) { return (noun == "element" ? "an " : "a ") + noun; }

const std::vector<int>& members_of(build& b, catalogue& all, const data_fields& row, int i) {
  const std::string_view field = row.text(i);
  if (field.empty())
    row.fail("a field is empty: it takes " + with_article(all.noun()) + " number or the name of a set");
  if (looks_like_number(field)) {
    const int id = row.number(i, all.noun().c_str());
    const int index = all.index_of(id);
    if (index < 0) fail_undefined(all, id, row, all.noun() + " " + std::to_string(id) + " is not defined");
    b.single.assign(1, index);
    return b.single;
  }
  const int set = all.find_set(upper(field));
  if (set < 0 && all.lost_set(upper(field))) throw consequence{};
  if (set < 0) row.fail("the " + all.noun() + " set " + in_quotes(field) + " is not defined");
  return all.members(set);
}

int set_of_parameter(const build& b, const card& c, const catalogue& all, const char* name) {
  const std::string value = c.value(name);
  const int set = all.find_set(upper(value));
  if (set < 0) fail_undefined(b, c, all, value);
  if (!all.has_members(set)) throw consequence{};  // its lines are in error
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
