// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/converttaskparam.h"

#include <QString>

/// In an overlay that was mapped, the font as it was before, when it has another size then.
inline const QString chosenFontKey = QStringLiteral("chosenFont");
/// In a text that reaches over the picture, the size of the picture that it is drawn on.
inline const QString frameKey = QStringLiteral("frame");

/// What a chain's convert step is told so that its result is what the record asks for. The texts
/// that are made of a record have their own ways: overlays come behind scaling and turns, flips in
/// front of turns, a crop only with a size, some looks count as none. The mapping says the same in
/// words that those texts take.
///
/// Rectangles and times of overlays, and times of music, are meant on the source as it is shown. A
/// look is meant as its preview shows it, turned first and flipped then.
/// @param param as the user asked; what its pointers hold stays as it is
ConvertTaskParam mappedStep(const ConvertTaskParam &param);

/// The step ahead of a GIF's convert step that chooses its palette from the same frames.
/// @param step takes its palette from a file, which becomes this step's result
ConvertTaskParam paletteStep(const ConvertTaskParam &step);
