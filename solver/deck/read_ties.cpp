// read_ties.cpp: *TIE: nodes of one surface follow the faces of another, u = sum N u of the face.
//
// Where a node stands off its face by an arm d, the rotation of the face turns the arm: that of its own nodes on
// shells, sum N theta, and on solids and membranes that of the rigid body which fits the nodes of the face best.
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <set>

#include "deck/conditions.h"
#include "deck/fields.h"
#include "deck/keywords.h"
#include "deck/surfaces.h"
#include "elements/element_faces.h"

namespace solver::deck {

namespace {

constexpr double OF_SIZE = 0.05;  // the default POSITION TOLERANCE, by the mean size of the faces
constexpr double NOTHING = 1e-12;
constexpr double AN_ARM = 1e-9;  // by the size of the face: shorter arms are rounding

struct tie_face {
  std::vector<int> nodes;
  bool shell = false;
  vector3 centre{};
  double radius = 0, size = 0;
};

// The point of a face next to a place.
struct foot {
  std::size_t face = 0;
  std::vector<double> N;
  vector3 arm{};
  double distance = std::numeric_limits<double>::infinity();
};

tie_face face_of(const model& m, const surface_face& f) {
  const element& e = m.elements[f.element];
  tie_face face;
  face.nodes = nodes_of_face(e, f.face);
  face.shell = is_shell(e.type);
  const double count = number_of(face.nodes.size());
  for (const int n : face.nodes) {
    for (std::size_t i = 0; i < 3; ++i) face.centre[i] += m.nodes[n].xyz[i] / count;
  }
  for (std::size_t n = 0; n < face.nodes.size(); ++n) {
    const vector3& place = m.nodes[face.nodes[n]].xyz;
    const vector3& next = m.nodes[face.nodes[(n + 1) % face.nodes.size()]].xyz;
    face.radius = std::fmax(face.radius, length_of(difference(face.centre, place)));
    face.size = std::fmax(face.size, length_of(difference(place, next)));
  }
  return face;
}

vector3 point_of(const model& m, const tie_face& face, const std::vector<double>& N) {
  vector3 point{};
  for (std::size_t n = 0; n < N.size(); ++n) {
    for (std::size_t i = 0; i < 3; ++i) point[i] += N[n] * m.nodes[face.nodes[n]].xyz[i];
  }
  return point;
}

// On a side between two nodes; t from the first to the second.
std::vector<double> on_line(const vector3& a, const vector3& b, const vector3& place) {
  const vector3 along = difference(a, b);
  const double t = std::clamp(dot(along, difference(a, place)) / dot(along, along), 0.0, 1.0);
  return {1 - t, t};
}

std::vector<double> on_triangle(const std::array<vector3, 3>& p, const vector3& place) {
  const vector3 normal = cross(difference(p[0], p[1]), difference(p[0], p[2]));
  const double area = dot(normal, normal);
  std::vector<double> N(3);
  bool inside = true;
  for (std::size_t i = 0; i < 3; ++i) {
    const vector3 &a = p[(i + 1) % 3], &b = p[(i + 2) % 3];
    N[i] = dot(cross(difference(place, a), difference(place, b)), normal) / area;
    inside = inside && N[i] >= 0;
  }
  if (inside) return N;
  double nearest = std::numeric_limits<double>::infinity();
  for (std::size_t i = 0; i < 3; ++i) {
    const std::size_t j = (i + 1) % 3;
    const std::vector<double> side = on_line(p[i], p[j], place);
    vector3 off{};
    for (std::size_t k = 0; k < 3; ++k) off[k] = place[k] - side[0] * p[i][k] - side[1] * p[j][k];
    if (!(dot(off, off) < nearest)) continue;
    nearest = dot(off, off);
    N = {0, 0, 0};
    N[i] = side[0];
    N[j] = side[1];
  }
  return N;
}

std::vector<double> bilinear(double xi, double eta) {
  return {(1 - xi) * (1 - eta) / 4, (1 + xi) * (1 - eta) / 4, (1 + xi) * (1 + eta) / 4, (1 - xi) * (1 + eta) / 4};
}

// Gauss and Newton's iteration to the point whose tangents are square to the arm, kept inside the face.
std::vector<double> on_quadrilateral(const std::array<vector3, 4>& p, const vector3& place) {
  constexpr int ITERATIONS = 30;
  double xi = 0, eta = 0;
  for (int k = 0; k < ITERATIONS; ++k) {
    vector3 g1{}, g2{}, arm = place;
    const std::vector<double> N = bilinear(xi, eta);
    for (std::size_t i = 0; i < 3; ++i) {
      g1[i] = ((p[1][i] - p[0][i]) * (1 - eta) + (p[2][i] - p[3][i]) * (1 + eta)) / 4;
      g2[i] = ((p[3][i] - p[0][i]) * (1 - xi) + (p[2][i] - p[1][i]) * (1 + xi)) / 4;
      for (std::size_t n = 0; n < 4; ++n) arm[i] -= N[n] * p[n][i];
    }
    const double a = dot(g1, g1), b = dot(g1, g2), c = dot(g2, g2), r1 = dot(g1, arm), r2 = dot(g2, arm);
    const double determinant = a * c - b * b;
    if (!(determinant > 0)) break;
    double d1 = (c * r1 - b * r2) / determinant, d2 = (a * r2 - b * r1) / determinant;
    // At a side the way along it alone is left.
    if ((xi >= 1 && d1 > 0) || (xi <= -1 && d1 < 0)) {
      d1 = 0;
      d2 = r2 / c;
    } else if ((eta >= 1 && d2 > 0) || (eta <= -1 && d2 < 0)) {
      d2 = 0;
      d1 = r1 / a;
    }
    const double before_xi = xi, before_eta = eta;
    xi = std::clamp(xi + d1, -1.0, 1.0);
    eta = std::clamp(eta + d2, -1.0, 1.0);
    if (std::fabs(xi - before_xi) + std::fabs(eta - before_eta) < NOTHING) break;
  }
  return bilinear(xi, eta);
}

foot foot_on(const model& m, const tie_face& face, std::size_t index, const vector3& place) {
  const auto p = [&](std::size_t n) { return m.nodes[face.nodes[n]].xyz; };
  foot f;
  f.face = index;
  if (face.nodes.size() == 2) f.N = on_line(p(0), p(1), place);
  if (face.nodes.size() == 3) f.N = on_triangle({p(0), p(1), p(2)}, place);
  if (face.nodes.size() == 4) f.N = on_quadrilateral({p(0), p(1), p(2), p(3)}, place);
  for (double& N : f.N) {
    if (std::fabs(N) < NOTHING) N = 0;
  }
  f.arm = difference(point_of(m, face, f.N), place);
  f.distance = length_of(f.arm);
  return f;
}

// The nearest face within reach; of several equally near ones the first.
foot nearest_foot(const model& m, const std::vector<tie_face>& faces, const vector3& place, double reach) {
  foot best;
  for (std::size_t k = 0; k < faces.size(); ++k) {
    const double limit = std::fmin(best.distance, reach);
    const vector3 off = difference(faces[k].centre, place);
    const double beyond = limit + faces[k].radius;
    if (dot(off, off) > beyond * beyond) continue;
    foot f = foot_on(m, faces[k], k, place);
    if (f.distance < best.distance - AN_ARM * faces[k].size) best = std::move(f);
  }
  return best;
}

std::vector<tie_face> faces_of(const model& m, const named_surface& surface) {
  std::vector<tie_face> faces;
  for (const surface_face& f : surface.faces) faces.push_back(face_of(m, f));
  return faces;
}

class tie {
 public:
  tie(build& b, const card& c, const data_line& l) : b_(b), from_(source_of(c, l)) {}

  void take_master(const named_surface& master) {
    faces_ = faces_of(b_.result, master);
    for (const tie_face& face : faces_) mean_size_ += face.size / number_of(faces_.size());
  }
  double mean_size() const { return mean_size_; }

  // False where no face is within reach.
  bool join(int node, double reach, bool with_rotations) {
    const foot f = nearest_foot(b_.result, faces_, b_.result.nodes[node].xyz, reach);
    if (!(f.distance <= reach)) return false;
    widest_ = std::fmax(widest_, f.distance);
    const tie_face& face = faces_[f.face];
    for (std::size_t n = 0; n < f.N.size(); ++n) {
      if (f.N[n] != 0) followed_.insert(face.nodes[n]);
    }
    for (std::size_t i = 0; i < 3; ++i) translate(node, i, f, face);
    if (!turns(b_, node) || !with_rotations) return true;
    if (!face.shell) ++loose_;
    for (int dof = 4; dof <= 6 && face.shell; ++dof) {
      linear_constraint condition = start_condition(from_);
      condition.terms.push_back({node, dof, 1});
      for (std::size_t n = 0; n < f.N.size(); ++n) condition.terms.push_back({face.nodes[n], dof, -f.N[n]});
      add_condition(b_, std::move(condition));
    }
    return true;
  }

  double widest() const { return widest_; }
  int loose() const { return loose_; }  // nodes with rotations on faces without
  // Whether a node of the slave follows this one of the master.
  bool followed(int node) const { return followed_.count(node) != 0; }

 private:
  void translate(int node, std::size_t i, const foot& f, const tie_face& face) {
    linear_constraint condition = start_condition(from_);
    condition.terms.push_back({node, number_of(i) + 1, 1});
    for (std::size_t n = 0; n < f.N.size(); ++n) {
      condition.terms.push_back({face.nodes[n], number_of(i) + 1, -f.N[n]});
    }
    condition.first_order = f.distance > AN_ARM * face.size;
    if (condition.first_order) turn_arm(condition, i, f, face);
    add_condition(b_, std::move(condition));
  }

  void turn_arm(linear_constraint& condition, std::size_t i, const foot& f, const tie_face& face) const {
    if (face.shell) {
      for (std::size_t n = 0; n < f.N.size(); ++n) {
        add_rotation(condition, body_of(face.nodes[n]), f.arm, i, -f.N[n]);
      }
      return;
    }
    vector3 unit{};
    unit[i] = 1;
    const mean_motion mean(b_.result, face.nodes, std::vector<double>(face.nodes.size(), 1.0));
    mean.add_rotation(condition, cross(f.arm, unit), -1);  // e_i . (theta cross d) = theta . (d cross e_i)
  }

  build& b_;
  condition_source from_;
  std::vector<tie_face> faces_;
  double mean_size_ = 0, widest_ = 0;
  int loose_ = 0;
  std::set<int> followed_;
};

std::string nodes_text(int count) { return std::to_string(count) + (count == 1 ? " node" : " nodes"); }

void note_tie(build& b, const card& c, const tie& done, int away, int first_away, double reach) {
  if (away > 0) {
    b.note(c, nodes_text(away) + " of the slave surface, " + node_name(b, first_away) +
                  " the first, lie farther than " + std::to_string(reach) +
                  " from the master and are not tied; POSITION TOLERANCE says how far is near");
  }
  constexpr double A_GAP = 1e-3;
  if (done.widest() > A_GAP * done.mean_size()) {
    b.note(c, "nodes stay where the deck puts them; the widest gap of the tie is " + std::to_string(done.widest()) +
                  ", and rigid arms bridge it");
  }
  if (done.loose() > 0) {
    b.note(c, "the rotations of " + nodes_text(done.loose()) +
                  " are not tied: the faces of the master have none; one row of nodes turns there like a hinge");
  }
}

// Nodes of a master with smaller elements than the slave: between the nodes of a face of the slave they move through
// it.
void note_free_masters(build& b, const card& c, const tie& done, const named_surface& slave,
                       const named_surface& master, double reach) {
  const std::vector<tie_face> faces = faces_of(b.result, slave);
  int count = 0, first = 0;
  for (const int node : master.nodes) {
    const bool joined = done.followed(node) || std::binary_search(slave.nodes.begin(), slave.nodes.end(), node);
    if (joined || nearest_foot(b.result, faces, b.result.nodes[node].xyz, reach).distance > reach) continue;
    if (count++ == 0) first = node;
  }
  if (count == 0) return;
  const bool one = count == 1;
  b.note(c,
         nodes_text(count) + " of the master surface, " + node_name(b, first) + " the first, " +
             (one ? "lies on a face of the slave and is" : "lie on faces of the slave and are") +
             " tied to none of its nodes: " + (one ? "it moves" : "they move") +
             " freely through the slave, and the joint is too soft; make the surface with the smaller elements the " +
             "slave");
}

void read_tie_line(build& b, const card& c, const data_fields& row) {
  row.expect(2, 2, "slave surface, master surface");
  const named_surface& slave = b.result.surfaces[surface_of_field(b, row, 0)];
  const named_surface& master = b.result.surfaces[surface_of_field(b, row, 1)];
  if (master.faces.empty()) {
    row.fail("the master surface " + in_quotes(row.text(1)) + " has nodes and no faces: the slave may be one of nodes");
  }
  tie done(b, c, row.line());
  done.take_master(master);
  double reach = OF_SIZE * done.mean_size();
  if (c.find("POSITIONTOLERANCE") != nullptr) reach = real_parameter(b, c, "POSITION TOLERANCE");
  if (!(reach >= 0)) b.deck.fail(c, "POSITION TOLERANCE is negative");
  const bool with_rotations = c.find("NOROTATION") == nullptr;
  int joined = 0, away = 0, first_away = 0;
  for (const int node : slave.nodes) {
    const bool shared = std::binary_search(master.nodes.begin(), master.nodes.end(), node);
    if (shared || done.join(node, reach, with_rotations)) {
      ++joined;
    } else if (away++ == 0) {
      first_away = node;
    }
  }
  if (joined == 0) {
    row.fail("no node of the slave surface lies within " + std::to_string(reach) +
             " of the master: look at the surfaces, or give a POSITION TOLERANCE");
  }
  note_tie(b, c, done, away, first_away, reach);
  note_free_masters(b, c, done, slave, master, reach);
}

}  // namespace

void read_tie(build& b, const card& c) {
  for (const char* const parameter : {"ADJUST", "TYPE"}) {
    if (c.find(parameter) != nullptr) {
      b.note(c, std::string(parameter) + "=" + c.value(parameter) +
                    " has no effect: nodes follow the faces next to them from where the deck puts them");
    }
  }
  b.each_line(c, [&](data_fields& row) { read_tie_line(b, c, row); });
}

}  // namespace solver::deck
