// reference_shapes.cpp: nodes, polynomials and integration rules of the eight kinds.
#include <array>
#include <cmath>
#include <map>

#include "reference_solid.h"

namespace reference {

namespace {

using exponents = std::vector<std::array<int, 3>>;

// xi, eta, zeta of each node: - is -1, + and 1 are 1, h is a half.
std::vector<const char*> node_texts(int kind) {
  switch (kind) {
    case 10: return {"---", "+--", "++-", "-+-", "--+", "+-+", "+++", "-++"};
    case 12: return {"00-", "10-", "01-", "00+", "10+", "01+"};
    case 13: return {"000", "100", "010", "001"};
    case 20:
      return {"---", "0--", "+--", "+0-", "++-", "0+-", "-+-", "-0-", "00-", "--0", "0-0", "+-0", "+00", "++0",
              "0+0", "-+0", "-00", "000", "--+", "0-+", "+-+", "+0+", "+++", "0++", "-++", "-0+", "00+"};
    case 21:
      return {"---", "0--", "+--", "+0-", "++-", "0+-", "-+-", "-0-", "--0", "+-0",
              "++0", "-+0", "--+", "0-+", "+-+", "+0+", "+++", "0++", "-++", "-0+"};
    case 22:
      return {"00-", "h0-", "10-", "hh-", "01-", "0h-", "000", "h00", "100",
              "hh0", "010", "0h0", "00+", "h0+", "10+", "hh+", "01+", "0h+"};
    case 23:
      return {"00-", "h0-", "10-", "hh-", "01-", "0h-", "000", "100", "010", "00+", "h0+", "10+", "hh+", "01+", "0h+"};
    default: return {"000", "h00", "100", "hh0", "010", "0h0", "00h", "h0h", "0hh", "001"};
  }
}

real coordinate(char c) {
  switch (c) {
    case '-': return -1;
    case 'h': return 0.5L;
    case '0': return 0;
    default: return 1;
  }
}

// Does a monomial belong to the element? a, b, c are its exponents, none above 2.
bool belongs(int kind, int a, int b, int c) {
  const int in_plane = a + b;
  const int squares = (a == 2 ? 1 : 0) + (b == 2 ? 1 : 0) + (c == 2 ? 1 : 0);
  switch (kind) {
    case 10: return squares == 0;
    case 12: return in_plane <= 1 && c <= 1;
    case 13: return in_plane + c <= 1;
    case 20: return true;
    case 21: return squares <= 1;  // serendipity: no two squares in one monomial
    case 22: return in_plane <= 2;
    case 23: return in_plane <= 2 && (c <= 1 || in_plane <= 1);
    default: return in_plane + c <= 2;
  }
}

exponents monomials(int kind) {
  exponents all;
  for (int a = 0; a <= 2; ++a) {
    for (int b = 0; b <= 2; ++b) {
      for (int c = 0; c <= 2; ++c) {
        if (belongs(kind, a, b, c)) all.push_back({a, b, c});
      }
    }
  }
  return all;
}

real power(real x, int n) { return n == 0 ? 1 : n == 1 ? x : x * x; }
real slope(real x, int n) { return n == 0 ? 0 : n == 1 ? 1 : 2 * x; }

// Each monomial at a point; direction 0 to 2: its derivative.
column values_at(const exponents& terms, const std::array<real, 3>& p, int direction) {
  column out = column::Ones(static_cast<dense::index>(terms.size()));
  for (std::size_t m = 0; m < terms.size(); ++m) {
    for (int i = 0; i < 3; ++i) {
      const std::size_t at = static_cast<std::size_t>(i);
      out(static_cast<dense::index>(m)) *= i == direction ? slope(p[at], terms[m][at]) : power(p[at], terms[m][at]);
    }
  }
  return out;
}

// Columns: the coefficients of each shape function.
const matrix& coefficients(int kind) {
  static std::map<int, matrix> known;
  const auto [entry, first] = known.emplace(kind, matrix());
  if (!first) return entry->second;
  const exponents terms = monomials(kind);
  const matrix XI = node_coordinates(kind);
  matrix V(XI.cols(), XI.cols());
  for (dense::index k = 0; k < XI.cols(); ++k)
    V.row(k) = values_at(terms, {XI(0, k), XI(1, k), XI(2, k)}, -1).transpose();
  entry->second = V.inverse();
  return entry->second;
}

std::array<real, 3> widened(const std::vector<double>& p) { return {p[0], p[1], p[2]}; }

}  // namespace

const std::vector<kind_facts>& all_kinds() {
  static const std::vector<kind_facts> all = {{13, 4, 1},  {12, 6, 6},  {10, 8, 8},  {24, 10, 4},
                                              {23, 15, 8}, {22, 18, 8}, {21, 20, 8}, {20, 27, 27}};
  return all;
}

std::vector<int> kinds() {
  std::vector<int> out;
  for (const kind_facts& facts : all_kinds()) out.push_back(facts.kind);
  return out;
}

int node_count(int kind) {
  for (const kind_facts& facts : all_kinds()) {
    if (facts.kind == kind) return facts.nodes;
  }
  return 0;
}

int kind_of(int nodes) {
  for (const kind_facts& facts : all_kinds()) {
    if (facts.nodes == nodes) return facts.kind;
  }
  return 0;
}

matrix node_coordinates(int kind) {
  const std::vector<const char*> texts = node_texts(kind);
  matrix XI(3, static_cast<dense::index>(texts.size()));
  for (std::size_t k = 0; k < texts.size(); ++k) {
    for (dense::index i = 0; i < 3; ++i) XI(i, static_cast<dense::index>(k)) = coordinate(texts[k][i]);
  }
  return XI;
}

column functions(int kind, const std::vector<double>& p) {
  return coefficients(kind).transpose() * values_at(monomials(kind), widened(p), -1);
}

matrix derivatives(int kind, const std::vector<double>& p) {
  const matrix C = coefficients(kind).transpose();
  matrix DN(3, C.rows());
  for (int i = 0; i < 3; ++i) DN.row(i) = (C * values_at(monomials(kind), widened(p), i)).transpose();
  return DN;
}

namespace {

constexpr double g = 0.5773502588272095, h = 0.7745966911315918, third = 0.3333333432674408;

std::vector<station> points_27() {
  constexpr double at[3] = {-h, 0.0, h};
  constexpr double by_zeros[4] = {0.17146778858901823, 0.2743484507045309, 0.438957503466613, 0.7023319772895636};
  std::vector<station> points;
  for (int n = 0; n < 27; ++n) {
    const int i = n % 3, j = n / 3 % 3, k = n / 9;
    const int zeros = static_cast<int>(i == 1) + static_cast<int>(j == 1) + static_cast<int>(k == 1);
    points.push_back({at[i], at[j], at[k], by_zeros[zeros]});
  }
  points[4].weight = 1.0;
  return points;
}

}  // namespace

std::vector<station> rule(int kind, int flag) {
  constexpr double G = 0.577350269189626;
  constexpr double w = 0.1666666716337204, q = 0.2604166567325592, t = 0.0416666679084301;
  constexpr double a = 0.13819660246372223, b = 0.5854102373123169;
  switch (kind) {
    case 10:
      return {{-G, -G, -G, 1}, {G, -G, -G, 1}, {G, G, -G, 1}, {-G, G, -G, 1},
              {-G, -G, G, 1},  {G, -G, G, 1},  {G, G, G, 1},  {-G, G, G, 1}};
    case 12:
      return {{0.5, 0.5, -g, w}, {0, 0.5, -g, w}, {0.5, 0, -g, w}, {0.5, 0.5, g, w}, {0, 0.5, g, w}, {0.5, 0, g, w}};
    case 13: return {{0.25, 0.25, 0.25, 1.0}};
    case 24: return {{a, a, a, t}, {a, a, b, t}, {a, b, a, t}, {b, a, a, t}};
    case 22:
    case 23:
      return {{-g, third, third, -0.28125}, {-g, 0.2, 0.2, q}, {-g, 0.6, 0.2, q}, {-g, 0.2, 0.6, q},
              {g, third, third, -0.28125},  {g, 0.2, 0.2, q},  {g, 0.6, 0.2, q},  {g, 0.2, 0.6, q}};
    case 21:
      if (flag == 1) return points_27();
      return {{-g, -g, -g, 1}, {g, -g, -g, 1}, {-g, g, -g, 1}, {g, g, -g, 1},
              {-g, -g, g, 1},  {g, -g, g, 1},  {-g, g, g, 1},  {g, g, g, 1}};
    default: return points_27();
  }
}

}  // namespace reference
