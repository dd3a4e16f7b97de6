#!/usr/bin/env bash
# SPDX-FileCopyrightText: Dravelin contributors
# SPDX-License-Identifier: MIT
#
# Installs the Debian packages that the given purposes need and that are not there yet:
#     scripts/setup.sh PURPOSE...        purposes: build tests gallery benchmarks ci
# DRAVELIN_SETUP=off skips it, for systems whose packages bear other names.
set -euo pipefail

declare -A packages=(
    [build]="g++ cmake ninja-build ccache pkg-config qt6-base-dev qt6-base-dev-tools qt6-tools-dev libxcb1-dev libhwy-dev libopenal-dev libsndfile1-dev libxml2-dev zlib1g-dev"
    [tests]="dbus dunst binutils libplist-utils libgtest-dev libgmock-dev qt6-declarative-dev qml6-module-qtqml qml6-module-qtqml-models qml6-module-qtqml-workerscript libpixman-1-dev librsvg2-dev lomiri-wallpapers-16.04 pulseaudio pulseaudio-utils sound-theme-freedesktop x11-xserver-utils xdotool xvfb openbox fonts-dejavu-core python3"
    [gallery]="dbus dunst xdotool xvfb fonts-dejavu-core python3 shared-mime-info lomiri-wallpapers-16.04 sound-theme-freedesktop"
    [benchmarks]="libbenchmark-dev libcairo2-dev libglib2.0-dev libopencv-imgproc-dev libssl-dev libvips-dev python3"
    [ci]="git clang libclang-rt-14-dev llvm clang-format clang-tidy doxygen"
)

[ "${DRAVELIN_SETUP:-on}" = off ] && exit 0

wanted=()
for purpose in "$@"; do
    [ -n "${packages[$purpose]:-}" ] || { echo "setup.sh: no purpose '$purpose'; there are: ${!packages[*]}" >&2; exit 2; }
    read -ra more <<<"${packages[$purpose]}"
    wanted+=("${more[@]}")
done

is_installed() { [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]; }

missing=()
for package in "${wanted[@]}"; do
    is_installed "$package" || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

give_up() {
    printf '%s\nDravelin needs these packages, under their Debian names:\n' "$1" >&2
    printf '    %s\n' "${missing[@]}" >&2
    echo "Install them, or what corresponds to them and set DRAVELIN_SETUP=off; then try again." >&2
    exit 1
}

as_root=()
command -v apt-get >/dev/null || give_up "There is no apt-get here."
if [ "$(id -u)" != 0 ]; then
    command -v sudo >/dev/null || give_up "Installing packages takes root or sudo."
    as_root=(sudo)
fi
as_root+=(env DEBIAN_FRONTEND=noninteractive)

echo "Installing ${missing[*]}"
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" || give_up "apt-get failed."
