// plug.cpp: a plug-in with three routines, one of which has a name of one letter.
#include <cstdint>

extern "C" {
void PLUG_DOUBLE(const std::int32_t* in, std::int32_t* out) { *out = 2 * *in; }
void PLUG_NEGATE(const std::int32_t* in, std::int32_t* out) { *out = -*in; }
void N(const std::int32_t* in, std::int32_t* out) { *out = *in + 1; }
}
