// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Editors/sharedmap.h"

/// One piece of music: "filePath", "duration" and "startTime" in ms, "volume" as a factor.
using MusicEntry = QSharedPointer<QVariantMap>;

namespace MusicKey {
inline const QString filePath = QStringLiteral("filePath");
inline const QString duration = QStringLiteral("duration");
inline const QString startTime = QStringLiteral("startTime");
inline const QString volume = QStringLiteral("volume");
} // namespace MusicKey

namespace DubbingKey {
inline const QString filter = QStringLiteral("filter");
inline const QString musics = QStringLiteral("musics");
inline const QString videoVolume = QStringLiteral("videoVolume");
inline const QString isMax = QStringLiteral("isMax");
} // namespace DubbingKey

/// Puts values into an entry and leaves its others.
void mergeInto(QVariantMap &entry, const QVariantMap &values);
