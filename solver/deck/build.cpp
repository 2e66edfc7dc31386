// build.cpp: what the readers of the keywords share.
#include "deck/build.h"

#include <algorithm>
#include <initializer_list>

#include "deck/fields.h"
#include "deck/keywords.h"

namespace solver::deck {

static constexpr std::size_t LONGEST_NAME = 80;
static constexpr std::size_t LONGEST_DOTTED = 2 * LONGEST_NAME + 1;  // instance and set

static bool is_too_long(const std::string& name) {
  return name.size() > (name.find('.') == std::string::npos ? LONGEST_NAME : LONGEST_DOTTED);
}

static bool is_a_number(std::string_view text) {
  double value = 0;
  return parse_real(text, value) != number_fault::NOT_A_NUMBER;
}

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
    const bool usable = !c.broken && !value.empty() && !is_a_number(value) && !is_too_long(value);
    return usable ? upper(value) : ANY_NAME;
  };
  if (find_rule(c.keyword) == nullptr) {
    for (const parameter& p : c.parameters) {
      nodes.lose_set(upper(p.value));
      elements.lose_set(upper(p.value));
      lost_materials.insert(upper(p.value));
      lost_orientations.insert(upper(p.value));
      lost_surfaces.insert(upper(p.value));
      lost_amplitudes.insert(upper(p.value));
    }
  } else {
    if (may_be(c, {"*NODE", "*NSET"})) nodes.lose_set(name("NSET"));
    if (may_be(c, {"*ELEMENT", "*ELSET"})) elements.lose_set(name("ELSET"));
    if (may_be(c, {"*MATERIAL"})) lost_materials.insert(name("NAME"));
    if (may_be(c, {"*AMPLITUDE"})) lost_amplitudes.insert(name("NAME"));
    if (may_be(c, {"*ORIENTATION"})) lost_orientations.insert(name("NAME"));
    if (may_be(c, {"*SURFACE"})) lost_surfaces.insert(name("NAME"));
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
  if (c.count == 0) return;
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

void data_fields::expect(int least, int most, const char* form, int integers) const {
  if (count() < least) {
    const bool joined = std::any_of(fields_.begin(), fields_.end(), holds_several);
    fail("too few fields (" + std::to_string(count()) + "): " + form +
         (joined ? "; fields are separated by commas" : ""));
  }
  if (count() <= most) return;
  refuse_decimal_comma(least, most, integers);
  fail("too many fields (" + std::to_string(count()) + "): " + form);
}

// "-12", and "5", "50" or "5e-3": the parts of one number.
static bool is_whole_part(std::string_view s) {
  if (!s.empty() && (s[0] == '-' || s[0] == '+')) s.remove_prefix(1);
  if (s.size() > 1 && s[0] == '0') return false;
  return !s.empty() && s.find_first_not_of("0123456789") == std::string_view::npos;
}
static bool is_fraction(std::string_view s) {
  const std::string_view digits = s.substr(0, s.find_first_of("eEdD"));
  double value = 0;
  return !digits.empty() && digits.find_first_not_of("0123456789") == std::string_view::npos &&
         parse_real(s, value) == number_fault::NONE;
}

namespace {

struct decimal_pair {
  int at;
  bool apart;     // blanks or the ends of the line stand around it
  bool non_zero;  // its second half is not 0
};

// "0,5" in "3, 0,5" and "1,0,0,0,5" rather than "0,0".
bool speaks_louder(const decimal_pair& a, const decimal_pair& than) {
  if (a.apart != than.apart) return a.apart;
  return a.non_zero || !than.non_zero;
}

}  // namespace

bool data_fields::touches_next(int i) const {
  return i >= 0 && i + 1 < count() && text(i + 1).data() == text(i).data() + text(i).size() + 1;
}

void data_fields::refuse_decimal_comma(int least, int most, int integers) const {
  const auto accepted = [&](int fields) { return fields >= least && fields <= most; };
  std::vector<decimal_pair> pairs;
  int apart = 0;
  for (int i = integers; i + 1 < count(); ++i) {
    if (!touches_next(i) || !is_whole_part(text(i)) || !is_fraction(text(i + 1))) continue;
    const bool alone = !touches_next(i - 1) && !touches_next(i + 1);
    pairs.push_back({i, alone, text(i + 1).find_first_of("123456789") != std::string_view::npos});
    apart += alone ? 1 : 0;
  }
  const decimal_pair* found = nullptr;
  for (const decimal_pair& each : pairs) {
    // A line that writes all its decimals so is reported by the first of them.
    if (each.apart && accepted(count() - apart) && (found == nullptr || !found->apart)) found = &each;
    if (accepted(count() - 1) && (found == nullptr || speaks_louder(each, *found))) found = &each;
  }
  if (found == nullptr) return;
  fail(in_quotes(std::string(text(found->at)) + "," + std::string(text(found->at + 1))) +
       " looks like a decimal comma: decimals take a point");
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
  const bool letter = (first >= 'A' && first <= 'Z') || (first >= '0' && first <= '9') || first == '_' ||
                      static_cast<unsigned char>(first) > 127;
  if (is_a_number(upper_name)) b.deck.fail(c, in_quotes(name) + " is not a name: it is a number");
  if (!letter) {
    b.deck.fail(c, in_quotes(name) + " is not a name: names begin with a letter, a digit or an underscore");
  }
  if (is_too_long(name)) b.deck.fail(c, "the name " + in_quotes(name) + " is longer than 80 letters");
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

int members_at(const build& b, const catalogue& all, int index) {
  return &all == &b.elements ? b.result.elements[index].parts : 1;
}

static std::string with_article(const std::string& noun) { return (noun == "element" ? "an " : "a ") + noun; }

int set_in_field(const catalogue& all, std::string_view field) {
  int ignored = 0;
  return parse_integer(field, ignored) != number_fault::NOT_A_NUMBER ? -1 : all.find_set(upper(field));
}

static const std::vector<int>& members_of_set(build& b, catalogue& all, const data_fields& row, int set, int i) {
  if (!all.has_members(set) && b.errors.empty()) {
    b.note(row.owner(), "the " + all.noun() + " set " + in_quotes(row.text(i)) +
                            " has no members: the line that names it has no effect");
  }
  return all.members(set);
}

const std::vector<int>& members_of(build& b, catalogue& all, const data_fields& row, int i) {
  const std::string_view field = without_quotes(row.text(i));
  if (field.empty()) {
    row.fail("a field is empty: it takes " + with_article(all.noun()) + " number or the name of a set");
  }
  const int set = set_in_field(all, field);
  if (set >= 0) return members_of_set(b, all, row, set, i);
  if (looks_like_number(field)) {
    const int id = row.number(i, all.noun().c_str());
    const int index = all.index_of(id);
    if (index < 0) fail_undefined(all, id, row, all.noun() + " " + std::to_string(id) + " is not defined");
    b.single.clear();
    for (int k = 0; k < members_at(b, all, index); ++k) b.single.push_back(index + k);
    return b.single;
  }
  if (all.lost_set(upper(field))) throw consequence{};
  const bool of_elements = &all == &b.nodes && b.elements.find_set(upper(field)) >= 0;
  row.fail("the " + all.noun() + " set " + in_quotes(field) + " is not defined" +
           (of_elements ? "; *NSET with ELSET makes one of the element set of this name" : ""));
}

int set_of_parameter(const build& b, const card& c, const catalogue& all, const char* name) {
  const std::string value = c.value(name);
  const int set = all.find_set(upper(value));
  if (set < 0) fail_undefined(b, c, all, value);
  if (!all.has_members(set) && !b.errors.empty()) throw consequence{};  // its lines are in error
  if (!all.has_members(set)) b.deck.fail(c, "the " + all.noun() + " set " + in_quotes(value) + " has no members");
  return set;
}

double real_parameter(const build& b, const card& c, const char* name) {
  const std::string text = c.value(squeezed(name));
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
