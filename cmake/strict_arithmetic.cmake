# The same bits from every compiler at every level: no contraction into fused products, no fast-math, and a call of pow
# stays a call of pow (one compiler turns a power of 0.5 into a square root, which rounds differently).
add_library(strict_arithmetic INTERFACE)
target_compile_options(strict_arithmetic INTERFACE -ffp-contract=off -fno-fast-math -fno-builtin-pow)

add_library(warnings INTERFACE)
target_compile_options(warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wdouble-promotion)
if(FINITES_WERROR)
  target_compile_options(warnings INTERFACE -Werror)
endif()
