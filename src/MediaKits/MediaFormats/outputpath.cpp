// SPDX-License-Identifier: MIT
#include "MediaKits/MediaFormats/outputpath.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {
// Bytes, not characters: a Chinese character takes three of them.
constexpr int maxFileNameBytes = 255;

bool isTaken(const QString &path)
{
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}
} // namespace

QString uniqueOutputPath(const QString &path)
{
    const QFileInfo info(path);
    const QString ending = info.suffix().isEmpty() ? QString() : QLatin1Char('.') + info.suffix();
    QString candidate = path;
    for (int n = 2; isTaken(candidate); ++n) {
        candidate = QStringLiteral("%1/%2(%3)%4")
                        .arg(info.path(), info.completeBaseName(), QString::number(n), ending);
    }
    return candidate;
}

bool fileNameFits(const QString &path)
{
    return QFile::encodeName(QFileInfo(path).fileName()).size() <= maxFileNameBytes;
}

QString folderFrom(const QString &typed)
{
    if (typed.trimmed().isEmpty())
        return {};
    const QString home = QDir::homePath();
    if (typed == QLatin1String("~") || typed.startsWith(QLatin1String("~/")))
        return QDir::cleanPath(home + typed.mid(1));
    return QDir::cleanPath(QDir(home).absoluteFilePath(typed));
}

QString outputNameFrom(const QString &typed, const QString &before)
{
    if (typed.trimmed().isEmpty())
        return before;
    return QString(typed).replace(QLatin1Char('/'), QLatin1Char('_'));
}
