#!/usr/bin/env python3
"""Counts the instructions of the fixed runs and compares them with the recorded figures.

    scripts/instructions.py [--record] PROGRAM

PROGRAM is benchmarks/FixedRuns of a release build. Fails when a run takes over 5 percent more than the figures in
benchmarks/instructions.txt say, or when runs and figures do not name the same; a run that takes over 5 percent less
wants new figures, and is only told. `--record` writes them.

Counts do not depend on how busy a machine is, but on the compiler, its flags and the C library. The figures are
those of Debian 12's g++ 12 and glibc 2.36 with the release preset; with another compiler they are shown and not
compared.
"""

import argparse
import concurrent.futures
import os
import pathlib
import re
import subprocess
import sys

FIGURES = pathlib.Path(__file__).resolve().parent.parent / "benchmarks" / "instructions.txt"
TOLERANCE = 0.05


def count(program, run):
    """Instructions of one run, by valgrind without a model of caches or branches."""
    command = ["valgrind", "--tool=cachegrind", "--cache-sim=no", "--cachegrind-out-file=/dev/null", program, run]
    # An environment of its own, since the loader walks through all of it.
    done = subprocess.run(command, capture_output=True, text=True, env={"PATH": os.environ["PATH"], "LC_ALL": "C"})
    found = re.search(r"I\s+refs:\s+([\d,]+)", done.stderr)
    if done.returncode != 0 or found is None:
        sys.exit(f"instructions.py: {' '.join(command)} failed\n{done.stderr}")
    return int(found.group(1).replace(",", ""))


def is_comparable():
    """Whether this system is the one that the figures were taken on."""
    release = pathlib.Path("/etc/os-release")
    text = release.read_text() if release.exists() else ""
    return bool(re.search(r"^ID=debian$", text, re.M)) and bool(re.search(r'^VERSION_ID="?12"?$', text, re.M))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--record", action="store_true", help="write the figures instead of comparing")
    parser.add_argument("program", help="benchmarks/FixedRuns of a release build")
    arguments = parser.parse_args()

    runs = subprocess.run([arguments.program], capture_output=True, text=True, check=True).stdout.split()
    with concurrent.futures.ThreadPoolExecutor(max_workers=os.cpu_count()) as pool:
        counts = dict(zip(runs, pool.map(lambda run: count(arguments.program, run), runs)))
    if arguments.record:
        FIGURES.write_text("".join(f"{run} {counts[run]}\n" for run in runs))
        return 0

    figures = {run: int(figure) for run, figure in (line.split() for line in FIGURES.read_text().splitlines())}
    if set(figures) != set(runs):
        sys.exit(f"instructions.py: {FIGURES.name} names other runs; record them anew")
    failed = False
    for run in runs:
        change = counts[run] / figures[run] - 1
        verdict = "too many" if change > TOLERANCE else "fewer, record them" if change < -TOLERANCE else "holds"
        failed |= change > TOLERANCE
        print(f"{run:12} {counts[run]:13,} {change:+7.1%}  {verdict}")
    if failed and not is_comparable():
        print("instructions.py: not compared, the figures are those of Debian 12")
        return 0
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
