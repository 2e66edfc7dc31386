// locking_test.cpp: square plates under pressure, a quarter assembled from FINITES, against Navier's series with and
// without shear and, clamped, against a Ritz series; a pinched hemisphere, on which the drilling rotations have their
// small stiffness only.
#include <cmath>

#include "comparison.h"
#include "dense.h"
#include "plate_model.h"

namespace {

constexpr double PI = 3.14159265358979323846;

struct mesh {
  std::vector<support::point> nodes;
  std::vector<std::vector<int>> elements;
};

// A patch of cells by cells, two triangles a cell or one quadrilateral; place puts (i, j) in space.
template <class PLACE>
mesh patch(int cells, bool triangles, const PLACE& place) {
  mesh m;
  const auto at = [cells](int i, int j) { return j * (cells + 1) + i; };
  for (int j = 0; j <= cells; ++j) {
    for (int i = 0; i <= cells; ++i) m.nodes.push_back(place(i, j));
  }
  for (int j = 0; j < cells; ++j) {
    for (int i = 0; i < cells; ++i) {
      if (triangles) {
        m.elements.push_back({at(i, j), at(i + 1, j), at(i + 1, j + 1)});
        m.elements.push_back({at(i, j), at(i + 1, j + 1), at(i, j + 1)});
      } else {
        m.elements.push_back({at(i, j), at(i + 1, j), at(i + 1, j + 1), at(i, j + 1)});
      }
    }
  }
  return m;
}

struct system_of_equations {
  dense::matrix K;
  dense::column f;
};

std::vector<support::plate_description> describe(const mesh& m, const support::plate_description& section) {
  std::vector<support::plate_description> all;
  for (const std::vector<int>& nodes : m.elements) {
    support::plate_description d = section;
    d.nodes.clear();
    for (const int n : nodes) d.nodes.push_back(m.nodes[static_cast<std::size_t>(n)]);
    all.push_back(d);
  }
  return all;
}

system_of_equations assemble(const mesh& m, support::plate_model& model, double pressure) {
  const int unknowns = 6 * static_cast<int>(m.nodes.size());
  system_of_equations s{dense::matrix::Zero(unknowns, unknowns), dense::column::Zero(unknowns)};
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    const int elem = static_cast<int>(e) + 1, order = model.order(elem);
    const std::vector<double> Ke = model.stiffness(elem), fe = model.loads(4, elem, {0.0, 0.0, pressure});
    const auto place = [&](int i) { return 6 * m.elements[e][static_cast<std::size_t>(i / 6)] + i % 6; };
    for (int j = 0; j < order; ++j) {
      s.f(place(j)) += fe[static_cast<std::size_t>(j)];
      for (int i = 0; i < order; ++i) s.K(place(i), place(j)) += Ke[static_cast<std::size_t>(order * j + i)];
    }
  }
  return s;
}

void hold(system_of_equations& s, int at) {
  const dense::real unit = s.K(at, at);
  s.K.row(at).setZero();
  s.K.col(at).setZero();
  s.K(at, at) = unit > 0.0 ? unit : 1.0;
  s.f(at) = 0.0;
}

constexpr double SIDE = 2.0, YOUNG = 2.1e5, POISSON = 0.3;

struct middle_values {
  double deflection, moment;
};

// In the middle of the simply supported square plate (hard supports) under unit pressure. The moment does not depend on
// the shear.
middle_values series(double h, bool with_shear) {
  const double D = YOUNG * h * h * h / (12.0 * (1.0 - POISSON * POISSON));
  const double S = 5.0 / 6.0 * YOUNG * h / (2.0 * (1.0 + POISSON));
  middle_values middle{0.0, 0.0};
  for (int m = 1; m < 400; m += 2) {
    for (int n = 1; n < 400; n += 2) {
      const double a = m * PI / SIDE, b = n * PI / SIDE, k = a * a + b * b;
      const double sign = ((m + n) / 2) % 2 == 1 ? 1.0 : -1.0;
      const double q = sign * 16.0 / (PI * PI * m * n);
      middle.deflection += q * (1.0 / (D * k * k) + (with_shear ? 1.0 / (S * k) : 0.0));
      middle.moment += q * (a * a + POISSON * b * b) / (k * k);
    }
  }
  return middle;
}

middle_values middle_of_plate(double h, int formulation, bool triangles, bool clamped, int cells = 8) {
  const double step = SIDE / 2.0 / cells;
  const mesh m = patch(cells, triangles, [step](int i, int j) { return support::point{step * i, step * j, 0.0}; });
  support::plate_description d;
  d.thickness = h;
  d.young = YOUNG;
  d.poisson = POISSON;
  d.formulation = formulation;
  support::plate_model model(describe(m, d));
  system_of_equations s = assemble(m, model, 1.0);
  for (int node = 0; node < static_cast<int>(m.nodes.size()); ++node) {
    const int i = node % (cells + 1), j = node / (cells + 1);
    const bool far_x = i == cells, far_y = j == cells;
    for (const int freedom : {0, 1, 5}) hold(s, 6 * node + freedom);
    if (far_x || far_y) hold(s, 6 * node + 2);
    if (j == 0 || far_x || (clamped && far_y)) hold(s, 6 * node + 3);
    if (i == 0 || far_y || (clamped && far_x)) hold(s, 6 * node + 4);
  }
  const std::vector<double> u = dense::listed(dense::solve_definite(s.K, s.f));
  std::vector<double> first;  // of the first element, whose node 1 is the middle
  for (const int node : m.elements[0]) {
    for (int i = 0; i < 6; ++i) first.push_back(u[static_cast<std::size_t>(6 * node + i)]);
  }
  return {u[2], model.results(1, first).nodes[39]};
}

double middle_deflection(double h, int formulation, bool triangles, bool clamped) {
  return middle_of_plate(h, formulation, triangles, clamped).deflection;
}

}  // namespace

TEST(Locking, ThinSquarePlatesDoNotLock) {
  for (const bool triangles : {true, false}) {
    for (const int formulation : {0, 1}) {
      for (const double ratio : {1e-4, 1e-2}) {
        const double exact = series(ratio * SIDE, formulation == 0).deflection;
        EXPECT_WITHIN(middle_deflection(ratio * SIDE, formulation, triangles, false), exact, exact, 0.01)
            << triangles << formulation << " h/L " << ratio;
      }
    }
  }
}

TEST(Locking, ClampedThinSquarePlatesDoNotLock) {
  // 0.00126532 q a^4 / D: a Ritz series (1 - x^2)^2 (1 - y^2)^2 P_i(x) P_j(y) on -1..1 with even Legendre polynomials,
  // the same to seven digits from eight to twenty of them in each direction. The book of Timoshenko and
  // Woinowsky-Krieger (1959) has it rounded, 0.00126.
  const double h = 1e-4 * SIDE, D = YOUNG * h * h * h / (12.0 * (1.0 - POISSON * POISSON));
  const double exact = 0.00126532 * SIDE * SIDE * SIDE * SIDE / D;
  for (const bool triangles : {true, false}) {
    for (const int formulation : {0, 1}) {
      EXPECT_WITHIN(middle_deflection(h, formulation, triangles, true), exact, exact, 0.015)
          << triangles << formulation;
    }
  }
}

TEST(Locking, ThickSquarePlatesDeflectByShearToo) {
  // h = L / 5: by Navier's series the shear adds 20.7 per cent; the thin kinds do not have it.
  const double h = SIDE / 5.0, with_shear = series(h, true).deflection, without = series(h, false).deflection;
  const double ratio = with_shear / without;
  EXPECT_WITHIN(ratio, 1.20726, 1.0, 1e-5);
  for (const bool triangles : {true, false}) {
    const double thick = middle_deflection(h, 0, triangles, false), thin = middle_deflection(h, 1, triangles, false);
    EXPECT_WITHIN(thick, with_shear, with_shear, 0.006) << triangles;
    EXPECT_WITHIN(thin, without, without, 0.008) << triangles;
    EXPECT_WITHIN(thick / thin, ratio, ratio, 0.003) << triangles;  // what the mesh errs in bending is in both
  }
}

TEST(Locking, MomentsOfTheMiddleAreThoseOfTheSeries) {
  const double exact = series(0.01 * SIDE, false).moment;
  EXPECT_WITHIN(exact, 0.0479 * SIDE * SIDE, exact, 1e-3);  // Timoshenko and Woinowsky-Krieger 1959, table 8
  for (const bool triangles : {true, false}) {
    for (const int formulation : {0, 1}) {
      const double moment = middle_of_plate(0.01 * SIDE, formulation, triangles, false).moment;
      EXPECT_WITHIN(moment, exact, exact, 0.02) << triangles << formulation;
    }
  }
}

TEST(Locking, ThinAndThickKindsMeetAsThicknessGoesToZero) {
  for (const bool triangles : {true, false}) {
    const double h = 1e-4 * SIDE;
    const double thin = middle_deflection(h, 1, triangles, false), thick = middle_deflection(h, 0, triangles, false);
    EXPECT_WITHIN(thick, thin, thin, 1e-5) << triangles;
    EXPECT_NE(thick, thin);
  }
}

TEST(Locking, DrillingTermDoesNotLockCurvedShells) {
  // Hemisphere with an 18 degree hole, pinched and pulled by +-2 at its equator, a quarter (MacNeal and Harder 1985):
  // 0.0940. A fictitious stiffness on the drilling rotations that counts would hold its inextensional bending back.
  constexpr int cells = 12;
  const auto place = [](int i, int j) {
    const double around = PI / 2.0 * i / cells, up = 72.0 / 180.0 * PI * j / cells;
    return support::point{10.0 * std::cos(up) * std::cos(around), 10.0 * std::cos(up) * std::sin(around),
                          10.0 * std::sin(up)};
  };
  for (const bool triangles : {true, false}) {
    for (const int formulation : {0, 1}) {
      const mesh m = patch(cells, triangles, place);
      support::plate_description d;
      d.thickness = 0.04;
      d.young = 6.825e7;
      d.poisson = 0.3;
      d.formulation = formulation;
      support::plate_model model(describe(m, d));
      system_of_equations s = assemble(m, model, 0.0);
      s.f(0) = 1.0;               // half of 2, outwards at (10, 0, 0)
      s.f(6 * cells + 1) = -1.0;  // inwards at (0, 10, 0)
      for (int j = 0; j <= cells; ++j) {
        const int on_xz = 6 * j * (cells + 1), on_yz = 6 * (j * (cells + 1) + cells);
        for (const int freedom : {1, 3, 5}) hold(s, on_xz + freedom);
        for (const int freedom : {0, 4, 5}) hold(s, on_yz + freedom);
      }
      hold(s, 6 * (cells / 2) + 2);
      const std::vector<double> u = dense::listed(dense::solve_definite(s.K, s.f));
      EXPECT_WITHIN(u[0], 0.0940, 0.0940, 0.05) << triangles << formulation;
      EXPECT_WITHIN(u[6 * cells + 1], -0.0940, 0.0940, 0.05) << triangles << formulation;
    }
  }
}
