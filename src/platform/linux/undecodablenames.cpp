// SPDX-License-Identifier: MIT
#include "platform/undecodablenames.h"

#include <QFile>

#include <memory>

#include <dirent.h>

QStringList undecodableNames(const QString &folder)
{
    QStringList names;
    const std::unique_ptr<DIR, int (*)(DIR *)> entries(
        ::opendir(QFile::encodeName(folder).constData()), &::closedir);
    while (const dirent *entry = entries ? ::readdir(entries.get()) : nullptr) {
        const QByteArray name(static_cast<const char *>(entry->d_name));
        const QString text = QString::fromUtf8(name);
        if (text.toUtf8() != name)
            names += text;
    }
    return names;
}
