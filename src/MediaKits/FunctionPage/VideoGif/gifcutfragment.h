// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Editors/Fragments/cutfragment.h"
#include "MediaKits/MediaTasksManager/converttaskparam.h"

#include <QSize>

/// A part of a video that becomes a GIF.
struct GifCutFragment : CutFragment
{
    QSharedPointer<QSize> size; ///< pixels; null leaves that of the preset
    int frameRate = 0;          ///< frames a second
};

Q_DECLARE_METATYPE(QSharedPointer<GifCutFragment>)

/// Tells the conversion of a source what a fragment wants of it, in a preset of its own.
void applyFragment(const GifCutFragment &fragment, ConvertTaskParam &param);
