#!/usr/bin/env bash
# Builds the fuzzers and runs each for a while.
#
#   scripts/fuzz.sh [SECONDS [FUZZER...]]      60 seconds each and all of them unless told otherwise
#
# A fuzzer works on a copy of its corpus, build/fuzz/corpus/<name>, which keeps what earlier runs found. An input that
# breaks something is left in build/fuzz/findings; once mended, it goes into fuzz/corpus/<name>, where it is tested
# from then on.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

seconds=${1:-60}
shift || true
if ! [[ $seconds =~ ^[1-9][0-9]*$ ]]; then
  printf 'usage: scripts/fuzz.sh [SECONDS [FUZZER...]]\n' >&2
  exit 2
fi

bash scripts/setup.sh
cmake --preset fuzz
cmake --build --preset fuzz --parallel "$(nproc)" --target fuzz/all

fuzzers=("$@")
if ((${#fuzzers[@]} == 0)); then
  mapfile -t fuzzers < <(find build/fuzz/fuzz -maxdepth 1 -type f -name '*Fuzzer' -executable -printf '%f\n' | sort)
fi
if ((${#fuzzers[@]} == 0)); then
  printf 'fuzz.sh: no fuzzer was built\n' >&2
  exit 1
fi

failed=()
mkdir -p build/fuzz/findings
for name in "${fuzzers[@]}"; do
  printf '\n== %s, %s seconds\n' "$name" "$seconds"
  corpus=build/fuzz/corpus/$name
  mkdir -p "$corpus"
  if [[ -d fuzz/corpus/$name ]]; then
    cp -r "fuzz/corpus/$name/." "$corpus"
  fi
  if ! "build/fuzz/fuzz/$name" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
    -artifact_prefix="build/fuzz/findings/$name-" "$corpus"; then
    failed+=("$name")
  fi
done

if ((${#failed[@]} > 0)); then
  printf '\nfuzz.sh: findings of %s lie in build/fuzz/findings\n' "${failed[*]}" >&2
  exit 1
fi
