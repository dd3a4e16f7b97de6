#!/usr/bin/env bash
# SPDX-FileCopyrightText: Dravelin contributors
# SPDX-License-Identifier: MIT
#
# compile-headers.sh WORK PREFIX LIBDIR COMPILER STANDARD: compiles every installed header by itself, without a warning.
set -euo pipefail
work=$1 prefix=$2 libdir=$3 compiler=$4 standard=$5

command -v "$compiler" >/dev/null || { echo "skipped: there is no $compiler"; exit 77; }
rm -rf "$work"
mkdir -p "$work"
export PKG_CONFIG_PATH=$prefix/$libdir/pkgconfig
read -ra flags <<<"$(pkg-config --cflags dravelin)"
# Warnings count in our headers, not in those of others.
for i in "${!flags[@]}"; do
    [[ ${flags[i]} == "-I$prefix"* ]] || flags[i]=${flags[i]/#-I/-isystem}
done
read -ra compile <<<"${CMAKE_CXX_COMPILER_LAUNCHER:-} $compiler -std=$standard"
compile+=(-fPIC -Wall -Wextra -Wpedantic -Wshadow -Werror -DQT_NO_KEYWORDS "${flags[@]}" -c)

cd "$prefix/include"
find dravelin -name '*.h' -print0 | while IFS= read -rd '' header; do
    printf '#include <%s>\n' "$header" >"$work/${header//\//_}.cpp"
done
cd "$work"
printf '%s\0' *.cpp | xargs -0 -P "$(nproc)" -I{} "${compile[@]}" {} -o {}.o
echo "$(ls ./*.o | wc -l) headers compile alone with $compiler in $standard"
