#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs what is missing, builds the release preset and runs the program.
#   ./run.sh                  opens the window; without a display, makes a ten-second sample clip,
#                             converts it and shows the results
#   ./run.sh convert FILE…    and the like go to morvane-cli
set -euo pipefail
caller=$PWD
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
build="$here/build/release"

quietly() {
    local log
    log=$(mktemp)
    "$@" >"$log" 2>&1 || { cat "$log" >&2; rm -f "$log"; exit 1; }
    rm -f "$log"
}

"$here/scripts/setup.sh"
cd "$here"
[ -f "$build/build.ninja" ] || { echo "Configuring…" >&2; quietly cmake --preset release -DMORVANE_TESTS=OFF; }
quietly cmake --build --preset release --target morvane morvane-cli module
cd "$caller"

cli="$build/bin/morvane-cli"
[ $# -eq 0 ] || exec "$cli" "$@"

# The option has the program open the display and end at once. A shell of its own keeps the word
# that it was aborted off the terminal.
has_display() {
    [ -n "${DISPLAY:-}" ] && bash -c '"$0" --preuninst; exit $?' "$build/bin/morvane" >/dev/null 2>&1
}
if has_display; then
    exec "$build/bin/morvane"
fi
echo "No X display can be reached, so the window stays closed. A sample from the command line:" >&2

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
sample="$work/sample.mp4"
out="$here/build/sample"
rm -rf "$out"
ffmpeg -v error -f lavfi -i testsrc2=d=10:s=1280x720:r=30 -f lavfi -i sine=f=440:d=10 \
    -pix_fmt yuv420p -preset ultrafast "$sample"
for preset in 1003005 1200001; do # MP4 "SD 480P" and MP3 "高品质"
    result=$("$cli" convert "$sample" --preset "$preset" --out "$out")
    echo "$result"
    ffprobe -v error -show_entries stream=codec_name,width,height,sample_rate,bit_rate \
        -show_entries format=format_name,duration -of compact=p=0:nk=0 "$result" | sed 's/^/  /'
done
