#!/bin/sh
# headers.sh <prefix> <source>: every public header of the source is installed and compiles by itself, in C and in C++;
# every library is found by a program that was linked with it before, by the name of its version.
set -eu
prefix=$1
source=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
  echo "$*" >&2
  exit 1
}

# alone <compiler> <standard> <kind> <header>
alone() {
  printf '#include <finites/%s>\nextern int more;\n' "$4" >"$work/alone.$3"
  # Compilers and their flags come as words.
  # shellcheck disable=SC2086
  $1 -std="$2" -Wall -Wextra -pedantic -Werror -fsyntax-only -I"$prefix/include" "$work/alone.$3" ||
    fail "$4 does not compile by itself as $2"
}

set -- "$source"/include/finites/*.h "$source"/include/finites/*.hpp
for name in tarnix morvenik vornekal; do set -- "$@" "$source/companions/$name/$name.h"; done
for header in "$@"; do
  name=$(basename "$header")
  [ -s "$prefix/include/finites/$name" ] || fail "$name is not installed"
  case $name in *.h) alone "$CC $CFLAGS" c99 c "$name" ;; esac
  alone "$CXX $CXXFLAGS" c++17 cpp "$name"
done

for name in finites finites_elements Tarnix Morvenik Vornekal; do
  [ -e "$prefix/lib/lib$name.so.0" ] || fail "there is no lib$name.so.0"
  readelf --dynamic --wide "$prefix/lib/lib$name.so" | grep -q "(SONAME).*\[lib$name\.so\.0\]" ||
    fail "lib$name.so does not have the soname lib$name.so.0"
done
