#!/usr/bin/env bash
# SPDX-FileCopyrightText: Dravelin contributors
# SPDX-License-Identifier: MIT
#
# build-with-pkgconfig.sh SOURCE WORK PREFIX LIBDIR MOC: builds the consumer with nothing but pkg-config, moc and the
# compiler, and runs it; it must end well and print the line $CONSUMER_PRINTS.
set -euo pipefail
source=$1 work=$2 prefix=$3 libdir=$4 moc=$5

rm -rf "$work"
mkdir -p "$work"
export PKG_CONFIG_PATH=$prefix/$libdir/pkgconfig
read -ra flags <<<"$(pkg-config --cflags dravelin)"
read -ra libraries <<<"$(pkg-config --libs dravelin)"
read -ra compiler <<<"${CMAKE_CXX_COMPILER_LAUNCHER:-} ${CXX:-g++}"

grep -l Q_OBJECT "$source"/*.cpp | while read -r file; do
    "$moc" "$file" -o "$work/$(basename "$file" .cpp).moc"
done
find "$source" -name '*.cpp' -printf '%f\0' | xargs -0 -P "$(nproc)" -I{} \
    "${compiler[@]}" -std=c++20 -fPIC -Wall -Wextra -Werror -I"$work" "${flags[@]}" -c "$source/{}" -o "$work/{}.o"
"${CXX:-g++}" "$work"/*.o "${libraries[@]}" -o "$work/consumer"
LD_LIBRARY_PATH=$prefix/$libdir "$work/consumer" | tee "$work/output"
grep -qxF -- "$CONSUMER_PRINTS" "$work/output"
