// SPDX-License-Identifier: MIT
#include "platform/executable.h"

#include <QFileInfo>

QString executablePath()
{
    static const QString path = QFileInfo(QStringLiteral("/proc/self/exe")).canonicalFilePath();
    return path;
}
