// elements.hpp: the plain calls of elements.h for C++17, as methods of values.
//
//     finites::plate plate({{0, 0, 0}, {2, 0, 0}, {2, 1, 0}, {0, 1, 0}});  // a thick quadrilateral
//     plate.thickness = 0.02, plate.E = 210e9, plate.nu = 0.3;
//     const auto K = plate.stiffness();                                     // 24 by 24: K(i, j), from 0
//
// An element is the struct of elements.h, whose fields it has, filled by its init function; elements.h says what each
// field and each call means. Arguments are views of anything contiguous, answers are vectors and matrices inside the
// object: nothing is allocated. A failure throws finites::error, or fills a finites_status that is given as the last
// argument (`outcome` of elements_values.hpp). Beams and other members, states and batches are in headers of their own,
// which this one includes.
#ifndef FINITES_ELEMENTS_HPP
#define FINITES_ELEMENTS_HPP

#include "finites/elements.h"
#include "finites/elements_batches.hpp"
#include "finites/elements_members.hpp"
#include "finites/elements_states.hpp"
#include "finites/elements_values.hpp"

namespace finites {

// ---------------------------------------------------------------------------------------------- plates and shells

class plate : public finites_plate {
 public:
  plate() : finites_plate() { finites_plate_init(this); }
  plate(const finites_plate& other) : finites_plate(other) {}
  // Three or four nodes, a thick shell.
  explicit plate(view<const point> corners) : plate() {
    nodes = static_cast<std::int32_t>(corners.size());
    detail::place(xyz, corners);
  }

  int order() const { return nodes == 3 ? 18 : 24; }

  matrix<24> stiffness(outcome how = {}) const {
    return detail::matrix_of<24>(order(), how, "finites_plate_stiffness",
                                 [&](double* K) { return finites_plate_stiffness(this, K); });
  }
  matrix<24> mass(outcome how = {}) const {
    return detail::matrix_of<24>(order(), how, "finites_plate_mass",
                                 [&](double* M) { return finites_plate_mass(this, M); });
  }
  matrix<24> geometric(view<const double> u, outcome how = {}) const {
    const char* call = "finites_plate_geometric";
    if (!detail::fits(how, call, "u", u, order())) return {};
    return detail::matrix_of<24>(order(), how, call,
                                 [&](double* KG) { return finites_plate_geometric(this, u.data(), KG); });
  }
  matrix<24> geometric_of_forces(const double (&forces)[4][6], outcome how = {}) const {
    return detail::matrix_of<24>(order(), how, "finites_plate_geometric_of_forces",
                                 [&](double* KG) { return finites_plate_geometric_of_forces(this, forces, KG); });
  }
  vector<24> forces(view<const double> u, outcome how = {}) const {
    const char* call = "finites_plate_forces";
    if (!detail::fits(how, call, "u", u, order())) return {};
    return detail::vector_of<24>(order(), how, call,
                                 [&](double* F) { return finites_plate_forces(this, u.data(), F); });
  }

  // Either of global and local may be left empty.
  vector<24> surface_load(view<const double> global, view<const double> local = {}, outcome how = {}) const {
    const char* call = "finites_plate_surface_load";
    if (!detail::fits(how, call, "global", global, 3, true) || !detail::fits(how, call, "local", local, 3, true)) {
      return {};
    }
    return detail::vector_of<24>(order(), how, call, [&](double* F) {
      return finites_plate_surface_load(this, global.data(), local.data(), F);
    });
  }
  vector<24> body_load(view<const double> load, outcome how = {}) const {
    const char* call = "finites_plate_body_load";
    if (!detail::fits(how, call, "load", load, 3)) return {};
    return detail::vector_of<24>(order(), how, call,
                                 [&](double* F) { return finites_plate_body_load(this, load.data(), F); });
  }
  vector<24> temperature_load(double change, double difference = 0, outcome how = {}) const {
    return detail::vector_of<24>(order(), how, "finites_plate_temperature_load", [&](double* F) {
      return finites_plate_temperature_load(this, change, difference, F);
    });
  }
  vector<24> point_load(view<const double> at, view<const double> global, view<const double> local = {},
                        outcome how = {}) const {
    const char* call = "finites_plate_point_load";
    if (!detail::fits(how, call, "at", at, 3) || !detail::fits(how, call, "global", global, 3, true) ||
        !detail::fits(how, call, "local", local, 3, true)) {
      return {};
    }
    return detail::vector_of<24>(order(), how, call, [&](double* F) {
      return finites_plate_point_load(this, at.data(), global.data(), local.data(), F);
    });
  }

  finites_plate_measures measure(outcome how = {}) const {
    return detail::struct_of<finites_plate_measures>(
        how, "finites_plate_measure", [&](finites_plate_measures* m) { return finites_plate_measure(this, m); });
  }
  finites_location locate(view<const double> at, outcome how = {}) const {
    const char* call = "finites_plate_locate";
    if (!detail::fits(how, call, "at", at, 3)) return {};
    return detail::struct_of<finites_location>(
        how, call, [&](finites_location* location) { return finites_plate_locate(this, at.data(), location); });
  }
  // temperature: change and difference, or empty.
  finites_plate_results result(view<const double> u, view<const double> temperature = {}, outcome how = {}) const {
    const char* call = "finites_plate_result";
    if (!detail::fits(how, call, "u", u, order()) || !detail::fits(how, call, "temperature", temperature, 2, true)) {
      return {};
    }
    return detail::struct_of<finites_plate_results>(how, call, [&](finites_plate_results* results) {
      return finites_plate_result(this, u.data(), temperature.data(), results);
    });
  }
};

// ---------------------------------------------------------------------------------------------- solids

class solid : public finites_solid {
 public:
  solid() : finites_solid() { finites_solid_init(this); }
  solid(const finites_solid& other) : finites_solid(other) {}
  explicit solid(view<const point> corners) : solid() {
    nodes = static_cast<std::int32_t>(corners.size());
    detail::place(xyz, corners);
  }

  int order() const { return nodes == 4 || nodes == 6 ? 3 * nodes : 24; }

  matrix<24> stiffness(outcome how = {}) const {
    return detail::matrix_of<24>(order(), how, "finites_solid_stiffness",
                                 [&](double* K) { return finites_solid_stiffness(this, K); });
  }
  matrix<24> mass(outcome how = {}) const {
    return detail::matrix_of<24>(order(), how, "finites_solid_mass",
                                 [&](double* M) { return finites_solid_mass(this, M); });
  }
  matrix<24> geometric(view<const double> u, outcome how = {}) const {
    const char* call = "finites_solid_geometric";
    if (!detail::fits(how, call, "u", u, order())) return {};
    return detail::matrix_of<24>(order(), how, call,
                                 [&](double* KG) { return finites_solid_geometric(this, u.data(), KG); });
  }
  // stress: six of each integration point, one point after the other.
  matrix<24> geometric_of_stresses(view<const double> stress, outcome how = {}) const {
    const char* call = "finites_solid_geometric_of_stresses";
    if (!detail::fits(how, call, "stress", stress, 6 * (nodes == 4 ? 1 : nodes == 6 ? 6 : 8))) return {};
    return detail::matrix_of<24>(order(), how, call, [&](double* KG) {
      return finites_solid_geometric_of_stresses(this, reinterpret_cast<const double(*)[6]>(stress.data()), KG);
    });
  }
  vector<24> forces(view<const double> u, outcome how = {}) const {
    const char* call = "finites_solid_forces";
    if (!detail::fits(how, call, "u", u, order())) return {};
    return detail::vector_of<24>(order(), how, call,
                                 [&](double* F) { return finites_solid_forces(this, u.data(), F); });
  }
  vector<24> body_load(view<const double> load, outcome how = {}) const {
    const char* call = "finites_solid_body_load";
    if (!detail::fits(how, call, "load", load, 3)) return {};
    return detail::vector_of<24>(order(), how, call,
                                 [&](double* F) { return finites_solid_body_load(this, load.data(), F); });
  }
  vector<24> temperature_load(double change, outcome how = {}) const {
    return detail::vector_of<24>(order(), how, "finites_solid_temperature_load",
                                 [&](double* F) { return finites_solid_temperature_load(this, change, F); });
  }
  // traction may be empty.
  vector<24> face_load(std::int32_t face, view<const double> traction, double pressure = 0, outcome how = {}) const {
    const char* call = "finites_solid_face_load";
    if (!detail::fits(how, call, "traction", traction, 3, true)) return {};
    return detail::vector_of<24>(order(), how, call, [&](double* F) {
      return finites_solid_face_load(this, face, traction.data(), pressure, F);
    });
  }
  finites_solid_measures measure(outcome how = {}) const {
    return detail::struct_of<finites_solid_measures>(
        how, "finites_solid_measure", [&](finites_solid_measures* m) { return finites_solid_measure(this, m); });
  }
  finites_solid_results result(view<const double> u, double temperature = 0, outcome how = {}) const {
    const char* call = "finites_solid_result";
    if (!detail::fits(how, call, "u", u, order())) return {};
    return detail::struct_of<finites_solid_results>(how, call, [&](finites_solid_results* results) {
      return finites_solid_result(this, u.data(), temperature, results);
    });
  }
};

}  // namespace finites

#endif
