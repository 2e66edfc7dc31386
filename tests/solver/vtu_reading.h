// Reads an array of a VTU file by the words of VTK's file formats and of RFC 4648: text, or base 64 of the number of
// bytes (32 bits, lowest first) and the bytes.
#ifndef FINITES_TESTS_VTU_READING_H
#define FINITES_TESTS_VTU_READING_H

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

#include <pugixml.hpp>

namespace vtu_test {

inline std::string decoded(const std::string& text) {
  std::string bytes;
  std::uint32_t bits = 0;
  int held = 0;
  for (const char c : text) {
    int six = -1;
    if (c >= 'A' && c <= 'Z') six = c - 'A';
    if (c >= 'a' && c <= 'z') six = c - 'a' + 26;
    if (c >= '0' && c <= '9') six = c - '0' + 52;
    if (c == '+') six = 62;
    if (c == '/') six = 63;
    if (six < 0) continue;  // '=' at the end
    bits = (bits << 6 | static_cast<std::uint32_t>(six)) & 0xFFFFFU;
    held += 6;
    if (held < 8) continue;
    held -= 8;
    bytes.push_back(static_cast<char>(bits >> held & 0xFFU));
  }
  return bytes;
}

template <class NUMBER>
std::vector<double> unpacked(const std::string& bytes, std::size_t from) {
  std::vector<double> result;
  for (; from + sizeof(NUMBER) <= bytes.size(); from += sizeof(NUMBER)) {
    NUMBER value;
    std::memcpy(&value, bytes.data() + from, sizeof value);
    result.push_back(static_cast<double>(value));
  }
  return result;
}

inline std::vector<double> numbers(const pugi::xml_node& array) {
  const std::string text = array.text().get(), form = array.attribute("format").value();
  if (form != "binary") {
    std::istringstream words(text);
    std::vector<double> result;
    for (double value = 0; words >> value;) result.push_back(value);
    return result;
  }
  EXPECT_STREQ(array.root().child("VTKFile").attribute("header_type").value(), "UInt32");
  EXPECT_EQ(text.size() % 4, 0U);
  const std::string bytes = decoded(text), type = array.attribute("type").value();
  std::uint32_t count = 0;
  if (bytes.size() >= 4) std::memcpy(&count, bytes.data(), 4);
  EXPECT_EQ(count + 4U, bytes.size()) << array.attribute("Name").value();
  if (type == "Float64") return unpacked<double>(bytes, 4);
  if (type == "Int32") return unpacked<std::int32_t>(bytes, 4);
  if (type == "Int16") return unpacked<std::int16_t>(bytes, 4);
  if (type == "Int8") return unpacked<std::int8_t>(bytes, 4);
  return unpacked<std::uint8_t>(bytes, 4);
}

}  // namespace vtu_test

#endif
