// SPDX-License-Identifier: MIT
#include "ffmpeg/colour.h"

#include <string_view>

namespace ffmpeglauncher {

namespace {

const std::string smallMatrix = "smpte170m";
const std::string largeMatrix = "bt709";
// White paper is 203 cd/m2 in a picture of high range (ITU-R BT.2408) and 1.0 here, so that usual
// brightness stays as it is. What lies above 0.7, up to the 1000 cd/m2 that films are graded for,
// shares the rest.
const std::string toneMapping = ":npl=203,format=gbrpf32le,tonemap=mobius:param=0.7:peak=4.926";

// What zscale has names for.
constexpr std::string_view transfers =
    " arib-std-b67 bt2020-10 bt2020-12 bt470bg bt470m bt709 iec61966-2-1 iec61966-2-4 linear log100"
    " log316 smpte170m smpte2084 ";
constexpr std::string_view primaryColours =
    " bt2020 bt470bg bt470m bt709 film smpte170m smpte240m smpte428 smpte431 smpte432 ";
constexpr std::string_view matrices =
    " bt2020c bt2020nc bt470bg bt709 fcc gbr ictcp smpte170m ycgco ";

std::string knownOr(const std::string &name, std::string_view names, const std::string &otherwise)
{
    const bool known = !name.empty() && names.find(' ' + name + ' ') != std::string_view::npos;
    return known ? name : otherwise;
}

// PAL and NTSC have two names for the same numbers.
std::string sourceMatrix(const SourceFacts &facts)
{
    const std::string usual = usualMatrix({facts.width, facts.height});
    const std::string matrix = knownOr(facts.matrix, matrices, usual);
    return matrix == "bt470bg" ? smallMatrix : matrix;
}

bool isWideGamut(const std::string &primaries)
{
    return primaries == "bt2020" || primaries == "smpte431" || primaries == "smpte432";
}

// All that zscale has to be told of the source, since a file may tell some of it only.
std::string fullSource(const SourceFacts &facts, const std::string &primaries,
                       const std::string &matrix)
{
    return "zscale=tin=" + knownOr(facts.transfer, transfers, "bt709") +
           ":pin=" + knownOr(facts.primaries, primaryColours, primaries) + ":min=" + matrix;
}

} // namespace

std::string usualMatrix(const PictureSize &size)
{
    return size.width >= 1280 || size.height > 576 ? largeMatrix : smallMatrix;
}

bool isHighRange(const SourceFacts &facts)
{
    return facts.transfer == "smpte2084" || facts.transfer == "arib-std-b67";
}

std::string colourFilters(const SourceFacts &facts, const std::string &matrix,
                          const std::string &pixelFormat)
{
    if (facts.width <= 0 || facts.height <= 0)
        return {};
    const std::string source = sourceMatrix(facts);
    const bool isRgb = source == "gbr";
    const std::string planes = isRgb ? "format=gbrp," : "";
    // Else the picture says so itself, also where a filter has changed it.
    const std::string range = isRgb ? ":rin=full" : "";
    const std::string target = ":m=" + matrix + ":r=limited,format=" + pixelFormat;
    if (isHighRange(facts)) {
        const std::string wide = knownOr(facts.matrix, matrices, "bt2020nc");
        return fullSource(facts, "bt2020", wide) + range + ":t=linear:p=bt709" + toneMapping +
               ",zscale=t=bt709" + target;
    }
    const bool isCommon = source == smallMatrix || source == largeMatrix || isRgb;
    if (!isCommon || isWideGamut(facts.primaries)) {
        const bool isWide = source.compare(0, 6, "bt2020") == 0 || source == "ictcp";
        const std::string primaries = isWide ? "bt2020" : "bt709";
        return planes + fullSource(facts, primaries, source) + range + ":t=bt709:p=bt709" + target;
    }
    return source == matrix ? "" : planes + "zscale=min=" + source + range + target;
}

} // namespace ffmpeglauncher
