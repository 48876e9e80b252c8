// SPDX-License-Identifier: MIT
#include "MediaKits/MediaFormats/toolquoting.h"

static bool looksLikeOptionOrProtocol(const QString &path)
{
    const QString firstName = path.section(QLatin1Char('/'), 0, 0);
    return path.startsWith(QLatin1Char('-')) || firstName.contains(QLatin1Char(':'));
}

QString quoteToolPath(const QString &path)
{
    QString text = looksLikeOptionOrProtocol(path) ? QStringLiteral("./") + path : path;
    text.replace(QLatin1Char('"'), QLatin1String("\"\"\""));
    return QLatin1Char('"') + text + QLatin1Char('"');
}
