// SPDX-License-Identifier: MIT
#pragma once

#include <QVariantList>

class FileAliases;

/// Overlays as a filter can lay them over a picture: a text becomes a picture of it, since ffmpeg
/// has neither the faces that the desktop puts in for missing characters nor emoji, and sets other
/// distances than the editors show; pictures that only Qt can read become such as ffmpeg reads.
/// Without a GUI application, which paints no texts, texts stay, with a face that is installed.
/// @param overlays as in `ConvertTaskParam::videoFilters`, mapped to where they are drawn
/// @param aliases keeps the pictures
QVariantList overlayPictures(const QVariantList &overlays, FileAliases &aliases);

/// Why an overlay's picture file can't be laid over a picture, in words for the user; empty when
/// all of them can.
QString overlayProblem(const QVariantList &overlays);
