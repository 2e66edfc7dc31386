// layered_element_reference.h: the layered element once more: integrals over the surface of what the tangents integrate
// to through the thickness, in full matrices and extended precision. Strains of a point: membrane, curvature,
// transverse shear, which is zero on thin elements; degrees of freedom are those of the element, in its axes.
#ifndef FINITES_TESTS_LAYERED_ELEMENT_REFERENCE_H
#define FINITES_TESTS_LAYERED_ELEMENT_REFERENCE_H

#include "layered_model.h"
#include "reference_element.h"

// The matrices of a section. Thin elements have no shear in them.
struct layered_section {
  shell_reference::matrix A, B, D, S, T, H;  // membrane, coupling, bending, membrane-shear, bending-shear, shear

  shell_reference::matrix of_stiffness() const;  // 8 by 8, the lower blocks are transposes
  shell_reference::matrix of_forces() const;     // the coupling matrix as it is
};

layered_section section_of_point(const POINT_STATE_RECORD& s, int n, double t, int theory);
layered_section elastic_section(const layered_reference::material& m, double t, int theory);

struct layered_element_reference {
  layered_element_reference(const layered_subject& subject, const support::plate_description& d);

  shell_reference::matrix B(double xi, double eta) const;  // (8, 6 n)
  shell_reference::column strains(const shell_reference::column& u, int gp) const;
  // The strain of a thickness point at a height.
  layered_reference::vector5 strain_at(const shell_reference::column& strains, layered_reference::real z) const;

  shell_reference::matrix drilling() const;
  shell_reference::matrix stiffness(const std::vector<shell_reference::matrix>& C) const;
  // Those of the model's tangents as they stand, for u in element axes.
  shell_reference::matrix stiffness(layered_model& model) const;
  shell_reference::column forces(layered_model& model, const shell_reference::column& u) const;
  shell_reference::matrix elastic_stiffness() const;

  layered_subject s;
  support::plate_description d;
  layered_reference::material m;
  shell_reference::reference_element e;
  layered_reference::matrix3 axes;
};

// Displacements, 6 a node in global axes, whose strains are of the size `strain`.
std::vector<double> random_displacements(support::seeded_random& random, const support::plate_description& d,
                                         double strain);
// Those that bend and stretch the element evenly: membrane strains and curvatures, element axes, in global axes.
std::vector<double> even_strains(const layered_element_reference& r, const std::vector<double>& membrane,
                                 const std::vector<double>& curvature);
std::vector<double> sum(const std::vector<double>& a, const std::vector<double>& b, double factor = 1.0);

#endif
