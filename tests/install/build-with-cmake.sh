#!/usr/bin/env bash
# SPDX-FileCopyrightText: Dravelin contributors
# SPDX-License-Identifier: MIT
#
# build-with-cmake.sh SOURCE WORK ARGUMENT...: configures SOURCE anew with the arguments, builds it and runs its consumer, which
# must end well and print the line $CONSUMER_PRINTS.
set -euo pipefail
source=$1 work=$2
shift 2

rm -rf "$work"
cmake -S "$source" -B "$work" -G Ninja -DCMAKE_BUILD_TYPE=Debug "$@"
cmake --build "$work"
"$work/consumer" | tee "$work/output"
grep -qxF -- "$CONSUMER_PRINTS" "$work/output"
