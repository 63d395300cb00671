#!/usr/bin/env bash
# Builds the fuzzers and runs one of them, or all in turn, for a while each.
#
#   scripts/fuzz.sh [TARGET [SECONDS]]      all of them for 60 seconds each, unless told otherwise
#
# TARGET is a name as in fuzz/, such as MovieFuzzer, or "all". A fuzzer works on a copy of its corpus,
# build/fuzz/corpus/<name>, which keeps what earlier runs found. An input that breaks something is left in
# build/fuzz/findings; once mended, it goes into fuzz/corpus/<name>, where it is tested from then on.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

target=${1:-all}
seconds=${2:-60}
if (($# > 2)) || ! [[ $seconds =~ ^[1-9][0-9]*$ ]] ||
  ! [[ $target == all || ($target == *Fuzzer && -f fuzz/$target.cpp) ]]; then
  printf 'usage: scripts/fuzz.sh [TARGET [SECONDS]]\n' >&2
  exit 2
fi

bash scripts/setup.sh
cmake --preset fuzz
cmake --build --preset fuzz --parallel "$(nproc)" --target fuzz/all

fuzzers=("$target")
if [[ $target == all ]]; then
  mapfile -t fuzzers < <(find build/fuzz/fuzz -maxdepth 1 -type f -name '*Fuzzer' -executable -printf '%f\n' | sort)
fi

failed=()
mkdir -p build/fuzz/findings
for name in "${fuzzers[@]}"; do
  printf '\n== %s, %s seconds\n' "$name" "$seconds"
  corpus=build/fuzz/corpus/$name
  mkdir -p "$corpus"
  cp -r "fuzz/corpus/$name/." "$corpus"
  if ! "build/fuzz/fuzz/$name" -max_total_time="$seconds" -timeout=60 -rss_limit_mb=2048 -print_final_stats=1 \
    -dict=fuzz/swf.dict -artifact_prefix="build/fuzz/findings/$name-" "$corpus"; then
    failed+=("$name")
  fi
done

if ((${#failed[@]} > 0)); then
  printf '\nfuzz.sh: findings of %s lie in build/fuzz/findings\n' "${failed[*]}" >&2
  exit 1
fi
