#!/bin/bash
# SPDX-License-Identifier: MIT
# Checks the sources' style. Ends with 0 when nothing is found.
# usage: scripts/style.sh [FILE...], by default all sources that git knows or would add
# Formatting is that of .clang-format and is checked by clang-format 14: other versions lay some
# code out differently. The checks of .clang-tidy run on src/ and tools/, with the commands of
# build/dev, which has to be configured and built first (it makes the generated headers).
set -uo pipefail

cd "$(dirname "$0")/.." || exit 2
build=build/dev

version_14() {
    local name
    for name in "$1-14" "$1"; do
        if "$name" --version 2>/dev/null | grep -Eq 'version 14\.'; then
            echo "$name"
            return
        fi
    done
    echo "style.sh: $1 14 is not installed" >&2
    return 1
}

format=$(version_14 clang-format) || exit 2
tidy=$(version_14 clang-tidy) || exit 2

if [ $# -gt 0 ]; then
    files=("$@")
else
    mapfile -t files < <(git ls-files --cached --others --exclude-standard '*.cpp' '*.h')
fi
if [ ${#files[@]} -eq 0 ]; then
    echo "style.sh: no files" >&2
    exit 2
fi

result=0
printf '%s\0' "${files[@]}" | xargs -0 -n 20 -P 2 "$format" --style=file --dry-run -Werror ||
    result=1

# Headers are checked through the sources that include them.
units=()
for file in "${files[@]}"; do
    path=$(realpath --relative-to=. "$file")
    case $path in
    src/*.cpp | tools/*.cpp) units+=("$path") ;;
    esac
done
if [ ${#units[@]} -gt 0 ]; then
    if [ ! -f "$build/compile_commands.json" ]; then
        echo "style.sh: $build is not configured (cmake --preset dev)" >&2
        exit 2
    fi
    # Without the precompiled headers, which are the compiler's own, and which would hide that a
    # file includes too little.
    mkdir -p "$build/tidy"
    sed -E 's/ -Winvalid-pch -include [^ ]+cmake_pch\.hxx//' "$build/compile_commands.json" \
        >"$build/tidy/compile_commands.json"
    # The count of warnings in system headers, which it doesn't show, is no news.
    printf '%s\0' "${units[@]}" | xargs -0 -n 1 -P 2 "$tidy" -p "$build/tidy" --quiet \
        2> >(grep -v 'warnings\? generated\.$' >&2) || result=1
fi
exit $result
