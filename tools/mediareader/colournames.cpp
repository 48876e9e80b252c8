// SPDX-License-Identifier: MIT
#include "mediareader/colournames.h"

#include <algorithm>
#include <iterator>

namespace {

struct ColourName
{
    const char *library;
    const char *ffmpeg;
};

// Where one name stands for several things, ffmpeg has one for them as well.
constexpr ColourName colourNames[] = {
    {"BT.2020", "bt2020"},
    {"BT.2020 (10-bit)", "bt2020-10"},
    {"BT.2020 (12-bit)", "bt2020-12"},
    {"BT.2020 constant", "bt2020c"},
    {"BT.2020 non-constant", "bt2020nc"},
    {"BT.470 System B/G", "bt470bg"},
    {"BT.470 System M", "bt470m"},
    {"BT.601", "smpte170m"},
    {"BT.601 NTSC", "smpte170m"},
    {"BT.601 PAL", "bt470bg"},
    {"BT.709", "bt709"},
    {"DCI P3", "smpte431"},
    {"Display P3", "smpte432"},
    {"FCC 73.682", "fcc"},
    {"Generic film", "film"},
    {"HLG", "arib-std-b67"},
    {"ICtCp", "ictcp"},
    {"Identity", "gbr"},
    {"Linear", "linear"},
    {"PQ", "smpte2084"},
    {"SMPTE 240M", "smpte240m"},
    {"YCgCo", "ycgco"},
    {"sRGB/sYCC", "iec61966-2-1"},
    {"xvYCC", "iec61966-2-4"},
};

} // namespace

QString ffmpegColourName(const QString &name)
{
    const auto *row = std::find_if(
        std::begin(colourNames), std::end(colourNames),
        [&name](const ColourName &known) { return name == QLatin1String(known.library); });
    return row == std::end(colourNames) ? QString() : QString(QLatin1String(row->ffmpeg));
}
