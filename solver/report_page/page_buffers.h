// page_buffers.h: large arrays of the page as compressed text, each named by a reference in the JSON.
#ifndef FINITES_SOLVER_PAGE_BUFFERS_H
#define FINITES_SOLVER_PAGE_BUFFERS_H

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include <nlohmann/json_fwd.hpp>

namespace solver {

using page_json = nlohmann::ordered_json;

// A number of 32 bits; what is larger than such numbers can be becomes the largest of them.
float as_float(double value);
std::vector<float> as_floats(const std::vector<double>& values);

class page_buffers {
 public:
  // Results keep this many binary digits of their mantissas, of 24.
  explicit page_buffers(int result_bits) : result_bits_(result_bits) {}

  // Each returns the reference {"b": ..., "t": ..., "n": ..., "c": ...}; an item has `components` numbers.
  page_json exact(const std::vector<float>& values, int components = 1);
  page_json results(std::vector<float> values, int components = 1);  // may be rounded
  page_json integers(const std::vector<std::int32_t>& values, int components = 1);
  page_json bytes(const std::vector<std::uint8_t>& values);

  // The elements of the page that hold them.
  void write(std::ostream& out) const;
  std::size_t size() const;  // in characters

 private:
  page_json add(const char* type, const void* data, std::size_t width, std::size_t numbers, int components);

  int result_bits_;
  std::vector<std::string> texts_;
};

}  // namespace solver

#endif
