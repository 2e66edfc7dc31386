// mesh_generators.cpp: *NGEN, *NFILL, *NCOPY, *ELGEN and *ELCOPY written out as *NODE, *ELEMENT and their sets. They
// see what stands above them in the deck, inside a part what stands above them in the part.
#include "deck/mesh_generators.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

#include "deck/assembly_motion.h"
#include "deck/fields.h"

namespace solver::deck {

namespace {

constexpr double MOST_GENERATED = 5e7;  // beyond every mesh that fits into the memory

struct generated_element {
  std::string type;
  std::vector<int> nodes;
};

// The fields of one line of a generator, which is numbers but for names of sets.
class generator_fields {
 public:
  generator_fields(const card_deck& deck, const card& c, const data_line& l) : deck_(deck), card_(c), line_(l) {
    split_fields(l.text, fields_);
  }
  int count() const { return static_cast<int>(fields_.size()); }
  bool has(int i) const { return i < count() && !fields_[subscript(i)].empty(); }
  std::string_view text(int i) const { return has(i) ? fields_[subscript(i)] : std::string_view(); }
  int integer(int i, const char* what) const {
    int value = 0;
    const number_fault fault = parse_integer(text(i), value);
    if (fault != number_fault::NONE) fail(std::string(what) + ": " + describe(fault, text(i), true));
    return value;
  }
  int integer_or(int i, int otherwise, const char* what) const { return has(i) ? integer(i, what) : otherwise; }
  int number(int i, const char* what) const {
    const int value = integer(i, what);
    if (value < 1) fail(std::string(what) + ": " + in_quotes(text(i)) + " is not a number from 1");
    return value;
  }
  double real(int i, const char* what) const {
    double value = 0;
    const number_fault fault = has(i) ? parse_real(text(i), value) : number_fault::NONE;
    if (fault != number_fault::NONE) fail(std::string(what) + ": " + describe(fault, text(i), false));
    return value;
  }
  vector3 point(int i, const char* what) const { return {real(i, what), real(i + 1, what), real(i + 2, what)}; }
  [[noreturn]] void fail(const std::string& text) const { deck_.fail(card_, line_, text); }

 private:
  const card_deck& deck_;
  const card& card_;
  const data_line& line_;
  std::vector<std::string_view> fields_;
};

class mesh_generator {
 public:
  explicit mesh_generator(card_deck& deck) : deck_(deck) {}
  void run();

 private:
  using numbers = std::vector<int>;

  // What stands in the deck.
  void forget();
  void remember(const card& c, const std::string& keyword);
  void remember_nodes(const card& c);
  void remember_elements(const card& c);
  void remember_set(const card& c, const char* name, std::unordered_map<std::string, numbers>& sets);

  // What is made of it.
  void generate(const card& c, const std::string& keyword);
  void ngen(const card& c);
  void nfill(const card& c);
  void ncopy(const card& c);
  void elgen(const card& c);
  void elcopy(const card& c);

  const vector3& node(const generator_fields& row, int i) const;
  vector3 between(const generator_fields& row, const card& c, const vector3& a, const vector3& b, double t) const;
  numbers members(const card& c, const std::unordered_map<std::string, numbers>& sets, const std::string& name) const;
  int parameter_number(const card& c, const char* name, const char* written) const;
  void check_parameters(const card& c, std::initializer_list<const char*> known) const;
  void add_node(int id, const vector3& x, const data_line& at);
  void add_element(const generated_element& e, int id, int shift, const data_line& at);
  void flush(const card& c, const char* keyword, std::vector<parameter> parameters);
  void put_set(const card& c, const char* keyword, const char* parameter, const std::string& name, numbers list,
               const data_line& at, std::unordered_map<std::string, numbers>& sets);

  card_deck& deck_;
  std::vector<card> cards_;
  std::unordered_map<int, vector3> nodes_;
  std::unordered_map<int, generated_element> elements_;
  std::unordered_map<std::string, numbers> nsets_, elsets_;

  // The lines of the card that is being made.
  std::string text_;
  std::vector<std::pair<std::size_t, data_line>> made_;
};

parameter named(const char* name, const std::string& value) { return {name, name, value, true}; }

vector3 on_line(const vector3& a, const vector3& b, double t) {
  return {a[0] + t * (b[0] - a[0]), a[1] + t * (b[1] - a[1]), a[2] + t * (b[2] - a[2])};
}

}  // namespace

static bool is_generator(const std::string& keyword) {
  return keyword == "*NGEN" || keyword == "*NFILL" || keyword == "*NCOPY" || keyword == "*ELGEN" ||
         keyword == "*ELCOPY";
}

void mesh_generator::forget() {
  nodes_.clear();
  elements_.clear();
  nsets_.clear();
  elsets_.clear();
}

// Numbers that cannot be read are left to the readers, which report them.
void mesh_generator::remember(const card& c, const std::string& keyword) {
  if (c.broken) return;
  if (keyword == "*PART" || keyword == "*ENDPART" || keyword == "*INSTANCE" || keyword == "*ENDINSTANCE") forget();
  if (keyword == "*NODE") remember_nodes(c);
  if (keyword == "*ELEMENT") remember_elements(c);
  if (keyword == "*NSET") remember_set(c, "NSET", nsets_);
  if (keyword == "*ELSET") remember_set(c, "ELSET", elsets_);
}

void mesh_generator::remember_nodes(const card& c) {
  if (c.find("SYSTEM") != nullptr && squeezed(c.value("SYSTEM")) != "R") return;
  const std::string set = upper(c.value("NSET"));
  std::vector<std::string_view> fields;
  for (const data_line* l = deck_.begin_of(c); l != deck_.end_of(c); ++l) {
    fields.clear();
    split_fields(l->text, fields);
    int id = 0;
    vector3 x{};
    bool sound = !fields.empty() && parse_integer(fields[0], id) == number_fault::NONE;
    for (std::size_t i = 1; i < fields.size() && i < 4; ++i) {
      sound = sound && (fields[i].empty() || parse_real(fields[i], x[i - 1]) == number_fault::NONE);
    }
    if (!sound) continue;
    nodes_[id] = x;
    if (!set.empty()) nsets_[set].push_back(id);
  }
}

void mesh_generator::remember_elements(const card& c) {
  const std::string set = upper(c.value("ELSET")), type = squeezed(c.value("TYPE"));
  std::vector<std::string_view> fields;
  for (const data_line* l = deck_.begin_of(c); l != deck_.end_of(c); ++l) {
    fields.clear();
    bool goes_on = split_fields(l->text, fields);
    // Ten numbers on a line at most: a shorter one that ends with a comma is complete.
    while (goes_on && fields.size() >= 8 && l + 1 != deck_.end_of(c)) goes_on = split_fields((++l)->text, fields);
    generated_element e;
    e.type = type;
    int id = 0;
    bool sound = !fields.empty() && parse_integer(fields[0], id) == number_fault::NONE;
    for (std::size_t i = 1; i < fields.size(); ++i) {
      int n = 0;
      sound = sound && parse_integer(fields[i], n) == number_fault::NONE;
      e.nodes.push_back(n);
    }
    if (!sound) continue;
    elements_[id] = e;
    if (!set.empty()) elsets_[set].push_back(id);
  }
}

void mesh_generator::remember_set(const card& c, const char* name, std::unordered_map<std::string, numbers>& sets) {
  numbers& list = sets[upper(c.value(name))];
  const bool by_range = c.find("GENERATE") != nullptr;
  std::vector<std::string_view> fields;
  for (const data_line* l = deck_.begin_of(c); l != deck_.end_of(c); ++l) {
    fields.clear();
    split_fields(l->text, fields);
    numbers ids;
    for (const std::string_view field : fields) {
      int id = 0;
      const auto other = sets.find(upper(field));
      if (parse_integer(field, id) == number_fault::NONE) {
        ids.push_back(id);
      } else if (other != sets.end() && &other->second != &list) {
        list.insert(list.end(), other->second.begin(), other->second.end());
      }
    }
    if (!by_range) list.insert(list.end(), ids.begin(), ids.end());
    if (!by_range || ids.size() < 2) continue;
    const int step = ids.size() > 2 ? std::max(ids[2], 1) : 1;
    if (static_cast<double>(ids[1]) - ids[0] > MOST_GENERATED * step) continue;
    for (long long id = ids[0]; id <= ids[1]; id += step) list.push_back(static_cast<int>(id));
  }
  if (c.find("UNSORTED") != nullptr) return;
  std::sort(list.begin(), list.end());
  list.erase(std::unique(list.begin(), list.end()), list.end());
}

void mesh_generator::check_parameters(const card& c, std::initializer_list<const char*> known) const {
  for (const parameter& p : c.parameters) {
    if (std::any_of(known.begin(), known.end(), [&](const char* name) { return p.name == name; })) continue;
    deck_.fail(c, "the parameter " + in_quotes(p.written) + " is not supported");
  }
}

int mesh_generator::parameter_number(const card& c, const char* name, const char* written) const {
  int value = 0;
  const parameter* const p = c.find(name);
  if (p == nullptr) deck_.fail(c, std::string("the parameter ") + written + " is missing");
  const number_fault fault = parse_integer(p->value, value);
  if (fault != number_fault::NONE) deck_.fail(c, std::string(written) + ": " + describe(fault, p->value, true));
  return value;
}

mesh_generator::numbers mesh_generator::members(const card& c, const std::unordered_map<std::string, numbers>& sets,
                                                const std::string& name) const {
  const auto found = sets.find(upper(name));
  if (found == sets.end() || found->second.empty()) {
    deck_.fail(c, "the set " + in_quotes(name) + " is not defined above, or has no members");
  }
  return found->second;
}

const vector3& mesh_generator::node(const generator_fields& row, int i) const {
  const int id = row.number(i, "node");
  const auto found = nodes_.find(id);
  if (found == nodes_.end()) row.fail("node " + std::to_string(id) + " is not defined above");
  return found->second;
}

void mesh_generator::add_node(int id, const vector3& x, const data_line& at) {
  made_.emplace_back(text_.size(), at);
  text_ += std::to_string(id);
  for (const double part : x) {
    text_ += ", ";
    text_ += text_of_real(part);
  }
  nodes_[id] = x;
}

void mesh_generator::add_element(const generated_element& e, int id, int shift, const data_line& at) {
  made_.emplace_back(text_.size(), at);
  text_ += std::to_string(id);
  generated_element moved = e;
  for (int& n : moved.nodes) n += shift;
  for (const int n : moved.nodes) text_ += ", " + std::to_string(n);
  elements_[id] = moved;
}

// The lines made so far as one card.
void mesh_generator::flush(const card& c, const char* keyword, std::vector<parameter> parameters) {
  if (made_.empty()) return;
  card out;
  out.keyword = keyword;
  out.parameters = std::move(parameters);
  out.line = c.line;
  out.file = c.file;
  out.first = deck_.lines.size();
  out.count = made_.size();
  deck_.buffers.push_back(std::move(text_));
  const std::string_view all = deck_.buffers.back();
  for (std::size_t i = 0; i < made_.size(); ++i) {
    const std::size_t begin = made_[i].first, end = i + 1 < made_.size() ? made_[i + 1].first : all.size();
    data_line line = made_[i].second;
    line.text = all.substr(begin, end - begin);
    deck_.lines.push_back(line);
  }
  made_.clear();
  text_.clear();
  cards_.push_back(std::move(out));
}

void mesh_generator::put_set(const card& c, const char* keyword, const char* parameter, const std::string& name,
                             numbers list, const data_line& at, std::unordered_map<std::string, numbers>& sets) {
  if (name.empty()) return;
  for (const int id : list) {
    made_.emplace_back(text_.size(), at);
    text_ += std::to_string(id);
  }
  flush(c, keyword, {named(parameter, name)});
  numbers& known = sets[upper(name)];
  known.insert(known.end(), list.begin(), list.end());
  std::sort(known.begin(), known.end());
  known.erase(std::unique(known.begin(), known.end()), known.end());
}

// The place at the share t of the way from a to b: on a straight line, on a parabola through a third point, or on a
// circle about one.
vector3 mesh_generator::between(const generator_fields& row, const card& c, const vector3& a, const vector3& b,
                                double t) const {
  const std::string line = squeezed(c.value("LINE"));
  if (line.empty() || line == "S") return on_line(a, b, t);
  const vector3 p = row.has(3) ? node(row, 3) : row.point(4, "coordinate");
  if (line == "P") {
    const double f = (1 - t) * (1 - 2 * t), g = 4 * t * (1 - t), h = t * (2 * t - 1);
    return {f * a[0] + g * p[0] + h * b[0], f * a[1] + g * p[1] + h * b[1], f * a[2] + g * p[2] + h * b[2]};
  }
  if (line != "C") row.fail("LINE is S, P or C");
  const vector3 from = difference(p, a), to = difference(p, b);
  const double radius = length_of(from);
  vector3 normal = row.has(7) || row.has(8) || row.has(9) ? row.point(7, "normal") : cross(from, to);
  const double size = length_of(normal);
  if (!(radius > 0) || !(std::abs(length_of(to) - radius) <= 1e-3 * radius)) {
    row.fail("the two nodes have different distances from the centre");
  }
  if (!(size > 1e-9 * radius * radius) && !row.has(7)) {
    row.fail("the nodes and the centre lie on one line: give the normal of the circle");
  }
  for (double& part : normal) part /= size;
  double angle = std::atan2(dot(cross(from, to), normal), dot(from, to));
  if (angle <= 0) angle += 2 * PI;
  const double cosine = std::cos(t * angle), sine = std::sin(t * angle);
  const vector3 across = cross(normal, from);
  return {p[0] + cosine * from[0] + sine * across[0], p[1] + cosine * from[1] + sine * across[1],
          p[2] + cosine * from[2] + sine * across[2]};
}

// first node, last node, increment of the numbers: the nodes between them, evenly spaced.
void mesh_generator::ngen(const card& c) {
  check_parameters(c, {"NSET", "LINE"});
  numbers all;
  if (c.count == 0) deck_.fail(c, "no data line follows");
  for (std::size_t k = 0; k < c.count; ++k) {
    const data_line at = deck_.lines[c.first + k];  // a copy: lines are added meanwhile
    const generator_fields row(deck_, c, at);
    const vector3 a = node(row, 0), b = node(row, 1);
    const long long first = row.number(0, "first"), last = row.number(1, "last");
    const int step = row.integer_or(2, last < first ? -1 : 1, "increment");
    if (step == 0 || (last - first) % step != 0 || (last - first) / step < 1) {
      row.fail("the increment does not lead from the first number to the last");
    }
    const long long parts = (last - first) / step;
    if (static_cast<double>(parts) > MOST_GENERATED) row.fail("too many nodes");
    all.push_back(static_cast<int>(first));
    for (long long i = 1; i < parts; ++i) {
      const int id = static_cast<int>(first + i * step);
      add_node(id, between(row, c, a, b, static_cast<double>(i) / static_cast<double>(parts)), at);
      all.push_back(id);
    }
    all.push_back(static_cast<int>(last));
  }
  const data_line at = *deck_.begin_of(c);
  flush(c, "*NODE", {});
  put_set(c, "*NSET", "NSET", c.value("NSET"), all, at, nsets_);
}

// set, set, intervals, increment of the numbers: the nodes between each of the first set and its partner.
void mesh_generator::nfill(const card& c) {
  check_parameters(c, {"NSET"});
  numbers all;
  if (c.count == 0) deck_.fail(c, "no data line follows");
  for (std::size_t k = 0; k < c.count; ++k) {
    const data_line at = deck_.lines[c.first + k];  // a copy: lines are added meanwhile
    const generator_fields row(deck_, c, at);
    const numbers from = members(c, nsets_, std::string(row.text(0))),
                  to = members(c, nsets_, std::string(row.text(1)));
    const int parts = row.number(2, "number of intervals"), step = row.integer_or(3, 1, "increment");
    if (from.size() != to.size()) row.fail("the two sets have different numbers of nodes");
    if (static_cast<double>(parts) * static_cast<double>(from.size()) > MOST_GENERATED) row.fail("too many nodes");
    for (std::size_t p = 0; p < from.size(); ++p) {
      const auto a = nodes_.find(from[p]), b = nodes_.find(to[p]);
      if (a == nodes_.end() || b == nodes_.end()) row.fail("a node of the sets is not defined above");
      const vector3 first = a->second, last = b->second;
      all.push_back(from[p]);
      all.push_back(to[p]);
      for (int i = 1; i < parts; ++i) {
        const double t = static_cast<double>(i) / parts;
        const long long id = from[p] + static_cast<long long>(i) * step;
        if (id < 1 || id > 2000000000) row.fail("the numbers leave the range");
        add_node(static_cast<int>(id), on_line(first, last, t), at);
        all.push_back(static_cast<int>(id));
      }
    }
  }
  const data_line at = *deck_.begin_of(c);
  flush(c, "*NODE", {});
  put_set(c, "*NSET", "NSET", c.value("NSET"), all, at, nsets_);
}

// The nodes of a set once more, shifted and turned.
void mesh_generator::ncopy(const card& c) {
  check_parameters(c, {"CHANGENUMBER", "OLDSET", "NEWSET", "SHIFT", "MULTIPLE"});
  if (c.find("SHIFT") == nullptr) deck_.fail(c, "SHIFT is missing: nodes are copied by a translation and a rotation");
  const int change = parameter_number(c, "CHANGENUMBER", "CHANGE NUMBER");
  const int times = c.find("MULTIPLE") != nullptr ? parameter_number(c, "MULTIPLE", "MULTIPLE") : 1;
  const numbers old = members(c, nsets_, c.value("OLDSET"));
  const rigid_motion motion = read_motion(deck_, c, deck_.begin_of(c), c.count);
  const data_line at{"", c.line, c.file};
  if (times < 1 || static_cast<double>(times) * static_cast<double>(old.size()) > MOST_GENERATED) {
    deck_.fail(c, "MULTIPLE is out of range");
  }
  numbers all;
  for (const int id : old) {
    const auto found = nodes_.find(id);
    if (found == nodes_.end()) deck_.fail(c, "node " + std::to_string(id) + " is not defined above");
    vector3 x = found->second;
    for (int k = 1; k <= times; ++k) {
      x = motion.position(x);
      const long long copy = id + static_cast<long long>(k) * change;
      if (copy < 1 || copy > 2000000000) deck_.fail(c, "CHANGE NUMBER: the numbers leave the range");
      add_node(static_cast<int>(copy), x, at);
      all.push_back(static_cast<int>(copy));
    }
  }
  flush(c, "*NODE", {});
  put_set(c, "*NSET", "NSET", c.value("NEWSET"), all, at, nsets_);
}

// master element; then three times: number in the row, increment of nodes, increment of elements. Rows, layers, blocks.
void mesh_generator::elgen(const card& c) {
  check_parameters(c, {"ELSET", "ALLNODES"});
  if (c.find("ALLNODES") != nullptr) deck_.fail(c, "the parameter 'ALLNODES' is not supported");
  numbers all;
  if (c.count == 0) deck_.fail(c, "no data line follows");
  for (std::size_t k = 0; k < c.count; ++k) {
    const data_line at = deck_.lines[c.first + k];  // a copy: lines are added meanwhile
    const generator_fields row(deck_, c, at);
    const int master = row.number(0, "master element");
    const auto found = elements_.find(master);
    if (found == elements_.end()) row.fail("element " + std::to_string(master) + " is not defined above");
    const generated_element pattern = found->second;
    int n[3], nodes[3], ids[3];
    double total = 1;
    for (int d = 0; d < 3; ++d) {
      n[d] = row.integer_or(1 + 3 * d, 1, "number of elements");
      nodes[d] = row.integer_or(2 + 3 * d, 1, "increment of the nodes");
      ids[d] = row.integer_or(3 + 3 * d, 1, "increment of the elements");
      if (n[d] < 1) row.fail("number of elements: " + in_quotes(row.text(1 + 3 * d)) + " is not a number from 1");
      total *= n[d];
    }
    if (total > MOST_GENERATED) row.fail("too many elements");
    for (int h = 0; h < n[2]; ++h) {
      for (int j = 0; j < n[1]; ++j) {
        for (int i = 0; i < n[0]; ++i) {
          const long long id = master + 1LL * i * ids[0] + 1LL * j * ids[1] + 1LL * h * ids[2];
          const long long shift = 1LL * i * nodes[0] + 1LL * j * nodes[1] + 1LL * h * nodes[2];
          if (id < 1 || id > 2000000000 || std::abs(shift) > 2000000000) row.fail("the numbers leave the range");
          if (i + j + h > 0) add_element(pattern, static_cast<int>(id), static_cast<int>(shift), at);
          all.push_back(static_cast<int>(id));
        }
      }
    }
    flush(c, "*ELEMENT", {named("TYPE", pattern.type)});
  }
  const data_line at = *deck_.begin_of(c);
  put_set(c, "*ELSET", "ELSET", c.value("ELSET"), all, at, elsets_);
}

// The elements of a set once more, on other nodes.
void mesh_generator::elcopy(const card& c) {
  check_parameters(c, {"ELEMENTSHIFT", "OLDSET", "SHIFTNODES", "NEWSET"});
  const int of_elements = parameter_number(c, "ELEMENTSHIFT", "ELEMENT SHIFT");
  const int of_nodes = parameter_number(c, "SHIFTNODES", "SHIFT NODES");
  const data_line at{"", c.line, c.file};
  numbers all;
  for (const int id : members(c, elsets_, c.value("OLDSET"))) {
    const auto found = elements_.find(id);
    if (found == elements_.end()) deck_.fail(c, "element " + std::to_string(id) + " is not defined above");
    const generated_element pattern = found->second;
    const long long copy = 1LL * id + of_elements;
    if (copy < 1 || copy > 2000000000) deck_.fail(c, "ELEMENT SHIFT: the numbers leave the range");
    add_element(pattern, static_cast<int>(copy), of_nodes, at);
    flush(c, "*ELEMENT", {named("TYPE", pattern.type)});
    all.push_back(static_cast<int>(copy));
  }
  put_set(c, "*ELSET", "ELSET", c.value("NEWSET"), all, at, elsets_);
}

void mesh_generator::generate(const card& c, const std::string& keyword) {
  if (keyword == "*NGEN") ngen(c);
  if (keyword == "*NFILL") nfill(c);
  if (keyword == "*NCOPY") ncopy(c);
  if (keyword == "*ELGEN") elgen(c);
  if (keyword == "*ELCOPY") elcopy(c);
}

void mesh_generator::run() {
  for (const card& c : deck_.cards) {
    const std::string keyword = squeezed(c.keyword);
    if (!is_generator(keyword)) {
      remember(c, keyword);
      cards_.push_back(c);
      continue;
    }
    made_.clear();
    text_.clear();
    const bool sound = !c.broken && deck_.errors.attempt([&] { generate(c, keyword); });
    if (sound) continue;
    // What it would have made is missing: the card stays, as one in error, for those that need it.
    cards_.push_back(c);
    cards_.back().broken = true;
  }
  deck_.cards = std::move(cards_);
}

void write_out_generators(card_deck& deck) {
  const bool any = std::any_of(deck.cards.begin(), deck.cards.end(),
                               [](const card& c) { return is_generator(squeezed(c.keyword)); });
  if (any) mesh_generator(deck).run();
}

}  // namespace solver::deck
