// read_member_ends.cpp: *RELEASE and *FIXITY, the connections of beams to their nodes.
#include <algorithm>
#include <array>

#include "deck/fields.h"
#include "deck/keywords.h"
#include "elements/parts.h"

namespace solver::deck {

namespace {

constexpr std::size_t TORSION = 3;

// What a code releases: rotations about axis 1 (local y) and axis 2 (local z), torsion; or a force.
struct release {
  const char* code;
  bool about_1, about_2, torsion;
  int force;  // 0 axial, 1 along axis 1, 2 along axis 2; -1: none
};

// clang-format off
constexpr release RELEASES[] = {
    {"M1",    true,  false, false, -1}, {"M2",   false, true,  false, -1}, {"T",    false, false, true, -1},
    {"M1-M2", true,  true,  false, -1}, {"M1-T", true,  false, true,  -1}, {"M2-T", false, true,  true, -1},
    {"ALLM",  true,  true,  true,  -1}, {"N",    false, false, false, 0},  {"V1",   false, false, false, 1},
    {"V2",    false, false, false, 2},
};
// clang-format on

}  // namespace

static member_ends& ends_of(build& b, const data_fields& row, int index) {
  element& e = b.result.elements[index];
  if (!is_beam(e.type)) row.fail("element " + std::to_string(e.id) + " is not a beam (B31, B33)");
  if (e.ends < 0) {
    e.ends = count_of(b.result.ends);
    b.result.ends.emplace_back();
  }
  return b.result.ends[e.ends];
}

static std::size_t end_of(const data_fields& row) {
  const std::string end = squeezed(row.text(1));
  if (end != "S1" && end != "S2") row.fail("the end " + in_quotes(row.text(1)) + " is neither S1 nor S2");
  return end == "S1" ? 0 : 1;
}

static const release& release_of(const data_fields& row) {
  const std::string code = squeezed(row.text(2));
  const auto* const found =
      std::find_if(std::begin(RELEASES), std::end(RELEASES), [&](const release& r) { return code == r.code; });
  if (found == std::end(RELEASES)) {
    row.fail("the release " + in_quotes(row.text(2)) +
             " is not supported; M1, M2, T, M1-M2, M1-T, M2-T, ALLM, N, V1 and V2 are");
  }
  return *found;
}

// The forces and the torsion that the other parts of the same member have released.
static std::array<bool, 4> released_beyond(const build& b, int index) {
  const model& m = b.result;
  const element& e = m.elements[index];
  std::array<bool, 4> released{};
  for (int k = 0; k < e.parts; ++k) {
    const element& other = m.elements[index - e.part + k];
    if (k == e.part || other.ends < 0) continue;
    for (std::size_t i = 0; i < released.size(); ++i) released[i] |= m.ends[other.ends].released[i] != 0;
  }
  return released;
}

// A torsion that one end has lost the other has lost too.
static void apply(const data_fields& row, const release& r, std::size_t end, member_ends& ends,
                  const std::array<bool, 4>& beyond) {
  const int code = number_of(end) + 1;
  if (r.about_1) ends.fixity[end][0] = 0;
  if (r.about_2) ends.fixity[end][1] = 0;
  if (r.torsion && ends.released[TORSION] == 0 && !beyond[TORSION]) ends.released[TORSION] = code;
  if (r.force < 0) return;
  int& released = ends.released[subscript(r.force)];
  if ((released != 0 && released != code) || beyond[subscript(r.force)]) {
    row.fail("the force is released at the other end already");
  }
  released = code;
}

void read_release(build& b, const card& c) {
  b.each_line(c, [&](data_fields& row) {
    row.expect(3, 3, "element or set, S1 or S2, release", 3);
    const std::size_t end = end_of(row);
    const release& r = release_of(row);
    for (const int index : members_of(b, b.elements, row, 0)) {
      member_ends& ends = ends_of(b, row, index);
      if (is_outer_end(b.result.elements[index], end)) apply(row, r, end, ends, released_beyond(b, index));
    }
  });
}

static double factor(const data_fields& row, int i) {
  const double value = row.real(i, "fixity factor");
  if (!(value >= 0 && value <= 1)) row.fail("the fixity factor " + in_quotes(row.text(i)) + " is not from 0 to 1");
  return value;
}

void read_fixity(build& b, const card& c) {
  b.each_line(c, [&](data_fields& row) {
    row.expect(4, 4, "element or set, S1 or S2, factor about axis 1, factor about axis 2", 2);
    const std::size_t end = end_of(row);
    const double about_1 = factor(row, 2), about_2 = factor(row, 3);
    for (const int index : members_of(b, b.elements, row, 0)) {
      member_ends& ends = ends_of(b, row, index);
      if (is_outer_end(b.result.elements[index], end)) ends.fixity[end] = {about_1, about_2};
    }
  });
}

}  // namespace solver::deck
