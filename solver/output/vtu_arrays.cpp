// vtu_arrays.cpp: numbers as bytes, and bytes as text.
#include "output/vtu_arrays.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace solver {

namespace {

constexpr std::size_t COUNT_BYTES = 4;
constexpr const char* COUNT_TYPE = "header_type";  // of the count before the bytes; files of text have none

std::array<char, 8> lowest_first(std::uint64_t bits) {
  std::array<char, 8> bytes{};
  for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(bits >> (8 * i) & 0xFF);
  return bytes;
}

std::uint64_t bits_of(double value) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

// Three bytes make four characters of six bits, the highest first; '=' fills the last four.
std::string base_64(const std::string& bytes) {
  constexpr const char* DIGITS = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text((bytes.size() + 2) / 3 * 4, '=');
  char* to = text.data();
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::size_t here = std::min<std::size_t>(3, bytes.size() - i);
    unsigned bits = 0;
    for (std::size_t k = 0; k < 3; ++k) bits = bits << 8 | (k < here ? static_cast<unsigned char>(bytes[i + k]) : 0U);
    for (std::size_t k = 0; k <= here; ++k) to[k] = DIGITS[bits >> (18 - 6 * k) & 63U];
    to += 4;
  }
  return text;
}

}  // namespace

void set_form(pugi::xml_node file, vtu_form form) {
  if (form == vtu_form::BINARY) file.append_attribute(COUNT_TYPE) = "UInt32";
}

vtu_form form_of(pugi::xml_node anywhere) {
  return anywhere.root().child("VTKFile").attribute(COUNT_TYPE) ? vtu_form::BINARY : vtu_form::ASCII;
}

const char* type_of_numbers(std::size_t end) { return end <= 128 ? "Int8" : end <= 32768 ? "Int16" : "Int32"; }

pugi::xml_node start_array(pugi::xml_node parent, const char* name, const char* type, const components& of) {
  pugi::xml_node array = parent.append_child("DataArray");
  array.append_attribute("type") = type;
  array.append_attribute("Name") = name;
  if (of.count() > 1) array.append_attribute("NumberOfComponents") = of.count();
  for (int i = 0; i < of.count(); ++i) {
    if (of.name(i) != nullptr) array.append_attribute(fmt::format("ComponentName{}", i).c_str()) = of.name(i);
  }
  array.append_attribute("format") = form_of(parent) == vtu_form::ASCII ? "ascii" : "binary";
  return array;
}

void field_numbers(pugi::xml_node fields, const char* name, const char* type, const std::vector<double>& values) {
  if (std::string(type) == "Float64") {
    reals(fields, name, values.size(), SCALAR, [&](std::size_t i, int) { return values[i]; });
  } else {
    data_array(fields, name, type, values.size(), SCALAR,
               [&](std::size_t i, int) { return static_cast<int>(values[i]); });
  }
  fields.last_child().append_attribute("NumberOfTuples") = values.size();
}

void field_texts(pugi::xml_node fields, const char* name, const std::vector<std::string>& texts) {
  if (texts.empty()) return;
  pugi::xml_node array = start_array(fields, name, "String", SCALAR);
  array.attribute("format") = "ascii";
  array.append_attribute("NumberOfTuples") = texts.size();
  fmt::memory_buffer codes;
  for (const std::string& text : texts) {
    for (const char c : text) append(codes, "{} ", static_cast<int>(static_cast<unsigned char>(c)));
    append(codes, "0\n");
  }
  codes.push_back('\0');
  array.text().set(codes.data());
}

packed_numbers::packed_numbers(const std::string& type, std::size_t count)
    : width_(type == "Float64" ? 8
             : type == "Int32" ? 4
             : type == "Int16" ? 2
                               : 1),
      integer_(type != "Float64") {
  bytes_.reserve(COUNT_BYTES + count * width_);
  bytes_.append(lowest_first(count * width_).data(), COUNT_BYTES);
}

void packed_numbers::add(double value) {
  const std::uint64_t bits = integer_ ? static_cast<std::uint64_t>(static_cast<std::int64_t>(value)) : bits_of(value);
  bytes_.append(lowest_first(bits).data(), width_);
}

std::string packed_numbers::encoded() const { return base_64(bytes_); }

}  // namespace solver
