#!/usr/bin/env bash
# Builds the benchmarks, runs them and prints what they measure beside its bounds, as a table in Markdown. The figures
# are ratios within one run; on a machine that does nothing else they are steady.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

bash scripts/setup.sh >&2
cmake --preset release >&2
cmake --build --preset release --parallel "$(nproc)" --target benchmarks/all >&2

results=build/release/results
rm -rf "$results"
mkdir -p "$results"
for program in build/release/benchmarks/*Benchmark; do
  printf 'bench.sh: %s\n' "${program##*/}" >&2
  "$program" --benchmark_out="$results/${program##*/}.json" --benchmark_out_format=json >/dev/null
done
python3 scripts/benchtable.py "$results"
