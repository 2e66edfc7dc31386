// page_buffers.cpp: planes of bytes, compressed by zlib, as base64.
#include "report_page/page_buffers.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <stdexcept>

#include <zlib.h>
#include <nlohmann/json.hpp>

namespace solver {

namespace {

constexpr int MANTISSA_BITS = 24;

// Byte 0 of all numbers, then byte 1, and so on, the lowest first: bytes of one plane resemble one another.
std::vector<std::uint8_t> planes_of(const void* data, std::size_t width, std::size_t count) {
  std::vector<std::uint8_t> planes(width * count);
  const auto* const from = static_cast<const std::uint8_t*>(data);
  const std::uint16_t one = 1;
  std::uint8_t low = 0;
  std::memcpy(&low, &one, 1);
  for (std::size_t i = 0; i < count; ++i) {
    for (std::size_t b = 0; b < width; ++b) {
      planes[b * count + i] = from[width * i + (low == 1 ? b : width - 1 - b)];
    }
  }
  return planes;
}

std::vector<std::uint8_t> compressed(const std::vector<std::uint8_t>& bytes) {
  uLongf size = compressBound(bytes.size());
  std::vector<std::uint8_t> result(size);
  if (compress2(result.data(), &size, bytes.data(), bytes.size(), Z_DEFAULT_COMPRESSION) != Z_OK) {
    throw std::runtime_error("the data of the report page could not be compressed");
  }
  result.resize(size);
  return result;
}

// Three bytes make four characters of six bits, the highest first; '=' fills the last four.
std::string base64(const std::vector<std::uint8_t>& bytes) {
  constexpr char DIGITS[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::size_t own = std::min<std::size_t>(3, bytes.size() - i);
    std::uint32_t group = 0;
    for (std::size_t k = 0; k < 3; ++k) group = group << 8 | (k < own ? bytes[i + k] : 0U);
    for (std::size_t k = 0; k < 4; ++k) text += k <= own ? DIGITS[group >> (18 - 6 * k) & 0x3F] : '=';
  }
  return text;
}

// To the nearest number of so many binary digits; the last bits are then zero and take no place.
float rounded(float value, int bits) {
  if (!std::isfinite(value) || value == 0) return value;
  int exponent = 0;
  const float mantissa = std::frexp(value, &exponent);
  const float scale = std::ldexp(1.0F, bits);
  const float result = std::ldexp(std::nearbyint(mantissa * scale) / scale, exponent);
  return std::isfinite(result) ? result : value;
}

}  // namespace

float as_float(double value) {
  constexpr double LARGEST = std::numeric_limits<float>::max();
  return static_cast<float>(std::isfinite(value) ? std::clamp(value, -LARGEST, LARGEST) : value);
}

std::vector<float> as_floats(const std::vector<double>& values) {
  std::vector<float> result(values.size());
  std::transform(values.begin(), values.end(), result.begin(), as_float);
  return result;
}

page_json page_buffers::add(const char* type, const void* data, std::size_t width, std::size_t numbers,
                            int components) {
  texts_.push_back(base64(compressed(planes_of(data, width, numbers))));
  return {
      {"b", texts_.size() - 1}, {"t", type}, {"n", numbers / static_cast<std::size_t>(components)}, {"c", components}};
}

page_json page_buffers::exact(const std::vector<float>& values, int components) {
  return add("f32", values.data(), sizeof(float), values.size(), components);
}

page_json page_buffers::results(std::vector<float> values, int components) {
  if (result_bits_ < MANTISSA_BITS) {
    for (float& value : values) value = rounded(value, result_bits_);
  }
  return exact(values, components);
}

page_json page_buffers::integers(const std::vector<std::int32_t>& values, int components) {
  return add("i32", values.data(), sizeof(std::int32_t), values.size(), components);
}

page_json page_buffers::bytes(const std::vector<std::uint8_t>& values) {
  return add("u8", values.data(), 1, values.size(), 1);
}

void page_buffers::write(std::ostream& out) const {
  for (const std::string& text : texts_) {
    out << R"(<script type="text/plain" class="finites-buffer">)" << text << "</script>\n";
  }
}

std::size_t page_buffers::size() const {
  std::size_t sum = 0;
  for (const std::string& text : texts_) sum += text.size();
  return sum;
}

}  // namespace solver
