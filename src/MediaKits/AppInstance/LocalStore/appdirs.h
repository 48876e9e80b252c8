// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

// All directories come with forward slashes and without one at the end.

/// Directory of the running executable.
QString appDir();
/// Thumbnails and work files; created on demand for this user alone, as are those below.
QString tempDir();
/// The JSON files and app.ini.
QString dataDir();
QString logDir();
/// Downloaded updates.
QString updateDir();

/// The folders that this process should have used but didn't, since a link, a file or another
/// user's folder stands in their place. Others took theirs.
QStringList refusedDirs();

/// The product code that the servers know.
QString appCode();
/// The application id of 18 digits that the service issued for this build.
QString appId();
/// The whole version, as "2.0.5.100".
QString appVersion();
/// The version without its last number, as "2.0.5".
QString shortVersion();
/// The number of this version that the servers compare.
int appNumber();
/// "pc_x64" on a 64-bit system, otherwise "pc_x86".
QString platformName();
