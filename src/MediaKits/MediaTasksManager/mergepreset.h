// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/concattask.h"

#include <QSize>

/// What every part of a merge is converted to. Parts are joined by copying, so that picture size,
/// frame rate, sample rate and channels have to be alike: what the preset leaves open is that of
/// the first part which has it.
/// @return a preset with a size and a frame rate, unless the result has no picture
QSharedPointer<EncParam> mergePreset(const ConcatTaskParam &param);

/// The size of the first part's picture, as it is shown; empty where no part tells one.
QSize firstPictureSize(const QList<QSharedPointer<InputFileMediaParam>> &parts);

/// Whether the merge has a picture, or a sound: a container for it, and a part that has one or
/// isn't known to have none.
bool mergeHasPicture(const ConcatTaskParam &param);
bool mergeHasSound(const ConcatTaskParam &param);
