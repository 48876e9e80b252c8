// SPDX-License-Identifier: MIT
#include "playabletest.h"

#include "clirun.h"
#include "support/testfile.h"
#include "support/testmedia.h"

#include <algorithm>

namespace {

constexpr double areaLimit = 0.03;

// Red, green and blue of eight areas, four a row.
const QByteArray areas = QByteArray::fromHex("a02828"
                                             "288228"
                                             "3232a0"
                                             "8c821e"
                                             "1e8282"
                                             "5a5a5a"
                                             "e6e6e6"
                                             "502882");

// The eight areas as a player shows them: by what the stream tells of its colours, else by its
// size, and without black bars left and right.
QByteArray shownAreas(const QString &path, const QJsonObject &video)
{
    const bool isLarge = video["width"_s].toInt() >= 1280 || video["height"_s].toInt() > 576;
    QString matrix = video["color_space"_s].toString();
    if (matrix.isEmpty() || matrix == "unknown"_s)
        matrix = isLarge ? "bt709"_s : "smpte170m"_s;
    const QString range = video["color_range"_s].toString() == "pc"_s ? "pc"_s : "tv"_s;
    // Scaling mixes neighbours' colours: only what is far from their borders counts.
    constexpr int side = 16;
    const QString options = "-frames:v 1 -vf crop=trunc(min(iw\\,ih*4/3)),scale=%1:%2:"
                            "flags=neighbor:in_color_matrix=%3:in_range=%4,format=rgb24 "
                            "-f rawvideo"_s;
    const QByteArray pixels =
        decodedMedia(path, options.arg(4 * side).arg(2 * side).arg(matrix, range));
    QByteArray centres;
    for (int area = 0; area < 8; ++area) {
        const int row = area / 4 * side + side / 2;
        const int column = area % 4 * side + side / 2;
        centres += pixels.mid(3 * (row * 4 * side + column), 3);
    }
    return centres;
}

} // namespace

void PlayableTest::film(const QString &name, const QString &size, const QString &coding)
{
    const QString raw = path("areas.rgb"_s);
    writeTestFile(raw, areas);
    makeMedia("-f rawvideo -pix_fmt rgb24 -s 4x2 -r 25 -stream_loop 9 -i @ -vf "
              "scale=%1:flags=neighbor,format=gbrp,%2 @"_s.arg(size, coding),
              {raw, path(name)});
}

ProbedFile PlayableTest::converted(const QString &name, int preset, const QStringList &options)
{
    const QJsonObject record = convertOne(path(name), preset, m_out.path(), options);
    m_result = record["output"_s].toString();
    [&] { QVERIFY2(!m_result.isEmpty(), qPrintable(record["message"_s].toString())); }();
    return probeMedia(m_result);
}

void PlayableTest::verifyAreas(const QJsonObject &video) const
{
    const QByteArray shown = shownAreas(m_result, video);
    const bool isAlike = std::equal(
        shown.begin(), shown.end(), areas.begin(), areas.end(), [](char one, char other) {
            return qAbs(int(uchar(one)) - int(uchar(other))) <= areaLimit * 255;
        });
    QVERIFY2(isAlike, shown.toHex(' ').constData());
}
