// element_cases.h: the kinds and sections of the tests of this folder.
#ifndef FINITES_TESTS_ELEMENT_CASES_H
#define FINITES_TESTS_ELEMENT_CASES_H

#include <string>
#include <vector>

#include "plate_model.h"
#include "random_shapes.h"

enum class section_form {
  isotropic,
  orthotropic,            // with an angle; E1 nu2 = E2 nu1
  orthotropic_arbitrary,  // with an angle; the section matrices are not symmetric
  composite,              // with an angle and correction factors
};

struct element_case {
  std::string name;
  int formulation;  // 1 thin shell, 2 membrane
  section_form form;
};

inline const std::vector<element_case>& element_cases() {
  static const std::vector<element_case> cases = {
      {"shell_isotropic", 1, section_form::isotropic},
      {"shell_orthotropic", 1, section_form::orthotropic},
      {"shell_orthotropic_arbitrary", 1, section_form::orthotropic_arbitrary},
      {"shell_composite", 1, section_form::composite},
      {"membrane_isotropic", 2, section_form::isotropic},
      {"membrane_orthotropic", 2, section_form::orthotropic},
      {"membrane_orthotropic_arbitrary", 2, section_form::orthotropic_arbitrary},
      {"membrane_composite", 2, section_form::composite},
  };
  return cases;
}

inline support::plate_description random_element(support::seeded_random& random, const element_case& c,
                                                 const std::vector<support::point>& nodes) {
  support::plate_description d;
  switch (c.form) {
    case section_form::isotropic: d = support::random_isotropic(random, nodes); break;
    case section_form::orthotropic:
      d = support::random_orthotropic(random, nodes, support::orthotropy::reciprocal);
      break;
    case section_form::orthotropic_arbitrary:
      d = support::random_orthotropic(random, nodes, support::orthotropy::arbitrary);
      break;
    case section_form::composite: d = support::random_composite(random, nodes, support::orthotropy::reciprocal); break;
  }
  d.formulation = c.formulation;
  return d;
}

inline support::plate_description random_element(support::seeded_random& random, const element_case& c) {
  return random_element(random, c, support::random_triangle(random));
}

#endif
