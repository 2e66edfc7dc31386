// linear_places.cpp: differences along the edges of a linear kind; strain and stress of two places.
#include "solids/linear_places.h"

void edge_differences(const LINEAR_KIND& kind, const SOLID_VECTORS& V, EDGE_VECTORS& E) {
  for (int e = 1; e <= LINEAR_EDGES; ++e) {
    const LINEAR_EDGE edge = kind.edge[e - 1];
    store_lanes(&E(1, e), lanes_at(&V(1, edge.head)) - lanes_at(&V(1, edge.tail)));
    E(3, e) = V(3, edge.head) - V(3, edge.tail);
  }
}

// H(j, i) = du_i/dx_j = sum_d  (J^-1)(j, d) du_i/d xi_d
void state_at(const ELASTIC_TERMS& D, const EDGE_WEIGHTS& w, int p, const EDGE_VECTORS& XE, const EDGE_VECTORS& UE,
              STATE_PAIR& S) {
  const INVERSE_PAIR I = inverse_at(w, p, XE);
  const LANE_MATRIX DU = natural_derivatives(w, p, UE);
  const LANES scale = 1.0 / I.DET;
  LANE_MATRIX H;
  for (int i = 1; i <= 3; ++i) {
    for (int j = 1; j <= 3; ++j) {
      H(j, i) = (I.ADJ(j, 1) * DU(1, i) + I.ADJ(j, 2) * DU(2, i) + I.ADJ(j, 3) * DU(3, i)) * scale;
    }
  }
  S.strain = {{H(1, 1), H(2, 2), H(3, 3), H(2, 1) + H(1, 2), H(3, 1) + H(1, 3), H(3, 2) + H(2, 3)}};
  S.stress = stress_of(D, S.strain);
  S.inverse = I;
}
