// plastic_cases.cpp: the cases.
#include "plastic_cases.h"

namespace hinge_tests {

namespace {

using reference::flow_column;
using reference::matrix;

constexpr double CAPACITY[3] = {100, 20, 30};
constexpr section_forces CAPACITIES{100, 20, 30};

const section_forces& forces_of(int end) { return end == 1 ? END1 : END2; }

void set_list(HINGE_RECORD& h, int end, const segments& list) {
  set_segments(end == 1 ? h.END1_SEG : h.END2_SEG, list);
}

// Gradient of a segment of the polyhedron with all forces: the base by the quarter of the numbers, the signs of the
// moments by the place in it.
std::vector<double> segment_gradient(int segment) {
  const int base = (segment - 1) / 4, place = (segment - 1) % 4;
  const double p[4] = {1, 0.5, -0.5, -1};
  const double m = base == 0 || base == 3 ? 8.0 / 9.0 : 1.0;
  const double my = place < 2 ? m : -m, mz = place == 0 || place == 3 ? m : -m;
  return {p[base] / CAPACITY[0], my / CAPACITY[1], mz / CAPACITY[2]};
}

std::vector<double> single_gradient(int FS, int end) {
  const section_forces& F = forces_of(end);
  const double force[3] = {F.P, F.MY, F.MZ};
  std::vector<double> g(3, 0.0);
  const auto k = static_cast<std::size_t>(FS - 1);
  g[k] = (force[k] < 0 ? -1 : 1) / CAPACITY[k];
  return g;
}

std::vector<std::vector<double>> segment_columns(int end, const segments& list) {
  std::vector<std::vector<double>> columns;
  for (const int segment : list) {
    if (segment > 0) columns.push_back(flow_column(end, segment_gradient(segment)));
  }
  return columns;
}

std::vector<double> smooth_column(int FS, int end) {
  return flow_column(end, reference::orbison_gradient(FS, CAPACITIES, forces_of(end)));
}

std::string title(const char* family, int number, int state1, int state2) {
  return std::string(family) + " " + std::to_string(number) + ", states " + std::to_string(state1) + " and " +
         std::to_string(state2);
}

}  // namespace

matrix plastic_case::flow() const {
  matrix N(12, static_cast<dense::index>(columns.size()));
  for (std::size_t j = 0; j < columns.size(); ++j) {
    N.col(static_cast<dense::index>(j)) = reference::of_columns(columns[j], 12);
  }
  return N;
}

std::vector<plastic_case> one_end_cases() {
  std::vector<plastic_case> cases;
  for (const auto& [state1, state2] : {std::pair{1, 0}, {1, 2}, {1, 3}, {0, 1}, {2, 1}, {-1, 1}}) {
    const int end = state1 == 1 ? 1 : 2;
    for (int FS = 1; FS <= 3; ++FS) {
      cases.push_back({title("single force", FS, state1, state2),
                       hinge_of(1, FS, state1, state2),
                       {flow_column(end, single_gradient(FS, end))}});
    }
    for (int FS = 2; FS <= 7; ++FS) {
      cases.push_back(
          {title("smooth, set", FS, state1, state2), hinge_of(2, FS, state1, state2), {smooth_column(FS, end)}});
    }
    for (const segments& list : {segments{5, 0, 0, 0}, segments{5, 8, 0, 0}, segments{13, 14, 0, 0}}) {
      plastic_case c{title("segments from", list[0], state1, state2), hinge_of(3, 7, state1, state2),
                     segment_columns(end, list)};
      set_list(c.hinge, end, list);
      // What the record keeps of the other end does not matter.
      set_list(c.hinge, 3 - end, {1, 2, 3, 0});
      cases.push_back(c);
    }
  }
  return cases;
}

std::vector<plastic_case> two_end_cases() {
  std::vector<plastic_case> cases;
  for (int FS = 1; FS <= 3; ++FS) {
    cases.push_back({title("single force", FS, 1, 1),
                     hinge_of(1, FS, 1, 1),
                     {flow_column(1, single_gradient(FS, 1)), flow_column(2, single_gradient(FS, 2))}});
  }
  for (int FS = 2; FS <= 7; ++FS) {
    cases.push_back(
        {title("smooth, set", FS, 1, 1), hinge_of(2, FS, 1, 1), {smooth_column(FS, 1), smooth_column(FS, 2)}});
  }
  for (const segments& first : {segments{16, 0, 0, 0}, segments{5, 8, 0, 0}, segments{1, 2, 3, 0}}) {
    for (const segments& second : {segments{9, 0, 0, 0}, segments{13, 14, 0, 0}, segments{5, 6, 7, 0}}) {
      plastic_case c{title("segments from", first[0], 1, 1) + " and " + std::to_string(second[0]), hinge_of(3, 7, 1, 1),
                     segment_columns(1, first)};
      for (const std::vector<double>& column : segment_columns(2, second)) c.columns.push_back(column);
      set_list(c.hinge, 1, first);
      set_list(c.hinge, 2, second);
      cases.push_back(c);
    }
  }
  return cases;
}

matrix smooth_flow(int end) { return reference::of_columns(smooth_column(7, end), 12); }

std::vector<double> any_stiffness(support::seeded_random& random) { return random.vector(144, 1e3); }

std::vector<double> sound_stiffness(support::seeded_random& random) {
  std::vector<double> K = random.vector(144, 1e3);
  for (std::size_t i = 0; i < 12; ++i) K[13 * i] += 9e3;
  return K;
}

std::vector<double> sum(std::vector<double> a, const std::vector<double>& b) {
  for (std::size_t i = 0; i < a.size(); ++i) a[i] += b.at(i);
  return a;
}

double condition(const matrix& K, const matrix& N) {
  matrix n = N;
  for (dense::index j = 0; j < n.cols(); ++j) n.col(j) /= n.col(j).norm();
  const matrix B = n.transpose() * K * n;
  return static_cast<double>(B.rows()) * largest(B) * largest(B.inverse());
}

}  // namespace hinge_tests
