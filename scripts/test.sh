#!/usr/bin/env bash
# Every check of the project: layers, format, warnings of both compilers, the tests, first as they are and then under
# the sanitizers, and how many instructions a few fixed runs take.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

step() { printf '\n== %s\n' "$*"; }
jobs=$(nproc)

bash scripts/setup.sh

step "layers"
python3 scripts/checklayers.py

step "format"
find src apps examples docs tests fuzz benchmarks \( -name '*.h' -o -name '*.cpp' \) -print0 |
  xargs -0 -r -n 16 -P "$jobs" clang-format --dry-run --Werror

step "build with g++"
cmake --preset dev
cmake --build --preset dev --parallel "$jobs"

step "reference pages"
cmake --build --preset dev --target reference

step "warnings of clang++"
python3 scripts/clangwarnings.py build/dev

step "tests"
ctest --test-dir build/dev --output-on-failure --no-tests=error --parallel "$jobs"

step "instructions of fixed runs"
cmake --preset release
cmake --build --preset release --parallel "$jobs" --target FixedRuns
python3 scripts/instructions.py build/release/benchmarks/FixedRuns

step "build under the sanitizers"
cmake --preset asan
cmake --build --preset asan --parallel "$jobs"

# Last, so that its summary closes the output.
step "tests under the sanitizers"
export ASAN_OPTIONS=detect_leaks=1:detect_stack_use_after_return=1:strict_string_checks=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
ctest --test-dir build/asan --output-on-failure --no-tests=error --parallel "$jobs"
