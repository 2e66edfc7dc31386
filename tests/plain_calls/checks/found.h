// found.h: the findings of a check, and what tests ask of them.
#ifndef FINITES_TESTS_FOUND_H
#define FINITES_TESTS_FOUND_H

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "finites/checks.h"
#include "frame_model.h"
#include "plate_model.h"
#include "solid_model.h"

using findings = std::vector<finites_finding>;

constexpr std::int32_t NOTE = FINITES_SEVERITY_NOTE, WARNING = FINITES_SEVERITY_WARNING, ERROR = FINITES_SEVERITY_ERROR;

// Calls check(findings, capacity) and keeps what it finds.
template <class CALL>
findings found_by(CALL check) {
  findings found(40);
  const std::int32_t count = check(found.data(), static_cast<std::int32_t>(found.size()));
  found.resize(static_cast<std::size_t>(std::min<std::int32_t>(count, 40)));
  return found;
}

inline findings check(support::plate_model& model, int elem = 1) {
  return found_by([&](finites_finding* to, std::int32_t room) {
    return finites_check_plate(elem, model.block(elem), model.raw(), model.extent(), to, room);
  });
}

inline findings check(const support::frame_model& model, std::int32_t kind, int elem = 1) {
  return found_by([&](finites_finding* to, std::int32_t room) {
    return finites_check_member(kind, elem, model.entry(elem), model.storage().data(), model.extent(), to, room);
  });
}

inline findings check(const support::solid_model& model, int elem = 1) {
  return found_by([&](finites_finding* to, std::int32_t room) {
    return finites_check_solid(elem, model.storage().data(), model.extent(), to, room);
  });
}

inline std::int32_t worst(const findings& found) {
  std::int32_t severity = 0;
  for (const finites_finding& f : found) severity = std::max(severity, f.severity);
  return severity;
}

// The text of the finding of this severity and code; empty where there is none.
inline std::string text_of(const findings& found, std::int32_t severity, std::int32_t code) {
  for (const finites_finding& f : found) {
    if (f.severity == severity && f.code == code) return f.text;
  }
  return "";
}

inline std::string all_texts(const findings& found) {
  std::string all;
  for (const finites_finding& f : found) {
    all += std::to_string(f.severity) + " " + std::to_string(f.code) + " " + f.text + "\n";
  }
  return all;
}

inline bool all_finite(const std::vector<double>& values) {
  return std::all_of(values.begin(), values.end(), [](double v) { return std::isfinite(v); });
}

// Entries of the diagonal of a square matrix that are 0.
inline int zeros_on_diagonal(const std::vector<double>& K, int order) {
  int zeros = 0;
  for (int i = 0; i < order; ++i) zeros += K[static_cast<std::size_t>(i * order + i)] == 0.0 ? 1 : 0;
  return zeros;
}

#endif
