// SPDX-License-Identifier: MIT
#include "platform/systemversion.h"

#include <QFile>
#include <QRegularExpression>

namespace {

QString valueOf(const char *key, const QString &text)
{
    const QRegularExpression line(
        QStringLiteral("^%1=([\"']?)([^\"'\\s]*)\\1\\s*$").arg(QLatin1String(key)),
        QRegularExpression::MultilineOption);
    return line.match(text).captured(2);
}

} // namespace

QString readSystemVersion(const QStringList &releaseFiles)
{
    for (const QString &path : releaseFiles) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QString text = QString::fromUtf8(file.readAll());
        // Distributions without releases have no version.
        const QString version = valueOf("ID", text) + valueOf("VERSION_ID", text);
        if (!version.isEmpty())
            return version;
    }
    return QStringLiteral("Unknown Version");
}
