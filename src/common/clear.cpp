// clear.cpp: zeros for matrices.
#include "common/clear.h"

#include <algorithm>

void clear(double* values, std::int64_t count) { std::fill_n(values, count, 0.0); }
