// member_field.h: what happens between the ends of a member: section forces, displacements and rotations as functions
// of the place, exact for loads that are uniform or linear along the member.
//
// Section forces are what the part of the member beyond a section exerts on the part before it, in local axes: N, Vy,
// Vz and T, My, Mz. They are the end forces at the second end and minus the end forces at the first. So N and T are
// positive in tension and by the right hand about x; Mz = EI v'' is positive with tension on the side of -y, My with
// tension on the side of +z. With the loads q per length
//
//     N' = -qx,   Vy' = -qy,   Vz' = -qz,   Mz' = -Vy,   My' = Vz.
//
// The displacements solve the beam equation between the displaced ends of the member, which are not always those of its
// nodes: rotations differ at pins, springs and hinges, translations at releases of forces.
#ifndef FINITES_SOLVER_MEMBER_FIELD_H
#define FINITES_SOLVER_MEMBER_FIELD_H

#include <array>
#include <cstddef>
#include <optional>
#include <vector>

#include "elements/cable_field.h"
#include "elements/library_model.h"
#include "elements/polynomial.h"
#include "model/model.h"

namespace solver {

constexpr std::size_t SECTION_FORCES = 6;
constexpr std::array<const char*, SECTION_FORCES> SECTION_FORCE_NAMES = {"N", "Vy", "Vz", "T", "My", "Mz"};

struct member_field {
  std::size_t element = 0;                  // index into model::elements
  double length = 0;                        // of a cable the unstressed one
  double before = 0;                        // length of the parts of the same element of the deck before it (parts.h)
  std::array<double, 3> first{}, second{};  // the nodes where the deck puts them
  MATRIX<3, 3> axes{};                      // rows: local x, y, z
  // Functions of xi = x / length, local axes.
  std::array<quintic, SECTION_FORCES> force{};
  std::array<quintic, 3> displacement{}, rotation{};
  std::optional<catenary> hanging;  // of a cable, whose functions are no polynomials; those above are 0
};

// Beams, trusses and cables have fields; springs and links have nothing between their ends.
bool has_field(const model& m, const element& e);

// What is known of a member besides its loads. `flow`: plastic deformations at its ends, in the order of the end
// forces. `axial_force`: that of the geometric stiffness in `forces`; 0 in first order. A beam with it takes the moment
// of the force about its own displaced axis along with the transverse loads.
struct member_state {
  end_forces forces{}, flow{};
  double axial_force = 0;
};

member_field field_of(const model& m, library_model& library, std::size_t e, const element_vector& displacements,
                      const distributed_load& load, const member_state& state);

// One section of a member; global axes, its forces in local ones.
struct station {
  double distance =
      0;  // from the first end of the element of the deck along local x; of a cable along its unstressed length
  std::array<double, 3> place{}, displacement{}, rotation{};
  std::array<double, SECTION_FORCES> force{};
};

station station_at(const member_field& f, double xi);

// Equal distances from end to end. A truss is straight: its two ends determine it.
constexpr int USUAL_STATIONS = 11, MOST_STATIONS = 1001;
std::vector<station> stations_of(const model& m, const member_field& f, int count);

value_range range_of_force(const member_field& f, std::size_t force);
// The largest displacement and rotation of a beam or truss.
extreme largest_displacement(const member_field& f);
extreme largest_rotation(const member_field& f);

}  // namespace solver

#endif
