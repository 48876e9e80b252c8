// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/setaside.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace {

QString freeName(const QString &path)
{
    const QString broken = path + QStringLiteral(".broken");
    QString target = broken;
    for (int number = 2; QFile::exists(target); ++number)
        target = broken + QString::number(number);
    return target;
}

// Settings of ours are plain texts and numbers. A damaged value of Qt's own binary form may claim
// any amount of memory, which ends the program.
bool isReadableIni(const QString &path)
{
    QFile file(path);
    constexpr qint64 largestBytes = 1024 * 1024;
    if (file.size() > largestBytes || !file.open(QIODevice::ReadOnly))
        return file.size() <= largestBytes;
    static const QRegularExpression binary(QStringLiteral("[=,]\\s*\"?@(Variant|DateTime)\\("));
    return !QString::fromLatin1(file.readAll()).contains(binary);
}

} // namespace

QString setAside(const QString &path)
{
    const QString target = freeName(path);
    return QFile::rename(path, target) ? target : QString();
}

QString copyAside(const QString &path)
{
    const QString target = freeName(path);
    return QFile::copy(path, target) ? target : QString();
}

bool isReadableStore(const QFileInfo &info)
{
    return info.isFile() && info.size() <= largestStoreBytes;
}

QString clearedIniPath(const QString &path)
{
    const QFileInfo info(path);
    const bool isReadable = isReadableStore(info) && isReadableIni(path);
    const bool isClear = !info.exists() || isReadable || !setAside(path).isEmpty();
    return isClear ? path : path + QStringLiteral(".new");
}
