// SPDX-License-Identifier: MIT
// For the build: renders a picture through each ready-made look, by the very filters that a
// conversion has for it.
//   lookpictures FFMPEG SCENE FOLDER SUFFIX     SUFFIX stands before the dot, as "@2x"
#include "MediaKits/MediaTasksManager/convertgraph.h"
#include "MediaKits/MediaTasksManager/converttaskparam.h"
#include "MediaKits/MediaTasksManager/readylook.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>

#include <cstdio>

namespace {

QString graphOf(int look)
{
    ConvertTaskParam param;
    param.beauty = QSharedPointer<VideoBeautyParam>::create();
    applyReadyLook(look, *param.beauty);
    // Looks are made for films, whose pictures come as brightness and colour.
    const QString text = videoGraphText(param);
    const int label = text.lastIndexOf(QLatin1Char('['));
    return text.isEmpty() ? QStringLiteral("[0:v]null[out]")
                          : text.left(label) + QLatin1String("[out]");
}

QString placeOf(const ReadyLook &look, const QString &folder, const QString &suffix)
{
    const QFileInfo file(QString::fromUtf8(look.picture));
    return QDir(folder).filePath(file.completeBaseName() + suffix + QLatin1Char('.') +
                                 file.suffix());
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    if (words.size() != 5)
        return 2;
    const QVector<ReadyLook> &looks = readyLooks();
    for (int i = 0; i < looks.size(); ++i) {
        if (!looks[i].isEnabled)
            continue;
        const int code = QProcess::execute(
            words[1],
            {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-y"),
             QStringLiteral("-i"), words[2], QStringLiteral("-filter_complex"), graphOf(i),
             QStringLiteral("-map"), QStringLiteral("[out]"), QStringLiteral("-frames:v"),
             QStringLiteral("1"), placeOf(looks[i], words[3], words[4])});
        if (code != 0) {
            std::fprintf(stderr, "%s: ffmpeg ended with %d\n", looks[i].picture, code);
            return 1;
        }
    }
    return 0;
}
