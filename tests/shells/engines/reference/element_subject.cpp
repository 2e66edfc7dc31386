// element_subject.cpp: the table, and random elements of its lines.
#include "element_subject.h"

namespace {

struct kind_of_element {
  const char* name;
  int kind, nodes, formulation;
};
constexpr kind_of_element KINDS[] = {{"tri_thin", 10, 3, 1},  {"tri_membrane", 12, 3, 2},  {"tri_thick", 11, 3, 0},
                                     {"quad_thin", 20, 4, 1}, {"quad_membrane", 22, 4, 2}, {"quad_thick", 21, 4, 0}};

struct kind_of_section {
  const char* name;
  section_kind form;
};
constexpr kind_of_section SECTIONS[] = {{"isotropic", section_kind::isotropic},
                                        {"orthotropic", section_kind::orthotropic},
                                        {"orthotropic_arbitrary", section_kind::orthotropic_arbitrary},
                                        {"composite", section_kind::composite}};

}  // namespace

std::vector<element_subject> subjects(bool with_listed_factors) {
  std::vector<element_subject> all;
  for (const kind_of_element& k : KINDS) {
    for (const kind_of_section& s : SECTIONS) {
      all.push_back({std::string(k.name) + "_" + s.name, k.kind, k.nodes, k.formulation, s.form, false});
    }
  }
  if (with_listed_factors) {
    for (const kind_of_element& k : KINDS) {
      all.push_back({std::string(k.name) + "_factors", k.kind, k.nodes, k.formulation, section_kind::isotropic, true});
    }
  }
  return all;
}

std::vector<element_subject> subjects_of(int kind) {
  std::vector<element_subject> some;
  for (const element_subject& s : subjects()) {
    if (s.kind == kind) some.push_back(s);
  }
  return some;
}

element_subject isotropic_subject(int kind) { return subjects_of(kind).front(); }

std::vector<support::point> random_shape(support::seeded_random& random, const element_subject& s) {
  return s.nodes == 3 ? support::random_triangle(random) : support::random_quadrilateral(random);
}

support::plate_description random_element(support::seeded_random& random, const element_subject& s,
                                          const std::vector<support::point>& nodes) {
  using support::orthotropy;
  support::plate_description d;
  switch (s.form) {
    case section_kind::isotropic: d = support::random_isotropic(random, nodes); break;
    case section_kind::orthotropic: d = support::random_orthotropic(random, nodes, orthotropy::reciprocal); break;
    case section_kind::orthotropic_arbitrary:
      d = support::random_orthotropic(random, nodes, orthotropy::arbitrary);
      break;
    case section_kind::composite: d = support::random_composite(random, nodes, orthotropy::reciprocal); break;
  }
  d.formulation = s.formulation;
  if (s.listed_factors) {
    d.material.E1 = static_cast<float>(d.young);
    d.material.NU1 = static_cast<float>(d.poisson);
    d.material.G12 = static_cast<float>(d.young / (2.0 * (1.0 + d.poisson)));
    d.material.ALPHA1 = static_cast<float>(d.expansion);
    d.ortho_angle = random.uniform(-1.5, 1.5);
  }
  return d;
}

support::plate_description random_element(support::seeded_random& random, const element_subject& s) {
  return random_element(random, s, random_shape(random, s));
}
