// local_axes.h: the local axes of a member between two points.
#ifndef FINITES_PLAIN_LOCAL_AXES_H
#define FINITES_PLAIN_LOCAL_AXES_H

// axes[a] := the local axis in global components: x along the member of this length, y in the plane of x and up on the
// side of up, z = x cross y. Where up is 0 it is global Z, for a member along Z global X. Two directions count as
// parallel when the sine of their angle is 1e-6 or less. False where up is parallel to the member.
bool member_axes(const double xyz[2][3], const double up[3], double length, double axes[3][3]);

// T (12, 12), by columns := the rotation of two nodes, u_local = T u_global.
void set_member_rotation(const double axes[3][3], double* T);

#endif
