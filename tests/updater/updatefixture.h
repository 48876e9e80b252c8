// SPDX-License-Identifier: MIT
#pragma once

#include "support/toolrun.h"
#include "support/utf8.h"

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>
#include <QVector>

/// One entry of an archive that no decent packer would make.
struct ArchiveEntry
{
    QByteArray path;
    QByteArray content = QByteArrayLiteral("x");
    char kind = 'f'; ///< 'f' file, 'd' folder, 'l' link to the content, 'h' hard link, 'c' device
    int mode = 0644;
};

/// A tar archive, packed by zstd.
QByteArray archiveOf(const QVector<ArchiveEntry> &entries);

/// A package around an archive, signed by the tests' key.
QByteArray packageOf(const QByteArray &archive, int version);

/// Packs an installed folder by scripts/sign-update.
ToolRun runPack(const QString &folder, int version, const QString &package);
/// The same; fails the running test when that fails.
void packFolder(const QString &folder, int version, const QString &package);

/// Makes an installed folder whose program tells its version to the file "ran" beside it and that
/// it has started, unless it is only to begin and end, and which holds some hundred files with that
/// version in them.
/// @param startsWith the program's own lines before that
void makeInstallation(const QString &folder, const QByteArray &version,
                      const QByteArray &startsWith = {});

/// The version that every file of such a folder has; empty when they differ or one is missing.
QByteArray versionOf(const QString &folder);
