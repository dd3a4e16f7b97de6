#!/usr/bin/env bash
# SPDX-FileCopyrightText: Dravelin contributors
# SPDX-License-Identifier: MIT
#
# build-with-cmake.sh SOURCE WORK ARGUMENT...: configures SOURCE anew with the arguments, builds it and runs its consumer.
set -euo pipefail
source=$1 work=$2
shift 2

rm -rf "$work"
cmake -S "$source" -B "$work" -G Ninja -DCMAKE_BUILD_TYPE=Debug "$@"
cmake --build "$work"
exec "$work/consumer"
