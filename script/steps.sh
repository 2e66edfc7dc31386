# shellcheck shell=bash
# Shared by the scripts: go to the project's root, name the steps, keep quiet about what succeeds.
program=script/$(basename "$0")
cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit 1

step() { printf '%s: %s\n' "$program" "$*"; }

fail() {
  printf '%s: %s\n' "$program" "$*" >&2
  exit 1
}

# Runs a command; its output is shown only when it fails.
quietly() {
  local log status=0
  log=$(mktemp)
  "$@" >"$log" 2>&1 || status=$?
  if ((status != 0)); then
    cat "$log" >&2
    printf '%s: failed: %s\n' "$program" "$*" >&2
  fi
  rm -f "$log"
  return "$status"
}

# build <preset> [targets]: configures and builds a preset on two cores, unless $built says that this run has done so.
built=()
build() {
  local preset=$1
  shift
  [[ " ${built[*]} " != *" $preset "* ]] || return 0
  quietly cmake --preset "$preset" || return 1
  if (($# > 0)); then
    quietly cmake --build --preset "$preset" -j2 --target "$@"
  else
    quietly cmake --build --preset "$preset" -j2
  fi
}

# run_tests <preset>: all binaries of tests, two at a time. A process for each test would spend its time on starting;
# the tests of the solver, which take longer than all others, come first and in parts, so that both cores have work to
# the end.
run_tests() (
  cd "build/$1" || exit 1
  {
    for part in 0 1 2 3 4 5; do
      printf 'GTEST_TOTAL_SHARDS=6 GTEST_SHARD_INDEX=%d bin/solver_test --gtest_brief=1\n' "$part"
    done
    printf 'bin/%s --gtest_brief=1\n' $(cd bin && ls ./*_test | sed 's#^./##' | grep -v '^solver_test$')
  } | xargs -P2 -I RUN sh -c 'env RUN || { echo "failed: RUN"; exit 1; }'
)
