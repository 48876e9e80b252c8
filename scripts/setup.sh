#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs what is missing on a Debian 12 machine; returns at once when nothing is.
#   scripts/setup.sh        what building and running needs
#   scripts/setup.sh test   that and what the tests and the style check need
set -euo pipefail

packages=(
    ca-certificates ccache cmake default-jre-headless ffmpeg fonts-noto-cjk fonts-noto-color-emoji
    g++ libarchive-dev libcurl4-gnutls-dev libeasyloggingpp-dev libfontconfig-dev libjmac-java
    libmediainfo-dev
    libpulse-dev libqt5multimedia5-plugins libqt5svg5 librsvg2-bin libssl-dev libqt5x11extras5-dev
    libxcb-composite0-dev libxcb-randr0-dev libxcb-shape0-dev libxcb1-dev mold mplayer mpv
    ninja-build pkg-config qt5-image-formats-plugins qtbase5-dev qtmultimedia5-dev
    qttranslations5-l10n qtwebengine5-dev
)
[ "${1:-}" = test ] && packages+=(
    appstream clang-format-14 clang-tidy-14 dbus-daemon desktop-file-utils git imagemagick
    libcpp-httplib-dev metacity openbox openssl picom pulseaudio strace trayer util-linux x11-utils xdotool
    xfwm4 xvfb zstd
)

missing=()
for package in "${packages[@]}"; do
    status=$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null || true)
    [ "$status" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

as_root=(env DEBIAN_FRONTEND=noninteractive)
[ "$(id -u)" -eq 0 ] || as_root=(sudo "${as_root[@]}")
echo "Installing: ${missing[*]}" >&2
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
