// rigid_links.h: rigid links d between the nodes of a plate and the corners of its element:
//
//     u_element = J u_node,    f_node = J^T f_element,    K_node = P^T K P,    P = diag(J_1, ..., J_nodes)
//
//     J = [ I  S ]      S = [  0   -dz   dy ]      S theta = d x theta
//         [ 0  I ]          [  dz   0   -dx ]
//                           [ -dy   dx   0  ]
//
// d leads from the corner to the node: a node at X has its corner at X - d.
// Nothing changes where the offsets are off.
#ifndef FINITES_RIGID_LINKS_H
#define FINITES_RIGID_LINKS_H

#include "shells/engines/filled_plate.h"

// J of each node, from its offset.
void set_rigid_links(FILLED_PLATE& plate);

void displace_by_offsets(const FILLED_PLATE& plate, double* U);
void move_forces_by_offsets(const FILLED_PLATE& plate, double* F);

// matrix (6 nodes, 6 nodes), of the operation in the plate
void move_matrix_by_offsets(const FILLED_PLATE& plate, double* matrix);

#endif
