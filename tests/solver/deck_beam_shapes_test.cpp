// deck_beam_shapes_test.cpp: the shapes of *BEAM SECTION: area, moments of inertia, torsion, shear, and wrong data
// lines.
#include <Eigen/Sparse>

#include <cmath>
#include <functional>
#include <map>

#include "deck/beam_shapes.h"
#include "deck_builder.h"
#include "frame_decks.h"

using namespace deck_test;
using solver::deck::beam_shape;

namespace {

constexpr double PI = 3.14159265358979323846;

// Whether a point of the bounding rectangle belongs to the section; x along axis 1, y along axis 2.
using region = std::function<bool(double x, double y)>;

struct cell {
  std::array<int, 4> nodes;
  double x, y;
};

// Cowper's coefficient for a force along x from the equations of his paper, not from his closed forms: the flexure
// function chi, harmonic in the section, with
//     d chi / dn = - n_x (nu x^2 / 2 + (1 - nu / 2) y^2) - n_y (2 + nu) x y      on the boundary, then
//     kappa = 2 (1 + nu) I_y / (nu (I_x - I_y) / 2 - A / I_y int x (chi + x y^2) dA),   I_y = int x^2 dA.
// Bilinear elements on a grid of cells; the boundary term becomes an integral over the section by Gauss.
class flexure {
 public:
  flexure(double width, double height, int nx, int ny, const region& inside) : dx_(width / nx), dy_(height / ny) {
    std::map<int, int> numbers;
    const auto number = [&](int i, int j) {
      return numbers.emplace(i * (ny + 1) + j, static_cast<int>(numbers.size())).first->second;
    };
    for (int i = 0; i < nx; ++i)
      for (int j = 0; j < ny; ++j) {
        const double x = (i + 0.5) * dx_ - width / 2, y = (j + 0.5) * dy_ - height / 2;
        if (!inside(x, y)) continue;
        cells_.push_back({{number(i, j), number(i + 1, j), number(i + 1, j + 1), number(i, j + 1)}, x, y});
      }
    count_ = static_cast<int>(numbers.size());
    factorise();
  }

  double area() const {
    return integral([](double, double) { return 1.0; });
  }
  double inertia_about_x() const {
    return integral([](double, double y) { return y * y; });
  }

  double coefficient(double nu) const {
    Eigen::VectorXd f = Eigen::VectorXd::Zero(count_);
    each_point([&](const cell& c, double x, double y, const double* N, const double* Nx, const double* Ny, double w) {
      const double Fx = nu * x * x / 2 + (1 - nu / 2) * y * y, Fy = (2 + nu) * x * y;
      for (std::size_t k = 0; k < 4; ++k) f[c.nodes[k]] -= w * (Fx * Nx[k] + Fy * Ny[k] + (2 + 2 * nu) * x * N[k]);
    });
    const Eigen::VectorXd chi = solver_.solve(f);
    double moment = 0, I_x = 0, I_y = 0;
    each_point([&](const cell& c, double x, double y, const double* N, const double*, const double*, double w) {
      double value = x * y * y;
      for (std::size_t k = 0; k < 4; ++k) value += N[k] * chi[c.nodes[k]];
      moment += w * x * value;
      I_x += w * y * y;
      I_y += w * x * x;
    });
    return 2 * (1 + nu) * I_y / (nu * (I_x - I_y) / 2 - area() / I_y * moment);
  }

 private:
  template <class F>
  void each_point(const F& f) const {
    const double g = 1 / std::sqrt(3.0);
    for (const cell& c : cells_)
      for (const double r : {-g, g})
        for (const double s : {-g, g}) {
          const double N[4] = {(1 - r) * (1 - s) / 4, (1 + r) * (1 - s) / 4, (1 + r) * (1 + s) / 4,
                               (1 - r) * (1 + s) / 4};
          const double Nx[4] = {-(1 - s) / 2 / dx_, (1 - s) / 2 / dx_, (1 + s) / 2 / dx_, -(1 + s) / 2 / dx_};
          const double Ny[4] = {-(1 - r) / 2 / dy_, -(1 + r) / 2 / dy_, (1 + r) / 2 / dy_, (1 - r) / 2 / dy_};
          f(c, c.x + r * dx_ / 2, c.y + s * dy_ / 2, N, Nx, Ny, dx_ * dy_ / 4);
        }
  }

  double integral(const std::function<double(double, double)>& f) const {
    double sum = 0;
    each_point([&](const cell&, double x, double y, const double*, const double*, const double*, double w) {
      sum += w * f(x, y);
    });
    return sum;
  }

  void factorise() {
    std::vector<Eigen::Triplet<double>> entries;
    each_point([&](const cell& c, double, double, const double*, const double* Nx, const double* Ny, double w) {
      for (std::size_t k = 0; k < 4; ++k)
        for (std::size_t l = 0; l < 4; ++l)
          entries.emplace_back(c.nodes[k], c.nodes[l], w * (Nx[k] * Nx[l] + Ny[k] * Ny[l]));
    });
    entries.emplace_back(0, 0, 1.0);  // chi is known up to a constant
    Eigen::SparseMatrix<double> K(count_, count_);
    K.setFromTriplets(entries.begin(), entries.end());
    solver_.compute(K);
  }

  double dx_, dy_;
  int count_ = 0;
  std::vector<cell> cells_;
  Eigen::SimplicialLDLT<Eigen::SparseMatrix<double>> solver_;
};

region turned(const region& inside) {
  return [inside](double x, double y) { return inside(y, x); };
}

// Both directions of a section in a bounding rectangle a by b, n by m cells; the share by which they may differ.
void expect_cowper(const beam_shape& s, double nu, double a, double b, int n, int m, const region& inside,
                   double share) {
  EXPECT_NEAR(flexure(a, b, n, m, inside).coefficient(nu) / s.shear_factor_1, 1, share) << "along axis 1, nu " << nu;
  EXPECT_NEAR(flexure(b, a, m, n, turned(inside)).coefficient(nu) / s.shear_factor_2, 1, share)
      << "along axis 2, nu " << nu;
}

// The share of a thin-walled formula that remains when the walls shrink: its error falls with the thickness, so that
// the values of two thicknesses point at that of none.
double towards_none(double thick, double thin) { return 2 * thin - thick; }

region box(double a, double b, double t1, double t2) {
  return [=](double x, double y) { return std::abs(x) > a / 2 - t1 || std::abs(y) > b / 2 - t2; };
}

region wide_flange(double h, double flange, double web) {
  return [=](double x, double y) { return std::abs(x) < web / 2 || std::abs(y) > h / 2 - flange; };
}

// What a deck of GOOD_FRAME makes of `form` and its first data line.
std::string shaped(const std::string& form, const std::string& data, bool with_shear = false) {
  std::vector<std::string> lines = GOOD_FRAME;
  lines[18] = "*BEAM SECTION, ELSET=BEAMS, MATERIAL=STEEL, SECTION=" + form;
  lines[19] = data;
  if (!with_shear) lines.erase(lines.begin() + 21, lines.begin() + 23);
  return text_of(lines);
}

void expect_wrong(const std::string& form, const std::string& data, const std::string& text) {
  expect_error(shaped(form, data), 20, "*BEAM SECTION", text);
}

}  // namespace

TEST(DeckBeamShapes, ShearOfSolidShapesIsCowpers) {
  for (const double nu : {0.0, 0.3}) {
    const auto all = [](double, double) { return true; };
    expect_cowper(solver::deck::rectangle_shape(1, 2, nu), nu, 1, 2, 24, 48, all, 2e-3);
    const auto ellipse = [](double x, double y) { return 4 * x * x + y * y < 1; };
    expect_cowper(solver::deck::ellipse_shape(0.5, 1, nu), nu, 1, 2, 100, 100, ellipse, 3e-3);
    const auto pipe = [](double x, double y) { return std::hypot(x, y) < 1 && std::hypot(x, y) > 0.6; };
    expect_cowper(solver::deck::pipe_shape(1, 0.4, nu), nu, 2, 2, 120, 120, pipe, 1e-2);
  }
}

TEST(DeckBeamShapes, ShearOfABoxIsCowpersForThinWalls) {
  for (const double nu : {0.0, 0.3}) {
    double ratio_1[2], ratio_2[2];
    for (const int i : {0, 1}) {
      const double t = i == 0 ? 0.08 : 0.04, a = 0.6, b = 1;
      const int fine = i == 0 ? 1 : 2;
      const beam_shape s = solver::deck::box_shape(a, b, t / 2, t, nu);
      const region inside = box(a, b, t / 2, t);
      ratio_1[i] = flexure(a, b, 60 * fine, 100 * fine, inside).coefficient(nu) / s.shear_factor_1;
      ratio_2[i] = flexure(b, a, 100 * fine, 60 * fine, turned(inside)).coefficient(nu) / s.shear_factor_2;
    }
    EXPECT_NEAR(towards_none(ratio_1[0], ratio_1[1]), 1, 1e-2) << nu;
    EXPECT_NEAR(towards_none(ratio_2[0], ratio_2[1]), 1, 1e-2) << nu;
  }
}

TEST(DeckBeamShapes, ShearOfAWideFlangeIsCowpersForThinWalls) {
  for (const double nu : {0.0, 0.3}) {
    double along_web[2], across[2];
    for (const int i : {0, 1}) {
      const double t = i == 0 ? 0.08 : 0.04, width = 0.6;
      const int fine = i == 0 ? 1 : 2;
      const beam_shape s = solver::deck::i_shape(1, width, t, t / 2, nu);
      const region inside = wide_flange(1, t, t / 2);
      along_web[i] = flexure(1, width, 100 * fine, 60 * fine, turned(inside)).coefficient(nu) / s.shear_factor_2;
      across[i] = flexure(width, 1, 60 * fine, 100 * fine, inside).coefficient(nu) / s.shear_factor_1;
    }
    EXPECT_NEAR(towards_none(along_web[0], along_web[1]), 1, 1e-2) << nu;
    // Across the web two rectangles bend side by side; at nu = 0 Cowper's mean over the web adds nothing to them.
    if (nu == 0) {
      EXPECT_NEAR(towards_none(across[0], across[1]), 1, 1e-2);
    }
  }
}

// The textbook values of Cowper's table at nu = 0.3, two digits.
TEST(DeckBeamShapes, ShearAgreesWithTheTablesOfDeckPrograms) {
  EXPECT_NEAR(solver::deck::rectangle_shape(3, 7, 0.3).shear_factor_1, 0.85, 0.005);
  EXPECT_NEAR(solver::deck::ellipse_shape(1, 1, 0.3).shear_factor_1, 0.89, 0.005);
  EXPECT_NEAR(solver::deck::pipe_shape(1, 1e-3, 0.3).shear_factor_2, 0.53, 0.005);
  EXPECT_NEAR(solver::deck::box_shape(1, 1, 1e-4, 1e-4, 0.3).shear_factor_2, 0.44, 0.005);
}

TEST(DeckBeamShapes, AreasAndInertiasBySummation) {
  const auto expect = [](const beam_shape& s, double a, double b, int n, int m, const region& inside, double share) {
    const flexure upright(a, b, n, m, inside), lying(b, a, m, n, turned(inside));
    EXPECT_NEAR(upright.area() / s.area, 1, share);
    EXPECT_NEAR(upright.inertia_about_x() / s.I11, 1, share);  // bending about axis 1
    EXPECT_NEAR(lying.inertia_about_x() / s.I22, 1, share);
  };
  expect(
      solver::deck::rectangle_shape(1, 2, 0.3), 1, 2, 4, 4, [](double, double) { return true; }, 1e-12);
  expect(solver::deck::box_shape(0.6, 1, 0.04, 0.08, 0.3), 0.6, 1, 60, 50, box(0.6, 1, 0.04, 0.08), 1e-12);
  expect(solver::deck::i_shape(1, 0.6, 0.08, 0.04, 0.3), 0.6, 1, 60, 50, wide_flange(1, 0.08, 0.04), 1e-12);
  const auto ellipse = [](double x, double y) { return 4 * x * x + y * y < 1; };
  expect(solver::deck::ellipse_shape(0.5, 1, 0.3), 1, 2, 100, 100, ellipse, 2e-3);
  const auto pipe = [](double x, double y) { return std::hypot(x, y) < 1 && std::hypot(x, y) > 0.6; };
  expect(solver::deck::pipe_shape(1, 0.4, 0.3), 2, 2, 120, 120, pipe, 4e-3);
}

TEST(DeckBeamShapes, TorsionConstants) {
  // Saint-Venant's table of rectangles (Timoshenko and Goodier): J / (b s^3) = 0.1406, 0.229, 0.281, 0.312 for
  // b / s = 1, 2, 4, 10.
  EXPECT_NEAR(solver::deck::rectangle_shape(1, 1, 0).torsion, 0.1406, 5e-5);
  EXPECT_NEAR(solver::deck::rectangle_shape(2, 1, 0).torsion / 2, 0.229, 5e-4);
  EXPECT_NEAR(solver::deck::rectangle_shape(1, 4, 0).torsion / 4, 0.281, 5e-4);
  EXPECT_NEAR(solver::deck::rectangle_shape(10, 1, 0).torsion / 10, 0.312, 5e-4);
  EXPECT_NEAR(solver::deck::ellipse_shape(2, 2, 0).torsion, PI * 16 / 2, 1e-12);            // polar moment
  EXPECT_NEAR(solver::deck::ellipse_shape(1, 2, 0).torsion, PI * 8 / 5, 1e-12);             // pi p^3 q^3 / (p^2 + q^2)
  EXPECT_NEAR(solver::deck::pipe_shape(2, 0.5, 0).torsion, PI * (16 - 5.0625) / 2, 1e-12);  // polar moment
  // Bredt: 4 (0.5 * 0.8)^2 / (2 * 0.5 / 0.2 + 2 * 0.8 / 0.1); thin strips: sum of b t^3 / 3.
  EXPECT_NEAR(solver::deck::box_shape(0.6, 1, 0.1, 0.2, 0).torsion, 0.64 / 21, 1e-15);
  EXPECT_NEAR(solver::deck::i_shape(1, 0.6, 0.2, 0.1, 0).torsion, (2 * 0.6 * 0.008 + 0.8 * 0.001) / 3, 1e-15);
}

TEST(DeckBeamShapes, DataLinesMeanWhatUsersOfDecksExpect) {
  const auto section = [](const std::string& form, const std::string& data) {
    return read(shaped(form, data)).frame_sections[0];
  };
  const solver::frame_section rectangle = section("RECT", "0.2, 0.3");
  EXPECT_DOUBLE_EQ(rectangle.area, 0.06);
  EXPECT_DOUBLE_EQ(rectangle.inertia_xz, 0.2 * 0.027 / 12);  // about axis 1: in the plane of axis 2
  EXPECT_DOUBLE_EQ(rectangle.inertia_xy, 0.3 * 0.008 / 12);
  EXPECT_EQ(rectangle.n1, (std::array<double, 3>{0, 0, 1}));
  EXPECT_DOUBLE_EQ(section("CIRC", "0.1").area, PI * 0.01);
  EXPECT_DOUBLE_EQ(section("CIRC", "0.2, 0.2").area, PI * 0.01);
  EXPECT_DOUBLE_EQ(section("CIRC", "0.1, 0.2").inertia_xz, PI / 4 * 0.05 * 0.001);
  EXPECT_DOUBLE_EQ(section("PIPE", "0.1, 0.02").area, PI * (0.01 - 0.0064));
  EXPECT_DOUBLE_EQ(section("BOX", "0.2, 0.3, 0.01, 0.02, 0.01, 0.02").area, 0.06 - 0.18 * 0.26);
  EXPECT_DOUBLE_EQ(section("BOX", "0.2, 0.3, 0.01, 0.02, 0.01, 0.02").inertia_xz,
                   (0.2 * 0.027 - 0.18 * 0.26 * 0.26 * 0.26) / 12);
  EXPECT_DOUBLE_EQ(section("I", "0.15, 0.3, 0.1, 0.1, 0.02, 0.02, 0.01").area, 2 * 0.1 * 0.02 + 0.26 * 0.01);
  EXPECT_GT(section("I", "0.15, 0.3, 0.1, 0.1, 0.02, 0.02, 0.01").inertia_xz,
            section("I", "0.15, 0.3, 0.1, 0.1, 0.02, 0.02, 0.01").inertia_xy);
}

TEST(DeckBeamShapes, GivenShearStiffnessWins) {
  const solver::frame_section s = read(shaped("RECT", "0.2, 0.3", true)).frame_sections[0];
  EXPECT_EQ(s.shear_stiffness_z, 5e8);
  EXPECT_EQ(s.shear_stiffness_y, 6e8);
}

TEST(DeckBeamShapes, WrongDataLines) {
  expect_wrong("RECT", "0.2", "too few fields (1): side along axis 1, side along axis 2");
  expect_wrong("RECT", "0.2, 0.", "side along axis 2: '0.' is not positive");
  expect_wrong("RECT", "1e-120, 1e-120", "the area or a moment of inertia is 0 or not finite");
  expect_wrong("CIRC", "-1", "radius: '-1' is not positive");
  expect_wrong("PIPE", "0.1, 0.1", "the wall is not thinner than the outer radius: SECTION=CIRC is a solid bar");
  expect_wrong("BOX", "0.2, 0.3, 0.1, 0.02, 0.1, 0.02", "the walls leave no hollow: SECTION=RECT is a solid bar");
  expect_wrong("I", "0.15, 0.3, 0.1, 0.1, 0.15, 0.15, 0.01", "the flanges leave no web");
  expect_wrong("I", "0.15, 0.3, 0.1, 0.1, 0.02, 0.02, 0.11", "the web is thicker than the flanges are wide");
}
