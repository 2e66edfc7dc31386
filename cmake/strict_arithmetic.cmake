# The same bits from every compiler at every level: no contraction into fused products, no fast-math, and a call of pow
# stays a call of pow (one compiler turns a power of 0.5 into a square root, which rounds differently).
#
# g++ 12 loses a narrowing to single precision where its vectoriser of straight-line code finds two side by side: with
# x and y double, (double)(float)x next to (double)(float)y comes out as x and y. The rotations of the section matrices
# and the factors of records depend on such steps, so that vectoriser stays off; the one for loops narrows rightly.
add_library(strict_arithmetic INTERFACE)
target_compile_options(strict_arithmetic INTERFACE -ffp-contract=off -fno-fast-math -fno-builtin-pow
  $<$<CXX_COMPILER_ID:GNU>:-fno-tree-slp-vectorize>)

# g++ clears and copies small arrays by string instructions, which take longer to start than the stores of a vector of
# 24 reals take; large ones are better left to the C library.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64")
  set(blocks "unrolled_loop:256:noalign,libcall:-1:noalign")
  target_compile_options(strict_arithmetic INTERFACE -mmemset-strategy=${blocks} -mmemcpy-strategy=${blocks})
endif()

add_library(warnings INTERFACE)
target_compile_options(warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wdouble-promotion
  $<$<CXX_COMPILER_ID:Clang>:-Wreserved-identifier -Wreserved-macro-identifier>)
if(FINITES_WERROR)
  target_compile_options(warnings INTERFACE -Werror)
endif()
