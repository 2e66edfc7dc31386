#!/bin/sh
# pkg_config.sh <examples>: builds the examples with what pkg-config says about the installed library, and runs them.
set -eu
examples=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

run() { LD_LIBRARY_PATH=$(pkg-config --variable=libdir finites) "$work/$1"; }

# Compilers and their flags come as words.
# shellcheck disable=SC2046,SC2086
{
  $CC $CFLAGS -std=c99 "$examples/one_quad.c" $(pkg-config --cflags --libs finites) -lm -o "$work/c"
  $CXX $CXXFLAGS -std=c++17 "$examples/one_quad.cpp" $(pkg-config --cflags --libs finites-elements) -o "$work/cpp"
  if [ -n "$FC" ]; then
    module=$(pkg-config --variable=includedir finites)/finites/finites.f90
    $FC -J"$work" "$module" "$examples/one_quad.f90" $(pkg-config --libs finites-elements finites) -o "$work/f90"
  fi
}
run c
run cpp | grep 1.5769231e+09
if [ -n "$FC" ]; then run f90 | grep 1.5769231E+09; fi
