// tarnix.h: what a solver calls in the common library, beside the services that the element library uses.
//
// The solver stores its materials, composite sections and solution parameters here; the element library fetches them by
// number. It also says what becomes of an assertion that fails, and how the shared records lie in memory. For C99 and
// C++.
#ifndef TARNIX_H
#define TARNIX_H

#include <stdint.h>

#include "finites/services.h"

#ifdef __cplusplus
extern "C" {
#endif

// Stores a copy of the record under its number and replaces an earlier one.
void TARNIX_STORE_MATERIAL(const int32_t* number, const MATERIAL_RECORD* rec);
void TARNIX_STORE_SECTION_CLT(const int32_t* number, const CLT_SECTION_RECORD* rec);

// Stores the solution parameters, the plate material code (0 none, 1 whole-section, 2 layered), the member material
// flag.
void TARNIX_STORE_SOLPARAM(const SOLPARAM_RECORD* rec);
void TARNIX_STORE_KNLMATERIAL_PLATE(const int32_t* code);
void TARNIX_STORE_KNLMATERIAL_MEMBER(const int32_t* flag);

// Sets whether sections of a type are cold-formed: flag 1 yes, 0 no. The default is no.
void TARNIX_STORE_KCOLDFORM(const int32_t* type, const int32_t* flag);

// Deletes all that was stored and clears SOLANAELEM, PLATEELEM, SOLANA and the assertion count. Libraries that were not
// found by the loader are looked for again; those that were found stay loaded.
void TARNIX_CLEAR(void);

// A failed assertion writes its text to the error stream and is counted. Where the element library has said which
// element it works on (TARNIX_FAILURE_PLACE of services.h) the line starts with it: "finites: element 17, operation 3,
// point 2: Division by 0, COEFF". stops 0 (the default): it then returns; otherwise the run ends with exit status 1.
void TARNIX_SET_ASSERT_STOPS(const int32_t* stops);
// Assertions are counted without their texts, or with them again: for a solver that tries a state and looks at it
// itself.
void TARNIX_SET_ASSERT_QUIET(const int32_t* quiet);
void TARNIX_GET_ASSERT_COUNT(int32_t* count);

// The exchange area of the calling thread, by which operations 3, 33, 5 and 7 of FINITES run side by side on one
// MODEL_DATA: 768 reals that belong to the caller, with the places that fields.h names (EXCHANGE_DISPLACEMENTS counts
// from its first real). null, as at the start: the area at A(RES_BASE).
void TARNIX_SET_EXCHANGE_AREA(double* area);

// The place of a field in a shared record, for callers that declare the records in another language.
//
//   record, field  in   names as in records.h, each with its length, without a terminator. A field of length 0 means
//                       the record itself
//   offset, size   out  in bytes; both -1 when there is no such record or field
void TARNIX_RECORD_LAYOUT(const char* record, const int32_t* record_length, const char* field,
                          const int32_t* field_length, int64_t* offset, int64_t* size);

#ifdef __cplusplus
}
#endif

#endif
