// SPDX-License-Identifier: MIT
#pragma once

#include "cli/commandline.h"
#include "MediaKits/MediaInfo/mediainfobase.h"

#include <functional>

/// Probes a file that may be a source; of any other its task will say what is wrong.
/// @param owner owns the reader while it works
/// @param ready called once, maybe before this returns, with null when nothing is known
void probeSource(const QString &file, QObject *owner,
                 const std::function<void(const QSharedPointer<MediaInfoData> &)> &ready);
/// In ms; 0 when it isn't known.
int sourceDurationMs(const QSharedPointer<MediaInfoData> &info);

/// Prints the facts of the files, in order.
/// @return exit code: 1 when a file couldn't be read
int probeFiles(const CommandLine &line);
