// member_order.h: how many degrees of freedom the members have.
#ifndef FINITES_MEMBER_ORDER_H
#define FINITES_MEMBER_ORDER_H

constexpr int MEMBER_DOFS = 12;  // beams, links and springs: two nodes of three translations and three rotations
constexpr int TRUSS_DOFS = 6;    // trusses and cables: two nodes of three translations

#endif
