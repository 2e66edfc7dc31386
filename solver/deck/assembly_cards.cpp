// assembly_cards.cpp: one card of a part, of an instance or of an assembly in the words of a flat deck.
#include "deck/assembly_cards.h"

#include <algorithm>
#include <climits>
#include <iterator>

#include "deck/fields.h"

namespace solver::deck {

namespace {

// Which fields of a data line are numbers or sets of nodes or elements.
enum class refer { NONE, FIRST, ALL, MEMBERS, AFTER_FIRST, TRIPLES };

// What of it is a place or a direction in space.
enum class space { NONE, NODES, ORIENTATION, TRANSFORM, SECOND_LINE, BEAM_SECTION, LAYERS, FREEDOMS, TENSOR };

struct card_form {
  const char* keyword;  // squeezed
  const char* names;    // parameters that are names or numbers of the level, each with a blank behind it
  refer data;
  space geometry;
};

// clang-format off
constexpr card_form FORMS[] = {
    {"*NODE",                     "NSET ",                                  refer::FIRST,       space::NODES},
    {"*ELEMENT",                  "ELSET ",                                 refer::ALL,         space::NONE},
    {"*NSET",                     "NSET ELSET ",                            refer::MEMBERS,     space::NONE},
    {"*ELSET",                    "ELSET ",                                 refer::MEMBERS,     space::NONE},
    {"*ORIENTATION",              "NAME ",                                  refer::NONE,        space::ORIENTATION},
    {"*TRANSFORM",                "NSET ",                                  refer::NONE,        space::TRANSFORM},
    {"*SHELLSECTION",             "ELSET ",                                 refer::NONE,        space::LAYERS},
    {"*MEMBRANESECTION",          "ELSET ",                                 refer::NONE,        space::NONE},
    {"*SOLIDSECTION",             "ELSET ",                                 refer::NONE,        space::NONE},
    {"*CABLESECTION",             "ELSET ",                                 refer::NONE,        space::NONE},
    {"*BEAMSECTION",              "ELSET ",                                 refer::NONE,        space::BEAM_SECTION},
    {"*BEAMGENERALSECTION",       "ELSET ",                                 refer::NONE,        space::BEAM_SECTION},
    {"*TRANSVERSESHEARSTIFFNESS", "",                                       refer::NONE,        space::NONE},
    {"*SECTIONPOINTS",            "",                                       refer::NONE,        space::NONE},
    {"*LINKSECTION",              "ELSET ",                                 refer::NONE,        space::SECOND_LINE},
    {"*SPRING",                   "ELSET ",                                 refer::NONE,        space::FREEDOMS},
    {"*MASS",                     "ELSET ",                                 refer::NONE,        space::NONE},
    {"*ROTARYINERTIA",            "ELSET ",                                 refer::NONE,        space::TENSOR},
    {"*RELEASE",                  "",                                       refer::FIRST,       space::NONE},
    {"*FIXITY",                   "",                                       refer::FIRST,       space::NONE},
    {"*PLASTICHINGE",             "ELSET ",                                 refer::NONE,        space::NONE},
    {"*SURFACE",                  "NAME ",                                  refer::FIRST,       space::NONE},
    {"*TIE",                      "",                                       refer::ALL,         space::NONE},
    {"*COUPLING",                 "REFNODE SURFACE ",                       refer::NONE,        space::NONE},
    {"*KINEMATIC",                "",                                       refer::NONE,        space::FREEDOMS},
    {"*DISTRIBUTING",             "",                                       refer::NONE,        space::FREEDOMS},
    {"*KINEMATICCOUPLING",        "REFNODE ",                               refer::FIRST,       space::FREEDOMS},
    {"*DISTRIBUTINGCOUPLING",     "ELSET ",                                 refer::FIRST,       space::NONE},
    {"*RIGIDBODY",                "REFNODE ROTNODE NSET ELSET PINNSET TIENSET ", refer::NONE,   space::NONE},
    {"*EQUATION",                 "",                                       refer::TRIPLES,     space::FREEDOMS},
    {"*MPC",                      "",                                       refer::AFTER_FIRST, space::NONE},
    {"*BOUNDARY",                 "",                                       refer::FIRST,       space::FREEDOMS},
    {"*INITIALCONDITIONS",        "",                                       refer::FIRST,       space::NONE},
    {"*CLOAD",                    "",                                       refer::FIRST,       space::FREEDOMS},
    {"*DLOAD",                    "",                                       refer::FIRST,       space::FREEDOMS},
    {"*DSLOAD",                   "",                                       refer::FIRST,       space::FREEDOMS},
    {"*TEMPERATURE",              "",                                       refer::FIRST,       space::NONE},
};
// clang-format on

const assembly_level NOWHERE{};

const card_form* find_form(const std::string& keyword) {
  const std::string name = squeezed(keyword);
  const card_form* const found =
      std::find_if(std::begin(FORMS), std::end(FORMS), [&](const card_form& f) { return name == f.keyword; });
  return found == std::end(FORMS) ? nullptr : found;
}

bool is_listed(const char* list, const std::string& name) {
  return (" " + std::string(list)).find(" " + name + " ") != std::string::npos;
}

bool refers(refer data, bool by_range, const std::vector<std::string_view>& fields, std::size_t i) {
  switch (data) {
    case refer::NONE: return false;
    case refer::FIRST: return i == 0;
    case refer::ALL: return true;
    case refer::MEMBERS: return !by_range || i < 2;
    case refer::AFTER_FIRST: return i > 0;
    case refer::TRIPLES: return fields.size() > 1 && i % 3 == 0;
  }
  return false;
}

// Numbers from `first` on, missing ones 0. False where one of them is none: its reader says so.
bool vector_of(const std::vector<std::string_view>& fields, std::size_t first, vector3& v) {
  v = {};
  for (std::size_t i = 0; i < 3; ++i) {
    const bool given = first + i < fields.size() && !fields[first + i].empty();
    if (given && parse_real(fields[first + i], v[i]) != number_fault::NONE) return false;
  }
  return true;
}

void replace(std::vector<std::string>& words, std::size_t first, const vector3& v) {
  if (words.size() < first + 3) words.resize(first + 3);
  for (std::size_t i = 0; i < 3; ++i) words[first + i] = text_of_real(v[i]);
}

// The data line of a beam section that holds n1: below the shape.
std::size_t line_of_n1(const card& c, const std::vector<std::string_view>& first) {
  int segments = 1;
  if (squeezed(c.value("SECTION")) == "ARBITRARY" && !first.empty()) parse_integer(first[0], segments);
  return segments < 1 ? 1 : subscript(segments);
}

}  // namespace

bool belongs_to_part(const card& c) { return find_form(c.keyword) != nullptr; }

void card_writer::put(card c, const std::vector<data_line>& lines) {
  c.first = to_.lines.size();
  c.count = lines.size();
  to_.lines.insert(to_.lines.end(), lines.begin(), lines.end());
  to_.cards.push_back(std::move(c));
}

// With the data lines of a card of the deck.
void card_writer::put_same(card c, const card& lines) {
  c.first = to_.lines.size();
  to_.lines.insert(to_.lines.end(), from_.begin_of(lines), from_.end_of(lines));
  to_.cards.push_back(std::move(c));
}

void card_writer::copy(const card& c) { put_same(c, c); }

// "PART-1-1.SET" and "PART-1-1.12", with the name of an instance; "ASSEMBLY.SET".
bool card_writer::is_dotted(std::string_view field) const {
  const std::size_t point = field.rfind('.');
  if (point == std::string_view::npos || point == 0) return false;
  const std::string name = upper(field);
  if (!assembly.empty() && name.rfind(assembly, 0) == 0) return true;
  return instances.count(name.substr(0, point)) > 0;
}

std::string card_writer::name_of(std::string_view written, const assembly_level& at) const {
  if (!is_dotted(written)) return at.prefix + std::string(written);
  const bool of_assembly = !assembly.empty() && upper(written).rfind(assembly, 0) == 0;
  return std::string(of_assembly ? written.substr(assembly.size()) : written);
}

// A number of the level, or a name of it.
std::string card_writer::reference(const card& c, const data_line* l, std::string_view field,
                                   const assembly_level& at) const {
  field = without_quotes(field);
  const assembly_level* level = &at;
  std::string_view number = field;
  if (is_dotted(field)) {
    const std::string name = name_of(field, at);
    const std::size_t point = name.rfind('.');
    const auto found = instances.find(upper(name.substr(0, point == std::string::npos ? 0 : point)));
    number = std::string_view(field).substr(field.rfind('.') + 1);
    if (found != instances.end()) level = found->second;
  }
  int id = 0;
  if (parse_integer(number, id) != number_fault::NONE) return field.empty() ? "" : name_of(field, at);
  if (id > INT_MAX - level->offset) {
    const std::string text = "the number " + std::to_string(id) + " is too large beside those of the other instances";
    l == nullptr ? from_.fail(c, text) : from_.fail(c, *l, text);
  }
  return std::to_string(id + level->offset);
}

void card_writer::rewrite_parameters(card& c, const assembly_level& own) const {
  const card_form* const form = find_form(c.keyword);
  for (parameter& p : c.parameters) {
    if (!p.has_value || p.value.empty()) continue;
    const bool of_level = form != nullptr && is_listed(form->names, p.name);
    const bool local = p.name == "ORIENTATION" && own.orientations.count(upper(p.value)) > 0;
    if (of_level || local || is_dotted(p.value)) p.value = reference(c, nullptr, p.value, own);
  }
}

namespace {

// The lines of one card in new words. The text is put together first, so that the views into it stay.
class line_list {
 public:
  void add(std::string_view text, const data_line& at) {
    begin_.push_back(text_.size());
    text_ += text;
    at_.push_back(at);
  }
  void add(const std::vector<std::string>& words, bool goes_on, const data_line& at) {
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i) text += (i > 0 ? ", " : "") + words[i];
    add(text + (goes_on ? "," : ""), at);
  }
  // Moves the text to its place and gives the lines as they are there.
  std::vector<data_line> settle(std::deque<std::string>& buffers) {
    buffers.push_back(std::move(text_));
    const std::string_view all = buffers.back();
    for (std::size_t i = 0; i < at_.size(); ++i) {
      const std::size_t end = i + 1 < at_.size() ? begin_[i + 1] : all.size();
      at_[i].text = all.substr(begin_[i], end - begin_[i]);
    }
    return at_;
  }

 private:
  std::string text_;
  std::vector<std::size_t> begin_;
  std::vector<data_line> at_;
};

std::vector<std::string> words_of(const std::vector<std::string_view>& fields) {
  return {fields.begin(), fields.end()};
}

// The rotated words of one line; false: the line stays.
bool moved_words(const card& c, const card_form& form, std::size_t index, const rigid_motion& motion,
                 const std::vector<std::string_view>& fields, std::size_t n1, std::vector<std::string>& words) {
  vector3 v{};
  const auto position = [&](std::size_t first) {
    if (!vector_of(fields, first, v)) return false;
    replace(words, first, motion.position(v));
    return true;
  };
  const auto direction = [&](std::size_t first) {
    if (!vector_of(fields, first, v)) return false;
    replace(words, first, motion.direction(v));
    return true;
  };
  const std::string system = squeezed(c.value(form.geometry == space::TRANSFORM ? "TYPE" : "SYSTEM"));
  const bool round = system.rfind('C', 0) == 0 || system.rfind('S', 0) == 0;  // about an axis or a point
  switch (form.geometry) {
    case space::NODES: return fields.size() <= 4 && position(1);
    case space::SECOND_LINE:
    case space::BEAM_SECTION: return index == n1 && direction(0);
    case space::TRANSFORM: return index == 0 && (round ? position(0) && position(3) : direction(0) && direction(3));
    case space::ORIENTATION:
      if (index != 0) return false;
      if (round || fields.size() > 6) return position(0) && position(3) && (round || position(6));
      return direction(0) && direction(3);
    default: return false;
  }
}

}  // namespace

// INSTANCE: the members are those of an instance, the set is the assembly's.
const assembly_level& card_writer::level_of_data(const card& c, const assembly_level& own, card& changed) const {
  const parameter* const p = c.find("INSTANCE");
  if (p == nullptr) return own;
  const auto found = instances.find(upper(p->value));
  if (found == instances.end()) from_.fail(c, "the instance " + in_quotes(p->value) + " is not defined");
  changed.parameters.erase(std::find_if(changed.parameters.begin(), changed.parameters.end(),
                                        [](const parameter& each) { return each.name == "INSTANCE"; }));
  return *found->second;
}

// What an instance that is moved cannot carry along, or does not.
void card_writer::check_motion(const card& c, const assembly_level& own) {
  const space geometry = find_form(c.keyword)->geometry;
  if (own.motion.moves() && geometry == space::NODES && c.find("SYSTEM") != nullptr) {
    from_.fail(c, "SYSTEM is not supported in a part that an instance moves: give x, y, z");
  }
  if (own.motion.turns && geometry == space::TENSOR) {
    from_.fail(c, "the card is not supported in a part that an instance turns: give the elements in the *ASSEMBLY");
  }
  if (own.motion.turns && geometry == space::SECOND_LINE && c.count < 2) {
    to_.notes.push_back({c.file, c.line, c.keyword,
                         "without a direction n1 the axes 2 and 3 do not turn with the part that an instance turns"});
  }
  if (own.motion.turns && geometry == space::FREEDOMS) {
    to_.notes.push_back({c.file, c.line, c.keyword,
                         "the degrees of freedom of the card keep the global directions, though an instance turns its "
                         "part"});
  }
}

void card_writer::write(const card& c, const assembly_level& own) {
  const card_form& form = *find_form(c.keyword);
  card changed = c;
  const assembly_level& of_data = level_of_data(c, own, changed);
  rewrite_parameters(changed, own);
  check_motion(c, own);
  const bool moved = own.motion.moves() && form.geometry != space::NONE;
  const bool same_data = form.data == refer::NONE && form.geometry != space::LAYERS;
  // The bulk of a mesh: numbers alone, which an instance without an offset keeps.
  const bool element = form.data == refer::ALL && form.keyword == std::string("*ELEMENT") && !own.prefix.empty();
  const bool same_mesh = of_data.offset == 0 && (form.geometry == space::NODES || element);
  if (!moved && (same_data || same_mesh)) return put_same(std::move(changed), c);

  const bool by_range = c.find("GENERATE") != nullptr;
  line_list lines;
  std::vector<std::string_view> fields;
  std::vector<std::string> words;
  std::size_t index = 0, n1 = 1;
  for (const data_line* l = from_.begin_of(c); l != from_.end_of(c); ++l, ++index) {
    fields.clear();
    const bool goes_on = split_fields(l->text, fields);
    words = words_of(fields);
    if (index == 0 && form.geometry == space::BEAM_SECTION) n1 = line_of_n1(c, fields);
    bool touched = false;
    for (std::size_t i = 0; i < fields.size(); ++i) {
      if (!refers(form.data, by_range, fields, i)) continue;
      words[i] = reference(c, l, fields[i], of_data);
      touched = true;
    }
    if (form.geometry == space::LAYERS && fields.size() > 3 && own.orientations.count(upper(fields[3])) > 0) {
      words[3] = own.prefix + words[3];
      touched = true;
    }
    if (moved) touched = moved_words(c, form, index, own.motion, fields, n1, words) || touched;
    touched ? lines.add(words, goes_on, *l) : lines.add(l->text, *l);
  }
  // Beams of a turned instance take along also the n1 that stands where the card says nothing.
  if (own.motion.turns && form.geometry == space::BEAM_SECTION && index > 0 && index == n1) {
    words.clear();
    replace(words, 0, own.motion.direction({0, 0, -1}));
    lines.add(words, false, from_.begin_of(c)[index - 1]);
  }
  put(std::move(changed), lines.settle(buffers_));
}

void card_writer::resolve(const card& c) {
  card changed = c;
  rewrite_parameters(changed, NOWHERE);
  line_list lines;
  std::vector<std::string_view> fields;
  bool any = false;
  for (const data_line* l = from_.begin_of(c); l != from_.end_of(c); ++l) {
    fields.clear();
    const bool goes_on = l->text.find('.') != std::string_view::npos && split_fields(l->text, fields);
    std::vector<std::string> words = words_of(fields);
    bool touched = false;
    for (std::size_t i = 0; i < fields.size(); ++i) {
      if (!is_dotted(without_quotes(fields[i]))) continue;
      words[i] = reference(c, l, fields[i], NOWHERE);
      touched = true;
    }
    touched ? lines.add(words, goes_on, *l) : lines.add(l->text, *l);
    any = any || touched;
  }
  any ? put(std::move(changed), lines.settle(buffers_)) : put_same(std::move(changed), c);
}

}  // namespace solver::deck
