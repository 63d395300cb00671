#!/usr/bin/env python3
"""Prints the bounds that the benchmarks have to hold, beside what they measured.

    scripts/benchtable.py RESULTS

RESULTS is the directory into which scripts/bench.sh has each benchmark write its JSON. The benchmarks say in their
sources what they measure and against what. Ratios stand first, memory in sizes of the movie behind them.
"""

import json
import pathlib
import sys

# Program, name in it, counter, what it is, bound.
ROWS = [
    ("Movie", "SmallTags/load", "ratio", "600,000 small raw tags: load", 3),
    ("Movie", "SmallTags/load_from_memory", "ratio", "- load from memory", 3),
    ("Movie", "SmallTags/load_and_dump", "ratio", "- load and dump", 4.5),
    ("Movie", "SmallTags/load", "peak", "- peak of a load, sizes of the movie", 10),
    ("Movie", "WholeSmallTags/load", "ratio", "the same carried as bytes: load", 1.2),
    ("Movie", "WholeSmallTags/load_and_dump", "ratio", "- load and dump", 2),
    ("Movie", "WholeSmallTags/load", "peak", "- peak of a load, sizes of the movie", 6),
    ("Movie", "LargeTags/load", "ratio", "large raw tags: load", 2.1),
    ("Movie", "LargeTags/load_and_dump", "ratio", "- load and dump", 3.2),
    ("Movie", "LargeTags/load", "peak", "- peak of a load, sizes of the movie", 2.1),
    ("Placement", "Placements/load", "ratio", "600,000 placements: load", 5),
    ("Placement", "Placements/load_and_dump", "ratio", "- load and dump", 8),
    ("Placement", "Placements/load", "peak", "- peak of a load, sizes of the movie", 16),
    ("Script", "Scripts/load", "ratio", "scripts: load", 14),
    ("Script", "Scripts/load_and_dump", "ratio", "- load and dump", 17),
    ("Script", "Scripts/load", "peak", "- peak of a load, sizes of the movie", 12),
    ("Shape", "Shapes/load", "ratio", "shapes of 60 records: load", 20),
    ("Shape", "Shapes/load_and_dump", "ratio", "- load and dump", 35),
    ("Shape", "Shapes/load", "peak", "- peak of a load, sizes of the movie", 22),
    ("Shape", "Drawing/dashed/100000", "ratio", "twice the edges: dashed lines", 2.2),
    ("Shape", "Drawing/cubic/100000", "ratio", "- curves", 2.2),
    ("Merge", "Merge/movie/50000", "ratio", "merge of 50,000 characters, by load and dump", 4),
    ("Merge", "Merge/character/50000", "ratio", "- as one character", 4),
    ("Merge", "Combine/25000", "ratio", "combination of 50,000 characters, by load and dump of both", 1.5),
    ("Compression", "CompressedDump", "ratio", "compressed dump, by deflate alone", 1.05),
    ("Compression", "CompressedDump", "grown_MiB", "- memory, MiB", 4),
    ("Media", "TrueColor/photograph", "ratio", "true colour photograph, by deflate alone", 1.15),
    ("Media", "TrueColor/flat_art", "ratio", "- flat art", 1.15),
    ("Media", "Quantize/photograph", "ns_per_pixel", "256 colours of a photograph, ns a pixel", 25),
    ("Media", "Quantize/flat_art", "ns_per_pixel", "- flat art", 5),
    ("Font", "GlyphFont/5000", "ratio", "font of 5,000 glyphs, by FreeType decoding them", 3),
]


def figures_of(path):
    """Counters by the name of the benchmark, without the settings behind it."""
    found = {}
    for run in json.loads(path.read_text())["benchmarks"]:
        found[run["name"].split("/iterations:")[0].split("/manual_time")[0]] = run
    return found


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    results = pathlib.Path(sys.argv[1])
    by_program = {path.stem.removesuffix("Benchmark"): figures_of(path) for path in results.glob("*.json")}
    print("| what | measured | bound | |\n|---|--:|--:|---|")
    missed = 0
    for program, name, counter, what, bound in ROWS:
        figure = by_program.get(program, {}).get(name, {}).get(counter)
        if figure is None:
            verdict, shown = "not measured", ""
        else:
            verdict, shown = ("holds" if figure <= bound else "**misses**"), f"{figure:.2f}"
        missed += verdict != "holds"
        print(f"| {what} | {shown} | {bound:g} | {verdict} |")
    return 1 if missed else 0


if __name__ == "__main__":
    sys.exit(main())
