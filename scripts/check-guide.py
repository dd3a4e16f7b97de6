#!/usr/bin/env python3
# SPDX-FileCopyrightText: Dravelin contributors
# SPDX-License-Identifier: MIT
"""Checks that the C++ which README.md and docs/ show is what the tests compile and run: check-guide.py ROOT.

Every ```cpp block follows a line that names a program of docs/examples/, and is that program or a marked part of it:

    <!-- example: NAME -->          the whole of NAME.cpp but its licence tag
    <!-- example: NAME, PART -->    what stands between two lines `//! [PART]` of it
    <!-- output: NAME -->           before a block of any language: NAME.out

Lines `//! [PART]` are not shown.
"""
import pathlib
import re
import sys
import textwrap

BLOCK = re.compile(r"^(?:<!-- (example|output): (\w+)(?:, ([\w ]+))? -->\n+)?```(\w*)\n(.*?)^```$", re.MULTILINE | re.DOTALL)
MARKER = re.compile(r"^\s*//! \[[\w ]+\]\n", re.MULTILINE)


def example(text, part):
    if part:
        pieces = re.split(rf"^\s*//! \[{re.escape(part)}\]\n", text, flags=re.MULTILINE)
        if len(pieces) != 3:
            raise ValueError(f"'{part}' is not marked by two lines")
        text = textwrap.dedent(pieces[1])
    return MARKER.sub("", re.sub(r"\A(//.*\n)*\n*", "", text))


def fault(block, examples):
    """What is wrong with a block, or None."""
    kind, name, part, language, shown = block.groups()
    if not kind:
        return "C++ that names no example" if language == "cpp" else None
    try:
        text = (examples / f"{name}.{'cpp' if kind == 'example' else 'out'}").read_text()
        expected = example(text, part) if kind == "example" else text
    except (OSError, ValueError) as error:
        return f"{kind} {name}: {error}"
    return None if shown == expected else f"differs from {kind} {name}"


def faults(root):
    for page in [root / "README.md", *sorted((root / "docs").rglob("*.md"))]:
        text = page.read_text()
        for block in BLOCK.finditer(text):
            if reason := fault(block, root / "docs" / "examples"):
                line = text.count("\n", 0, block.start()) + 1
                yield f"{page.relative_to(root)}:{line}: {reason}"


if __name__ == "__main__":
    found = list(faults(pathlib.Path(sys.argv[1])))
    print("\n".join(found) or "The pages show the examples as they are.")
    sys.exit(1 if found else 0)
