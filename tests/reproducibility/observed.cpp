// observed.cpp: values of watched memory, their bits and their hash.
#include "observed.h"

#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>

namespace every_call {

std::vector<double> unwritten(int count) {
  return std::vector<double>(static_cast<std::size_t>(count), std::numeric_limits<double>::quiet_NaN());
}

std::uint64_t bits_of(double value) {
  if (std::isnan(value)) return 0x7FF8000000000000ULL;
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

double observed::value_at(const place& p, int i) {
  if (p.reals != nullptr) return p.reals[i];
  if (p.narrow != nullptr) return static_cast<double>(p.narrow[i]);
  if (p.integers != nullptr) return static_cast<double>(p.integers[i]);
  return static_cast<double>(static_cast<unsigned char>(p.text[i]));
}

void observed::append(const place& p, std::vector<double>& values) {
  for (int i = 0; i < p.count; ++i) values.push_back(value_at(p, i));
}

void observed::add(const place& p) {
  places_.push_back(p);
  append(p, before_);
}

void observed::read() {
  after_.clear();
  after_.reserve(before_.size());
  for (const place& p : places_) append(p, after_);
}

bool observed::holds() const {
  std::size_t at = 0;
  for (const place& p : places_) {
    for (int i = 0; i < p.count; ++i) {
      if (bits_of(value_at(p, i)) != bits_of(after_[at++])) return false;
    }
  }
  return true;
}

std::uint64_t observed::hash() const {
  std::uint64_t hash = 14695981039346656037ULL;
  for (const double value : after_) {
    const std::uint64_t bits = bits_of(value);
    for (unsigned shift = 0; shift < 64; shift += 8) hash = (hash ^ ((bits >> shift) & 0xFFU)) * 1099511628211ULL;
  }
  return hash;
}

bool observed::shows_something() const {
  for (std::size_t i = 0; i < after_.size(); ++i) {
    if (std::isfinite(after_[i]) && after_[i] != 0.0 && bits_of(after_[i]) != bits_of(before_[i])) return true;
  }
  return false;
}

std::string tag(const char* name, int number) { return std::string(name) + "_" + std::to_string(number); }

}  // namespace every_call
