"""Small trees with one fault each, and the trees that look like a fault and are none."""

import pathlib
import subprocess
import sys
import tempfile
import unittest

SCRIPT = pathlib.Path(__file__).resolve().parents[2] / "scripts" / "checklayers.py"

# A tree in order: every row, both kinds of header, and a program of each kind.
TREE = {
    "src/vxswf.h": '#include "framework/VXFlintFile.h"\n#include "framework/VXFlintIDMap.h"\n'
                   '#include "graphics/VXFlintRGB.h"\n#include "timeline/VXSwfDefineSpriteTag.h"\n',
    "src/platform/CMakeLists.txt": "VXString.cpp",
    "src/platform/VXString.h": "#include <string>\n",
    "src/platform/VXString.cpp": '#include "platform/VXString.h"\n',
    "src/graphics/VXFlintRGB.h": '#include "framework/VXFlintIDMap.h"\n',
    "src/framework/CMakeLists.txt": "VXFlintFile.cpp",
    "src/framework/VXFlintIDMap.h": "#include <map>\n",
    "src/framework/VXNames_p.h": '#include "platform/VXString.h"\n',
    "src/framework/VXFlintFile.h": '#include "graphics/VXFlintRGB.h"\n',
    "src/framework/VXFlintFile.cpp": '#include "framework/VXFlintFile.h"\n#include "framework/VXNames_p.h"\n'
                                     '#include "timeline/VXSwfDefineSpriteTag.h"\n',
    "src/timeline/VXSwfDefineSpriteTag.h": '#include "framework/VXFlintFile.h"\n',
    "apps/vxswf/CMakeLists.txt": "Main.cpp",
    "apps/vxswf/Main.cpp": '#include <vxswf.h>\n#include "Options.h"\n',
    "apps/vxswf/Options.h": "#include <string>\n",
    "tests/framework/CMakeLists.txt": "FileTest.cpp",
    "tests/framework/FileTest.cpp": '#include "framework/VXNames_p.h"\n#include "support/Bytes.h"\n',
    "tests/support/Bytes.h": "#include <string>\n",
}


def check(changes):
    with tempfile.TemporaryDirectory() as top:
        for path, text in {**TREE, **changes}.items():
            if text is not None:
                file = pathlib.Path(top) / path
                file.parent.mkdir(parents=True, exist_ok=True)
                file.write_text(text)
        return subprocess.run([sys.executable, SCRIPT, top], capture_output=True, text=True)


class CheckLayers(unittest.TestCase):
    def test_takes_a_tree_in_order(self):
        result = check({})
        self.assertEqual((result.returncode, result.stderr), (0, ""))

    def test_names_the_line_of_each_fault(self):
        sprite = '#include "timeline/VXSwfDefineSpriteTag.h"\n'
        for name, path, text, expected in (
            ("a row sees a lower one", "src/graphics/VXFlintRGB.h", "\n" + sprite, "2: row 3 must not see"),
            ("a comment is no include", "src/platform/VXString.h", "// " + sprite, None),
            ("angle brackets hide nothing", "src/graphics/VXFlintRGB.h", "#include <timeline/VXSwfDefineSpriteTag.h>\n",
             "1: row 3 must not see"),
            ("a header of the five looks down too", "src/framework/VXFlintFile.h", sprite, "1: row 4 must not see"),
            ("the ID map is a leaf", "src/framework/VXFlintIDMap.h", '#include "framework/VXFlintFile.h"\n',
             "1: row 2 must not see"),
            ("a public header shows a private one", "src/framework/VXFlintFile.h",
             '#include "framework/VXNames_p.h"\n', "1: a public header"),
            ("a private header shows a private one", "src/framework/VXOther_p.h", '#include "framework/VXNames_p.h"\n',
             None),
            ("the whole library from inside", "src/framework/VXFlintFile.cpp", '#include "vxswf.h"\n', "1: vxswf.h is"),
            ("a header by its bare name", "src/platform/VXString.cpp", '#include "VXString.h"\n',
             '1: "VXString.h" is no'),
            ("a folder without a row", "src/video/VXFrame_p.h", "", "1: stands in a folder"),
            ("a program sees a private header", "apps/vxswf/Main.cpp", '#include "framework/VXNames_p.h"\n',
             "1: only tests see"),
            ("a source that nobody lists", "tests/framework/LostTest.cpp", "", "1: is not listed in tests/framework/"),
            ("a header that vxswf.h forgets", "src/timeline/VXFlintFilter.h", "", "src/vxswf.h:1: does not include"),
        ):
            with self.subTest(name):
                result = check({path: text})
                if expected is None:
                    self.assertEqual((result.returncode, result.stderr), (0, ""))
                else:
                    self.assertIn(expected if expected.startswith("src/") else f"{path}:{expected}", result.stderr)
                    self.assertEqual(result.returncode, 1)

    def test_fails_where_there_is_nothing_to_check(self):
        self.assertEqual(check(dict.fromkeys(TREE)).returncode, 1)


if __name__ == "__main__":
    unittest.main()
