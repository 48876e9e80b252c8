// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaInfo/Facts/mediainfodata.h"
#include "MediaKits/MediaTasksManager/mediaselection.h"

#include <QString>

/// Why a file can't be a source, in words for the user; empty when nothing speaks against it.
/// @param path absolute path
QString inputProblem(const QString &path);

/// Why a part of a source's picture can't be had, in words for the user; empty when nothing speaks
/// against it or one of the two isn't known.
QString cropProblem(const QSharedPointer<MediaInfoData> &source,
                    const QSharedPointer<CropBox> &crop);
