#!/usr/bin/env bash
# SPDX-FileCopyrightText: Dravelin contributors
# SPDX-License-Identifier: MIT
#
# must-not-compile.sh CASE MESSAGE COMPILER ARGUMENT...: succeeds when the compiler accepts the source as it is and, with
# MUST_NOT_COMPILE defined as CASE, refuses it with MESSAGE.
set -euo pipefail
case=$1 message=$2
shift 2
export LC_ALL=C

"$@" -fsyntax-only || { echo "It does not even compile without MUST_NOT_COMPILE."; exit 1; }
if output=$("$@" -fsyntax-only "-DMUST_NOT_COMPILE=$case" 2>&1); then
    echo "It compiles with MUST_NOT_COMPILE defined as $case."
    exit 1
fi
grep -qF -- "$message" <<<"$output" || { printf '%s\nThe errors do not say "%s".\n' "$output" "$message"; exit 1; }
