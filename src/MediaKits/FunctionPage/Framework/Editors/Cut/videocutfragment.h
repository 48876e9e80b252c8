// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Editors/Fragments/cutfragment.h"

/// A part of a video that becomes a file of its own.
struct VideoCutFragment : CutFragment
{
    QSharedPointer<CropBox> cropRect; ///< null for the whole picture
};

Q_DECLARE_METATYPE(QSharedPointer<VideoCutFragment>)
