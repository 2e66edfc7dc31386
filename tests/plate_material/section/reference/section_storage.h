// section_storage.h: the arrays of the whole-section state of one plate, as a solver allocates them.
#ifndef FINITES_TESTS_SECTION_STORAGE_H
#define FINITES_TESTS_SECTION_STORAGE_H

#include <string>
#include <utility>
#include <vector>

#include "finites/records.h"

// packed: each array by itself. scattered: neither contiguous nor column-major; the last subscript runs fastest, and
// there are gaps. Bits of NaN lie before, between and behind the elements of either.
enum class array_layout { packed, scattered };

class section_storage {
 public:
  explicit section_storage(array_layout layout);
  section_storage(const section_storage&) = delete;
  section_storage& operator=(const section_storage&) = delete;

  // Lets the fields of the record refer to the arrays. The object must outlive their use.
  void give_to(PLATE_STATE_RECORD& record);
  void fill(double value);
  // True while nothing was written outside the elements.
  bool guards_hold() const;

 private:
  struct array {
    std::vector<double> values;
    std::vector<std::size_t> elements;  // their places
    std::vector<ARRAY_DIMENSION> dimensions;
    std::size_t first;
  };
  static array make(const std::vector<int>& extents, array_layout layout);
  template <int RANK>
  static void refer(array& from, ARRAY_REFERENCE<double, RANK>& to);

  std::vector<array> arrays_;
};

// The values of each field by its name, in the order of the record; SEC_TANGENT by columns, point by point.
using section_values = std::vector<std::pair<std::string, std::vector<double>>>;
section_values values_of(const PLATE_STATE_RECORD& record);
std::vector<double> field_of(const section_values& values, const std::string& name);

// What the solver does when it accepts a step.
void promote(PLATE_STATE_RECORD& record);

#endif
