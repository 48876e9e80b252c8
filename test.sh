#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs what is missing, builds and runs every test, ending with ctest's own summary.
#   ./test.sh [PRESET [CTEST ARGUMENTS…]]     PRESET is dev (default), release, asan or tsan
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
preset=${1:-dev}
[ $# -eq 0 ] || shift

"$here/scripts/setup.sh" test
cd "$here"
cmake --preset "$preset" -DMORVANE_TESTS=ON >/dev/null
cmake --build --preset "$preset"

# Nothing that a test leaves behind may touch the user's own files.
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
export XDG_DATA_HOME="$scratch/data" XDG_CACHE_HOME="$scratch/cache" XDG_CONFIG_HOME="$scratch/config"
export LSAN_OPTIONS="suppressions=$here/scripts/lsan.supp:print_suppressions=0"
export TSAN_OPTIONS="suppressions=$here/scripts/tsan.supp"
ctest --preset "$preset" --parallel 2 "$@"
