/* builders.h: blocks of MODEL_DATA and records of the protocol (finites.h), filled with what most need: factors and
 * modifiers 1, rigid ends, G from E and nu, everything else 0. What differs is set afterwards, by its name of fields.h.
 * Plain C. Library: libfinites_elements.so.
 *
 *   finites_fill_plate_block(A, k, 17, 4, FORMULATION_THIN);
 *   A[k + MODIFIER_BENDING - 1] = 0.5;
 *
 * A is MODEL_DATA, whose first real is A(1); starts of blocks count from 1, as everywhere in the protocol. Each routine
 * writes the fields of its block that the library reads and nothing else, and allocates nothing. A null pointer:
 * nothing is done. checks.h tells what is still missing. */
#ifndef FINITES_BUILDERS_H
#define FINITES_BUILDERS_H

#include <stdint.h>

#include "finites/fields.h"
#include "finites/records.h"

#if defined(FINITES_BUILDING_LIBRARY) && defined(__GNUC__)
#define FINITES_CALL __attribute__((visibility("default")))
#else
#define FINITES_CALL
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* The header: where the exchange area of 768 reals starts, where the entry of element 1 starts, how far apart entries
 * are. A linear analysis of elastic material, in which beams deform in shear where they have shear areas. */
FINITES_CALL void finites_fill_header(double* A, int32_t exchange, int32_t entry_start, int32_t entry_stride);

/* The coordinates of a node; it has no axes of its own. */
FINITES_CALL void finites_fill_node_block(double* A, int32_t ptr, double x, double y, double z);

/* ---- plates */

/* The entry of a plate: its number, 3 or 4 nodes, FORMULATION_THIN and the like. Elastic, without offsets, the angle of
 * the material 0. */
FINITES_CALL void finites_fill_plate_block(double* A, int32_t k, int32_t number, int32_t nodes, int32_t formulation);

/* A homogeneous section. */
FINITES_CALL void finites_fill_section_of_plate(double* A, int32_t sec, int32_t number, double thickness);

/* The material of plates and solids: G = E / (2 (1 + nu)), no expansion, no yield stress. A mass is unit_weight over
 * 9810. A number without a record of TARNIX_STORE_MATERIAL is an isotropic elastic material. */
FINITES_CALL void finites_fill_material_of_plate(double* A, int32_t mat, int32_t number, double E, double nu,
                                                 double unit_weight);

/* The record of a plate: its section, its material, the blocks of its 3 or 4 nodes. No offsets. */
FINITES_CALL void finites_fill_plate_record(PLATE_RECORD* record, int32_t sec, int32_t mat, int32_t nodes,
                                            const int32_t* node_ptr);

/* ---- plates that yield: the state of a plate in memory of the caller, cleared; stored forces and displacements too */

enum { FINITES_SECTION_STATE_REALS = 424 };                  /* of the whole-section model */
#define FINITES_LAYERED_STATE_REALS(LAYERS) (204 * (LAYERS)) /* of the layered model with NPT_THICK layers */

/* memory: FINITES_SECTION_STATE_REALS, FINITES_LAYERED_STATE_REALS(layers) reals, to which the records refer. */
FINITES_CALL void finites_fill_section_state(PLATE_STATE_RECORD* state, double* memory);
FINITES_CALL void finites_fill_layered_state(PLATE_STATE_RECORD* state, POINT_STATE_RECORD points[4], int32_t layers,
                                             double* memory);

/* The end of a step, after operation 33: plastic strains count from here. Stored forces and displacements are the
 * solver's. */
FINITES_CALL void finites_accept_plate_state(PLATE_STATE_RECORD* state);

/* ---- frame members */

/* The entry of a member of any kind: its section, its material, its nodes. Rigid ends, no releases, all factors 1, no
 * weight, no pretension; a cable needs its UNSTRESSED_LENGTH, a link or spring its PROPERTY_ADDRESS. */
FINITES_CALL void finites_fill_member_block(double* A, int32_t entry, int32_t number, int32_t section, int32_t material,
                                            int32_t node_1, int32_t node_2);

/* Iz is bending in the x-y plane, Iy in the x-z plane; no shear areas. */
FINITES_CALL void finites_fill_section_of_member(double* A, int32_t section, double area, double Iz, double Iy,
                                                 double J);

/* G 0: E / (2 (1 + nu)). */
FINITES_CALL void finites_fill_material_of_member(double* A, int32_t material, double E, double nu, double G);

/* The record of a member, whole and without force. */
FINITES_CALL void finites_fill_member_record(MEMBER_RECORD* record, double length);

/* The rotation T (12, 12) of a member from its first node to its second: the rows are the local axes, y in the plane of
 * x and up, z = x cross y. Returns the length; 0, with T unchanged, where the nodes coincide or up is parallel to x. */
FINITES_CALL double finites_fill_rotation(double* T, const double first[3], const double second[3], const double up[3]);

/* The bits of the address of a property record, for A(I + PROPERTY_ADDRESS). */
FINITES_CALL void finites_fill_property_address(double* A, int32_t entry, const void* property);

/* ---- solids */

/* The record of a solid of 4, 6 or 8 nodes, its displacements and results cleared. */
FINITES_CALL void finites_fill_solid_record(SOLID_RECORD* record, int32_t number, int32_t mat, int32_t nodes,
                                            const int32_t* node_ptr);

#ifdef __cplusplus
}
#endif

#endif
