// read_rigid_bodies.cpp: *RIGID BODY.
#include <algorithm>

#include "deck/conditions.h"
#include "deck/fields.h"
#include "deck/keywords.h"

namespace solver::deck {

namespace {

// How the nodes of a body follow it: with their translations, or also with their rotations.
enum class follows { TRANSLATIONS, ALL };

struct body_nodes {
  numbered<char> seen;
};

void join(build& b, const card& c, const body& of, int node, follows how, body_nodes& done) {
  if (node == of.node || done.seen[node] != 0) return;
  if (node == of.rotation_node) {
    b.deck.fail(c, "the ROT NODE, " + node_name(b, node) + ", is in the body: its translations stand for rotations");
  }
  done.seen[node] = 1;
  join_to_body(b, source_of(c), of, node, how == follows::ALL && turns(b, node));
}

void join_set(build& b, const card& c, const body& of, const char* name, follows how, body_nodes& done) {
  if (c.find(squeezed(name)) == nullptr) return;
  const std::string value = c.value(squeezed(name));
  const int set = b.nodes.find_set(upper(value));
  if (set < 0) fail_undefined(b, c, b.nodes, value);
  const std::vector<int> members = b.nodes.members(set);
  for (const int node : members) join(b, c, of, node, how, done);
}

}  // namespace

// Nodes with rotations turn with the body; those of PIN NSET do not. With a ROT NODE its translations 1 to 3 are the
// rotations of the body, without one the reference node has them.
void read_rigid_body(build& b, const card& c) {
  body of = body_of(node_of_parameter(b, c, "REF NODE"));
  if (c.find("ROTNODE") != nullptr) {
    of.rotation_node = node_of_parameter(b, c, "ROT NODE");
    of.first_rotation = of.rotation_node == of.node ? 4 : 1;
  }
  const bool any = c.find("NSET") != nullptr || c.find("ELSET") != nullptr || c.find("PINNSET") != nullptr ||
                   c.find("TIENSET") != nullptr;
  if (!any) b.deck.fail(c, "the body has no nodes: give it an NSET, ELSET, PIN NSET or TIE NSET");
  body_nodes done;
  done.seen.assign(b.result.nodes.size(), 0);
  join_set(b, c, of, "PIN NSET", follows::TRANSLATIONS, done);
  join_set(b, c, of, "TIE NSET", follows::ALL, done);
  join_set(b, c, of, "NSET", follows::ALL, done);
  if (c.find("ELSET") != nullptr) {
    const std::vector<int> elements = b.elements.members(set_of_parameter(b, c, b.elements, "ELSET"));
    for (const int e : elements) {
      for (const int node : b.result.elements[e].nodes) join(b, c, of, node, follows::ALL, done);
    }
  }
}

}  // namespace solver::deck
