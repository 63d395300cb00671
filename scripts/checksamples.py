#!/usr/bin/env python3
"""Fails on a sample of the guide that is not part of a program that is built and run.

Every block of C++ in docs/host-guide.md must stand in one of the sources of docs/samples/, line by line, in one piece,
and the first one of README.md in one of the examples. Only its margin may differ.

usage: checksamples.py [DIRECTORY]      the top of the tree, by default the one that holds this script
"""

import pathlib
import re
import sys
import textwrap

BLOCK = re.compile(r"^```cpp\n(.*?)^```$", re.MULTILINE | re.DOTALL)


def holds(source, block):
    wanted = textwrap.dedent(block).strip("\n")
    size = wanted.count("\n") + 1
    lines = source.splitlines()
    return any(textwrap.dedent("\n".join(lines[start:start + size])) == wanted
               for start in range(len(lines) - size + 1))


def main(arguments):
    if len(arguments) > 1:
        sys.exit(__doc__)
    top = pathlib.Path(arguments[0]) if arguments else pathlib.Path(__file__).parent.parent
    faults = 0
    numBlocks = 0
    for page, folder, most in (("docs/host-guide.md", "docs/samples", None), ("README.md", "examples", 1)):
        sources = [file.read_text(encoding="utf-8") for file in sorted((top / folder).glob("*.[ch]*"))]
        text = (top / page).read_text(encoding="utf-8")
        blocks = list(BLOCK.finditer(text))[:most]
        numBlocks += len(blocks)
        for match in blocks:
            if not any(holds(source, match[1]) for source in sources):
                line = text.count("\n", 0, match.start()) + 1
                print(f"{page}:{line}: this sample is not part of {folder}", file=sys.stderr)
                faults += 1
        if not blocks:
            print(f"{page}: no samples here", file=sys.stderr)
            faults += 1
    if faults == 0:
        print(f"{numBlocks} samples, all of them compiled")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
