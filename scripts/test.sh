#!/usr/bin/env bash
# Builds the project and runs its tests.
#
#   scripts/test.sh          set-up, build, tests: some minutes
#   scripts/test.sh --all    every check of the project: besides, the layers, the format, the reference pages, the
#                            warnings of clang++, clang-tidy, instruction counts of fixed runs, and the tests under the
#                            sanitizers
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

all=
if (($# == 1)) && [[ $1 == --all ]]; then
  all=1
elif (($# > 0)); then
  printf 'usage: scripts/test.sh [--all]\n' >&2
  exit 2
fi

step() { printf '\n== %s\n' "$*"; }
run_tests() { ctest --test-dir "$1" --output-on-failure --no-tests=error --parallel "$jobs"; }
jobs=$(nproc)

bash scripts/setup.sh

if [[ $all ]]; then
  step "layers"
  python3 scripts/checklayers.py

  step "format"
  find src apps examples docs tests fuzz benchmarks \( -name '*.h' -o -name '*.cpp' \) -print0 |
    xargs -0 -r -n 16 -P "$jobs" clang-format --dry-run --Werror
fi

step "build with g++"
cmake --preset dev
cmake --build --preset dev --parallel "$jobs"

step "tests"
run_tests build/dev
[[ $all ]] || exit 0

step "reference pages"
cmake --build --preset dev --target reference

# The release preset configures every source there is.
step "warnings of clang++"
cmake --preset release
python3 scripts/clangwarnings.py build/release

# The analyzer doubles the time; a build by the preset runs it.
step "clang-tidy"
cmake --preset tidy
run-clang-tidy -quiet -j "$jobs" -p build/tidy -checks='-clang-analyzer-*' "$PWD/src/"

step "instructions of fixed runs"
cmake --build --preset release --parallel "$jobs" --target FixedRuns
python3 scripts/instructions.py build/release/benchmarks/FixedRuns

step "build under the sanitizers"
cmake --preset asan
cmake --build --preset asan --parallel "$jobs"

# Last, so that its summary closes the output.
step "tests under the sanitizers"
export ASAN_OPTIONS=detect_leaks=1:detect_stack_use_after_return=1:strict_string_checks=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
run_tests build/asan
