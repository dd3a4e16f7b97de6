# SPDX-FileCopyrightText: Dravelin contributors
# SPDX-License-Identifier: MIT

import pathlib
import subprocess
import tempfile
import unittest

SCRIPT = pathlib.Path(__file__).parents[2] / "scripts" / "check-guide.py"
SOURCE = """// SPDX-License-Identifier: MIT

int main()
{
    //! [call]
    if (first())
        second();
    //! [call]
}
"""
WHOLE = "int main()\n{\n    if (first())\n        second();\n}\n"
PART = "if (first())\n    second();\n"


def block(tag, text, language="cpp"):
    return f"{tag}\n```{language}\n{text}```\n"


class CheckGuide(unittest.TestCase):
    def check(self, page):
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            (root / "docs" / "examples").mkdir(parents=True)
            (root / "docs" / "examples" / "a.cpp").write_text(SOURCE)
            (root / "docs" / "examples" / "a.out").write_text("done\n")
            (root / "README.md").write_text("")
            (root / "docs" / "page.md").write_text("# Page\n\n" + page)
            done = subprocess.run([SCRIPT, root], capture_output=True, text=True)
            return done.returncode, done.stdout

    def test_pages_that_show_the_examples(self):
        for page in [block("<!-- example: a -->", WHOLE), block("<!-- example: a, call -->", PART),
                     block("<!-- output: a -->", "done\n", "text"), block("", "make\n", "sh"), "no block at all\n"]:
            self.assertEqual(self.check(page)[0], 0, page)

    def test_faults_are_reported_with_page_and_line(self):
        for page, reason in [
                (block("<!-- example: a -->", WHOLE.replace("second", "third")), "differs"),
                (block("<!-- example: a, call -->", WHOLE), "differs"),
                (block("<!-- example: a, tail -->", PART), "not marked"),
                (block("<!-- example: b -->", WHOLE), "b.cpp"),
                (block("<!-- output: a -->", "undone\n", "text"), "differs"),
                (block("Plain text.", WHOLE), "names no example")]:
            status, output = self.check(page)
            self.assertEqual(status, 1, page)
            self.assertRegex(output, rf"docs/page\.md:[34]: .*{reason}")

    def test_every_fault_is_found(self):
        page = block("", "int a;\n") + block("<!-- example: a -->", WHOLE) + block("", "int b;\n")
        self.assertEqual(self.check(page)[1].count("names no example"), 2)


if __name__ == "__main__":
    unittest.main()
