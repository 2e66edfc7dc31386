/* checks.h: what a caller of the protocol (finites.h) has forgotten or filled wrongly, said before the library answers
 * with a zero matrix, NaN or a crash. Plain C. Library: libfinites_elements.so.
 *
 * A check reads MODEL_DATA, the records SOLANAELEM and SOLANA and what the common library stores, as the library would,
 * changes nothing and computes no element. It goes through null addresses, flags of 0, indices beyond their arrays and
 * NaN. It cannot know whether an address that is not null leads anywhere.
 *
 *   finites_finding found[32];
 *   int32_t i, count = finites_check_plate(elem, k, A, n, found, 32);
 *   for (i = 0; i < count && i < 32; ++i) puts(found[i].text);
 *
 * Every check returns how many findings there are, which may be more than `capacity`: what is beyond is not written.
 * findings may be null where capacity is 0. Checks may run side by side in threads as calls of the library may. */
#ifndef FINITES_CHECKS_H
#define FINITES_CHECKS_H

#include <stdint.h>

#if defined(FINITES_BUILDING_LIBRARY) && defined(__GNUC__)
#define FINITES_CALL __attribute__((visibility("default")))
#else
#define FINITES_CALL
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* How bad it is. */
enum {
  FINITES_SEVERITY_NOTE = 1,    /* has an effect that may be wanted: a pin, a switch that is off */
  FINITES_SEVERITY_WARNING = 2, /* a part of the stiffness is silently zero, or a value is unusual */
  FINITES_SEVERITY_ERROR = 3    /* a crash, a read of what does not belong to the element, NaN, or a call that fails */
};

/* What is wrong. The numbers stay what they are; later versions may add others. */
enum {
  /* MODEL_DATA and its blocks */
  FINITES_FOUND_NO_MODEL_DATA = 101, /* the array is null or shorter than its header */
  FINITES_FOUND_NO_BLOCK = 102,      /* a pointer to a block is 0 or below */
  FINITES_FOUND_BLOCK_OUTSIDE = 103, /* a block is not within the array */
  FINITES_FOUND_NOT_FINITE = 104,    /* a field is NaN or infinite */
  FINITES_FOUND_EXCHANGE_AREA = 105, /* no exchange area, or one on the header or outside of the array */
  FINITES_FOUND_ENTRY_TABLE = 106,   /* ENTRY_START, ENTRY_STRIDE do not lead to the entries */
  FINITES_FOUND_SWITCH = 107,        /* a switch of the header has an unusual value, or lacks its partner */
  /* records */
  FINITES_FOUND_NO_RECORDS = 201,  /* an array of records that is read has no address */
  FINITES_FOUND_NO_RECORD = 202,   /* an index beyond the extents of its array */
  FINITES_FOUND_RECORD_FLAG = 203, /* flag and address of an array contradict each other */
  FINITES_FOUND_NO_KIND = 204,     /* the kind of the call is none of the list */
  /* geometry */
  FINITES_FOUND_NODE_COUNT = 301,
  FINITES_FOUND_NODE_COUNTS_DIFFER = 302, /* BLOCK_NODE_COUNT is not NODE_COUNT */
  FINITES_FOUND_COINCIDENT_NODES = 303,
  FINITES_FOUND_NO_AREA = 304, /* no area or volume */
  FINITES_FOUND_FOLDED = 305,  /* a corner is straight or re-entrant, a solid inside out */
  FINITES_FOUND_WARPED = 306,  /* nodes off the plane of a quadrilateral */
  FINITES_FOUND_LENGTH = 307,
  FINITES_FOUND_LENGTHS_DIFFER = 308, /* LENGTH is not the distance of the nodes */
  /* plates and solids */
  FINITES_FOUND_FORMULATION = 401,
  FINITES_FOUND_MODIFIER = 402,
  FINITES_FOUND_MASS_FACTOR = 403,
  FINITES_FOUND_THICKNESS = 404,
  FINITES_FOUND_YOUNG = 405,
  FINITES_FOUND_POISSON = 406,
  FINITES_FOUND_SHEAR_MODULUS = 407,
  FINITES_FOUND_ANGLE = 408,
  FINITES_FOUND_OFFSETS = 409,
  FINITES_FOUND_SECTION_TYPE = 410,
  FINITES_FOUND_COMPOSITE = 411,
  FINITES_FOUND_ORTHOTROPY = 412, /* E1 NU2 is not E2 NU1 */
  FINITES_FOUND_STIFF_LIST = 413,
  FINITES_FOUND_UNITS = 414,
  FINITES_FOUND_STIFF_FACTOR = 415,
  FINITES_FOUND_SOLID_POSITION = 416,
  /* plates that yield */
  FINITES_FOUND_NOT_YIELDING = 501, /* the plate or its material could yield, but does not */
  FINITES_FOUND_YIELD_STRESS = 502,
  FINITES_FOUND_HARDENING = 503,
  FINITES_FOUND_NO_PLATE_STATE = 504,
  FINITES_FOUND_STATE_FIELDS = 505,
  FINITES_FOUND_NPT_THICK = 506,
  FINITES_FOUND_STATE_NOT_STARTED = 507,
  FINITES_FOUND_SPECTRAL = 508,
  FINITES_FOUND_NO_STORED_FORCES = 509,
  /* members */
  FINITES_FOUND_FIXITY = 601,
  FINITES_FOUND_FACTOR = 602,
  FINITES_FOUND_SECTION = 603,
  FINITES_FOUND_MODULUS = 604,
  FINITES_FOUND_SHEAR_AREA = 605,
  FINITES_FOUND_RELEASE = 606,
  FINITES_FOUND_REMOVAL = 607,
  FINITES_FOUND_REDUCTION = 608,
  FINITES_FOUND_SEMI_RIGID = 609,
  FINITES_FOUND_PRETENSION = 610,
  FINITES_FOUND_NO_AXIAL_FORCE = 611,
  FINITES_FOUND_UNSTRESSED_LENGTH = 612,
  FINITES_FOUND_LOAD_FACTOR = 613,
  FINITES_FOUND_SLACK = 614,
  FINITES_FOUND_PROPERTY_ADDRESS = 615,
  FINITES_FOUND_NO_STIFFNESS = 616,
  FINITES_FOUND_NONLINEAR_SPRING = 617,
  FINITES_FOUND_RIGID_STIFFNESS = 618,
  FINITES_FOUND_WEIGHT = 619, /* of a beam or truss: negative */
  /* plastic hinges */
  FINITES_FOUND_NO_HINGE = 701, /* there is a hinge without an effect, or an effect without a hinge */
  FINITES_FOUND_HINGE_CURVE = 702,
  FINITES_FOUND_HINGE_CAPACITY = 703,
  FINITES_FOUND_HINGE_STATE = 704,
  FINITES_FOUND_HINGE_FORCES = 705,
  FINITES_FOUND_NO_NONLINEAR_LIBRARY = 706
};

enum { FINITES_FINDING_LENGTH = 320 };

typedef struct finites_finding {
  int32_t severity;
  int32_t code;
  int32_t element; /* sequential index; 0: the model */
  int32_t number;  /* the element's own number: ELEM_ID of its entry, ELEM_NO of a solid; 0 where there is none */
  /* "element 3 (number 17): A(k + MODIFIER_BENDING) = A(1359) is 0: ...", the element first; ends with a zero */
  char text[FINITES_FINDING_LENGTH];
} finites_finding;

/* Kinds of elements, as finites_check_member and finites_check_model name them. */
enum {
  FINITES_ELEMENT_NONE = 0, /* finites_check_model leaves it out */
  FINITES_ELEMENT_PLATE = 1,
  FINITES_ELEMENT_BEAM = 2,
  FINITES_ELEMENT_TRUSS = 3,
  FINITES_ELEMENT_CABLE = 4,
  FINITES_ELEMENT_LINK = 5,
  FINITES_ELEMENT_SPRING = 6,
  FINITES_ELEMENT_SOLID = 7
};

/* A plate or shell before FINITES.
 *
 *   elem      sequential index, as in the call
 *   k         start of its block in MODEL_DATA
 *   A, n      MODEL_DATA and its length: no place beyond n is read
 *   findings  capacity records of the caller */
FINITES_CALL int32_t finites_check_plate(int32_t elem, int32_t k, const double* A, int64_t n, finites_finding* findings,
                                         int32_t capacity);

/* A frame member before KSTIFB, KSTIFT, KSTIFT_CATENARY, KSTIF_LINK, KSTIF_SPR and their mass routines.
 *
 *   kind   FINITES_ELEMENT_BEAM to FINITES_ELEMENT_SPRING
 *   entry  I, start of its entry in MODEL_DATA */
FINITES_CALL int32_t finites_check_member(int32_t kind, int32_t elem, int32_t entry, const double* A, int64_t n,
                                          finites_finding* findings, int32_t capacity);

/* A solid before FINITES_SOLID_3D. */
FINITES_CALL int32_t finites_check_solid(int32_t elem, const double* A, int64_t n, finites_finding* findings,
                                         int32_t capacity);

/* The header, the records and the parameters, and then every element.
 *
 *   kinds   the kind of each element, FINITES_ELEMENT_...; null: the elements are left out
 *   count   elements; entries start at (elem - 1) A(ENTRY_STRIDE) + A(ENTRY_START) */
FINITES_CALL int32_t finites_check_model(const int32_t* kinds, int32_t count, const double* A, int64_t n,
                                         finites_finding* findings, int32_t capacity);

#ifdef __cplusplus
}
#endif

#endif
