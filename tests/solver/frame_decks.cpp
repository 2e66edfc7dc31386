// frame_decks.cpp: frames from deck texts.
#include "frame_decks.h"

#include <cstdio>

namespace frame_test {

std::string deck_folder() { return FINITES_DECKS; }

solver::model deck(const std::string& name) { return solver::read_deck(deck_folder() + "/" + name); }

std::string number(double value) {
  char text[40];
  std::snprintf(text, sizeof text, "%.17g", value);
  return text;
}

std::string straight_member::deck(const std::string& ends, const std::string& supports, const std::string& step,
                                  const std::string& step_flags) const {
  std::string text = "*NODE, NSET=ALL\n";
  for (int n = 0; n <= elements; ++n) text += std::to_string(n + 1) + ", " + number(length * n / elements) + ", 0, 0\n";
  text += std::string("*ELEMENT, TYPE=") + (shear_y > 0 ? "B31" : "B33") + ", ELSET=MEMBER\n";
  for (int e = 1; e <= elements; ++e)
    text += std::to_string(e) + ", " + std::to_string(e) + ", " + std::to_string(e + 1) + "\n";
  text += "*MATERIAL, NAME=M\n*ELASTIC\n" + number(E) + ", " + number(nu) + "\n*DENSITY\n" + number(density) +
          "\n*EXPANSION\n1.2E-5\n*BEAM GENERAL SECTION, ELSET=MEMBER, MATERIAL=M\n" + number(area) + ", " +
          number(inertia_xz) + ", 0, " + number(inertia_xy) + ", " + number(torsion) + "\n0, 1, 0\n";
  if (shear_y > 0) text += "*TRANSVERSE SHEAR STIFFNESS\n" + number(shear_z) + ", " + number(shear_y) + "\n";
  return text + ends + "*BOUNDARY\n" + supports + "*STEP" + step_flags + "\n" + step + "*END STEP\n";
}

solver::model read(const std::string& text) { return solver::read_deck_text(text, "frame.inp"); }

}  // namespace frame_test
