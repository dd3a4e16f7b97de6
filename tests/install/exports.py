#!/usr/bin/env python3
# SPDX-FileCopyrightText: Dravelin contributors
# SPDX-License-Identifier: MIT
"""exports.py LIBRARY: checks that the library exports its own names only, and asks for no libraries but the known ones."""

import re
import subprocess
import sys

OWN = re.compile(
    r"(?:(?:vtable|VTT|typeinfo|typeinfo name|guard variable) for |(?:non-)?virtual thunk to )?dravelin::"
    r"|void dravelin::detail::sortNativeArray<"
    r"|DravelinVersion(?:Number|String)$")

NEEDED = {
    "libQt6Core", "libQt6DBus", "libQt6Gui", "libQt6UiTools", "libQt6Widgets",
    "libhwy", "libhwy_contrib",   # Base64, sorting and filters on vectors
    "libopenal", "libsndfile",    # sound
    "libxcb",                     # screens, windows and input of an X server
    "libxml2",                    # documents, archives and preferences
    "libz",
    "libstdc++", "libgcc_s", "libm", "libc", "ld-linux-x86-64", "ld-linux-aarch64",
}


def output_of(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def foreign_symbols(library):
    """What the library exports under names that are not its own."""
    lines = output_of("nm", "-DC", "--extern-only", "--defined-only", library).splitlines()
    names = [line.split(" ", 2)[2] for line in lines]
    if not any(name.startswith("dravelin::") for name in names):
        return ["(nothing of dravelin)"]
    return sorted({name for name in names if not OWN.match(name)})


def unknown_libraries(library):
    names = re.findall(r"\(NEEDED\).*\[(.+?)\.so", output_of("readelf", "-dW", library))
    return sorted(set(names) - NEEDED)


def main():
    library = sys.argv[1]
    faults = [f"exports {name}" for name in foreign_symbols(library)]
    faults += [f"needs {name}" for name in unknown_libraries(library)]
    print("\n".join(faults) or "exports and needs nothing else")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
