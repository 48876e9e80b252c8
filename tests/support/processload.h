// SPDX-License-Identifier: MIT
#pragma once

#include "support/utf8.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

/// What this process holds of the system, as the kernel counts it.
struct ProcessLoad
{
    qint64 memoryKb = 0; ///< its share of what is in memory (PSS)
    int descriptors = 0;
    int threads = 0;
    int children = 0;
    int zombies = 0; ///< children that have ended and nobody has asked for

    static ProcessLoad now()
    {
        ProcessLoad load;
        load.memoryKb = numberBehind("/proc/self/smaps_rollup"_s, "Pss:");
        load.threads = int(numberBehind("/proc/self/status"_s, "Threads:"));
        // Less the one of this look.
        load.descriptors = QDir("/proc/self/fd"_s)
                               .entryList(QDir::System | QDir::AllEntries | QDir::NoDotAndDotDot)
                               .size() -
                           1;
        const QStringList processes = QDir("/proc"_s).entryList({"[0-9]*"_s}, QDir::Dirs);
        for (const QString &process : processes) {
            const QString status = "/proc/%1/status"_s.arg(process);
            if (numberBehind(status, "PPid:") != QCoreApplication::applicationPid())
                continue;
            ++load.children;
            load.zombies += textBehind(status, "State:").startsWith('Z') ? 1 : 0;
        }
        return load;
    }

private:
    static QByteArray textBehind(const QString &path, const char *name)
    {
        QFile file(path);
        const QByteArray text = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        for (const QByteArray &line : text.split('\n')) {
            if (line.startsWith(name))
                return line.mid(int(qstrlen(name))).trimmed();
        }
        return {};
    }
    static qint64 numberBehind(const QString &path, const char *name)
    {
        return textBehind(path, name).split(' ').first().toLongLong();
    }
};
