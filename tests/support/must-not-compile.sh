#!/usr/bin/env bash
# SPDX-FileCopyrightText: Dravelin contributors
# SPDX-License-Identifier: MIT
#
# must-not-compile.sh MACRO MESSAGE COMPILER ARGUMENT...: succeeds when the compiler accepts the source as it is and, with
# MACRO defined, refuses it with MESSAGE.
set -euo pipefail
macro=$1 message=$2
shift 2
export LC_ALL=C

"$@" -fsyntax-only || { echo "It does not even compile without $macro."; exit 1; }
if output=$("$@" -fsyntax-only "-D$macro" 2>&1); then
    echo "It compiles with $macro defined."
    exit 1
fi
grep -qF -- "$message" <<<"$output" || { printf '%s\nThe errors do not say "%s".\n' "$output" "$message"; exit 1; }
