// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

class QFile;

/// What a package of an update says of itself. A package is a text of lines and an archive:
///
///     MORVANE-UPDATE-1
///     version 17
///     size 1234567
///     sha512 (128 hexadecimal digits)
///     signature (the Base64 text of 64 bytes)
///     (empty line)
///     (the archive, of that size in bytes and with that hash)
///
/// The Ed25519 signature is one of the lines above it, so it covers version and content, and
/// nothing of the content is looked at before the signature has been found right.
struct UpdatePackage
{
    /// The number that the servers compare.
    int version = 0;
    /// Where the archive begins, in bytes.
    qint64 contentAt = 0;
    /// Of the archive, hexadecimal.
    QByteArray hash;
    /// Why the package is refused, for the user; empty when it may be installed.
    QString refusal;

    bool isAccepted() const { return refusal.isEmpty(); }
};

/// Larger packages are neither fetched nor installed, in bytes.
inline constexpr qint64 largestPackage = 512LL * 1024 * 1024;

/// Reads the lines of an open package and accepts it when it is signed for the key and newer than
/// the installed version, whatever the archive behind the lines holds.
/// @param key 32 bytes; with an empty one everything is refused
UpdatePackage readUpdateLines(QFile &file, const QByteArray &key, int installedVersion);

/// The same, and reads the archive to its end: takes seconds. A thread that is asked to end
/// refuses.
UpdatePackage readUpdatePackage(QFile &file, const QByteArray &key, int installedVersion);
