// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

/// One word for the system and its version, as "debian12"; "Unknown Version" when the system
/// doesn't tell.
/// @param releaseFiles descriptions of the system in the os-release format; the first one that
///        can be read counts
QString readSystemVersion(const QStringList &releaseFiles = {
                              QStringLiteral("/etc/os-release"),
                              QStringLiteral("/usr/lib/os-release")});
