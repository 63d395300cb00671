#!/usr/bin/env python3
"""Fails on an include that points against the direction in which the folders lie.

A file sees its own row of ROWS and the rows above it. The sources in LOOK_DOWN, which make objects of every class or
cast to them, see the tags below as well. Programs around the libraries see public headers; only tests see private
ones (*_p.h), and no public header does. Headers of the system are for platform/system alone. Every include of the
project's own names its path from src/, vxswf.h includes
every public header of the movie library but those of memory/, and every source is listed in the CMakeLists.txt of its
folder.

usage: checklayers.py [DIRECTORY]      the top of the tree, by default the one that holds this script
"""

import pathlib
import re
import sys

ROWS = (
    ("platform/system",),
    ("platform",),
    ("memory", "bitstream", "binding", "framework/VXFlintIDMap"),
    ("graphics",),
    ("framework",),
    ("scripting", "shapes"),
    ("text", "timeline", "media"),
    ("whole",),
    ("kit",),
)
ROW = {name: number for number, names in enumerate(ROWS) for name in names}
LAST_ROW = len(ROWS) - 1
LAST_ROW_OF_TAGS = ROW["timeline"]

LOOK_DOWN = {f"framework/{name}.cpp" for name in (
    "VXSwfTagFactory", "VXSwfTagSet_Edit", "VXSwfTagSet_Merge", "VXFlintFile", "VXSwfParserComponent")}

UMBRELLA = "vxswf.h"

# Where a program around the libraries finds its own headers, beside its own folder and src/.
PROGRAMS = {
    "apps": ("apps",),
    "examples": ("examples",),
    "docs": ("docs",),
    "tests": ("tests", "apps"),
    "fuzz": ("fuzz", "tests"),
    "benchmarks": ("benchmarks", "tests"),
}

# A project of its own that sees the installed headers alone.
INSTALLED = "tests/install/"

# What standard C++ does not have; the libraries ask it of the sources in this folder alone.
SYSTEM = "platform/system/"
SYSTEM_HEADER = re.compile(r"(sys|linux|mach)/|(unistd|fcntl|sched|io|share|windows|malloc|dlfcn|pthread)\.h$")

INCLUDE = re.compile(r'\s*#\s*include\s*(["<])([^">]+)[">]')


def row_of(path):
    """The row of a file by its path from src/, as the longest name in ROW tells; None for a folder without one."""
    name = path.rsplit(".", 1)[0]
    while name not in ROW and "/" in name:
        name = name.rsplit("/", 1)[0]
    return ROW.get(name)


def includes_of(file):
    """Yields line number, whether the name stands in quotes, and the name."""
    for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
        if match := INCLUDE.match(line):
            yield number, match[1] == '"', match[2]


def sources_under(directory):
    return sorted(file for pattern in ("*.h", "*.cpp") for file in directory.rglob(pattern))


class Check:
    def __init__(self, top):
        self.top = top
        self.src = top / "src"
        self.faults = []
        self.files = 0

    def fault(self, file, line, message):
        self.faults.append(f"{file.relative_to(self.top)}:{line}: {message}")

    def run(self):
        for file in sources_under(self.src):
            self.check_library_file(file)
        for program in PROGRAMS:
            for file in sources_under(self.top / program):
                if not file.relative_to(self.top).as_posix().startswith(INSTALLED):
                    self.check_program_file(file, program)
        self.check_umbrella()
        return self.faults

    def check_library_file(self, file):
        self.files += 1
        path = file.relative_to(self.src).as_posix()
        self.check_listed(file)
        if path == UMBRELLA:
            row = LAST_ROW
        elif (row := row_of(path)) is None:
            self.fault(file, 1, "stands in a folder that has no row")
            return
        elif path in LOOK_DOWN:
            row = LAST_ROW_OF_TAGS

        for line, quoted, name in includes_of(file):
            if not (self.src / name).is_file():
                if quoted:
                    self.fault(file, line, f'"{name}" is no path from src/')
                elif SYSTEM_HEADER.match(name) and not path.startswith(SYSTEM):
                    self.fault(file, line, f"<{name}> is the system's and belongs into {SYSTEM}")
                continue
            if not quoted:
                self.fault(file, line, f"<{name}> is the project's own and stands in quotes")
            if name == UMBRELLA:
                self.fault(file, line, f"{UMBRELLA} is for programs, not for the libraries themselves")
                continue
            below = row_of(name)
            if below is not None and below > row:
                self.fault(file, line, f"row {row} must not see {name} of row {below}")
            if file.suffix == ".h" and not path.endswith("_p.h") and name.endswith("_p.h"):
                self.fault(file, line, f"a public header must not include the private {name}")

    def check_program_file(self, file, program):
        self.files += 1
        self.check_listed(file)
        roots = [file.parent, *(self.top / root for root in PROGRAMS[program])]
        for line, quoted, name in includes_of(file):
            if (self.src / name).is_file():
                if name.endswith("_p.h") and program != "tests":
                    self.fault(file, line, f"only tests see the private {name}")
            elif quoted and not any((root / name).is_file() for root in roots):
                self.fault(file, line, f'"{name}" is neither a path from src/ nor a header of {program}')

    def check_listed(self, file):
        """A source that nobody lists is never compiled, and a test in it never fails."""
        if file.suffix != ".cpp":
            return
        folder = file.parent
        while not (folder / "CMakeLists.txt").is_file():
            if folder == self.top:
                self.fault(file, 1, "no CMakeLists.txt above this source")
                return
            folder = folder.parent
        lists = folder / "CMakeLists.txt"
        if not re.search(rf"\b{re.escape(file.stem)}\b", lists.read_text(encoding="utf-8")):
            self.fault(file, 1, f"is not listed in {lists.relative_to(self.top)}")

    def check_umbrella(self):
        umbrella = self.src / UMBRELLA
        if not umbrella.is_file():
            return
        named = {name for _, _, name in includes_of(umbrella)}
        for header in sorted(self.src.rglob("*.h")):
            path = header.relative_to(self.src).as_posix()
            if path in named or path == UMBRELLA or path.endswith("_p.h") or path.startswith(("platform/", "memory/")):
                continue
            self.fault(umbrella, 1, f"does not include {path}")


def main(arguments):
    if len(arguments) > 1:
        sys.exit(__doc__)
    top = pathlib.Path(arguments[0]) if arguments else pathlib.Path(__file__).parent.parent
    check = Check(top.resolve())
    faults = check.run()
    if check.files == 0:
        faults.append(f"{top}: no sources here")
    for fault in faults:
        print(fault, file=sys.stderr)
    if not faults:
        print(f"{check.files} files, every include in order")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
