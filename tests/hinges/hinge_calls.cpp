// hinge_calls.cpp: the calls.
#include "hinge_calls.h"

#include <gtest/gtest.h>

#include "comparison.h"
#include "finites/finites.h"
#include "guarded_buffer.h"

namespace hinge_tests {

namespace {

constexpr std::int32_t UNWRITTEN = -7777;

// Four integers between guards.
struct guarded_segments {
  std::array<std::int32_t, 8> words{UNWRITTEN, UNWRITTEN, UNWRITTEN, UNWRITTEN,
                                    UNWRITTEN, UNWRITTEN, UNWRITTEN, UNWRITTEN};
  std::int32_t* data() { return words.data() + 2; }
  segments result() const {
    for (const std::size_t guard : {0U, 1U, 6U, 7U}) EXPECT_EQ(words[guard], UNWRITTEN);
    return {words[2], words[3], words[4], words[5]};
  }
};

// The list as a routine gets it: what lies behind its four places would show.
std::array<std::int32_t, 6> handed(const segments& SEG) { return {SEG[0], SEG[1], SEG[2], SEG[3], 2, 2}; }

std::vector<double> three(const support::guarded_buffer& d) {
  for (const int position : d.changed()) EXPECT_TRUE(position == 2 || position == 12 || position == 22);
  return {d(2), d(12), d(22)};
}

}  // namespace

double phi_orbison(const section_forces& C, int FS, const section_forces& F) {
  const std::int32_t fs = FS;
  support::guarded_buffer PHI(1);
  PHI_ORBISON(&C.P, &C.MY, &C.MZ, &fs, &F.P, &F.MY, &F.MZ, PHI.data());
  for (const int position : PHI.changed()) EXPECT_EQ(position, 1);
  return PHI(1);
}

double phi_single(const segments& SEG, const section_forces& C, int FS, const section_forces& F) {
  const std::int32_t fs = FS;
  support::guarded_buffer PHI(1);
  PHI_SINGLE_FORCES(handed(SEG).data(), &C.P, &C.MY, &C.MZ, &fs, &F.P, &F.MY, &F.MZ, PHI.data());
  for (const int position : PHI.changed()) EXPECT_EQ(position, 1);
  return PHI(1);
}

std::vector<double> phi_linear(const segments& SEG, const section_forces& C, int FS, const section_forces& F) {
  const std::int32_t fs = FS;
  support::guarded_buffer PHI(4);
  PHI_LINEAR_SEGMENT(handed(SEG).data(), &C.P, &C.MY, &C.MZ, &fs, &F.P, &F.MY, &F.MZ, PHI.data());
  EXPECT_EQ(PHI.changed(), support::range(1, 4));
  return support::values(PHI.data(), 4);
}

selection select_single(const section_forces& C, int FS, const section_forces& F) {
  std::int32_t fs = FS, NEQ = UNWRITTEN;
  guarded_segments SEG;
  SINGLE_FORCES_SEGMENT_EQUATION(&C.P, &C.MY, &C.MZ, &fs, &F.P, &F.MY, &F.MZ, &NEQ, SEG.data());
  return {NEQ, SEG.result()};
}

selection select_linear(const section_forces& C, int FS, const section_forces& F) {
  std::int32_t fs = FS, NEQ = UNWRITTEN;
  guarded_segments SEG;
  LINEAR_SEGMENT_EQUATION(&C.P, &C.MY, &C.MZ, &fs, &F.P, &F.MY, &F.MZ, &NEQ, SEG.data());
  return {NEQ, SEG.result()};
}

std::vector<double> gradient_orbison(int FS, const section_forces& C, const section_forces& F) {
  const std::int32_t fs = FS;
  support::guarded_buffer d(30);
  ORBISON_CURVE_GRADIENT(&fs, &C.P, &C.MY, &C.MZ, &F.P, &F.MY, &F.MZ, d.data() + 1, d.data() + 11, d.data() + 21);
  return three(d);
}

std::vector<double> gradient_single(int S, int FS, const section_forces& C, const section_forces& F) {
  const std::int32_t s = S, fs = FS;
  support::guarded_buffer d(30);
  SINGLE_FORCES_CURVE_GRADIENT(&s, &fs, &C.P, &C.MY, &C.MZ, &F.P, &F.MY, &F.MZ, d.data() + 1, d.data() + 11,
                               d.data() + 21);
  return three(d);
}

std::vector<double> gradient_linear(int FS, int S, const section_forces& C, const section_forces& F) {
  const std::int32_t s = S, fs = FS;
  support::guarded_buffer d(30);
  LINEAR_SEGMENT_GRADIENT(&fs, &s, &C.P, &C.MY, &C.MZ, &F.P, &F.MY, &F.MZ, d.data() + 1, d.data() + 11, d.data() + 21);
  return three(d);
}

std::array<section_forces, 3> with_one_capacity(double bad) {
  return {section_forces{bad, 2.0, 3.0}, section_forces{2.0, bad, 3.0}, section_forces{2.0, 3.0, bad}};
}

}  // namespace hinge_tests
