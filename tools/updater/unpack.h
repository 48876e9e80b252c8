// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QFile;

/// What an archive may hold at most.
struct UnpackLimits
{
    qint64 bytes = 2LL * 1024 * 1024 * 1024; ///< of all files together
    int entries = 20000;
};

enum class Unpacked {
    Whole,
    Unfit,      ///< the archive is to blame: it would fail again
    NotWritten, ///< the disk is
};

/// Unpacks a tar archive, plain or packed by zstd, gzip or xz, into an existing empty folder. Takes
/// folders, files and symbolic links that lead to something in the folder. Everything else ends it:
/// absolute paths, "..", other links, devices, bits that change the user, a damaged archive.
/// Owners and times are not taken over, and of the modes only whether a file can be run: everybody
/// may read all of it, whatever this process's mask.
/// @param file open, unbuffered, at the start of the archive
/// @param error set to the reason of a failure, after which the folder holds a part of it
Unpacked unpackArchive(QFile &file, const QString &folder, QString &error,
                       const UnpackLimits &limits = {});
