#!/usr/bin/env bash
# Builds the preset `memcheck`, in which every block comes from the general allocator, and runs every test program under
# valgrind's memcheck, and then the command over the movies named as arguments: info, copy, and a merge of each with
# itself. Fails on the first error or leak. The tests take about a quarter of an hour.
set -euo pipefail
movies=()
for movie in "$@"; do movies+=("$(realpath "$movie")"); done
cd "$(dirname "${BASH_SOURCE[0]}")/.."

bash scripts/setup.sh >&2
cmake --preset memcheck >&2
cmake --build --preset memcheck --parallel "$(nproc)" >&2

memcheck() {
  # One test program has operators new and delete of its own, over malloc; those are not to be replaced.
  nice -n 19 valgrind --quiet --soname-synonyms=somalloc=nouserintercepts --error-exitcode=99 \
    --leak-check=full --show-leak-kinds=definite,indirect,possible \
    --errors-for-leak-kinds=definite,indirect,possible "$@"
}

export GTEST_BRIEF=1
for tests in build/memcheck/tests/*/*_tests; do
  printf '== %s\n' "$tests"
  memcheck "$tests"
done

vxswf=build/memcheck/apps/vxswf/vxswf
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
for movie in ${movies[@]+"${movies[@]}"}; do
  printf '== %s\n' "$movie"
  memcheck "$vxswf" info "$movie" >"$scratch/info"
  memcheck "$vxswf" copy "$movie" "$scratch/out.swf"
  memcheck "$vxswf" merge "$movie" "$movie" "$scratch/out.swf"
done
