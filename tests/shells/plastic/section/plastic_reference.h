// plastic_reference.h: an element of the whole-section model and its state in full matrices, extended precision.
#ifndef FINITES_TESTS_PLASTIC_REFERENCE_H
#define FINITES_TESTS_PLASTIC_REFERENCE_H

#include <array>

#include "plastic_model.h"
#include "reference_element.h"
#include "section_reference.h"

// What is kept of a point.
struct reference_point {
  section_reference::point_start start;
  shell_reference::column ep = shell_reference::column::Zero(12), ep_inc = shell_reference::column::Zero(12);
  shell_reference::real ebar = 0, curvature = 0, sign = 1;
  shell_reference::matrix tangent;  // 8 by 8
};

struct plastic_reference {
  plastic_reference(const support::plate_description& d, const plastic_kind& kind);

  // Rows: strains of a point; columns: the degrees of freedom of the element in its axes.
  shell_reference::matrix B(double xi, double eta) const;
  shell_reference::matrix C(int point) const;  // of the width
  shell_reference::matrix stiffness() const;   // element axes

  // Internal forces, element axes, of u; the material follows u + us. With commit the points keep their new state.
  shell_reference::column forces(const shell_reference::column& u, const shell_reference::column& us, bool commit);
  void promote();

  // Displacements in global axes whose strains reach `level` times first yielding of the whole section somewhere.
  std::vector<double> displacements(support::seeded_random& random, double level) const;

  plastic_kind kind;
  shell_reference::reference_element e;
  section_reference::plate p;
  shell_reference::matrix D;  // 8 by 8; without bending and shear of a membrane
  std::array<reference_point, 4> points;
  std::array<section_reference::point_answer, 4> last;  // of the last forces
};

// Each field of the record against the points; the tangent's zeros of a thin element too.
void expect_state(const PLATE_STATE_RECORD& record, const plastic_reference& reference, const std::string& where);

// Scales of what a plate answers.
double stiffness_scale(const plastic_reference& reference);
double force_scale(const plastic_reference& reference, const std::vector<double>& u);

#endif
