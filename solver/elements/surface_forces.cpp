// surface_forces.cpp: integrals over faces and edges.
#include "elements/surface_forces.h"

#include <cmath>

#include "elements/element_faces.h"
#include "elements/load_case.h"
#include "model/vectors.h"

namespace solver {

namespace {

vector3 unit_vector(const vector3& v) { return scaled(v, 1 / length_of(v)); }

// Positive sides are pressed against the normal, faces of solids along theirs, which points inwards.
double sense_of_pressure(const element& e, int face) { return is_plate(e.type) && face == POSITIVE_SIDE ? -1 : 1; }

// Depth below the surface of the liquid by the depth of the reference; negative above the surface.
double relative_depth(const element_load& card, double z) {
  return (card.origin[0] - z) / (card.origin[0] - card.origin[1]);
}

class hydrostatic {
 public:
  hydrostatic(const model& m, const element_load& card, std::vector<double>& nodal_load)
      : model_(m),
        card_(card),
        element_(m.elements[card.element]),
        nodes_(nodes_of_face(element_, card.face)),
        nodal_load_(nodal_load) {}

  void add();

 private:
  struct natural {
    double xi, eta, depth;
  };

  void press(const face_point& p, double weight);
  natural at(double xi, double eta) const;
  void press_triangle(const natural& a, const natural& b, const natural& c);
  void press_wet_part(const std::array<natural, 3>& corners);
  void press_cells();

  const model& model_;
  const element_load& card_;
  const element& element_;
  const std::vector<int> nodes_;
  std::vector<double>& nodal_load_;
};

void hydrostatic::press(const face_point& p, double weight) {
  const double pressure = card_.magnitude * relative_depth(card_, p.place[2]);
  const double factor = weight * pressure * sense_of_pressure(element_, card_.face);
  for (std::size_t a = 0; a < nodes_.size(); ++a) {
    add_nodal_force(nodal_load_, nodes_[a], 0, factor * p.share[a], p.area);
  }
}

hydrostatic::natural hydrostatic::at(double xi, double eta) const {
  return {xi, eta, relative_depth(card_, face_point_at(model_, element_, card_.face, xi, eta).place[2])};
}

// Gauss points of a square whose one side shrinks to corner a: exact to the fourth degree.
void hydrostatic::press_triangle(const natural& a, const natural& b, const natural& c) {
  constexpr double POINT[3] = {0.5 - 0.38729833462074170, 0.5, 0.5 + 0.38729833462074170};  // sqrt(3/5) / 2
  constexpr double WEIGHT[3] = {5.0 / 18, 8.0 / 18, 5.0 / 18};
  const double area = (b.xi - a.xi) * (c.eta - a.eta) - (c.xi - a.xi) * (b.eta - a.eta);
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < 3; ++j) {
      const double away = POINT[i], to_c = away * POINT[j], to_b = away - to_c;
      const double xi = a.xi + to_b * (b.xi - a.xi) + to_c * (c.xi - a.xi);
      const double eta = a.eta + to_b * (b.eta - a.eta) + to_c * (c.eta - a.eta);
      press(face_point_at(model_, element_, card_.face, xi, eta), WEIGHT[i] * WEIGHT[j] * away * area);
    }
  }
}

// The surface of the liquid cuts the sides where their depths say, as on a straight line.
void hydrostatic::press_wet_part(const std::array<natural, 3>& corners) {
  std::vector<natural> wet;
  for (std::size_t i = 0; i < 3; ++i) {
    const natural &a = corners[i], &b = corners[(i + 1) % 3];
    if (a.depth >= 0) wet.push_back(a);
    if ((a.depth < 0) == (b.depth < 0)) continue;
    const double share = a.depth / (a.depth - b.depth);
    wet.push_back(at(a.xi + share * (b.xi - a.xi), a.eta + share * (b.eta - a.eta)));
  }
  for (std::size_t i = 2; i < wet.size(); ++i) press_triangle(wet[0], wet[i - 1], wet[i]);
}

// A quadrilateral in cells, in which a surface that cuts it along a curve is nearly straight; of a parallelogram it is.
void hydrostatic::press_cells() {
  if (nodes_.size() == 3) return press_wet_part({at(0, 0), at(1, 0), at(0, 1)});
  constexpr int CELLS = 4;
  const auto place = [](int i) { return -1 + 2.0 * i / CELLS; };
  for (int i = 0; i < CELLS; ++i) {
    for (int j = 0; j < CELLS; ++j) {
      const natural first = at(place(i), place(j)), opposite = at(place(i + 1), place(j + 1));
      press_wet_part({first, at(place(i + 1), place(j)), opposite});
      press_wet_part({first, opposite, at(place(i), place(j + 1))});
    }
  }
}

void hydrostatic::add() {
  std::size_t wet = 0;
  for (const int n : nodes_) wet += relative_depth(card_, model_.nodes[n].xyz[2]) >= 0 ? 1 : 0;
  if (wet == 0) return;
  if (wet < nodes_.size()) return press_cells();
  for (const face_point& p : points_of_face(model_, element_, card_.face)) press(p, 1);
}

// The part of a direction in a face.
vector3 projection(const vector3& direction, const vector3& area) {
  const vector3 n = unit_vector(area);
  const double across = dot(direction, n);
  vector3 t = direction;
  for (std::size_t i = 0; i < 3; ++i) t[i] -= across * n[i];
  return t;
}

void add_traction(const model& m, const element_load& card, std::vector<double>& nodal_load) {
  const element& e = m.elements[card.element];
  const std::vector<int> nodes = nodes_of_face(e, card.face);
  for (const face_point& p : points_of_face(m, e, card.face)) {
    const bool shear = card.kind == element_load_kind::SHEAR_TRACTION;
    const vector3 direction = shear ? unit_vector(projection(card.direction, p.area)) : card.direction;
    const double force = card.magnitude * length_of(p.area);
    for (std::size_t a = 0; a < nodes.size(); ++a) {
      add_nodal_force(nodal_load, nodes[a], 0, p.share[a] * force, direction);
    }
  }
}

// Half of it to each node.
void add_edge_load(const model& m, const element_load& card, std::vector<double>& nodal_load) {
  const element& e = m.elements[card.element];
  const edge_axes axes = axes_of_edge(m, e, card.face);
  const double half = card.magnitude * axes.length / 2;
  for (const int n : nodes_of_face(e, card.face)) {
    switch (card.kind) {
      case element_load_kind::EDGE_NORMAL: add_nodal_force(nodal_load, n, 0, half, axes.inward); break;
      case element_load_kind::EDGE_SHEAR: add_nodal_force(nodal_load, n, 0, half, axes.along); break;
      case element_load_kind::EDGE_TRANSVERSE: add_nodal_force(nodal_load, n, 0, -half, axes.normal); break;
      default: add_nodal_force(nodal_load, n, 3, half, axes.along);
    }
  }
}

}  // namespace

edge_axes axes_of_edge(const model& m, const element& e, int face) {
  const auto x = [&](std::size_t place) -> const vector3& { return m.nodes[e.nodes[place]].xyz; };
  const std::vector<int> nodes = nodes_of_face(e, face);
  const vector3 side = difference(m.nodes[nodes[0]].xyz, m.nodes[nodes[1]].xyz);
  const vector3 area = e.nodes.size() == 3 ? cross(difference(x(0), x(1)), difference(x(0), x(2)))
                                           : cross(difference(x(0), x(2)), difference(x(1), x(3)));
  edge_axes axes;
  axes.length = length_of(side);
  axes.along = unit_vector(side);
  axes.inward = unit_vector(cross(area, axes.along));
  axes.normal = cross(axes.along, axes.inward);
  return axes;
}

bool has_projection(const model& m, const element& e, int face, const std::array<double, 3>& direction) {
  constexpr double PARALLEL = 1e-6;  // to the normal
  for (const face_point& p : points_of_face(m, e, face)) {
    if (!(length_of(projection(direction, p.area)) > PARALLEL)) return false;
  }
  return true;
}

void add_surface_forces(const model& m, const element_load& card, std::vector<double>& nodal_load) {
  switch (card.kind) {
    case element_load_kind::HYDROSTATIC: return hydrostatic(m, card, nodal_load).add();
    case element_load_kind::TRACTION:
    case element_load_kind::SHEAR_TRACTION: return add_traction(m, card, nodal_load);
    default: return add_edge_load(m, card, nodal_load);
  }
}

}  // namespace solver
