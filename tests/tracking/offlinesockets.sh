#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Fails when a program fails or opens a network socket; ends with 77 where it can't be traced.
#   tests/tracking/offlinesockets.sh PROGRAM
set -euo pipefail

calls=$(mktemp)
trap 'rm -f "$calls"' EXIT
trace=(strace -f -qq -e trace=network -o "$calls")
if ! "${trace[@]}" true; then
    echo "strace is missing or may not trace" >&2
    exit 77
fi

# The leak check of a sanitized build stops the program when it is traced.
ASAN_OPTIONS=detect_leaks=0 "${trace[@]}" "$1"
if grep -E 'AF_INET6?\b' "$calls"; then
    echo "$1 opened a network socket" >&2
    exit 1
fi
