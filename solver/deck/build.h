// build.h: what the readers of the keywords share: the model that grows, the names seen so far, and typed access to the
// fields of a data line.
#ifndef FINITES_SOLVER_DECK_BUILD_H
#define FINITES_SOLVER_DECK_BUILD_H

#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "deck/cards.h"
#include "deck/catalogue.h"
#include "deck/quadratic.h"
#include "model/model.h"

namespace solver::deck {

class data_fields;

// *TRANSFORM: the kind, R, C or S, and its two points.
struct transform {
  char kind = 'R';
  std::array<double, 3> a{}, b{};
  int line = 0;
  int file = 0;
};

// A table of factors over time.
struct amplitude {
  std::string name;
  bool total_time = false;                    // its times count from the beginning of the first step
  bool absolute = false;                      // its values are the loads, not factors of theirs
  std::vector<std::array<double, 2>> points;  // time, value
  int line = 0;
  int file = 0;
};

// The *COUPLING whose *KINEMATIC or *DISTRIBUTING comes below it.
struct pending_coupling {
  const card* of = nullptr;
  int surface = -1, reference = -1;
  bool taken = false;
};

// A *COMBINATION or *ENVELOPE, whose fields mean something when all steps are known.
struct pending_combination {
  struct term {
    std::string name;
    double factor = 1;
    int line = 0, file = 0;
  };
  step made;  // with its kind, name and place
  std::vector<term> terms;
};

struct build {
  explicit build(const card_deck& source) : deck(source) {}

  const card_deck& deck;
  model result;
  quadratic_elements quadratic;
  catalogue nodes{"node"};
  catalogue elements{"element"};
  std::unordered_map<std::string, int> materials;     // name, index into model::materials
  std::unordered_map<std::string, int> orientations;  // name, index into model::orientations
  std::unordered_map<std::string, int> surfaces;      // name, index into model::surfaces (surfaces.h)
  numbered<char> node_in_use;                         // by an element or a condition; one for each node
  numbered<char> node_turns;                          // with an element; filled by turns() (conditions.h)
  numbered<transform> transforms;
  numbered<int> transform_of;  // by node, -1: none; empty without *TRANSFORM
  pending_coupling coupling;
  std::unordered_map<std::string, std::vector<int>> coupling_nodes;  // of DCOUP3D elements, by element set
  mutable error_list errors;                          // what was found so far, by readers and checks alike
  std::unordered_set<std::string> lost_materials;     // their *MATERIAL is in error
  std::unordered_set<std::string> lost_orientations;  // likewise
  std::unordered_set<std::string> lost_surfaces;
  std::unordered_map<std::string, int> amplitudes;  // name, index into amplitude_tables
  numbered<amplitude> amplitude_tables;
  std::unordered_set<std::string> lost_amplitudes;
  std::unordered_set<int> thin;       // elements whose type says that they are Kirchhoff's plates
  std::unordered_set<int> planar;     // elements that live in a plane z = constant
  std::unordered_set<int> own_steps;  // the conditions before the first step do not hold in them
  std::unordered_map<int, std::vector<boundary_condition>> second_cases;  // by step: those of LOAD CASE=2
  std::unordered_set<int> further_cases;  // steps that are the second or a later *LOAD CASE of a step of the deck
  std::vector<pending_combination> combinations;
  bool inside_step = false;
  std::vector<int> single;  // the list that members_of gives for one number

  // What the deck asks for and this solver does by its own rule.
  void note(const card& c, const std::string& text);

  // "line 3", or "mesh.inp:3" when it stands in another file than the card.
  std::string other_place(const card& c, int file, int line) const;

  // What a card, or one line of it, would have defined is missing from now on.
  void lose(const card& c);
  void lose(const card& c, const data_line& l);

  // Reads the data lines one by one. After a line in error the next one is read.
  void each_line(const card& c, const std::function<void(data_fields& row)>& read);
};

// The fields of one data line of a card; every access checks and fails with the place of the line.
class data_fields {
 public:
  data_fields(const build& b, const card& c, const data_line& l) : build_(b), card_(c), line_(&l) { append(l); }

  // The line that is read next, in the same storage.
  void read(const data_line& l);
  // A line that continues this one.
  void append(const data_line& l);

  int count() const { return count_of(fields_); }
  bool goes_on() const { return goes_on_; }  // the line ends with a comma
  bool has(int i) const { return i < count() && !text(i).empty(); }
  std::string_view text(int i) const { return fields_[i]; }
  const card& owner() const { return card_; }
  const data_line& line() const { return *line_; }

  // `form` names the fields in words: "number, x, y, z". The first `integers` of them take names or integers.
  void expect(int least, int most, const char* form, int integers = 0) const;

  // Of a line with too many fields: fails where two of them, joined by a point, would be one decimal number, as in
  // "0,5", and the line would then have `least` to `most` fields.
  void refuse_decimal_comma(int least, int most, int integers = 0) const;

  double real(int i, const char* what) const;
  double positive(int i, const char* what) const;
  int integer(int i, const char* what) const;
  int number(int i, const char* what) const;  // an integer from 1

  [[noreturn]] void fail(const std::string& text) const;

 private:
  bool touches_next(int i) const;  // no blank stands between the two fields and their comma

  const build& build_;
  const card& card_;
  const data_line* line_;
  numbered<std::string_view> fields_;
  bool goes_on_ = false;
};

// The name of a set or a material in upper case, checked: it begins with a letter, a digit or an underscore and is no
// number.
std::string checked_name(const build& b, const card& c, const std::string& name);

// Fails because a number or a set is not defined; where its definition is in error, only that error is reported.
[[noreturn]] void fail_undefined(const catalogue& all, int id, const data_fields& row, const std::string& text);
[[noreturn]] void fail_undefined(const build& b, const card& c, const catalogue& all, const std::string& set);

// How many members a number of the deck has at an index: elements may be read in parts, which follow one another.
int members_at(const build& b, const catalogue& all, int index);

// The nodes or elements that a field means: one number, or the name of a set.
const std::vector<int>& members_of(build& b, catalogue& all, const data_fields& row, int i);

// The set that a field names: its index; -1: the field is a number, or no such set is there.
int set_in_field(const catalogue& all, std::string_view field);

// The set of a parameter, which must be there; the index in the catalogue.
int set_of_parameter(const build& b, const card& c, const catalogue& all, const char* name);

// The value of a numeric parameter of a card, by its name as a deck writes it.
double real_parameter(const build& b, const card& c, const char* name);

// The only data line of a card.
data_fields only_line(const build& b, const card& c, const char* why);

}  // namespace solver::deck

#endif
