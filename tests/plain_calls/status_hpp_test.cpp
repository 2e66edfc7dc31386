// status_hpp_test.cpp: every status that a call of the C++ layer can meet, as an exception with its sentence and as a
// value. (FINITES_MEMORY needs a machine without memory.)
#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "elements_hpp.h"

using namespace hpp_test;

namespace {

// One call with something wrong; how: what becomes of it.
struct fault {
  finites_status status;
  std::function<void(finites::outcome how)> call;
};

template <class SPOIL>
fault of_plate(finites_status status, const SPOIL& spoil) {
  finites::plate plate = rectangle();
  spoil(plate);
  return {status, [plate](finites::outcome how) { (void)plate.stiffness(how); }};
}

template <class SPOIL>
fault of_beam(finites_status status, const SPOIL& spoil) {
  finites::beam beam = cantilever();
  spoil(beam);
  return {status, [beam](finites::outcome how) { (void)beam.stiffness(how); }};
}

template <class SPOIL>
fault of_cable(finites_status status, const SPOIL& spoil) {
  finites::cable cable({0, 0, 0}, {10, 0, 0});
  cable.E = young;
  cable.area = 1e-4;
  cable.length = 10.5;
  cable.load[2] = -8;
  spoil(cable);
  return {status, [cable](finites::outcome how) { (void)cable.forces(how); }};
}

fault of_state(finites_status status, const finites::plate& plate, const finites_plastic& plastic) {
  return {status, [=](finites::outcome how) { const finites::plate_state state(plate, plastic, how); }};
}

std::vector<fault> faults() {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  finites::plate membrane = rectangle();
  membrane.theory = FINITES_MEMBRANE;
  finites::link link({0, 0, 0}, {2, 0, 0});
  link.k[1] = -1;
  std::vector<fault> all = {
      of_plate(FINITES_NAN, [=](finites::plate& p) { p.E = nan; }),
      of_plate(FINITES_RANGE, [](finites::plate& p) { p.thickness = 2e30; }),
      of_plate(FINITES_NODES, [](finites::plate& p) { p.nodes = 5; }),
      of_plate(FINITES_BAD_CODE, [](finites::plate& p) { p.theory = 7; }),
      of_plate(FINITES_COINCIDENT, [](finites::plate& p) { p.xyz[1][0] = 0; }),
      of_plate(FINITES_DEGENERATE, [](finites::plate& p) { p.xyz[2][0] = p.xyz[2][1] = 0.1; }),
      of_plate(FINITES_THICKNESS, [](finites::plate& p) { p.thickness = 0; }),
      of_plate(FINITES_MODULUS, [](finites::plate& p) { p.E = -1; }),
      of_plate(FINITES_POISSON, [](finites::plate& p) { p.nu = 0.6; }),
      of_plate(FINITES_FACTOR, [](finites::plate& p) { p.bending_factor = -1; }),
      of_plate(FINITES_DENSITY, [](finites::plate& p) { p.density = -1; }),
      of_beam(FINITES_ORIENTATION, [](finites::beam& b) { b.up[0] = 1; }),
      of_beam(FINITES_SECTION, [](finites::beam& b) { b.J = 0; }),
      of_beam(FINITES_FIXITY, [](finites::beam& b) { b.fixity_z[1] = 1.5; }),
      of_beam(FINITES_RELEASE, [](finites::beam& b) { b.release_y = 3; }),
      of_cable(FINITES_LENGTH, [](finites::cable& c) { c.length = 0; }),
      of_cable(FINITES_RESULT, [](finites::cable& c) { c.E = c.area = 1e-200; }),
      of_cable(FINITES_SLACK, [](finites::cable& c) { c.load[2] = 0; }),
      of_cable(FINITES_NO_CONVERGENCE,
               [](finites::cable& c) {
                 c.E = c.area = 1e30;
                 c.length = 1e-300;
               }),
      of_state(FINITES_STATE, membrane, {FINITES_WHOLE_SECTION, 0, 235e6, 0}),
      of_state(FINITES_YIELD, rectangle(), {FINITES_LAYERED, 5, 0, 0}),
      of_state(FINITES_HARDENING, rectangle(), {FINITES_LAYERED, 5, 235e6, young}),
      of_state(FINITES_LAYERS, rectangle(), {FINITES_LAYERED, 4, 235e6, 0}),
      {FINITES_MECHANISM,
       [](finites::outcome how) {
         finites::beam loose = cantilever();
         loose.fixity_z[0] = loose.fixity_z[1] = 0;
         loose.release_y = 1;
         finites_beam_load load{};
         load.line_local[1] = 1;
         (void)loose.loads(load, how);
       }},
      {FINITES_STIFFNESS, [=](finites::outcome how) { (void)link.stiffness(how); }},
  };
  return all;
}

}  // namespace

TEST(StatusHpp, EachIsThrownWithItsSentenceAndHandedOver) {
  for (const fault& f : faults()) {
    SCOPED_TRACE(f.status);
    const finites::error thrown = failure_of([&] { f.call({}); });
    EXPECT_EQ(thrown.status(), f.status);
    EXPECT_NE(std::string(thrown.what()).find(finites_text(f.status)), std::string::npos) << thrown.what();
    finites_status status = FINITES_OK;
    f.call(status);
    EXPECT_EQ(status, f.status);
  }
}
