"""A small tree in order, and the same with one fault each."""

import pathlib
import subprocess
import sys
import tempfile
import unittest

SCRIPT = pathlib.Path(__file__).resolve().parents[2] / "scripts" / "checklayers.py"
TREE = {
    "src/vxswf.h": '#include "framework/VXFlintFile.h"\n#include "framework/VXFlintIDMap.h"\n',
    "src/framework/CMakeLists.txt": "VXFlintFile.cpp",
    "src/framework/VXFlintIDMap.h": "#include <map>\n",
    "src/framework/VXNames_p.h": '#include "platform/VXString.h"\n',
    "src/framework/VXFlintFile.h": '// #include "timeline/VXFrame_p.h"\n#include "framework/VXFlintIDMap.h"\n',
    "src/framework/VXFlintFile.cpp": '#include "framework/VXNames_p.h"\n#include "timeline/VXFrame_p.h"\n',
    "src/timeline/VXFrame_p.h": '#include "framework/VXFlintFile.h"\n',
    "src/platform/VXString.h": "#include <string>\n",
    "apps/vxswf/CMakeLists.txt": "Main.cpp",
    "apps/vxswf/Main.cpp": '#include <vxswf.h>\n',
    "tests/CMakeLists.txt": "framework/FileTest.cpp",
    "tests/framework/FileTest.cpp": '#include "framework/VXNames_p.h"\n',
}


class CheckLayers(unittest.TestCase):
    def check(self, changes, expected):
        with tempfile.TemporaryDirectory() as top:
            for path, text in {**TREE, **changes}.items():
                file = pathlib.Path(top) / path
                file.parent.mkdir(parents=True, exist_ok=True)
                file.write_text(text)
            result = subprocess.run([sys.executable, SCRIPT, top], capture_output=True, text=True)
        self.assertEqual(result.returncode, 1 if expected else 0, result.stderr)
        self.assertRegex(result.stderr, f"^{expected}" if expected else "^$")

    def test_takes_a_tree_in_order(self):
        self.check({}, "")

    def test_names_a_lower_row(self):
        name = "src/framework/VXFlintFile.h"  # its source may look down, it may not
        self.check({name: '\n#include "timeline/VXFrame_p.h"\n'}, f"{name}:2: row . must not see")

    def test_names_a_private_header(self):
        include = '#include "framework/VXNames_p.h"\n'
        self.check({"src/framework/VXFlintFile.h": include}, "src/framework/VXFlintFile.h:1: a public header")
        self.check({"apps/vxswf/Main.cpp": include}, "apps/vxswf/Main.cpp:1: only tests see")

    def test_names_what_no_list_holds(self):
        self.check({"tests/framework/LostTest.cpp": ""}, "tests/framework/LostTest.cpp:1: is not listed in tests/")
        self.check({"src/timeline/VXFilter.h": ""}, "src/vxswf.h:1: does not include")


if __name__ == "__main__":
    unittest.main()
