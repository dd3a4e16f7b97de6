#!/usr/bin/env bash
# SPDX-FileCopyrightText: Dravelin contributors
# SPDX-License-Identifier: MIT
#
# compare-output.sh EXPECTED PROGRAM: runs the program with a home of its own and compares its standard output.
set -euo pipefail
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
mkdir -m 700 "$home/run"

env HOME="$home" XDG_CONFIG_HOME="$home/config" XDG_RUNTIME_DIR="$home/run" QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 TZ=UTC \
    "$2" >"$home/output"
diff -u "$1" "$home/output"
