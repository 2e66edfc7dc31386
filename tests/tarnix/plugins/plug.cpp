// plug.cpp: a plug-in with two routines.
#include <cstdint>

extern "C" {
void PLUG_DOUBLE(const std::int32_t* in, std::int32_t* out) { *out = 2 * *in; }
void PLUG_NEGATE(const std::int32_t* in, std::int32_t* out) { *out = -*in; }
}
