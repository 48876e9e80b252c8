// SPDX-License-Identifier: MIT
#include "gif/giffile.h"

#include "support/mediaprobe.h"
#include "support/testfile.h"
#include "support/testmedia.h"

#include <algorithm>
#include <cstdlib>

GifFile probeGif(const QString &path)
{
    const ProbedFile probed = probeMedia(path);
    GifFile file;
    if (probed.container != "gif"_s)
        return file;
    file.size = probed.size();
    file.seconds = probed.seconds;
    const QStringList count{"-v"_s,
                            "error"_s,
                            "-count_frames"_s,
                            "-show_entries"_s,
                            "stream=nb_read_frames"_s,
                            "-of"_s,
                            "csv=p=0"_s,
                            path};
    file.frames = runTool("ffprobe"_s, count).out.trimmed().toInt();
    file.loops = contentOf(path).contains(QByteArray("NETSCAPE2.0\x03\x01\0\0", 15));
    return file;
}

double colourError(const QString &gif, const QString &film, const QString &part, int frameRate)
{
    const QSize size = probeMedia(gif).size();
    const QString form =
        "-vf fps=%1,scale=%2:%3:flags=area -pix_fmt rgb24 -f rawvideo -"_s.arg(frameRate)
            .arg(size.width())
            .arg(size.height());
    const QByteArray made = runFfmpeg("-i @ "_s + form, {gif}).out;
    const QByteArray wanted = runFfmpeg(part + " -i @ "_s + form, {film}).out;
    const int count = std::min(made.size(), wanted.size());
    double sum = 0.0;
    for (int i = 0; i < count; ++i)
        sum += std::abs(int(quint8(made[i])) - int(quint8(wanted[i])));
    return count > 0 ? sum / count : 255.0;
}
