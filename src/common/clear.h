// clear.h: zeros for matrices.
#ifndef FINITES_CLEAR_H
#define FINITES_CLEAR_H

#include <cstdint>

// values(1 : count) := 0. A call of its own: where the count is known, compilers write the string instruction of the
// processor in place, whose start takes longer than the C library takes for a matrix of a member.
void clear(double* values, std::int64_t count);

#endif
