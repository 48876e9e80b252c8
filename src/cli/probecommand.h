// SPDX-License-Identifier: MIT
#pragma once

#include "cli/commandline.h"
#include "MediaKits/MediaInfo/mediainfobase.h"

#include <functional>

/// Probes a file with the reader that suits it.
/// @param parent owns the reader while it works
/// @param ready called once, maybe before this returns, with the result or null
void probeFile(const QString &path, ProbeReader reader, QObject *parent,
               const std::function<void(const QSharedPointer<MediaInfoData> &)> &ready);

/// Prints the facts of the files, in order.
/// @return exit code: 1 when a file couldn't be read
int probeFiles(const CommandLine &line);
