#!/usr/bin/env python3
# SPDX-FileCopyrightText: Dravelin contributors
# SPDX-License-Identifier: MIT
"""operations.py INCLUDE_DIRECTORY CONSUMER_SOURCES CONSUMER: checks that the consumer uses every public operation.

A public operation is what a doc comment with \\operation{...} stands before. A function counts as used when the consumer, built
without optimisation, refers to it; what leaves no trace there, such as a virtual function, when a source of it names it."""

import pathlib
import re
import subprocess
import sys
from typing import NamedTuple

TAG = re.compile(r"\\operation\{([^}]*)\}")
SCOPE = re.compile(r"^(?:template\s*<[^;{]*>\s*)?(?:class|struct|enum(?: class)?)\s+(?:DRAVELIN_EXPORT\s+)?(\w+)[^;()]*\{?$")
NOISE = re.compile(r"^(?:template\s*<[^>]*(?:<[^>]*>[^>]*)*>|requires\s*\((?:[^()]|\([^()]*\))*\)|DRAVELIN_EXPORT|explicit|static|virtual|inline)\s+")


class Operation(NamedTuple):
    tag: str
    scope: str
    name: str
    is_traceless: bool
    place: str


def declared_name(declaration):
    """The name that a declaration introduces: what stands before its parameters, or before its value."""
    declaration = re.sub(r"\[\[\w+\]\] ?", "", declaration)
    while NOISE.match(declaration):
        declaration = NOISE.sub("", declaration, count=1)
    before = re.split(r"[(\[{;=]", declaration, maxsplit=1)[0]
    names = re.findall(r"[~\w]+", before)
    return names[-1] if names else ""


def operations_of(header, root):
    """The operations that one header documents, with the class each belongs to."""
    scopes, tags, declaration = [], [], ""
    for number, line in enumerate(header.read_text().splitlines(), 1):
        text, indent = line.strip(), len(line) - len(line.lstrip())
        if text.startswith("///"):
            tags += TAG.findall(text)
            continue
        if not text or text.startswith("//") or text.startswith("#"):
            continue
        if not text.startswith("}") and not declaration:
            while scopes and scopes[-1][0] >= indent and text not in ("public:", "protected:", "private:", "public Q_SLOTS:", "Q_SIGNALS:", "{"):
                scopes.pop()
        opened = SCOPE.match(text)
        if opened and not text.endswith(";"):
            scopes.append((indent, opened[1]))
        if not tags:
            continue
        declaration = f"{declaration} {text}".strip()
        if opened or re.search(r"[;{}]", text):
            name, scope = declared_name(declaration), scopes[-1][1] if scopes else ""
            traceless = bool(re.search(r"\b(?:virtual|override|constexpr)\b|= default", declaration)) or "(" not in declaration
            for tag in tags:
                yield Operation(tag, scope, name, traceless, f"{header.relative_to(root)}:{number}")
            tags, declaration = [], ""


def is_used(operation, symbols, sources):
    qualified = rf"\b{operation.scope}(?:<[^()]*>)?::{operation.name}" if operation.scope else rf"::{operation.name}"
    if re.search(qualified + r"(?:\[abi:\w+\])?[<(]", symbols):
        return True
    return operation.is_traceless and bool(re.search(rf"\b{operation.name}\b", sources))


def main():
    root, folder, consumer = map(pathlib.Path, sys.argv[1:4])
    symbols = subprocess.run(["nm", "-C", consumer], check=True, capture_output=True, text=True).stdout
    sources = "\n".join(path.read_text() for path in sorted(folder.glob("*.[ch]*")))
    operations = [operation for header in sorted(root.rglob("*.h")) for operation in operations_of(header, root)]
    missing = [operation for operation in operations if not is_used(operation, symbols, sources)]
    for operation in missing:
        print(f"{operation.place}: {operation.scope}::{operation.name} ({operation.tag}) is used nowhere in the consumer")
    print(f"{len(operations)} operations, {len(missing)} of them not used")
    return 1 if missing or not operations else 0


if __name__ == "__main__":
    sys.exit(main())
