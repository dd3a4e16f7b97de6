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
read -ra flags <<<"$(pkg-config --cflags --libs dravelin)"
"$moc" "$source/main.cpp" -o "$work/main.moc"
"${CXX:-g++}" -std=c++20 -fPIC -Wall -Wextra -Werror -I"$work" "$source/main.cpp" "${flags[@]}" -o "$work/consumer"
LD_LIBRARY_PATH=$prefix/$libdir "$work/consumer" | tee "$work/output"
grep -qxF -- "$CONSUMER_PRINTS" "$work/output"
