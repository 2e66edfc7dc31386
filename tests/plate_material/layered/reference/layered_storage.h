// layered_storage.h: the arrays of the layered state of one plate, as a solver allocates them.
#ifndef FINITES_TESTS_LAYERED_STORAGE_H
#define FINITES_TESTS_LAYERED_STORAGE_H

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "finites/records.h"
#include "random_shapes.h"

// packed: each array by itself. scattered: neither contiguous nor column-major; the last subscript runs fastest, there
// are gaps, and the records of the points lie apart. Bits of NaN lie before, between and behind the elements of
// either.
enum class point_layout { packed, scattered };

class layered_storage {
 public:
  // n thickness points; spare more than the rule has, behind them.
  explicit layered_storage(int n, point_layout layout = point_layout::packed, int spare = 0);
  layered_storage(const layered_storage&) = delete;
  layered_storage& operator=(const layered_storage&) = delete;

  // Lets POINT_STATE refer to the arrays. The object must outlive their use.
  void give_to(PLATE_STATE_RECORD& record);
  POINT_STATE_RECORD& point(int gp) { return records_[static_cast<std::size_t>(2 * (gp - 1))]; }
  void fill(double value);
  // Numbers of the size of stresses, strains and moduli, all entries of the tangents among them.
  void fill_random(support::seeded_random& random, double stress, double strain, double modulus);
  // True while nothing was written outside the elements.
  bool guards_hold() const;
  int extent() const { return extent_; }

 private:
  struct array {
    std::vector<double> values;
    std::vector<std::size_t> elements;  // their places
    std::vector<ARRAY_DIMENSION> dimensions;
    std::size_t first;
  };
  static array make(const std::vector<int>& extents, point_layout layout);
  template <int RANK>
  static void refer(array& from, ARRAY_REFERENCE<double, RANK>& to);

  int extent_;
  point_layout layout_;
  std::vector<array> arrays_;
  std::vector<POINT_STATE_RECORD> records_;  // every second one
  std::vector<POINT_STATE_RECORD> side_by_side_;
};

// The values of each field of a point by its name, in the order of the record; arrays by columns, all elements.
using layered_values = std::vector<std::pair<std::string, std::vector<double>>>;
layered_values values_of(const POINT_STATE_RECORD& record);
// The same of one thickness point.
layered_values values_of(const POINT_STATE_RECORD& record, int k);
const std::vector<double>& field_of(const layered_values& values, const std::string& name);

// All four points: equal bits, NaN among them.
std::vector<std::uint64_t> bits_of(const PLATE_STATE_RECORD& record);

// What the solver does when it accepts a step.
void promote(POINT_STATE_RECORD& record);

#endif
