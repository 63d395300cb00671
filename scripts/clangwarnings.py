#!/usr/bin/env python3
"""Has clang++ read every source that a build directory compiles, with the flags of that build, and fails on a warning.

Nothing is generated, so this takes a fraction of a second build.

usage: clangwarnings.py BUILD_DIR
"""

import concurrent.futures
import json
import os
import pathlib
import shlex
import subprocess
import sys


def clang_arguments(entry):
    """The compiler's own words, behind the launcher and the compiler, without outputs and precompiled headers."""
    words = shlex.split(entry["command"])
    words = words[next(i for i, word in enumerate(words) if word.startswith("-")):]
    kept = []
    rest = iter(words)
    for word in rest:
        if word in ("-o", "-include"):
            next(rest)
        elif word != "-c":
            kept.append(word)
    return ["clang++", "-fsyntax-only", "-Werror", *kept]


def check(entry):
    return subprocess.run(clang_arguments(entry), cwd=entry["directory"], text=True,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT)


def main(build):
    entries = json.loads((pathlib.Path(build) / "compile_commands.json").read_text())
    if not entries:
        print(f"{build} compiles nothing", file=sys.stderr)
        return 1
    failed = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for result in pool.map(check, entries):
            if result.returncode != 0:
                failed += 1
                print(result.stdout, end="", file=sys.stderr)
    print(f"{len(entries)} sources, {failed} with warnings or errors")
    return 1 if failed else 0


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    sys.exit(main(sys.argv[1]))
