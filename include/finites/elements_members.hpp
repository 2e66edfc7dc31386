// elements_members.hpp: beams, trusses, cables, links, springs and yield surfaces. Part of elements.hpp.
#ifndef FINITES_ELEMENTS_MEMBERS_HPP
#define FINITES_ELEMENTS_MEMBERS_HPP

#include "finites/elements.h"
#include "finites/elements_values.hpp"

namespace finites {

// ---------------------------------------------------------------------------------------------- yield surfaces

class yield : public finites_yield {
 public:
  yield() : finites_yield() {}
  yield(const finites_yield& other) : finites_yield(other) {}
  // FINITES_ORBISON, 7, {P, My, Mz}.
  yield(std::int32_t curve_kind, std::int32_t force_set, view<const double> capacities) : finites_yield() {
    curve = curve_kind;
    forces = force_set;
    for (std::size_t i = 0; i < 3 && i < capacities.size(); ++i) capacity[i] = capacities[i];
  }

  struct active {
    std::int32_t count, segment[4];
    double value[4], gradient[4][3];
  };
  active equations(view<const double> force, outcome how = {}) const {
    const char* call = "finites_yield_equations";
    if (!detail::fits(how, call, "force", force, 3)) return {};
    return detail::struct_of<active>(how, call, [&](active* a) {
      return finites_yield_equations(this, force.data(), &a->count, a->segment, a->value, a->gradient);
    });
  }
  // Below 1 elastic.
  double value(view<const double> force, outcome how = {}) const {
    const char* call = "finites_yield_value";
    if (!detail::fits(how, call, "force", force, 3)) return 0;
    return detail::struct_of<double>(how, call, [&](double* v) { return finites_yield_value(this, force.data(), v); });
  }
};

// ---------------------------------------------------------------------------------------------- beams

class beam : public finites_beam {
 public:
  beam() : finites_beam() { finites_beam_init(this); }
  beam(const finites_beam& other) : finites_beam(other) {}
  beam(const point& first, const point& second) : beam() {
    const point ends[] = {first, second};
    detail::place(xyz, ends);
  }

  matrix<12> stiffness(outcome how = {}) const {
    return detail::matrix_of<12>(12, how, "finites_beam_stiffness",
                                 [&](double* K) { return finites_beam_stiffness(this, K); });
  }
  matrix<12> mass(outcome how = {}) const { return mass_of(0, how); }
  matrix<12> lumped_mass(outcome how = {}) const { return mass_of(1, how); }
  matrix<12> geometric(view<const double> u, outcome how = {}) const {
    const char* call = "finites_beam_geometric";
    if (!detail::fits(how, call, "u", u, 12)) return {};
    return detail::matrix_of<12>(12, how, call, [&](double* KG) { return finites_beam_geometric(this, u.data(), KG); });
  }
  matrix<12> geometric_of_force(double axial, outcome how = {}) const {
    return detail::matrix_of<12>(12, how, "finites_beam_geometric_of_force",
                                 [&](double* KG) { return finites_beam_geometric_of_force(this, axial, KG); });
  }
  vector<12> forces(view<const double> u, outcome how = {}) const {
    const char* call = "finites_beam_forces";
    if (!detail::fits(how, call, "u", u, 12)) return {};
    return detail::vector_of<12>(12, how, call, [&](double* F) { return finites_beam_forces(this, u.data(), F); });
  }
  vector<12> loads(const finites_beam_load& load, outcome how = {}) const {
    return detail::vector_of<12>(12, how, "finites_beam_loads",
                                 [&](double* F) { return finites_beam_loads(this, &load, F); });
  }
  // One section for each place x; false after a failure. Without a load: nullptr.
  bool sections(view<const double> u, const finites_beam_load* load, view<const double> x,
                view<finites_beam_section> answers, outcome how = {}) const {
    const char* call = "finites_beam_sections";
    if (!detail::fits(how, call, "u", u, 12)) return false;
    if (!how.fits(answers.size() == x.size(), call, "answers", answers.size(), x.size())) return false;
    return how.of(
        finites_beam_sections(this, u.data(), load, static_cast<std::int32_t>(x.size()), x.data(), answers.data()),
        call);
  }
  finites_member_measures measure(outcome how = {}) const {
    return detail::struct_of<finites_member_measures>(
        how, "finites_beam_measure", [&](finites_member_measures* m) { return finites_beam_measure(this, m); });
  }

 private:
  matrix<12> mass_of(std::int32_t lumped, const outcome& how) const {
    return detail::matrix_of<12>(12, how, "finites_beam_mass",
                                 [&](double* M) { return finites_beam_mass(this, lumped, M); });
  }
};

// ---------------------------------------------------------------------------------------------- trusses, cables

class truss : public finites_truss {
 public:
  truss() : finites_truss() { finites_truss_init(this); }
  truss(const finites_truss& other) : finites_truss(other) {}
  truss(const point& first, const point& second) : truss() {
    const point ends[] = {first, second};
    detail::place(xyz, ends);
  }

  matrix<6> stiffness(outcome how = {}) const {
    return detail::matrix_of<6>(6, how, "finites_truss_stiffness",
                                [&](double* K) { return finites_truss_stiffness(this, K); });
  }
  matrix<6> mass(outcome how = {}) const { return mass_of(0, how); }
  matrix<6> lumped_mass(outcome how = {}) const { return mass_of(1, how); }
  matrix<6> geometric(view<const double> u, outcome how = {}) const {
    const char* call = "finites_truss_geometric";
    if (!detail::fits(how, call, "u", u, 6)) return {};
    return detail::matrix_of<6>(6, how, call, [&](double* KG) { return finites_truss_geometric(this, u.data(), KG); });
  }
  matrix<6> geometric_of_force(double axial, outcome how = {}) const {
    return detail::matrix_of<6>(6, how, "finites_truss_geometric_of_force",
                                [&](double* KG) { return finites_truss_geometric_of_force(this, axial, KG); });
  }
  vector<6> forces(view<const double> u, outcome how = {}) const {
    const char* call = "finites_truss_forces";
    if (!detail::fits(how, call, "u", u, 6)) return {};
    return detail::vector_of<6>(6, how, call, [&](double* F) { return finites_truss_forces(this, u.data(), F); });
  }
  // line may be empty.
  vector<6> loads(view<const double> line, double temperature = 0, outcome how = {}) const {
    const char* call = "finites_truss_loads";
    if (!detail::fits(how, call, "line", line, 3, true)) return {};
    return detail::vector_of<6>(6, how, call,
                                [&](double* F) { return finites_truss_loads(this, line.data(), temperature, F); });
  }
  double axial_force(view<const double> u, double temperature = 0, outcome how = {}) const {
    const char* call = "finites_truss_axial_force";
    if (!detail::fits(how, call, "u", u, 6)) return 0;
    return detail::struct_of<double>(
        how, call, [&](double* axial) { return finites_truss_axial_force(this, u.data(), temperature, axial); });
  }
  finites_member_measures measure(outcome how = {}) const {
    return detail::struct_of<finites_member_measures>(
        how, "finites_truss_measure", [&](finites_member_measures* m) { return finites_truss_measure(this, m); });
  }

 private:
  matrix<6> mass_of(std::int32_t lumped, const outcome& how) const {
    return detail::matrix_of<6>(6, how, "finites_truss_mass",
                                [&](double* M) { return finites_truss_mass(this, lumped, M); });
  }
};

class cable : public finites_cable {
 public:
  cable() : finites_cable() { finites_cable_init(this); }
  cable(const finites_cable& other) : finites_cable(other) {}
  cable(const point& first, const point& second) : cable() {
    const point ends[] = {first, second};
    detail::place(xyz, ends);
  }

  struct equilibrium {
    double F[6], tension[2];
  };
  equilibrium forces(outcome how = {}) const {
    return detail::struct_of<equilibrium>(how, "finites_cable_forces",
                                          [&](equilibrium* e) { return finites_cable_forces(this, e->F, e->tension); });
  }
  matrix<6> stiffness(outcome how = {}) const {
    return detail::matrix_of<6>(6, how, "finites_cable_stiffness",
                                [&](double* K) { return finites_cable_stiffness(this, K); });
  }
  // Where the points of unstressed coordinate s hang; tension may be empty. False after a failure.
  bool shape(view<const double> s, view<point> places, view<double> tension = {}, outcome how = {}) const {
    const char* call = "finites_cable_shape";
    if (!how.fits(places.size() == s.size(), call, "places", places.size(), s.size())) return false;
    if (!how.fits(tension.empty() || tension.size() == s.size(), call, "tension", tension.size(), s.size())) {
      return false;
    }
    static_assert(sizeof(point) == sizeof(double[3]), "points lie as an array of C");
    return how.of(finites_cable_shape(this, static_cast<std::int32_t>(s.size()), s.data(),
                                      reinterpret_cast<double(*)[3]>(places.data()), tension.data()),
                  call);
  }
};

// ---------------------------------------------------------------------------------------------- links, springs

class link : public finites_link {
 public:
  link() : finites_link() { finites_link_init(this); }
  link(const finites_link& other) : finites_link(other) {}
  link(const point& first, const point& second) : link() {
    const point ends[] = {first, second};
    detail::place(xyz, ends);
  }

  matrix<12> stiffness(outcome how = {}) const {
    return detail::matrix_of<12>(12, how, "finites_link_stiffness",
                                 [&](double* K) { return finites_link_stiffness(this, K); });
  }
  vector<12> forces(view<const double> u, outcome how = {}) const {
    const char* call = "finites_link_forces";
    if (!detail::fits(how, call, "u", u, 12)) return {};
    return detail::vector_of<12>(12, how, call, [&](double* F) { return finites_link_forces(this, u.data(), F); });
  }
};

class spring : public finites_spring {
 public:
  spring() : finites_spring() { finites_spring_init(this); }
  spring(const finites_spring& other) : finites_spring(other) {}

  matrix<12> stiffness(outcome how = {}) const {
    return detail::matrix_of<12>(12, how, "finites_spring_stiffness",
                                 [&](double* K) { return finites_spring_stiffness(this, K); });
  }
  vector<12> forces(view<const double> u, outcome how = {}) const {
    const char* call = "finites_spring_forces";
    if (!detail::fits(how, call, "u", u, 12)) return {};
    return detail::vector_of<12>(12, how, call, [&](double* F) { return finites_spring_forces(this, u.data(), F); });
  }
};

}  // namespace finites

#endif
