// SPDX-License-Identifier: MIT
#include "platform/startenvironment.h"

#include <QFile>

QProcessEnvironment startEnvironment()
{
    QFile file(QStringLiteral("/proc/self/environ"));
    if (!file.open(QIODevice::ReadOnly))
        return QProcessEnvironment::systemEnvironment();
    QProcessEnvironment environment;
    const QList<QByteArray> lines = file.readAll().split('\0');
    for (const QByteArray &line : lines) {
        const int end = line.indexOf('=');
        if (end > 0)
            environment.insert(QString::fromLocal8Bit(line.left(end)),
                               QString::fromLocal8Bit(line.mid(end + 1)));
    }
    return environment;
}
