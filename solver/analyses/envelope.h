// envelope.h: the least and the largest values of several steps, and the step that gives each.
//
// An envelope takes one step after the other as they are solved, and keeps no results of its own but these. Where two
// steps agree to rounding the first of them governs: a later one must go beyond by EQUAL_SHARE of the value or by
// NOTHING_SHARE of the largest value of its kind in the model.
#ifndef FINITES_SOLVER_ENVELOPE_H
#define FINITES_SOLVER_ENVELOPE_H

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "analyses/results.h"
#include "analyses/static_analysis.h"
#include "elements/member_field.h"
#include "model/model.h"

namespace solver {

// Steps are indices into model::steps; -1: none yet.
struct bounds {
  double least = 0, largest = 0;
  int least_step = -1, largest_step = -1;

  // `nothing`: differences below it are rounding.
  bool take_least(double value, int step, double nothing);  // true: the step governs from now on
  bool take_largest(double value, int step, double nothing);
};

// Bounds with the places where they lie, as distances from the first end of a member.
struct placed_bounds : bounds {
  double least_at = 0, largest_at = 0;
};

// Rows of bounds. Columns of one kind (forces, moments) have one number in `kinds`: what is rounding among them is
// measured by the largest.
class bounds_table {
 public:
  bounds_table() = default;
  bounds_table(std::size_t rows, std::vector<std::size_t> kinds);

  std::size_t rows() const { return kinds_.empty() ? 0 : all_.size() / kinds_.size(); }
  std::size_t columns() const { return kinds_.size(); }
  bool empty() const { return all_.empty(); }
  const bounds& at(std::size_t row, std::size_t column) const { return all_[row * columns() + column]; }

  // value(row, column) gives the values of a step.
  template <class VALUE>
  void take(int step, const VALUE& value) {
    for (std::size_t r = 0; r < rows(); ++r) {
      for (std::size_t c = 0; c < columns(); ++c) measure(c, value(r, c));
    }
    for (std::size_t r = 0; r < rows(); ++r) {
      for (std::size_t c = 0; c < columns(); ++c) update(r, c, step, value(r, c));
    }
  }

 private:
  void measure(std::size_t column, double value);
  void update(std::size_t row, std::size_t column, int step, double value);

  std::vector<std::size_t> kinds_;  // by column
  std::vector<double> size_;        // by kind: the largest value so far
  std::vector<bounds> all_;
};

// Columns of the tables.
enum station_column : std::size_t { OF_DISPLACEMENT = 0, OF_ROTATION = 3, OF_FORCES = 6, STATION_COLUMNS = 12 };
enum stress_column : std::size_t { SX, SY, SXY, FIRST, SECOND, VON_MISES, STRESS_COLUMNS };  // of one surface
enum plate_column : std::size_t { OF_MEMBRANE = 0, OF_MOMENT = 3, OF_SHEAR = 6, OF_VON_MISES = 8, PLATE_COLUMNS = 11 };
enum point_column : std::size_t { AXIAL, BENDING, NORMAL, SHEAR_1, SHEAR_2, POINT_COLUMNS };
enum solid_column : std::size_t { OF_STRESS = 0, OF_PRINCIPAL = 6, OF_EQUIVALENT = 9, SOLID_COLUMNS = 10 };

// The extremes of a member with a field, anywhere along it.
struct member_bounds {
  std::array<placed_bounds, SECTION_FORCES> force{};
  placed_bounds displacement;  // its largest length
};

// The sums of the reactions of a node set, moments about the origin; 0 in a step that holds none of its nodes.
struct set_bounds {
  std::string set;  // as of reactions_by_set()
  int nodes = -1;   // how many of its nodes are held, in the step that holds the most; -1: none in any step
};

// What the bounds of an envelope are gathered of besides what every envelope has.
struct envelope_contents {
  int station_count = USUAL_STATIONS;  // along each member, as in other tables
  bool section_points = false;         // a value for each point of each station takes much room
};

struct envelope {
  std::vector<int> steps;              // those that it has taken, indices into model::steps
  bounds_table displacement;           // by node: 6, global axes
  bounds_table reaction;               // likewise
  std::vector<char> held;              // by node: whether one of the steps holds it
  std::vector<set_bounds> sets;        // the node sets of the deck, then the other supports
  bounds_table set_sums;               // by set: 6, global axes
  bounds_table totals;                 // reactions, loads: 6, global axes
  bounds_table section_points;         // by point of each station of beams that have points: POINT_COLUMNS
  bounds_table ends;                   // by element: the 12 forces at the ends of members; empty without members
  bounds_table stations;               // by station of each of `fields`, one after the other: STATION_COLUMNS
  std::vector<member_bounds> members;  // by field
  bounds_table parts;                  // by nodal part: STRESS_COLUMNS of top, middle and bottom
  bounds_table plates;                 // by element: PLATE_COLUMNS; empty without plates
  bounds_table solids;                 // by part of solids: SOLID_COLUMNS
  bounds_table in_solids;              // by element: SOLID_COLUMNS; empty without solids

  // Where the values belong: the results of the first step.
  std::vector<member_field> fields;
  std::vector<std::size_t> stations_of_field;  // how many stations each has
  std::vector<nodal_part> at_parts;
  std::vector<solid_part> at_solids;
};

// The results of step number `step` (an index). Throws model_error where the results do not belong to the same places
// as those before.
void take_step(const model& m, int step, const static_solution& solution, const step_results& results,
               const envelope_contents& wanted, envelope& e);

}  // namespace solver

#endif
